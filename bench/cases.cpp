// The table of families. A row names its functions, the range of what their names count, how ours
// is called and how the peer is made; a family is added by a row and, where its peer or its call is
// new, one maker.
#include "cases.h"

#include <dlfcn.h>
#include <fftw3.h>

#include <cstdint>
#include <cstdio>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <type_traits>

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
  static constexpr auto execute = fftwf_execute;
  static constexpr auto destroy = fftwf_destroy_plan;
};

template <>
struct Fftw<double> {
  using Complex = fftw_complex;
  using Plan = std::remove_pointer_t<fftw_plan>;
  static constexpr auto planDft = fftw_plan_dft_1d;
  static constexpr auto execute = fftw_execute;
  static constexpr auto destroy = fftw_destroy_plan;
};

template <class T>
Batch fftwBatch(typename Fftw<T>::Plan* plan) {
  if (!plan) throw std::runtime_error("FFTW made no plan");
  std::shared_ptr<typename Fftw<T>::Plan> owner(plan, Fftw<T>::destroy);
  return [owner](int calls) {
    auto* const running = owner.get();
    for (int i = 0; i < calls; ++i) Fftw<T>::execute(running);
  };
}

// One side of a case: a function of the library, if it is one, and what it is to do.
struct Side {
  void* function;
  int selector;  // what the name of the kernel counts
  int n;
};

template <class T, int kSign>
Batch fftwDft(const Side& side, Arrays arrays) {
  using Complex = typename Fftw<T>::Complex;
  return fftwBatch<T>(Fftw<T>::planDft(side.n, static_cast<Complex*>(arrays.source),
                                       static_cast<Complex*>(arrays.dest), kSign, FFTW_MEASURE));
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

// What the name of a function counts, and how many points that is.
struct Selectors {
  int first, last;
  int (*points)(int selector);
};

const Selectors kLengths = {2, 64, [](int n) { return n; }};
// A nanosecond is lost in the noise of a long kernel.
const Selectors kShortLengths = {2, 16, kLengths.points};

using Maker = Batch (*)(const Side&, Arrays);

struct Family {
  const char* name;
  const char* symbol[2];  // single and double; %d is the selector
  const Selectors& selectors;
  Maker ours;
  const char* peerName;
  Maker peer[2];
  const char* peerSymbol[2] = {};  // a peer that is in the library as well
};

// clang-format off
const Family kFamilies[] = {
    {"complex-forward", {"zvxgDFTFwd_CToC_%d_32fc", "zvxgDFTFwd_CToC_%d_64fc"}, kLengths,
     kernelBatch, "FFTW", {fftwDft<float, FFTW_FORWARD>, fftwDft<double, FFTW_FORWARD>}},
    {"complex-inverse", {"zvxgDFTInv_CToC_%d_32fc", "zvxgDFTInv_CToC_%d_64fc"}, kLengths,
     kernelBatch, "FFTW", {fftwDft<float, FFTW_BACKWARD>, fftwDft<double, FFTW_BACKWARD>}},
    {"entries", {"zvxgDFTFwd_CToC_32fc", "zvxgDFTFwd_CToC_64fc"}, kShortLengths,
     entryBatch, "direct-call", {kernelBatch, kernelBatch},
     {"zvxgDFTFwd_CToC_%d_32fc", "zvxgDFTFwd_CToC_%d_64fc"}},
};
// clang-format on

bool matches(const std::string& label, const std::string& filter) {
  std::istringstream words(filter);
  for (std::string word; std::getline(words, word, '-');) {
    if (label.find(word) == std::string::npos) return false;
  }
  return true;
}

std::string named(const char* pattern, int selector) {
  char symbol[64];
  std::snprintf(symbol, sizeof symbol, pattern, selector);
  return symbol;
}

}  // namespace

CaseList listCases(const std::string& libraryPath, const std::string& filter) {
  void* const library = dlopen(libraryPath.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (!library) throw std::runtime_error(dlerror());
  CaseList list;
  for (const Family& family : kFamilies) {
    for (int precision : {0, 1}) {
      for (int selector = family.selectors.first; selector <= family.selectors.last; ++selector) {
        const std::string symbol = named(family.symbol[precision], selector);
        const char* const word = precision == 0 ? " single " : " double ";
        if (!matches(std::string(family.name) + word + symbol, filter)) continue;
        const int n = family.selectors.points(selector);
        const Side ours = {dlsym(library, symbol.c_str()), selector, n};
        Side peer = {nullptr, selector, n};
        const char* const peerSymbol = family.peerSymbol[precision];
        if (peerSymbol) peer.function = dlsym(library, named(peerSymbol, selector).c_str());
        if (!ours.function || (peerSymbol && !peer.function)) {
          ++list.missing;
          continue;
        }
        list.cases.push_back(
            {family.name, precision == 0 ? 32 : 64, n, symbol, family.peerName,
             peerSymbol != nullptr,
             [make = family.ours, ours](Arrays arrays) { return make(ours, arrays); },
             [make = family.peer[precision], peer](Arrays arrays) { return make(peer, arrays); }});
      }
    }
  }
  return list;
}

}  // namespace bench
