/** @file
 *  The prototypes of the kernels, written by `kernelgen header`: see zvxg.h, which includes
 *  this file, for what they compute. */
#ifndef ZVXG_KERNELS_H
#define ZVXG_KERNELS_H

#ifndef ZVXG_H
#error "include zvxg.h"
#endif

/** @addtogroup complex
 *  @{ */
/** @name Kernels of zvxgDFTFwd_CToC_32fc()
 *  @{ */
/** The transform of as many points as the name says. */
ZVXG_API int32_t zvxgDFTFwd_CToC_2_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_3_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_4_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_5_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_6_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_7_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_8_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_9_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_10_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_11_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_12_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_13_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_14_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_15_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_16_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_17_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_18_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_19_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_20_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_21_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_22_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_23_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_24_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_25_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_26_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_27_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_28_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_29_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_30_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_31_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_32_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_33_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_34_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_35_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_36_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_37_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_38_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_39_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_40_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_41_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_42_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_43_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_44_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_45_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_46_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_47_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_48_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_49_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_50_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_51_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_52_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_53_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_54_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_55_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_56_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_57_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_58_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_59_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_60_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_61_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_62_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_63_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_64_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
/** @} */
/** @} */

/** @addtogroup complex
 *  @{ */
/** @name Kernels of zvxgDFTInv_CToC_32fc()
 *  @{ */
/** The transform of as many points as the name says. */
ZVXG_API int32_t zvxgDFTInv_CToC_2_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_3_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_4_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_5_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_6_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_7_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_8_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_9_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_10_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_11_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_12_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_13_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_14_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_15_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_16_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_17_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_18_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_19_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_20_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_21_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_22_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_23_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_24_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_25_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_26_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_27_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_28_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_29_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_30_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_31_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_32_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_33_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_34_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_35_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_36_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_37_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_38_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_39_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_40_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_41_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_42_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_43_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_44_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_45_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_46_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_47_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_48_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_49_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_50_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_51_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_52_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_53_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_54_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_55_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_56_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_57_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_58_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_59_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_60_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_61_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_62_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_63_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_64_32fc(const Complex32* src, Complex32* dst, int32_t flag) ZVXG_NOEXCEPT;
/** @} */
/** @} */

/** @addtogroup complex
 *  @{ */
/** @name Kernels of zvxgDFTFwd_CToC_64fc()
 *  @{ */
/** The transform of as many points as the name says. */
ZVXG_API int32_t zvxgDFTFwd_CToC_2_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_3_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_4_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_5_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_6_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_7_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_8_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_9_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_10_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_11_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_12_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_13_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_14_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_15_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_16_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_17_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_18_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_19_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_20_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_21_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_22_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_23_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_24_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_25_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_26_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_27_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_28_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_29_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_30_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_31_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_32_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_33_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_34_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_35_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_36_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_37_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_38_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_39_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_40_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_41_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_42_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_43_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_44_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_45_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_46_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_47_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_48_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_49_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_50_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_51_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_52_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_53_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_54_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_55_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_56_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_57_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_58_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_59_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_60_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_61_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_62_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_63_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_CToC_64_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
/** @} */
/** @} */

/** @addtogroup complex
 *  @{ */
/** @name Kernels of zvxgDFTInv_CToC_64fc()
 *  @{ */
/** The transform of as many points as the name says. */
ZVXG_API int32_t zvxgDFTInv_CToC_2_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_3_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_4_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_5_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_6_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_7_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_8_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_9_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_10_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_11_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_12_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_13_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_14_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_15_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_16_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_17_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_18_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_19_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_20_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_21_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_22_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_23_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_24_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_25_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_26_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_27_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_28_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_29_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_30_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_31_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_32_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_33_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_34_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_35_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_36_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_37_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_38_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_39_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_40_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_41_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_42_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_43_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_44_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_45_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_46_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_47_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_48_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_49_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_50_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_51_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_52_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_53_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_54_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_55_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_56_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_57_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_58_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_59_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_60_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_61_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_62_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_63_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CToC_64_64fc(const Complex64* src, Complex64* dst, int32_t flag) ZVXG_NOEXCEPT;
/** @} */
/** @} */

/** @addtogroup real
 *  @{ */
/** @name Kernels of zvxgDFTFwd_RToCCS_32f()
 *  @{ */
