// A call with known values in all that a function has to keep, and a look at it afterwards.
#pragma once

#include <cstddef>
#include <cstdint>

namespace tests {

struct Observation {
  std::uint64_t kept[6];  // rbx, rbp, r12, r13, r14, r15
  std::uint64_t flags;
  std::uint32_t mxcsr;
  std::uint16_t x87Control;
  std::uint16_t x87Tags;              // 0xffff: no register in use
  std::uint64_t upperHalves[16 * 2];  // of ymm0 to ymm15, zero before
};
static_assert(offsetof(Observation, flags) == 48 && offsetof(Observation, mxcsr) == 56 &&
              offsetof(Observation, x87Control) == 60 && offsetof(Observation, x87Tags) == 62 &&
              offsetof(Observation, upperHalves) == 64);

// What the registers hold before.
inline constexpr std::uint64_t kKeptRegisters[6] = {0x1b1b1b1b1b1b1b1b, 0x2b2b2b2b2b2b2b2b,
                                                    0x3c3c3c3c3c3c3c3c, 0x4d4d4d4d4d4d4d4d,
                                                    0x5e5e5e5e5e5e5e5e, 0x6f6f6f6f6f6f6f6f};
inline constexpr std::uint64_t kDirectionFlag = 0x400;

// Calls `function` with ten arguments, under these control words, and returns what it returns.
extern "C" std::int32_t callObserved(const void* function, const std::uint64_t* arguments,
                                     std::uint32_t mxcsr, std::uint16_t x87Control,
                                     Observation* seen);

}  // namespace tests
