#include "variants.h"

#include <algorithm>
#include <stdexcept>
#include <vector>

namespace kernelgen {
namespace {

// Kernels that take at most 0.94 of the time of the base when packed in registers of 256 bits: those
// from a length on, with exceptions. Shorter ones have too few equal operations for their shuffles.
struct Row {
  Family family;
  Direction direction;
  Precision precision;
  int from;
  std::vector<int> exceptions;
};

const std::vector<Row>& rows() {
  static const std::vector<Row> all = {
      {Family::Real, Direction::Forward, Precision::Single, 18, {}},
      {Family::Real, Direction::Inverse, Precision::Single, 18, {}},
      {Family::Real, Direction::Forward, Precision::Double, 18, {24, 39}},
      {Family::Real, Direction::Inverse, Precision::Double, 18, {19, 20, 24}},
      {Family::Hartley, Direction::Forward, Precision::Single, 18, {24}},
      {Family::Hartley, Direction::Forward, Precision::Double, 18, {24, 39}},
  };
  return all;
}

}  // namespace

Level levelOfName(const std::string& name) {
  if (name == "base") return Level::Base;
  if (name == "v3") return Level::V3;
  if (name == "v4") return Level::V4;
  throw std::invalid_argument("no machine is named " + name);
}

std::optional<Packing> packingOf(const KernelId& id, Level level) {
  if (level == Level::Base) return {};
  for (const Row& row : rows()) {
    if (row.family != id.family || row.direction != id.direction) continue;
    if (row.precision != id.precision || id.length < row.from) continue;
    if (std::ranges::count(row.exceptions, id.length) == 0) return Packing{};
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
