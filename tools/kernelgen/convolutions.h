// Index maps and constants of the steps that turn a transform into a cyclic convolution.
#pragma once

#include <vector>

#include "values.h"

namespace kernelgen {

// Rader's step: C. M. Rader, Proc. IEEE 56 (1968).
//
// With g the smallest primitive root of p and M = p - 1, the outputs but the first are a cyclic
// convolution of length M of x[g^q] with b[m] = exp(-2 pi i g^-m / p). B is the transform of b,
// divided by M for the convolution. B[0] is -1/M, and since b[m + M/2] is the conjugate of b[m],
// B[M-k] is (-1)^k times the conjugate of B[k].
struct RaderNumbers {
  explicit RaderNumbers(int p);

  std::vector<int> powers;      // g^q mod p, q = 0 .. p-2
  std::vector<int> logarithms;  // q at g^q mod p; nothing at 0
  std::vector<Factor> factors;  // B[k], k = 0 .. p-2
};

// The chirp step, for odd n and a convolution of length l.
struct ChirpNumbers {
  ChirpNumbers(int n, int l);

  std::vector<Turn> chirp;      // of exp(-2 pi i h m^2 / n), h = (n + 1) / 2
  std::vector<Factor> factors;  // the transform of its conjugate, divided by l
};

}  // namespace kernelgen
