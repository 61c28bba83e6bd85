// Arrays that end where their memory ends. There is no test framework here: the memory sanitizer
// wants all code of a program compiled for it.
#pragma once

#include <cstddef>
#include <cstring>
#include <memory>
#include <new>

namespace tests {

/// Memory that starts `offset` bytes behind a multiple of 64 and ends where its allocation ends, so
/// that a sanitizer and Valgrind notice what runs over. It is not set to anything.
class Exact {
 public:
  explicit Exact(std::size_t bytes, std::size_t offset = 0)
      : memory_(static_cast<std::byte*>(::operator new(offset + bytes, kAlignment))),
        offset_(offset),
        bytes_(bytes) {}
  /// A copy of `other` at another place, in as many bytes or more.
  Exact(const Exact& other, std::size_t offset, std::size_t bytes = 0)
      : Exact(std::max(bytes, other.bytes_), offset) {
    std::memcpy(data(), other.data(), other.bytes_);
  }

  std::byte* data() { return memory_.get() + offset_; }
  const std::byte* data() const { return memory_.get() + offset_; }
  template <class T>
  T* as() {
    return reinterpret_cast<T*>(data());
  }
  std::size_t bytes() const { return bytes_; }

 private:
  static constexpr std::align_val_t kAlignment{64};
  struct Free {
    void operator()(std::byte* memory) const { ::operator delete(memory, kAlignment); }
  };
  std::unique_ptr<std::byte, Free> memory_;
  std::size_t offset_, bytes_;
};

}  // namespace tests
