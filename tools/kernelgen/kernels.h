// A kernel: what it computes, as a graph made the way its row of the tables says.
#pragma once

#include "graph.h"

namespace kernelgen {

struct Kernel {
  KernelId id;
  Graph graph;
};

Kernel makeKernel(const KernelId& id);

}  // namespace kernelgen
