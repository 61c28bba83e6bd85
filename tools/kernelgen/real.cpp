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
    if (x[k] != conjugate(x[(x.size() - k) % x.size()])) return false;
  }
  return true;
}

Elements onlyPart(const Elements& x, Part Parts::*part) {
  return column(std::ssize(x), [&](long k) { return Parts{x[k].graph, x[k].*part, {}}; });
}

// x + i y
Elements joined(const Elements& x, const Elements& y) {
  return column(std::ssize(x), [&](long k) { return x[k] + turnedQuarters(y[k], 3); });
}

// The transform of a complex signal by those of its real and its imaginary part.
template <class Transform>
Elements ofParts(const Elements& x, const Transform& transform) {
  const Elements re = transform(onlyPart(x, &Parts::re));
  const Elements im = transform(onlyPart(x, &Parts::im));
  return joined(re, im);
}

// ---- Odd primes

// u[j] = x[j] + x[p-j] for the cosine sums, v[j] = x[p-j] - x[j] for the sine sums. The first
// difference of 5 points is taken the other way round, which decides signs of zero. Unlike those of
// directPrime (algorithms.h), each sum goes in order, as one expression.
Elements oddPrime(int p, const Elements& x) {
  const int half = (p - 1) / 2;
  std::vector<Parts> u, v;
  Parts zero = x[0];
  for (int j = 1; j <= half; ++j) {
    u.push_back(x[j] + x[p - j]);
    const bool frontFirst = p == 5 && j == 1;
    v.push_back(frontFirst ? turnedQuarters(x[j] - x[p - j], 2) : x[p - j] - x[j]);
    zero = zero + u.back();
  }
  Elements out(p, zero);
  for (int k = 1; k <= half; ++k) {
    std::vector<Term> even, odd;
    for (int j = 1; j <= half; ++j) {
      const Turn t{j * k, p};
      even.push_back({cosine(t), u[j - 1]});
      odd.push_back({sine(t), v[j - 1]});
    }
    const Parts c = combined(even, &x[0]), s = turnedQuarters(combined(odd), 3);
    out[k] = c + s;
    out[p - k] = c - s;
  }
  return out;
}

// ---- Powers of two

// x[first], x[first + step] ..
Elements strided(const Elements& x, long first, long step) {
  return column(std::ssize(x) / step, [&](long i) { return x[first + step * i]; });
}

Elements samplesToSpectrum(const Elements& x);

// Of a complex column; beyond four points by the real transforms of its parts.
Elements complexPowerOfTwo(const Elements& x) {
  if (x.size() == 1) return x;
  if (x.size() == 2) return direct2(x);
  if (x.size() == 4) return direct4(x);
  return ofParts(x, samplesToSpectrum);
}

// The odd bins 2 i + 1 of a real signal of 2 L points: the L samples d, then the same with the sign
// changed.
Elements oddBins(const Elements& d) {
  const long size = std::ssize(d), n = 2 * size;
  Elements out(size, d[0]);
  const auto setMirrors = [&](long i, const Parts& x) {
    out[i] = x;
    out[size - 1 - i] = conjugate(x);
  };
  if (size <= 8) {
    // The bins 4 m + 1 are a transform of n / 4 points, the others are their conjugates.
    const Elements z = column(size / 2, [&](long j) {
      return twiddled(d[j] + turnedQuarters(d[j + size / 2], 1), {j, n});
    });
    const Elements bins = complexPowerOfTwo(z);
    for (long m = 0; m < size / 2; ++m) setMirrors(2 * m, bins[m]);
    return out;
  }
  // The odd bins of four interleaved signals, then 4 points across.
  const Columns<Parts> interleaved = column(4, [&](long b) { return oddBins(strided(d, b, 4)); });
  for (long j = 0; j < size / 8; ++j) {
    const Elements bins = direct4(column(4, [&](long b) {
      return twiddled(interleaved[b][j], {(2 * j + 1) * b, n});
    }));
    for (long m = 0; m < 4; ++m) setMirrors(j + size / 4 * m, bins[m]);
  }
  return out;
}

// The even bins are those of the signal folded by sums, the odd ones those of the differences.
Elements samplesToSpectrum(const Elements& x) {
  if (x.size() == 1) return x;
  const long n = std::ssize(x), half = n / 2;
  Elements u, d;
  for (long i = 0; i < half; ++i) {
    u.push_back(x[i] + x[i + half]);
    d.push_back(x[i] - x[i + half]);
  }
  const Elements even = samplesToSpectrum(u);
  const Elements odd = half == 1 ? d : oddBins(d);
  return column(n, [&](long k) { return k % 2 == 0 ? even[k / 2] : odd[k / 2]; });
}

