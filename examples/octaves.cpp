// octaves INPUT.wav OUTPUT.wav
//
// Splits a recording into octaves and prints their levels. OUTPUT.wav has one channel per band:
// everything below 88 Hz, the octaves around 125, 250, 500 Hz and so on, and everything above them.
//
// A band is the difference of two low-pass filters, each the sinc function with a Blackman window,
// so the bands add up to the recording. Such a filter has thousands of taps. It is partitioned into
// parts of 32 taps, and each part works by overlap-save with real transforms of 64 points. In the
// frequency domain the parts differ by delays of whole blocks. So all parts and bands share one
// transform of each block of samples, and each band needs one inverse transform (Stockham,
// "High-speed convolution and correlation", 1966; Kulp, "Digital equalization using Fourier
// transform techniques", 1988).
#include <zvxg.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <numbers>
#include <stdexcept>
#include <string>
#include <vector>

#include "program.h"
#include "recording.h"

namespace {

constexpr int kBlock = 32;
constexpr double kLowestEdge = 1000 / 8 / std::numbers::sqrt2;  // of the octave around 125 Hz
constexpr double kHighestEdge = 0.45;                           // as part of the sampling rate
constexpr int kLowestRate = 500, kHighestRate = 200000;

using Block = std::array<float, 2 * kBlock>;  // samples, or a spectrum in the layout Perm
using Filter = std::vector<double>;

// The ends of the octaves in Hz.
std::vector<double> edgesFor(int rate) {
  std::vector<double> edges;
  for (double edge = kLowestEdge; edge < kHighestEdge * rate; edge *= 2) edges.push_back(edge);
  return edges;
}

// An eighth of a second. The transition from pass to stop is then 44 Hz wide: with a Blackman
// window it is 5.5 times the sampling rate divided by the number of taps. The number is odd, so
// that there is a tap in the middle.
int tapsFor(int rate) { return (rate / 8 + kBlock - 1) / kBlock * kBlock - 1; }

// A filter that passes frequencies below `edge`, in cycles per sample.
Filter lowPass(double edge, int taps) {
  constexpr double pi = std::numbers::pi;
  Filter filter(taps);
  for (int n = 0; n < taps; ++n) {
    const int fromMiddle = n - taps / 2;
    const double x = 2 * pi * (n + 1) / (taps + 1);
    const double window = 0.42 - 0.5 * std::cos(x) + 0.08 * std::cos(2 * x);
    filter[n] =
        window *
        (fromMiddle == 0 ? 2 * edge : std::sin(2 * pi * edge * fromMiddle) / (pi * fromMiddle));
  }
  return filter;
}

// The filter of each band, from one edge to the next. The first band is everything below the first
// edge. The last is what the others leave: a single tap in the middle minus a low-pass filter.
std::vector<Filter> bandsFor(int rate) {
  const int taps = tapsFor(rate);
  std::vector<Filter> bands;
  Filter below(taps);
  const auto upTo = [&](Filter filter) {
    bands.push_back(filter);
    for (int n = 0; n < taps; ++n) bands.back()[n] -= below[n];
    below = std::move(filter);
  };
  for (const double edge : edgesFor(rate)) upTo(lowPass(edge / rate, taps));
  Filter all(taps);
  all[taps / 2] = 1;
  upTo(all);
  return bands;
}

// sum += x * h. In Perm the elements 0 and 1 are the two real bins.
void addProduct(Block& sum, const Block& x, const Block& h) {
  sum[0] += x[0] * h[0];
  sum[1] += x[1] * h[1];
  for (int k = 2; k < 2 * kBlock; k += 2) {
    sum[k] += x[k] * h[k] - x[k + 1] * h[k + 1];
    sum[k + 1] += x[k] * h[k + 1] + x[k + 1] * h[k];
  }
}

class FilterBank {
 public:
  explicit FilterBank(const std::vector<Filter>& filters)
      : parts_((filters[0].size() + kBlock - 1) / kBlock), past_(parts_) {
    for (const Filter& filter : filters) {
      std::vector<Block> spectra;
      for (std::size_t start = 0; start < filter.size(); start += kBlock) {
        Block taps{};  // and as many zeros after them
        const std::size_t count = std::min<std::size_t>(kBlock, filter.size() - start);
        std::copy_n(filter.begin() + static_cast<std::ptrdiff_t>(start), count, taps.begin());
        require(zvxgDFTFwd_RToPerm_64_32f(taps.data(), taps.data(), zvxDivFwdByN));
        spectra.push_back(taps);
      }
      bands_.push_back(spectra);
    }
  }

