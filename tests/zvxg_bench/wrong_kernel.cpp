// Stands before two functions of the libraries, loaded first, and does what ZVXG_FAULT says wrong.
#include <dlfcn.h>

#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "zvxg_many.h"

int32_t zvxgDFTFwd_CToC_12_32fc(const Complex32* src, Complex32* dst, int32_t flag) noexcept {
  static const auto kernel = reinterpret_cast<decltype(&zvxgDFTFwd_CToC_12_32fc)>(
      dlsym(RTLD_NEXT, "zvxgDFTFwd_CToC_12_32fc"));
  static const std::string fault = std::getenv("ZVXG_FAULT");
  if (fault == "crash") std::raise(SIGSEGV);
  constexpr float kFactor = 1 + 1.0F / 1024;
  const bool isAligned = reinterpret_cast<std::uintptr_t>(dst) % 16 == 0;
  const bool isInPlace = src == dst;
  const int32_t status =
      kernel(src, dst, fault == "flag" && flag == zvxDivFwdByN ? zvxNoDiv : flag);
  if (status != zvxOk) {
    if (fault == "refusal" && dst) dst[0].re = 1;
    return fault == "status" ? zvxErrLength : status;
  }
  const bool isWrong =
      fault == "value" || (fault == "place" && !isAligned) || (fault == "in place" && isInPlace);
  for (int i = 0; isWrong && i < 12; ++i) dst[i].re *= kFactor, dst[i].im *= kFactor;
  if (fault == "beyond") dst[12].re = 0;
  return status;
}

// From the second transform on.
int32_t zvxgHartley_Many_32f(const float* src, ptrdiff_t srcStride, ptrdiff_t srcDist, float* dst,
                             ptrdiff_t dstStride, ptrdiff_t dstDist, int32_t len, int64_t howmany,
                             int32_t flag) noexcept {
  static const auto function =
      reinterpret_cast<decltype(&zvxgHartley_Many_32f)>(dlsym(RTLD_NEXT, "zvxgHartley_Many_32f"));
  const int32_t status =
      function(src, srcStride, srcDist, dst, dstStride, dstDist, len, howmany, flag);
  const bool isWrong = std::getenv("ZVXG_FAULT") == std::string("batch");
  if (isWrong && status == zvxOk && howmany > 1) dst[dstDist] = -dst[dstDist];
  return status;
}
