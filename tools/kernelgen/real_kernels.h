// The kernels of real signals and the Hartley kernels: what is loaded and stored where, around the
// transforms of real.h.
#pragma once

#include "kernels.h"

namespace kernelgen {

// Where the parts of the bins of a half spectrum stand; kNoElement for what a layout does not hold.
class SpectrumMap {
 public:
  explicit SpectrumMap(const KernelId& id) : n_(id.length), layout_(id.layout) {}

  int size() const;
  int re(int k) const;
  int im(int k) const;

 private:
  int n_;
  Layout layout_;
};

Kernel makeRealKernel(const KernelId& id);

// Products by constants that the table states for a real or Hartley kernel.
int statedProducts(const KernelId& id);

}  // namespace kernelgen
