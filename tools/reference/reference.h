// The definitions of the transforms, summed in long double: the truth that the tests and zvxg-bench
// hold the library against. Shares no code with the library or its generator but the list of kernels,
// by which it knows their names and the places of their numbers. A complex number is two numbers,
// real part first.
#pragma once

#include <vector>

#include "interface.h"

namespace reference {

using Numbers = std::vector<long double>;

/// X = sum of x[n] exp(-+2 pi i k n / N) and its like: the definition of the kernel's family.
Numbers definition(const kernelgen::KernelId& id, const Numbers& source);

/// Of any transform, without a factor.
Numbers definition(const api::Transform& transform, const Numbers& source);

/// By what a flag multiplies.
long double factor(const api::Transform& transform, int flag);

/// By Sylvester's doubling of the Hadamard matrix.
Numbers whtDefinition(const Numbers& source);

/// The definition of the DCT-IV, and the same by a fast algorithm that shares nothing with the
/// library's: a complex transform of half the length by radix 2, between rotations.
Numbers dct4Definition(const Numbers& source);
Numbers fastDct4(const Numbers& source);

}  // namespace reference
