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

template <class T, int kSign>
Batch fftwDft(int n, Arrays arrays) {
  using Complex = typename Fftw<T>::Complex;
  return fftwBatch<T>(Fftw<T>::planDft(n, static_cast<Complex*>(arrays.source),
                                       static_cast<Complex*>(arrays.dest), kSign, FFTW_MEASURE));
}

// A kernel of fixed length. All element types share one calling sequence, so one type serves.
Batch kernelBatch(void* function, Arrays arrays) {
  using Kernel = std::int32_t (*)(const void* source, void* dest, std::int32_t flag);
  const auto kernel = reinterpret_cast<Kernel>(function);
  if (kernel(arrays.source, arrays.dest, zvxNoDiv) != zvxOk) {
    throw std::runtime_error("a kernel refused its arguments");
  }
  return [kernel, arrays](int calls) {
    for (int i = 0; i < calls; ++i) kernel(arrays.source, arrays.dest, zvxNoDiv);
  };
}

// What the name of a function counts, and how many points that is.
struct Selectors {
  int first, last;
  int (*points)(int selector);
};

const Selectors kLengths = {2, 64, [](int n) { return n; }};

struct Family {
  const char* name;
  const char* symbol[2];  // single and double; %d is the selector
  const Selectors& selectors;
  Batch (*ours)(void* function, Arrays arrays);
  const char* peerName;
  Batch (*peer[2])(int n, Arrays arrays);
};

// clang-format off
const Family kFamilies[] = {
    {"complex-forward", {"zvxgDFTFwd_CToC_%d_32fc", "zvxgDFTFwd_CToC_%d_64fc"}, kLengths,
     kernelBatch, "FFTW", {fftwDft<float, FFTW_FORWARD>, fftwDft<double, FFTW_FORWARD>}},
    {"complex-inverse", {"zvxgDFTInv_CToC_%d_32fc", "zvxgDFTInv_CToC_%d_64fc"}, kLengths,
     kernelBatch, "FFTW", {fftwDft<float, FFTW_BACKWARD>, fftwDft<double, FFTW_BACKWARD>}},
};
// clang-format on

bool matches(const std::string& label, const std::string& filter) {
  std::istringstream words(filter);
  for (std::string word; std::getline(words, word, '-');) {
    if (label.find(word) == std::string::npos) return false;
  }
  return true;
}

}  // namespace

CaseList listCases(const std::string& libraryPath, const std::string& filter) {
  void* const library = dlopen(libraryPath.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (!library) throw std::runtime_error(dlerror());
  CaseList list;
  for (const Family& family : kFamilies) {
    for (int precision : {0, 1}) {
      for (int selector = family.selectors.first; selector <= family.selectors.last; ++selector) {
        char symbol[64];
        std::snprintf(symbol, sizeof symbol, family.symbol[precision], selector);
        const char* const word = precision == 0 ? " single " : " double ";
        if (!matches(std::string(family.name) + word + symbol, filter)) continue;
        void* const function = dlsym(library, symbol);
        if (!function) {
          ++list.missing;
          continue;
        }
        const int n = family.selectors.points(selector);
        list.cases.push_back(
            {family.name, precision == 0 ? 32 : 64, n, symbol, family.peerName,
             [ours = family.ours, function](Arrays arrays) { return ours(function, arrays); },
             [peer = family.peer[precision], n](Arrays arrays) { return peer(n, arrays); }});
      }
    }
  }
  return list;
}

}  // namespace bench
