// What the printed kernels are written in: vectors with operators for all that C++ has any for, and
// the places that they are loaded from and stored to. A group of lanes is what a vector holds of one
// transform; what is said of a group holds for each.
#pragma once

#include <immintrin.h>

#include <cstddef>
#include <cstdint>
#include <type_traits>
#include <utility>

#include "frame/unroll.h"
#include "many/rows.h"

namespace zvxg::many::ZVXG_MACHINE {
namespace {

template <class T, int kCount>
struct VectorOf {
  typedef T Type __attribute__((vector_size(kCount * sizeof(T))));
  typedef T InMemory __attribute__((vector_size(kCount * sizeof(T)), may_alias, aligned(1)));
};
// Two floats are moved as one number.
template <>
struct VectorOf<float, 2> {
  typedef double Type;
  typedef double InMemory __attribute__((may_alias, aligned(1)));
};

// Of a register each, and as many numbers of single precision as a register has of double.
using Singles = VectorOf<float, ZVXG_VECTOR_BYTES / 4>::Type;
using Doubles = VectorOf<double, ZVXG_VECTOR_BYTES / 8>::Type;
using HalfSingles = VectorOf<float, ZVXG_VECTOR_BYTES / 8>::Type;

template <class V>
using NumberOf = std::remove_cvref_t<decltype(std::remove_const_t<V>{}[0])>;
template <class V>
inline constexpr int kLanes = sizeof(V) / sizeof(NumberOf<V>);

template <class V, class T>
ZVXG_INLINE inline V loadVector(const T* p) {
  return *reinterpret_cast<const typename VectorOf<T, kLanes<V>>::InMemory*>(p);
}
template <class V, class T>
ZVXG_INLINE inline void storeVector(T* p, V v) {
  *reinterpret_cast<typename VectorOf<T, kLanes<V>>::InMemory*>(p) = v;
}

// A value that the compiler takes for a new one. It then computes anew what depends on it, and does
// not keep that from turn to turn in more registers than there are.
template <class T>
ZVXG_INLINE inline T hidden(T x) {
  asm("" : "+r"(x));
  return x;
}

// ---- Constants

// The number in all lanes, whatever its sign.
template <class V>
ZVXG_INLINE inline V all(NumberOf<V> x) {
  return x - V{};
}

// Constants in memory as a kernel takes them: vectors, each a group again and again. With AVX-512 an
// operation takes a number from memory for all lanes by itself, so that groups of one stay numbers.
template <class V, int kGroup>
inline constexpr bool kIsNumber = kGroup == 1 && ZVXG_VECTOR_BYTES > 32;

template <class V>
class Numbers {
 public:
  explicit Numbers(const NumberOf<V>* numbers) : numbers_(numbers) {}
  ZVXG_INLINE V operator[](int place) const { return all<V>(numbers_[place]); }
  ZVXG_INLINE void hide() { numbers_ = hidden(numbers_); }

 private:
  const NumberOf<V>* numbers_;
};

template <class V>
class Vectors {
 public:
  explicit Vectors(const NumberOf<V>* numbers) : vectors_(reinterpret_cast<const V*>(numbers)) {}
  ZVXG_INLINE V operator[](int place) const { return vectors_[place]; }
  ZVXG_INLINE void hide() { vectors_ = hidden(vectors_); }

 private:
  const V* vectors_;
};

template <class V, int kGroup>
using Table = std::conditional_t<kIsNumber<V, kGroup>, Numbers<V>, Vectors<V>>;

template <class V, int kGroup, int kCount>
struct Constants {
  static constexpr int kWidth = kIsNumber<V, kGroup> ? 1 : kLanes<V>;

  alignas(kWidth * sizeof(NumberOf<V>)) NumberOf<V> numbers[kCount][kWidth];

