#include "kernels.h"

#include <stdexcept>

#include "complex_kernels.h"
#include "real_kernels.h"

namespace kernelgen {

Kernel makeKernel(const KernelId& id) {
  switch (id.family) {
    case Family::Complex: return {id, complexGraph(id, designOf(id))};
    case Family::Real:
    case Family::Hartley: return {id, realGraph(id)};
  }
  throw std::logic_error("no graph for " + id.symbol());
}

}  // namespace kernelgen
