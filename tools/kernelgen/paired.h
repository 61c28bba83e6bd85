// Complex values over real signals.
//
// Each lane of a register is taken as the sample of a real signal of its own: real and imaginary
// part of an element are two signals. A value is then complex with parts that are registers, or
// zero, each with a sign and a power of two that are settled only when it is used. The transform of
// a real signal is conjugate-symmetric, and with this its mirror values have the same registers:
// sharing equal nodes does the pairing of k and n - k. It is what makes the double-precision Rader
// steps cheap.
#pragma once

#include "algorithms.h"

namespace kernelgen {

// The value 2^exponent * node, negated if negative; zero without a node.
struct Part {
  NodeId node = kNoNode;
  bool negative = false;
  int exponent = 0;

  bool operator==(const Part&) const = default;
};

struct Paired {
  Graph* graph;
  Part re;
  Part im;
};

Paired operator+(Paired x, Paired y);
Paired operator-(Paired x, Paired y);
Paired scaled(Paired x, const Constant& c);
Paired crossed(Paired x, const Constant& c);
Paired turnedQuarters(Paired x, int k);
Paired rotated(Paired x, Turn t);
Paired product(Paired x, const Factor& factor);
// One angle or factor per lane.
Paired rotated(Paired x, const std::vector<Turn>& angles);
Paired product(Paired x, const std::vector<Factor>& factors);
bool isZero(const Part& a);
bool isZero(const Paired& x);
Paired conjugate(Paired x);
bool sameValue(const Paired& x, const Paired& y);
// 2^exponent x, exact and free.
Paired shifted(Paired x, int exponent);

struct Term {
  Constant c;
  Paired x;
};

// The sum of the products, one after the other, and then of the plain value if there is one. Of
// scalars it is one expression, evaluated in double.
Paired combined(const std::vector<Term>& terms, const Paired* plain = nullptr);

// Expressions still open made temporaries into which no later constant is merged.
Paired kept(Paired x);

// A part as a register, sign and power included.
NodeId settledPart(Graph& g, Part a);

// Elements as two real signals, and back.
Paired asSignals(Packed x);
Packed asElement(Paired x);

}  // namespace kernelgen
