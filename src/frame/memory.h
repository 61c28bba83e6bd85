// How the kernels move values between memory and registers. The number in the name of a load is its
// count of complex elements. Aligned and Unaligned are the two policies a body is made for.
#pragma once

#include <immintrin.h>

namespace zvxg {

struct Aligned {
  static __m128 load2(const float* p) { return _mm_load_ps(p); }
  static __m256 load4(const float* p) { return _mm256_load_ps(p); }
  static __m128d load1(const double* p) { return _mm_load_pd(p); }
  static __m256d load2(const double* p) { return _mm256_load_pd(p); }
  static void store(float* p, __m128 v) { _mm_store_ps(p, v); }
  static void store(float* p, __m256 v) { _mm256_store_ps(p, v); }
  static void store(double* p, __m128d v) { _mm_store_pd(p, v); }
  static void store(double* p, __m256d v) { _mm256_store_pd(p, v); }
};

struct Unaligned {
  static __m128 load2(const float* p) { return _mm_loadu_ps(p); }
  static __m256 load4(const float* p) { return _mm256_loadu_ps(p); }
  static __m128d load1(const double* p) { return _mm_loadu_pd(p); }
  static __m256d load2(const double* p) { return _mm256_loadu_pd(p); }
  static void store(float* p, __m128 v) { _mm_storeu_ps(p, v); }
  static void store(float* p, __m256 v) { _mm256_storeu_ps(p, v); }
  static void store(double* p, __m128d v) { _mm_storeu_pd(p, v); }
  static void store(double* p, __m256d v) { _mm256_storeu_pd(p, v); }
};

template <class Vector, class Real>
Vector broadcast(const Real* x);
template <>
inline __m128 broadcast(const float* x) {
  return _mm_broadcast_ss(x);
}
template <>
inline __m256 broadcast(const float* x) {
  return _mm256_broadcast_ss(x);
}
template <>
inline __m128d broadcast(const double* x) {
  return _mm_loaddup_pd(x);
}
template <>
inline __m256d broadcast(const double* x) {
  return _mm256_broadcast_sd(x);
}

// A place relative to a pointer that the compiler cannot tell from others, so that it reads or
// writes right there and keeps no copy of its own.
template <class T>
[[gnu::always_inline]] inline T& at(T*& base, int place) {
  asm("" : "+r"(base));
  return base[place];
}

// One element in the low half, zero above.
inline __m128 loadLow(const float* p) { return _mm_castsi128_ps(_mm_loadu_si64(p)); }

// Two elements from anywhere.
inline __m128 loadPair(const float* low, const float* high) {
  return _mm_loadh_pi(loadLow(low), reinterpret_cast<const __m64*>(high));
}

// The same: the first element of a full vector and the second of another.
inline __m128 blendPair(const float* low, const float* high) {
  return _mm_blend_ps(_mm_loadu_ps(low), _mm_loadu_ps(high), 12);
}

inline void storeLow(float* p, __m128 v) { _mm_storel_pi(reinterpret_cast<__m64*>(p), v); }
inline void storeHigh(float* p, __m128 v) { _mm_storeh_pi(reinterpret_cast<__m64*>(p), v); }

inline __m256 joined(__m128 low, __m128 high) { return _mm256_set_m128(high, low); }
inline __m256d joined(__m128d low, __m128d high) { return _mm256_set_m128d(high, low); }
inline __m128 lowHalf(__m256 v) { return _mm256_castps256_ps128(v); }
inline __m128 highHalf(__m256 v) { return _mm256_extractf128_ps(v, 1); }
inline __m128d lowHalf(__m256d v) { return _mm256_castpd256_pd128(v); }
inline __m128d highHalf(__m256d v) { return _mm256_extractf128_pd(v, 1); }

}  // namespace zvxg