/** The transform of as many points as the name says. */
ZVXG_API int32_t zvxgDFTFwd_RToCCS_2_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_3_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_4_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_5_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_6_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_7_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_8_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_9_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_10_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_11_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_12_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_13_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_14_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_15_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_16_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_17_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_18_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_19_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_20_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_21_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_22_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_23_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_24_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_25_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_26_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_27_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_28_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_29_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_30_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_31_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_32_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_33_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_34_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_35_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_36_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_37_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_38_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_39_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_40_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_41_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_42_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_43_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_44_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_45_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_46_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_47_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_48_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_49_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_50_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_51_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_52_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_53_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_54_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_55_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_56_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_57_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_58_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_59_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_60_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_61_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_62_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_63_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_64_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
/** @} */
/** @} */

/** @addtogroup real
 *  @{ */
/** @name Kernels of zvxgDFTFwd_RToPack_32f()
 *  @{ */
/** The transform of as many points as the name says. */
ZVXG_API int32_t zvxgDFTFwd_RToPack_2_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_3_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_4_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_5_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_6_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_7_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_8_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_9_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_10_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_11_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_12_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_13_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_14_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_15_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_16_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_17_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_18_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_19_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_20_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_21_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_22_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_23_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_24_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_25_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_26_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_27_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_28_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_29_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_30_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_31_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_32_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_33_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_34_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_35_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_36_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_37_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_38_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_39_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_40_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_41_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_42_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_43_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_44_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_45_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_46_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_47_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_48_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_49_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_50_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_51_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_52_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_53_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_54_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_55_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_56_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_57_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_58_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_59_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_60_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_61_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_62_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_63_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_64_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
/** @} */
/** @} */

/** @addtogroup real
 *  @{ */
/** @name Kernels of zvxgDFTFwd_RToPerm_32f()
 *  @{ */
/** The transform of as many points as the name says. */
ZVXG_API int32_t zvxgDFTFwd_RToPerm_2_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_3_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_4_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_5_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_6_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_7_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_8_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_9_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_10_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_11_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_12_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_13_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_14_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_15_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_16_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_17_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_18_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_19_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_20_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_21_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_22_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_23_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_24_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_25_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_26_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_27_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_28_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_29_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_30_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_31_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_32_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_33_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_34_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_35_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_36_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_37_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_38_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_39_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_40_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_41_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_42_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_43_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_44_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_45_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_46_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_47_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_48_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_49_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_50_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_51_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_52_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_53_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_54_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_55_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_56_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_57_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_58_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_59_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_60_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_61_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_62_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_63_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_64_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
/** @} */
/** @} */

/** @addtogroup real
 *  @{ */
/** @name Kernels of zvxgDFTInv_CCSToR_32f()
 *  @{ */
/** The transform of as many points as the name says. */
ZVXG_API int32_t zvxgDFTInv_CCSToR_2_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_3_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_4_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_5_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_6_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_7_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_8_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_9_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_10_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_11_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_12_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_13_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_14_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_15_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_16_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_17_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_18_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_19_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_20_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_21_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_22_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_23_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_24_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_25_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_26_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_27_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_28_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_29_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_30_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_31_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_32_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_33_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_34_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_35_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_36_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_37_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_38_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_39_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_40_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_41_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_42_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_43_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_44_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_45_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_46_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_47_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_48_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_49_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_50_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_51_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_52_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_53_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_54_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_55_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_56_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_57_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_58_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_59_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_60_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_61_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_62_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_63_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_64_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
/** @} */
/** @} */

/** @addtogroup real
 *  @{ */
/** @name Kernels of zvxgDFTInv_PackToR_32f()
 *  @{ */
/** The transform of as many points as the name says. */
ZVXG_API int32_t zvxgDFTInv_PackToR_2_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_3_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_4_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_5_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_6_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_7_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_8_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_9_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_10_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_11_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_12_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_13_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_14_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_15_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_16_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_17_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_18_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_19_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_20_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_21_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_22_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_23_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_24_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_25_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_26_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_27_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_28_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_29_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_30_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_31_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_32_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_33_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_34_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_35_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_36_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_37_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_38_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_39_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_40_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_41_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_42_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_43_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_44_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_45_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_46_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_47_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_48_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_49_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_50_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_51_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_52_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_53_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_54_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_55_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_56_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_57_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_58_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_59_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_60_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_61_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_62_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_63_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_64_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
/** @} */
/** @} */

