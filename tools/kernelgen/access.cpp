#include "access.h"

#include <span>
#include <stdexcept>

#include "text.h"

namespace kernelgen {
namespace {

using Elements = std::span<const int>;

bool followEachOther(Elements e) {
  for (std::size_t i = 0; i < e.size(); ++i) {
    if (e[i] != e[0] + static_cast<int>(i)) return false;
  }
  return e[0] != kNoElement;
}

Elements lowHalf(Elements e) { return e.first(e.size() / 2); }
Elements highHalf(Elements e) { return e.subspan(e.size() / 2); }

std::string place(const std::string& array, int element) {
  return element == 0 ? array : array + " + " + std::to_string(2 * element);
}

// The policy's own access where a vector starts on a boundary of its size, an unaligned one where
// it does not.
std::string policy(Elements e) {
  return e[0] % static_cast<int>(e.size()) == 0 ? "Memory::" : "Unaligned::";
}

std::string load(Elements e, bool single, int length) {
  const int count = static_cast<int>(e.size());
  if (single && count == 1) {
    throw std::logic_error("a single element is loaded as part of a pair");
  }
  if (followEachOther(e)) {
    return policy(e) + call("load" + std::to_string(count), {place("src", e[0])});
  }
  if (single && count == 2) {
    if (e[1] == kNoElement) return call("loadLow", {place("src", e[0])});
    // Two full loads and a blend where both stay inside the source: no shuffle at all.
    const bool inside = e[0] + 1 < length && e[1] > 0;
    if (inside) return call("blendPair", {place("src", e[0]), place("src", e[1] - 1)});
    return call("loadPair", {place("src", e[0]), place("src", e[1])});
  }
  return call("joined", {load(lowHalf(e), single, length), load(highHalf(e), single, length)});
}

void store(Elements e, bool single, const std::string& v, std::vector<std::string>& out) {
  const bool isPair = single && e.size() == 2;
  if (followEachOther(e) && !(single && e.size() == 1)) {
    out.push_back(policy(e) + call("store", {place("dst", e[0]), v}));
  } else if (isPair) {
    if (e[0] != kNoElement) out.push_back(call("storeLow", {place("dst", e[0]), v}));
    if (e[1] != kNoElement) out.push_back(call("storeHigh", {place("dst", e[1]), v}));
  } else if (e.size() > 1) {
    store(lowHalf(e), single, call("lowHalf", {v}), out);
    store(highHalf(e), single, call("highHalf", {v}), out);
  }
}

int runs(Elements e) {
  if (followEachOther(e)) return 1;
  return e.size() == 1 ? 0 : runs(lowHalf(e)) + runs(highHalf(e));
}

}  // namespace

std::string Arrays::load(const Node& n) const {
  if (n.unit == Unit::Real) return "src[" + std::to_string(n.elements[0]) + "]";
  return kernelgen::load(n.elements, n.precision == Precision::Single, length_);
}

std::vector<std::string> Arrays::store(const Node& n, const std::string& value) const {
  if (n.unit == Unit::Real) return {"dst[" + std::to_string(n.elements[0]) + "] = " + value};
  std::vector<std::string> out;
  kernelgen::store(n.elements, n.precision == Precision::Single, value, out);
  return out;
}

int Arrays::count(const Node& n) const { return runs(n.elements); }

}  // namespace kernelgen
