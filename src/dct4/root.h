// The output stage of the root, from the workspace to the caller's array: for each k the r columns
// are rotated and go through an odd synthesis of length 2r. A vector holds W values of k, a block.
// With 2m = n / r, output l of the synthesis goes to dst[2ml + k] and the mirrored one to
// dst[2ml + 2m - 1 - k]. So neighbouring k are adjacent in memory, ascending or descending.
#pragma once

#include "dct4/splits.h"

namespace zvxg::dct4 {

template <class T>
struct RootStage {
  const T* in;  // rows of width r
  T* dst;
  const T* table;
  std::ptrdiff_t length;     // n
  std::ptrdiff_t lastIndex;  // 2n - 1
  std::ptrdiff_t subLength;  // 2m
  std::ptrdiff_t blocks;     // m / W
  Writing writing;
};

// The inverse of rotationPair().
template <int r>
constexpr std::array<int, r> kRotationPlace = [] {
  std::array<int, r> places{};
  for (int i = 0; i < r; ++i) places[static_cast<std::size_t>(rotationPair(r, i))] = i;
  return places;
}();

// Loads and rotates columns c .. c + 3 of the blocks of a vector, or as many as there are.
template <class S, int r, int c>
ZVXG_INLINE inline void loadRotated(const Number<S>* block, const Number<S>* table,
                                    Complex<Vector<S>> (&z)[4]) {
  using T = Number<S>;
  constexpr int kColumns = r < 4 ? r : 4;
  Vector<S> re[4] = {}, im[4] = {};  // g++ at -O3 does not see that all lanes are set
  if constexpr (r >= 4) {
    loadColumns<S>(block + c, 2 * r, re);
    loadColumns<S>(block + r + c, 2 * r, im);
  } else {
    for (int lane = 0; lane < kLanes<S>; ++lane) {
      for (int i = 0; i < kColumns; ++i) {
        re[i][lane] = block[2 * r * lane + i];
        im[i][lane] = block[2 * r * lane + r + i];
      }
    }
  }
  unroll<kColumns>([&](auto i) ZVXG_INLINE {
    const T* const pair = table + 2 * kRotationPlace<r>[c + i] * kTableLanes<T>;
    constexpr std::ptrdiff_t kBlock = 2 * r * kTableLanes<T>;
    z[i] = rotated(Complex<Vector<S>>{re[i], im[i]}, S::loadBlocks(pair, kBlock),
                   S::loadBlocks(pair + kTableLanes<T>, kBlock));
  });
}

// The places for the outputs of a group of blocks: l from up + l step on, ascending, and the
// mirrored one from down + l step on, descending.
template <class S>
struct RootOutputs {
  using T = Number<S>;
  T *up, *down;
  std::ptrdiff_t step;

