// The radix-2 stages of a Walsh-Hadamard transform on the lanes of vectors. A stage replaces the
// values at the indices i and i + h, where h is a power of two and not a bit of i, by their sum and
// their difference. The transform is the stages h = 1, 2, 4 ... in this order. This code only ever
// forms the sums and differences of these stages, so the bits do not depend on how they are
// grouped. transform() is the entry.
#pragma once

#include <algorithm>
#include <cstdint>
#include <type_traits>
#include <utility>

#include "frame/frame.h"
#include "frame/level.h"
#include "frame/unroll.h"

namespace zvxg::wht {

template <int kCount>
using Indices = std::make_integer_sequence<int, kCount>;

// Vectors of kBytes, in memory on a boundary of kBoundary bytes.
template <class RealType, int kBytes, int kBoundary>
struct Vectors {
  using Real = RealType;
  typedef Real Vector __attribute__((vector_size(kBytes)));
  typedef Real InMemory __attribute__((vector_size(kBytes), may_alias, aligned(kBoundary)));
  static constexpr int kLanes = kBytes / sizeof(Real);

  static Vector load(const Real* p) { return *inMemory(p); }
  static void store(Real* p, Vector v) { *reinterpret_cast<InMemory*>(p) = v; }
  static const InMemory* inMemory(const Real* p) { return reinterpret_cast<const InMemory*>(p); }
};

// Scalars, for transforms that are too short for vectors.
template <class RealType>
struct Number {
  using Real = RealType;
  using InMemory = Anywhere<Real>;
  static constexpr int kLanes = 1;
  static Real load(const InMemory* p) { return *p; }
  static void store(InMemory* p, Real v) { *p = v; }
};

template <class Real, int kBytes, int kBoundary>
using Access =
    std::conditional_t<kBytes == sizeof(Real), Number<Real>, Vectors<Real, kBytes, kBoundary>>;

// In single precision each couple stays swapped after its stage until the shuffles of the later
// stages, which are there anyway, put it right: AVX can subtract in the even lanes while it adds in
// the odd ones. Couples of doubles fill what shuffles move as a whole.
template <class Real>
inline constexpr bool kSwapped = std::is_same_v<Real, float>;

// Loads a vector and does the stage h = 1, inside couples of neighbours: even + odd, even - odd,
// from vectors that hold the even numbers twice and the odd ones twice. As loads these two need no
// port that shuffles; from one load and two shuffles, as a compiler has it, they would hold up the
// additions. Only odd doubles have no such load, but where a vector is one couple.
template <class From, int... i>
ZVXG_INLINE inline auto loadCouples(const typename From::Real* p,
                                    std::integer_sequence<int, i...>) {
  using V = typename From::Vector;
  constexpr int kLanes = From::kLanes;
  V even, odd;
  if constexpr (kSwapped<typename From::Real>) {
    asm("vmovsldup %1, %0" : "=v"(even) : "m"(*From::inMemory(p)));
    asm("vmovshdup %1, %0" : "=v"(odd) : "m"(*From::inMemory(p)));
    return __builtin_shufflevector(even - odd, even + odd, (i % 2 == 0 ? i : kLanes + i)...);
  } else {
    if constexpr (kLanes == 2) {
      const Anywhere<double>* numbers = p;
      even = V{numbers[i & ~1]...};
      odd = V{numbers[i | 1]...};
    } else {
      asm("vmovddup %1, %0" : "=v"(even) : "m"(*From::inMemory(p)));
      odd = __builtin_shufflevector(From::load(p), V(), (i | 1)...);
    }
    typedef int64_t Bits __attribute__((vector_size(sizeof(V))));
    constexpr Bits kSigns = {(i % 2 == 0 ? 0 : INT64_MIN)...};
    return even + reinterpret_cast<V>(reinterpret_cast<Bits>(odd) ^ kSigns);
  }
}

// The couples kFirst, kFirst + 2 ... of two vectors in a row, swapped if told so.
template <int kFirst, bool kSwap, class V, int... i>
ZVXG_INLINE inline V everySecondCouple(V a, V b, std::integer_sequence<int, i...>) {
  return __builtin_shufflevector(a, b, ((i / 2 * 2 + kFirst) * 2 + (i % 2 ^ kSwap))...);
}

// The first half of every 2 kHalf numbers of a and, behind it, of b; or the second halves.
template <int kHalf, bool kSecond, class V, int... i>
ZVXG_INLINE inline V halves(V a, V b, std::integer_sequence<int, i...>) {
  constexpr int kLanes = sizeof...(i);
  return __builtin_shufflevector(
      a, b, ((i & ~kHalf) + (kSecond ? kHalf : 0) + (i & kHalf ? kLanes : 0))...);
}

// The stages h = 2 and above inside pairs of vectors and between the two. Lanes i and i + h meet
// when the bit h of a lane's place and the bit of the vector have changed places; sums go to the
// first vector and differences to the second. The next exchange puts a lane's bit back, but one
// place too high, and the vector's own bit stays lowest. So the last stage takes every second
// couple: that moves all bits down by one, and the lowest to the vector (a step of the constant
// geometry of M. C. Pease, J. ACM 15, 1968).
template <int kLanes, int kStage = 2, class V, int kCount>
ZVXG_INLINE inline void stagesOfPairs(V (&v)[kCount]) {
  if constexpr (kStage <= kLanes) {
    constexpr Indices<kLanes> kAll;
    unroll<kCount / 2>([&](auto i) ZVXG_INLINE {
      V &a = v[2 * i], &b = v[2 * i + 1], even, odd;
      if constexpr (kStage < kLanes) {
        even = halves<kStage, false>(a, b, kAll);
        odd = halves<kStage, true>(a, b, kAll);
      } else {
        constexpr bool kSwap = kSwapped<std::remove_cvref_t<decltype(a[0])>>;
        even = everySecondCouple<0, kSwap>(a, b, kAll);
        odd = everySecondCouple<1, kSwap>(a, b, kAll);
      }
      a = even + odd;
      b = even - odd;
    });
    stagesOfPairs<kLanes, 2 * kStage>(v);
  }
}

// The stages h = kFirst, 2 kFirst ... between whole vectors.
template <int kFirst, class V, int kCount>
ZVXG_INLINE inline void stagesBetween(V (&v)[kCount]) {
  if constexpr (kFirst < kCount) {
    unroll<kCount / 2>([&](auto i) ZVXG_INLINE {
      constexpr int kLow = i / kFirst * 2 * kFirst + i % kFirst;
      const V a = v[kLow], b = v[kLow + kFirst];
      v[kLow] = a + b;
      v[kLow + kFirst] = a - b;
    });
    stagesBetween<2 * kFirst>(v);
  }
}

// The stages on kCount vectors: load(i) gives vector i, store(i, v) takes its result. If kLanes is
// 1, each lane is a transform of its own; otherwise load() has done the stage inside couples.
// Groups that fill half of the registers are finished first and then combined in columns, so that a
// vector is put aside at most once.
template <int kLanes, int kCount, class Load, class Store>
ZVXG_INLINE inline void transform(const Load& load, const Store& store) {
  using V = decltype(load(std::integral_constant<int, 0>()));
  constexpr int kGroup = std::min(kCount, kLevel < Level::v4 ? 8 : 16), kGroups = kCount / kGroup;
  V aside[kCount];
  unroll<kGroups>([&](auto g) ZVXG_INLINE {
    V group[kGroup];
    unroll<kGroup>([&](auto i) ZVXG_INLINE {
      group[i] = load(std::integral_constant<int, g * kGroup + i>());
    });
    if constexpr (kLanes > 1) stagesOfPairs<kLanes>(group);
    stagesBetween<kLanes == 1 ? 1 : 2>(group);
    unroll<kGroup>([&](auto i) ZVXG_INLINE { aside[g * kGroup + i] = group[i]; });
  });
  unroll<kGroup>([&](auto i) ZVXG_INLINE {
    V column[kGroups];
    unroll<kGroups>([&](auto g) ZVXG_INLINE { column[g] = aside[g * kGroup + i]; });
    stagesBetween<1>(column);
    unroll<kGroups>([&](auto g) ZVXG_INLINE {
      store(std::integral_constant<int, g * kGroup + i>(), column[g]);
    });
  });
}

}  // namespace zvxg::wht
