// The ways through a batch. A kernel runs on rows, in turns of some transforms each (rows.h). A side
// that is element-major is rows already, and the kernel works on it where it is. The transforms of
// any other side pass through rows of a block in the first-level cache, a panel of turns at a time:
// transposed if they are contiguous, else gathered and scattered. So each side has its own way, and
// what is contiguous here and element-major there takes no pass of its own.
//
// So do rows that the caches serve badly, and what does not fill a turn.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "many/rows.h"
#include "many/transpose.h"

namespace zvxg::many {

template <class T>
constexpr std::ptrdiff_t kSize = sizeof(T);

// Rows of a block, of a constant size each.
template <class T, int kBytes>
struct Block {
  static constexpr int kRowBytes = kBytes, kStep = kBytes / sizeof(T);

  T* first;

  T* row(int element) const { return first + element * kStep; }
};

inline const Byte* bytes(const void* p) { return static_cast<const Byte*>(p); }
inline Byte* bytes(void* p) { return static_cast<Byte*>(p); }

constexpr std::ptrdiff_t kLine = 64, kPage = 4096;
constexpr int kWays = 8;

// One array of a batch, as reals. In a block, the elements of its transforms are rows of `unit` reals
// for each transform. Of `bins`, real and imaginary parts are elements of their own, unless the kernel
// takes bins as they are.
template <class T>
struct Side {
  T* at;
  std::ptrdiff_t stride, dist;
  int elements, unit;
  bool bins;
  bool kernelTakesBins = false;

  std::ptrdiff_t offset(int element) const {
    return bins ? element / 2 * stride + element % 2 : element * stride;
  }
  int pair() const { return bins ? 2 : unit; }
  int rows() const { return bins ? elements / 2 : elements; }  // if element-major
  bool isContiguous() const { return stride == pair(); }
  bool isElementMajor() const { return dist == pair(); }
  // That a kernel can run on where they are. Not if they are all the same one: real and imaginary parts
  // that are 0 apart are bins to it.
  bool isRows() const { return isElementMajor() && stride != 0 && (!bins || kernelTakesBins); }
  // One transform right behind the other.
  bool isDense() const { return isContiguous() && dist == elements * unit; }
  // Rows whole pages apart share a few places of a first-level cache, and drive each other out before
  // the next turn.
  bool areCrowded() const {
    return elements > kWays && isElementMajor() && stride * kSize<T> % kPage == 0;
  }
  T* transform(std::ptrdiff_t number) const { return at + number * dist; }
  // `count` of the elements, every `step`-th from `first` on.
  Side part(std::ptrdiff_t first, int count, std::ptrdiff_t step = 1) const {
    return {at + first * stride, step * stride, dist, count, unit, bins};
  }
};

// `count` numbers of kUnit reals, `srcDist` and `dstDist` apart.
template <int kUnit, class T>
void copyNumbers(const T* src, std::ptrdiff_t srcDist, T* dst, std::ptrdiff_t dstDist,
                 std::ptrdiff_t count) {
  for (std::ptrdiff_t k = 0; k < count; ++k) {
    std::memcpy(bytes(dst + k * dstDist), bytes(src + k * srcDist), kUnit * kSize<T>);
  }
}

// `count` rows of some bytes each, from 4 on. Short ones by both ends of a row, which meet or overlap.
template <int kEnd = 64>
void copyRows(const Byte* src, std::ptrdiff_t srcStep, Byte* dst, std::ptrdiff_t dstStep, int count,
              std::ptrdiff_t rowBytes) {
  if (rowBytes > 2 * kEnd) {
    for (int i = 0; i < count; ++i) std::memcpy(dst + i * dstStep, src + i * srcStep, rowBytes);
    return;
  }
  if constexpr (kEnd > 4) {
    if (rowBytes <= kEnd) {
      return copyRows<kEnd / 2>(src, srcStep, dst, dstStep, count, rowBytes);
    }
  }
  for (int i = 0; i < count; ++i, src += srcStep, dst += dstStep) {
    Byte first[kEnd], last[kEnd];
    std::memcpy(first, src, kEnd);
    std::memcpy(last, src + rowBytes - kEnd, kEnd);
    std::memcpy(dst, first, kEnd);
    std::memcpy(dst + rowBytes - kEnd, last, kEnd);
  }
}

// Element-major bins go by whole registers. Those that do not fill one stand in some that are filled.
template <class T>
struct PaddedBins {
  static constexpr int kTransforms = kGroup<kSize<T>>;

