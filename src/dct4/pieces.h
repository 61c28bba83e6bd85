// The pieces of every straight-line body: complex values, complex transforms of length 2 to 8, the
// odd transform and its transpose. A number may be a scalar, or a vector each of whose lanes is a
// transform of its own; the pieces are the same for both.
//
// e(a) is cos a + i sin a. The odd transform of the reals z[-M] .. z[M-1], with L = 2M, is
//
//     W[k] = sum over q of z[q] e(pi q (2k+1) / L),   k = 0 .. M-1
//
// A radix s, with M = s p, splits it into odd transforms P_t of length 2p of y_t[Q] = z[s Q + t]:
//
//     A_t = P_t[k] e(pi t (2k+1) / L),   V[l] = sum over t < s of A_t e(2 pi t l / s)
//     W[2pl + k] = V[l],   W[2pl + 2p - 1 - k] = conj V[s - 1 - l],   l < s/2
//
// Its transpose is the odd synthesis, y[q] = Re sum over k of Z[k] e(pi q (2k+1) / L). The steps
// are the transposed ones in reverse order.
#pragma once

#include <array>
#include <utility>

#include "dct4/trig.h"
#include "frame/unroll.h"

namespace zvxg::dct4 {

// ---- Numbers ------------------------------------------------------------------------------------

// The element type of a number; for a vector that of its lanes.
template <class V>
struct ElementOf {
  using Type = V;
};
template <class V>
requires requires(V v) { v[0]; }
struct ElementOf<V> {
  using Type = std::remove_cvref_t<decltype(std::declval<V>()[0])>;
};
template <class V>
using Element = typename ElementOf<V>::Type;

template <class V>
struct Complex {
  V re, im;
};

template <class V>
ZVXG_INLINE inline Complex<V> operator+(Complex<V> a, Complex<V> b) {
  return {a.re + b.re, a.im + b.im};
}
template <class V>
ZVXG_INLINE inline Complex<V> operator-(Complex<V> a, Complex<V> b) {
  return {a.re - b.re, a.im - b.im};
}
template <class V>
ZVXG_INLINE inline Complex<V> conj(Complex<V> a) {
  return {a.re, -a.im};
}
// conj(a - b)
template <class V>
ZVXG_INLINE inline Complex<V> conjDifference(Complex<V> a, Complex<V> b) {
  return {a.re - b.re, b.im - a.im};
}

template <class V, class C>
ZVXG_INLINE inline Complex<V> rotated(Complex<V> a, C cos, C sin) {
  return {a.re * cos - a.im * sin, a.re * sin + a.im * cos};
}

// a e(pi kNumerator / kDenominator)
template <int kNumerator, int kDenominator, class V>
ZVXG_INLINE inline Complex<V> rotated(Complex<V> a) {
  if constexpr (kNumerator == 0) {
    return a;
  } else {
    constexpr auto kCos = static_cast<Element<V>>(cosPi(kNumerator, kDenominator));
    constexpr auto kSin = static_cast<Element<V>>(sinPi(kNumerator, kDenominator));
    return rotated(a, kCos, kSin);
  }
}

template <class V>
constexpr Element<V> kHalfRoot = static_cast<Element<V>>(cosPi(1, 4));

// ---- Complex transforms with positive exponent --------------------------------------------------

// The transform as a split stores it: V[0] .. V[s/2-1], then the conjugates of V[s/2] .. V[s-1].
template <class V>
ZVXG_INLINE inline std::array<Complex<V>, 2> dftFolded(const std::array<Complex<V>, 2>& a) {
  return {a[0] + a[1], conjDifference(a[0], a[1])};
}

template <class V>
ZVXG_INLINE inline std::array<Complex<V>, 4> dft4(const std::array<Complex<V>, 4>& a) {
  const Complex<V> e0 = a[0] + a[2], e1 = a[0] - a[2], o0 = a[1] + a[3], o1 = a[1] - a[3];
  return {e0 + o0, Complex<V>{e1.re - o1.im, e1.im + o1.re}, e0 - o0,
          Complex<V>{e1.re + o1.im, e1.im - o1.re}};
}

template <class V>
ZVXG_INLINE inline std::array<Complex<V>, 4> dftFolded(const std::array<Complex<V>, 4>& a) {
  const Complex<V> e0 = a[0] + a[2], e1 = a[0] - a[2], o0 = a[1] + a[3], o1 = a[1] - a[3];
  return {e0 + o0, Complex<V>{e1.re - o1.im, e1.im + o1.re}, conjDifference(e0, o0),
          Complex<V>{e1.re + o1.im, o1.re - e1.im}};
}

// The last step of the odd half of a transform of length 8 before the sums: O[l] e(pi l / 4).
template <class V>
ZVXG_INLINE inline std::array<Complex<V>, 4> turnedByEighths(const std::array<Complex<V>, 4>& o) {
  constexpr auto h = kHalfRoot<V>;
  return {o[0], Complex<V>{(o[1].re - o[1].im) * h, (o[1].re + o[1].im) * h},
          Complex<V>{-o[2].im, o[2].re},
          Complex<V>{-(o[3].re + o[3].im) * h, (o[3].re - o[3].im) * h}};
}

template <class V>
ZVXG_INLINE inline std::array<Complex<V>, 8> dft8(const std::array<Complex<V>, 8>& a) {
  const auto e = dft4<V>({a[0], a[2], a[4], a[6]});
  const auto o = turnedByEighths(dft4<V>({a[1], a[3], a[5], a[7]}));
  return {e[0] + o[0], e[1] + o[1], e[2] + o[2], e[3] + o[3],
          e[0] - o[0], e[1] - o[1], e[2] - o[2], e[3] - o[3]};
}

template <class V>
ZVXG_INLINE inline std::array<Complex<V>, 8> dftFolded(const std::array<Complex<V>, 8>& a) {
  const auto e = dft4<V>({a[0], a[2], a[4], a[6]});
  const auto o = turnedByEighths(dft4<V>({a[1], a[3], a[5], a[7]}));
  return {e[0] + o[0],
          e[1] + o[1],
          e[2] + o[2],
          e[3] + o[3],
          conjDifference(e[0], o[0]),
          conjDifference(e[1], o[1]),
          conjDifference(e[2], o[2]),
          conjDifference(e[3], o[3])};
}

// ---- Odd transform ------------------------------------------------------------------------------

// z[q] of the reals z[-M] .. z[M-1], which an array holds from z[-M] on.
template <class V, std::size_t kLength>
ZVXG_INLINE inline V at(const std::array<V, kLength>& z, int q) {
  return z[static_cast<std::size_t>(q + static_cast<int>(kLength) / 2)];
}

template <class V>
ZVXG_INLINE inline std::array<Complex<V>, 1> oddTransform(const std::array<V, 2>& z) {
  return {Complex<V>{at(z, 0), -at(z, -1)}};
}

template <class V>
ZVXG_INLINE inline std::array<Complex<V>, 2> oddTransform(const std::array<V, 4>& z) {
  constexpr auto h = kHalfRoot<V>;
  const V s1 = (at(z, 1) + at(z, -1)) * h;
  const V d1 = (at(z, 1) - at(z, -1)) * h;
  return {Complex<V>{at(z, 0) + s1, d1 - at(z, -2)}, Complex<V>{at(z, 0) - s1, d1 + at(z, -2)}};
}

// The steps of a split after its sub-transforms, for one k: twiddle factors and a transform.
template <int kLength, int k, class V, std::size_t kRadix>
ZVXG_INLINE inline std::array<Complex<V>, kRadix> splitOutputs(
    const std::array<Complex<V>, kRadix>& p) {
  std::array<Complex<V>, kRadix> a;
  unroll<kRadix>([&](auto t) ZVXG_INLINE { a[t] = rotated<t*(2 * k + 1), kLength>(p[t]); });
  return dftFolded(a);
}

// The index of output l of splitOutputs for this k.
constexpr int splitPlace(int length, int radix, int k, int l) {
  const int twoP = length / radix;
  return l < radix / 2 ? twoP * l + k : twoP * (radix - 1 - l) + twoP - 1 - k;
}

template <int kRadix, class V, std::size_t kLength>
ZVXG_INLINE inline std::array<Complex<V>, kLength / 2> oddTransformBySplit(
    const std::array<V, kLength>& z) {
  constexpr int kHalf = kLength / 2, p = kHalf / kRadix;
  std::array<std::array<Complex<V>, p>, kRadix> parts;
  unroll<kRadix>([&](auto t) ZVXG_INLINE {
    std::array<V, 2 * p> y;
    unroll<2 * p>([&](auto i) ZVXG_INLINE { y[i] = z[kRadix * i + t]; });
    parts[t] = oddTransform(y);
  });
  std::array<Complex<V>, kHalf> w;
  unroll<p>([&](auto k) ZVXG_INLINE {
    std::array<Complex<V>, kRadix> column;
    unroll<kRadix>([&](auto t) ZVXG_INLINE { column[t] = parts[t][k]; });
    const auto v = splitOutputs<kLength, k>(column);
    unroll<kRadix>([&](auto l) ZVXG_INLINE { w[splitPlace(kLength, kRadix, k, l)] = v[l]; });
  });
  return w;
}

// ---- Odd synthesis ------------------------------------------------------------------------------

template <class V>
ZVXG_INLINE inline std::array<V, 2> oddSynthesis(const std::array<Complex<V>, 1>& z) {
  return {z[0].im, z[0].re};
}

template <class V>
ZVXG_INLINE inline std::array<V, 4> oddSynthesis(const std::array<Complex<V>, 2>& z) {
  constexpr auto h = kHalfRoot<V>;
  const V t1 = (z[0].re - z[1].re) * h;
  const V t2 = (z[0].im + z[1].im) * h;
  return {z[0].im - z[1].im, t1 + t2, z[0].re + z[1].re, t1 - t2};
}

// The transform over l in a split of the synthesis, for one k; the second half of `u` is
// conjugated.
template <class V>
ZVXG_INLINE inline std::array<Complex<V>, 2> dftOfFolded(const std::array<Complex<V>, 2>& u) {
  const Complex<V> last = conj(u[1]);
  return {u[0] + last, u[0] - last};
}
template <class V>
ZVXG_INLINE inline std::array<Complex<V>, 4> dftOfFolded(const std::array<Complex<V>, 4>& u) {
  return dft4<V>({u[0], u[1], conj(u[2]), conj(u[3])});
}

template <int kRadix, class V, std::size_t kHalf>
ZVXG_INLINE inline std::array<V, 2 * kHalf> oddSynthesisBySplit(
    const std::array<Complex<V>, kHalf>& z) {
  constexpr int kLength = 2 * kHalf, p = static_cast<int>(kHalf) / kRadix;
  std::array<std::array<Complex<V>, p>, kRadix> parts;
  unroll<p>([&](auto k) ZVXG_INLINE {
    std::array<Complex<V>, kRadix> u;
    unroll<kRadix>([&](auto l) ZVXG_INLINE { u[l] = z[splitPlace(kLength, kRadix, k, l)]; });
    const auto b = dftOfFolded(u);
    unroll<kRadix>([&](auto t)
                       ZVXG_INLINE { parts[t][k] = rotated<t*(2 * k + 1), kLength>(b[t]); });
  });
  std::array<V, kLength> y;
  unroll<kRadix>([&](auto t) ZVXG_INLINE {
    const auto part = oddSynthesis(parts[t]);
    unroll<2 * p>([&](auto i) ZVXG_INLINE { y[kRadix * i + t] = part[i]; });
  });
  return y;
}

// ---- Lengths that are always split in the same way ----------------------------------------------

template <class V>
ZVXG_INLINE inline std::array<Complex<V>, 4> oddTransform(const std::array<V, 8>& z) {
  return oddTransformBySplit<2>(z);
}
template <class V>
ZVXG_INLINE inline std::array<Complex<V>, 8> oddTransform(const std::array<V, 16>& z) {
  return oddTransformBySplit<4>(z);
}
template <class V>
ZVXG_INLINE inline std::array<V, 8> oddSynthesis(const std::array<Complex<V>, 4>& z) {
  return oddSynthesisBySplit<2>(z);
}
template <class V>
ZVXG_INLINE inline std::array<V, 16> oddSynthesis(const std::array<Complex<V>, 8>& z) {
  return oddSynthesisBySplit<4>(z);
}

}  // namespace zvxg::dct4
