// harmonics INPUT.wav HERTZ [START [SECONDS]]
//
// Measures the harmonics of a periodic signal, such as the mains voltage at 50 Hz or a note. HERTZ
// is its fundamental frequency to within a few percent; the program finds the exact value. START
// and SECONDS select a part of the recording.
//
// The signal is resampled, 60 times per period. So the 60-point transform of one period has
// harmonic k in bin k, and nothing leaks from bin to bin, without a window. (IEC 61000-4-7 requires
// such synchronised sampling for power quality.) The transform itself shows how well the sampling
// is synchronised: if the frequency is wrong, the phase of bin 1 drifts from period to period, and
// the drift gives the correction. The harmonics are means over the periods, after each period is
// rotated by the phase of its fundamental.
#include <zvxg.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <complex>
#include <cstdio>
#include <numbers>
#include <stdexcept>
#include <string>
#include <vector>

#include "program.h"
#include "recording.h"

namespace {

constexpr int kPoints = 60;  // per period
constexpr int kHarmonics = 20;
constexpr double kFarthest = 1.2;  // largest ratio of the frequency to the one given
constexpr double kHighest = 0.2;   // of the sampling rate: a fundamental with two harmonics
constexpr double kPassed = 0.4;    // highest frequency measured, in cycles per sample
constexpr double kLongest = 1e9;   // seconds
constexpr double kPi = std::numbers::pi;

using Spectrum = std::array<std::complex<double>, kPoints / 2 + 1>;  // CCS

// The signal between its samples, without the frequencies that resampling would alias onto the
// harmonics. This is a low-pass filter: sinc with a window that is close to Kaiser's but cheaper
// (the exponential of a semicircle: Barnett, Magland and af Klinteberg, 2019). The transition from
// pass to stop may be wide: with 60 samples per period, the frequencies that alias onto the first
// 20 harmonics begin at the 40th.
class Interpolator {
 public:
  Interpolator(const std::vector<float>& samples, double period) : samples_(samples) {
    const double pass = std::min(kHarmonics / period, kPassed);
    cutoff_ = std::min(kPoints / 2 / period, 0.5);
    // Kaiser's estimate of the length for a transition from pass to 2 cutoff_ - pass.
    reach_ = (kAttenuation - 8) / (2.285 * 2 * kPi * 2 * (cutoff_ - pass)) / 2;
  }

  double reach() const { return reach_; }  // samples needed on each side

  double at(double time) const {
    double sum = 0;
    for (double i = std::ceil(time - reach_); i <= time + reach_; ++i) {
      sum += samples_[static_cast<std::size_t>(i)] * weight(time - i);
    }
    return sum;
  }

 private:
  static constexpr double kAttenuation = 120;  // dB

  double weight(double t) const {
    const double x = 2 * kPi * cutoff_ * t;
    const double sinc = x == 0 ? 1 : std::sin(x) / x;
    const double beta = 0.1102 * (kAttenuation - 8.7);
    const double inside = std::sqrt(std::max(0.0, 1 - t * t / (reach_ * reach_)));
    return 2 * cutoff_ * sinc * std::exp(beta * (inside - 1));
  }

