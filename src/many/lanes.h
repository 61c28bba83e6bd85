// Kernels on rows of what has no generated ones: Walsh-Hadamard transforms, and the DCT-IV of direct
// lengths. A turn takes a transform in each lane of a register.
#pragma once

#include <array>

#include "dct4/records.h"
#include "many/rows.h"

namespace zvxg::many {

// By order - 1. Longer transforms are passes of these.
inline constexpr int kLaneOrders = 7;
template <class T>
using WhtKernels = std::array<Kernel<Run<T>>, kLaneOrders>;

// By state - 1 of the plan. There is no factor.
template <class T>
using Dct4Kernels = std::array<Kernel<Run<T>>, dct4::kDirectStates<T>>;

namespace avx {
extern const WhtKernels<float> kWhtSingle;
extern const WhtKernels<double> kWhtDouble;
extern const Dct4Kernels<float> kDct4Single;
extern const Dct4Kernels<double> kDct4Double;
}  // namespace avx

namespace avx512 {
extern const WhtKernels<float> kWhtSingle;
extern const WhtKernels<double> kWhtDouble;
extern const Dct4Kernels<float> kDct4Single;
extern const Dct4Kernels<double> kDct4Double;
}  // namespace avx512

}  // namespace zvxg::many
