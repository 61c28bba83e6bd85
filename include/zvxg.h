/** @file
 *  zvxg: short signal transforms of fixed length, and a DCT-IV of any power of two by plans, in
 *  single and double precision, for x86-64 with AVX.
 *
 *  This header is the manual of the library. It reads as C11 and as C++17, and has the types, the
 *  status codes, the scale flags and, told once for all kernels, the contract of a call. The
 *  prototypes of most kernels are in zvxg_kernels.h, which this header includes at its end.
 *
 *      Complex32 x[12], y[12];
 *      int32_t status = zvxgDFTFwd_CToC_12_32fc(x, y, zvxNoDiv);
 *
 *  Link with -lzvxg -lzvxcore. The second holds the default zvxMalloc and zvxFree, which libzvxg.so
 *  loads; a program that defines these two itself has its own called instead, and can do without the
 *  second where it links the archive libzvxg.a.
 */
#ifndef ZVXG_H
#define ZVXG_H

#include <stdint.h>

/** Marks what the library exports. */
#define ZVXG_API __attribute__((visibility("default")))

/** `noexcept` in C++. */
#ifdef __cplusplus
#define ZVXG_NOEXCEPT noexcept
#else
#define ZVXG_NOEXCEPT
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Types ---------------------------------------------------------------------------------- */

/** One complex element, real part first; the layout of `float _Complex` and `std::complex<float>`.
 *  An array of N elements is contiguous: real and imaginary parts alternate, without gaps. */
typedef struct Complex32 {
  float re; /**< real part */
  float im; /**< imaginary part */
} Complex32;

/** The same in double precision. */
typedef struct Complex64 {
  double re; /**< real part */
  double im; /**< imaginary part */
} Complex64;

/** What every function but zvxgenGetLibVersion() returns, as an int32_t. */
enum ZvxStatus {
  zvxOk = 0,              /**< the transform was done */
  zvxErrPlanState = -5,   /**< a plan of the DCT-IV is in no state to be run */
  zvxErrLength = -6,      /**< length or order outside what the function supports */
  zvxErrNullPointer = -8, /**< source or destination is null */
  zvxErrScaleFlag = -16   /**< the flag is none of the four of ZvxScaleFlag */
};

/** By what a transform multiplies its result. One of four values, not a bit mask: a combination
 *  such as `zvxDivFwdByN | zvxDivInvByN` is rejected.
 *
 *                        forward      inverse      undirected
 *       zvxDivFwdByN     1/N          1            1/N
 *       zvxDivInvByN     1            1/N          1/N
 *       zvxDivBySqrtN    1/sqrt(N)    1/sqrt(N)    1/sqrt(N)
 *       zvxNoDiv         1            1            1
 *
 *  So any flag but the last, passed to both directions, makes the inverse undo the forward
 *  transform; zvxNoDiv in both leaves the data multiplied by N. N counts complex or real elements,
 *  whichever the transform takes. An undirected transform is its own inverse up to the factor. */
enum ZvxScaleFlag {
  zvxDivFwdByN = 1,  /**< forward by 1/N */
  zvxDivInvByN = 2,  /**< inverse by 1/N */
  zvxDivBySqrtN = 4, /**< each by 1/sqrt(N) */
  zvxNoDiv = 8       /**< neither */
};

/* ---- The contract of a kernel call ----------------------------------------------------------- */

/** @page frame The call of a kernel
 *
 *  Every transform of a fixed length N is one function of the form
 *
 *      int32_t zvxg<transform>_<N>_<element>(const T* src, T* dst, int32_t flag);
 *
 *  `<element>` is 32fc for Complex32, 64fc for Complex64, 32f for float and 64f for double. The
 *  Walsh-Hadamard transform has its order in place of N and one argument more, a work buffer.
 *
 *  Checks. In this order, all before the data are touched:
 *    1. a null `src` or `dst` gives zvxErrNullPointer, whatever the flag is;
 *    2. a `flag` that is none of the four gives zvxErrScaleFlag.
 *  There is no other failure. A call that fails leaves `dst` as it was.
 *
 *  Memory. The caller owns both arrays. `src` is only read and `dst` only written, and nothing
 *  outside their elements is touched. `dst` may equal `src`; arrays that overlap in part are not
 *  supported. Nothing is kept between calls or needs to be set up before the first one. Nothing is
 *  allocated, but for a Walsh-Hadamard transform that needs a buffer and is given none.
 *
 *  Alignment. None is demanded, not even that of the float or double inside an element. Arrays that
 *  both start on a 32-byte boundary are served fastest, many kernels need only 16 bytes for that.
 *
 *  Arithmetic. Products and sums are rounded one by one, never fused. The result is multiplied by
 *  the factor of the flag at the end, also when that factor is 1. The factor is a
 *  constant: 1/N rounded to the precision of the data, or 1 divided by the double nearest to
 *  sqrt(N), the quotient rounded likewise. The result depends on the source and the flag alone,
 *  bit for bit: not on alignment, nor on whether `dst` equals `src`.
 *  NaN and infinity pass through by the ordinary rules of IEEE arithmetic. The floating-point
 *  control word is neither changed nor looked at, so a caller's rounding or flush mode applies.
 *
 *  Threads. Every kernel may run at any time on any number of threads: none has state or locks. */

