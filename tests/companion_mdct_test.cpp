// The companion header: plans of the DCT-IV as objects, windows, and the MDCT against its
// definition and its promise, that a signal comes back from overlapping frames.

#include <cmath>
#include <thread>
#include <utility>

#include "companion.h"

namespace tests {
namespace {

template <class T>
struct CompanionMdct : testing::Test {
  Random random = makeRandom();
  static constexpr T kEpsilon = std::numeric_limits<T>::epsilon();

  static std::vector<std::vector<T>> windows(std::size_t n) {
    return {zvxg::sineWindow<T>(n), zvxg::kbdWindow<T>(n, 4)};
  }
};
TYPED_TEST_SUITE(CompanionMdct, Precisions);

template <class T>
std::vector<T> run(zvxg::Dct4<T>& dct4, const std::vector<T>& source) {
  std::vector<T> result(source.size(), poison<T>());
  dct4(source, result);
  return result;
}

// ---- Dct4 --------------------------------------------------------------------------------------

TYPED_TEST(CompanionMdct, PlansMoveAndClone) {
  using T = TypeParam;
  for (const int32_t n : powersOfTwo(2, 1024)) {
    const std::vector<T> x = normalNumbers<T>(this->random, n);
    zvxg::Dct4<T> first(n);
    zvxg::Dct4<T> clone = first.clone(), moved = std::move(first);
    EXPECT_EQ(moved.length(), std::size_t(n));
    EXPECT_LE(relativeError(dct4Definition(widened(x)), run(moved, x)), kDct4Accuracy<T>) << n;
    first = std::move(clone);
    EXPECT_TRUE(sameNumbers(run(moved, x), run(first, x))) << n;
    std::vector<T> inPlace = x;
    first(inPlace, inPlace);
    EXPECT_TRUE(sameNumbers(run(moved, x), inPlace)) << n;
  }
}

TYPED_TEST(CompanionMdct, LengthsOfNoUseAreRefused) {
  using T = TypeParam;
  const std::size_t kBad[] = {0,
                              1,
                              3,
                              33,
                              65,
                              129,
                              192,
                              1000,
                              1u << 27,
                              1u << 28,
                              (1u << 28) + 1,
                              1u << 29,
                              1u << 30,
                              1u << 31,
                              std::size_t{1} << 32,
                              std::size_t{1} << 40};
  for (const std::size_t length : kBad) {
    EXPECT_EQ(complaint([&] { zvxg::Dct4<T> plan(length); }),
              "zvxg::Dct4: length " + std::to_string(length) + " is no power of two from 2 to 2^" +
                  (sizeof(T) == 4 ? "26" : "25"));
  }
}

// A shared plan would mix the workspaces of the threads.
TYPED_TEST(CompanionMdct, ClonesRunAtOnce) {
  using T = TypeParam;
  constexpr int kLength = 4096, kThreads = 4, kRuns = 200;
  zvxg::Dct4<T> plan(kLength);
  struct Job {
    std::vector<T> source, expected;
    zvxg::Dct4<T> plan;
    bool right = true;
  };
  std::vector<Job> jobs;
  for (int i = 0; i < kThreads; ++i) {
    const std::vector<T> source = normalNumbers<T>(this->random, kLength);
    jobs.push_back({source, run(plan, source), plan.clone()});
  }
  std::vector<std::jthread> threads;
  for (Job& job : jobs) {
    threads.emplace_back([&job] {
      for (int i = 0; i < kRuns; ++i) {
        std::vector<T> result(job.source.size());
        job.plan(job.source, result);
        job.right = job.right && sameNumbers(job.expected, result);
      }
    });
  }
  threads.clear();
  for (const Job& job : jobs) EXPECT_TRUE(job.right);
}

// ---- Windows -----------------------------------------------------------------------------------

TYPED_TEST(CompanionMdct, WindowsArePrincenBradleyAndRise) {
  using T = TypeParam;
  for (const std::size_t n : {2, 3, 8, 100, 1024}) {
    for (const double alpha : {0.0, 2.0, 4.0, 40.0, 1000.0}) {
      const std::vector<T> kbd = zvxg::kbdWindow<T>(n, alpha), sine = zvxg::sineWindow<T>(n);
      for (const std::vector<T>& w : {sine, kbd}) {
        ASSERT_EQ(w.size(), n);
        for (std::size_t i = 0; i < n; ++i) {
          EXPECT_NEAR(w[i] * w[i] + w[n - 1 - i] * w[n - 1 - i], 1, 4 * this->kEpsilon) << n;
          if (i > 0) {
            EXPECT_LE(w[i - 1], w[i]);
          }
        }
      }
    }
  }
}

TYPED_TEST(CompanionMdct, WindowsByTheirFormulas) {
  using T = TypeParam;
  constexpr std::size_t kLength = 16;
  const std::vector<T> sine = zvxg::sineWindow<T>(kLength);
  for (const double alpha : {0.0, 3.0, 6.0}) {
    const std::vector<T> kbd = zvxg::kbdWindow<T>(kLength, alpha);
    std::vector<long double> sums;
    for (std::size_t j = 0; j <= kLength; ++j) {
      const long double x = 2.0L * j / kLength - 1;
      const long double kaiser = std::cyl_bessel_il(
          0, std::numbers::pi_v<long double> * alpha * std::sqrt(std::max(0.0L, 1 - x * x)));
      sums.push_back((sums.empty() ? 0 : sums.back()) + kaiser);
    }
    for (std::size_t n = 0; n < kLength; ++n) {
      EXPECT_NEAR(kbd[n], double(std::sqrt(sums[n] / sums[kLength])), this->kEpsilon);
      EXPECT_NEAR(sine[n], std::sin(std::numbers::pi * (2.0 * double(n) + 1) / (4 * kLength)),
                  this->kEpsilon);
    }
  }
}

TYPED_TEST(CompanionMdct, BadWindowsAreRefused) {
  using T = TypeParam;
  std::vector<T> window = zvxg::sineWindow<T>(8);
  window[2] += T(0.01);
  EXPECT_EQ(complaint([&] { zvxg::Mdct<T> mdct(window); }),
            "zvxg::Mdct: the squares of elements 2 and 5 of the window do not add up to 1");
  window[2] = std::numeric_limits<T>::quiet_NaN();
  EXPECT_EQ(complaint([&] { zvxg::Imdct<T> imdct(window); }),
            "zvxg::Imdct: the squares of elements 2 and 5 of the window do not add up to 1");
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

constexpr std::size_t kBlocks = 5;  // of a signal, between silence before and after

// Frames against the definition, the energy of frames against that of samples, and the samples
// again: at lengths with and without vectors.
TYPED_TEST(CompanionMdct, FramesAndReconstruction) {
  using T = TypeParam;
  for (std::size_t n = 2; n <= 128; n *= 2) {
    for (const std::vector<T>& window : this->windows(n)) {
      SCOPED_TRACE(n);
      zvxg::Mdct<T> analysis(window);
      zvxg::Imdct<T> synthesis(window);
      std::vector<T> signal(n);
      const std::vector<T> sound = normalNumbers<T>(this->random, static_cast<int>(kBlocks * n));
      signal.insert(signal.end(), sound.begin(), sound.end());
      signal.resize(signal.size() + n);

      std::vector<T> again;
      long double energy = 0, expectedEnergy = 0;
      for (const T x : signal) expectedEnergy += static_cast<long double>(x) * x;
      for (std::size_t block = 1; block < kBlocks + 2; ++block) {
        std::vector<T> frame(n, poison<T>()), samples(n, poison<T>());
        analysis(std::span(signal).subspan(block * n, n), frame);
        const auto expected = mdctDefinition(window, &signal[(block - 1) * n]);
        EXPECT_LE(relativeError(expected, frame), 3 * kDct4Accuracy<T>) << block;
        for (const T coefficient : frame)
          energy += static_cast<long double>(coefficient) * coefficient;
        synthesis(frame, samples);
        again.insert(again.end(), samples.begin(), samples.end());
      }
      EXPECT_NEAR(double(energy / expectedEnergy), 1, 8 * this->kEpsilon);
      const std::vector<T> samples(again.begin() + n, again.end());  // a block late
      EXPECT_LE(relativeError(widened(sound), samples), 4 * kDct4Accuracy<T>);
    }
  }
}

// A frame in place of its samples, the way back in place, and again after reset().
TYPED_TEST(CompanionMdct, InPlaceAndFromTheStart) {
  using T = TypeParam;
  constexpr std::size_t kLength = 64;
  zvxg::Mdct<T> analysis(zvxg::sineWindow<T>(kLength));
  zvxg::Imdct<T> synthesis(zvxg::sineWindow<T>(kLength));
  const std::vector<T> signal = normalNumbers<T>(this->random, 2 * kLength);
  const auto through = [&](bool inPlace) {
    std::vector<T> results;
    for (std::size_t block = 0; block < 2; ++block) {
      std::vector<T> x(signal.begin() + block * kLength, signal.begin() + (block + 1) * kLength);
      std::vector<T> other(kLength);
      analysis(x, inPlace ? x : other);
      results.insert(results.end(), inPlace ? x.begin() : other.begin(),
                     inPlace ? x.end() : other.end());
      synthesis(inPlace ? x : other, x);
      results.insert(results.end(), x.begin(), x.end());
    }
    analysis.reset();
    synthesis.reset();
    return results;
  };
  const std::vector<T> first = through(false);
  EXPECT_TRUE(sameNumbers(first, through(true)));
}

// What a call refuses has changed nothing: the next one goes on where the last one was.
TYPED_TEST(CompanionMdct, RefusedBlocksLeaveTheStream) {
  using T = TypeParam;
  const std::vector<T> x = normalNumbers<T>(this->random, 8);
  std::vector<T> expected(8), actual(8), shorter(7);
  const auto expectUndisturbed = [&]<class Object>(Object undisturbed, Object disturbed,
                                                   const std::string& source,
                                                   const std::string& destination) {
    for (int i = 0; i < 2; ++i) {
      EXPECT_EQ(complaint([&] { disturbed(shorter, actual); }),
                "zvxg::" + source + " has 7 elements instead of 8");
      EXPECT_EQ(complaint([&] { disturbed(x, shorter); }),
                "zvxg::" + destination + " has 7 elements instead of 8");
      undisturbed(x, expected);
      disturbed(x, actual);
      EXPECT_TRUE(sameNumbers(expected, actual));
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
