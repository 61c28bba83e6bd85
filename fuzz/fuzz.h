// What the fuzz targets share. Choices are read from the end of an input and numbers from its
// start; where nothing is left, choices are 0 and numbers come from a generator. A finding stops
// the program.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <span>

#include "sanitize/transforms.h"

namespace fuzz {

inline void require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "finding: %s\n", what);
  std::abort();
}

class Input {
 public:
  Input(const uint8_t* data, std::size_t size) : rest_(data, size) {}

  /// One of 0 .. count - 1; count is at most 2^16.
  uint32_t choice(uint32_t count) { return taken<uint16_t>(true) % count; }
  int32_t anyNumber() { return taken<int32_t>(true); }
  /// Any number but those that `isGood` accepts, and `otherwise` in place of them.
  template <class IsGood>
  int32_t badNumber(const IsGood& isGood, int32_t otherwise) {
    const int32_t number = anyNumber();
    return isGood(number) ? otherwise : number;
  }

  /// Numbers of any bits, or of moderate size, so that most results can be compared with a sum.
  template <class T>
  void fill(std::span<T> numbers) {
    const bool anyBits = choice(4) == 0;
    for (T& number : numbers) {
      if (anyBits) {
        number = taken<T>(false);
      } else if (rest_.size() > kForChoices) {
        number = static_cast<T>(taken<int8_t>(false)) / 16;
      } else {
        state_ = state_ * 6364136223846793005u + 1442695040888963407u;
        number = static_cast<T>(static_cast<int32_t>(state_ >> 32)) / (1 << 30);
      }
    }
  }

 private:
  // Of long arrays, the numbers leave so much to the choices that come after them.
  static constexpr std::size_t kForChoices = 32;

  template <class Value>
  Value taken(bool fromEnd) {
    Value value = 0;
    const std::size_t available =
        fromEnd ? rest_.size() : rest_.size() - std::min(rest_.size(), kForChoices);
    const std::size_t count = std::min(sizeof value, available);
    if (count == 0) return value;
    std::memcpy(&value, (fromEnd ? rest_.last(count) : rest_.first(count)).data(), count);
    rest_ = fromEnd ? rest_.first(rest_.size() - count) : rest_.subspan(count);
    return value;
  }

  std::span<const uint8_t> rest_;
  uint64_t state_ = 1;
};

/// The same bits. NaN equals any NaN, as its payload depends on the order of the operands of a sum.
template <class T>
bool sameNumbers(std::span<const T> a, std::span<const T> b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](T x, T y) {
    return (std::isnan(x) && std::isnan(y)) || std::memcmp(&x, &y, sizeof x) == 0;
  });
}

/// Whether the numbers are finite and far from overflow and underflow in sums and products.
template <class T>
bool areOrdinary(std::span<const T> numbers) {
  T largest = 0;
  for (const T number : numbers) {
    if (!std::isfinite(number)) return false;
    largest = std::max(largest, std::abs(number));
  }
  return largest == 0 || (largest > T(1e-10) && largest < T(1e10));
}

/// Whether the L2 norm of the error is below that of the expected numbers times the bound of the
/// tests. The transforms are orthogonal but for a factor, so no source makes the latter small.
template <class T>
bool areClose(std::span<const long double> expected, std::span<const T> actual) {
  long double error = 0, norm = 0;
  for (std::size_t i = 0; i < expected.size(); ++i) {
    const long double difference = actual[i] - expected[i];
    error += difference * difference;
    norm += expected[i] * expected[i];
  }
  return std::sqrt(error) <= 4 * std::numeric_limits<T>::epsilon() * std::sqrt(norm);
}

template <class T>
T scaleFactor(int32_t flag, bool forward, bool directed, int length) {
  const bool divides = flag == zvxDivFwdByN   ? forward || !directed
                       : flag == zvxDivInvByN ? !forward || !directed
                                              : false;
  if (divides) return T(1) / static_cast<T>(length);
  return flag == zvxDivBySqrtN ? static_cast<T>(1 / std::sqrt(static_cast<long double>(length)))
                               : T(1);
}

/// Runs call(src, dst) with `source` where the input says, in place and not: the results must have
/// the same bits. Null pointers are refused before anything is written. Returns the result.
template <class T, class Element, class Call>
std::vector<T> resultOf(Input& input, std::span<const T> source, std::size_t destinationSize,
                        const Call& call) {
  const auto place = [&] { return input.choice(64); };
  const auto elements = [](tests::Exact& array) { return array.as<Element>(); };
  const auto numbers = [&](tests::Exact& array) {
    std::vector<T> copy(destinationSize);
    std::memcpy(copy.data(), array.data(), destinationSize * sizeof(T));
    return copy;
  };
  tests::Exact src(source.size_bytes(), place()), dst(destinationSize * sizeof(T), place());
  std::memcpy(src.data(), source.data(), source.size_bytes());

  std::memset(dst.data(), 0x7f, dst.bytes());
  require(call(nullptr, elements(dst)) == zvxErrNullPointer, "null source");
  require(call(elements(src), nullptr) == zvxErrNullPointer, "null destination");
  require(std::all_of(dst.data(), dst.data() + dst.bytes(),
                      [](std::byte byte) { return byte == std::byte{0x7f}; }),
          "a refusal wrote its destination");

  require(call(elements(src), elements(dst)) == zvxOk, "a good call");
  tests::Exact both(std::max(src.bytes(), dst.bytes()), place());
  std::memcpy(both.data(), src.data(), src.bytes());
  require(call(elements(both), elements(both)) == zvxOk, "a good call in place");
  require(sameNumbers<T>(numbers(dst), numbers(both)), "other bits in place");
  tests::Exact aligned(src, 0), result(dst.bytes());
  require(call(elements(aligned), elements(result)) == zvxOk, "a good aligned call");
  require(sameNumbers<T>(numbers(dst), numbers(result)), "other bits at aligned places");
  require(std::memcmp(src.data(), source.data(), src.bytes()) == 0, "a source was written");
  return numbers(dst);
}

/// Null pointers come before a bad flag, which must leave the destination as it is.
template <class Element, class Call>
void requireFlagRefused(Input& input, const Call& call) {
  const int32_t flag = input.badNumber(
      [](int32_t number) { return std::ranges::count(tests::kFlags, number) != 0; }, 3);
  tests::Exact none(0);  // not even a byte may be touched
  auto* const nowhere = none.as<Element>();
  require(call(nowhere, nowhere, flag) == zvxErrScaleFlag, "bad flag");
  require(call(nullptr, nowhere, flag) == zvxErrNullPointer, "null source and bad flag");
  require(call(nowhere, nullptr, flag) == zvxErrNullPointer, "null destination and bad flag");
}

}  // namespace fuzz
