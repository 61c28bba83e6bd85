// The functions of the DCT-IV in the library under test, for both precisions, and what their tests
// share. A property is written once, as a typed test over Precisions.
#pragma once

#include <cmath>
#include <cstdlib>
#include <limits>
#include <memory>
#include <type_traits>

#include "dct4/records.h"
#include "harness.h"
#include "zvxg.h"

namespace tests {

using Precisions = testing::Types<float, double>;

template <class T>
struct Dct4 {
  explicit Dct4(const Library& library = libraryUnderTest()) {
    find(library, "GetSize", getSize);
    find(library, "Init", init);
    find(library, "InitAlloc", initAlloc);
    find(library, "Free", free);
    find(library, "", run);
  }
  int32_t (*getSize)(int32_t, uint32_t*);
  int32_t (*init)(Dct4Spec**, int32_t, void*);
  int32_t (*initAlloc)(Dct4Spec**, int32_t);
  int32_t (*free)(Dct4Spec*);
  int32_t (*run)(const T*, T*, const Dct4Spec*);

  // 0 for a length that is refused.
  uint32_t size(int32_t length) const {
    uint32_t bytes = 0;
    return getSize(length, &bytes) == zvxOk ? bytes : 0;
  }

 private:
  template <class Function>
  void find(const Library& library, const std::string& name, Function*& function) {
    const std::string symbol = "zvxgDCT4" + name + (sizeof(T) == 4 ? "_32f" : "_64f");
    void* const address = library.find(symbol);
    if (address == nullptr) throw std::runtime_error("no function " + symbol);
    function = reinterpret_cast<Function*>(address);
  }
};

// A plan in a block of its own, aligned to 64 bytes.
template <class T>
class Plan {
 public:
  explicit Plan(int32_t length, const Library& library = libraryUnderTest()) : dct4_(library) {
    const std::size_t bytes = (dct4_.size(length) + 63) / 64 * 64;
    block_.reset(std::aligned_alloc(64, bytes));
    if (dct4_.init(&spec_, length, block_.get()) != zvxOk) {
      throw std::runtime_error("no plan of length " + std::to_string(length));
    }
  }
  Dct4Spec* spec() const { return spec_; }
  std::vector<T> run(const std::vector<T>& source) const {
    std::vector<T> destination(source.size(), poison<T>());
    EXPECT_EQ(dct4_.run(source.data(), destination.data(), spec_), zvxOk);
    return destination;
  }

 private:
  struct Free {
    void operator()(void* block) const { std::free(block); }
  };
  Dct4<T> dct4_;
  std::unique_ptr<void, Free> block_;
  Dct4Spec* spec_;
};

// The direct lengths, those with a plan up to 2^last, and all of them.
template <class T>
constexpr int kLongestDirect = sizeof(T) == 4 ? 64 : 32;
template <class T>
constexpr int kLargestExponent = sizeof(T) == 4 ? 26 : 25;

inline std::vector<int32_t> powersOfTwo(int32_t from, int32_t to) {
  std::vector<int32_t> lengths;
  for (int64_t n = from; n <= to; n *= 2) lengths.push_back(static_cast<int32_t>(n));
  return lengths;
}

/// The accepted lengths 2^k + 1 up to `to`.
template <class T>
std::vector<int32_t> oddLengths(int32_t to) {
  std::vector<int32_t> lengths;
  for (int32_t n = sizeof(T) == 4 ? 128 : 32; n < to; n *= 2) lengths.push_back(n + 1);
  return lengths;
}

using reference::dct4Definition;
using reference::fastDct4;

template <class T>
std::vector<long double> widened(const std::vector<T>& numbers) {
  return {numbers.begin(), numbers.end()};
}

/// The L2 norm of the error over that of the expected numbers.
template <class T>
double relativeError(const std::vector<long double>& expected, const std::vector<T>& actual) {
  long double error = 0, norm = 0;
  for (std::size_t i = 0; i < expected.size(); ++i) {
    const long double difference = static_cast<long double>(actual[i]) - expected[i];
    error += difference * difference;
    norm += expected[i] * expected[i];
  }
  return static_cast<double>(std::sqrt(error / norm));
}

/// An impulse shows each constant by itself, so that no wrong one hides in the norm of the rest.
template <class T, class Reference>
void expectImpulse(const Plan<T>& plan, int n, int place, const Reference& reference,
                   double epsilons) {
  std::vector<T> impulse(n);
  impulse[place] = 1;
  const std::vector<long double> expected = reference(widened(impulse));
  const std::vector<T> actual = plan.run(impulse);
  for (int k = 0; k < n; ++k) {
    ASSERT_NEAR(actual[k], static_cast<double>(expected[k]),
                epsilons * std::numeric_limits<T>::epsilon())
        << n << ": impulse " << place << ", output " << k;
  }
}

// What the header promises up to 65,536.
template <class T>
constexpr double kDct4Accuracy = sizeof(T) == 4 ? 1.8e-7 : 3.5e-16;

}  // namespace tests
