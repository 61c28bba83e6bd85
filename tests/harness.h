// The harness that all kernel tests share. A kernel is known by its symbol alone, looked up in the
// library under test, and its arrays are plain numbers: a complex element is two of them. A test
// writes its property once, as a generic lambda for forEachKernel, which serves every family,
// length, direction and precision.
//
// Environment: ZVXG_LIBRARY tests another build of the library, ZVXG_KERNEL=12_32fc only the
// kernels with that text in their name, ZVXG_SEED=n other data.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "kernel_id.h"  // kernelgen
#include "reference.h"

namespace tests {

inline constexpr int32_t kFlags[] = {1, 2, 4, 8};
inline constexpr int32_t kUnscaled = 8;

class Library {
 public:
  explicit Library(const std::string& path);
  void* find(const std::string& symbol) const;  // null if there is none

 private:
  void* handle_;
};

const Library& libraryUnderTest();

template <class T>
constexpr kernelgen::Precision precisionOf() {
  return sizeof(T) == 4 ? kernelgen::Precision::Single : kernelgen::Precision::Double;
}

template <class T>
struct TestKernel {
  using Number = T;
  kernelgen::KernelId id;
  int length;
  int sourceSize;       // numbers
  int destinationSize;  // numbers
  int32_t (*function)(const T* src, T* dst, int32_t flag);

  // The destination of a call that has to succeed, poisoned before it.
  std::vector<T> run(const std::vector<T>& source, int32_t flag) const;
};

/// The kernel `id` of `library`; a null function, and a failure of the test, if there is none.
template <class T>
TestKernel<T> loadKernel(const Library& library, const kernelgen::KernelId& id);

using reference::definition;

/// What the definition makes of a 1 in element `i` among zeros, all numbers that are zero but for
/// rounding made so: an output depends on the element where this is not zero.
std::vector<long double> impulseResponse(const kernelgen::KernelId& id, int i);

using kernelgen::BinPlace;
using kernelgen::binPlace;
using kernelgen::isOwnMirror;
using kernelgen::kNowhere;

template <class T>
T scaleFactor(const kernelgen::KernelId& id, int32_t flag) {
  return static_cast<T>(kernelgen::scaleFactor(id, flag));
}

/// The kernels to be tested: all that are built, or those that ZVXG_KERNEL leaves of them.
std::vector<kernelgen::KernelId> selectedKernels();

/// Calls body(kernel) for each of `ids` in the library under test.
template <class Body>
void forEachKernel(const std::vector<kernelgen::KernelId>& ids, const Body& body) {
  ASSERT_FALSE(ids.empty()) << "no kernel to test";
  const auto serve = [&]<class T>(const kernelgen::KernelId& id, T) {
    const TestKernel<T> kernel = loadKernel<T>(libraryUnderTest(), id);
    if (kernel.function != nullptr) body(kernel);
  };
  for (const kernelgen::KernelId& id : ids) {
    SCOPED_TRACE(id.symbol());
    if (id.precision == kernelgen::Precision::Single) {
      serve(id, float{});
    } else {
      serve(id, double{});
    }
  }
}

template <class Body>
void forEachKernel(const Body& body) {
  forEachKernel(selectedKernels(), body);
}

// ---- Data --------------------------------------------------------------------------------------

using Random = std::mt19937_64;

/// A generator of its own for each caller, from the seed of the run.
Random makeRandom();

template <class T>
std::vector<T> normalNumbers(Random& random, int count);

/// Normal numbers of which about a third is replaced by zeros of both signs.
template <class T>
std::vector<T> numbersWithZeros(Random& random, int count);

// ---- Comparison --------------------------------------------------------------------------------

/// Same bits; NaN equals any NaN, as its payload depends on the order of a sum's operands.
template <class T>
bool sameNumber(T a, T b) {
  return (a != a && b != b) || std::memcmp(&a, &b, sizeof(T)) == 0;
}

template <class T>
testing::AssertionResult sameNumbers(const std::vector<T>& expected, const std::vector<T>& actual);

/// A NaN that no kernel makes by itself, to tell what was not written.
template <class T>
T poison();

}  // namespace tests
