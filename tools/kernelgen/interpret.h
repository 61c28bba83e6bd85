// Runs the graph of a kernel on numbers, lane by lane, in the precision of each node. Compiled
// kernels must give the same bits.
#pragma once

#include <span>
#include <vector>

#include "kernels.h"

namespace kernelgen {

// source: the kernel's input as real numbers (complex elements interleaved), T its precision.
template <class T>
std::vector<T> interpret(const Kernel& kernel, std::span<const T> source, T scale);

}  // namespace kernelgen
