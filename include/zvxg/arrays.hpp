// Shared by the headers of the companion: the arrays that a function takes, the checks of their
// lengths, the texts of errors, and the block of memory that a plan owns.
//
// An array is anything from which std::span can be deduced: a C array, std::array, std::vector, a
// span. A length that is known to the compiler is not checked at run time.
#pragma once

#include <algorithm>
#include <cassert>
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

// Whether two lengths may be equal: they are, or one of them is unknown.
template <std::size_t kA, std::size_t kB>
inline constexpr bool kAgree = kA == kB || kA == kDynamic || kB == kDynamic;

template <class Array>
using SpanOf = decltype(std::span(std::declval<std::remove_reference_t<Array>&>()));

template <class Array>
using ElementOf = typename SpanOf<Array>::element_type;

// The precision of an element, and whether it is complex.
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
concept ComplexArray = requires {
  requires TraitsOf<Array>::kIsComplex;
};

template <class Array>
concept RealArray = requires {
  requires !TraitsOf<Array>::kIsComplex;
};

// ---- Operands: arrays, and the half spectra of spectrum.hpp ------------------------------------

template <class Operand>
concept AnySpectrum = requires(std::remove_reference_t<Operand>& operand) {
  typename std::remove_cvref_t<Operand>::Number;
  std::remove_cvref_t<Operand>::kLayout;
  operand.view();
};

template <class Operand>
struct OperandTraits {
  using Number = typename TraitsOf<Operand>::Number;
  static constexpr std::size_t kLength = SpanOf<Operand>::extent;
};
template <AnySpectrum Operand>
struct OperandTraits<Operand> {
  using Number = typename std::remove_cvref_t<Operand>::Number;
  static constexpr std::size_t kLength = std::remove_cvref_t<Operand>::kLength;
};

template <class Operand>
using NumberOf = typename OperandTraits<Operand>::Number;
template <class Operand>
inline constexpr std::size_t kLengthOf = OperandTraits<Operand>::kLength;

template <class Operand>
auto memoryOf(Operand& operand) {
  if constexpr (AnySpectrum<Operand>) {
    return operand.view().numbers();
  } else {
    return std::span(operand);
  }
}

template <class Operand>
std::size_t lengthOf(Operand& operand) {
  if constexpr (AnySpectrum<Operand>) {
    return operand.length();
  } else {
    return std::span(operand).size();
  }
}

template <class Operand>
concept Writable = !std::is_const_v<typename decltype(memoryOf(
    std::declval<std::remove_reference_t<Operand>&>()))::element_type>;

// The length of a transform if the compiler knows it: as stated, or that of an operand.
template <std::size_t N, class In, class Out>
inline constexpr std::size_t kKnownLength = N != kDynamic               ? N
                                            : kLengthOf<In> != kDynamic ? kLengthOf<In>
                                                                        : kLengthOf<Out>;

// If this holds, nothing needs to be checked at run time.
template <class In, class Out>
inline constexpr bool kAllKnown = kLengthOf<In> != kDynamic&& kLengthOf<Out> != kDynamic;

template <std::size_t N, class In, class Out>
concept Matching = Writable<Out> && std::same_as<NumberOf<In>, NumberOf<Out>> &&
    kAgree<kKnownLength<N, In, Out>, kLengthOf<In>> &&
    kAgree<kKnownLength<N, In, Out>, kLengthOf<Out>>;

// ---- Checks ------------------------------------------------------------------------------------

// Errors are rare and their texts are long, so this code is kept out of the way of the call.
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

// Whether two arrays share memory. Compares integers, because comparing pointers into different
// arrays is undefined.
template <class A, std::size_t kA, class B, std::size_t kB>
bool overlap(std::span<A, kA> a, std::span<B, kB> b) {
  const auto startA = reinterpret_cast<std::uintptr_t>(a.data());
  const auto startB = reinterpret_cast<std::uintptr_t>(b.data());
  return startA < startB + b.size_bytes() && startB < startA + a.size_bytes();
}

template <class A, std::size_t kA, class B, std::size_t kB>
void checkApart(const char* function, std::span<A, kA> a, std::span<B, kB> b) {
  if (overlap(a, b)) [[unlikely]] {
    fail(function, "source and destination overlap");
  }
}

template <class A, std::size_t kA, class B, std::size_t kB>
void checkApartOrOne(const char* function, std::span<A, kA> a, std::span<B, kB> b) {
  const bool one = static_cast<const void*>(a.data()) == static_cast<const void*>(b.data());
  if (overlap(a, b) && !one) [[unlikely]] {
    fail(function, "source and destination overlap without being one array");
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

// If the compiler knows all lengths, only a flag made by a cast can fail.
template <bool kAllKnown>
void checkResult(const char* function, int32_t status, std::size_t length) noexcept(kAllKnown) {
  if constexpr (kAllKnown) {
    assert(status == zvxOk);
  } else {
    checkStatus(function, status, length);
  }
}

// The C functions take an int32_t. They have no kernel for its largest value, so it may represent
// all lengths beyond it.
inline int32_t saturated(std::size_t length) {
  return static_cast<int32_t>(std::min<std::size_t>(length, INT32_MAX));
}

// The length of a transform. Also checks whatever the compiler could not check.
template <std::size_t N, class In, class Out>
std::size_t checkedLength(const char* function, In& in, Out& out) noexcept(kAllKnown<In, Out>) {
  constexpr std::size_t kKnown = kKnownLength<N, In, Out>;
  const std::size_t length = kKnown != kDynamic ? kKnown : lengthOf(in);
  if constexpr (!kAllKnown<In, Out>) {
    checkSize(function, "the source", lengthOf(in), length);
    checkSize(function, "the destination", lengthOf(out), length);
    checkApartOrOne(function, memoryOf(in), memoryOf(out));
  }
  return length;
}

// ---- Memory ------------------------------------------------------------------------------------

// A cache line, so that long stores into a plan fill whole lines.
inline constexpr std::align_val_t kBlockAlignment{64};

struct FreeBlock {
  void operator()(std::byte* block) const noexcept { ::operator delete(block, kBlockAlignment); }
};
using Block = std::unique_ptr<std::byte, FreeBlock>;

/// Null for 0 bytes. Throws std::bad_alloc.
inline Block makeBlock(std::size_t bytes) {
  return Block(bytes == 0 ? nullptr
                          : static_cast<std::byte*>(::operator new(bytes, kBlockAlignment)));
}

}  // namespace detail
}  // namespace zvxg
