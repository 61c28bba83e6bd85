// Plans at work: the constants of their code, bits that depend on nothing but source and length, the
// lengths 2^k + 1, and records in other states. Their results are in definition_test.cpp.

#include <algorithm>
#include <set>

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

// ---- States ------------------------------------------------------------------------------------

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

// A record that cannot be run is passed over with what is below it: with empty workspaces the result
// is zero, or nothing reaches `dst`.
TYPED_TEST(Dct4Run, OtherStatesArePassedOver) {
  using T = TypeParam;
  for (const int32_t length : {1 << 17, 1 << 19}) {  // with a split in a split; in tiles, too
    const Plan<T> plan(length);
    Dct4Spec* const spec = plan.spec();
    const auto item = []<class Record>(const NodeList* list, Record*) {
      return static_cast<Record*>(list->item);
    };
    auto* const rootCombine = item(spec->combineList, static_cast<RootCombine<T>*>(nullptr));
    auto* const rootLoop = item(rootCombine->loopList, static_cast<RootCombineLoop<T>*>(nullptr));
    auto* const rootSub = item(spec->subList, static_cast<RootSub<T>*>(nullptr));
    auto* const subLoop = item(rootSub->loopList, static_cast<RootSubLoop<T>*>(nullptr));
    auto* const node = item(subLoop->loopList, static_cast<SplitNode<T>*>(nullptr));
    auto* const combine = item(node->combineList, static_cast<SplitCombine<T>*>(nullptr));
    auto* const sub = item(node->subList, static_cast<SplitSub<T>*>(nullptr));
    auto* const inner = item(sub->nodeList, static_cast<SplitNode<T>*>(nullptr));
    auto* const leaf = item(inner->subList, static_cast<SplitSub<T>*>(nullptr));

    const std::vector<T> source = normalNumbers<T>(this->random, length), zero(length, T(0)),
                         untouched(length, poison<T>()), ordinary = plan.run(source);
    const auto expectWith = [&](uint32_t& state, uint32_t value, const std::vector<T>& expected) {
      for (void* workspace : {spec->workspace, static_cast<void*>(node->workspace),
                              static_cast<void*>(inner->workspace)}) {
        std::fill_n(static_cast<T*>(workspace), length, T(0));
      }
      const uint32_t before = std::exchange(state, value);
      const std::vector<T> result = plan.run(source);
      EXPECT_TRUE(std::ranges::equal(expected, result, [](T a, T b) {
        return a == b || bytesOf<T>({a}) == bytesOf<T>({b});
      })) << value;
      state = before;
      EXPECT_TRUE(sameNumbers(ordinary, plan.run(source)));
    };
    for (const uint32_t value : {0u, 8u, ~0u}) {
      for (uint32_t* state : {&rootSub->state, &subLoop->state, &node->state, &combine->state,
                              &sub->state, &inner->state, &leaf->state}) {
        expectWith(*state, value, zero);
      }
      expectWith(rootCombine->state, value == 8 ? 7 : value, untouched);
      expectWith(rootLoop->state, value == 8 ? 7 : value, untouched);
    }
  }
}

}  // namespace
}  // namespace tests
