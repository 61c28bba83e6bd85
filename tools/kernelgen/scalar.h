// The scalar form of a kernel: the one specification of its bits.
//
// Which numbers share a register, and how they got there, is gone; what is left of a kernel is the
// operations that each output consists of. A kernel in another shape is right if it has the same.
#pragma once

#include <string>

#include "graph.h"

namespace kernelgen {

// Every register broken into pieces of `lanes` lanes: 1 for numbers, 2 for complex elements. The
// operations are those of the graph on each piece, equal ones shared. Shuffles only say which piece
// is meant, except where the parts of an element are exchanged; a sign goes into the constant or
// the sum that comes next. Throws std::invalid_argument if a piece of two lanes would have to be
// taken apart.
Graph apart(const Graph& graph, int lanes);

inline Graph scalarised(const Graph& graph) { return apart(graph, 1); }

// Empty if two graphs give the same bits for any source and scale, else the first output that differs
// and the expressions in which it does. Every output has to be the same expression by identities that
// hold for signed zeros, infinities and NaN too (of a NaN only that it is one):
//
//   x * 1 = x      x - y = x + (-y)      x + y = y + x      x y = y x      (-x) y = -(x y)
//
// and a sign passes through conversions. These are none: x * 1 + y * 0 = x, as -0 + 0 is 0 and an
// infinite y makes a NaN; -(x - y) = y - x and (-x) + (-y) = -(x + y), as x - x is 0 and not -0;
// x + 0 = x, as -0 + 0 is 0.
std::string difference(const Graph& a, const Graph& b);

}  // namespace kernelgen
