// A Walsh-Hadamard transform from the source through the buffer to the destination, in the passes
// of blocking.h. Passes are functions of their own, as several orders share them. runPasses() is
// the entry.
#pragma once

#include "wht/blocking.h"
#include "wht/stages.h"

namespace zvxg::wht {

// The width of all vectors; nothing else would have to change for another one.
inline constexpr int kVectorBytes = 16;

template <class Real>
using Aligned = Access<Real, kVectorBytes, kVectorBytes>;
template <class Real>
using Unaligned = Access<Real, kVectorBytes, alignof(Real)>;

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

// Transforms the columns of kRows rows, each of kColumns numbers and next to the one before.
template <int kRows, int kColumns, class From, class To, class Real, class Factor>
[[gnu::noinline]] void columnPass(const Real* src, Real* dst, Factor factor) {
  for (int at = 0; at < kColumns; at += From::kLanes) {
    transform<1, kRows>([&](auto i) ZVXG_INLINE { return From::load(src + at + i * kColumns); },
                        [&](auto i, auto v)
                            ZVXG_INLINE { To::store(dst + at + i * kColumns, v * factor); });
  }
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
    columnPass<kOuter, kPart, Buffer, Outside>(buffer, dst, factor);
  }
}

}  // namespace zvxg::wht
