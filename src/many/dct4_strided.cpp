#include "many/dct4_strided.h"

#include "dct4/walk.h"
#include "many/batch.h"

namespace zvxg::dct4 {
namespace {

using many::copyNumbers;

template <class T>
constexpr std::ptrdiff_t kColumns = kGroup<Narrow<T>>* kLanes<Narrow<T>>;

// As runLeaves() of leaves.h, which see for what is where.
template <class T, int kLength>
void gatheringLeaves(const LeafStage<T>& stage, std::ptrdiff_t stride) {
  constexpr int kHalf = kLength / 2;
  const std::ptrdiff_t r = stage.radix, width = r * stage.splits, step = 2 * width;
  const std::ptrdiff_t count = std::min(kColumns<T>, r);
  alignas(64)
      T inputs[kLength][kColumns<T>];  // y[-Q-1] in row Q from its end on, y[Q] behind all of them
  for (std::ptrdiff_t col = 0; col < width; col += count) {
    const std::ptrdiff_t c = col % r, first = 2 * (col - c) + c;
    const std::ptrdiff_t last = stage.length - 1 - first - (kHalf - 1) * step;
    for (int q = 0; q < kHalf; ++q) {
      copyNumbers<1>(stage.src + (first + q * step) * stride, stride, inputs[kHalf + q], 1, count);
      copyNumbers<1>(stage.src + (last + q * step) * stride, -stride, &inputs[q][kColumns<T> - 1],
                     -1, count);
    }
    leafGroup<Narrow<T>, kLength>({inputs[kHalf], &inputs[0][kColumns<T> - 1], kColumns<T>},
                                  stage.out + col, width,
                                  static_cast<int>(count / kLanes<Narrow<T>>));
  }
}

// As runRoot() of root.h, with results that are collected.
template <class T, int r>
void scatteringRoot(const RootStage<T>& stage, std::ptrdiff_t stride) {
  const std::ptrdiff_t step = stage.subLength, down = stage.lastIndex - (2 * r - 1) * step;
  alignas(64) T results[2 * r][kColumns<T>];
  for (std::ptrdiff_t block = 0; block < stage.blocks; block += kGroup<Narrow<T>>) {
    const int vectors =
        static_cast<int>(std::min<std::ptrdiff_t>(kGroup<Narrow<T>>, stage.blocks - block));
    const std::ptrdiff_t k = block * kLanes<Narrow<T>>, count = vectors * kLanes<Narrow<T>>;
    rootGroup<Narrow<T>, r>(stage, {results[0], &results[r][count - 1], kColumns<T>}, block,
                            vectors);
    for (int l = 0; l < r; ++l) {
      copyNumbers<1>(results[l], 1, stage.dst + (l * step + k) * stride, stride, count);
      // With a length 2^k + 1 the last element of the last run lies one behind the array.
      const std::ptrdiff_t place = down + l * step - k - count + 1;
      copyNumbers<1>(results[r + l], 1, stage.dst + place * stride, stride,
                     std::min(count, stage.length - place));
    }
  }
}

template <class T>
struct Strided {
  const T* src;
  std::ptrdiff_t srcStride;
  T* dst;
  std::ptrdiff_t dstStride;

  void runLeaves(uint32_t state, const LeafStage<T>& stage) const {
    static constexpr auto kKernels = []<int... i>(std::integer_sequence<int, i...>) {
      return std::array{gatheringLeaves<T, 2 << i>...};
    }
    (std::make_integer_sequence<int, kLeaves<Narrow<T>>.size()>());
    kKernels[state - 1](stage, srcStride);
  }
  void runRoot(uint32_t state, const RootStage<T>& stage) const {
    static constexpr auto kKernels = []<int... i>(std::integer_sequence<int, i...>) {
      return std::array{scatteringRoot<T, 1 << i>...};
    }
    (std::make_integer_sequence<int, kRoots<Narrow<T>>.size()>());
    kKernels[state - 1](stage, dstStride);
  }
};

}  // namespace

template <class T>
void executeStrided(const Dct4Spec& spec, const T* src, std::ptrdiff_t srcStride, T* dst,
                    std::ptrdiff_t dstStride) {
  const Strided<T> ends = {src, srcStride, dst, dstStride};
  Walk<T, Strided<T>>(ends, {Writing::Direct, Writing::Direct}).run(spec);
}

template void executeStrided<float>(const Dct4Spec&, const float*, std::ptrdiff_t, float*,
                                    std::ptrdiff_t);
template void executeStrided<double>(const Dct4Spec&, const double*, std::ptrdiff_t, double*,
                                     std::ptrdiff_t);

}  // namespace zvxg::dct4
