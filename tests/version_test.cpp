// The version record and the memory functions of the core library.

#include <cstdint>
#include <cstring>
#include <string>

#include "harness.h"
#include "zvxg.h"

namespace tests {
namespace {

TEST(Version, Record) {
  void* address = libraryUnderTest().find("zvxgenGetLibVersion");
  ASSERT_NE(address, nullptr);
  const auto getVersion = reinterpret_cast<decltype(&zvxgenGetLibVersion)>(address);
  const VersionRecord* record = getVersion();
  ASSERT_NE(record, nullptr);
  EXPECT_EQ(record, getVersion());
  EXPECT_EQ(record->major, 6);
  EXPECT_EQ(record->minor, 1);
  EXPECT_EQ(record->buildSeries, 137);
  EXPECT_EQ(record->buildNumber, 300);
  EXPECT_EQ(std::memcmp(record->cpuTag, "e9\0\0", 4), 0);
  EXPECT_STREQ(record->fileName, "zvxgene9-6.1.dll");
  EXPECT_STREQ(record->versionText, "6.1 build 137.20");
  EXPECT_STREQ(record->buildDate, "Jun 10 2009");
}

TEST(Core, BlocksAreAlignedAndWritable) {
  for (const int32_t bytes : {0, 1, 63, 64, 65, 1024, 73728, 1 << 24}) {
    void* block = zvxMalloc(bytes);
    ASSERT_NE(block, nullptr) << bytes;
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(block) % 64, 0u) << bytes;
    std::memset(block, 0xa5, bytes);
    zvxFree(block);
  }
}

TEST(Core, NullIsNoMemoryAndCanBeFreed) {
  EXPECT_EQ(zvxMalloc(-1), nullptr);
  EXPECT_EQ(zvxMalloc(INT32_MIN), nullptr);
  zvxFree(nullptr);
}

}  // namespace
}  // namespace tests