  Table<V, kGroup> table() const { return Table<V, kGroup>(numbers[0]); }
};

template <class V, int kGroup, int kCount>
constexpr Constants<V, kGroup, kCount> repeated(const NumberOf<V> (&groups)[kCount][kGroup]) {
  Constants<V, kGroup, kCount> c{};
  for (int i = 0; i < kCount; ++i) {
    for (int j = 0; j < c.kWidth; ++j) c.numbers[i][j] = groups[i][j % kGroup];
  }
  return c;
}

// ---- Values

// Halves and quarters of registers are taken apart and joined by instructions, where the machine has
// them: g++ moves more than that for __builtin_shufflevector. With a mask of all lanes, as g++ warns of
// the unset operand that it gives these functions for lanes without one.
#ifdef __AVX512F__
inline constexpr __mmask8 kAllLanes = 0xff;
inline constexpr __mmask16 kAllFloats = 0xffff;
#endif

// kCount lanes from kFirst on.
template <int kFirst, int kCount, class V>
ZVXG_INLINE inline auto part(V v) {
  using Part = typename VectorOf<NumberOf<V>, kCount>::Type;
  constexpr int kPlace = kFirst / kCount;
  if constexpr (sizeof(V) == 32 && sizeof(Part) == 16) {
    return reinterpret_cast<Part>(_mm256_extractf128_ps(reinterpret_cast<__m256>(v), kPlace));
#ifdef __AVX512F__
  } else if constexpr (sizeof(V) == 64 && sizeof(Part) == 32) {
    return reinterpret_cast<Part>(
        _mm512_maskz_extractf64x4_pd(kAllLanes, reinterpret_cast<__m512d>(v), kPlace));
  } else if constexpr (sizeof(V) == 64 && sizeof(Part) == 16) {
    return reinterpret_cast<Part>(
        _mm512_maskz_extractf32x4_ps(kAllLanes, reinterpret_cast<__m512>(v), kPlace));
#endif
  } else if constexpr (sizeof(NumberOf<V>) == 4 && kCount == 2) {
    return reinterpret_cast<typename VectorOf<double, kLanes<V> / 2>::Type>(v)[kFirst / 2];
  } else {
    return [&]<int... i>(std::integer_sequence<int, i...>) ZVXG_INLINE {
      return __builtin_shufflevector(v, v, (kFirst + i)...);
    }
    (std::make_integer_sequence<int, kCount>());
  }
}

template <class V>
ZVXG_INLINE inline auto joined(V low, V high) {
  using Whole = typename VectorOf<NumberOf<V>, 2 * kLanes<V>>::Type;
  if constexpr (sizeof(V) == 16) {
    const auto widened = _mm256_castps128_ps256(reinterpret_cast<__m128>(low));
    return reinterpret_cast<Whole>(
        _mm256_insertf128_ps(widened, reinterpret_cast<__m128>(high), 1));
#ifdef __AVX512F__
  } else if constexpr (sizeof(V) == 32) {
    const auto widened = _mm512_castpd256_pd512(reinterpret_cast<__m256d>(low));
    return reinterpret_cast<Whole>(
        _mm512_maskz_insertf64x4(kAllLanes, widened, reinterpret_cast<__m256d>(high), 1));
#endif
  } else {
    return [&]<int... i>(std::integer_sequence<int, i...>) ZVXG_INLINE {
      return __builtin_shufflevector(low, high, i...);
    }
    (std::make_integer_sequence<int, 2 * kLanes<V>>());
  }
}

// Lanes of a group: select says which of a, or of b from the size of a group on.
template <int... kSelect, class V>
ZVXG_INLINE inline V shuffled(V a, V b) {
  return [&]<int... i>(std::integer_sequence<int, i...>) ZVXG_INLINE {
    constexpr int kGroup = sizeof...(kSelect), kFrom[] = {kSelect...};
    return __builtin_shufflevector(a, b,
                                   (kFrom[i % kGroup] % kGroup + i / kGroup * kGroup +
                                    kFrom[i % kGroup] / kGroup * kLanes<V>)...);
  }
  (std::make_integer_sequence<int, kLanes<V>>());
}

// The other sign where `signs` has a minus zero.
template <class V>
ZVXG_INLINE inline V flipped(V x, V signs) {
  using Bits =
      typename VectorOf<std::conditional_t<sizeof(NumberOf<V>) == 4, std::int32_t, std::int64_t>,
                        kLanes<V>>::Type;
  return reinterpret_cast<V>(reinterpret_cast<Bits>(x) ^ reinterpret_cast<Bits>(signs));
}

// Between single and double precision: one register of singles is two of doubles, half of one is one.
// By instructions, as g++ takes __builtin_convertvector apart and goes through memory.
ZVXG_INLINE inline Doubles widened(HalfSingles x) {
#if ZVXG_VECTOR_BYTES == 32
  return _mm256_cvtps_pd(x);
#elif defined(__AVX512F__)
  return _mm512_maskz_cvtps_pd(kAllLanes, x);
#else
  return joined(_mm256_cvtps_pd(part<0, 4>(x)), _mm256_cvtps_pd(part<4, 4>(x)));
#endif
}
ZVXG_INLINE inline Doubles widenedLow(Singles x) { return widened(part<0, kLanes<Doubles>>(x)); }
ZVXG_INLINE inline Doubles widenedHigh(Singles x) {
  return widened(part<kLanes<Doubles>, kLanes<Doubles>>(x));
}
ZVXG_INLINE inline HalfSingles rounded(Doubles x) {
#if ZVXG_VECTOR_BYTES == 32
  return _mm256_cvtpd_ps(x);
#elif defined(__AVX512F__)
  return _mm512_maskz_cvtpd_ps(kAllLanes, x);
#else
  return joined(_mm256_cvtpd_ps(part<0, 4>(x)), _mm256_cvtpd_ps(part<4, 4>(x)));
#endif
}
ZVXG_INLINE inline Singles rounded(Doubles low, Doubles high) {
  return joined(rounded(low), rounded(high));
}

// ---- Rows, of `step` reals. V is const for a source.

// An address is one of every eighth row and a few steps, of which the processor adds one, two, four or
// eight by itself: rows are used in any order, and a multiplication for each use would cost as much as
// the arithmetic.
template <class V, int kCount>
class Rows {
  using Byte = std::conditional_t<std::is_const_v<V>, const char, char>;
  using Number = std::conditional_t<std::is_const_v<V>, const NumberOf<V>, NumberOf<V>>;
  using Vector = std::remove_const_t<V>;

