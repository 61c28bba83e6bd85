// Parts: a complex value whose real and imaginary part are separate registers, or known to be zero.
//
// Each lane belongs to a signal of its own. A sign and a power of two stay pending on a part until
// it is used, so that they cost nothing. The spectrum of a real signal is conjugate-symmetric: the
// values k and n - k are made of the same registers, and as equal nodes are shared, half of the
// spectrum comes for free. That is how real transforms are made (real.h), and what makes Rader's
// step cheap in double precision.
#pragma once

#include "values.h"

namespace kernelgen {

// The value 2^exponent * node, negated if negative; zero without a node.
struct Part {
  NodeId node = kNoNode;
  bool negative = false;
  int exponent = 0;

  bool operator==(const Part&) const = default;
};

struct Parts {
  Graph* graph;
  Part re;
  Part im;

  static constexpr bool kSharesConjugate = true;
};

Parts operator+(Parts x, Parts y);
Parts operator-(Parts x, Parts y);
Parts scaled(Parts x, const Constant& c);
Parts crossed(Parts x, const Constant& c);
Parts turnedQuarters(Parts x, int k);
Parts rotated(Parts x, Turn t);
Parts product(Parts x, const Factor& factor);
// One angle or factor per lane.
Parts rotated(Parts x, const std::vector<Turn>& angles);
Parts product(Parts x, const std::vector<Factor>& factors);
Parts exchanged(Parts x);
bool isZero(const Part& a);
bool isZero(const Parts& x);
Parts conjugate(Parts x);
bool sameValue(const Parts& x, const Parts& y);
// 2^exponent x, exact and free.
Parts shifted(Parts x, int exponent);

struct Term {
  Constant c;
  Parts x;
};

// a b, where the value is to meet its mirror again as their sum and difference: the constants hold
// the factor two of that.
Parts productOfMirrors(Parts a, const Factor& b);
// As for Packed (values.h), but without the products by one and by zero.
Parts raderMiddle(std::vector<Parts>& a, Parts x0, const std::vector<Factor>& factors);

// The sum of the products, one after the other, and then of the plain value if there is one. Of
// scalars it is one expression, evaluated in double.
Parts combined(const std::vector<Term>& terms, const Parts* plain = nullptr);

// Expressions still open made temporaries into which no later constant is merged.
Parts kept(Parts x);

// A part as a register, with sign and power of two applied.
NodeId registerOf(Graph& g, Part a);

// The lanes of an element, its real and its imaginary part, as samples of two real signals. And
// back: values of the two signals as an element.
Parts asSignals(Packed x);
Packed asElement(Parts x);

}  // namespace kernelgen