  // Takes the next samples and passes each band's to `write(band, samples)`.
  template <class Write>
  void run(std::span<const float, kBlock> samples, Write write) {
    std::copy_n(recent_.begin() + kBlock, kBlock, recent_.begin());
    std::copy_n(samples.begin(), kBlock, recent_.begin() + kBlock);
    newest_ = (newest_ + parts_ - 1) % parts_;
    require(zvxgDFTFwd_RToPerm_64_32f(recent_.data(), past_[newest_].data(), zvxNoDiv));
    for (std::size_t band = 0; band < bands_.size(); ++band) {
      Block sum{};
      for (std::size_t part = 0; part < parts_; ++part) {
        addProduct(sum, past_[(newest_ + part) % parts_], bands_[band][part]);
      }
      require(zvxgDFTInv_PermToR_64_32f(sum.data(), sum.data(), zvxNoDiv));
      // A product of spectra is a circular convolution: its first half is invalid, being wrapped
      // around.
      write(band, std::span<const float, kBlock>(sum.data() + kBlock, kBlock));
    }
  }

 private:
  std::size_t parts_;
  std::vector<std::vector<Block>> bands_;  // spectra of the parts of each filter
  Block recent_{};
  std::vector<Block> past_;  // ring buffer: spectra of the latest blocks
  std::size_t newest_ = 0;
};

void run(Arguments arguments) {
  const std::string input = arguments[0], output = arguments[1];
  Recording recording(input);
  const int rate = recording.rate();
  if (rate < kLowestRate || rate > kHighestRate) {
    throw std::runtime_error(input + ": " + std::to_string(rate) + " samples per second are not " +
                             std::to_string(kLowestRate) + " to " + std::to_string(kHighestRate));
  }
  requireOther(input, output);
  std::vector<float> samples = readAll(recording, 1);
  const std::size_t length = samples.size();

  const std::vector<double> edges = edgesFor(rate);
  const std::vector<Filter> filters = bandsFor(rate);
  const std::size_t bands = filters.size(), delay = filters[0].size() / 2;
  samples.resize((length + delay + kBlock - 1) / kBlock * kBlock);
  std::vector<float> channels(length * bands);
  std::vector<double> squares(bands);
  FilterBank bank(filters);
  const auto start = std::chrono::steady_clock::now();
  for (std::size_t block = 0; block < samples.size(); block += kBlock) {
    bank.run(std::span<const float, kBlock>(samples.data() + block, kBlock),
             [&](std::size_t band, std::span<const float, kBlock> result) {
               for (std::size_t i = 0; i < kBlock; ++i) {
                 const std::size_t place = block + i - delay;  // compensates the filter's delay
                 if (place >= length) continue;                // also if it is before the start
                 channels[place * bands + band] = result[i];
                 squares[band] += static_cast<double>(result[i]) * result[i];
               }
             });
  }
  const std::chrono::duration<double> time = std::chrono::steady_clock::now() - start;
  writeSound(output, rate, static_cast<int>(bands), channels);

  std::printf("%zu bands of %zu taps, %.0f times as fast as the recording\n", bands,
              filters[0].size(), static_cast<double>(length) / rate / time.count());
  for (std::size_t band = 0; band < bands; ++band) {
    const char* kind = band == 0 ? "below" : band == bands - 1 ? "above" : "around";
    const double hertz = band == 0 || band == bands - 1 ? edges[band == 0 ? 0 : band - 1]
                                                        : edges[band] / std::numbers::sqrt2;
    // 0 dB is a sine of amplitude 1, whose mean square is a half.
    std::printf("%6s %5.0f Hz %7.2f dB\n", kind, hertz,
                10 * std::log10(2 * squares[band] / static_cast<double>(length)));
  }
  std::printf("sound: %s\n", output.c_str());
}

}  // namespace

int main(int argc, char** argv) {
  return runProgram({"octaves", "INPUT.wav OUTPUT.wav", 2, 2, run}, argc, argv);
}
