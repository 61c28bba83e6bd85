#include "emit.h"

#include <algorithm>
#include <charconv>
#include <map>
#include <set>
#include <stdexcept>

#include "counts.h"
#include "registers.h"
#include "schedule.h"

namespace kernelgen {
namespace {

std::string number(int n) { return std::to_string(n); }

// The shortest digits that read back as the same number.
std::string literal(double value, Precision precision) {
  char digits[40];
  const auto end =
      precision == Precision::Single
          ? std::to_chars(digits, digits + sizeof digits, static_cast<float>(value)).ptr
          : std::to_chars(digits, digits + sizeof digits, value).ptr;
  std::string s(digits, end);
  if (s.find_first_of(".e") == std::string::npos) s += ".0";
  return precision == Precision::Single ? s + "f" : s;
}

struct Register {
  std::string type;    // C++ type
  std::string prefix;  // of its intrinsics
  std::string suffix;
};

const Register& registerOf(const Node& n) {
  static const Register kFloat{"float", "", ""}, kDouble{"double", "", ""};
  static const Register kFour{"__m128", "_mm_", "_ps"}, kEight{"__m256", "_mm256_", "_ps"};
  static const Register kTwo{"__m128d", "_mm_", "_pd"}, kFourDoubles{"__m256d", "_mm256_", "_pd"};
  const bool single = n.precision == Precision::Single;
  if (n.lanes == 1) return single ? kFloat : kDouble;
  const bool narrow = n.lanes == (single ? 4 : 2);
  return single ? (narrow ? kFour : kEight) : (narrow ? kTwo : kFourDoubles);
}

std::string intrinsic(const Node& n, const std::string& name) {
  const Register& r = registerOf(n);
  return r.prefix + name + r.suffix;
}

std::string call(const std::string& function, const std::vector<std::string>& arguments) {
  std::string s = function + "(";
  for (std::size_t i = 0; i < arguments.size(); ++i) s += (i ? ", " : "") + arguments[i];
  return s + ")";
}

// Values of one type in memory, constants or saved ones, reached through pointers to their middle
// whose offsets fit a byte (`at` in complex/memory.h).
class Places {
 public:
  Places(std::string array, std::string pointer, int bytes)
      : array_(std::move(array)), pointer_(std::move(pointer)), perPointer_(256 / bytes) {}

  std::string operator[](int place) {
    count_ = std::max(count_, place + 1);
    return call("at", {pointer_ + number(place / perPointer_),
                       number(place % perPointer_ - perPointer_ / 2)});
  }

  int count() const { return count_; }

  // Of the array, so that every pointer lies in it.
  int size() const { return (count_ + perPointer_ - 1) / perPointer_ * perPointer_; }

  std::string pointers(const std::string& type) const {
    std::string s;
    for (int first = 0; first < count_; first += perPointer_) {
      s += "  " + type + "* " + pointer_ + number(first / perPointer_) + " = " + array_ + " + " +
           number(first + perPointer_ / 2) + ";\n";
    }
    return s;
  }

 private:
  std::string array_, pointer_;
  int perPointer_, count_ = 0;
};

// Source and destination are named as arrays of reals.
class Statements {
 public:
  explicit Statements(const Kernel& kernel)
      : g_(kernel.graph),
        length_(kernel.id.length),
        namesPlaces_(isLong(kernel.id)),
        names_(g_.size()) {
    const std::vector<NodeId> order = schedule(g_, paceOf(kernel.id));
    for (NodeId id : order) {
      for (NodeId o : g_[id].operands()) {
        if (g_[o].op == Op::Const) declareConstant(o);
        if (g_[o].op == Op::Scale) declareScale(o);
      }
    }
    if (!namesPlaces_) {
      for (NodeId id : order) run(id);
      return;
    }
    for (const Instruction& i : allocate(g_, order)) {
      switch (i.kind) {
        case Instruction::Run:
          if (i.inMemory != kNoNode) nameOf(i.inMemory) = slot(i.inMemory, i.slot);
          run(i.node);
          break;
        case Instruction::Save:
          lines_ += "  " + slot(i.node, i.slot) + " = " + name(i.node) + ";\n";
          break;
        case Instruction::Fetch:
          define(i.node, i.slot == kNoSlot ? value(g_[i.node]) : slot(i.node, i.slot));
      }
    }
  }

