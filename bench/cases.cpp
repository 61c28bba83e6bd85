// The table of families. A row names its functions, the range of what their names count, how ours
// is called and how the peers are made; a family is added by a row and, where a peer or its call is
// new, one maker.
#include "cases.h"

#include <dlfcn.h>
#include <fftw3.h>

#include <algorithm>
#include <climits>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <type_traits>

#include "plain_wht.h"
#include "zvxg.h"

namespace bench {
namespace {

template <class T>
struct Fftw;

template <>
struct Fftw<float> {
  using Complex = fftwf_complex;
  using Plan = std::remove_pointer_t<fftwf_plan>;
  static constexpr auto planDft = fftwf_plan_dft_1d;
  static constexpr auto planR2c = fftwf_plan_dft_r2c_1d;
  static constexpr auto planC2r = fftwf_plan_dft_c2r_1d;
  static constexpr auto planR2r = fftwf_plan_r2r_1d;
  static constexpr auto execute = fftwf_execute;
  static constexpr auto destroy = fftwf_destroy_plan;
};

template <>
struct Fftw<double> {
  using Complex = fftw_complex;
  using Plan = std::remove_pointer_t<fftw_plan>;
  static constexpr auto planDft = fftw_plan_dft_1d;
  static constexpr auto planR2c = fftw_plan_dft_r2c_1d;
  static constexpr auto planC2r = fftw_plan_dft_c2r_1d;
  static constexpr auto planR2r = fftw_plan_r2r_1d;
  static constexpr auto execute = fftw_execute;
  static constexpr auto destroy = fftw_destroy_plan;
};

// The passes of a transform that leave their result in the source make its norm greater, by a
// factor of sqrt(2n) at most: 11.3 at 64. So many calls stay within the range of floats.
constexpr int kCallsOnOneFill = 32;

// Calls of the plan that `make` returns, each with `finish` behind it. The planner overwrites the
// source, of `reals` numbers, and so may the plan: from spectra FFTW is up to three times as fast
// if it may. A source that is destroyed is filled again so rarely that it costs the peer a few
// tenths of a nanosecond per call, and it happens only at lengths that take it 30 and more.
template <class T, class Make, class Finish = decltype([] {})>
Batch fftwBatch(void* source, int reals, const Make& make, const Finish& finish = {}) {
  auto* const from = static_cast<T*>(source);
  const std::vector<T> numbers(from, from + reals);
  const auto fill = [numbers, from] { std::copy(numbers.begin(), numbers.end(), from); };
  auto* const plan = make();
  if (!plan) throw std::runtime_error("FFTW made no plan");
  const std::shared_ptr<typename Fftw<T>::Plan> owner(plan, Fftw<T>::destroy);
  fill();
  Fftw<T>::execute(plan);
  const bool destroys = !std::equal(numbers.begin(), numbers.end(), from);
  fill();
  return [=](int calls) {
    auto* const running = owner.get();
    const int most = destroys ? kCallsOnOneFill : INT_MAX;
    for (int left = calls; left > 0; left -= most) {
      for (int i = std::min(left, most); i > 0; --i) {
        Fftw<T>::execute(running);
        finish();
      }
      if (destroys) fill();
    }
  };
}

constexpr int kMaxLength = 64;

// One side of a case: a function of the library, if it is one, and what it is to do.
struct Side {
  void* function;
  int selector;  // what the name of the kernel counts
  int n;
};

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

// A function of the library on fixed arguments; it has to take them.
template <class... Arguments>
Batch callBatch(void* address, Arguments... arguments) {
  const auto function = reinterpret_cast<std::int32_t (*)(Arguments...)>(address);
  if (function(arguments...) != zvxOk) {
    throw std::runtime_error("a function refused its arguments");
  }
  return [=](int calls) {
    for (int i = 0; i < calls; ++i) function(arguments...);
  };
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
const Selectors kOrders = {1, 13, [](int order) { return 1 << order; }};
const Selectors kOrdersWithBuffer = {8, 13, kOrders.points};

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
  Maker ours;
  std::vector<PeerRow> peers;
  int (*additions)(int selector) = [](int) { return 0; };
};

// clang-format off
const Family kFamilies[] = {
    {"complex-forward", {"zvxgDFTFwd_CToC_%d_32fc", "zvxgDFTFwd_CToC_%d_64fc"}, kLengths,
     kernelBatch,
     {{"FFTW", {fftwDft<float, FFTW_FORWARD>, fftwDft<double, FFTW_FORWARD>}}}},
    {"complex-inverse", {"zvxgDFTInv_CToC_%d_32fc", "zvxgDFTInv_CToC_%d_64fc"}, kLengths,
     kernelBatch,
     {{"FFTW", {fftwDft<float, FFTW_BACKWARD>, fftwDft<double, FFTW_BACKWARD>}}}},
    {"real-forward-ccs", {"zvxgDFTFwd_RToCCS_%d_32f", "zvxgDFTFwd_RToCCS_%d_64f"}, kLengths,
     kernelBatch,
     {{"FFTW r2c", {fftwR2c<float>, fftwR2c<double>}},
      {"FFTW r2hc", {fftwR2r<float, FFTW_R2HC>, fftwR2r<double, FFTW_R2HC>}}}},
    {"real-inverse-ccs", {"zvxgDFTInv_CCSToR_%d_32f", "zvxgDFTInv_CCSToR_%d_64f"}, kLengths,
     kernelBatch,
     {{"FFTW c2r", {fftwC2r<float>, fftwC2r<double>}},
      {"FFTW hc2r", {fftwR2r<float, FFTW_HC2R>, fftwR2r<double, FFTW_HC2R>}}}},
    {"hartley", {"zvxgHartley_%d_32f", "zvxgHartley_%d_64f"}, kLengths,
     kernelBatch,
     {{"FFTW dht", {fftwR2r<float, FFTW_DHT>, fftwR2r<double, FFTW_DHT>}},
      {"FFTW r2c+sums", {fftwR2cAndSums<float>, fftwR2cAndSums<double>}}}},
    {"entries", {"zvxgDFTFwd_CToC_32fc", "zvxgDFTFwd_CToC_64fc"}, kShortLengths,
     entryBatch,
     {{"direct-call", {kernelBatch, kernelBatch},
       {"zvxgDFTFwd_CToC_%d_32fc", "zvxgDFTFwd_CToC_%d_64fc"}}}},
    {"wht", {"zvxgWHT_%d_32f", "zvxgWHT_%d_64f"}, kOrders,
     whtBatch,
     {{"plain-loop", {plainWhtBatch<float>, plainWhtBatch<double>}}},
     [](int order) { return order << order; }},
    {"wht-null-buffer", {"zvxgWHT_%d_32f", "zvxgWHT_%d_64f"}, kOrdersWithBuffer,
     whtBatchWithoutBuffer,
     {{"own-buffer", {whtBatch, whtBatch}, {"zvxgWHT_%d_32f", "zvxgWHT_%d_64f"}}}},
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
        if (!matches(std::string(family.name) + word + symbol, filters)) continue;
        const int n = family.selectors.points(selector);
        const Side ours = {dlsym(library, symbol.c_str()), selector, n};
        bool found = ours.function != nullptr;
        Case subject = {.family = family.name,
                        .bits = precision == 0 ? 32 : 64,
                        .n = n,
                        .symbol = symbol,
                        .oursCallsPeer = false,
                        .additions = family.additions(selector),
                        .ours = [make = family.ours, ours](Arrays a) { return make(ours, a); },
                        .peers = {}};
        for (const PeerRow& row : family.peers) {
          Side peer = {nullptr, selector, n};
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
