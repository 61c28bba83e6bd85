// The companion header by itself, with every template in it instantiated for both precisions.

#include "zvxg.hpp"

namespace {

template <class T>
void useAll(std::span<T> x, std::span<std::complex<T>> z) {
  zvxg::dft(z, z);
  zvxg::idft<12>(z, z);
  zvxg::hartley(x, x);
  zvxg::wht<3>(x, x);
  zvxg::Spectrum<zvxg::Layout::Ccs, T, 12> ccs;
  zvxg::Spectrum<zvxg::Layout::HalfComplex, T> halfComplex(12);
  zvxg::rdft(x, ccs);
  zvxg::irdft(ccs, x, zvxDivInvByN);
  zvxg::convert(ccs, halfComplex);
  zvxg::irdft(zvxg::SpectrumView<zvxg::Layout::Ccs, T>(z, 12), x);
  zvxg::batch(zvxg::signals(x, 8), zvxg::signals<8>(x), zvxg::Wht<T>(3));
  zvxg::Mdct<T> mdct(zvxg::sineWindow<T>(8));
  zvxg::Imdct<T> imdct(zvxg::kbdWindow<T>(8, 4));
  mdct(x, x);
  imdct(x, x);
}

}  // namespace

void useCompanion(std::span<float> x, std::span<std::complex<float>> z, std::span<double> y,
                  std::span<std::complex<double>> w) {
  useAll(x, z);
  useAll(y, w);
}
