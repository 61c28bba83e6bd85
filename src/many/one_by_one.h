// Single calls for a batch, whose transforms need not be contiguous: as many as a cache line has numbers
// are put in line in a block, and their results back from there.
#pragma once

#include "many/batch.h"

namespace zvxg::many {

inline constexpr int kLongestInLine = 1024;  // points

// Transforms in line. They are an odd number of cache lines apart, so that they do not compete for a few
// places of a cache.
template <class T>
class InLine {
 public:
  static constexpr std::ptrdiff_t kMost = kLine / kSize<T>;

  explicit InLine(int elements) : elements_(elements), dist_(elements + kMost) {}

  T* transform(std::ptrdiff_t number) { return numbers_ + number * dist_; }

  void load(const Side<const T>& src, std::ptrdiff_t first, std::ptrdiff_t count) {
    const std::ptrdiff_t whole = wholeGroups(src, count);
    const RowsInMemory<const Byte, std::ptrdiff_t> rows = {bytes(src.transform(first)),
                                                           src.stride * kSize<T>};
    contiguousFromRows<kSize<T>>(rows, elements_, bytes(numbers_), dist_ * kSize<T>, whole);
    for (std::ptrdiff_t k = whole; k < count; ++k) {
      copyNumbers<1>(src.transform(first + k), src.stride, transform(k), 1, elements_);
    }
  }
  void store(const Side<T>& dst, std::ptrdiff_t first, std::ptrdiff_t count) {
    const std::ptrdiff_t whole = wholeGroups(dst, count);
    const RowsInMemory<Byte, std::ptrdiff_t> rows = {bytes(dst.transform(first)),
                                                     dst.stride * kSize<T>};
    contiguousToRows<kSize<T>>(bytes(numbers_), dist_ * kSize<T>, whole, elements_, whole, rows);
    for (std::ptrdiff_t k = whole; k < count; ++k) {
      copyNumbers<1>(transform(k), 1, dst.transform(first + k), dst.stride, elements_);
    }
  }

 private:
  // How many of them are transposed: of rows, all but those that do not fill a register.
  template <class Number>
  static std::ptrdiff_t wholeGroups(const Side<Number>& side, std::ptrdiff_t count) {
    return side.isRows() ? count - count % kGroup<kSize<T>> : 0;
  }

  const int elements_;
  const std::ptrdiff_t dist_;
  alignas(kLine) T numbers_[kMost * (kLongestInLine + kMost)];
};

// single(src, dst) for each. Those that are not contiguous have at most kLongestInLine points.
template <class T, class Single>
void oneByOne(const Side<const T>& src, const Side<T>& dst, std::ptrdiff_t howmany,
              const Single& single) {
  const bool inLine = src.isContiguous(), toLine = dst.isContiguous();
  if (inLine && toLine) {
    for (std::ptrdiff_t k = 0; k < howmany; ++k) single(src.transform(k), dst.transform(k));
    return;
  }
  constexpr std::ptrdiff_t kAtOnce = InLine<T>::kMost;
  InLine<T> block(src.elements);
  // Of a batch that outgrows the caches, some of the next rows are fetched before each call.
  const bool fetches = outgrowsCaches<1>(src, dst, howmany);
  for (std::ptrdiff_t first = 0; first < howmany; first += kAtOnce) {
    const std::ptrdiff_t count = std::min(kAtOnce, howmany - first), next = first + count;
    const std::ptrdiff_t nextCount = fetches ? std::min(kAtOnce, howmany - next) : 0;
    const Runs<const T> from(src, next, nextCount);
    const Runs<T> to(dst, next, nextCount);
    if (!inLine) block.load(src, first, count);
    for (std::ptrdiff_t k = 0; k < count; ++k) {
      for (std::ptrdiff_t i = k; i < from.count(); i += kAtOnce) from.fetch(i);
      for (std::ptrdiff_t i = k; i < to.count(); i += kAtOnce) to.fetch(i);
      single(inLine ? src.transform(first + k) : block.transform(k),
             toLine ? dst.transform(first + k) : block.transform(k));
    }
    if (!toLine) block.store(dst, first, count);
  }
}

}  // namespace zvxg::many
