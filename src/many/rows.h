// Kernels that run many transforms of one length at a time: what kernelgen prints and the ways
// through a batch (batch.h) call.
//
// A kernel works in turns. A turn takes `transforms` of them at once, the same number in every
// turn, and has loaded all of its source before it stores anything, so that a batch in place needs
// nothing else. The last turn is full too: what is left of a batch goes through a block.
// Arrays are reals, may start at any address, and a complex element is two of them.
//
//   rows        element i of the transforms of a turn stands side by side, one transform after the
//               other: element i of turn t starts at src + i * srcStep + t * transforms * (reals in
//               an element). Complex elements are interleaved, real part first, as in memory.
//   contiguous  transform k starts at src + k * srcStep, and turn t takes transform t * transforms and
//               those after it. There are those of AVX alone.
//   toRows      from contiguous transforms to rows; of AVX alone, too.
//
// Steps count reals, may be negative, and are not known to be multiples of anything. No result
// depends on how many transforms share a turn: each has the bits of the kernel of that length in
// libzvxg, whose base graph all of these are printed from.
//
// The text is the same for both machines. It is compiled with ZVXG_MACHINE set to `avx` or
// `avx512`, the namespace it then belongs to: nothing compiled for a newer processor may have a
// name that text for an older one has too, as a linker keeps one of two equal inline functions.
#pragma once

#include <cstddef>

namespace zvxg::many {

inline constexpr int kMinLength = 2, kMaxLength = 64;
inline constexpr int kLengths = kMaxLength - kMinLength + 1;

template <class T>
using Run = void (*)(const T* src, std::ptrdiff_t srcStep, T* dst, std::ptrdiff_t dstStep,
                     const T* factor, std::ptrdiff_t turns);

// Rows of a half spectrum, by which one kernel serves every layout: R[0]; R[N/2] of an even length;
// and of the bins between, R[k] at between + (k - 1) * step and I[k] `parts` behind. The imaginary
// parts that are always zero are neither read nor written. If `parts` is 0, these are rows of bins
// with their parts interleaved instead, as in memory, and the zeros are written with the others.
// Turns advance all three pointers.
template <class T>
struct SpectrumRows {
  T* first;
  T* last;
  T* between;
  std::ptrdiff_t step, parts;

  bool areBins() const { return parts == 0; }
};

template <class T>
using RunToSpectrum = void (*)(const T* src, std::ptrdiff_t srcStep, const SpectrumRows<T>& dst,
                               const T* factor, std::ptrdiff_t turns);
template <class T>
using RunToSamples = void (*)(const SpectrumRows<const T>& src, T* dst, std::ptrdiff_t dstStep,
                              const T* factor, std::ptrdiff_t turns);

// A kernel and how many transforms a turn of it takes: 0 where there is no kernel.
template <class Run>
struct Kernel {
  Run run;
  int transforms;
};

// One of those that have a half spectrum, and whether it takes rows of bins.
template <class Run>
struct SpectrumKernel : Kernel<Run> {
  bool takesBins;
};

// All kernels of a machine, by length - kMinLength; complex ones forward and inverse. It may have
// kernels of a machine below, whose turns take fewer transforms.
template <class T>
struct Kernels {
  int lanes;  // reals in a register
  Kernel<Run<T>> rows[2][kLengths];
  Kernel<Run<T>> contiguous[2][kLengths];
  Kernel<Run<T>> toRows[2][kLengths];
  SpectrumKernel<RunToSpectrum<T>> toSpectrum[kLengths];
  SpectrumKernel<RunToSamples<T>> toSamples[kLengths];
  Kernel<Run<T>> hartley[kLengths];
};

namespace avx {
extern const Kernels<float> kSingle;
extern const Kernels<double> kDouble;
}  // namespace avx

namespace avx512 {
extern const Kernels<float> kSingle;
extern const Kernels<double> kDouble;
}  // namespace avx512

}  // namespace zvxg::many
