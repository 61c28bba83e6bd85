#include "many.h"

#include <algorithm>
#include <memory>
#include <stdexcept>
#include <vector>

#include "many_readings.h"
#include "statements.h"
#include "text.h"
#include "wide.h"

namespace kernelgen {
namespace {

constexpr Pace kPace = {.live = 8, .issue = 4};

// ---- Patterns

constexpr const char* kFile = R"(// Made by kernelgen from its tables; changes belong there.
#include "many/rows.h"
#include "many/vectors.h"

namespace zvxg::many::ZVXG_MACHINE {
$text
}  // namespace zvxg::many::ZVXG_MACHINE
)";

constexpr const char* kBody = R"(
// $symbol: $reading
namespace {
$template$inlining void $body($parameters$partsParameter$tableParameters) {
$names$start  for (turns *= $loops; turns > 0; --turns) {
$hide$turn$statements$advance  }
}
}  // namespace
)";

constexpr const char* kFunction = R"(
namespace {
$tables}
$result $name($parameters) {
  $body$layout($arguments$parts$tableArguments);
}
)";

constexpr const char* kTable = R"(constexpr auto $name_$table = repeated<$vectors, $group>({
$rows  });
)";

// Side by side, registers of 512 bits are joined from four places and stored to as many. Short kernels
// take up to twice the time of those of AVX, long ones as much (Zen 4): those of AVX serve every machine.
constexpr const char* kIfAvx = R"(
#if ZVXG_VECTOR_BYTES == 32
$text#endif
)";

// Kernels of the machine of the file, and of AVX, which every processor has.
constexpr const char* kTables = R"(// Made by kernelgen from its tables; changes belong there.
#include "many/rows.h"

namespace zvxg::many {
namespace avx {
$declarations}  // namespace avx
#if ZVXG_VECTOR_BYTES > 32
namespace ZVXG_MACHINE {
$declarations}  // namespace ZVXG_MACHINE
#endif

namespace ZVXG_MACHINE {
$tables
}  // namespace ZVXG_MACHINE
}  // namespace zvxg::many
)";

// Kernels on contiguous transforms, and their table.
constexpr const char* kContiguousFile =
    R"(// Made by kernelgen from its tables; changes belong there.
#include "many/contiguous.h"
#include "many/tiles.h"

namespace zvxg::many::ZVXG_MACHINE {
static_assert(kMaxContiguous == $longest);
$text
constinit const ContiguousKernels<$real> $name = {
    {$toSpectrum},
    {$toSamples},
    $hartley,
};
}  // namespace zvxg::many::ZVXG_MACHINE
)";

constexpr const char* kKernels = R"(
constinit const Kernels<$real> $name = {
    ZVXG_VECTOR_BYTES / sizeof($real),
    {$forwardRows, $inverseRows},
    {$forwardBeside, $inverseBeside},
    $toSpectrum,
    $toSamples,
    $hartley,
};
)";

// What a function has for its parameters, and a turn for x and y.
struct Frame {
  const char *parameters, *arguments, *start, *turn, *advance;
};

constexpr Frame kRows = {
    "const $real* src, std::ptrdiff_t srcStep, $real* dst, std::ptrdiff_t dstStep, "
    "const $real* factor, std::ptrdiff_t turns",
    "src, srcStep, dst, dstStep, factor, turns", "",
    R"(    const Rows<const $vector, $length> x(src, srcStep);
    const Rows<$vector, $length> y(dst, dstStep);
)",
    R"(    src += kLanes<$vector>;
    dst += kLanes<$vector>;
)"};

constexpr Frame kPartRows = {kRows.parameters, kRows.arguments, "",
                             R"(    const PartRows<const $vector, $length> x(src, srcStep);
    const PartRows<$vector, $length> y(dst, dstStep);
)",
                             R"(    src += 2 * kLanes<$vector>;
    dst += 2 * kLanes<$vector>;
)"};

// Of a kernel that exchanges parts.
constexpr Frame kOrderedPartRows = {
    kPartRows.parameters, kPartRows.arguments, "  const PartOrder<$vector> order(parts);\n",
    R"(    const PartRows<const $vector, $length, PartOrder<$vector>> x(src, srcStep, order);
    const PartRows<$vector, $length, PartOrder<$vector>> y(dst, dstStep, order);
)",
    kPartRows.advance};

