// A Walsh-Hadamard transform from the source through the buffer to the destination, in the passes
// of blocking.h. A pass is a function of its own, because several orders share it. runPasses() is
// the entry.
#pragma once

#include <algorithm>
#include <cstdint>

#include "wht/blocking.h"
#include "wht/stages.h"

namespace zvxg::wht {

// The boundary that the contract of a call requires of a buffer.
inline constexpr int kBoundaryBytes = 16;

// The width of vectors, on which no result depends: in columns all that a level has.
inline constexpr int kColumnBytes = kLevel == Level::base ? 16 : kLevel == Level::v3 ? 32 : 64;

// In rows the widest of which there are enough to be worth the shuffles, and at most 256 bits.
// Wider ones need one shuffle more each: a core that works on them in halves would lose by it (a
// row of 64 floats takes 45 cycles of a Zen 4 instead of 36).
template <class Real>
constexpr int rowBytes(int row) {
  constexpr int kFewestVectors = kLevel == Level::base ? 4 : 2;
  int bytes = std::min(kColumnBytes, 32);
  while (bytes >= 16 && row * static_cast<int>(sizeof(Real)) < kFewestVectors * bytes) bytes /= 2;
  return bytes >= 16 ? bytes : sizeof(Real);
}

// The factor of all passes but the last.
struct NoFactor {
  template <class V>
  friend V operator*(V v, NoFactor) {
    return v;
  }
};

// Transforms kRow contiguous numbers, from one boundary to another.
template <int kRow, int kFrom, int kTo, class Real, class Factor>
ZVXG_INLINE inline void transformRow(const Real* src, Real* dst, Factor factor) {
  using From = Access<Real, rowBytes<Real>(kRow), kFrom>;
  using To = Access<Real, rowBytes<Real>(kRow), kTo>;
  constexpr int kLanes = From::kLanes;
  transform<kLanes, kRow / kLanes>(
      [&](auto i) ZVXG_INLINE {
        if constexpr (kLanes == 1) {
          return From::load(src + i);
        } else {
          return loadCouples<From>(src + i * kLanes, Indices<kLanes>());
        }
      },
      [&](auto i, auto v) ZVXG_INLINE { To::store(dst + i * kLanes, v * factor); });
}

// Transforms kCount rows of kRow numbers.
template <int kRow, int kCount, int kFrom, int kTo, class Real>
[[gnu::noinline]] void rowPass(const Real* src, Real* dst) {
  for (int at = 0; at < kRow * kCount; at += kRow) {
    transformRow<kRow, kFrom, kTo>(src + at, dst + at, NoFactor());
  }
}

// Transforms the column of vectors at the start of kRows adjacent rows, each kColumns numbers long.
// The results are kStep numbers apart.
template <int kRows, int kColumns, int kStep, class From, class To, class Real, class Factor>
ZVXG_INLINE inline void transformColumn(const Real* src, Real* dst, Factor factor) {
  transform<1, kRows>([&](auto i) ZVXG_INLINE { return From::load(src + i * kColumns); },
                      [&](auto i, auto v) ZVXG_INLINE { To::store(dst + i * kStep, v * factor); });
}

// Transforms the columns of kRows rows, from first to last.
template <int kRows, int kColumns, int kFrom, int kTo, class Real, class Factor>
[[gnu::noinline]] void columnPass(const Real* src, Real* dst, Factor factor) {
  using From = Access<Real, kColumnBytes, kFrom>;
  using To = Access<Real, kColumnBytes, kTo>;
  for (int at = 0; at < kColumns; at += From::kLanes) {
    transformColumn<kRows, kColumns, kColumns, From, To>(src + at, dst + at, factor);
  }
}

// The first-level cache of x86-64 processors: a line, the distance at which lines compete for the
// same few places, and the whole.
inline constexpr int kLineBytes = 64, kCompetingBytes = 4096, kCacheBytes = 32768;

// The same for rows that compete with their own results for places in the cache, being at equal
// offsets into a page. The results for the columns of a cache line are put aside and then written
// row by row. Written at once, the results of one column would evict the lines that the next column
// reads. (If a vector fills a line, the next column reads other lines.)
template <int kRows, int kColumns, int kFrom, int kTo, class Real, class Factor>
[[gnu::noinline]] void columnPassByLines(const Real* src, Real* dst, Factor factor) {
  using From = Access<Real, kColumnBytes, kFrom>;
  using To = Access<Real, kColumnBytes, kTo>;
  constexpr int kLine = kLineBytes / sizeof(Real);
  alignas(kLineBytes) Real aside[kRows * kLine];
  for (int at = 0; at < kColumns; at += kLine) {
    for (int i = 0; i < kLine; i += From::kLanes) {
      transformColumn<kRows, kColumns, kLine, From, From>(src + at + i, aside + i, factor);
    }
    for (int row = 0; row < kRows; ++row) {
      for (int i = 0; i < kLine; i += From::kLanes) {
        To::store(dst + at + i + row * kColumns, From::load(aside + i + row * kLine));
      }
    }
  }
}

// Transforms the columns of all rows into the destination.
template <int kRows, int kColumns, int kFrom, int kTo, class Real>
ZVXG_INLINE inline void lastPass(const Real* src, Real* dst, Real factor) {
  constexpr int kRowBytes = kColumns * sizeof(Real);
  if constexpr (kColumnBytes < kLineBytes && kRows * kRowBytes >= kCacheBytes) {
    const auto distance =
        reinterpret_cast<std::uintptr_t>(src) - reinterpret_cast<std::uintptr_t>(dst);
    if (distance % std::min(kRowBytes, kCompetingBytes) == 0) {
      return columnPassByLines<kRows, kColumns, kFrom, kTo>(src, dst, factor);
    }
  }
  columnPass<kRows, kColumns, kFrom, kTo>(src, dst, factor);
}

// kOutside is the boundary of source and destination; that of the buffer is the contract's.
template <int kOrder, int kOutside, class Real>
ZVXG_INLINE inline void runPasses(const Real* src, Real* dst, Real factor, Real* buffer) {
  constexpr int kBuffer = kBoundaryBytes;
  constexpr Blocking kBlocking = kBlockingOf<Real, kOrder>;
  constexpr int kRow = kBlocking.row, kInner = kBlocking.inner, kOuter = kBlocking.outer;
  constexpr int kPart = kBlocking.part();
  if constexpr (kOuter == 1) {
    transformRow<kRow, kOutside, kOutside>(src, dst, factor);
  } else {
    if constexpr (kInner == 1) {
      rowPass<kRow, kOuter, kOutside, kBuffer>(src, buffer);
    } else {
      Real* const scratch = buffer + kBlocking.points();
      for (int at = 0; at < kBlocking.points(); at += kPart) {
        rowPass<kRow, kInner, kOutside, kBuffer>(src + at, scratch);
        columnPass<kInner, kRow, kBuffer, kBuffer>(scratch, buffer + at, NoFactor());
      }
    }
    lastPass<kOuter, kPart, kBuffer, kOutside>(buffer, dst, factor);
  }
}

}  // namespace zvxg::wht
