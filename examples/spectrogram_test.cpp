// Runs the program spectrogram on recordings made here: tones whose place in the picture is known,
// and input that it has to refuse.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <limits>
#include <numbers>
#include <set>
#include <string>
#include <vector>

#include "chart.h"
#include "example_test.h"

namespace {

class Spectrogram : public ExampleTest {};

struct Tones {
  const char* name;
  int rate, channels, format;
  int firstBin, secondBin;  // loud tone in the first half, a softer one in the second
  int samples;
};

class SpectrogramOf : public Spectrogram, public testing::WithParamInterface<Tones> {};

int brightness(const Picture& picture, int x, int y) {
  const Color color = picture.at(kPlot.left + x, kPlot.top + y);
  return color.red + color.green + color.blue;
}

// The middle of the brightest rows of the picture's levels at column x.
double brightestRow(const Picture& picture, int x) {
  int first = 0, last = 0;
  for (int y = 1; y < kPlot.height; ++y) {
    if (brightness(picture, x, y) > brightness(picture, x, first)) first = y;
    if (brightness(picture, x, y) >= brightness(picture, x, last)) last = y;
  }
  return (first + last) / 2.0;
}

TEST_P(SpectrogramOf, twoTonesStandWhereTheyBelong) {
  const Tones& tones = GetParam();
  std::vector<float> samples;
  for (int i = 0; i < tones.samples; ++i) {
    const bool first = i < tones.samples / 2;
    // Slightly off the bin, so that no two windows are equal.
    const double turns = ((first ? tones.firstBin : tones.secondBin) + 0.01) * i / 64.0;
    const auto value =
        static_cast<float>((first ? 0.8 : 0.4) * std::cos(2 * std::numbers::pi * turns));
    // All of it in the last channel: only a program that mixes the channels sees it.
    samples.insert(samples.end(), tones.channels - 1, 0.0f);
    samples.push_back(value);
  }
  writeSoundAs(tones.format, "in.wav", tones.rate, tones.channels, samples);

  const Outcome outcome = run("spectrogram", "in.wav out.png");
  ASSERT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(outcome.err, "");
  EXPECT_EQ(namesIn("."), (std::set<std::string>{"in.wav", "out.png"}));

  long long windows = 0, compared = 0;
  double speed = 0, deviation = 1, strongest = -1;
  char path[16] = "";
  ASSERT_EQ(std::sscanf(outcome.out.c_str(),
                        "%lld windows, %lf million transforms/s, largest deviation from a long "
                        "double DFT %lf (%lld windows), strongest at %lf Hz\npicture: %15s\n",
                        &windows, &speed, &deviation, &compared, &strongest, path),
            6)
      << outcome.out;
  EXPECT_EQ(windows, (tones.samples - 64) / 16 + 1);
  EXPECT_GE(compared, std::min(windows, 64LL));
  EXPECT_GT(deviation, 0);
  EXPECT_LT(deviation, 4e-7);  // a few roundings of single precision, 6e-8 each
  EXPECT_NEAR(strongest, tones.firstBin * tones.rate / 64.0, 1e-5 * tones.rate);
  EXPECT_STREQ(path, "out.png");

  const Picture picture = readPng("out.png");
  ASSERT_EQ(picture.width(), kPictureWidth);
  ASSERT_EQ(picture.height(), kPictureHeight);
  // One tone and, six bins away, nothing: a sample lost or repeated anywhere would be a click,
  // which has all frequencies. Only where the tones meet there is one.
  const double samplesPerColumn = 1.0 * tones.samples / kPlot.width;
  for (int x = 0; x < kPlot.width; ++x) {
    const double fromTheMiddle = (x + 0.5 - kPlot.width / 2) * samplesPerColumn;
    if (std::abs(fromTheMiddle) < 64 + samplesPerColumn) continue;
    const int bin = fromTheMiddle < 0 ? tones.firstBin : tones.secondBin;
    const double row = kPlot.height * (1 - bin / 32.0) - 0.5;
    ASSERT_NEAR(brightestRow(picture, x), row, 1) << "column " << x;
    for (int y = 0; y < kPlot.height; ++y) {
      if (std::abs(y - row) < 6 * kPlot.height / 32.0) continue;
      ASSERT_LT(brightness(picture, x, y), 40) << "column " << x << ", row " << y;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(
    , SpectrogramOf,
    testing::Values(Tones{"mono16", 16000, 1, SF_FORMAT_WAV | SF_FORMAT_PCM_16, 9, 20, 40000},
                    Tones{"stereo24", 44100, 2, SF_FORMAT_WAV | SF_FORMAT_PCM_24, 30, 3, 200001},
                    Tones{"fiveFloat", 8000, 5, SF_FORMAT_WAV | SF_FORMAT_FLOAT, 1, 31, 4000},
                    Tones{"slow", 100, 1, SF_FORMAT_WAV | SF_FORMAT_PCM_16, 16, 8, 400}),
    [](const auto& test) { return test.param.name; });

TEST_F(Spectrogram, oneWindowAndSilenceHaveAPicture) {
  writeSound("in.wav", 8000, 1, std::vector<float>(64, 0.0f));
  const Outcome outcome = run("spectrogram", "in.wav out.png");
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(outcome.out.find("1 windows, "), 0u) << outcome.out;
  EXPECT_NE(outcome.out.find(", silence\n"), std::string::npos) << outcome.out;
  EXPECT_EQ(readPng("out.png").width(), kPictureWidth);
}

TEST_F(Spectrogram, badInputIsOneLineAndLeavesNoFile) {
  const auto floats = [](float odd) {
    std::vector<float> samples(640, 0.25f);
    samples[500] = odd;
    return samples;
  };
  writeSound("short.wav", 8000, 1, std::vector<float>(63, 0.25f));
  writeSound("nan.wav", 8000, 1, floats(std::numeric_limits<float>::quiet_NaN()));
  writeSound("inf.wav", 8000, 1, floats(-std::numeric_limits<float>::infinity()));
  writeSound("loud.wav", 8000, 1, floats(3e38f));
  std::ofstream("empty.wav");
  std::filesystem::create_directory("directory");
  expectSoundRefusals("spectrogram", "out.png",
                      {{"", "usage: spectrogram INPUT.wav OUTPUT.png"},
                       {"good.wav", "usage: "},
                       {"good.wav out.png more", "usage: "},
                       {"directory out.png", "directory: not a regular file"},
                       {"/dev/null out.png", "/dev/null: not a regular file"},
                       {"empty.wav out.png", "empty.wav: not a readable sound file"},
                       {"short.wav out.png", "short.wav: 63 samples"},
                       {"nan.wav out.png", "nan.wav: sample 500"},
                       {"inf.wav out.png", "inf.wav: sample 500"},
                       {"loud.wav out.png", "loud.wav: sample 500"},
                       {"good.wav directory", "directory: cannot be written"},
                       {"good.wav missing/out.png", "missing/out.png: cannot be written"},
                       {"good.wav /dev/null", "/dev/null: cannot be written"},
                       {"good.wav ./good.wav", "./good.wav: is the input itself"}});
  EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));
  expectOldFileKept("spectrogram", "good.wav out.png", "out.png");
}

}  // namespace
