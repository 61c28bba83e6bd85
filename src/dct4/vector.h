// The vectors that the stages of a plan work on, and the groups in which they take them.
#pragma once

#include <immintrin.h>

#include <algorithm>
#include <cstddef>

#include "dct4/pieces.h"
#include "dct4/records.h"
#include "dct4/writing.h"
#include "frame/level.h"

namespace zvxg::dct4 {

// All that differs between precisions and between widths, in bytes. Neither a result nor a plan depends
// on the width.
template <class T, int kBytes>
struct Simd;

// Vector is not __m256, whose attribute templates would drop with a warning.
template <>
struct Simd<float, 32> {
  using Number = float;
  using Vector __attribute__((vector_size(32))) = float;

  static Vector load(const float* p) { return _mm256_load_ps(p); }
  // A vector of a table, all lanes of which are the same number.
  static Vector loadRepeated(const float* p) { return load(p); }
  // Vectors of a table that lie this far apart, as many as a vector holds.
  static Vector loadBlocks(const float* p, std::ptrdiff_t) { return load(p); }
  static Vector loadAnywhere(const float* p) { return _mm256_loadu_ps(p); }
  static void store(float* p, Vector v) { _mm256_store_ps(p, v); }
  static void storeAnywhere(float* p, Vector v) { _mm256_storeu_ps(p, v); }
  static void stream(float* p, Vector v) { _mm256_stream_ps(p, v); }

  // Lane j is p[-j].
  static Vector loadDescending(const float* p) {
    const __m256 halves =
        _mm256_insertf128_ps(_mm256_castps128_ps256(_mm_loadu_ps(p - 3)), _mm_loadu_ps(p - 7), 1);
    return _mm256_permute_ps(halves, 0x1b);
  }
  static Vector reversed(Vector v) {
    const __m256 halves = _mm256_permute2f128_ps(v, v, 1);
    return _mm256_permute_ps(halves, 0x1b);
  }

  // A quarter of a line from each of two places.
  static Vector loadQuarters(const float* p, std::ptrdiff_t distance) {
    return _mm256_insertf128_ps(_mm256_castps128_ps256(_mm_load_ps(p)), _mm_load_ps(p + distance),
                                1);
  }
};

template <>
struct Simd<double, 32> {
  using Number = double;
  using Vector __attribute__((vector_size(32))) = double;

  static Vector load(const double* p) { return _mm256_load_pd(p); }
  static Vector loadRepeated(const double* p) { return load(p); }
  static Vector loadBlocks(const double* p, std::ptrdiff_t) { return load(p); }
  static Vector loadAnywhere(const double* p) { return _mm256_loadu_pd(p); }
  static void store(double* p, Vector v) { _mm256_store_pd(p, v); }
  static void storeAnywhere(double* p, Vector v) { _mm256_storeu_pd(p, v); }
  static void stream(double* p, Vector v) { _mm256_stream_pd(p, v); }

  static Vector loadDescending(const double* p) {
    const __m256d halves =
        _mm256_insertf128_pd(_mm256_castpd128_pd256(_mm_loadu_pd(p - 1)), _mm_loadu_pd(p - 3), 1);
    return _mm256_permute_pd(halves, 0x5);
  }
  static Vector reversed(Vector v) {
    const __m256d halves = _mm256_permute2f128_pd(v, v, 1);
    return _mm256_permute_pd(halves, 0x5);
  }

  static Vector loadQuarters(const double* p, std::ptrdiff_t distance) {
    return _mm256_insertf128_pd(_mm256_castpd128_pd256(_mm_load_pd(p)), _mm_load_pd(p + distance),
                                1);
  }
};

// Two of these halves, for a processor with AVX-512. Tables and workspaces lie at multiples of 32 bytes.
template <class T>
struct Simd<T, 64> {
  using Number = T;
  using Vector __attribute__((vector_size(64))) = T;
  using Half = Simd<T, 32>;

  static Vector load(const T* p) { return *reinterpret_cast<const InPlan*>(p); }
  // The number is taken to all lanes by the operation that uses it.
  static Vector loadRepeated(const T* p) { return *p - Vector{}; }
  static Vector loadBlocks(const T* p, std::ptrdiff_t distance) {
    return joined(Half::load(p), Half::load(p + distance));
  }
  static Vector loadAnywhere(const T* p) { return *reinterpret_cast<const Elsewhere*>(p); }
  static void store(T* p, Vector v) { *reinterpret_cast<InPlan*>(p) = v; }
  static void storeAnywhere(T* p, Vector v) { *reinterpret_cast<Elsewhere*>(p) = v; }
  static void stream(T* p, Vector v) {
    alignas(64) T numbers[kLanes];
    store(numbers, v);
    Half::stream(p, Half::load(numbers));
    Half::stream(p + kLanes / 2, Half::load(numbers + kLanes / 2));
  }

  static Vector loadDescending(const T* p) { return reversed(loadAnywhere(p - kLanes + 1)); }
  static Vector reversed(Vector v) {
    return [&]<int... i>(std::integer_sequence<int, i...>) ZVXG_INLINE {
      return __builtin_shufflevector(v, v, (kLanes - 1 - i)...);
    }
    (std::make_integer_sequence<int, kLanes>());
  }

  static Vector loadQuarters(const T* p, std::ptrdiff_t distance) {
    return joined(Half::loadQuarters(p, distance), Half::loadQuarters(p + 2 * distance, distance));
  }

