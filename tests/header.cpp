// The public headers as C++17, with warnings as errors, and what a C++ caller may rely on.

#include <complex>

#include "zvxg_many.h"

static_assert(noexcept(zvxgenGetLibVersion()) && noexcept(zvxFree(nullptr)));
static_assert(sizeof(Complex32) == sizeof(std::complex<float>) && alignof(Complex32) == 4);
static_assert(sizeof(Complex64) == sizeof(std::complex<double>) && alignof(Complex64) == 8);
static_assert(zvxOk == 0 && zvxErrPlanState == -5 && zvxErrLength == -6);
static_assert(zvxErrNullPointer == -8 && zvxErrScaleFlag == -16);
static_assert(zvxDivFwdByN == 1 && zvxDivInvByN == 2 && zvxDivBySqrtN == 4 && zvxNoDiv == 8);
static_assert(zvxManyAvx == 1 && zvxManyAvx512 == 2 && noexcept(zvxgManyLevel()));
