// Dct4<T>: a plan of the DCT-IV that owns its block.
//
//     zvxg::Dct4<float> dct4(1024);
//     dct4(samples, coefficients);
#pragma once

#include <bit>
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

/** The type-IV discrete cosine transform of one length N, a power of two from 2 to 2^26 in single
 *  precision or to 2^25 in double:
 *
 *      y[k] = sum over n = 0 .. N-1 of x[n] * cos(pi/N * (n + 1/2) * (k + 1/2)),  k = 0 .. N-1
 *
 *  without a factor. Applied twice it multiplies the data by N/2. To get them back multiply by 2/N
 *  once, or by sqrt(2/N) each time, which makes the transform orthogonal.
 *
 *  The plan is built in a block that the object owns, from operator new, at a multiple of 64 bytes.
 *  The useless lengths that zvxgDCT4GetSize_32f() accepts are refused: 2^k + 1, whose result is not
 *  a DCT-IV, and those whose size wraps around.
 *
 *  Threads. A call writes to workspaces in the plan, so it is not const: one plan serves one thread
 *  at a time, and clone() makes one for another thread. Different plans are independent.
 *
 *  Moving an object hands over its block; the plan itself stays at its address. An object that was
 *  moved from can be assigned to and destroyed; calling it throws. */
template <Real T>
class Dct4 {
 public:
  /// Throws std::invalid_argument for a length that has no plan, std::bad_alloc if there is no
  /// memory for it.
  explicit Dct4(std::size_t length)
      : length_(length), block_(detail::makeBlock(checkedBytes(length))) {
    detail::checkStatus(
        kName, Functions::kDct4Init(&spec_, static_cast<int32_t>(length), block_.get()), length);
  }
  /// Takes over what `other` holds.
  Dct4(Dct4&& other) noexcept { swap(other); }
  /// Takes over what `other` holds.
  Dct4& operator=(Dct4&& other) noexcept {
    Dct4(std::move(other)).swap(*this);
    return *this;
  }

  /// Another plan of the same length, built again: a plan holds addresses within its block, so a
  /// copy of the block would not be a plan. Throws as the constructor does.
  [[nodiscard]] Dct4 clone() const { return Dct4(length_); }

  /// Elements of a transform.
  std::size_t length() const noexcept { return length_; }

  /// Transforms `in` into `out`, both of length() elements at any alignment; they may be the same
  /// array. For other sizes, and for arrays that overlap in part, it throws std::invalid_argument
  /// and leaves `out` as it was.
  void operator()(std::span<const T> in, std::span<T> out) {
    detail::checkSize(kName, "the source", in.size(), length_);
    detail::checkSize(kName, "the destination", out.size(), length_);
    detail::checkApartOrOne(kName, in, out);
    detail::checkStatus(kName, Functions::kDct4(in.data(), out.data(), spec_), length_);
  }

  /// Transforms each of many signals, by libzvxgmany: see many.hpp.
  template <detail::RealSignals In, detail::RealSignals Out>
  requires detail::MatchingSignals<In, Out> && std::same_as<T, typename Out::Element>
  void operator()(const In& in, const Out& out) {
    detail::checkSignals(kName, in, length_, out, length_);
    detail::callMany(kName, length_, Functions::kDct4Many, in, out,
                     static_cast<int64_t>(in.count()), spec_);
  }

 private:
  using Functions = detail::Functions<T>;
  static constexpr const char* kName = "Dct4";

  static std::size_t checkedBytes(std::size_t length) {
    uint32_t bytes = 0;
    // The tables alone are as large as an array; a size that wrapped around is smaller.
    if (!std::has_single_bit(length) || length > INT32_MAX ||
        Functions::kDct4Size(static_cast<int32_t>(length), &bytes) != zvxOk ||
        bytes < length * sizeof(T)) {
      detail::fail(kName, "length " + std::to_string(length) + " is no power of two from 2 to 2^" +
                              (sizeof(T) == 4 ? "26" : "25"));
    }
    return bytes;
  }

  void swap(Dct4& other) noexcept {
    std::swap(length_, other.length_);
    std::swap(block_, other.block_);
    std::swap(spec_, other.spec_);
  }

  std::size_t length_ = 0;
  detail::Block block_;
  Dct4Spec* spec_ = nullptr;
};

}  // namespace zvxg
