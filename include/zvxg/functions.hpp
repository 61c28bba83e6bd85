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

// What a table holds of a function. The address of one that is imported from a DLL is no constant.
#if defined _WIN32 && !defined ZVXG_STATIC
template <auto function>
struct Imported;
template <class... Arguments, int32_t (*function)(Arguments...) noexcept>
struct Imported<function> {
  static int32_t call(Arguments... arguments) noexcept { return function(arguments...); }
};
#define ZVXG_CONSTANT(function) Imported<function>::call
#else
#define ZVXG_CONSTANT(function) function
#endif

#define ZVXG_KERNEL(name, length, type) ZVXG_CONSTANT(name##_##length##_##type)
#define ZVXG_TEN(name, tens, type)                                        \
  ZVXG_KERNEL(name, tens##0, type), ZVXG_KERNEL(name, tens##1, type),     \
      ZVXG_KERNEL(name, tens##2, type), ZVXG_KERNEL(name, tens##3, type), \
      ZVXG_KERNEL(name, tens##4, type), ZVXG_KERNEL(name, tens##5, type), \
      ZVXG_KERNEL(name, tens##6, type), ZVXG_KERNEL(name, tens##7, type), \
      ZVXG_KERNEL(name, tens##8, type), ZVXG_KERNEL(name, tens##9, type)

#define ZVXG_FAMILY(Family, Element, name, type)                                                \
  struct Family {                                                                               \
    static constexpr Kernel<Element> kKernels[] = {                                             \
        ZVXG_KERNEL(name, 2, type),  ZVXG_KERNEL(name, 3, type),  ZVXG_KERNEL(name, 4, type),   \
        ZVXG_KERNEL(name, 5, type),  ZVXG_KERNEL(name, 6, type),  ZVXG_KERNEL(name, 7, type),   \
        ZVXG_KERNEL(name, 8, type),  ZVXG_KERNEL(name, 9, type),  ZVXG_TEN(name, 1, type),      \
        ZVXG_TEN(name, 2, type),     ZVXG_TEN(name, 3, type),     ZVXG_TEN(name, 4, type),      \
        ZVXG_TEN(name, 5, type),     ZVXG_KERNEL(name, 60, type), ZVXG_KERNEL(name, 61, type),  \
        ZVXG_KERNEL(name, 62, type), ZVXG_KERNEL(name, 63, type), ZVXG_KERNEL(name, 64, type)}; \
    static constexpr auto kByLength = ZVXG_CONSTANT(name##_##type);                             \
    static constexpr auto kMany = ZVXG_CONSTANT(name##_Many_##type);                            \
  }

#define ZVXG_PRECISION(T, bits)                                                           \
  template <>                                                                             \
  struct Functions<T> {                                                                   \
    using Complex = Complex##bits;                                                        \
    ZVXG_FAMILY(Forward, Complex, zvxgDFTFwd_CToC, bits##fc);                             \
    ZVXG_FAMILY(Inverse, Complex, zvxgDFTInv_CToC, bits##fc);                             \
    ZVXG_FAMILY(ToCcs, T, zvxgDFTFwd_RToCCS, bits##f);                                    \
    ZVXG_FAMILY(ToPack, T, zvxgDFTFwd_RToPack, bits##f);                                  \
    ZVXG_FAMILY(ToPerm, T, zvxgDFTFwd_RToPerm, bits##f);                                  \
    ZVXG_FAMILY(FromCcs, T, zvxgDFTInv_CCSToR, bits##f);                                  \
    ZVXG_FAMILY(FromPack, T, zvxgDFTInv_PackToR, bits##f);                                \
    ZVXG_FAMILY(FromPerm, T, zvxgDFTInv_PermToR, bits##f);                                \
    ZVXG_FAMILY(Hartley, T, zvxgHartley, bits##f);                                        \
    static constexpr BufferedKernel<T> kWht[] = {                                         \
        ZVXG_KERNEL(zvxgWHT, 1, bits##f),  ZVXG_KERNEL(zvxgWHT, 2, bits##f),              \
        ZVXG_KERNEL(zvxgWHT, 3, bits##f),  ZVXG_KERNEL(zvxgWHT, 4, bits##f),              \
        ZVXG_KERNEL(zvxgWHT, 5, bits##f),  ZVXG_KERNEL(zvxgWHT, 6, bits##f),              \
        ZVXG_KERNEL(zvxgWHT, 7, bits##f),  ZVXG_KERNEL(zvxgWHT, 8, bits##f),              \
        ZVXG_KERNEL(zvxgWHT, 9, bits##f),  ZVXG_KERNEL(zvxgWHT, 10, bits##f),             \
        ZVXG_KERNEL(zvxgWHT, 11, bits##f), ZVXG_KERNEL(zvxgWHT, 12, bits##f),             \
        ZVXG_KERNEL(zvxgWHT, 13, bits##f)};                                               \
    static constexpr auto kWhtByOrder = ZVXG_CONSTANT(zvxgWHT_##bits##f);                 \
    static constexpr auto kWhtMany = ZVXG_CONSTANT(zvxgWHT_Many_##bits##f);               \
    static constexpr auto kWhtBufferSize = ZVXG_CONSTANT(zvxgWHTGetBufferSize_##bits##f); \
    static constexpr auto kDct4Size = ZVXG_CONSTANT(zvxgDCT4GetSize_##bits##f);           \
    static constexpr auto kDct4Init = ZVXG_CONSTANT(zvxgDCT4Init_##bits##f);              \
    static constexpr auto kDct4 = ZVXG_CONSTANT(zvxgDCT4_##bits##f);                      \
    static constexpr auto kDct4Many = ZVXG_CONSTANT(zvxgDCT4_Many_##bits##f);             \
  }

ZVXG_PRECISION(float, 32);
ZVXG_PRECISION(double, 64);

#undef ZVXG_PRECISION
#undef ZVXG_FAMILY
#undef ZVXG_TEN
#undef ZVXG_KERNEL
#undef ZVXG_CONSTANT

static_assert(sizeof Functions<float>::Forward::kKernels / sizeof(Kernel<float>) ==
              kLongest - kShortest + 1);

}  // namespace zvxg::detail
