#include "many/level.h"

#include <cpuid.h>

#include <algorithm>
#include <atomic>

#include "zvxg_many.h"

namespace zvxg::many {
namespace {

#ifdef ZVXG_EMULATES_AVX512
// The text for AVX-512 is compiled for AVX, so that tests run it on every machine.
int32_t highestLevel() { return zvxManyAvx512; }
#else
// The registers that the system saves.
uint32_t savedRegisters() {
  uint32_t low, high;
  asm("xgetbv" : "=a"(low), "=d"(high) : "c"(0));
  return low;
}

// AVX is taken for granted, as in all of the library.
int32_t highestLevel() {
  constexpr uint32_t kRegisters = 0xe6;  // of 128, 256 and 512 bits, and the masks
  constexpr uint32_t kFeatures = bit_AVX512F | bit_AVX512VL | bit_AVX512DQ | bit_AVX512BW;
  uint32_t eax, ebx, ecx, edx;
  if (!__get_cpuid(1, &eax, &ebx, &ecx, &edx) || !(ecx & bit_OSXSAVE)) return zvxManyAvx;
  if ((savedRegisters() & kRegisters) != kRegisters) return zvxManyAvx;
  if (!__get_cpuid_count(7, 0, &eax, &ebx, &ecx, &edx)) return zvxManyAvx;
  return (ebx & kFeatures) == kFeatures ? zvxManyAvx512 : zvxManyAvx;
}
#endif

constexpr int32_t kUnknown = 0;
constinit std::atomic<int32_t> levelInUse = kUnknown;

}  // namespace

int32_t level() {
  int32_t used = levelInUse.load(std::memory_order_relaxed);
  if (used != kUnknown) return used;
  const int32_t highest = highestLevel();
  // A limit that another thread has set meanwhile stays.
  const bool isFirst = levelInUse.compare_exchange_strong(used, highest, std::memory_order_relaxed);
  return isFirst ? highest : used;
}

int32_t limitLevel(int32_t limit) {
  const int32_t used = std::clamp<int32_t>(limit, zvxManyAvx, highestLevel());
  levelInUse.store(used, std::memory_order_relaxed);
  return used;
}

}  // namespace zvxg::many

extern "C" {

int32_t zvxgManyLevel(void) noexcept { return zvxg::many::level(); }

int32_t zvxgManyLimitLevel(int32_t level) noexcept { return zvxg::many::limitLevel(level); }

}  // extern "C"
