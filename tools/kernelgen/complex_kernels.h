// The kernels of complex transforms: what is loaded and stored where, around the algorithms.
#pragma once

#include "tables.h"

namespace kernelgen {

// By any design of its length.
Graph complexGraph(const KernelId& id, const Design& design);

}  // namespace kernelgen
