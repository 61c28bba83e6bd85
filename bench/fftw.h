// FFTW's names by precision, and a batch of calls of one of its plans.
#pragma once

#include <fftw3.h>

#include <algorithm>
#include <climits>
#include <memory>
#include <stdexcept>
#include <type_traits>
#include <vector>

#include "cases.h"

namespace bench {

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
  static constexpr auto allocate = fftwf_malloc;
  static constexpr auto free = fftwf_free;
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
  static constexpr auto allocate = fftw_malloc;
  static constexpr auto free = fftw_free;
};

// FFTW measures its plans up to this length; above it estimates, which takes seconds less.
constexpr int kLongestMeasured = 1 << 16;
constexpr unsigned plannerFlags(int n) {
  return n <= kLongestMeasured ? FFTW_MEASURE : FFTW_ESTIMATE;
}

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

}  // namespace bench
