// The companion header: every transform against its definition, the errors, half spectra in all
// layouts, and batches. companion_header.cpp has what must not compile.

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

template <class T>
std::vector<std::complex<T>> paired(const std::vector<T>& numbers) {
  std::vector<std::complex<T>> pairs;
  for (std::size_t i = 0; i < numbers.size(); i += 2) pairs.push_back({numbers[i], numbers[i + 1]});
  return pairs;
}

template <class T>
std::vector<T> unpaired(const std::vector<std::complex<T>>& pairs) {
  std::vector<T> numbers;
  for (const std::complex<T> pair : pairs)
    numbers.insert(numbers.end(), {pair.real(), pair.imag()});
  return numbers;
}

template <class T, std::size_t N, Layout kLayout>
std::vector<T> realTransform(const KernelId& id, const std::vector<T>& source, ZvxScaleFlag flag) {
  const auto n = static_cast<std::size_t>(id.length);
  std::vector<T> result(id.direction == Direction::Forward ? zvxg::spectrumSize(kLayout, n) : n,
                        poison<T>());
  if (id.direction == Direction::Forward) {
    zvxg::rdft<N>(source, zvxg::SpectrumView<kLayout, T>(result, n), flag);
  } else {
    zvxg::irdft<N>(zvxg::SpectrumView<kLayout, const T>(source, n), result, flag);
  }
  return result;
}

// The call that stands for the kernel `id`, its length a template argument or not.
template <class T, std::size_t N = kDynamic>
std::vector<T> transform(const KernelId& id, const std::vector<T>& source, ZvxScaleFlag flag) {
  switch (id.family) {
    case Family::Complex: {
      std::vector<std::complex<T>> result(id.length);
      if (id.direction == Direction::Forward) {
        zvxg::dft<N>(paired(source), result, flag);
      } else {
        zvxg::idft<N>(paired(source), result, flag);
      }
      return unpaired(result);
    }
    case Family::Hartley: {
      std::vector<T> result(id.length, poison<T>());
      zvxg::hartley<N>(source, result, flag);
      return result;
    }
    case Family::Real: break;
  }
  switch (id.layout) {
    case kernelgen::Layout::Ccs: return realTransform<T, N, Layout::Ccs>(id, source, flag);
    case kernelgen::Layout::Pack: return realTransform<T, N, Layout::Pack>(id, source, flag);
    default: return realTransform<T, N, Layout::Perm>(id, source, flag);
  }
}

// The entry of the table of names that a constant length goes to.
template <class T>
std::vector<T> throughTable(const TestKernel<T>& kernel, const std::vector<T>& source) {
  using F = zvxg::detail::Functions<T>;
  const auto run = [&]<class Element>(zvxg::detail::Kernel<Element> function) {
    std::vector<T> result(kernel.destinationSize, poison<T>());
    EXPECT_EQ(function(reinterpret_cast<const Element*>(source.data()),
                       reinterpret_cast<Element*>(result.data()), zvxNoDiv),
              zvxOk);
    return result;
  };
  const int at = kernel.length - 2;
  const bool forward = kernel.id.direction == Direction::Forward;
  if (kernel.id.family == Family::Complex) {
    return run(forward ? F::Forward::kKernels[at] : F::Inverse::kKernels[at]);
  }
  if (kernel.id.family == Family::Hartley) return run(F::Hartley::kKernels[at]);
  switch (kernel.id.layout) {
    case kernelgen::Layout::Ccs:
      return run(forward ? F::ToCcs::kKernels[at] : F::FromCcs::kKernels[at]);
    case kernelgen::Layout::Pack:
      return run(forward ? F::ToPack::kKernels[at] : F::FromPack::kKernels[at]);
    default: return run(forward ? F::ToPerm::kKernels[at] : F::FromPerm::kKernels[at]);
  }
}

