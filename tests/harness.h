// The harness that the tests share. A test writes its property once: for every transform that the
// library under test exports, as a call on bytes (forEachTransform), or for every kernel with
// numbers of its precision (forEachKernel, whose body is a generic lambda).
//
// Environment: ZVXG_LIBRARY tests another build of the library, ZVXG_KERNEL=12_32fc only what has
// that text in its name, ZVXG_SEED=n other data.
#pragma once

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <memory>
#include <random>
#include <span>
#include <string>
#include <type_traits>
#include <vector>

#include "aligned.h"
#include "interface.h"
#include "reference.h"

namespace tests {

using api::kFlags;
inline constexpr int32_t kUnscaled = 8;

// ---- Data --------------------------------------------------------------------------------------

using Random = std::mt19937_64;

/// A generator of its own for each caller, from the seed of the run.
Random makeRandom();

template <class T>
std::vector<T> normalNumbers(Random& random, int count) {
  std::normal_distribution<T> normal;
  std::vector<T> numbers(count);
  for (T& number : numbers) number = normal(random);
  return numbers;
}

/// Normal numbers of which about a third is replaced by zeros of both signs.
template <class T>
std::vector<T> numbersWithZeros(Random& random, int count) {
  std::vector<T> numbers = normalNumbers<T>(random, count);
  for (T& number : numbers) {
    if (random() % 3 == 0) number = std::copysign(T(0), number);
  }
  return numbers;
}

template <class T>
std::vector<long double> widened(const std::vector<T>& numbers) {
  return {numbers.begin(), numbers.end()};
}

using Bytes = std::vector<std::byte>;
inline constexpr std::byte kUntouched{0xa5};

template <class T>
Bytes bytesOf(const std::vector<T>& numbers) {
  Bytes bytes(numbers.size() * sizeof(T));
  std::memcpy(bytes.data(), numbers.data(), bytes.size());
  return bytes;
}

template <class T>
std::vector<T> numbersOf(const Bytes& bytes) {
  std::vector<T> numbers(bytes.size() / sizeof(T));
  std::memcpy(numbers.data(), bytes.data(), bytes.size());
  return numbers;
}

/// A NaN that no transform makes by itself, to tell what was not written.
template <class T>
T poison() {
  if constexpr (std::is_same_v<T, float>) {
    return std::bit_cast<float>(0x7fc5a5a5u);
  } else {
    return std::bit_cast<double>(0x7ffc5a5a5a5a5a5aull);
  }
}

// ---- Comparison --------------------------------------------------------------------------------

/// Same bits; NaN equals any NaN, as its payload depends on the order of a sum's operands.
template <class T>
bool sameNumber(T a, T b) {
  return (a != a && b != b) || std::memcmp(&a, &b, sizeof(T)) == 0;
}

template <class T>
testing::AssertionResult sameNumbers(const std::vector<T>& expected, const std::vector<T>& actual) {
  if (expected.size() != actual.size()) {
    return testing::AssertionFailure()
           << actual.size() << " numbers instead of " << expected.size();
  }
  for (std::size_t i = 0; i < expected.size(); ++i) {
    if (sameNumber(expected[i], actual[i])) continue;
    return testing::AssertionFailure() << "number " << i << " is " << std::hexfloat << actual[i]
                                       << " instead of " << expected[i];
  }
  return testing::AssertionSuccess();
}

/// The L2 norm of the error over that of the expected numbers, pooled over what was added.
struct Error {
  template <class T>
  void add(const std::vector<long double>& expected, const std::vector<T>& actual) {
    for (std::size_t i = 0; i < expected.size(); ++i) {
      const long double difference = static_cast<long double>(actual[i]) - expected[i];
      squares += difference * difference;
      norm += expected[i] * expected[i];
    }
  }
  double relative() const { return static_cast<double>(std::sqrt(squares / norm)); }
  long double squares = 0, norm = 0;
};

template <class T>
double relativeError(const std::vector<long double>& expected, const std::vector<T>& actual) {
  Error error;
  error.add(expected, actual);
  return error.relative();
}

// ---- Transforms --------------------------------------------------------------------------------

using api::Arguments;
using api::asArgument;
using api::Function;
using api::Role;
using api::Transform;

class Library {
 public:
  explicit Library(const std::string& path);
  void* find(const std::string& symbol) const;  // null if there is none

