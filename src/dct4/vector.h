// The vectors that the stages of a plan work on, and the groups in which they take them.
#pragma once

#include <immintrin.h>

#include <algorithm>
#include <cstddef>

#include "dct4/pieces.h"
#include "dct4/records.h"
#include "dct4/writing.h"

namespace zvxg::dct4 {

// The width of the vectors. Neither a result nor a plan depends on it.
constexpr int kVectorBytes = 32;

template <class T>
constexpr int32_t kLanes = kVectorBytes / sizeof(T);

// All that differs between precisions and between widths.
template <class T, int kBytes = kVectorBytes>
struct Simd;

// Vector is not __m256, whose attribute templates would drop with a warning.
template <>
struct Simd<float, 32> {
  using Vector __attribute__((vector_size(32))) = float;

  static Vector load(const float* p) { return _mm256_load_ps(p); }
  // A vector of a table, all lanes of which are the same number.
  static Vector loadRepeated(const float* p) { return load(p); }
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

  // Elements 0 to 3 of 8 rows, `pitch` apart, as 4 vectors.
  static void loadColumns(const float* rows, std::ptrdiff_t pitch, Vector (&columns)[4]) {
    const auto pair = [&](int row) {
      return _mm256_insertf128_ps(_mm256_castps128_ps256(_mm_load_ps(rows + row * pitch)),
                                  _mm_load_ps(rows + (row + 4) * pitch), 1);
    };
    const __m256 a0 = pair(0), a1 = pair(1), a2 = pair(2), a3 = pair(3);
    const __m256 b0 = _mm256_unpacklo_ps(a0, a1), b1 = _mm256_unpackhi_ps(a0, a1);
    const __m256 b2 = _mm256_unpacklo_ps(a2, a3), b3 = _mm256_unpackhi_ps(a2, a3);
    columns[0] = _mm256_shuffle_ps(b0, b2, 0x44);
    columns[1] = _mm256_shuffle_ps(b0, b2, 0xee);
    columns[2] = _mm256_shuffle_ps(b1, b3, 0x44);
    columns[3] = _mm256_shuffle_ps(b1, b3, 0xee);
  }
};

template <>
struct Simd<double, 32> {
  using Vector __attribute__((vector_size(32))) = double;

  static Vector load(const double* p) { return _mm256_load_pd(p); }
  static Vector loadRepeated(const double* p) { return load(p); }
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

  // Elements 0 to 3 of 4 rows.
  static void loadColumns(const double* rows, std::ptrdiff_t pitch, Vector (&columns)[4]) {
    const auto pair = [&](int row, int column) {
      const double* const p = rows + row * pitch + column;
      return _mm256_insertf128_pd(_mm256_castpd128_pd256(_mm_load_pd(p)),
                                  _mm_load_pd(p + 2 * pitch), 1);
    };
    const __m256d a0 = pair(0, 0), a1 = pair(1, 0), a2 = pair(0, 2), a3 = pair(1, 2);
    columns[0] = _mm256_unpacklo_pd(a0, a1);
    columns[1] = _mm256_unpackhi_pd(a0, a1);
    columns[2] = _mm256_unpacklo_pd(a2, a3);
    columns[3] = _mm256_unpackhi_pd(a2, a3);
  }
};

template <class T>
using Vector = typename Simd<T>::Vector;

// Neighbouring vectors are worked on in groups of up to 128 bytes, two cache lines. A body takes
// its steps one after the other, each for all vectors of the group, with the intermediate values on
// the stack. So a line is used up while it is in the cache, which matters because rows lie a power
// of two apart, where a cache holds only a few lines.
constexpr int kGroup = 128 / kVectorBytes;

// A tile of intermediate values, as complex rows of a group.
template <class T, int kRows>
struct Tile {
  alignas(64) Vector<T> values[kRows][2][kGroup];

  Complex<Vector<T>> get(int row, int g) const { return {values[row][0][g], values[row][1][g]}; }
  void set(int row, int g, Complex<Vector<T>> z) {
    values[row][0][g] = z.re;
    values[row][1][g] = z.im;
  }
};

// A buffer on the stack in which results are collected: up to 64 runs of two groups, half of a
// first-level cache of 32 KB.
template <class T>
struct Staging {
  static constexpr std::ptrdiff_t kRun = 2 * kGroup * kLanes<T>;  // elements
  static constexpr int kRuns = 64;

  alignas(64) T elements[kRuns * kRun];

  T* run(int number) { return elements + number * kRun; }

  static void copyOut(T* to, const T* from, std::ptrdiff_t count, Writing writing) {
    if (writing == Writing::Streamed) {
      for (std::ptrdiff_t i = 0; i < count; i += kLanes<T>) {
        Simd<T>::stream(to + i, Simd<T>::load(from + i));
      }
    } else {
      std::ptrdiff_t i = 0;
      for (; i + kLanes<T> <= count; i += kLanes<T>) {
        Simd<T>::storeAnywhere(to + i, Simd<T>::load(from + i));
      }
      for (; i < count; ++i) to[i] = from[i];
    }
  }
};

}  // namespace zvxg::dct4