constexpr Frame kBeside = {kRows.parameters, kRows.arguments, "",
                           R"(    const Beside<const $vector, $group> x(src, srcStep);
    const Beside<$vector, $group> y(dst, dstStep);
)",
                           R"(    src += x.kTransforms * srcStep;
    dst += y.kTransforms * dstStep;
)"};

// Contiguous transforms, `srcStep` and `dstStep` apart, which registers hold at once.
constexpr Frame kContiguous = {kRows.parameters, kRows.arguments, "",
                               R"(    const Tiles<$vector, $length> x(src, srcStep);
    Tiles<$vector, $length> y;
)",
                               R"(    y.write(dst, dstStep);
    src += kLanes<$vector> * srcStep;
    dst += kLanes<$vector> * dstStep;
)"};

constexpr Frame kContiguousToSpectrum = {kRows.parameters, kRows.arguments, "",
                                         R"(    const Tiles<$vector, $length> x(src, srcStep);
    SpectrumTiles<$vector, $length, kLayout> y;
)",
                                         kContiguous.advance};

constexpr Frame kContiguousToSamples = {
    kRows.parameters, kRows.arguments, "",
    R"(    const SpectrumTiles<$vector, $length, kLayout> x(src, srcStep);
    Tiles<$vector, $length> y;
)",
    kContiguous.advance};

constexpr Frame kToSpectrum = {
    "const $real* src, std::ptrdiff_t srcStep, const SpectrumRows<$real>& dst, "
    "const $real* factor, std::ptrdiff_t turns",
    "src, srcStep, dst, factor, turns", "  SpectrumRows<$real> spectrum = dst;\n",
    R"(    const Rows<const $vector, $length> x(src, srcStep);
    SpectrumOf<$vector, $length> y(spectrum);
)",
    R"(    src += kLanes<$vector>;
    advance(spectrum, kLanes<$vector>);
)"};

constexpr Frame kToSamples = {
    "const SpectrumRows<const $real>& src, $real* dst, std::ptrdiff_t dstStep, "
    "const $real* factor, std::ptrdiff_t turns",
    "src, dst, dstStep, factor, turns", "  SpectrumRows<const $real> spectrum = src;\n",
    R"(    SpectrumOf<const $vector, $length> x(spectrum);
    const Rows<$vector, $length> y(dst, dstStep);
)",
    R"(    advance(spectrum, kLanes<$vector>);
    dst += kLanes<$vector>;
)"};

const Frame& frameOf(const ManyKernel& kernel) {
  if (kernel.reading == Reading::Contiguous) {
    if (kernel.id.family == Family::Hartley) return kContiguous;
    return kernel.id.direction == Direction::Forward ? kContiguousToSpectrum : kContiguousToSamples;
  }
  switch (kernel.id.family) {
    case Family::Complex:
      switch (kernel.reading) {
        case Reading::Elements: return kRows;
        case Reading::Scalars: return kernel.exchangesParts() ? kOrderedPartRows : kPartRows;
        case Reading::Beside: return kBeside;
        case Reading::Contiguous: break;
      }
      break;
    case Family::Real: return kernel.id.direction == Direction::Forward ? kToSpectrum : kToSamples;
    case Family::Hartley: return kRows;
  }
  throw std::logic_error("no frame for " + kernel.id.symbol());
}

std::string nameOf(const KernelId& id, Reading reading) {
  const std::string symbol = id.symbol();
  const std::string end = std::to_string(id.length) + symbol.substr(symbol.rfind('_'));
  const bool forward = id.direction == Direction::Forward;
  if (reading == Reading::Contiguous) return "contiguous" + nameOf(id, Reading::Scalars);
  switch (id.family) {
    case Family::Complex:
      return (forward ? "forward" : "inverse") +
             std::string(reading == Reading::Beside ? "Beside" : "Rows") + end;
    case Family::Real: return (forward ? "toSpectrum" : "toSamples") + end;
    case Family::Hartley: return "hartley" + end;
  }
  throw std::logic_error("no name for " + symbol);
}

// ---- Text

