#include "counts.h"

#include <algorithm>
#include <cstdio>

#include "real_kernels.h"

namespace kernelgen {
namespace {

int accessesIn(const std::vector<int>& elements, std::size_t begin, std::size_t end) {
  if (contiguous(elements, begin, end)) return 1;
  if (end - begin == 1) return 0;
  const std::size_t middle = (begin + end) / 2;
  return accessesIn(elements, begin, middle) + accessesIn(elements, middle, end);
}

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

bool contiguous(const std::vector<int>& elements, std::size_t begin, std::size_t end) {
  for (std::size_t i = begin; i < end; ++i) {
    if (elements[i] != elements[begin] + static_cast<int>(i - begin)) return false;
  }
  return elements[begin] != kNoElement;
}

bool isBlend(const Node& shuffle) {
  for (int i = 0; i < shuffle.lanes; ++i) {
    if (shuffle.select[i] % shuffle.lanes != i) return false;
  }
  return true;
}

int accesses(const std::vector<int>& elements) { return accessesIn(elements, 0, elements.size()); }

Counts counts(const Kernel& kernel) {
  const Graph& g = kernel.graph;
  Counts c;
  for (NodeId id = 0; id < g.size(); ++id) {
    const Node& n = g[id];
    switch (n.op) {
      case Op::Load: c.loads += accesses(n.elements); break;
      case Op::Store: c.stores += accesses(n.elements); break;
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
  if (kernel.id.family != Family::Complex) c.stated = statedProducts(kernel.id);
  c.bound = bound(c, bodyOf(kernel.id).width == kScalar);
  return c;
}

std::string ledgerHead() {
  return "symbol,row,width,bodies,adds,products,stated,scales,shuffles,logic,converts,loads,stores,"
         "bound";
}

std::string ledgerLine(const Kernel& kernel) {
  const Counts c = counts(kernel);
  const Body& body = bodyOf(kernel.id);
  const std::string stated = c.stated ? std::to_string(*c.stated) : "";
  char text[256];
  std::snprintf(text, sizeof text, "%s,\"%s\",%d,%d,%d,%d,%s,%d,%d,%d,%d,%d,%d,%.1f",
                kernel.id.symbol().c_str(), body.recipe.print().c_str(), body.width,
                body.split ? 2 : 1, c.adds, c.products, stated.c_str(), c.scales, c.shuffles,
                c.logic, c.converts, c.loads, c.stores, c.bound);
  return text;
}

}  // namespace kernelgen
