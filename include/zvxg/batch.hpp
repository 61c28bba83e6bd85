// Many signals in one array. They go through a transform in one call (many.hpp), or one by one
// through batch(), whose caller says what to do with two of them:
//
//     zvxg::dft(zvxg::signals<12>(in), zvxg::signals<12>(out));
//     zvxg::batch(zvxg::signals<12>(in), zvxg::signals<12>(out), [](auto x, auto y) {
//       zvxg::dft(x, y);
//       normalise(y);
//     });
//
// The length is a template argument or, known only at run time, a second argument. Where signals
// start and how their elements follow one another:
//
//     zvxg::signals<64>(samples)                              // one behind the other
//     zvxg::signals<64>(samples, 16)                          // each 16 elements after the last
//     zvxg::signals<64>(stereo, {.stride = 2, .distance = 32})  // every second element
//     zvxg::columns<8>(image, width)                          // the columns of 8 rows
#pragma once

#include <cassert>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <type_traits>
#include <utility>

#include "zvxg/arrays.hpp"

namespace zvxg {

/** Element i of signal k is array[k * distance + i * stride], as in zvxg_many.h. */
struct Steps {
  std::size_t stride;    ///< from an element of a signal to the next
  std::size_t distance;  ///< from the start of a signal to that of the next
};

/** A view of as many signals of N elements as fit into an array. Make it by signals() or columns().
 *  It is copied like a pointer. kStride is 1, or kDynamic for a stride that is known at run time. */
template <class T, std::size_t N = kDynamic, std::size_t kStride = 1>
requires(kStride == 1 || kStride == kDynamic) class Signals {
 public:
  using Element = T;                                   ///< const if the signals are only read
  static constexpr std::size_t kLength = N;            ///< elements of a signal, or kDynamic
  static constexpr bool kIsContiguous = kStride == 1;  ///< whether a signal is a span

  /// Throws std::invalid_argument if the length is 0 or not N, if a step is 0 or the stride not
  /// kStride, or if T is not const and signals might share elements: those that are written must
  /// lie one behind the other, or side by side as columns do.
  Signals(std::span<T> array, std::size_t length, Steps steps)
      : data_(array.data()), length_(length), steps_(steps) {
    const auto [stride, distance] = steps;
    const bool fits = length > 0 && (N == kDynamic || length == N) && stride > 0 && distance > 0 &&
                      (kStride == kDynamic || stride == kStride);
    if (fits && !array.empty() && length - 1 <= (array.size() - 1) / stride) {
      count_ = (array.size() - 1 - (length - 1) * stride) / distance + 1;
    }
    if (!fits || (!std::is_const_v<T> && !areApart())) {
      detail::fail("signals", "length " + std::to_string(length) + " at a stride of " +
                                  std::to_string(stride) + " and a distance of " +
                                  std::to_string(distance));
    }
  }

  /// How many signals there are.
  std::size_t count() const noexcept { return count_; }
  /// Elements of a signal.
  std::size_t length() const noexcept { return N == kDynamic ? length_ : N; }
  /// Where elements and signals lie.
  Steps steps() const noexcept {
    return {kStride == kDynamic ? steps_.stride : 1, steps_.distance};
  }
  /// The first element of the first signal.
  T* data() const noexcept { return data_; }
  /// Signal i, i below count().
  std::span<T, N> operator[](std::size_t i) const noexcept requires(kStride == 1) {
    assert(i < count_);
    return std::span<T, N>(data_ + i * steps_.distance, length());
  }

 private:
  // A signal ends before the next one begins, or the first elements of all before the second ones.
  bool areApart() const {
    const auto [stride, distance] = steps_;
    return length_ == 1 || (distance - 1) / (length_ - 1) >= stride ||
           (kStride == kDynamic && (count_ == 0 || (count_ - 1) * distance < stride));
  }

  T* data_;
  std::size_t length_, count_ = 0;
  Steps steps_;
};

/** The signals of N elements in an array, each `distance` elements after the one before. Elements
 *  after the last whole signal are left out. */
template <std::size_t N, class Array>
auto signals(Array&& array, std::size_t distance = N) {
  return Signals<detail::ElementOf<Array>, N>(array, N, {1, distance});
}
/** The same with elements that do not follow one another. */
template <std::size_t N, class Array>
auto signals(Array&& array, Steps steps) {
  return Signals<detail::ElementOf<Array>, N, kDynamic>(array, N, steps);
}

/** The same with a length known only at run time. */
template <class Array>
auto signals(Array&& array, std::size_t length, std::size_t distance) {
  return Signals<detail::ElementOf<Array>>(array, length, {1, distance});
}
template <class Array>
auto signals(Array&& array, std::size_t length) {
  return signals(array, length, length);
}
template <class Array>
auto signals(Array&& array, std::size_t length, Steps steps) {
  return Signals<detail::ElementOf<Array>, kDynamic, kDynamic>(array, length, steps);
}

namespace detail {

template <std::size_t N, class Array>
auto columnsOf(Array& array, std::size_t length, std::size_t width, std::size_t pitch) {
  const std::span all(array);
  if (length == 0 || width == 0 || width > pitch || width > all.size() ||
      (length - 1) > (all.size() - width) / pitch) {
    fail("columns", std::to_string(width) + " of length " + std::to_string(length) +
                        ", rows at a distance of " + std::to_string(pitch) + ", in " +
                        std::to_string(all.size()) + " elements");
  }
  return Signals<ElementOf<Array>, N, kDynamic>(all.first((length - 1) * pitch + width), length,
                                                {pitch, 1});
}

}  // namespace detail

/** The first `width` columns of the first N rows of a matrix in `array`, whose rows start `pitch`
 *  elements apart. Throws std::invalid_argument unless the array has them all and `width` is at most
 *  `pitch`. */
template <std::size_t N, class Array>
auto columns(Array&& array, std::size_t width, std::size_t pitch) {
  return detail::columnsOf<N>(array, N, width, pitch);
}
/** All columns: the rows have nothing between them. */
template <std::size_t N, class Array>
auto columns(Array&& array, std::size_t width) {
  return columns<N>(array, width, width);
}

/** The same with a length known only at run time. */
template <class Array>
auto columns(Array&& array, std::size_t length, std::size_t width, std::size_t pitch) {
  return detail::columnsOf<kDynamic>(array, length, width, pitch);
}
template <class Array>
auto columns(Array&& array, std::size_t length, std::size_t width) {
  return columns(array, length, width, width);
}

namespace detail {

template <class In, class Out>
void checkCounts(const char* function, const In& in, const Out& out) {
  if (in.count() != out.count()) [[unlikely]] {
    fail(function, std::to_string(in.count()) + " signals into " + std::to_string(out.count()));
  }
}

// ---- Calls of zvxg_many.h ----------------------------------------------------------------------

template <class S>
inline constexpr bool kIsSignals = false;
template <class T, std::size_t N, std::size_t kStride>
inline constexpr bool kIsSignals<Signals<T, N, kStride>> = true;

template <class S>
concept AnySignals = kIsSignals<S>;

template <class S>
using SignalTraits = ElementTraits<std::remove_const_t<typename S::Element>>;

template <class S>
concept ComplexSignals = AnySignals<S> && SignalTraits<S>::kIsComplex;
template <class S>
concept RealSignals = AnySignals<S> && !SignalTraits<S>::kIsComplex;

template <class In, class Out>
concept MatchingSignals =
    !std::is_const_v<typename Out::Element> &&
    std::same_as<typename SignalTraits<In>::Number, typename SignalTraits<Out>::Number>;

// Signals in memory, in bytes: runs of one width that start at equal distances.
struct Runs {
  std::uintptr_t start;
  std::size_t pitch, width, size;
};

template <AnySignals S>
Runs runsOf(const S& signals) {
  constexpr std::size_t kBytes = sizeof(typename S::Element);
  const auto [stride, distance] = signals.steps();
  const bool rows = stride <= distance;
  const std::size_t width =
      rows ? (signals.length() - 1) * stride + 1 : (signals.count() - 1) * distance + 1;
  const std::size_t pitch = rows ? distance : stride;
  const std::size_t more = (rows ? signals.count() : signals.length()) - 1;
  return {reinterpret_cast<std::uintptr_t>(signals.data()), pitch * kBytes, width * kBytes,
          (more * pitch + width) * kBytes};
}

// Two sides of one matrix share no element although each reaches from its first row to its last.
inline bool areApart(const Runs& a, const Runs& b) {
  if (a.start >= b.start + b.size || b.start >= a.start + a.size) return true;
  if (a.start > b.start) return areApart(b, a);
  const std::size_t offset = (b.start - a.start) % a.pitch;
  return a.pitch == b.pitch && offset >= a.width && offset + b.width <= a.pitch;
}

// Whether each transform replaces its own source. Between samples and bins the strides differ in
// bytes, unless both are 1.
template <class In, class Out>
bool isInPlace(const In& in, const Out& out) {
  constexpr std::size_t kIn = sizeof(typename In::Element), kOut = sizeof(typename Out::Element);
  const Steps a = in.steps(), b = out.steps();
  return static_cast<const void*>(in.data()) == static_cast<const void*>(out.data()) &&
         (in.count() == 1 || a.distance * kIn == b.distance * kOut) && a.stride == b.stride &&
         (kIn == kOut || a.stride == 1);
}

template <class In, class Out>
void checkSignals(const char* function, const In& in, std::size_t inLength, const Out& out,
                  std::size_t outLength) {
  checkCounts(function, in, out);
  checkSize(function, "a source", in.length(), inLength);
  checkSize(function, "a destination", out.length(), outLength);
  if (in.count() > 0 && !isInPlace(in, out) && !areApart(runsOf(in), runsOf(out))) [[unlikely]] {
    fail(function, "source and destination overlap without being the same signals");
  }
}

// What C takes for the elements of signals.
template <AnySignals S>
auto* memoryOfSignals(const S& signals) {
  using Number = typename SignalTraits<S>::Number;
  using Pair = std::conditional_t<sizeof(Number) == 4, Complex32, Complex64>;
  using Plain = std::conditional_t<SignalTraits<S>::kIsComplex, Pair, Number>;
  using Element = typename S::Element;
  return reinterpret_cast<std::conditional_t<std::is_const_v<Element>, const Plain, Plain>*>(
      signals.data());
}

// function(arrays, rest...) of zvxg_many.h, for transforms of `length` elements.
template <class Function, class In, class Out, class... Rest>
void callMany(const char* name, std::size_t length, Function function, const In& in, const Out& out,
              Rest... rest) {
  const auto step = [](std::size_t elements) { return static_cast<std::ptrdiff_t>(elements); };
  const Steps from = in.steps(), to = out.steps();
  checkStatus(name,
              function(memoryOfSignals(in), step(from.stride), step(from.distance),
                       memoryOfSignals(out), step(to.stride), step(to.distance), rest...),
              length);
}

}  // namespace detail

/** Calls transform(in[i], out[i]) for each i, in rising order. For calls in place, both are the
 *  same array with the same distance. Throws std::invalid_argument, before the first call, if the
 *  numbers of signals in `in` and `out` differ. All other checks are up to `transform`. */
template <class In, std::size_t kIn, class Out, std::size_t kOut, class Transform>
void batch(const Signals<In, kIn>& in, const Signals<Out, kOut>& out, Transform&& transform) {
  detail::checkCounts("batch", in, out);
  for (std::size_t i = 0; i < in.count(); ++i) transform(in[i], out[i]);
}

}  // namespace zvxg
