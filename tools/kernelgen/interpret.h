// Runs the graph of a kernel on numbers, lane by lane, in the precision of each node. Compiled
// kernels must give the same bits.
#pragma once

#include <span>
#include <vector>

#include "graph.h"

namespace kernelgen {

// source: the kernel's input as real numbers (complex elements interleaved), T its precision.
// The returned array ends with the last number that is stored.
template <class T>
std::vector<T> interpret(const Graph& graph, std::span<const T> source, T scale);

}  // namespace kernelgen