TEST(Companion, Definition) {
  Random random = makeRandom();
  forEachKernel([&]<class T>(const TestKernel<T>& kernel) {
    const KernelId& id = kernel.id;
    const std::vector<T> source = normalNumbers<T>(random, kernel.sourceSize);
    const std::vector<long double> expected = definition(id, widened(source));
    constexpr double kBound = 4 * std::numeric_limits<T>::epsilon();
    EXPECT_LE(relativeError(expected, throughTable(kernel, source)), kBound);
    for (const ZvxScaleFlag flag : {zvxDivFwdByN, zvxDivInvByN, zvxDivBySqrtN, zvxNoDiv}) {
      std::vector<long double> scaled = expected;
      for (long double& number : scaled) number *= scaleFactor<T>(id, flag);
      EXPECT_LE(relativeError(scaled, transform(id, source, flag)), kBound) << flag;
      if (id.length != 12) continue;
      const std::vector<T> ofConstant = transform<T, 12>(id, source, flag);
      EXPECT_LE(relativeError(scaled, ofConstant), kBound) << flag;
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
      {"signals: length 12 at a stride of 8", [&] { zvxg::signals<12>(numbers, 8); }},
      {"signals: length 0 at a stride of 0", [&] { zvxg::signals(numbers, 0); }},
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

// x = (1, 2, 3, 4): X = 10, -2 + 2i, -2. The three ways to hold it, and back.
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

// ---- Walsh-Hadamard ----------------------------------------------------------------------------

// Whole numbers, so that sums are exact.
template <class T>
std::vector<T> whtDefinition(const std::vector<T>& x) {
  std::vector<T> result(x.size());
  for (unsigned k = 0; k < x.size(); ++k) {
    for (unsigned i = 0; i < x.size(); ++i) {
      result[k] += std::popcount(i & k) % 2 == 0 ? x[i] : -x[i];
    }
  }
  return result;
}

template <class T>
class CompanionWht : public testing::Test {};
TYPED_TEST_SUITE(CompanionWht, Precisions);

TYPED_TEST(CompanionWht, Definition) {
  using T = TypeParam;
  const auto wholeNumbers = [](int order) {
    std::vector<T> x(std::size_t{1} << order);
    for (std::size_t i = 0; i < x.size(); ++i) x[i] = static_cast<T>(i * 7919 % 17) - 8;
    return x;
  };
  for (int order = 1; order <= 13; ++order) {
    const std::vector<T> x = wholeNumbers(order), expected = whtDefinition(x);
    zvxg::Wht<T> wht(order);
    std::vector<T> y(x.size());
    wht(x, y);
    EXPECT_EQ(y, expected) << order;
    // The buffer comes along: the one of order 8 would be too small from there on.
    zvxg::Wht<T> copy = wht.clone(), taker(8);
    taker = std::move(copy);
    taker(y, y, zvxDivFwdByN);
    EXPECT_EQ(y, x) << order;
  }
  [&]<int... kFrom0>(std::integer_sequence<int, kFrom0...>) {
    const auto check = [&]<int kOrder>() {
      std::vector<T> x = wholeNumbers(kOrder);
      const std::vector<T> expected = whtDefinition(x);
      zvxg::wht<kOrder>(x, x);
      EXPECT_EQ(x, expected) << kOrder;
    };
    (check.template operator()<kFrom0 + 1>(), ...);
  }
  (std::make_integer_sequence<int, 7>());
}

// ---- Batches -----------------------------------------------------------------------------------

// The sum of each frame is bin 0: lengths known or not, at a stride, overlapping where they are
// read, with a remainder that belongs to no frame.
TEST(Companion, BatchServesEverySignal) {
  const std::vector<float> x = {1, 2, 3, 4, 5, 6, 7, 8, 9};
  std::vector<float> y(3 * 5, -1);
  const auto sums = [&](const auto& in, const auto& out) {
    zvxg::batch(in, out, [](auto from, auto to) { zvxg::hartley(from, to); });
  };
  const auto expectSums = [&](const std::vector<float>& expected) {
    for (std::size_t i = 0; i < 3; ++i) EXPECT_EQ(y[5 * i], expected[i]);
    for (std::size_t i = 0; i < 3; ++i) EXPECT_EQ(y[5 * i + 4], -1);  // between the results
  };
  sums(zvxg::signals<4>(x, 2), zvxg::signals<4>(y, 5));
  expectSums({10, 18, 26});
  y.assign(3 * 5, -1);
  sums(zvxg::signals(std::span(x).first(8), 4, 2), zvxg::signals(y, 4, 5));
  expectSums({10, 18, 26});
}

TEST(Companion, BatchOfNone) {
  const std::vector<float> x(3);
  std::vector<float> y(3);
  EXPECT_EQ(zvxg::signals<4>(x).count(), 0u);
  zvxg::batch(zvxg::signals<4>(x), zvxg::signals<4>(y), [](auto, auto) { FAIL(); });
}

}  // namespace
}  // namespace tests