/** @addtogroup real
 *  @{ */
/** @name Kernels of zvxgDFTInv_PermToR_32f()
 *  @{ */
/** The transform of as many points as the name says. */
ZVXG_API int32_t zvxgDFTInv_PermToR_2_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_3_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_4_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_5_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_6_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_7_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_8_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_9_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_10_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_11_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_12_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_13_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_14_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_15_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_16_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_17_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_18_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_19_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_20_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_21_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_22_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_23_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_24_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_25_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_26_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_27_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_28_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_29_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_30_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_31_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_32_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_33_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_34_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_35_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_36_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_37_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_38_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_39_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_40_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_41_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_42_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_43_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_44_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_45_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_46_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_47_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_48_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_49_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_50_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_51_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_52_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_53_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_54_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_55_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_56_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_57_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_58_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_59_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_60_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_61_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_62_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_63_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_64_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
/** @} */
/** @} */

/** @addtogroup real
 *  @{ */
/** @name Kernels of zvxgDFTFwd_RToCCS_64f()
 *  @{ */
/** The transform of as many points as the name says. */
ZVXG_API int32_t zvxgDFTFwd_RToCCS_2_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_3_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_4_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_5_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_6_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_7_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_8_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_9_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_10_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_11_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_12_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_13_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_14_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_15_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_16_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_17_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_18_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_19_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_20_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_21_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_22_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_23_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_24_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_25_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_26_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_27_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_28_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_29_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_30_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_31_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_32_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_33_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_34_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_35_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_36_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_37_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_38_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_39_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_40_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_41_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_42_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_43_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_44_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_45_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_46_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_47_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_48_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_49_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_50_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_51_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_52_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_53_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_54_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_55_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_56_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_57_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_58_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_59_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_60_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_61_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_62_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_63_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToCCS_64_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
/** @} */
/** @} */

/** @addtogroup real
 *  @{ */
/** @name Kernels of zvxgDFTFwd_RToPack_64f()
 *  @{ */
/** The transform of as many points as the name says. */
ZVXG_API int32_t zvxgDFTFwd_RToPack_2_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_3_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_4_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_5_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_6_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_7_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_8_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_9_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_10_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_11_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_12_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_13_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_14_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_15_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_16_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_17_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_18_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_19_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_20_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_21_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_22_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_23_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_24_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_25_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_26_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_27_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_28_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_29_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_30_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_31_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_32_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_33_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_34_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_35_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_36_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_37_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_38_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_39_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_40_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_41_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_42_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_43_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_44_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_45_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_46_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_47_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_48_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_49_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_50_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_51_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_52_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_53_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_54_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_55_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_56_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_57_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_58_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_59_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_60_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_61_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_62_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_63_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPack_64_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
/** @} */
/** @} */

/** @addtogroup real
 *  @{ */
/** @name Kernels of zvxgDFTFwd_RToPerm_64f()
 *  @{ */
/** The transform of as many points as the name says. */
ZVXG_API int32_t zvxgDFTFwd_RToPerm_2_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_3_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_4_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_5_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_6_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_7_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_8_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_9_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_10_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_11_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_12_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_13_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_14_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_15_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_16_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_17_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_18_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_19_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_20_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_21_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_22_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_23_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_24_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_25_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_26_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_27_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_28_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_29_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_30_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_31_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_32_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_33_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_34_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_35_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_36_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_37_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_38_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_39_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_40_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_41_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_42_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_43_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_44_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_45_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_46_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_47_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_48_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_49_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_50_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_51_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_52_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_53_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_54_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_55_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_56_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_57_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_58_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_59_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_60_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_61_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_62_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_63_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTFwd_RToPerm_64_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
/** @} */
/** @} */

/** @addtogroup real
 *  @{ */
/** @name Kernels of zvxgDFTInv_CCSToR_64f()
 *  @{ */