 public:
  ZVXG_INLINE Rows(Number* first, std::ptrdiff_t step)
      : one_(hidden(step * std::ptrdiff_t{sizeof(Number)})),
        three_(hidden(3 * one_)),
        five_(hidden(5 * one_)),
        seven_(hidden(7 * one_)) {
    unroll<kEighths>([&](auto i) ZVXG_INLINE {
      eighths_[i] = hidden(reinterpret_cast<Byte*>(first) + i * 8 * one_);
    });
  }

  // From the transforms of a turn to those of the next.
  ZVXG_INLINE static std::ptrdiff_t turn(std::ptrdiff_t) { return kLanes<V>; }

  ZVXG_INLINE Vector load(int row) const { return loadVector<Vector>(at(row)); }
  ZVXG_INLINE void store(int row, Vector v) const { storeVector(at(row), v); }
  ZVXG_INLINE void write() const {}  // nothing waits

  ZVXG_INLINE Number* at(int row) const {
    return reinterpret_cast<Number*>(eighths_[row / 8] + steps(row % 8));
  }

 private:
  static constexpr int kEighths = (kCount + 7) / 8;

  ZVXG_INLINE std::ptrdiff_t steps(int count) const {
    switch (count) {
      case 3: return three_;
      case 5: return five_;
      case 6: return 2 * three_;
      case 7: return seven_;
      default: return count * one_;
    }
  }

  Byte* eighths_[kEighths];
  std::ptrdiff_t one_, three_, five_, seven_;
};

// Real and imaginary parts as they are in memory, or each in the place of the other. With the parts
// exchanged on both sides, a transform is its inverse.
enum class Parts {
  AsTheyAre,
  Exchanged
};

template <class V>
class PartOrder {
 public:
  ZVXG_INLINE explicit PartOrder(Parts parts) {
    for (int i = 0; i < kLanes<V>; ++i) from_[i] = i % 4 ^ static_cast<int>(parts);
  }

  ZVXG_INLINE V of(V v) const { return permuted(v, from_); }

