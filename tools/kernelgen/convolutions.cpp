#include "convolutions.h"

namespace kernelgen {
namespace {

std::vector<int> powersOf(int g, int p) {
  std::vector<int> powers;
  int power = 1;
  do {
    powers.push_back(power);
    power = power * g % p;
  } while (power != 1);
  return powers;
}

// Factor k of a step of length n, divided by the length of its convolution. A part that vanishes
// comes out of the sum as rounding error; no other part is that small.
Factor named(Quad re, Quad im, long k, int n, long length) {
  const std::string place = std::to_string(k) + "of" + std::to_string(n);
  const auto part = [&](Quad sum) {
    const Quad rounding = 1e-30;
    return sum < rounding && -sum < rounding ? Quad{0} : sum / length;
  };
  return {{part(re), "re" + place}, {part(im), "im" + place}};
}

std::vector<CosSin> roots(long n) {
  std::vector<CosSin> all;
  for (long k = 0; k < n; ++k) all.push_back(cosSin({k, n}));
  return all;
}

}  // namespace

RaderNumbers::RaderNumbers(int p) : logarithms(p) {
  const long order = p - 1;
  for (int g = 2; std::ssize(powers) != order; ++g) powers = powersOf(g, p);
  for (int q = 0; q < order; ++q) logarithms[powers[q]] = q;
  const std::vector<CosSin> ofP = roots(p), ofM = roots(order);
  for (long k = 0; k < order; ++k) {
    Quad re = 0, im = 0;
    for (long m = 0; m < order; ++m) {
      // exp(-i a) exp(-i b), with a of g^-m and b of k m
      const CosSin a = ofP[powers[(order - m) % order]], b = ofM[k * m % order];
      re += a.cosine * b.cosine - a.sine * b.sine;
      im -= a.cosine * b.sine + a.sine * b.cosine;
    }
    factors.push_back(named(re, im, k, p, order));
  }
}

ChirpNumbers::ChirpNumbers(int n, int l) {
  const long h = (n + 1) / 2;
  for (long m = 0; m < n; ++m) chirp.push_back(Turn{h * m * m, n}.reduced());
  const std::vector<CosSin> ofL = roots(l);
  for (long k = 0; k < l; ++k) {
    // The conjugate chirp is at m and, mirrored, at l - m: each pair adds twice a cosine.
    Quad re = 1, im = 0;
    for (long m = 1; m < n; ++m) {
      const CosSin c = cosSin(chirp[m]);
      const Quad twice = 2 * ofL[k * m % l].cosine;
      re += c.cosine * twice;
      im += c.sine * twice;
    }
    factors.push_back(named(re, im, k, n, l));
  }
}

}  // namespace kernelgen
