// The companion header: every transform, of one signal and of many, has the bits of the C function, the
// errors, half spectra in all layouts, and batches. companion_header.cpp has what must not compile.

#include "companion.h"

#include <array>
#include <complex>
#include <functional>
#include <utility>

namespace tests {
namespace {

using kernelgen::Direction;
using kernelgen::Family;
using kernelgen::KernelId;
using zvxg::kDynamic;
using zvxg::Layout;

// ---- Transforms --------------------------------------------------------------------------------

// The entry of the table of names that a constant length goes to.
template <class T>
const void* tableEntry(const KernelId& id) {
  using F = zvxg::detail::Functions<T>;
  const auto at = [&](auto forward, auto inverse) {
    const auto there = forward.kKernels[id.length - 2], back = inverse.kKernels[id.length - 2];
    return reinterpret_cast<const void*>(id.direction == Direction::Forward ? there : back);
  };
  if (id.family == Family::Hartley) return at(typename F::Hartley(), typename F::Hartley());
  switch (id.layout) {
    case kernelgen::Layout::Ccs: return at(typename F::ToCcs(), typename F::FromCcs());
    case kernelgen::Layout::Pack: return at(typename F::ToPack(), typename F::FromPack());
    case kernelgen::Layout::Perm: return at(typename F::ToPerm(), typename F::FromPerm());
    default: return at(typename F::Forward(), typename F::Inverse());
  }
}

// kCount signals of so many elements with gaps: in rows or in columns.
constexpr std::size_t kCount = 5;
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
  std::span<E> row(std::size_t k) { return {data() + k * steps.distance, length}; }
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

// One by one, with a length that is a template argument or not, and all in one call: each signal has
// the bits of the C function, and what lies between the results stays.
TEST(Companion, TransformsAreThoseOfC) {
  Random random = makeRandom();
  forEachKernel([&]<class T>(const TestKernel<T>& kernel) {
    EXPECT_EQ(tableEntry<T>(kernel.id), kernel.function.address);
    const auto n = static_cast<std::size_t>(kernel.length);
    const auto flag = static_cast<ZvxScaleFlag>(kFlags[kernel.length % 4]);
    const auto expectSame = [&]<class From, class To>(From, To, const auto& single,
                                                      const auto& many) {
      for (const bool rowsIn : {false, true}) {
        for (const bool rowsOut : {false, true}) {
          Field<T, From> x(kernel.sourceSize * sizeof(T) / sizeof(From), rowsIn);
          Field<T, To> y(kernel.destinationSize * sizeof(T) / sizeof(To), rowsOut);
          Field<T, To> expected = y, oneByOne = y;
          for (std::size_t k = 0; k < kCount; ++k) {
            const std::vector<T> source = normalNumbers<T>(random, kernel.sourceSize);
            x.put(k, source);
            expected.put(k, kernel.run(source, flag));
            if (rowsIn && rowsOut) single(n, x.row(k), oneByOne.row(k), flag);
          }
          EXPECT_TRUE(!rowsIn || !rowsOut || sameNumbers(expected.numbers, oneByOne.numbers));
          many(x.signals(), y.signals(), flag);
          EXPECT_TRUE(sameNumbers(expected.numbers, y.numbers));
          if constexpr (std::is_same_v<From, To>) {
            if (rowsIn != rowsOut) continue;
            many(x.signals(), x.signals(), flag);
            EXPECT_TRUE(sameNumbers(expected.numbers, x.numbers));
          }
        }
      }
    };
    withCalls<T>(kernel.id, expectSame);
    if (kernel.length == 12) withCalls<T, 12>(kernel.id, expectSame);
  });
}

// Source and destination in one array, at every distance, and of sizes beside the right one: a call
// throws and changes nothing, or does what the C function does.
TEST(Companion, PartsOfOneArray) {
  constexpr std::size_t kRoom = 26;  // for two parts side by side
  Random random = makeRandom();
  forEachKernel([&]<class T>(const TestKernel<T>& kernel) {
    if (kernel.length != 6) return;
    const std::size_t fromNumbers = kernel.sourceSize, toNumbers = kernel.destinationSize;
    const std::vector<T> numbers = normalNumbers<T>(random, kRoom);
    withCalls<T>(kernel.id, [&]<class From, class To>(From, To, const auto& call, const auto&) {
      const auto expectStatus = [&](std::size_t from, std::size_t to, std::size_t size,
                                    int32_t flag, bool isGood) {
        std::vector<T> array = numbers, expected = numbers;
        if (isGood) {
          std::vector<T> result(&numbers[from], &numbers[from] + fromNumbers);
          result = kernel.run(result, flag);
          std::copy(result.begin(), result.end(), expected.begin() + to);
        }
        const std::span source(reinterpret_cast<const From*>(&array[from]),
                               fromNumbers * sizeof(T) / sizeof(From));
        const std::span destination(reinterpret_cast<To*>(&array[to]), size);
        const std::string said =
            complaint([&] { call(6, source, destination, static_cast<ZvxScaleFlag>(flag)); });
        ASSERT_TRUE((said == "none") == isGood && sameNumbers(expected, array))
            << said << ": from " << from << " to " << to << ", " << size << " elements";
      };
      const std::size_t size = toNumbers * sizeof(T) / sizeof(To);
      for (std::size_t from = 0; from + fromNumbers <= kRoom; ++from) {
        for (std::size_t to = 0; to + toNumbers + 2 <= kRoom; ++to) {
          const bool areGood = from == to || from + fromNumbers <= to || to + toNumbers <= from;
          expectStatus(from, to, size, kUnscaled, areGood);
          expectStatus(from, to, size - 1, kUnscaled, false);
          expectStatus(from, to, size + 1, kUnscaled, false);
        }
      }
      expectStatus(0, 0, size, 3, false);
    });
  });
}

// Arrays of every kind, all lengths known, in place and not.
TEST(Companion, ArraysOfKnownLength) {
  const std::array<std::complex<float>, 3> x = {1, 2, 3};
  std::array<std::complex<float>, 3> expected;
  zvxg::dft(x, expected);
  EXPECT_EQ(expected[0], 6.0f);
  Complex32 c[3] = {{1, 0}, {2, 0}, {3, 0}};
  std::vector<std::complex<float>> v(x.begin(), x.end());
  zvxg::dft(c, c);
  zvxg::dft(std::span(v).first<3>(), v);
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_EQ(std::complex(c[i].re, c[i].im), expected[i]);
    EXPECT_EQ(v[i], expected[i]);
  }
}

template <class T>
struct CompanionOf : testing::Test {};
TYPED_TEST_SUITE(CompanionOf, Precisions);

TYPED_TEST(CompanionOf, WhtIsThatOfC) {
  using T = TypeParam;
  Random random = makeRandom();
  const auto check = [&](int order, const auto& run) {
    const std::vector<T> x = normalNumbers<T>(random, 1 << order);
    std::vector<T> expected(x.size()), y(x.size());
    const Function& entry = functionNamed(sizeof(T) == 4 ? "zvxgWHT_32f" : "zvxgWHT_64f");
    entry.call({asArgument(x.data()), asArgument(expected.data()), asArgument(order),
                asArgument(kUnscaled), 0});
    run(x, y);
    EXPECT_TRUE(sameNumbers(expected, y)) << order;
  };
  for (int order = 1; order <= 13; ++order) {
    zvxg::Wht<T> wht(order);
    check(order, [&](const auto& x, auto& y) { wht(x, y); });
    // The buffer comes along: the one of order 8 would be too small from there on.
    zvxg::Wht<T> copy = wht.clone(), taker(8);
    taker = std::move(copy);
    check(order, [&](const auto& x, auto& y) { taker(x, y); });
  }
  [&]<int... kFrom0>(std::integer_sequence<int, kFrom0...>) {
    (check(kFrom0 + 1, [](const auto& x, auto& y) { zvxg::wht<kFrom0 + 1>(x, y); }), ...);
  }
  (std::make_integer_sequence<int, 7>());
}

// ---- Errors ------------------------------------------------------------------------------------

TEST(Companion, Errors) {
  std::vector<std::complex<float>> x(12), y(13), z(65);
  std::vector<float> numbers(12);
  const auto forged = static_cast<ZvxScaleFlag>(3);
  const auto moved = []<class Object>(Object object) {
    const Object taken = std::move(object);
    return object;
  };
  const struct {
    std::string text;
    std::function<void()> call;
  } kErrors[] = {
      {"dft: the destination has 13 elements instead of 12", [&] { zvxg::dft(x, y); }},
      {"idft: the source has 13 elements instead of 12", [&] { zvxg::idft<12>(y, x); }},
      {"dft: there is no transform of length 65", [&] { zvxg::dft(z, z); }},
      {"dft: there is no transform of length 0",
       [&] { zvxg::dft(std::span(x).first(0), std::span(x).first(0)); }},
      {"dft: the scale is none of the four flags", [&] { zvxg::dft(x, x, forged); }},
      {"hartley: the scale is none of the four flags",
       [&] { zvxg::hartley<12>(numbers, numbers, forged); }},
      {"idft: source and destination overlap without being one array",
       [&] { zvxg::idft(std::span(y).first(12), std::span(y).subspan(1)); }},
      {"rdft: the destination has 6 elements instead of 12",
       [&] { zvxg::rdft(numbers, zvxg::Spectrum<Layout::Ccs, float>(6)); }},
      {"SpectrumView: the array has 12 elements instead of 14",
       [&] { zvxg::SpectrumView<Layout::Ccs, float>(numbers, 12); }},
      {"SpectrumView: the array has 0 elements instead of 12",
       [&] { zvxg::rdft(numbers, moved(zvxg::Spectrum<Layout::Pack, float>(12))); }},
      {"convert: the destination has 11 elements instead of 12",
       [&] {
         zvxg::convert(zvxg::Spectrum<Layout::Ccs, float, 12>(),
                       zvxg::Spectrum<Layout::Pack, float>(11));
       }},
      {"convert: source and destination overlap",
       [&] {
         zvxg::convert(zvxg::SpectrumView<Layout::Pack, float>(numbers, 12),
                       zvxg::SpectrumView<Layout::Perm, float>(numbers, 12));
       }},
      {"wht: the source has 12 elements instead of 8", [&] { zvxg::wht<3>(numbers, numbers); }},
      {"Wht: order 14 is not from 1 to 13", [] { zvxg::Wht<float>(14); }},
      {"Wht: the source has 12 elements instead of 8",
       [&] { zvxg::Wht<float>(3)(numbers, numbers); }},
      {"Wht: there is no transform of length 1",
       [&] {
         moved(zvxg::Wht<float>(3))(std::span(numbers).first(1), std::span(numbers).first(1));
       }},
      {"Dct4: the destination has 12 elements instead of 16",
       [&] { zvxg::Dct4<float>(16)(std::vector<float>(16), numbers); }},
      {"Dct4: source and destination overlap without being one array",
       [&] { zvxg::Dct4<float>(8)(std::span(numbers).first(8), std::span(numbers).last(8)); }},
      {"Dct4: the object was moved from", [&] { moved(zvxg::Dct4<float>(8))({}, {}); }},
      {"kbdWindow: alpha -1.000000 is not from 0 to 1000", [] { zvxg::kbdWindow<float>(8, -1); }},
      {"signals: length 12 at a stride of 1 and a distance of 8",
       [&] { zvxg::signals<12>(numbers, 8); }},
      {"signals: length 0 at a stride of 1 and a distance of 0",
       [&] { zvxg::signals(numbers, 0); }},
      {"batch: 3 signals into 2",
       [&] {
         zvxg::batch(zvxg::signals(numbers, 4), zvxg::signals(numbers, 6), [](auto, auto) {});
       }},
  };
  const std::span<float> all(numbers);
  EXPECT_EQ(complaint([&] { zvxg::hartley(all.first(6), all.last(6)); }), "none");
  EXPECT_EQ(complaint([&] { zvxg::hartley(all.last(6), all.first(6)); }), "none");
  for (const auto& error : kErrors) EXPECT_EQ(complaint(error.call), "zvxg::" + error.text);
  EXPECT_EQ(x, std::vector<std::complex<float>>(12));
}

// ---- Half spectra ------------------------------------------------------------------------------

// By element: 10 k for R[k], 10 k + 1 for I[k], 0 also for what is zero; as docs/layouts.md has it.
template <Layout kLayout>
void expectPlaces(std::size_t length, const std::vector<float>& expected) {
  zvxg::Spectrum<kLayout, float> spectrum(length);
  for (std::size_t k = 0; 2 * k <= length; ++k) {
    spectrum.setBin(k, {10.0f * static_cast<float>(k), 10.0f * static_cast<float>(k) + 1});
  }
  const auto numbers = spectrum.numbers();
  EXPECT_EQ(std::vector<float>(numbers.begin(), numbers.end()), expected) << int(kLayout);
  for (std::size_t k = 0; 2 * k <= length; ++k) {
    const bool isReal = k == 0 || 2 * k == length;
    const float re = 10 * static_cast<float>(k);
    EXPECT_EQ(spectrum.bin(k), std::complex(re, isReal ? 0 : re + 1)) << k;
  }
}

TEST(Companion, PlacesOfBins) {
  expectPlaces<Layout::Ccs>(8, {0, 0, 10, 11, 20, 21, 30, 31, 40, 0});
  expectPlaces<Layout::Pack>(8, {0, 10, 11, 20, 21, 30, 31, 40});
  expectPlaces<Layout::Perm>(8, {0, 40, 10, 11, 20, 21, 30, 31});
  expectPlaces<Layout::HalfComplex>(8, {0, 10, 20, 30, 40, 31, 21, 11});
  expectPlaces<Layout::Ccs>(9, {0, 0, 10, 11, 20, 21, 30, 31, 40, 41});
  expectPlaces<Layout::Pack>(9, {0, 10, 11, 20, 21, 30, 31, 40, 41});
  expectPlaces<Layout::Perm>(9, {0, 10, 11, 20, 21, 30, 31, 40, 41});
  expectPlaces<Layout::HalfComplex>(9, {0, 10, 20, 30, 40, 41, 31, 21, 11});
  expectPlaces<Layout::Pack>(2, {0, 10});
  expectPlaces<Layout::HalfComplex>(2, {0, 10});
}

// The kernels have the places that the table above prints, and the same bits in all layouts; the zeros of
// CCS are not read, and conversions keep every bin.
TYPED_TEST(CompanionOf, LayoutsHoldTheSameSpectrum) {
  using T = TypeParam;
  Random random = makeRandom();
  for (std::size_t n = 2; n <= 64; ++n) {
    const std::vector<T> x = numbersWithZeros<T>(random, static_cast<int>(n));
    zvxg::Spectrum<Layout::Ccs, T> ccs(n);
    std::vector<T> samples(n), found(n);
    zvxg::rdft(x, ccs);
    zvxg::irdft(ccs, samples);
    auto withGarbage = ccs;
    withGarbage.numbers()[1] = poison<T>();
    if (n % 2 == 0) withGarbage.numbers()[n + 1] = poison<T>();
    const auto expectSame = [&]<Layout kLayout>() {
      zvxg::Spectrum<kLayout, T> spectrum(n), expected(n);
      zvxg::Spectrum<Layout::HalfComplex, T> between(n);
      zvxg::Spectrum<Layout::Ccs, T> back(n);
      zvxg::rdft(x, spectrum);
      zvxg::convert(withGarbage, expected);
      EXPECT_TRUE(std::ranges::equal(spectrum.numbers(), expected.numbers(), sameNumber<T>)) << n;
      zvxg::irdft(spectrum, found);
      EXPECT_TRUE(sameNumbers(samples, found)) << n;
      zvxg::convert(spectrum, between);
      zvxg::convert(between, back);
      EXPECT_TRUE(std::ranges::equal(ccs.numbers(), back.numbers(), sameNumber<T>)) << n;
    };
    expectSame.template operator()<Layout::Pack>();
    expectSame.template operator()<Layout::Perm>();
  }
}

// ---- Batches -----------------------------------------------------------------------------------

// The sum of each frame is bin 0: lengths known or not, at a stride, overlapping where they are
// read, with a remainder that belongs to no frame; or no frame at all.
TEST(Companion, BatchServesEverySignal) {
  const std::vector<float> x = {1, 2, 3, 4, 5, 6, 7, 8, 9};
  const auto expectSums = [&](const auto& in, const auto& outOf) {
    std::vector<float> y(3 * 5, -1);
    zvxg::batch(in, outOf(y), [](auto from, auto to) { zvxg::hartley(from, to); });
    for (std::size_t i = 0; i < 3; ++i) {
      EXPECT_EQ(y[5 * i], static_cast<float>(10 + 8 * i));
      EXPECT_EQ(y[5 * i + 4], -1);  // between the results
    }
  };
  expectSums(zvxg::signals<4>(x, 2), [](auto& y) { return zvxg::signals<4>(y, 5); });
  expectSums(zvxg::signals(std::span(x).first(8), 4, 2),
             [](auto& y) { return zvxg::signals(y, 4, 5); });
  const std::vector<float> few(3);
  std::vector<float> y(3);
  EXPECT_EQ(zvxg::signals<4>(few).count(), 0u);
  zvxg::batch(zvxg::signals<4>(few), zvxg::signals<4>(y), [](auto, auto) { FAIL(); });
}

}  // namespace
}  // namespace tests
