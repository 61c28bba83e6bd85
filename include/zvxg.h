/** @file
 *  zvxg: short signal transforms of fixed lengths, and plans for the DCT-IV of powers of two, in
 *  single and double precision, for x86-64 with AVX.
 *
 *  This header is the manual of the library. It compiles as C11 and as C++17. It has the types, the
 *  status codes, the scale flags and, stated once for all kernels, the contract of a call. The
 *  prototypes of most kernels are in zvxg_kernels.h, which this header includes at its end.
 *
 *      Complex32 x[12], y[12];
 *      int32_t status = zvxgDFTFwd_CToC_12_32fc(x, y, zvxNoDiv);
 *
 *  Link with -lzvxg -lzvxcore. The second has the default zvxMalloc() and zvxFree(), which
 *  libzvxg.so loads. If a program defines these two itself, the library calls the program's
 *  instead, and with the archive libzvxg.a the second library is not needed. On Windows the two
 *  libraries are DLLs; see ZVXG_API and zvxMalloc().
 */
#ifndef ZVXG_H
#define ZVXG_H

#include <stdint.h>

/** Marks what the libraries export. On Windows that is imported from DLLs, unless ZVXG_STATIC is
 *  defined before this header: for a program that is linked with the archives, or a DLL that has a
 *  zvxMalloc() and zvxFree() of its own. */
#if !defined _WIN32
#define ZVXG_API __attribute__((visibility("default")))
#elif defined ZVXG_STATIC
#define ZVXG_API
#else
#define ZVXG_API __declspec(dllimport)
#endif

/** `noexcept` in C++, nothing in C. */
#ifdef __cplusplus
#define ZVXG_NOEXCEPT noexcept
#else
#define ZVXG_NOEXCEPT
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Types ---------------------------------------------------------------------------------- */

/** A complex number, real part first, as in `float _Complex` and `std::complex<float>`. In an array
 *  real and imaginary parts alternate, without gaps. */
typedef struct Complex32 {
  float re; /**< real part */
  float im; /**< imaginary part */
} Complex32;

/** The same in double precision. */
typedef struct Complex64 {
  double re; /**< real part */
  double im; /**< imaginary part */
} Complex64;

/** The status that every function but zvxgenGetLibVersion() returns, as an int32_t. */
enum ZvxStatus {
  zvxOk = 0,              /**< the transform was done */
  zvxErrPlanState = -5,   /**< the plan of a DCT-IV is not ready to be run */
  zvxErrLength = -6,      /**< the function does not support this length or order */
  zvxErrNullPointer = -8, /**< source or destination is null */
  zvxErrScaleFlag = -16   /**< the flag is none of the four of ZvxScaleFlag */
};

/** The factor by which a transform multiplies its result. One of four values, not a bit mask: a
 *  combination such as `zvxDivFwdByN | zvxDivInvByN` is rejected.
 *
 *                        forward      inverse      undirected
 *       zvxDivFwdByN     1/N          1            1/N
 *       zvxDivInvByN     1            1/N          1/N
 *       zvxDivBySqrtN    1/sqrt(N)    1/sqrt(N)    1/sqrt(N)
 *       zvxNoDiv         1            1            1
 *
 *  If you pass the same flag to both directions, the inverse undoes the forward transform, except
 *  with zvxNoDiv, which leaves the data multiplied by N. N is the number of complex or real
 *  elements, whichever the transform takes. An undirected transform is its own inverse up to the
 *  factor. */
enum ZvxScaleFlag {
  zvxDivFwdByN = 1,  /**< forward by 1/N */
  zvxDivInvByN = 2,  /**< inverse by 1/N */
  zvxDivBySqrtN = 4, /**< each by 1/sqrt(N) */
  zvxNoDiv = 8       /**< neither */
};

/* ---- The contract of a kernel call ----------------------------------------------------------- */

