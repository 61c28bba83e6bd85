// Plans in memory of the library's own asking. This program defines the two functions through which
// it asks, as any program may.

#include "dct4.h"

namespace {

struct Allocator {
  int gets = 0, frees = 0;
  int32_t bytes = 0;
  void* given = nullptr;
  void* returned = nullptr;
  bool fails = false;
} allocator;

}  // namespace

extern "C" void* zvxMalloc(int32_t bytes) noexcept {
  ++allocator.gets;
  allocator.bytes = bytes;
  allocator.given = allocator.fails ? nullptr : std::malloc(static_cast<std::size_t>(bytes));
  return allocator.given;
}

extern "C" void zvxFree(void* block) noexcept {
  ++allocator.frees;
  allocator.returned = block;
  std::free(block);
}

namespace tests {
namespace {

template <class T>
class Dct4Alloc : public testing::Test {
 protected:
  Dct4Alloc() { allocator = {}; }
  Dct4<T> dct4;
};
TYPED_TEST_SUITE(Dct4Alloc, Precisions);

TYPED_TEST(Dct4Alloc, EveryBlockComesBackOnce) {
  for (const int32_t n : {2, 32, 64, 128, 129, 4096, 1 << 17}) {
    allocator = {};
    Dct4Spec* spec = nullptr;
    ASSERT_EQ(this->dct4.initAlloc(&spec, n), zvxOk);
    EXPECT_EQ(static_cast<uint32_t>(allocator.bytes), this->dct4.size(n));
    EXPECT_EQ(static_cast<void*>(spec->arena), allocator.given);
    std::vector<TypeParam> array(n);
    EXPECT_EQ(this->dct4.run(array.data(), array.data(), spec), zvxOk);
    EXPECT_EQ(allocator.frees, 0);
    EXPECT_EQ(this->dct4.free(spec), zvxOk);
    EXPECT_EQ(allocator.gets, 1);  // so the transform asks for nothing
    EXPECT_EQ(allocator.frees, 1);
    EXPECT_EQ(allocator.returned, allocator.given);
  }
}

// The free function takes the plan apart before: all that was allocated in it is released.
TYPED_TEST(Dct4Alloc, DismantlingReleasesAll) {
  for (const int32_t n : {2, 64, 128, 4096, 1 << 17}) {
    Dct4Spec* spec = nullptr;
    ASSERT_EQ(this->dct4.initAlloc(&spec, n), zvxOk);
    unsigned char* const start = reinterpret_cast<unsigned char*>(spec);
    spec->head.destroy(spec);
    EXPECT_EQ(spec->arena->cursor, start + 96);  // the record itself is still there
    zvxFree(spec->arena);
  }
}

TYPED_TEST(Dct4Alloc, NoMemoryIsANullPointer) {
  allocator.fails = true;
  Dct4Spec* const before = reinterpret_cast<Dct4Spec*>(this);
  Dct4Spec* spec = before;
  EXPECT_EQ(this->dct4.initAlloc(&spec, 4096), zvxErrNullPointer);
  EXPECT_EQ(allocator.gets, 1);
  EXPECT_EQ(allocator.frees, 1);  // of null
  EXPECT_EQ(allocator.returned, nullptr);
  EXPECT_EQ(spec, before);
}

TYPED_TEST(Dct4Alloc, ARefusedLengthAsksForNothing) {
  Dct4Spec* spec = nullptr;
  for (const int32_t n : {-4, 0, 1, 3, 192, 1000, 1 << 28}) {
    EXPECT_EQ(this->dct4.initAlloc(&spec, n), zvxErrLength) << n;
  }
  EXPECT_EQ(allocator.gets + allocator.frees, 0);
  EXPECT_EQ(spec, nullptr);
}

}  // namespace
}  // namespace tests
