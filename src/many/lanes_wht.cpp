// Walsh-Hadamard transforms by lanes: each is a transform of its own, so all stages are between
// vectors. Compiled for each machine, as rows.h tells.

#include "many/lanes.h"
#include "many/machine.h"
#include "wht/stages.h"

namespace zvxg::many::ZVXG_MACHINE {
namespace {

template <int kOrder, class T>
void whtRows(const T* src, std::ptrdiff_t srcStep, T* dst, std::ptrdiff_t dstStep, const T* factor,
             std::ptrdiff_t turns) {
  using Row = Register<T>;
  const T scale = *factor;
  for (; turns > 0; --turns, src += Row::kLanes, dst += Row::kLanes) {
    wht::transform<1, 1 << kOrder>([&](auto i) ZVXG_INLINE { return Row::load(src + i * srcStep); },
                                   [&](auto i, auto v)
                                       ZVXG_INLINE { Row::store(dst + i * dstStep, v * scale); });
  }
}

template <class T, int... i>
constexpr WhtKernels<T> kernels(std::integer_sequence<int, i...>) {
  return {Kernel<Run<T>>{whtRows<i + 1, T>, Register<T>::kLanes}...};
}

}  // namespace

constinit const WhtKernels<float> kWhtSingle =
    kernels<float>(std::make_integer_sequence<int, kLaneOrders>());
constinit const WhtKernels<double> kWhtDouble =
    kernels<double>(std::make_integer_sequence<int, kLaneOrders>());

}  // namespace zvxg::many::ZVXG_MACHINE