/** @page frame Calling a kernel
 *
 *  A kernel is the function for one transform of a fixed length N. It has the form
 *
 *      int32_t zvxg<transform>_<N>_<element>(const T* src, T* dst, int32_t flag);
 *
 *  `<element>` is 32fc for Complex32, 64fc for Complex64, 32f for float and 64f for double. The
 *  Walsh-Hadamard transform has its order in place of N and a further argument, a work buffer.
 *
 *  Checks. In this order, all before the data are touched:
 *    1. a null `src` or `dst` gives zvxErrNullPointer, whatever the flag is;
 *    2. a `flag` that is none of the four gives zvxErrScaleFlag.
 *  There is no other failure. A call that fails leaves `dst` as it was.
 *
 *  Memory. The caller owns both arrays. `src` is only read and `dst` only written, and nothing
 *  outside their elements is touched. `dst` may equal `src`; arrays that overlap in part are not
 *  supported. No setup is needed before the first call, and nothing is kept between calls. Nothing
 *  is allocated, except by a Walsh-Hadamard transform that needs a buffer and gets none.
 *
 *  Alignment. None is required, not even that of the float or double inside an element. Calls are
 *  fastest if both arrays start on a 32-byte boundary; for many kernels 16 bytes suffice.
 *
 *  Arithmetic. Products and sums are rounded one by one, never fused. At the end the result is
 *  multiplied by the factor of the flag, even if that factor is 1. The factor is a constant: 1/N
 *  rounded to the precision of the data, or 1 divided by the double nearest to sqrt(N), the
 *  quotient rounded likewise. The result depends, bit for bit, only on the source and the flag: not
 *  on alignment, nor on whether `dst` equals `src`. NaN and infinity follow the rules of IEEE
 *  arithmetic. The floating-point control word is neither changed nor read, so the caller's
 *  rounding and flush modes apply.
 *
 *  Threads. Any kernel may run at any time on any number of threads: none has state or locks. */

/** @page entries Calling by length
 *
 *  For lengths known only at run time, each family has a by-length entry: a function that takes the
 *  length as an argument before the flag and calls the kernel of that length.
 *
 *      int32_t zvxg<transform>_<element>(const T* src, T* dst, int32_t len, int32_t flag);
 *
 *  The length is checked first: one that the family does not have gives zvxErrLength, whatever the
 *  pointers and the flag are. Everything else, including all other checks, is done by the
 *  kernel. */

/* ---- Version -------------------------------------------------------------------------------- */

/** The version of the library. */
typedef struct VersionRecord {
  int32_t major;           /**< major version */
  int32_t minor;           /**< minor version */
  int32_t buildSeries;     /**< build series, the number after "build" in versionText */
  int32_t buildNumber;     /**< running number of the build; not the last part of versionText */
  char cpuTag[4];          /**< variant, padded with zeros: "e9" (AVX), "v3" or "v4" (AVX-512) */
  const char* fileName;    /**< the library's own file name */
  const char* versionText; /**< version for display */
  const char* buildDate;   /**< "Mmm dd yyyy" */
} VersionRecord;

/** The record of this library: constant, never null, the same address in every call, valid as long
 *  as the library stays loaded. */
ZVXG_API const VersionRecord* zvxgenGetLibVersion(void) ZVXG_NOEXCEPT;

/* ---- Memory --------------------------------------------------------------------------------- */

/**@{*/
/** The two functions through which the library allocates and frees memory. It imports them, so a
 *  program may define its own; the default ones in libzvxcore align to 64 bytes. On Windows a
 *  DLL takes its imports from another file and not from the program: to replace the functions, put
 *  a zvxcore.dll that exports your own in the place of ours.
 *
 *  zvxMalloc() returns `bytes` bytes on a boundary of at least 16 bytes, or null if there is no
 *  memory (the default one also for a negative count). zvxFree() takes what zvxMalloc() returned,
 *  including null. Both must be thread-safe if functions that allocate run on several threads. */
ZVXG_API void* zvxMalloc(int32_t bytes) ZVXG_NOEXCEPT;
ZVXG_API void zvxFree(void* block) ZVXG_NOEXCEPT;
/**@}*/

