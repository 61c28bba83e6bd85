// A call with known values in all that a function has to keep, and a look at it afterwards.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "../harness.h"

namespace tests {

struct Observation {
  std::uint64_t kept[8];  // rbx, rbp, r12, r13, r14, r15, rdi, rsi
  std::uint64_t flags;
  std::uint32_t mxcsr;
  std::uint16_t x87Control;
  std::uint16_t x87Tags;              // 0xffff: no register in use
  std::uint64_t upperHalves[16 * 2];  // of ymm0 to ymm15, zero before
  std::uint64_t vectors[10 * 2];      // xmm6 to xmm15
};
static_assert(offsetof(Observation, flags) == 64 && offsetof(Observation, mxcsr) == 72 &&
              offsetof(Observation, x87Control) == 76 && offsetof(Observation, x87Tags) == 78 &&
              offsetof(Observation, upperHalves) == 80 && offsetof(Observation, vectors) == 336);

// What the registers hold before that a function keeps. On Windows that is more.
inline constexpr std::uint64_t kKeptRegisters[] = {
    0x1b1b1b1b1b1b1b1b, 0x2b2b2b2b2b2b2b2b, 0x3c3c3c3c3c3c3c3c,
    0x4d4d4d4d4d4d4d4d, 0x5e5e5e5e5e5e5e5e, 0x6f6f6f6f6f6f6f6f,
#ifdef _WIN32
    0x7a7a7a7a7a7a7a7a, 0x8b8b8b8b8b8b8b8b,
#endif
};
#ifdef _WIN32
inline constexpr std::size_t kKeptVectors = 10;
#else
inline constexpr std::size_t kKeptVectors = 0;
#endif
inline constexpr std::uint64_t vectorBefore(std::size_t number) {  // each half of xmm<number>
  return 0x0101010101010101 * number;
}
inline constexpr std::uint64_t kDirectionFlag = 0x400;

// Calls `function` with ten arguments, under these control words, and returns what it returns. The
// function finds the stack `shift` bytes lower than otherwise, a multiple of 16.
extern "C" __attribute__((sysv_abi)) std::int32_t callObserved(
    const void* function, const std::uint64_t* arguments, std::uint32_t mxcsr,
    std::uint16_t x87Control, Observation* seen, std::uint64_t shift);

// Control words of the usual kind, and exceptions, of which nearly every call raises the inexact one.
inline constexpr std::uint32_t kMasked = 0x1f80;  // no exception traps
inline constexpr std::uint32_t kInexact = 0x20, kAnyException = 0x3f;
inline constexpr std::uint16_t kX87Extended = 0x037f;

// Expects of such a call that all is as it was, but for `raised` exceptions. Those that are not masked
// trap, so that one is a fault of this call, and not only a bit that is set.
void expectKept(const void* function, const Arguments& arguments, std::uint32_t mxcsr = kMasked,
                std::uint16_t x87 = kX87Extended, std::uint64_t shift = 0,
                std::uint32_t raised = kInexact, std::int32_t* status = nullptr);

}  // namespace tests
