// The DCT-IV of direct lengths by lanes: the scalar program of the single call, on vectors. Compiled
// for each machine, as rows.h tells.

#include "dct4/direct.h"
#include "many/lanes.h"
#include "many/machine.h"

namespace zvxg::many::ZVXG_MACHINE {
namespace {

template <int kLength, class T>
void dct4Rows(const T* src, std::ptrdiff_t srcStep, T* dst, std::ptrdiff_t dstStep, const T*,
              std::ptrdiff_t turns) {
  using Row = Register<T>;
  using Vector = typename Row::Vector;
  for (; turns > 0; --turns, src += Row::kLanes, dst += Row::kLanes) {
    dct4::directDct4InLanes<Vector, kLength>(
        [&](int i) ZVXG_INLINE { return Row::load(src + i * srcStep); },
        [&](int i, Vector v) ZVXG_INLINE { Row::store(dst + i * dstStep, v); });
  }
}

template <class T, int... i>
constexpr Dct4Kernels<T> kernels(std::integer_sequence<int, i...>) {
  return {Kernel<Run<T>>{dct4Rows<2 << i, T>, Register<T>::kLanes}...};
}

template <class T>
using States = std::make_integer_sequence<int, dct4::kDirectStates<T>>;

}  // namespace

constinit const Dct4Kernels<float> kDct4Single = kernels<float>(States<float>());
constinit const Dct4Kernels<double> kDct4Double = kernels<double>(States<double>());

}  // namespace zvxg::many::ZVXG_MACHINE