// Half a register of singles doubles the work on these and saves half of that on doubles, the joining
// of two registers to one, and registers, of which there are never enough.
Widths widthsOf(const Graph& g) {
  int singles = 0, doubles = 0, conversions = 0;
  for (NodeId id = 0; id < g.size(); ++id) {
    const Node& n = g[id];
    const bool isProduct = n.op == Op::Add || n.op == Op::Sub || n.op == Op::Mul;
    if (isProduct) ++(n.precision == Precision::Single ? singles : doubles);
    conversions += n.op == Op::Widen || n.op == Op::Round;
  }
  if (conversions == 0) return Widths::OneRegister;
  const int two = singles + 2 * doubles + 3 * conversions,
            half = 2 * (singles + doubles + conversions);
  return 10 * half <= 11 * two ? Widths::HalfOfSingles : Widths::TwoOfDoubles;
}

// The statements of a kernel, and the constants that they use.
struct Text {
  Widths widths = Widths::OneRegister;
  ConstantTable singles{"f"}, doubles{""};
  std::string statements;
};

bool isOfParts(const KernelId& id, Reading reading) {
  return id.family == Family::Complex && reading == Reading::Scalars;
}

std::unique_ptr<Access> accessOf(const KernelId& id, Reading reading) {
  if (reading == Reading::Beside) return std::make_unique<BesideAccess>();
  if (isOfParts(id, reading)) return std::make_unique<PartAccess>();
  return std::make_unique<RowAccess>();
}

Text textOf(const KernelId& id, Reading reading) {
  const Graph graph = checkedGraph(id, reading);
  Text text;
  text.widths = widthsOf(graph);
  // Tiles are of whole registers.
  if (reading == Reading::Contiguous && text.widths == Widths::HalfOfSingles) {
    text.widths = Widths::TwoOfDoubles;
  }
  Design design = designOf(id);
  design.pace = kPace;
  design.isLong = false;
  text.statements = statements(graph, design, Wide(text.widths, text.singles, text.doubles),
                               *accessOf(id, reading));
  return text;
}

ManyCounts countsOf(const KernelId& id, Reading reading) {
  const Graph graph = graphOf(id, reading);
  const Widths widths = widthsOf(graph);
  ConstantTable constants("");
  const Wide machine(widths, constants, constants);
  const int registers = kAvxBytes / groupBytesOf(id, reading);
  const int transforms = widths == Widths::HalfOfSingles ? registers / 2 : registers;
  Counts c = counts(graph, machine, *accessOf(id, reading));
  if (isOfParts(id, reading)) {
    const bool ordersToo = ManyKernel{id, reading}.exchangesParts();
    c.shuffles += (ordersToo ? 2 : 1) * (c.loads + c.stores);
  }
  if (reading == Reading::Beside) {
    c.shuffles += (transforms - 1) * c.loads;
    c.loads *= transforms;
    c.stores *= transforms;
  }
  c.bound = boundOfVectors(c);
  return {printed(reading), c, transforms};
}

class Printer {
 public:
  explicit Printer(const ManyKernel& kernel)
      : kernel_(kernel), frame_(frameOf(kernel)), group_(groupOf(kernel.id, kernel.reading)) {
    const KernelId& id = kernel.id;
    values_ = {{"real", id.precision == Precision::Single ? "float" : "double"},
               {"length", std::to_string(id.length)},
               {"group", std::to_string(group_)},
               {"body", nameOf(id, kernel.reading) + "Body"},
               // What has one caller may as well be its text.
               {"inlining", kernel.isShared() ? "[[gnu::noinline]]" : "ZVXG_INLINE inline"},
               {"partsParameter", kernel.exchangesParts() ? ", Parts parts" : ""},
               {"template", kernel.hasLayouts() ? "template <Layout kLayout>\n" : ""},
               {"result", kernel.hasLayouts() ? "template <Layout kLayout>\nvoid" : "void"},
               {"layout", kernel.hasLayouts() ? "<kLayout>" : ""},
               {"reading", printed(kernel.reading)}};
  }

  std::string print() {
    const KernelId& id = kernel_.id;
    const Text text = textOf(id, kernel_.reading);
    std::string s = body(text) + function(id, text);
    if (kernel_.exchangesParts()) {
      checkedGraph(inverseOf(id), kernel_.reading);
      s += function(inverseOf(id), text);
    }
    if (kernel_.sharesConstants()) {
      const Text inverse = textOf(inverseOf(id), kernel_.reading);
      if (inverse.statements != text.statements) {
        throw std::logic_error(id.symbol() + " has other statements than its inverse");
      }
      s += function(inverseOf(id), inverse);
    }
    return isOfAvx() ? filled(kIfAvx, {{"text", s}}) : s;
  }