  std::string text() const {
    std::string s;
    for (const auto& [type, table] : tables_) {
      s += "  static constexpr " + type + " " + table.array + "[" + number(table.places.size()) +
           "] = {\n" + table.rows + "  };\n" + table.places.pointers("const " + type);
    }
    for (const auto& [type, saved] : saved_) {
      s += "  " + type + " " + saved.array + "[" + number(saved.places.size()) + "];\n" +
           saved.places.pointers(type);
    }
    return s + constants_ + lines_;
  }

 private:
  const std::string& name(NodeId id) const { return names_[static_cast<std::size_t>(id)]; }
  std::string& nameOf(NodeId id) { return names_[static_cast<std::size_t>(id)]; }

  // ---- Statements

  void run(NodeId id) {
    const Node& n = g_[id];
    if (n.op != Op::Store) {
      define(id, value(n));
    } else if (n.unit == Unit::Real) {
      lines_ += "  dst[" + number(n.elements[0]) + "] = " + name(n.a) + ";\n";
    } else {
      store(n.elements, name(n.a), 0, n.elements.size());
    }
  }

  // What was loaded once may be fetched again.
  void define(NodeId id, const std::string& text) {
    const Node& n = g_[id];
    std::string label = n.op == Op::Load ? loadName(n) : "t" + number(++temporaries_);
    if (n.op == Op::Load && !taken_.insert(label).second) label += "v" + number(++temporaries_);
    nameOf(id) = label;
    lines_ += "  const " + registerOf(n).type + " " + label + " = " + text + ";\n";
  }

  static std::string loadName(const Node& n) {
    std::string s = "x";
    for (int e : n.elements) {
      if (e != kNoElement) s += (s == "x" ? "" : "_") + number(e);
    }
    return s;
  }

  // ---- Values in memory

  struct Array {
    std::string array;
    Places places;
    std::string rows = "";
  };

  static Array& arrayOf(std::map<std::string, Array>& arrays, const Node& n, const char* label) {
    const Register& r = registerOf(n);
    const int bytes = n.lanes * (n.precision == Precision::Single ? 4 : 8);
    // Scalar kernels in single precision have values of both types.
    const std::string array = label + std::string(r.type == "float" ? "Single" : "");
    const std::string pointer = array.substr(0, 1) + (r.type == "float" ? "s" : "");
    return arrays.try_emplace(r.type, Array{array, Places(array, pointer, bytes)}).first->second;
  }

  std::string slot(NodeId id, int slot) { return arrayOf(saved_, g_[id], "saved").places[slot]; }

  std::string tabulated(const Node& n, const std::vector<std::string>& lanes,
                        const std::string& label) {
    Array& table = arrayOf(tables_, n, "constants");
    const std::string text = table.places[table.places.count()];
    std::string row = lanes[0];
    for (std::size_t i = 1; i < lanes.size(); ++i) row += ", " + lanes[i];
    table.rows += "      " + (lanes.size() > 1 ? "{" + row + "}" : row) + ",  // " + label + "\n";
    return text;
  }

  // ---- Constants

  void declareConstant(NodeId id) {
    if (!name(id).empty()) return;
    const Node& n = g_[id];
    std::string label = constantName(n);
    for (int copy = 2; !taken_.insert(label).second; ++copy)
      label = constantName(n) + "v" + number(copy);
    std::vector<std::string> lanes;
    bool same = true;
    for (const RoundedConstant& c : n.constants) {
      lanes.push_back(literal(c.value, n.precision));
      same = same && lanes.back() == lanes[0];  // as text: 0 is not -0
    }
    nameOf(id) = namesPlaces_ ? tabulated(n, lanes, label) : label;
    if (namesPlaces_) return;
    std::string v = lanes[0];
    if (n.lanes == 1 && n.constants[0].value == 2) v = call("hidden", {v});
    if (n.lanes > 1) {
      v = same ? call(intrinsic(n, "set1"), {lanes[0]}) : call(intrinsic(n, "setr"), lanes);
    }
    constants_ += "  const " + registerOf(n).type + " " + label + " = " + v + ";\n";
  }

