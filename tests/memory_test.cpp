// A program that is linked with the library and defines zvxMalloc and zvxFree itself, as any may:
// the calls arrive here and not in libzvxcore. All else about memory is in reliability/.

#include <algorithm>
#include <cstdlib>

#include "placement.h"
#include "zvxg.h"

namespace {

std::vector<int32_t> taken;      // bytes, by call
std::vector<void*> outstanding;  // not yet given back

}  // namespace

extern "C" void* zvxMalloc(int32_t bytes) noexcept {
  taken.push_back(bytes);
  outstanding.push_back(std::aligned_alloc(16, bytes));
  return outstanding.back();
}

extern "C" void zvxFree(void* block) noexcept {
  EXPECT_EQ(std::erase(outstanding, block), 1u) << "freed, but not taken";
  std::free(block);
}

namespace tests {
namespace {

// Bytes of the buffer, orders 1 to 13.
constexpr int kBytes32[] = {0, 0, 0, 0, 0, 0, 0, 1024, 2048, 4096, 8192, 18432, 34816};
constexpr int kBytes64[] = {0, 0, 0, 0, 0, 0, 0, 2048, 4096, 8192, 18432, 34816, 73728};

int32_t wht(const float* src, float* dst, int order, int32_t flag, uint8_t* buffer) {
  return zvxgWHT_32f(src, dst, order, flag, buffer);
}
int32_t wht(const double* src, double* dst, int order, int32_t flag, uint8_t* buffer) {
  return zvxgWHT_64f(src, dst, order, flag, buffer);
}

// body(order, bytes, zero) for each order, in both precisions.
template <class Body>
void forEachOrder(const Body& body) {
  for (int order = 1; order <= 13; ++order) {
    SCOPED_TRACE("order " + std::to_string(order));
    body(order, kBytes32[order - 1], 0.f);
    body(order, kBytes64[order - 1], 0.0);
  }
}

class Memory : public testing::Test {
  void SetUp() override { taken.clear(); }
  void TearDown() override { EXPECT_TRUE(outstanding.empty()) << "not given back"; }
};

TEST_F(Memory, SizeQueriesTellTheTable) {
  for (const bool isSingle : {true, false}) {
    const auto query = isSingle ? zvxgWHTGetBufferSize_32f : zvxgWHTGetBufferSize_64f;
    const auto& bytes = isSingle ? kBytes32 : kBytes64;
    for (int order = 1; order <= 13; ++order) {
      uint32_t size = 1;
      EXPECT_EQ(query(order, &size), zvxOk);
      EXPECT_EQ(size, static_cast<uint32_t>(bytes[order - 1])) << order;
    }
    for (const int32_t order : {0, 14, -1, INT32_MAX, INT32_MIN}) {
      uint32_t size = 1;
      EXPECT_EQ(query(order, &size), zvxErrLength);
      EXPECT_EQ(query(order, nullptr), zvxErrLength);
      EXPECT_EQ(size, 1u);
    }
  }
}

TEST_F(Memory, NullBufferIsTakenAndGivenBack) {
  forEachOrder([]<class T>(int order, int bytes, T) {
    for (const int offset : {0, 1}) {  // both bodies
      OffsetArray<T> source(1 << order, offset), destination(1 << order, offset);
      std::fill_n(source.data(), 1 << order, T(1));
      taken.clear();
      ASSERT_EQ(wht(source.data(), destination.data(), order, zvxDivFwdByN, nullptr), zvxOk);
      EXPECT_EQ(taken, bytes == 0 ? std::vector<int32_t>() : std::vector<int32_t>{bytes});
      EXPECT_TRUE(outstanding.empty());
      std::vector<T> expected(1 << order);  // of ones, the mean and nothing else
      expected[0] = 1;
      EXPECT_EQ(destination.numbers(), expected);
    }
  });
}

}  // namespace
}  // namespace tests
