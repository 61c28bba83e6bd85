#include "values.h"

#include <algorithm>

namespace kernelgen {
namespace {

// -i (r + i q) = q - i r: the parts change places, and one of them its sign.
Packed turnedQuarters(Packed x, const std::vector<Turn>& turns) {
  Graph& g = *x.graph;
  const bool forward = g.direction() == Direction::Forward;
  std::vector<int> select, mask;
  bool anyFlip = false;
  for (Turn t : turns) {
    const int k = forward ? t.quarters() : (4 - t.quarters()) % 4;
    const int re = static_cast<int>(select.size()), im = re + 1;
    select.insert(select.end(), {k % 2 == 0 ? re : im, k % 2 == 0 ? im : re});
    mask.insert(mask.end(), {k == 2 || k == 3, k == 1 || k == 2});
    anyFlip = anyFlip || k != 0;
  }
  const NodeId moved = g.shuffle(x.node, x.node, select);
  return {&g, anyFlip ? g.flip(moved, mask) : moved};
}

}  // namespace

bool isZero(Packed x) { return x.node == kNoNode; }

Packed operator+(Packed x, Packed y) {
  if (isZero(x)) return y;
  return isZero(y) ? x : Packed{x.graph, x.graph->add(x.node, y.node)};
}

Packed operator-(Packed x, Packed y) {
  if (isZero(x)) return turnedQuarters(y, 2);
  return isZero(y) ? x : Packed{x.graph, x.graph->sub(x.node, y.node)};
}

Packed scaled(Packed x, const Constant& c) {
  if (isZero(x)) return x;
  Graph& g = *x.graph;
  const Node& n = g[x.node];
  const std::vector<Constant> lanes(n.lanes, c);
  return {&g, g.mul(x.node, g.constant(lanes, n.precision))};
}

Packed crossed(Packed x, const Constant& c) {
  if (isZero(x)) return x;
  Graph& g = *x.graph;
  const Node& n = g[x.node];
  const bool forward = g.direction() == Direction::Forward;
  std::vector<Constant> lanes;
  for (int i = 0; i < n.lanes; ++i) {
    lanes.push_back((i % 2 == 0) == forward ? c : -c);
  }
  const Precision precision = n.precision;
  const NodeId swapped = exchanged(x).node;
  return {&g, g.mul(swapped, g.constant(lanes, precision))};
}

Packed turnedQuarters(Packed x, int k) { return rotated(x, Turn{k, 4}); }

Packed rotated(Packed x, Turn t) {
  if (isZero(x)) return x;
  const int elements = (*x.graph)[x.node].lanes / 2;
  return rotated(x, std::vector<Turn>(elements, t));
}

Packed rotated(Packed x, const std::vector<Turn>& angles) {
  const auto isExact = [](Turn t) { return t.isQuarterMultiple(); };
  if (std::all_of(angles.begin(), angles.end(), isExact)) return turnedQuarters(x, angles);
  std::vector<Factor> factors;
  for (Turn t : angles) factors.push_back(root(t));
  return product(x, factors);
}

Factor root(Turn t) { return {cosine(t), -sine(t)}; }

Packed product(Packed x, const std::vector<Factor>& factors) {
  Graph& g = *x.graph;
  const Precision precision = g[x.node].precision;
  const bool forward = g.direction() == Direction::Forward;
  std::vector<Constant> straight, across;
  for (const Factor& f : factors) {
    straight.insert(straight.end(), {f.re, f.re});
    across.insert(across.end(), {forward ? -f.im : f.im, forward ? f.im : -f.im});
  }
  const NodeId swapped = exchanged(x).node;
  const NodeId byRe = g.mul(x.node, g.constant(straight, precision));
  return {&g, g.add(byRe, g.mul(swapped, g.constant(across, precision)))};
}

Packed product(Packed x, const Factor& factor) {
  const int elements = (*x.graph)[x.node].lanes / 2;
  return product(x, std::vector<Factor>(elements, factor));
}

Packed exchanged(Packed x) {
  Graph& g = *x.graph;
  std::vector<int> select;
  for (int i = 0; i < g[x.node].lanes; ++i) select.push_back(i ^ 1);
  return {&g, g.shuffle(x.node, x.node, select)};
}

Packed raderMiddle(std::vector<Packed>& a, Packed x0, const std::vector<Factor>& factors) {
  x0 = product(x0, kOne);
  const Packed sum = x0 + a[0];
  for (std::size_t k = 0; k < a.size(); ++k) a[k] = product(a[k], factors[k]);
  a[0] = x0 + a[0];
  return sum;
}

Scalars operator+(Scalars x, Scalars y) {
  Graph& g = *x.graph;
  return {&g, g.add(x.re, y.re), g.add(x.im, y.im)};
}

Scalars operator-(Scalars x, Scalars y) {
  Graph& g = *x.graph;
  return {&g, g.sub(x.re, y.re), g.sub(x.im, y.im)};
}

Scalars scaled(Scalars x, const Constant& c) {
  Graph& g = *x.graph;
  const NodeId k = g.constant({c}, g[x.re].precision);
  return {&g, g.mul(x.re, k), g.mul(x.im, k)};
}

Scalars crossed(Scalars x, const Constant& c) {
  Graph& g = *x.graph;
  const Precision precision = g[x.re].precision;
  const bool forward = g.direction() == Direction::Forward;
  const NodeId plus = g.constant({c}, precision);
  const NodeId minus = g.constant({-c}, precision);
  return {&g, g.mul(x.im, forward ? plus : minus), g.mul(x.re, forward ? minus : plus)};
}

Scalars turnedQuarters(Scalars x, int k) {
  Graph& g = *x.graph;
  if (g.direction() == Direction::Inverse) k = (4 - k) % 4;
  const auto minus = [&g](NodeId a) { return g.flip(a, {1}); };
  switch (k) {
    case 0: return x;
    case 1: return {&g, x.im, minus(x.re)};
    case 2: return {&g, minus(x.re), minus(x.im)};
    default: return {&g, minus(x.im), x.re};
  }
}

Scalars widened(Scalars x) {
  Graph& g = *x.graph;
  return {&g, g.widen(x.re), g.widen(x.im)};
}

Scalars rounded(Scalars x) {
  Graph& g = *x.graph;
  return {&g, g.round(x.re), g.round(x.im)};
}

}  // namespace kernelgen
