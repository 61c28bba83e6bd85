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
#include "many/tiles.h"

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

constexpr const char* kConstants = R"(
namespace {
$tables}
)";

constexpr const char* kFunction = R"($result $name($parameters) {
  $body$places($arguments$parts$tableArguments);
}
)";

constexpr const char* kTable = R"(constexpr auto $name_$table = repeated<$vectors, $group>({
$rows  });
)";

// Contiguous transforms: registers of 512 bits are joined from four places and stored to as many. Short
// kernels take up to twice the time of those of AVX, long ones as much (Zen 4): those of AVX serve every
// machine.
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
    {$forwardContiguous, $inverseContiguous},
    {$forwardToRows, $inverseToRows},
    $toSpectrum,
    $toSamples,
    $hartley,
};
)";

// What a function has for its parameters, and a turn for x and y.
struct Frame {
  const char *parameters, *arguments, *start, *turn, *advance;
};

constexpr const char
    *kParameters =
        "const $real* src, std::ptrdiff_t srcStep, $real* dst, std::ptrdiff_t dstStep, "
        "const $real* factor, std::ptrdiff_t turns",
    *kArguments = "src, srcStep, dst, dstStep, factor, turns";

// Of one text for several ways: the accesses are parameters of the template.
constexpr Frame kOfPlaces = {kParameters, kArguments, "",
                             R"(    const Source x(src, srcStep);
    Destination y(dst, dstStep);
)",
                             R"(    y.write();
    src += Source::turn(srcStep);
    dst += Destination::turn(dstStep);
)"};

// Of a kernel that exchanges parts.
constexpr Frame kOrderedPartRows = {
    kParameters, kArguments, "  const PartOrder<$vector> order(parts);\n",
    R"(    const PartRows<const $vector, $length, PartOrder<$vector>> x(src, srcStep, order);
    const PartRows<$vector, $length, PartOrder<$vector>> y(dst, dstStep, order);
)",
    R"(    src += 2 * kLanes<$vector>;
    dst += 2 * kLanes<$vector>;
)"};

constexpr Frame kBeside = {kParameters, kArguments, "",
                           R"(    const Beside<const $vector, $group> x(src, srcStep);
    const Beside<$vector, $group> y(dst, dstStep);
)",
                           R"(    src += x.kTransforms * srcStep;
    dst += y.kTransforms * dstStep;
)"};

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
  if (kernel.reading == Reading::Beside) return kBeside;
  if (kernel.exchangesParts()) return kOrderedPartRows;
  if (kernel.id.family == Family::Real && kernel.reading == Reading::Scalars) {
    return kernel.id.direction == Direction::Forward ? kToSpectrum : kToSamples;
  }
  return kOfPlaces;
}

std::string nameOf(const KernelId& id, Way way) {
  const std::string symbol = id.symbol();
  const std::string end = std::to_string(id.length) + symbol.substr(symbol.rfind('_'));
  const bool forward = id.direction == Direction::Forward;
  if (id.family == Family::Complex) {
    const std::string where = way == Way::Rows         ? "Rows"
                              : way == Way::Contiguous ? "Contiguous"
                                                       : "ToRows";
    return (forward ? "forward" : "inverse") + where + end;
  }
  if (way == Way::Contiguous) return "contiguous" + nameOf(id, Way::Rows);
  return (id.family == Family::Hartley ? "hartley" : forward ? "toSpectrum" : "toSamples") + end;
}

// The accesses of a kernel of kOfPlaces as arguments of its template.
std::string placesOf(const ManyKernel& kernel, Way way) {
  const KernelId& id = kernel.id;
  const std::string length = std::to_string(id.length);
  const auto tiles = [&](const std::string& vector, bool ofSpectrum) {
    const std::string arguments = "<" + vector + ", " + length;
    if (ofSpectrum) return "SpectrumTiles" + arguments + ", kLayout>";
    if (kernel.hasParts()) return "PartTiles" + arguments + ">";
    if (kernel.reading != Reading::Elements) return "Tiles" + arguments + ">";
    return id.precision == Precision::Single ? "Tiles" + arguments + ", 2>"
                                             : "Halves" + arguments + ">";
  };
  const auto rows = [&](const std::string& vector) {
    return (kernel.hasParts() ? "PartRows<" : "Rows<") + vector + ", " + length + ">";
  };
  const bool isReal = id.family == Family::Real, forward = id.direction == Direction::Forward;
  const std::string source =
      way == Way::Rows ? rows("const $vector") : tiles("const $vector", isReal && !forward);
  const std::string destination =
      way == Way::Contiguous ? tiles("$vector", isReal && forward) : rows("$vector");
  return "<" + source + ", " + destination + ">";
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

std::unique_ptr<Access> accessOf(const ManyKernel& kernel) {
  if (kernel.reading == Reading::Beside) return std::make_unique<BesideAccess>();
  if (kernel.hasParts()) return std::make_unique<PartAccess>();
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
                               *accessOf({id, reading}));
  return text;
}

