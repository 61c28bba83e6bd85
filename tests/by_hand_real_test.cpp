// Real and Hartley kernels of 2, 3, 4, 5 and 8 points with the order of their operations written
// out, bit for bit. Temporaries have the precision T of the kernel; an expression with a constant
// factor is evaluated in double and rounded once, and with T = double the same text is the double
// kernel. This file is compiled without contraction of products and sums.

#include "harness.h"

namespace tests {
namespace {

using kernelgen::Direction;
using kernelgen::Family;
using kernelgen::KernelId;
using kernelgen::Layout;

constexpr double kSin60 = 0.8660254037844386;
constexpr double kTwiceSin60 = 1.7320508075688772;
constexpr double kC1 = 0.30901699437494745;  // cos 72, -cos 144, sin 72, sin 144 degrees
constexpr double kC2 = 0.8090169943749475;
constexpr double kS1 = 0.9510565162951535;
constexpr double kS2 = 0.5877852522924731;
constexpr double kQ = 0.7071067811865476;

// Re and Im of bins 0 .. N/2, as they are stored or read.
template <class T>
struct HalfSpectrum {
  std::vector<T> re, im;
};

// s is the factor of the flag: an output that is a double expression takes it in before it is
// rounded, another one is multiplied in T.
template <class T>
HalfSpectrum<T> forward2(const std::vector<T>& x, T s) {
  return {{s * (x[0] + x[1]), s * (x[0] - x[1])}, {0, 0}};
}

template <class T>
HalfSpectrum<T> forward3(const std::vector<T>& x, T s) {
  const T u = x[1] + x[2], v = x[2] - x[1];
  const T re = T(double(s) * (double(x[0]) - 0.5 * double(u)));
  const T im = T(double(s) * (kSin60 * double(v)));
  return {{s * (x[0] + u), re}, {0, im}};
}

template <class T>
HalfSpectrum<T> forward4(const std::vector<T>& x, T s) {
  const T u0 = x[0] + x[2], u1 = x[1] + x[3];
  return {{s * (u0 + u1), s * (x[0] - x[2]), s * (u0 - u1)}, {0, s * (x[3] - x[1]), 0}};
}

template <class T>
HalfSpectrum<T> forward5(const std::vector<T>& x, T s) {
  const T u1 = x[1] + x[4], u2 = x[2] + x[3];
  const double v1 = x[1] - x[4], v2 = x[3] - x[2], x0 = x[0], wide = s;
  const T re1 = T(wide * ((u1 * kC1 - u2 * kC2) + x0));
  const T re2 = T(wide * ((u2 * kC1 - u1 * kC2) + x0));
  const T im1 = T(wide * (v2 * kS2 - v1 * kS1));
  const T im2 = T(0.0 - wide * (v1 * kS2 + v2 * kS1));
  return {{s * ((x[0] + u1) + u2), re1, re2}, {0, im1, im2}};
}

// What the real and the Hartley transform of 8 points have in common.
template <class T>
struct Eight {
  explicit Eight(const std::vector<T>& x) {
    T u[4], d[4];
    for (int i = 0; i < 4; ++i) {
      u[i] = x[i] + x[i + 4];
      d[i] = x[i] - x[i + 4];
    }
    const T e = T(kQ * d[1]), f = T(kQ * d[3]);
    re[0] = (u[0] + u[2]) + (u[1] + u[3]);
    re[1] = d[0] + (e - f);
    re[2] = u[0] - u[2];
    re[3] = d[0] - (e - f);
    re[4] = (u[0] + u[2]) - (u[1] + u[3]);
    minusIm1 = d[2] + (e + f);
    im2 = u[3] - u[1];
    im3 = d[2] - (e + f);
  }
  T re[5], minusIm1, im2, im3;
};

template <class T>
HalfSpectrum<T> forward8(const std::vector<T>& x, T s) {
  const Eight<T> y(x);
  return {{s * y.re[0], s * y.re[1], s * y.re[2], s * y.re[3], s * y.re[4]},
          {0, 0 - s * y.minusIm1, s * y.im2, s * y.im3, 0}};
}

// The inverse doubles in T and multiplies each sample by the factor in T.
template <class T>
std::vector<T> inverse2(const HalfSpectrum<T>& x) {
  return {x.re[0] + x.re[1], x.re[0] - x.re[1]};
}

template <class T>
std::vector<T> inverse3(const HalfSpectrum<T>& x) {
  const T e = x.re[1] * 2;
  const T even = T(double(x.re[0]) - double(e) * 0.5), odd = T(x.im[1] * kTwiceSin60);
  return {x.re[0] + e, even - odd, even + odd};
}

template <class T>
std::vector<T> inverse4(const HalfSpectrum<T>& x) {
  const T a = x.re[0] + x.re[2], b = x.re[0] - x.re[2], e = 2 * x.re[1], f = 2 * x.im[1];
  return {a + e, b - f, a - e, b + f};
}

template <class T>
std::vector<T> inverse5(const HalfSpectrum<T>& x) {
  const T e1 = 2 * x.re[1], e2 = 2 * x.re[2], f1 = 2 * x.im[1], f2 = 2 * x.im[2];
  const T even1 = T((e1 * kC1 - e2 * kC2) + x.re[0]);
  const T even2 = T((e2 * kC1 - e1 * kC2) + x.re[0]);
  const T odd1 = T(f1 * kS1 + f2 * kS2), odd2 = T(f1 * kS2 - f2 * kS1);
  return {(x.re[0] + e1) + e2, even1 - odd1, even2 - odd2, even2 + odd2, even1 + odd1};
}

template <class T>
std::vector<T> inverse8(const HalfSpectrum<T>& x) {
  const T a = x.re[0] + x.re[4], b = x.re[0] - x.re[4];
  const T e1 = 2 * x.re[1], e2 = 2 * x.re[2], e3 = 2 * x.re[3];
  const T f1 = 2 * x.im[1], f2 = 2 * x.im[2], f3 = 2 * x.im[3];
  const T g = T((e1 - e3) * kQ), h = T((f1 + f3) * kQ);
  return {(a + e2) + (e1 + e3), (b - f2) + (g - h), (a - e2) - (f1 - f3), (b + f2) - (g + h),
          (a + e2) - (e1 + e3), (b - f2) - (g - h), (a - e2) + (f1 - f3), (b + f2) + (g + h)};
}

template <class T>
std::vector<T> hartley(const std::vector<T>& x) {
  switch (x.size()) {
    case 2: return {x[0] + x[1], x[0] - x[1]};
    case 3: {
      const T u = x[1] + x[2], v = x[2] - x[1];
      const T re = T(double(x[0]) - 0.5 * double(u)), im = T(kSin60 * v);
      return {x[0] + u, re - im, re + im};
    }
    case 4: {
      const T u0 = x[0] + x[2], d0 = x[0] - x[2], u1 = x[1] + x[3], d1 = x[1] - x[3];
      return {u0 + u1, d0 + d1, u0 - u1, d0 - d1};
    }
    case 5: {
      const T u1 = x[1] + x[4], u2 = x[2] + x[3], v1 = x[1] - x[4], v2 = x[2] - x[3];
      const T re1 = T((u1 * kC1 - u2 * kC2) + x[0]), re2 = T((u2 * kC1 - u1 * kC2) + x[0]);
      const T g = T(v1 * kS1 + v2 * kS2), h = T(v1 * kS2 - v2 * kS1);
      return {(x[0] + u1) + u2, re1 + g, re2 + h, re2 - h, re1 - g};
    }
    default: {
      const Eight<T> y(x);
      return {y.re[0], y.re[1] + y.minusIm1, y.re[2] - y.im2, y.re[3] - y.im3,
              y.re[4], y.re[3] + y.im3,      y.re[2] + y.im2, y.re[1] - y.minusIm1};
    }
  }
}

template <class T>
HalfSpectrum<T> forward(const std::vector<T>& x, T s) {
  switch (x.size()) {
    case 2: return forward2(x, s);
    case 3: return forward3(x, s);
    case 4: return forward4(x, s);
    case 5: return forward5(x, s);
    default: return forward8(x, s);
  }
}

template <class T>
std::vector<T> inverse(int length, const HalfSpectrum<T>& x) {
  switch (length) {
    case 2: return inverse2(x);
    case 3: return inverse3(x);
    case 4: return inverse4(x);
    case 5: return inverse5(x);
    default: return inverse8(x);
  }
}

template <class T>
std::vector<T> byHand(const TestKernel<T>& kernel, const std::vector<T>& source, T scale) {
  const KernelId& id = kernel.id;
  std::vector<T> result(kernel.destinationSize);
  if (id.family == Family::Real && id.direction == Direction::Forward) {
    const HalfSpectrum<T> spectrum = forward(source, scale);
    for (int k = 0; 2 * k <= id.length; ++k) {
      const BinPlace place = binPlace(id.layout, id.length, k);
      result[place.re] = spectrum.re[k];
      if (place.im != kNowhere) result[place.im] = spectrum.im[k];
    }
    return result;
  }
  if (id.family == Family::Hartley) {
    result = hartley(source);
  } else {
    HalfSpectrum<T> spectrum;
    for (int k = 0; 2 * k <= id.length; ++k) {
      const BinPlace place = binPlace(id.layout, id.length, k);
      spectrum.re.push_back(source[place.re]);
      spectrum.im.push_back(place.im == kNowhere ? T(0) : source[place.im]);
    }
    result = inverse(id.length, spectrum);
  }
  for (T& number : result) number *= scale;
  return result;
}

template <class T>
void expectByHand(const TestKernel<T>& kernel, const std::vector<T>& source) {
  for (const int32_t flag : kFlags) {
    const T scale = scaleFactor<T>(kernel.id, flag);
    ASSERT_TRUE(sameNumbers(byHand(kernel, source, scale), kernel.run(source, flag)));
  }
}

TEST(ByHand, ShortRealKernels) {
  std::vector<KernelId> ids;
  for (const auto precision : {kernelgen::Precision::Single, kernelgen::Precision::Double}) {
    for (const int length : {2, 3, 4, 5, 8}) {
      for (const auto layout : {Layout::Ccs, Layout::Pack, Layout::Perm}) {
        for (const auto direction : {Direction::Forward, Direction::Inverse}) {
          ids.push_back({Family::Real, direction, length, precision, layout});
        }
      }
      ids.push_back({Family::Hartley, Direction::Forward, length, precision});
    }
  }
  Random random = makeRandom();
  forEachKernel(ids, [&]<class T>(const TestKernel<T>& kernel) {
    for (int trial = 0; trial < 1000; ++trial) {
      expectByHand(kernel, normalNumbers<T>(random, kernel.sourceSize));
      // Here the signs of zeros are settled too: some parts are 0.0 minus a product.
      const bool toSpectrum =
          kernel.id.family == Family::Real && kernel.id.direction == Direction::Forward;
      if (toSpectrum) expectByHand(kernel, numbersWithZeros<T>(random, kernel.sourceSize));
    }
  });
}

}  // namespace
}  // namespace tests
