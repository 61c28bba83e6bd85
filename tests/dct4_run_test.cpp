// Plans at work: the constants of their code, bits that depend on nothing but source and length, the
// lengths 2^k + 1, and plans that are none. Their results are in definition_test.cpp.

#include "dct4.h"
#include "dct4/trig.h"
#include "placement.h"
#include "real.h"

namespace tests {
namespace {

using namespace zvxg::dct4;

TEST(Dct4Reference, FastOneIsTheDefinition) {
  Random random = makeRandom();
  for (const int n : {2, 8, 64, 1024}) {
    const auto source = widened(normalNumbers<double>(random, n));
    EXPECT_LE(relativeError(reference::dct4Definition(source), reference::fastDct4(source)), 1e-17);
  }
}

template <class T>
struct Dct4Run : testing::Test {
  Random random = makeRandom();
};
TYPED_TEST_SUITE(Dct4Run, Precisions);

// The constants in the code come from a series; the angles here are all that it is asked for.
TYPED_TEST(Dct4Run, ConstantsAreRoundedOnce) {
  using T = TypeParam;
  for (int i = 0; i < 128; ++i) {
    ASSERT_EQ(static_cast<T>(cosPi(i, 256)), cosOf<T>(i, 256)) << i;
    ASSERT_EQ(static_cast<T>(sinPi(i, 256)), sinOf<T>(i, 256)) << i;
  }
  for (const int i : {5, 7}) ASSERT_EQ(static_cast<T>(tanPi(i, 32)), tanOf<T>(i, 32)) << i;
}

// Large plans write past the caches, if the addresses allow it.
TYPED_TEST(Dct4Run, SameBitsOfLargePlans) {
  using T = TypeParam;
  constexpr int32_t kLength = 1 << 20;
  const std::vector<T> data = normalNumbers<T>(this->random, kLength);
  const Bytes source = bytesOf(data), expected = bytesOf(Plan<T>(kLength).run(data));
  Surroundings block(planBytes<T>(kLength)), array(source.size());
  for (const int offset : {0, 4, 32, 36}) {
    Dct4Spec* spec = nullptr;
    ASSERT_EQ(dct4<T>("Init").call(
                  {asArgument(&spec), asArgument(kLength), asArgument(block.holding({}, offset))}),
              zvxOk);
    const std::uint64_t place = asArgument(array.holding(source, offset));
    ASSERT_EQ(dct4<T>().call({place, place, asArgument(spec)}), zvxOk);
    EXPECT_TRUE(array.hold(offset, expected)) << offset;
  }
}

// Two elements of each run of N / r stay as they were.
TYPED_TEST(Dct4Run, OddLengthsLeaveTwoElementsOfEachRun) {
  using T = TypeParam;
  for (const int32_t n : api::planLengths(8 * sizeof(T), 1 << 17)) {
    if (n % 2 == 0) continue;
    const Plan<T> plan(n);
    const std::vector<T> result = plan.run(normalNumbers<T>(this->random, n));
    const int run = n / plan.spec()->radix;
    if (n <= (sizeof(T) == 4 ? 257 : 65)) {
      EXPECT_EQ(run, sizeof(T) == 4 ? 16 : 8);
    }
    for (int i = 0; i < n; ++i) {
      const bool isKept = i % run == run / 2 || i % run == run / 2 + 1;
      ASSERT_EQ(bytesOf<T>({result[i]}) == bytesOf<T>({poison<T>()}), isKept) << n << ", " << i;
    }
  }
}

// A state that no plan has refuses the call.
TYPED_TEST(Dct4Run, UnknownStatesLeaveTheDestination) {
  using T = TypeParam;
  const std::vector<T> source(64, T(1)), untouched(64, poison<T>());
  for (const uint32_t state : {0u, sizeof(T) == 4 ? 8u : 7u, 100u, ~0u}) {
    const Plan<T> plan(2);
    plan.spec()->state = state;
    std::vector<T> destination = untouched;
    EXPECT_EQ(plan.run(source.data(), destination.data()), zvxErrPlanState) << state;
    EXPECT_TRUE(bytesOf(destination) == bytesOf(untouched));
  }
}

}  // namespace
}  // namespace tests
