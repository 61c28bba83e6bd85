// Arrays at chosen places: between pages that may not be touched, and at every distance from a
// cache line with a line on either side.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

#include "harness.h"
#include "pages.h"

namespace tests {

// A cache line is the period of every alignment test and of every vector.
inline constexpr std::size_t kLine = 64;

// Room for an array at every distance from a cache line, and a line on either side.
class Surroundings {
 public:
  explicit Surroundings(std::size_t bytes) : bytes_(bytes), whole_(bytes + 4 * kLine, kUntouched) {
    const auto address = reinterpret_cast<std::uintptr_t>(whole_.data());
    base_ = whole_.data() + (2 * kLine - address % kLine);
  }
  std::byte* at(std::size_t offset) { return base_ + offset; }
  /// The array with these bytes, and all around it as it was.
  std::byte* holding(const std::vector<std::byte>& bytes, std::size_t offset) {
    std::fill(whole_.begin(), whole_.end(), kUntouched);
    std::copy(bytes.begin(), bytes.end(), at(offset));
    return at(offset);
  }
  bool hold(std::size_t offset, const std::vector<std::byte>& expected) const {
    const std::byte* const array = base_ + offset;
    return std::memcmp(array, expected.data(), bytes_) == 0 && untouched(array - kLine) &&
           untouched(array + bytes_);
  }

 private:
  static bool untouched(const std::byte* line) {
    return std::all_of(line, line + kLine, [](std::byte b) { return b == kUntouched; });
  }
  std::size_t bytes_;
  std::vector<std::byte> whole_;
  std::byte* base_;
};

}  // namespace tests
