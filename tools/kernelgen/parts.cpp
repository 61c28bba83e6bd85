#include "parts.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace kernelgen {
namespace {

Part negated(Part a) { return isZero(a) ? a : Part{a.node, !a.negative, a.exponent}; }

// Where products are evaluated in double, a value is either a temporary in the precision of the
// kernel or an expression that is still open, in double. A product by a constant opens one; a plain
// sum takes temporaries and makes one.
NodeId temporary(Graph& g, NodeId a) { return g[a].precision != g.precision() ? g.round(a) : a; }

NodeId opened(Graph& g, NodeId a) {
  return g.traits().productsInDouble && g[a].precision != Precision::Double ? g.widen(a) : a;
}

Part times(Graph& g, Part a, const Constant& c) {
  if (isZero(a) || c.exact == 0) return {};
  const Constant magnitude = c.exact < 0 ? -c : c;
  const NodeId factor = opened(g, temporary(g, a.node));
  const Node& n = g[factor];
  const NodeId constant = g.constant(std::vector<Constant>(n.lanes, magnitude), n.precision);
  return {g.mul(factor, constant), a.negative != (c.exact < 0), a.exponent};
}

// The same value with another power of two, the difference multiplied into the register.
Part withExponent(Graph& g, Part a, int exponent) {
  if (a.exponent == exponent) return a;
  Quad power = 1;
  for (int e = exponent; e < a.exponent; ++e) power *= 2;
  for (int e = a.exponent; e < exponent; ++e) power /= 2;
  const Part product = times(g, a, {power, power < 1 ? "half" : "two"});
  return {product.node, product.negative, exponent};
}

// The sum of two parts in the same precision.
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
  // a - b and b - a are one node, that of whichever came first: else mirror values would differ.
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

// A part as a register, but for its sign.
Packed withoutSign(Graph& g, Part a) { return {&g, withExponent(g, a, 0).node}; }

}  // namespace

Parts operator+(Parts x, Parts y) {
  return {x.graph, sum(*x.graph, x.re, y.re), sum(*x.graph, x.im, y.im)};
}

Parts operator-(Parts x, Parts y) { return x + Parts{y.graph, negated(y.re), negated(y.im)}; }

Parts scaled(Parts x, const Constant& c) {
  return {x.graph, times(*x.graph, x.re, c), times(*x.graph, x.im, c)};
}

Parts crossed(Parts x, const Constant& c) { return turnedQuarters(scaled(x, c), 1); }

Parts turnedQuarters(Parts x, int k) {
  switch (k) {
    case 0: return x;
    case 1: return {x.graph, x.im, negated(x.re)};
    case 2: return {x.graph, negated(x.re), negated(x.im)};
    default: return {x.graph, negated(x.im), x.re};
  }
}

Parts rotated(Parts x, Turn t) {
  if (t.isQuarterMultiple()) return turnedQuarters(x, t.quarters());
  return product(x, root(t));
}

Parts product(Parts x, const Factor& factor) {
  Graph& g = *x.graph;
  const Parts straight = scaled(x, factor.re), across = turnedQuarters(scaled(x, factor.im), 3);
  return {&g, added(g, straight.re, across.re), added(g, straight.im, across.im)};
}

Parts combined(const std::vector<Term>& terms, const Parts* plain) {
  Graph& g = *terms[0].x.graph;
  const auto part = [&](auto member) {
    Part total;
    for (const Term& t : terms) total = added(g, total, times(g, t.x.*member, t.c));
    if (plain == nullptr || isZero(plain->*member)) return total;
    Part last = plain->*member;
    last.node = isZero(total) ? last.node : opened(g, temporary(g, last.node));
    return added(g, total, last);
  };
  return {&g, part(&Parts::re), part(&Parts::im)};
}

Parts kept(Parts x) {
  for (Part* part : {&x.re, &x.im}) {
    if (isZero(*part) || (*x.graph)[part->node].precision == x.graph->precision()) continue;
    part->node = x.graph->round(part->node, true);
  }
  return x;
}

Parts conjugate(Parts x) { return {x.graph, x.re, negated(x.im)}; }

Parts rotated(Parts x, const std::vector<Turn>& angles) {
  std::vector<Factor> factors;
  for (Turn t : angles) factors.push_back(root(t));
  return product(x, factors);
}

Parts product(Parts x, const std::vector<Factor>& factors) {
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

Parts exchanged(Parts x) { return {x.graph, x.im, x.re}; }

Parts productOfMirrors(Parts a, const Factor& b) {
  const Factor twice{{2 * b.re.exact, "two" + b.re.name}, {2 * b.im.exact, "two" + b.im.name}};
  return shifted(product(a, twice), -1);
}

Parts raderMiddle(std::vector<Parts>& a, Parts x0, const std::vector<Factor>& factors) {
  const Parts sum = x0 + a[0];
  for (std::size_t k = 0; k < a.size(); ++k) {
    const bool isOwnMirror = k == 0 || 2 * k == a.size();
    a[k] = isOwnMirror ? product(a[k], factors[k]) : productOfMirrors(a[k], factors[k]);
  }
  a[0] = x0 + a[0];
  return sum;
}

bool isZero(const Part& a) { return a.node == kNoNode; }
bool isZero(const Parts& x) { return isZero(x.re) && isZero(x.im); }

NodeId registerOf(Graph& g, Part a) {
  if (isZero(a)) throw std::logic_error("a zero part has no register");
  const NodeId node = withoutSign(g, a).node;
  return a.negative ? g.flip(node, std::vector<int>(g[node].lanes, 1)) : node;
}

Parts shifted(Parts x, int exponent) {
  for (Part* part : {&x.re, &x.im}) part->exponent += isZero(*part) ? 0 : exponent;
  return x;
}

Parts asSignals(Packed x) { return {x.graph, {x.node}, {}}; }

// re + i im, where i turns the element itself, and so depends on the direction.
Packed asElement(Parts x) {
  Graph& g = *x.graph;
  const Packed turned = isZero(x.im) ? Packed{} : turnedQuarters(withoutSign(g, x.im), 3);
  if (isZero(x.re)) {
    return x.im.negative ? turnedQuarters(turned, 2) : turned;
  }
  const Packed straight = withoutSign(g, x.re);
  if (isZero(x.im)) return x.re.negative ? turnedQuarters(straight, 2) : straight;
  if (x.re.negative && x.im.negative) return turnedQuarters(straight + turned, 2);
  if (x.re.negative) return turned - straight;
  return x.im.negative ? straight - turned : straight + turned;
}

}  // namespace kernelgen
