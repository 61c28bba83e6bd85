// What is promised of the half spectra of real signals: zeros of CCS that are constants, bins that
// are doubled before all else. companion_test.cpp has the places of the bins.

#include "harness.h"

namespace tests {
namespace {

using kernelgen::Direction;
using kernelgen::Layout;

// Whatever the samples are.
TEST(Spectrum, ZerosOfCcsAreConstants) {
  forEachKernel([&]<class T>(const TestKernel<T>& kernel) {
    if (kernel.id.layout != Layout::Ccs || kernel.id.direction == Direction::Inverse) return;
    using Limits = std::numeric_limits<T>;
    for (const T value : {T(-0.0), -Limits::max(), -Limits::infinity(), Limits::quiet_NaN()}) {
      for (const int32_t flag : kFlags) {
        const std::vector<T> bins = kernel.run(std::vector<T>(kernel.length, value), flag);
        EXPECT_TRUE(sameNumber(bins[1], T(0))) << value;
        EXPECT_TRUE(kernel.length % 2 != 0 || sameNumber(bins.back(), T(0))) << value;
      }
    }
  });
}

// The bins between 0 and N/2 are doubled in the precision of the data, and the factor comes last:
// it cannot bring back what overflowed.
TEST(Spectrum, BinsOverflowWhenTheyAreDoubled) {
  forEachKernel([&]<class T>(const TestKernel<T>& kernel) {
    if (kernel.id.layout != Layout::Ccs || kernel.id.direction == Direction::Forward) return;
    for (int k = 0; 2 * k <= kernel.length; ++k) {
      std::vector<T> source(kernel.sourceSize);
      source[2 * k] = T(0.6) * std::numeric_limits<T>::max();
      const std::vector<T> samples = kernel.run(source, 2);
      const std::vector<long double> expected = reference::definition(kernel.id, widened(source));
      for (int j = 0; j < kernel.length; ++j) {
        if (std::abs(expected[j]) < 1e-10L * source[2 * k]) continue;  // a zero but for rounding
        EXPECT_EQ(std::isfinite(samples[j]), kernelgen::isOwnMirror(kernel.length, k))
            << k << " to " << j;
      }
    }
  });
}

}  // namespace
}  // namespace tests
