// Arrays at chosen places: between pages that may not be touched, and at every distance from a
// cache line with a line on either side; and the faults of calls that touch what they may not.
#pragma once

#include <setjmp.h>
#include <signal.h>
#include <sys/mman.h>

#include <algorithm>
#include <csignal>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <new>
#include <stdexcept>
#include <vector>

#include "harness.h"

namespace tests {

// Writable pages between two that no one may touch.
class GuardedPages {
 public:
  explicit GuardedPages(std::size_t bytes = 1)
      : size_((bytes + kPage - 1) / kPage * kPage),
        base_(static_cast<std::byte*>(mmap(nullptr, size_ + 2 * kPage, PROT_NONE,
                                           MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0))) {
    if (base_ == MAP_FAILED) throw std::bad_alloc();
    protect(PROT_READ | PROT_WRITE);
  }
  ~GuardedPages() { munmap(base_, size_ + 2 * kPage); }
  GuardedPages(const GuardedPages&) = delete;
  GuardedPages& operator=(const GuardedPages&) = delete;

  void protect(int protection) { mprotect(base_ + kPage, size_, protection); }

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

// ---- Faults ------------------------------------------------------------------------------------

struct Fault {
  int signal;           // 0: there was none
  const void* address;  // what was touched, or the instruction
};

inline sigjmp_buf afterFault;
inline Fault lastFault;
inline volatile sig_atomic_t faultIsAwaited = 0;

inline void awaitFaults() {
  struct sigaction caught = {};
  caught.sa_flags = SA_SIGINFO | SA_NODEFER;
  caught.sa_sigaction = [](int signal, siginfo_t* info, void*) {
    if (faultIsAwaited == 0) {  // the test's own: it happens again, and ends the program
      std::signal(signal, SIG_DFL);
      return;
    }
    lastFault = {signal, info->si_addr};
    siglongjmp(afterFault, 1);
  };
  for (const int signal : {SIGSEGV, SIGBUS, SIGFPE, SIGILL}) sigaction(signal, &caught, nullptr);
}

// The fault at which `body` stopped. It must have nothing to destroy at that point.
template <class Body>
Fault faultOf(const Body& body) {
  [[maybe_unused]] static const bool kAwaited = (awaitFaults(), true);
  lastFault = {};
  if (sigsetjmp(afterFault, 0) == 0) {
    faultIsAwaited = 1;
    body();
  }
  faultIsAwaited = 0;
  return lastFault;
}

// Whether `body` runs without touching a protected page, and with no aligned access off its
// boundary.
template <class Body>
bool runsWithoutFault(const Body& body) {
  return faultOf(body).signal == 0;
}

// ---- Offsets -----------------------------------------------------------------------------------

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
