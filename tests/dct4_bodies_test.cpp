// The bodies of a plan's stages by themselves, also those that no accepted length reaches, against
// the formulas in long double; and every way of writing and the wider vectors against the direct one.

#include <numbers>

#include "dct4.h"
#include "dct4/direct.h"
#include "dct4/execute.h"
#include "dct4/root.h"

namespace tests {
namespace {

using namespace zvxg::dct4;

constexpr long double kPi = std::numbers::pi_v<long double>;
constexpr Writing kWritings[] = {Writing::Direct, Writing::Collected, Writing::Streamed};

// An array from a cache line on, which streams and tables want.
template <class T>
std::shared_ptr<T[]> aligned(const std::vector<T>& numbers) {
  const auto array = api::alignedMemory<T[]>(64, numbers.size() * sizeof(T));
  std::copy(numbers.begin(), numbers.end(), array.get());
  return array;
}

template <class T>
struct Dct4Bodies : testing::Test {
  // Runs the kernels of a stage with each way of writing; the results of all have to be `expected`.
  template <class Kernel, class Run>
  void expectAll(const std::vector<long double>& expected, std::initializer_list<Kernel> kernels,
                 const Run& run) {
    std::vector<T> direct;
    for (const Kernel kernel : kernels) {
      for (const Writing writing : kWritings) {
        const auto out = aligned(std::vector<T>(expected.size(), poison<T>()));
        run(kernel, out.get(), writing);
        const std::vector<T> numbers(out.get(), out.get() + expected.size());
        if (direct.empty()) direct = numbers;
        EXPECT_TRUE(sameNumbers(direct, numbers)) << static_cast<int>(writing);
      }
    }
    EXPECT_LE(relativeError(expected, direct), sizeof(T) == 4 ? 4e-7 : 8e-16);
  }

