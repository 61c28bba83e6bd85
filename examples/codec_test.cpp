// Runs the program codec on speech, and on noise, whose bits and error the theory of rounding tells.
#include <cmath>
#include <cstdio>
#include <numbers>
#include <random>
#include <string>
#include <vector>

#include "example_test.h"

namespace {

class Codec : public ExampleTest {
 protected:
  struct Figures {
    double bits, snr;
  };

  // The figures printed; the ratio is also taken from the files.
  Figures code(const std::string& input, const std::string& options) {
    SCOPED_TRACE(options);
    const Outcome outcome = run("codec", input + " out.wav " + options);
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    Figures figures{0, 0};
    const std::size_t colon = std::min(outcome.out.find(": "), outcome.out.size() - 2);
    const char* text = outcome.out.c_str() + colon + 2;
    if (std::sscanf(text, "%lf bits per sample, SNR %lf dB", &figures.bits, &figures.snr) != 2) {
      EXPECT_EQ(std::sscanf(text, "SNR %lf dB", &figures.snr), 1) << outcome.out;
    }
    EXPECT_NEAR(figures.snr, signalToNoise(readSound(input).samples, readSound("out.wav").samples),
                0.006);
    return figures;
  }
};

TEST_F(Codec, withoutRoundingOnlySinglePrecisionIsLost) {
  for (const char* options : {"0 16", "0 512", "0 512 kbd", "0 2048 sine", "0 32768 kbd"}) {
    EXPECT_GT(code(EXAMPLES_SPEECH, options).snr, 130) << options;  // measured 133 to 138
  }
}

// An orthogonal transform of white Gaussian noise is such noise. In steps up to its deviation, its
// error is step^2 / 12; its entropy follows from how often it falls into each step.
TEST_F(Codec, noiseTakesTheBitsThatItMust) {
  constexpr double kDeviation = 0.1;
  std::mt19937 random(1);
  std::normal_distribution<double> normal(0, kDeviation);
  std::vector<float> samples(1 << 17);
  for (float& sample : samples) sample = static_cast<float>(normal(random));
  writeSound("noise.wav", 16000, 1, samples);
  for (const double step : {0.1, 0.025}) {
    const Figures figures = code("noise.wav", std::to_string(step) + " 256");
    double bits = 0;
    for (int i = -100; i <= 100; ++i) {
      const double lower = (i - 0.5) * step / kDeviation / std::numbers::sqrt2;
      const double upper = (i + 0.5) * step / kDeviation / std::numbers::sqrt2;
      const double part = (std::erf(upper) - std::erf(lower)) / 2;
      if (part > 0) bits -= part * std::log2(part);
    }
    EXPECT_NEAR(figures.bits, bits, 0.02) << step;
    EXPECT_NEAR(figures.snr, 10 * std::log10(12 * kDeviation * kDeviation / step / step), 0.05);
  }
}

TEST_F(Codec, silenceTakesNoBits) {
  writeSound("in.wav", 8000, 2, std::vector<float>(10, 0.0f));
  const Outcome outcome = run("codec", "in.wav out.wav");
  EXPECT_EQ(outcome.out,
            "5 samples, blocks of 512, sine window, step 0.01: 0.000 bits per sample, exact\n"
            "sound: out.wav\n");
  EXPECT_EQ(readSound("out.wav").samples, std::vector<float>(5, 0.0f));
}

TEST_F(Codec, badInputIsOneLineAndLeavesNoFile) {
  writeSound("loud.wav", 8000, 1, std::vector<float>(640, 1e12f));
  expectSoundRefusals(
      "codec", "out.wav",
      {{"good.wav", "usage: codec INPUT.wav OUTPUT.wav [STEP [BLOCK [sine|kbd]]]"},
       {"loud.wav out.wav", "the step is too small"},
       {"good.wav out.wav -1", "'-1' is no number from 0 to 1"},
       {"good.wav out.wav 0.1 100", "length 100 is no power of two"},
       {"good.wav out.wav 0.1 64.5", "BLOCK is no whole number"},
       {"good.wav out.wav 0.1 64 hann", "'hann' is none of the windows sine and kbd"}});
  expectOldFileKept("codec", "good.wav out.wav", "out.wav");
}

}  // namespace
