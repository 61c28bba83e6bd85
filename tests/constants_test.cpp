// The constants of the generator against MPFR, rounded once: cosines and sines of fractions of a turn, and
// the sums of such in the Rader and chirp steps.

#include <gtest/gtest.h>

#include <numeric>
#include <vector>

#include "angle.h"         // kernelgen
#include "convolutions.h"  // kernelgen
#include "real.h"

namespace tests {
namespace {

// The sum of exp(2 pi i num / den) over what was added, divided by a count in the end.
class RootSum {
 public:
  RootSum() {
    mpfr_set_zero(re_.get(), 1);
    mpfr_set_zero(im_.get(), 1);
  }
  void add(long num, unsigned long den) {
    Real argument, part;
    mpfr_set_si(argument.get(), num, MPFR_RNDN);
    mpfr_cosu(part.get(), argument.get(), den, MPFR_RNDN);
    mpfr_add(re_.get(), re_.get(), part.get(), MPFR_RNDN);
    mpfr_sinu(part.get(), argument.get(), den, MPFR_RNDN);
    mpfr_add(im_.get(), im_.get(), part.get(), MPFR_RNDN);
  }
  void divideBy(long count) {
    for (Real* part : {&re_, &im_}) {
      mpfr_div_si(part->get(), part->get(), count, MPFR_RNDN);
      // What cancels by symmetry leaves the rounding of these 200 bits.
      const bool isRest = mpfr_regular_p(part->get()) && mpfr_get_exp(part->get()) < -150;
      if (isRest) mpfr_set_zero(part->get(), 1);
    }
  }
  Real re_, im_;
};

template <class T>
void expectRounded(kernelgen::Quad re, kernelgen::Quad im, RootSum& expected) {
  EXPECT_EQ(static_cast<T>(re), expected.re_.rounded<T>());
  EXPECT_EQ(static_cast<T>(im), expected.im_.rounded<T>());
}

void expectRounded(kernelgen::Quad re, kernelgen::Quad im, RootSum& expected) {
  expectRounded<float>(re, im, expected);
  expectRounded<double>(re, im, expected);
}

TEST(Constants, Angles) {
  std::vector<int> denominators(64);
  std::iota(denominators.begin(), denominators.end(), 1);
  denominators.insert(denominators.end(), {67, 96, 101, 128, 251, 509, 1021});
  for (const int den : denominators) {
    for (int num = -den; num <= 2 * den; ++num) {
      SCOPED_TRACE(testing::Message() << num << "/" << den);
      const kernelgen::CosSin actual = kernelgen::cosSin({num, den});
      RootSum root;
      root.add(num, den);
      expectRounded(actual.cosine, actual.sine, root);
    }
  }
}

TEST(Constants, OfRaderSteps) {
  struct Prime {
    int p, smallestPrimitiveRoot;
  };
  constexpr Prime kPrimes[] = {{7, 3},  {11, 2}, {13, 2}, {17, 3}, {19, 2},
                               {23, 5}, {29, 2}, {31, 3}, {37, 2}, {41, 6},
                               {43, 3}, {47, 5}, {53, 2}, {59, 2}, {61, 2}};
  for (const auto [p, g] : kPrimes) {
    SCOPED_TRACE(p);
    const long order = p - 1;
    const kernelgen::RaderNumbers numbers(p);
    ASSERT_EQ(numbers.factors.size(), order);
    ASSERT_EQ(numbers.powers.size(), order);
    std::vector<long> powers(order, 1);  // of g modulo p
    for (long q = 1; q < order; ++q) powers[q] = powers[q - 1] * g % p;
    for (long q = 0; q < order; ++q) EXPECT_EQ(numbers.powers[q], powers[q]) << q;
    for (long k = 0; k < order; ++k) {
      SCOPED_TRACE(k);
      RootSum sum;
      for (long m = 0; m < order; ++m) {
        const long inverse = powers[(order - m) % order];  // g^-m
        sum.add(-(inverse * order + k * m * p), p * order);
      }
      sum.divideBy(order);
      expectRounded(numbers.factors[k].re.exact, numbers.factors[k].im.exact, sum);
    }
  }
}

TEST(Constants, OfChirpSteps) {
  struct Chirp {
    long n, l;
  };
  for (const auto [n, l] : {Chirp{47, 96}, Chirp{59, 128}}) {
    SCOPED_TRACE(n);
    const kernelgen::ChirpNumbers numbers(static_cast<int>(n), static_cast<int>(l));
    ASSERT_EQ(numbers.chirp.size(), n);
    ASSERT_EQ(numbers.factors.size(), l);
    const long half = (n + 1) / 2;
    for (long m = 0; m < n; ++m) {
      const kernelgen::Turn turn = numbers.chirp[m];
      EXPECT_EQ((turn.num * n - half * m * m * turn.den) % (n * turn.den), 0) << m;
    }
    for (long k = 0; k < l; ++k) {
      SCOPED_TRACE(k);
      RootSum sum;  // of the conjugate chirp at 0 .. n-1 and, mirrored, at l-1 down to l-n+1
      for (long m = 1 - n; m < n; ++m) {
        const long place = (m + l) % l;
        sum.add(half * m * m * l - k * place * n, n * l);
      }
      sum.divideBy(l);
      expectRounded(numbers.factors[k].re.exact, numbers.factors[k].im.exact, sum);
    }
  }
}

}  // namespace
}  // namespace tests
