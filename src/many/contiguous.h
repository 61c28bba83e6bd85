// Kernels on contiguous real transforms that are so short that all of their elements stay in registers
// or near: they transpose what they load and store by themselves, without a block. There are those of
// AVX alone, whose turns take 256 bits of transforms. Each layout has a text of its own: 13 to 32 points
// take 1.2 MB, for an eighth of the time in single and a quarter in double precision (Zen 4).
#pragma once

#include <array>

#include "many/rows.h"

namespace zvxg::many {

enum class Layout {
  Ccs,
  Pack,
  Perm
};

// By length - kMinLength.
inline constexpr int kMaxContiguous = 32;
template <class T>
using ContiguousRuns = std::array<Run<T>, kMaxContiguous - kMinLength + 1>;

// Spectra by layout. Steps are distances.
template <class T>
struct ContiguousKernels {
  ContiguousRuns<T> toSpectrum[3], toSamples[3], hartley;
};

namespace avx {
extern const ContiguousKernels<float> kContiguousSingle;
extern const ContiguousKernels<double> kContiguousDouble;
}  // namespace avx

}  // namespace zvxg::many
