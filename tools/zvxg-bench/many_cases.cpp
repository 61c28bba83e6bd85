#include "many_cases.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "batches.h"
#include "dct4_batches.h"
#include "fftw.h"
#include "zvxg_many.h"

namespace bench {
namespace {

// Both arrays of a batch in half of a first-level cache or a part of a second-level cache; or so many
// transforms that they are in memory.
struct WorkingSet {
  const char* name;
  std::ptrdiff_t bytes, howmany;
  bool everyLength;
};
constexpr WorkingSet kWorkingSets[] = {
    {"L1", 24 << 10, 0, true}, {"L2", 384 << 10, 0, true}, {"memory", 0, 100'000, false}};
// Of 100,000 transforms, for which FFTW takes a second or more to choose a plan.
constexpr int kLengthsInMemory[] = {4, 8, 12, 16, 20, 31, 32, 48, 60, 61, 64};

// Element-major, or contiguous.
struct ManyLayout {
  const char* name;
  bool srcIsRows, dstIsRows;
};
constexpr ManyLayout kLayouts[] = {
    {"rows", true, true}, {"contiguous", false, false}, {"to-rows", false, true}};

// Elements of a transform on each side, and numbers in an element.
struct Shape {
  int srcElements, srcUnit, dstElements, dstUnit;
};
Shape complexShape(int n) { return {n, 2, n, 2}; }
Shape toBinsShape(int n) { return {n, 1, n / 2 + 1, 2}; }
Shape fromBinsShape(int n) { return {n / 2 + 1, 2, n, 1}; }
Shape realShape(int n) { return {n, 1, n, 1}; }

struct Strides {
  std::ptrdiff_t stride, dist;
};
Strides stridesOf(bool isRows, int elements, std::int64_t howmany) {
  return isRows ? Strides{howmany, 1} : Strides{1, elements};
}

// One batch on arrays.
struct Work {
  int selector, n;
  std::int64_t howmany;
  Shape shape;
  Strides src, dst;
  Arrays arrays;
  const Library* library;
};

// ---- Ours, and the loop of single calls over contiguous transforms

template <class... Last>
Batch manyCall(void* address, const Work& w, Last... last) {
  return callBatch<const void*, std::ptrdiff_t, std::ptrdiff_t, void*, std::ptrdiff_t,
                   std::ptrdiff_t, Last...>(address, w.arrays.source, w.src.stride, w.src.dist,
                                            w.arrays.dest, w.dst.stride, w.dst.dist, last...);
}

Batch manyByLength(void* address, const Work& w) {
  return manyCall<std::int32_t, std::int64_t, std::int32_t>(address, w, w.selector, w.howmany,
                                                            zvxNoDiv);
}

Batch manyWht(void* address, const Work& w) {
  return manyCall<std::int32_t, std::int64_t, std::int32_t, void*>(address, w, w.selector,
                                                                   w.howmany, zvxNoDiv, nullptr);
}

template <class T>
Batch manyDct4(void* address, const Work& w) {
  const Dct4Planner<T> planner({nullptr, w.selector, w.n, w.library});
  const Dct4Spec* const plan = planner.make();
  return [planner, batch = manyCall<std::int64_t, const Dct4Spec*>(address, w, w.howmany, plan)](
             int calls) { batch(calls); };
}

// call(src, dst) for one transform after the other.
template <class T, class Call>
Batch loop(const Work& w, const Call& call) {
  const auto* const src = static_cast<const T*>(w.arrays.source);
  auto* const dst = static_cast<T*>(w.arrays.dest);
  const std::ptrdiff_t srcSize = w.shape.srcElements * w.shape.srcUnit;
  const std::ptrdiff_t dstSize = w.shape.dstElements * w.shape.dstUnit;
  return [=, howmany = w.howmany](int calls) {
    for (int i = 0; i < calls; ++i) {
      for (std::int64_t k = 0; k < howmany; ++k) call(src + k * srcSize, dst + k * dstSize);
    }
  };
}

template <class T>
Batch loopOfKernels(void* address, const Work& w) {
  const auto kernel = reinterpret_cast<std::int32_t (*)(const void*, void*, std::int32_t)>(address);
  return loop<T>(w, [kernel](const T* src, T* dst) { kernel(src, dst, zvxNoDiv); });
}

template <class T>
Batch loopOfWht(void* address, const Work& w) {
  const auto kernel =
      reinterpret_cast<std::int32_t (*)(const void*, void*, std::int32_t, void*)>(address);
  return loop<T>(w, [kernel](const T* src, T* dst) { kernel(src, dst, zvxNoDiv, nullptr); });
}

template <class T>
Batch loopOfDct4(void* address, const Work& w) {
  const auto execute =
      reinterpret_cast<std::int32_t (*)(const void*, void*, const Dct4Spec*)>(address);
  const Dct4Planner<T> planner({nullptr, w.selector, w.n, w.library});
  return loop<T>(w, [execute, planner, plan = planner.make()](const T* src, T* dst) {
    execute(src, dst, plan);
  });
}

// ---- FFTW's plan for many

template <class T, class Plan>
Batch fftwMany(const Work& w, const Plan& plan) {
  const auto reals = w.howmany * w.shape.srcElements * w.shape.srcUnit;
  return fftwBatch<T>(w.arrays.source, static_cast<int>(reals), [&](const Fftw<T>& fftw) {
    const int howmany = static_cast<int>(w.howmany);
    const auto number = [](std::ptrdiff_t stride) { return static_cast<int>(stride); };
    return plan(fftw, howmany, number(w.src.stride), number(w.src.dist), number(w.dst.stride),
                number(w.dst.dist));
  });
}

template <class T, int kSign>
Batch fftwManyDft(const Work& w) {
  using Complex = typename Fftw<T>::Complex;
  return fftwMany<T>(w, [&](const Fftw<T>& fftw, int howmany, int is, int id, int os, int od) {
    return fftw.planManyDft(1, &w.n, howmany, static_cast<Complex*>(w.arrays.source), nullptr, is,
                            id, static_cast<Complex*>(w.arrays.dest), nullptr, os, od, kSign,
                            kFftwMeasure);
  });
}

template <class T>
Batch fftwManyR2c(const Work& w) {
  using Complex = typename Fftw<T>::Complex;
  return fftwMany<T>(w, [&](const Fftw<T>& fftw, int howmany, int is, int id, int os, int od) {
    return fftw.planManyR2c(1, &w.n, howmany, static_cast<T*>(w.arrays.source), nullptr, is, id,
                            static_cast<Complex*>(w.arrays.dest), nullptr, os, od, kFftwMeasure);
  });
}

template <class T>
Batch fftwManyC2r(const Work& w) {
  using Complex = typename Fftw<T>::Complex;
  return fftwMany<T>(w, [&](const Fftw<T>& fftw, int howmany, int is, int id, int os, int od) {
    return fftw.planManyC2r(1, &w.n, howmany, static_cast<Complex*>(w.arrays.source), nullptr, is,
                            id, static_cast<T*>(w.arrays.dest), nullptr, os, od,
                            kFftwMeasure | kFftwDestroyInput);
  });
}

template <class T, FftwKind kKind>
Batch fftwManyR2r(const Work& w) {
  return fftwMany<T>(w, [&](const Fftw<T>& fftw, int howmany, int is, int id, int os, int od) {
    const FftwKind kind = kKind;
    return fftw.planManyR2r(1, &w.n, howmany, static_cast<T*>(w.arrays.source), nullptr, is, id,
                            static_cast<T*>(w.arrays.dest), nullptr, os, od, &kind, kFftwMeasure);
  });
}

// ---- The families

using FunctionMaker = Batch (*)(void* address, const Work&);
using FftwMaker = Batch (*)(const Work&);

struct ManyFamily {
  const char* name;
  const char* stem;  // of the function for many, behind which its type comes
  const char* type;  // behind the bits
  int first, last;   // selectors
  int (*points)(int selector);
  Shape (*shape)(int n);
  FunctionMaker ours[2], single[2];
  const char* singleSymbol;  // of the single call: with its selector, or "" for one by its plan
  FftwMaker fftw[2];         // null where it has no such transform
};

int itself(int n) { return n; }
int powerOfTwo(int order) { return 1 << order; }

#define BOTH(maker) \
  { maker<float>, maker<double> }
// clang-format off
const ManyFamily kFamilies[] = {
    {"complex-forward", "zvxgDFTFwd_CToC", "fc", 2, 64, itself, complexShape,
     {manyByLength, manyByLength}, BOTH(loopOfKernels), "_%d",
     {fftwManyDft<float, kFftwForward>, fftwManyDft<double, kFftwForward>}},
    {"complex-inverse", "zvxgDFTInv_CToC", "fc", 2, 64, itself, complexShape,
     {manyByLength, manyByLength}, BOTH(loopOfKernels), "_%d",
     {fftwManyDft<float, kFftwBackward>, fftwManyDft<double, kFftwBackward>}},
    {"real-forward-ccs", "zvxgDFTFwd_RToCCS", "f", 2, 64, itself, toBinsShape,
     {manyByLength, manyByLength}, BOTH(loopOfKernels), "_%d", BOTH(fftwManyR2c)},
    {"real-inverse-ccs", "zvxgDFTInv_CCSToR", "f", 2, 64, itself, fromBinsShape,
     {manyByLength, manyByLength}, BOTH(loopOfKernels), "_%d", BOTH(fftwManyC2r)},
    {"real-forward-pack", "zvxgDFTFwd_RToPack", "f", 2, 64, itself, realShape,
     {manyByLength, manyByLength}, BOTH(loopOfKernels), "_%d",
     {fftwManyR2r<float, FftwKind::R2Hc>, fftwManyR2r<double, FftwKind::R2Hc>}},
    {"hartley", "zvxgHartley", "f", 2, 64, itself, realShape,
     {manyByLength, manyByLength}, BOTH(loopOfKernels), "_%d",
     {fftwManyR2r<float, FftwKind::Dht>, fftwManyR2r<double, FftwKind::Dht>}},
    {"wht", "zvxgWHT", "f", 1, 10, powerOfTwo, realShape,
     {manyWht, manyWht}, BOTH(loopOfWht), "_%d", {}},
    {"dct4", "zvxgDCT4", "f", 1, 8, powerOfTwo, realShape,
     BOTH(manyDct4), BOTH(loopOfDct4), "",
     {fftwManyR2r<float, FftwKind::Redft11>, fftwManyR2r<double, FftwKind::Redft11>}},
};
// clang-format on
#undef BOTH

std::string withSelector(std::string pattern, int selector) {
  const auto at = pattern.find("%d");
  return at == std::string::npos ? pattern : pattern.replace(at, 2, std::to_string(selector));
}

// Whole vectors of transforms of any width, so that what is left over does not count.
std::int64_t howmanyIn(const WorkingSet& set, const Shape& shape, int numberBytes) {
  if (set.howmany) return set.howmany;
  const std::ptrdiff_t turn = 64 / numberBytes;
  const std::ptrdiff_t each =
      (shape.srcElements * shape.srcUnit + shape.dstElements * shape.dstUnit) * numberBytes;
  return std::max<std::ptrdiff_t>(set.bytes / each / turn, 1) * turn;
}

bool has(const WorkingSet& set, int n) {
  return set.everyLength || std::count(std::begin(kLengthsInMemory), std::end(kLengthsInMemory), n);
}

}  // namespace

void addManyCases(const Library& library, Filters& filters, Peers peers, CaseList& list) {
  for (const WorkingSet& set : kWorkingSets) {
    for (const ManyLayout& layout : kLayouts) {
      for (const ManyFamily& family : kFamilies) {
        for (int precision : {0, 1}) {
          const int bits = precision == 0 ? 32 : 64;
          const std::string type = "_" + std::to_string(bits) + family.type;
          const std::string symbol = family.stem + ("_Many" + type);
          const std::string name =
              std::string("many-") + layout.name + "-" + set.name + "-" + family.name;
          for (int selector = family.first; selector <= family.last; ++selector) {
            const int n = family.points(selector);
            if (!has(set, n) || !filters.match(name, bits, symbol, n)) continue;
            const Shape shape = family.shape(n);
            const std::int64_t howmany = howmanyIn(set, shape, bits / 8);
            const Work work = {selector,
                               n,
                               howmany,
                               shape,
                               stridesOf(layout.srcIsRows, shape.srcElements, howmany),
                               stridesOf(layout.dstIsRows, shape.dstElements, howmany),
                               {},
                               &library};
            void* const ours = library.find(symbol);
            void* const single =
                library.find(family.stem + withSelector(family.singleSymbol, selector) + type);
            if (!ours || !single) {
              ++list.missing;
              continue;
            }
            const auto on = [work](Arrays arrays) {
              Work w = work;
              w.arrays = arrays;
              return w;
            };
            Case& subject = list.cases.emplace_back();
            subject.family = name;
            subject.bits = bits;
            subject.n = n;
            subject.symbol = symbol;
            subject.howmany = howmany;
            subject.ours = [=, make = family.ours[precision]](Arrays a) {
              return make(ours, on(a));
            };
            if (peers == Peers::None) continue;
            subject.peers.push_back(
                {"single-calls",
                 [=, make = family.single[precision]](Arrays a) { return make(single, on(a)); }});
            const bool hasFftw = bits == 32 ? Fftw<float>::isPresent() : Fftw<double>::isPresent();
            if (const FftwMaker make = family.fftw[precision]; make && hasFftw) {
              subject.peers.push_back({"FFTW-many", [=](Arrays a) { return make(on(a)); }});
            }
          }
        }
      }
    }
  }
}

void limitManyLevel(const std::string& level) {
  if (level.empty()) return;
  const std::int32_t wanted = level == "avx" ? zvxManyAvx : level == "avx512" ? zvxManyAvx512 : 0;
  if (wanted == 0) throw UsageError("--level is avx or avx512, not '" + level + "'");
  if (zvxgManyLimitLevel(wanted) != wanted) throw UsageError("this processor has no AVX-512");
}

}  // namespace bench
