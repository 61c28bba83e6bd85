// What stands in the block of a plan: the tree of records, field by field as worked out by hand,
// the cursor, and the space that is left.

#include <sys/mman.h>

#include <cstdint>
#include <initializer_list>

#include "dct4.h"
#include "placement.h"

namespace tests {
namespace {

using namespace zvxg::dct4;

template <class Record>
Record* itemOf(const NodeList* list, int place = 0) {
  while (place-- > 0) list = list->next;
  return static_cast<Record*>(list->item);
}

int itemsOf(const NodeList* list) {
  int items = 0;
  for (; list != nullptr; list = list->next) items += list->item != nullptr;
  return items;
}

// The integers of a record from `first` on.
void expectFields(const char* record, const void* first, std::initializer_list<int32_t> expected) {
  std::vector<int32_t> fields(expected.size());
  std::memcpy(fields.data(), first, expected.size() * sizeof(int32_t));
  EXPECT_EQ(fields, std::vector<int32_t>(expected)) << record;
}

// The records of a plan, the splits from the outermost in.
template <class T>
struct Tree {
  explicit Tree(const Dct4Spec* spec)
      : rotation(itemOf<RotationSource<T>>(spec->allNodes, 0)),
        combine(itemOf<RootCombine<T>>(spec->allNodes, 1)),
        sub(itemOf<RootSub<T>>(spec->allNodes, 2)),
        laneRows(itemOf<LaneRowsSource<T>>(combine->allNodes, 0)),
        combineLoop(itemOf<RootCombineLoop<T>>(combine->allNodes, 1)),
        subLoop(itemOf<RootSubLoop<T>>(sub->allNodes, 0)) {
    EXPECT_EQ(itemsOf(spec->allNodes), 3);
    EXPECT_EQ(itemsOf(combine->allNodes), 2);
    EXPECT_EQ(itemOf<RootCombine<T>>(spec->combineList), combine);
    EXPECT_EQ(itemOf<RootSub<T>>(spec->subList), sub);
    EXPECT_EQ(itemOf<RootCombineLoop<T>>(combine->loopList), combineLoop);
    EXPECT_EQ(itemOf<RootSubLoop<T>>(sub->loopList), subLoop);
    EXPECT_EQ(itemsOf(combineLoop->allNodes), 0);
    EXPECT_EQ(combine->source, rotation);
    EXPECT_EQ(combineLoop->source, laneRows);
    EXPECT_EQ(laneRows->source, rotation);
    const NodeList* nodes = subLoop->allNodes;
    EXPECT_EQ(itemOf<void>(subLoop->loopList), itemOf<void>(nodes));
    while (auto* const node = itemOf<SplitNode<T>>(nodes)) {
      Split split = {node, itemOf<PhaseSource<T>>(node->allNodes, 0),
                     itemOf<SplitCombine<T>>(node->allNodes, 1),
                     itemOf<SplitSub<T>>(node->allNodes, 2)};
      EXPECT_EQ(itemsOf(node->allNodes), 3);
      EXPECT_EQ(itemOf<SplitCombine<T>>(node->combineList), split.combine);
      EXPECT_EQ(itemOf<SplitSub<T>>(node->subList), split.sub);
      EXPECT_EQ(split.combine->source, split.phase);
      nodes = split.sub->allNodes;
      EXPECT_EQ(itemOf<void>(split.sub->nodeList), itemOf<void>(nodes));
      splits.push_back(split);
    }
  }

