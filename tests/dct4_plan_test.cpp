// What is in the block of a plan: the records, field by field as worked out by hand, the cursor, the
// space that is left, and the tables; and what a plan does whose records have other states.

#include <sys/mman.h>

#include <algorithm>

#include "dct4.h"

namespace tests {
namespace {

using namespace zvxg::dct4;

// ---- Records -----------------------------------------------------------------------------------

// The records of a plan, each before those that it owns, in the order in which they were made. The
// list of those is in one place in all records that own any; value sources do not.
void collect(const NodeList* list, std::vector<RecordHead*>& records) {
  constexpr std::size_t kLargestSource = sizeof(RotationSource<float>);
  for (; list != nullptr; list = list->next) {
    if (list->item == nullptr) continue;
    auto* const record = static_cast<RecordHead*>(list->item);
    records.push_back(record);
    if (record->size <= kLargestSource) continue;
    const NodeList* owned;
    std::memcpy(&owned, static_cast<char*>(list->item) + offsetof(Dct4Spec, allNodes),
                sizeof owned);
    collect(owned, records);
  }
}

std::vector<RecordHead*> recordsOf(Dct4Spec* spec) {
  std::vector<RecordHead*> records = {&spec->head};
  collect(spec->allNodes, records);
  return records;
}

// The numbers of the records in that order, and of a split those behind the root's.
enum Place {
  kSpec,
  kRotation,
  kCombine,
  kLaneRows,
  kCombineLoop,
  kSub,
  kSubLoop,
  kNode,
  kPhase,
  kSplitCombine,
  kSplitSub
};
constexpr int kOfSplit = 4;

template <class Record>
Record* at(Dct4Spec* spec, int place) {
  return reinterpret_cast<Record*>(recordsOf(spec).at(place));
}

int splitsOf(Dct4Spec* spec) {
  return (static_cast<int>(recordsOf(spec).size()) - kNode) / kOfSplit;
}

// The integers of a record from `offset` on. At 48 of stages is a null pointer, two zeros.
struct Expected {
  int place;
  uint32_t size;
  int offset;
  std::vector<int32_t> integers;
};

void expectRecords(Dct4Spec* spec, const std::vector<Expected>& expected) {
  for (const Expected& e : expected) {
    SCOPED_TRACE(e.place);
    const RecordHead* const record = recordsOf(spec).at(e.place);
    std::vector<int32_t> integers(e.integers.size());
    std::memcpy(integers.data(), reinterpret_cast<const char*>(record) + e.offset,
                integers.size() * sizeof(int32_t));
    EXPECT_EQ(integers, e.integers);
    EXPECT_EQ(record->size, e.size);
  }
}

TEST(Dct4Records, AsWorkedOutByHand) {
  const Plan<float> single(4096), nested(131'072), odd(129), direct(64);
  expectRecords(single.spec(),
                {{kSpec, 80, 64, {7, 32, 4096}},
                 {kRotation, 56, 32, {64, 32768, 64, 32, 64}},
                 {kCombine, 96, 48, {0, 0, 1, 32, 4096, 64, 64, 4096, 8191, 128}},
                 {kLaneRows, 48, 32, {64, 8}},
                 {kCombineLoop, 96, 48, {6, 32, 4096, 64, 512, 8, 4096, 8191, 128}},
                 {kSub, 88, 48, {0, 0, 1, 128, 4096, 8191, 64, 32, 4096, 32}},
                 {kSubLoop, 88, 48, {0, 0, 7, 128, 4096, 8191, 64, 4, 4096, 32}},
                 {kNode, 96, 64, {1, 128, 8, 4096, 4096, 64, 4096, 32}},
                 {kPhase, 40, 32, {128, 8}},
                 {kSplitCombine, 104, 48, {3, 8, 4096, 32, 512, 8, 4096, 64, 127, 32, 16}},
                 {kSplitSub, 96, 48, {0, 0, 4, 16, 4096, 4096, 512, 64, 8, 4096, 256, 32}}});
  EXPECT_EQ(splitsOf(single.spec()), 1);
  expectRecords(
      nested.spec(),
      {{kSpec, 80, 64, {7, 32, 131'072}},
       {kSubLoop, 88, 56, {7, 4096, 131'072, 262'143, 64, 4, 131'072, 32}},
       {kNode, 96, 64, {1, 4096, 32, 131'072, 131'072, 64, 131'072, 32}},
       {kSplitCombine, 104, 48, {5, 32, 131'072, 32, 2048, 64, 131'072, 2048, 4095, 32, 128}},
       {kSplitSub, 96, 56, {7, 128, 131'072, 131'072, 2048, 64, 32, 131'072, 1024, 32}},
       {kNode + 4, 96, 64, {1, 128, 8, 131'072, 131'072, 2048, 131'072, 1024}},
       {kSplitCombine + 4, 104, 48, {3, 8, 131'072, 1024, 16'384, 8, 131'072, 64, 127, 1024, 16}},
       {kSplitSub + 4, 96, 56, {4, 16, 131'072, 131'072, 16'384, 2048, 8, 131'072, 8192, 1024}}});
  EXPECT_EQ(splitsOf(nested.spec()), 2);
  // An odd length has the tree of the power of two with its own number in the fields.
  expectRecords(odd.spec(), {{kRotation, 56, 32, {16, 1032, 8, 8, 16}},
                             {kCombineLoop, 96, 48, {4, 8, 129, 16, 128, 1, 129, 257, 16}},
                             {kSubLoop, 88, 56, {4, 16, 129, 257, 16, 1, 129, 8}}});
  EXPECT_EQ(recordsOf(direct.spec()).size(), 1u);
  EXPECT_EQ(direct.spec()->workspace, nullptr);
  // Double precision has a direct 64 below the root only.
  const Plan<double> first(64), longer(2048);
  expectRecords(first.spec(), {{kSpec, 80, 64, {6, 8, 64}},
                               {kCombineLoop, 96, 48, {4, 8, 64, 16, 64, 1, 64, 127, 8}},
                               {kSubLoop, 88, 56, {3, 8, 64, 127, 16, 2, 64, 8}}});
  EXPECT_EQ(splitsOf(first.spec()), 0);
  expectRecords(longer.spec(), {{kSubLoop, 88, 56, {6, 64}}});
}

// ---- The block ---------------------------------------------------------------------------------

uint64_t cursorOf(const void* block) {
  uint64_t cursor;
  std::memcpy(&cursor, block, sizeof cursor);
  return cursor;
}

template <class T>
struct Dct4Block : testing::Test {};
TYPED_TEST_SUITE(Dct4Block, Precisions);

// A record of 96 bytes and three lists of 32 behind the start, which is rounded down for addresses
// with bit 31 clear and up for the others.
TYPED_TEST(Dct4Block, CursorAtEveryAddress) {
  const Function& init = dct4<TypeParam>("Init");
  constexpr std::size_t kBytes = 1 << 16;
  constexpr std::uintptr_t kBit31 = 0x80000000;
  for (const std::uintptr_t base : {0x7e0000000 & ~kBit31, 0x7e0000000 | kBit31}) {
    void* const pages = mmap(reinterpret_cast<void*>(base), kBytes, PROT_READ | PROT_WRITE,
                             MAP_PRIVATE | MAP_ANONYMOUS | MAP_FIXED_NOREPLACE, -1, 0);
    ASSERT_EQ(pages, reinterpret_cast<void*>(base));
    for (std::uintptr_t address = base + 4096; address < base + 4096 + 64; ++address) {
      void* const block = reinterpret_cast<void*>(address);
      const std::uintptr_t start = (address + 64 + ((address & kBit31) != 0 ? 31 : 0)) / 32 * 32;
      std::uint64_t spec = 0;
      ASSERT_EQ(init.call({asArgument(&spec), 2, address}), zvxOk);
      EXPECT_EQ(spec, start) << address;
      EXPECT_EQ(cursorOf(block), start + 96 + 3 * 32) << address;
      // A refused length gives all back, and a workspace that it never had.
      ASSERT_EQ(init.call({asArgument(&spec), 1000, address}), zvxErrLength);
      EXPECT_EQ(spec, start);
      EXPECT_EQ(cursorOf(block), start - (1000 * sizeof(TypeParam) + 31) / 32 * 32) << address;
    }
    munmap(pages, kBytes);
  }
}

// What is left over is the slack of the size budget, and the destroy function of a record gives back
// all but the record itself.
TYPED_TEST(Dct4Block, ReportedSizeIsWhatIsTakenAndABudget) {
  using T = TypeParam;
  for (const int32_t n : api::planLengths(8 * sizeof(T), 1 << 20)) {
    SCOPED_TRACE(n);
    const Plan<T> plan(n);
    Dct4Spec* const spec = plan.spec();
    const uint64_t slack = spec->workspace == nullptr ? 0 : 224 + 160 * splitsOf(spec);
    const std::uint64_t start = asArgument(spec), block = asArgument(spec->arena);
    EXPECT_EQ(planBytes<T>(n), cursorOf(spec->arena) - block + slack);
    spec->head.destroy(spec);
    EXPECT_EQ(cursorOf(spec->arena), start + 96);
  }
}

// ---- Tables ------------------------------------------------------------------------------------

// The rounding of phases and products, written out; libm gives sine and cosine.
template <class T>
T sineOrCosine(bool sine, T x) {
  const T angle = static_cast<T>(static_cast<double>(x) * 3.141592653589793);
  return sine ? std::sin(angle) : std::cos(angle);
}

// The columns of a group of r = 32, as they follow each other; the second half has the first two of
// each four raised by 2 and the last two lowered by 2.
constexpr int kColumns32[] = {0,  1,  62, 63, 32, 33, 30, 31, 8,  9,  54, 55, 40, 41, 22, 23,
                              16, 17, 46, 47, 48, 49, 14, 15, 24, 25, 38, 39, 56, 57, 6,  7};
int columnOf(int r, int w) {
  if (r == 32) return w < 32 ? kColumns32[w] : kColumns32[w - 32] + (w % 4 < 2 ? 2 : -2);
  const int t = w / 4;
  return w % 4 < 2 ? 2 * t + w % 2 : 2 * r - 2 - 2 * t + w % 2;
}

template <class T>
constexpr int kLanes = 32 / sizeof(T);

template <class T>
struct Dct4Tables : testing::Test {};
TYPED_TEST_SUITE(Dct4Tables, Precisions);

TYPED_TEST(Dct4Tables, RotationsInTheirOrder) {
  using T = TypeParam;

  for (const int32_t n : {2 * kLongestDirect<T>, 128, 129, 256, 512, 1024, 4096,
                          sizeof(T) == 4 ? 1 << 24 : 1 << 16}) {
    const Plan<T> plan(n);
    auto* const rotation = at<RotationSource<T>>(plan.spec(), kRotation);
    auto* const laneRows = at<LaneRowsSource<T>>(plan.spec(), kLaneRows);
    const T* const table = at<RootCombineLoop<T>>(plan.spec(), kCombineLoop)->table;
    const int r = plan.spec()->radix, rows = n / (2 * r);
    const int step = std::max(1, rows / 256);  // of the long table a sample
    for (int row = 0; row < rows; row += row < rows - step ? step : 1) {
      for (int w = 0; w < 2 * r; ++w) {
        SCOPED_TRACE(testing::Message() << n << ": row " << row << ", vector " << w);
        const int column = columnOf(r, w), laneRow = row / kLanes<T>, lane = row % kLanes<T>;
        // From 2^24 up the product does not fit the 24 bits of a float.
        const T dividend = static_cast<T>(2 * (2 * row + 1) * (column / 2 * 2 + 1));
        const T expected = sineOrCosine<T>(column % 2, dividend / static_cast<T>(8 * n));
        ASSERT_EQ(table[(laneRow * 2 * r + w) * kLanes<T> + lane], expected);
        ASSERT_EQ(rotation->evaluate(rotation, row, column), expected);
        ASSERT_EQ(laneRows->evaluate(laneRows, laneRow, lane, column), expected);
      }
    }
  }
}

TYPED_TEST(Dct4Tables, TwiddlesInTheirOrder) {
  using T = TypeParam;
  struct Pass {
    int steps, count;
    T divisor;
  };
  int seen = 0;
  for (const int32_t n : {4096, 8192, 32'768, 1 << 20}) {
    const Plan<T> plan(n);
    for (int place = 0; place < splitsOf(plan.spec()) * kOfSplit; place += kOfSplit) {
      const auto* const node = at<SplitNode<T>>(plan.spec(), kNode + place);
      const auto* const source = at<PhaseSource<T>>(plan.spec(), kPhase + place);
      const T* table = at<SplitCombine<T>>(plan.spec(), kSplitCombine + place)->table;
      const int q = node->radix, p = node->length / (2 * q);
      seen |= q;
      const Pass by4 = {q / 4, 3, static_cast<T>(q / 2)}, by8 = {1, 7, 4}, first4 = {1, 3, 2};
      std::vector<Pass> passes = {by8};
      if (q == 16) passes = {first4, by4};
      if (q == 32) passes = sizeof(T) == 4 ? std::vector{by8, by4} : std::vector{by4, by8};
      for (const Pass& pass : passes) {
        for (int i = 0; i < p; ++i) {
          const T phase = (static_cast<T>(i) + T(0.5)) / static_cast<T>(node->length / q);
          ASSERT_EQ(source->evaluate(source, i, 0, 0), phase);
          for (int number = 0; number < pass.steps * pass.count * 2; ++number) {
            const int j = number / 2 / pass.count, t = number / 2 % pass.count + 1;
            const T shifted = phase + static_cast<T>(j);
            const T expected =
                sineOrCosine<T>(number % 2, shifted * (static_cast<T>(t) / pass.divisor));
            for (int lane = 0; lane < kLanes<T>; ++lane) {
              ASSERT_EQ(*table++, expected)
                  << n << ": radix " << q << ", i " << i << ", j " << j << ", t " << t;
            }
          }
        }
      }
    }
  }
  EXPECT_EQ(seen, 8 | 16 | 32);
}

// ---- States ------------------------------------------------------------------------------------

template <class T>
struct Dct4States : testing::Test {};
TYPED_TEST_SUITE(Dct4States, Precisions);

// A record that cannot be run is passed over with what is below it: with empty workspaces the result
// is zero, or nothing reaches `dst`.
TYPED_TEST(Dct4States, OthersArePassedOver) {
  using T = TypeParam;
  Random random = makeRandom();
  for (const int32_t length : {1 << 17, 1 << 19}) {  // with a split in a split; in tiles, too
    const Plan<T> plan(length);
    Dct4Spec* const spec = plan.spec();
    auto* const node = at<SplitNode<T>>(spec, kNode);
    auto* const inner = at<SplitNode<T>>(spec, kNode + kOfSplit);
    uint32_t& rootCombine = at<RootCombine<T>>(spec, kCombine)->state;
    uint32_t& rootLoop = at<RootCombineLoop<T>>(spec, kCombineLoop)->state;
    uint32_t* const others[] = {&at<RootSub<T>>(spec, kSub)->state,
                                &at<RootSubLoop<T>>(spec, kSubLoop)->state,
                                &node->state,
                                &at<SplitCombine<T>>(spec, kSplitCombine)->state,
                                &at<SplitSub<T>>(spec, kSplitSub)->state,
                                &inner->state,
                                &at<SplitSub<T>>(spec, kSplitSub + kOfSplit)->state};

    const std::vector<T> source = normalNumbers<T>(random, length), zero(length, T(0)),
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
      for (uint32_t* const state : others) expectWith(*state, value, zero);
      for (uint32_t* const state : {&rootCombine, &rootLoop}) {
        expectWith(*state, value == 8 ? 7 : value, untouched);
      }
    }
  }
}

}  // namespace
}  // namespace tests
