// A first program in C++: the half spectrum of twelve samples, and the inverse transform.
#include <array>
#include <complex>
#include <cstdio>
#include <zvxg.hpp>

int main() {
  // A mean of 1, a cosine of amplitude 2 with period 4, one of amplitude 0.5 with period 2.
  const std::array<float, 4> period = {3.5f, 0.5f, -0.5f, 0.5f};
  std::array<float, 12> signal, again;
  for (std::size_t n = 0; n < 12; ++n) signal[n] = period[n % 4];

  // Layout, precision and length are part of the type, so nothing can fail at run time.
  zvxg::Spectrum<zvxg::Layout::Pack, float, 12> spectrum;
  zvxg::rdft(signal, spectrum, zvxDivFwdByN);
  zvxg::irdft(spectrum, again, zvxDivFwdByN);

  std::puts("bin    power");
  for (std::size_t k = 0; k <= 6; ++k) std::printf("%3zu %8.3f\n", k, std::norm(spectrum.bin(k)));
  std::puts("  n   signal     back");
  for (std::size_t n = 0; n < 12; ++n) std::printf("%3zu %8.3f %8.3f\n", n, signal[n], again[n]);
}
