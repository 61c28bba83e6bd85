// The rounding and the flushing that the caller has chosen show in the results.

#include <xmmintrin.h>

#include "../harness.h"
#include "reference.h"

namespace tests {
namespace {

constexpr std::uint32_t kMasked = 0x1f80;  // no exception traps

// Compilers move signs across products and sums, which only rounding to nearest hides. g++ leaves
// those of the kernels where they are; in the DCT-IV they are where its pieces have them.
bool keepsSigns(const Transform& transform) {
  const bool isOrdinaryBuild = std::getenv("ZVXG_LIBRARY") == nullptr;
  return ZVXG_BUILT_BY_GXX && isOrdinaryBuild && !transform.function->isPlanned();
}

TEST(State, RoundingAndFlushingAreTheCallers) {
  constexpr std::uint32_t kRoundings[] = {0, 0x2000, 0x4000, 0x6000};  // nearest, down, up, to zero
  constexpr std::uint32_t kFlushes[] = {0, 0x8040};  // keep subnormal numbers, or FTZ and DAZ
  Random random = makeRandom();
  std::int64_t calls = 0;
  forEachTransform([&](const Transform& transform) {
    if (transform.function->isEntry()) return;  // the kernels again
    const Runner runner(transform);
    const Reference reference = referenceOf(transform);
    bool roundingShows = false, flushingShows = false;
    // The few sums of a short one can all be exact, but not for every signal.
    const int sources = transform.sourceBytes <= 256 ? 8 : 2;
    for (int number = 0; number < sources; ++number) {
      const Bytes source = midRangeBytes(transform, random, number % 2 == 1);
      const std::int32_t flag = kFlags[random() % std::size(kFlags)];
      const Bytes nearest = runner.run(source, flag);
      for (const std::uint32_t rounding : kRoundings) {
        for (const std::uint32_t flush : kFlushes) {
          _mm_setcsr(kMasked | rounding | flush);
          const Bytes actual = runner.run(source, flag);
          const std::uint32_t control = _mm_getcsr() & ~_MM_EXCEPT_MASK;
          const Bytes expected = reference ? reference(source, flag) : Bytes();
          _mm_setcsr(kMasked);
          ++calls;
          ASSERT_EQ(control, kMasked | rounding | flush);
          if (flush == 0) roundingShows |= actual != nearest;
          if (rounding == 0) flushingShows |= actual != nearest;
          if (!reference || (rounding != 0 && !keepsSigns(transform))) continue;
          ASSERT_TRUE(actual == expected)
              << "rounding " << rounding << ", flushing " << flush << ", flag " << flag;
        }
      }
    }
    EXPECT_TRUE(flushingShows);
    EXPECT_TRUE(roundingShows);
  });
  RecordProperty("calls", std::to_string(calls));
}

}  // namespace
}  // namespace tests
