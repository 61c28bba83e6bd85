// The order of the statements of a kernel. It decides register pressure and overlap, never a bit.
#pragma once

#include "graph.h"

namespace kernelgen {

// What the scheduler believes of the core: so many values stay in its 16 registers beside constants
// and intermediate results, so many statements start in a cycle.
struct Pace {
  int live = 10, issue = 4;

  bool operator==(const Pace&) const = default;
};

// Every node but the constants and the scale, operands before users, all loads before any store.
std::vector<NodeId> schedule(const Graph& graph, Pace pace);

}  // namespace kernelgen