  std::string declaration(const KernelId& id) const {
    return "void " + nameOf(id, kernel_.reading) + "(" + with(frame_.parameters) + ");\n";
  }

  // "{name, transforms}," or, of a half spectrum, "{{name, transforms}, takesBins},"
  std::string entry(const KernelId& id) const {
    if (isOfAvx()) return entryOfAvx(id);
    const std::string transforms = "ZVXG_VECTOR_BYTES / " + std::to_string(groupBytes());
    return entry(id, nameOf(id, kernel_.reading), transforms, "ZVXG_VECTOR_BYTES > 32");
  }

  // The same where it is that of AVX for every machine.
  std::string entryOfAvx(const KernelId& id) const {
    return entry(id, "avx::" + nameOf(id, kernel_.reading),
                 std::to_string(kAvxBytes / groupBytes()), "false");
  }

 private:
  static std::string entry(const KernelId& id, const std::string& name,
                           const std::string& transforms, const std::string& takesBins) {
    const std::string kernel = "{" + listed({name, transforms}) + "}";
    const bool isSpectrum = id.family == Family::Real;
    return "    " + (isSpectrum ? "{" + listed({kernel, takesBins}) + "}" : kernel) + ",\n";
  }

  bool isOfAvx() const { return kernel_.reading == Reading::Beside; }

  int groupBytes() const { return groupBytesOf(kernel_.id, kernel_.reading); }

  std::string with(const char* pattern, std::map<std::string, std::string> more = {}) const {
    more.insert(values_.begin(), values_.end());
    return filled(pattern, more);
  }

  std::string forTables(const Text& text, const char* pattern, const std::string& name = "") const {
    const char* const singles = text.widths == Widths::HalfOfSingles ? "HalfSingles" : "Singles";
    std::string s;
    const auto forTable = [&](const ConstantTable& table, const char* which, const char* vectors) {
      if (table.empty()) return;
      s += with(pattern, {{"name", name},
                          {"table", which},
                          {"vectors", vectors},
                          {"names", table.names()},
                          {"rows", table.rows()}});
    };
    forTable(text.singles, "singles", singles);
    forTable(text.doubles, "doubles", "Doubles");
    return s;
  }

  std::string body(const Text& text) const {
    const bool single = kernel_.id.precision == Precision::Single;
    const bool isHalf = text.widths == Widths::HalfOfSingles;
    const std::string vector = isHalf ? "HalfSingles" : single ? "Singles" : "Doubles";
    std::string start = "  const auto scale = all<" + vector + ">(*factor);\n";
    if (text.widths != Widths::OneRegister) {
      start += "  [[maybe_unused]] const auto scaleInDouble = all<Doubles>(*factor);\n";
    }
    return with(kBody,
                {{"symbol", kernel_.id.symbol() + (kernel_.isShared() ? " and its inverse" : "")},
                 {"parameters", with(frame_.parameters)},
                 {"tableParameters", forTables(text, ", Table<$vectors, $group> $table")},
                 {"names", forTables(text, "  enum { $names };\n")},
                 {"start", start + with(frame_.start, {{"vector", vector}})},
                 {"loops", isHalf ? "2" : "1"},
                 {"hide", forTables(text, "    $table.hide();\n")},
                 {"turn", with(frame_.turn, {{"vector", vector}})},
                 {"statements", text.statements},
                 {"advance", with(frame_.advance, {{"vector", vector}})}});
  }

  std::string function(const KernelId& id, const Text& text) const {
    const std::string name = nameOf(id, kernel_.reading);
    return with(kFunction, {{"name", name},
                            {"parameters", with(frame_.parameters)},
                            {"tables", forTables(text, kTable, name)},
                            {"arguments", frame_.arguments},
                            {"parts", partsArgument(id)},
                            {"tableArguments", forTables(text, ", $name_$table.table()", name)}});
  }

  const char* partsArgument(const KernelId& id) const {
    if (!kernel_.exchangesParts()) return "";
    return id.direction == Direction::Forward ? ", Parts::AsTheyAre" : ", Parts::Exchanged";
  }

  const ManyKernel kernel_;
  const Frame& frame_;
  const int group_;
  std::map<std::string, std::string> values_;
};

}  // namespace

