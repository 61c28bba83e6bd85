// The peer of the Walsh-Hadamard kernels: the plain loop of radix-2 stages, compiled for AVX2,
// where the machine has it, with everything that the compiler has to offer.
#pragma once

namespace bench {

void plainWht(const float* src, float* dst, int order, float factor);
void plainWht(const double* src, double* dst, int order, double factor);

}  // namespace bench
