// How much of a signal a few coefficients keep: the program of docs/mdct.md.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <functional>
#include <vector>
#include <zvxg.hpp>

// The coder: sets all but the `kept` largest coefficients to zero.
void thinOut(std::vector<float>& frame, std::size_t kept) {
  std::vector<float> sizes;
  for (const float coefficient : frame) sizes.push_back(std::abs(coefficient));
  std::nth_element(sizes.begin(), sizes.begin() + long(kept) - 1, sizes.end(), std::greater<>());
  for (float& coefficient : frame) {
    if (std::abs(coefficient) < sizes[kept - 1]) coefficient = 0;
  }
}

int main() {
  constexpr std::size_t kBlock = 256, kBlocks = 20;
  std::vector<float> signal(kBlock * kBlocks, 0.0f);  // two tones, then silence
  for (std::size_t n = 0; n < kBlock * (kBlocks - 1); ++n) {
    signal[n] = std::sin(0.1f * float(n)) + 0.25f * std::sin(0.73f * float(n));
  }

  std::puts("kept   error");
  for (const unsigned kept : {256u, 16u, 8u, 4u}) {
    const std::vector<float> window = zvxg::kbdWindow<float>(kBlock, 4);
    zvxg::Mdct<float> analysis(window);
    zvxg::Imdct<float> synthesis(window);
    std::vector<float> frame(kBlock), samples(kBlock);
    double error = 0, power = 0;
    for (std::size_t start = 0; start < signal.size(); start += kBlock) {
      analysis(std::span(signal).subspan(start, kBlock), frame);
      thinOut(frame, kept);
      synthesis(frame, samples);
      if (start == 0) continue;  // the output is one block late
      for (std::size_t n = 0; n < kBlock; ++n) {
        const double x = signal[start - kBlock + n];
        error += (samples[n] - x) * (samples[n] - x);
        power += x * x;
      }
    }
    std::printf("%4u %4.0f dB\n", kept, std::max(-120.0, 10 * std::log10(error / power)));
  }
}
