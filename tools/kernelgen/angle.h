// Trigonometric constants from exact fractions of a turn.
//
// An angle is a rational number of turns. It is reduced to the first octant in integers, evaluated
// there in quadruple precision, and rounded once, so that every constant of a kernel is the nearest
// number of its precision and mirror angles give bit-equal magnitudes.
#pragma once

namespace kernelgen {

__extension__ typedef __float128 Quad;

// num/den of a full turn; any sign and size of num, den > 0.
struct Turn {
  long num = 0;
  long den = 1;

  Turn reduced() const;  // lowest terms, 0 <= num < den
  bool isZero() const { return num % den == 0; }
  bool isQuarterMultiple() const { return 4 * num % den == 0; }
  int quarters() const;  // 0..3, for multiples of a quarter turn

  bool operator==(const Turn&) const = default;  // of the fractions as written
};

struct CosSin {
  Quad cosine;
  Quad sine;
};

// cos and sin of 2 pi t.
CosSin cosSin(Turn t);

template <class T>
T cosineOf(Turn t) {
  return static_cast<T>(cosSin(t).cosine);
}

template <class T>
T sineOf(Turn t) {
  return static_cast<T>(cosSin(t).sine);
}

}  // namespace kernelgen
