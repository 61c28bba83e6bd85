#include "paired.h"

#include <stdexcept>

namespace kernelgen {
namespace {

Part negated(Part a) { return isZero(a) ? a : Part{a.node, !a.negative, a.exponent}; }

// A scalar is a temporary in the precision of the kernel, or an expression still open, in double.
// Products by constants open one; a plain sum takes temporaries and makes one.
NodeId temporary(Graph& g, NodeId a) {
  return g[a].lanes == 1 && g[a].precision != g.precision() ? g.round(a) : a;
}

NodeId opened(Graph& g, NodeId a) {
  return g[a].lanes == 1 && g[a].precision != Precision::Double ? g.widen(a) : a;
}

Part times(Graph& g, Part a, const Constant& c) {
  if (isZero(a) || c.exact == 0) return {};
  const Constant magnitude = c.exact < 0 ? -c : c;
  const NodeId factor = opened(g, temporary(g, a.node));
  const Node& n = g[factor];
  const std::vector<Constant> lanes(static_cast<std::size_t>(n.lanes), magnitude);
  const NodeId constant = g.constant(lanes, n.precision);
  return {g.mul(factor, constant), a.negative != (c.exact < 0), a.exponent};
}

// The power of two made part of the register.
Part withExponent(Graph& g, Part a, int exponent) {
  if (a.exponent == exponent) return a;
  Quad power = 1;
  for (int e = exponent; e < a.exponent; ++e) power *= 2;
  for (int e = a.exponent; e < exponent; ++e) power /= 2;
  const Part settled = times(g, a, {power, power < 1 ? "half" : "two"});
  return {settled.node, settled.negative, exponent};
}

// The sum of two parts that are in one precision.
Part added(Graph& g, Part a, Part b) {
  if (isZero(a)) return b;
  if (isZero(b)) return a;
  const int exponent = std::max(a.exponent, b.exponent);
  if (a.node == b.node && a.exponent == b.exponent) {
    return a.negative == b.negative ? Part{a.node, a.negative, exponent + 1} : Part{};
  }
  a = withExponent(g, a, exponent);
  b = withExponent(g, b, exponent);
  if (a.negative == b.negative) return {g.add(a.node, b.node), a.negative, exponent};
  // One orientation for a - b and b - a, that of whichever came first, or mirror values would not
  // be the same node.
  if (a.negative) std::swap(a, b);
  if (g.holdsSub(b.node, a.node)) std::swap(a, b);
  return {g.sub(a.node, b.node), a.negative, exponent};
}

Part sum(Graph& g, Part a, Part b) {
  if (isZero(a)) return b;
  if (isZero(b)) return a;
  a.node = temporary(g, a.node);
  b.node = temporary(g, b.node);
  return added(g, a, b);
}

// A part as a register, up to its sign.
Packed settled(Graph& g, Part a) { return {&g, withExponent(g, a, 0).node}; }

}  // namespace

Paired operator+(Paired x, Paired y) {
  return {x.graph, sum(*x.graph, x.re, y.re), sum(*x.graph, x.im, y.im)};
}

Paired operator-(Paired x, Paired y) { return x + Paired{y.graph, negated(y.re), negated(y.im)}; }

Paired scaled(Paired x, const Constant& c) {
  return {x.graph, times(*x.graph, x.re, c), times(*x.graph, x.im, c)};
}

Paired crossed(Paired x, const Constant& c) { return turnedQuarters(scaled(x, c), 1); }

Paired turnedQuarters(Paired x, int k) {
  switch (k) {
    case 0: return x;
    case 1: return {x.graph, x.im, negated(x.re)};
    case 2: return {x.graph, negated(x.re), negated(x.im)};
    default: return {x.graph, negated(x.im), x.re};
  }
}

Paired rotated(Paired x, Turn t) {
  if (t.isQuarterMultiple()) return turnedQuarters(x, t.quarters());
  return product(x, {cosine(t), -sine(t)});
}

Paired product(Paired x, const Factor& factor) {
  Graph& g = *x.graph;
  const Paired straight = scaled(x, factor.re), across = turnedQuarters(scaled(x, factor.im), 3);
  return {&g, added(g, straight.re, across.re), added(g, straight.im, across.im)};
}

Paired combined(const std::vector<Term>& terms, const Paired* plain) {
  Graph& g = *terms[0].x.graph;
  const auto part = [&](auto member) {
    Part total;
    for (const Term& t : terms) total = added(g, total, times(g, t.x.*member, t.c));
    if (plain == nullptr || isZero(plain->*member)) return total;
    Part last = plain->*member;
    last.node = isZero(total) ? last.node : opened(g, temporary(g, last.node));
    return added(g, total, last);
  };
  return {&g, part(&Paired::re), part(&Paired::im)};
}

Paired kept(Paired x) {
  for (Part* part : {&x.re, &x.im}) {
    if (isZero(*part) || (*x.graph)[part->node].precision == x.graph->precision()) continue;
    part->node = x.graph->round(part->node, true);
  }
  return x;
}

Paired conjugate(Paired x) { return {x.graph, x.re, negated(x.im)}; }

bool sameValue(const Paired& x, const Paired& y) { return x.re == y.re && x.im == y.im; }

Paired rotated(Paired x, const std::vector<Turn>& angles) {
  std::vector<Factor> factors;
  for (Turn t : angles) factors.push_back({cosine(t), -sine(t)});
  return product(x, factors);
}

Paired product(Paired x, const std::vector<Factor>& factors) {
  Graph& g = *x.graph;
  std::vector<Constant> re, im;
  for (const Factor& f : factors) {
    re.push_back(f.re);
    im.push_back(f.im);
  }
  const auto by = [&](Part a, const std::vector<Constant>& lanes) {
    if (isZero(a)) return a;
    return Part{g.mul(a.node, g.constant(lanes, g[a.node].precision)), a.negative, a.exponent};
  };
  const Part reRe = by(x.re, re), imIm = by(x.im, im), imRe = by(x.im, re), reIm = by(x.re, im);
  return {&g, sum(g, reRe, negated(imIm)), sum(g, imRe, reIm)};
}

bool isZero(const Part& a) { return a.node == kNoNode; }
bool isZero(const Paired& x) { return isZero(x.re) && isZero(x.im); }

NodeId settledPart(Graph& g, Part a) {
  const Part settled = withExponent(g, a, 0);
  if (isZero(settled)) {
    throw std::logic_error("a zero part has no register");
  }
  if (!settled.negative) return settled.node;
  return g.flip(settled.node, std::vector<int>(static_cast<std::size_t>(g[settled.node].lanes), 1));
}

Paired shifted(Paired x, int exponent) {
  for (Part* part : {&x.re, &x.im}) part->exponent += isZero(*part) ? 0 : exponent;
  return x;
}

Paired asSignals(Packed x) { return {x.graph, {x.node}, {}}; }

// re + i im, where i turns the element itself: the one place where the direction matters.
Packed asElement(Paired x) {
  Graph& g = *x.graph;
  const Packed turned = isZero(x.im) ? Packed{} : turnedQuarters(settled(g, x.im), 3);
  if (isZero(x.re)) {
    return x.im.negative ? turnedQuarters(turned, 2) : turned;
  }
  const Packed straight = settled(g, x.re);
  if (isZero(x.im)) return x.re.negative ? turnedQuarters(straight, 2) : straight;
  if (x.re.negative && x.im.negative) return turnedQuarters(straight + turned, 2);
  if (x.re.negative) return turned - straight;
  return x.im.negative ? straight - turned : straight + turned;
}

}  // namespace kernelgen
