// The by-length entries: each length reaches its kernel, and no other number reaches any.

#include "harness.h"

namespace tests {
namespace {

constexpr int32_t kBadLength = -6;
constexpr int32_t kNullPointer = -8;
constexpr int32_t kBadFlag = -16;

template <class T>
using Entry = int32_t (*)(const T* src, T* dst, int32_t selector, int32_t flag);

// The entry that serves a kernel has its name without the number.
std::string entryName(const std::string& kernel) {
  const std::size_t last = kernel.rfind('_');
  return kernel.substr(0, kernel.rfind('_', last - 1)) + kernel.substr(last);
}

template <class T>
Entry<T> entryOf(const TestKernel<T>& kernel) {
  void* const address = libraryUnderTest().find(entryName(kernel.id.symbol()));
  EXPECT_NE(address, nullptr) << entryName(kernel.id.symbol());
  return reinterpret_cast<Entry<T>>(address);
}

TEST(Entries, EveryLengthReachesItsKernel) {
  Random random = makeRandom();
  forEachKernel([&]<class T>(const TestKernel<T>& kernel) {
    const Entry<T> entry = entryOf(kernel);
    ASSERT_NE(entry, nullptr);
    const std::vector<T> source = normalNumbers<T>(random, kernel.sourceSize);
    for (const int32_t flag : kFlags) {
      std::vector<T> destination(kernel.destinationSize, poison<T>());
      EXPECT_EQ(entry(source.data(), destination.data(), kernel.length, flag), 0);
      EXPECT_TRUE(sameNumbers(kernel.run(source, flag), destination)) << "flag " << flag;
    }
    std::vector<T> destination(kernel.destinationSize);
    EXPECT_EQ(entry(nullptr, destination.data(), kernel.length, kUnscaled), kNullPointer);
    EXPECT_EQ(entry(source.data(), nullptr, kernel.length, 3), kNullPointer);
    EXPECT_EQ(entry(source.data(), destination.data(), kernel.length, 3), kBadFlag);
  });
}

TEST(Entries, BadLengthComesBeforeAllElse) {
  std::vector<kernelgen::KernelId> longest = kernelgen::kernelList();  // one for each entry
  std::erase_if(longest, [](const kernelgen::KernelId& id) { return id.length != 64; });
  forEachKernel(longest, [&]<class T>(const TestKernel<T>& kernel) {
    const Entry<T> entry = entryOf(kernel);
    ASSERT_NE(entry, nullptr);
    std::vector<T> source(kernel.sourceSize, T(1)), destination(kernel.destinationSize, T(2));
    for (const int32_t length : {1, 0, -1, 65, INT32_MAX, INT32_MIN}) {
      for (const int32_t flag : {1, 8, 0, 3}) {
        for (const T* src : {source.data(), static_cast<T*>(nullptr)}) {
          for (T* dst : {destination.data(), static_cast<T*>(nullptr)}) {
            EXPECT_EQ(entry(src, dst, length, flag), kBadLength)
                << "length " << length << ", flag " << flag;
          }
        }
      }
    }
    EXPECT_EQ(destination, std::vector<T>(kernel.destinationSize, T(2)));
  });
}

}  // namespace
}  // namespace tests
