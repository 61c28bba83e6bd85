#include "convolutions.h"

namespace kernelgen {
namespace {

std::vector<std::size_t> powersOf(int g, int p) {
  std::vector<std::size_t> powers;
  int power = 1;
  do {
    powers.push_back(static_cast<std::size_t>(power));
    power = power * g % p;
  } while (power != 1);
  return powers;
}

// Factor k of length n, with the scale of the convolution folded in. Parts that vanish, as those of
// factors that are their own mirror, come out of the sum as its rounding; no other part is so
// small.
Factor named(Quad re, Quad im, std::size_t k, int n, std::size_t size) {
  const std::string place = std::to_string(k) + "of" + std::to_string(n);
  const auto part = [&](Quad sum) {
    const Quad rounding = static_cast<Quad>(1e-30);
    return sum < rounding && -sum < rounding ? Quad{0} : sum / static_cast<Quad>(size);
  };
  return {{part(re), "re" + place}, {part(im), "im" + place}};
}

std::vector<CosSin> roots(std::size_t n) {
  std::vector<CosSin> all;
  for (std::size_t k = 0; k < n; ++k) {
    all.push_back(cosSin({static_cast<long>(k), static_cast<long>(n)}));
  }
  return all;
}

}  // namespace

RaderNumbers::RaderNumbers(int p) {
  const std::size_t order = static_cast<std::size_t>(p) - 1;
  for (int g = 2; powers.size() != order; ++g) powers = powersOf(g, p);
  const std::vector<CosSin> ofP = roots(order + 1), ofM = roots(order);
  for (std::size_t k = 0; k < order; ++k) {
    Quad re = 0, im = 0;
    for (std::size_t m = 0; m < order; ++m) {
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
  const auto size = static_cast<std::size_t>(l);
  const std::vector<CosSin> ofL = roots(size);
  for (std::size_t k = 0; k < size; ++k) {
    // The conjugate chirp stands at m and, mirrored, at l - m: each pair adds twice a cosine.
    Quad re = 1, im = 0;
    for (std::size_t m = 1; m < chirp.size(); ++m) {
      const CosSin c = cosSin(chirp[m]);
      const Quad twice = 2 * ofL[k * m % size].cosine;
      re += c.cosine * twice;
      im += c.sine * twice;
    }
    factors.push_back(named(re, im, k, n, size));
  }
}

}  // namespace kernelgen
