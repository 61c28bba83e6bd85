// How each kernel is made.
#pragma once

#include "graph.h"
#include "tables.h"

namespace kernelgen {

const Body& bodyOf(const KernelId& id);
Pace paceOf(const KernelId& id);
// Longer than the cache of decoded instructions, which holds some 4,000 on Zen 3.
bool isLong(const KernelId& id);

struct Kernel {
  KernelId id;
  Graph graph;
};

Kernel makeKernel(const KernelId& id);

// The graph of a complex kernel by any body of its length.
Graph makeComplex(const KernelId& id, const Body& body);

}  // namespace kernelgen
