// The arena of a plan and its lists, and the rule for radices.

#include <gtest/gtest.h>

#include <climits>
#include <vector>

#include "dct4/arena.h"
#include "dct4/radix.h"
#include "zvxg.h"

namespace tests {
namespace {

using namespace zvxg::dct4;

class Dct4Arena : public testing::Test {
 protected:
  // How far the cursor has moved from where it started.
  std::ptrdiff_t moved() const { return arena->cursor - start; }

  alignas(32) unsigned char block[4096];
  Arena* const arena = arenaStart(block);
  unsigned char* const start = arena->cursor;
};

TEST_F(Dct4Arena, MovesByMultiplesOf32) {
  EXPECT_EQ(arenaAlloc(arena, 0), start);
  EXPECT_EQ(moved(), 0);
  EXPECT_EQ(arenaAlloc(arena, 1), start);
  EXPECT_EQ(moved(), 32);
  EXPECT_EQ(arenaAlloc(arena, 32), start + 32);
  EXPECT_EQ(arenaAlloc(arena, 33), start + 64);
  EXPECT_EQ(moved(), 128);
  EXPECT_EQ(arenaRelease(arena, nullptr, 0), 0);
  EXPECT_EQ(moved(), 128);
  EXPECT_EQ(arenaRelease(arena, nullptr, 100), 128);
  EXPECT_EQ(moved(), 0);
}

TEST_F(Dct4Arena, AmountsAreSigned) {
  arenaAlloc(arena, 2'147'483'616);
  EXPECT_EQ(moved(), 2'147'483'616);
  arenaRelease(arena, nullptr, 2'147'483'616);
  arenaAlloc(arena, 2'147'483'617);
  EXPECT_EQ(moved(), INT_MIN);
}

struct Record {
  RecordHead head;
  std::vector<const Record*>* destroyed;
};

TEST_F(Dct4Arena, ListsOwnTheirRecords) {
  std::vector<const Record*> destroyed;
  const auto destroy = [](void* p) {
    auto* const record = static_cast<Record*>(p);
    record->destroyed->push_back(record);
  };
  NodeList* const list = nodeListMake(arena);
  EXPECT_EQ(moved(), 32);
  EXPECT_EQ(nodeListAt(list, 0), nullptr);
  nodeListDestroyItems(list);  // the head holds nothing
  nodeListDestroyItems(nullptr);

  Record records[3];
  for (Record& record : records) {
    arenaAlloc(arena, sizeof record);
    record = {{destroy, sizeof record}, &destroyed};
  }
  const std::ptrdiff_t before = moved();
  EXPECT_EQ(nodeListAppend(list, &records[0]), &records[0]);
  EXPECT_EQ(moved(), before);  // the first is in the head
  nodeListAppend(list, &records[1]);
  EXPECT_EQ(moved(), before + 32);
  nodeListAppend(list, &records[2]);
  for (const int i : {0, 1, 2}) EXPECT_EQ(nodeListAt(list, i), &records[i]);
  EXPECT_EQ(nodeListAt(list, -1), nullptr);

  list->next->item = nullptr;
  releaseOwningList(list);
  EXPECT_EQ(destroyed, (std::vector<const Record*>{&records[0], &records[2]}));
  EXPECT_EQ(moved(), 32);  // the record that the list lost
}

TEST(Dct4Radix, LargestThatDividesFromItsThresholdOn) {
  const struct {
    int32_t value, radix;  // 0: none
  } rows[] = {{INT_MIN, 0}, {-32, 0}, {0, 0},    {2, 0},     {3, 0},      {4, 2},    {12, 2},
              {14, 2},      {15, 0},  {16, 4},   {24, 4},    {32, 8},     {36, 4},   {64, 8},
              {128, 16},    {136, 8}, {256, 16}, {510, 2},   {512, 32},   {528, 16}, {1000, 8},
              {500, 4},     {513, 0}, {6, 2},    {2048, 32}, {INT_MAX, 0}};
  for (const auto& [value, radix] : rows) {
    int32_t result = -7;
    EXPECT_EQ(chooseRadix(&result, value), radix == 0 ? zvxErrLength : zvxOk) << value;
    EXPECT_EQ(result, radix == 0 ? -7 : radix) << value;
  }
}

}  // namespace
}  // namespace tests