  // One name if all lanes agree but for sign, else the names of the elements.
  static std::string constantName(const Node& n) {
    const auto bare = [](const std::string& s) { return s[0] == 'n' ? s.substr(1) : s; };
    std::string signs, joined;
    bool oneName = true, oneSign = true;
    for (std::size_t i = 0; i < n.constants.size(); ++i) {
      const std::string& s = n.constants[i].name;
      oneName = oneName && bare(s) == bare(n.constants[0].name);
      oneSign = oneSign && s == n.constants[0].name;
      if (i < 2) signs += s[0] == 'n' ? 'n' : 'p';
      if (i % 2 == 0) joined += (i ? "_" : "") + bare(s);
    }
    if (oneSign) return n.constants[0].name;
    return oneName ? bare(n.constants[0].name) + signs : joined + signs;
  }

  void declareScale(NodeId id) {
    if (!name(id).empty()) return;
    const Node& n = g_[id];
    nameOf(id) = "scale";
    const std::string v =
        n.lanes == 1 ? "*factor" : "broadcast<" + registerOf(n).type + ">(factor)";
    constants_ += "  const " + registerOf(n).type + " scale = " + v + ";\n";
  }

  std::string signMask(const Node& n) {
    std::string label = "signs";
    std::vector<std::string> lanes;
    for (int flipped : n.mask) {
      label += flipped ? '1' : '0';
      lanes.push_back(literal(flipped ? -0.0 : 0.0, n.precision));
    }
    if (taken_.insert(label).second) {
      constants_ += "  const " + registerOf(n).type + " " + label + " = " +
                    call(intrinsic(n, "setr"), lanes) + ";\n";
    }
    return label;
  }

  // ---- Values

  std::string value(const Node& n) {
    switch (n.op) {
      case Op::Load: return n.unit == Unit::Real ? "src[" + number(n.elements[0]) + "]" : load(n);
      case Op::Add: return name(n.a) + " + " + name(n.b);
      case Op::Sub: return name(n.a) + " - " + name(n.b);
      case Op::Mul: return name(n.a) + " * " + name(n.b);
      case Op::Flip:
        return n.lanes == 1 ? "-" + name(n.a) : call(intrinsic(n, "xor"), {name(n.a), signMask(n)});
      case Op::Shuffle: return shuffle(n);
      case Op::Widen: return "static_cast<double>(" + name(n.a) + ")";
      case Op::Round: return "static_cast<float>(" + name(n.a) + ")";
      default: throw std::logic_error("not a value");
    }
  }

  std::string shuffle(const Node& n) {
    const std::string &a = name(n.a), &b = name(n.b);
    const std::size_t width = static_cast<std::size_t>(n.lanes);
    const int lanes = n.lanes;
    if (isBlend(n)) {
      int mask = 0;
      for (std::size_t i = 0; i < width; ++i) mask |= (n.select[i] >= lanes) << i;
      return call(intrinsic(n, "blend"), {a, b, number(mask)});
    }
    // Whole halves of a 256-bit vector.
    const std::size_t half = width / 2;
    const int size = static_cast<int>(half);
    bool halves = (n.precision == Precision::Single ? lanes == 8 : lanes == 4);
    for (std::size_t i = 0; i < width && halves; ++i) {
      halves = n.select[i] % size == static_cast<int>(i % half) &&
               n.select[i] / size == n.select[i - i % half] / size;
    }
    if (halves) {
      const std::string function = intrinsic(n, "permute2f128");
      return call(function, {a, b, number(n.select[0] / size | n.select[half] / size << 4)});
    }
    return n.precision == Precision::Single ? shuffleSingle(n, a, b) : shuffleDouble(n, a, b);
  }

