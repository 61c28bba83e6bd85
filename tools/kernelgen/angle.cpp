#include "angle.h"

#include <numeric>

namespace kernelgen {
namespace {

// Two pi as the sum of three doubles, exact to 2^-160: there is no portable quadruple literal.
const Quad kTwoPi = Quad{6.283185307179586} + 2.4492935982947064e-16 - 5.9895396194366793e-33;

// Taylor series for 0 <= x <= pi/4, until the next term is below half a unit in the last place.
Quad series(Quad x, int power) {
  Quad term = power == 0 ? Quad{1} : x;
  Quad sum = term;
  for (int k = power; k < 36; k += 2) {
    term *= -x * x / ((k + 1) * (k + 2));
    sum += term;
  }
  return sum;
}

}  // namespace

Turn Turn::reduced() const {
  const long r = (num % den + den) % den;
  const long g = std::gcd(r, den);
  return {r / g, den / g};
}

int Turn::quarters() const {
  const Turn r = reduced();
  return static_cast<int>(4 * r.num / r.den);
}

CosSin cosSin(Turn t) {
  const Turn r = t.reduced();
  const long octant = 8 * r.num / r.den;
  // Odd octants are measured back from their upper end.
  const long rest = octant % 2 == 0 ? 8 * r.num - octant * r.den : (octant + 1) * r.den - 8 * r.num;
  const Quad x = kTwoPi * rest / (8 * r.den);
  const Quad c = series(x, 0);
  const Quad s = series(x, 1);
  const Quad zeroMinusC = Quad{0} - c;  // 0 - s, not -s: an exact zero stays positive
  const Quad zeroMinusS = Quad{0} - s;
  switch (octant) {
    case 0: return {c, s};
    case 1: return {s, c};
    case 2: return {zeroMinusS, c};
    case 3: return {zeroMinusC, s};
    case 4: return {zeroMinusC, zeroMinusS};
    case 5: return {zeroMinusS, zeroMinusC};
    case 6: return {s, zeroMinusC};
    default: return {c, zeroMinusS};
  }
}

}  // namespace kernelgen
