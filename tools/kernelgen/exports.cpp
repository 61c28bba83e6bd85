#include "exports.h"

#include <optional>
#include <stdexcept>

#include "counts.h"
#include "statements.h"
#include "text.h"
#include "vectors.h"

namespace kernelgen {
namespace {

// ---- Patterns

constexpr const char* kHead =
    R"(// $symbol: $design
// $adds additions, $products products by constants, $scales by the scale, $shuffles shuffles, $logic flips and blends, $converts conversions, $loads loads, $stores stores
)";

constexpr const char* kPackedHead = R"(// $symbol: $design, packed in $lanes lanes
)";

// A kernel with one body is that body; clang would leave the longest ones outside.
constexpr const char* kOneBody = R"(namespace {
$inline int32_t $body(const $number* src, $number* dst, const $real* factor) {
$policy$statements  return zvxOk;
}

}  // namespace

extern "C" $prototype {
  static constexpr Factors<$real> kFactors = $factors;
  if (const int32_t status = check(src, dst, flag)) return status;
  return $body(reals(src), reals(dst), &kFactors.ofFlag[flag]);
}
)";

// The unaligned body is apart from the aligned one: merged into one function, what the two have in
// common would be shared, which costs registers and moves.
constexpr const char* kTwoBodies = R"(namespace {
template <class Memory>
inline int32_t $body(const $real* src, $real* dst, const $real* factor) {
$statements  return zvxOk;
}

[[gnu::noinline]] int32_t unaligned_$body(const $real* src, $real* dst, const $real* factor) {
  return $body<Unaligned>(src, dst, factor);
}
}  // namespace

extern "C" $prototype {
  static constexpr Factors<$real> kFactors = $factors;
  if (const int32_t status = check(src, dst, flag)) return status;
  if (!onBoundary<$bytes>(src, dst)) return unaligned_$body(reals(src), reals(dst), &kFactors.ofFlag[flag]);
  return $body<Aligned>(reals(src), reals(dst), &kFactors.ofFlag[flag]);
}
)";

constexpr const char* kFile = R"(// Made by kernelgen from its tables; changes belong there.
#include "frame/frame.h"
#include "frame/$access.h"
#include "zvxg.h"

using namespace zvxg;
)";

constexpr const char* kEntries =
    R"(// Made by kernelgen from its list of kernels; changes belong there.
#include "frame/entry.h"
#include "zvxg.h"

using namespace zvxg;
)";

constexpr const char* kEntry = R"(
extern "C" $prototype {
  static constexpr decltype(&$first) kKernels[] = {$kernels
  };
  return enter<$length>(kKernels, len, src, dst, flag);
}
)";

constexpr const char* kHeader = R"(/** @file
 *  The prototypes of the kernels, written by `kernelgen header`: see zvxg.h, which includes
 *  this file, for what they compute. */
#ifndef ZVXG_KERNELS_H
#define ZVXG_KERNELS_H

#ifndef ZVXG_H
#error "include zvxg.h"
#endif
$groups
#endif
)";

constexpr const char* kHeaderGroup = R"(
/** @addtogroup $family
 *  @{ */
/** @name Kernels of $entry()
 *  @{ */
/** The transform of as many points as the name says. */
$prototypes/** @} */
/** @} */
)";

// ---- What fills them

std::string realOf(const KernelId& id) {
  return id.precision == Precision::Single ? "float" : "double";
}

std::string elementOf(const KernelId& id) {
  switch (id.family) {
    case Family::Complex: return id.precision == Precision::Single ? "Complex32" : "Complex64";
    case Family::Real:
    case Family::Hartley: return realOf(id);
  }
  throw std::logic_error("no elements of " + id.symbol());
}

std::string groupOf(Family family) {
  switch (family) {
    case Family::Complex: return "complex";
    case Family::Real: return "real";
    case Family::Hartley: return "hartley";
  }
  throw std::logic_error("no group of a family");
}

std::string prototype(const KernelId& id) {
  return filled("int32_t $symbol(const $element* src, $element* dst, int32_t flag) ZVXG_NOEXCEPT",
                {{"symbol", id.symbol()}, {"element", elementOf(id)}});
}

// The same with the length before the flag.
std::string entryPrototype(const KernelId& id) {
  return filled(
      "int32_t $entry(const $element* src, $element* dst, int32_t len, int32_t flag) ZVXG_NOEXCEPT",
      {{"entry", id.entrySymbol()}, {"element", elementOf(id)}});
}

std::string factors(const KernelId& id) {
  const std::string direction = !isDirected(id.family)               ? "undirected"
                                : id.direction == Direction::Forward ? "forward"
                                                                     : "inverse";
  return call(direction + "Factors",
              {literal(byLength(id.length, id.precision), id.precision),
               literal(byRootOfLength(id.length, id.precision), id.precision)});
}