  // Within each 128-bit half: two lanes of one operand, then two of the other; or the low or the
  // high lanes of both in turn.
  std::string shuffleSingle(const Node& n, const std::string& a, const std::string& b) {
    const int lanes = n.lanes;
    if (n.select == std::vector<int>{0, 4, 1, 5}) return call(intrinsic(n, "unpacklo"), {a, b});
    if (n.select == std::vector<int>{2, 6, 3, 7}) return call(intrinsic(n, "unpackhi"), {a, b});
    int control = 0;
    bool permute = true, fits = true;
    for (int i = 0; i < lanes; ++i) {
      const int from = n.select[i];
      const int first = n.select[static_cast<std::size_t>(i % 4)];  // the same place, first half
      fits = fits && (from % lanes) / 4 == i / 4 && from % 4 == first % 4 &&
             from / lanes == n.select[static_cast<std::size_t>(i % 4 / 2 * 2)] / lanes;
      permute = permute && from < lanes;
      if (i < 4) control |= (from % 4) << (2 * i);
    }
    if (!fits) throw std::logic_error("no instruction for a shuffle");
    if (permute) return call(intrinsic(n, "permute"), {a, number(control)});
    const bool aFirst = n.select[0] < lanes;
    return call(intrinsic(n, "shuffle"), {aFirst ? a : b, aFirst ? b : a, number(control)});
  }

  // Within each half: one lane of one operand, then one of the other.
  std::string shuffleDouble(const Node& n, const std::string& a, const std::string& b) {
    const int lanes = n.lanes;
    int control = 0;
    bool permute = true, fits = true;
    for (int i = 0; i < lanes; ++i) {
      const int from = n.select[i];
      fits = fits && (from % lanes) / 2 == i / 2 &&
             from / lanes == n.select[static_cast<std::size_t>(i % 2)] / lanes;
      permute = permute && from < lanes;
      control |= (from % 2) << i;
    }
    if (!fits) throw std::logic_error("no instruction for a shuffle");
    if (permute) return call(intrinsic(n, "permute"), {a, number(control)});
    const bool aFirst = n.select[0] < lanes;
    return call(intrinsic(n, "shuffle"), {aFirst ? a : b, aFirst ? b : a, number(control)});
  }

  // ---- Memory

  std::string place(const char* array, int element) const {
    return element == 0 ? array : std::string(array) + " + " + number(2 * element);
  }

  // The policy's own access where a vector starts on a boundary of its size, an unaligned one where
  // it does not.
  std::string policy(int element, std::size_t elements) const {
    return element % static_cast<int>(elements) == 0 ? "Memory::" : "Unaligned::";
  }

  std::string load(const Node& n) { return loadRun(n.elements, 0, n.elements.size()); }

  std::string loadRun(const std::vector<int>& e, std::size_t begin, std::size_t end) {
    const std::size_t count = end - begin;
    const bool fullSize = g_.precision() == Precision::Double || count > 1;
    if (fullSize && contiguous(e, begin, end)) {
      return policy(e[begin], count) + "load" + number(static_cast<int>(count)) + "(" +
             place("src", e[begin]) + ")";
    }
    if (!fullSize) throw std::logic_error("a single element is loaded as part of a pair");
    if (g_.precision() == Precision::Single && count == 2) {
      if (e[begin + 1] == kNoElement) return "loadLow(" + place("src", e[begin]) + ")";
      // Two full loads and a blend where both stay inside the source: no shuffle at all.
      const bool inside = e[begin] + 1 < length_ && e[begin + 1] > 0;
      return inside
                 ? "blendPair(" + place("src", e[begin]) + ", " + place("src", e[begin + 1] - 1) +
                       ")"
                 : "loadPair(" + place("src", e[begin]) + ", " + place("src", e[begin + 1]) + ")";
    }
    const std::size_t middle = (begin + end) / 2;
    return "joined(" + loadRun(e, begin, middle) + ", " + loadRun(e, middle, end) + ")";
  }

  void store(const std::vector<int>& e, const std::string& v, std::size_t begin, std::size_t end) {
    const std::size_t count = end - begin;
    const bool single = g_.precision() == Precision::Single;
    if (contiguous(e, begin, end) && (count > 1 || !single)) {
      lines_ +=
          "  " + policy(e[begin], count) + "store(" + place("dst", e[begin]) + ", " + v + ");\n";
    } else if (single && count == 2) {
      const auto part = [&](const char* function, int element) {
        if (element == kNoElement) return;
        lines_ += std::string("  ") + function + "(" + place("dst", element) + ", " + v + ");\n";
      };
      part("storeLow", e[begin]);
      part("storeHigh", e[begin + 1]);
    } else if (count > 1) {
      const std::size_t middle = (begin + end) / 2;
      store(e, "lowHalf(" + v + ")", begin, middle);
      store(e, "highHalf(" + v + ")", middle, end);
    }
  }

