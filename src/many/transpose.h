// Between transforms that are contiguous and rows that hold an element of each, by tiles that go
// through registers. A group is as many transforms as have an element in 256 bits: 8, 4 or 2, for
// elements of 4, 8 or 16 bytes, whatever these are. Wider rows are made of several groups: with 512
// bits there are two thirds of the shuffles, but each of them takes as long as two.
//
// The last tile of floats ends where the transform ends, and so may do some twice; nothing beside the
// elements is read or written. Distances, steps and offsets are in bytes.
#pragma once

#include <immintrin.h>

#include <cstddef>
#include <type_traits>

#include "frame/unroll.h"

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
  storeHalf(high, _mm256_extractf128_ps(v, 1));
  storeHalf(low, _mm256_castps256_ps128(v));
}

inline __m256 lowPairs(__m256 a, __m256 b) {
  return _mm256_castpd_ps(_mm256_unpacklo_pd(_mm256_castps_pd(a), _mm256_castps_pd(b)));
}
inline __m256 highPairs(__m256 a, __m256 b) {
  return _mm256_castpd_ps(_mm256_unpackhi_pd(_mm256_castps_pd(a), _mm256_castps_pd(b)));
}

inline __m256 lowHalves(__m256 a, __m256 b) {
  return _mm256_insertf128_ps(a, _mm256_castps256_ps128(b), 1);
}
inline __m256 highHalves(__m256 a, __m256 b) { return _mm256_permute2f128_ps(a, b, 0x31); }

// ---- Groups -------------------------------------------------------------------------------------

// Where the transforms of a group are. If there are fewer than it has place for, the others are where
// the first one is, and are stored before it: so it keeps what is its own.
template <int kBytes, class B>
struct Group {
  B* at[kGroup<kBytes>];

  ZVXG_INLINE Group(B* first, std::ptrdiff_t dist, std::ptrdiff_t count) {
    unroll<kGroup<kBytes>>([&](auto i) ZVXG_INLINE { at[i] = first + (i < count ? i * dist : 0); });
  }
};
template <int kBytes>
using Sources = Group<kBytes, const Byte>;
template <int kBytes>
using Destinations = Group<kBytes, Byte>;

// 64 bits of each of two transforms, from number `first` on.
template <int kBytes>
ZVXG_INLINE inline __m128 loadPairs(const Sources<kBytes>& src, int first, std::ptrdiff_t offset) {
  return _mm_castsi128_ps(_mm_unpacklo_epi64(_mm_loadu_si64(src.at[first] + offset),
                                             _mm_loadu_si64(src.at[first + 1] + offset)));
}
template <int kBytes>
ZVXG_INLINE inline void storePairs(const Destinations<kBytes>& dst, int first,
                                   std::ptrdiff_t offset, __m128 v) {
  _mm_storeh_pi(reinterpret_cast<__m64*>(dst.at[first + 1] + offset), v);
  _mm_storel_pi(reinterpret_cast<__m64*>(dst.at[first] + offset), v);
}

// ---- Rows ---------------------------------------------------------------------------------------

// Some bytes apart. Step is a number, or a constant: in a block, as the places of the transforms take
// all registers.
template <class B, class Step>
struct RowsInMemory {
  B* first;
  Step step;

  ZVXG_INLINE RowsInMemory from(std::ptrdiff_t row) const { return {first + row * step, step}; }
  ZVXG_INLINE void set(int row, __m256 v) const { storeRow(first + row * step, v); }
  ZVXG_INLINE __m256 get(int row) const { return loadRow(first + row * step); }
  // The low or the high halves of two rows.
  template <int kHalf>
  ZVXG_INLINE __m256 halves(int low, int high) const {
    const Byte* const at = first + 16 * kHalf;
    return loadHalves(at + low * step, at + high * step);
  }
};
template <int kStep>
using RowsInBlock = RowsInMemory<Byte, std::integral_constant<std::ptrdiff_t, kStep>>;

struct RowsInRegisters {
  __m256* first;

  ZVXG_INLINE RowsInRegisters from(std::ptrdiff_t row) const { return {first + row}; }
  ZVXG_INLINE void set(int row, __m256 v) const { first[row] = v; }
  ZVXG_INLINE __m256 get(int row) const { return first[row]; }
  template <int kHalf>
  ZVXG_INLINE __m256 halves(int low, int high) const {
    return kHalf == 0 ? lowHalves(first[low], first[high]) : highHalves(first[low], first[high]);
  }
};

// ---- Tiles: load() from transforms to rows, store() back ----------------------------------------

template <int kBytes, int kWidth>
struct Tile;

struct Four {
  __m256 of[4];
};

template <>
struct Tile<4, 4> {
  // Of both halves.
  ZVXG_INLINE static Four transposed(__m256 a, __m256 b, __m256 c, __m256 d) {
    const __m256 ab0 = _mm256_unpacklo_ps(a, b), ab2 = _mm256_unpackhi_ps(a, b);
    const __m256 cd0 = _mm256_unpacklo_ps(c, d), cd2 = _mm256_unpackhi_ps(c, d);
    return {lowPairs(ab0, cd0), highPairs(ab0, cd0), lowPairs(ab2, cd2), highPairs(ab2, cd2)};
  }

