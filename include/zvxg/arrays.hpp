// What the headers of the companion share: the arrays that a function takes, the checks of their
// lengths, the texts of errors, and the block of memory that a plan owns.
//
// An array is whatever std::span deduces itself from: a C array, std::array, std::vector, a span.
// Its extent is known to the compiler or not; one that is known is never checked at run time.
#pragma once

#include <algorithm>
#include <complex>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <span>
#include <stdexcept>
#include <string>
#include <type_traits>

#include "zvxg.h"

namespace zvxg {

/// A precision of the library.
template <class T>
concept Real = std::same_as<T, float> || std::same_as<T, double>;

/// A length that is known only at run time.
inline constexpr std::size_t kDynamic = std::dynamic_extent;

namespace detail {

template <class Array>
using SpanOf = decltype(std::span(std::declval<std::remove_reference_t<Array>&>()));

template <class Array>
using ElementOf = typename SpanOf<Array>::element_type;

template <class Array>
concept Contiguous = requires {
  typename SpanOf<Array>;
};

// The precision of an element and the type that the C functions have for it.
template <class Element>
struct ElementTraits {};
template <Real T>
struct ElementTraits<T> {
  using Number = T;
  static constexpr bool kIsComplex = false;
};
template <>
struct ElementTraits<Complex32> {
  using Number = float;
  static constexpr bool kIsComplex = true;
};
template <>
struct ElementTraits<Complex64> {
  using Number = double;
  static constexpr bool kIsComplex = true;
};
template <Real T>
struct ElementTraits<std::complex<T>> {
  using Number = T;
  static constexpr bool kIsComplex = true;
};

template <class Array>
using TraitsOf = ElementTraits<std::remove_const_t<ElementOf<Array>>>;

template <class Array>
concept RealArray = Contiguous<Array> && requires {
  typename TraitsOf<Array>::Number;
} && !TraitsOf<Array>::kIsComplex;

template <class Array>
concept ComplexArray = Contiguous<Array> && requires {
  typename TraitsOf<Array>::Number;
} && TraitsOf<Array>::kIsComplex;

template <class Array>
concept Writable = !std::is_const_v<ElementOf<Array>>;

// ---- Checks ------------------------------------------------------------------------------------

// Errors are rare, their texts long: out of the way of the call.
[[noreturn, gnu::cold, gnu::noinline]] inline void fail(const char* function,
                                                        const std::string& text) {
  throw std::invalid_argument(std::string("zvxg::") + function + ": " + text);
}

[[noreturn, gnu::cold, gnu::noinline]] inline void failSize(const char* function, const char* what,
                                                            std::size_t size,
                                                            std::size_t expected) {
  fail(function, std::string(what) + " has " + std::to_string(size) + " elements instead of " +
                     std::to_string(expected));
}

inline void checkSize(const char* function, const char* what, std::size_t size,
                      std::size_t expected) {
  if (size != expected) [[unlikely]] {
    failSize(function, what, size, expected);
  }
}

// Two arrays may be one or apart.
inline void checkOverlap(const char* function, std::span<const std::byte> a,
                         std::span<const std::byte> b) {
  // As integers: relational operators promise nothing for pointers into two arrays.
  const auto startA = reinterpret_cast<std::uintptr_t>(a.data());
  const auto startB = reinterpret_cast<std::uintptr_t>(b.data());
  const bool apart = startA + a.size() <= startB || startB + b.size() <= startA;
  if (!apart && startA != startB) [[unlikely]] {
    fail(function, "source and destination overlap without being one");
  }
}

[[noreturn, gnu::cold, gnu::noinline]] inline void failStatus(const char* function, int32_t status,
                                                              std::size_t length) {
  switch (status) {
    case zvxErrLength: fail(function, "there is no transform of length " + std::to_string(length));
    case zvxErrScaleFlag: fail(function, "the scale is none of the four flags");
    default: fail(function, "the object was moved from");
  }
}

inline void checkStatus(const char* function, int32_t status, std::size_t length) {
  if (status != zvxOk) [[unlikely]] {
    failStatus(function, status, length);
  }
}

// The C functions count in int32_t; what is beyond is as little a length as the largest of these.
inline int32_t saturated(std::size_t length) {
  return static_cast<int32_t>(std::min<std::size_t>(length, INT32_MAX));
}

// ---- Memory ------------------------------------------------------------------------------------

// A cache line, so that long stores of a plan fill whole ones.
inline constexpr std::align_val_t kBlockAlignment{64};

struct FreeBlock {
  void operator()(std::byte* block) const noexcept { ::operator delete(block, kBlockAlignment); }
};
using Block = std::unique_ptr<std::byte, FreeBlock>;

/// Null for no bytes. Throws std::bad_alloc.
inline Block makeBlock(std::size_t bytes) {
  return Block(bytes == 0 ? nullptr
                          : static_cast<std::byte*>(::operator new(bytes, kBlockAlignment)));
}

}  // namespace detail
}  // namespace zvxg
