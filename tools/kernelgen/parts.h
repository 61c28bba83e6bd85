// Parts: a complex value with its real and its imaginary part in separate registers.
//
// Every lane belongs to a signal of its own. A part that is known to be zero has no register and
// makes no operation; a sign and a power of two are noted on the part and cost nothing until it is
// used. So conjugate values are made of the same registers: the spectrum of a real signal is
// computed once for k and n - k, with no code for it but that equal nodes are shared. This is how
// real transforms are made (real.h), and what makes Rader's step cheap in double precision.
#pragma once

#include "values.h"

namespace kernelgen {

// 2^exponent times the node, negated if negative; zero without a node.
struct Part {
  NodeId node = kNoNode;
  bool negative = false;
  int exponent = 0;

  bool operator==(const Part&) const = default;
};

bool isZero(const Part& a);
// The part as a register, with its sign and its power of two applied.
NodeId registerOf(Graph& g, Part a);

struct Parts {
  Graph* graph;
  Part re;
  Part im;

  static constexpr bool kSharesConjugate = true;

  bool operator==(const Parts&) const = default;
};

bool isZero(const Parts& x);
Parts operator+(Parts x, Parts y);
Parts operator-(Parts x, Parts y);
Parts scaled(Parts x, const Constant& c);
Parts crossed(Parts x, const Constant& c);
Parts turnedQuarters(Parts x, int k);
// One angle or factor for all lanes; products by one and zero are left out.
Parts rotated(Parts x, Turn t);
Parts product(Parts x, const Factor& factor);
// One for each lane, as full products.
Parts rotated(Parts x, const std::vector<Turn>& angles);
Parts product(Parts x, const std::vector<Factor>& factors);
Parts exchanged(Parts x);
Parts conjugate(Parts x);
// 2^exponent x, exact and free.
Parts shifted(Parts x, int exponent);

// a b, for a product that later meets its conjugate: their sum and their difference are twice its
// parts. So the constants are those of 2 b, and the half that is noted on the product cancels then.
Parts productOfMirrors(Parts a, const Factor& b);
// As for Packed (values.h), but without products by one and zero.
Parts raderMiddle(std::vector<Parts>& a, Parts x0, const std::vector<Factor>& factors);

struct Term {
  Constant c;
  Parts x;
};

// The sum of the products c x in their order and, at the end, of the plain value if there is one.
// Where products are evaluated in double, it is one expression, rounded once.
Parts combined(const std::vector<Term>& terms, const Parts* plain = nullptr);

// Rounds an expression that is still open to a temporary that no later constant is merged into.
Parts kept(Parts x);

// The lanes of an element, its real and its imaginary part, as samples of two real signals.
Parts asSignals(Packed x);
// The way back, from a value of the two spectra or of the two signals.
Packed asElement(Parts x);

}  // namespace kernelgen