  const std::vector<float>& samples_;
  double cutoff_, reach_;
};

// The spectra of all whole periods, whose length in samples is given. A harmonic k of amplitude A
// gives A / 2 in bin k.
std::vector<Spectrum> spectraOf(const std::vector<float>& samples, double period) {
  const Interpolator signal(samples, period);
  const double start = std::ceil(signal.reach());
  const double end = static_cast<double>(samples.size()) - 1 - signal.reach();
  std::vector<Spectrum> spectra;
  for (int m = 0; start + (m + 1) * period <= end; ++m) {
    std::array<double, kPoints> points;
    for (int n = 0; n < kPoints; ++n) {
      points[n] = signal.at(start + (m + n * 1.0 / kPoints) * period);
    }
    // The language lets us read an array of std::complex as an array of pairs.
    auto* bins = reinterpret_cast<double*>(spectra.emplace_back().data());
    require(zvxgDFTFwd_RToCCS_60_64f(points.data(), bins, zvxDivFwdByN));
  }
  return spectra;
}

// The factor of the fundamental from one period to the next, without its amplitude, as a mean in
// which loud periods count most. If the periods agree, its magnitude is near 1, and its angle is
// the drift. For silence it is not a number.
std::complex<double> advanceOf(const std::vector<Spectrum>& spectra) {
  std::complex<double> sum = 0;
  double weights = 0;
  for (std::size_t m = 1; m < spectra.size(); ++m) {
    const std::complex<double> advance = spectra[m][1] * conj(spectra[m - 1][1]);
    sum += advance;
    weights += std::abs(advance);
  }
  return sum / weights;
}

struct Measured {
  double hertz;
  std::size_t periods, used;                    // used: those that were loud enough
  std::vector<std::complex<double>> harmonics;  // from 0; amplitude and phase, that of 1 being 0
};

Measured measure(const std::vector<float>& samples, int rate, double hertz,
                 const std::string& name) {
  constexpr int kRounds = 20;
  constexpr double kSettled = 1e-9, kSteady = 0.9;
  const double from = hertz / kFarthest, to = hertz * kFarthest;
  std::vector<Spectrum> spectra;
  double drift = 1, steadiness = 0;
  double slope = -1 / hertz;  // of the drift by frequency; exact for a steady signal
  for (int round = 0; round < kRounds && std::abs(drift) > kSettled; ++round) {
    const double step = round == 0 ? 0 : -drift / slope, before = drift;
    hertz += step;
    if (!(hertz > from && hertz < to)) break;
    spectra = spectraOf(samples, rate / hertz);
    if (spectra.size() < 2) {
      throw std::runtime_error(name + ": too short for two periods and the filter around them");
    }
    const std::complex<double> advance = advanceOf(spectra);
    steadiness = std::abs(advance);
    drift = std::arg(advance) / (2 * kPi);
    if (round > 0 && drift != before) slope = (drift - before) / step;
  }
  if (!(std::abs(drift) <= kSettled && steadiness >= kSteady)) {
    throw std::runtime_error(name + ": has no steady period near this frequency");
  }
  double loudest = 0;
  for (const Spectrum& spectrum : spectra) loudest = std::max(loudest, std::abs(spectrum[1]));

  const int last = std::min(kHarmonics, static_cast<int>(kPassed * rate / hertz));
  Measured measured{hertz, spectra.size(), 0, std::vector<std::complex<double>>(last + 1)};
  for (const Spectrum& spectrum : spectra) {
    const double loudness = std::abs(spectrum[1]);
    if (loudness < loudest / 2) continue;  // the onset and end of a note
    ++measured.used;
    const std::complex<double> back = conj(spectrum[1]) / loudness;
    std::complex<double> turn = 1;
    for (int k = 0; k <= last; ++k) {
      measured.harmonics[k] += 2.0 * turn * spectrum[k];
      turn *= back;
    }
  }
  for (std::complex<double>& harmonic : measured.harmonics) {
    harmonic /= static_cast<double>(measured.used);
  }
  return measured;
}

void run(Arguments arguments) {
  const std::string input = arguments[0];
  Recording recording(input);
  const int rate = recording.rate();
  const double hertz = numberFrom(arguments[1], 1, kHighest * rate);
  const double start = arguments.size() > 2 ? numberFrom(arguments[2], 0, kLongest) : 0;
  const double seconds = arguments.size() > 3 ? numberFrom(arguments[3], 0, kLongest) : kLongest;
  std::vector<float> samples = readAll(recording, 1);
  const auto place = [&](double time) {
    return samples.begin() +
           std::lround(std::min(time * rate, static_cast<double>(samples.size())));
  };
  samples = {place(start), place(start + seconds)};
  const Measured measured = measure(samples, rate, hertz, input);

  const double fundamental = std::abs(measured.harmonics[1]);
  double others = 0;
  for (std::size_t k = 2; k < measured.harmonics.size(); ++k) {
    others += std::norm(measured.harmonics[k]);
  }
  std::printf("%.4f Hz, %zu of %zu periods, total harmonic distortion %.4f %%\n", measured.hertz,
              measured.used, measured.periods, 100 * std::sqrt(others) / fundamental);
  std::printf("harmonic        Hz    amplitude   percent    phase\n");
  for (std::size_t k = 1; k < measured.harmonics.size(); ++k) {
    const double amplitude = std::abs(measured.harmonics[k]);
    const double degrees = k == 1 ? 0 : std::arg(measured.harmonics[k]) * 180 / kPi;
    std::printf("%8zu %9.2f %12.7f %9.4f %8.2f\n", k, static_cast<double>(k) * measured.hertz,
                amplitude, 100 * amplitude / fundamental, degrees);
  }
}

}  // namespace

int main(int argc, char** argv) {
  return runProgram({"harmonics", "INPUT.wav HERTZ [START [SECONDS]]", 2, 4, run}, argc, argv);
}
