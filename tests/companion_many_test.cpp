// Many signals by the companion header: each has the bits of the C function, and what lies between
// the results stays.

#include <array>
#include <complex>
#include <numbers>

#include "companion.h"

namespace tests {
namespace {

using kernelgen::Direction;
using kernelgen::Family;
using kernelgen::KernelId;
using zvxg::Layout;

constexpr std::size_t kCount = 5;

// The transform of many signals that stands for the kernel `id`, with the elements of its sides:
// test(From(), To(), call).
template <class T, class Test>
void withTransform(const KernelId& id, const Test& test) {
  using Pair = std::complex<T>;
  const auto either = [&](auto sample, auto bin, const auto& forward, const auto& inverse) {
    if (id.direction == Direction::Forward) {
      test(sample, bin, forward);
    } else {
      test(bin, sample, inverse);
    }
  };
  const auto layout = [&]<Layout kLayout>(auto bin) {
    either(
        T(), bin, [](const auto&... a) { zvxg::rdft<kLayout>(a...); },
        [](const auto&... a) { zvxg::irdft<kLayout>(a...); });
  };
  if (id.family == Family::Hartley) {
    test(T(), T(), [](const auto&... a) { zvxg::hartley(a...); });
  } else if (id.family == Family::Complex) {
    either(
        Pair(), Pair(), [](const auto&... a) { zvxg::dft(a...); },
        [](const auto&... a) { zvxg::idft(a...); });
  } else if (id.layout == kernelgen::Layout::Ccs) {
    layout.template operator()<Layout::Ccs>(Pair());
  } else if (id.layout == kernelgen::Layout::Pack) {
    layout.template operator()<Layout::Pack>(T());
  } else {
    layout.template operator()<Layout::Perm>(T());
  }
}

// kCount signals of so many elements with gaps: in rows or in columns.
template <class T, class E>
struct Field {
  Field(std::size_t elements, bool inRows)
      : length(elements),
        steps(inRows ? zvxg::Steps{1, elements + 1} : zvxg::Steps{kCount + 2, 1}),
        numbers(((length - 1) * steps.stride + (kCount - 1) * steps.distance + 1) * kParts,
                poison<T>()) {}

  auto signals() {
    return zvxg::signals(std::span(data(), numbers.size() / kParts), length, steps);
  }
  void put(std::size_t k, const std::vector<T>& signal) {
    const E* const elements = reinterpret_cast<const E*>(signal.data());
    for (std::size_t i = 0; i < length; ++i) {
      data()[k * steps.distance + i * steps.stride] = elements[i];
    }
  }
  E* data() { return reinterpret_cast<E*>(numbers.data()); }

  static constexpr std::size_t kParts = sizeof(E) / sizeof(T);
  std::size_t length;
  zvxg::Steps steps;
  std::vector<T> numbers;
};

TEST(CompanionMany, TransformsAreThoseOfC) {
  Random random = makeRandom();
  forEachKernel([&]<class T>(const TestKernel<T>& kernel) {
    const auto flag = static_cast<ZvxScaleFlag>(kFlags[kernel.length % 4]);
    withTransform<T>(kernel.id, [&]<class From, class To>(From, To, const auto& call) {
      for (const bool rowsIn : {false, true}) {
        for (const bool rowsOut : {false, true}) {
          Field<T, From> x(kernel.sourceSize * sizeof(T) / sizeof(From), rowsIn);
          Field<T, To> y(kernel.destinationSize * sizeof(T) / sizeof(To), rowsOut), expected = y;
          for (std::size_t k = 0; k < kCount; ++k) {
            const std::vector<T> source = normalNumbers<T>(random, kernel.sourceSize);
            x.put(k, source);
            expected.put(k, kernel.run(source, flag));
          }
          call(x.signals(), y.signals(), flag);
          EXPECT_TRUE(sameNumbers(expected.numbers, y.numbers));
          if constexpr (std::is_same_v<From, To>) {
            if (rowsIn != rowsOut) continue;
            call(x.signals(), x.signals(), flag);
            EXPECT_TRUE(sameNumbers(expected.numbers, x.numbers));
          }
        }
      }
    });
  });
}

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
