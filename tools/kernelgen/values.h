// What an algorithm computes with: a complex value with +, - and products by constants.
//
// Packed    one or more complex elements, interleaved in a vector; an operation works on all lanes
// Scalars   the real and the imaginary part, a scalar each
//
// A third one, Parts, is in parts.h.
//
// The direction of the transform is decided here: forward, `crossed`, `turnedQuarters` and
// `rotated` go with exp(-2 pi i t); for the inverse kernel i is replaced by -i in these three and
// nowhere else.
#pragma once

#include "graph.h"

namespace kernelgen {

struct Packed {
  Graph* graph;
  NodeId node;
};

bool isZero(Packed x);
Packed operator+(Packed x, Packed y);
Packed operator-(Packed x, Packed y);
// c x, for a real constant.
Packed scaled(Packed x, const Constant& c);
// -i c x: the product with the imaginary part of a root.
Packed crossed(Packed x, const Constant& c);
// (-i)^k x, exact.
Packed turnedQuarters(Packed x, int k);
// exp(-2 pi i t) x, one angle per element lane: exact if all are quarter turns, else products.
Packed rotated(Packed x, const std::vector<Turn>& angles);
Packed rotated(Packed x, Turn t);

// re + i im
struct Factor {
  Constant re;
  Constant im;
};

const Factor kOne{{1, "one"}, {0, "zero"}};

// A full complex product, one factor per element lane; no 1 and no 0 is left out.
Packed product(Packed x, const std::vector<Factor>& factors);
Packed product(Packed x, const Factor& factor);

struct Scalars {
  Graph* graph;
  NodeId re;
  NodeId im;
};

Scalars operator+(Scalars x, Scalars y);
Scalars operator-(Scalars x, Scalars y);
Scalars scaled(Scalars x, const Constant& c);
Scalars crossed(Scalars x, const Constant& c);
Scalars turnedQuarters(Scalars x, int k);
Scalars widened(Scalars x);
Scalars rounded(Scalars x);

}  // namespace kernelgen