  struct Split {
    SplitNode<T>* node;
    PhaseSource<T>* phase;
    SplitCombine<T>* combine;
    SplitSub<T>* sub;
  };
  RotationSource<T>* rotation;
  RootCombine<T>* combine;
  RootSub<T>* sub;
  LaneRowsSource<T>* laneRows;
  RootCombineLoop<T>* combineLoop;
  RootSubLoop<T>* subLoop;
  std::vector<Split> splits;
};

// `state` and `radix` come before `length` in the root, `state` stands first in most others.
TEST(Dct4Tree, Single4096) {
  const Plan<float> plan(4096);
  const Dct4Spec* const spec = plan.spec();
  const Tree<float> tree(spec);
  expectFields("Dct4Spec", &spec->state, {7, 32, 4096});
  expectFields("RotationSource", &tree.rotation->rowLength, {64, 32768, 64, 32, 64});
  expectFields("RootCombine", &tree.combine->state, {1, 32, 4096, 64, 64, 4096, 8191, 128});
  expectFields("LaneRowsSource", &tree.laneRows->rowLength, {64, 8});
  expectFields("RootCombineLoop", &tree.combineLoop->state,
               {6, 32, 4096, 64, 512, 8, 4096, 8191, 128});
  expectFields("RootSub", &tree.sub->state, {1, 128, 4096, 8191, 64, 32, 4096, 32});
  expectFields("RootSubLoop", &tree.subLoop->state, {7, 128, 4096, 8191, 64, 4, 4096, 32});
  ASSERT_EQ(tree.splits.size(), 1u);
  const auto& split = tree.splits[0];
  expectFields("SplitNode", &split.node->state, {1, 128, 8, 4096, 4096, 64, 4096, 32});
  expectFields("PhaseSource", &split.phase->length, {128, 8});
  expectFields("SplitCombine", &split.combine->state,
               {3, 8, 4096, 32, 512, 8, 4096, 64, 127, 32, 16});
  expectFields("SplitSub", &split.sub->state, {4, 16, 4096, 4096, 512, 64, 8, 4096, 256, 32});

  const struct {
    const RecordHead& head;
    uint32_t size;
  } heads[] = {{spec->head, 80},           {tree.rotation->head, 56}, {tree.combine->head, 96},
               {tree.laneRows->head, 48},  {tree.sub->head, 88},      {tree.combineLoop->head, 96},
               {tree.subLoop->head, 88},   {split.node->head, 96},    {split.phase->head, 40},
               {split.combine->head, 104}, {split.sub->head, 96}};
  for (const auto& [head, size] : heads) EXPECT_EQ(head.size, size);
  EXPECT_EQ(tree.combine->scratch, nullptr);
  EXPECT_EQ(tree.sub->scratch, nullptr);
  EXPECT_EQ(tree.subLoop->scratch, nullptr);
  EXPECT_EQ(split.sub->scratch, nullptr);
}

TEST(Dct4Tree, SingleNestedSplits) {
  const Plan<float> plan(131'072);
  const Tree<float> tree(plan.spec());
  expectFields("Dct4Spec", &plan.spec()->state, {7, 32, 131'072});
  expectFields("RootSubLoop", &tree.subLoop->state,
               {7, 4096, 131'072, 262'143, 64, 4, 131'072, 32});
  ASSERT_EQ(tree.splits.size(), 2u);
  const auto &outer = tree.splits[0], &inner = tree.splits[1];
  expectFields("outer node", &outer.node->state, {1, 4096, 32, 131'072, 131'072, 64, 131'072, 32});
  expectFields("outer combine", &outer.combine->state,
               {5, 32, 131'072, 32, 2048, 64, 131'072, 2048, 4095, 32, 128});
  expectFields("outer sub", &outer.sub->state,
               {7, 128, 131'072, 131'072, 2048, 64, 32, 131'072, 1024, 32});
  expectFields("inner node", &inner.node->state,
               {1, 128, 8, 131'072, 131'072, 2048, 131'072, 1024});
  expectFields("inner combine", &inner.combine->state,
               {3, 8, 131'072, 1024, 16'384, 8, 131'072, 64, 127, 1024, 16});
  expectFields("inner sub", &inner.sub->state,
               {4, 16, 131'072, 131'072, 16'384, 2048, 8, 131'072, 8192, 1024});
}

TEST(Dct4Tree, Double64HasAPlan) {
  const Plan<double> plan(64);
  const Tree<double> tree(plan.spec());
  expectFields("Dct4Spec", &plan.spec()->state, {6, 8, 64});
  expectFields("RootCombineLoop", &tree.combineLoop->state, {4, 8, 64, 16, 64, 1, 64, 127, 8});
  expectFields("RootSubLoop", &tree.subLoop->state, {3, 8, 64, 127, 16, 2, 64, 8});
  EXPECT_TRUE(tree.splits.empty());
  // Below the root 64 is direct in double precision too.
  const Plan<double> longer(2048);
  expectFields("RootSubLoop", &Tree<double>(longer.spec()).subLoop->state, {6, 64});
}

// An odd length has the tree of the power of two with its own number in the fields.
TEST(Dct4Tree, Single129) {
  const Plan<float> plan(129);
  const Tree<float> tree(plan.spec());
  expectFields("RotationSource", &tree.rotation->rowLength, {16, 1032, 8, 8, 16});
  expectFields("RootCombineLoop", &tree.combineLoop->state, {4, 8, 129, 16, 128, 1, 129, 257, 16});
  expectFields("RootSubLoop", &tree.subLoop->state, {4, 16, 129, 257, 16, 1, 129, 8});
}

TEST(Dct4Tree, DirectLengthsHaveNoTree) {
  const Plan<float> plan(64);
  EXPECT_EQ(plan.spec()->state, 6u);
  EXPECT_EQ(plan.spec()->workspace, nullptr);
  for (const NodeList* list :
       {plan.spec()->allNodes, plan.spec()->combineList, plan.spec()->subList}) {
    EXPECT_EQ(itemsOf(list), 0);
  }
}

// ---- Cursor ------------------------------------------------------------------------------------

uint64_t cursorOf(const void* block) {
  uint64_t cursor;
  std::memcpy(&cursor, block, sizeof cursor);
  return cursor;
}

template <class T>
class Dct4Block : public testing::Test {
 protected:
  Dct4<T> dct4;
};
TYPED_TEST_SUITE(Dct4Block, Precisions);

// A record of 96 bytes and three lists of 32 behind the start, which is rounded down for addresses
// with bit 31 clear and up for the others.
TYPED_TEST(Dct4Block, CursorAtEveryAddress) {
  constexpr std::size_t kBytes = 1 << 16;
  constexpr std::uintptr_t kBit31 = 0x80000000;
  for (const std::uintptr_t base : {0x7e0000000 & ~kBit31, 0x7e0000000 | kBit31}) {
    void* const pages = mmap(reinterpret_cast<void*>(base), kBytes, PROT_READ | PROT_WRITE,
                             MAP_PRIVATE | MAP_ANONYMOUS | MAP_FIXED_NOREPLACE, -1, 0);
    ASSERT_EQ(pages, reinterpret_cast<void*>(base));
    for (int offset = 0; offset < 64; ++offset) {
      unsigned char* const block = static_cast<unsigned char*>(pages) + 4096 + offset;
      const auto address = reinterpret_cast<std::uintptr_t>(block);
      const bool up = (address & kBit31) != 0;
      const std::uintptr_t start = (address + 64 + (up ? 31 : 0)) / 32 * 32;
      Dct4Spec* spec = nullptr;
      ASSERT_EQ(this->dct4.init(&spec, 2, block), zvxOk);
      EXPECT_EQ(reinterpret_cast<std::uintptr_t>(spec), start) << offset;
      EXPECT_EQ(cursorOf(block), start + 96 + 3 * 32) << offset;
      // A refused length gives all back, and a workspace that it never had.
      Dct4Spec* unwritten = spec;
      ASSERT_EQ(this->dct4.init(&unwritten, 1000, block), zvxErrLength);
      EXPECT_EQ(unwritten, spec);
      EXPECT_EQ(cursorOf(block), start - (1000 * sizeof(TypeParam) + 31) / 32 * 32) << offset;
    }
    munmap(pages, kBytes);
  }
}

// Blocks of exactly the reported size with nothing behind: what is written stays inside, and what
// is left over is the slack of the size budget.
TYPED_TEST(Dct4Block, ReportedSizeSuffices) {
  using T = TypeParam;
  std::vector<int32_t> lengths = powersOfTwo(2, 1 << 20);
  const std::vector<int32_t> odd = oddLengths<T>(1 << 20);
  lengths.insert(lengths.end(), odd.begin(), odd.end());
  for (const int32_t n : lengths) {
    SCOPED_TRACE(n);
    const uint32_t size = this->dct4.size(n);
    GuardedPages pages(size);
    for (const bool atEnd : {true, false}) {
      unsigned char* const block = pages.place<unsigned char>(size, atEnd);
      Dct4Spec* spec = nullptr;
      int32_t status = -1;
      ASSERT_TRUE(runsWithoutFault([&] { status = this->dct4.init(&spec, n, block); }));
      ASSERT_EQ(status, zvxOk);
      const uint64_t used = cursorOf(block) - reinterpret_cast<std::uintptr_t>(block);
      const bool direct = spec->workspace == nullptr;
      const uint64_t slack = direct ? 0 : 224 + 160 * Tree<T>(spec).splits.size();
      EXPECT_EQ(size - used, slack);
    }
  }
}

// The destroy function of a record gives back all but the record itself.
TYPED_TEST(Dct4Block, DismantlingReleasesAll) {
  for (const int32_t n : {2, 64, 128, 4096, 1 << 17}) {
    const Plan<TypeParam> plan(n);
    Dct4Spec* const spec = plan.spec();
    spec->head.destroy(spec);
    EXPECT_EQ(spec->arena->cursor, reinterpret_cast<unsigned char*>(spec) + 96);
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
class Dct4Tables : public testing::Test {
 protected:
  static constexpr int kLanes = 32 / sizeof(T);
};
TYPED_TEST_SUITE(Dct4Tables, Precisions);

TYPED_TEST(Dct4Tables, RotationsInTheirOrder) {
  using T = TypeParam;
  for (const int32_t n : {64, 128, 129, 256, 512, 1024, 4096, 1 << 24}) {
    if (sizeof(T) == 4 && n == 64) continue;  // direct
    if (sizeof(T) == 8 && n == 1 << 24) continue;
    const Plan<T> plan(n);
    const Tree<T> tree(plan.spec());
    const int r = plan.spec()->radix;
    const int rows = n / (2 * r);
    const int step = std::max(1, rows / 256);  // of the long table a sample
    for (int row = 0; row < rows; row += row < rows - step ? step : 1) {
      for (int w = 0; w < 2 * r; ++w) {
        const int column = columnOf(r, w);
        // From 2^24 up the product does not fit the 24 bits of a float.
        const T dividend = static_cast<T>(2 * (2 * row + 1) * (column / 2 * 2 + 1));
        const T expected = sineOrCosine<T>(column % 2, dividend / static_cast<T>(8 * n));
        const T* const vector =
            tree.combineLoop->table + (row / this->kLanes * 2 * r + w) * this->kLanes;
        ASSERT_TRUE(sameNumber(vector[row % this->kLanes], expected))
            << n << ": row " << row << ", vector " << w;
        ASSERT_TRUE(sameNumber(tree.rotation->evaluate(tree.rotation, row, column), expected));
        ASSERT_TRUE(sameNumber(
            tree.laneRows->evaluate(tree.laneRows, row / this->kLanes, row % this->kLanes, column),
            expected));
      }
    }
  }
}

TYPED_TEST(Dct4Tables, TwiddlesInTheirOrder) {
  using T = TypeParam;
  constexpr bool kSingle = sizeof(T) == 4;
  struct Pass {
    int steps, count;
    T divisor;
  };
  int seen = 0;
  for (const int32_t n : {4096, 8192, 32'768, 1 << 20}) {
    const Plan<T> plan(n);
    for (const auto& split : Tree<T>(plan.spec()).splits) {
      const int q = split.node->radix, p = split.node->length / (2 * q);
      seen |= q;
      const Pass by4 = {q / 4, 3, static_cast<T>(q / 2)}, by8 = {1, 7, 4}, first4 = {1, 3, 2};
      std::vector<Pass> passes = {by8};
      if (q == 16) passes = {first4, by4};
      if (q == 32 && kSingle) passes = {by8, by4};
      if (q == 32 && !kSingle) passes = {by4, by8};
      const T* vector = split.combine->table;
      for (const Pass& pass : passes) {
        for (int i = 0; i < p; ++i) {
          const T phase = (static_cast<T>(i) + T(0.5)) / static_cast<T>(split.node->length / q);
          ASSERT_TRUE(sameNumber(split.phase->evaluate(split.phase, i, 0, 0), phase));
          for (int j = 0; j < pass.steps; ++j) {
            for (int t = 1; t <= pass.count; ++t) {
              for (const bool sine : {false, true}) {
                const T shifted = phase + static_cast<T>(j);
                const T expected =
                    sineOrCosine<T>(sine, shifted * (static_cast<T>(t) / pass.divisor));
                for (int lane = 0; lane < this->kLanes; ++lane) {
                  ASSERT_TRUE(sameNumber(*vector++, expected))
                      << n << ": radix " << q << ", i " << i << ", j " << j << ", t " << t;
                }
              }
            }
          }
        }
      }
    }
  }
  EXPECT_EQ(seen, 8 | 16 | 32);
}

TEST(Dct4TableValues, KnownToNineDigits) {
  const Plan<float> single(128);
  const Tree<float> tree(single.spec());
  EXPECT_EQ(tree.combineLoop->table[0], 0.999981165f);
  EXPECT_EQ(tree.combineLoop->table[8], 0.00613588467f);
  EXPECT_EQ(tree.rotation->evaluate(tree.rotation, 7, 6), 0.799537301f);
  EXPECT_EQ(tree.rotation->evaluate(tree.rotation, 7, 7), 0.600616455f);
  const Plan<double> plan(64);
  const Tree<double> treeOfDoubles(plan.spec());
  EXPECT_EQ(treeOfDoubles.rotation->evaluate(treeOfDoubles.rotation, 3, 14), 0.27851968938505306);
  EXPECT_EQ(treeOfDoubles.rotation->evaluate(treeOfDoubles.rotation, 3, 15), 0.9604305194155658);
  const Plan<float> split(4096);
  const Tree<float> treeWithSplit(split.spec());
  const auto& combine = *treeWithSplit.splits[0].combine;
  for (int lane = 0; lane < 8; ++lane) {
    EXPECT_EQ(combine.table[3 * 14 * 8 + lane], 0.985277653f);
    EXPECT_EQ(combine.table[(3 * 14 + 1) * 8 + lane], 0.170961887f);
  }
}

}  // namespace
}  // namespace tests
