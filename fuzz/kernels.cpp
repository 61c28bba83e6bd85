// Kernels of the families ZVXG_FUZZED and their entries: bits at any places, refusals, and the
// definition in long double.

#include <complex>
#include <numbers>

#include "fuzz.h"

namespace fuzz {
namespace {

using tests::Family;
using tests::Kind;
using Complex = std::complex<long double>;

constexpr Kind kFuzzed[] = {ZVXG_FUZZED};

// What a number of a half spectrum is, in the order in which its layout has them.
struct Part {
  int bin;
  bool imaginary;
};

std::vector<Part> partsOf(Kind kind, int n) {
  std::vector<Part> parts;
  const bool ccs = kind == Kind::ToCcs || kind == Kind::FromCcs;
  const bool perm = kind == Kind::ToPerm || kind == Kind::FromPerm;
  for (int k = 0; 2 * k <= n; ++k) {
    const bool middle = 2 * k == n;
    parts.insert(middle && perm ? parts.begin() + 1 : parts.end(), Part{k, false});
    if (ccs || (k != 0 && !middle)) parts.push_back({k, true});
  }
  return parts;
}

std::vector<Complex> dft(const std::vector<Complex>& x, int sign) {
  const std::size_t n = x.size();
  std::vector<Complex> roots, result(n);
  for (std::size_t m = 0; m < n; ++m) {
    const long double turn = static_cast<long double>(m) / static_cast<long double>(n);
    roots.push_back(std::polar(1.0L, sign * 2 * std::numbers::pi_v<long double> * turn));
  }
  for (std::size_t k = 0; k < n; ++k) {
    for (std::size_t i = 0; i < n; ++i) result[k] += x[i] * roots[i * k % n];
  }
  return result;
}

template <class T>
std::vector<long double> definition(Kind kind, int n, std::span<const T> source) {
  std::vector<Complex> x(n);
  std::vector<long double> result;
  switch (kind) {
    case Kind::Complex:
    case Kind::ComplexInverse:
      for (int i = 0; i < n; ++i) x[i] = {source[2 * i], source[2 * i + 1]};
      for (const Complex y : dft(x, kind == Kind::Complex ? -1 : 1)) {
        result.insert(result.end(), {y.real(), y.imag()});
      }
      break;
    case Kind::ToCcs:
    case Kind::ToPack:
    case Kind::ToPerm:
      std::copy(source.begin(), source.end(), x.begin());
      x = dft(x, -1);
      for (const auto [bin, imaginary] : partsOf(kind, n)) {
        const bool ownMirror = bin == 0 || 2 * bin == n;
        result.push_back(!imaginary ? x[bin].real() : ownMirror ? 0 : x[bin].imag());
      }
      break;
    case Kind::FromCcs:
    case Kind::FromPack:
    case Kind::FromPerm: {
      std::size_t i = 0;
      for (const auto [bin, imaginary] : partsOf(kind, n)) {
        const long double number = source[i++];
        if (!imaginary) {
          x[bin].real(number);
        } else if (bin != 0 && 2 * bin != n) {
          x[bin].imag(number);
        }
        x[(n - bin) % n] = 2 * bin == n || bin == 0 ? x[bin] : std::conj(x[bin]);
      }
      for (const Complex y : dft(x, 1)) result.push_back(y.real());
      break;
    }
    case Kind::Hartley:
      std::copy(source.begin(), source.end(), x.begin());
      for (const Complex y : dft(x, -1)) result.push_back(y.real() - y.imag());
      break;
  }
  return result;
}

template <class T, class Element>
void tryFamily(Input& input, const Family<T, Element>& family) {
  const int n = 2 + static_cast<int>(input.choice(63));
  const int32_t flag = tests::kFlags[input.choice(4)];
  const auto outside = [](int32_t number) { return number >= 2 && number <= 64; };
  const int32_t badLength = input.badNumber(outside, 65), anyFlag = input.anyNumber();
  Element element{};
  require(family.entry(&element, &element, badLength, anyFlag) == zvxErrLength, "bad length");
  require(family.entry(nullptr, nullptr, badLength, anyFlag) == zvxErrLength, "length after null");

  std::vector<T> source(family.sourceSize(n));
  input.fill(std::span(source));
  const std::size_t size = family.destinationSize(n);
  const auto byName = [&](const Element* src, Element* dst) {
    return family.kernel(n)(src, dst, flag);
  };
  const auto byLength = [&](const Element* src, Element* dst) {
    return family.entry(src, dst, n, flag);
  };
  requireFlagRefused<Element>(input, family.kernel(n));
  const std::vector<T> result = resultOf<T, Element>(input, source, size, byName);
  require(sameNumbers<T>(result, resultOf<T, Element>(input, source, size, byLength)),
          "other bits by length");

  if (family.kind == Kind::FromCcs) {  // taken as zero, whatever stands there
    source[1] = 0;
    if (n % 2 == 0) source[n + 1] = 0;
  }
  if (!areOrdinary<T>(source)) return;
  std::vector<long double> expected = definition<T>(family.kind, n, source);
  const bool inverse = family.kind == Kind::ComplexInverse || family.kind == Kind::FromCcs ||
                       family.kind == Kind::FromPack || family.kind == Kind::FromPerm;
  const T factor = scaleFactor<T>(flag, !inverse, family.kind != Kind::Hartley, n);
  for (long double& number : expected) number *= factor;
  require(areClose<T>(expected, result), "not the definition");
}

template <class T>
void tryKind(Input& input, Kind kind) {
  tests::forEachFamily<T>([&](const auto& family) {
    if (family.kind == kind) tryFamily(input, family);
  });
}

}  // namespace
}  // namespace fuzz

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  fuzz::Input input(data, size);
  const tests::Kind kind = fuzz::kFuzzed[input.choice(std::size(fuzz::kFuzzed))];
  if (input.choice(2) == 0) {
    fuzz::tryKind<float>(input, kind);
  } else {
    fuzz::tryKind<double>(input, kind);
  }
  return 0;
}
