// Many signals in one array, one after another or at a stride, and the loop over them.
//
//     zvxg::batch(zvxg::signals<12>(in), zvxg::signals<12>(out),
//                 [](auto x, auto y) { zvxg::dft(x, y); });
//
// Each signal is a span, of constant extent if the length is a template argument. The caller says
// what to do with two of them, so one loop serves all transforms, including those that are objects:
//
//     zvxg::Dct4<float> dct4(256);
//     zvxg::batch(zvxg::signals(in, 256), zvxg::signals(out, 256), dct4);
//
//     // Spectra of frames of 64 samples, each 16 samples after the one before.
//     zvxg::batch(zvxg::signals<64>(samples, 16), zvxg::signals<64>(spectra), [](auto x, auto y) {
//       zvxg::rdft(x, zvxg::SpectrumView<zvxg::Layout::Pack, float, 64>(y));
//     });
#pragma once

#include <cassert>
#include <cstddef>
#include <span>
#include <string>
#include <type_traits>
#include <utility>

#include "zvxg/arrays.hpp"

namespace zvxg {

/** A view of as many signals of N elements as fit into an array, each starting `stride` elements
 *  after the one before. Make it by signals(). It is copied like a pointer. */
template <class T, std::size_t N = kDynamic>
class Signals {
 public:
  /// Throws std::invalid_argument if the length is 0 or not N, if the stride is 0, or if it is less
  /// than the length and T is not const: signals that are written to must not overlap.
  Signals(std::span<T> array, std::size_t length, std::size_t stride)
      : data_(array.data()), length_(length), stride_(stride) {
    const std::size_t least = std::is_const_v<T> ? 1 : length;
    if (length == 0 || (N != kDynamic && length != N) || stride < least) {
      detail::fail("signals", "length " + std::to_string(length) + " at a stride of " +
                                  std::to_string(stride));
    }
    count_ = array.size() < length ? 0 : (array.size() - length) / stride + 1;
  }

  /// How many signals there are.
  std::size_t count() const noexcept { return count_; }
  /// Signal i, i below count().
  std::span<T, N> operator[](std::size_t i) const noexcept {
    assert(i < count_);
    return std::span<T, N>(data_ + i * stride_, N == kDynamic ? length_ : N);
  }

 private:
  T* data_;
  std::size_t length_, stride_, count_;
};

/** The signals of N elements in an array. Elements after the last whole signal are left out. */
template <std::size_t N, class Array>
auto signals(Array&& array, std::size_t stride = N) {
  return Signals<detail::ElementOf<Array>, N>(array, N, stride);
}

/** The same with a length known only at run time. */
template <class Array>
auto signals(Array&& array, std::size_t length, std::size_t stride) {
  return Signals<detail::ElementOf<Array>>(array, length, stride);
}
template <class Array>
auto signals(Array&& array, std::size_t length) {
  return signals(array, length, length);
}

/** Calls transform(in[i], out[i]) for each i, in rising order. For calls in place, both are the
 *  same array with the same stride. Throws std::invalid_argument, before the first call, if the
 *  numbers of signals in `in` and `out` differ. All other checks are up to `transform`. */
template <class In, std::size_t kIn, class Out, std::size_t kOut, class Transform>
void batch(const Signals<In, kIn>& in, const Signals<Out, kOut>& out, Transform&& transform) {
  if (in.count() != out.count()) {
    detail::fail("batch",
                 std::to_string(in.count()) + " signals into " + std::to_string(out.count()));
  }
  for (std::size_t i = 0; i < in.count(); ++i) transform(in[i], out[i]);
}

}  // namespace zvxg
