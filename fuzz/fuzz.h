// What the fuzz targets share. Choices are read from the end of an input and numbers from its
// start; where nothing is left, choices are 0 and numbers come from a generator. A finding stops
// the program.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <span>
#include <vector>

#include "interface.h"
#include "sanitize/exact.h"
#include "zvxg.h"

namespace fuzz {

using api::kFlags;
using tests::Exact;

inline const api::Exports& exports() {
  static const api::Exports kExports(api::linkedFunctions());
  return kExports;
}

inline void require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "finding: %s\n", what);
  std::abort();
}

class Input {
 public:
  Input(const uint8_t* data, std::size_t size) : rest_(data, size) {}

  /// One of 0 .. count - 1; count is at most 2^16.
  uint32_t choice(std::size_t count) {
    return taken<uint16_t>(true) % static_cast<uint32_t>(count);
  }
  int32_t anyNumber() { return taken<int32_t>(true); }

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

}  // namespace fuzz
