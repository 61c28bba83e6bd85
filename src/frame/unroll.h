// For straight-line code: functions that are always inlined, and loops whose indices are constants.
#pragma once

#include <type_traits>
#include <utility>

// Goes before `inline` of a function, or before the body of a lambda. Without optimisation it does
// nothing, because compilers take minutes for a transform that is one unrolled function.
#ifdef __OPTIMIZE__
#define ZVXG_INLINE __attribute__((always_inline))
#else
#define ZVXG_INLINE
#endif

namespace zvxg {

template <class Body, int... i>
ZVXG_INLINE inline void unroll(const Body& body, std::integer_sequence<int, i...>) {
  (body(std::integral_constant<int, i>()), ...);
}

// Calls body(0), body(1) ... with constants as arguments, so that all indices are known.
template <int kCount, class Body>
ZVXG_INLINE inline void unroll(const Body& body) {
  unroll(body, std::make_integer_sequence<int, kCount>());
}

}  // namespace zvxg
