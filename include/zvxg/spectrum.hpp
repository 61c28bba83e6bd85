// Types for the half spectrum of a real signal, with its layout, precision and length. Spectrum
// owns its numbers, SpectrumView refers to yours; convert() goes from any layout to any other.
// docs/layouts.md shows the layouts side by side.
#pragma once

#include <array>
#include <cassert>
#include <complex>
#include <cstddef>
#include <span>
#include <type_traits>
#include <vector>

#include "zvxg/arrays.hpp"

namespace zvxg {

/** The places of the bins X[k] = R[k] + i I[k], k = 0 .. h, of N real samples, where h is N/2
 *  rounded down. I[0] is zero, and for even N so is I[N/2]. */
enum class Layout {
  Ccs,         ///< R[k], I[k] for all k, zeros included: NumPy's rfft. N+2 numbers, N+1 for odd N
  Pack,        ///< R[0], the pairs R[k], I[k], and for even N R[N/2] at the end. N numbers
  Perm,        ///< for even N R[0], R[N/2], then the pairs; for odd N as Pack. N numbers
  HalfComplex  ///< R[0] .. R[h], then backwards the I[k] that are not zero: FFTW's r2hc. N numbers.
               ///< Only convert() reads and writes it, no transform does
};

/// How many numbers the spectrum of `length` samples has.
constexpr std::size_t spectrumSize(Layout layout, std::size_t length) noexcept {
  return layout == Layout::Ccs ? length / 2 * 2 + 2 : length;
}

namespace detail {

struct BinPlace {
  std::size_t re, im;
};

constexpr bool isOwnMirror(std::size_t length, std::size_t k) { return k == 0 || 2 * k == length; }

// If a bin is its own mirror, the place of its imaginary part matters in CCS only.
constexpr BinPlace binPlace(Layout layout, std::size_t length, std::size_t k) {
  if (layout == Layout::Ccs) return {2 * k, 2 * k + 1};
  if (layout == Layout::HalfComplex) return {k, length - k};
  if (k == 0) return {0, 0};
  const bool perm = layout == Layout::Perm && length % 2 == 0;
  if (2 * k == length) return {perm ? 1 : length - 1, 0};
  return perm ? BinPlace{2 * k, 2 * k + 1} : BinPlace{2 * k - 1, 2 * k};
}

constexpr std::size_t extentOf(Layout layout, std::size_t length) {
  return length == kDynamic ? kDynamic : spectrumSize(layout, length);
}

constexpr std::size_t binsOf(std::size_t length) {
  return length == kDynamic ? kDynamic : length / 2 + 1;
}

// A complex number with parts of type T, const if T is.
template <class T>
using ComplexOf = std::conditional_t<std::is_const_v<T>, const std::complex<std::remove_const_t<T>>,
                                     std::complex<T>>;

// The length of a signal, a base because it then takes no room if it is a constant.
template <std::size_t N>
struct Length {
  static constexpr std::size_t length_ = N;
};
template <>
struct Length<kDynamic> {
  std::size_t length_ = 0;
};

}  // namespace detail

/** A half spectrum of N samples in your own array. T is float or double, const in a view that is
 *  only read. N is a constant, or kDynamic, and then an argument of the constructor. A view is
 *  copied like a pointer and valid as long as its array. */
template <Layout kKind, class T, std::size_t N = kDynamic>
requires Real<std::remove_const_t<T>>
class SpectrumView : detail::Length<N> {
  static constexpr bool kKnown = N != kDynamic, kPairs = kKind == Layout::Ccs;
  using Numbers = std::span<T, detail::extentOf(kKind, N)>;
  using Pairs = std::span<detail::ComplexOf<T>, detail::binsOf(N)>;

 public:
  using Number = std::remove_const_t<T>;     ///< float or double
  static constexpr Layout kLayout = kKind;   ///< places of the bins
  static constexpr std::size_t kLength = N;  ///< samples of the signal, or kDynamic

  /// A view of spectrumSize(kKind, N) numbers.
  explicit SpectrumView(Numbers numbers) noexcept requires kKnown : numbers_(numbers) {}
  /// Throws std::invalid_argument unless there are spectrumSize(kKind, length) numbers.
  SpectrumView(Numbers numbers, std::size_t length) requires(!kKnown)
      : detail::Length<N>{length}, numbers_(numbers) {
    detail::checkSize("SpectrumView", "the array", numbers.size(), spectrumSize(kKind, length));
  }

