// Special values: NaN, infinities, zeros of both signs, subnormal and the largest numbers come out
// as the operations in their order have it. NaN equals any NaN, as its payload depends on the order
// of a sum's operands.

#include <algorithm>
#include <cmath>
#include <limits>

#include "../dct4.h"
#include "functions.h"
#include "reference.h"

namespace tests {
namespace {

template <class T>
const std::vector<T>& specials() {
  using Limits = std::numeric_limits<T>;
  static const std::vector<T> kSpecials = {Limits::infinity(),
                                           -Limits::infinity(),
                                           Limits::quiet_NaN(),
                                           T(0),
                                           T(-0.0),
                                           Limits::denorm_min(),
                                           -Limits::denorm_min(),
                                           Limits::min(),
                                           -Limits::min(),
                                           Limits::min() / 3,
                                           Limits::max(),
                                           -Limits::max()};
  return kSpecials;
}
constexpr std::size_t kFirstFinite = 3;

// Calls body(source) for arrays full of one special value, with an infinity in each place (of a
// long array, in 128 of them), and with special values strewn in: finite ones, or any, of which few
// leave only NaN.
template <class T, class Body>
void forEachSpecialSource(std::size_t count, Random& random, const Body& body) {
  const std::vector<T>& list = specials<T>();
  for (const T value : list) body(std::vector<T>(count, value));
  for (std::size_t i = 0; i < count; i += std::max<std::size_t>(1, count / 128)) {
    std::vector<T> source = normalNumbers<T>(random, static_cast<int>(count));
    source[i] = i % 2 == 0 ? list[0] : list[1];
    body(source);
  }
  for (int trial = 0; trial < 12; ++trial) {
    std::vector<T> source = normalNumbers<T>(random, static_cast<int>(count));
    const std::size_t from = trial % 3 == 0 ? 0 : kFirstFinite, rarity = trial % 3 == 0 ? 16 : 3;
    for (T& number : source) {
      if (random() % rarity == 0) number = list[from + random() % (list.size() - from)];
    }
    body(source);
  }
}

TEST(Values, SpecialOnesAsTheOrderOfOperationsHasIt) {
  Random random = makeRandom();
  std::int64_t calls = 0;
  forEachTransform([&](const Transform& transform) {
    if (transform.function->takes(Role::Selector)) return;  // the kernels again
    const Reference reference = referenceOf(transform);
    if (!reference) return;
    const Runner runner(transform);
    withElement(transform, [&]<class T>(T) {
      forEachSpecialSource<T>(
          transform.sourceBytes / sizeof(T), random, [&](const std::vector<T>& numbers) {
            const std::int32_t flag = kFlags[calls++ % std::size(kFlags)];
            const Bytes source = bytesOf(numbers);
            ASSERT_TRUE(sameNumbers(numbersOf<T>(reference(source, flag)),
                                    numbersOf<T>(runner.run(source, flag))))
                << "flag " << flag << ", source " << testing::PrintToString(numbers);
          });
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
    if (!transform.isPlanned() || !transform.fills) return;
    const Runner runner(transform);
    withElement(transform, [&]<class T>(T) {
      using Limits = std::numeric_limits<T>;
      const auto n = static_cast<std::size_t>(transform.selector);
      const auto run = [&](const std::vector<T>& source) {
        ++calls;
        return numbersOf<T>(runner.run(bytesOf(source), kUnscaled));
      };
      for (const std::size_t place : {std::size_t{0}, n / 2, n - 1, random() % n}) {
        std::vector<T> source = normalNumbers<T>(random, transform.selector);
        source[place] = Limits::quiet_NaN();
        for (const T number : run(source)) ASSERT_TRUE(std::isnan(number)) << place;
        source[place] = -Limits::infinity();
        for (const T number : run(source)) ASSERT_FALSE(std::isfinite(number)) << place;
        std::vector<long double> unit(n);
        unit[place] = 1;
        const std::vector<long double> cosines = fastDct4(unit);
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
      for (const T zero : {T(0), T(-0.0)}) {
        for (const T number : run(std::vector<T>(n, zero))) ASSERT_EQ(number, 0);
      }
    });
  });
  RecordProperty("calls", std::to_string(calls));
}

}  // namespace
}  // namespace tests
