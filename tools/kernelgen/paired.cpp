#include "paired.h"

#include <stdexcept>

namespace kernelgen {
namespace {

bool isZero(const Part& a) { return a.node == kNoNode; }

Part negated(Part a) { return {a.node, !a.negative, a.exponent}; }

Part times(Graph& g, Part a, const Constant& c) {
  if (isZero(a) || c.exact == 0) return {};
  const Constant magnitude = c.exact < 0 ? -c : c;
  const Node& n = g[a.node];
  const std::vector<Constant> lanes(static_cast<std::size_t>(n.lanes), magnitude);
  return {g.mul(a.node, g.constant(lanes, n.precision)), a.negative != (c.exact < 0), a.exponent};
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

Part sum(Graph& g, Part a, Part b) {
  if (isZero(a)) return b;
  if (isZero(b)) return a;
  const int exponent = std::max(a.exponent, b.exponent);
  if (a.node == b.node && a.exponent == b.exponent) {
    return a.negative == b.negative ? Part{a.node, a.negative, exponent + 1} : Part{};
  }
  a = withExponent(g, a, exponent);
  b = withExponent(g, b, exponent);
  if (a.negative == b.negative) return {g.add(a.node, b.node), a.negative, exponent};
  // One orientation for a - b and b - a, or mirror values would not be the same node.
  if (a.node > b.node) std::swap(a, b);
  return {g.sub(a.node, b.node), a.negative, exponent};
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
  const Paired straight = scaled(x, factor.re), across = scaled(x, factor.im);
  return straight + turnedQuarters(across, 3);
}

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
  for (Part* part : {&x.re, &x.im}) part->exponent += exponent;
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
