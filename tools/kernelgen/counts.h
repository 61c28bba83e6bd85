// The ledger: what a kernel does, counted in its graph, and the bound that follows.
#pragma once

#include <optional>

#include "access.h"
#include "kernels.h"
#include "machine.h"

namespace kernelgen {

struct Counts {
  int adds = 0;      // additions and subtractions, each one instruction on all its lanes
  int products = 0;  // products by a constant
  int scales = 0;    // products by the factor of the flag
  int shuffles = 0;
  int logic = 0;     // sign flips and blends
  int converts = 0;  // between single and double
  int loads = 0;     // memory accesses of the unaligned body, constants not counted
  int stores = 0;
  std::optional<int> stated;  // products that the table states
  double bound = 0;  // cycles, by the ports of a core with two adders and four vector pipes
};

Counts counts(const Kernel& kernel);

// Of any graph in the registers of a machine, without what the table states and the bound.
Counts counts(const Graph& graph, const Machine& machine, const Access& access);
double boundOfVectors(const Counts& c);

// All vector operations.
int operations(const Counts& c);

// "symbol,row,width,adds,..." and one such line.
std::string ledgerHead();
std::string ledgerLine(const Kernel& kernel);

}  // namespace kernelgen
