/** @file
 *  zvxg_many: many transforms of one length in one call, by the vector.
 *
 *  This header is the manual of libzvxgmany, the companion of libzvxg. It reads as C11 and as
 *  C++17. zvxg.h, which it includes, has the types, statuses and flags, and says what each
 *  transform computes.
 *
 *      // 1,000 spectra of 64 points, one behind the other
 *      static Complex32 x[1000 * 64], y[1000 * 64];
 *      int32_t status = zvxgDFTFwd_CToC_Many_32fc(x, 1, 64, y, 1, 64, 64, 1000, zvxNoDiv);
 *
 *  Link with what `pkg-config --libs zvxgmany` prints, -lzvxgmany -lzvxg -lzvxcore, or in CMake with
 *  zvxg::many. */
#ifndef ZVXG_MANY_H
#define ZVXG_MANY_H

#include <stddef.h>
#include <stdint.h>

#include "zvxg.h"

#ifdef __cplusplus
extern "C" {
#endif

/* ---- The contract of a call ------------------------------------------------------------------ */

/** @page many The call for many transforms
 *
 *  Every family of libzvxg has one function here, for all of its lengths, with `Many` where the name
 *  of a kernel has its length:
 *
 *      int32_t zvxg<transform>_Many_<element>(const S* src, ptrdiff_t srcStride, ptrdiff_t srcDist,
 *                                             D* dst, ptrdiff_t dstStride, ptrdiff_t dstDist,
 *                                             int32_t len, int64_t howmany, int32_t flag);
 *
 *  It does `howmany` transforms of `len` points. Strides and distances have the meaning, order and
 *  units that FFTW's advanced interface has made common; there is no plan:
 *
 *      element i of transform k is   src[k * srcDist + i * srcStride]
 *      result  i of transform k is   dst[k * dstDist + i * dstStride]
 *
 *  both counted in elements of the type of that array: a Complex32 counts as one. `len` is 2 to 64.
 *  The Walsh-Hadamard transforms have an order, 1 to 13, in its place, and a buffer as a last
 *  argument. The DCT-IV has neither `len` nor `flag`, and its plan as a last argument.
 *
 *  @section manyLayouts Layouts
 *
 *  For n transforms of N points from x to y, both complex:
 *
 *      srcStride srcDist  dstStride dstDist
 *          1       N          1       N      contiguous: one transform behind the other
 *          n       1          n       1      element-major: all first elements, all second ones ..
 *                                            (the columns of N rows of n, or n channels sampled
 *                                            together)
 *          1       N          n       1      from contiguous to element-major
 *          n       1          1       N      from element-major to contiguous
 *          1       hop        1       N      frames of a signal that begin `hop` apart, and overlap
 *                                            where that is less than N
 *          C       1          ..      ..     n columns of a matrix with rows of C elements
 *         -1       N          ..      ..     src points to the last element of the first transform:
 *                                            each is read backwards
 *          1       0          ..      ..     one source for all
 *
 *  A spectrogram of a recording x of float in frames of 64, 16 apart, with bin k of frame t at
 *  y[k * frames + t], so that a row is a frequency, as it is drawn:
 *
 *      zvxgDFTFwd_RToCCS_Many_32f(x, 1, 16, y, frames, 1, 64, frames, zvxDivFwdByN);
 *
 *  The last step of a channeliser of 32 channels, whose filters leave their sums of moment t side by
 *  side at x[t * 32]. Channel c goes to a run of its own, at y[c * moments]:
 *
 *      zvxgDFTInv_CToC_Many_32fc(x, 1, 32, y, moments, 1, 32, moments, zvxNoDiv);
 *
 *  A two-dimensional transform of a block of 8 rows of 8: the rows, and then the columns in place.
 *
 *      zvxgDFTFwd_CToC_Many_32fc(x, 1, 8, y, 1, 8, 8, 8, zvxDivBySqrtN);
 *      zvxgDFTFwd_CToC_Many_32fc(y, 8, 1, y, 8, 1, 8, 8, zvxDivBySqrtN);
 *
 *  @section manySpectra Half spectra
 *
 *  On the side of the samples an element is a real number. In CCS, an element of the spectrum is a
 *  bin, a Complex32 or Complex64; there are len/2 + 1 of them (rounded down), of which the functions
 *  write all and do not look at the imaginary parts that are zero. In Pack and Perm, an element is
 *  one of `len` real numbers, in the order that zvxg.h tells.
 *
 *  @section manyChecks Checks
 *
 *  In this order, all before the data are touched:
 *    1. `len`, `order` or `howmany` outside what is supported gives zvxErrLength: any `howmany` is
 *       supported that is not negative;
 *    2. a null `src` or `dst` while `howmany` is not 0 gives zvxErrNullPointer;
 *    3. a `flag` that is none of the four gives zvxErrScaleFlag.
 *  Strides and distances are not checked. A call that fails leaves `dst` as it was. With `howmany` 0
 *  nothing is touched, and the status is zvxOk if none of the above applies.
 *
 *  @section manyMemory Memory
 *
 *  Sources may overlap each other in any way: strides and distances of `src` may be 0 or negative.
 *  Those of `dst` may be negative, and must lead each result to a place of its own. `src` is only
 *  read. Of `dst` nothing but the results is written: gaps between them stay as they are, even while
 *  the call runs. Nothing before the first and behind the last element of either array is touched. A
 *  place of `dst` may hold an intermediate result until the call returns.
 *
 *  In place. `dst` may equal `src` if its strides and distances are equal in bytes, so that each
 *  transform replaces its own source. Between samples and CCS, both strides are 1 and the distances
 *  equal in bytes: the distance of the samples is twice that of the bins. Arrays that overlap
 *  otherwise are not supported.
 *
 *  Nothing of a call is kept. Arrays and plan are yours again when it returns.
 *
 *  Alignment. None is demanded, not even that of the float or double inside an element.
 *
 *  Nothing is allocated, but for a Walsh-Hadamard transform that needs a buffer and is given none:
 *  see zvxgWHT_Many_32f().
 *
 *  @section manyBits Bits
 *
 *  A transform has the bits that the function of its length in libzvxg gives, whatever `howmany`,
 *  its place among the others, strides, distances, alignment and processor. So a batch may be cut
 *  anywhere, and a program may replace a loop of single calls by one of these, or the reverse,
 *  without a change of any result.
 *
 *  @section manyThreads Threads
 *
 *  Every function may run at any time on any number of threads: none has state or locks, and none
 *  starts a thread. To use several, cut the batch:
 *
 *      zvxgDFTFwd_CToC_Many_32fc(x + first * 64, 1, 64, y + first * 64, 1, 64, 64, count, flag);
 *
 *  @section manySpeed Speed
 *
 *  In the caches, element-major on both sides is fastest for the Fourier and Hartley transforms, for
 *  Walsh-Hadamard transforms of up to 512 points, and for the DCT-IV of up to 64 points in single and
 *  32 in double precision: transforms that stand side by side fill the lanes of vectors as they are.
 *  Longer ones are fastest contiguous on both sides. A DCT-IV of up to 1,024 points takes up to half as
 *  long again if it is element-major, as it is transposed on the way and back, and a longer one two to
 *  four times as long. Every batch that leaves the caches is fastest contiguous, as the rows of an
 *  element-major array are far apart. Contiguous transforms are transposed on the way, in the
 *  first-level cache, or run side by side. A layout that is contiguous on one side and element-major
 *  on the other takes no pass of its own to transpose. Any other strides are gathered and scattered
 *  one element at a time. A batch that does not fill a vector, of 2 to 16 transforms, takes about as
 *  long as one that does. */

/** @defgroup many Many transforms in one call
 *
 *  The transforms of libzvxg, each `howmany` times. @ref many tells the arguments and the contract.
 *  @{ */

/* ---- Processors ------------------------------------------------------------------------------ */

/** What of the processor the functions use, beyond the AVX that they need. A level has what is below
 *  it. No result depends on it. */
enum ZvxManyLevel {
  zvxManyAvx = 1,   /**< vectors of 256 bits */
  zvxManyAvx512 = 2 /**< vectors of 512 bits: AVX-512 F, VL, DQ and BW */
};

/** The level in use: the highest that processor and system have, or a lower one that
 *  zvxgManyLimitLevel() asked for. */
ZVXG_API int32_t zvxgManyLevel(void) ZVXG_NOEXCEPT;

/** Has all later calls, on all threads, use at most this level, so that a test on one machine reaches
 *  the code of lesser ones. What the processor does not have is not used, whatever is asked for;
 *  INT32_MAX lifts the limit. Returns the level that is then in use. Calls that run meanwhile may
 *  use either. */
ZVXG_API int32_t zvxgManyLimitLevel(int32_t level) ZVXG_NOEXCEPT;

/* ---- Complex DFT ----------------------------------------------------------------------------- */

/**@{*/
/** zvxgDFTFwd_CToC_32fc(), zvxgDFTInv_CToC_32fc() and the same with 64fc, `howmany` times. */
ZVXG_API int32_t zvxgDFTFwd_CToC_Many_32fc(const Complex32* src, ptrdiff_t srcStride,
                                           ptrdiff_t srcDist, Complex32* dst, ptrdiff_t dstStride,
                                           ptrdiff_t dstDist, int32_t len, int64_t howmany,
                                           int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_Many_32fc(const Complex32* src, ptrdiff_t srcStride,
                                           ptrdiff_t srcDist, Complex32* dst, ptrdiff_t dstStride,
                                           ptrdiff_t dstDist, int32_t len, int64_t howmany,
                                           int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_Many_64fc(const Complex64* src, ptrdiff_t srcStride,
                                           ptrdiff_t srcDist, Complex64* dst, ptrdiff_t dstStride,
                                           ptrdiff_t dstDist, int32_t len, int64_t howmany,
                                           int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_Many_64fc(const Complex64* src, ptrdiff_t srcStride,
                                           ptrdiff_t srcDist, Complex64* dst, ptrdiff_t dstStride,
                                           ptrdiff_t dstDist, int32_t len, int64_t howmany,
                                           int32_t flag) ZVXG_NOEXCEPT;
/**@}*/

/* ---- Real DFT -------------------------------------------------------------------------------- */

/**@{*/
/** zvxgDFTFwd_RToCCS_32f() and its like, `howmany` times. The spectrum counts in bins. */
ZVXG_API int32_t zvxgDFTFwd_RToCCS_Many_32f(const float* src, ptrdiff_t srcStride,
                                            ptrdiff_t srcDist, Complex32* dst, ptrdiff_t dstStride,
                                            ptrdiff_t dstDist, int32_t len, int64_t howmany,
                                            int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_Many_32f(const Complex32* src, ptrdiff_t srcStride,
                                            ptrdiff_t srcDist, float* dst, ptrdiff_t dstStride,
                                            ptrdiff_t dstDist, int32_t len, int64_t howmany,
                                            int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_Many_64f(const double* src, ptrdiff_t srcStride,
                                            ptrdiff_t srcDist, Complex64* dst, ptrdiff_t dstStride,
                                            ptrdiff_t dstDist, int32_t len, int64_t howmany,
                                            int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_Many_64f(const Complex64* src, ptrdiff_t srcStride,
                                            ptrdiff_t srcDist, double* dst, ptrdiff_t dstStride,
                                            ptrdiff_t dstDist, int32_t len, int64_t howmany,
                                            int32_t flag) ZVXG_NOEXCEPT;
/**@}*/

/**@{*/
/** zvxgDFTFwd_RToPack_32f(), zvxgDFTFwd_RToPerm_32f() and their like, `howmany` times. Both sides
 *  count in real numbers. */
ZVXG_API int32_t zvxgDFTFwd_RToPack_Many_32f(const float* src, ptrdiff_t srcStride,
                                             ptrdiff_t srcDist, float* dst, ptrdiff_t dstStride,
                                             ptrdiff_t dstDist, int32_t len, int64_t howmany,
                                             int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_Many_32f(const float* src, ptrdiff_t srcStride,
                                             ptrdiff_t srcDist, float* dst, ptrdiff_t dstStride,
                                             ptrdiff_t dstDist, int32_t len, int64_t howmany,
                                             int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_Many_32f(const float* src, ptrdiff_t srcStride,
                                             ptrdiff_t srcDist, float* dst, ptrdiff_t dstStride,
                                             ptrdiff_t dstDist, int32_t len, int64_t howmany,
                                             int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_Many_32f(const float* src, ptrdiff_t srcStride,
                                             ptrdiff_t srcDist, float* dst, ptrdiff_t dstStride,
                                             ptrdiff_t dstDist, int32_t len, int64_t howmany,
                                             int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_Many_64f(const double* src, ptrdiff_t srcStride,
                                             ptrdiff_t srcDist, double* dst, ptrdiff_t dstStride,
                                             ptrdiff_t dstDist, int32_t len, int64_t howmany,
                                             int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_Many_64f(const double* src, ptrdiff_t srcStride,
                                             ptrdiff_t srcDist, double* dst, ptrdiff_t dstStride,
                                             ptrdiff_t dstDist, int32_t len, int64_t howmany,
                                             int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_Many_64f(const double* src, ptrdiff_t srcStride,
                                             ptrdiff_t srcDist, double* dst, ptrdiff_t dstStride,
                                             ptrdiff_t dstDist, int32_t len, int64_t howmany,
                                             int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_Many_64f(const double* src, ptrdiff_t srcStride,
                                             ptrdiff_t srcDist, double* dst, ptrdiff_t dstStride,
                                             ptrdiff_t dstDist, int32_t len, int64_t howmany,
                                             int32_t flag) ZVXG_NOEXCEPT;
/**@}*/

/* ---- Hartley transform ----------------------------------------------------------------------- */

/**@{*/
/** zvxgHartley_32f() and zvxgHartley_64f(), `howmany` times. */
ZVXG_API int32_t zvxgHartley_Many_32f(const float* src, ptrdiff_t srcStride, ptrdiff_t srcDist,
                                      float* dst, ptrdiff_t dstStride, ptrdiff_t dstDist,
                                      int32_t len, int64_t howmany, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_Many_64f(const double* src, ptrdiff_t srcStride, ptrdiff_t srcDist,
                                      double* dst, ptrdiff_t dstStride, ptrdiff_t dstDist,
                                      int32_t len, int64_t howmany, int32_t flag) ZVXG_NOEXCEPT;
/**@}*/

/* ---- Walsh-Hadamard transform ---------------------------------------------------------------- */

/**@{*/
/** zvxgWHT_32f() and zvxgWHT_64f(), `howmany` times, of 2^`order` points.
 *
 *  `buffer` is that of one transform: zvxgWHTGetBufferSize_32f() and zvxgWHTGetBufferSize_64f()
 *  tell its bytes; on a 16-byte boundary, overlapping neither array. Orders 1 to 7 need none. If it
 *  is null and the call needs it, as many bytes come from zvxMalloc() once for all transforms and go
 *  back to zvxFree(); if there is no memory the status is zvxErrNullPointer, and `dst` is as it was.
 *  Calls on several threads need a buffer each, or null. */
ZVXG_API int32_t zvxgWHT_Many_32f(const float* src, ptrdiff_t srcStride, ptrdiff_t srcDist,
                                  float* dst, ptrdiff_t dstStride, ptrdiff_t dstDist, int32_t order,
                                  int64_t howmany, int32_t flag, float* buffer) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgWHT_Many_64f(const double* src, ptrdiff_t srcStride, ptrdiff_t srcDist,
                                  double* dst, ptrdiff_t dstStride, ptrdiff_t dstDist,
                                  int32_t order, int64_t howmany, int32_t flag,
                                  double* buffer) ZVXG_NOEXCEPT;
/**@}*/

/* ---- DCT-IV ---------------------------------------------------------------------------------- */

/**@{*/
/** zvxgDCT4_32f() and zvxgDCT4_64f(), `howmany` times, by a plan of libzvxg. A negative `howmany`
 *  gives zvxErrLength; an argument that is null while `howmany` is not 0 gives zvxErrNullPointer; a
 *  plan that was not completed gives zvxErrPlanState. With `howmany` 0 the plan is not looked at.
 *
 *  As for the single call, a plan of up to 64 points in single and 32 in double precision may be
 *  shared by threads, and a longer one runs on one thread at a time. */
ZVXG_API int32_t zvxgDCT4_Many_32f(const float* src, ptrdiff_t srcStride, ptrdiff_t srcDist,
                                   float* dst, ptrdiff_t dstStride, ptrdiff_t dstDist,
                                   int64_t howmany, const Dct4Spec* spec) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDCT4_Many_64f(const double* src, ptrdiff_t srcStride, ptrdiff_t srcDist,
                                   double* dst, ptrdiff_t dstStride, ptrdiff_t dstDist,
                                   int64_t howmany, const Dct4Spec* spec) ZVXG_NOEXCEPT;
/**@}*/

/** @} */

#ifdef __cplusplus
}
#endif

#endif /* ZVXG_MANY_H */
