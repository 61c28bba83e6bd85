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

// Loads and rotates columns c .. c + 3 of a block, or as many as there are.
template <class T, int r, int c>
ZVXG_INLINE inline void loadRotated(const T* block, const T* table, Complex<Vector<T>> (&z)[4]) {
  static_assert(kLanes<T> == kTableLanes<T>, "a wider vector would take several blocks");
  constexpr int kColumns = r < 4 ? r : 4;
  Vector<T> re[4], im[4];
  if constexpr (r >= 4) {
    Simd<T>::loadColumns(block + c, 2 * r, re);
    Simd<T>::loadColumns(block + r + c, 2 * r, im);
  } else {
    for (int lane = 0; lane < kTableLanes<T>; ++lane) {
      for (int i = 0; i < kColumns; ++i) {
        re[i][lane] = block[2 * r * lane + i];
        im[i][lane] = block[2 * r * lane + r + i];
      }
    }
  }
  unroll<kColumns>([&](auto i) ZVXG_INLINE {
    const T* const pair = table + 2 * kRotationPlace<r>[c + i] * kTableLanes<T>;
    z[i] = rotated(Complex<Vector<T>>{re[i], im[i]}, Simd<T>::load(pair),
                   Simd<T>::load(pair + kTableLanes<T>));
  });
}

// The places for the outputs of a group of blocks: l from up + l step on, ascending, and the
// mirrored one from down + l step on, descending.
template <class T>
struct RootOutputs {
  T *up, *down;
  std::ptrdiff_t step;

  // The outputs q = kRadix (i - kCount / 2) + t, i < kCount: l = q, or the mirrored l = -q - 1.
  template <int kRadix, std::size_t kCount>
  ZVXG_INLINE inline void put(int t, int g, const std::array<Vector<T>, kCount>& y) const {
    constexpr int kHalf = kCount / 2;
    T* const firstUp = up + t * step + g * kLanes<T>;
    T* const firstDown = down + (kRadix - 1 - t) * step - (g + 1) * kLanes<T> + 1;
    unroll<kHalf>([&](auto i) ZVXG_INLINE {
      Simd<T>::storeAnywhere(firstUp + i * kRadix * step, y[kHalf + i]);
      Simd<T>::storeAnywhere(firstDown + i * kRadix * step, Simd<T>::reversed(y[kHalf - 1 - i]));
    });
  }
};

template <class T, int r>
void rootGroup(const RootStage<T>& stage, const RootOutputs<T>& out, std::ptrdiff_t block,
               int vectors) {
  using V = Vector<T>;
  constexpr std::ptrdiff_t kBlock = 2 * r * kTableLanes<T>;  // elements, in workspace and table
  const T* const in = stage.in + block * kBlock;
  const T* const table = stage.table + block * kBlock;
  if constexpr (r <= 8) {
    for (int g = 0; g < vectors; ++g) {
      std::array<Complex<V>, r> z;
      unroll<(r + 3) / 4>([&](auto quarter) ZVXG_INLINE {
        Complex<V> four[4];
        loadRotated<T, r, 4 * quarter>(in + g * kBlock, table + g * kBlock, four);
        unroll<(r < 4 ? r : 4)>([&](auto i) ZVXG_INLINE { z[4 * quarter + i] = four[i]; });
      });
      out.template put<1>(0, g, oddSynthesis(z));
    }
  } else {
    // By a split over syntheses of length 16; each step leaves its results where its inputs were.
    constexpr int kRadix = r / 8;
    constexpr const auto& turns = kSplitTurns<T, 2 * r, kRadix>;
    Tile<T, r> tile;
    for (int g = 0; g < vectors; ++g) {
      unroll<r / 4>([&](auto quarter) ZVXG_INLINE {
        Complex<V> four[4];
        loadRotated<T, r, 4 * quarter>(in + g * kBlock, table + g * kBlock, four);
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

template <class T, int r>
void runRoot(const RootStage<T>& stage) {
  const std::ptrdiff_t step = stage.subLength;
  T* const up = stage.dst;
  T* const down = stage.dst + stage.lastIndex - (2 * r - 1) * step;
  const auto vectors = [&](std::ptrdiff_t block) {
    return static_cast<int>(std::min<std::ptrdiff_t>(kGroup, stage.blocks - block));
  };
  if (stage.writing == Writing::Direct) {
    for (std::ptrdiff_t block = 0; block < stage.blocks; block += kGroup) {
      const std::ptrdiff_t k = block * kLanes<T>;
      rootGroup<T, r>(stage, {up + k, down - k, step}, block, vectors(block));
    }
    return;
  }
  constexpr std::ptrdiff_t kRun = Staging<T>::kRun, kBlocks = kRun / kLanes<T>;
  Staging<T> staging;
  T* const end = stage.dst + stage.length;
  for (std::ptrdiff_t start = 0; start < stage.blocks; start += kBlocks) {
    const std::ptrdiff_t blocks = std::min(kBlocks, stage.blocks - start);
    const std::ptrdiff_t k = start * kLanes<T>, count = blocks * kLanes<T>;
    for (std::ptrdiff_t block = 0; block < blocks; block += kGroup) {
      const std::ptrdiff_t offset = block * kLanes<T>;
      rootGroup<T, r>(stage, {staging.run(0) + offset, staging.run(r) + count - 1 - offset, kRun},
                      start + block, vectors(start + block));
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
template <class T>
constexpr auto kRoots = []<int... i>(std::integer_sequence<int, i...>) {
  return std::array{runRoot<T, 1 << i>...};
}
(std::make_integer_sequence<int, 6>());

}  // namespace zvxg::dct4
