// The algorithms of the complex transforms, each written once.
//
// A step works on a batch of transforms of one length: column c holds the elements of transform c.
// What an element is, and how a batch of smaller transforms is run, is left to a World:
//
//   run(recipe, x)                      the transform of every column
//   rotate(x, angle)                    element k of column c times exp(-2 pi i angle(c, k))
//   blockNumbering(), columnNumbering() of a Cooley-Tukey step
//   convolve(recipe, x, x0, factors)    the convolution of a Rader step
//
// and for a chirp step
//
//   zero()                              an element that is zero
//   postpone(x, angle)                  like rotate, but carried out where the elements are used
//   weigh(x, factors)                   element k of every column times factor k
//   exchanged(x)                        real and imaginary parts exchanged
//
// A direct body works on the elements of one column and needs only their arithmetic (values.h).
//
// No operator here has two operands that both make new nodes. Which came first would be up to the
// compiler, and with it the numbers of the nodes, the order of statements and the signs of zeros.
#pragma once

#include <stdexcept>
#include <type_traits>
#include <vector>

#include "convolutions.h"
#include "recipe.h"
#include "values.h"

namespace kernelgen {

template <class E>
using Column = std::vector<E>;
template <class E>
using Columns = std::vector<Column<E>>;

// Element i is f(i).
template <class F>
auto column(long size, F f) {
  Column<std::invoke_result_t<F, long>> out;
  for (long i = 0; i < size; ++i) out.push_back(f(i));
  return out;
}

// Element i of column c is f(c, i).
template <class F>
auto columns(long count, long size, F f) {
  return column(count, [&](long c) { return column(size, [&](long i) { return f(c, i); }); });
}

// From blocks to columns: of each transform, element j of column u is element u of block j.
template <class E>
Columns<E> across(const Columns<E>& blocks, long a, long b) {
  return columns(std::ssize(blocks) / b * a, b,
                 [&](long c, long j) { return blocks[c / a * b + j][c % a]; });
}

// Good-Thomas, n = a b with a and b coprime: the index maps i, j -> b i + a j and
// k -> (k mod a, k mod b) leave two independent dimensions and no twiddles.
// I. J. Good, J. Roy. Statist. Soc. B 20 (1958); L. H. Thomas (1963).
template <class World, class E>
Columns<E> goodThomas(World& world, const Recipe& r, const Columns<E>& x) {
  const long m = std::ssize(x), a = r.first().n(), b = r.second().n(), n = a * b;
  const Columns<E> blocks =
      columns(m * b, a, [&](long c, long i) { return x[c / b][(b * i + a * (c % b)) % n]; });
  const Columns<E> z = world.run(r.second(), across(world.run(r.first(), blocks), a, b));
  return columns(m, n, [&](long c, long k) { return z[c * a + k % a][k % b]; });
}

// The number of the i-th of n blocks or columns: i itself, or centred, 0, 1, 2 .. -2, -1, so that
// mirror ones have conjugate twiddles.
struct Numbering {
  bool centred;