  template <class Rows>
  ZVXG_INLINE static void load(const Sources<4>& src, std::ptrdiff_t offset, const Rows& rows) {
    const auto halves = [&](int i) ZVXG_INLINE {
      return loadHalves(src.at[i] + offset, src.at[i + 4] + offset);
    };
    const auto v = transposed(halves(0), halves(1), halves(2), halves(3));
    unroll<4>([&](auto i) ZVXG_INLINE { rows.set(i, v.of[i]); });
  }
  template <class Rows>
  ZVXG_INLINE static void store(const Rows& rows, const Destinations<4>& dst,
                                std::ptrdiff_t offset) {
    const auto v = transposed(rows.get(0), rows.get(1), rows.get(2), rows.get(3));
    unroll<4>([&](auto i) ZVXG_INLINE {
      storeHalves(dst.at[3 - i] + offset, dst.at[7 - i] + offset, v.of[3 - i]);
    });
  }
};

// For transforms of two or three elements, and the last ones of others.
template <>
struct Tile<4, 2> {
  template <class Rows>
  ZVXG_INLINE static void load(const Sources<4>& src, std::ptrdiff_t offset, const Rows& rows) {
    const auto halves = [&](int i) ZVXG_INLINE {
      return _mm256_insertf128_ps(_mm256_castps128_ps256(loadPairs(src, i, offset)),
                                  loadPairs(src, i + 4, offset), 1);
    };
    const __m256 ab = halves(0), cd = halves(2);
    rows.set(0, _mm256_shuffle_ps(ab, cd, 0x88));
    rows.set(1, _mm256_shuffle_ps(ab, cd, 0xdd));
  }
  template <class Rows>
  ZVXG_INLINE static void store(const Rows& rows, const Destinations<4>& dst,
                                std::ptrdiff_t offset) {
    const __m256 a = rows.get(0), b = rows.get(1);
    const __m256 ab = _mm256_unpacklo_ps(a, b), cd = _mm256_unpackhi_ps(a, b);
    storePairs(dst, 6, offset, _mm256_extractf128_ps(cd, 1));
    storePairs(dst, 4, offset, _mm256_extractf128_ps(ab, 1));
    storePairs(dst, 2, offset, _mm256_castps256_ps128(cd));
    storePairs(dst, 0, offset, _mm256_castps256_ps128(ab));
  }
};

template <>
struct Tile<8, 2> {
  template <class Rows>
  ZVXG_INLINE static void load(const Sources<8>& src, std::ptrdiff_t offset, const Rows& rows) {
    const __m256 a = loadHalves(src.at[0] + offset, src.at[2] + offset);
    const __m256 b = loadHalves(src.at[1] + offset, src.at[3] + offset);
    rows.set(0, lowPairs(a, b));
    rows.set(1, highPairs(a, b));
  }
  template <class Rows>
  ZVXG_INLINE static void store(const Rows& rows, const Destinations<8>& dst,
                                std::ptrdiff_t offset) {
    const __m256 a = rows.get(0), b = rows.get(1);
    storeHalves(dst.at[1] + offset, dst.at[3] + offset, highPairs(a, b));
    storeHalves(dst.at[0] + offset, dst.at[2] + offset, lowPairs(a, b));
  }
};

// For the last element of an odd number.
template <>
struct Tile<8, 1> {
  template <class Rows>
  ZVXG_INLINE static void load(const Sources<8>& src, std::ptrdiff_t offset, const Rows& rows) {
    rows.set(0, _mm256_insertf128_ps(_mm256_castps128_ps256(loadPairs(src, 0, offset)),
                                     loadPairs(src, 2, offset), 1));
  }
  template <class Rows>
  ZVXG_INLINE static void store(const Rows& rows, const Destinations<8>& dst,
                                std::ptrdiff_t offset) {
    storePairs(dst, 2, offset, _mm256_extractf128_ps(rows.get(0), 1));
    storePairs(dst, 0, offset, _mm256_castps256_ps128(rows.get(0)));
  }
};

template <>
struct Tile<16, 1> {
  template <class Rows>
  ZVXG_INLINE static void load(const Sources<16>& src, std::ptrdiff_t offset, const Rows& rows) {
    rows.set(0, loadHalves(src.at[0] + offset, src.at[1] + offset));
  }
  template <class Rows>
  ZVXG_INLINE static void store(const Rows& rows, const Destinations<16>& dst,
                                std::ptrdiff_t offset) {
    storeHalves(dst.at[0] + offset, dst.at[1] + offset, rows.get(0));
  }
};

// Wide tiles load as two narrow ones. Where halves of rows are joined first, what is stored is whole
// registers.
template <int kBytes, int kWidth>
struct WideTile {
  template <class Rows>
  ZVXG_INLINE static void load(const Sources<kBytes>& src, std::ptrdiff_t offset,
                               const Rows& rows) {
    using Narrow = Tile<kBytes, kWidth / 2>;
    Narrow::load(src, offset, rows);
    Narrow::load(src, offset + 16, rows.from(kWidth / 2));
  }
};

