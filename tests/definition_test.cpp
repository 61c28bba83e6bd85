// Every transform against its definition in long double: is it the right one, in natural order, as
// accurate as the header promises, and multiplied as its flag says?

#include <algorithm>
#include <cstdio>
#include <optional>

#include "harness.h"

namespace tests {
namespace {

using api::Direction;
using api::Family;

template <class T>
constexpr double kRoundoff = std::numeric_limits<T>::epsilon() / 2;

// The L2 norm of the error over that of the result, both pooled over all trials of a length: its
// root mean square over the transforms of a gate, and the worst of them.
struct Accuracy {
  double rms, worst;
};

struct Gate {
  const char* name;
  Family family;
  std::optional<Direction> direction;  // without one, both together
  Accuracy limits[2];                  // single, double
};

constexpr double kAny = std::numeric_limits<double>::infinity();  // no promise

// The sums of a Walsh-Hadamard transform of whole numbers are exact.
constexpr Gate kGates[] = {
    {"complex", Family::Complex, {}, {{9.6e-8, 1.65e-7}, {1.9e-16, 3.8e-16}}},
    {"real forward", Family::Real, Direction::Forward, {{7.9e-8, kAny}, {1.8e-16, kAny}}},
    {"real inverse", Family::Real, Direction::Inverse, {{7.9e-8, kAny}, {1.8e-16, kAny}}},
    {"Hartley", Family::Hartley, {}, {{7.9e-8, kAny}, {1.8e-16, kAny}}},
    {"Walsh-Hadamard", Family::Wht, {}, {{0, 0}, {0, 0}}},
    {"DCT-IV", Family::Dct4, {}, {{kAny, 1.8e-7}, {kAny, 3.5e-16}}},
};
constexpr int kLongestPromised = 1 << 16;

bool belongsTo(const Gate& gate, const Transform& transform) {
  const Function& function = *transform.function;
  return function.family == gate.family && !function.isEntry() && transform.fills &&
         transform.points <= kLongestPromised &&
         (!gate.direction || function.direction == *gate.direction);
}

template <class T>
double errorOf(const Transform& transform, Random& random) {
  const Runner runner(transform);
  const auto count = static_cast<int>(transform.sourceBytes / sizeof(T));
  Error error;
  for (int trial = 0; trial < std::clamp(16'384 / transform.points, 1, 256); ++trial) {
    std::vector<T> source = normalNumbers<T>(random, count);
    if (transform.function->family == Family::Wht) {
      for (T& number : source) number = std::round(8 * number);
    }
    error.add(reference::definition(transform, widened(source)), runner.run(source, kUnscaled));
  }
  return error.relative();
}

TEST(Definition, NormalData) {
  Random random = makeRandom();
  for (const Gate& gate : kGates) {
    struct Figures {
      double squares = 0, worst = 0;
      int transforms = 0;
      std::string worstName;
    } figures[2];
    forEachTransform([&](const Transform& transform) {
      if (!belongsTo(gate, transform)) return;
      const bool isDouble = transform.function->bits == 64;
      const double error =
          withElement(transform, [&]<class T>(T) { return errorOf<T>(transform, random); });
      EXPECT_LE(error, gate.limits[isDouble].worst);
      Figures& f = figures[isDouble];
      f.squares += error * error;
      ++f.transforms;
      if (!(error <= f.worst)) f.worst = error, f.worstName = nameOf(transform);
    });
    for (const int isDouble : {0, 1}) {
      const Figures& f = figures[isDouble];
      if (f.transforms == 0) continue;  // ZVXG_KERNEL leaves none of them
      const double rms = std::sqrt(f.squares / f.transforms);
      std::printf("%s, %s: rms %.3g over %d transforms, worst %.3g at %s\n", gate.name,
                  isDouble ? "double" : "single", rms, f.transforms, f.worst, f.worstName.c_str());
      if (std::getenv("ZVXG_KERNEL") == nullptr) {
        EXPECT_LE(rms, gate.limits[isDouble].rms);
      }
    }
  }
}

// An impulse excites every output by itself, so that a wrong index or constant cannot hide in the
// norm of the rest; and the factor of a flag comes last: all of them, or a part of those of a long plan.
TEST(Definition, EveryImpulse) {
  forEachTransform([&](const Transform& transform) {
    if (transform.function->isEntry() || !transform.fills) return;
    withElement(transform, [&]<class T>(T) {
      const Runner runner(transform);
      // Outputs that are double expressions take the factor in before their one rounding.
      const bool roundsOnce = transform.function->family == Family::Real && sizeof(T) == 4 &&
                              transform.function->direction == Direction::Forward;
      const std::size_t count = transform.sourceBytes / sizeof(T);
      const std::size_t tried = std::clamp<std::size_t>((1 << 17) / count, 1, count);
      for (std::size_t trial = 0; trial < tried; ++trial) {
        const std::size_t i = trial * count / tried + trial % (count / tried);
        std::vector<T> source(count);
        source[i] = 1;
        const auto expected = reference::definition(transform, widened(source));
        // Parts of that size pass through a few products and hardly a sum that rounds.
        long double size = 0;
        for (const long double number : expected) size = std::max(size, std::abs(number));
        const double tolerance = (transform.function->isPlanned() ? 32 : 8) * kRoundoff<T>;
        const std::vector<T> unscaled = runner.run(source, kUnscaled);
        for (std::size_t k = 0; k < expected.size(); ++k) {
          ASSERT_NEAR(unscaled[k], static_cast<double>(expected[k]),
                      tolerance * static_cast<double>(size))
              << "output number " << k << " of impulse " << i;
        }
        for (const int32_t flag : flagsOf(transform)) {
          const auto factor = static_cast<T>(reference::factor(transform, flag));
          const std::vector<T> actual = runner.run(source, flag);
          // Of a root the factor can be the neighbour.
          const int roundings = flag == 4 ? 4 : roundsOnce && factor != 1 ? 3 : 0;
          for (std::size_t k = 0; k < actual.size(); ++k) {
            ASSERT_NEAR(actual[k], unscaled[k] * factor,
                        std::abs(double(actual[k])) * roundings * kRoundoff<T>)
                << "flag " << flag << ", output number " << k << " of impulse " << i;
          }
        }
      }
    });
  });
}

}  // namespace
}  // namespace tests
