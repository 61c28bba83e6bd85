// The exported functions: checks, the factor of the flag, and the kernels that run a batch.

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <utility>

#include "many/batch.h"
#include "many/contiguous.h"
#include "many/dct4_strided.h"
#include "many/lanes.h"
#include "many/level.h"
#include "many/one_by_one.h"
#include "many/rows.h"
#include "wht/blocking.h"
#include "zvxg_many.h"

namespace zvxg::many {
namespace {

enum class Direction {
  Forward,
  Inverse,
  None
};

// ---- The machine --------------------------------------------------------------------------------

// A call takes all kernels from one table: the level may change meanwhile, and with it how many
// transforms a turn takes.
template <class Table>
const Table& ofLevel(const Table& ofAvx, const Table& ofAvx512) {
  return level() == zvxManyAvx512 ? ofAvx512 : ofAvx;
}

template <class T>
struct Machine;

template <>
struct Machine<float> {
  static const auto& kernels() { return ofLevel(avx::kSingle, avx512::kSingle); }
  static const auto& wht() { return ofLevel(avx::kWhtSingle, avx512::kWhtSingle); }
  static const auto& dct4() { return ofLevel(avx::kDct4Single, avx512::kDct4Single); }
  static const auto& contiguous() { return avx::kContiguousSingle; }
};

template <>
struct Machine<double> {
  static const auto& kernels() { return ofLevel(avx::kDouble, avx512::kDouble); }
  static const auto& wht() { return ofLevel(avx::kWhtDouble, avx512::kWhtDouble); }
  static const auto& dct4() { return ofLevel(avx::kDct4Double, avx512::kDct4Double); }
  static const auto& contiguous() { return avx::kContiguousDouble; }
};

// ---- Arguments ----------------------------------------------------------------------------------

// The arrays of a call, as reals. Strides of a call that is refused may be anything, and so may the
// distances of a single transform, and all of none.
template <class T>
struct Arrays {
  const T* src;
  std::ptrdiff_t srcStride, srcDist;
  T* dst;
  std::ptrdiff_t dstStride, dstDist;
  std::int64_t howmany;

  template <class S, class D>
  Arrays(const S* s, std::ptrdiff_t sStride, std::ptrdiff_t sDist, D* d, std::ptrdiff_t dStride,
         std::ptrdiff_t dDist, std::int64_t count)
      : src(reals(s)),
        srcStride(inReals<S>(sStride)),
        srcDist(count <= 1 ? 0 : inReals<S>(sDist)),
        dst(reals(d)),
        dstStride(inReals<D>(dStride)),
        dstDist(count <= 1 ? 0 : inReals<D>(dDist)),
        howmany(count) {}

  template <class Element>
  static std::ptrdiff_t inReals(std::ptrdiff_t elements) {
    return static_cast<std::ptrdiff_t>(static_cast<std::size_t>(elements) *
                                       (sizeof(Element) / sizeof(T)));
  }

  bool isNull() const { return howmany > 0 && (src == nullptr || dst == nullptr); }
  bool isContiguous() const { return srcStride == 1 && dstStride == 1; }

  // Without the first ones.
  Arrays from(std::int64_t transforms) const {
    Arrays left = *this;
    left.src += transforms * srcDist;
    left.dst += transforms * dstDist;
    left.howmany -= transforms;
    return left;
  }

