// Plans of the largest lengths: against a transform in long double, and twice the identity.

#include <unistd.h>

#include "dct4.h"

namespace tests {
namespace {

// Whether that many bytes are left without troubling the machine.
bool haveMemoryFor(std::size_t bytes) {
  const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
  return bytes + bytes / 4 < page * static_cast<std::size_t>(sysconf(_SC_AVPHYS_PAGES));
}

template <class T>
struct Dct4Large : testing::Test {};
TYPED_TEST_SUITE(Dct4Large, Precisions);

TYPED_TEST(Dct4Large, Definition) {
  using T = TypeParam;
  Random random = makeRandom();
  for (const int32_t n : powersOfTwo(1 << 17, 1 << 22)) {
    const std::vector<T> source = normalNumbers<T>(random, n);
    const double error =
        relativeError(reference::fastDct4(widened(source)), Plan<T>(n).run(source));
    // Each doubling adds the rounding of one more level.
    EXPECT_LE(error, kDct4Accuracy<T> * std::sqrt(std::log2(n) / 16)) << n;
  }
}

TYPED_TEST(Dct4Large, TwiceIsHalfTheLength) {
  using T = TypeParam;
  constexpr int32_t kLength = 1 << (sizeof(T) == 4 ? 26 : 25);
  if (!haveMemoryFor(planBytes<T>(kLength) + 2 * sizeof(T) * std::size_t{kLength})) {
    GTEST_SKIP() << "not enough memory";
  }
  const Plan<T> plan(kLength);
  std::vector<T> source(kLength), array(kLength);
  Random random = makeRandom();
  for (T& number : source) number = static_cast<T>(static_cast<int64_t>(random())) / T(1ull << 63);
  ASSERT_EQ(plan.run(source.data(), array.data()), zvxOk);
  ASSERT_EQ(plan.run(array.data(), array.data()), zvxOk);
  double error = 0, norm = 0;
  for (int32_t i = 0; i < kLength; ++i) {
    const double difference = array[i] / static_cast<double>(kLength / 2) - source[i];
    error += difference * difference;
    norm += static_cast<double>(source[i]) * source[i];
  }
  EXPECT_LE(std::sqrt(error / norm), sizeof(T) == 4 ? 3.5e-7 : 7e-16);
}

}  // namespace
}  // namespace tests
