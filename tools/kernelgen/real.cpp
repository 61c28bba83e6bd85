#include "real.h"

#include <algorithm>
#include <stdexcept>

namespace kernelgen {
namespace {

using Elements = Column<Parts>;

bool isReal(const Elements& x) {
  return std::all_of(x.begin(), x.end(), [](const Parts& e) { return isZero(e.im); });
}

bool isSymmetric(const Elements& x) {
  for (std::size_t k = 0; k < x.size(); ++k) {
    if (!sameValue(x[k], conjugate(x[(x.size() - k) % x.size()]))) return false;
  }
  return true;
}

Elements parts(const Elements& x, Part Parts::*part) {
  Elements out;
  for (const Parts& e : x) out.push_back({e.graph, e.*part, {}});
  return out;
}

// x + i y
Elements joined(const Elements& x, const Elements& y) {
  Elements out;
  for (std::size_t k = 0; k < x.size(); ++k) out.push_back(x[k] + turnedQuarters(y[k], 3));
  return out;
}

// A complex signal by the transforms of its real and its imaginary part.
template <class Transform>
Elements ofParts(const Elements& x, const Transform& transform) {
  const Elements re = transform(parts(x, &Parts::re));
  const Elements im = transform(parts(x, &Parts::im));
  return joined(re, im);
}

// ---- Odd primes

// u[j] = x[j] + x[p-j] for the cosine sums, v[j] = x[p-j] - x[j] for the sine sums. 5 points have
// their first difference the other way round, which decides the signs of zero in their two sums.
Elements symmetricBlock(int p, const Elements& x) {
  const auto at = [&](int j) { return x[static_cast<std::size_t>(j)]; };
  const int half = (p - 1) / 2;
  std::vector<Parts> u, v;
  Parts zero = x[0];
  for (int j = 1; j <= half; ++j) {
    u.push_back(at(j) + at(p - j));
    const bool frontFirst = p == 5 && j == 1;
    v.push_back(frontFirst ? turnedQuarters(at(j) - at(p - j), 2) : at(p - j) - at(j));
    zero = zero + u.back();
  }
  Elements out(x.size(), zero);
  for (int k = 1; k <= half; ++k) {
    std::vector<Term> even, odd;
    for (int j = 1; j <= half; ++j) {
      const Turn t{j * k, p};
      even.push_back({cosine(t), u[static_cast<std::size_t>(j - 1)]});
      odd.push_back({sine(t), v[static_cast<std::size_t>(j - 1)]});
    }
    const Parts c = combined(even, &x[0]), s = turnedQuarters(combined(odd), 3);
    out[static_cast<std::size_t>(k)] = c + s;
    out[static_cast<std::size_t>(p - k)] = c - s;
  }
  return out;
}

// ---- Powers of two

Elements halved(const Elements& x, std::size_t first) {
  Elements out;
  for (std::size_t i = first; i < x.size(); i += 2) out.push_back(x[i]);
  return out;
}

Elements samplesToSpectrum(const Elements& x);

// Four points, or a complex column: the real transforms of its parts.
Elements complexPowerOfTwo(const Elements& x) {
  if (x.size() == 1) return x;
  if (x.size() == 2) return direct2(x);
  if (x.size() == 4) return direct4(x);
  return ofParts(x, samplesToSpectrum);
}

// Of a real signal that changes its sign after the L samples d, the odd bins k = 2 i + 1 of 2 L
// points.
Elements oddBins(const Elements& d) {
  const std::size_t size = d.size(), n = 2 * size;
  Elements out(size, d[0]);
  const auto setPair = [&](std::size_t i, Parts x) {
    out[i] = x;
    out[size - 1 - i] = conjugate(x);
  };
  if (size <= 8) {
    // Bins 4 m + 1 are a transform of n / 4 points, and the others their conjugates.
    Elements z;
    for (std::size_t j = 0; j < size / 2; ++j) {
      const Parts both = d[j] + turnedQuarters(d[j + size / 2], 1);
      z.push_back(twiddled(both, {static_cast<long>(j), static_cast<long>(n)}));
    }
    const Elements bins = complexPowerOfTwo(z);
    for (std::size_t m = 0; m < bins.size(); ++m) setPair(2 * m, bins[m]);
    return out;
  }
  // Four interleaved signals, each with its odd bins, and 4 points across.
  Columns<Parts> interleaved(4);
  for (std::size_t i = 0; i < size; ++i) interleaved[i % 4].push_back(d[i]);
  for (Elements& b : interleaved) b = oddBins(b);
  for (std::size_t j = 0; j < size / 8; ++j) {
    Elements across;
    for (std::size_t b = 0; b < 4; ++b) {
      const Turn t{static_cast<long>((2 * j + 1) * b), static_cast<long>(n)};
      across.push_back(twiddled(interleaved[b][j], t));
    }
    const Elements bins = direct4(across);
    for (std::size_t m = 0; m < 4; ++m) setPair(j + size / 4 * m, bins[m]);
  }
  return out;
}

// The even bins are the transform of the folded signal.
Elements samplesToSpectrum(const Elements& x) {
  if (x.size() == 1) return x;
  const std::size_t half = x.size() / 2;
  Elements u, d;
  for (std::size_t i = 0; i < half; ++i) {
    u.push_back(x[i] + x[i + half]);
    d.push_back(x[i] - x[i + half]);
  }
  const Elements even = samplesToSpectrum(u);
  const Elements odd = half == 1 ? d : oddBins(d);
  Elements out;
  for (std::size_t k = 0; k < half; ++k) {
    out.push_back(even[k]);
    out.push_back(odd[k]);
  }
  return out;
}

// The way back: sample i and i + n/2 are the sum and the difference of what the even and the odd
// bins give, and the odd bins give twice the parts of a transform of the bins 4 m + 1.
Elements spectrumToSamples(const Elements& x) {
  const std::size_t n = x.size(), half = n / 2;
  if (n == 2) return direct2(x);
  const Elements p = spectrumToSamples(halved(x, 0));
  Elements quarter;
  for (std::size_t k = 1; k < n; k += 4) quarter.push_back(x[k]);
  quarter = complexPowerOfTwo(quarter);
  Elements r(half, x[0]);
  for (std::size_t j = 0; j < quarter.size(); ++j) {
    const Turn t{static_cast<long>(j), static_cast<long>(n)};
    const Parts z = shifted(twiddled(quarter[j], t), 1);
    r[j] = {z.graph, z.re, {}};
    r[j + half / 2] = {z.graph, turnedQuarters(z, 1).re, {}};
  }
  Elements out(n, x[0]);
  for (std::size_t i = 0; i < half; ++i) {
    out[i] = p[i] + r[i];
    out[i + half] = p[i] - r[i];
  }
  return out;
}

// ---- Rader

Elements masked(const Elements& x, std::size_t parity) {
  Elements out;
  for (std::size_t k = 0; k < x.size(); ++k) {
    out.push_back(k % 2 == parity ? x[k] : Parts{x[k].graph, {}, {}});
  }
  return out;
}

// The one constant that is not the nearest number to its value but the one below it, on purpose.
const Constant kBin6Of13{static_cast<Quad>(0.3004626062886657), "re6of13"};

// A[k] B[k] with the factor two of a pair of bins in the constant, and x[0] in bin 0.
Elements weighted(const Elements& a, const Parts& x0, const RaderNumbers& numbers) {
  const std::size_t order = a.size();
  Elements z;
  for (std::size_t k = 0; k < order; ++k) {
    const Factor& b = numbers.factors[k];
    if (k == 0) {
      z.push_back(combined({{b.re, a[0]}}, &x0));
    } else if (2 * k == order) {
      const Factor undoubled = order == 12 ? Factor{kBin6Of13, b.im} : b;
      z.push_back(product(a[k], undoubled));
    } else {
      const Factor twice{{2 * b.re.exact, "two" + b.re.name}, {2 * b.im.exact, "two" + b.im.name}};
      z.push_back(shifted(product(a[k], twice), -1));
    }
  }
  return z;
}

}  // namespace

Parts twiddled(Parts x, Turn t) {
  if (t.isZero()) return x;
  const Turn whole{8 * t.num, t.den};
  if (t.isQuarterMultiple() || whole.num % whole.den != 0) return rotated(x, t);
  const long eighths = ((whole.num / whole.den) % 8 + 8) % 8;
  const Parts y = scaled(x, cosine({1, 8}));
  return turnedQuarters(y + turnedQuarters(y, 1), static_cast<int>(eighths / 2));
}

Columns<Parts> Real::run(const Recipe& r, const Columns<Parts>& x) {
  Columns<Parts> out;
  for (const Elements& column : x) out.push_back(run(r, column));
  return out;
}

Column<Parts> Real::run(const Recipe& r, const Column<Parts>& x) {
  if (std::all_of(x.begin(), x.end(), [](const Parts& e) { return isZero(e); })) return x;
  if (r.step() == Step::GoodThomas) return goodThomas(*this, r, Columns<Parts>{x})[0];
  if (r.step() == Step::CooleyTukey) return cooleyTukey(*this, r, Columns<Parts>{x})[0];
  if (r.step() == Step::Direct && r.n() % 2 != 0) return symmetricBlock(r.n(), x);
  if (r.step() == Step::Direct && r.n() <= 4) return complexPowerOfTwo(x);
  // What is left is for real or symmetric columns; another one is a real and an imaginary signal.
  if (!isReal(x) && !isSymmetric(x)) {
    return ofParts(x, [&](const Elements& part) { return Real(Flow::ToSpectrum).run(r, part); });
  }
  if (r.step() == Step::Rader) return runRader(r, x);
  return isReal(x) ? samplesToSpectrum(x) : spectrumToSamples(x);
}

// Rader's step (algorithms.h). Of real samples, the products in even bins are those of a real
// convolution and those in odd bins of an imaginary one. Of a spectrum, the bins in the order of
// the powers have real parts of half the period and imaginary parts that change their sign after
// it.
Column<Parts> Real::runRader(const Recipe& r, const Column<Parts>& x) {
  const RaderNumbers numbers(r.n());
  Elements permuted;
  for (std::size_t power : numbers.powers) permuted.push_back(x[power]);
  Real toSpectrum(Flow::ToSpectrum), toSamples(Flow::ToSamples);
  const Elements a =
      ofParts(permuted, [&](const Elements& part) { return toSpectrum.run(r.first(), part); });
  Elements z = weighted(a, x[0], numbers);
  if (r.hasOwnOddSecond()) {
    for (Parts& e : z) e = kept(e);
  }
  Elements out(x.size(), x[0] + a[0]), rest;
  if (isReal(x)) {
    Elements odd;
    for (const Parts& e : masked(z, 1)) odd.push_back(turnedQuarters(e, 1));
    const Elements re = toSamples.run(r.second(), masked(z, 0));
    rest = joined(re, toSamples.run(r.oddSecond(), odd));
  } else {
    rest = toSamples.run(r.second(), z);
  }
  for (std::size_t m = 0; m < rest.size(); ++m) out[numbers.powers[m]] = rest[m];
  return out;
}

}  // namespace kernelgen
