// What an algorithm computes with: complex values with +, - and products by constants.
//
// Packed    one or more complex elements interleaved in a vector; an operation works on all lanes
// Scalars   the real and the imaginary part of one element, a scalar each
// Parts     in parts.h
//
// The algorithms know only the forward transform. In the graph of an inverse kernel, the operations
// of Packed and Scalars that multiply by i or by a complex constant take -i for i.
#pragma once

#include "graph.h"

namespace kernelgen {

struct Packed {
  Graph* graph;
  NodeId node;

  // Whether a value and its conjugate are made of the same registers.
  static constexpr bool kSharesConjugate = false;
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

// exp(-2 pi i t)
Factor root(Turn t);

// A full complex product, one factor per element lane; no 1 and no 0 is left out.
Packed product(Packed x, const std::vector<Factor>& factors);
Packed product(Packed x, const Factor& factor);
// Real and imaginary parts exchanged.
Packed exchanged(Packed x);

// Between the two transforms of Rader's step: a[k] becomes a[k] factors[k], and x0 is added to the
// new a[0]. Returns x0 + a[0] of before. All are full products, even that of x0 by one: where the
// elements are lanes, x0 and a[k] may share a register, and the arithmetic is to be the same.
Packed raderMiddle(std::vector<Packed>& a, Packed x0, const std::vector<Factor>& factors);

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
