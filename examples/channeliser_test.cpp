// Runs the program channeliser on tones, which have to arrive on channels side by side without each
// other.
#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <cstdio>
#include <numbers>
#include <string>
#include <vector>

#include "example_test.h"

namespace {

class Channeliser : public ExampleTest {};

std::vector<float> tone(double hertz, int rate, int samples) {
  std::vector<float> values(samples);
  for (int i = 0; i < samples; ++i) {
    values[i] = static_cast<float>(0.5 * std::cos(2 * std::numbers::pi * hertz * i / rate));
  }
  return values;
}

TEST_F(Channeliser, neighboursAreHeardByThemselves) {
  const double hertz[] = {1000, 2500};
  writeSound("a.wav", 16000, 1, tone(hertz[0], 16000, 4000));
  writeSound("b.wav", 8000, 1, tone(hertz[1], 8000, 2000));
  const Outcome outcome = run("channeliser", "out a.wav b.wav");
  ASSERT_EQ(outcome.status, 0) << outcome.err;
  double speed = 0, channels = 0, rejection = 0;
  ASSERT_EQ(std::sscanf(outcome.out.c_str(),
                        "64 channels of 48000 Hz, %lf times as fast as real time: %lf channels per "
                        "second\nadjacent channels are %lf dB down\nsound: out-8.wav\n",
                        &speed, &channels, &rejection),
            3)
      << outcome.out;
  EXPECT_NEAR(channels, 64 * speed, 64 * 0.05 + 0.5);
  EXPECT_GT(rejection, 73);
  const char* const names[] = {"out-8.wav", "out-9.wav"};
  for (int i = 0; i < 2; ++i) {
    const Sound sound = readSound(names[i]);
    EXPECT_EQ(sound.rate, 48000);
    ASSERT_EQ(sound.samples.size(), 12000u);
    // In the middle, away from where the tone starts and ends: the same tone, but for half a sample
    // of delay in the demodulator and half a sample of the band.
    const std::vector<float> heard(sound.samples.begin() + 2400, sound.samples.end() - 2400);
    std::vector<float> expected(heard.size());
    const std::complex<double> turn = std::polar(1.0, 2 * std::numbers::pi * hertz[i] / 48000);
    std::complex<double> sum = 0, phase = 1;
    for (const float value : heard) sum += 2.0 * value / phase, phase *= turn;
    sum /= static_cast<double>(heard.size());
    EXPECT_NEAR(std::abs(sum), 0.5, 0.005) << names[i];
    phase = 1;
    for (float& value : expected) value = static_cast<float>((sum * phase).real()), phase *= turn;
    EXPECT_GT(signalToNoise(expected, heard), 40) << names[i];
  }
}

TEST_F(Channeliser, badInputIsOneLineAndLeavesNoFile) {
  const auto refuses = [&](const std::string& arguments, const std::string& complaint) {
    expectRefusal("channeliser", arguments, complaint);
  };
  writeSound("good.wav", 8000, 1, std::vector<float>(800, 0.25f));
  writeSound("fast.wav", 44100, 1, std::vector<float>(800, 0.25f));
  writeSound("out-8.wav", 8000, 1, std::vector<float>(800, 0.25f));
  refuses("out", "usage: channeliser PREFIX INPUT.wav...");
  refuses("out good.wav fast.wav", "fast.wav: 44100 samples per second are not 8000 to 16000");
  refuses("out good.wav out-8.wav", "out-8.wav: is the input itself");
  refuses("missing/out good.wav", "missing/out-8.wav: cannot be written");
  expectOldFileKept("channeliser", "new good.wav", "new-8.wav");
}

}  // namespace
