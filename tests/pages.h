// Pages with a protection, and the faults of what touches them, by the system that the tests run on.
#pragma once

#include <cstddef>
#include <stdexcept>

namespace tests {

enum class Access {
  None,
  Read,
  Write
};

std::byte* takePages(std::size_t bytes);  // that may not be touched
void setAccess(std::byte* pages, std::size_t bytes, Access access);
void returnPages(std::byte* pages, std::size_t bytes);

// Writable pages between two that no one may touch.
class GuardedPages {
 public:
  explicit GuardedPages(std::size_t bytes = 1)
      : size_((bytes + kPage - 1) / kPage * kPage), base_(takePages(size_ + 2 * kPage)) {
    allow(Access::Write);
  }
  ~GuardedPages() { returnPages(base_, size_ + 2 * kPage); }
  GuardedPages(const GuardedPages&) = delete;
  GuardedPages& operator=(const GuardedPages&) = delete;

  void allow(Access access) { setAccess(base_ + kPage, size_, access); }

  // An array that ends, or begins, at an untouchable page.
  std::byte* place(std::size_t bytes, bool atEnd) {
    if (bytes > size_) throw std::length_error("GuardedPages are too small for this array");
    return base_ + kPage + (atEnd ? size_ - bytes : 0);
  }
  template <class T>
  T* place(std::size_t count, bool atEnd) {
    return reinterpret_cast<T*>(place(count * sizeof(T), atEnd));
  }

 private:
  static constexpr std::size_t kPage = 1 << 17;
  std::size_t size_;
  std::byte* base_;
};

struct Fault {
  int signal;           // 0: there was none
  const void* address;  // what was touched, or the instruction
};

// The fault at which a call stopped. It must have nothing to destroy at that point.
Fault faultOfCall(void (*call)(const void* body), const void* body);

template <class Body>
Fault faultOf(const Body& body) {
  return faultOfCall([](const void* b) { (*static_cast<const Body*>(b))(); }, &body);
}

// Whether `body` runs without touching a protected page, and with no aligned access off its
// boundary.
template <class Body>
bool runsWithoutFault(const Body& body) {
  return faultOf(body).signal == 0;
}

}  // namespace tests
