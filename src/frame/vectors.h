// The vectors of packed kernels: any count of lanes, written in operators and vector extensions, so
// that the text for one machine compiles for another.
#pragma once

#include <immintrin.h>

#include <algorithm>
#include <cstdint>
#include <type_traits>
#include <utility>

#include "frame/frame.h"
#include "frame/unroll.h"

namespace zvxg {

template <class T, int kCount>
struct VectorOf {
  typedef T Type __attribute__((vector_size(kCount * sizeof(T))));
  typedef T InMemory __attribute__((vector_size(kCount * sizeof(T)), may_alias, aligned(1)));
};
template <class T, int kCount>
using Vector = typename VectorOf<T, kCount>::Type;

// Two floats, in the low half of a register. The upper half has copies of them, or zeros: nothing
// that would be slow to compute with.
struct FloatPair {
  Vector<float, 4> all;
};

ZVXG_INLINE inline FloatPair operator+(FloatPair a, FloatPair b) { return {a.all + b.all}; }
ZVXG_INLINE inline FloatPair operator-(FloatPair a, FloatPair b) { return {a.all - b.all}; }
ZVXG_INLINE inline FloatPair operator*(FloatPair a, FloatPair b) { return {a.all * b.all}; }

// The number of a vector's lanes, and their type.
template <class V>
struct Lanes {
  using Real = std::remove_cvref_t<decltype(V()[0])>;
  static constexpr int kCount = sizeof(V) / sizeof(Real);
};
template <>
struct Lanes<float> {
  using Real = float;
  static constexpr int kCount = 1;
};
template <>
struct Lanes<double> {
  using Real = double;
  static constexpr int kCount = 1;
};
template <>
struct Lanes<FloatPair> {
  using Real = float;
  static constexpr int kCount = 2;
};
template <class V>
inline constexpr int kLanes = Lanes<V>::kCount;

template <int... i>
using Indices = std::integer_sequence<int, i...>;
template <int kCount>
using FirstIndices = std::make_integer_sequence<int, kCount>;

// ---- Memory

// So many neighbours, from any address. For each type by itself: what is deduced from an argument has
// lost that it may be anywhere.
template <class T, int kCount>
using InMemory = typename VectorOf<T, kCount>::InMemory;

template <int kCount>
ZVXG_INLINE inline auto load(const Anywhere<float>* p) {
  if constexpr (kCount == 2) {
    return FloatPair{_mm_castsi128_ps(_mm_loadu_si64(p))};
  } else {
    return Vector<float, kCount>(*reinterpret_cast<const InMemory<float, kCount>*>(p));
  }
}
template <int kCount>
ZVXG_INLINE inline auto load(const Anywhere<double>* p) {
  return Vector<double, kCount>(*reinterpret_cast<const InMemory<double, kCount>*>(p));
}

template <class V>
ZVXG_INLINE inline void store(Anywhere<float>* p, V v) {
  *reinterpret_cast<InMemory<float, kLanes<V>>*>(p) = v;
}
template <class V>
ZVXG_INLINE inline void store(Anywhere<double>* p, V v) {
  *reinterpret_cast<InMemory<double, kLanes<V>>*>(p) = v;
}
ZVXG_INLINE inline void store(Anywhere<float>* p, FloatPair v) {
  _mm_storel_pi(reinterpret_cast<__m64*>(p), v.all);
}

// The same number in all lanes.
template <class V, class T>
ZVXG_INLINE inline V broadcastTo(T x) {
  if constexpr (std::is_same_v<V, FloatPair>) {
    return {Vector<float, 4>{x, x, x, x}};
  } else {
    return [&]<int... i>(Indices<i...>) ZVXG_INLINE { return V{(static_cast<void>(i), x)...}; }
    (FirstIndices<kLanes<V>>());
  }
}

// ---- Lanes in another order

template <class V>
ZVXG_INLINE inline auto bare(V v) {
  if constexpr (std::is_same_v<V, FloatPair>) {
    return v.all;
  } else {
    return v;
  }
}

// In at least so many lanes; a scalar is in all of them, and what is above a vector is unknown.
template <int kCount, class V>
ZVXG_INLINE inline auto widenedTo(V v) {
  using T = typename Lanes<V>::Real;
  if constexpr (kLanes<V> == 1) {
    return broadcastTo<Vector<T, kCount>>(v);
  } else if constexpr (sizeof(v) >= kCount * sizeof(T)) {
    return v;
  } else if constexpr (sizeof(V) == 16) {
    if constexpr (sizeof(T) == 4) {
      return widenedTo<kCount>(static_cast<Vector<float, 8>>(_mm256_castps128_ps256(v)));
    } else {
      return widenedTo<kCount>(static_cast<Vector<double, 4>>(_mm256_castpd128_pd256(v)));
    }
  } else {
#ifdef __AVX512F__
    if constexpr (sizeof(T) == 4) {
      return static_cast<Vector<float, 16>>(_mm512_castps256_ps512(v));
    } else {
      return static_cast<Vector<double, 8>>(_mm512_castpd256_pd512(v));
    }
#else
    return [&]<int... i>(Indices<i...>) ZVXG_INLINE { return __builtin_shufflevector(v, v, i...); }
    (FirstIndices<kCount>());
#endif
  }
}

// So many lanes from kFirst on.
template <int kFirst, int kCount, class V>
ZVXG_INLINE inline auto part(V v) {
  return [&]<int... i>(Indices<i...>) ZVXG_INLINE {
    return __builtin_shufflevector(v, v, (kFirst + i)...);
  }
  (FirstIndices<kCount>());
}

// The result of a shuffle that is `kCount` lanes of the graph.
template <int kCount, class V>
ZVXG_INLINE inline auto lowest(V v) {
  using T = typename Lanes<V>::Real;
  if constexpr (kCount == 2 && sizeof(T) == 4) {
    if constexpr (kLanes < V >> 4) {
      return FloatPair{part<0, 4>(v)};
    } else {
      return FloatPair{v};
    }
  } else if constexpr (kCount < kLanes<V>) {
    return part<0, kCount>(v);
  } else {
    return v;
  }
}

// Which lane of two registers of kWhole lanes lane i of a shuffle is. A scalar is in all of them, and
// what is above the result repeats it.
template <int kWhole, int kOfA, int kOfB, int... kSelect>
constexpr int placeOf(int i) {
  constexpr int kFrom[] = {kSelect...};
  const int from = kFrom[i % sizeof...(kSelect)];
  if (from < kOfA) return kOfA == 1 ? i : from;
  return kWhole + (kOfB == 1 ? i : from - kOfA);
}

// Whether these are one half of so many lanes, in order.
template <int kOf, int... kSelect>
constexpr bool isHalf() {
  constexpr int kCount = sizeof...(kSelect), kFrom[] = {kSelect...};
  for (int i = 1; i < kCount; ++i) {
    if (kFrom[i] != kFrom[0] + i) return false;
  }
  return kOf == 2 * kCount && (kFrom[0] == 0 || kFrom[0] == kCount);
}

// Lane i of the result is lane kFirst, kSelect... of a, or of b from the lanes of a on.
template <int kFirst, int... kSelect, class A, class B>
ZVXG_INLINE inline auto shuffled(A a, B b) {
  using T = typename Lanes<A>::Real;
  constexpr int kCount = 1 + sizeof...(kSelect), kOfA = kLanes<A>, kOfB = kLanes<B>;
  constexpr int kLeast = 16 / sizeof(T), kWhole = std::max({kCount, kOfA, kOfB, kLeast});
  if constexpr (kCount == 1) {
    if constexpr (kFirst < kOfA) {
      return static_cast<T>(bare(a)[kFirst]);
    } else {
      return static_cast<T>(bare(b)[kFirst - kOfA]);
    }
  } else if constexpr (kOfA == 1 && kOfB == 1 && sizeof(T) == 8 && kCount == 2) {
    return Vector<T, 2>{kFirst ? b : a, ((kSelect != 0 ? b : a), ...)};
  } else if constexpr (kOfA == 1 && kOfB == 1 && kCount == 2) {
    return FloatPair{Vector<T, 4>{kFirst ? b : a, ((kSelect != 0 ? b : a), ...), 0, 0}};
  } else if constexpr (kCount >= kLeast && isHalf<kOfA, kFirst, kSelect...>()) {
    return part<kFirst, kCount>(a);
  } else {
    const auto x = widenedTo<kWhole>(bare(a)), y = widenedTo<kWhole>(bare(b));
    return [&]<int... i>(Indices<i...>) ZVXG_INLINE {
      return lowest<kCount>(
          __builtin_shufflevector(x, y, (placeOf<kWhole, kOfA, kOfB, kFirst, kSelect...>(i))...));
    }
    (FirstIndices<kWhole>());
  }
}

// ---- Signs and precision

// The other sign where `signs` has a minus zero.
template <class V>
ZVXG_INLINE inline V flipped(V x, V signs) {
  if constexpr (std::is_same_v<V, FloatPair>) {
    return {flipped(x.all, signs.all)};
  } else {
    using Bits =
        Vector<std::conditional_t<sizeof(typename Lanes<V>::Real) == 4, std::int32_t, std::int64_t>,
               kLanes<V>>;
    return reinterpret_cast<V>(reinterpret_cast<Bits>(x) ^ reinterpret_cast<Bits>(signs));
  }
}

// Four lanes by name, because of __builtin_convertvector g++ makes two conversions of two.
template <class To, class V>
ZVXG_INLINE inline To converted(V x) {
  if constexpr (std::is_same_v<V, FloatPair>) {
    return _mm_cvtps_pd(x.all);
  } else if constexpr (std::is_same_v<To, FloatPair>) {
    return {_mm_cvtpd_ps(x)};
  } else if constexpr (std::is_same_v<V, Vector<float, 4>>) {
    return _mm256_cvtps_pd(x);
  } else if constexpr (std::is_same_v<V, Vector<double, 4>>) {
    return _mm256_cvtpd_ps(x);
  } else {
    static_assert(kLanes<V> == 1);
    return static_cast<To>(x);
  }
}

}  // namespace zvxg
