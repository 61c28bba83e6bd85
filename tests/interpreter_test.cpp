// Compiled kernels against the generator's interpreter, bit for bit: does the text that was printed
// and compiled do what the graph of the kernel says? And forward against inverse kernels.

#include <algorithm>
#include <cmath>
#include <limits>
#include <span>

#include "harness.h"
#include "interpret.h"  // kernelgen
#include "kernels.h"    // kernelgen

namespace tests {
namespace {

template <class T>
void expectInterpreted(const TestKernel<T>& kernel, const kernelgen::Graph& graph,
                       const std::vector<T>& source, int32_t flag) {
  const std::vector<T> expected =
      kernelgen::interpret<T>(graph, std::span<const T>(source), scaleFactor<T>(kernel.id, flag));
  ASSERT_TRUE(sameNumbers(expected, kernel.run(source, flag)));
}

TEST(Interpreter, FiniteData) {
  Random random = makeRandom();
  forEachKernel([&]<class T>(const TestKernel<T>& kernel) {
    const kernelgen::Graph graph = kernelgen::makeKernel(kernel.id).graph;
    for (int trial = 0; trial < 4; ++trial) {
      for (const int32_t flag : kFlags) {
        expectInterpreted(kernel, graph, normalNumbers<T>(random, kernel.sourceSize), flag);
        expectInterpreted(kernel, graph, numbersWithZeros<T>(random, kernel.sourceSize), flag);
      }
    }
    const T smallest = std::numeric_limits<T>::denorm_min();
    const T largest = std::numeric_limits<T>::max();
    for (const T value : {T(0), T(-0.0), T(1), smallest, -smallest, largest, -largest}) {
      expectInterpreted(kernel, graph, std::vector<T>(kernel.sourceSize, value), kUnscaled);
    }
  });
}

// NaN reaches every output that depends on the element; one that no output depends on, such as a
// part of a bin that is always zero, is not looked at.
TEST(Kernels, NaNReachesWhatDependsOnIt) {
  Random random = makeRandom();
  forEachKernel([&]<class T>(const TestKernel<T>& kernel) {
    for (int i = 0; i < kernel.sourceSize; ++i) {
      std::vector<T> source = normalNumbers<T>(random, kernel.sourceSize);
      source[i] = std::numeric_limits<T>::quiet_NaN();
      const std::vector<T> result = kernel.run(source, kUnscaled);
      const std::vector<long double> response = impulseResponse(kernel.id, i);
      const bool isIgnored =
          std::count(response.begin(), response.end(), 0) == kernel.destinationSize;
      for (std::size_t k = 0; k < result.size(); ++k) {
        if (response[k] != 0) {
          ASSERT_TRUE(std::isnan(result[k])) << i << " to " << k;
        }
        if (isIgnored) {
          ASSERT_FALSE(std::isnan(result[k])) << i << " to " << k;
        }
      }
    }
  });
}

template <class T>
std::vector<T> swapParts(std::vector<T> numbers) {
  for (std::size_t i = 0; i < numbers.size(); i += 2) std::swap(numbers[i], numbers[i + 1]);
  return numbers;
}

// Inv(x) = swap(Fwd(swap(x))), where swap exchanges real and imaginary parts.
TEST(Kernels, InverseIsForwardWithPartsSwapped) {
  Random random = makeRandom();
  forEachKernel([&]<class T>(const TestKernel<T>& inverse) {
    if (inverse.id.family != kernelgen::Family::Complex) return;
    if (inverse.id.direction != kernelgen::Direction::Inverse) return;
    kernelgen::KernelId id = inverse.id;
    id.direction = kernelgen::Direction::Forward;
    const TestKernel<T> forward = loadKernel<T>(libraryUnderTest(), id);
    ASSERT_NE(forward.function, nullptr);
    for (int trial = 0; trial < 8; ++trial) {
      for (const auto& source : {normalNumbers<T>(random, inverse.sourceSize),
                                 numbersWithZeros<T>(random, inverse.sourceSize)}) {
        ASSERT_TRUE(sameNumbers(swapParts(forward.run(swapParts(source), kUnscaled)),
                                inverse.run(source, kUnscaled)));
      }
    }
  });
}

}  // namespace
}  // namespace tests
