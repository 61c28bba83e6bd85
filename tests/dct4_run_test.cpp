// Plans at work: results against the definition, bits that depend on nothing but source and length,
// the lengths 2^k + 1, and records in other states.

#include <algorithm>
#include <set>

#include "dct4.h"
#include "placement.h"

namespace tests {
namespace {

using namespace zvxg::dct4;

template <class T>
class Dct4Run : public testing::Test {
 protected:
  static constexpr int kFirst = 2 * kLongestDirect<T>;  // the shortest length with a plan

  static std::vector<int32_t> lengths(int32_t to) { return powersOfTwo(kFirst, to); }

  static std::vector<int32_t> allLengths(int32_t to) {
    std::vector<int32_t> all = powersOfTwo(2, to);
    const std::vector<int32_t> odd = oddLengths<T>(to);
    all.insert(all.end(), odd.begin(), odd.end());
    return all;
  }

  Dct4<T> dct4;
  Random random = makeRandom();
};
TYPED_TEST_SUITE(Dct4Run, Precisions);

// ---- Results -----------------------------------------------------------------------------------

TEST(Dct4Reference, FastOneIsTheDefinition) {
  Random random = makeRandom();
  for (const int n : {2, 8, 64, 1024}) {
    const auto source = widened(normalNumbers<double>(random, n));
    EXPECT_LE(relativeError(dct4Definition(source), fastDct4(source)), 1e-17);
  }
}

TYPED_TEST(Dct4Run, Definition) {
  using T = TypeParam;
  double worst = 0;
  for (const int32_t n : this->lengths(1 << 16)) {
    const Plan<T> plan(n);
    const std::vector<T> source = normalNumbers<T>(this->random, n);
    const double error = relativeError(fastDct4(widened(source)), plan.run(source));
    EXPECT_LE(error, kDct4Accuracy<T>) << n;
    worst = std::max(worst, error);
  }
  std::printf("worst %.3g\n", worst);
}

TYPED_TEST(Dct4Run, EveryImpulse) {
  for (const int32_t n : {this->kFirst, 2 * this->kFirst, 4096}) {
    const Plan<TypeParam> plan(n);
    const int step = n < 4096 ? 1 : 101;
    for (int i = 0; i < n; i += step) expectImpulse(plan, n, i, fastDct4, 16);
  }
}

// 64 points: a direct kernel in single, a plan in double precision.
TEST(Dct4Precisions, AgreeAt64) {
  Random random = makeRandom();
  const std::vector<float> source = normalNumbers<float>(random, 64);
  const std::vector<double> precise = Plan<double>(64).run({source.begin(), source.end()});
  EXPECT_LE(relativeError(widened(precise), Plan<float>(64).run(source)), kDct4Accuracy<float>);
}

// ---- Bits --------------------------------------------------------------------------------------

// Large plans write past the caches, if the addresses allow it.
TYPED_TEST(Dct4Run, SameBitsOfLargePlans) {
  using T = TypeParam;
  constexpr int32_t kLength = 1 << 20;
  const std::vector<T> data = normalNumbers<T>(this->random, kLength);
  const Plan<T> plan(kLength);
  const std::vector<T> expected = plan.run(data);
  EXPECT_TRUE(sameNumbers(expected, plan.run(data)));
  const uint32_t size = this->dct4.size(kLength);
  for (const int offset : {0, 4, 32, 36}) {
    std::vector<unsigned char> memory(size + 128);
    const auto address = reinterpret_cast<std::uintptr_t>(memory.data());
    Dct4Spec* spec = nullptr;
    ASSERT_EQ(this->dct4.init(&spec, kLength, memory.data() + (64 - address % 64) + offset), zvxOk);
    OffsetArray<T> array(kLength, offset / static_cast<int>(sizeof(T)));
    std::copy(data.begin(), data.end(), array.data());
    ASSERT_EQ(this->dct4.run(array.data(), array.data(), spec), zvxOk);
    EXPECT_TRUE(sameNumbers(expected, array.numbers()) && array.surroundingsUntouched()) << offset;
  }
}

// Against the ordinary build, when another one is tested.
TYPED_TEST(Dct4Run, SameBitsFromEveryBuild) {
  using T = TypeParam;
  if (std::getenv("ZVXG_LIBRARY") == nullptr) GTEST_SKIP() << "only one build is at hand";
  const Library ordinary(ZVXG_LIBRARY_FILE);
  for (const int32_t n : this->allLengths(1 << 17)) {
    const std::vector<T> source = normalNumbers<T>(this->random, n);
    ASSERT_TRUE(sameNumbers(Plan<T>(n, ordinary).run(source), Plan<T>(n).run(source))) << n;
  }
}

// ---- Lengths 2^k + 1 ---------------------------------------------------------------------------

TYPED_TEST(Dct4Run, OddLengthsLeaveTwoElementsOfEachRun) {
  using T = TypeParam;
  constexpr bool kSingle = sizeof(T) == 4;
  for (const int32_t n : oddLengths<T>(1 << 17)) {
    SCOPED_TRACE(n);
    const Plan<T> plan(n);
    const std::vector<T> result = plan.run(normalNumbers<T>(this->random, n));
    const int run = n / plan.spec()->radix;
    std::set<int> kept, expected;
    for (int i = 0; i < n; ++i) {
      if (sameNumber(result[i], poison<T>())) kept.insert(i);
      if (i % run == run / 2 || i % run == run / 2 + 1) expected.insert(i);
    }
    EXPECT_EQ(kept, expected);
    if (n == (kSingle ? 129 : 65)) {
      EXPECT_EQ(kept.size(), 16u);
    }
    if (n == (kSingle ? 257 : 33)) {
      EXPECT_EQ(kept.size(), kSingle ? 32u : 8u);
    }
    if (n <= 257) {
      EXPECT_EQ(run, kSingle ? 16 : n < 256 && n > 65 ? 16 : n == 257 ? 16 : 8);
    }
  }
}

// ---- States ------------------------------------------------------------------------------------

// A record that cannot be run is passed over with what is below it: either the stage before has
// left its workspace from the call before, and the result is the old one, or nothing reaches `dst`.
TYPED_TEST(Dct4Run, OtherStatesArePassedOver) {
  using T = TypeParam;
  constexpr int32_t kLength = 1 << 17;  // with a split in a split
  const Plan<T> plan(kLength);
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

  const std::vector<T> first = normalNumbers<T>(this->random, kLength),
                       second = normalNumbers<T>(this->random, kLength);
  const std::vector<T> untouched(kLength, poison<T>());
  const std::vector<T> ofFirst = plan.run(first);
  const auto with = [&](uint32_t& state, uint32_t value) {
    EXPECT_TRUE(sameNumbers(ofFirst, plan.run(first)));
    const uint32_t before = std::exchange(state, value);
    const std::vector<T> result = plan.run(second);
    state = before;
    return result;
  };
  for (uint32_t* state : {&rootSub->state, &subLoop->state, &node->state, &combine->state,
                          &sub->state, &inner->state, &leaf->state}) {
    for (const uint32_t value : {0u, 8u, ~0u}) {
      EXPECT_TRUE(sameNumbers(ofFirst, with(*state, value))) << state - &rootSub->state;
    }
  }
  for (uint32_t* state : {&rootCombine->state, &rootLoop->state}) {
    for (const uint32_t value : {0u, 7u, ~0u}) {
      EXPECT_TRUE(sameNumbers(untouched, with(*state, value)));
    }
  }
}

}  // namespace
}  // namespace tests
