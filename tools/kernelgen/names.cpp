#include "names.h"

namespace kernelgen {
namespace {

std::string ofLoad(const Node& n) {
  std::string s;
  for (int e : n.elements) {
    if (e != kNoElement) s += (s.empty() ? "x" : "_") + std::to_string(e);
  }
  return s;
}

// One name if all lanes agree but for sign, else the names of the elements.
std::string ofConstant(const Node& n) {
  const auto bare = [](const std::string& s) { return s[0] == 'n' ? s.substr(1) : s; };
  const std::string& first = n.constants[0].name;
  std::string signs, joined;
  bool oneName = true, oneSign = true;
  for (std::size_t i = 0; i < n.constants.size(); ++i) {
    const std::string& s = n.constants[i].name;
    oneName = oneName && bare(s) == bare(first);
    oneSign = oneSign && s == first;
    if (i < 2) signs += s[0] == 'n' ? 'n' : 'p';
    if (i % 2 == 0) joined += (i ? "_" : "") + bare(s);
  }
  if (oneSign) return first;
  return (oneName ? bare(first) : joined) + signs;
}

}  // namespace

std::string Names::next(const Node& n) {
  const auto numbered = [this](const std::string& s) { return s + std::to_string(++temporaries_); };
  switch (n.op) {
    case Op::Scale: {
      const bool isFirst = taken_.insert("scale").second;
      return isFirst ? "scale" : "scale" + std::to_string(n.lanes) + "v";
    }
    case Op::Load: {
      // What was loaded once may be fetched again.
      const std::string name = ofLoad(n);
      return taken_.insert(name).second ? name : numbered(name + "v");
    }
    case Op::Const: {
      std::string name = ofConstant(n);
      for (int copy = 2; !taken_.insert(name).second; ++copy) {
        name = ofConstant(n) + "v" + std::to_string(copy);
      }
      return name;
    }
    default: return numbered("t");
  }
}

std::string Names::ofSigns(const Node& n) {
  std::string s = "signs";
  for (int flipped : n.mask) s += flipped ? '1' : '0';
  return s;
}

}  // namespace kernelgen
