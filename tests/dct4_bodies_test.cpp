// The bodies of a plan's stages by themselves, also those that no accepted length reaches, against
// the formulas in long double; and every way of writing against the direct one.

#include <numbers>

#include "dct4.h"
#include "dct4/direct.h"
#include "dct4/execute.h"
#include "dct4/root.h"

namespace tests {
namespace {

using namespace zvxg::dct4;

constexpr long double kPi = std::numbers::pi_v<long double>;
constexpr double kTolerance[] = {4e-7, 8e-16};

constexpr Writing kWritings[] = {Writing::Direct, Writing::Collected, Writing::Streamed};

template <class T>
class AlignedArray {
 public:
  explicit AlignedArray(std::size_t count)
      : memory_(static_cast<T*>(std::aligned_alloc(64, (count * sizeof(T) + 63) / 64 * 64))),
        count_(count) {
    std::fill_n(memory_, count, poison<T>());
  }
  explicit AlignedArray(const std::vector<T>& numbers) : AlignedArray(numbers.size()) {
    std::copy(numbers.begin(), numbers.end(), memory_);
  }
  ~AlignedArray() { std::free(memory_); }
  AlignedArray(const AlignedArray&) = delete;
  AlignedArray& operator=(const AlignedArray&) = delete;
  T* data() { return memory_; }
  std::vector<T> numbers() const { return {memory_, memory_ + count_}; }

 private:
  T* memory_;
  std::size_t count_;
};

template <class T>
class Dct4Bodies : public testing::Test {
 protected:
  static constexpr int kLanes = 32 / sizeof(T);

  // Runs the stage with each way of writing; the results of all have to be `expected`.
  template <class Run>
  void expectAll(const std::vector<long double>& expected, const Run& run) {
    std::vector<T> direct;
    for (const Writing writing : kWritings) {
      AlignedArray<T> out(expected.size());
      run(out.data(), writing);
      if (writing == Writing::Direct) {
        direct = out.numbers();
        EXPECT_LE(relativeError(expected, direct), kTolerance[sizeof(T) == 8]);
      }
      EXPECT_TRUE(sameNumbers(direct, out.numbers())) << static_cast<int>(writing);
    }
  }

