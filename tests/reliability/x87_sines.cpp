// The sines and cosines of the x87, by name in the place of those of the math library: they are what the
// plans of a build for Windows are made of, whose library has them inside.

#include <math.h>

namespace {

template <class T>
void bothOf(T angle, T* sine, T* cosine) {
  long double s, c;
  asm("fsincos" : "=t"(c), "=u"(s) : "0"(static_cast<long double>(angle)));
  *sine = static_cast<T>(s);
  *cosine = static_cast<T>(c);
}

template <class T>
T sineOf(T angle) {
  T sine, cosine;
  bothOf(angle, &sine, &cosine);
  return sine;
}

template <class T>
T cosineOf(T angle) {
  T sine, cosine;
  bothOf(angle, &sine, &cosine);
  return cosine;
}

}  // namespace

extern "C" {

double sin(double angle) noexcept { return sineOf(angle); }
double cos(double angle) noexcept { return cosineOf(angle); }
float sinf(float angle) noexcept { return sineOf(angle); }
float cosf(float angle) noexcept { return cosineOf(angle); }
void sincos(double angle, double* sine, double* cosine) noexcept { bothOf(angle, sine, cosine); }
void sincosf(float angle, float* sine, float* cosine) noexcept { bothOf(angle, sine, cosine); }

}  // extern "C"