 private:
  void* handle_;
};

const Library& libraryUnderTest();

/// The functions of a list, found in a library that has them all.
std::vector<Function> functionsIn(const Library& library, std::span<const Function> list);

/// The functions of the library under test.
const api::Exports& exports();
const Function& functionNamed(const std::string& symbol);

/// All transforms: kernels, entries at all lengths, the DCT-IV up to kLongestListed.
const std::vector<Transform>& transforms();
inline constexpr int32_t kLongestListed = 1 << 17;  // a plan of splits in splits

/// Of any functions, as far as ZVXG_KERNEL selects them.
std::vector<Transform> transformsOf(std::span<const Function> functions, int32_t longestPlan);

/// What does the work; of a plan with its length.
std::string nameOf(const Transform& transform);

/// The four flags, or one to make a loop over flags run once.
std::vector<int32_t> flagsOf(const Transform& transform);

/// Calls body(transform) for each, its name in the trace of a failure. Stops at a fatal one.
template <class Body>
void forEachTransform(const Body& body) {
  ASSERT_FALSE(transforms().empty());
  for (const Transform& transform : transforms()) {
    SCOPED_TRACE(testing::Message() << transform.function->symbol << " of " << nameOf(transform));
    body(transform);
    if (testing::Test::HasFatalFailure()) return;
  }
}

/// body(T()) with the element type of the transform.
template <class Body>
decltype(auto) withElement(const Transform& transform, const Body& body) {
  return transform.function->bits == 32 ? body(float{}) : body(double{});
}

Bytes normalBytes(const Transform& transform, Random& random);

/// Of both signs, magnitudes from 0.5 to 2: no sum of a transform comes near the ends of the range.
/// Small ones are around the smallest normal number: sums and products of them are flushed, or not.
Bytes midRangeBytes(const Transform& transform, Random& random, bool small = false);

/// A transform with work memory of its own.
class Runner {
 public:
  explicit Runner(const Transform& transform);
  const void* work() const { return work_; }
  /// The destination, poisoned before the call, which has to succeed.
  Bytes run(const Bytes& source, int32_t flag) const;
  template <class T>
  std::vector<T> run(const std::vector<T>& source, int32_t flag) const {
    return numbersOf<T>(run(bytesOf(source), flag));
  }

 private:
  const Transform& transform_;
  std::shared_ptr<void> memory_;
  const void* work_;
};

// ---- Kernels -----------------------------------------------------------------------------------

/// The generated kernels that are selected by ZVXG_KERNEL.
std::vector<kernelgen::KernelId> selectedKernels();

template <class T>
struct TestKernel {
  explicit TestKernel(const kernelgen::KernelId& of)
      : id(of),
        length(id.length),
        sourceSize(id.sourceSize()),
        destinationSize(id.destinationSize()),
        function(functionNamed(id.symbol())) {}
  /// The destination of a call that has to succeed, poisoned before it.
  std::vector<T> run(const std::vector<T>& source, int32_t flag) const {
    std::vector<T> destination(destinationSize, poison<T>());
    EXPECT_EQ(function.call(
                  {asArgument(source.data()), asArgument(destination.data()), asArgument(flag)}),
              0);
    return destination;
  }

  kernelgen::KernelId id;
  int length, sourceSize, destinationSize;  // numbers
  const Function& function;
};

/// Calls body(kernel) for each of `ids`.
template <class Body>
void forEachKernel(const std::vector<kernelgen::KernelId>& ids, const Body& body) {
  ASSERT_FALSE(ids.empty()) << "no kernel to test";
  for (const kernelgen::KernelId& id : ids) {
    SCOPED_TRACE(id.symbol());
    if (id.precision == kernelgen::Precision::Single) {
      body(TestKernel<float>(id));
    } else {
      body(TestKernel<double>(id));
    }
  }
}

template <class Body>
void forEachKernel(const Body& body) {
  forEachKernel(selectedKernels(), body);
}

/// The factor of a flag.
template <class T>
T scaleFactor(const kernelgen::KernelId& id, int32_t flag) {
  return static_cast<T>(kernelgen::scaleFactor(id, flag));
}

}  // namespace tests