  Random random = makeRandom();
};
TYPED_TEST_SUITE(Dct4Bodies, Precisions);

TYPED_TEST(Dct4Bodies, Leaves) {
  using T = TypeParam;
  for (int state = 1; state <= 6; ++state) {
    for (const int r : {this->kLanes, 4 * this->kLanes}) {
      for (const int splits : {1, 2, 8}) {
        const int length = 1 << state, half = length / 2, n = r * length * splits;
        SCOPED_TRACE(testing::Message() << length << " points, r " << r << ", splits " << splits);
        AlignedArray<T> source(normalNumbers<T>(this->random, n));
        const int width = r * splits;
        std::vector<long double> expected(n);
        for (int t = 0; t < splits; ++t) {
          for (int c = 0; c < r; ++c) {
            for (int k = 0; k < half; ++k) {
              for (int q = -half; q < half; ++q) {
                const int at =
                    q >= 0 ? 2 * r * (splits * q + t) + c : 2 * r * (splits * -q - t) - 1 - c;
                const long double angle = kPi * q * (2 * k + 1) / length;
                expected[width * 2 * k + r * t + c] += source.data()[at] * std::cos(angle);
                expected[width * (2 * k + 1) + r * t + c] += source.data()[at] * std::sin(angle);
              }
            }
          }
        }
        this->expectAll(expected, [&](T* out, Writing writing) {
          kLeaves<T>[state - 1]({source.data(), out, n, r, splits, writing});
        });
      }
    }
  }
}

TYPED_TEST(Dct4Bodies, Splits) {
  using T = TypeParam;
  for (int state = 1; state <= 5; ++state) {
    for (const int width : {this->kLanes, 4 * this->kLanes, 32 * this->kLanes}) {
      for (const int p : {1, 2, 8}) {
        const int q = 1 << state, half = q * p;
        SCOPED_TRACE(testing::Message() << "radix " << q << ", width " << width << ", p " << p);
        AlignedArray<T> table(static_cast<std::size_t>(p * 2 * (q - 1) * this->kLanes));
        SplitCombine<T> combine = {};
        PhaseSource<T> source = {};
        source.length = 2 * half;
        source.radix = q;
        source.evaluate = [](const PhaseSource<T>* s, int32_t i, int32_t, int32_t) {
          return (static_cast<T>(i) + T(0.5)) / static_cast<T>(s->length / s->radix);
        };
        combine.table = table.data();
        combine.radix = q;
        combine.count = p;
        combine.source = &source;
        fillTwiddles(combine);

        AlignedArray<T> in(normalNumbers<T>(this->random, 2 * half * width));
        std::vector<long double> expected(2 * half * width);
        for (int col = 0; col < width; ++col) {
          for (int k = 0; k < half; ++k) {
            // The place decides which P[k'] it is made of: k' or the mirrored one, conjugated.
            const int from = k % (2 * p) < p ? k % (2 * p) : 2 * p - 1 - k % (2 * p);
            const bool mirrored = k % (2 * p) >= p;
            for (int t = 0; t < q; ++t) {
              const long double re = in.data()[width * (t + q * 2 * from) + col];
              const long double im =
                  (mirrored ? -1 : 1) * in.data()[width * (t + q * (2 * from + 1)) + col];
              const long double angle = kPi * t * (2 * k + 1) / (2 * half);
              const long double cos = std::cos(angle), sin = std::sin(angle);
              expected[width * 2 * k + col] += re * cos - im * sin;
              expected[width * (2 * k + 1) + col] += re * sin + im * cos;
            }
          }
        }
        this->expectAll(expected, [&](T* out, Writing writing) {
          kSplits<T>[state - 1]({in.data(), out, table.data(), width, p, writing});
        });
      }
    }
  }
}

TYPED_TEST(Dct4Bodies, Roots) {
  using T = TypeParam;
  for (int state = 1; state <= 6; ++state) {
    for (const int blocks : {1, 2, 4, 16}) {
      const int r = 1 << (state - 1), m = blocks * this->kLanes, n = 2 * m * r;
      SCOPED_TRACE(testing::Message() << "radix " << r << ", blocks " << blocks);
      AlignedArray<T> table(static_cast<std::size_t>(n));
      RotationSource<T> source = {};
      source.rowLength = source.rowStride = 2 * r;
      source.angleDivisor = 8 * n;
      source.columns = r;
      LaneRowsSource<T> laneRows = {};
      laneRows.source = &source;
      RootCombineLoop<T> loop = {};
      loop.table = table.data();
      loop.radix = r;
      loop.laneRows = blocks;
      loop.source = &laneRows;
      fillRotations(loop);

      AlignedArray<T> in(normalNumbers<T>(this->random, n));
      std::vector<long double> expected(n);
      for (int k = 0; k < m; ++k) {
        for (int c = 0; c < r; ++c) {
          const long double re = in.data()[r * 2 * k + c], im = in.data()[r * (2 * k + 1) + c];
          const long double turn = kPi * (2 * c + 1) * (2 * k + 1) / (4.0L * n);
          for (int l = 0; l < r; ++l) {
            const long double up = turn + kPi * (2 * c + 1) * l / (2 * r);
            const long double down = turn - kPi * (2 * c + 1) * (l + 1) / (2 * r);
            expected[2 * m * l + k] += re * std::cos(up) - im * std::sin(up);
            expected[2 * m * l + 2 * m - 1 - k] += re * std::cos(down) - im * std::sin(down);
          }
        }
      }
      this->expectAll(expected, [&](T* out, Writing writing) {
        kRoots<T>[state - 1]({in.data(), out, table.data(), n, 2 * n - 1, 2 * m, blocks, writing});
      });
    }
  }
}

// Also the workspaces: what stands where does not depend on the schedule.
TYPED_TEST(Dct4Bodies, SchedulesHaveTheSameBits) {
  using T = TypeParam;
  for (const int32_t n : powersOfTwo(2 * kLongestDirect<T>, 1 << 20)) {
    SCOPED_TRACE(n);
    const Plan<T> plan(n);
    AlignedArray<T> source(normalNumbers<T>(this->random, n));
    std::vector<T> expected, expectedWorkspace;
    for (const Writing inner : kWritings) {
      for (const Writing outer : kWritings) {
        AlignedArray<T> out(n);
        execute<T>(*plan.spec(), source.data(), out.data(), {inner, outer});
        const auto* const workspace = static_cast<const T*>(plan.spec()->workspace);
        if (expected.empty()) {
          expected = out.numbers();
          expectedWorkspace.assign(workspace, workspace + n);
        }
        ASSERT_TRUE(sameNumbers(expected, out.numbers()));
        ASSERT_TRUE(sameNumbers(expectedWorkspace, std::vector<T>(workspace, workspace + n)));
      }
    }
  }
}

// Two columns in the lanes of a vector are the scalar body in another arrangement.
TEST(Dct4DirectBodies, LanesHaveTheBitsOfTheScalarBody) {
  Random random = makeRandom();
  const auto expectSame = [&](auto length) {
    constexpr int kLength = length;
    for (int trial = 0; trial < 200; ++trial) {
      std::vector<float> data = numbersWithZeros<float>(random, kLength);
      std::vector<float> scalar(kLength), lanes(kLength);
      directDct4OfNumbers<float, kLength>(data.data(), scalar.data());
      directDct4OfPairs<kLength>(data.data(), lanes.data());
      ASSERT_TRUE(sameNumbers(scalar, lanes)) << kLength;
      directDct4OfPairs<kLength>(data.data(), data.data());
      ASSERT_TRUE(sameNumbers(scalar, data)) << kLength << " in place";
    }
  };
  expectSame(std::integral_constant<int, 32>());
  expectSame(std::integral_constant<int, 64>());
}

}  // namespace
}  // namespace tests
