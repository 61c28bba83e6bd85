// Plans of the DCT-IV in the library under test. A property is written once, as a typed test over
// Precisions.
#pragma once

#include "aligned.h"
#include "dct4/records.h"
#include "harness.h"
#include "zvxg.h"

namespace tests {

using Precisions = testing::Types<float, double>;

/// The longest length without stages.
template <class T>
constexpr int kLongestDirect = sizeof(T) == 4 ? 64 : 32;

/// What the header promises up to 65,536.
template <class T>
constexpr double kDct4Accuracy = sizeof(T) == 4 ? 1.8e-7 : 3.5e-16;

inline std::vector<int32_t> powersOfTwo(int32_t from, int32_t to) {
  std::vector<int32_t> lengths;
  for (int64_t n = from; n <= to; n *= 2) lengths.push_back(static_cast<int32_t>(n));
  return lengths;
}

/// The function zvxgDCT4<name>, of the transform itself without a name.
template <class T>
const Function& dct4(const std::string& name = "") {
  return functionNamed("zvxgDCT4" + name + (sizeof(T) == 4 ? "_32f" : "_64f"));
}

template <class T>
uint32_t planBytes(int32_t length) {
  return exports().askedBytes(dct4<T>(), length);
}

/// A plan in a block of its own, aligned to 64 bytes.
template <class T>
class Plan {
 public:
  explicit Plan(int32_t length) : block_(api::alignedMemory(64, planBytes<T>(length) + 1)) {
    EXPECT_EQ(
        dct4<T>("Init").call({asArgument(&spec_), asArgument(length), asArgument(block_.get())}),
        zvxOk);
  }
  Dct4Spec* spec() const { return spec_; }
  int32_t run(const T* source, T* destination) const {
    return dct4<T>().call({asArgument(source), asArgument(destination), asArgument(spec_)});
  }
  std::vector<T> run(const std::vector<T>& source) const {
    std::vector<T> destination(source.size(), poison<T>());
    EXPECT_EQ(run(source.data(), destination.data()), zvxOk);
    return destination;
  }

 private:
  std::shared_ptr<void> block_;
  Dct4Spec* spec_ = nullptr;
};

}  // namespace tests
