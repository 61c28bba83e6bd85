// The table of families. A row names its functions, the range of what their names count, how ours
// is called and how the peers are made; a family is added by a row and, where a peer or its call is
// new, one maker.
#include "cases.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <stdexcept>

#include "aligned.h"
#include "batches.h"
#include "companion.h"
#include "dct4_batches.h"
#include "fftw.h"
#include "many_cases.h"
#include "plain_wht.h"

namespace bench {
namespace {

template <class T, int kSign>
Batch fftwDft(const Side& side, Arrays arrays) {
  using Complex = typename Fftw<T>::Complex;
  return fftwBatch<T>(arrays.source, 2 * side.n, [&](const Fftw<T>& fftw) {
    return fftw.planDft(side.n, static_cast<Complex*>(arrays.source),
                        static_cast<Complex*>(arrays.dest), kSign, kFftwMeasure);
  });
}

template <class T>
Batch fftwR2c(const Side& side, Arrays arrays) {
  return fftwBatch<T>(arrays.source, side.n, [&](const Fftw<T>& fftw) {
    return fftw.planR2c(side.n, static_cast<T*>(arrays.source),
                        static_cast<typename Fftw<T>::Complex*>(arrays.dest), kFftwMeasure);
  });
}

template <class T>
Batch fftwC2r(const Side& side, Arrays arrays) {
  return fftwBatch<T>(arrays.source, 2 * (side.n / 2 + 1), [&](const Fftw<T>& fftw) {
    return fftw.planC2r(side.n, static_cast<typename Fftw<T>::Complex*>(arrays.source),
                        static_cast<T*>(arrays.dest), kFftwMeasure | kFftwDestroyInput);
  });
}

template <class T, FftwKind kKind>
Batch fftwR2r(const Side& side, Arrays arrays) {
  constexpr unsigned kFlags = kFftwMeasure | (kKind == FftwKind::Hc2R ? kFftwDestroyInput : 0);
  return fftwBatch<T>(arrays.source, side.n, [&](const Fftw<T>& fftw) {
    return fftw.planR2r(side.n, static_cast<T*>(arrays.source), static_cast<T*>(arrays.dest), kKind,
                        kFlags);
  });
}

// What a caller would write who has the DFT X: cas = cos + sin, so H[k] = Re X[k] - Im X[k].
template <class T>
void hartleyOfSpectrum(const T (*spectrum)[2], T* dest, int n) {
  dest[0] = spectrum[0][0];
  for (int k = 1; k <= n / 2; ++k) {
    dest[k] = spectrum[k][0] - spectrum[k][1];
    dest[n - k] = spectrum[k][0] + spectrum[k][1];
  }
}

template <class T>
Batch fftwR2cAndSums(const Side& side, Arrays arrays) {
  struct Spectrum {
    alignas(64) T bins[kernelgen::kMaxLength / 2 + 1][2];
  };
  const auto spectrum = std::make_shared<Spectrum>();
  const auto plan = [&](const Fftw<T>& fftw) {
    return fftw.planR2c(side.n, static_cast<T*>(arrays.source), spectrum->bins, kFftwMeasure);
  };
  return fftwBatch<T>(arrays.source, side.n, plan,
                      [spectrum, dest = static_cast<T*>(arrays.dest), n = side.n] {
                        hartleyOfSpectrum(spectrum->bins, dest, n);
                      });
}

// All element types share one calling sequence, so void serves.
Batch kernelBatch(const Side& side, Arrays arrays) {
  return callBatch<const void*, void*, std::int32_t>(side.function, arrays.source, arrays.dest,
                                                     zvxNoDiv);
}

Batch entryBatch(const Side& side, Arrays arrays) {
  return callBatch<const void*, void*, std::int32_t, std::int32_t>(
      side.function, arrays.source, arrays.dest, side.selector, zvxNoDiv);
}

// The buffer is at no equal offset into a page with source and destination, see measure.cpp.
Batch whtBatch(const Side& side, Arrays arrays) {
  constexpr std::size_t kPage = 4096, kOffset = 64 * 29;
  const std::size_t bytes = kOffset + 2 * sizeof(double) * static_cast<std::size_t>(side.n);
  const std::shared_ptr<void> block = api::alignedMemory(kPage, bytes);
  void* const buffer = static_cast<std::byte*>(block.get()) + kOffset;
  return [block, batch = callBatch<const void*, void*, std::int32_t, void*>(
                     side.function, arrays.source, arrays.dest, zvxNoDiv, buffer)](int calls) {
    batch(calls);
  };
}

Batch whtBatchWithoutBuffer(const Side& side, Arrays arrays) {
  return callBatch<const void*, void*, std::int32_t, void*>(side.function, arrays.source,
                                                            arrays.dest, zvxNoDiv, nullptr);
}

template <class T>
Batch plainWhtBatch(const Side& side, Arrays arrays) {
  return [order = side.selector, arrays](int calls) {
    for (int i = 0; i < calls; ++i) {
      plainWht(static_cast<const T*>(arrays.source), static_cast<T*>(arrays.dest), order, T(1));
    }
  };
}

// What the name of a function counts, and how many points that is.
struct Selectors {
  int first, last;
  int (*points)(int selector);
};

const Selectors kLengths = {2, kernelgen::kMaxLength, [](int n) { return n; }};
// A nanosecond is lost in the noise of a long kernel.
const Selectors kShortLengths = {2, 16, kLengths.points};
const Selectors kFrames = {6, 13, [](int k) { return 1 << k; }};
const Selectors kOrders = {1, 13, [](int order) { return 1 << order; }};
const Selectors kOrdersWithBuffer = {8, 13, kOrders.points};
const Selectors kPowers = {1, 22, [](int k) { return 1 << k; }};
const Selectors kLongPowers = {3, 22, kPowers.points};
const Selectors kPlannedPowers = {6, 20, kPowers.points};

using Maker = Batch (*)(const Side&, Arrays);

struct PeerRow {
  const char* name;
  Maker make[2];               // single and double
  const char* symbol[2] = {};  // of a peer that is in the library as well
  bool isFftw = true;
};

struct Family {
  const char* name;
  const char* symbol[2];  // %d is the selector
  const Selectors& selectors;
  Maker ours[2];
  std::vector<PeerRow> peers;
  int (*additions)(int selector) = [](int) { return 0; };
};

const std::vector<PeerRow> kFftwForward1d = {
    {"FFTW", {fftwDft<float, kFftwForward>, fftwDft<double, kFftwForward>}}};
const std::vector<PeerRow> kFftwBackward1d = {
    {"FFTW", {fftwDft<float, kFftwBackward>, fftwDft<double, kFftwBackward>}}};
const std::vector<PeerRow> kFftwToSpectrum = {
    {"FFTW r2c", {fftwR2c<float>, fftwR2c<double>}},
    {"FFTW r2hc", {fftwR2r<float, FftwKind::R2Hc>, fftwR2r<double, FftwKind::R2Hc>}}};
const std::vector<PeerRow> kFftwToSamples = {
    {"FFTW c2r", {fftwC2r<float>, fftwC2r<double>}},
    {"FFTW hc2r", {fftwR2r<float, FftwKind::Hc2R>, fftwR2r<double, FftwKind::Hc2R>}}};

// clang-format off
const Family kFamilies[] = {
    {"complex-forward", {"zvxgDFTFwd_CToC_%d_32fc", "zvxgDFTFwd_CToC_%d_64fc"}, kLengths,
     {kernelBatch, kernelBatch}, kFftwForward1d},
    {"complex-inverse", {"zvxgDFTInv_CToC_%d_32fc", "zvxgDFTInv_CToC_%d_64fc"}, kLengths,
     {kernelBatch, kernelBatch}, kFftwBackward1d},
    {"real-forward-ccs", {"zvxgDFTFwd_RToCCS_%d_32f", "zvxgDFTFwd_RToCCS_%d_64f"}, kLengths,
     {kernelBatch, kernelBatch}, kFftwToSpectrum},
    {"real-forward-pack", {"zvxgDFTFwd_RToPack_%d_32f", "zvxgDFTFwd_RToPack_%d_64f"}, kLengths,
     {kernelBatch, kernelBatch}, kFftwToSpectrum},
    {"real-forward-perm", {"zvxgDFTFwd_RToPerm_%d_32f", "zvxgDFTFwd_RToPerm_%d_64f"}, kLengths,
     {kernelBatch, kernelBatch}, kFftwToSpectrum},
    {"real-inverse-ccs", {"zvxgDFTInv_CCSToR_%d_32f", "zvxgDFTInv_CCSToR_%d_64f"}, kLengths,
     {kernelBatch, kernelBatch}, kFftwToSamples},
    {"real-inverse-pack", {"zvxgDFTInv_PackToR_%d_32f", "zvxgDFTInv_PackToR_%d_64f"}, kLengths,
     {kernelBatch, kernelBatch}, kFftwToSamples},
    {"real-inverse-perm", {"zvxgDFTInv_PermToR_%d_32f", "zvxgDFTInv_PermToR_%d_64f"}, kLengths,
     {kernelBatch, kernelBatch}, kFftwToSamples},
    {"hartley", {"zvxgHartley_%d_32f", "zvxgHartley_%d_64f"}, kLengths,
     {kernelBatch, kernelBatch},
     {{"FFTW dht", {fftwR2r<float, FftwKind::Dht>, fftwR2r<double, FftwKind::Dht>}},
      {"FFTW r2c+sums", {fftwR2cAndSums<float>, fftwR2cAndSums<double>}}}},
    {"entries", {"zvxgDFTFwd_CToC_32fc", "zvxgDFTFwd_CToC_64fc"}, kShortLengths,
     {entryBatch, entryBatch},
     {{"direct-call", {kernelBatch, kernelBatch},
       {"zvxgDFTFwd_CToC_%d_32fc", "zvxgDFTFwd_CToC_%d_64fc"}, false}}},
    {"companion-known", {"zvxgDFTFwd_CToC_%d_32fc", "zvxgDFTFwd_CToC_%d_64fc"}, kShortLengths,
     {companionKnown<float>, companionKnown<double>},
     {{"C-call", {namedCall<float>, namedCall<double>}, {"zvxgDFTFwd_CToC_%d_32fc", "zvxgDFTFwd_CToC_%d_64fc"}, false}}},
    {"companion-checked", {"zvxgDFTFwd_CToC_%d_32fc", "zvxgDFTFwd_CToC_%d_64fc"}, kShortLengths,
     {companionChecked<float>, companionChecked<double>},
     {{"C-call", {namedCall<float>, namedCall<double>}, {"zvxgDFTFwd_CToC_%d_32fc", "zvxgDFTFwd_CToC_%d_64fc"}, false}}},
    {"companion-entry", {"zvxgDFTFwd_CToC_32fc", "zvxgDFTFwd_CToC_64fc"}, kShortLengths,
     {companionByLength<float>, companionByLength<double>},
     {{"C-entry", {namedEntry<float>, namedEntry<double>}, {"zvxgDFTFwd_CToC_32fc", "zvxgDFTFwd_CToC_64fc"}, false}}},
    {"companion-batch", {"zvxgDFTFwd_CToC_%d_32fc", "zvxgDFTFwd_CToC_%d_64fc"}, kShortLengths,
     {companionBatch<float>, companionBatch<double>},
     {{"C-loop", {namedLoop<float>, namedLoop<double>}, {"zvxgDFTFwd_CToC_%d_32fc", "zvxgDFTFwd_CToC_%d_64fc"}, false}}},
    {"mdct", {"zvxgDCT4_32f", "zvxgDCT4_64f"}, kFrames,
     {mdctBatch<float>, mdctBatch<double>},
     {{"dct4", {dct4Batch<float>, dct4Batch<double>}, {"zvxgDCT4_32f", "zvxgDCT4_64f"}, false}}},
    {"wht", {"zvxgWHT_%d_32f", "zvxgWHT_%d_64f"}, kOrders,
     {whtBatch, whtBatch},
     {{"plain-loop", {plainWhtBatch<float>, plainWhtBatch<double>}, {}, false}},
     [](int order) { return order << order; }},
    {"wht-null-buffer", {"zvxgWHT_%d_32f", "zvxgWHT_%d_64f"}, kOrdersWithBuffer,
     {whtBatchWithoutBuffer, whtBatchWithoutBuffer},
     {{"own-buffer", {whtBatch, whtBatch}, {"zvxgWHT_%d_32f", "zvxgWHT_%d_64f"}, false}}},
    {"dct4", {"zvxgDCT4_32f", "zvxgDCT4_64f"}, kPowers,
     {dct4Batch<float>, dct4Batch<double>},
     {{"FFTW", {fftwDct4<float>, fftwDct4<double>}}}},
    {"dct4-half", {"zvxgDCT4_32f", "zvxgDCT4_64f"}, kLongPowers,
     {dct4Batch<float>, dct4Batch<double>},
     {{"half-length-complex-FFTW", {halfLengthDct4<float>, halfLengthDct4<double>}}}},
    {"dct4-copy", {"zvxgDCT4_32f", "zvxgDCT4_64f"}, kPowers,
     {dct4Batch<float>, dct4Batch<double>},
     {{"memcpy", {copyBatch<float>, copyBatch<double>}, {}, false}}},
    {"dct4-plan", {"zvxgDCT4Init_32f", "zvxgDCT4Init_64f"}, kPlannedPowers,
     {dct4Planning<float>, dct4Planning<double>},
     {{"FFTW-estimate", {fftwDct4Planning<float>, fftwDct4Planning<double>}}}},
};
// clang-format on

std::string named(const char* pattern, int selector) {
  char symbol[64];
  std::snprintf(symbol, sizeof symbol, pattern, selector);
  return symbol;
}

bool takesPart(const PeerRow& row, int precision, Peers peers) {
  if (peers == Peers::None) return false;
  const bool hasFftw = precision == 0 ? Fftw<float>::isPresent() : Fftw<double>::isPresent();
  return !row.isFftw || hasFftw;
}

}  // namespace

CaseList listCases(const Library& library, Filters& filters, Peers peers) {
  CaseList list;
  for (const Family& family : kFamilies) {
    for (int precision : {0, 1}) {
      for (int selector = family.selectors.first; selector <= family.selectors.last; ++selector) {
        const std::string symbol = named(family.symbol[precision], selector);
        const int n = family.selectors.points(selector), bits = precision == 0 ? 32 : 64;
        if (!filters.match(family.name, bits, symbol, n)) continue;
        const Side ours = {library.find(symbol), selector, n, &library};
        bool found = ours.function != nullptr;
        Case subject = {
            .family = family.name,
            .bits = bits,
            .n = n,
            .symbol = symbol,
            .oursCallsPeer = false,
            .additions = family.additions(selector),
            .ours = [make = family.ours[precision], ours](Arrays a) { return make(ours, a); },
            .peers = {}};
        for (const PeerRow& row : family.peers) {
          if (!takesPart(row, precision, peers)) continue;
          Side peer = {nullptr, selector, n, &library};
          if (row.symbol[precision]) {
            peer.function = library.find(named(row.symbol[precision], selector));
            found = found && peer.function;
            subject.oursCallsPeer = true;
          }
          subject.peers.push_back(
              {row.name, [make = row.make[precision], peer](Arrays a) { return make(peer, a); }});
        }
        if (found) {
          list.cases.push_back(std::move(subject));
        } else {
          ++list.missing;
        }
      }
    }
  }
  if (filters.mention("many")) addManyCases(library, filters, peers, list);
  return list;
}

}  // namespace bench
