// Arrays at chosen places: between pages that may not be touched, and at every distance from a
// cache line between poisoned lines.
#pragma once

#include <setjmp.h>
#include <signal.h>
#include <sys/mman.h>

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
  explicit GuardedPages(std::size_t bytes = kPage)
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

  // `count` numbers that end, or begin, at an untouchable page.
  template <class T>
  T* place(std::size_t count, bool atEnd) {
    const std::size_t bytes = count * sizeof(T);
    if (bytes > size_) throw std::length_error("GuardedPages are too small for this array");
    return reinterpret_cast<T*>(base_ + kPage + (atEnd ? size_ - bytes : 0));
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

// A cache line is the period of every alignment test and of every vector.
inline constexpr std::size_t kLine = 64;

// An array at a chosen distance from a cache line, with a poisoned line on either side.
template <class T>
class OffsetArray {
 public:
  OffsetArray(int count, int offset) : whole_(count + 4 * kStep, poison<T>()), count_(count) {
    const auto address = reinterpret_cast<std::uintptr_t>(whole_.data());
    start_ = kStep + (kLine - address % kLine) / sizeof(T) % kStep + offset;
  }
  T* data() { return whole_.data() + start_; }
  std::vector<T> numbers() { return {data(), data() + count_}; }
  bool surroundingsUntouched() const {
    const T untouched = poison<T>();
    for (std::size_t i = 0; i < whole_.size(); ++i) {
      const bool inside = i >= start_ && i < start_ + count_;
      if (!inside && std::memcmp(&whole_[i], &untouched, sizeof(T)) != 0) return false;
    }
    return true;
  }

  static constexpr int kStep = kLine / sizeof(T);  // offsets within a line

 private:
  std::vector<T> whole_;
  std::size_t count_, start_;
};

}  // namespace tests
