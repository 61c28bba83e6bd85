// Plans of the largest lengths: against FFTW in more precision, and twice the identity.

#include <fftw3.h>
#include <unistd.h>

#include "dct4.h"

namespace tests {
namespace {

// FFTW's DCT-II to IV have a factor 2.
template <class Wide, class T>
std::vector<Wide> byFftw(const std::vector<T>& source) {
  std::vector<Wide> result(source.begin(), source.end());
  const int n = static_cast<int>(source.size());
  if constexpr (std::is_same_v<Wide, double>) {
    fftw_plan plan = fftw_plan_r2r_1d(n, result.data(), result.data(), FFTW_REDFT11, FFTW_ESTIMATE);
    fftw_execute(plan);
    fftw_destroy_plan(plan);
  } else {
    fftwl_plan plan =
        fftwl_plan_r2r_1d(n, result.data(), result.data(), FFTW_REDFT11, FFTW_ESTIMATE);
    fftwl_execute(plan);
    fftwl_destroy_plan(plan);
  }
  for (Wide& number : result) number /= 2;
  return result;
}

template <class T>
class Dct4Large : public testing::Test {
 protected:
  // Whether that many bytes are left without troubling the machine.
  static bool haveMemoryFor(std::size_t bytes) {
    const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    return bytes + bytes / 4 < page * static_cast<std::size_t>(sysconf(_SC_AVPHYS_PAGES));
  }
};
TYPED_TEST_SUITE(Dct4Large, Precisions);

TYPED_TEST(Dct4Large, AgainstFftw) {
  using T = TypeParam;
  using Wide = std::conditional_t<sizeof(T) == 4, double, long double>;
  Random random = makeRandom();
  for (const int32_t n : powersOfTwo(1 << 17, sizeof(T) == 4 ? 1 << 24 : 1 << 22)) {
    const std::vector<T> source = normalNumbers<T>(random, n);
    const std::vector<T> actual = Plan<T>(n).run(source);
    const double error = relativeError(widened(byFftw<Wide>(source)), actual);
    std::printf("%d: %.3g\n", n, error);
    // Each doubling adds the rounding of one more level.
    EXPECT_LE(error, kDct4Accuracy<T> * std::sqrt(std::log2(n) / 16)) << n;
  }
}

TYPED_TEST(Dct4Large, TwiceIsHalfTheLength) {
  using T = TypeParam;
  constexpr int32_t kLength = 1 << kLargestExponent<T>;
  const Dct4<T> dct4;
  const std::size_t arrayBytes = sizeof(T) * static_cast<std::size_t>(kLength);
  if (!this->haveMemoryFor(dct4.size(kLength) + 2 * arrayBytes))
    GTEST_SKIP() << "not enough memory";
  const Plan<T> plan(kLength);
  std::vector<T> source(kLength), array(kLength);
  Random random = makeRandom();
  for (T& number : source) number = static_cast<T>(static_cast<int64_t>(random())) / T(1ull << 63);
  ASSERT_EQ(dct4.run(source.data(), array.data(), plan.spec()), zvxOk);
  ASSERT_EQ(dct4.run(array.data(), array.data(), plan.spec()), zvxOk);
  double error = 0, norm = 0;
  for (int32_t i = 0; i < kLength; ++i) {
    const double difference = array[i] / static_cast<double>(kLength / 2) - source[i];
    error += difference * difference;
    norm += static_cast<double>(source[i]) * source[i];
  }
  const double relative = std::sqrt(error / norm);
  std::printf("%d twice: %.3g\n", kLength, relative);
  EXPECT_LE(relative, sizeof(T) == 4 ? 3.5e-7 : 7e-16);
}

}  // namespace
}  // namespace tests
