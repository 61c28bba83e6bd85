#include "plain_wht.h"

#include <algorithm>

namespace bench {
namespace {

template <class T>
[[gnu::always_inline]] inline void transform(const T* src, T* dst, int order, T factor) {
  const int n = 1 << order;
  std::copy_n(src, n, dst);
  for (int h = 1; h < n; h *= 2) {
    for (int block = 0; block < n; block += 2 * h) {
      T* __restrict low = dst + block;
      T* __restrict high = low + h;
      for (int i = 0; i < h; ++i) {
        const T a = low[i], b = high[i];
        low[i] = a + b;
        high[i] = a - b;
      }
    }
  }
  for (int i = 0; i < n; ++i) dst[i] *= factor;
}

template <class T>
[[gnu::target("avx2")]] void transformByAvx2(const T* src, T* dst, int order, T factor) {
  transform(src, dst, order, factor);
}

template <class T>
void transformByWhatThereIs(const T* src, T* dst, int order, T factor) {
  const auto call = __builtin_cpu_supports("avx2") ? transformByAvx2<T> : transform<T>;
  call(src, dst, order, factor);
}

}  // namespace

void plainWht(const float* src, float* dst, int order, float factor) {
  transformByWhatThereIs(src, dst, order, factor);
}

void plainWht(const double* src, double* dst, int order, double factor) {
  transformByWhatThereIs(src, dst, order, factor);
}

}  // namespace bench