  const Graph& g_;
  const int length_;
  const bool namesPlaces_;  // of constants and of what registers cannot hold
  std::vector<std::string> names_;
  int temporaries_ = 0;
  std::set<std::string> taken_;
  std::map<std::string, Array> tables_, saved_;
  std::string constants_, lines_;
};

struct Parameter {
  std::string type, name;
};

// How a kernel is called. A by-length entry takes the same with the selector before the flag.
std::vector<Parameter> parameters(const KernelId& id) {
  const bool single = id.precision == Precision::Single;
  const std::string element = id.family == Family::Complex ? (single ? "Complex32" : "Complex64")
                                                           : (single ? "float" : "double");
  return {{"const " + element + "* ", "src"}, {element + "* ", "dst"}, {"int32_t ", "flag"}};
}

std::string declaration(const std::string& symbol, const std::vector<Parameter>& parameters) {
  std::vector<std::string> list;
  for (const Parameter& p : parameters) list.push_back(p.type + p.name);
  return call("int32_t " + symbol, list) + " ZVXG_NOEXCEPT";
}

std::string signature(const KernelId& id) { return declaration(id.symbol(), parameters(id)); }

std::string factors(const KernelId& id) {
  const std::string direction = !isDirected(id.family)               ? "undirected"
                                : id.direction == Direction::Forward ? "forward"
                                                                     : "inverse";
  return call(direction + "Factors",
              {literal(byLength(id.length, id.precision), id.precision),
               literal(byRootOfLength(id.length, id.precision), id.precision)});
}

std::string bodyName(const KernelId& id) {
  constexpr const char* kSpectra[] = {"", "Ccs", "Pack", "Perm"};
  const std::string direction = id.direction == Direction::Forward ? "forward" : "inverse";
  const std::string name =
      id.family == Family::Hartley ? "hartley" : direction + kSpectra[static_cast<int>(id.layout)];
  const std::string symbol = id.symbol();
  return name + number(id.length) + symbol.substr(symbol.rfind('_'));
}

std::string head(const Kernel& kernel) {
  const Counts c = counts(kernel);
  const Body& body = bodyOf(kernel.id);
  return "// " + kernel.id.symbol() + ": " + body.recipe.print() + ", " +
         (body.width == kScalar ? "scalar" : number(body.width) + " bits") + "\n// " +
         number(c.adds) + " additions, " + number(c.products) + " products by constants, " +
         number(c.scales) + " by the scale, " + number(c.shuffles) + " shuffles, " +
         number(c.logic) + " flips and blends, " + number(c.converts) + " conversions, " +
         number(c.loads) + " loads, " + number(c.stores) + " stores\n";
}

// The by-length entry of kernels that follow one another.
std::string entry(const std::string& symbol, const std::vector<KernelId>& kernels) {
  std::vector<Parameter> list = parameters(kernels.front());
  std::vector<std::string> arguments = {"kKernels", "len"};
  for (const Parameter& p : list) arguments.push_back(p.name);
  list.insert(
      std::find_if(list.begin(), list.end(), [](const Parameter& p) { return p.name == "flag"; }),
      {"int32_t ", "len"});
  std::string s = "extern \"C\" " + declaration(symbol, list) + " {\n";
  s += "  static constexpr decltype(&" + kernels.front().symbol() + ") kKernels[] = {";
  for (const KernelId& id : kernels) s += "\n      " + id.symbol() + ",";
  s += "\n  };\n";
  s += "  return " + call("enter<" + number(kernels.front().length) + ">", arguments) + ";\n}\n";
  return s;
}

}  // namespace

std::string emitKernel(const Kernel& kernel) {
  const KernelId& id = kernel.id;
  const Body& body = bodyOf(id);
  const std::string real = id.precision == Precision::Single ? "float" : "double";
  const std::string element = body.width == kScalar ? "Anywhere<" + real + ">" : real;
  const std::string parameters =
      "(const " + element + "* src, " + element + "* dst, const " + real + "* factor)";
  const std::string arguments = "(reals(src), reals(dst), &kFactors.ofFlag[flag])";
  std::string s = head(kernel);
  s += "namespace {\n";
  s += body.split ? "template <class Memory>\n" : "";
  // A kernel with one body is that body; clang would leave the longest ones outside.
  s += body.width == kScalar ? "[[gnu::always_inline]] " : "";
  s += "inline int32_t " + bodyName(id) + parameters + " {\n";
  if (!body.split && body.width != kScalar) s += "  using Memory = Unaligned;\n";
  s += Statements(kernel).text();
  s += "  return zvxOk;\n}\n\n";
  if (body.split) {
    // Apart from the aligned body: merged into one function, what the two have in common would be
    // shared, which costs registers and moves.
    s += "[[gnu::noinline]] int32_t unaligned_" + bodyName(id) + parameters + " {\n  return " +
         bodyName(id) + "<Unaligned>(src, dst, factor);\n}\n";
  }
  s += "}  // namespace\n\n";
  s += "extern \"C\" " + signature(id) + " {\n";
  s += "  static constexpr Factors<" + real + "> kFactors = " + factors(id) + ";\n";
  s += "  if (const int32_t status = check(src, dst, flag)) return status;\n";
  if (body.split) {
    s += "  if (!onBoundary<" + number(body.width / 8) + ">(src, dst)) return unaligned_" +
         bodyName(id) + arguments + ";\n";
    s += "  return " + bodyName(id) + "<Aligned>" + arguments + ";\n}\n";
  } else {
    s += "  return " + bodyName(id) + arguments + ";\n}\n";
  }
  return s;
}

std::string emitFile(const std::vector<KernelId>& kernels) {
  std::string s =
      "// Made by kernelgen from its tables; changes belong there.\n"
      "#include \"complex/memory.h\"\n"
      "#include \"frame/frame.h\"\n"
      "#include \"zvxg.h\"\n\n"
      "using namespace zvxg;\n";
  for (const KernelId& id : kernels) s += "\n" + emitKernel(makeKernel(id));
  return s;
}

std::string emitEntries(const std::vector<KernelId>& kernels) {
  std::string s =
      "// Made by kernelgen from its list of kernels; changes belong there.\n"
      "#include \"frame/entry.h\"\n"
      "#include \"zvxg.h\"\n\n"
      "using namespace zvxg;\n";
  std::vector<std::string> order;
  std::map<std::string, std::vector<KernelId>> byEntry;
  for (const KernelId& id : kernels) {
    std::vector<KernelId>& served = byEntry[id.entrySymbol()];
    if (served.empty()) order.push_back(id.entrySymbol());
    if (!served.empty() && id.length != served.back().length + 1) {
      throw std::logic_error(id.symbol() + " does not follow " + served.back().symbol());
    }
    served.push_back(id);
  }
  for (const std::string& symbol : order) s += "\n" + entry(symbol, byEntry[symbol]);
  return s;
}

std::string emitHeader(const std::vector<KernelId>& kernels) {
  static const std::map<Family, std::string> kGroups = {
      {Family::Complex, "complex"}, {Family::Real, "real"}, {Family::Hartley, "hartley"}};
  std::string s =
      "/** @file\n"
      " *  The prototypes of the kernels, written by `kernelgen header`: see zvxg.h, which "
      "includes\n"
      " *  this file, for what they compute. */\n"
      "#ifndef ZVXG_KERNELS_H\n#define ZVXG_KERNELS_H\n\n"
      "#ifndef ZVXG_H\n#error \"include zvxg.h\"\n#endif\n";
  std::string open;
  for (const KernelId& id : kernels) {
    const std::string entry = id.entrySymbol();
    if (entry != open) {
      if (!open.empty()) s += "/** @} */\n/** @} */\n";
      s += "\n/** @addtogroup " + kGroups.at(id.family) + "\n *  @{ */\n/** @name Kernels of " +
           entry + "()\n *  @{ */\n/** The transform of as many points as the name says. */\n";
      open = entry;
    }
    s += "ZVXG_API " + signature(id) + ";\n";
  }
  return s + "/** @} */\n/** @} */\n\n#endif\n";
}

}  // namespace kernelgen
