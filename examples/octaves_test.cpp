// Runs the program octaves on noise, which its bands have to add up to, and on tones whose levels are
// known.
#include <cmath>
#include <numbers>
#include <sstream>
#include <string>
#include <vector>

#include "example_test.h"

namespace {

class Octaves : public ExampleTest {};

TEST_F(Octaves, bandsAddUpToTheRecording) {
  // A click at either end and noise: nothing may be lost, not even at the ends.
  for (const int rate : {500, 11025, 48000}) {
    std::vector<float> samples(rate == 500 ? 33 : 5001);
    unsigned random = 1;
    for (float& sample : samples) {
      random = random * 1664525 + 1013904223;
      sample = static_cast<float>(random >> 16) / 65536 - 0.5f;
    }
    writeSound("in.wav", rate, 1, samples);
    const Outcome outcome = run("octaves", "in.wav out.wav");
    ASSERT_EQ(outcome.status, 0) << outcome.err;
    const Sound bands = readSound("out.wav");
    std::vector<float> sums;
    for (std::size_t i = 0; i < bands.samples.size(); i += bands.channels) {
      double sum = 0;
      for (int band = 0; band < bands.channels; ++band) sum += bands.samples[i + band];
      sums.push_back(static_cast<float>(sum));
    }
    EXPECT_GT(signalToNoise(samples, sums), 130) << rate;
  }
}

// A tone of amplitude a that swells and fades, a * sin^2(pi t / T), has 3/8 of the power.
TEST_F(Octaves, levelsOfTones) {
  struct Tone {
    double hertz, amplitude;  // near the edges of bands as well
  };
  const std::vector<Tone> tones = {{40, 0.05},  {125, 0.1},   {310, 0.01},
                                   {1000, 0.3}, {3000, 0.02}, {7000, 0.15}};
  std::vector<float> samples(64000);
  for (std::size_t i = 0; i < samples.size(); ++i) {
    const double t = static_cast<double>(i) / 16000;
    double sum = 0;
    for (const Tone& tone : tones) {
      sum += tone.amplitude * std::sin(2 * std::numbers::pi * tone.hertz * t);
    }
    samples[i] = static_cast<float>(sum * std::pow(std::sin(std::numbers::pi * t / 4), 2));
  }
  writeSound("in.wav", 16000, 1, samples);
  const Outcome outcome = run("octaves", "in.wav out.wav");
  ASSERT_EQ(outcome.status, 0) << outcome.err;
  std::istringstream lines(outcome.out);
  std::string line;
  std::getline(lines, line);
  EXPECT_EQ(line.find("8 bands of 2015 taps, "), 0u) << line;
  const struct {
    const char *kind, *hertz;
    double amplitude;
  } kBands[] = {{"below", "88", 0.05},    {"around", "125", 0.1},  {"around", "250", 0.01},
                {"around", "500", 0},     {"around", "1000", 0.3}, {"around", "2000", 0},
                {"around", "4000", 0.02}, {"above", "5657", 0.15}};
  for (const auto& band : kBands) {
    std::string kind, hertz, unit;
    double level = 0;
    std::getline(lines, line);
    std::istringstream(line) >> kind >> hertz >> unit >> level;
    EXPECT_EQ(kind, band.kind) << line;
    EXPECT_EQ(hertz, band.hertz) << line;
    if (band.amplitude > 0) {
      // A Blackman window lets a filter deviate by 0.002 from what it should pass.
      EXPECT_NEAR(level, 10 * std::log10(3 / 8. * band.amplitude * band.amplitude), 0.02) << line;
    } else {
      EXPECT_LT(level, -70) << line;
    }
  }
  std::getline(lines, line);
  EXPECT_EQ(line, "sound: out.wav");
}

TEST_F(Octaves, badInputIsOneLineAndLeavesNoFile) {
  writeSound("slow.wav", 499, 1, std::vector<float>(640, 0.25f));
  expectSoundRefusals("octaves", "out.wav",
                      {{"good.wav", "usage: octaves INPUT.wav OUTPUT.wav"},
                       {"slow.wav out.wav", "slow.wav: 499 samples per second"}});
  expectOldFileKept("octaves", "good.wav out.wav", "out.wav");
}

}  // namespace
