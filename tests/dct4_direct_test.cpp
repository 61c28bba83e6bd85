// Kernels of the direct lengths: order of operations of the shortest, accuracy of all, statuses.

#include "dct4.h"
#include "dct4/trig.h"
#include "real.h"

namespace tests {
namespace {

// A rounded constant by MPFR.
enum class Function {
  Cos,
  Sin,
  Tan
};
template <class T>
T constant(Function function, int numerator, int denominator) {
  Real value;
  mpfr_const_pi(value.get(), MPFR_RNDN);
  mpfr_mul_si(value.get(), value.get(), numerator, MPFR_RNDN);
  mpfr_div_si(value.get(), value.get(), denominator, MPFR_RNDN);
  switch (function) {
    case Function::Cos: mpfr_cos(value.get(), value.get(), MPFR_RNDN); break;
    case Function::Sin: mpfr_sin(value.get(), value.get(), MPFR_RNDN); break;
    case Function::Tan: mpfr_tan(value.get(), value.get(), MPFR_RNDN); break;
  }
  return value.template rounded<T>();
}
template <class T>
T cosOf(int numerator, int denominator) {
  return constant<T>(Function::Cos, numerator, denominator);
}
template <class T>
T sinOf(int numerator, int denominator) {
  return constant<T>(Function::Sin, numerator, denominator);
}

template <class T>
class Dct4Direct : public testing::Test {
 protected:
  static std::vector<int32_t> lengths() { return powersOfTwo(2, kLongestDirect<T>); }
};
TYPED_TEST_SUITE(Dct4Direct, Precisions);

// The constants in the code come from a series; the angles here are all that it is asked for.
TYPED_TEST(Dct4Direct, ConstantsAreRoundedOnce) {
  using T = TypeParam;
  for (int i = 0; i < 128; ++i) {
    ASSERT_EQ(static_cast<T>(zvxg::dct4::cosPi(i, 256)), cosOf<T>(i, 256)) << i;
    ASSERT_EQ(static_cast<T>(zvxg::dct4::sinPi(i, 256)), sinOf<T>(i, 256)) << i;
  }
  for (const int i : {5, 7}) {
    ASSERT_EQ(static_cast<T>(zvxg::dct4::tanPi(i, 32)), constant<T>(Function::Tan, i, 32)) << i;
  }
  EXPECT_EQ(static_cast<float>(zvxg::dct4::tanPi(7, 32)), 0.8206788f);
  EXPECT_EQ(static_cast<float>(zvxg::dct4::tanPi(5, 32)), 0.53451115f);
}

template <class T>
std::vector<T> byHand2(const std::vector<T>& x) {
  const T c = cosOf<T>(1, 8), s = sinOf<T>(1, 8);
  return {c * x[0] + s * x[1], s * x[0] - c * x[1]};
}

template <class T>
std::vector<T> byHand4(const std::vector<T>& x) {
  const T t1 = constant<T>(Function::Tan, 7, 32), s1 = sinOf<T>(7, 16);
  const T t2 = constant<T>(Function::Tan, 5, 32), s2 = sinOf<T>(5, 16), h = cosOf<T>(1, 4);
  const T a = x[0] - t1 * x[3];
  const T b = a * s1 + x[3];
  const T a2 = a - b * t1;
  const T c = x[1] - t2 * x[2];
  const T d = c * s2 + x[2];
  const T c2 = c - d * t2;
  const T e = (a2 + c2) * h;
  const T f = (b - d) * h;
  return {b + d, f + e, f - e, a2 - c2};
}

template <class T>
std::vector<T> byHand8(const std::vector<T>& x) {
  const T h = cosOf<T>(1, 4);
  T re[2][2], im[2][2];  // [column][k]
  for (const int c : {0, 1}) {
    const T a = x[c], b = x[4 + c], u = x[3 - c], v = x[7 - c];
    const T s1 = h * (b + u), d1 = h * (b - u);
    re[c][0] = a + s1, im[c][0] = d1 - v;
    re[c][1] = a - s1, im[c][1] = d1 + v;
  }
  std::vector<T> result(8);
  for (const int k : {0, 1}) {
    T p[2], q[2];
    for (const int c : {0, 1}) {
      const int angle = (2 * c + 1) * (2 * k + 1);
      const T cos = cosOf<T>(angle, 32), sin = sinOf<T>(angle, 32);
      p[c] = re[c][k] * cos - im[c][k] * sin;
      q[c] = re[c][k] * sin + im[c][k] * cos;
    }
    const T t1 = (p[0] - p[1]) * h, t2 = (q[0] + q[1]) * h;
    result[k] = p[0] + p[1];
    result[4 + k] = t1 - t2;
    result[3 - k] = t1 + t2;
    result[7 - k] = q[0] - q[1];
  }
  return result;
}

TYPED_TEST(Dct4Direct, OperationsOfTheShortest) {
  using T = TypeParam;
  Random random = makeRandom();
  const Plan<T> plan2(2), plan4(4), plan8(8);
  for (int trial = 0; trial < 1000; ++trial) {
    const std::vector<T> two = normalNumbers<T>(random, 2), four = normalNumbers<T>(random, 4),
                         eight = normalNumbers<T>(random, 8);
    ASSERT_TRUE(sameNumbers(byHand2(two), plan2.run(two)));
    ASSERT_TRUE(sameNumbers(byHand4(four), plan4.run(four)));
    ASSERT_TRUE(sameNumbers(byHand8(eight), plan8.run(eight)));
  }
}

TEST(Dct4DirectValues, ImpulsesOfLength2) {
  const Plan<float> plan(2);
  EXPECT_EQ(plan.run({1, 0}), (std::vector<float>{0.9238795f, 0.38268343f}));
  EXPECT_EQ(plan.run({0, 1}), (std::vector<float>{0.38268343f, -0.9238795f}));
}

TYPED_TEST(Dct4Direct, Definition) {
  using T = TypeParam;
  Random random = makeRandom();
  for (const int32_t n : this->lengths()) {
    const Plan<T> plan(n);
    double squares = 0;
    constexpr int kTrials = 200;
    for (int trial = 0; trial < kTrials; ++trial) {
      const std::vector<T> source = normalNumbers<T>(random, n);
      const double error = relativeError(dct4Definition(widened(source)), plan.run(source));
      squares += error * error / kTrials;
    }
    EXPECT_LE(std::sqrt(squares), kDct4Accuracy<T>) << n;
    // An impulse shows each constant by itself.
    for (int i = 0; i < n; ++i) expectImpulse(plan, n, i, dct4Definition, 8);
  }
}

TYPED_TEST(Dct4Direct, StatesThatCannotBeRunLeaveTheDestination) {
  using T = TypeParam;
  const Dct4<T> dct4;
  const std::vector<T> untouched(64, poison<T>()), source(64, T(1));
  const uint32_t beyond = sizeof(T) == 4 ? 8 : 7;
  for (const uint32_t state : {0u, beyond, 100u, ~0u}) {
    const Plan<T> plan(2);
    plan.spec()->state = state;
    std::vector<T> destination = untouched;
    EXPECT_EQ(dct4.run(source.data(), destination.data(), plan.spec()), zvxErrPlanState) << state;
    EXPECT_TRUE(sameNumbers(untouched, destination));
  }
}

}  // namespace
}  // namespace tests