std::string emitMany(int first, int last, int part, int parts) {
  std::vector<ManyKernel> kernels = manyKernels();
  std::erase_if(kernels,
                [&](const ManyKernel& k) { return k.id.length < first || k.id.length > last; });
  std::string text;
  for (std::size_t i = part; i < kernels.size(); i += parts) text += Printer(kernels[i]).print();
  return filled(kFile, {{"text", text}});
}

std::string emitManyTables(int longest) {
  std::string declarations, tables;
  std::map<std::string, std::string> entries;
  for (const ManyKernel& kernel : manyKernels()) {
    const bool isOwn = kernel.id.length <= longest;
    const Printer printer(kernel);
    const auto enter = [&](const KernelId& id) {
      declarations += printer.declaration(id);
      entries[nameOf(id, kernel.reading)] = isOwn ? printer.entry(id) : printer.entryOfAvx(id);
    };
    enter(kernel.id);
    if (kernel.isShared()) enter(inverseOf(kernel.id));
  }
  for (const Precision p : {Precision::Single, Precision::Double}) {
    const auto table = [&](Family family, Direction d, Layout layout, bool isBeside) {
      std::string s;
      for (int n = kMinLength; n <= kMaxLength; ++n) {
        const KernelId id{family, d, n, p, layout};
        const auto entry = entries.find(nameOf(id, isBeside ? Reading::Beside : readingOf(id)));
        s += entry == entries.end() ? "    {},\n" : entry->second;
      }
      return "{\n" + s + "}";
    };
    const bool single = p == Precision::Single;
    constexpr Direction kForward = Direction::Forward, kInverse = Direction::Inverse;
    tables +=
        filled(kKernels, {{"real", single ? "float" : "double"},
                          {"name", single ? "kSingle" : "kDouble"},
                          {"forwardRows", table(Family::Complex, kForward, Layout::None, false)},
                          {"inverseRows", table(Family::Complex, kInverse, Layout::None, false)},
                          {"forwardBeside", table(Family::Complex, kForward, Layout::None, true)},
                          {"inverseBeside", table(Family::Complex, kInverse, Layout::None, true)},
                          {"toSpectrum", table(Family::Real, kForward, Layout::Pack, false)},
                          {"toSamples", table(Family::Real, kInverse, Layout::Pack, false)},
                          {"hartley", table(Family::Hartley, kForward, Layout::None, false)}});
  }
  return filled(kTables, {{"declarations", declarations}, {"tables", tables}});
}

std::string emitContiguous(int longest, Precision p) {
  static constexpr char kCcs[] = "<Layout::Ccs>", kPack[] = "<Layout::Pack>",
                        kPerm[] = "<Layout::Perm>";
  std::string text;
  for (const ManyKernel& kernel : contiguousKernels(longest)) {
    if (kernel.id.precision == p) text += Printer(kernel).print();
  }
  const auto runs = [&](Family family, Direction d, const char* layout) {
    std::vector<std::string> names;
    for (int n = kMinLength; n <= longest; ++n) {
      const KernelId id{family, d, n, p, family == Family::Real ? Layout::Pack : Layout::None};
      // Without a bin of half the length, Perm is Pack.
      const bool isPack = n % 2 != 0 && layout == kPerm;
      names.push_back(nameOf(id, Reading::Contiguous) + (isPack ? kPack : layout));
    }
    return "{" + listed(names) + "}";
  };
  const auto spectra = [&](Direction d) {
    return listed(
        {runs(Family::Real, d, kCcs), runs(Family::Real, d, kPack), runs(Family::Real, d, kPerm)});
  };
  const bool single = p == Precision::Single;
  return filled(kContiguousFile, {{"longest", std::to_string(longest)},
                                  {"text", text},
                                  {"real", single ? "float" : "double"},
                                  {"name", single ? "kContiguousSingle" : "kContiguousDouble"},
                                  {"toSpectrum", spectra(Direction::Forward)},
                                  {"toSamples", spectra(Direction::Inverse)},
                                  {"hartley", runs(Family::Hartley, Direction::Forward, "")}});
}

ManyCounts rowCounts(const KernelId& id) { return countsOf(id, readingOf(id)); }

std::optional<ManyCounts> besideCounts(const KernelId& id) {
  if (!goesBeside(id)) return {};
  return countsOf(id, Reading::Beside);
}

}  // namespace kernelgen
