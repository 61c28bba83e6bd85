// Column transforms of length 2 to 64, straight from the caller's array into a workspace.
//
// A workspace holds complex rows as pairs of real rows of width w: W[k] of the column in lane j of
// position `col` is at out[w 2k + col + j] and out[w (2k+1) + col + j]. At the leaves, below splits
// whose radices have the product S, w = r S, and column c of the decimation T is at col = r T + c.
// It reads, for Q = 0 .. L/2 - 1,
//
//     y[Q]    = src[2r (S Q + T) + c]
//     y[-Q-1] = src[n - 1 - c - 2r T - 2r S (L/2 - 1 - Q)]
//
// so neighbouring columns are adjacent in memory, ascending for y[Q] and descending for y[-Q-1].
#pragma once

#include "dct4/vector.h"

namespace zvxg::dct4 {

template <class T>
struct LeafStage {
  const T* src;
  T* out;
  std::ptrdiff_t length;  // n
  std::ptrdiff_t radix;   // r
  std::ptrdiff_t splits;  // S
  Writing writing;
  std::ptrdiff_t outWidth = radix * splits;  // of the rows of `out`, if these are wider than w
};

// The inputs of a group of columns.
template <class S>
struct LeafInputs {
  using T = Number<S>;
  const T* ascending;
  const T* descending;  // first column of y[-1]
  std::ptrdiff_t step;  // from y[Q] to y[Q+1], and from y[-1] to y[-2]

  ZVXG_INLINE inline Vector<S> operator()(int q, int g) const {
    return q >= 0 ? S::loadAnywhere(ascending + q * step + g * kLanes<S>)
                  : S::loadDescending(descending + (-q - 1) * step - g * kLanes<S>);
  }
};

// e(pi t (2k+1) / L) for k < 8 and t < s.
template <class T, int kLength, int kRadix>
struct SplitTurns {
  T cos[8][kRadix], sin[8][kRadix];
  static constexpr SplitTurns make() {
    SplitTurns turns{};
    for (int k = 0; k < 8; ++k) {
      for (int t = 0; t < kRadix; ++t) {
        turns.cos[k][t] = static_cast<T>(cosPi(t * (2 * k + 1), kLength));
        turns.sin[k][t] = static_cast<T>(sinPi(t * (2 * k + 1), kLength));
      }
    }
    return turns;
  }
};
template <class T, int kLength, int kRadix>
constexpr auto kSplitTurns = SplitTurns<T, kLength, kRadix>::make();

// Stores the real part, and the imaginary part at a distance.
template <class S>
ZVXG_INLINE inline void storePair(Number<S>* re, std::ptrdiff_t distance, Complex<Vector<S>> z) {
  S::store(re, z.re);
  S::store(re + distance, z.im);
}

// A group of column transforms. `out` is the place of W[0], `width` the distance of rows there.
template <class S, int kLength>
void leafGroup(const LeafInputs<S>& in, Number<S>* out, std::ptrdiff_t width, int vectors) {
  using T = Number<S>;
  using V = Vector<S>;
  if constexpr (kLength <= 16) {
    for (int g = 0; g < vectors; ++g) {
      std::array<V, kLength> z;
      unroll<kLength>([&](auto i) ZVXG_INLINE { z[i] = in(i - kLength / 2, g); });
      const auto w = oddTransform(z);
      unroll<kLength / 2>([&](auto k) ZVXG_INLINE {
        storePair<S>(out + 2 * k * width + g * kLanes<S>, width, w[k]);
      });
    }
  } else {
    // By a split over transforms of length 16.
    constexpr int kRadix = kLength / 16;
    Tile<S, kRadix * 8> tile;
    for (int t = 0; t < kRadix; ++t) {
      const LeafInputs<S> part = {in.ascending + t * in.step,
                                  in.descending + (kRadix - 1 - t) * in.step, kRadix * in.step};
      for (int g = 0; g < vectors; ++g) {
        std::array<V, 16> z;
        unroll<16>([&](auto i) ZVXG_INLINE { z[i] = part(i - 8, g); });
        const auto w = oddTransform(z);
        unroll<8>([&](auto k) ZVXG_INLINE { tile.set(8 * t + k, g, w[k]); });
      }
    }
    constexpr const auto& turns = kSplitTurns<T, kLength, kRadix>;
    for (int k = 0; k < 8; ++k) {
      T* row[kRadix];
      for (int l = 0; l < kRadix; ++l) {
        row[l] = out + 2 * splitPlace(kLength, kRadix, k, l) * width;
      }
      for (int g = 0; g < vectors; ++g) {
        std::array<Complex<V>, kRadix> a;
        a[0] = tile.get(k, g);
        unroll<kRadix - 1>([&](auto i) ZVXG_INLINE {
          constexpr int t = i + 1;
          a[t] = rotated(tile.get(8 * t + k, g), turns.cos[k][t], turns.sin[k][t]);
        });
        const auto v = dftFolded(a);
        unroll<kRadix>([&](auto l)
                           ZVXG_INLINE { storePair<S>(row[l] + g * kLanes<S>, width, v[l]); });
      }
    }
  }
}

template <class S, int kLength>
void runLeaves(const LeafStage<Number<S>>& stage) {
  using T = Number<S>;
  const std::ptrdiff_t r = stage.radix, width = r * stage.splits, step = 2 * width;
  constexpr std::ptrdiff_t kStep = kGroup<S> * kLanes<S>;
  const auto run = [&](std::ptrdiff_t col, T* out, std::ptrdiff_t outWidth) {
    const std::ptrdiff_t c = col % r, first = 2 * (col - c) + c;
    const LeafInputs<S> in = {
        stage.src + first, stage.src + stage.length - 1 - first - (kLength / 2 - 1) * step, step};
    leafGroup<S, kLength>(in, out, outWidth, static_cast<int>(std::min(kStep, r - c) / kLanes<S>));
  };
  const std::ptrdiff_t groupStep = std::min(kStep, r);
  if (stage.writing == Writing::Direct) {
    for (std::ptrdiff_t col = 0; col < width; col += groupStep)
      run(col, stage.out + col, stage.outWidth);
    return;
  }
  constexpr std::ptrdiff_t kRun = Staging<S>::kRun;
  Staging<S> staging;
  for (std::ptrdiff_t start = 0; start < width; start += kRun) {
    const std::ptrdiff_t count = std::min(kRun, width - start);
    for (std::ptrdiff_t col = 0; col < count; col += groupStep) {
      run(start + col, staging.elements + col, kRun);
    }
    for (int row = 0; row < kLength; ++row) {
      staging.copyOut(stage.out + row * stage.outWidth + start, staging.run(row), count,
                      stage.writing);
    }
  }
}

// By `state` - 1 of the record.
template <class S>
constexpr auto kLeaves = []<int... i>(std::integer_sequence<int, i...>) {
  return std::array{runLeaves<S, 2 << i>...};
}
(std::make_integer_sequence<int, kLastLeafState>());

template <class T>
void runLeaves(uint32_t state, const LeafStage<T>& stage) {
  const bool fits = stage.radix % kLanes<Wide<T>> == 0;
  (fits ? kLeaves<Wide<T>> : kLeaves<Narrow<T>>)[state - 1](stage);
}

}  // namespace zvxg::dct4
