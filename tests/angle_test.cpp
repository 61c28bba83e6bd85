// The trigonometric constants of the generator against MPFR: each is the exact cosine or sine of a
// fraction of a turn, rounded once to the precision of the kernel.

#include "angle.h"  // kernelgen

#include <gtest/gtest.h>
#include <mpfr.h>

#include <numeric>
#include <type_traits>
#include <vector>

namespace tests {
namespace {

// Far more than the 53 bits of a double, so that the second rounding cannot matter.
constexpr int kBits = 200;

class Real {
 public:
  Real() { mpfr_init2(value_, kBits); }
  ~Real() { mpfr_clear(value_); }
  Real(const Real&) = delete;
  Real& operator=(const Real&) = delete;
  mpfr_ptr get() { return value_; }
  template <class T>
  T rounded() {
    if constexpr (std::is_same_v<T, float>) {
      return mpfr_get_flt(value_, MPFR_RNDN);
    } else {
      return mpfr_get_d(value_, MPFR_RNDN);
    }
  }

 private:
  mpfr_t value_;
};

template <class T>
void expectExact(const kernelgen::Turn& turn) {
  Real argument, result;
  mpfr_set_si(argument.get(), turn.num, MPFR_RNDN);
  mpfr_cosu(result.get(), argument.get(), turn.den, MPFR_RNDN);
  EXPECT_EQ(kernelgen::cosineOf<T>(turn), result.rounded<T>()) << turn.num << "/" << turn.den;
  mpfr_sinu(result.get(), argument.get(), turn.den, MPFR_RNDN);
  EXPECT_EQ(kernelgen::sineOf<T>(turn), result.rounded<T>()) << turn.num << "/" << turn.den;
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
