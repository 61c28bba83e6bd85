// Between transforms that are contiguous and rows that hold an element of each, by tiles that go
// through registers. A group is as many transforms as have an element in 256 bits: 8, 4 or 2, for
// elements of 4, 8 or 16 bytes, whatever these are. Wider rows are made of several groups: with 512
// bits there are two thirds of the shuffles, but each of them takes as long as two.
//
// Tiles are kWidth elements wide. The last one of a transform ends where it ends, and so may do some
// elements twice; nothing beside the elements is read or written. Distances and steps are in bytes.
#pragma once

#include <immintrin.h>

#include <cstddef>

namespace zvxg::many {

using Byte = unsigned char;

template <int kBytes>
inline constexpr int kGroup = 32 / kBytes;

inline __m128 loadHalf(const Byte* p) { return _mm_loadu_ps(reinterpret_cast<const float*>(p)); }
inline void storeHalf(Byte* p, __m128 v) { _mm_storeu_ps(reinterpret_cast<float*>(p), v); }
inline __m256 loadRow(const Byte* p) { return _mm256_loadu_ps(reinterpret_cast<const float*>(p)); }
inline void storeRow(Byte* p, __m256 v) { _mm256_storeu_ps(reinterpret_cast<float*>(p), v); }

inline __m256 loadHalves(const Byte* low, const Byte* high) {
  return _mm256_insertf128_ps(_mm256_castps128_ps256(loadHalf(low)), loadHalf(high), 1);
}
inline void storeHalves(Byte* low, Byte* high, __m256 v) {
  storeHalf(low, _mm256_castps256_ps128(v));
  storeHalf(high, _mm256_extractf128_ps(v, 1));
}

inline __m256 lowPairs(__m256 a, __m256 b) {
  return _mm256_castpd_ps(_mm256_unpacklo_pd(_mm256_castps_pd(a), _mm256_castps_pd(b)));
}
inline __m256 highPairs(__m256 a, __m256 b) {
  return _mm256_castpd_ps(_mm256_unpackhi_pd(_mm256_castps_pd(a), _mm256_castps_pd(b)));
}

// ---- Tiles of a group: toRows() from transforms `dist` apart to rows `step` apart, fromRows() back

template <int kBytes, int kWidth>
struct Tile;

template <>
struct Tile<4, 4> {
  static void toRows(const Byte* src, std::ptrdiff_t dist, Byte* rows, std::ptrdiff_t step) {
    const __m256 a = loadHalves(src, src + 4 * dist);
    const __m256 b = loadHalves(src + dist, src + 5 * dist);
    const __m256 c = loadHalves(src + 2 * dist, src + 6 * dist);
    const __m256 d = loadHalves(src + 3 * dist, src + 7 * dist);
    const __m256 ab0 = _mm256_unpacklo_ps(a, b), ab2 = _mm256_unpackhi_ps(a, b);
    const __m256 cd0 = _mm256_unpacklo_ps(c, d), cd2 = _mm256_unpackhi_ps(c, d);
    storeRow(rows, lowPairs(ab0, cd0));
    storeRow(rows + step, highPairs(ab0, cd0));
    storeRow(rows + 2 * step, lowPairs(ab2, cd2));
    storeRow(rows + 3 * step, highPairs(ab2, cd2));
  }
  static void fromRows(const Byte* rows, std::ptrdiff_t step, Byte* dst, std::ptrdiff_t dist) {
    const __m256 a = loadRow(rows), b = loadRow(rows + step);
    const __m256 c = loadRow(rows + 2 * step), d = loadRow(rows + 3 * step);
    const __m256 ab0 = _mm256_unpacklo_ps(a, b), ab2 = _mm256_unpackhi_ps(a, b);
    const __m256 cd0 = _mm256_unpacklo_ps(c, d), cd2 = _mm256_unpackhi_ps(c, d);
    storeHalves(dst, dst + 4 * dist, lowPairs(ab0, cd0));
    storeHalves(dst + dist, dst + 5 * dist, highPairs(ab0, cd0));
    storeHalves(dst + 2 * dist, dst + 6 * dist, lowPairs(ab2, cd2));
    storeHalves(dst + 3 * dist, dst + 7 * dist, highPairs(ab2, cd2));
  }
};

// For transforms of two or three elements.
template <>
struct Tile<4, 2> {
  static __m128 pairs(const Byte* low, const Byte* high) {
    return _mm_castsi128_ps(_mm_unpacklo_epi64(_mm_loadu_si64(low), _mm_loadu_si64(high)));
  }
  static void toRows(const Byte* src, std::ptrdiff_t dist, Byte* rows, std::ptrdiff_t step) {
    for (int half = 0; half < 2; ++half, src += 4 * dist, rows += 16) {
      const __m128 ab = pairs(src, src + dist), cd = pairs(src + 2 * dist, src + 3 * dist);
      storeHalf(rows, _mm_shuffle_ps(ab, cd, 0x88));
      storeHalf(rows + step, _mm_shuffle_ps(ab, cd, 0xdd));
    }
  }
  static void fromRows(const Byte* rows, std::ptrdiff_t step, Byte* dst, std::ptrdiff_t dist) {
    for (int half = 0; half < 2; ++half, rows += 16, dst += 4 * dist) {
      const __m128 a = loadHalf(rows), b = loadHalf(rows + step);
      const __m128 ab = _mm_unpacklo_ps(a, b), cd = _mm_unpackhi_ps(a, b);
      _mm_storel_pi(reinterpret_cast<__m64*>(dst), ab);
      _mm_storeh_pi(reinterpret_cast<__m64*>(dst + dist), ab);
      _mm_storel_pi(reinterpret_cast<__m64*>(dst + 2 * dist), cd);
      _mm_storeh_pi(reinterpret_cast<__m64*>(dst + 3 * dist), cd);
    }
  }
};

template <>
struct Tile<8, 2> {
  static void toRows(const Byte* src, std::ptrdiff_t dist, Byte* rows, std::ptrdiff_t step) {
    const __m256 a = loadHalves(src, src + 2 * dist);
    const __m256 b = loadHalves(src + dist, src + 3 * dist);
    storeRow(rows, lowPairs(a, b));
    storeRow(rows + step, highPairs(a, b));
  }
  static void fromRows(const Byte* rows, std::ptrdiff_t step, Byte* dst, std::ptrdiff_t dist) {
    const __m256 a = loadRow(rows), b = loadRow(rows + step);
    storeHalves(dst, dst + 2 * dist, lowPairs(a, b));
    storeHalves(dst + dist, dst + 3 * dist, highPairs(a, b));
  }
};

template <>
struct Tile<16, 1> {
  static void toRows(const Byte* src, std::ptrdiff_t dist, Byte* rows, std::ptrdiff_t) {
    storeRow(rows, loadHalves(src, src + dist));
  }
  static void fromRows(const Byte* rows, std::ptrdiff_t, Byte* dst, std::ptrdiff_t dist) {
    storeHalves(dst, dst + dist, loadRow(rows));
  }
};

// ---- Groups -------------------------------------------------------------------------------------

// body(tile, first element) with the tiles that cover `elements`, two at least.
template <int kBytes, class Body>
void inTiles(int elements, const Body& body) {
  const auto cover = [&]<int kWidth>(Tile<kBytes, kWidth> tile) {
    int first = 0;
    for (; first + kWidth <= elements; first += kWidth) body(tile, first);
    if (first < elements) body(tile, elements - kWidth);
  };
  if constexpr (kBytes == 4) {
    elements < 4 ? cover(Tile<4, 2>()) : cover(Tile<4, 4>());
  } else {
    cover(Tile<kBytes, 16 / kBytes>());
  }
}

template <int kBytes>
void groupToRows(const Byte* src, std::ptrdiff_t dist, int elements, Byte* rows,
                 std::ptrdiff_t step) {
  inTiles<kBytes>(elements, [&](auto tile, int first) {
    tile.toRows(src + first * kBytes, dist, rows + first * step, step);
  });
}

template <int kBytes>
void groupFromRows(const Byte* rows, std::ptrdiff_t step, int elements, Byte* dst,
                   std::ptrdiff_t dist) {
  inTiles<kBytes>(elements, [&](auto tile, int first) {
    tile.fromRows(rows + first * step, step, dst + first * kBytes, dist);
  });
}

// ---- Rows of real and of imaginary parts, and rows of bins --------------------------------------

// Whole registers of each, and the bins of both.
template <class T>
void interleave(const Byte* re, const Byte* im, Byte* bins, std::ptrdiff_t rowBytes) {
  for (std::ptrdiff_t at = 0; at < rowBytes; at += 32) {
    const __m256 a = loadRow(re + at), b = loadRow(im + at);
    const bool isSingle = sizeof(T) == 4;
    const __m256 low = isSingle ? _mm256_unpacklo_ps(a, b) : lowPairs(a, b);
    const __m256 high = isSingle ? _mm256_unpackhi_ps(a, b) : highPairs(a, b);
    storeRow(bins + 2 * at, _mm256_permute2f128_ps(low, high, 0x20));
    storeRow(bins + 2 * at + 32, _mm256_permute2f128_ps(low, high, 0x31));
  }
}

template <class T>
void deinterleave(const Byte* bins, Byte* re, Byte* im, std::ptrdiff_t rowBytes) {
  for (std::ptrdiff_t at = 0; at < rowBytes; at += 32) {
    const Byte* const from = bins + 2 * at;
    const __m256 a = loadHalves(from, from + 32), b = loadHalves(from + 16, from + 48);
    const bool isSingle = sizeof(T) == 4;
    storeRow(re + at, isSingle ? _mm256_shuffle_ps(a, b, 0x88) : lowPairs(a, b));
    storeRow(im + at, isSingle ? _mm256_shuffle_ps(a, b, 0xdd) : highPairs(a, b));
  }
}

}  // namespace zvxg::many