/** @page entries The call by length
 *
 *  For a length known only at run time, a family has one function that takes it as an argument
 *  before the flag and goes to the kernel of that length:
 *
 *      int32_t zvxg<transform>_<element>(const T* src, T* dst, int32_t len, int32_t flag);
 *
 *  The length is tested first and alone: one that the family does not have gives zvxErrLength,
 *  whatever the pointers and the flag are. All else is the kernel's, checks and status as well. */

/* ---- Version -------------------------------------------------------------------------------- */

/** Which build of the library this is. */
typedef struct VersionRecord {
  int32_t major;           /**< major version */
  int32_t minor;           /**< minor version */
  int32_t buildSeries;     /**< build series, the number after "build" in versionText */
  int32_t buildNumber;     /**< running number of the build; not the last part of versionText */
  char cpuTag[4];          /**< processor variant, padded with zeros: "e9" is 256-bit AVX */
  const char* fileName;    /**< the library's own file name */
  const char* versionText; /**< version for display */
  const char* buildDate;   /**< "Mmm dd yyyy" */
} VersionRecord;

/** The record of this library: constant, never null, the same address in every call, valid as long
 *  as the library stays loaded. */
ZVXG_API const VersionRecord* zvxgenGetLibVersion(void) ZVXG_NOEXCEPT;

/* ---- Memory --------------------------------------------------------------------------------- */