  Side<const T> source(int elements, int unit = 1, bool bins = false) const {
    return {src, srcStride, srcDist, elements, unit, bins};
  }
  Side<T> destination(int elements, int unit = 1, bool bins = false) const {
    return {dst, dstStride, dstDist, elements, unit, bins};
  }
};

template <class T>
int32_t check(bool lengthIsGood, const Arrays<T>& arrays, int32_t flag) {
  if (!lengthIsGood || arrays.howmany < 0) return zvxErrLength;
  if (arrays.isNull()) return zvxErrNullPointer;
  return isScaleFlag(flag) ? zvxOk : zvxErrScaleFlag;
}

template <class T>
int32_t checkOfLength(int32_t len, const Arrays<T>& arrays, int32_t flag) {
  return check(len >= kMinLength && len <= kMaxLength, arrays, flag);
}

// ---- Factors ------------------------------------------------------------------------------------

// Newton's iteration falls until it is there.
constexpr double rootOf(int n) {
  long double root = n;
  for (long double next = (root + 1) / 2; next < root; next = (root + n / root) / 2) root = next;
  return static_cast<double>(root);
}

template <class T, Direction kDirection>
constexpr auto makeFactors() {
  std::array<Factors<T>, kLengths> factors{};
  for (int n = kMinLength; n <= kMaxLength; ++n) {
    const T byN = static_cast<T>(1.0 / n), bySqrtN = static_cast<T>(1.0 / rootOf(n));
    factors[static_cast<std::size_t>(n - kMinLength)] =
        kDirection == Direction::Forward   ? forwardFactors(byN, bySqrtN)
        : kDirection == Direction::Inverse ? inverseFactors(byN, bySqrtN)
                                           : undirectedFactors(byN, bySqrtN);
  }
  return factors;
}

// A table, as the caller's rounding mode must not reach the constants.
template <class T, Direction kDirection>
constinit const auto kFactors = makeFactors<T, kDirection>();

template <class T, Direction kDirection>
const T* factorOf(int32_t len, int32_t flag) {
  return &kFactors<T, kDirection>[static_cast<std::size_t>(len - kMinLength)].ofFlag[flag];
}

template <class T>
constinit const auto kWhtFactors = []<int... i>(std::integer_sequence<int, i...>) {
  return std::array{wht::factorsOf<T, i + 1>()...};
}
(std::make_integer_sequence<int, wht::kOrders>());

// ---- Transforms by generated kernels ------------------------------------------------------------

// A batch of a kernel from rows to rows.
template <int kUnit, class T>
void runRows(const Kernel<Run<T>>& kernel, const Side<const T>& src, const Side<T>& dst,
             std::int64_t howmany, const T* factor) {
  runBatch<kUnit>(
      src, dst, kernel.transforms, howmany,
      [&](const KernelRows<const T>& from, const KernelRows<T>& to, std::ptrdiff_t turns) {
        kernel.run(from.first, from.step, to.first, to.step, factor, turns);
      });
}

// Whole turns of a kernel whose steps are `srcStep` and `dstStep`: the number of transforms that are done.
template <class T>
std::int64_t runTurns(const Kernel<Run<T>>& kernel, const T* factor, const Arrays<T>& arrays,
                      std::ptrdiff_t srcStep, std::ptrdiff_t dstStep) {
  if (kernel.transforms == 0) return 0;
  const std::int64_t turns = arrays.howmany / kernel.transforms;
  kernel.run(arrays.src, srcStep, arrays.dst, dstStep, factor, turns);
  return turns * kernel.transforms;
}

// Of short contiguous real transforms.
template <class T>
std::int64_t runContiguous(const ContiguousRuns<T>& runs, int32_t len, const T* factor,
                           const Arrays<T>& arrays) {
  if (len > kMaxContiguous) return 0;
  return runTurns({runs[static_cast<std::size_t>(len - kMinLength)], kGroup<kSize<T>>}, factor,
                  arrays, arrays.srcDist, arrays.dstDist);
}

int32_t singleDft(Direction direction, const float* src, float* dst, int32_t len, int32_t flag) {
  const auto call = direction == Direction::Inverse ? zvxgDFTInv_CToC_32fc : zvxgDFTFwd_CToC_32fc;
  return call(reinterpret_cast<const Complex32*>(src), reinterpret_cast<Complex32*>(dst), len,
              flag);
}
int32_t singleDft(Direction direction, const double* src, double* dst, int32_t len, int32_t flag) {
  const auto call = direction == Direction::Inverse ? zvxgDFTInv_CToC_64fc : zvxgDFTFwd_CToC_64fc;
  return call(reinterpret_cast<const Complex64*>(src), reinterpret_cast<Complex64*>(dst), len,
              flag);
}

template <Direction kDirection, class T>
int32_t complexMany(const Arrays<T>& arrays, int32_t len, int32_t flag) {
  const int32_t status = checkOfLength(len, arrays, flag);
  if (status != zvxOk) return status;
  const auto& kernels = Machine<T>::kernels();
  const int place = len - kMinLength;
  const bool inverse = kDirection == Direction::Inverse;
  const T* const factor = factorOf<T, kDirection>(len, flag);
  const auto& contiguous = kernels.contiguous[inverse][place];
  const auto source = arrays.source(len, 2);
  const auto destination = arrays.destination(len, 2);
  const bool outgrows = outgrowsCaches<2>(source, destination, arrays.howmany);
  std::int64_t done = 0;
  if (source.isContiguous() && destination.isContiguous() && contiguous.transforms > 0) {
    // Beyond the caches, several long ones at once are more streams than a processor follows, and single
    // calls wait less than a loop over one at a time (40.4 ns to 31.3 for 64 points, single, on Zen 4).
    constexpr int kMostAtOnceInMemory = 15;
    if (!outgrows || len <= kMostAtOnceInMemory) {
      done = runTurns(contiguous, factor, arrays, arrays.srcDist, arrays.dstDist);
    }
    for (; done < arrays.howmany; ++done) {
      singleDft(kDirection, arrays.src + done * arrays.srcDist, arrays.dst + done * arrays.dstDist,
                len, flag);
    }
    return zvxOk;
  }
  // Rows that the caches serve badly pass through a block.
  if (source.isContiguous() && destination.isRows() && !outgrows && !destination.areCrowded()) {
    done =
        runTurns(kernels.toRows[inverse][place], factor, arrays, arrays.srcDist, arrays.dstStride);
  }
  if (done == arrays.howmany) return zvxOk;
  const Arrays<T> left = arrays.from(done);
  runRows<2>(kernels.rows[inverse][place], left.source(len, 2), left.destination(len, 2),
             left.howmany, factor);
  return zvxOk;
}

template <class T>
int32_t hartleyMany(const Arrays<T>& arrays, int32_t len, int32_t flag) {
  const int32_t status = checkOfLength(len, arrays, flag);
  if (status != zvxOk) return status;
  const T* const factor = factorOf<T, Direction::None>(len, flag);
  std::int64_t done = 0;
  if (arrays.isContiguous()) {
    done = runContiguous(Machine<T>::contiguous().hartley, len, factor, arrays);
  }
  if (done == arrays.howmany) return zvxOk;
  const Arrays<T> left = arrays.from(done);
  runRows<1>(Machine<T>::kernels().hartley[len - kMinLength], left.source(len),
             left.destination(len), left.howmany, factor);
  return zvxOk;
}

template <Layout kLayout>
constexpr bool kHasBins = kLayout == Layout::Ccs;

// Of a contiguous spectrum, in reals.
template <Layout kLayout>
constexpr std::ptrdiff_t kContiguousStride = kHasBins<kLayout> ? 2 : 1;

template <Layout kLayout>
int spectrumSize(int32_t len) {
  return kHasBins<kLayout> ? len / 2 * 2 + 2 : len;
}

// Where a layout has its bins in rows.
template <class T>
SpectrumRows<T> spectrumRows(Layout layout, const KernelRows<T>& rows, int32_t len) {
  T* const first = rows.first;
  const std::ptrdiff_t step = rows.step;
  if (rows.areBins) return {first, first + len / 2 * step, first + step, step, 0};
  const bool isPerm = layout == Layout::Perm && len % 2 == 0;
  const std::ptrdiff_t last = layout == Layout::Ccs ? len : isPerm ? 1 : len - 1;
  const std::ptrdiff_t between = layout == Layout::Ccs || isPerm ? 2 : 1;
  return {first, first + last * step, first + between * step, 2 * step, step};
}

// What runs turns of a batch. The layout is no argument of a template, as the text of a batch takes more
// bytes than many a kernel.
template <class T>
struct ToSpectrum {
  SpectrumKernel<RunToSpectrum<T>> kernel;
  Layout layout;
  int32_t len;
  const T* factor;