  alignas(32) T bins[kMaxLength / 2 + 1][2 * kTransforms];
};

template <class T, int kRowBytes>
void loadBins(const Side<const T>& src, std::ptrdiff_t first, std::ptrdiff_t count,
              const Block<T, kRowBytes>& block) {
  using Padded = PaddedBins<T>;
  const std::ptrdiff_t rest = count % Padded::kTransforms, whole = count - rest;
  const T* const at = src.transform(first);
  const auto deinterleaved = [&](int bin, const T* from, std::ptrdiff_t lane, std::ptrdiff_t n) {
    T* const re = block.row(2 * bin) + lane;
    deinterleave<T>(bytes(from), bytes(re), bytes(re + block.kStep), n * kSize<T>);
  };
  const int bins = src.elements / 2;
  for (int i = 0; i < bins; ++i) deinterleaved(i, at + i * src.stride, 0, whole);
  if (rest == 0) return;
  Padded padded = {};
  copyRows(bytes(at + whole * src.dist), src.stride * kSize<T>, bytes(padded.bins[0]),
           sizeof(padded.bins[0]), bins, 2 * rest * kSize<T>);
  for (int i = 0; i < bins; ++i) deinterleaved(i, padded.bins[i], whole, Padded::kTransforms);
}

template <class T, int kRowBytes>
void storeBins(const Block<T, kRowBytes>& block, const Side<T>& dst, std::ptrdiff_t first,
               std::ptrdiff_t count) {
  using Padded = PaddedBins<T>;
  const std::ptrdiff_t rest = count % Padded::kTransforms, whole = count - rest;
  T* const at = dst.transform(first);
  const auto interleaved = [&](int bin, T* to, std::ptrdiff_t lane, std::ptrdiff_t n) {
    const T* const re = block.row(2 * bin) + lane;
    interleave<T>(bytes(re), bytes(re + block.kStep), bytes(to), n * kSize<T>);
  };
  const int bins = dst.elements / 2;
  for (int i = 0; i < bins; ++i) interleaved(i, at + i * dst.stride, 0, whole);
  if (rest == 0) return;
  Padded padded;
  for (int i = 0; i < bins; ++i) interleaved(i, padded.bins[i], whole, Padded::kTransforms);
  copyRows(bytes(padded.bins[0]), sizeof(padded.bins[0]), bytes(at + whole * dst.dist),
           dst.stride * kSize<T>, bins, 2 * rest * kSize<T>);
}

// The transforms of a side from `first` on to rows of a block, of which `lanes` are filled: behind the
// transforms with zeros, or with the first one again.
template <int kUnit, class T, int kRowBytes>
void load(const Side<const T>& src, std::ptrdiff_t first, std::ptrdiff_t count,
          std::ptrdiff_t lanes, const Block<T, kRowBytes>& block) {
  const T* const at = src.transform(first);
  if (src.isContiguous()) {
    contiguousToRows<kUnit * kSize<T>>(bytes(at), src.dist * kSize<T>, count, src.elements, lanes,
                                       RowsInBlock<kRowBytes>{bytes(block.first), {}});
    return;
  }
  for (int i = 0; count < lanes && i < src.elements; ++i) {
    clearRow(bytes(block.row(i)), lanes * kUnit * kSize<T>);
  }
  if (src.isElementMajor() && src.bins) {
    loadBins(src, first, count, block);
  } else if (src.isElementMajor()) {
    copyRows(bytes(at), src.stride * kSize<T>, bytes(block.first), kRowBytes, src.elements,
             count * kUnit * kSize<T>);
  } else {
    for (int i = 0; i < src.elements; ++i) {
      copyNumbers<kUnit>(at + src.offset(i), src.dist, block.row(i), kUnit, count);
    }
  }
}

template <int kUnit, class T, int kRowBytes>
void store(const Block<T, kRowBytes>& block, const Side<T>& dst, std::ptrdiff_t first,
           std::ptrdiff_t count) {
  T* const at = dst.transform(first);
  if (dst.isContiguous()) {
    contiguousFromRows<kUnit * kSize<T>>(RowsInBlock<kRowBytes>{bytes(block.first), {}},
                                         dst.elements, bytes(at), dst.dist * kSize<T>, count);
  } else if (dst.isElementMajor() && dst.bins) {
    storeBins(block, dst, first, count);
  } else if (dst.isElementMajor()) {
    copyRows(bytes(block.first), kRowBytes, bytes(at), dst.stride * kSize<T>, dst.elements,
             count * kUnit * kSize<T>);
  } else {
    for (int i = 0; i < dst.elements; ++i) {
      copyNumbers<kUnit>(block.row(i), kUnit, at + dst.offset(i), dst.dist, count);
    }
  }
}

// Copies to memory. Its lines are not read first, and do not stay in the caches. Before each,
// `beforeLine` is called.
template <class Body>
ZVXG_INLINE inline void stream(const Byte* from, std::ptrdiff_t count, Byte* to,
                               const Body& beforeLine) {
  const std::ptrdiff_t head = -reinterpret_cast<std::intptr_t>(to) & (kLine - 1);
  std::ptrdiff_t at = std::min(head, count);
  std::memcpy(to, from, at);
  for (; at + kLine <= count; at += kLine) {
    beforeLine();
    const __m256 low = loadRow(from + at), high = loadRow(from + at + kLine / 2);
    _mm256_stream_ps(reinterpret_cast<float*>(to + at), low);
    _mm256_stream_ps(reinterpret_cast<float*>(to + at + kLine / 2), high);
  }
  std::memcpy(to + at, from + at, count - at);
}

inline void stream(const Byte* from, std::ptrdiff_t count, Byte* to) {
  stream(from, count, to, [] {});
}

template <int kUnit, class T, int kRowBytes>
void streamRow(const Block<T, kRowBytes>& block, const Side<T>& dst, int row, std::ptrdiff_t first,
               std::ptrdiff_t count) {
  Byte* const to = bytes(dst.transform(first) + row * dst.stride);
  if (!dst.bins) return stream(bytes(block.row(row)), count * kUnit * kSize<T>, to);
  alignas(32) Byte bins[2 * kRowBytes];
  interleave<T>(bytes(block.row(2 * row)), bytes(block.row(2 * row + 1)), bins, count * kSize<T>);
  stream(bins, 2 * count * kSize<T>, to);
}

// To the second-level cache. Inline, as g++ drops calls of a function that does nothing but this.
ZVXG_INLINE inline void fetchLine(const Byte* from) { _mm_prefetch(from, _MM_HINT_T1); }

// What of some transforms is contiguous: rows, or each of them, or nothing.
template <class T>
class Runs {
 public:
  Runs(const Side<T>& side, std::ptrdiff_t first, std::ptrdiff_t transforms)
      : side_(side), first_(first), transforms_(transforms) {}