/**@{*/
/** The two functions through which the library gets and returns memory. It imports them, so a
 *  program may define its own; libzvxcore has default ones that align to 64 bytes.
 *
 *  zvxMalloc() returns `bytes` bytes on a boundary of at least 16 bytes, or null if it has none
 *  (the default one also for a negative count). zvxFree() takes what zvxMalloc() returned, null
 *  included. Both must be thread-safe if functions that allocate run on several threads. */
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
 *  for k = 0 .. N-1, with x the source, X the destination and s the factor of the flag. Source and
 *  destination are both in natural order, X[0] is the zero frequency. The inverse of x is the
 *  forward transform of x with real and imaginary parts exchanged, exchanged back.
 *
 *  Accuracy, as the L2 norm of the error over that of the result for normally distributed data: at
 *  most 1.65e-7 in single and 3.8e-16 in double precision, at every length.
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
 *  The spectrum X[k] = R[k] + i I[k] of N real samples has X[N-k] = conj(X[k]), so that the bins
 *  k = 0 .. h, h = N/2 rounded down, hold all of it; I[0] is zero, and I[N/2] for even N.
 *
 *      forward   X[k] = s * sum over n = 0 .. N-1 of x[n] * exp(-2 pi i k n / N),  k = 0 .. h
 *      inverse   x[n] = s * sum over k = 0 .. N-1 of X[k] * exp(+2 pi i k n / N),  n = 0 .. N-1
 *
 *  with s the factor of the flag. The name tells how the half spectrum is stored:
 *
 *      CCS    all bins as pairs: R[k] in element 2k, I[k] in 2k+1. N+2 elements for even N, N+1 for
 *             odd. What numpy.fft.rfft returns and FFTW's r2c plans write, in the same places.
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
 *  +0.0 whatever the data are. An inverse kernel writes N elements and reads those of its layout
 *  but for the elements 1 and N+1 of CCS, which are taken as zero: anything may stand there, NaN
 *  included. With one array for both, the array has the size of the layout, and the inverse of CCS
 *  leaves what is behind its first N elements. The layouts of one length differ in nothing else:
 *  their values are equal bit for bit.
 *
 *  In single precision, sums and differences are single, an expression with a constant factor is
 *  evaluated in double and rounded once, and where an output of the forward transform is such an
 *  expression, the factor of the flag is multiplied in before that rounding. The inverse doubles
 *  the parts of the bins between 0 and N/2 first, in the precision of the data: those above half
 *  the largest finite number become infinite, whatever the flag.
 *
 *  Accuracy, as for the complex transform but as root mean square over the lengths 2 to 64: at most
 *  7.9e-8 in single and 1.8e-16 in double precision.
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
 *  for k = 0 .. N-1, in natural order. With the parts of the forward DFT, H[k] = R[k] - I[k] and
 *  H[N-k] = R[k] + I[k]. The transform has no direction: zvxDivFwdByN and zvxDivInvByN both divide
 *  by N. Two calls with zvxDivBySqrtN leave the data as they were, and so do one with zvxNoDiv and
 *  one with either of the first two; two with zvxDivFwdByN divide them by N.
 *
 *  Precision and accuracy are those of the real DFT; the factor of the flag is always a product of
 *  its own, the last one.
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
 *  for k = 0 .. N-1, with x the source, y the destination, s the factor of the flag and popcount
 *  the number of set bits. Both are in natural order, that of the Hadamard matrix built by
 *  Sylvester's doubling: neither bits reversed nor by number of sign changes. y[1] takes the
 *  numbers with alternating signs, y[N/2] the first half minus the second.
 *
 *  The transform has no direction: zvxDivFwdByN and zvxDivInvByN both divide by N, and to apply it
 *  twice with zvxDivBySqrtN is the identity, but for rounding.
 *
 *  The result is that of the fast transform with radix 2, bit for bit: for h = 1, 2, 4 .. N/2 each
 *  pair a = x[i], b = x[i + h], where i has bit h clear, becomes a + b, a - b, every result rounded
 *  to the precision of the data. The multiplication by s comes last.
 *
 *  Buffer. Orders 8 to 13 work in `buffer`, whose size in bytes zvxgWHTGetBufferSize_32f() and
 *  zvxgWHTGetBufferSize_64f() tell; orders 1 to 7 need none, their size is 0 and they ignore it. It
 *  must lie on a 16-byte boundary, which is not tested, and must not overlap source or destination.
 *  What it holds before and after a call means nothing. A null buffer is no failure: the call then
 *  takes as many bytes from zvxMalloc(), after its checks, and returns them to zvxFree(). The
 *  result of zvxMalloc() is not tested, so a program that can run out of memory passes a buffer;
 *  so does one that calls often, as an allocation takes as long as a transform of order 8. The
 *  longest transforms take up to half as long again where buffer and destination start within a
 *  cache line of the same offset into a page of 4096 bytes.
 *
 *  Threads. Calls may run at once if each has a buffer of its own, or null. All else is as for
 *  every kernel: checks, alignment of source and destination, in place.
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
/** By order: the kernel of `order`, 1 to 13. Any other order gives zvxErrLength, before all else.
 */
ZVXG_API int32_t zvxgWHT_32f(const float* src, float* dst, int32_t order, int32_t flag,
                             uint8_t* buffer) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgWHT_64f(const double* src, double* dst, int32_t order, int32_t flag,
                             uint8_t* buffer) ZVXG_NOEXCEPT;
/**@}*/

