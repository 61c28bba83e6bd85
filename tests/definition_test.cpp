// Kernels against the definition of their transform in long double: is it the right transform, in
// natural order, and as accurate as the header promises?

#include <cmath>
#include <cstdio>
#include <limits>

#include "harness.h"

namespace tests {
namespace {

std::vector<long double> widened(const auto& numbers) { return {numbers.begin(), numbers.end()}; }

// The L2 norm of the error over that of the result, at most what the header states.
template <class T>
constexpr double kAccuracy = sizeof(T) == 4 ? 1.65e-7 : 3.8e-16;

template <class T>
constexpr double kRoundoff = std::numeric_limits<T>::epsilon() / 2;

constexpr int kTrials = 64;

TEST(Definition, NormalData) {
  Random random = makeRandom();
  double worst[2] = {};
  std::string worstSymbol[2];
  forEachKernel([&]<class T>(const TestKernel<T>& kernel) {
    for (int trial = 0; trial < kTrials; ++trial) {
      const std::vector<T> source = normalNumbers<T>(random, kernel.sourceSize);
      const std::vector<long double> expected = definition(kernel.id, widened(source));
      const std::vector<T> actual = kernel.run(source, kUnscaled);
      long double error = 0, norm = 0;
      for (std::size_t i = 0; i < expected.size(); ++i) {
        error += (actual[i] - expected[i]) * (actual[i] - expected[i]);
        norm += expected[i] * expected[i];
      }
      const double relative = static_cast<double>(std::sqrt(error / norm));
      ASSERT_LE(relative, kAccuracy<T>) << "trial " << trial;
      if (const int p = sizeof(T) == 8; relative > worst[p]) {
        worst[p] = relative;
        worstSymbol[p] = kernel.id.symbol();
      }
    }
  });
  std::printf("worst: %.3g at %s, %.3g at %s\n", worst[0], worstSymbol[0].c_str(), worst[1],
              worstSymbol[1].c_str());
}

// An impulse excites every output by itself, so that a wrong index or constant cannot hide in the
// norm of the rest.
TEST(Definition, EveryImpulse) {
  forEachKernel([&]<class T>(const TestKernel<T>& kernel) {
    for (int i = 0; i < kernel.sourceSize; ++i) {
      std::vector<T> source(kernel.sourceSize);
      source[i] = 1;
      const std::vector<long double> expected = definition(kernel.id, widened(source));
      const std::vector<T> actual = kernel.run(source, kUnscaled);
      for (std::size_t k = 0; k < expected.size(); ++k) {
        // Parts of size 1 pass through a few products and hardly a sum that rounds.
        ASSERT_NEAR(actual[k], static_cast<double>(expected[k]), 8 * kRoundoff<T>)
            << "output number " << k << " of impulse " << i;
      }
    }
  });
}

}  // namespace
}  // namespace tests
