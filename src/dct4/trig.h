// Sines, cosines and tangents of rational multiples of pi, for constants in code. The angle is an
// exact fraction, reduced to the first octant. The series is summed in long double; users round it.
#pragma once

namespace zvxg::dct4 {
namespace detail {

// The alternating series from x^start / start! on, for 0 <= x <= pi / 4.
constexpr long double series(long double x, int start) {
  long double sum = 0;
  constexpr int kLast = 26;  // pi / 4 to this power over its factorial is 5e-30
  for (int n = start + (kLast - start) / 2 * 2; n >= start; n -= 2) {
    sum = 1 - x * x / static_cast<long double>((n + 1) * (n + 2)) * sum;
  }
  return start == 0 ? sum : x * sum;
}

}  // namespace detail

// cos(pi numerator / denominator)
constexpr long double cosPi(int numerator, int denominator) {
  constexpr long double kPi = 3.14159265358979323846264338327950288L;
  int n = numerator % (2 * denominator);
  if (n < 0) n = -n;
  if (n > denominator) n = 2 * denominator - n;
  if (2 * n > denominator) return -cosPi(denominator - n, denominator);
  if (4 * n > denominator) {
    const long double x = kPi * static_cast<long double>(denominator - 2 * n) /
                          static_cast<long double>(2 * denominator);
    return detail::series(x, 1);
  }
  return detail::series(kPi * static_cast<long double>(n) / static_cast<long double>(denominator),
                        0);
}

constexpr long double sinPi(int numerator, int denominator) {
  return cosPi(denominator - 2 * numerator, 2 * denominator);
}

constexpr long double tanPi(int numerator, int denominator) {
  return sinPi(numerator, denominator) / cosPi(numerator, denominator);
}

}  // namespace zvxg::dct4
