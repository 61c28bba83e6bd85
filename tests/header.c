/* The public headers as C11, with warnings as errors; header.cpp is the same in C++17. */

#include "zvxg_many.h"

int32_t headerInC(const Complex32* source, Complex64* destination);

int32_t headerInC(const Complex32* source, Complex64* destination) {
  const VersionRecord* version = zvxgenGetLibVersion();
  const enum ZvxScaleFlag flag = zvxDivBySqrtN;
  destination->re = source->re;
  destination->im = source->im;
  const enum ZvxManyLevel level = zvxManyAvx512;
  return version->major == 6 && flag == 4 && zvxgManyLevel() <= (int32_t)level ? zvxOk
                                                                               : zvxErrLength;
}
