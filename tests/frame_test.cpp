// The factors of the flags. What else holds for every call is in reliability/.

#include <cmath>
#include <limits>

#include "harness.h"

namespace tests {
namespace {

// Witnesses for scaleFactor(), which the generator prints and the other tests lean on.
TEST(Frame, WellKnownFactors) {
  using kernelgen::Direction, kernelgen::Family, kernelgen::Layout, kernelgen::Precision;
  const auto forward = [](int length, Precision precision, int flag) {
    const kernelgen::KernelId id{Family::Complex, Direction::Forward, length, precision};
    return scaleFactor(id, flag);
  };
  EXPECT_EQ(forward(2, Precision::Single, 1), 0.5f);
  EXPECT_EQ(forward(2, Precision::Single, 4), 0.70710677f);
  EXPECT_EQ(forward(3, Precision::Single, 1), 0.33333334f);
  EXPECT_EQ(forward(3, Precision::Single, 4), 0.57735026f);
  EXPECT_EQ(forward(10, Precision::Single, 1), 0.1f);
  EXPECT_EQ(forward(10, Precision::Single, 4), 0.31622776f);
  EXPECT_EQ(forward(12, Precision::Single, 4), 0.28867513f);
  EXPECT_EQ(forward(3, Precision::Double, 1), 0.3333333333333333);
  EXPECT_EQ(forward(2, Precision::Double, 4), 0.7071067811865475);  // the nearest ends in 6
  EXPECT_EQ(forward(3, Precision::Double, 4), 0.5773502691896258);
  // The direction decides between flags 1 and 2, and without one both divide.
  const kernelgen::KernelId inverse{Family::Real, Direction::Inverse, 5, Precision::Double,
                                    Layout::Pack};
  const kernelgen::KernelId hartley{Family::Hartley, Direction::Forward, 5, Precision::Double};
  const double expected[][3] = {{1, 0.2, 0.2}, {0.2, 1, 0.2}};  // complex, real inverse, Hartley
  for (const int32_t flag : {1, 2}) {
    EXPECT_EQ(forward(5, Precision::Double, flag), expected[2 - flag][0]);
    EXPECT_EQ(scaleFactor(inverse, flag), expected[2 - flag][1]);
    EXPECT_EQ(scaleFactor(hartley, flag), expected[2 - flag][2]);
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

}  // namespace
}  // namespace tests
