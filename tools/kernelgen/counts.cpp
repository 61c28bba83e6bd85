#include "counts.h"

#include <algorithm>
#include <cstdio>

#include "many.h"
#include "tables.h"

namespace kernelgen {
namespace {

bool isScale(const Graph& g, NodeId id) {
  return g[id].op == Op::Scale || (g[id].op == Op::Widen && g[g[id].a].op == Op::Scale);
}

}  // namespace

int operations(const Counts& c) {
  return c.adds + c.products + c.scales + c.shuffles + c.logic + c.converts;
}

// Additions go to two pipes of four, shuffles partly to the same; two loads start in a cycle.
double boundOfVectors(const Counts& c) {
  return std::max(
      {0.5 * (c.adds + c.converts) + 0.2 * c.shuffles, 0.25 * operations(c), 0.5 * c.loads});
}

Counts counts(const Graph& g, const Machine& machine, const Access& access) {
  Counts c;
  for (NodeId id = 0; id < g.size(); ++id) {
    const Node& n = g[id];
    const int registers = static_cast<int>(machine.pieces(n.op == Op::Round ? g[n.a] : n).size());
    switch (n.op) {
      case Op::Load: c.loads += access.count(n); break;
      case Op::Store: c.stores += access.count(n); break;
      case Op::Add:
      case Op::Sub: c.adds += registers; break;
      case Op::Mul:
        (isScale(g, n.a) || isScale(g, n.b) ? c.scales : c.products) += registers;
        break;
      case Op::Shuffle: ++(isBlend(n) ? c.logic : c.shuffles); break;
      case Op::Flip: ++c.logic; break;
      case Op::Widen:
      case Op::Round:
        c.converts += registers;
        c.shuffles += registers - 1;  // halves of a register
        break;
      case Op::Const:
      case Op::Scale: break;
    }
  }
  return c;
}

Counts counts(const Kernel& kernel) {
  const Design& design = designOf(kernel.id);
  Counts c = counts(kernel.graph, Avx(), Arrays(kernel.id.length));
  c.stated = design.products;
  // The scalar pipes of products stay out of the way of the additions, conversions do not.
  c.bound = design.width == kScalar ? 0.5 * (c.adds + c.converts) : boundOfVectors(c);
  return c;
}

std::string ledgerHead() {
  return "symbol,row,width,bodies,adds,products,stated,scales,shuffles,logic,converts,loads,stores,"
         "bound,rows,rowsOperations,rowsBound,contiguousOperations,contiguousBound";
}

std::string ledgerLine(const Kernel& kernel) {
  const Counts c = counts(kernel);
  const Design& design = designOf(kernel.id);
  const std::string stated = c.stated ? std::to_string(*c.stated) : "";
  char text[256];
  std::snprintf(text, sizeof text, "%s,\"%s\",%d,%d,%d,%d,%s,%d,%d,%d,%d,%d,%d,%.1f",
                kernel.id.symbol().c_str(), design.recipe.print().c_str(), design.width,
                design.bodies, c.adds, c.products, stated.c_str(), c.scales, c.shuffles, c.logic,
                c.converts, c.loads, c.stores, c.bound);
  const auto ofMany = [&](const std::optional<ManyCounts>& many) {
    if (!many) return std::string(",,");
    char fields[64];
    std::snprintf(fields, sizeof fields, ",%d,%.2f", operations(many->ofTurn),
                  many->ofTurn.bound / many->transforms);
    return std::string(fields);
  };
  const ManyCounts rows = rowCounts(kernel.id);
  return text + ("," + rows.reading) + ofMany(rows) + ofMany(contiguousCounts(kernel.id));
}

}  // namespace kernelgen
