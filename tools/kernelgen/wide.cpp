#include "wide.h"

#include <algorithm>
#include <stdexcept>

#include "text.h"

namespace kernelgen {

// ---- ConstantTable

namespace {

// Of the angles alone: which of them are negative depends on the direction.
std::string nameOf(const Node& n) {
  if (n.op == Op::Flip) return "signs";
  std::vector<std::string> bare;
  for (const RoundedConstant& c : n.constants) {
    const std::string s = c.name[0] == 'n' ? c.name.substr(1) : c.name;
    if (bare.empty() || bare.back() != s) bare.push_back(s);
  }
  std::string name;
  for (const std::string& s : bare) name += (name.empty() ? "" : "_") + s;
  return name;
}

}  // namespace

std::string ConstantTable::at(const Node& n) {
  std::vector<std::string> lanes;
  for (const RoundedConstant& c : n.constants) lanes.push_back(literal(c.value, n.precision));
  for (int flipped : n.mask) lanes.push_back(literal(flipped ? -0.0 : 0.0, n.precision));
  const std::string row = "{" + listed(lanes) + "}";
  std::string& name = known_[row];
  if (!name.empty()) return name;
  name = nameOf(n) + suffix_;
  for (int copy = 2; !taken_.insert(name).second; ++copy) {
    name = nameOf(n) + "v" + std::to_string(copy) + suffix_;
  }
  names_ += (names_.empty() ? "" : ", ") + name;
  rows_ += "      " + row + ",  // " + name + "\n";
  return name;
}

// ---- Wide

std::string Wide::type(const Node& n) const {
  if (n.precision == Precision::Double) return "Doubles";
  return widths_ == Widths::HalfOfSingles ? "HalfSingles" : "Singles";
}

int Wide::bytes(const Node&) const { throw std::logic_error("a register of unknown size"); }

std::vector<std::string> Wide::pieces(const Node& n) const {
  const bool isTwo = n.precision == Precision::Double && widths_ == Widths::TwoOfDoubles;
  return isTwo ? std::vector<std::string>{"low", "high"} : std::vector<std::string>{""};
}

std::string Wide::constant(const Node& n) const {
  if (n.precision == Precision::Single) return "singles[" + singles_->at(n) + "]";
  return "doubles[" + doubles_->at(n) + "]";
}

std::string Wide::scale(const Node&) const { return "scale"; }

std::string Wide::signs(const Node& n) const { return constant(n); }

std::string Wide::flip(const Node&, const std::string& a, const std::string& signs) const {
  return call("flipped", {a, signs});
}

std::string Wide::shuffle(const Node& n, const std::string& a, const std::string& b) const {
  std::vector<std::string> select;
  for (int i : n.select) select.push_back(std::to_string(i));
  return "shuffled<" + listed(select) + ">(" + a + ", " + b + ")";
}

std::string Wide::widen(const Node&, const std::string& a, const std::string& piece) const {
  if (a == "scale") return "scaleInDouble";
  return call(piece.empty() ? "widened" : piece == "low" ? "widenedLow" : "widenedHigh", {a});
}

std::string Wide::round(const Node&, const std::vector<std::string>& pieces) const {
  return call("rounded", pieces);
}

// ---- Access

namespace {

std::string real(int element) { return std::to_string(2 * element); }

bool followEachOther(const std::vector<int>& elements, std::size_t first, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) {
    if (elements[first + i] != elements[first] + static_cast<int>(i)) return false;
  }
  return true;
}

// Where the elements of a transform are loaded from: one place, or one for each 128 bits.
std::vector<std::string> placesOf(const Node& load) {
  const std::vector<int>& e = load.elements;
  if (std::ranges::count(e, kNoElement) > 0 && e.size() == 2) return {real(std::max(e[0], e[1]))};
  if (followEachOther(e, 0, e.size())) return {real(e[0])};
  std::vector<std::string> places;
  const std::size_t step = load.precision == Precision::Single ? 2 : 1;
  for (std::size_t i = 0; i < e.size(); i += step) {
    const bool isWhole = e[i] != kNoElement && followEachOther(e, i, step);
    if (!isWhole) throw std::logic_error("a load of several transforms takes whole 128 bits");
    places.push_back(real(e[i]));
  }
  return places;
}

}  // namespace

std::string RowAccess::load(const Node& n) const {
  return call("x.load", {std::to_string(n.elements[0])});
}

std::vector<std::string> RowAccess::store(const Node& n, const std::string& value) const {
  return {call("y.store", {std::to_string(n.elements[0]), value})};
}

std::string PartAccess::load(const Node& n) const {
  const int number = n.elements[0];
  return call(number % 2 == 0 ? "x.loadRe" : "x.loadIm", {std::to_string(number / 2)});
}

std::vector<std::string> PartAccess::store(const Node& n, const std::string& value) const {
  const int number = n.elements[0], re = number / 2 * 2;
  waiting_[number] = value;
  if (!waiting_.contains(number ^ 1)) return {};
  return {call("y.store", {std::to_string(number / 2), waiting_[re], waiting_[re + 1]})};
}

std::string BesideAccess::load(const Node& n) const {
  const std::vector<int>& e = n.elements;
  if (e == std::vector{e[0], kNoElement}) return call("x.loadPair<0>", placesOf(n));
  if (e == std::vector{kNoElement, e[1]}) return call("x.loadPair<1>", placesOf(n));
  return call("x.load", placesOf(n));
}

std::vector<std::string> BesideAccess::store(const Node& n, const std::string& value) const {
  std::vector<std::string> out;
  const std::vector<int>& e = n.elements;
  for (std::size_t i = 0, count; i < e.size(); i += count) {
    count = e.size();
    while (count > 1 && (i % count != 0 || !followEachOther(e, i, count))) count /= 2;
    if (e[i] == kNoElement) continue;
    const int first = static_cast<int>(2 * i), lanes = static_cast<int>(2 * count);
    out.push_back("y.store<" + listed({std::to_string(first), std::to_string(lanes)}) + ">" +
                  call("", {real(e[i]), value}));
  }
  return out;
}

int BesideAccess::count(const Node& n) const {
  return n.op == Op::Load ? static_cast<int>(placesOf(n).size())
                          : static_cast<int>(store(n, "").size());
}

}  // namespace kernelgen
