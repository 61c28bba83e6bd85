// The body of Mdct and Imdct, after H. S. Malvar, "Signal Processing with Lapped Transforms"
// (1992).
//
// Let w be the rising half of the window, r[n] = w[n] and s[n] = w[N-1-n]. In each block of N
// samples, every sample is combined with its mirror,
//
//     p[n] = s[n] x[n] + r[n] x[N-1-n]
//     q[n] = r[n] x[n] - s[n] x[N-1-n],    n = 0 .. N/2-1,
//
// and a frame is the DCT-IV of -p of its second block, reversed, followed by q of its first block.
// Both steps are their own inverses: the DCT-IV up to its factor, and the matrix (s r; r -s)
// because s^2 + r^2 = 1. So the inverse does them in the other order. In both directions half a
// block is kept from one call to the next. The factor sqrt(2/N) of the transform is part of r and
// s.
#pragma once

#include <emmintrin.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <limits>
#include <span>
#include <string>
#include <type_traits>
#include <vector>

#include "zvxg/arrays.hpp"
#include "zvxg/dct4.hpp"

namespace zvxg::detail {

// Vectors of 16 bytes, which every x86-64 has. Compilers do not vectorise the loops below, because
// one index rises while another falls. A scalar is a vector of one lane.
struct Floats {
  __m128 lanes;
};
inline Floats operator+(Floats x, Floats y) { return {_mm_add_ps(x.lanes, y.lanes)}; }
inline Floats operator-(Floats x, Floats y) { return {_mm_sub_ps(x.lanes, y.lanes)}; }
inline Floats operator*(Floats x, Floats y) { return {_mm_mul_ps(x.lanes, y.lanes)}; }
inline Floats operator-(Floats x) { return {_mm_xor_ps(x.lanes, _mm_set1_ps(-0.0f))}; }
inline Floats reversed(Floats x) { return {_mm_shuffle_ps(x.lanes, x.lanes, 0b00011011)}; }

struct Doubles {
  __m128d lanes;
};
inline Doubles operator+(Doubles x, Doubles y) { return {_mm_add_pd(x.lanes, y.lanes)}; }
inline Doubles operator-(Doubles x, Doubles y) { return {_mm_sub_pd(x.lanes, y.lanes)}; }
inline Doubles operator*(Doubles x, Doubles y) { return {_mm_mul_pd(x.lanes, y.lanes)}; }
inline Doubles operator-(Doubles x) { return {_mm_xor_pd(x.lanes, _mm_set1_pd(-0.0))}; }
inline Doubles reversed(Doubles x) { return {_mm_shuffle_pd(x.lanes, x.lanes, 0b01)}; }

inline float reversed(float x) { return x; }
inline double reversed(double x) { return x; }

template <class V, class T>
V load(const T* from) {
  V value;
  std::memcpy(&value, from, sizeof value);
  return value;
}
template <class V, class T>
void store(T* to, V value) {
  std::memcpy(to, &value, sizeof value);
}

template <Real T>
class Lap {
 public:
  Lap(const char* name, std::span<const T> window)
      : name_(name),
        dct4_(window.size()),
        half_(window.size() / 2),
        rising_(half_),
        falling_(half_),
        carry_(half_),
        folded_(window.size()) {
    const long double gain = std::sqrt(2 / static_cast<long double>(window.size()));
    for (std::size_t n = 0; n < half_; ++n) {
      const std::size_t mirror = window.size() - 1 - n;
      const long double r = window[n], s = window[mirror];
      if (!(std::abs(r * r + s * s - 1) <= 16 * std::numeric_limits<T>::epsilon())) {
        fail(name, "the squares of elements " + std::to_string(n) + " and " +
                       std::to_string(mirror) + " of the window do not add up to 1");
      }
      rising_[n] = static_cast<T>(gain * r);
      falling_[n] = static_cast<T>(gain * s);
    }
  }

  std::size_t length() const noexcept { return folded_.size(); }
  void reset() noexcept { std::fill(carry_.begin(), carry_.end(), T(0)); }

  void analyse(std::span<const T> samples, std::span<T> coefficients) {
    checkSize(name_, "the block of samples", samples.size(), length());
    checkSize(name_, "the array of coefficients", coefficients.size(), length());
    forEachPair([half = half_, in = samples.data(), folded = folded_.data(),
                 carry = carry_.data()]<class V>(std::size_t n, std::size_t mirror, V r, V s) {
      const V x = load<V>(in + n), y = reversed(load<V>(in + mirror));
      store(folded + mirror - half, reversed(-(s * x + r * y)));
      store(folded + half + n, load<V>(carry + n));
      store(carry + n, r * x - s * y);
    });
    dct4_(folded_, coefficients);
  }

  void synthesise(std::span<const T> coefficients, std::span<T> samples) {
    checkSize(name_, "the array of coefficients", coefficients.size(), length());
    checkSize(name_, "the block of samples", samples.size(), length());
    dct4_(coefficients, folded_);
    forEachPair([half = half_, out = samples.data(), folded = folded_.data(),
                 carry = carry_.data()]<class V>(std::size_t n, std::size_t mirror, V r, V s) {
      const V p = load<V>(carry + n), q = load<V>(folded + half + n);
      store(out + n, s * p + r * q);
      store(out + mirror, reversed(r * p - s * q));
      store(carry + n, -reversed(load<V>(folded + mirror - half)));
    });
  }

 private:
  // Calls body(n, mirror, r, s) for each vector of samples, from n on; their mirrors start at
  // `mirror`.
  template <class Body>
  void forEachPair(const Body& body) const {
    const auto serve = [&, rising = rising_.data(), falling = falling_.data()]<class V>(V) {
      constexpr std::size_t kLanes = sizeof(V) / sizeof(T);
      for (std::size_t n = 0, half = half_; n < half; n += kLanes) {
        body(n, 2 * half - kLanes - n, load<V>(rising + n), load<V>(falling + n));
      }
    };
    using Vector = std::conditional_t<sizeof(T) == 4, Floats, Doubles>;
    if (half_ % (sizeof(Vector) / sizeof(T)) == 0) {
      serve(Vector{});
    } else {
      serve(T{});
    }
  }

  const char* name_;
  Dct4<T> dct4_;
  std::size_t half_;
  std::vector<T> rising_, falling_, carry_, folded_;
};

}  // namespace zvxg::detail