  void operator()(const KernelRows<const T>& src, const KernelRows<T>& dst,
                  std::ptrdiff_t turns) const {
    kernel.run(src.first, src.step, spectrumRows(layout, dst, len), factor, turns);
    if (layout == Layout::Ccs && !dst.areBins) {
      const std::ptrdiff_t rowBytes = turns * kernel.transforms * kSize<T>;
      clearRow(bytes(dst.first + dst.step), rowBytes);
      if (len % 2 == 0) clearRow(bytes(dst.first + (len + 1) * dst.step), rowBytes);
    }
  }
};

template <class T>
struct ToSamples {
  SpectrumKernel<RunToSamples<T>> kernel;
  Layout layout;
  int32_t len;
  const T* factor;

  void operator()(const KernelRows<const T>& src, const KernelRows<T>& dst,
                  std::ptrdiff_t turns) const {
    kernel.run(spectrumRows(layout, src, len), dst.first, dst.step, factor, turns);
  }
};

template <Layout kLayout, class T>
int32_t toSpectrumMany(const Arrays<T>& arrays, int32_t len, int32_t flag) {
  const int32_t status = checkOfLength(len, arrays, flag);
  if (status != zvxOk) return status;
  const auto& kernel = Machine<T>::kernels().toSpectrum[len - kMinLength];
  const T* const factor = factorOf<T, Direction::Forward>(len, flag);
  std::int64_t done = 0;
  if (arrays.srcStride == 1 && arrays.dstStride == kContiguousStride<kLayout>) {
    done = runContiguous(Machine<T>::contiguous().toSpectrum[static_cast<int>(kLayout)], len,
                         factor, arrays);
  }
  if (done == arrays.howmany) return zvxOk;
  const Arrays<T> left = arrays.from(done);
  Side<T> dst = left.destination(spectrumSize<kLayout>(len), 1, kHasBins<kLayout>);
  dst.kernelTakesBins = kernel.takesBins;
  runBatch<1>(left.source(len), dst, kernel.transforms, left.howmany,
              ToSpectrum<T>{kernel, kLayout, len, factor});
  return zvxOk;
}

template <Layout kLayout, class T>
int32_t toSamplesMany(const Arrays<T>& arrays, int32_t len, int32_t flag) {
  const int32_t status = checkOfLength(len, arrays, flag);
  if (status != zvxOk) return status;
  const auto& kernel = Machine<T>::kernels().toSamples[len - kMinLength];
  const T* const factor = factorOf<T, Direction::Inverse>(len, flag);
  std::int64_t done = 0;
  if (arrays.srcStride == kContiguousStride<kLayout> && arrays.dstStride == 1) {
    done = runContiguous(Machine<T>::contiguous().toSamples[static_cast<int>(kLayout)], len, factor,
                         arrays);
  }
  if (done == arrays.howmany) return zvxOk;
  const Arrays<T> left = arrays.from(done);
  Side<const T> src = left.source(spectrumSize<kLayout>(len), 1, kHasBins<kLayout>);
  src.kernelTakesBins = kernel.takesBins;
  runBatch<1>(src, left.destination(len), kernel.transforms, left.howmany,
              ToSamples<T>{kernel, kLayout, len, factor});
  return zvxOk;
}

// ---- Walsh-Hadamard transforms ------------------------------------------------------------------

auto singleWht(const float*) { return zvxgWHT_32f; }
auto singleWht(const double*) { return zvxgWHT_64f; }

// Transforms that are longer than the kernels, as many at a time as a cache line has numbers. Parts
// of them get the stages of the low bits of the index: those inside runs of rows from the source to a
// block, those between the runs from there to the destination. The stages of the high bits follow in
// the destination, in place. These are the stages of a single transform in their order. Rows that lie
// powers of two apart compete for a few places of a cache, so in the block runs are an odd number of
// lines apart. A part may be twice as large if it is the only one: that takes less time than another
// pass.
template <class T>
void whtInParts(const Arrays<T>& arrays, int32_t order, const T* factor) {
  constexpr int kPartOrder = 9, kWholeOrder = 10;
  constexpr int kMostRuns = 1 << kWholeOrder / 2, kLongestRun = 1 << (kWholeOrder + 1) / 2;
  using Rows = Block<T, kLine>;
  constexpr std::ptrdiff_t kAtOnce = Rows::kStep;
  static constexpr T kNoFactor = 1;
  const auto& kernels = Machine<T>::wht();
  const int partOrder = order <= kWholeOrder ? order : kPartOrder, highOrder = order - partOrder;
  const int part = 1 << partOrder, runs = 1 << partOrder / 2, run = part / runs;
  const std::ptrdiff_t runStep = (run + 1) * kAtOnce;
  alignas(64) T numbers[kMostRuns * (kLongestRun + 1) * kAtOnce];
  // The stages of the bits of the index of so many rows.
  const auto stages = [&](int rows, const T* from, std::ptrdiff_t fromStep, T* to,
                          std::ptrdiff_t toStep, const T* by) {
    const auto bits = std::countr_zero(static_cast<unsigned>(rows));
    const auto& kernel = kernels[static_cast<std::size_t>(bits - 1)];
    kernel.run(from, fromStep, to, toStep, by, kAtOnce / kernel.transforms);
  };
  const Side<const T> src = arrays.source(1 << order);
  const Side<T> dst = arrays.destination(1 << order);
  const Side<const T> written = {dst.at, dst.stride, dst.dist, dst.elements, 1, false};
  for (std::int64_t first = 0; first < arrays.howmany; first += kAtOnce) {
    const std::int64_t count = std::min<std::int64_t>(kAtOnce, arrays.howmany - first);
    const bool fromRows = src.isRows() && count == kAtOnce;
    const bool toRows = dst.isRows() && count == kAtOnce;
    for (std::ptrdiff_t at = 0; at < dst.elements; at += part) {
      for (int i = 0; i < runs; ++i) {
        const Side<const T> from = src.part(at + i * run, run);
        T* const to = numbers + i * runStep;
        if (!fromRows) load<1>(from, first, count, kAtOnce, Rows{to});
        stages(run, fromRows ? from.transform(first) : to, fromRows ? from.stride : kAtOnce, to,
               kAtOnce, &kNoFactor);
      }
      for (int i = 0; i < run; ++i) {
        T* const from = numbers + i * kAtOnce;
        const Side<T> to = dst.part(at + i, runs, run);
        stages(runs, from, runStep, toRows ? to.transform(first) : from,
               toRows ? to.stride : runStep, highOrder == 0 ? factor : &kNoFactor);
      }
      for (int i = 0; !toRows && i < runs; ++i) {
        store<1>(Rows{numbers + i * runStep}, dst.part(at + i * run, run), first, count);
      }
    }
    const int parts = 1 << highOrder;
    for (int i = 0; parts > 1 && i < part; ++i) {
      const Side<T> column = dst.part(i, parts, part);
      T* const at = toRows ? column.transform(first) : numbers;
      const std::ptrdiff_t step = toRows ? column.stride : kAtOnce;
      if (!toRows) load<1>(written.part(i, parts, part), first, count, kAtOnce, Rows{numbers});
      stages(parts, at, step, at, step, factor);
      if (!toRows) store<1>(Rows{numbers}, column, first, count);
    }
  }
}

// Single calls, which share a buffer if they need one.
template <class T>
int32_t whtOneByOne(const Arrays<T>& arrays, int32_t order, int32_t flag, T* buffer) {
  const int bufferBytes = wht::bufferBytes<T>(order);
  const bool own = bufferBytes > 0 && buffer == nullptr;
  if (own) buffer = static_cast<T*>(zvxMalloc(bufferBytes));
  if (own && buffer == nullptr) return zvxErrNullPointer;
  oneByOne(arrays.source(1 << order), arrays.destination(1 << order), arrays.howmany,
           [&](const T* src, T* dst) {
             singleWht(src)(src, dst, order, flag, reinterpret_cast<uint8_t*>(buffer));
           });
  if (own) zvxFree(buffer);
  return zvxOk;
}

// Of contiguous transforms, whether to transpose them takes longer than rows save. Single calls read and
// write memory in order, which is all that counts beyond the caches.
template <class T>
bool isFastestOneByOne(const Arrays<T>& arrays, int32_t order) {
  constexpr int kFirstOrder = 4;
  const auto src = arrays.source(1 << order);
  const auto dst = arrays.destination(1 << order);
  return order > kLaneOrders ||
         (order >= kFirstOrder && (sizeof(T) == 8 || outgrowsCaches<1>(src, dst, arrays.howmany)));
}

template <class T>
int32_t whtMany(const Arrays<T>& arrays, int32_t order, int32_t flag, T* buffer) {
  const int32_t status = check(order >= 1 && order <= wht::kOrders, arrays, flag);
  if (status != zvxOk || arrays.howmany == 0) return status;
  const std::size_t place = static_cast<std::size_t>(order - 1);
  const T* const factor = &kWhtFactors<T>[place].ofFlag[flag];
  if (arrays.isContiguous() && isFastestOneByOne(arrays, order)) {
    return whtOneByOne(arrays, order, flag, buffer);
  }
  if (order <= kLaneOrders) {
    runRows<1>(Machine<T>::wht()[place], arrays.source(1 << order), arrays.destination(1 << order),
               arrays.howmany, factor);
    return zvxOk;
  }
  whtInParts(arrays, order, factor);
  return zvxOk;
}

// ---- DCT-IV -------------------------------------------------------------------------------------

auto singleDct4(const float*) { return zvxgDCT4_32f; }
auto singleDct4(const double*) { return zvxgDCT4_64f; }

template <class T>
int32_t dct4Many(const Arrays<T>& arrays, const Dct4Spec* spec) {
  if (arrays.howmany < 0) return zvxErrLength;
  if (arrays.howmany == 0) return zvxOk;
  if (arrays.isNull() || spec == nullptr) return zvxErrNullPointer;
  const uint32_t state = spec->state;
  if (state == 0 || state > dct4::kGeneralState<T>) return zvxErrPlanState;
  if (state <= dct4::kDirectStates<T>) {
    runRows<1, T>(Machine<T>::dct4()[state - 1], arrays.source(1 << state),
                  arrays.destination(1 << state), arrays.howmany, nullptr);
    return zvxOk;
  }
  const Side<const T> from = arrays.source(spec->length);
  const Side<T> to = arrays.destination(spec->length);
  const bool isContiguous = from.isContiguous() && to.isContiguous();
  // A plan of no use does not write all of its results, so they must not pass through a block.
  const bool isOfUse = std::has_single_bit(static_cast<unsigned>(spec->length));
  if (isContiguous || (spec->length <= kLongestInLine && isOfUse)) {
    oneByOne(from, to, arrays.howmany,
             [&](const T* src, T* dst) { singleDct4(src)(src, dst, spec); });
    return zvxOk;
  }
  for (std::int64_t k = 0; k < arrays.howmany; ++k) {
    dct4::executeStrided(*spec, from.transform(k), from.stride, to.transform(k), to.stride);
  }
  return zvxOk;
}

}  // namespace
}  // namespace zvxg::many

