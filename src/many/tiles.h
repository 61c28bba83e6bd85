// Contiguous real transforms as vectors that hold an element of each, for kernels that are short enough
// to have them all at once.
#pragma once

#include "many/contiguous.h"
#include "many/transpose.h"
#include "many/vectors.h"

namespace zvxg::many::ZVXG_MACHINE {
namespace {

// body(tile, first) with the tiles from kFirst on, as inTiles() does it, but all constant.
template <int kBytes, int kFirst, int kLast, int kWidth = 32 / kBytes, class Body>
ZVXG_INLINE inline void inConstantTiles(const Body& body) {
  if constexpr (kFirst + kWidth <= kLast) {
    body(Tile<kBytes, kWidth>(), kFirst);
    inConstantTiles<kBytes, kFirst + kWidth, kLast, kWidth>(body);
  } else if constexpr (kFirst < kLast && kWidth > kNarrowest<kBytes>) {
    inConstantTiles<kBytes, kFirst, kLast, kWidth / 2>(body);
  } else if constexpr (kFirst < kLast) {
    body(Tile<kBytes, kWidth>(), kLast - kWidth);
  }
}

// As many transforms as V has lanes, of kCount numbers each.
template <class V, int kCount>
class Tiles {
  using Number = NumberOf<V>;
  static constexpr int kBytes = sizeof(Number);

 public:
  Tiles() = default;
  ZVXG_INLINE Tiles(const Number* src, std::ptrdiff_t dist) {
    const Sources<kBytes> group(reinterpret_cast<const Byte*>(src), dist * kBytes, kGroup<kBytes>);
    inConstantTiles<kBytes, 0, kCount>([&](auto tile, int first) ZVXG_INLINE {
      tile.load(group, first * kBytes, RowsInRegisters{rows_ + first});
    });
  }

  ZVXG_INLINE void write(Number* dst, std::ptrdiff_t dist) {
    const Destinations<kBytes> group(reinterpret_cast<Byte*>(dst), dist * kBytes, kGroup<kBytes>);
    inConstantTiles<kBytes, 0, kCount>([&](auto tile, int first) ZVXG_INLINE {
      tile.store(RowsInRegisters{rows_ + first}, group, first * kBytes);
    });
  }

  ZVXG_INLINE V load(int place) const { return reinterpret_cast<V>(rows_[place]); }
  ZVXG_INLINE void store(int place, V v) { rows_[place] = reinterpret_cast<__m256>(v); }

 private:
  __m256 rows_[kCount];
};

// Half spectra of kLength samples, by the places that Pack has for their numbers.
template <class V, int kLength, Layout kLayout>
class SpectrumTiles {
  static constexpr bool kIsEven = kLength % 2 == 0, kHasBins = kLayout == Layout::Ccs;
  static constexpr int kNumbers = kHasBins ? kLength / 2 * 2 + 2 : kLength;
  using Number = NumberOf<V>;

 public:
  SpectrumTiles() = default;
  ZVXG_INLINE SpectrumTiles(const Number* src, std::ptrdiff_t dist) : tiles_(src, dist) {}

  ZVXG_INLINE void write(Number* dst, std::ptrdiff_t dist) {
    if (kHasBins) tiles_.store(1, V{});
    if (kHasBins && kIsEven) tiles_.store(kNumbers - 1, V{});
    tiles_.write(dst, dist);
  }

  ZVXG_INLINE V load(int place) const { return tiles_.load(at(place)); }
  ZVXG_INLINE void store(int place, V v) { tiles_.store(at(place), v); }

 private:
  static constexpr int at(int place) {
    const bool isLast = kIsEven && place == kLength - 1;
    if (place == 0 || kLayout == Layout::Pack) return place;
    if (kLayout == Layout::Ccs) return isLast ? kLength : place + 1;
    return !kIsEven ? place : isLast ? 1 : place + 1;
  }

  Tiles<V, kNumbers> tiles_;
};

}  // namespace
}  // namespace zvxg::many::ZVXG_MACHINE
