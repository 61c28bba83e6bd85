// The companion header: plans of the DCT-IV as objects, windows, and the MDCT against its
// definition and its promise, that a signal comes back from overlapping frames.

#include <algorithm>
#include <numbers>
#include <thread>
#include <utility>

#include "companion.h"

namespace tests {
namespace {

template <class T>
struct CompanionMdct : testing::Test {
  Random random = makeRandom();
  static constexpr T kEpsilon = std::numeric_limits<T>::epsilon();
};
TYPED_TEST_SUITE(CompanionMdct, Precisions);

template <class Object, class T>
std::vector<T> run(Object& object, const std::vector<T>& source) {
  std::vector<T> result(source.size(), poison<T>());
  object(source, result);
  return result;
}

// ---- Dct4 --------------------------------------------------------------------------------------

TYPED_TEST(CompanionMdct, PlansMoveAndClone) {
  using T = TypeParam;
  for (const int32_t n : powersOfTwo(2, 1024)) {
    const std::vector<T> x = normalNumbers<T>(this->random, n), expected = Plan<T>(n).run(x);
    zvxg::Dct4<T> first(n);
    zvxg::Dct4<T> clone = first.clone(), moved = std::move(first);
    EXPECT_EQ(moved.length(), std::size_t(n));
    EXPECT_TRUE(sameNumbers(expected, run(moved, x))) << n;
    first = std::move(clone);
    EXPECT_TRUE(sameNumbers(expected, run(first, x))) << n;
    std::vector<T> inPlace = x;
    first(inPlace, inPlace);
    EXPECT_TRUE(sameNumbers(expected, inPlace)) << n;
  }
}

TYPED_TEST(CompanionMdct, LengthsOfNoUseAreRefused) {
  using T = TypeParam;
  const std::string last = sizeof(T) == 4 ? "26" : "25";
  std::vector<std::size_t> bad = {0, 1, 3, 33, 65, 129, 192, 1000, (1u << 28) + 1};
  for (const int k : {27, 28, 29, 30, 31, 32, 40}) bad.push_back(std::size_t{1} << k);
  for (const std::size_t length : bad) {
    EXPECT_EQ(
        complaint([&] { zvxg::Dct4<T> plan(length); }),
        "zvxg::Dct4: length " + std::to_string(length) + " is no power of two from 2 to 2^" + last);
  }
}

// A shared plan would mix the workspaces of the threads.
TYPED_TEST(CompanionMdct, ClonesRunAtOnce) {
  using T = TypeParam;
  zvxg::Dct4<T> plan(4096), clone = plan.clone();
  const auto rightFor = [&](zvxg::Dct4<T>& own, const std::vector<T>& source) {
    return [&, source, expected = run(own, source)] {
      for (int i = 0; i < 400; ++i) EXPECT_TRUE(sameNumbers(expected, run(own, source)));
    };
  };
  const auto here = rightFor(plan, normalNumbers<T>(this->random, 4096));
  const std::jthread thread(rightFor(clone, normalNumbers<T>(this->random, 4096)));
  here();
}

// ---- Windows -----------------------------------------------------------------------------------

TYPED_TEST(CompanionMdct, WindowsByTheirFormulas) {
  using T = TypeParam;
  for (const std::size_t length : {2, 3, 16, 100, 1024}) {
    const std::vector<T> sine = zvxg::sineWindow<T>(length);
    for (const double alpha : {0.0, 3.0, 40.0, 1000.0}) {
      SCOPED_TRACE(testing::Message() << length << ", alpha " << alpha);
      const std::vector<T> kbd = zvxg::kbdWindow<T>(length, alpha);
      std::vector<long double> sums;
      for (std::size_t j = 0; j <= length; ++j) {
        const long double x = 2.0L * j / length - 1;
        const long double kaiser = std::cyl_bessel_il(
            0, std::numbers::pi_v<long double> * alpha * std::sqrt(std::max(0.0L, 1 - x * x)));
        sums.push_back((sums.empty() ? 0 : sums.back()) + kaiser);
      }
      ASSERT_EQ(kbd.size(), length);
      ASSERT_EQ(sine.size(), length);
      for (std::size_t n = 0; n < length; ++n) {
        EXPECT_NEAR(kbd[n], double(std::sqrt(sums[n] / sums[length])), this->kEpsilon);
        EXPECT_NEAR(sine[n],
                    std::sin(std::numbers::pi * (2.0 * double(n) + 1) / (4.0 * double(length))),
                    this->kEpsilon);
      }
    }
  }
}

TYPED_TEST(CompanionMdct, BadWindowsAreRefused) {
  using T = TypeParam;
  const std::string text = ": the squares of elements 2 and 5 of the window do not add up to 1";
  std::vector<T> window = zvxg::sineWindow<T>(8);
  window[2] += T(0.01);
  EXPECT_EQ(complaint([&] { zvxg::Mdct<T> mdct(window); }), "zvxg::Mdct" + text);
  window[2] = std::numeric_limits<T>::quiet_NaN();
  EXPECT_EQ(complaint([&] { zvxg::Imdct<T> imdct(window); }), "zvxg::Imdct" + text);
  EXPECT_EQ(complaint([] { zvxg::Mdct<T> mdct(zvxg::sineWindow<T>(12)); }).substr(0, 21),
            "zvxg::Dct4: length 12");
}

// ---- MDCT --------------------------------------------------------------------------------------

// X[k] = sqrt(2/N) sum of w[n] x[n] cos(pi/N (n + 1/2 + N/2) (k + 1/2)) over the 2N samples `x`.
template <class T>
std::vector<long double> mdctDefinition(const std::vector<T>& rising, const T* x) {
  const std::size_t n = rising.size();
  std::vector<long double> result(n);
  for (std::size_t k = 0; k < n; ++k) {
    for (std::size_t i = 0; i < 2 * n; ++i) {
      const long double w = rising[i < n ? i : 2 * n - 1 - i];
      const auto quarters = static_cast<long double>((2 * i + 1 + n) * (2 * k + 1) % (8 * n));
      const long double angle = std::numbers::pi_v<long double> * quarters;
      result[k] += w * x[i] * std::cos(angle / (4 * static_cast<long double>(n)));
    }
    result[k] *= std::sqrt(2 / static_cast<long double>(n));
  }
  return result;
}

// Frames against the definition and the samples again, of a signal of five blocks between silence
// before and after: at lengths with and without vectors, and after reset() in place.
TYPED_TEST(CompanionMdct, FramesAndReconstruction) {
  using T = TypeParam;
  for (std::size_t n = 2; n <= 128; n *= 2) {
    for (const auto& window : {zvxg::sineWindow<T>(n), zvxg::kbdWindow<T>(n, 4)}) {
      SCOPED_TRACE(n);
      zvxg::Mdct<T> analysis(window);
      zvxg::Imdct<T> synthesis(window);
      const std::vector<T> sound = normalNumbers<T>(this->random, static_cast<int>(5 * n));
      std::vector<T> signal(n);
      signal.insert(signal.end(), sound.begin(), sound.end());
      signal.resize(signal.size() + n);
      for (const bool inPlace : {false, true}) {
        const auto pass = [&](auto& object, std::vector<T>& block) {
          if (!inPlace) return void(block = run(object, block));
          object(block, block);
        };
        std::vector<T> again;
        // At first not to the end, so that there is something to reset.
        for (std::size_t block = 1; block < (inPlace ? 7u : 6u); ++block) {
          const T* const samples = &signal[block * n];
          std::vector<T> x(samples, samples + n);
          pass(analysis, x);
          EXPECT_LE(relativeError(mdctDefinition(window, samples - n), x), 3 * kDct4Accuracy<T>)
              << block;
          pass(synthesis, x);
          if (block > 1) again.insert(again.end(), x.begin(), x.end());  // a block late
        }
        const std::vector<T> expected(sound.begin(), sound.begin() + std::ssize(again));
        EXPECT_LE(relativeError(widened(expected), again), 4 * kDct4Accuracy<T>);
        analysis.reset();
        synthesis.reset();
      }
    }
  }
}

// What a call refuses has changed nothing: the next one goes on where the last one was.
TYPED_TEST(CompanionMdct, RefusedBlocksLeaveTheStream) {
  using T = TypeParam;
  const std::vector<T> x = normalNumbers<T>(this->random, 8);
  std::vector<T> actual(8), shorter(7);
  const auto expectUndisturbed = [&]<class Object>(Object undisturbed, Object disturbed,
                                                   const std::string& source,
                                                   const std::string& destination) {
    for (int i = 0; i < 2; ++i) {
      EXPECT_EQ(complaint([&] { disturbed(shorter, actual); }),
                "zvxg::" + source + " has 7 elements instead of 8");
      EXPECT_EQ(complaint([&] { disturbed(x, shorter); }),
                "zvxg::" + destination + " has 7 elements instead of 8");
      EXPECT_TRUE(sameNumbers(run(undisturbed, x), run(disturbed, x)));
    }
  };
  const std::vector<T> window = zvxg::sineWindow<T>(8);
  expectUndisturbed(zvxg::Mdct<T>(window), zvxg::Mdct<T>(window), "Mdct: the block of samples",
                    "Mdct: the array of coefficients");
  expectUndisturbed(zvxg::Imdct<T>(window), zvxg::Imdct<T>(window),
                    "Imdct: the array of coefficients", "Imdct: the block of samples");
}

}  // namespace
}  // namespace tests
