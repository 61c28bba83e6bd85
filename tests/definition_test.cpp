// Kernels against the definition of their transform in long double: is it the right transform, in
// natural order, and as accurate as the header promises?

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>
#include <optional>
#include <string>

#include "harness.h"

namespace tests {
namespace {

std::vector<long double> widened(const auto& numbers) { return {numbers.begin(), numbers.end()}; }

template <class T>
constexpr double kRoundoff = std::numeric_limits<T>::epsilon() / 2;

// The L2 norm of the error over that of the result, both pooled over all trials of a length: its
// root mean square over the kernels of a gate, and the worst of them. What the header promises of a
// family is one of the two.
struct Accuracy {
  double rms, worst;
};

struct Gate {
  const char* name;
  kernelgen::Family family;
  std::optional<kernelgen::Direction> direction;  // without one, both together
  Accuracy limits[2];                             // single, double
};

constexpr double kAny = std::numeric_limits<double>::infinity();  // no promise

using kernelgen::Direction;
using kernelgen::Family;
constexpr Gate kGates[] = {
    {"complex", Family::Complex, {}, {{9.6e-8, 1.65e-7}, {1.9e-16, 3.8e-16}}},
    {"real forward", Family::Real, Direction::Forward, {{7.9e-8, kAny}, {1.8e-16, kAny}}},
    {"real inverse", Family::Real, Direction::Inverse, {{7.9e-8, kAny}, {1.8e-16, kAny}}},
    {"Hartley", Family::Hartley, {}, {{7.9e-8, kAny}, {1.8e-16, kAny}}},
};

bool belongsTo(const Gate& gate, const kernelgen::KernelId& id) {
  return id.family == gate.family && (!gate.direction || id.direction == *gate.direction);
}

constexpr int kTrials = 256;

template <class T>
double relativeError(Random& random, const TestKernel<T>& kernel) {
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
  return static_cast<double>(std::sqrt(error / norm));
}

void expectAccurate(const Gate& gate) {
  std::vector<kernelgen::KernelId> ids = selectedKernels();
  std::erase_if(ids, [&](const kernelgen::KernelId& id) { return !belongsTo(gate, id); });
  if (ids.empty()) return;  // ZVXG_KERNEL leaves none of them
  struct Figures {
    double squares = 0, worst = 0;
    int kernels = 0;
    std::string worstSymbol;
  } figures[2];
  Random random = makeRandom();
  forEachKernel(ids, [&]<class T>(const TestKernel<T>& kernel) {
    const double relative = relativeError(random, kernel);
    EXPECT_LE(relative, gate.limits[sizeof(T) == 8].worst);
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
    std::printf("%s, %s: rms %.3g over %d kernels, worst %.3g at %s\n", gate.name,
                isDouble ? "double" : "single", rms, f.kernels, f.worst, f.worstSymbol.c_str());
    if (allKernels) {
      EXPECT_LE(rms, gate.limits[isDouble].rms);
    }
  }
}

TEST(Definition, NormalData) {
  for (const Gate& gate : kGates) expectAccurate(gate);
}

// An impulse excites every output by itself, so that a wrong index or constant cannot hide in the
// norm of the rest.
TEST(Definition, EveryImpulse) {
  forEachKernel([&]<class T>(const TestKernel<T>& kernel) {
    for (int i = 0; i < kernel.sourceSize; ++i) {
      std::vector<T> source(kernel.sourceSize);
      source[i] = 1;
      const std::vector<long double> expected = impulseResponse(kernel.id, i);
      const std::vector<T> actual = kernel.run(source, kUnscaled);
      // Parts of that size pass through a few products and hardly a sum that rounds.
      long double size = 0;
      for (const long double number : expected) size = std::max(size, std::abs(number));
      const double tolerance = 8 * kRoundoff<T> * static_cast<double>(size);
      for (std::size_t k = 0; k < expected.size(); ++k) {
        ASSERT_NEAR(actual[k], static_cast<double>(expected[k]), tolerance)
            << "output number " << k << " of impulse " << i;
      }
    }
  });
}

}  // namespace
}  // namespace tests
