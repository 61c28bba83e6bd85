// The contract of a call, one test per promise: statuses and their order, the factors of the flags,
// no access outside the arrays, and bits that depend on neither place nor alignment.

#include <fenv.h>
#include <xmmintrin.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "harness.h"
#include "placement.h"

namespace tests {
namespace {

constexpr int32_t kNullPointer = -8;
constexpr int32_t kBadFlag = -16;

template <class T>
bool sameBytes(const std::vector<T>& a, const std::vector<T>& b) {
  return a.size() == b.size() && std::memcmp(a.data(), b.data(), a.size() * sizeof(T)) == 0;
}

TEST(Frame, FailuresInOrderLeaveTheDestination) {
  constexpr int32_t kBadFlags[] = {0,  3,  5,  6,   7,    9,     10,        12,
                                   15, 16, -1, -16, 0x80, 0x108, INT32_MAX, INT32_MIN};
  forEachKernel([&]<class T>(const TestKernel<T>& kernel) {
    const std::vector<T> untouched(std::max(kernel.sourceSize, kernel.destinationSize),
                                   poison<T>());
    std::vector<T> array = untouched;
    T* const data = array.data();
    for (const int32_t flag : kBadFlags) {
      const std::vector<T> source(kernel.sourceSize, T(1));
      EXPECT_EQ(kernel.function(source.data(), data, flag), kBadFlag) << flag;
      EXPECT_EQ(kernel.function(data, data, flag), kBadFlag) << flag;
      EXPECT_EQ(kernel.function(nullptr, data, flag), kNullPointer) << flag;
      EXPECT_EQ(kernel.function(data, nullptr, flag), kNullPointer) << flag;
      EXPECT_EQ(kernel.function(nullptr, nullptr, flag), kNullPointer) << flag;
    }
    for (const int32_t flag : kFlags) {
      EXPECT_EQ(kernel.function(nullptr, data, flag), kNullPointer) << flag;
      EXPECT_EQ(kernel.function(data, nullptr, flag), kNullPointer) << flag;
      EXPECT_EQ(kernel.function(nullptr, nullptr, flag), kNullPointer) << flag;
    }
    EXPECT_TRUE(sameBytes(untouched, array));
  });
}

// Witnesses for scaleFactor(), which the next test and others lean on.
TEST(Frame, WellKnownFactors) {
  using kernelgen::Direction, kernelgen::Family, kernelgen::Layout, kernelgen::Precision;
  const auto forward = [](int length) {
    return kernelgen::KernelId{Family::Complex, Direction::Forward, length, Precision::Single};
  };
  EXPECT_EQ(scaleFactor<float>(forward(2), 1), 0.5f);
  EXPECT_EQ(scaleFactor<float>(forward(2), 4), 0.70710677f);
  EXPECT_EQ(scaleFactor<float>(forward(3), 1), 0.33333334f);
  EXPECT_EQ(scaleFactor<float>(forward(3), 4), 0.57735026f);
  EXPECT_EQ(scaleFactor<float>(forward(10), 1), 0.1f);
  EXPECT_EQ(scaleFactor<float>(forward(10), 4), 0.31622776f);
  EXPECT_EQ(scaleFactor<float>(forward(12), 4), 0.28867513f);
  EXPECT_EQ(scaleFactor<double>(forward(3), 1), 0.3333333333333333);
  EXPECT_EQ(scaleFactor<double>(forward(3), 4), 0.5773502691896258);
  // The direction decides between flags 1 and 2, and without one both divide.
  const kernelgen::KernelId inverse{Family::Real, Direction::Inverse, 5, Precision::Single,
                                    Layout::Pack};
  const kernelgen::KernelId hartley{Family::Hartley, Direction::Forward, 5, Precision::Single};
  const float expected[][3] = {{1, 0.2f, 0.2f}, {0.2f, 1, 0.2f}};  // complex, real inverse, Hartley
  for (const int32_t flag : {1, 2}) {
    EXPECT_EQ(scaleFactor<float>(forward(5), flag), expected[2 - flag][0]);
    EXPECT_EQ(scaleFactor<float>(inverse, flag), expected[2 - flag][1]);
    EXPECT_EQ(scaleFactor<float>(hartley, flag), expected[2 - flag][2]);
  }
}

// A forward real kernel in single precision takes the factor into those outputs that are double
// expressions, before their one rounding. Such an output cannot be told from the unscaled one,
// which was rounded too, but to within both roundings.
template <class T>
bool roundsWithTheFactor(const kernelgen::KernelId& id) {
  return id.family == kernelgen::Family::Real && id.direction == kernelgen::Direction::Forward &&
         sizeof(T) == sizeof(float);
}

TEST(Frame, FlagsMultiplyTheUnscaledResult) {
  Random random = makeRandom();
  forEachKernel([&]<class T>(const TestKernel<T>& kernel) {
    const std::vector<T> source = numbersWithZeros<T>(random, kernel.sourceSize);
    const std::vector<T> unscaled = kernel.run(source, kUnscaled);
    for (const int32_t flag : kFlags) {
      const T factor = scaleFactor<T>(kernel.id, flag);
      std::vector<T> expected = unscaled;
      for (T& number : expected) number *= factor;
      const std::vector<T> actual = kernel.run(source, flag);
      if (roundsWithTheFactor<T>(kernel.id) && factor != 1) {
        for (std::size_t k = 0; k < actual.size(); ++k) {
          const double exact = double(unscaled[k]) * double(factor);
          const double roundings = std::abs(exact) * std::numeric_limits<float>::epsilon();
          EXPECT_NEAR(actual[k], exact, roundings * 1.000001) << "flag " << flag << ", " << k;
        }
      } else {
        EXPECT_TRUE(sameNumbers(expected, actual)) << "flag " << flag;
      }
    }
  });
}

// ---- Memory ------------------------------------------------------------------------------------

TEST(Frame, NoAccessOutsideTheArrays) {
  GuardedPages sourcePages, destinationPages;
  // The check itself: a read before and a write behind have to be caught.
  sourcePages.protect(PROT_READ);
  ASSERT_FALSE(runsWithoutFault(
      [&] { [[maybe_unused]] char read = *(sourcePages.place<volatile char>(1, false) - 1); }));
  ASSERT_FALSE(runsWithoutFault([&] { *sourcePages.place<volatile char>(1, true) = 0; }));

  Random random = makeRandom();
  forEachKernel([&]<class T>(const TestKernel<T>& kernel) {
    const std::vector<T> data = normalNumbers<T>(random, kernel.sourceSize);
    const std::vector<T> expected = kernel.run(data, kUnscaled);
    for (const bool sourceAtEnd : {false, true}) {
      T* const source = sourcePages.place<T>(kernel.sourceSize, sourceAtEnd);
      sourcePages.protect(PROT_READ | PROT_WRITE);
      std::copy(data.begin(), data.end(), source);
      sourcePages.protect(PROT_READ);
      for (const bool destinationAtEnd : {false, true}) {
        T* const destination = destinationPages.place<T>(kernel.destinationSize, destinationAtEnd);
        ASSERT_TRUE(runsWithoutFault([&] { kernel.function(source, destination, kUnscaled); }))
            << "source at the " << (sourceAtEnd ? "end" : "start") << ", destination at the "
            << (destinationAtEnd ? "end" : "start");
        ASSERT_TRUE(sameNumbers(expected,
                                std::vector<T>(destination, destination + kernel.destinationSize)));
      }
    }
  });
}

TEST(Frame, SameBitsAtEveryOffset) {
  Random random = makeRandom();
  forEachKernel([&]<class T>(const TestKernel<T>& kernel) {
    const std::vector<T> data = numbersWithZeros<T>(random, kernel.sourceSize);
    std::vector<T> expected;
    for (int sourceOffset = 0; sourceOffset < OffsetArray<T>::kStep; ++sourceOffset) {
      OffsetArray<T> source(kernel.sourceSize, sourceOffset);
      std::copy(data.begin(), data.end(), source.data());
      for (int offset = 0; offset < OffsetArray<T>::kStep; ++offset) {
        OffsetArray<T> destination(kernel.destinationSize, offset);
        ASSERT_TRUE(runsWithoutFault(
            [&] { kernel.function(source.data(), destination.data(), kUnscaled); }));
        if (expected.empty()) expected = destination.numbers();  // both aligned
        ASSERT_TRUE(sameNumbers(expected, destination.numbers()) &&
                    destination.surroundingsUntouched() && sameBytes(data, source.numbers()))
            << "source offset " << sourceOffset << ", destination offset " << offset;
      }
    }
  });
}

TEST(Frame, SameBitsInPlace) {
  Random random = makeRandom();
  forEachKernel([&]<class T>(const TestKernel<T>& kernel) {
    const std::vector<T> data = numbersWithZeros<T>(random, kernel.sourceSize);
    const std::vector<T> expected = kernel.run(data, kUnscaled);
    const int size = std::max(kernel.sourceSize, kernel.destinationSize);
    for (int offset = 0; offset < OffsetArray<T>::kStep; ++offset) {
      OffsetArray<T> array(size, offset);
      std::copy(data.begin(), data.end(), array.data());
      ASSERT_EQ(kernel.function(array.data(), array.data(), kUnscaled), 0);
      // Of a longer source, what is behind the result stays.
      std::vector<T> whole = data;
      whole.resize(size);
      std::copy(expected.begin(), expected.end(), whole.begin());
      ASSERT_TRUE(sameNumbers(whole, array.numbers()) && array.surroundingsUntouched())
          << "offset " << offset;
    }
  });
}

// ---- Floating-point environment ----------------------------------------------------------------

// Unused vector lanes must not hold garbage: it could raise exceptions or be slow as a denormal.
TEST(Frame, NoSpuriousExceptionsAndNoChangeOfControl) {
  constexpr unsigned kAllMaskedToNearest = 0x1f80;
  Random random = makeRandom();
  forEachKernel([&]<class T>(const TestKernel<T>& kernel) {
    const std::vector<T> source = normalNumbers<T>(random, kernel.sourceSize);
    std::vector<T> destination(kernel.destinationSize);
    for (const int32_t flag : kFlags) {
      _mm_setcsr(kAllMaskedToNearest);
      kernel.function(source.data(), destination.data(), flag);
      EXPECT_EQ(_mm_getcsr() & ~static_cast<unsigned>(_MM_EXCEPT_INEXACT), kAllMaskedToNearest);
    }
  });
}

// No constant result and no rounding of its own: the caller's mode decides the last bits. The few
// sums of a short kernel can all be exact, but not for every signal.
TEST(Frame, RoundingModeIsTheCallers) {
  Random random = makeRandom();
  forEachKernel([&]<class T>(const TestKernel<T>& kernel) {
    int differing = 0;
    for (int trial = 0; trial < 16; ++trial) {
      const std::vector<T> source = normalNumbers<T>(random, kernel.sourceSize);
      fesetround(FE_UPWARD);
      const std::vector<T> up = kernel.run(source, 4);
      fesetround(FE_DOWNWARD);
      const std::vector<T> down = kernel.run(source, 4);
      fesetround(FE_TONEAREST);
      differing += !sameBytes(up, down);
    }
    EXPECT_GT(differing, 0);
  });
}

}  // namespace
}  // namespace tests
