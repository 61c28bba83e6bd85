// The kernels that run many transforms at once (src/many/rows.h), as C++ text. Each is printed from
// the graph of the single kernel: the same operations on the same numbers, arranged otherwise, which
// is checked before anything is printed. There are four readings of a graph:
//
//   elements   a complex element of a register, two lanes, becomes a register of its own, which holds
//              this element of several transforms as they are in memory
//   scalars    the same of each number: for graphs of scalars, and where the parts of an element are
//              in different registers
//   beside     a register holds what it does in the graph, once for each of several transforms
//   contiguous scalars of real transforms that are transposed as they are loaded and stored
//
// Short kernels of elements transpose, too, where transforms are contiguous.
#pragma once

#include <optional>
#include <string>

#include "counts.h"

namespace kernelgen {

// What a kernel does in registers of AVX, for how many transforms at a time.
struct ManyCounts {
  std::string reading;
  Counts ofTurn;
  int transforms;
};

// Of the kernel on rows, and of the one on contiguous complex transforms where there is any.
ManyCounts rowCounts(const KernelId& id);
std::optional<ManyCounts> contiguousCounts(const KernelId& id);

// A file of every parts-th kernel of these lengths.
std::string emitMany(int first, int last, int part, int parts);

// The file of the tables of them all. Up to the longest, kernels are those of the machine that it is
// compiled for; beyond, they are those of AVX.
std::string emitManyTables(int longest);

// The file of the kernels on contiguous real transforms of a precision, up to the longest length, and
// of their table.
std::string emitContiguous(int longest, Precision precision);

}  // namespace kernelgen
