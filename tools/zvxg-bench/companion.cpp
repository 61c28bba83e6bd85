#include "companion.h"

#include <array>
#include <cstddef>
#include <memory>
#include <span>
#include <utility>

#include "zvxg.hpp"

namespace bench {
namespace {

using zvxg::detail::Functions;

template <class T>
using Complex = typename Functions<T>::Complex;

// The batch of a call that is compiled for its length.
template <class Call, class T, std::size_t N>
Batch repeat(Arrays arrays) {
  return [src = static_cast<const Complex<T>*>(arrays.source),
          dst = static_cast<Complex<T>*>(arrays.dest)](int calls) {
    for (int i = 0; i < calls; ++i) Call::template run<T, N>(src, dst);
  };
}

template <class Call, class T>
Batch repeatOfLength(int n, Arrays arrays) {
  return [&]<std::size_t... kFrom0>(std::index_sequence<kFrom0...>) {
    using Maker = Batch (*)(Arrays);
    static constexpr Maker kMakers[] = {repeat<Call, T, kFrom0 + 2>...};
    return kMakers[n - 2](arrays);
  }
  (std::make_index_sequence<kLongestNamed - 1>());
}

struct Known {
  template <class T, std::size_t N>
  static void run(const Complex<T>* src, Complex<T>* dst) {
    zvxg::dft(std::span<const Complex<T>, N>(src, N), std::span<Complex<T>, N>(dst, N));
  }
};

struct Named {
  template <class T, std::size_t N>
  static void run(const Complex<T>* src, Complex<T>* dst) {
    constexpr auto kKernel = Functions<T>::Forward::kKernels[N - 2];
    kKernel(src, dst, zvxNoDiv);
  }
};

// Hides from the compiler that the sizes are right.
template <class T>
std::size_t hidden(T value) {
  asm volatile("" : "+r"(value));
  return value;
}

struct Checked {
  template <class T, std::size_t N>
  static void run(const Complex<T>* src, Complex<T>* dst) {
    zvxg::dft<N>(std::span(src, hidden(N)), std::span(dst, hidden(N)));
  }
};

constexpr std::size_t kSignals = 32;

// The arrays of a case have room for only one signal.
template <class T>
struct ManySignals {
  using Array = std::array<Complex<T>, kSignals * kLongestNamed>;
  alignas(64) Array source{};
  alignas(64) Array dest{};
};

struct CompanionBatch {
  template <class T, std::size_t N>
  static void run(ManySignals<T>& many) {
    zvxg::batch(zvxg::signals<N>(std::span(std::as_const(many.source)).first(kSignals * N)),
                zvxg::signals<N>(std::span(many.dest).first(kSignals * N)),
                [](auto x, auto y) { zvxg::dft(x, y); });
  }
};

struct NamedLoop {
  template <class T, std::size_t N>
  static void run(ManySignals<T>& many) {
    for (std::size_t i = 0; i < kSignals; ++i) {
      Named::run<T, N>(many.source.data() + i * N, many.dest.data() + i * N);
    }
  }
};

template <class Loop, class T>
Batch manySignals(int n) {
  const auto many = std::make_shared<ManySignals<T>>();
  return [&]<std::size_t... kFrom0>(std::index_sequence<kFrom0...>) {
    using Run = void (*)(ManySignals<T>&);
    static constexpr Run kRuns[] = {Loop::template run<T, kFrom0 + 2>...};
    return [many, run = kRuns[n - 2]](int calls) {
      for (int i = 0; i < calls; ++i) run(*many);
    };
  }
  (std::make_index_sequence<kLongestNamed - 1>());
}

}  // namespace

template <class T>
Batch companionKnown(const Side& side, Arrays arrays) {
  return repeatOfLength<Known, T>(side.n, arrays);
}
template <class T>
Batch companionChecked(const Side& side, Arrays arrays) {
  return repeatOfLength<Checked, T>(side.n, arrays);
}
template <class T>
Batch namedCall(const Side& side, Arrays arrays) {
  return repeatOfLength<Named, T>(side.n, arrays);
}

template <class T>
Batch companionByLength(const Side& side, Arrays arrays) {
  const std::span source(static_cast<const Complex<T>*>(arrays.source), side.n);
  const std::span dest(static_cast<Complex<T>*>(arrays.dest), side.n);
  return [=](int calls) {
    for (int i = 0; i < calls; ++i) zvxg::dft(source, dest);
  };
}
template <class T>
Batch namedEntry(const Side& side, Arrays arrays) {
  return [=](int calls) {
    for (int i = 0; i < calls; ++i) {
      Functions<T>::Forward::kByLength(static_cast<const Complex<T>*>(arrays.source),
                                       static_cast<Complex<T>*>(arrays.dest), side.n, zvxNoDiv);
    }
  };
}

template <class T>
Batch companionBatch(const Side& side, Arrays) {
  return manySignals<CompanionBatch, T>(side.n);
}
template <class T>
Batch namedLoop(const Side& side, Arrays) {
  return manySignals<NamedLoop, T>(side.n);
}

template <class T>
Batch mdctBatch(const Side& side, Arrays arrays) {
  const auto mdct = std::make_shared<zvxg::Mdct<T>>(zvxg::sineWindow<T>(side.n));
  const std::span source(static_cast<const T*>(arrays.source), side.n);
  const std::span dest(static_cast<T*>(arrays.dest), side.n);
  return [=](int calls) {
    for (int i = 0; i < calls; ++i) (*mdct)(source, dest);
  };
}

#define BENCH_INSTANTIATE(T)                                \
  template Batch companionKnown<T>(const Side&, Arrays);    \
  template Batch companionChecked<T>(const Side&, Arrays);  \
  template Batch companionByLength<T>(const Side&, Arrays); \
  template Batch namedCall<T>(const Side&, Arrays);         \
  template Batch namedEntry<T>(const Side&, Arrays);        \
  template Batch companionBatch<T>(const Side&, Arrays);    \
  template Batch namedLoop<T>(const Side&, Arrays);         \
  template Batch mdctBatch<T>(const Side&, Arrays);
BENCH_INSTANTIATE(float)
BENCH_INSTANTIATE(double)

}  // namespace bench
