// The kernels of real signals and the Hartley kernels: what is loaded and stored where, around the
// transforms of real.h.
#pragma once

#include "kernels.h"

namespace kernelgen {

Kernel makeRealKernel(const KernelId& id);

// Products by constants that the table states for a real or Hartley kernel.
int statedProducts(const KernelId& id);

}  // namespace kernelgen
