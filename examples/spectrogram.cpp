// spectrogram INPUT.wav OUTPUT.png
//
// Draws how the spectrum of a recording changes with time. Windows of 64 samples, one every 16
// samples, are transformed by real transforms of 64 points, 128 in one call. A column of the picture
// shows the mean power of the windows whose centres are in it. Memory does not grow with the length
// of the recording.
#include <zvxg_many.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <numbers>
#include <stdexcept>
#include <string>
#include <vector>

#include "chart.h"
#include "program.h"
#include "recording.h"

namespace {

constexpr int kWindow = 64;
constexpr int kHop = 16;
constexpr int kBins = kWindow / 2 + 1;  // the other bins of a real signal mirror these
constexpr int kBlock = 128;             // windows transformed together
constexpr int kCompared = 64;           // windows compared with the definition, roughly
constexpr double kFloorDb = -70;

using Frame = std::array<float, kWindow>;
using Spectrum = std::array<Complex32, kBins>;  // CCS
using Powers = std::array<double, kBins>;

struct Column {
  Powers power{};
  std::int64_t frames = 0;

  double mean(int k) const { return frames > 0 ? power[k] / static_cast<double>(frames) : 0; }
};

struct Analysis {
  std::vector<Column> columns = std::vector<Column>(kPlot.width);
  Powers total{};
  std::int64_t frames = 0;
  std::int64_t compared = 0;
  double deviation = 0;  // the largest one, relative to the largest bin of its window
  double transformSeconds = 0;
};

// The largest difference between `result` and the transform of `source` by the definition, relative
// to the largest bin of the definition.
double deviationOf(const Frame& source, const Spectrum& result) {
  static const auto turn = [] {
    std::array<std::array<long double, 2>, kWindow> table;
    for (int j = 0; j < kWindow; ++j) {
      const long double angle = 2 * std::numbers::pi_v<long double> * j / kWindow;
      table[j] = {std::cos(angle), std::sin(angle)};
    }
    return table;
  }();
  long double largest = 0, difference = 0;
  for (int k = 0; k < kBins; ++k) {
    long double re = 0, im = 0;
    for (int n = 0; n < kWindow; ++n) {
      const auto [cosine, sine] = turn[k * n % kWindow];
      re += source[n] * cosine;
      im -= source[n] * sine;
    }
    largest = std::max(largest, std::hypot(re, im));
    difference = std::max(difference, std::hypot(result[k].re - re, result[k].im - im));
  }
  return largest > 0 ? static_cast<double>(difference / largest) : 0;
}

Analysis analyse(Recording& recording) {
  // A Hann window: its ends fade out, so that a tone does not smear over all bins.
  std::array<float, kWindow> hann;
  for (int n = 0; n < kWindow; ++n) {
    hann[n] = static_cast<float>(0.5 - 0.5 * std::cos(2 * std::numbers::pi * n / kWindow));
  }
  const std::int64_t expected = (recording.length() - kWindow) / kHop + 1;
  const std::int64_t compareEvery = std::max<std::int64_t>(1, expected / kCompared);

  Analysis analysis;
  std::vector<float> samples(kWindow + (kBlock - 1) * kHop);
  std::vector<Frame> sources(kBlock);
  std::vector<Spectrum> results(kBlock);
  std::size_t kept = 0;  // samples of the last block that the next windows share
  for (;;) {
    const std::size_t filled = kept + recording.read(std::span(samples).subspan(kept));
    if (filled < kWindow) break;
    const int count = static_cast<int>((filled - kWindow) / kHop + 1);
    for (int i = 0; i < count; ++i) {
      for (int n = 0; n < kWindow; ++n) sources[i][n] = samples[i * kHop + n] * hann[n];
    }

    const auto start = std::chrono::steady_clock::now();
    const int32_t status = zvxgDFTFwd_RToCCS_Many_32f(
        sources[0].data(), 1, kWindow, results[0].data(), 1, kBins, kWindow, count, zvxNoDiv);
    const auto end = std::chrono::steady_clock::now();
    require(status);
    analysis.transformSeconds += std::chrono::duration<double>(end - start).count();

    for (int i = 0; i < count; ++i) {
      const std::int64_t centre = analysis.frames * kHop + kWindow / 2;
      Column& column = analysis.columns[centre * kPlot.width / recording.length()];
      ++column.frames;
      for (int k = 0; k < kBins; ++k) {
        const double re = results[i][k].re, im = results[i][k].im;
        const bool mirrored = k != 0 && k != kBins - 1;
        const double power = (mirrored ? 2 : 1) * (re * re + im * im);
        column.power[k] += power;
        analysis.total[k] += power;
      }
      if (analysis.frames % compareEvery == 0) {
        analysis.deviation = std::max(analysis.deviation, deviationOf(sources[i], results[i]));
        ++analysis.compared;
      }
      ++analysis.frames;
    }
    kept = filled - static_cast<std::size_t>(count) * kHop;
    std::copy_n(samples.begin() + count * kHop, kept, samples.begin());
  }
  return analysis;
}

// Mean powers in dB below the loudest of all. In a short recording some columns have no windows;
// they are interpolated linearly between their neighbours.
std::vector<std::vector<double>> levels(const Analysis& analysis) {
  double loudest = 0;
  for (const Column& column : analysis.columns) {
    for (int k = 0; k < kBins; ++k) loudest = std::max(loudest, column.mean(k));
  }
  std::vector<std::vector<double>> result(kPlot.width, std::vector<double>(kBins, kFloorDb));
  int previous = -1;
  for (int x = 0; x < kPlot.width; ++x) {
    const Column& column = analysis.columns[x];
    if (column.frames == 0) continue;
    for (int k = 0; k < kBins && loudest > 0; ++k) {
      result[x][k] = std::max(kFloorDb, 10 * std::log10(column.mean(k) / loudest));
    }
    for (int between = previous + 1; between < x; ++between) {
      const double part = previous < 0 ? 1 : (between - previous) * 1.0 / (x - previous);
      for (int k = 0; k < kBins; ++k) {
        result[between][k] = std::lerp(result[std::max(previous, 0)][k], result[x][k], part);
      }
    }
    previous = x;
  }
  for (int x = previous + 1; x < kPlot.width; ++x) result[x] = result[previous];
  return result;
}

void run(Arguments arguments) {
  const std::string input = arguments[0], output = arguments[1];
  Recording recording(input);
  if (recording.length() < kWindow) {
    throw std::runtime_error(input + ": " + std::to_string(recording.length()) +
                             " samples are less than one window of " + std::to_string(kWindow));
  }
  requireOther(input, output);
  const Analysis analysis = analyse(recording);

  const double rate = recording.rate();
  char subtitle[80];
  std::snprintf(subtitle, sizeof subtitle, "%d-point DFT, Hann window, every %d samples at %g kHz",
                kWindow, kHop, rate / 1000);
  writePng(drawChart({.title = std::filesystem::path(input).filename(),
                      .subtitle = subtitle,
                      .seconds = static_cast<double>(recording.length()) / rate,
                      .topHz = rate / 2,
                      .floorDb = kFloorDb,
                      .columns = levels(analysis)}),
           output);

  const auto strongest = std::max_element(analysis.total.begin(), analysis.total.end());
  char where[40] = "silence";
  if (*strongest > 0) {
    std::snprintf(where, sizeof where, "strongest at %g Hz",
                  static_cast<double>(strongest - analysis.total.begin()) * rate / kWindow);
  }
  std::printf(
      "%lld windows, %.2f million transforms/s, largest deviation from a long double DFT %.1e "
      "(%lld windows), %s\n",
      static_cast<long long>(analysis.frames),
      static_cast<double>(analysis.frames) / analysis.transformSeconds / 1e6, analysis.deviation,
      static_cast<long long>(analysis.compared), where);
  std::printf("picture: %s\n", output.c_str());
}

}  // namespace

int main(int argc, char** argv) {
  return runProgram({"spectrogram", "INPUT.wav OUTPUT.png", 2, 2, run}, argc, argv);
}
