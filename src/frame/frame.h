// The frame of every kernel of a fixed length: it checks for null pointers, then checks the flag,
// then looks up the factor.
#pragma once

#include <cstdint>

#include "zvxg.h"

namespace zvxg {

// The factor for each flag. The places of values that are not flags stay unused.
template <class Real>
struct Factors {
  Real ofFlag[zvxNoDiv + 1];
};

template <class Real>
constexpr Factors<Real> factors(Real fwdByN, Real invByN, Real bySqrtN) {
  Factors<Real> f{};
  f.ofFlag[zvxDivFwdByN] = fwdByN;
  f.ofFlag[zvxDivInvByN] = invByN;
  f.ofFlag[zvxDivBySqrtN] = bySqrtN;
  f.ofFlag[zvxNoDiv] = 1;
  return f;
}

template <class Real>
constexpr Factors<Real> forwardFactors(Real byN, Real bySqrtN) {
  return factors<Real>(byN, 1, bySqrtN);
}

template <class Real>
constexpr Factors<Real> inverseFactors(Real byN, Real bySqrtN) {
  return factors<Real>(1, byN, bySqrtN);
}

// For a transform without direction, each of the two flags asks for the division.
template <class Real>
constexpr Factors<Real> undirectedFactors(Real byN, Real bySqrtN) {
  return factors<Real>(byN, byN, bySqrtN);
}

inline bool isScaleFlag(int32_t flag) {
  constexpr uint32_t kFlags =
      1u << zvxDivFwdByN | 1u << zvxDivInvByN | 1u << zvxDivBySqrtN | 1u << zvxNoDiv;
  const auto place = static_cast<uint32_t>(flag);
  return place <= zvxNoDiv && (kFlags >> place & 1u) != 0;
}

inline int32_t check(const void* src, const void* dst, int32_t flag) {
  if (src == nullptr || dst == nullptr) return zvxErrNullPointer;
  return isScaleFlag(flag) ? zvxOk : zvxErrScaleFlag;
}

template <std::uintptr_t kBytes>
inline bool onBoundary(const void* src, const void* dst) {
  static_assert((kBytes & (kBytes - 1)) == 0);
  return ((reinterpret_cast<std::uintptr_t>(src) | reinterpret_cast<std::uintptr_t>(dst)) &
          (kBytes - 1)) == 0;
}

// A constant whose value is hidden from the compiler. Otherwise it would turn a product by 2 into a
// sum, although it is the sums that limit the speed of kernels.
template <class Real>
inline Real hidden(Real constant) {
  asm("" : "+x"(constant));
  return constant;
}

// A number in an array of the caller, which may be at any address.
template <class Real>
struct InAnyPlace {
  typedef Real Number __attribute__((aligned(1)));
};
template <class Real>
using Anywhere = typename InAnyPlace<Real>::Number;

// Arrays as reals: complex ones are pairs of them.
template <class Real>
inline Real* reals(Real* x) {
  return x;
}
inline const float* reals(const Complex32* x) { return reinterpret_cast<const float*>(x); }
inline float* reals(Complex32* x) { return reinterpret_cast<float*>(x); }
inline const double* reals(const Complex64* x) { return reinterpret_cast<const double*>(x); }
inline double* reals(Complex64* x) { return reinterpret_cast<double*>(x); }

}  // namespace zvxg
