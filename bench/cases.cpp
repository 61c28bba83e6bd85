// The table of families. A row names its functions, the range of what their names count, how ours
// is called and how the peers are made; a family is added by a row and, where a peer or its call is
// new, one maker.
#include "cases.h"

#include <dlfcn.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <sstream>
#include <stdexcept>

#include "batches.h"
#include "companion.h"
#include "dct4_batches.h"
#include "fftw.h"
#include "plain_wht.h"

namespace bench {
namespace {

constexpr int kMaxLength = 64;

template <class T, int kSign>
Batch fftwDft(const Side& side, Arrays arrays) {
  using Complex = typename Fftw<T>::Complex;
  return fftwBatch<T>(arrays.source, 2 * side.n, [&] {
    return Fftw<T>::planDft(side.n, static_cast<Complex*>(arrays.source),
                            static_cast<Complex*>(arrays.dest), kSign, FFTW_MEASURE);
  });
}

template <class T>
Batch fftwR2c(const Side& side, Arrays arrays) {
  return fftwBatch<T>(arrays.source, side.n, [&] {
    return Fftw<T>::planR2c(side.n, static_cast<T*>(arrays.source),
                            static_cast<typename Fftw<T>::Complex*>(arrays.dest), FFTW_MEASURE);
  });
}

template <class T>
Batch fftwC2r(const Side& side, Arrays arrays) {
  return fftwBatch<T>(arrays.source, 2 * (side.n / 2 + 1), [&] {
    return Fftw<T>::planC2r(side.n, static_cast<typename Fftw<T>::Complex*>(arrays.source),
                            static_cast<T*>(arrays.dest), FFTW_MEASURE | FFTW_DESTROY_INPUT);
  });
}

template <class T, fftw_r2r_kind kKind>
Batch fftwR2r(const Side& side, Arrays arrays) {
  constexpr unsigned kFlags = FFTW_MEASURE | (kKind == FFTW_HC2R ? FFTW_DESTROY_INPUT : 0);
  return fftwBatch<T>(arrays.source, side.n, [&] {
    return Fftw<T>::planR2r(side.n, static_cast<T*>(arrays.source), static_cast<T*>(arrays.dest),
                            kKind, kFlags);
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
    alignas(64) T bins[kMaxLength / 2 + 1][2];
  };
  const auto spectrum = std::make_shared<Spectrum>();
  const auto plan = [&] {
    return Fftw<T>::planR2c(side.n, static_cast<T*>(arrays.source), spectrum->bins, FFTW_MEASURE);
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
  const std::shared_ptr<void> block(std::aligned_alloc(kPage, (bytes + kPage - 1) & -kPage),
                                    std::free);
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

const Selectors kLengths = {2, kMaxLength, [](int n) { return n; }};
// A nanosecond is lost in the noise of a long kernel.
const Selectors kShortLengths = {2, 16, kLengths.points};
const Selectors kFrames = {6, 13, [](int k) { return 1 << k; }};
const Selectors kOrders = {1, 13, [](int order) { return 1 << order; }};
const Selectors kOrdersWithBuffer = {8, 13, kOrders.points};
const Selectors kPowers = {1, 22, [](int k) { return 1 << k; }};
const Selectors kLongPowers = {7, 22, kPowers.points};
const Selectors kPlannedPowers = {6, 20, kPowers.points};

using Maker = Batch (*)(const Side&, Arrays);

struct PeerRow {
  const char* name;
  Maker make[2];               // single and double
  const char* symbol[2] = {};  // of a peer that is in the library as well
};

struct Family {
  const char* name;
  const char* symbol[2];  // %d is the selector
  const Selectors& selectors;
  Maker ours[2];
  std::vector<PeerRow> peers;
  int (*additions)(int selector) = [](int) { return 0; };
};

// clang-format off
const Family kFamilies[] = {
    {"complex-forward", {"zvxgDFTFwd_CToC_%d_32fc", "zvxgDFTFwd_CToC_%d_64fc"}, kLengths,
     {kernelBatch, kernelBatch},
     {{"FFTW", {fftwDft<float, FFTW_FORWARD>, fftwDft<double, FFTW_FORWARD>}}}},
    {"complex-inverse", {"zvxgDFTInv_CToC_%d_32fc", "zvxgDFTInv_CToC_%d_64fc"}, kLengths,
     {kernelBatch, kernelBatch},
     {{"FFTW", {fftwDft<float, FFTW_BACKWARD>, fftwDft<double, FFTW_BACKWARD>}}}},
    {"real-forward-ccs", {"zvxgDFTFwd_RToCCS_%d_32f", "zvxgDFTFwd_RToCCS_%d_64f"}, kLengths,
     {kernelBatch, kernelBatch},
     {{"FFTW r2c", {fftwR2c<float>, fftwR2c<double>}},
      {"FFTW r2hc", {fftwR2r<float, FFTW_R2HC>, fftwR2r<double, FFTW_R2HC>}}}},
    {"real-inverse-ccs", {"zvxgDFTInv_CCSToR_%d_32f", "zvxgDFTInv_CCSToR_%d_64f"}, kLengths,
     {kernelBatch, kernelBatch},
     {{"FFTW c2r", {fftwC2r<float>, fftwC2r<double>}},
      {"FFTW hc2r", {fftwR2r<float, FFTW_HC2R>, fftwR2r<double, FFTW_HC2R>}}}},
    {"hartley", {"zvxgHartley_%d_32f", "zvxgHartley_%d_64f"}, kLengths,
     {kernelBatch, kernelBatch},
     {{"FFTW dht", {fftwR2r<float, FFTW_DHT>, fftwR2r<double, FFTW_DHT>}},
      {"FFTW r2c+sums", {fftwR2cAndSums<float>, fftwR2cAndSums<double>}}}},
    {"entries", {"zvxgDFTFwd_CToC_32fc", "zvxgDFTFwd_CToC_64fc"}, kShortLengths,
     {entryBatch, entryBatch},
     {{"direct-call", {kernelBatch, kernelBatch},
       {"zvxgDFTFwd_CToC_%d_32fc", "zvxgDFTFwd_CToC_%d_64fc"}}}},
    {"companion-known", {"zvxgDFTFwd_CToC_%d_32fc", "zvxgDFTFwd_CToC_%d_64fc"}, kShortLengths,
     {companionKnown<float>, companionKnown<double>},
     {{"C-call", {namedCall<float>, namedCall<double>},
       {"zvxgDFTFwd_CToC_%d_32fc", "zvxgDFTFwd_CToC_%d_64fc"}}}},
    {"companion-checked", {"zvxgDFTFwd_CToC_%d_32fc", "zvxgDFTFwd_CToC_%d_64fc"}, kShortLengths,
     {companionChecked<float>, companionChecked<double>},
     {{"C-call", {namedCall<float>, namedCall<double>},
       {"zvxgDFTFwd_CToC_%d_32fc", "zvxgDFTFwd_CToC_%d_64fc"}}}},
    {"companion-entry", {"zvxgDFTFwd_CToC_32fc", "zvxgDFTFwd_CToC_64fc"}, kShortLengths,
     {companionByLength<float>, companionByLength<double>},
     {{"C-entry", {namedEntry<float>, namedEntry<double>},
       {"zvxgDFTFwd_CToC_32fc", "zvxgDFTFwd_CToC_64fc"}}}},
    {"companion-batch", {"zvxgDFTFwd_CToC_%d_32fc", "zvxgDFTFwd_CToC_%d_64fc"}, kShortLengths,
     {companionBatch<float>, companionBatch<double>},
     {{"C-loop", {namedLoop<float>, namedLoop<double>},
       {"zvxgDFTFwd_CToC_%d_32fc", "zvxgDFTFwd_CToC_%d_64fc"}}}},
    {"mdct", {"zvxgDCT4_32f", "zvxgDCT4_64f"}, kFrames,
     {mdctBatch<float>, mdctBatch<double>},
     {{"dct4", {dct4Batch<float>, dct4Batch<double>}, {"zvxgDCT4_32f", "zvxgDCT4_64f"}}}},
    {"wht", {"zvxgWHT_%d_32f", "zvxgWHT_%d_64f"}, kOrders,
     {whtBatch, whtBatch},
     {{"plain-loop", {plainWhtBatch<float>, plainWhtBatch<double>}}},
     [](int order) { return order << order; }},
    {"wht-null-buffer", {"zvxgWHT_%d_32f", "zvxgWHT_%d_64f"}, kOrdersWithBuffer,
     {whtBatchWithoutBuffer, whtBatchWithoutBuffer},
     {{"own-buffer", {whtBatch, whtBatch}, {"zvxgWHT_%d_32f", "zvxgWHT_%d_64f"}}}},
    {"dct4", {"zvxgDCT4_32f", "zvxgDCT4_64f"}, kPowers,
     {dct4Batch<float>, dct4Batch<double>},
     {{"FFTW", {fftwDct4<float>, fftwDct4<double>}}}},
    {"dct4-half", {"zvxgDCT4_32f", "zvxgDCT4_64f"}, kLongPowers,
     {dct4Batch<float>, dct4Batch<double>},
     {{"half-length-complex-FFTW", {halfLengthDct4<float>, halfLengthDct4<double>}}}},
    {"dct4-copy", {"zvxgDCT4_32f", "zvxgDCT4_64f"}, kPowers,
     {dct4Batch<float>, dct4Batch<double>},
     {{"memcpy", {copyBatch<float>, copyBatch<double>}}}},
    {"dct4-plan", {"zvxgDCT4Init_32f", "zvxgDCT4Init_64f"}, kPlannedPowers,
     {dct4Planning<float>, dct4Planning<double>},
     {{"FFTW-estimate", {fftwDct4Planning<float>, fftwDct4Planning<double>}}}},
};
// clang-format on

bool hasWords(const std::string& label, const std::string& filter) {
  std::istringstream words(filter);
  for (std::string word; std::getline(words, word, '-');) {
    if (label.find(word) == std::string::npos) return false;
  }
  return true;
}

bool matches(const std::string& label, const std::vector<std::string>& filters) {
  return filters.empty() || std::any_of(filters.begin(), filters.end(), [&](const auto& filter) {
           return hasWords(label, filter);
         });
}

std::string named(const char* pattern, int selector) {
  char symbol[64];
  std::snprintf(symbol, sizeof symbol, pattern, selector);
  return symbol;
}

}  // namespace

CaseList listCases(const std::string& libraryPath, const std::vector<std::string>& filters) {
  void* const library = dlopen(libraryPath.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (!library) throw std::runtime_error(dlerror());
  CaseList list;
  for (const Family& family : kFamilies) {
    for (int precision : {0, 1}) {
      for (int selector = family.selectors.first; selector <= family.selectors.last; ++selector) {
        const std::string symbol = named(family.symbol[precision], selector);
        const char* const word = precision == 0 ? " single " : " double ";
        const int n = family.selectors.points(selector);
        const std::string label =
            std::string(family.name) + word + symbol + " " + std::to_string(n) + " ";
        if (!matches(label, filters)) continue;
        const Side ours = {dlsym(library, symbol.c_str()), selector, n, library};
        bool found = ours.function != nullptr;
        Case subject = {
            .family = family.name,
            .bits = precision == 0 ? 32 : 64,
            .n = n,
            .symbol = symbol,
            .oursCallsPeer = false,
            .additions = family.additions(selector),
            .ours = [make = family.ours[precision], ours](Arrays a) { return make(ours, a); },
            .peers = {}};
        for (const PeerRow& row : family.peers) {
          Side peer = {nullptr, selector, n, library};
          if (row.symbol[precision]) {
            peer.function = dlsym(library, named(row.symbol[precision], selector).c_str());
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
  return list;
}

}  // namespace bench