template <>
struct Tile<4, 8> : WideTile<4, 8> {
  template <class Rows>
  ZVXG_INLINE static void store(const Rows& rows, const Destinations<4>& dst,
                                std::ptrdiff_t offset) {
    unroll<2>([&](auto i) ZVXG_INLINE {
      constexpr int kHalf = 1 - i;
      const auto halves = [&](int row)
                              ZVXG_INLINE { return rows.template halves<kHalf>(row, row + 4); };
      const auto v = Tile<4, 4>::transposed(halves(0), halves(1), halves(2), halves(3));
      unroll<4>([&](auto j)
                    ZVXG_INLINE { storeRow(dst.at[4 * kHalf + 3 - j] + offset, v.of[3 - j]); });
    });
  }
};

template <>
struct Tile<8, 4> : WideTile<8, 4> {
  template <class Rows>
  ZVXG_INLINE static void store(const Rows& rows, const Destinations<8>& dst,
                                std::ptrdiff_t offset) {
    unroll<2>([&](auto i) ZVXG_INLINE {
      constexpr int kHalf = 1 - i;
      const __m256 a = rows.template halves<kHalf>(0, 2), b = rows.template halves<kHalf>(1, 3);
      storeRow(dst.at[2 * kHalf + 1] + offset, highPairs(a, b));
      storeRow(dst.at[2 * kHalf] + offset, lowPairs(a, b));
    });
  }
};

template <>
struct Tile<16, 2> : WideTile<16, 2> {
  template <class Rows>
  ZVXG_INLINE static void store(const Rows& rows, const Destinations<16>& dst,
                                std::ptrdiff_t offset) {
    storeRow(dst.at[1] + offset, rows.template halves<1>(0, 1));
    storeRow(dst.at[0] + offset, rows.template halves<0>(0, 1));
  }
};

// ---- Contiguous transforms ----------------------------------------------------------------------

template <int kBytes>
inline constexpr int kNarrowest = kBytes == 4 ? 2 : 1;

// body(tile, first) with the tiles that cover the elements from `first` to `last`: as wide as kWidth,
// and narrower ones for what is left of these.
template <int kBytes, int kWidth = 32 / kBytes, class Body>
ZVXG_INLINE inline void inTiles(std::ptrdiff_t first, std::ptrdiff_t last, const Body& body) {
  for (; first + kWidth <= last; first += kWidth) body(Tile<kBytes, kWidth>(), first);
  if constexpr (kWidth > kNarrowest<kBytes>) {
    inTiles<kBytes, kWidth / 2>(first, last, body);
  } else if (first < last) {
    body(Tile<kBytes, kWidth>(), last - kWidth);
  }
}

// `count` transforms, `dist` apart, to rows of which as many lanes are filled: with the first one again
// behind the last.
template <int kBytes, class Rows>
void contiguousToRows(const Byte* src, std::ptrdiff_t dist, std::ptrdiff_t count, int elements,
                      std::ptrdiff_t lanes, Rows rows) {
  for (std::ptrdiff_t k = 0; k < lanes; k += kGroup<kBytes>, rows.first += 32) {
    const Sources<kBytes> group(k < count ? src + k * dist : src, dist, count - k);
    inTiles<kBytes>(0, elements, [&](auto tile, std::ptrdiff_t first) ZVXG_INLINE {
      tile.load(group, first * kBytes, rows.from(first));
    });
  }
}

template <int kBytes, class Rows>
void contiguousFromRows(Rows rows, int elements, Byte* dst, std::ptrdiff_t dist,
                        std::ptrdiff_t count) {
  for (std::ptrdiff_t k = 0; k < count; k += kGroup<kBytes>, rows.first += 32) {
    const Destinations<kBytes> group(dst + k * dist, dist, count - k);
    inTiles<kBytes>(0, elements, [&](auto tile, std::ptrdiff_t first) ZVXG_INLINE {
      tile.store(rows.from(first), group, first * kBytes);
    });
  }
}

// ---- Rows of real and of imaginary parts, and rows of bins --------------------------------------

inline void clearRow(Byte* row, std::ptrdiff_t rowBytes) {
  for (std::ptrdiff_t at = 0; at < rowBytes; at += 32) storeRow(row + at, _mm256_setzero_ps());
}

// Whole registers of each, and the bins of both.
template <class T>
void interleave(const Byte* re, const Byte* im, Byte* bins, std::ptrdiff_t rowBytes) {
  for (std::ptrdiff_t at = 0; at < rowBytes; at += 32) {
    const __m256 a = loadRow(re + at), b = loadRow(im + at);
    const bool isSingle = sizeof(T) == 4;
    const __m256 low = isSingle ? _mm256_unpacklo_ps(a, b) : lowPairs(a, b);
    const __m256 high = isSingle ? _mm256_unpackhi_ps(a, b) : highPairs(a, b);
    storeRow(bins + 2 * at, lowHalves(low, high));
    storeRow(bins + 2 * at + 32, highHalves(low, high));
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
