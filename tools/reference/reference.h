// The definitions of the transforms, summed in long double: the truth that the tests and zvxg-bench
// hold the library against. Shares no code with the library or its generator, of which it knows
// nothing but how a kernel is named. A complex number is two numbers, real part first.
#pragma once

#include <vector>

#include "kernels.h"  // kernelgen

namespace reference {

using Numbers = std::vector<long double>;

/// X = sum of x[n] exp(-+2 pi i k n / N) and its like: the definition of the kernel's family.
Numbers definition(const kernelgen::KernelId& id, const Numbers& source);

/// Whether forward and inverse are two transforms; otherwise every flag but 8 divides.
bool isDirected(kernelgen::Family family);

/// Where a half spectrum of `length` samples keeps the parts of bin k: numbers of elements,
/// kNowhere for an imaginary part that is always zero and has no place.
struct BinPlace {
  int re, im;
};
inline constexpr int kNowhere = -1;
BinPlace binPlace(kernelgen::Layout layout, int length, int k);

/// Whether bin k of a real signal is its own mirror, with no imaginary part.
inline bool isOwnMirror(int length, int k) { return k == 0 || 2 * k == length; }

/// Numbers that a kernel takes, and that it writes.
int sourceSize(const kernelgen::KernelId& id);
int destinationSize(const kernelgen::KernelId& id);

/// By Sylvester's doubling of the Hadamard matrix.
Numbers whtDefinition(const Numbers& source);

/// The definition of the DCT-IV, and the same by a fast algorithm that shares nothing with the
/// library's: a complex transform of half the length by radix 2, between rotations.
Numbers dct4Definition(const Numbers& source);
Numbers fastDct4(const Numbers& source);

}  // namespace reference