/**@{*/
/** Stores the bytes of the buffer of `order` in `*size`, which is not tested for null. An order
 *  outside 1 to 13 gives zvxErrLength and stores nothing.
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
 *  The type-IV discrete cosine transform of powers of two, by plans.
 *
 *      X[k] = sum over n = 0 .. N-1 of x[n] * cos(pi/N * (n + 1/2) * (k + 1/2)),   k = 0 .. N-1
 *
 *  There is no factor and no flag. The transform is its own inverse up to 2/N: applied twice it
 *  gives N/2 times the source.
 *
 *  Unlike the transforms of fixed length it needs a plan, a Dct4Spec, made once for a length and a
 *  precision. The whole plan lies in one block of memory:
 *
 *      uint32_t size;
 *      Dct4Spec* spec;
 *      int32_t status = zvxgDCT4GetSize_32f(4096, &size);
 *      void* block = status == zvxOk ? aligned_alloc(64, (size + 63) / 64 * 64) : NULL;
 *      if (status == zvxOk) status = zvxgDCT4Init_32f(&spec, 4096, block);
 *      if (status == zvxOk) status = zvxgDCT4_32f(x, y, spec);   // as often as wanted
 *      free(block);                                              // and the plan is gone
 *
 *  or in one that zvxgDCT4InitAlloc_32f() gets from zvxMalloc() and zvxgDCT4Free_32f() gives back
 *  to zvxFree(). Drop a block of your own, as above, and do not call the free function, which would
 *  hand it to zvxFree(). The functions that end in _64f are the same for double. A plan of one
 *  precision must not be given to the functions of the other; nothing notices.
 *
 *  Lengths. Single precision takes 2, 4, ... 2^26, double precision 2, 4, ... 2^25. Any other is
 *  refused with zvxErrLength, but for these, which are accepted although they are of no use:
 *    - 2^k + 1 for k = 7 .. 26 in single and k = 5 .. 25 in double precision. The plan is that of
 *      2^k and the call returns zvxOk, but what it writes is no DCT-IV, and some elements of `dst`
 *      stay as they were: two of each N / r (rounded down), r being the radix of the plan. They are
 *      those at 8 and 9 modulo 16 for N = 129 and 257 in single, and those at 4 and 5 modulo 8 for
 *      33 and 65 in double precision. Nothing outside `src` and `dst` is touched.
 *    - 2^30 and 2^30 + 1, in double precision 2^29 and 2^29 + 1 as well. Their size wraps to one
 *      that is too small: do not make such a plan, it would run over its block.
 *
 *  The block. Any address will do, but use a multiple of 64, as zvxMalloc() returns it: then all
 *  long stores hit whole cache lines, and the reported size always suffices. (At an address that is
 *  no multiple of 32 and has bit 31 set, a plan of the lengths that take 256 bytes can end up to 31
 *  bytes behind them.) A plan takes 256 bytes up to N = 64 in single and N = 32 in double
 *  precision, and from there on two to six times the bytes of an array. It contains pointers into
 *  its block, so it cannot be copied or moved.
 *
 *  Memory and arithmetic of a call are those of the fixed lengths: `src` is only read, `dst` only
 *  written, they may be equal and have any alignment, products and sums are rounded one by one, and
 *  the result depends on the source and the length alone, bit for bit. The tables of a plan come
 *  from sine and cosine of the math library, so last bits may differ between systems whose math
 *  libraries differ.
 *
 *  Threads. A plan of 256 bytes is only read when it is run and may be shared. A longer one holds
 *  workspaces that a call writes: run it on one thread at a time, and make one plan per thread for
 *  more. Different plans may be made, run and freed at once.
 *
 *  Accuracy, as the L2 norm of the error over that of the result for normally distributed data: at
 *  most 1.8e-7 in single and 3.5e-16 in double precision up to N = 65536; above it grows like the
 *  square root of log N.
 *  @{ */

/** A plan. Its layout is the library's business. */
typedef struct Dct4Spec Dct4Spec;

/** @name The size of a plan
 *  @{ */
/** Stores the bytes of block that a plan of this length needs, or returns zvxErrLength and stores
 *  nothing. `size` must not be null. */
ZVXG_API int32_t zvxgDCT4GetSize_32f(int32_t length, uint32_t* size) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDCT4GetSize_64f(int32_t length, uint32_t* size) ZVXG_NOEXCEPT;
/**@}*/

/**@{*/
/** Makes a plan in a block of the size that zvxgDCT4GetSize_32f() reports, and stores its address.
 *  zvxErrNullPointer if an argument is null; zvxErrLength for a length that has no plan, after
 *  which the block holds anything. A failed call does not write `*spec`. The block is trusted to be
 *  large enough. Ask for the size first: only that refuses lengths that are too large. */
ZVXG_API int32_t zvxgDCT4Init_32f(Dct4Spec** spec, int32_t length, void* block) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDCT4Init_64f(Dct4Spec** spec, int32_t length, void* block) ZVXG_NOEXCEPT;
/**@}*/

/**@{*/
/** The same in a block from zvxMalloc(). zvxErrNullPointer also if there is no memory. */
ZVXG_API int32_t zvxgDCT4InitAlloc_32f(Dct4Spec** spec, int32_t length) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDCT4InitAlloc_64f(Dct4Spec** spec, int32_t length) ZVXG_NOEXCEPT;
/**@}*/

/**@{*/
/** Passes the block of a plan to zvxFree(), after which the plan is gone. zvxErrNullPointer for
 *  null. */
ZVXG_API int32_t zvxgDCT4Free_32f(Dct4Spec* spec) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDCT4Free_64f(Dct4Spec* spec) ZVXG_NOEXCEPT;
/**@}*/

/**@{*/
/** Transforms `src` into `dst`, each of as many elements as the plan has. zvxErrNullPointer if an
 *  argument is null; zvxErrPlanState if the plan was not completed; `dst` is then as it was. */
ZVXG_API int32_t zvxgDCT4_32f(const float* src, float* dst, const Dct4Spec* spec) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDCT4_64f(const double* src, double* dst, const Dct4Spec* spec) ZVXG_NOEXCEPT;
/**@}*/

/** @} */

#include "zvxg_kernels.h"

#ifdef __cplusplus
}
#endif

#endif /* ZVXG_H */