 private:
  template <class Floats, class Places>
  ZVXG_INLINE static Floats permuted(Floats v, Places from) {
    if constexpr (sizeof(Floats) == 32) {
      return _mm256_permutevar_ps(v, reinterpret_cast<__m256i>(from));
#ifdef __AVX512F__
    } else if constexpr (sizeof(Floats) == 64) {
      return _mm512_maskz_permutevar_ps(kAllFloats, v, reinterpret_cast<__m512i>(from));
#endif
    } else {
      constexpr int kHalf = kLanes<Floats> / 2;
      return joined(permuted(part<0, kHalf>(v), part<0, kHalf>(from)),
                    permuted(part<kHalf, kHalf>(v), part<kHalf, kHalf>(from)));
    }
  }

  typename VectorOf<std::int32_t, kLanes<V>>::Type from_;
};

struct AsInMemory {
  template <class V>
  ZVXG_INLINE V of(V v) const {
    return v;
  }
};

// Rows of complex floats, each as a vector of the real and one of the imaginary parts. Their lanes are
// in the order that takes one shuffle within 128 bits.
template <class V, int kCount, class Order = AsInMemory>
class PartRows {
  using Vector = std::remove_const_t<V>;

 public:
  template <class T>
  ZVXG_INLINE PartRows(T* first, std::ptrdiff_t step, Order order = {})
      : rows_(first, step), order_(order) {}
  ZVXG_INLINE static std::ptrdiff_t turn(std::ptrdiff_t) { return 2 * kLanes<V>; }

  ZVXG_INLINE Vector loadRe(int row) const { return shuffled<0, 2, 4, 6>(low(row), high(row)); }
  ZVXG_INLINE Vector loadIm(int row) const { return shuffled<1, 3, 5, 7>(low(row), high(row)); }
  ZVXG_INLINE void store(int row, Vector re, Vector im) const {
    storeVector(rows_.at(row), order_.of(shuffled<0, 4, 1, 5>(re, im)));
    storeVector(rows_.at(row) + kLanes<V>, order_.of(shuffled<2, 6, 3, 7>(re, im)));
  }
  ZVXG_INLINE void write() const {}

 private:
  ZVXG_INLINE Vector low(int row) const { return order_.of(loadVector<Vector>(rows_.at(row))); }
  ZVXG_INLINE Vector high(int row) const {
    return order_.of(loadVector<Vector>(rows_.at(row) + kLanes<V>));
  }

  Rows<V, kCount> rows_;
  Order order_;
};

// ---- Half spectra

template <class V>
struct Two {
  V low, high;
};

// Parts are joined to bins, or bins split into parts: number i of the two results is from(i) of the two.
enum class Bins {
  Joined,
  Split
};

template <class V, Bins kBins>
constexpr int from(int i) {
  constexpr int kCount = kLanes<V>;
  if (kBins == Bins::Joined) return i / 2 + i % 2 * kCount;
  return i < kCount ? 2 * i : 2 * (i - kCount) + 1;
}

template <Bins kBins, class V>
ZVXG_INLINE inline Two<V> rearranged(Two<V> v) {
  return [&]<int... i>(std::integer_sequence<int, i...>) ZVXG_INLINE {
    return Two<V>{__builtin_shufflevector(v.low, v.high, from<V, kBins>(i)...),
                  __builtin_shufflevector(v.low, v.high, from<V, kBins>(kLanes<V> + i)...)};
  }
  (std::make_integer_sequence<int, kLanes<V>>());
}

// The same if `bins` is not 0. A jump that the compiler does not see leaves a kernel in one piece: it
// would take it apart at each of these, and take more text and time.
template <Bins kBins, class V>
ZVXG_INLINE inline Two<V> rearrangedIf(int bins, V low, V high) {
#ifdef __AVX512F__
  using Place = std::conditional_t<sizeof(NumberOf<V>) == 4, std::int32_t, std::int64_t>;
  using Places = typename VectorOf<Place, kLanes<V>>::Type;
  return [&]<int... i>(std::integer_sequence<int, i...>) ZVXG_INLINE {
    // The second permutation has the two vectors in the other order.
    constexpr int kOther = kLanes<V>;
    const Places ofLow{from<V, kBins>(i)...}, ofHigh{(from<V, kBins>(kOther + i) ^ kOther)...};
    V copy;
    if constexpr (sizeof(Place) == 4) {
      asm("test %3, %3\n\t"
          "je 1f\n\t"
          "vmovaps %0, %2\n\t"
          "vpermt2ps %1, %4, %0\n\t"
          "vpermt2ps %2, %5, %1\n"
          "1:"
          : "+&v"(low), "+&v"(high), "=&v"(copy)
          : "r"(bins), "v"(ofLow), "v"(ofHigh)
          : "cc");
    } else {
      asm("test %3, %3\n\t"
          "je 1f\n\t"
          "vmovapd %0, %2\n\t"
          "vpermt2pd %1, %4, %0\n\t"
          "vpermt2pd %2, %5, %1\n"
          "1:"
          : "+&v"(low), "+&v"(high), "=&v"(copy)
          : "r"(bins), "v"(ofLow), "v"(ofHigh)
          : "cc");
    }
    return Two<V>{low, high};
  }
  (std::make_integer_sequence<int, kLanes<V>>());
#else
  return bins ? rearranged<kBins>(Two<V>{low, high}) : Two<V>{low, high};
#endif
}

// A half spectrum of kLength samples in rows of parts, by the places that Pack has for its numbers.
template <class V, int kLength>
class PartsOfSpectrum {
  using Number = std::conditional_t<std::is_const_v<V>, const NumberOf<V>, NumberOf<V>>;
  using Vector = std::remove_const_t<V>;