  /// A view of the complex bins 0 .. N/2, in the order of NumPy's rfft.
  explicit SpectrumView(Pairs bins) noexcept requires(kPairs&& kKnown)
      : SpectrumView(Numbers(numbersOf(bins), 2 * bins.size())) {}
  /// Throws std::invalid_argument unless there are length / 2 + 1 bins.
  SpectrumView(Pairs bins, std::size_t length) requires(kPairs && !kKnown)
      : SpectrumView(Numbers(numbersOf(bins), 2 * bins.size()), length) {}

  /// Samples of the signal.
  std::size_t length() const noexcept { return this->length_; }
  /// The array as the layout has it.
  Numbers numbers() const noexcept { return numbers_; }
  /// Itself, as Spectrum::view().
  SpectrumView view() const noexcept { return *this; }

  /// X[k], k = 0 .. length() / 2. The places where CCS stores zeros are not read.
  std::complex<Number> bin(std::size_t k) const noexcept {
    assert(2 * k <= length());
    const auto [re, im] = detail::binPlace(kKind, length(), k);
    return {numbers_[re], detail::isOwnMirror(length(), k) ? Number(0) : numbers_[im]};
  }

  /// Sets X[k]. For a bin without imaginary part, that of `value` is taken as zero.
  void setBin(std::size_t k, std::complex<Number> value) const noexcept
      requires(!std::is_const_v<T>) {
    assert(2 * k <= length());
    const auto [re, im] = detail::binPlace(kKind, length(), k);
    const bool isReal = detail::isOwnMirror(length(), k);
    numbers_[re] = value.real();
    if (!isReal || kPairs) numbers_[im] = isReal ? Number(0) : value.imag();
  }

 private:
  // The standard permits reading an array of std::complex as an array of numbers.
  static T* numbersOf(Pairs bins) noexcept { return reinterpret_cast<T*>(bins.data()); }

  Numbers numbers_;
};

/** A half spectrum of N samples that owns its numbers. They are in the object if N is a constant,
 *  and on the heap if N is an argument of the constructor; they start as zeros. A spectrum of
 *  run-time length that was moved from can be assigned to and destroyed; calls with it throw. */
template <Layout kKind, Real T, std::size_t N = kDynamic>
class Spectrum : detail::Length<N> {
  static constexpr bool kKnown = N != kDynamic;

 public:
  using Number = T;                          ///< float or double
  static constexpr Layout kLayout = kKind;   ///< places of the bins
  static constexpr std::size_t kLength = N;  ///< samples of the signal, or kDynamic

  Spectrum() noexcept requires kKnown = default;
  /// Throws std::bad_alloc if there is no memory.
  explicit Spectrum(std::size_t length) requires(!kKnown)
      : detail::Length<N>{length}, numbers_(spectrumSize(kKind, length)) {}

  /// A view for the functions, valid as long as the spectrum is neither moved nor destroyed.
  SpectrumView<kKind, T, N> view() noexcept(kKnown) { return viewOf<T>(numbers_); }
  /// The same, to be read only.
  SpectrumView<kKind, const T, N> view() const noexcept(kKnown) {
    return viewOf<const T>(numbers_);
  }

  /// Samples of the signal.
  std::size_t length() const noexcept { return this->length_; }
  /// The array as the layout has it.
  auto numbers() noexcept(kKnown) { return view().numbers(); }
  /// The same, to be read only.
  auto numbers() const noexcept(kKnown) { return view().numbers(); }
  /// As SpectrumView::bin().
  std::complex<T> bin(std::size_t k) const noexcept(kKnown) { return view().bin(k); }
  /// As SpectrumView::setBin().
  void setBin(std::size_t k, std::complex<T> value) noexcept(kKnown) { view().setBin(k, value); }

 private:
  template <class Element, class Numbers>
  SpectrumView<kKind, Element, N> viewOf(Numbers& numbers) const noexcept(kKnown) {
    if constexpr (kKnown) {
      return SpectrumView<kKind, Element, N>(numbers);
    } else {
      return {numbers, this->length_};
    }
  }

  std::conditional_t<kKnown, std::array<T, detail::extentOf(kKind, kKnown ? N : 0)>, std::vector<T>>
      numbers_{};
};

/** Copies a half spectrum from any layout to any other, with the same precision and length. Zeros
 *  that the source does not store are written as +0.0. The arrays must not overlap. Throws
 *  std::invalid_argument if lengths known only at run time differ, or if the arrays overlap. */
template <detail::AnySpectrum From, detail::AnySpectrum To>
requires detail::Matching<kDynamic, From, To>
void convert(const From& from, To&& to) {
  const auto source = from.view();
  const auto destination = to.view();
  detail::checkSize("convert", "the destination", destination.length(), source.length());
  detail::checkApart("convert", source.numbers(), destination.numbers());
  for (std::size_t k = 0; 2 * k <= source.length(); ++k) destination.setBin(k, source.bin(k));
}

}  // namespace zvxg
