// channeliser PREFIX INPUT.wav...
//
// A radio receiver for 64 channels at once. The recordings are first sent as FM stations on
// neighbouring channels of a synthetic band of 3.072 MHz; the receiver separates all 64 channels,
// and what it hears of each station goes to PREFIX-CHANNEL.wav.
//
// Channel c has its centre at c * 48 kHz. Its samples, 48,000 per second, are the band shifted down
// by that frequency, filtered by the prototype low-pass filter h, and every 64th of them kept. In
// polyphase form, with the band in blocks x_m of 64 samples and the taps in parts h_q of 64,
//
//     s_m[p] = sum over q of h_q[p] * x_(m-q)[p],   y_c[m] = sum over p of s_m[p] e^(-2 pi i c p / 64)
//
// (up to a constant phase), so all channels share one filter, and one DFT of 64 points separates them
// (Bellanger, Bonnerot and Coudreuse, "Digital filtering by polyphase network", 1976). The sums of
// a moment lie side by side and each channel becomes a run of its own: the DFTs are one call from
// contiguous to element-major.
//
// The filter is the sinc function under a Blackman window, whose main lobe is as wide as the
// transition: it passes 18 kHz and stops, by 73 dB, from 30 kHz on, where a neighbour's 18 kHz begin.
#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <complex>
#include <cstdio>
#include <numbers>
#include <stdexcept>
#include <string>
#include <vector>
#include <zvxg.hpp>

#include "program.h"
#include "recording.h"

namespace {

constexpr double kPi = std::numbers::pi;
constexpr int kChannels = 64;
constexpr int kChannelRate =
    48000;  // spacing of the channels in Hz, and samples of each per second
constexpr int kBandRate = kChannels * kChannelRate;
constexpr int kPassed = 18000;     // Hz from the centre of a channel
constexpr int kDeviation = 10000;  // Hz at full scale; with 8 kHz of sound a station fills 36 kHz
constexpr int kParts = 22;         // of the filter: 5.5 * kBandRate / (30 - 18 kHz) taps
constexpr int kTaps = kParts * kChannels;
constexpr int kMoments = 256;  // blocks of the band transformed in one call
constexpr int kFirstStation = 8, kMostStations = 48;
constexpr int kLowestRate = 8000, kHighestRate = 16000;

using Sample = std::complex<float>;

double blackman(double x) {
  return 0.42 - 0.5 * std::cos(2 * kPi * x) + 0.08 * std::cos(4 * kPi * x);
}
double sinc(double x) { return x == 0 ? 1 : std::sin(kPi * x) / (kPi * x); }

// ---- The sender --------------------------------------------------------------------------------

// One recording as FM on the centre of a channel.
class Station {
 public:
  Station(const std::string& path, int channel) : channel_(channel) {
    Recording recording(path);
    const int rate = recording.rate();
    if (rate < kLowestRate || rate > kHighestRate || kBandRate % rate != 0) {
      throw std::runtime_error(path + ": " + std::to_string(rate) + " samples per second are not " +
                               std::to_string(kLowestRate) + " to " + std::to_string(kHighestRate) +
                               " that divide " + std::to_string(kBandRate));
    }
    perSample_ = kBandRate / rate;
    sound_ = readAll(recording, 1);
    for (float& value : sound_) value = std::clamp(value, -1.0f, 1.0f);
    // The sound at the rate of the band, by the sinc function under a window.
    for (int phase = 0; phase < perSample_; ++phase) {
      auto& weights = weights_.emplace_back();
      for (int i = 0; i < kReach; ++i) {
        const double x = kReach / 2 - 1 - i + static_cast<double>(phase) / perSample_;
        weights[i] = static_cast<float>(sinc(x) * blackman(x / kReach + 0.5));
      }
    }
  }

  int channel() const { return channel_; }
  std::int64_t length() const { return static_cast<std::int64_t>(sound_.size()) * perSample_; }

  // Adds the station's next samples to the band.
  void addTo(std::span<Sample> band) {
    for (Sample& sample : band) {
      float value = 0;
      const std::int64_t at = place_ / perSample_ - (kReach / 2 - 1);
      for (int i = 0; i < kReach; ++i) {
        if (at + i < 0 || at + i >= static_cast<std::int64_t>(sound_.size())) continue;
        value += weights_[place_ % perSample_][i] * sound_[at + i];
      }
      ++place_;
      phase_ += static_cast<double>(channel_) / kChannels + value * kDeviation / kBandRate;
      phase_ -= std::floor(phase_);
      const auto angle = static_cast<float>(2 * kPi * phase_);
      sample += Sample(std::cos(angle), std::sin(angle));
    }
  }

 private:
  static constexpr int kReach = 32;  // samples of the sound that count in one of the band

  int channel_, perSample_ = 0;
  std::vector<float> sound_;
  std::vector<std::array<float, kReach>> weights_;
  std::int64_t place_ = 0;
  double phase_ = 0;  // turns
};

// ---- The receiver ------------------------------------------------------------------------------

class Channeliser {
 public:
  Channeliser() : taps_(kTaps), band_((kParts - 1 + kMoments) * kChannels) {
    // The last block of the sum is the newest, so the taps are stored in this order; the filter is
    // symmetric. Its cutoff is half a channel, and it passes a channel's centre unchanged.
    for (int n = 0; n < kTaps; ++n) {
      const double fromMiddle = n - (kTaps - 1) / 2.0;
      taps_[n] = static_cast<float>(sinc(fromMiddle / kChannels) / kChannels *
                                    blackman((n + 0.5) / kTaps));
    }
  }

