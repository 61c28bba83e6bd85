// Bits: what comes out is what the operations in their order make of the numbers, of ordinary ones
// and of NaN, infinities, zeros of both signs, subnormal and the largest ones. NaN equals any NaN, as
// its payload depends on the order of a sum's operands.

#include <cmath>
#include <limits>

#include "../harness.h"
#include "reference.h"

namespace tests {
namespace {

template <class T>
constexpr T kInfinity = std::numeric_limits<T>::infinity();

// Arrays of ordinary numbers, of these and zeros; full of one special value; with an infinity in each
// place (of a long array, in 128 of them); with special values strewn in: finite ones, or any, of
// which few leave only NaN.
template <class T>
std::vector<std::vector<T>> sourcesOf(int count, Random& random) {
  using Limits = std::numeric_limits<T>;
  const std::vector<T> special = {kInfinity<T>,
                                  -kInfinity<T>,
                                  Limits::quiet_NaN(),
                                  T(0),
                                  T(-0.0),
                                  Limits::min(),
                                  -Limits::min(),
                                  T(1),
                                  Limits::denorm_min(),
                                  Limits::max(),
                                  -Limits::max(),
                                  -Limits::denorm_min(),
                                  Limits::min() / 3};
  constexpr std::size_t kFirstFinite = 3;
  std::vector<std::vector<T>> sources;
  const auto normal = [&]() -> std::vector<T>& {
    return sources.emplace_back(normalNumbers<T>(random, count));
  };
  for (const T value : special) sources.emplace_back(count, value);
  for (int i = 0; i < count; i += std::max(1, count / 128)) {
    normal()[i] = i % 2 == 0 ? special[0] : special[1];
  }
  for (int trial = 0; trial < 12; ++trial) {
    const std::size_t from = trial % 3 == 0 ? 0 : kFirstFinite, rarity = trial % 3 == 0 ? 16 : 3;
    for (T& number : normal()) {
      if (random() % rarity == 0) number = special[from + random() % (special.size() - from)];
    }
    normal();
    sources.push_back(numbersWithZeros<T>(random, count));
  }
  return sources;
}

TEST(Values, AreThoseOfTheOrderOfOperations) {
  Random random = makeRandom();
  std::int64_t calls = 0;
  forEachTransform([&](const Transform& transform) {
    if (transform.function->isEntry()) return;  // the kernels again
    const Reference reference = referenceOf(transform);
    if (!reference) return;
    const Runner runner(transform);
    withElement(transform, [&]<class T>(T) {
      const auto count = static_cast<int>(transform.sourceBytes / sizeof(T));
      for (const std::vector<T>& numbers : sourcesOf<T>(count, random)) {
        const std::int32_t flag = kFlags[calls++ % std::size(kFlags)];
        const Bytes source = bytesOf(numbers);
        ASSERT_TRUE(sameNumbers(numbersOf<T>(reference(source, flag)),
                                numbersOf<T>(runner.run(source, flag))))
            << "flag " << flag << ", source " << testing::PrintToString(numbers);
      }
    });
  });
  RecordProperty("calls", std::to_string(calls));
}

// Every number that a DCT-IV returns depends on every number of the source: no cosine of its
// matrix is zero.
TEST(Values, PlansLetSpecialOnesThrough) {
  Random random = makeRandom();
  std::int64_t calls = 0;
  forEachTransform([&](const Transform& transform) {
    if (!transform.function->isPlanned() || !transform.fills) return;
    const Runner runner(transform);
    withElement(transform, [&]<class T>(T) {
      using Limits = std::numeric_limits<T>;
      const auto n = static_cast<std::size_t>(transform.points);
      const auto run = [&](const std::vector<T>& source) {
        ++calls;
        return numbersOf<T>(runner.run(bytesOf(source), kUnscaled));
      };
      for (const std::size_t place : {std::size_t{0}, n / 2, n - 1, random() % n}) {
        std::vector<T> source = normalNumbers<T>(random, transform.points);
        source[place] = Limits::quiet_NaN();
        for (const T number : run(source)) ASSERT_TRUE(std::isnan(number)) << place;
        source[place] = -kInfinity<T>;
        for (const T number : run(source)) ASSERT_FALSE(std::isfinite(number)) << place;
        std::vector<long double> unit(n);
        unit[place] = 1;
        const std::vector<long double> cosines = reference::fastDct4(unit);
        for (const T value : {Limits::max() / 2, Limits::min(), Limits::denorm_min() * 1000}) {
          std::vector<T> impulse(n);
          impulse[place] = value;
          const std::vector<T> actual = run(impulse);
          const long double bound = 16.L * Limits::epsilon() * value + 64.L * Limits::denorm_min();
          for (std::size_t k = 0; k < n; ++k) {
            ASSERT_LE(std::abs(actual[k] - value * cosines[k]), bound)
                << "of " << value << " in " << place << ", output " << k;
          }
        }
      }
    });
  });
  RecordProperty("calls", std::to_string(calls));
}

}  // namespace
}  // namespace tests