using namespace zvxg::many;

#define ZVXG_PARAMETERS(Source, Destination)                                   \
  const Source *src, ptrdiff_t srcStride, ptrdiff_t srcDist, Destination *dst, \
      ptrdiff_t dstStride, ptrdiff_t dstDist
#define ZVXG_ARRAYS(Real) Arrays<Real>(src, srcStride, srcDist, dst, dstStride, dstDist, howmany)
#define ZVXG_EXPORT(name, Real, Source, Destination, transforms)                   \
  int32_t name(ZVXG_PARAMETERS(Source, Destination), int32_t len, int64_t howmany, \
               int32_t flag) noexcept {                                            \
    return transforms(ZVXG_ARRAYS(Real), len, flag);                               \
  }
#define ZVXG_EXPORT_WHT(name, Real)                                                       \
  int32_t name(ZVXG_PARAMETERS(Real, Real), int32_t order, int64_t howmany, int32_t flag, \
               Real* buffer) noexcept {                                                   \
    return whtMany(ZVXG_ARRAYS(Real), order, flag, buffer);                               \
  }
#define ZVXG_EXPORT_DCT4(name, Real)                                                          \
  int32_t name(ZVXG_PARAMETERS(Real, Real), int64_t howmany, const Dct4Spec* spec) noexcept { \
    return dct4Many(ZVXG_ARRAYS(Real), spec);                                                 \
  }

