// The kernels of real signals and the Hartley kernels: what is loaded and stored where, around the
// transforms of real.h.
#pragma once

#include "graph.h"

namespace kernelgen {

Graph realGraph(const KernelId& id);

}  // namespace kernelgen
