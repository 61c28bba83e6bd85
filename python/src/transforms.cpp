#include "transforms.h"

#include <zvxg_many.h>

#include <algorithm>
#include <atomic>
#include <bit>
#include <cmath>
#include <cstdlib>
#include <cstring>

namespace zvxg::python {
namespace {

// ---- Bytes and elements -------------------------------------------------------------------------

template <class T>
constexpr auto kSize = static_cast<std::ptrdiff_t>(sizeof(T));

template <class T>
bool countsInElements(const Side& side) {
  return side.stride % kSize<T> == 0 && side.distance % kSize<T> == 0;
}

void copyElements(std::ptrdiff_t size, const char* from, std::ptrdiff_t fromStride, char* to,
                  std::ptrdiff_t toStride, std::ptrdiff_t elements) {
  for (std::ptrdiff_t i = 0; i < elements; ++i) {
    std::memcpy(to + i * toStride, from + i * fromStride, static_cast<std::size_t>(size));
  }
}

// Calls one(src, dst) for each transform, with elements side by side.
template <class S, class D, class One>
bool runOneByOne(const Side& src, const Side& dst, std::ptrdiff_t howmany, const One& one) {
  if (src.stride == kSize<S> && dst.stride == kSize<D>) {
    bool done = true;
    for (std::ptrdiff_t k = 0; k < howmany && done; ++k) {
      done = one(reinterpret_cast<const S*>(src.data + k * src.distance),
                 reinterpret_cast<D*>(dst.data + k * dst.distance)) == zvxOk;
    }
    return done;
  }
  alignas(64) char shortBlock[2 * 64 * sizeof(Complex64)];
  const std::ptrdiff_t sourceBytes = src.elements * kSize<S>;
  const auto bytes = static_cast<std::size_t>(sourceBytes + dst.elements * kSize<D>);
  char* const block =
      bytes <= sizeof shortBlock ? shortBlock : static_cast<char*>(std::malloc(bytes));
  bool done = block != nullptr;
  for (std::ptrdiff_t k = 0; k < howmany && done; ++k) {
    char* const result = block + sourceBytes;
    copyElements(kSize<S>, src.data + k * src.distance, src.stride, block, kSize<S>, src.elements);
    done = one(reinterpret_cast<const S*>(block), reinterpret_cast<D*>(result)) == zvxOk;
    if (done) {
      copyElements(kSize<D>, result, kSize<D>, dst.data + k * dst.distance, dst.stride,
                   dst.elements);
    }
  }
  if (block != shortBlock) std::free(block);
  return done;
}

// Calls many(src, srcStride, srcDist, dst, dstStride, dstDist, howmany), which counts in elements.
// One field of an array of records may lie at a stride that is no multiple of its size: these go
// one by one.
template <class S, class D, class Many, class One>
bool run(const Side& src, const Side& dst, std::ptrdiff_t howmany, const Many& many,
         const One& one) {
  if (!countsInElements<S>(src) || !countsInElements<D>(dst)) {
    return runOneByOne<S, D>(src, dst, howmany, one);
  }
  return many(reinterpret_cast<const S*>(src.data), src.stride / kSize<S>, src.distance / kSize<S>,
              reinterpret_cast<D*>(dst.data), dst.stride / kSize<D>, dst.distance / kSize<D>,
              howmany) == zvxOk;
}

// ---- Factors ------------------------------------------------------------------------------------

enum class Direction {
  Forward,
  Inverse
};

template <Direction kDirection>
int32_t flagOf(Norm norm) {
  switch (norm) {
    case Norm::Backward: return kDirection == Direction::Forward ? zvxNoDiv : zvxDivInvByN;
    case Norm::Ortho: return zvxDivBySqrtN;
    case Norm::Forward: return kDirection == Direction::Forward ? zvxDivFwdByN : zvxNoDiv;
  }
  return 0;
}

// ---- Transforms of a fixed length ---------------------------------------------------------------

template <class S, class D>
using Many = int32_t (*)(const S*, std::ptrdiff_t, std::ptrdiff_t, D*, std::ptrdiff_t,
                         std::ptrdiff_t, int32_t, int64_t, int32_t) noexcept;
// The bins of libzvxg are pairs of T.
template <class T, class U>
using One = int32_t (*)(const T*, U*, int32_t, int32_t) noexcept;

template <class S, class D, class T, class U>
bool runShort(Many<S, D> many, One<T, U> one, const Side& src, const Side& dst,
              std::ptrdiff_t points, std::ptrdiff_t howmany, int32_t flag) {
  const auto length = static_cast<int32_t>(points);
  const auto runOne = [=](const S* x, D* y) {
    return one(reinterpret_cast<const T*>(x), reinterpret_cast<U*>(y), length, flag);
  };
  if (howmany == 1) return runOneByOne<S, D>(src, dst, 1, runOne);
  return run<S, D>(
      src, dst, howmany,
      [=](const S* x, std::ptrdiff_t xStride, std::ptrdiff_t xDist, D* y, std::ptrdiff_t yStride,
          std::ptrdiff_t yDist, std::ptrdiff_t count) {
        return many(x, xStride, xDist, y, yStride, yDist, length, count, flag);
      },
      runOne);
}

template <Direction kDirection, auto kMany, auto kOne>
bool shortTransform(const Side& src, const Side& dst, std::ptrdiff_t length, std::ptrdiff_t howmany,
                    Norm norm) {
  return runShort(kMany, kOne, src, dst, length, howmany, flagOf<kDirection>(norm));
}

// ---- Walsh-Hadamard transforms ------------------------------------------------------------------

template <class T, auto kMany, auto kOne>
bool hadamard(const Side& src, const Side& dst, std::ptrdiff_t length, std::ptrdiff_t howmany,
              Norm norm) {
  const auto order = static_cast<int32_t>(std::countr_zero(static_cast<std::size_t>(length)));
  const int32_t flag = flagOf<Direction::Forward>(norm);
  return run<T, T>(
      src, dst, howmany,
      [=](const T* x, std::ptrdiff_t xStride, std::ptrdiff_t xDist, T* y, std::ptrdiff_t yStride,
          std::ptrdiff_t yDist, std::ptrdiff_t count) {
        return kMany(x, xStride, xDist, y, yStride, yDist, order, count, flag, nullptr);
      },
      [=](const T* x, T* y) { return kOne(x, y, order, flag, nullptr); });
}

// ---- DCT-IV -------------------------------------------------------------------------------------

template <class T>
struct Dct4;

template <>
struct Dct4<float> {
  static constexpr auto many = zvxgDCT4_Many_32f;
  static constexpr auto make = zvxgDCT4InitAlloc_32f;
  static constexpr auto drop = zvxgDCT4Free_32f;
  static constexpr int longest = 26;
};
template <>
struct Dct4<double> {
  static constexpr auto many = zvxgDCT4_Many_64f;
  static constexpr auto make = zvxgDCT4InitAlloc_64f;
  static constexpr auto drop = zvxgDCT4Free_64f;
  static constexpr int longest = 25;
};

// A plan may run on one thread at a time, so whoever takes the plan of a length empties its place,
// and whoever finds the place empty makes a plan. One plan of each length stays, up to 2^16 points.
template <class T>
class Plan {
 public:
  explicit Plan(std::ptrdiff_t length)
      : order_(std::countr_zero(static_cast<std::size_t>(length))),
        plan_(isKept() ? places()[order_].exchange(nullptr) : nullptr) {
    if (plan_ == nullptr) Dct4<T>::make(&plan_, static_cast<int32_t>(length));
  }
  ~Plan() {
    if (isKept()) plan_ = places()[order_].exchange(plan_);
    if (plan_ != nullptr) Dct4<T>::drop(plan_);
  }
  Plan(const Plan&) = delete;
  Plan& operator=(const Plan&) = delete;