  // The outputs q = kRadix (i - kCount / 2) + t, i < kCount: l = q, or the mirrored l = -q - 1.
  template <int kRadix, std::size_t kCount>
  ZVXG_INLINE inline void put(int t, int g, const std::array<Vector<S>, kCount>& y) const {
    constexpr int kHalf = kCount / 2;
    T* const firstUp = up + t * step + g * kLanes<S>;
    T* const firstDown = down + (kRadix - 1 - t) * step - (g + 1) * kLanes<S> + 1;
    unroll<kHalf>([&](auto i) ZVXG_INLINE {
      S::storeAnywhere(firstUp + i * kRadix * step, y[kHalf + i]);
      S::storeAnywhere(firstDown + i * kRadix * step, S::reversed(y[kHalf - 1 - i]));
    });
  }
};

template <class S, int r>
void rootGroup(const RootStage<Number<S>>& stage, const RootOutputs<S>& out, std::ptrdiff_t first,
               int vectors) {
  using T = Number<S>;
  using V = Vector<S>;
  constexpr std::ptrdiff_t kStep = 2 * r * kLanes<S>;  // elements, in workspace and table
  const T* const in = stage.in + first * kStep;
  const T* const table = stage.table + first * kStep;
  if constexpr (r <= 8) {
    for (int g = 0; g < vectors; ++g) {
      std::array<Complex<V>, r> z;
      unroll<(r + 3) / 4>([&](auto quarter) ZVXG_INLINE {
        Complex<V> four[4];
        loadRotated<S, r, 4 * quarter>(in + g * kStep, table + g * kStep, four);
        unroll<(r < 4 ? r : 4)>([&](auto i) ZVXG_INLINE { z[4 * quarter + i] = four[i]; });
      });
      out.template put<1>(0, g, oddSynthesis(z));
    }
  } else {
    // By a split over syntheses of length 16; each step leaves its results where its inputs were.
    constexpr int kRadix = r / 8;
    constexpr const auto& turns = kSplitTurns<T, 2 * r, kRadix>;
    Tile<S, r> tile;
    for (int g = 0; g < vectors; ++g) {
      unroll<r / 4>([&](auto quarter) ZVXG_INLINE {
        Complex<V> four[4];
        loadRotated<S, r, 4 * quarter>(in + g * kStep, table + g * kStep, four);
        unroll<4>([&](auto i) ZVXG_INLINE { tile.set(4 * quarter + i, g, four[i]); });
      });
    }
    for (int k = 0; k < 8; ++k) {
      for (int g = 0; g < vectors; ++g) {
        std::array<Complex<V>, kRadix> u;
        unroll<kRadix>([&](auto l)
                           ZVXG_INLINE { u[l] = tile.get(splitPlace(2 * r, kRadix, k, l), g); });
        const auto b = dftOfFolded(u);
        tile.set(splitPlace(2 * r, kRadix, k, 0), g, b[0]);
        unroll<kRadix - 1>([&](auto i) ZVXG_INLINE {
          constexpr int t = i + 1;
          tile.set(splitPlace(2 * r, kRadix, k, t), g,
                   rotated(b[t], turns.cos[k][t], turns.sin[k][t]));
        });
      }
    }
    for (int t = 0; t < kRadix; ++t) {
      for (int g = 0; g < vectors; ++g) {
        std::array<Complex<V>, 8> z;
        unroll<8>([&](auto k) ZVXG_INLINE { z[k] = tile.get(splitPlace(2 * r, kRadix, k, t), g); });
        out.template put<kRadix>(t, g, oddSynthesis(z));
      }
    }
  }
}

template <class S, int r>
void runRoot(const RootStage<Number<S>>& stage) {
  using T = Number<S>;
  const std::ptrdiff_t step = stage.subLength, all = stage.blocks * kTableLanes<T> / kLanes<S>;
  T* const up = stage.dst;
  T* const down = stage.dst + stage.lastIndex - (2 * r - 1) * step;
  const auto vectors = [&](std::ptrdiff_t first) {
    return static_cast<int>(std::min<std::ptrdiff_t>(kGroup<S>, all - first));
  };
  if (stage.writing == Writing::Direct) {
    for (std::ptrdiff_t first = 0; first < all; first += kGroup<S>) {
      const std::ptrdiff_t k = first * kLanes<S>;
      rootGroup<S, r>(stage, {up + k, down - k, step}, first, vectors(first));
    }
    return;
  }
  constexpr std::ptrdiff_t kRun = Staging<S>::kRun, kMost = kRun / kLanes<S>;
  Staging<S> staging;
  T* const end = stage.dst + stage.length;
  for (std::ptrdiff_t start = 0; start < all; start += kMost) {
    const std::ptrdiff_t many = std::min(kMost, all - start);
    const std::ptrdiff_t k = start * kLanes<S>, count = many * kLanes<S>;
    for (std::ptrdiff_t first = 0; first < many; first += kGroup<S>) {
      const std::ptrdiff_t offset = first * kLanes<S>;
      rootGroup<S, r>(stage, {staging.run(0) + offset, staging.run(r) + count - 1 - offset, kRun},
                      start + first, vectors(start + first));
    }
    for (int l = 0; l < r; ++l) {
      staging.copyOut(up + l * step + k, staging.run(l), count, stage.writing);
      // At a length 2^k + 1 the last element of the last run is one past the end of the array.
      T* const to = down + l * step - k - count + 1;
      staging.copyOut(to, staging.run(r + l), std::min(count, end - to), stage.writing);
    }
  }
}

// By `state` - 1 of the record.
template <class S>
constexpr auto kRoots = []<int... i>(std::integer_sequence<int, i...>) {
  return std::array{runRoot<S, 1 << i>...};
}
(std::make_integer_sequence<int, 6>());

template <class T>
void runRoot(uint32_t state, const RootStage<T>& stage) {
  const bool fits = stage.blocks * kTableLanes<T> % kLanes<Wide<T>> == 0;
  (fits ? kRoots<Wide<T>> : kRoots<Narrow<T>>)[state - 1](stage);
}

}  // namespace zvxg::dct4
