// The companion header: every transform has the bits of the C function, the errors, half spectra in
// all layouts, and batches. companion_header.cpp has what must not compile.

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

template <class T, std::size_t N, Layout kLayout>
void realTransform(const KernelId& id, const std::vector<T>& source, std::vector<T>& result,
                   ZvxScaleFlag flag) {
  const auto n = static_cast<std::size_t>(id.length);
  if (id.direction == Direction::Forward) {
    zvxg::rdft<N>(source, zvxg::SpectrumView<kLayout, T>(result, n), flag);
  } else {
    zvxg::irdft<N>(zvxg::SpectrumView<kLayout, const T>(source, n), result, flag);
  }
}

// The call that stands for the kernel `id`, its length a template argument or not.
template <class T, std::size_t N = kDynamic>
std::vector<T> transform(const KernelId& id, const std::vector<T>& source, ZvxScaleFlag flag) {
  std::vector<T> result(id.destinationSize(), poison<T>());
  const auto complexes = [](auto& numbers) {
    using Number = std::remove_pointer_t<decltype(numbers.data())>;
    using Pair =
        std::conditional_t<std::is_const_v<Number>, const std::complex<T>, std::complex<T>>;
    return std::span<Pair>(reinterpret_cast<Pair*>(numbers.data()), numbers.size() / 2);
  };
  if (id.family == Family::Hartley) {
    zvxg::hartley<N>(source, result, flag);
  } else if (id.layout == kernelgen::Layout::Ccs) {
    realTransform<T, N, Layout::Ccs>(id, source, result, flag);
  } else if (id.layout == kernelgen::Layout::Pack) {
    realTransform<T, N, Layout::Pack>(id, source, result, flag);
  } else if (id.layout == kernelgen::Layout::Perm) {
    realTransform<T, N, Layout::Perm>(id, source, result, flag);
  } else if (id.direction == Direction::Forward) {
    zvxg::dft<N>(complexes(source), complexes(result), flag);
  } else {
    zvxg::idft<N>(complexes(source), complexes(result), flag);
  }
  return result;
}

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

TEST(Companion, TransformsAreThoseOfC) {
  Random random = makeRandom();
  forEachKernel([&]<class T>(const TestKernel<T>& kernel) {
    EXPECT_EQ(tableEntry<T>(kernel.id), kernel.function.address);
    const std::vector<T> source = normalNumbers<T>(random, kernel.sourceSize);
    for (const ZvxScaleFlag flag : {zvxDivFwdByN, zvxDivInvByN, zvxDivBySqrtN, zvxNoDiv}) {
      const std::vector<T> expected = kernel.run(source, flag);
      EXPECT_TRUE(sameNumbers(expected, transform(kernel.id, source, flag)));
      if (kernel.length != 12) continue;
      const std::vector<T> ofConstant = transform<T, 12>(kernel.id, source, flag);
      EXPECT_TRUE(sameNumbers(expected, ofConstant));
    }
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
struct CompanionWht : testing::Test {};
TYPED_TEST_SUITE(CompanionWht, Precisions);

TYPED_TEST(CompanionWht, IsThatOfC) {
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

template <class Body>
void forEachLayout(const Body& body) {
  body.template operator()<Layout::Ccs>();
  body.template operator()<Layout::Pack>();
  body.template operator()<Layout::Perm>();
  body.template operator()<Layout::HalfComplex>();
}

TEST(Companion, ConversionsKeepEveryBin) {
  Random random = makeRandom();
  for (std::size_t n = 2; n <= 64; ++n) {
    zvxg::Spectrum<Layout::Ccs, double> spectrum(n);
    for (std::size_t k = 0; 2 * k <= n; ++k) {
      const std::vector<double> parts = normalNumbers<double>(random, 2);
      spectrum.setBin(k, {parts[0], parts[1]});
    }
    auto withGarbage = spectrum;  // in the places of CCS that hold no information
    withGarbage.numbers()[1] = poison<double>();
    if (n % 2 == 0) withGarbage.numbers()[n + 1] = poison<double>();
    forEachLayout([&]<Layout kFirst>() {
      zvxg::Spectrum<kFirst, double> first(n);
      zvxg::convert(withGarbage, first);
      forEachLayout([&]<Layout kSecond>() {
        zvxg::Spectrum<kSecond, double> second(n);
        zvxg::convert(first, second);
        for (std::size_t k = 0; 2 * k <= n; ++k) EXPECT_EQ(second.bin(k), spectrum.bin(k)) << n;
      });
    });
  }
}

// x = (1, 2, 3, 4): X = 10, -2 + 2i, -2. An array of complex numbers holds it, and back.
TEST(Companion, ComplexBinsAreCcs) {
  const std::array<double, 4> x = {1, 2, 3, 4};
  std::array<std::complex<double>, 3> bins;
  const zvxg::SpectrumView<Layout::Ccs, double, 4> view(bins);
  zvxg::rdft(x, view);
  EXPECT_EQ(bins, (std::array<std::complex<double>, 3>{10, {-2, 2}, -2}));
  std::vector<std::complex<double>> copy(bins.begin(), bins.end());
  std::array<double, 4> again;
  zvxg::irdft(zvxg::SpectrumView<Layout::Ccs, const double>(copy, 4), again, zvxDivInvByN);
  EXPECT_EQ(again, x);
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
