// What is promised of the half spectra of real signals: the layouts hold the same bits, the zeros
// of CCS are constants that nobody reads, bins are doubled before all else. And of all families:
// there and back is the identity.

#include <algorithm>
#include <cmath>
#include <limits>

#include "harness.h"

namespace tests {
namespace {

using kernelgen::Direction;
using kernelgen::Family;
using kernelgen::KernelId;
using kernelgen::Layout;

template <class T>
constexpr T kNaN = std::numeric_limits<T>::quiet_NaN();
template <class T>
constexpr T kInfinity = std::numeric_limits<T>::infinity();
template <class T>
constexpr T kLarge = T(0.6) * std::numeric_limits<T>::max();  // finite, and twice it is not

template <class T>
TestKernel<T> withLayout(const TestKernel<T>& kernel, Layout layout) {
  KernelId id = kernel.id;
  id.layout = layout;
  return loadKernel<T>(libraryUnderTest(), id);
}

// Calls body(kernel) for the real kernels of that direction and layout.
template <class Body>
void forEachReal(Direction direction, Layout layout, const Body& body) {
  std::vector<KernelId> ids = kernelgen::kernelList();
  std::erase_if(ids, [&](const KernelId& id) {
    return id.family != Family::Real || id.direction != direction || id.layout != layout;
  });
  forEachKernel(ids, body);
}

// A spectrum from one layout to another; what the first has no place for is +0.0.
template <class T>
std::vector<T> moved(const std::vector<T>& spectrum, const TestKernel<T>& from, int size,
                     Layout layout) {
  std::vector<T> result(size);
  for (int k = 0; 2 * k <= from.length; ++k) {
    const BinPlace source = binPlace(from.id.layout, from.length, k);
    const BinPlace destination = binPlace(layout, from.length, k);
    result[destination.re] = spectrum[source.re];
    if (!isOwnMirror(from.length, k)) result[destination.im] = spectrum[source.im];
  }
  return result;
}

// Places as the header prints them, for binPlace(), which the other tests lean on.
TEST(Spectrum, PrintedLayouts) {
  // By element: 10 k for the real part of bin k, 10 k + 1 for its imaginary part, which may be
  // zero.
  struct Example {
    Layout layout;
    int length;
    std::vector<int> parts;
  };
  const Example kExamples[] = {
      {Layout::Ccs, 2, {0, 1, 10, 11}},
      {Layout::Pack, 2, {0, 10}},
      {Layout::Perm, 2, {0, 10}},
      {Layout::Ccs, 5, {0, 1, 10, 11, 20, 21}},
      {Layout::Pack, 5, {0, 10, 11, 20, 21}},
      {Layout::Perm, 5, {0, 10, 11, 20, 21}},
      {Layout::Ccs, 6, {0, 1, 10, 11, 20, 21, 30, 31}},
      {Layout::Pack, 6, {0, 10, 11, 20, 21, 30}},
      {Layout::Perm, 6, {0, 30, 10, 11, 20, 21}},
  };
  for (const Example& example : kExamples) {
    std::vector<int> parts(example.parts.size(), -1);
    for (int k = 0; 2 * k <= example.length; ++k) {
      const BinPlace place = binPlace(example.layout, example.length, k);
      parts.at(place.re) = 10 * k;
      if (place.im != kNowhere) parts.at(place.im) = 10 * k + 1;
    }
    EXPECT_EQ(parts, example.parts);
  }
}

constexpr int kTrials = 32;

TEST(Spectrum, LayoutsHoldTheSameBits) {
  Random random = makeRandom();
  forEachReal(Direction::Forward, Layout::Ccs, [&]<class T>(const TestKernel<T>& ccs) {
    for (const Layout layout : {Layout::Pack, Layout::Perm}) {
      const TestKernel<T> other = withLayout(ccs, layout);
      ASSERT_NE(other.function, nullptr);
      for (int trial = 0; trial < kTrials; ++trial) {
        const int32_t flag = kFlags[trial % 4];
        const std::vector<T> source = numbersWithZeros<T>(random, ccs.sourceSize);
        EXPECT_TRUE(sameNumbers(moved(ccs.run(source, flag), ccs, other.destinationSize, layout),
                                other.run(source, flag)))
            << other.id.symbol();
      }
    }
  });
}

TEST(Spectrum, ReadersGiveTheSameBits) {
  Random random = makeRandom();
  forEachReal(Direction::Inverse, Layout::Pack, [&]<class T>(const TestKernel<T>& pack) {
    for (const Layout layout : {Layout::Ccs, Layout::Perm}) {
      const TestKernel<T> other = withLayout(pack, layout);
      ASSERT_NE(other.function, nullptr);
      for (int trial = 0; trial < kTrials; ++trial) {
        const int32_t flag = kFlags[trial % 4];
        const std::vector<T> source = numbersWithZeros<T>(random, pack.sourceSize);
        const std::vector<T> same = moved(source, pack, other.sourceSize, layout);
        EXPECT_TRUE(sameNumbers(pack.run(source, flag), other.run(same, flag)))
            << other.id.symbol();
      }
    }
  });
}

TEST(Spectrum, ZerosOfCcsAreConstants) {
  Random random = makeRandom();
  forEachReal(Direction::Forward, Layout::Ccs, [&]<class T>(const TestKernel<T>& kernel) {
    const int n = kernel.length;
    const auto expectZeros = [&](const std::vector<T>& source) {
      for (const int32_t flag : kFlags) {
        const std::vector<T> spectrum = kernel.run(source, flag);
        EXPECT_TRUE(sameNumber(spectrum[1], T(0)));
        if (n % 2 == 0) {
          EXPECT_TRUE(sameNumber(spectrum[n + 1], T(0)));
        }
      }
    };
    expectZeros(normalNumbers<T>(random, n));
    for (const T value : {T(-0.0), -kInfinity<T>, kNaN<T>, -std::numeric_limits<T>::max()}) {
      expectZeros(std::vector<T>(n, value));
    }
  });
}

TEST(Spectrum, NobodyReadsTheZerosOfCcs) {
  Random random = makeRandom();
  forEachReal(Direction::Inverse, Layout::Ccs, [&]<class T>(const TestKernel<T>& kernel) {
    const int n = kernel.length;
    std::vector<T> source = normalNumbers<T>(random, kernel.sourceSize);
    source[1] = 0;
    if (n % 2 == 0) source[n + 1] = 0;
    const std::vector<T> expected = kernel.run(source, 4);
    for (const T value : {T(-0.0), T(1e30), -kInfinity<T>, kNaN<T>}) {
      std::vector<T> filled = source;
      filled[1] = value;
      if (n % 2 == 0) filled[n + 1] = value;
      EXPECT_TRUE(sameNumbers(expected, kernel.run(filled, 4))) << value;
    }
  });
}

// The bins between 0 and N/2 are doubled in the precision of the data, and the factor comes last:
// it cannot bring back what overflowed.
TEST(Spectrum, BinsOverflowWhenTheyAreDoubled) {
  forEachReal(Direction::Inverse, Layout::Ccs, [&]<class T>(const TestKernel<T>& kernel) {
    for (int k = 0; 2 * k <= kernel.length; ++k) {
      std::vector<T> source(kernel.sourceSize);
      source[2 * k] = kLarge<T>;
      const std::vector<T> samples = kernel.run(source, 2);
      const std::vector<long double> response = impulseResponse(kernel.id, 2 * k);
      for (int j = 0; j < kernel.length; ++j) {
        if (response[j] == 0) continue;
        EXPECT_EQ(std::isfinite(samples[j]), isOwnMirror(kernel.length, k)) << k << " to " << j;
      }
    }
  });
}

// Up to 10 points, none of which has a convolution inside with its larger sums.
TEST(Spectrum, SamplesAreNotDoubled) {
  forEachKernel([]<class T>(const TestKernel<T>& kernel) {
    if (kernel.id.family == Family::Complex || kernel.id.direction == Direction::Inverse) return;
    if (kernel.length > 10) return;
    for (int i = 0; i < kernel.length; ++i) {
      std::vector<T> source(kernel.length);
      source[i] = kLarge<T>;
      for (const T number : kernel.run(source, 1)) ASSERT_TRUE(std::isfinite(number)) << i;
    }
  });
}

// ---- There and back

// The kernel that undoes a forward one; the Hartley transform is its own inverse.
KernelId inverseOf(KernelId id) {
  if (id.family != Family::Hartley) id.direction = Direction::Inverse;
  return id;
}

TEST(Kernels, RoundTrip) {
  Random random = makeRandom();
  forEachKernel([&]<class T>(const TestKernel<T>& there) {
    if (there.id.direction != Direction::Forward) return;
    const TestKernel<T> back = loadKernel<T>(libraryUnderTest(), inverseOf(there.id));
    ASSERT_NE(back.function, nullptr);
    const int n = there.length;
    int pairs = 0;
    for (const int32_t flag : kFlags) {
      for (const int32_t backFlag : kFlags) {
        const double factor = scaleFactor(there.id, flag) * scaleFactor(back.id, backFlag);
        if (std::abs(factor * n - 1) > 1e-3) continue;
        ++pairs;
        double error = 0, norm = 0;
        for (int trial = 0; trial < 8; ++trial) {
          const std::vector<T> signal = normalNumbers<T>(random, there.sourceSize);
          const std::vector<T> again = back.run(there.run(signal, flag), backFlag);
          for (std::size_t i = 0; i < signal.size(); ++i) {
            error += std::pow(double(again[i]) - double(signal[i]), 2);
            norm += std::pow(double(signal[i]), 2);
          }
        }
        // Two transforms of at most 3.5 roundoffs each, by what the header promises, and the
        // rounding of two factors and of two products with them.
        constexpr double kRoundoff = std::numeric_limits<T>::epsilon() / 2;
        EXPECT_LE(std::sqrt(error / norm), 11 * kRoundoff) << "flags " << flag << ", " << backFlag;
      }
    }
    EXPECT_EQ(pairs, 5);  // 1/N here or there with 1 at the other end, and twice its root
  });
}

// ---- The Hartley transform has no direction

template <class Body>
void forEachHartley(const Body& body) {
  std::vector<KernelId> ids = kernelgen::kernelList();
  std::erase_if(ids, [](const KernelId& id) { return id.family != Family::Hartley; });
  forEachKernel(ids, body);
}

TEST(Hartley, BothDivisionsAreOne) {
  Random random = makeRandom();
  forEachHartley([&]<class T>(const TestKernel<T>& kernel) {
    const std::vector<T> signal = normalNumbers<T>(random, kernel.length);
    const std::vector<T> once = kernel.run(signal, 1);
    EXPECT_TRUE(sameNumbers(once, kernel.run(signal, 2)));
    const std::vector<T> twice = kernel.run(once, 2);
    for (int i = 0; i < kernel.length; ++i) {
      EXPECT_NEAR(twice[i] * T(kernel.length), signal[i], 32 * std::numeric_limits<T>::epsilon());
    }
  });
}

TEST(Hartley, CosinePlusSine) {
  forEachHartley([&]<class T>(const TestKernel<T>& kernel) {
    if (kernel.length != 4) return;
    EXPECT_EQ(kernel.run({1, 0, 0, 0}, kUnscaled), (std::vector<T>{1, 1, 1, 1}));
    EXPECT_EQ(kernel.run({0, 1, 0, 0}, kUnscaled), (std::vector<T>{1, 1, -1, -1}));
  });
}

}  // namespace
}  // namespace tests
