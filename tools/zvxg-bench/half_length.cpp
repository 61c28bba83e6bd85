// Let z[k] = (x[2k] + i x[n-1-2k]) exp(-i pi (4k+1) / (4n)), Z its forward transform and
// y[k] = Z[k] exp(-i pi k / n). The results are X[2k] = Re y[k] and X[n-1-2k] = -Im y[k].
#include "half_length.h"

#include <cmath>
#include <numbers>
#include <vector>

#include "fftw.h"

namespace bench {

template <class T>
struct HalfLengthDct4<T>::Parts {
  struct Number {
    T re, im;
  };
  int half;
  const T* source;
  T* dest;
  std::vector<Number> before = {}, after = {};
  Number* numbers = nullptr;
  typename Fftw<T>::Plan plan = nullptr;
  const Fftw<T>& fftw = Fftw<T>::get();
};

template <class T>
HalfLengthDct4<T>::HalfLengthDct4(int n, const T* source, T* dest, unsigned plannerFlags)
    : parts_(new Parts{n / 2, source, dest}) {
  const auto turn = [n](double quarters) {
    const double angle = -std::numbers::pi * quarters / (4.0 * n);
    return typename Parts::Number{static_cast<T>(std::cos(angle)), static_cast<T>(std::sin(angle))};
  };
  for (int k = 0; k < n / 2; ++k) {
    parts_->before.push_back(turn(4.0 * k + 1));
    parts_->after.push_back(turn(4.0 * k));
  }
  void* const memory = parts_->fftw.allocate(sizeof(typename Parts::Number) * (n / 2));
  parts_->numbers = static_cast<typename Parts::Number*>(memory);
  auto* const numbers = static_cast<typename Fftw<T>::Complex*>(memory);
  parts_->plan = parts_->fftw.planDft(n / 2, numbers, numbers, kFftwForward, plannerFlags);
}

template <class T>
HalfLengthDct4<T>::~HalfLengthDct4() {
  parts_->fftw.destroy(parts_->plan);
  parts_->fftw.free(parts_->numbers);
}

template <class T>
void HalfLengthDct4<T>::run() const {
  const int half = parts_->half;
  const T* __restrict source = parts_->source;
  T* __restrict dest = parts_->dest;
  const auto* __restrict before = parts_->before.data();
  const auto* __restrict after = parts_->after.data();
  auto* __restrict numbers = parts_->numbers;
  for (int k = 0; k < half; ++k) {
    const T re = source[2 * k], im = source[2 * half - 1 - 2 * k];
    numbers[k] = {re * before[k].re - im * before[k].im, re * before[k].im + im * before[k].re};
  }
  parts_->fftw.execute(parts_->plan);
  for (int k = 0; k < half; ++k) {
    const T re = numbers[k].re, im = numbers[k].im;
    dest[2 * k] = re * after[k].re - im * after[k].im;
    dest[2 * half - 1 - 2 * k] = -(re * after[k].im + im * after[k].re);
  }
}

template class HalfLengthDct4<float>;
template class HalfLengthDct4<double>;

}  // namespace bench