 public:
  ZVXG_INLINE explicit PartsOfSpectrum(const SpectrumRows<Number>& rows)
      : first_(rows.first), last_(rows.last), between_(rows.between, rows.parts) {}

  ZVXG_INLINE Vector load(int place) const { return loadVector<Vector>(at(place)); }
  ZVXG_INLINE void store(int place, Vector v) const { storeVector(at(place), v); }

 private:
  ZVXG_INLINE Number* at(int place) const {
    if (place == 0) return first_;
    const bool isLast = kLength % 2 == 0 && place == kLength - 1;
    return isLast ? last_ : between_.at(place - 1);
  }

  Number *first_, *last_;
  Rows<V, kLength> between_;
};

// The same, or in rows of bins. Both parts of a bin are loaded with the first of them, and stored with
// the second; all places are constants, so nothing of that is left in a kernel.
template <class V, int kLength>
class BinsOfSpectrum {
  using Number = std::conditional_t<std::is_const_v<V>, const NumberOf<V>, NumberOf<V>>;
  using Vector = std::remove_const_t<V>;

 public:
  ZVXG_INLINE explicit BinsOfSpectrum(const SpectrumRows<Number>& rows)
      : first_(rows.first),
        last_(rows.last),
        areBins_(rows.areBins()),
        parts_(rows.areBins() ? kLanes<V> : rows.parts),
        between_(rows.between, rows.step) {}

  ZVXG_INLINE Vector load(int place) {
    if (isReal(place)) return loadReal(place == 0 ? first_ : last_);
    auto& [isHere, part] = bins_[(place - 1) / 2];
    if (!isHere) {
      Number* const at = between_.at((place - 1) / 2);
      const Two<Vector> v = rearrangedIf<Bins::Split>(areBins_, loadVector<Vector>(at),
                                                      loadVector<Vector>(at + parts_));
      part[0] = v.low;
      part[1] = v.high;
      isHere = true;
    }
    return part[(place - 1) % 2];
  }

  ZVXG_INLINE void store(int place, Vector v) {
    if (isReal(place)) return storeReal(place == 0 ? first_ : last_, v);
    auto& [isHere, part] = bins_[(place - 1) / 2];
    part[(place - 1) % 2] = v;
    if (isHere) {
      Number* const at = between_.at((place - 1) / 2);
      const Two<Vector> bins = rearrangedIf<Bins::Joined>(areBins_, part[0], part[1]);
      storeVector(at, bins.low);
      storeVector(at + parts_, bins.high);
    }
    isHere = true;
  }

 private:
  static constexpr int kBins = (kLength + 1) / 2;  // one more than those between
  struct Bin {
    bool isHere = false;
    Vector part[2] = {};
  };

  static constexpr bool isReal(int place) {
    return place == 0 || (kLength % 2 == 0 && place == kLength - 1);
  }

