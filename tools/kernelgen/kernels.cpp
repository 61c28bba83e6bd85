#include "kernels.h"

#include <stdexcept>

#include "complex_kernels.h"
#include "real_kernels.h"

namespace kernelgen {

namespace {

Graph graphOf(const KernelId& id) {
  switch (id.family) {
    case Family::Complex: return complexGraph(id, designOf(id));
    case Family::Real:
    case Family::Hartley: return realGraph(id);
  }
  throw std::logic_error("no graph");
}

}  // namespace

Kernel makeKernel(const KernelId& id) {
  try {
    return {id, graphOf(id)};
  } catch (const std::logic_error& error) {
    throw std::logic_error(id.symbol() + ": " + error.what());
  }
}

}  // namespace kernelgen
