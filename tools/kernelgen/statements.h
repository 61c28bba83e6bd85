// The statements of a kernel as C++ text, one a line: a node each, in the order of the schedule. They
// work on the arrays of reals `src` and `dst` and on the number `factor` points to.
#pragma once

#include <string>

#include "access.h"
#include "machine.h"
#include "tables.h"

namespace kernelgen {

std::string statements(const Graph& graph, const Design& design, const Machine& machine,
                       const Access& access);

}  // namespace kernelgen