  std::ptrdiff_t count() const {
    if (transforms_ == 0) return 0;
    return side_.isElementMajor() ? side_.rows() : side_.isContiguous() ? transforms_ : 0;
  }
  ZVXG_INLINE void fetch(std::ptrdiff_t run) const {
    const bool isRow = side_.isElementMajor();
    const Byte* const from =
        bytes(isRow ? side_.transform(first_) + run * side_.stride : side_.transform(first_ + run));
    const std::ptrdiff_t numbers = isRow ? transforms_ * side_.pair() : side_.elements * side_.unit;
    for (std::ptrdiff_t at = 0; at < numbers * kSize<T>; at += kLine) fetchLine(from + at);
  }

 private:
  const Side<T>& side_;
  const std::ptrdiff_t first_, transforms_;
};

// How a batch uses the memory that holds its arrays.
struct Memory {
  bool fetches;  // the next panel, while results of one are stored
  bool streams;  // results: rows by a large block, from dense transforms to such by another
};

// Rows that a kernel runs on: `step` reals apart, of elements or of bins.
template <class T>
struct KernelRows {
  T* first;
  std::ptrdiff_t step;
  bool areBins = false;
};

// run(src, dst, turns) does turns of `transforms` each, from rows to rows, which may be the same. Rows
// of a side that has none of its own are in a block.
template <int kUnit, int kElements, int kRowBytes, class T, class Run>
void runWithBlock(const Side<const T>& src, const Side<T>& dst, int transforms,
                  std::ptrdiff_t howmany, Memory memory, const Run& run) {
  using Rows = Block<T, kRowBytes>;
  alignas(64) T numbers[kElements * Rows::kStep];
  const Rows block = {numbers};
  const KernelRows<const T> fromBlock = {numbers, Rows::kStep};
  const KernelRows<T> toBlock = {numbers, Rows::kStep};
  constexpr bool kIsLarge = kRowBytes > 512;
  const bool fromRows = src.isRows() && !(kIsLarge && src.areCrowded());
  const bool toRows = dst.isRows() && !(kIsLarge && dst.areCrowded()) && !memory.streams;
  const std::ptrdiff_t rest = howmany % transforms, full = howmany - rest;
  const std::ptrdiff_t panel =
      fromRows && toRows && !memory.fetches ? full : Rows::kStep / kUnit / transforms * transforms;
  for (std::ptrdiff_t first = 0; first < full; first += panel) {
    const std::ptrdiff_t count = std::min(panel, full - first);
    if (!fromRows) load<kUnit>(src, first, count, count, block);
    run(fromRows ? KernelRows<const T>{src.transform(first), src.stride, src.bins} : fromBlock,
        toRows ? KernelRows<T>{dst.transform(first), dst.stride, dst.bins} : toBlock,
        count / transforms);
    const std::ptrdiff_t next = first + count, nextCount = std::min(panel, full - next);
    if (!kIsLarge && memory.streams) {
      alignas(64) T inLine[kIsLarge ? 1 : kElements * Rows::kStep];
      Side<T> line = dst;
      line.at = inLine;
      store<kUnit>(block, line, 0, count);
      const Byte *ahead = bytes(src.transform(next)), *end = bytes(src.transform(next + nextCount));
      const auto fetchAhead = [&]() ZVXG_INLINE {
        if (ahead < end) fetchLine(ahead);
        ahead += kLine;
      };
      stream(bytes(inLine), count * dst.dist * kSize<T>, bytes(dst.transform(first)), fetchAhead);
      while (ahead < end) fetchAhead();
    } else if (memory.fetches) {
      const Runs<const T> from(src, next, nextCount);
      const Runs<T> to(dst, next, nextCount);
      const std::ptrdiff_t read = from.count(), written = memory.streams ? 0 : to.count();
      const std::ptrdiff_t streamed = memory.streams ? dst.rows() : 0;
      for (std::ptrdiff_t i = 0; i < std::max({read, written, streamed}); ++i) {
        if (i < read) from.fetch(i);
        if (i < written) to.fetch(i);
        if (i < streamed) streamRow<kUnit>(block, dst, static_cast<int>(i), first, count);
      }
    }
    if (!toRows && !memory.streams) store<kUnit>(block, dst, first, count);
  }
  if (memory.streams) _mm_sfence();
  if (rest == 0) return;
  load<kUnit>(src, full, rest, transforms, block);
  run(fromBlock, toBlock, 1);
  store<kUnit>(block, dst, full, rest);
}

template <int kUnit, class T>
std::ptrdiff_t bytesOf(const Side<const T>& src, const Side<T>& dst, std::ptrdiff_t howmany) {
  return howmany * (src.elements + dst.elements) * kUnit * kSize<T>;
}

// Whether a batch is larger than the caches, as far as these are its own.
template <int kUnit, class T>
bool outgrowsCaches(const Side<const T>& src, const Side<T>& dst, std::ptrdiff_t howmany) {
  constexpr std::ptrdiff_t kCachedBytes = 1 << 24;
  return bytesOf<kUnit>(src, dst, howmany) > kCachedBytes;
}

// A block shares the first-level cache with the arrays. One for short transforms takes many turns, as
// a panel costs as much as some of these.
//
// Dense transforms of a batch that outgrows the caches are put in line in a second block, as
// one run, and go to memory as whole lines, while the next ones are fetched.
//
// The rows of a batch that outgrows the caches are more streams than a processor follows by itself. It
// takes runs of many lines of each, which it fetches. Its block is in the second-level cache, and goes to
// memory as whole lines, but in place, where the lines were just read. Crowded rows of a batch in the
// second-level cache have the same block, and there are crowded no more, as each is an odd number of
// lines.
template <int kUnit, class T, class Run>
void runBatch(const Side<const T>& src, const Side<T>& dst, int transforms, std::ptrdiff_t howmany,
              const Run& run) {
  constexpr int kFew = 18, kMost = 128;  // 16 samples are 9 bins; the orders of a kernel end with 7
  constexpr int kLarge = kMaxLength + 2, kRun = 15 * kLine;
  constexpr std::ptrdiff_t kNearBytes = 1 << 21;
  const int elements = std::max(src.elements, dst.elements);
  const bool outgrows = outgrowsCaches<kUnit>(src, dst, howmany);
  const bool crowded =
      (src.areCrowded() || dst.areCrowded()) && bytesOf<kUnit>(src, dst, howmany) <= kNearBytes;
  const bool hasRows = src.isElementMajor() || dst.isElementMajor();
  const bool streams = outgrows && src.at != dst.at;
  const Memory forRows = {outgrows, streams && dst.isElementMajor()};
  const Memory forDense = {outgrows, streams && src.isDense() && dst.isDense()};
  if (elements <= kLarge && ((outgrows && hasRows) || crowded)) {
    runWithBlock<kUnit, kLarge, kRun>(src, dst, transforms, howmany, forRows, run);
  } else if (elements <= kFew) {
    runWithBlock<kUnit, kFew, 512>(src, dst, transforms, howmany, forDense, run);
  } else {
    runWithBlock<kUnit, kMost, 128>(src, dst, transforms, howmany, forDense, run);
  }
}

}  // namespace zvxg::many
