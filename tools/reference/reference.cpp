#include "reference.h"

#include <cmath>
#include <complex>
#include <map>
#include <numbers>
#include <stdexcept>
#include <utility>

namespace reference {
namespace {

using kernelgen::BinPlace;
using kernelgen::Direction;
using kernelgen::Family;
using kernelgen::isOwnMirror;
using kernelgen::KernelId;
using Complex = std::complex<long double>;

// The sums of the DCT-IV grow with the square of the length.
constexpr int kLongestSummed = 256;

// cos and sin of 2 pi m / n for m = 0 .. n-1.
struct Roots {
  explicit Roots(int n) {
    for (int m = 0; m < n; ++m) {
      const long double angle = 2 * std::numbers::pi_v<long double> * m / n;
      cosines.push_back(std::cos(angle));
      sines.push_back(std::sin(angle));
    }
  }
  Numbers cosines, sines;
};

const Roots& rootsOf(int n) {
  static std::map<int, Roots> tables;
  return tables.try_emplace(n, n).first->second;
}

Numbers complexDft(const KernelId& id, const Numbers& x) {
  const int n = id.length;
  const Roots& roots = rootsOf(n);
  const long double sign = id.direction == Direction::Forward ? -1 : 1;
  Numbers result(2 * n);
  for (int k = 0; k < n; ++k) {
    long double re = 0, im = 0;
    for (int j = 0, turn = 0; j < n; ++j, turn = (turn + k) % n) {
      const long double c = roots.cosines[turn], s = sign * roots.sines[turn];
      re += x[2 * j] * c - x[2 * j + 1] * s;
      im += x[2 * j] * s + x[2 * j + 1] * c;
    }
    result[2 * k] = re;
    result[2 * k + 1] = im;
  }
  return result;
}

Numbers samplesToSpectrum(const KernelId& id, const Numbers& x) {
  const int n = id.length;
  const Roots& roots = rootsOf(n);
  Numbers result(id.destinationSize());
  for (int k = 0; 2 * k <= n; ++k) {
    long double re = 0, im = 0;
    for (int j = 0, turn = 0; j < n; ++j, turn = (turn + k) % n) {
      re += x[j] * roots.cosines[turn];
      im -= x[j] * roots.sines[turn];
    }
    const BinPlace place = binPlace(id.layout, n, k);
    result[place.re] = re;
    if (!isOwnMirror(n, k)) result[place.im] = im;
  }
  return result;
}

Numbers spectrumToSamples(const KernelId& id, const Numbers& x) {
  const int n = id.length;
  const Roots& roots = rootsOf(n);
  Numbers result(n);
  for (int j = 0; j < n; ++j) {
    for (int k = 0; 2 * k <= n; ++k) {
      const BinPlace place = binPlace(id.layout, n, k);
      const int turn = j * k % n;
      if (isOwnMirror(n, k)) {
        result[j] += x[place.re] * roots.cosines[turn];
      } else {
        result[j] += 2 * (x[place.re] * roots.cosines[turn] - x[place.im] * roots.sines[turn]);
      }
    }
  }
  return result;
}

Numbers realDft(const KernelId& id, const Numbers& x) {
  return id.direction == Direction::Forward ? samplesToSpectrum(id, x) : spectrumToSamples(id, x);
}

Numbers hartley(const KernelId& id, const Numbers& x) {
  const int n = id.length;
  const Roots& roots = rootsOf(n);
  Numbers result(n);
  for (int k = 0; k < n; ++k) {
    for (int j = 0, turn = 0; j < n; ++j, turn = (turn + k) % n) {
      result[k] += x[j] * (roots.cosines[turn] + roots.sines[turn]);
    }
  }
  return result;
}

Complex unit(long double turnsOfPi) {
  const long double angle = std::numbers::pi_v<long double> * turnsOfPi;
  return {std::cos(angle), std::sin(angle)};
}

// Decimation in time, negative exponent, in place.
void fft(std::vector<Complex>& x) {
  const std::size_t n = x.size();
  for (std::size_t i = 1, j = 0; i < n; ++i) {
    std::size_t bit = n / 2;
    for (; j & bit; bit /= 2) j ^= bit;
    j ^= bit;
    if (i < j) std::swap(x[i], x[j]);
  }
  std::vector<Complex> roots(n / 2);
  for (std::size_t k = 0; k < roots.size(); ++k) {
    roots[k] = unit(-2 * static_cast<long double>(k) / static_cast<long double>(n));
  }
  for (std::size_t half = 1; half < n; half *= 2) {
    for (std::size_t start = 0; start < n; start += 2 * half) {
      for (std::size_t k = 0; k < half; ++k) {
        const Complex a = x[start + k], b = x[start + half + k] * roots[k * (n / (2 * half))];
        x[start + k] = a + b;
        x[start + half + k] = a - b;
      }
    }
  }
}

}  // namespace

Numbers definition(const KernelId& id, const Numbers& source) {
  switch (id.family) {
    case Family::Complex: return complexDft(id, source);
    case Family::Real: return realDft(id, source);
    case Family::Hartley: return hartley(id, source);
  }
  throw std::logic_error("a kernel family without a definition");
}

Numbers definition(const api::Transform& transform, const Numbers& source) {
  switch (transform.kernel->family) {
    case api::Family::Wht: return whtDefinition(source);
    case api::Family::Dct4:
      return transform.points > kLongestSummed ? fastDct4(source) : dct4Definition(source);
    default: return definition(api::kernelIdOf(*transform.kernel), source);
  }
}

namespace {

// Whether forward and inverse are two transforms.
bool isDirected(api::Family family) {
  switch (family) {
    case api::Family::Complex:
    case api::Family::Real: return true;
    case api::Family::Hartley:
    case api::Family::Wht:
    case api::Family::Dct4: return false;
    case api::Family::Version:
    case api::Family::Level: break;
  }
  throw std::logic_error("no transform");
}

}  // namespace

long double factor(const api::Transform& transform, int flag) {
  const bool directed = isDirected(transform.kernel->family);
  const bool forward = transform.kernel->direction == Direction::Forward;
  if (!transform.function->takes(api::Role::Flag)) return 1;
  switch (flag) {
    case 1: return directed && !forward ? 1 : 1.0L / transform.points;
    case 2: return directed && forward ? 1 : 1.0L / transform.points;
    case 4: return 1 / std::sqrt(static_cast<long double>(transform.points));
    default: return 1;
  }
}

// H(2n) = (H(n) H(n); H(n) -H(n)).
Numbers whtDefinition(const Numbers& source) {
  if (source.size() == 1) return source;
  const auto middle = source.begin() + static_cast<std::ptrdiff_t>(source.size() / 2);
  const Numbers first = whtDefinition({source.begin(), middle}),
                second = whtDefinition({middle, source.end()});
  Numbers result(source.size());
  for (std::size_t i = 0; i < first.size(); ++i) {
    result[i] = first[i] + second[i];
    result[first.size() + i] = first[i] - second[i];
  }
  return result;
}

Numbers dct4Definition(const Numbers& source) {
  const std::size_t n = source.size();
  Numbers cosines(8 * n);
  for (std::size_t i = 0; i < 8 * n; ++i) {
    cosines[i] = unit(static_cast<long double>(i) / (4.0L * static_cast<long double>(n))).real();
  }
  Numbers result(n);
  for (std::size_t k = 0; k < n; ++k) {
    for (std::size_t i = 0; i < n; ++i) {
      result[k] += source[i] * cosines[(2 * i + 1) * (2 * k + 1) % (8 * n)];
    }
  }
  return result;
}

Numbers fastDct4(const Numbers& source) {
  const std::size_t n = source.size(), half = n / 2;
  const auto turn = [&](std::size_t quarters) {
    return unit(-static_cast<long double>(quarters) / (4.0L * static_cast<long double>(n)));
  };
  std::vector<Complex> x(half);
  for (std::size_t k = 0; k < half; ++k) {
    x[k] = Complex(source[2 * k], source[n - 1 - 2 * k]) * turn(4 * k + 1);
  }
  fft(x);
  Numbers result(n);
  for (std::size_t k = 0; k < half; ++k) {
    const Complex y = x[k] * turn(4 * k);
    result[2 * k] = y.real();
    result[n - 1 - 2 * k] = -y.imag();
  }
  return result;
}

}  // namespace reference
