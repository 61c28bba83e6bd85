// The Walsh-Hadamard transform: wht<order>() up to order 7, and Wht<T>, which owns the work buffer
// of the longer ones. Arrays, `scale`, errors and noexcept are as told in dft.hpp. The transform
// has no direction.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <utility>

#include "zvxg/arrays.hpp"
#include "zvxg/functions.hpp"

namespace zvxg {

/** The Walsh-Hadamard transform of 2^kOrder real numbers into as many, in natural order, for the
 *  orders 1 to 7, which need no buffer. Any number of threads may call at once. */
template <int kOrder, detail::RealArray In, detail::RealArray Out>
requires(kOrder >= 1 && kOrder <= 7 &&
         detail::Matching<std::size_t{1} << kOrder, In,
                          Out>) void wht(In&& in, Out&& out,
                                         ZvxScaleFlag scale =
                                             zvxNoDiv) noexcept(detail::kAllKnown<In, Out>) {
  using T = detail::NumberOf<In>;
  constexpr detail::BufferedKernel<T> kKernel = detail::Functions<T>::kWht[kOrder - 1];
  const std::size_t length = detail::checkedLength<std::size_t{1} << kOrder>("wht", in, out);
  detail::checkResult<detail::kAllKnown<In, Out>>(
      "wht", kKernel(detail::memoryOf(in).data(), detail::memoryOf(out).data(), scale, nullptr),
      length);
}

/** The Walsh-Hadamard transform of one order, 1 to 13, with its work buffer.
 *
 *  The buffer belongs to the object and not to the thread: then it is plain who holds up to 72 KB
 *  and for how long, and a call looks nothing up. A call writes to it, so it is not const; an object
 *  serves one thread at a time, and clone() makes one for another. An object that was moved from can
 *  be assigned to and destroyed; a call throws. */
template <Real T>
class Wht {
 public:
  /// Throws std::invalid_argument for another order, std::bad_alloc if there is no memory.
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

  /// Another object of this order.
  [[nodiscard]] Wht clone() const { return Wht(order_); }

  /// Logarithm of the length to base 2.
  int order() const noexcept { return order_; }
  /// Elements of a transform.
  std::size_t length() const noexcept { return std::size_t{1} << order_; }

  /// Transforms `in` into `out`, both of length() elements; they may be one array. Throws
  /// std::invalid_argument for another size and for arrays that overlap in part.
  void operator()(std::span<const T> in, std::span<T> out, ZvxScaleFlag scale = zvxNoDiv) {
    detail::checkSize(kName, "the source", in.size(), length());
    detail::checkSize(kName, "the destination", out.size(), length());
    detail::checkApartOrOne(kName, in, out);
    auto* const buffer = reinterpret_cast<uint8_t*>(buffer_.get());
    detail::checkStatus(
        kName, detail::Functions<T>::kWhtByOrder(in.data(), out.data(), order_, scale, buffer),
        length());
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
