// The same kernel in wider registers: equal operations that stood apart in a graph share a register.
#pragma once

#include "graph.h"

namespace kernelgen {

// How a kernel is packed.
struct Packing {
  // Of a register, in numbers.
  int lanes = 4;
  // What stays together: 1 number, the 2 of a complex element, or a register of the base.
  static constexpr int kRegister = 0;
  int together = 1;
  // What the scheduler takes for the count of values in registers, if not what it is for the base.
  int live = 0;
  bool operator==(const Packing&) const = default;
};

// The graph packed, for a source of so many numbers, past which it does not read. Its loads and
// stores have numbers and not elements; a shuffle may have operands and a result of different widths.
// Throws std::logic_error if it would not give the same bits.
Graph packed(const Graph& graph, int sourceSize, const Packing& packing);

}  // namespace kernelgen
