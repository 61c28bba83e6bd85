// A Walsh-Hadamard transform from the source through the buffer to the destination, in the passes
// of blocking.h. Passes are functions of their own, as several orders share them. runPasses() is
// the entry.
#pragma once

#include <algorithm>
#include <cstdint>

#include "wht/blocking.h"
#include "wht/stages.h"

namespace zvxg::wht {

// The width of all vectors, on which no result depends, and the boundary that the contract of a
// call speaks of.
inline constexpr int kVectorBytes = 16, kBoundaryBytes = 16;

template <class Real>
using Aligned = Access<Real, kVectorBytes, kBoundaryBytes>;
template <class Real>
using Unaligned = Access<Real, kVectorBytes, 1>;

// The factor of all passes but the last.
struct NoFactor {
  template <class V>
  friend V operator*(V v, NoFactor) {
    return v;
  }
};

// Transforms kRow contiguous numbers.
template <int kRow, class From, class To, class Real, class Factor>
ZVXG_INLINE inline void transformRow(const Real* src, Real* dst, Factor factor) {
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
template <int kRow, int kCount, class From, class To, class Real>
[[gnu::noinline]] void rowPass(const Real* src, Real* dst) {
  for (int at = 0; at < kRow * kCount; at += kRow) {
    transformRow<kRow, From, To>(src + at, dst + at, NoFactor());
  }
}

// Transforms the column of vectors at the heads of kRows rows, each kColumns numbers long and next
// to the one before. The results are kStep numbers apart.
template <int kRows, int kColumns, int kStep, class From, class To, class Real, class Factor>
ZVXG_INLINE inline void transformColumn(const Real* src, Real* dst, Factor factor) {
  transform<1, kRows>([&](auto i) ZVXG_INLINE { return From::load(src + i * kColumns); },
                      [&](auto i, auto v) ZVXG_INLINE { To::store(dst + i * kStep, v * factor); });
}

// Transforms the columns of kRows rows, from first to last.
template <int kRows, int kColumns, class From, class To, class Real, class Factor>
[[gnu::noinline]] void columnPass(const Real* src, Real* dst, Factor factor) {
  for (int at = 0; at < kColumns; at += From::kLanes) {
    transformColumn<kRows, kColumns, kColumns, From, To>(src + at, dst + at, factor);
  }
}

// The first-level cache of x86-64 processors: a line, the distance at which lines compete for the
// same few places, and the whole.
inline constexpr int kLineBytes = 64, kCompetingBytes = 4096, kCacheBytes = 32768;

// The same for rows that compete with their own results, at equal offsets into a page: the results
// of a line's columns are put aside and then go out row by row. Written at once, those of one
// column would drive out the lines that the next one reads.
template <int kRows, int kColumns, class From, class To, class Real, class Factor>
[[gnu::noinline]] void columnPassByLines(const Real* src, Real* dst, Factor factor) {
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

template <int kRows, int kColumns, class Real>
inline bool rowsCompete(const Real* src, const Real* dst) {
  constexpr int kRowBytes = kColumns * sizeof(Real);
  const auto distance =
      reinterpret_cast<std::uintptr_t>(src) - reinterpret_cast<std::uintptr_t>(dst);
  return kRows * kRowBytes >= kCacheBytes && distance % std::min(kRowBytes, kCompetingBytes) == 0;
}

// `Outside` is the access to source and destination; the buffer is on a boundary of vectors.
template <int kOrder, class Outside, class Real>
ZVXG_INLINE inline void runPasses(const Real* src, Real* dst, Real factor, Real* buffer) {
  using Buffer = Aligned<Real>;
  constexpr Blocking kBlocking = kBlockingOf<Real, kOrder>;
  constexpr int kRow = kBlocking.row, kInner = kBlocking.inner, kOuter = kBlocking.outer;
  constexpr int kPart = kBlocking.part();
  if constexpr (kOuter == 1) {
    transformRow<kRow, Outside, Outside>(src, dst, factor);
  } else {
    if constexpr (kInner == 1) {
      rowPass<kRow, kOuter, Outside, Buffer>(src, buffer);
    } else {
      Real* const scratch = buffer + kBlocking.points();
      for (int at = 0; at < kBlocking.points(); at += kPart) {
        rowPass<kRow, kInner, Outside, Buffer>(src + at, scratch);
        columnPass<kInner, kRow, Buffer, Buffer>(scratch, buffer + at, NoFactor());
      }
    }
    if (rowsCompete<kOuter, kPart>(buffer, dst)) {
      columnPassByLines<kOuter, kPart, Buffer, Outside>(buffer, dst, factor);
    } else {
      columnPass<kOuter, kPart, Buffer, Outside>(buffer, dst, factor);
    }
  }
}

}  // namespace zvxg::wht
