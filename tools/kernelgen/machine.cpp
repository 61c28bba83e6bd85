#include "machine.h"

#include <algorithm>
#include <stdexcept>

#include "text.h"

namespace kernelgen {
namespace {

int bytesOfNumber(const Node& n) { return n.precision == Precision::Single ? 4 : 8; }

std::string intrinsic(const Node& n, const std::string& name) {
  const bool narrow = n.lanes * bytesOfNumber(n) == 16, single = n.precision == Precision::Single;
  return (narrow ? "_mm_" : "_mm256_") + name + (single ? "_ps" : "_pd");
}

// Whether whole halves of a 256-bit vector move.
bool movesHalves(const Node& n) {
  if (n.lanes * bytesOfNumber(n) != 32) return false;
  const int half = n.lanes / 2;
  for (int i = 0; i < n.lanes; ++i) {
    if (n.select[i] != n.select[i / half * half] + i % half) return false;
  }
  return n.select[0] % half == 0 && n.select[half] % half == 0;
}

// Within each 128-bit half, of four floats or two doubles: the first lanes of the result from one
// operand and the last ones from one, chosen by a control of as many bits as they have places. All
// halves of floats share the control, those of doubles have bits of their own.
std::string withinHalves(const Node& n, const std::string& a, const std::string& b) {
  const int group = 16 / bytesOfNumber(n), bits = group / 2;
  const int controlled = n.precision == Precision::Single ? group : n.lanes;
  int control = 0;
  bool ofOne = true;
  for (int i = 0; i < n.lanes; ++i) {
    const int from = n.select[i], place = from % group;
    const int likeFirst = n.select[i % group / bits * bits];  // of the same operand
    const bool fits = from % n.lanes / group == i / group &&
                      from / n.lanes == likeFirst / n.lanes &&
                      place == n.select[i % controlled] % group;
    if (!fits) throw std::logic_error("no instruction for a shuffle");
    ofOne = ofOne && from < n.lanes;
    if (i < controlled) control |= place << bits * i;
  }
  if (ofOne) return call(intrinsic(n, "permute"), {a, std::to_string(control)});
  const bool aFirst = n.select[0] < n.lanes;
  return call(intrinsic(n, "shuffle"), {aFirst ? a : b, aFirst ? b : a, std::to_string(control)});
}

}  // namespace

std::string Avx::type(const Node& n) const {
  const bool single = n.precision == Precision::Single;
  switch (bytes(n)) {
    case 4: return "float";
    case 8: return "double";
    case 16: return single ? "__m128" : "__m128d";
    case 32: return single ? "__m256" : "__m256d";
    default: throw std::logic_error("no register of " + std::to_string(n.lanes) + " lanes");
  }
}

int Avx::bytes(const Node& n) const { return n.lanes * bytesOfNumber(n); }

std::string Avx::constant(const Node& n) const {
  std::vector<std::string> lanes;
  for (const RoundedConstant& c : n.constants) lanes.push_back(literal(c.value, n.precision));
  if (n.lanes == 1) return n.constants[0].value == 2 ? call("hidden", lanes) : lanes[0];
  const bool same = std::ranges::count(lanes, lanes[0]) == n.lanes;  // as text: 0 is not -0
  return same ? call(intrinsic(n, "set1"), {lanes[0]}) : call(intrinsic(n, "setr"), lanes);
}

std::string Avx::scale(const Node& n) const {
  return n.lanes == 1 ? "*factor" : "broadcast<" + type(n) + ">(factor)";
}

std::string Avx::signs(const Node& n) const {
  std::vector<std::string> lanes;
  for (int flipped : n.mask) lanes.push_back(literal(flipped ? -0.0 : 0.0, n.precision));
  return call(intrinsic(n, "setr"), lanes);
}

std::string Avx::flip(const Node& n, const std::string& a, const std::string& signs) const {
  return call(intrinsic(n, "xor"), {a, signs});
}

std::string Avx::shuffle(const Node& n, const std::string& a, const std::string& b) const {
  if (isBlend(n)) {
    int mask = 0;
    for (int i = 0; i < n.lanes; ++i) mask |= (n.select[i] >= n.lanes) << i;
    return call(intrinsic(n, "blend"), {a, b, std::to_string(mask)});
  }
  if (movesHalves(n)) {
    const int half = n.lanes / 2, control = n.select[0] / half | n.select[half] / half << 4;
    return call(intrinsic(n, "permute2f128"), {a, b, std::to_string(control)});
  }
  const bool weaves = n.precision == Precision::Single && n.lanes == 4;
  if (weaves && n.select == std::vector{0, 4, 1, 5}) return call(intrinsic(n, "unpacklo"), {a, b});
  if (weaves && n.select == std::vector{2, 6, 3, 7}) return call(intrinsic(n, "unpackhi"), {a, b});
  return withinHalves(n, a, b);
}

std::string Avx::widen(const Node&, const std::string& a, const std::string&) const {
  return "static_cast<double>(" + a + ")";
}

std::string Avx::round(const Node&, const std::vector<std::string>& pieces) const {
  return "static_cast<float>(" + pieces[0] + ")";
}

bool isBlend(const Node& shuffle) {
  for (int i = 0; i < shuffle.lanes; ++i) {
    if (shuffle.select[i] % shuffle.lanes != i) return false;
  }
  return true;
}

}  // namespace kernelgen
