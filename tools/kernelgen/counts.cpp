#include "counts.h"

#include <algorithm>
#include <cstdio>

#include "access.h"
#include "machine.h"
#include "tables.h"

namespace kernelgen {
namespace {

bool isScale(const Graph& g, NodeId id) {
  return g[id].op == Op::Scale || (g[id].op == Op::Widen && g[g[id].a].op == Op::Scale);
}

// Additions go to two pipes of four, shuffles partly to the same; two loads start in a cycle. The
// scalar pipes of products stay out of the way of the additions, conversions do not.
double bound(const Counts& c, bool scalar) {
  if (scalar) return 0.5 * (c.adds + c.converts);
  const int all = c.adds + c.products + c.scales + c.shuffles + c.logic;
  return std::max({0.5 * c.adds + 0.2 * c.shuffles, 0.25 * all, 0.5 * c.loads});
}

}  // namespace

Counts counts(const Kernel& kernel) {
  const Graph& g = kernel.graph;
  Counts c;
  for (NodeId id = 0; id < g.size(); ++id) {
    const Node& n = g[id];
    switch (n.op) {
      case Op::Load: c.loads += accesses(n); break;
      case Op::Store: c.stores += accesses(n); break;
      case Op::Add:
      case Op::Sub: ++c.adds; break;
      case Op::Mul: ++(isScale(g, n.a) || isScale(g, n.b) ? c.scales : c.products); break;
      case Op::Shuffle: ++(isBlend(n) ? c.logic : c.shuffles); break;
      case Op::Flip: ++c.logic; break;
      case Op::Widen:
      case Op::Round: ++c.converts; break;
      case Op::Const:
      case Op::Scale: break;
    }
  }
  c.stated = designOf(kernel.id).products;
  c.bound = bound(c, designOf(kernel.id).width == kScalar);
  return c;
}

std::string ledgerHead() {
  return "symbol,row,width,bodies,adds,products,stated,scales,shuffles,logic,converts,loads,stores,"
         "bound";
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
  return text;
}

}  // namespace kernelgen