  // Where the next kMoments blocks of the band go.
  std::span<Sample> input() { return std::span(band_).subspan((kParts - 1) * kChannels); }

  // Separates the channels of what is in input(): sample m of channel c at c * kMoments + m.
  std::span<const Sample> run() {
    for (int m = 0; m < kMoments; ++m) {
      Sample* const sum = &sums_[m * kChannels];
      std::fill_n(sum, kChannels, Sample());
      for (int q = 0; q < kTaps; q += kChannels) {
        const float* const taps = &taps_[q];
        const Sample* const band = &band_[m * kChannels + q];
        for (int p = 0; p < kChannels; ++p) sum[p] += taps[p] * band[p];
      }
    }
    zvxg::dft(zvxg::signals<kChannels>(sums_), zvxg::columns<kChannels>(channels_, kMoments));
    std::copy_n(band_.end() - (kParts - 1) * kChannels, (kParts - 1) * kChannels, band_.begin());
    return channels_;
  }

 private:
  std::vector<float> taps_;
  std::vector<Sample> band_;  // what the filter still needs, and the input
  std::vector<Sample> sums_ = std::vector<Sample>(kMoments * kChannels);
  std::vector<Sample> channels_ = std::vector<Sample>(kChannels * kMoments);
};

double power(std::span<const Sample> samples) {
  double sum = 0;
  for (const Sample sample : samples) sum += std::norm(sample);
  return sum;
}

// A tone in each place that a channel passes: the least ratio of its power to that in a neighbour.
double adjacentRejection() {
  constexpr int kChannel = 20;
  double least = INFINITY;
  for (int offset = -kPassed; offset <= kPassed; offset += 1500) {
    Channeliser channeliser;
    std::span<const Sample> channels;
    const double turns = (kChannel * static_cast<double>(kChannelRate) + offset) / kBandRate;
    for (int block = 0, n = 0; block < 2; ++block) {  // in the second, the filter is full
      for (Sample& sample : channeliser.input()) {
        const double phase = std::fmod(turns * n++, 1.0);
        sample = Sample(std::polar(1.0, 2 * kPi * phase));
      }
      channels = channeliser.run();
    }
    const auto of = [&](int channel) {
      return power(channels.subspan(channel * kMoments, kMoments));
    };
    least = std::min(least, of(kChannel) / std::max(of(kChannel - 1), of(kChannel + 1)));
  }
  return 10 * std::log10(least);
}

// ---- The program -------------------------------------------------------------------------------

void run(Arguments arguments) {
  const std::string prefix = arguments[0];
  std::vector<Station> stations;
  std::vector<std::string> outputs;
  for (const std::string input : arguments.subspan(1)) {
    const int channel = kFirstStation + static_cast<int>(stations.size());
    outputs.push_back(prefix + "-" + std::to_string(channel) + ".wav");
    stations.emplace_back(input, channel);
  }
  for (const std::string& output : outputs) {
    for (const char* input : arguments.subspan(1)) requireOther(input, output);
  }

  std::int64_t length = 0;
  for (const Station& station : stations) length = std::max(length, station.length());
  const std::int64_t blocks = (length + kTaps - 1) / (kMoments * kChannels) + 1;

  Channeliser channeliser;
  std::vector<std::vector<float>> sounds(stations.size());
  std::vector<Sample> last(stations.size());
  std::chrono::duration<double> time{};
  for (std::int64_t block = 0; block < blocks; ++block) {
    std::ranges::fill(channeliser.input(), Sample());
    for (Station& station : stations) station.addTo(channeliser.input());
    const auto start = std::chrono::steady_clock::now();
    const std::span<const Sample> channels = channeliser.run();
    time += std::chrono::steady_clock::now() - start;
    // The frequency of a station is the turn of its phase from one sample to the next.
    for (std::size_t i = 0; i < stations.size(); ++i) {
      for (const Sample sample : channels.subspan(stations[i].channel() * kMoments, kMoments)) {
        const float turn = std::arg(sample * std::conj(last[i])) / static_cast<float>(2 * kPi);
        sounds[i].push_back(turn * kChannelRate / kDeviation);
        last[i] = sample;
      }
    }
  }

  // Without the delay of the filter, and as long as the recordings.
  constexpr std::ptrdiff_t kDelay = kParts / 2;
  for (std::size_t i = 0; i < stations.size(); ++i) {
    const auto size = static_cast<std::size_t>(stations[i].length() / kChannels);
    writeSound(outputs[i], kChannelRate, 1, std::span(sounds[i]).subspan(kDelay, size));
  }
  const double seconds = static_cast<double>(blocks) * kMoments / kChannelRate;
  const double speed = seconds / time.count();
  std::printf("%d channels of %d Hz, %.1f times as fast as real time: %.0f channels per second\n",
              kChannels, kChannelRate, speed, kChannels * speed);
  std::printf("adjacent channels are %.1f dB down\n", adjacentRejection());
  for (const std::string& output : outputs) std::printf("sound: %s\n", output.c_str());
}

}  // namespace

int main(int argc, char** argv) {
  return runProgram({"channeliser", "PREFIX INPUT.wav...", 2, 1 + kMostStations, run}, argc, argv);
}
