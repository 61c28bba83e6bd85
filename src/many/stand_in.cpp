// Rows by single calls, until they are printed. A turn takes its transforms one by one.

#include <utility>

#include "many/rows.h"
#include "zvxg.h"

namespace zvxg::many {
namespace {

int32_t complexDft(bool inverse, const float* src, float* dst, int n, int32_t flag) {
  return (inverse ? zvxgDFTInv_CToC_32fc : zvxgDFTFwd_CToC_32fc)(
      reinterpret_cast<const Complex32*>(src), reinterpret_cast<Complex32*>(dst), n, flag);
}
int32_t complexDft(bool inverse, const double* src, double* dst, int n, int32_t flag) {
  return (inverse ? zvxgDFTInv_CToC_64fc : zvxgDFTFwd_CToC_64fc)(
      reinterpret_cast<const Complex64*>(src), reinterpret_cast<Complex64*>(dst), n, flag);
}
int32_t toPack(const float* s, float* d, int n, int32_t f) {
  return zvxgDFTFwd_RToPack_32f(s, d, n, f);
}
int32_t toPack(const double* s, double* d, int n, int32_t f) {
  return zvxgDFTFwd_RToPack_64f(s, d, n, f);
}
int32_t fromPack(const float* s, float* d, int n, int32_t f) {
  return zvxgDFTInv_PackToR_32f(s, d, n, f);
}
int32_t fromPack(const double* s, double* d, int n, int32_t f) {
  return zvxgDFTInv_PackToR_64f(s, d, n, f);
}
int32_t hartley(const float* s, float* d, int n, int32_t f) { return zvxgHartley_32f(s, d, n, f); }
int32_t hartley(const double* s, double* d, int n, int32_t f) {
  return zvxgHartley_64f(s, d, n, f);
}

// The flag of a direction by its factor.
template <class T>
int32_t flagOf(T factor, int n, int32_t byN) {
  if (factor == 1) return zvxNoDiv;
  return factor == static_cast<T>(1.0 / n) ? byN : zvxDivBySqrtN;
}

template <int n, int kUnit, class T, class Load, class Store, class One>
void turnsOf(std::ptrdiff_t turns, int transforms, const Load& load, const Store& store,
             const One& one) {
  T in[32][2 * 64], out[32][2 * 64];
  for (std::ptrdiff_t t = 0; t < turns; ++t) {
    for (int k = 0; k < transforms; ++k) {
      for (int i = 0; i < n; ++i) {
        for (int u = 0; u < kUnit; ++u)
          in[k][i * kUnit + u] = *load(i, (t * transforms + k) * kUnit + u);
      }
      one(in[k], out[k]);
    }
    for (int k = 0; k < transforms; ++k) {
      for (int i = 0; i < n; ++i) {
        for (int u = 0; u < kUnit; ++u)
          *store(i, (t * transforms + k) * kUnit + u) = out[k][i * kUnit + u];
      }
    }
  }
}

template <class T, int n, int kBytes, bool kInverse>
void rows(const T* src, std::ptrdiff_t ss, T* dst, std::ptrdiff_t ds, const T* factor,
          std::ptrdiff_t turns) {
  turnsOf<n, 2, T>(
      turns, kBytes / sizeof(T) / 2, [&](int i, std::ptrdiff_t at) { return src + i * ss + at; },
      [&](int i, std::ptrdiff_t at) { return dst + i * ds + at; },
      [&](const T* in, T* out) {
        complexDft(kInverse, in, out, n,
                   flagOf(*factor, n, kInverse ? zvxDivInvByN : zvxDivFwdByN));
      });
}
template <class T, int n, int kBytes>
void hartleyRows(const T* src, std::ptrdiff_t ss, T* dst, std::ptrdiff_t ds, const T* factor,
                 std::ptrdiff_t turns) {
  turnsOf<n, 1, T>(
      turns, kBytes / sizeof(T), [&](int i, std::ptrdiff_t at) { return src + i * ss + at; },
      [&](int i, std::ptrdiff_t at) { return dst + i * ds + at; },
      [&](const T* in, T* out) { hartley(in, out, n, flagOf(*factor, n, zvxDivFwdByN)); });
}
template <int n, class T>
T* place(const SpectrumRows<T>& s, int i, std::ptrdiff_t at) {
  if (i == 0) return s.first + at;
  if (n % 2 == 0 && i == n - 1) return s.last + at;
  return s.between + (i - 1) * s.step + at;
}
template <class T, int n, int kBytes>
void toSpectrum(const T* src, std::ptrdiff_t ss, const SpectrumRows<T>& dst, const T* factor,
                std::ptrdiff_t turns) {
  turnsOf<n, 1, T>(
      turns, kBytes / sizeof(T), [&](int i, std::ptrdiff_t at) { return src + i * ss + at; },
      [&](int i, std::ptrdiff_t at) { return place<n>(dst, i, at); },
      [&](const T* in, T* out) { toPack(in, out, n, flagOf(*factor, n, zvxDivFwdByN)); });
}
template <class T, int n, int kBytes>
void toSamples(const SpectrumRows<const T>& src, T* dst, std::ptrdiff_t ds, const T* factor,
               std::ptrdiff_t turns) {
  turnsOf<n, 1, T>(
      turns, kBytes / sizeof(T), [&](int i, std::ptrdiff_t at) { return place<n>(src, i, at); },
      [&](int i, std::ptrdiff_t at) { return dst + i * ds + at; },
      [&](const T* in, T* out) { fromPack(in, out, n, flagOf(*factor, n, zvxDivInvByN)); });
}

template <class T, int kBytes, int... i>
constexpr Kernels<T> make(std::integer_sequence<int, i...>) {
  Kernels<T> k{};
  k.lanes = kBytes / sizeof(T);
  ((k.rows[0][i] = {rows<T, i + 2, kBytes, false>, k.lanes / 2}), ...);
  ((k.rows[1][i] = {rows<T, i + 2, kBytes, true>, k.lanes / 2}), ...);
  ((k.toSpectrum[i] = toSpectrum<T, i + 2, kBytes>), ...);
  ((k.toSamples[i] = toSamples<T, i + 2, kBytes>), ...);
  ((k.hartley[i] = hartleyRows<T, i + 2, kBytes>), ...);
  return k;
}

using All = std::make_integer_sequence<int, kLengths>;

}  // namespace

constinit const Kernels<float> avx::kSingle = make<float, 32>(All());
constinit const Kernels<double> avx::kDouble = make<double, 32>(All());
constinit const Kernels<float> avx512::kSingle = make<float, 64>(All());
constinit const Kernels<double> avx512::kDouble = make<double, 64>(All());

}  // namespace zvxg::many
