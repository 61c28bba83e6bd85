// Sizes and lengths as the manual lists them, the version record, and the memory functions of the
// core library.

#include <set>

#include "harness.h"
#include "zvxg.h"

namespace tests {
namespace {

// Bytes from a size query, 0 for what is refused, with nothing stored.
uint32_t sizeOf(const Function& query, int32_t selector) {
  uint32_t size = 12345;
  const int32_t status = query.call({asArgument(selector), asArgument(&size)});
  EXPECT_EQ(status, size == 12345 ? zvxErrLength : zvxOk) << selector;
  return status == zvxOk ? size : 0;
}

TEST(Sizes, BuffersOfTheWalshHadamardTransform) {
  constexpr uint32_t kBytes[] = {1024, 2048, 4096, 8192, 18432, 34816, 73728};  // orders 8 to 14
  for (const bool isDouble : {false, true}) {
    const Function& query =
        functionNamed(isDouble ? "zvxgWHTGetBufferSize_64f" : "zvxgWHTGetBufferSize_32f");
    for (int order = 1; order <= 13; ++order) {
      uint32_t size = 12345;
      EXPECT_EQ(query.call({asArgument(order), asArgument(&size)}), zvxOk);
      EXPECT_EQ(size, order < 8 ? 0 : kBytes[order - 8 + isDouble]) << order;
    }
    EXPECT_EQ(sizeOf(query, 0) + sizeOf(query, 14) + sizeOf(query, INT32_MIN), 0u);
  }
}

TEST(Sizes, LengthsWithAPlan) {
  for (const bool isDouble : {false, true}) {
    const Function& query = functionNamed(isDouble ? "zvxgDCT4GetSize_64f" : "zvxgDCT4GetSize_32f");
    std::set<int32_t> expected, tried, accepted;
    for (int k = 1; k <= 30; ++k) {
      const int32_t power = 1 << k;
      const bool wraps = k == 30 || (isDouble && k == 29);  // their size does
      const bool listed = k <= (isDouble ? 25 : 26) || wraps;
      if (listed) expected.insert(power);
      if (listed && k >= (isDouble ? 5 : 7)) expected.insert(power + 1);
      tried.insert({power - 1, power, power + 1, power + power / 2});
    }
    for (int32_t n = -5; n <= 70'000; ++n) tried.insert(n);
    for (const int32_t n : tried) {
      if (sizeOf(query, n) != 0) accepted.insert(n);
    }
    EXPECT_EQ(accepted, expected);
  }
}

TEST(Sizes, OfPlans) {
  const struct {
    int32_t length;
    uint32_t single, twice;  // 0: refused
  } kRows[] = {{2, 256, 256},
               {32, 256, 256},
               {33, 0, 1'856},
               {64, 256, 2'336},
               {65, 0, 2'368},
               {128, 2'336, 3'360},
               {129, 2'368, 3'392},
               {256, 3'360, 5'408},
               {1'024, 9'504, 17'696},
               {4'096, 54'848, 104'000},
               {65'536, 852'032, 1'638'464},
               {1 << 25, 704'645'760, 1'375'734'400},
               {1 << 26, 1'409'287'808, 0},
               {1 << 29, 0, 536'874'400},
               {1 << 30, 1'073'745'312, 1'073'745'312}};
  for (const auto& [length, single, twice] : kRows) {
    EXPECT_EQ(sizeOf(functionNamed("zvxgDCT4GetSize_32f"), length), single) << length;
    EXPECT_EQ(sizeOf(functionNamed("zvxgDCT4GetSize_64f"), length), twice) << length;
  }
}

TEST(Version, Record) {
  const auto getVersion = reinterpret_cast<decltype(&zvxgenGetLibVersion)>(
      functionNamed("zvxgenGetLibVersion").address);
  const VersionRecord* const v = getVersion();
  EXPECT_EQ(std::vector({v->major, v->minor, v->buildSeries, v->buildNumber}),
            std::vector({6, 1, 137, 300}));
  const char* const level = std::getenv("ZVXG_LEVEL");  // of a variant
  const std::string tag = level != nullptr ? level : "e9";
  EXPECT_EQ(v->cpuTag, tag);
  EXPECT_EQ(std::string(v->fileName) + ", " + v->versionText + ", " + v->buildDate,
            "zvxgen" + tag + "-6.1.dll, 6.1 build 137.20, Jun 10 2009");
}

TEST(Core, BlocksAreAlignedAndWritable) {
  for (const int32_t bytes : {0, 1, 63, 64, 65, 1024, 73728, 1 << 24}) {
    void* const block = zvxMalloc(bytes);
    ASSERT_NE(block, nullptr) << bytes;
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(block) % 64, 0u) << bytes;
    std::memset(block, 0xa5, bytes);
    zvxFree(block);
  }
  EXPECT_EQ(zvxMalloc(-1), nullptr);
  EXPECT_EQ(zvxMalloc(INT32_MIN), nullptr);
  zvxFree(nullptr);
}

}  // namespace
}  // namespace tests
