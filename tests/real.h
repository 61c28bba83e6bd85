// A real number of MPFR, for constants that have to be right to the last bit.
#pragma once

#include <mpfr.h>

#include <type_traits>

namespace tests {

// Far more than the 53 bits of a double, so that the second rounding cannot matter.
inline constexpr int kBits = 200;

class Real {
 public:
  Real() { mpfr_init2(value_, kBits); }
  ~Real() { mpfr_clear(value_); }
  Real(const Real&) = delete;
  Real& operator=(const Real&) = delete;
  mpfr_ptr get() { return value_; }
  template <class T>
  T rounded() {
    if constexpr (std::is_same_v<T, float>) {
      return mpfr_get_flt(value_, MPFR_RNDN);
    } else {
      return mpfr_get_d(value_, MPFR_RNDN);
    }
  }

 private:
  mpfr_t value_;
};

// Cosine, sine and tangent of pi numerator / denominator, rounded once.
template <class T>
T ofAngle(int (*function)(mpfr_ptr, mpfr_srcptr, mpfr_rnd_t), int numerator, int denominator) {
  Real value;
  mpfr_const_pi(value.get(), MPFR_RNDN);
  mpfr_mul_si(value.get(), value.get(), numerator, MPFR_RNDN);
  mpfr_div_si(value.get(), value.get(), denominator, MPFR_RNDN);
  function(value.get(), value.get(), MPFR_RNDN);
  return value.rounded<T>();
}
template <class T>
T cosOf(int numerator, int denominator) {
  return ofAngle<T>(mpfr_cos, numerator, denominator);
}
template <class T>
T sinOf(int numerator, int denominator) {
  return ofAngle<T>(mpfr_sin, numerator, denominator);
}
template <class T>
T tanOf(int numerator, int denominator) {
  return ofAngle<T>(mpfr_tan, numerator, denominator);
}

}  // namespace tests
