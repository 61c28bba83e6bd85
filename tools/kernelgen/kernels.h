// The list of kernels and how each is made: the one home of what the library exports.
#pragma once

#include <string>
#include <vector>

#include "graph.h"

namespace kernelgen {

enum class Family {
  Complex,
  Real,
  Hartley
};

// How the half spectrum of a real kernel is stored; only CCS has places for the imaginary parts
// that are always zero.
enum class Layout {
  None,
  Ccs,
  Pack,
  Perm
};

struct KernelId {
  Family family;
  Direction direction;
  int length;
  Precision precision;
  Layout layout = Layout::None;

  std::string symbol() const;
  const Body& body() const;
  // The size of the array in real numbers.
  int destinationSize() const;
  // Longer than the cache of decoded instructions, which holds some 4,000 on Zen 3.
  bool isLong() const;
  Pace pace() const;

  bool operator==(const KernelId&) const = default;
};

struct Kernel {
  KernelId id;
  Graph graph;
};

// Every kernel that is built, in the order of the header.
std::vector<KernelId> kernelList();

Kernel makeKernel(const KernelId& id);

// The kernel of that name; throws std::invalid_argument if there is none.
KernelId kernelOfSymbol(const std::string& symbol);

}  // namespace kernelgen