/** The transform of as many points as the name says. */
ZVXG_API int32_t zvxgDFTInv_CCSToR_2_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_3_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_4_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_5_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_6_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_7_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_8_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_9_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_10_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_11_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_12_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_13_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_14_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_15_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_16_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_17_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_18_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_19_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_20_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_21_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_22_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_23_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_24_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_25_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_26_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_27_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_28_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_29_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_30_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_31_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_32_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_33_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_34_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_35_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_36_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_37_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_38_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_39_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_40_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_41_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_42_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_43_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_44_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_45_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_46_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_47_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_48_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_49_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_50_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_51_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_52_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_53_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_54_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_55_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_56_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_57_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_58_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_59_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_60_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_61_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_62_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_63_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_CCSToR_64_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
/** @} */
/** @} */

/** @addtogroup real
 *  @{ */
/** @name Kernels of zvxgDFTInv_PackToR_64f()
 *  @{ */
/** The transform of as many points as the name says. */
ZVXG_API int32_t zvxgDFTInv_PackToR_2_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_3_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_4_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_5_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_6_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_7_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_8_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_9_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_10_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_11_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_12_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_13_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_14_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_15_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_16_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_17_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_18_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_19_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_20_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_21_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_22_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_23_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_24_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_25_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_26_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_27_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_28_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_29_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_30_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_31_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_32_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_33_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_34_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_35_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_36_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_37_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_38_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_39_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_40_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_41_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_42_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_43_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_44_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_45_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_46_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_47_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_48_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_49_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_50_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_51_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_52_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_53_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_54_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_55_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_56_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_57_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_58_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_59_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_60_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_61_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_62_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_63_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PackToR_64_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
/** @} */
/** @} */

/** @addtogroup real
 *  @{ */
/** @name Kernels of zvxgDFTInv_PermToR_64f()
 *  @{ */
/** The transform of as many points as the name says. */
ZVXG_API int32_t zvxgDFTInv_PermToR_2_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_3_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_4_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_5_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_6_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_7_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_8_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_9_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_10_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_11_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_12_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_13_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_14_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_15_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_16_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_17_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_18_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_19_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_20_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_21_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_22_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_23_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_24_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_25_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_26_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_27_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_28_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_29_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_30_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_31_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_32_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_33_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_34_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_35_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_36_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_37_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_38_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_39_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_40_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_41_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_42_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_43_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_44_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_45_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_46_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_47_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_48_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_49_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_50_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_51_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_52_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_53_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_54_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_55_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_56_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_57_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_58_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_59_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_60_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_61_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_62_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_63_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgDFTInv_PermToR_64_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
/** @} */
/** @} */

/** @addtogroup hartley
 *  @{ */
/** @name Kernels of zvxgHartley_32f()
 *  @{ */
/** The transform of as many points as the name says. */
ZVXG_API int32_t zvxgHartley_2_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_3_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_4_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_5_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_6_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_7_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_8_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_9_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_10_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_11_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_12_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_13_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_14_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_15_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_16_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_17_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_18_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_19_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_20_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_21_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_22_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_23_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_24_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_25_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_26_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_27_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_28_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_29_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_30_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_31_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_32_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_33_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_34_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_35_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_36_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_37_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_38_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_39_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_40_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_41_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_42_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_43_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_44_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_45_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_46_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_47_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_48_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_49_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_50_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_51_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_52_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_53_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_54_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_55_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_56_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_57_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_58_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_59_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_60_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_61_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_62_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_63_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_64_32f(const float* src, float* dst, int32_t flag) ZVXG_NOEXCEPT;
/** @} */
/** @} */

/** @addtogroup hartley
 *  @{ */
/** @name Kernels of zvxgHartley_64f()
 *  @{ */
/** The transform of as many points as the name says. */
ZVXG_API int32_t zvxgHartley_2_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_3_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_4_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_5_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_6_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_7_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_8_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_9_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_10_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_11_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_12_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_13_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_14_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_15_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_16_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_17_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_18_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_19_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_20_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_21_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_22_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_23_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_24_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_25_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_26_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_27_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_28_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_29_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_30_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_31_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_32_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_33_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_34_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_35_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_36_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_37_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_38_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_39_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_40_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_41_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_42_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_43_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_44_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_45_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_46_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_47_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_48_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_49_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_50_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_51_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_52_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_53_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_54_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_55_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_56_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_57_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_58_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_59_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_60_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_61_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_62_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_63_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
ZVXG_API int32_t zvxgHartley_64_64f(const double* src, double* dst, int32_t flag) ZVXG_NOEXCEPT;
/** @} */
/** @} */

#endif
