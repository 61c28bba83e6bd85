// Many signals by the companion header: objects that take them, two dimensions, and errors. The
// transforms that have a kernel are in companion_test.cpp.

#include <array>
#include <complex>
#include <numbers>

#include "companion.h"

namespace tests {
namespace {

constexpr std::size_t kCount = 5;

template <class T>
struct CompanionManyOf : testing::Test {};
TYPED_TEST_SUITE(CompanionManyOf, Precisions);

// From rows to columns, each as by the call for one.
TYPED_TEST(CompanionManyOf, ObjectsAndWht) {
  using T = TypeParam;
  Random random = makeRandom();
  const auto check = [&](std::size_t n, auto&& transform) {
    const std::vector<T> x = normalNumbers<T>(random, static_cast<int>(kCount * n));
    std::vector<T> y(x.size()), expected(x.size());
    transform(zvxg::signals(x, n), zvxg::columns(y, n, kCount));
    for (std::size_t k = 0; k < kCount; ++k) {
      std::vector<T> one(n);
      transform(std::span(x).subspan(k * n, n), std::span(one));
      for (std::size_t i = 0; i < n; ++i) expected[i * kCount + k] = one[i];
    }
    EXPECT_TRUE(sameNumbers(expected, y)) << n;
  };
  for (int order = 1; order <= 13; ++order) {
    check(std::size_t{1} << order, [&, wht = zvxg::Wht<T>(order)](auto in, auto out) mutable {
      wht(in, out, zvxDivBySqrtN);
    });
  }
  check(32, [](auto in, auto out) { zvxg::wht<5>(in, out, zvxDivFwdByN); });
  for (const std::size_t n : {8, 256}) {
    check(n, [&, dct4 = zvxg::Dct4<T>(n)](auto in, auto out) mutable { dct4(in, out); });
  }
}

// One point at (1, 2) of 4 x 3 becomes a wave along both dimensions, and a point again.
TYPED_TEST(CompanionManyOf, TwoDimensions) {
  using T = TypeParam;
  using Pair = std::complex<T>;
  std::array<Pair, 12> point{}, wave;
  point[1 * 3 + 2] = 12;
  zvxg::dft2<4, 3>(point, wave, zvxDivFwdByN);
  std::vector<Pair> blocks(24 + 1), result(24);
  for (int k = 0; k < 12; ++k) {
    const int twelfths = (3 * (k / 3) + 8 * (k % 3)) % 12;  // k / 3 / 4 + 2 * (k % 3) / 3 of a turn
    const auto expected = std::polar(1.0L, -std::numbers::pi_v<long double> * twelfths / 6);
    EXPECT_LT(std::abs(std::complex<long double>(wave[k]) - expected),
              4 * std::numeric_limits<T>::epsilon());
    blocks[k] = point[k];
    blocks[13 + k] = wave[k];
  }
  zvxg::dft2<4, 3>(zvxg::signals<12>(blocks, 13), zvxg::signals(result, 12), zvxDivFwdByN);
  EXPECT_TRUE(std::equal(wave.begin(), wave.end(), result.begin()));
  zvxg::idft2<4, 3>(wave, wave, zvxDivFwdByN);
  for (int k = 0; k < 12; ++k) {
    EXPECT_LT(std::abs(wave[k] - point[k]), 50 * std::numeric_limits<T>::epsilon()) << k;
  }
}

TEST(CompanionMany, Errors) {
  std::vector<float> x(24), y(24);
  std::vector<std::complex<float>> z(24);
  const std::span<float> all(x);
  const auto inColumns = [&](std::size_t first, std::size_t width) {
    return zvxg::columns(all.subspan(first), 4, width, 6);
  };
  const struct {
    std::string text;
    std::function<void()> call;
  } kErrors[] = {
      {"hartley: 6 signals into 4",
       [&] { zvxg::hartley(zvxg::signals(x, 4), zvxg::signals(y, 6)); }},
      {"hartley: a destination has 3 elements instead of 4",
       [&] { zvxg::hartley(zvxg::signals(x, 4, 5), zvxg::signals(y, 3, 5)); }},
      {"rdft: a destination has 4 elements instead of 3",
       [&] { zvxg::rdft(zvxg::signals(x, 4), zvxg::signals(z, 4)); }},
      {"hartley: source and destination overlap without being the same signals",
       [&] { zvxg::hartley(inColumns(0, 3), inColumns(2, 3)); }},
      {"hartley: source and destination overlap without being the same signals",
       [&] { zvxg::hartley(inColumns(2, 3), inColumns(0, 3)); }},
      {"hartley: source and destination overlap without being the same signals",
       [&] { zvxg::hartley(zvxg::signals(x, 4, 4), zvxg::columns(x, 4, 6)); }},
      {"hartley: source and destination overlap without being the same signals",
       [&] { zvxg::hartley(zvxg::signals(x, 4, 5), zvxg::signals(all.first(20), 4, 4)); }},
      {"hartley: there is no transform of length 1",
       [&] { zvxg::hartley(zvxg::signals(x, 1), zvxg::signals(y, 1)); }},
      {"Dct4: a source has 4 elements instead of 8",
       [&] { zvxg::Dct4<float>(8)(zvxg::signals(x, 4), zvxg::signals(y, 4)); }},
      {"dft2: a source has 6 elements instead of 4",
       [&] { zvxg::dft2<2, 2>(zvxg::signals(z, 6), zvxg::signals(z, 6)); }},
      {"signals: length 4 at a stride of 2 and a distance of 6",
       [&] { zvxg::signals(x, 4, {.stride = 2, .distance = 6}); }},
      {"signals: length 4 at a stride of 0 and a distance of 6",
       [&] { zvxg::signals<4>(std::as_const(x), {.stride = 0, .distance = 6}); }},
      {"columns: 7 of length 4, rows at a distance of 7, in 24 elements",
       [&] { zvxg::columns<4>(x, 7); }},
      {"columns: 7 of length 4, rows at a distance of 6, in 24 elements",
       [&] { zvxg::columns<4>(x, 7, 6); }},
  };
  for (const auto& error : kErrors) EXPECT_EQ(complaint(error.call), "zvxg::" + error.text);
  EXPECT_EQ(x, std::vector<float>(24));
  EXPECT_EQ(complaint([&] { zvxg::hartley(inColumns(0, 3), inColumns(3, 3)); }), "none");
  EXPECT_EQ(complaint([&] { zvxg::hartley(inColumns(3, 3), inColumns(0, 3)); }), "none");
  EXPECT_EQ(complaint([&] {
              zvxg::hartley(zvxg::signals<4>(all.first(2)), zvxg::signals<4>(all.first(3)));
            }),
            "none");
}

// Samples become their own half spectra where the bins are twice as wide.
TEST(CompanionMany, CcsInPlace) {
  std::vector<std::complex<float>> x(2 * 3), y(2 * 3);
  const std::span<float> numbers(reinterpret_cast<float*>(x.data()), 12);
  for (std::size_t i = 0; i < 12; ++i) numbers[i] = static_cast<float>(i * i);
  zvxg::rdft(zvxg::signals<4>(numbers, 6), zvxg::signals<3>(y));
  zvxg::rdft(zvxg::signals<4>(numbers, 6), zvxg::signals<3>(x));
  EXPECT_EQ(x, y);
  EXPECT_EQ(y[0], 0.0f + 1 + 4 + 9);
}

}  // namespace
}  // namespace tests
