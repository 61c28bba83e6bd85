// The transforms that a function of the library does, each as a call on arrays beside its
// definition, so that accuracy and verify are written once for all families.
#pragma once

#include <cstdint>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "functions.h"
#include "library.h"
#include "reference.h"

namespace bench {

using reference::Numbers;

// Which flags multiply by what.
enum class Scaling {
  Forward,
  Inverse,
  Undirected,
  None  // there is no flag
};

template <class T>
struct Transform {
  int n;                            // points
  int sourceSize, destinationSize;  // numbers
  Scaling scaling;
  std::function<std::int32_t(const T* source, T* destination, std::int32_t flag)> call;
  std::function<Numbers(const Numbers& source)> definition;  // without a factor
};

// A kernel does one, by-length entries and plans do one for each of their lengths; other functions
// do none. The DCT-IV goes up to this length here; above it plans take seconds to check.
constexpr int kLongestDct4 = 1 << 16;
template <class T>
std::vector<Transform<T>> transformsOf(const Library& library, const Function& function);

// By what a flag multiplies, in long double.
long double scaleFactor(Scaling scaling, int n, std::int32_t flag);

// Normal numbers that depend on the seed and the transform alone, and not on what else is asked
// for.
class NormalNumbers {
 public:
  NormalNumbers(int seed, const std::string& symbol, int n);
  template <class T>
  std::vector<T> draw(int count) {
    std::normal_distribution<T> normal;
    std::vector<T> numbers(count);
    for (T& number : numbers) number = normal(random_);
    return numbers;
  }

 private:
  std::mt19937_64 random_;
};

// The L2 norm of the error over that of the expected numbers, which are multiplied by a factor.
template <class T>
double relativeError(const Numbers& expected, const std::vector<T>& actual, long double factor = 1);

}  // namespace bench
