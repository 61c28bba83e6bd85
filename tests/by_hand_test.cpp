// Some short kernels with the order of their operations written out, bit for bit: the generator and
// its interpreter share the algorithms, so neither can show that the settled order is the one in
// use. Numbers have the precision T of the kernel; an expression with a constant is evaluated in
// double and rounded once, and with T = double the same text is the double kernel. This file is
// compiled without contraction of products and sums.

#include <complex>
#include <map>

#include "harness.h"

namespace tests {
namespace {

template <class T>
using Numbers = std::vector<T>;
template <class T>
using Complexes = std::vector<std::complex<T>>;

constexpr double kSin60 = 0.8660254037844386;
constexpr double kTwiceSin60 = 1.7320508075688772;
constexpr double kC1 = 0.30901699437494745;  // cos 72, -cos 144, sin 72, sin 144 degrees
constexpr double kC2 = 0.8090169943749475;
constexpr double kS1 = 0.9510565162951535;
constexpr double kS2 = 0.5877852522924731;
constexpr double kQ = 0.7071067811865476;

// `dft` of the elements, each part multiplied by the factor s in the end.
template <class T, class Dft>
Numbers<T> ofElements(const Numbers<T>& x, T s, const Dft& dft) {
  Complexes<T> elements;
  for (std::size_t i = 0; i < x.size(); i += 2) elements.push_back({x[i], x[i + 1]});
  Numbers<T> result;
  for (const std::complex<T>& y : dft(elements)) {
    result.insert(result.end(), {s * y.real(), s * y.imag()});
  }
  return result;
}

template <class T>
Numbers<T> complex3(const Numbers<T>& numbers, T s) {
  return ofElements(numbers, s, [](const Complexes<T>& x) -> Complexes<T> {
    const std::complex<T> p = x[1] + x[2], m = x[1] - x[2];
    const T ar = T(double(x[0].real()) - double(p.real()) * 0.5);
    const T ai = T(double(x[0].imag()) - double(p.imag()) * 0.5);
    const T u = T(double(m.imag()) * kSin60), v = T(double(m.real()) * kSin60);
    return {p + x[0], {ar + u, ai - v}, {ar - u, ai + v}};
  });
}

template <class T>
Numbers<T> complex5(const Numbers<T>& numbers, T s) {
  return ofElements(numbers, s, [](const Complexes<T>& x) -> Complexes<T> {
    const std::complex<T> sumA = x[1] + x[4], sumB = x[3] + x[2];
    const std::complex<double> dA(x[1] - x[4]), dB(x[3] - x[2]), sA(sumA), sB(sumB), x0(x[0]);
    const auto even = [&](double (*part)(const std::complex<double>&), double c, double d) {
      return T((part(x0) + part(sA) * c) + part(sB) * d);
    };
    const auto re = [](const std::complex<double>& z) { return z.real(); };
    const auto im = [](const std::complex<double>& z) { return z.imag(); };
    const T a1 = even(re, kC1, -kC2), b1 = even(im, kC1, -kC2);
    const T a2 = even(re, -kC2, kC1), b2 = even(im, -kC2, kC1);
    const T u1 = T(dA.imag() * kS1 - dB.imag() * kS2), v1 = T(dB.real() * kS2 - dA.real() * kS1);
    const T u2 = T(dA.imag() * kS2 + dB.imag() * kS1), v2 = T(dA.real() * kS2 + dB.real() * kS1);
    // The one difference between the precisions is the order of the three sums of X[0].
    const std::complex<T> dc = sizeof(T) == 4 ? (sumA + x[0]) + sumB : x[0] + (sumA + sumB);
    return {dc, {a1 + u1, b1 + v1}, {a2 + u2, b2 - v2}, {a2 - u2, b2 + v2}, {a1 - u1, b1 - v1}};
  });
}

// Forward, an output that is a double expression takes the factor in before it is rounded, and some
// parts are 0.0 minus a product.
template <class T>
Numbers<T> toPack5(const Numbers<T>& x, T s) {
  const T u1 = x[1] + x[4], u2 = x[2] + x[3];
  const double v1 = x[1] - x[4], v2 = x[3] - x[2], x0 = x[0], wide = s;
  return {s * ((x[0] + u1) + u2), T(wide * ((u1 * kC1 - u2 * kC2) + x0)),
          T(wide * (v2 * kS2 - v1 * kS1)), T(wide * ((u2 * kC1 - u1 * kC2) + x0)),
          T(0.0 - wide * (v1 * kS2 + v2 * kS1))};
}

// The inverse doubles in T, and multiplies each sample by the factor in T.
template <class T>
Numbers<T> fromPerm3(const Numbers<T>& x, T s) {
  const T e = x[1] * 2, even = T(double(x[0]) - double(e) * 0.5), odd = T(x[2] * kTwiceSin60);
  return {s * (x[0] + e), s * (even - odd), s * (even + odd)};
}

template <class T>
Numbers<T> hartley8(const Numbers<T>& x, T s) {
  T u[4], d[4];
  for (int i = 0; i < 4; ++i) u[i] = x[i] + x[i + 4], d[i] = x[i] - x[i + 4];
  const T e = T(kQ * d[1]), f = T(kQ * d[3]);
  const T re1 = d[0] + (e - f), re2 = u[0] - u[2], re3 = d[0] - (e - f);
  const T im1 = d[2] + (e + f), im2 = u[3] - u[1], im3 = d[2] - (e + f);
  return {s * ((u[0] + u[2]) + (u[1] + u[3])), s * (re1 + im1), s * (re2 - im2), s * (re3 - im3),
          s * ((u[0] + u[2]) - (u[1] + u[3])), s * (re3 + im3), s * (re2 + im2), s * (re1 - im1)};
}

template <class T>
const std::map<std::string, Numbers<T> (*)(const Numbers<T>& x, T s)> kByHand = {
    {"zvxgDFTFwd_CToC_3_", complex3<T>},
    {"zvxgDFTFwd_CToC_5_", complex5<T>},
    {"zvxgDFTFwd_RToPack_5_", toPack5<T>},
    {"zvxgDFTInv_PermToR_3_", fromPerm3<T>},
    {"zvxgHartley_8_", hartley8<T>}};

TEST(ByHand, ShortKernels) {
  Random random = makeRandom();
  std::size_t found = 0;
  forEachKernel([&]<class T>(const TestKernel<T>& kernel) {
    for (const auto& [name, operations] : kByHand<T>) {
      if (!kernel.id.symbol().starts_with(name)) continue;
      ++found;
      for (int trial = 0; trial < 1000; ++trial) {
        const auto source = trial % 2 == 0 ? normalNumbers<T>(random, kernel.sourceSize)
                                           : numbersWithZeros<T>(random, kernel.sourceSize);
        for (const int32_t flag : kFlags) {
          ASSERT_TRUE(sameNumbers(operations(source, scaleFactor<T>(kernel.id, flag)),
                                  kernel.run(source, flag)));
        }
      }
    }
  });
  if (std::getenv("ZVXG_KERNEL") == nullptr) {
    EXPECT_EQ(found, 2 * kByHand<float>.size());
  }
}

}  // namespace
}  // namespace tests