std::string bodyName(const KernelId& id) {
  const std::string symbol = id.symbol();
  const std::string end = std::to_string(id.length) + symbol.substr(symbol.rfind('_'));
  const std::string direction = id.direction == Direction::Forward ? "forward" : "inverse";
  switch (id.layout) {
    case Layout::None: return (isDirected(id.family) ? direction : groupOf(id.family)) + end;
    case Layout::Ccs: return direction + "Ccs" + end;
    case Layout::Pack: return direction + "Pack" + end;
    case Layout::Perm: return direction + "Perm" + end;
  }
  throw std::logic_error("no layout of " + symbol);
}

std::string head(const Kernel& kernel) {
  const Counts c = counts(kernel);
  return filled(kHead, {{"symbol", kernel.id.symbol()},
                        {"design", designOf(kernel.id).print()},
                        {"adds", std::to_string(c.adds)},
                        {"products", std::to_string(c.products)},
                        {"scales", std::to_string(c.scales)},
                        {"shuffles", std::to_string(c.shuffles)},
                        {"logic", std::to_string(c.logic)},
                        {"converts", std::to_string(c.converts)},
                        {"loads", std::to_string(c.loads)},
                        {"stores", std::to_string(c.stores)}});
}

// The kernels of each entry.
std::vector<std::vector<KernelId>> byEntry() {
  std::vector<std::vector<KernelId>> entries;
  for (const KernelId& id : kernelList()) {
    const bool isNew = entries.empty() || entries.back()[0].entrySymbol() != id.entrySymbol();
    if (isNew) entries.emplace_back();
    entries.back().push_back(id);
  }
  return entries;
}

}  // namespace

std::string emitKernel(const Kernel& kernel) {
  const KernelId& id = kernel.id;
  const Design& design = designOf(id);
  const bool isScalar = design.width == kScalar;
  const std::string real = realOf(id);
  return head(kernel) +
         filled(design.bodies == 1 ? kOneBody : kTwoBodies,
                {{"body", bodyName(id)},
                 {"real", real},
                 {"number", isScalar ? "Anywhere<" + real + ">" : real},
                 {"inline", isScalar ? "[[gnu::always_inline]] inline" : "inline"},
                 {"policy", isScalar ? "" : "  using Memory = Unaligned;\n"},
                 {"statements", statements(kernel.graph, design, Avx(), Arrays(id.length))},
                 {"prototype", prototype(id)},
                 {"factors", factors(id)},
                 {"bytes", std::to_string(design.width / 8)}});
}

namespace {

// Loads and stores are at any address.
std::string emitPacked(const Kernel& kernel, const Packing& packing) {
  const KernelId& id = kernel.id;
  const Graph graph = packed(kernel.graph, id.sourceSize(), packing);
  Design design = designOf(id);
  design.isLong = false;  // no longer
  if (packing.live != 0) design.pace.live = packing.live;
  const std::string real = realOf(id);
  return filled(kPackedHead, {{"symbol", id.symbol()},
                              {"design", design.recipe.print()},
                              {"lanes", std::to_string(packing.lanes)}}) +
         filled(kOneBody, {{"body", bodyName(id)},
                           {"real", real},
                           {"number", "Anywhere<" + real + ">"},
                           {"inline", "[[gnu::always_inline]] inline"},
                           {"policy", ""},
                           {"statements", statements(graph, design, Vectors(), Numbers())},
                           {"prototype", prototype(id)},
                           {"factors", factors(id)}});
}

}  // namespace

std::string emitKernel(const Kernel& kernel, Level level) {
  const std::optional<Packing> packing = packingOf(kernel.id, level);
  return packing ? emitPacked(kernel, *packing) : emitKernel(kernel);
}

std::string emitFile(const std::vector<KernelId>& kernels, Level level) {
  const bool isBase = level == Level::Base;
  std::string s = filled(kFile, {{"access", isBase ? "memory" : "vectors"}});
  for (const KernelId& id : kernels) s += "\n" + emitKernel(makeKernel(id), level);
  return s;
}

std::string emitEntries() {
  std::string s = kEntries;
  for (const std::vector<KernelId>& kernels : byEntry()) {
    std::string table;
    for (const KernelId& id : kernels) table += "\n      " + id.symbol() + ",";
    s += filled(kEntry, {{"prototype", entryPrototype(kernels[0])},
                         {"first", kernels[0].symbol()},
                         {"kernels", table},
                         {"length", std::to_string(kernels[0].length)}});
  }
  return s;
}

std::string emitHeader() {
  std::string groups;
  for (const std::vector<KernelId>& kernels : byEntry()) {
    std::string prototypes;
    for (const KernelId& id : kernels) prototypes += "ZVXG_API " + prototype(id) + ";\n";
    groups += filled(kHeaderGroup, {{"family", groupOf(kernels[0].family)},
                                    {"entry", kernels[0].entrySymbol()},
                                    {"prototypes", prototypes}});
  }
  return filled(kHeader, {{"groups", groups}});
}

}  // namespace kernelgen
