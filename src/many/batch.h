// The ways through a batch. A kernel runs on rows, in turns of some transforms each (rows.h). A side
// that is element-major is rows already, and the kernel works on it where it is. The transforms of
// any other side pass through rows of a block in the first-level cache, a panel of turns at a time:
// transposed if they are contiguous, else gathered and scattered. So each side has its own way, and
// what is contiguous here and element-major there takes no pass of its own.
//
// What does not fill a turn goes through a block of zeros.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>

#include "many/transpose.h"

namespace zvxg::many {

// How much of a batch stands in a block: half of a first-level cache. A turn always fits.
inline constexpr std::ptrdiff_t kBlockBytes = 16384;

template <class T>
constexpr std::ptrdiff_t kSize = sizeof(T);

inline const Byte* bytes(const void* p) { return static_cast<const Byte*>(p); }
inline Byte* bytes(void* p) { return static_cast<Byte*>(p); }

// One array of a batch, as reals. In a block, the elements of its transforms are rows of `unit` reals
// for each transform. Of `bins`, real and imaginary parts are elements of their own.
template <class T>
struct Side {
  T* at;
  std::ptrdiff_t stride, dist;
  int elements, unit;
  bool bins;

  std::ptrdiff_t offset(int element) const {
    return bins ? element / 2 * stride + element % 2 : element * stride;
  }
  int pair() const { return bins ? 2 : unit; }
  bool isContiguous() const { return stride == pair(); }
  bool isElementMajor() const { return dist == pair(); }
  bool isRows() const { return isElementMajor() && !bins; }
  T* transform(std::ptrdiff_t number) const { return at + number * dist; }
};

// Covers `count` transforms: group(k) with the groups of contiguous ones that begin at transform k,
// bins(i, n) with bin i of n transforms, whole registers of it, if bins are element-major, and
// row(i, k, n) with what is left, element i of n transforms from k on.
template <int kUnit, class T, class Group, class Bins, class Row>
void cover(const Side<T>& side, std::ptrdiff_t count, const Group& group, const Bins& bins,
           const Row& row) {
  std::ptrdiff_t done = 0;
  if (side.isContiguous()) {
    constexpr int kTransforms = kGroup<kUnit * kSize<T>>;
    for (; done + kTransforms <= count; done += kTransforms) group(done);
  } else if (side.bins && side.isElementMajor()) {
    done = count - count % kGroup<kSize<T>>;
    for (int i = 0; i < side.elements; i += 2) bins(i, done);
  }
  if (done == count) return;
  for (int i = 0; i < side.elements; ++i) row(i, done, count - done);
}

// `count` numbers of kUnit reals, which are `dist` apart on either side.
template <int kUnit, class T>
void copyRow(const T* src, std::ptrdiff_t srcDist, T* dst, std::ptrdiff_t dstDist,
             std::ptrdiff_t count) {
  if (srcDist == kUnit && dstDist == kUnit) {
    std::memcpy(bytes(dst), bytes(src), count * kUnit * kSize<T>);
    return;
  }
  for (std::ptrdiff_t k = 0; k < count; ++k) {
    std::memcpy(bytes(dst + k * dstDist), bytes(src + k * srcDist), kUnit * kSize<T>);
  }
}

// The transforms of a side from `first` on to rows `step` apart. Lanes behind them are left.
template <int kUnit, class T>
void load(const Side<const T>& src, std::ptrdiff_t first, std::ptrdiff_t count, T* rows,
          std::ptrdiff_t step) {
  const T* const at = src.transform(first);
  cover<kUnit>(
      src, count,
      [&](std::ptrdiff_t k) {
        groupToRows<kUnit * kSize<T>>(bytes(at + k * src.dist), src.dist * kSize<T>, src.elements,
                                      bytes(rows + k * kUnit), step * kSize<T>);
      },
      [&](int i, std::ptrdiff_t n) {
        deinterleave<T>(bytes(at + src.offset(i)), bytes(rows + i * step),
                        bytes(rows + (i + 1) * step), n * kSize<T>);
      },
      [&](int i, std::ptrdiff_t k, std::ptrdiff_t n) {
        copyRow<kUnit>(at + src.offset(i) + k * src.dist, src.dist, rows + i * step + k * kUnit,
                       kUnit, n);
      });
}

template <int kUnit, class T>
void store(const T* rows, std::ptrdiff_t step, const Side<T>& dst, std::ptrdiff_t first,
           std::ptrdiff_t count) {
  T* const at = dst.transform(first);
  cover<kUnit>(
      dst, count,
      [&](std::ptrdiff_t k) {
        groupFromRows<kUnit * kSize<T>>(bytes(rows + k * kUnit), step * kSize<T>, dst.elements,
                                        bytes(at + k * dst.dist), dst.dist * kSize<T>);
      },
      [&](int i, std::ptrdiff_t n) {
        interleave<T>(bytes(rows + i * step), bytes(rows + (i + 1) * step),
                      bytes(at + dst.offset(i)), n * kSize<T>);
      },
      [&](int i, std::ptrdiff_t k, std::ptrdiff_t n) {
        copyRow<kUnit>(rows + i * step + k * kUnit, kUnit, at + dst.offset(i) + k * dst.dist,
                       dst.dist, n);
      });
}

// Rows are as many streams as a transform has elements, which is more than a processor follows by
// itself: once a batch leaves the caches, its rows are fetched ahead of their use. Within the caches
// that would only cost time.
inline constexpr std::ptrdiff_t kFetchedBytes = 1 << 20;  // half of a usual second-level cache
inline constexpr std::ptrdiff_t kFetchedPanelBytes = 8192;

// Fetches the rows of transforms from `first` on.
template <class T>
void fetch(const Side<T>& side, std::ptrdiff_t first, std::ptrdiff_t count) {
  if (!side.isElementMajor()) return;
  const std::ptrdiff_t rowBytes = count * side.pair() * kSize<T>;
  for (int i = 0; i < side.elements; i += side.bins ? 2 : 1) {
    const Byte* const row = bytes(side.transform(first) + side.offset(i));
    for (std::ptrdiff_t at = 0; at < rowBytes; at += 64) __builtin_prefetch(row + at);
  }
}

// run(src, srcStep, dst, dstStep, turns) does turns of `transforms` each, from rows to rows, which
// may be the same. Rows of a side that has none of its own are in a block.
template <int kUnit, class T, class Run>
void runBatch(const Side<const T>& src, const Side<T>& dst, int transforms, std::ptrdiff_t howmany,
              const Run& run) {
  alignas(64) T block[kBlockBytes / kSize<T>];
  const std::ptrdiff_t turn = std::ptrdiff_t{transforms} * kUnit;  // reals of a row
  const std::ptrdiff_t turnBytes = std::max(src.elements, dst.elements) * turn * kSize<T>;
  const bool fromRows = src.isRows(), toRows = dst.isRows();
  const std::ptrdiff_t rest = howmany % transforms, full = howmany - rest;
  const bool fetches = howmany * (src.elements + dst.elements) * kUnit * kSize<T> > kFetchedBytes;
  const std::ptrdiff_t panelBytes = fetches ? kFetchedPanelBytes : kBlockBytes;
  const std::ptrdiff_t panel =
      fromRows && toRows && !fetches
          ? full
          : std::min(full, std::max<std::ptrdiff_t>(panelBytes / turnBytes, 1) * transforms);
  for (std::ptrdiff_t first = 0; first < full; first += panel) {
    const std::ptrdiff_t count = std::min(panel, full - first), step = count * kUnit;
    if (fetches) {
      const std::ptrdiff_t next = first + count, ahead = std::min(panel, full - next);
      fetch(src, next, ahead);
      fetch(dst, next, ahead);
    }
    if (!fromRows) load<kUnit>(src, first, count, block, step);
    run(fromRows ? src.transform(first) : block, fromRows ? src.stride : step,
        toRows ? dst.transform(first) : block, toRows ? dst.stride : step, count / transforms);
    if (!toRows) store<kUnit>(block, step, dst, first, count);
  }
  if (rest == 0) return;
  std::memset(block, 0, turnBytes);
  load<kUnit>(src, full, rest, block, turn);
  run(block, turn, block, turn, 1);
  store<kUnit>(block, turn, dst, full, rest);
}

}  // namespace zvxg::many
