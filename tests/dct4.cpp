#include "dct4.h"

#include <complex>

namespace tests {
namespace {

using Complex = std::complex<long double>;

Complex unit(long double turnsOfPi) {
  const long double angle = std::numbers::pi_v<long double> * turnsOfPi;
  return {std::cos(angle), std::sin(angle)};
}

// Decimation in time, negative exponent, in place.
void fft(std::vector<Complex>& x) {
  const std::size_t n = x.size();
  for (std::size_t i = 1, j = 0; i < n; ++i) {
    std::size_t bit = n / 2;
    for (; j & bit; bit /= 2) j ^= bit;
    j ^= bit;
    if (i < j) std::swap(x[i], x[j]);
  }
  std::vector<Complex> roots(n / 2);
  for (std::size_t k = 0; k < roots.size(); ++k) {
    roots[k] = unit(-2 * static_cast<long double>(k) / static_cast<long double>(n));
  }
  for (std::size_t half = 1; half < n; half *= 2) {
    for (std::size_t start = 0; start < n; start += 2 * half) {
      for (std::size_t k = 0; k < half; ++k) {
        const Complex a = x[start + k], b = x[start + half + k] * roots[k * (n / (2 * half))];
        x[start + k] = a + b;
        x[start + half + k] = a - b;
      }
    }
  }
}

}  // namespace

std::vector<long double> dct4Definition(const std::vector<long double>& source) {
  const std::size_t n = source.size();
  std::vector<long double> cosines(8 * n);
  for (std::size_t i = 0; i < 8 * n; ++i) {
    cosines[i] = unit(static_cast<long double>(i) / (4.0L * static_cast<long double>(n))).real();
  }
  std::vector<long double> result(n);
  for (std::size_t k = 0; k < n; ++k) {
    for (std::size_t i = 0; i < n; ++i) {
      result[k] += source[i] * cosines[(2 * i + 1) * (2 * k + 1) % (8 * n)];
    }
  }
  return result;
}

std::vector<long double> fastDct4(const std::vector<long double>& source) {
  const std::size_t n = source.size(), half = n / 2;
  const auto turn = [&](std::size_t quarters) {
    return unit(-static_cast<long double>(quarters) / (4.0L * static_cast<long double>(n)));
  };
  std::vector<Complex> x(half);
  for (std::size_t k = 0; k < half; ++k) {
    x[k] = Complex(source[2 * k], source[n - 1 - 2 * k]) * turn(4 * k + 1);
  }
  fft(x);
  std::vector<long double> result(n);
  for (std::size_t k = 0; k < half; ++k) {
    const Complex y = x[k] * turn(4 * k);
    result[2 * k] = y.real();
    result[n - 1 - 2 * k] = -y.imag();
  }
  return result;
}

}  // namespace tests
