// The functions of FFTW that are peers here. They are loaded when the program runs, so neither the
// build nor the start needs them. The declarations are part of the documented interface of FFTW 3.
#pragma once

#include <algorithm>
#include <climits>
#include <memory>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

#include "cases.h"

namespace bench {

constexpr int kFftwForward = -1;
constexpr int kFftwBackward = 1;

enum class FftwKind {  // the kind of a real-to-real transform
  R2Hc = 0,
  Hc2R = 1,
  Dht = 2,
  Redft11 = 6
};

constexpr unsigned kFftwMeasure = 0;
constexpr unsigned kFftwDestroyInput = 1U << 0;
constexpr unsigned kFftwEstimate = 1U << 6;

template <class T>
struct Fftw {
  using Complex = T[2];
  struct PlanRecord;
  using Plan = PlanRecord*;

  Plan (*planDft)(int n, Complex* in, Complex* out, int sign, unsigned flags);
  Plan (*planR2c)(int n, T* in, Complex* out, unsigned flags);
  Plan (*planC2r)(int n, Complex* in, T* out, unsigned flags);
  Plan (*planR2r)(int n, T* in, T* out, FftwKind kind, unsigned flags);
  // Of `rank` dimensions n, which here is one.
  Plan (*planManyDft)(int rank, const int* n, int howmany, Complex* in, const int* inEmbed,
                      int inStride, int inDist, Complex* out, const int* outEmbed, int outStride,
                      int outDist, int sign, unsigned flags);
  Plan (*planManyR2c)(int rank, const int* n, int howmany, T* in, const int* inEmbed, int inStride,
                      int inDist, Complex* out, const int* outEmbed, int outStride, int outDist,
                      unsigned flags);
  Plan (*planManyC2r)(int rank, const int* n, int howmany, Complex* in, const int* inEmbed,
                      int inStride, int inDist, T* out, const int* outEmbed, int outStride,
                      int outDist, unsigned flags);
  Plan (*planManyR2r)(int rank, const int* n, int howmany, T* in, const int* inEmbed, int inStride,
                      int inDist, T* out, const int* outEmbed, int outStride, int outDist,
                      const FftwKind* kind, unsigned flags);
  void (*execute)(Plan plan);
  void (*destroy)(Plan plan);
  void* (*allocate)(std::size_t bytes);
  void (*free)(void* block);
  const char* version;

  static std::string file();
  // Whether the library of this precision is on this machine.
  static bool isPresent();
  // Its functions. Call this only if the library is present.
  static const Fftw& get();
};

// FFTW measures its plans up to this length. Above it estimates them, which saves seconds.
constexpr int kLongestMeasured = 1 << 16;
constexpr unsigned plannerFlags(int n) {
  return n <= kLongestMeasured ? kFftwMeasure : kFftwEstimate;
}

// If a transform leaves its results in the source, each call multiplies the norm of the source by
// sqrt(2n) at most, 11.3 at 64 points. After this many calls it is still within the range of
// floats.
constexpr int kCallsOnOneFill = 32;

// Calls of the plan that `make` returns, each followed by `finish`. The planner overwrites the
// source of `reals` numbers. The plan may do so too: FFTW's transforms from spectra are then up to
// three times as fast. A source that is destroyed is refilled so rarely that it costs the peer a
// few tenths of a nanosecond per call. This happens only at lengths where a call takes 30 ns or
// more.
template <class T, class Make, class Finish = decltype([] {})>
Batch fftwBatch(void* source, int reals, const Make& make, const Finish& finish = {}) {
  const Fftw<T>& fftw = Fftw<T>::get();
  auto* const from = static_cast<T*>(source);
  const std::vector<T> numbers(from, from + reals);
  const auto fill = [numbers, from] { std::copy(numbers.begin(), numbers.end(), from); };
  const typename Fftw<T>::Plan plan = make(fftw);
  if (!plan) throw std::runtime_error("FFTW made no plan");
  const std::shared_ptr<typename Fftw<T>::PlanRecord> owner(plan, fftw.destroy);
  fill();
  fftw.execute(plan);
  const bool destroys = !std::equal(numbers.begin(), numbers.end(), from);
  fill();
  return [=, execute = fftw.execute](int calls) {
    const typename Fftw<T>::Plan running = owner.get();
    const int most = destroys ? kCallsOnOneFill : INT_MAX;
    for (int left = calls; left > 0; left -= most) {
      for (int i = std::min(left, most); i > 0; --i) {
        execute(running);
        finish();
      }
      if (destroys) fill();
    }
  };
}

}  // namespace bench
