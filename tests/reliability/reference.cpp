#include "reference.h"

#include <cmath>
#include <map>
#include <span>

#include "../real.h"
#include "interpret.h"  // kernelgen
#include "kernels.h"    // kernelgen

namespace tests {
namespace {

// Made once, in the rounding mode to nearest.
template <class T>
using Factors = std::map<std::int32_t, T>;

template <class T>
Reference ofKernel(const kernelgen::KernelId& id) {
  Factors<T> factors;
  for (const std::int32_t flag : kFlags) factors[flag] = scaleFactor<T>(id, flag);
  return [factors, graph = kernelgen::makeKernel(id).graph](const Bytes& source,
                                                            std::int32_t flag) {
    const std::vector<T> numbers = numbersOf<T>(source);
    return bytesOf(kernelgen::interpret<T>(graph, std::span<const T>(numbers), factors.at(flag)));
  };
}

template <class T>
Reference ofWht(std::size_t n) {
  const T byN = T(1) / static_cast<T>(n);
  const T bySqrtN = static_cast<T>(1 / std::sqrt(static_cast<long double>(n)));
  const Factors<T> factors = {{1, byN}, {2, byN}, {4, bySqrtN}, {8, T(1)}};
  return [factors, n](const Bytes& source, std::int32_t flag) {
    std::vector<T> x = numbersOf<T>(source);
    for (std::size_t h = 1; h < n; h *= 2) {
      for (std::size_t i = 0; i < n; ++i) {
        if ((i & h) != 0) continue;
        const T a = x[i], b = x[i + h];
        x[i] = a + b;
        x[i + h] = a - b;
      }
    }
    for (T& number : x) number *= factors.at(flag);
    return bytesOf(x);
  };
}

// ---- DCT-IV ------------------------------------------------------------------------------------

// One split by 2 or none, on paper. The four points are rotated by lifting.
template <class T>
struct ByHand {
  const T cos8 = cosOf<T>(1, 8), sin8 = sinOf<T>(1, 8), h = cosOf<T>(1, 4);
  const T t1 = tanOf<T>(7, 32), s1 = sinOf<T>(7, 16);
  const T t2 = tanOf<T>(5, 32), s2 = sinOf<T>(5, 16);
  const T cos32[4] = {cosOf<T>(1, 32), cosOf<T>(3, 32), cosOf<T>(3, 32), cosOf<T>(9, 32)};
  const T sin32[4] = {sinOf<T>(1, 32), sinOf<T>(3, 32), sinOf<T>(3, 32), sinOf<T>(9, 32)};

  std::vector<T> run(const std::vector<T>& x) const {
    if (x.size() == 2) return {cos8 * x[0] + sin8 * x[1], sin8 * x[0] - cos8 * x[1]};
    return x.size() == 4 ? four(x) : eight(x);
  }

  std::vector<T> four(const std::vector<T>& x) const {
    const T a = x[0] - t1 * x[3];
    const T b = a * s1 + x[3];
    const T a2 = a - b * t1;
    const T c = x[1] - t2 * x[2];
    const T d = c * s2 + x[2];
    const T c2 = c - d * t2;
    const T e = (a2 + c2) * h;
    const T f = (b - d) * h;
    return {b + d, f + e, f - e, a2 - c2};
  }

  std::vector<T> eight(const std::vector<T>& x) const {
    T re[2][2], im[2][2];  // [column][k]
    for (const int column : {0, 1}) {
      const T a = x[column], b = x[4 + column], u = x[3 - column], v = x[7 - column];
      const T sum = h * (b + u), difference = h * (b - u);
      re[column][0] = a + sum, im[column][0] = difference - v;
      re[column][1] = a - sum, im[column][1] = difference + v;
    }
    std::vector<T> result(8);
    for (const int k : {0, 1}) {
      T p[2], q[2];
      for (const int column : {0, 1}) {
        const T cos = cos32[column + 2 * k], sin = sin32[column + 2 * k];
        p[column] = re[column][k] * cos - im[column][k] * sin;
        q[column] = re[column][k] * sin + im[column][k] * cos;
      }
      const T first = (p[0] - p[1]) * h, second = (q[0] + q[1]) * h;
      result[k] = p[0] + p[1];
      result[4 + k] = first - second;
      result[3 - k] = first + second;
      result[7 - k] = q[0] - q[1];
    }
    return result;
  }
};

}  // namespace

Reference referenceOf(const Transform& transform) {
  return withElement(transform, [&]<class T>(T) -> Reference {
    if (transform.function->takes(Role::Buffer)) {
      return ofWht<T>(transform.sourceBytes / sizeof(T));
    }
    if (!transform.function->isPlanned()) return ofKernel<T>(api::kernelIdOf(*transform.kernel));
    if (transform.points > 8) return {};
    return [byHand = ByHand<T>()](const Bytes& source, std::int32_t) {
      return bytesOf(byHand.run(numbersOf<T>(source)));
    };
  });
}

}  // namespace tests