  Random random = makeRandom();
};
TYPED_TEST_SUITE(Dct4Bodies, Precisions);

TYPED_TEST(Dct4Bodies, Leaves) {
  using T = TypeParam;
  for (int state = 1; state <= 6; ++state) {
    for (const int r : {kLanes<Narrow<T>>, 4 * kLanes<Narrow<T>>}) {
      for (const int splits : {1, 2, 8}) {
        const int length = 1 << state, half = length / 2, width = r * splits, n = width * length;
        SCOPED_TRACE(testing::Message() << length << " points, r " << r << ", splits " << splits);
        const auto source = aligned(normalNumbers<T>(this->random, n));
        std::vector<long double> expected(n);
        for (int column = 0; column < width; ++column) {
          const int t = column / r, c = column % r;
          for (int k = 0; k < half; ++k) {
            for (int q = -half; q < half; ++q) {
              const int at =
                  q >= 0 ? 2 * r * (splits * q + t) + c : 2 * r * (splits * -q - t) - 1 - c;
              const long double angle = kPi * q * (2 * k + 1) / length;
              expected[width * 2 * k + column] += source[at] * std::cos(angle);
              expected[width * (2 * k + 1) + column] += source[at] * std::sin(angle);
            }
          }
        }
        const auto narrow = kLeaves<Narrow<T>>[state - 1];
        const auto wide = r % kLanes<Simd<T, 64>> == 0 ? kLeaves<Simd<T, 64>>[state - 1] : narrow;
        this->expectAll(expected, {narrow, wide}, [&](auto kernel, T* out, Writing writing) {
          kernel({source.get(), out, n, r, splits, writing});
        });
      }
    }
  }
}

TYPED_TEST(Dct4Bodies, Splits) {
  using T = TypeParam;
  for (int state = 1; state <= 5; ++state) {
    for (const int width : {kLanes<Narrow<T>>, 4 * kLanes<Narrow<T>>, 32 * kLanes<Narrow<T>>}) {
      for (const int p : {1, 2, 8}) {
        const int q = 1 << state, half = q * p, n = 2 * half * width;
        SCOPED_TRACE(testing::Message() << "radix " << q << ", width " << width << ", p " << p);
        const auto table = aligned(std::vector<T>(p * 2 * (q - 1) * kLanes<Narrow<T>>));
        PhaseSource<T> source = {};
        source.evaluate = evaluatePhase<T>;
        source.length = 2 * half;
        source.radix = q;
        SplitCombine<T> combine = {};
        combine.table = table.get();
        combine.radix = q;
        combine.count = p;
        combine.source = &source;
        fillTwiddles(combine);

        const auto in = aligned(normalNumbers<T>(this->random, n));
        std::vector<long double> expected(n);
        for (int i = 0; i < width * half; ++i) {
          const int col = i % width, k = i / width;
          // The place decides which P[k'] it is made of: k' or the mirrored one, conjugated.
          const bool mirrored = k % (2 * p) >= p;
          const int from = mirrored ? 2 * p - 1 - k % (2 * p) : k % (2 * p);
          for (int t = 0; t < q; ++t) {
            const long double re = in[width * (t + q * 2 * from) + col];
            const long double im = (mirrored ? -1 : 1) * in[width * (t + q * (2 * from + 1)) + col];
            const long double angle = kPi * t * (2 * k + 1) / (2 * half);
            expected[width * 2 * k + col] += re * std::cos(angle) - im * std::sin(angle);
            expected[width * (2 * k + 1) + col] += re * std::sin(angle) + im * std::cos(angle);
          }
        }
        const auto narrow = kSplits<Narrow<T>>[state - 1];
        const auto wide =
            width % kLanes<Simd<T, 64>> == 0 ? kSplits<Simd<T, 64>>[state - 1] : narrow;
        this->expectAll(expected, {narrow, wide}, [&](auto kernel, T* out, Writing writing) {
          kernel({in.get(), table.get(), width, p, outputsIn<T>(out, width, p), writing});
        });
      }
    }
  }
}

TYPED_TEST(Dct4Bodies, Roots) {
  using T = TypeParam;
  for (int state = 1; state <= 6; ++state) {
    for (const int blocks : {1, 2, 4, 16}) {
      const int r = 1 << (state - 1), m = blocks * kLanes<Narrow<T>>, n = 2 * m * r;
      SCOPED_TRACE(testing::Message() << "radix " << r << ", blocks " << blocks);
      const auto table = aligned(std::vector<T>(n));
      RotationSource<T> source = {};
      source.rowLength = source.rowStride = 2 * r;
      source.angleDivisor = 8 * n;
      source.columns = r;
      LaneRowsSource<T> laneRows = {};
      laneRows.source = &source;
      RootCombineLoop<T> loop = {};
      loop.table = table.get();
      loop.radix = r;
      loop.laneRows = blocks;
      loop.source = &laneRows;
      fillRotations(loop);

      const auto in = aligned(normalNumbers<T>(this->random, n));
      std::vector<long double> expected(n);
      for (int i = 0; i < m * r; ++i) {
        const int k = i / r, c = i % r;
        const long double re = in[r * 2 * k + c], im = in[r * (2 * k + 1) + c];
        const long double turn = kPi * (2 * c + 1) * (2 * k + 1) / (4.0L * n);
        for (int l = 0; l < r; ++l) {
          const long double up = turn + kPi * (2 * c + 1) * l / (2 * r);
          const long double down = turn - kPi * (2 * c + 1) * (l + 1) / (2 * r);
          expected[2 * m * l + k] += re * std::cos(up) - im * std::sin(up);
          expected[2 * m * l + 2 * m - 1 - k] += re * std::cos(down) - im * std::sin(down);
        }
      }
      const auto narrow = kRoots<Narrow<T>>[state - 1];
      const auto wide = blocks % 2 == 0 ? kRoots<Simd<T, 64>>[state - 1] : narrow;
      this->expectAll(expected, {narrow, wide}, [&](auto kernel, T* out, Writing writing) {
        kernel({in.get(), out, table.get(), n, 2 * n - 1, 2 * m, blocks, writing});
      });
    }
  }
}

// Also the workspace, unless in tiles: what is where does not depend on how it is written.
TYPED_TEST(Dct4Bodies, SchedulesHaveTheSameBits) {
  using T = TypeParam;
  std::vector<int32_t> lengths = powersOfTwo(2 * kLongestDirect<T>, 1 << 19);
  lengths.push_back((1 << 17) + 1);  // never in tiles
  lengths.push_back(1 << 22);  // with three splits
  for (const int32_t n : lengths) {
    SCOPED_TRACE(n);
    const Plan<T> plan(n);
    const auto source = aligned(normalNumbers<T>(this->random, n));
    std::vector<T> expected, expectedWorkspace;
    const auto expectSame = [&](Schedule schedule) {
      const auto out = aligned(std::vector<T>(n, poison<T>()));
      execute<T>(*plan.spec(), source.get(), out.get(), schedule);
      const auto* const space = static_cast<const T*>(plan.spec()->workspace);
      const std::vector<T> numbers(out.get(), out.get() + n), workspace(space, space + n);
      if (expected.empty()) expected = numbers, expectedWorkspace = workspace;
      ASSERT_TRUE(sameNumbers(expected, numbers));
      ASSERT_TRUE(schedule.tiles || sameNumbers(expectedWorkspace, workspace));
    };
    if (n > 1 << 19) {
      for (const bool tiles : {false, true})
        expectSame({Writing::Collected, Writing::Streamed, tiles});
      continue;
    }
    for (const Writing inner : kWritings) {
      for (const Writing outer : kWritings) {
        for (const bool tiles : {false, true}) expectSame({inner, outer, tiles});
      }
    }
  }
}

// Two columns in the lanes of a vector are the scalar body in another arrangement.
TEST(Dct4DirectBodies, LanesHaveTheBitsOfTheScalarBody) {
  Random random = makeRandom();
  const auto expectSame = [&]<int kLength>(std::integral_constant<int, kLength>) {
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
