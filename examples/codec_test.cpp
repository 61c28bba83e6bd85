// Runs the program codec on speech, against the MDCT by its definition, and on noise, whose bits
// and error the theory of rounding tells.
#include <cmath>
#include <cstdio>
#include <numbers>
#include <random>
#include <string>
#include <utility>
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

// Coded and decoded by the definition of the MDCT of N new samples.
std::vector<float> codedByDefinition(const std::vector<float>& samples,
                                     const std::vector<double>& window, double step) {
  const int length = static_cast<int>(window.size()) / 2;
  const int end = static_cast<int>(samples.size());
  std::vector<double> cosines(8 * length);  // of one turn
  for (int i = 0; i < 8 * length; ++i) {
    cosines[i] = std::sqrt(2.0 / length) * std::cos(std::numbers::pi * i / (4 * length));
  }
  std::vector<double> sums(samples.size());
  for (int start = -length; start < end; start += length) {
    for (int k = 0; k < length; ++k) {
      const auto cosine = [&](int n) {
        return cosines[(2 * n + 1 + length) * (2 * k + 1) % (8 * length)];
      };
      const int first = std::max(0, -start), last = std::min(2 * length, end - start);
      double sum = 0;
      for (int n = first; n < last; ++n) sum += window[n] * samples[start + n] * cosine(n);
      sum = step * std::round(sum / step);
      for (int n = first; n < last; ++n) sums[start + n] += window[n] * sum * cosine(n);
    }
  }
  return {sums.begin(), sums.end()};
}

TEST_F(Codec, decodesWhatTheDefinitionDoes) {
  constexpr int kLength = 64;
  std::vector<double> sine(2 * kLength), kbd(2 * kLength);
  double whole = 0;
  const auto kaiser = [](int j) {
    const double x = 2.0 * j / kLength - 1;
    return std::cyl_bessel_i(0, 4 * std::numbers::pi * std::sqrt(1 - x * x));
  };
  for (int j = 0; j <= kLength; ++j) whole += kaiser(j);
  double part = 0;
  for (int n = 0; n < kLength; ++n) {
    part += kaiser(n);
    kbd[n] = kbd[2 * kLength - 1 - n] = std::sqrt(part / whole);
    sine[n] = sine[2 * kLength - 1 - n] = std::sin(std::numbers::pi * (n + 0.5) / (2 * kLength));
  }
  const std::vector<float> speech = readSound(EXAMPLES_SPEECH).samples;
  // Measured 138 to 139 dB; one coefficient near the middle of a step of 0.001 that is rounded the
  // other way makes that about 80. A window of alpha 4.1 gives 49 and 33.
  for (const double step : {0.001, 0.03}) {
    for (const auto& [name, window] : {std::pair("sine", &sine), std::pair("kbd", &kbd)}) {
      code(EXAMPLES_SPEECH, std::to_string(step) + " 64 " + name);
      EXPECT_GT(
          signalToNoise(codedByDefinition(speech, *window, step), readSound("out.wav").samples), 70)
          << step << " " << name;
    }
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
       {"good.wav out.wav 0.1 64 hann", "'hann' is none of the windows sine and kbd"},
       {"good.wav missing/out.wav", "missing/out.wav: cannot be written"},
       {"good.wav ./good.wav", "./good.wav: is the input itself"}});
  expectOldFileKept("codec", "good.wav out.wav", "out.wav");
}

}  // namespace
