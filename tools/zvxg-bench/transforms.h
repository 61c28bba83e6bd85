// The transforms of the library as calls with their work memory, so that accuracy and verify are
// written once for all families.
#pragma once

#include <cstdint>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "functions.h"
#include "library.h"
#include "reference.h"

namespace bench {

using api::Transform;
using reference::Numbers;

// A kernel does one, by-length entries and the DCT-IV do one for each of their lengths; other
// functions do none. The DCT-IV goes up to 65,536 points here; above it plans take seconds to check.
std::vector<Transform> transformsOf(const api::Exports& library, const Function& function);

// A transform with a plan in a block of its own or, if the library `allocates`, in one of its; an
// entry gets no buffer, so that it allocates too.
class Call {
 public:
  Call(const api::Exports& library, const Transform& transform, bool allocates = false);
  std::int32_t operator()(const void* source, void* destination, std::int32_t flag) const {
    return transform_.call(source, destination, flag, work_.get());
  }
  const void* work() const { return work_.get(); }

 private:
  Transform transform_;
  std::shared_ptr<const void> work_;
};

// Normal numbers that depend on the seed and the transform alone, and not on what else is asked
// for.
class NormalNumbers {
 public:
  NormalNumbers(int seed, const std::string& symbol, int n);
  template <class T>
  std::vector<T> draw(std::size_t count) {
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
