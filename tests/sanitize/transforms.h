// The transforms of fixed length by family, and arrays that end where their memory ends. There is
// no test framework here: the memory sanitizer wants all code of a program compiled for it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <new>
#include <vector>

#include "zvxg/functions.hpp"

namespace tests {

inline constexpr int32_t kFlags[] = {zvxDivFwdByN, zvxDivInvByN, zvxDivBySqrtN, zvxNoDiv};

enum class Kind {
  Complex,
  ComplexInverse,
  ToCcs,
  ToPack,
  ToPerm,
  FromCcs,
  FromPack,
  FromPerm,
  Hartley
};

template <class Number, class ElementType>
struct Family {
  using T = Number;
  using Element = ElementType;
  Kind kind;
  const zvxg::detail::Kernel<Element>* kernels;
  int32_t (*entry)(const Element* src, Element* dst, int32_t len, int32_t flag) noexcept;

  zvxg::detail::Kernel<Element> kernel(int length) const {
    return kernels[length - static_cast<int>(zvxg::detail::kShortest)];
  }
  int sourceSize(int length) const { return size(length, kind == Kind::FromCcs); }  // in numbers
  int destinationSize(int length) const { return size(length, kind == Kind::ToCcs); }

 private:
  static int size(int length, bool ccs) {
    if (sizeof(Element) != sizeof(T)) return 2 * length;
    return ccs ? length / 2 * 2 + 2 : length;
  }
};

/// Calls body(family) for the nine families of a precision.
template <class T, class Body>
void forEachFamily(const Body& body) {
  using F = zvxg::detail::Functions<T>;
  const auto serve = [&]<class Row, class Element>(Kind kind, Row, Element) {
    body(Family<T, Element>{kind, Row::kKernels, Row::kByLength});
  };
  serve(Kind::Complex, typename F::Forward(), typename F::Complex());
  serve(Kind::ComplexInverse, typename F::Inverse(), typename F::Complex());
  serve(Kind::ToCcs, typename F::ToCcs(), T());
  serve(Kind::ToPack, typename F::ToPack(), T());
  serve(Kind::ToPerm, typename F::ToPerm(), T());
  serve(Kind::FromCcs, typename F::FromCcs(), T());
  serve(Kind::FromPack, typename F::FromPack(), T());
  serve(Kind::FromPerm, typename F::FromPerm(), T());
  serve(Kind::Hartley, typename F::Hartley(), T());
}

/// Memory that starts `offset` bytes behind a multiple of 64 and ends where its allocation ends, so
/// that a sanitizer and Valgrind notice what runs over. It is not set to anything.
class Exact {
 public:
  explicit Exact(std::size_t bytes, std::size_t offset = 0)
      : memory_(static_cast<std::byte*>(::operator new(offset + bytes, kAlignment))),
        offset_(offset),
        bytes_(bytes) {}
  /// A copy of `other` at another place.
  Exact(const Exact& other, std::size_t offset) : Exact(other.bytes_, offset) {
    std::memcpy(data(), other.data(), bytes_);
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
