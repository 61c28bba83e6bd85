// The order of the statements of a kernel. It decides register pressure and overlap, never a bit.
#pragma once

#include "graph.h"

namespace kernelgen {

// Every node but the constants and the scale, operands before users, all loads before any store.
std::vector<NodeId> schedule(const Graph& graph, Pace pace);

}  // namespace kernelgen