// The way back: samples i and i + n/2 are the sum and the difference of p from the even bins and r
// from the odd ones, and r is twice the parts of a transform of the bins 4 m + 1.
Elements spectrumToSamples(const Elements& x) {
  const long n = std::ssize(x), half = n / 2;
  if (n == 2) return direct2(x);
  const Elements p = spectrumToSamples(strided(x, 0, 2));
  const Elements quarter = complexPowerOfTwo(strided(x, 1, 4));
  Elements r(half, x[0]);
  for (long j = 0; j < n / 4; ++j) {
    const Parts z = shifted(twiddled(quarter[j], {j, n}), 1);
    r[j] = {z.graph, z.re, {}};
    r[j + half / 2] = {z.graph, z.im, {}};
  }
  Elements out(n, x[0]);
  for (long i = 0; i < half; ++i) {
    out[i] = p[i] + r[i];
    out[i + half] = p[i] - r[i];
  }
  return out;
}

// ---- Rader

// The bins of one parity, zero in place of the others.
Elements masked(const Elements& x, long parity) {
  return column(std::ssize(x), [&](long k) {
    return k % 2 == parity ? x[k] : Parts{x[k].graph, {}, {}};
  });
}

// The products of a Rader step, as raderMiddle (parts.h) makes them, but bin 0 is one expression.
Elements weighted(const Elements& a, const Parts& x0, const std::vector<Factor>& factors) {
  const long order = std::ssize(a);
  return column(order, [&](long k) {
    const Factor& b = factors[k];
    if (k == 0) return combined({{b.re, a[0]}}, &x0);
    if (2 * k != order) return productOfMirrors(a[k], b);
    const std::optional<Constant> stated = statedFactor(order + 1, k);
    return product(a[k], stated ? Factor{*stated, b.im} : b);
  });
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
  return column(std::ssize(x), [&](long c) { return run(r, x[c]); });
}

Column<Parts> Real::run(const Recipe& r, const Column<Parts>& x) {
  if (std::all_of(x.begin(), x.end(), [](const Parts& e) { return isZero(e); })) return x;
  if (r.step() == Step::GoodThomas) return goodThomas(*this, r, Columns<Parts>{x})[0];
  if (r.step() == Step::CooleyTukey) return cooleyTukey(*this, r, Columns<Parts>{x})[0];
  if (r.step() == Step::Direct && r.n() % 2 != 0) return oddPrime(r.n(), x);
  if (r.step() == Step::Direct && r.n() <= 4) return complexPowerOfTwo(x);
  // What follows takes a real or a symmetric column. Any other is a real and an imaginary signal.
  if (!isReal(x) && !isSymmetric(x)) {
    return ofParts(x, [&](const Elements& part) { return Real(Flow::ToSpectrum).run(r, part); });
  }
  if (r.step() == Step::Rader) return rader(*this, r, Columns<Parts>{x})[0];
  return isReal(x) ? samplesToSpectrum(x) : spectrumToSamples(x);
}

// The factor B[M-k] is (-1)^k times the conjugate of B[k]. So the products of a real column are, in
// even bins, the spectrum of a real signal, in odd bins that of an imaginary one, and each half goes
// back by itself. A symmetric spectrum, in the order of the powers, repeats its real parts after
// half the column, and its imaginary parts with the sign changed: one has only even bins, the other
// only odd ones, and the products are the spectrum of a real signal.
Convolved<Parts> Real::convolve(const Recipe& r, const Columns<Parts>& x, const Column<Parts>& x0,
                                const std::vector<Factor>& factors) {
  Real toSpectrum(Flow::ToSpectrum), toSamples(Flow::ToSamples);
  Convolved<Parts> y;
  for (std::size_t c = 0; c < x.size(); ++c) {
    const Elements a =
        ofParts(x[c], [&](const Elements& part) { return toSpectrum.run(r.first(), part); });
    Elements z = weighted(a, x0[c], factors);
    if (r.hasOwnOddSecond()) {
      for (Parts& e : z) e = kept(e);
    }
    y.zero.push_back(x0[c] + a[0]);
    if (isReal(x[c])) {
      Elements odd = masked(z, 1);
      for (Parts& e : odd) e = turnedQuarters(e, 1);
      const Elements re = toSamples.run(r.second(), masked(z, 0));
      y.rest.push_back(joined(re, toSamples.run(r.oddSecond(), odd)));
    } else {
      y.rest.push_back(toSamples.run(r.second(), z));
    }
  }
  return y;
}

}  // namespace kernelgen
