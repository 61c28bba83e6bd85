// Contiguous transforms as vectors that hold an element of each, for kernels that transpose what they
// load and store in registers.
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

// Contiguous transforms of kCount elements of kUnit numbers each, `dist` apart: as many as V has place
// for one element of. V is const for a source.
template <class V, int kCount, int kUnit = 1>
class Tiles {
  using Number = std::conditional_t<std::is_const_v<V>, const NumberOf<V>, NumberOf<V>>;
  using Vector = std::remove_const_t<V>;
  static constexpr int kBytes = kUnit * sizeof(Number);

 public:
  ZVXG_INLINE Tiles(Number* at, std::ptrdiff_t dist) : at_(at), dist_(dist) {
    if constexpr (std::is_const_v<V>) read();
  }
  ZVXG_INLINE static std::ptrdiff_t turn(std::ptrdiff_t dist) { return kGroup<kBytes> * dist; }

  ZVXG_INLINE Vector load(int place) const { return reinterpret_cast<Vector>(rows_[place]); }
  ZVXG_INLINE void store(int place, Vector v) { rows_[place] = reinterpret_cast<__m256>(v); }
  // What was stored, to its places.
  ZVXG_INLINE void write() {
    const Destinations<kBytes> group(reinterpret_cast<Byte*>(at_), dist_ * sizeof(Number),
                                     kGroup<kBytes>);
    inConstantTiles<kBytes, 0, kCount>([&](auto tile, int first) ZVXG_INLINE {
      tile.store(RowsInRegisters{rows_ + first}, group, first * kBytes);
    });
  }

 private:
  ZVXG_INLINE void read() {
    const Sources<kBytes> group(reinterpret_cast<const Byte*>(at_), dist_ * sizeof(Number),
                                kGroup<kBytes>);
    inConstantTiles<kBytes, 0, kCount>([&](auto tile, int first) ZVXG_INLINE {
      tile.load(group, first * kBytes, RowsInRegisters{rows_ + first});
    });
  }

  Number* at_;
  std::ptrdiff_t dist_;
  __m256 rows_[kCount];
};

// Two transforms of complex doubles. Their elements are half a register each, so that they need no tile:
// one is loaded when it is wanted, and stored with its neighbour when there are both.
template <class V, int kCount>
class Halves {
  using Number = std::conditional_t<std::is_const_v<V>, const NumberOf<V>, NumberOf<V>>;
  using Vector = std::remove_const_t<V>;

 public:
  ZVXG_INLINE Halves(Number* at, std::ptrdiff_t dist)
      : low_(hidden(at)), high_(hidden(at + dist)) {}
  ZVXG_INLINE static std::ptrdiff_t turn(std::ptrdiff_t dist) { return 2 * dist; }

  ZVXG_INLINE Vector load(int place) const {
    return reinterpret_cast<Vector>(loadHalves(reinterpret_cast<const Byte*>(low_ + 2 * place),
                                               reinterpret_cast<const Byte*>(high_ + 2 * place)));
  }
  ZVXG_INLINE void store(int place, Vector v) {
    rows_[place] = reinterpret_cast<__m256>(v);
    isThere_[place] = true;
    const int first = place / 2 * 2;
    Byte* const low = reinterpret_cast<Byte*>(low_ + 2 * first);
    Byte* const high = reinterpret_cast<Byte*>(high_ + 2 * first);
    if (first == kCount - 1) {
      storeHalves(low, high, rows_[first]);
    } else if (isThere_[first] && isThere_[first + 1]) {
      storeRow(high, highHalves(rows_[first], rows_[first + 1]));
      storeRow(low, lowHalves(rows_[first], rows_[first + 1]));
    }
  }
  ZVXG_INLINE void write() const {}

 private:
  Number *low_, *high_;
  __m256 rows_[kCount];
  bool isThere_[kCount] = {};  // constants to the compiler, which knows all places
};

// Half spectra of kLength samples, by the places that Pack has for their numbers.
template <class V, int kLength, Layout kLayout>
class SpectrumTiles {
  static constexpr bool kIsEven = kLength % 2 == 0, kHasBins = kLayout == Layout::Ccs;
  static constexpr int kNumbers = kHasBins ? kLength / 2 * 2 + 2 : kLength;
  using Vector = std::remove_const_t<V>;

 public:
  template <class T>
  ZVXG_INLINE SpectrumTiles(T* at, std::ptrdiff_t dist) : tiles_(at, dist) {}
  ZVXG_INLINE static std::ptrdiff_t turn(std::ptrdiff_t dist) { return kLanes<V> * dist; }

  ZVXG_INLINE Vector load(int place) const { return tiles_.load(at(place)); }
  ZVXG_INLINE void store(int place, Vector v) { tiles_.store(at(place), v); }
  ZVXG_INLINE void write() {
    if (kHasBins) tiles_.store(1, V{});
    if (kHasBins && kIsEven) tiles_.store(kNumbers - 1, V{});
    tiles_.write();
  }

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