ManyCounts countsOf(const KernelId& id, Reading reading) {
  const Graph graph = graphOf(id, reading);
  const Widths widths = widthsOf(graph);
  ConstantTable constants("");
  const Wide machine(widths, constants, constants);
  const int registers = kAvxBytes / groupBytesOf(id, reading);
  const int transforms = widths == Widths::HalfOfSingles ? registers / 2 : registers;
  const ManyKernel kernel{id, reading};
  Counts c = counts(graph, machine, *accessOf(kernel));
  if (kernel.hasParts()) {
    const bool ordersToo = kernel.exchangesParts();
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
               {"body", nameOf(id, kernel.ways().front()) + "Body"},
               // What has one caller may as well be its text.
               {"inlining", kernel.isShared() ? "[[gnu::noinline]]" : "ZVXG_INLINE inline"},
               {"partsParameter", kernel.exchangesParts() ? ", Parts parts" : ""},
               {"template", hasPlaces() ? "template <class Source, class Destination>\n" : ""},
               {"result", kernel.hasLayouts() ? "template <Layout kLayout>\nvoid" : "void"},
               {"reading", printed(kernel.reading)}};
  }

  std::string print() {
    const Text text = textOf(kernel_.id, kernel_.reading);
    std::string ofMachine = body(text), ofAvx;
    const auto add = [&](const KernelId& id, const Text& ofId) {
      const std::string constants = forTables(ofId, kTable, constantsOf(id));
      if (!constants.empty()) ofMachine += filled(kConstants, {{"tables", constants}});
      for (const Way way : kernel_.ways()) {
        (way == Way::Rows ? ofMachine : ofAvx) += "\n" + function(id, ofId, way);
      }
    };
    add(kernel_.id, text);
    if (kernel_.exchangesParts()) {
      checkedGraph(inverseOf(kernel_.id), kernel_.reading);
      add(inverseOf(kernel_.id), text);
    }
    if (kernel_.sharesConstants()) {
      const Text inverse = textOf(inverseOf(kernel_.id), kernel_.reading);
      if (inverse.statements != text.statements) {
        throw std::logic_error(kernel_.id.symbol() + " has other statements than its inverse");
      }
      add(inverseOf(kernel_.id), inverse);
    }
    if (ofAvx.empty()) return ofMachine;
    const bool hasRows = kernel_.ways().front() == Way::Rows;
    return hasRows ? ofMachine + filled(kIfAvx, {{"text", ofAvx}})
                   : filled(kIfAvx, {{"text", ofMachine + ofAvx}});
  }

  std::string declaration(const KernelId& id, Way way) const {
    return "void " + nameOf(id, way) + "(" + with(frame_.parameters) + ");\n";
  }

  // "{name, transforms}," or, of a half spectrum, "{{name, transforms}, takesBins},"
  std::string entry(const KernelId& id, Way way) const {
    if (way != Way::Rows) return entryOfAvx(id, way);
    const std::string transforms = "ZVXG_VECTOR_BYTES / " + std::to_string(groupBytes());
    return entry(id, nameOf(id, way), transforms, "ZVXG_VECTOR_BYTES > 32");
  }

  // The same where it is that of AVX for every machine.
  std::string entryOfAvx(const KernelId& id, Way way) const {
    return entry(id, "avx::" + nameOf(id, way), std::to_string(kAvxBytes / groupBytes()), "false");
  }

 private:
  static std::string entry(const KernelId& id, const std::string& name,
                           const std::string& transforms, const std::string& takesBins) {
    const std::string kernel = "{" + listed({name, transforms}) + "}";
    const bool isSpectrum = id.family == Family::Real;
    return "    " + (isSpectrum ? "{" + listed({kernel, takesBins}) + "}" : kernel) + ",\n";
  }

  bool hasPlaces() const { return &frame_ == &kOfPlaces; }

  std::string constantsOf(const KernelId& id) const { return nameOf(id, kernel_.ways().front()); }

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

  std::string vectorOf(const Text& text) const {
    if (kernel_.id.precision == Precision::Double) return "Doubles";
    return text.widths == Widths::HalfOfSingles ? "HalfSingles" : "Singles";
  }

  std::string body(const Text& text) const {
    const std::string vector = vectorOf(text);
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
                 {"loops", text.widths == Widths::HalfOfSingles ? "2" : "1"},
                 {"hide", forTables(text, "    $table.hide();\n")},
                 {"turn", with(frame_.turn, {{"vector", vector}})},
                 {"statements", text.statements},
                 {"advance", with(frame_.advance, {{"vector", vector}})}});
  }

  std::string function(const KernelId& id, const Text& text, Way way) const {
    const std::string places = hasPlaces() ? placesOf(kernel_, way) : "";
    return with(kFunction,
                {{"name", nameOf(id, way)},
                 {"parameters", with(frame_.parameters)},
                 {"places", filled(places, {{"vector", vectorOf(text)}})},
                 {"arguments", frame_.arguments},
                 {"parts", partsArgument(id)},
                 {"tableArguments", forTables(text, ", $name_$table.table()", constantsOf(id))}});
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
      for (const Way way : kernel.ways()) {
        declarations += printer.declaration(id, way);
        entries[nameOf(id, way)] = isOwn ? printer.entry(id, way) : printer.entryOfAvx(id, way);
      }
    };
    enter(kernel.id);
    if (kernel.isShared()) enter(inverseOf(kernel.id));
  }
  for (const Precision p : {Precision::Single, Precision::Double}) {
    const auto table = [&](Family family, Direction d, Layout layout, Way way) {
      std::string s;
      for (int n = kMinLength; n <= kMaxLength; ++n) {
        const KernelId id{family, d, n, p, layout};
        const auto entry = entries.find(nameOf(id, way));
        s += entry == entries.end() ? "    {},\n" : entry->second;
      }
      return "{\n" + s + "}";
    };
    const auto complex = [&](Direction d, Way way) {
      return table(Family::Complex, d, Layout::None, way);
    };
    const auto real = [&](Direction d) { return table(Family::Real, d, Layout::Pack, Way::Rows); };
    const bool single = p == Precision::Single;
    constexpr Direction kForward = Direction::Forward, kInverse = Direction::Inverse;
    tables +=
        filled(kKernels, {{"real", single ? "float" : "double"},
                          {"name", single ? "kSingle" : "kDouble"},
                          {"forwardRows", complex(kForward, Way::Rows)},
                          {"inverseRows", complex(kInverse, Way::Rows)},
                          {"forwardContiguous", complex(kForward, Way::Contiguous)},
                          {"inverseContiguous", complex(kInverse, Way::Contiguous)},
                          {"forwardToRows", complex(kForward, Way::ToRows)},
                          {"inverseToRows", complex(kInverse, Way::ToRows)},
                          {"toSpectrum", real(kForward)},
                          {"toSamples", real(kInverse)},
                          {"hartley", table(Family::Hartley, kForward, Layout::None, Way::Rows)}});
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
      names.push_back(nameOf(id, Way::Contiguous) + (isPack ? kPack : layout));
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

std::optional<ManyCounts> contiguousCounts(const KernelId& id) {
  if (goesBeside(id)) return countsOf(id, Reading::Beside);
  if (!isTransposed(id, Way::Contiguous)) return {};
  ManyCounts c = rowCounts(id);
  // Halves of registers are joined, and those of floats have their elements exchanged, too.
  const int perRegister = id.precision == Precision::Single ? 2 : 1;
  c.ofTurn.shuffles += perRegister * (c.ofTurn.loads + c.ofTurn.stores);
  c.ofTurn.loads *= 2;
  c.ofTurn.bound = boundOfVectors(c.ofTurn);
  return c;
}

}  // namespace kernelgen
