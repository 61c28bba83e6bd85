// Kernels of the direct lengths: constants, accuracy, states that cannot be run.

#include "dct4.h"
#include "dct4/trig.h"
#include "real.h"

namespace tests {
namespace {

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
    ASSERT_EQ(static_cast<T>(zvxg::dct4::tanPi(i, 32)), tanOf<T>(i, 32)) << i;
  }
  EXPECT_EQ(static_cast<float>(zvxg::dct4::tanPi(7, 32)), 0.8206788f);
  EXPECT_EQ(static_cast<float>(zvxg::dct4::tanPi(5, 32)), 0.53451115f);
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