extern "C" {
ZVXG_EXPORT(zvxgDFTFwd_CToC_Many_32fc, float, Complex32, Complex32, complexMany<Direction::Forward>)
ZVXG_EXPORT(zvxgDFTInv_CToC_Many_32fc, float, Complex32, Complex32, complexMany<Direction::Inverse>)
ZVXG_EXPORT(zvxgDFTFwd_CToC_Many_64fc, double, Complex64, Complex64,
            complexMany<Direction::Forward>)
ZVXG_EXPORT(zvxgDFTInv_CToC_Many_64fc, double, Complex64, Complex64,
            complexMany<Direction::Inverse>)
ZVXG_EXPORT(zvxgDFTFwd_RToCCS_Many_32f, float, float, Complex32, toSpectrumMany<Layout::Ccs>)
ZVXG_EXPORT(zvxgDFTFwd_RToPack_Many_32f, float, float, float, toSpectrumMany<Layout::Pack>)
ZVXG_EXPORT(zvxgDFTFwd_RToPerm_Many_32f, float, float, float, toSpectrumMany<Layout::Perm>)
ZVXG_EXPORT(zvxgDFTInv_CCSToR_Many_32f, float, Complex32, float, toSamplesMany<Layout::Ccs>)
ZVXG_EXPORT(zvxgDFTInv_PackToR_Many_32f, float, float, float, toSamplesMany<Layout::Pack>)
ZVXG_EXPORT(zvxgDFTInv_PermToR_Many_32f, float, float, float, toSamplesMany<Layout::Perm>)
ZVXG_EXPORT(zvxgDFTFwd_RToCCS_Many_64f, double, double, Complex64, toSpectrumMany<Layout::Ccs>)
ZVXG_EXPORT(zvxgDFTFwd_RToPack_Many_64f, double, double, double, toSpectrumMany<Layout::Pack>)
ZVXG_EXPORT(zvxgDFTFwd_RToPerm_Many_64f, double, double, double, toSpectrumMany<Layout::Perm>)
ZVXG_EXPORT(zvxgDFTInv_CCSToR_Many_64f, double, Complex64, double, toSamplesMany<Layout::Ccs>)
ZVXG_EXPORT(zvxgDFTInv_PackToR_Many_64f, double, double, double, toSamplesMany<Layout::Pack>)
ZVXG_EXPORT(zvxgDFTInv_PermToR_Many_64f, double, double, double, toSamplesMany<Layout::Perm>)
ZVXG_EXPORT(zvxgHartley_Many_32f, float, float, float, hartleyMany)
ZVXG_EXPORT(zvxgHartley_Many_64f, double, double, double, hartleyMany)
ZVXG_EXPORT_WHT(zvxgWHT_Many_32f, float)
ZVXG_EXPORT_WHT(zvxgWHT_Many_64f, double)
ZVXG_EXPORT_DCT4(zvxgDCT4_Many_32f, float)
ZVXG_EXPORT_DCT4(zvxgDCT4_Many_64f, double)
}
