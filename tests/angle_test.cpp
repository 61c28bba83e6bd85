// The trigonometric constants of the generator against MPFR: each is the exact cosine or sine of a
// fraction of a turn, rounded once to the precision of the kernel.

#include "angle.h"  // kernelgen

#include <gtest/gtest.h>

#include <numeric>
#include <vector>

#include "real.h"

namespace tests {
namespace {

template <class T>
void expectExact(const kernelgen::Turn& turn) {
  Real argument, result;
  mpfr_set_si(argument.get(), turn.num, MPFR_RNDN);
  mpfr_cosu(result.get(), argument.get(), turn.den, MPFR_RNDN);
  const kernelgen::CosSin actual = kernelgen::cosSin(turn);
  EXPECT_EQ(static_cast<T>(actual.cosine), result.rounded<T>()) << turn.num << "/" << turn.den;
  mpfr_sinu(result.get(), argument.get(), turn.den, MPFR_RNDN);
  EXPECT_EQ(static_cast<T>(actual.sine), result.rounded<T>()) << turn.num << "/" << turn.den;
}

TEST(Angle, RoundedOnceFromTheExactValue) {
  std::vector<int> denominators(64);
  std::iota(denominators.begin(), denominators.end(), 1);
  denominators.insert(denominators.end(), {67, 96, 101, 128, 251, 509, 1021});
  for (const int den : denominators) {
    for (int num = -den; num <= 2 * den; ++num) {
      expectExact<float>({num, den});
      expectExact<double>({num, den});
    }
  }
}

}  // namespace
}  // namespace tests
