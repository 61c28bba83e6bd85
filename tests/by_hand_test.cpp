// Lengths 2 to 5 with the order of their operations written out, bit for bit: the generator and its
// interpreter share the algorithms, so neither can show that the settled order is the one in use.
// This file is compiled without contraction of products and sums.

#include "harness.h"

namespace tests {
namespace {

template <class T>
using Numbers = std::vector<T>;

template <class T>
struct Element {
  T re, im;
};
template <class T>
Element<T> operator+(Element<T> a, Element<T> b) {
  return {a.re + b.re, a.im + b.im};
}
template <class T>
Element<T> operator-(Element<T> a, Element<T> b) {
  return {a.re - b.re, a.im - b.im};
}
template <class T>
using Elements = std::vector<Element<T>>;

constexpr double kSin60 = 0.8660254037844386;
constexpr double kC1 = 0.30901699437494745;  // cos 72, -cos 144, sin 72, sin 144 degrees
constexpr double kC2 = 0.8090169943749475;
constexpr double kS1 = 0.9510565162951535;
constexpr double kS2 = 0.5877852522924731;

template <class T>
Elements<T> forward2(const Elements<T>& x) {
  return {x[0] + x[1], x[0] - x[1]};
}

// In single precision the four products and their differences are taken in double and rounded once;
// with T = double the same text is the double kernel.
template <class T>
Elements<T> forward3(const Elements<T>& x) {
  const Element<T> p = x[1] + x[2], m = x[1] - x[2];
  const T ar = T(double(x[0].re) - double(p.re) * 0.5);
  const T ai = T(double(x[0].im) - double(p.im) * 0.5);
  const T u = T(double(m.im) * kSin60);
  const T v = T(double(m.re) * kSin60);
  return {p + x[0], {ar + u, ai - v}, {ar - u, ai + v}};
}

template <class T>
Elements<T> forward4(const Elements<T>& x) {
  const Element<T> a = x[0] + x[2], b = x[0] - x[2], e = x[1] + x[3], f = x[1] - x[3];
  return {a + e, {b.re + f.im, b.im - f.re}, a - e, {b.re - f.im, b.im + f.re}};
}

template <class T>
Elements<T> forward5(const Elements<T>& x) {
  const Element<T> sumA = x[1] + x[4], difA = x[1] - x[4];
  const Element<T> sumB = x[3] + x[2], difB = x[3] - x[2];
  const Element<double> x0{x[0].re, x[0].im}, sA{sumA.re, sumA.im}, sB{sumB.re, sumB.im};
  const Element<double> dA{difA.re, difA.im}, dB{difB.re, difB.im};
  const T a1 = T((x0.re + sA.re * kC1) - sB.re * kC2), b1 = T((x0.im + sA.im * kC1) - sB.im * kC2);
  const T a2 = T((x0.re - sA.re * kC2) + sB.re * kC1), b2 = T((x0.im - sA.im * kC2) + sB.im * kC1);
  const T u1 = T(dA.im * kS1 - dB.im * kS2), v1 = T(dB.re * kS2 - dA.re * kS1);
  const T u2 = T(dA.im * kS2 + dB.im * kS1), v2 = T(dA.re * kS2 + dB.re * kS1);
  // The one difference between the precisions is the order of the three sums of X[0].
  const Element<T> dc = sizeof(T) == 4 ? (sumA + x[0]) + sumB : x[0] + (sumA + sumB);
  return {dc, {a1 + u1, b1 + v1}, {a2 + u2, b2 - v2}, {a2 - u2, b2 + v2}, {a1 - u1, b1 - v1}};
}

template <class T>
Elements<T> forward(const Elements<T>& x) {
  switch (x.size()) {
    case 2: return forward2(x);
    case 3: return forward3(x);
    case 4: return forward4(x);
    default: return forward5(x);
  }
}

// The inverse is the same program with the parts of input and output exchanged.
template <class T>
Numbers<T> byHand(kernelgen::Direction direction, const Numbers<T>& source, T scale) {
  const int re = direction == kernelgen::Direction::Forward ? 0 : 1;
  Elements<T> x;
  for (std::size_t i = 0; i < source.size(); i += 2) {
    x.push_back({source[i + re], source[i + 1 - re]});
  }
  Numbers<T> result(source.size());
  std::size_t i = 0;
  for (const Element<T>& out : forward(x)) {
    result[i + re] = scale * out.re;
    result[i + 1 - re] = scale * out.im;
    i += 2;
  }
  return result;
}

TEST(ByHand, ShortComplexKernels) {
  std::vector<kernelgen::KernelId> ids;
  for (const auto precision : {kernelgen::Precision::Single, kernelgen::Precision::Double}) {
    for (const auto direction : {kernelgen::Direction::Forward, kernelgen::Direction::Inverse}) {
      for (int length = 2; length <= 5; ++length) {
        ids.push_back({kernelgen::Family::Complex, direction, length, precision});
      }
    }
  }
  Random random = makeRandom();
  forEachKernel(ids, [&]<class T>(const TestKernel<T>& kernel) {
    for (int trial = 0; trial < 1000; ++trial) {
      const Numbers<T> source = normalNumbers<T>(random, kernel.sourceSize);
      for (const int32_t flag : kFlags) {
        const T scale = scaleFactor<T>(kernel.id, flag);
        ASSERT_TRUE(
            sameNumbers(byHand(kernel.id.direction, source, scale), kernel.run(source, flag)));
      }
    }
  });
}

}  // namespace
}  // namespace tests
