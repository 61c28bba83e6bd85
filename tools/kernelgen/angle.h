// Trigonometric constants from exact fractions of a turn.
//
// An angle is a rational number of turns. It is reduced to the first octant in integers and
// evaluated there in quadruple precision. So a constant that is rounded once, to the precision of a
// kernel, is the nearest number to the exact value, and mirror angles give the same magnitudes.
#pragma once

namespace kernelgen {

__extension__ typedef __float128 Quad;

// num/den of a full turn; num may have any sign and size, den > 0.
struct Turn {
  long num = 0;
  long den = 1;

  Turn reduced() const;  // lowest terms, 0 <= num < den
  bool isZero() const { return num % den == 0; }
  bool isQuarterMultiple() const { return 4 * num % den == 0; }
  int quarters() const;  // 0..3, for multiples of a quarter turn
};

struct CosSin {
  Quad cosine;
  Quad sine;
};

// cos and sin of 2 pi t.
CosSin cosSin(Turn t);

}  // namespace kernelgen
