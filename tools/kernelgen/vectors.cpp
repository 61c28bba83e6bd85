#include "vectors.h"

#include <algorithm>
#include <stdexcept>

#include "text.h"

namespace kernelgen {
namespace {

std::string real(const Node& n) { return n.precision == Precision::Single ? "float" : "double"; }

std::string braced(const std::vector<std::string>& lanes) { return "{" + listed(lanes) + "}"; }

// FloatPair has a vector inside.
bool isPairOfFloats(const Node& n) { return n.precision == Precision::Single && n.lanes == 2; }

std::string place(const std::string& array, int number) {
  return number == 0 ? array : array + " + " + std::to_string(number);
}

}  // namespace

std::string Vectors::type(const Node& n) const {
  if (n.lanes == 1) return real(n);
  if (isPairOfFloats(n)) return "FloatPair";
  return "Vector<" + real(n) + ", " + std::to_string(n.lanes) + ">";
}

int Vectors::bytes(const Node& n) const {
  return n.lanes * (n.precision == Precision::Single ? 4 : 8);
}

std::string Vectors::constant(const Node& n) const {
  std::vector<std::string> lanes;
  for (const RoundedConstant& c : n.constants) lanes.push_back(literal(c.value, n.precision));
  if (n.lanes == 1) return lanes[0];
  return isPairOfFloats(n) ? braced({braced(lanes)}) : braced(lanes);
}

std::string Vectors::scale(const Node& n) const {
  return n.lanes == 1 ? "*factor" : call("broadcastTo<" + type(n) + ">", {"*factor"});
}

std::string Vectors::signs(const Node& n) const {
  std::vector<std::string> lanes;
  for (int flipped : n.mask) lanes.push_back(literal(flipped ? -0.0 : 0.0, n.precision));
  return isPairOfFloats(n) ? braced({braced(lanes)}) : braced(lanes);
}

std::string Vectors::flip(const Node&, const std::string& a, const std::string& signs) const {
  return call("flipped", {a, signs});
}

std::string Vectors::shuffle(const Node& n, const std::string& a, const std::string& b) const {
  std::vector<std::string> select;
  for (int lane : n.select) select.push_back(std::to_string(lane));
  return call("shuffled<" + listed(select) + ">", {a, b});
}

std::string Vectors::widen(const Node& n, const std::string& a, const std::string&) const {
  return call((n.lanes == 1 ? "static_cast<" : "converted<") + type(n) + ">", {a});
}

std::string Vectors::round(const Node& n, const std::vector<std::string>& pieces) const {
  return widen(n, pieces[0], "");
}

std::string Numbers::load(const Node& n) const {
  if (n.lanes == 1) return "src[" + std::to_string(n.elements[0]) + "]";
  return call("load<" + std::to_string(n.lanes) + ">", {place("src", n.elements[0])});
}

std::vector<std::string> Numbers::store(const Node& n, const std::string& value) const {
  if (n.lanes == 1) return {"dst[" + std::to_string(n.elements[0]) + "] = " + value};
  return {call("store", {place("dst", n.elements[0]), value})};
}

}  // namespace kernelgen
