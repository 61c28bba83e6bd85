// The Walsh-Hadamard transform: wht<order>() up to order 7, and Wht<T>, which owns the work buffer
// that longer ones need. Arrays, `scale`, errors and noexcept are as in dft.hpp. The transform has
// no direction.
#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <utility>

#include "zvxg/arrays.hpp"
#include "zvxg/batch.hpp"
#include "zvxg/functions.hpp"

namespace zvxg {
namespace detail {

template <int kOrder, class In, class Out>
concept MatchingOrder = kOrder >= 1 && kOrder <= 7 && Matching<std::size_t{1} << kOrder, In, Out>;

template <class In, class Out>
void whtMany(const char* name, int order, const In& in, const Out& out, ZvxScaleFlag scale,
             std::byte* buffer) {
  using T = typename SignalTraits<In>::Number;
  const std::size_t length = std::size_t{1} << order;
  checkSignals(name, in, length, out, length);
  callMany(name, length, Functions<T>::kWhtMany, in, out, order, static_cast<int64_t>(in.count()),
           scale, reinterpret_cast<T*>(buffer));
}

}  // namespace detail

/** The Walsh-Hadamard transform of 2^kOrder real numbers, in natural order, for the orders 1 to 7,
 *  which need no buffer. Any number of threads may call at once. */
template <int kOrder, detail::RealArray In, detail::RealArray Out>
requires detail::MatchingOrder<kOrder, In, Out>
void wht(In&& in, Out&& out, ZvxScaleFlag scale = zvxNoDiv) noexcept(detail::kAllKnown<In, Out>) {
  using T = detail::NumberOf<In>;
  constexpr detail::BufferedKernel<T> kKernel = detail::Functions<T>::kWht[kOrder - 1];
  const std::size_t length = detail::checkedLength<std::size_t{1} << kOrder>("wht", in, out);
  detail::checkResult<detail::kAllKnown<In, Out>>(
      "wht", kKernel(detail::memoryOf(in).data(), detail::memoryOf(out).data(), scale, nullptr),
      length);
}

/** The Walsh-Hadamard transform of one order, 1 to 13, with its work buffer.
 *
 *  The buffer belongs to the object, not to the thread. So it is clear what holds up to 72 KB and
 *  for how long, and a call need not look it up. A call writes to the buffer, so it is not const:
 *  an object serves one thread at a time, and clone() makes one for another thread. An object that
 *  was moved from can be assigned to and destroyed; calling it throws. */
template <Real T>
class Wht {
 public:
  /// Throws std::invalid_argument for any other order, std::bad_alloc if there is no memory.
  explicit Wht(int order) : order_(order), buffer_(detail::makeBlock(bytesOf(order))) {}
  /// Takes over what `other` holds.
  Wht(Wht&& other) noexcept
      : order_(std::exchange(other.order_, 0)), buffer_(std::move(other.buffer_)) {}
  /// Takes over what `other` holds.
  Wht& operator=(Wht&& other) noexcept {
    order_ = std::exchange(other.order_, 0);
    buffer_ = std::move(other.buffer_);
    return *this;
  }

  /// Another object of the same order.
  [[nodiscard]] Wht clone() const { return Wht(order_); }

  /// Logarithm of the length to base 2.
  int order() const noexcept { return order_; }
  /// Elements of a transform.
  std::size_t length() const noexcept { return std::size_t{1} << order_; }

  /// Transforms `in` into `out`, both of length() elements; they may be the same array. Throws
  /// std::invalid_argument for other sizes and for arrays that overlap in part.
  void operator()(std::span<const T> in, std::span<T> out, ZvxScaleFlag scale = zvxNoDiv) {
    detail::checkSize(kName, "the source", in.size(), length());
    detail::checkSize(kName, "the destination", out.size(), length());
    detail::checkApartOrOne(kName, in, out);
    auto* const buffer = reinterpret_cast<uint8_t*>(buffer_.get());
    detail::checkStatus(
        kName, detail::Functions<T>::kWhtByOrder(in.data(), out.data(), order_, scale, buffer),
        length());
  }

  /// Transforms each of many signals, by libzvxgmany: see many.hpp.
  template <detail::RealSignals In, detail::RealSignals Out>
  requires detail::MatchingSignals<In, Out> && std::same_as<T, typename Out::Element>
  void operator()(const In& in, const Out& out, ZvxScaleFlag scale = zvxNoDiv) {
    detail::whtMany(kName, order_, in, out, scale, buffer_.get());
  }

 private:
  static constexpr const char* kName = "Wht";

  static std::size_t bytesOf(int order) {
    uint32_t bytes = 0;
    if (detail::Functions<T>::kWhtBufferSize(order, &bytes) != zvxOk) {
      detail::fail(kName, "order " + std::to_string(order) + " is not from 1 to 13");
    }
    return bytes;
  }

  int order_;
  detail::Block buffer_;
};

}  // namespace zvxg
