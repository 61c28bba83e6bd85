// Runs the program harmonics on signals whose harmonics are known.
#include <cmath>
#include <cstdio>
#include <numbers>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "example_test.h"

namespace {

constexpr double kPi = std::numbers::pi;

class Harmonics : public ExampleTest {
 protected:
  struct Harmonic {
    double amplitude, percent, phase;
  };
  struct Figures {
    double hertz, distortion;
    std::vector<Harmonic> harmonics;  // from 1
  };

  Figures measure(const std::string& arguments) {
    const Outcome outcome = run("harmonics", arguments);
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    Figures figures{};
    const int found = std::sscanf(outcome.out.c_str(),
                                  "%lf Hz, %*d of %*d periods, total harmonic distortion %lf %%",
                                  &figures.hertz, &figures.distortion);
    EXPECT_EQ(found, 2) << outcome.out;
    std::istringstream lines(outcome.out);
    std::string line;
    std::getline(lines, line);
    std::getline(lines, line);
    int number;
    double hertz;
    Harmonic harmonic;
    while (lines >> number >> hertz >> harmonic.amplitude >> harmonic.percent >> harmonic.phase) {
      figures.harmonics.push_back(harmonic);
      EXPECT_EQ(number, static_cast<int>(figures.harmonics.size()));
      EXPECT_NEAR(hertz, number * figures.hertz, 0.006);
    }
    return figures;
  }
};

struct Signal {
  const char* name;
  int rate;
  double hertz, given;
  int last;  // harmonic to be measured
};

class HarmonicsOf : public Harmonics, public testing::WithParamInterface<Signal> {};

// Amplitudes fall off, phases are spread; harmonics beyond the last one must not show in others.
TEST_P(HarmonicsOf, knownAmplitudesAndPhases) {
  const Signal signal = GetParam();
  const auto amplitude = [](int k) { return k % 5 == 4 ? 0 : 0.4 / std::pow(k, 1.5); };
  const auto phase = [](int k) { return 0.7 + 2.4 * k * k; };
  std::vector<float> samples;
  for (int i = 0; i < signal.rate; ++i) {
    double sum = 0.1;  // a mean that is no harmonic
    for (int k = 1; k <= 50 && k * signal.hertz < 0.5 * signal.rate; ++k) {
      if (k > signal.last && k < 1.5 * signal.last) continue;  // where no filter is asked for
      sum += amplitude(k) *
             std::cos(2 * kPi * std::fmod(k * signal.hertz * i / signal.rate, 1) + phase(k));
    }
    samples.push_back(static_cast<float>(sum));
  }
  writeSound("in.wav", signal.rate, 1, samples);
  const Figures figures = measure("in.wav " + std::to_string(signal.given));
  EXPECT_NEAR(figures.hertz, signal.hertz, 1e-4);
  ASSERT_EQ(figures.harmonics.size(), signal.last);
  double others = 0;
  for (int k = 1; k <= signal.last; ++k) {
    SCOPED_TRACE(k);
    const auto [found, percent, degrees] = figures.harmonics[k - 1];
    // The filter stops at -120 dB; single precision and the decimals printed are below that.
    EXPECT_NEAR(found, amplitude(k), 1e-6);
    EXPECT_NEAR(percent, 100 * amplitude(k) / 0.4, 3e-4);
    if (k > 1) others += std::pow(amplitude(k), 2);
    if (amplitude(k) == 0) continue;
    const double expected = (phase(k) - k * phase(1)) * 180 / kPi;
    EXPECT_NEAR(std::remainder(degrees - expected, 360), 0, 0.02);
  }
  EXPECT_NEAR(figures.distortion, 100 * std::sqrt(others) / 0.4, 1e-3);
}

INSTANTIATE_TEST_SUITE_P(, HarmonicsOf,
                         testing::Values(Signal{"synchronous", 3000, 50, 50, 20},
                                         Signal{"mains", 16000, 49.97, 50, 20},
                                         Signal{"otherMains", 48000, 60.02, 58, 20},
                                         Signal{"note", 44100, 443.7, 440, 20},
                                         Signal{"fewSamplesPerPeriod", 8000, 700.3, 720, 4}),
                         [](const auto& test) { return test.param.name; });

// Half a second of 440 Hz, then of 500 Hz.
TEST_F(Harmonics, aPartOfTheRecording) {
  std::vector<float> samples(16000);
  for (int i = 0; i < 16000; ++i) {
    samples[i] = static_cast<float>(0.3 * std::cos(2 * kPi * (i < 8000 ? 440 : 500) * i / 16000));
  }
  writeSound("in.wav", 16000, 1, samples);
  EXPECT_NEAR(measure("in.wav 450 0 0.5").hertz, 440, 1e-3);
  EXPECT_NEAR(measure("in.wav 490 0.5 0.5").hertz, 500, 1e-3);
}

TEST_F(Harmonics, badInputIsOneLine) {
  writeSound("silence.wav", 8000, 1, std::vector<float>(8000, 0.0f));
  writeSound("short.wav", 8000, 1, std::vector<float>(300, 0.25f));
  std::vector<float> noise(8000);
  std::mt19937 random(1);
  for (float& sample : noise) sample = std::uniform_real_distribution<float>(-1, 1)(random);
  writeSound("noise.wav", 8000, 1, noise);
  expectSoundRefusals(
      "harmonics", "50",
      {{"good.wav", "usage: harmonics INPUT.wav HERTZ [START [SECONDS]]"},
       {"short.wav 50", "short.wav: too short for two periods"},
       {"silence.wav 50", "silence.wav: has no steady period near this frequency"},
       {"noise.wav 50", "noise.wav: has no steady period near this frequency"},
       {EXAMPLES_NOTE " 660", "trumpet-12.wav: has no steady period near"},  // three notes
       {"good.wav 50 2", "good.wav: too short for two periods"},
       {"good.wav 0", "'0' is no number from 1 to 1600"},
       {"good.wav 1601", "'1601' is no number from 1 to 1600"}});
}

}  // namespace