  static Vector joined(typename Half::Vector low, typename Half::Vector high) {
#ifdef __AVX512F__
    // With a mask of all lanes, as g++ warns of the unset operand of the function without one.
    return reinterpret_cast<Vector>(
        _mm512_maskz_insertf64x4(0xff, _mm512_castpd256_pd512(reinterpret_cast<__m256d>(low)),
                                 reinterpret_cast<__m256d>(high), 1));
#else
    return [&]<int... i>(std::integer_sequence<int, i...>) ZVXG_INLINE {
      return __builtin_shufflevector(low, high, i...);
    }
    (std::make_integer_sequence<int, kLanes>());
#endif
  }

 private:
  static constexpr int kLanes = 64 / sizeof(T);
  typedef T InPlan __attribute__((vector_size(64), may_alias, aligned(32)));
  typedef T Elsewhere __attribute__((vector_size(64), may_alias, aligned(4)));
};

// The stages are templates of one of these, S, and work on arrays of its numbers.
template <class S>
using Number = typename S::Number;
template <class S>
using Vector = typename S::Vector;
template <class S>
constexpr int32_t kLanes = sizeof(Vector<S>) / sizeof(Number<S>);

// The vectors of a plan's tables, which suit every stage, and the widest ones of the level.
template <class T>
using Narrow = Simd<T, kTableVectorBytes>;
template <class T>
using Wide = Simd<T, kLevel == Level::v4 ? 64 : kTableVectorBytes>;

// In each quarter of a line the numbers that `select` names: of a, or of b from the size of a quarter on.
template <int... select, class V>
ZVXG_INLINE inline V selected(V a, V b) {
  return [&]<int... i>(std::integer_sequence<int, i...>) ZVXG_INLINE {
    constexpr int kQuarter = sizeof...(select), kFrom[] = {select...};
    return __builtin_shufflevector(a, b,
                                   (kFrom[i % kQuarter] % kQuarter + i / kQuarter * kQuarter +
                                    kFrom[i % kQuarter] / kQuarter * int{sizeof...(i)})...);
  }
  (std::make_integer_sequence<int, sizeof(V) / sizeof(a[0])>());
}

// Elements 0 to 3 of as many rows as a vector has lanes, `pitch` apart, as 4 vectors.
template <class S>
ZVXG_INLINE inline void loadColumns(const Number<S>* rows, std::ptrdiff_t pitch,
                                    Vector<S> (&columns)[4]) {
  using V = Vector<S>;
  if constexpr (sizeof(Number<S>) == 4) {
    const auto row = [&](int i)
                         ZVXG_INLINE { return S::loadQuarters(rows + i * pitch, 4 * pitch); };
    const V a0 = row(0), a1 = row(1), a2 = row(2), a3 = row(3);
    const V b0 = selected<0, 4, 1, 5>(a0, a1), b1 = selected<2, 6, 3, 7>(a0, a1);
    const V b2 = selected<0, 4, 1, 5>(a2, a3), b3 = selected<2, 6, 3, 7>(a2, a3);
    columns[0] = selected<0, 1, 4, 5>(b0, b2);
    columns[1] = selected<2, 3, 6, 7>(b0, b2);
    columns[2] = selected<0, 1, 4, 5>(b1, b3);
    columns[3] = selected<2, 3, 6, 7>(b1, b3);
  } else {
    unroll<2>([&](auto i) ZVXG_INLINE {
      const V a0 = S::loadQuarters(rows + 2 * i, 2 * pitch);
      const V a1 = S::loadQuarters(rows + pitch + 2 * i, 2 * pitch);
      columns[2 * i] = selected<0, 2>(a0, a1);
      columns[2 * i + 1] = selected<1, 3>(a0, a1);
    });
  }
}

// Neighbouring vectors are worked on in groups of up to 128 bytes, two cache lines. A body takes
// its steps one after the other, each for all vectors of the group, with the intermediate values on
// the stack. So a line is used up while it is in the cache, which matters because rows lie a power
// of two apart, where a cache holds only a few lines.
template <class S>
constexpr int kGroup = 128 / sizeof(Vector<S>);

// A tile of intermediate values, as complex rows of a group.
template <class S, int kRows>
struct Tile {
  alignas(64) Vector<S> values[kRows][2][kGroup<S>];

  Complex<Vector<S>> get(int row, int g) const { return {values[row][0][g], values[row][1][g]}; }
  void set(int row, int g, Complex<Vector<S>> z) {
    values[row][0][g] = z.re;
    values[row][1][g] = z.im;
  }
};

// A buffer on the stack in which results are collected: up to 64 runs of two groups, half of a
// first-level cache of 32 KB.
template <class S>
struct Staging {
  using T = Number<S>;
  static constexpr std::ptrdiff_t kRun = 2 * kGroup<S> * kLanes<S>;  // elements
  static constexpr int kRuns = 64;

  alignas(64) T elements[kRuns * kRun];

  T* run(int number) { return elements + number * kRun; }

  static void copyOut(T* to, const T* from, std::ptrdiff_t count, Writing writing) {
    if (writing == Writing::Streamed) {
      for (std::ptrdiff_t i = 0; i < count; i += kLanes<S>) {
        S::stream(to + i, S::load(from + i));
      }
    } else {
      std::ptrdiff_t i = 0;
      for (; i + kLanes<S> <= count; i += kLanes<S>) {
        S::storeAnywhere(to + i, S::load(from + i));
      }
      for (; i < count; ++i) to[i] = from[i];
    }
  }
};

}  // namespace zvxg::dct4