  ZVXG_INLINE Vector loadReal(Number* at) const {
    Vector v = loadVector<Vector>(at);
    if (areBins_) v = rearranged<Bins::Split>(Two<Vector>{v, loadVector<Vector>(at + parts_)}).low;
    return v;
  }
  ZVXG_INLINE void storeReal(Number* at, Vector v) const {
    if (areBins_) {
      const Two<Vector> bins = rearranged<Bins::Joined>(Two<Vector>{v, Vector{}});
      storeVector(at + parts_, bins.high);
      v = bins.low;
    }
    storeVector(at, v);
  }

  Number *first_, *last_;
  int areBins_;
  std::ptrdiff_t parts_;
  Rows<V, kBins> between_;
  Bin bins_[kBins];
};

// Bins are for registers of 512 bits. With 256, the four shuffles of a bin would make the kernels
// slower for the other layouts, too: by 5 % in double precision (Zen 4).
template <class V, int kLength>
using SpectrumOf = std::conditional_t<(ZVXG_VECTOR_BYTES > 32), BinsOfSpectrum<V, kLength>,
                                      PartsOfSpectrum<V, kLength>>;

template <class T>
ZVXG_INLINE inline void advance(SpectrumRows<T>& rows, int reals) {
  if (ZVXG_VECTOR_BYTES > 32 && rows.areBins()) reals *= 2;
  rows.first += reals;
  rows.last += reals;
  rows.between += reals;
}

// ---- Contiguous transforms side by side

// As many transforms, `step` reals apart, as a vector has groups of kGroup. Places are those of reals
// in a transform. V is const for a source.
template <class V, int kGroup>
class Beside {
  using Number = std::conditional_t<std::is_const_v<V>, const NumberOf<V>, NumberOf<V>>;
  using Vector = std::remove_const_t<V>;

 public:
  static constexpr int kTransforms = kLanes<V> / kGroup;

  ZVXG_INLINE Beside(Number* first, std::ptrdiff_t step) {
    unroll<kTransforms>([&](auto i) ZVXG_INLINE { starts_[i] = hidden(first + i * step); });
  }

  // A group of each transform, from one place or equal parts of it from several.
  template <class... Places>
  ZVXG_INLINE Vector load(Places... places) const {
    constexpr int kParts = sizeof...(Places), kCount = kGroup / kParts;
    const int at[] = {places...};
    typename VectorOf<NumberOf<V>, kCount>::Type parts[kTransforms * kParts];
    unroll<kTransforms * kParts>([&](auto i) ZVXG_INLINE {
      using Part = typename VectorOf<NumberOf<V>, kCount>::Type;
      parts[i] = loadVector<Part>(starts_[i / kParts] + at[i % kParts]);
    });
    return joinedAll(parts);
  }

  // Two floats of each as pair kPair of the group, and zeros.
  template <int kPair>
  ZVXG_INLINE Vector loadPair(int place) const {
    Doubles pairs{};
    unroll<kTransforms>([&](auto i) ZVXG_INLINE {
      using Pair = typename VectorOf<float, 2>::InMemory;
      pairs[i * kGroup / 2 + kPair] = *reinterpret_cast<const Pair*>(starts_[i] + place);
    });
    return reinterpret_cast<Vector>(pairs);
  }

  // kCount numbers of each, from lane kFirst of the group on.
  template <int kFirst, int kCount>
  ZVXG_INLINE void store(int place, Vector v) const {
    unroll<kTransforms>([&](auto i) ZVXG_INLINE {
      using Part = typename VectorOf<NumberOf<V>, kCount>::InMemory;
      *reinterpret_cast<Part*>(starts_[i] + place) = part<i * kGroup + kFirst, kCount>(v);
    });
  }

 private:
  template <class P, std::size_t kCount>
  ZVXG_INLINE static Vector joinedAll(const P (&parts)[kCount]) {
    if constexpr (kCount == 1) {
      return parts[0];
    } else {
      decltype(joined(parts[0], parts[1])) pairs[kCount / 2];
      unroll<kCount / 2>([&](auto i)
                             ZVXG_INLINE { pairs[i] = joined(parts[2 * i], parts[2 * i + 1]); });
      return joinedAll(pairs);
    }
  }

  Number* starts_[kTransforms];
};

}  // namespace
}  // namespace zvxg::many::ZVXG_MACHINE
