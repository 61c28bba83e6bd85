// Sizes of plans and the lengths that are accepted, against a model of their own.

#include <cstdint>
#include <set>

#include "dct4.h"

namespace tests {
namespace {

template <class T>
class Dct4Size : public testing::Test {
 protected:
  static constexpr int64_t kElement = sizeof(T), kLanes = 32 / kElement;

  // ---- The model: exact sums, cut to 32 bits by hand.

  static int64_t wrapped(int64_t value) {
    const int64_t low = value & 0xffffffff;
    return low < 0x80000000 ? low : low - 0x100000000;
  }
  static int64_t aligned(int64_t bytes) { return wrapped((bytes + 31) / 32 * 32); }

  // 0 if there is none.
  static int64_t radixOf(int64_t value) {
    if (value >= 512 && value % 32 == 0) return 32;
    if (value >= 128 && value % 16 == 0) return 16;
    if (value >= 32 && value % 8 == 0) return 8;
    if (value >= 16 && value % 4 == 0) return 4;
    if (value >= 4 && value % 2 == 0) return 2;
    return 0;
  }

  static int64_t subSize(int64_t m, int64_t arrayBytes) {
    for (const int64_t leaf : {2, 4, 8, 16, 32, 64}) {
      if (m == leaf) return 160;
    }
    const int64_t q = radixOf(m / 2);
    if (q == 0) return -1;
    const int64_t vectors = q == 2 ? 2 : q == 4 ? 6 : q == 8 ? 14 : q == 16 ? 30 : 62;
    int64_t sum = subSize(m / q, arrayBytes);
    for (const int64_t part : {aligned(m / (2 * q) * vectors * 32), arrayBytes, int64_t{800}}) {
      if (sum < 0) return -1;
      sum = wrapped(sum + part);
    }
    return sum;
  }

  // 0 for a refused length.
  static int64_t model(int64_t n) {
    for (int64_t direct = 2; direct <= kLongestDirect<T>; direct *= 2) {
      if (n == direct) return 256;
    }
    const int64_t r = n > 0 ? radixOf(n / 2) : 0;
    if (r == 0 || r % kLanes != 0 || n / (2 * r) % kLanes != 0) return 0;
    const int64_t arrayBytes = aligned(wrapped(kElement * n));
    int64_t sum = subSize(n / r, arrayBytes);
    for (const int64_t part :
         {wrapped(n / (2 * r) / kLanes * 2 * r * 32), arrayBytes, int64_t{1152}}) {
      if (sum < 0) return 0;
      sum = wrapped(sum + part);
    }
    return sum < 0 ? 0 : sum;
  }

  Dct4<T> dct4;
};
TYPED_TEST_SUITE(Dct4Size, Precisions);

TYPED_TEST(Dct4Size, EveryLengthAsTheModelSays) {
  std::set<int32_t> lengths = {INT32_MIN, INT32_MIN + 1, INT32_MAX};
  for (int32_t n = -5; n <= 70'000; ++n) lengths.insert(n);
  for (int k = 1; k <= 30; ++k) {
    const int32_t power = 1 << k;
    lengths.insert({power - 1, power, power + 1});
    if (k < 30) lengths.insert({3 * (power / 2), 3 * (power / 2) + 1});
  }
  for (const int32_t n : lengths) {
    const int64_t expected = this->model(n);
    uint32_t size = 12345;
    ASSERT_EQ(this->dct4.getSize(n, &size), expected > 0 ? zvxOk : zvxErrLength) << n;
    ASSERT_EQ(size, expected > 0 ? expected : 12345) << n;
  }
}

// The accepted lengths by themselves, as the manual lists them.
TYPED_TEST(Dct4Size, AcceptedLengths) {
  constexpr bool kSingle = sizeof(TypeParam) == 4;
  constexpr int kLargest = kLargestExponent<TypeParam>;
  std::set<int32_t> expected = {1 << 30, (1 << 30) + 1};  // their size wraps
  if (!kSingle) expected.insert({1 << 29, (1 << 29) + 1});
  for (int k = 1; k <= kLargest; ++k) {
    expected.insert(1 << k);
    if (k >= (kSingle ? 7 : 5)) expected.insert((1 << k) + 1);
  }
  std::set<int32_t> accepted;
  for (int32_t n = -5; n <= 70'000; ++n) {
    if (this->dct4.size(n) != 0) accepted.insert(n);
  }
  for (int k = 16; k <= 30; ++k) {
    for (const int32_t n : {(1 << k) - 1, 1 << k, (1 << k) + 1, (1 << k) + (1 << (k - 1))}) {
      if (this->dct4.size(n) != 0) accepted.insert(n);
    }
  }
  EXPECT_EQ(accepted, expected);
}

TEST(Dct4SizeTable, TellingValues) {
  struct Row {
    int32_t length;
    uint32_t single, twice;  // 0: refused
  };
  constexpr Row kRows[] = {{1, 0, 0},
                           {2, 256, 256},
                           {32, 256, 256},
                           {33, 0, 1'856},
                           {64, 256, 2'336},
                           {65, 0, 2'368},
                           {128, 2'336, 3'360},
                           {129, 2'368, 3'392},
                           {192, 0, 0},
                           {256, 3'360, 5'408},
                           {768, 0, 0},
                           {1'000, 0, 0},
                           {1'024, 9'504, 17'696},
                           {4'096, 54'848, 104'000},
                           {65'536, 852'032, 1'638'464},
                           {1 << 25, 704'645'760, 1'375'734'400},
                           {1 << 26, 1'409'287'808, 0},
                           {1 << 29, 0, 536'874'400},
                           {1 << 30, 1'073'745'312, 1'073'745'312}};
  const Dct4<float> single;
  const Dct4<double> twice;
  for (const Row& row : kRows) {
    EXPECT_EQ(single.size(row.length), row.single) << row.length;
    EXPECT_EQ(twice.size(row.length), row.twice) << row.length;
  }
}

}  // namespace
}  // namespace tests
