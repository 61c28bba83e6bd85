// Kernels against the definition of their transform in long double: is it the right transform, in
// natural order, and as accurate as the header promises?

#include <cmath>
#include <cstdio>
#include <limits>
#include <string>

#include "harness.h"

namespace tests {
namespace {

std::vector<long double> widened(const auto& numbers) { return {numbers.begin(), numbers.end()}; }

template <class T>
constexpr double kRoundoff = std::numeric_limits<T>::epsilon() / 2;

// The L2 norm of the error over that of the result, both pooled over all trials of a length. The
// worst length is what the header promises.
struct Accuracy {
  double rms;  // over the lengths and both directions
  double worst;
};
constexpr Accuracy kAccuracy[2] = {{9.6e-8, 1.65e-7}, {1.9e-16, 3.8e-16}};  // single, double

constexpr int kTrials = 256;

TEST(Definition, NormalData) {
  struct Figures {
    double squares = 0, worst = 0;
    int kernels = 0;
    std::string worstSymbol;
  } figures[2];
  Random random = makeRandom();
  forEachKernel([&]<class T>(const TestKernel<T>& kernel) {
    long double error = 0, norm = 0;
    for (int trial = 0; trial < kTrials; ++trial) {
      const std::vector<T> source = normalNumbers<T>(random, kernel.sourceSize);
      const std::vector<long double> expected = definition(kernel.id, widened(source));
      const std::vector<T> actual = kernel.run(source, kUnscaled);
      for (std::size_t i = 0; i < expected.size(); ++i) {
        error += (actual[i] - expected[i]) * (actual[i] - expected[i]);
        norm += expected[i] * expected[i];
      }
    }
    const double relative = static_cast<double>(std::sqrt(error / norm));
    EXPECT_LE(relative, kAccuracy[sizeof(T) == 8].worst);
    Figures& f = figures[sizeof(T) == 8];
    f.squares += relative * relative;
    ++f.kernels;
    if (!(relative <= f.worst)) {
      f.worst = relative;
      f.worstSymbol = kernel.id.symbol();
    }
  });
  const bool allKernels = selectedKernels().size() == kernelgen::kernelList().size();
  for (const int isDouble : {0, 1}) {
    const Figures& f = figures[isDouble];
    if (f.kernels == 0) continue;
    const double rms = std::sqrt(f.squares / f.kernels);
    std::printf("%s: rms %.3g over %d kernels, worst %.3g at %s\n", isDouble ? "double" : "single",
                rms, f.kernels, f.worst, f.worstSymbol.c_str());
    if (allKernels) {
      EXPECT_LE(rms, kAccuracy[isDouble].rms);
    }
  }
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