  const Dct4Spec* get() const { return plan_; }

 private:
  static constexpr int kLongestKept = 16;
  static std::atomic<Dct4Spec*>* places() {
    static constinit std::atomic<Dct4Spec*> places[kLongestKept + 1];
    return places;
  }
  bool isKept() const { return order_ <= kLongestKept; }

  int order_;
  Dct4Spec* plan_;
};

template <class T>
void scale(T* y, std::ptrdiff_t stride, std::ptrdiff_t distance, std::ptrdiff_t length,
           std::ptrdiff_t howmany, T factor) {
  for (std::ptrdiff_t k = 0; k < howmany; ++k) {
    for (std::ptrdiff_t i = 0; i < length; ++i) {
      char* at = reinterpret_cast<char*>(y + k * distance + i * stride);
      T value;  // may lie at any address
      std::memcpy(&value, at, sizeof value);
      value *= factor;
      std::memcpy(at, &value, sizeof value);
    }
  }
}

// SciPy's factors. Those of "backward" and "forward" are powers of two.
template <class T>
T cosineFactor(std::ptrdiff_t length, Norm norm) {
  const auto n = static_cast<double>(length);
  return static_cast<T>(norm == Norm::Backward ? 2
                        : norm == Norm::Ortho  ? std::sqrt(2 / n)
                                               : 1 / n);
}

template <class T>
bool cosine(const Side& src, const Side& dst, std::ptrdiff_t length, std::ptrdiff_t howmany,
            Norm norm) {
  const Plan<T> plan(length);
  if (plan.get() == nullptr) return false;
  const T factor = cosineFactor<T>(length, norm);
  // Results are multiplied while they are in the first-level cache.
  const std::ptrdiff_t share = length < 2048 ? 2048 / length : 1;
  const auto many = [&](const T* x, std::ptrdiff_t xStride, std::ptrdiff_t xDist, T* y,
                        std::ptrdiff_t yStride, std::ptrdiff_t yDist, std::ptrdiff_t all) {
    int32_t status = zvxOk;
    for (std::ptrdiff_t k = 0; k < all && status == zvxOk; k += share) {
      const std::ptrdiff_t count = std::min(all - k, share);
      T* const result = y + k * yDist;
      status =
          Dct4<T>::many(x + k * xDist, xStride, xDist, result, yStride, yDist, count, plan.get());
      scale(result, yStride, yDist, length, count, factor);
    }
    return status;
  };
  return run<T, T>(src, dst, howmany, many,
                   [&](const T* x, T* y) { return many(x, 1, 0, y, 1, 0, 1); });
}

#define ZVXG_SHORT(direction, transform, element)                        \
  shortTransform<Direction::direction, zvxg##transform##_Many_##element, \
                 zvxg##transform##_##element>
#define ZVXG_HADAMARD(T, element) hadamard<T, zvxgWHT_Many_##element, zvxgWHT_##element>

}  // namespace

// clang-format off
const Transform kTransforms[kTransformCount] = {
    // name, complex source, complex result, bins, lengths, in double, in single precision
    {"fft", true, true, Spectrum::None, Lengths::Short,
     ZVXG_SHORT(Forward, DFTFwd_CToC, 64fc), ZVXG_SHORT(Forward, DFTFwd_CToC, 32fc)},
    {"ifft", true, true, Spectrum::None, Lengths::Short,
     ZVXG_SHORT(Inverse, DFTInv_CToC, 64fc), ZVXG_SHORT(Inverse, DFTInv_CToC, 32fc)},
    {"rfft", false, true, Spectrum::Result, Lengths::Short,
     ZVXG_SHORT(Forward, DFTFwd_RToCCS, 64f), ZVXG_SHORT(Forward, DFTFwd_RToCCS, 32f)},
    {"rfft_pack", false, false, Spectrum::None, Lengths::Short,
     ZVXG_SHORT(Forward, DFTFwd_RToPack, 64f), ZVXG_SHORT(Forward, DFTFwd_RToPack, 32f)},
    {"rfft_perm", false, false, Spectrum::None, Lengths::Short,
     ZVXG_SHORT(Forward, DFTFwd_RToPerm, 64f), ZVXG_SHORT(Forward, DFTFwd_RToPerm, 32f)},
    {"irfft", true, false, Spectrum::Source, Lengths::Short,
     ZVXG_SHORT(Inverse, DFTInv_CCSToR, 64f), ZVXG_SHORT(Inverse, DFTInv_CCSToR, 32f)},
    {"irfft_pack", false, false, Spectrum::None, Lengths::Short,
     ZVXG_SHORT(Inverse, DFTInv_PackToR, 64f), ZVXG_SHORT(Inverse, DFTInv_PackToR, 32f)},
    {"irfft_perm", false, false, Spectrum::None, Lengths::Short,
     ZVXG_SHORT(Inverse, DFTInv_PermToR, 64f), ZVXG_SHORT(Inverse, DFTInv_PermToR, 32f)},
    {"hartley", false, false, Spectrum::None, Lengths::Short,
     ZVXG_SHORT(Forward, Hartley, 64f), ZVXG_SHORT(Forward, Hartley, 32f)},
    {"wht", false, false, Spectrum::None, Lengths::Hadamard,
     ZVXG_HADAMARD(double, 64f), ZVXG_HADAMARD(float, 32f)},
    {"dct4", false, false, Spectrum::None, Lengths::Cosine, cosine<double>, cosine<float>},
};
// clang-format on

bool Transform::accepts(std::ptrdiff_t length, bool isSingle) const {
  if (lengths == Lengths::Short) return length >= 2 && length <= 64;
  const int longest = lengths == Lengths::Hadamard ? 13
                      : isSingle                   ? Dct4<float>::longest
                                                   : Dct4<double>::longest;
  return length >= 2 && length <= std::ptrdiff_t{1} << longest && (length & (length - 1)) == 0;
}

const char* Transform::acceptedLengths(bool isSingle) const {
  switch (lengths) {
    case Lengths::Short: return "2 to 64";
    case Lengths::Hadamard: return "the powers of two from 2 to 8192";
    case Lengths::Cosine: break;
  }
  return isSingle ? "the powers of two from 2 to 2**26 in single precision"
                  : "the powers of two from 2 to 2**25 in double precision";
}

}  // namespace zvxg::python
