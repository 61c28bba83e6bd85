#include "variants.h"

#include <algorithm>
#include <stdexcept>
#include <vector>

#include "tables.h"

namespace kernelgen {
namespace {

// The ways to pack. Numbers are packed with more values alive than there are registers: their chains are
// long, and a value from memory costs less than waiting. v4 has twice the registers for what is alive.
constexpr Packing kTwoNumbers = {.lanes = 2, .together = 1, .live = 20};
constexpr Packing kFourNumbers = {.lanes = 4, .together = 1, .live = 20};
constexpr int kLiveOfV4 = 26;

constexpr Packing ofElements(int lanes) { return {.lanes = lanes, .together = 2}; }
constexpr Packing ofRegisters(int lanes) {
  return {.lanes = lanes, .together = Packing::kRegister};
}
constexpr Packing onV4(Packing packing) {
  packing.live = kLiveOfV4;
  return packing;
}

std::vector<int> from(int first, const std::vector<int>& exceptions = {}) {
  std::vector<int> lengths;
  for (int n = first; n <= kMaxLength; ++n) {
    if (std::ranges::count(exceptions, n) == 0) lengths.push_back(n);
  }
  return lengths;
}

// Kernels that take less time than those of the base when packed so, by measurements on Zen 4. What
// is in no row stays as it is in the base: short kernels have too few equal operations for their
// shuffles. The first row of a kernel counts.
struct Row {
  Family family;
  std::vector<Direction> directions;
  Precision precision;
  std::vector<Level> levels;
  std::vector<int> lengths;
  Packing packing;
};

const std::vector<Row>& rows() {
  using enum Family;
  using enum Direction;
  using enum Precision;
  using enum Level;
  static const std::vector<Row> all = {
      {Real, {Forward, Inverse}, Single, {V3, V4}, {7, 9, 13, 15, 17, 19, 21}, kTwoNumbers},
      {Real, {Forward, Inverse}, Single, {V3, V4}, from(10), kFourNumbers},
      {Real,
       {Forward},
       Double,
       {V3, V4},
       {7,  9,  10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20,
        21, 22, 24, 26, 27, 28, 29, 30, 34, 35, 39, 40, 42},
       kTwoNumbers},
      {Real,
       {Inverse},
       Double,
       {V3, V4},
       {7, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20, 21, 24, 27, 29, 40, 42},
       kTwoNumbers},
      {Real, {Forward, Inverse}, Double, {V3, V4}, from(22), kFourNumbers},
      {Hartley, {Forward}, Single, {V3, V4}, {7, 9, 13, 15, 17, 19, 21}, kTwoNumbers},
      {Hartley, {Forward}, Single, {V3, V4}, from(10, {16}), kFourNumbers},
      {Hartley,
       {Forward},
       Double,
       {V3, V4},
       {7,  9,  10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20, 21,
        22, 24, 26, 27, 28, 29, 30, 32, 33, 34, 35, 36, 39, 40},
       kTwoNumbers},
      {Hartley, {Forward}, Double, {V3, V4}, from(22), kFourNumbers},

      {Complex, {Forward, Inverse}, Single, {V3}, {37, 38, 58}, ofElements(8)},
      {Complex,
       {Forward, Inverse},
       Single,
       {V3},
       from(9, {10, 11, 13, 14, 22, 30, 31}),
       ofRegisters(8)},
      {Complex, {Forward, Inverse}, Double, {V3}, {9, 10, 11, 14, 29, 49, 54, 55}, ofElements(4)},
      {Complex, {Forward, Inverse}, Double, {V3}, from(6, {7, 13, 17}), ofRegisters(4)},

      {Complex,
       {Forward, Inverse},
       Single,
       {V4},
       {15, 19, 20, 29, 31, 34, 37, 38, 43, 57, 58},
       onV4(ofElements(8))},
      {Complex, {Forward, Inverse}, Single, {V4}, from(12, {14}), onV4(ofRegisters(8))},
      {Complex,
       {Forward, Inverse},
       Double,
       {V4},
       {9, 10, 11, 14, 17, 35, 49, 54, 55},
       onV4(ofElements(4))},
      {Complex, {Forward, Inverse}, Double, {V4}, from(6, {7, 13}), onV4(ofRegisters(4))},
  };
  return all;
}

bool has(const auto& list, const auto& item) { return std::ranges::count(list, item) != 0; }

// Registers that would only be copied.
bool isAsWide(const Design& base, const Packing& packing, Precision precision) {
  const int bits = packing.lanes * (precision == Precision::Single ? 32 : 64);
  return packing.together == Packing::kRegister && base.width >= bits;
}

}  // namespace

Level levelOfName(const std::string& name) {
  if (name == "base") return Level::Base;
  if (name == "v3") return Level::V3;
  if (name == "v4") return Level::V4;
  throw std::invalid_argument("no machine is named " + name);
}

std::optional<Packing> packingOf(const KernelId& id, Level level) {
  for (const Row& row : rows()) {
    if (row.family != id.family || row.precision != id.precision) continue;
    if (!has(row.directions, id.direction) || !has(row.levels, level)) continue;
    if (!has(row.lengths, id.length)) continue;
    if (isAsWide(designOf(id), row.packing, id.precision)) return {};
    return row.packing;
  }
  return {};
}

std::vector<Level> levelsLike(const KernelId& id, Level level) {
  std::vector<Level> levels;
  for (const Level other : {Level::Base, Level::V3, Level::V4}) {
    if (packingOf(id, other) == packingOf(id, level)) levels.push_back(other);
  }
  return levels;
}

}  // namespace kernelgen
