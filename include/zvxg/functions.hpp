// The functions of zvxg.h and zvxg_many.h by precision: Functions<float> and Functions<double>. The
// kernels of a family are in a table by length that is read at compile time only: a constant index
// becomes a call of the kernel by its name. So a program refers to libzvxgmany only if it calls
// something of it.
#pragma once

#include <cstddef>
#include <cstdint>

#include "zvxg.h"
#include "zvxg_many.h"

namespace zvxg::detail {

inline constexpr std::size_t kShortest = 2, kLongest = 64;  // lengths of the kernels
inline constexpr std::size_t kOrders = 13;                  // of the Walsh-Hadamard transform

template <class Element>
using Kernel = int32_t (*)(const Element* src, Element* dst, int32_t flag) noexcept;

template <class Element>
using BufferedKernel = int32_t (*)(const Element* src, Element* dst, int32_t flag,
                                   uint8_t* buffer) noexcept;

template <class T>
struct Functions;

#define ZVXG_TEN(name, tens, type)                                               \
  name##_##tens##0_##type, name##_##tens##1_##type, name##_##tens##2_##type,     \
      name##_##tens##3_##type, name##_##tens##4_##type, name##_##tens##5_##type, \
      name##_##tens##6_##type, name##_##tens##7_##type, name##_##tens##8_##type, \
      name##_##tens##9_##type

#define ZVXG_FAMILY(Family, Element, name, type)                                   \
  struct Family {                                                                  \
    static constexpr Kernel<Element> kKernels[] = {                                \
        name##_2_##type,         name##_3_##type,         name##_4_##type,         \
        name##_5_##type,         name##_6_##type,         name##_7_##type,         \
        name##_8_##type,         name##_9_##type,         ZVXG_TEN(name, 1, type), \
        ZVXG_TEN(name, 2, type), ZVXG_TEN(name, 3, type), ZVXG_TEN(name, 4, type), \
        ZVXG_TEN(name, 5, type), name##_60_##type,        name##_61_##type,        \
        name##_62_##type,        name##_63_##type,        name##_64_##type};       \
    static constexpr auto kByLength = name##_##type;                               \
    static constexpr auto kMany = name##_Many_##type;                              \
  }

#define ZVXG_PRECISION(T, bits)                                                                \
  template <>                                                                                  \
  struct Functions<T> {                                                                        \
    using Complex = Complex##bits;                                                             \
    ZVXG_FAMILY(Forward, Complex, zvxgDFTFwd_CToC, bits##fc);                                  \
    ZVXG_FAMILY(Inverse, Complex, zvxgDFTInv_CToC, bits##fc);                                  \
    ZVXG_FAMILY(ToCcs, T, zvxgDFTFwd_RToCCS, bits##f);                                         \
    ZVXG_FAMILY(ToPack, T, zvxgDFTFwd_RToPack, bits##f);                                       \
    ZVXG_FAMILY(ToPerm, T, zvxgDFTFwd_RToPerm, bits##f);                                       \
    ZVXG_FAMILY(FromCcs, T, zvxgDFTInv_CCSToR, bits##f);                                       \
    ZVXG_FAMILY(FromPack, T, zvxgDFTInv_PackToR, bits##f);                                     \
    ZVXG_FAMILY(FromPerm, T, zvxgDFTInv_PermToR, bits##f);                                     \
    ZVXG_FAMILY(Hartley, T, zvxgHartley, bits##f);                                             \
    static constexpr BufferedKernel<T> kWht[] = {                                              \
        zvxgWHT_1_##bits##f, zvxgWHT_2_##bits##f,  zvxgWHT_3_##bits##f,  zvxgWHT_4_##bits##f,  \
        zvxgWHT_5_##bits##f, zvxgWHT_6_##bits##f,  zvxgWHT_7_##bits##f,  zvxgWHT_8_##bits##f,  \
        zvxgWHT_9_##bits##f, zvxgWHT_10_##bits##f, zvxgWHT_11_##bits##f, zvxgWHT_12_##bits##f, \
        zvxgWHT_13_##bits##f};                                                                 \
    static constexpr auto kWhtByOrder = zvxgWHT_##bits##f;                                     \
    static constexpr auto kWhtMany = zvxgWHT_Many_##bits##f;                                   \
    static constexpr auto kWhtBufferSize = zvxgWHTGetBufferSize_##bits##f;                     \
    static constexpr auto kDct4Size = zvxgDCT4GetSize_##bits##f;                               \
    static constexpr auto kDct4Init = zvxgDCT4Init_##bits##f;                                  \
    static constexpr auto kDct4 = zvxgDCT4_##bits##f;                                          \
    static constexpr auto kDct4Many = zvxgDCT4_Many_##bits##f;                                 \
  }

ZVXG_PRECISION(float, 32);
ZVXG_PRECISION(double, 64);

#undef ZVXG_PRECISION
#undef ZVXG_FAMILY
#undef ZVXG_TEN

static_assert(sizeof Functions<float>::Forward::kKernels / sizeof(Kernel<float>) ==
              kLongest - kShortest + 1);

}  // namespace zvxg::detail