/* ---- Complex DFT ---------------------------------------------------------------------------- */

/** @defgroup complex Complex DFT
 *
 *  `zvxgDFTFwd_CToC_<N>_32fc`, `zvxgDFTInv_CToC_<N>_32fc` and the same with 64fc.
 *
 *      forward   X[k] = s * sum over n = 0 .. N-1 of x[n] * exp(-2 pi i k n / N)
 *      inverse   X[k] = s * sum over n = 0 .. N-1 of x[n] * exp(+2 pi i k n / N)
 *
 *  for k = 0 .. N-1, where x is the source, X the destination and s the factor of the flag. Source
 *  and destination are both in natural order; X[0] is the zero frequency. The inverse is the
 *  forward transform with real and imaginary parts exchanged, in the source and in the result.
 *
 *  Accuracy, as the L2 norm of the error divided by that of the result, for normally distributed
 *  data: at most 1.65e-7 in single and 3.8e-16 in double precision, at every length.
 *  @{ */

/** @name By length
 *  @{ */
/** By length: the kernel of `len` points, 2 to 64. */
ZVXG_API int32_t zvxgDFTFwd_CToC_32fc(const Complex32* src, Complex32* dst, int32_t len,
                                      int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_32fc(const Complex32* src, Complex32* dst, int32_t len,
                                      int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_64fc(const Complex64* src, Complex64* dst, int32_t len,
                                      int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_64fc(const Complex64* src, Complex64* dst, int32_t len,
                                      int32_t flag) ZVXG_NOEXCEPT;
/**@}*/

/** @} */

/* ---- Real DFT ------------------------------------------------------------------------------- */

/** @defgroup real Real DFT
 *
 *  `zvxgDFTFwd_RToCCS_<N>_32f`, `zvxgDFTInv_CCSToR_<N>_32f`, the same with Pack and with Perm in
 *  place of CCS, and all of them with 64f.
 *
 *  The spectrum X[k] = R[k] + i I[k] of N real samples has X[N-k] = conj(X[k]). So the bins
 *  k = 0 .. h, where h is N/2 rounded down, describe all of it. I[0] is zero, and for even N so is
 *  I[N/2].
 *
 *      forward   X[k] = s * sum over n = 0 .. N-1 of x[n] * exp(-2 pi i k n / N),  k = 0 .. h
 *      inverse   x[n] = s * sum over k = 0 .. N-1 of X[k] * exp(+2 pi i k n / N),  n = 0 .. N-1
 *
 *  where s is the factor of the flag. The name says how the half spectrum is stored:
 *
 *      CCS    all bins as pairs: R[k] in element 2k, I[k] in 2k+1. N+2 elements for even N, N+1 for
 *             odd. This is also what numpy.fft.rfft returns and FFTW's r2c plans write.
 *      Pack   N elements: R[0], then the pairs R[k], I[k], and for even N R[N/2] at the end.
 *      Perm   N elements: for even N R[0], R[N/2], then the pairs R[k], I[k] from element 2 on; for
 *             odd N the same as Pack.
 *
 *      N   CCS                          Pack                    Perm
 *      2   R0 0 R1 0                    R0 R1                   R0 R1
 *      3   R0 0 R1 I1                   R0 R1 I1                R0 R1 I1
 *      4   R0 0 R1 I1 R2 0              R0 R1 I1 R2             R0 R2 R1 I1
 *      5   R0 0 R1 I1 R2 I2             R0 R1 I1 R2 I2          R0 R1 I1 R2 I2
 *      6   R0 0 R1 I1 R2 I2 R3 0        R0 R1 I1 R2 I2 R3       R0 R3 R1 I1 R2 I2
 *
 *  A forward kernel reads N elements and writes exactly those of its layout; the zeros of CCS are
 *  always +0.0. An inverse kernel writes N elements and reads those of its layout, except the
 *  elements 1 and N+1 of CCS. These are taken as zero and may have any value, even NaN. If source
 *  and destination are one array, it needs the size of the layout; the inverse of CCS then leaves
 *  the elements after the first N unchanged. The layouts differ in nothing else: for one length
 *  their values are equal bit for bit.
 *
 *  In single precision, sums and differences are rounded to single. An expression with a constant
 *  factor is evaluated in double and rounded once; if an output of the forward transform is such an
 *  expression, it is multiplied by the factor of the flag before that rounding. The inverse first
 *  doubles the parts of the bins between 0 and N/2, in the precision of the data: those above half
 *  the largest finite number become infinite, whatever the flag.
 *
 *  Accuracy, measured as for the complex transform but as root mean square over the lengths 2 to
 *  64: at most 7.9e-8 in single and 1.8e-16 in double precision.
 *  @{ */

/** @name By length
 *  @{ */
/** By length: the kernel of `len` points, 2 to 64. */
ZVXG_API int32_t zvxgDFTFwd_RToCCS_32f(const float* src, float* dst, int32_t len,
                                       int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_32f(const float* src, float* dst, int32_t len,
                                        int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_32f(const float* src, float* dst, int32_t len,
                                        int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_32f(const float* src, float* dst, int32_t len,
                                       int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_32f(const float* src, float* dst, int32_t len,
                                        int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_32f(const float* src, float* dst, int32_t len,
                                        int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_64f(const double* src, double* dst, int32_t len,
                                       int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_64f(const double* src, double* dst, int32_t len,
                                        int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_64f(const double* src, double* dst, int32_t len,
                                        int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_64f(const double* src, double* dst, int32_t len,
                                       int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_64f(const double* src, double* dst, int32_t len,
                                        int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_64f(const double* src, double* dst, int32_t len,
                                        int32_t flag) ZVXG_NOEXCEPT;
/**@}*/

/** @} */

/* ---- Hartley transform ---------------------------------------------------------------------- */

/** @defgroup hartley Hartley transform
 *
 *  `zvxgHartley_<N>_32f` and `zvxgHartley_<N>_64f`.
 *
 *      H[k] = s * sum over n = 0 .. N-1 of x[n] * (cos(2 pi k n / N) + sin(2 pi k n / N))
 *
 *  for k = 0 .. N-1, in natural order. In terms of the forward DFT, H[k] = R[k] - I[k] and
 *  H[N-k] = R[k] + I[k]. The transform has no direction: zvxDivFwdByN and zvxDivInvByN both divide
 *  by N. Two calls give back the data, up to rounding, if both have zvxDivBySqrtN, or if one has
 *  zvxNoDiv and the other divides by N; two calls with zvxDivFwdByN give the data divided by N.
 *
 *  Precision and accuracy are those of the real DFT, but the factor of the flag is always a
 *  separate product, the last one.
 *  @{ */

/** @name By length
 *  @{ */
/** By length: the kernel of `len` points, 2 to 64. */
ZVXG_API int32_t zvxgHartley_32f(const float* src, float* dst, int32_t len,
                                 int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_64f(const double* src, double* dst, int32_t len,
                                 int32_t flag) ZVXG_NOEXCEPT;
/**@}*/

/** @} */

/* ---- Walsh-Hadamard ------------------------------------------------------------------------- */

/** @defgroup wht Walsh-Hadamard transform
 *
 *  `zvxgWHT_<order>_32f` and `zvxgWHT_<order>_64f`, orders 1 to 13, N = 2 to the order.
 *
 *      y[k] = s * sum over i = 0 .. N-1 of (-1)^popcount(i & k) * x[i]
 *
 *  for k = 0 .. N-1, where x is the source, y the destination, s the factor of the flag and
 *  popcount the number of set bits. Both are in natural order, that of the Hadamard matrix built by
 *  Sylvester's doubling: neither bit-reversed nor ordered by sign changes. y[1] is the sum of the
 *  numbers with alternating signs, y[N/2] the sum of the first half minus that of the second.
 *
 *  The transform has no direction: zvxDivFwdByN and zvxDivInvByN both divide by N. Applied twice
 *  with zvxDivBySqrtN it is the identity, up to rounding.
 *
 *  The result is that of the fast transform with radix 2, bit for bit: for h = 1, 2, 4 .. N/2 each
 *  pair a = x[i], b = x[i + h], where i has bit h clear, becomes a + b, a - b, every result rounded
 *  to the precision of the data. The multiplication by s comes last.
 *
 *  Buffer. Orders 8 to 13 work in `buffer`; zvxgWHTGetBufferSize_32f() and
 *  zvxgWHTGetBufferSize_64f() give its size in bytes. Orders 1 to 7 need no buffer: its size is 0
 *  and it is ignored. A buffer must start on a 16-byte boundary, which is not checked, and must not
 *  overlap source or destination. Its contents before and after a call mean nothing. It may be
 *  null: the call then, after its checks, gets as many bytes from zvxMalloc() and returns them to
 *  zvxFree(). The result of zvxMalloc() is not checked, so pass a buffer if your program can run
 *  out of memory. Also pass one if you call often, because an allocation takes as long as a
 *  transform of order 8. The longest transforms take up to half as long again if buffer and
 *  destination start at offsets into a 4096-byte page that differ by less than a cache line.
 *
 *  Threads. Calls may run at once if each has a buffer of its own, or null. Checks, alignment of
 *  source and destination, and in-place use are as for every kernel.
 *  @{ */

/** @name Kernels of zvxgWHT_32f() and zvxgWHT_64f()
 *  @{ */
/** The transform of the order in the name. */
ZVXG_API int32_t zvxgWHT_1_32f(const float* src, float* dst, int32_t flag,
                               uint8_t* buffer) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgWHT_2_32f(const float* src, float* dst, int32_t flag,
                               uint8_t* buffer) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgWHT_3_32f(const float* src, float* dst, int32_t flag,
                               uint8_t* buffer) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgWHT_4_32f(const float* src, float* dst, int32_t flag,
                               uint8_t* buffer) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgWHT_5_32f(const float* src, float* dst, int32_t flag,
                               uint8_t* buffer) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgWHT_6_32f(const float* src, float* dst, int32_t flag,
                               uint8_t* buffer) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgWHT_7_32f(const float* src, float* dst, int32_t flag,
                               uint8_t* buffer) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgWHT_8_32f(const float* src, float* dst, int32_t flag,
                               uint8_t* buffer) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgWHT_9_32f(const float* src, float* dst, int32_t flag,
                               uint8_t* buffer) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgWHT_10_32f(const float* src, float* dst, int32_t flag,
                                uint8_t* buffer) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgWHT_11_32f(const float* src, float* dst, int32_t flag,
                                uint8_t* buffer) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgWHT_12_32f(const float* src, float* dst, int32_t flag,
                                uint8_t* buffer) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgWHT_13_32f(const float* src, float* dst, int32_t flag,
                                uint8_t* buffer) ZVXG_NOEXCEPT;

ZVXG_API int32_t zvxgWHT_1_64f(const double* src, double* dst, int32_t flag,
                               uint8_t* buffer) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgWHT_2_64f(const double* src, double* dst, int32_t flag,
                               uint8_t* buffer) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgWHT_3_64f(const double* src, double* dst, int32_t flag,
                               uint8_t* buffer) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgWHT_4_64f(const double* src, double* dst, int32_t flag,
                               uint8_t* buffer) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgWHT_5_64f(const double* src, double* dst, int32_t flag,
                               uint8_t* buffer) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgWHT_6_64f(const double* src, double* dst, int32_t flag,
                               uint8_t* buffer) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgWHT_7_64f(const double* src, double* dst, int32_t flag,
                               uint8_t* buffer) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgWHT_8_64f(const double* src, double* dst, int32_t flag,
                               uint8_t* buffer) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgWHT_9_64f(const double* src, double* dst, int32_t flag,
                               uint8_t* buffer) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgWHT_10_64f(const double* src, double* dst, int32_t flag,
                                uint8_t* buffer) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgWHT_11_64f(const double* src, double* dst, int32_t flag,
                                uint8_t* buffer) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgWHT_12_64f(const double* src, double* dst, int32_t flag,
                                uint8_t* buffer) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgWHT_13_64f(const double* src, double* dst, int32_t flag,
                                uint8_t* buffer) ZVXG_NOEXCEPT;
/**@}*/

/**@{*/
/** By order: the kernel of `order`, 1 to 13. Any other gives zvxErrLength before all other
 *  checks. */
ZVXG_API int32_t zvxgWHT_32f(const float* src, float* dst, int32_t order, int32_t flag,
                             uint8_t* buffer) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgWHT_64f(const double* src, double* dst, int32_t order, int32_t flag,
                             uint8_t* buffer) ZVXG_NOEXCEPT;
/**@}*/

/**@{*/
/** Stores the size of the buffer of `order`, in bytes, in `*size`. `size` is not checked for null.
 *  An order outside 1 to 13 gives zvxErrLength and stores nothing.
 *
 *       order      1 to 7       8       9      10      11      12      13
 *       single          0    1024    2048    4096    8192   18432   34816
 *       double          0    2048    4096    8192   18432   34816   73728 */
ZVXG_API int32_t zvxgWHTGetBufferSize_32f(int32_t order, uint32_t* size) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgWHTGetBufferSize_64f(int32_t order, uint32_t* size) ZVXG_NOEXCEPT;
/**@}*/

/** @} */

/* ---- DCT-IV --------------------------------------------------------------------------------- */

/** @defgroup dct4 DCT-IV
 *
 *  Plans for the type-IV discrete cosine transform of powers of two.
 *
 *      X[k] = sum over n = 0 .. N-1 of x[n] * cos(pi/N * (n + 1/2) * (k + 1/2)),   k = 0 .. N-1
 *
 *  There is no scale factor and no flag. The transform is its own inverse up to a factor: applied
 *  twice it gives N/2 times the source.
 *
 *  Unlike the transforms of fixed length it needs a plan, a Dct4Spec, made once for a length and a
 *  precision. The whole plan is in one block of memory:
 *
 *      uint32_t size;
 *      Dct4Spec* spec;
 *      int32_t status = zvxgDCT4GetSize_32f(4096, &size);
 *      void* block = status == zvxOk ? aligned_alloc(64, (size + 63) / 64 * 64) : NULL;
 *      if (status == zvxOk) status = zvxgDCT4Init_32f(&spec, 4096, block);
 *      if (status == zvxOk) status = zvxgDCT4_32f(x, y, spec);   // as often as you like
 *      free(block);                                              // and the plan is gone
 *
 *  Or let zvxgDCT4InitAlloc_32f() get the block from zvxMalloc() and zvxgDCT4Free_32f() return it
 *  to zvxFree(). For a block of your own, as above, do not call zvxgDCT4Free_32f(), because it
 *  would pass the block to zvxFree(). The functions that end in _64f are the same for double. A
 *  plan of one precision must not be passed to the functions of the other; this is not checked.
 *
 *  Lengths. Single precision takes 2, 4, ... 2^26, double precision 2, 4, ... 2^25. Other lengths
 *  are refused with zvxErrLength, except these, which are accepted although they are useless:
 *    - 2^k + 1 for k = 7 .. 26 in single and k = 5 .. 25 in double precision. The plan is that of
 *      2^k and the call returns zvxOk, but the result is not a DCT-IV, and some elements of `dst`
 *      stay as they were: two of each N / r (rounded down), where r is the radix of the plan. They
 *      are those at 8 and 9 modulo 16 for N = 129 and 257 in single, and those at 4 and 5 modulo 8
 *      for 33 and 65 in double precision. Nothing outside `src` and `dst` is touched.
 *    - 2^30 and 2^30 + 1, and in double precision also 2^29 and 2^29 + 1. Their size wraps around
 *      to one that is too small: do not make such a plan, because it would overrun its block.
 *
 *  The block. Any address will do, but use a multiple of 64, as zvxMalloc() returns it: then all
 *  long stores fill whole cache lines, and the reported size always suffices. (If the address is
 *  not a multiple of 32 and has bit 31 set, a plan whose reported size is 256 bytes can extend up
 *  to 31 bytes beyond them.) A plan takes 256 bytes up to N = 64 in single and N = 32 in double
 *  precision, and above that two to six times the bytes of an array. It contains pointers into its
 *  block, so it cannot be copied or moved.
 *
 *  Memory and arithmetic of a call are as for the fixed lengths: `src` is only read, `dst` only
 *  written, they may be equal and have any alignment, products and sums are rounded one by one, and
 *  the result depends, bit for bit, only on the source and the length. The tables of a plan come
 *  from the sine and cosine of the math library, so last bits may differ between systems whose math
 *  libraries differ.
 *
 *  Threads. A plan of 256 bytes is only read when it is run and may be shared. A longer plan holds
 *  workspaces that a call writes to: run it on one thread at a time, and make one plan per thread.
 *  Different plans may be made, run and freed at the same time.
 *
 *  Accuracy, as the L2 norm of the error divided by that of the result, for normally distributed
 *  data: at most 1.8e-7 in single and 3.5e-16 in double precision up to N = 65536; above that it
 *  grows like the square root of log N.
 *  @{ */

/** A plan. Its layout is private to the library. */
typedef struct Dct4Spec Dct4Spec;

/** @name The size of a plan
 *  @{ */
/** Stores the size in bytes of the block that a plan of this length needs, or returns zvxErrLength
 *  and stores nothing. `size` must not be null. */
ZVXG_API int32_t zvxgDCT4GetSize_32f(int32_t length, uint32_t* size) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDCT4GetSize_64f(int32_t length, uint32_t* size) ZVXG_NOEXCEPT;
/**@}*/

/**@{*/
/** Makes a plan in a block of the size that zvxgDCT4GetSize_32f() reports, and stores its address.
 *  Returns zvxErrNullPointer if an argument is null, and zvxErrLength for a length that has no
 *  plan; the contents of the block are then undefined. A failed call does not write `*spec`. The
 *  block is trusted to be large enough. Call zvxgDCT4GetSize_32f() first: only that refuses lengths
 *  that are too large. */
ZVXG_API int32_t zvxgDCT4Init_32f(Dct4Spec** spec, int32_t length, void* block) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDCT4Init_64f(Dct4Spec** spec, int32_t length, void* block) ZVXG_NOEXCEPT;
/**@}*/

/**@{*/
/** The same in a block from zvxMalloc(). Returns zvxErrNullPointer also if there is no memory. */
ZVXG_API int32_t zvxgDCT4InitAlloc_32f(Dct4Spec** spec, int32_t length) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDCT4InitAlloc_64f(Dct4Spec** spec, int32_t length) ZVXG_NOEXCEPT;
/**@}*/

/**@{*/
/** Passes the block of a plan to zvxFree(). The plan is then gone. Returns zvxErrNullPointer for
 *  null. */
ZVXG_API int32_t zvxgDCT4Free_32f(Dct4Spec* spec) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDCT4Free_64f(Dct4Spec* spec) ZVXG_NOEXCEPT;
/**@}*/

/**@{*/
/** Transforms `src` into `dst`, each as long as the plan says. Returns zvxErrNullPointer if an
 *  argument is null and zvxErrPlanState if the plan is not complete; `dst` is then as it was. */
ZVXG_API int32_t zvxgDCT4_32f(const float* src, float* dst, const Dct4Spec* spec) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDCT4_64f(const double* src, double* dst, const Dct4Spec* spec) ZVXG_NOEXCEPT;
/**@}*/

/** @} */

#include "zvxg_kernels.h"

#ifdef __cplusplus
}
#endif

#endif /* ZVXG_H */
