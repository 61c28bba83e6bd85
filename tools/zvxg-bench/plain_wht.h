// The peer of the Walsh-Hadamard kernels: the plain loop of radix-2 stages, compiled with all that
// the compiler offers, and for AVX2 if the machine has it.
#pragma once

namespace bench {

void plainWht(const float* src, float* dst, int order, float factor);
void plainWht(const double* src, double* dst, int order, double factor);

}  // namespace bench