  long operator()(long i, long n) const { return centred && 2 * i > n ? i - n : i; }
};

constexpr Numbering kPlain{false}, kCentred{true};

// Cooley-Tukey, n = a b: a-point transforms of the blocks x[b i + j], twiddles
// exp(-2 pi i j u / n), b-point transforms across the blocks; result v of column u is element
// u + a v. J. W. Cooley, J. W. Tukey, Math. Comp. 19 (1965).
template <class World, class E>
Columns<E> cooleyTukey(World& world, const Recipe& r, const Columns<E>& x) {
  const long m = std::ssize(x), a = r.first().n(), b = r.second().n(), n = a * b;
  const auto j = [&](long c) { return world.blockNumbering()(c % b, b); };
  const auto u = [&](long k) { return world.columnNumbering()(k % a, a); };
  const Columns<E> blocks =
      columns(m * b, a, [&](long c, long i) { return x[c / b][(n + b * i + j(c)) % n]; });
  const Columns<E> y = world.rotate(world.run(r.first(), blocks), [&](long c, long k) {
    return Turn{j(c) * u(k), n};
  });
  const Columns<E> z = world.run(r.second(), across(y, a, b));
  return columns(m, n, [&](long c, long k) { return z[c * a + k % a][(k - u(k)) / a % b]; });
}

// What becomes of the permuted inputs in a Rader step, column by column.
template <class E>
struct Convolved {
  Column<E> zero;   // X[0], the sum of all inputs
  Columns<E> rest;  // X[g^m], the cyclic convolution with x0 added
};

// Rader, prime n: in the order of the powers of a primitive root, the outputs but X[0] are a cyclic
// convolution of the inputs but x[0]. It takes two transforms with products by constants between
// them. There x[0] is added to the zero frequency, and so reaches all of them by one addition. See
// convolutions.h.
template <class World, class E>
Columns<E> rader(World& world, const Recipe& r, const Columns<E>& x) {
  const long m = std::ssize(x), n = r.n();
  const RaderNumbers numbers(r.n());
  const Columns<E> permuted =
      columns(m, n - 1, [&](long c, long q) { return x[c][numbers.powers[q]]; });
  const Column<E> x0 = column(m, [&](long c) { return x[c][0]; });
  const Convolved<E> y = world.convolve(r, permuted, x0, numbers.factors);
  return columns(
      m, n, [&](long c, long k) { return k == 0 ? y.zero[c] : y.rest[c][numbers.logarithms[k]]; });
}

// Chirp, n odd: k m = h (k^2 + m^2 - (k - m)^2) mod n with h = (n + 1) / 2, the inverse of 2, so
// the transform is a product by the chirp exp(-2 pi i h m^2 / n), a convolution with its conjugate,
// and the product again; only n-th roots of unity occur. The convolution is cyclic of a padded
// length l, by two transforms; exchanging real and imaginary parts before and after makes the
// second one an inverse. L. I. Bluestein, IEEE Trans. Audio Electroacoust. 18 (1970).
template <class World, class E>
Columns<E> chirp(World& world, const Recipe& r, const Columns<E>& x) {
  const ChirpNumbers numbers(r.n(), r.first().n());
  const auto byChirp = [&](long, long k) { return numbers.chirp[k]; };
  Columns<E> padded = world.postpone(x, byChirp);
  for (Column<E>& c : padded) c.resize(numbers.factors.size(), world.zero());
  const Columns<E> z = world.weigh(world.run(r.first(), padded), numbers.factors);
  Columns<E> d = world.exchanged(world.run(r.second(), world.exchanged(z)));
  for (Column<E>& c : d) c.resize(numbers.chirp.size(), world.zero());
  return world.postpone(d, byChirp);
}

// A step that every world has.
template <class World, class E>
Columns<E> runStep(World& world, const Recipe& r, const Columns<E>& x) {
  switch (r.step()) {
    case Step::GoodThomas: return goodThomas(world, r, x);
    case Step::CooleyTukey: return cooleyTukey(world, r, x);
    case Step::Rader: return rader(world, r, x);
    case Step::Chirp:
    case Step::Direct: break;
  }
  throw std::logic_error("not a step of smaller transforms: " + r.print());
}

template <class E>
Column<E> direct2(const Column<E>& x) {
  return {x[0] + x[1], x[0] - x[1]};
}

template <class E>
Column<E> direct4(const Column<E>& x) {
  const E a = x[0] + x[2], b = x[0] - x[2];
  const E e = x[1] + x[3], f = turnedQuarters(x[1] - x[3], 1);
  return {a + e, b + f, a - e, b - f};
}

// The widened bodies are scalar. A sum that has a product by a constant is evaluated in double,
// from sums and differences in single precision, and rounded once.
template <bool kWide, class E>
E up(E x) {
  if constexpr (kWide) return widened(x);
  return x;
}

template <bool kWide, class E>
E down(E x) {
  if constexpr (kWide) return rounded(x);
  return x;
}

template <bool kWide, class E>
Column<E> direct3(const Column<E>& x) {
  const Constant half{0.5, "half"};
  const E p = x[1] + x[2], m = x[1] - x[2];
  const E x0 = up<kWide>(x[0]);
  const E a = down<kWide>(x0 - scaled(up<kWide>(p), half));
  const E w = down<kWide>(crossed(up<kWide>(m), sine({1, 3})));
  return {p + x[0], a + w, a - w};
}

template <bool kWide, class E>
Column<E> direct5(const Column<E>& x) {
  const Constant c1 = cosine({1, 5}), c2 = cosine({1, 10});
  const Constant s1 = sine({1, 5}), s2 = sine({1, 10});
  const E sumA = x[1] + x[4], difA = x[1] - x[4];
  const E sumB = x[3] + x[2], difB = x[3] - x[2];  // 3 first: the sign of difB is part of the form
  const E x0 = up<kWide>(x[0]);
  const E pA = up<kWide>(sumA), pB = up<kWide>(sumB);
  const E mA = up<kWide>(difA), mB = up<kWide>(difB);
  const E pA1 = scaled(pA, c1), pA2 = scaled(pA, c2), pB1 = scaled(pB, c1), pB2 = scaled(pB, c2);
  const E mA1 = crossed(mA, s1), mA2 = crossed(mA, s2), mB1 = crossed(mB, s1),
          mB2 = crossed(mB, s2);
  const E a1 = down<kWide>((x0 + pA1) - pB2);
  const E a2 = down<kWide>((x0 - pA2) + pB1);
  const E w1 = down<kWide>(mA1 - mB2);
  const E w2 = down<kWide>(mA2 + mB1);
  const bool single = x[0].graph->precision() == Precision::Single;
  const E zero = single ? (sumA + x[0]) + sumB : x[0] + (sumA + sumB);
  return {zero, a1 + w1, a2 + w2, a2 - w2, a1 - w1};
}

// 5 points with one product less: the cosine sums from their mean, -1/4, and their half difference.
template <class E>
Column<E> direct5SecondForm(const Column<E>& x) {
  const Constant mean{0.25, "quarter"};
  const Constant halfDifference{(cosine({1, 5}).exact - cosine({2, 5}).exact) / 2, "sqrt5_4"};
  const Constant s1 = sine({1, 5}), s2 = sine({1, 10});
  const E sumA = x[1] + x[4], difA = x[1] - x[4];
  const E sumB = x[2] + x[3], difB = x[2] - x[3];
  const E t = sumA + sumB;
  const E w = x[0] - scaled(t, mean);
  const E v = scaled(sumA - sumB, halfDifference);
  const E a = w + v, b = w - v;
  const E mA1 = crossed(difA, s1), mA2 = crossed(difA, s2);
  const E mB1 = crossed(difB, s1), mB2 = crossed(difB, s2);
  const E w1 = mA1 + mB2, w2 = mA2 - mB1;
  return {x[0] + t, a + w1, b + w2, b - w2, a - w1};
}

template <class E>
struct Signed {
  E value;
  bool negative = false;
};

// The sum of all, neighbours first: so fewer additions wait for each other, and signs cost nothing.
template <class E>
Signed<E> total(std::vector<Signed<E>> terms) {
  while (terms.size() > 1) {
    std::vector<Signed<E>> next;
    for (std::size_t i = 0; i < terms.size(); i += 2) {
      if (i + 1 == terms.size()) {
        next.push_back(terms[i]);
        continue;
      }
      const Signed<E>&a = terms[i], &b = terms[i + 1];
      if (a.negative == b.negative) {
        next.push_back({a.value + b.value, a.negative});
      } else {
        next.push_back({a.negative ? b.value - a.value : a.value - b.value});
      }
    }
    terms = std::move(next);
  }
  return terms[0];
}

// Odd prime p: X[k] and X[p-k] share the cosine sum over x[j] + x[p-j] and the sine sum over
// x[j] - x[p-j]. (p-1)^2 / 2 products of an element by a real constant.
template <class E>
Column<E> directPrime(int p, const Column<E>& x) {
  const int half = (p - 1) / 2;
  std::vector<Signed<E>> sums{{x[0]}}, differences{{x[0]}};
  for (int j = 1; j <= half; ++j) {
    sums.push_back({x[j] + x[p - j]});
    differences.push_back({x[j] - x[p - j]});
  }
  Column<E> out(p, total(sums).value);
  for (int k = 1; k <= half; ++k) {
    std::vector<Signed<E>> even{{x[0]}}, odd;
    for (int j = 1; j <= half; ++j) {
      const int m = j * k % p;
      const bool mirrored = m > half;  // cos(p - m) = cos m, sin(p - m) = -sin m
      const Turn t{mirrored ? p - m : m, p};
      even.push_back({scaled(sums[j].value, cosine(t))});
      odd.push_back({crossed(differences[j].value, sine(t)), mirrored});
    }
    const E c = total(even).value;
    const Signed<E> s = total(odd);
    out[s.negative ? p - k : k] = c + s.value;
    out[s.negative ? k : p - k] = c - s.value;
  }
  return out;
}

template <class E>
Column<E> direct(const Recipe& r, const Column<E>& x) {
  switch (r.n()) {
    case 2: return direct2(x);
    case 3: return direct3<false>(x);
    case 4: return direct4(x);
    case 5: return r.isSecondForm() ? direct5SecondForm(x) : direct5<false>(x);
    case 7:
    case 11: return directPrime(r.n(), x);
    default: throw std::logic_error("no complex body of length " + r.print());
  }
}

}  // namespace kernelgen
