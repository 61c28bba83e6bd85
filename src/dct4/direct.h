// Straight-line code for the DCT-IV of the direct lengths, 2 to 64. As in the long lengths, N is
// split by a radix r, with m = N / (2r). Column c consists of element c from both ends of each
// block of 2r. It goes through an odd transform of length 2m, and its element k is rotated by e(pi
// (2c+1)(2k+1) / (4N)). Then for each k the r columns go through an odd synthesis of length 2r.
#pragma once

#include <immintrin.h>

#include <cstdint>

#include "dct4/pieces.h"
#include "dct4/records.h"
#include "frame/frame.h"

namespace zvxg::dct4 {

constexpr int directRadix(int length) {
  switch (length) {
    case 2: return 1;
    case 16: return 4;
    default: return 2;
  }
}

// At 64 points the columns are split into transforms of length 4 at once, as they are at 32.
template <class V, std::size_t kLength>
ZVXG_INLINE inline std::array<Complex<V>, kLength / 2> directColumn(
    const std::array<V, kLength>& z) {
  if constexpr (kLength == 32) {
    return oddTransformBySplit<8>(z);
  } else {
    return oddTransform(z);
  }
}

// The transform of numbers V: scalars, or vectors each of whose lanes is a transform of its own.
// load(i) gives element i of the source, store(i, v) takes element i of the result.
template <class V, int kLength, class Load, class Store>
ZVXG_INLINE inline void directDct4(const Load& load, const Store& store) {
  constexpr int r = directRadix(kLength), m = kLength / (2 * r);
  std::array<std::array<Complex<V>, m>, r> w;
  unroll<r>([&](auto c) ZVXG_INLINE {
    std::array<V, 2 * m> z;
    unroll<2 * m>([&](auto i) ZVXG_INLINE {
      constexpr int q = i - m;
      z[i] = load(q >= 0 ? 2 * r * q + c : -2 * r * q - 1 - c);
    });
    w[c] = directColumn(z);
  });
  // Nothing is loaded after this point, because the destination may be the source.
  unroll<m>([&](auto k) ZVXG_INLINE {
    std::array<Complex<V>, r> z;
    unroll<r>([&](auto c)
                  ZVXG_INLINE { z[c] = rotated<(2 * c + 1) * (2 * k + 1), 4 * kLength>(w[c][k]); });
    const auto y = oddSynthesis(z);
    unroll<r>([&](auto l) ZVXG_INLINE {
      store(2 * m * l + k, y[r + l]);
      store(2 * m * l + 2 * m - 1 - k, y[r - 1 - l]);
    });
  });
}

// If the two columns of a length are long enough, they are two lanes of a vector whose other lanes
// are zero. In the synthesis, which joins the columns, the lanes are four values of k.
using ColumnPair __attribute__((vector_size(16))) = float;

struct ColumnPairs {
  // Lanes 0 and 1 are p[0] and p[1], or p[1] and p[0].
  static ColumnPair load(const float* p) {
    return _mm_loadl_pi(_mm_setzero_ps(), reinterpret_cast<const __m64*>(p));
  }
  static ColumnPair loadSwapped(const float* p) {
    const __m128 pair = load(p);
    return _mm_permute_ps(pair, 0xe1);
  }
  // Lane 0 of four vectors, and lane 1 of them.
  static std::array<ColumnPair, 2> transposed(const ColumnPair* v) {
    const __m128 low = _mm_unpacklo_ps(v[0], v[1]), high = _mm_unpacklo_ps(v[2], v[3]);
    return {_mm_movelh_ps(low, high), _mm_movehl_ps(high, low)};
  }
};

template <int kLength>
void directDct4OfPairs(const float* src, float* dst) {
  constexpr int r = 2, m = kLength / (2 * r);
  std::array<ColumnPair, 2 * m> z;
  unroll<2 * m>([&](auto i) ZVXG_INLINE {
    constexpr int q = i - m;
    if constexpr (q >= 0) {
      z[i] = ColumnPairs::load(src + 2 * r * q);
    } else {
      z[i] = ColumnPairs::loadSwapped(src - 2 * r * q - 2);
    }
  });
  const auto w = directColumn(z);
  std::array<ColumnPair, m> re, im;
  unroll<m>([&](auto k) ZVXG_INLINE {
    constexpr int n = 2 * k + 1, d = 4 * kLength;
    constexpr ColumnPair cos = {static_cast<float>(cosPi(n, d)),
                                static_cast<float>(cosPi(3 * n, d))};
    constexpr ColumnPair sin = {static_cast<float>(sinPi(n, d)),
                                static_cast<float>(sinPi(3 * n, d))};
    const Complex<ColumnPair> turned = rotated(w[k], cos, sin);
    re[k] = turned.re;
    im[k] = turned.im;
  });
  // Nothing is read from src after this point, because dst may be the same.
  unroll<m / 4>([&](auto g) ZVXG_INLINE {
    constexpr int k = 4 * g;
    const auto partsRe = ColumnPairs::transposed(&re[k]), partsIm = ColumnPairs::transposed(&im[k]);
    const auto y = oddSynthesis(std::array{Complex<ColumnPair>{partsRe[0], partsIm[0]},
                                           Complex<ColumnPair>{partsRe[1], partsIm[1]}});
    unroll<r>([&](auto l) ZVXG_INLINE {
      _mm_storeu_ps(dst + 2 * m * l + k, y[r + l]);
      _mm_storeu_ps(dst + 2 * m * l + 2 * m - 4 - k, _mm_permute_ps(y[r - 1 - l], 0x1b));
    });
  });
}

// Length 4 rotates (x0, x3) by 7 pi/16 and (x1, x2) by 5 pi/16 in three lifting steps of one
// product each, which exchanges real and imaginary parts.
template <class V, class Load, class Store>
ZVXG_INLINE inline void directDct4Lifted(const Load& load, const Store& store) {
  using T = Element<V>;
  constexpr T t1 = static_cast<T>(tanPi(7, 32)), s1 = static_cast<T>(sinPi(7, 16));
  constexpr T t2 = static_cast<T>(tanPi(5, 32)), s2 = static_cast<T>(sinPi(5, 16));
  constexpr T h = kHalfRoot<T>;
  const V x0 = load(0), x1 = load(1), x2 = load(2), x3 = load(3);
  const V a = x0 - t1 * x3, b = a * s1 + x3, a2 = a - b * t1;
  const V c = x1 - t2 * x2, d = c * s2 + x2, c2 = c - d * t2;
  const V e = (a2 + c2) * h, f = (b - d) * h;
  store(0, b + d);
  store(1, f + e);
  store(2, f - e);
  store(3, a2 - c2);
}

// The transform of a direct length, of scalars or of each lane of vectors.
template <class V, int kLength, class Load, class Store>
ZVXG_INLINE inline void directDct4InLanes(const Load& load, const Store& store) {
  if constexpr (kLength == 4) {
    directDct4Lifted<V>(load, store);
  } else {
    directDct4<V, kLength>(load, store);
  }
}

template <class T, int kLength>
void directDct4OfNumbers(const Anywhere<T>* src, Anywhere<T>* dst) {
  directDct4InLanes<T, kLength>([&](int i) ZVXG_INLINE -> T { return src[i]; },
                                [&](int i, T v) ZVXG_INLINE { dst[i] = v; });
}

template <class T>
using DirectKernel = void (*)(const T*, T*);

template <class T, int kLength>
constexpr DirectKernel<T> directKernel() {
  if constexpr (sizeof(T) == 4 && kLength >= 32) {
    return directDct4OfPairs<kLength>;
  } else {
    return directDct4OfNumbers<T, kLength>;
  }
}

// By `state` - 1 of a direct length.
template <class T>
constexpr auto kDirectKernels = []<int... i>(std::integer_sequence<int, i...>) {
  return std::array{directKernel<T, 2 << i>()...};
}
(std::make_integer_sequence<int, kDirectStates<T>>());

}  // namespace zvxg::dct4
