// The same kernel in wider registers: equal operations that stood apart in a graph share a register.
#pragma once

#include "graph.h"

namespace kernelgen {

// How a kernel is packed.
struct Packing {
  // Of a register, in numbers.
  int lanes = 4;
  // What stays together: 1 number, or the 2 of a complex element.
  int together = 1;
  bool operator==(const Packing&) const = default;
};

// The graph packed, for a source of so many numbers, past which it does not read. Its loads and
// stores have numbers and not elements; a shuffle may have operands and a result of different widths.
// Throws std::logic_error if it would not give the same bits.
Graph packed(const Graph& graph, int sourceSize, const Packing& packing);

}  // namespace kernelgen
