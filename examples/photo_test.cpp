// Runs the program photo on a photograph and on pictures whose coefficients are known.
#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <string>

#include "example_test.h"

namespace {

const std::string kImages = EXAMPLES_IMAGES "/";

class Photo : public ExampleTest {
 protected:
  struct Figures {
    double bitsPerPixel, percent, psnr;
  };

  Figures code(const std::string& input, double step) {
    const Outcome outcome = run("photo", input + " out.png " + std::to_string(step));
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    Figures figures{-1, -1, INFINITY};
    const std::size_t end = outcome.out.find(": ") + 2;
    const int found = std::sscanf(outcome.out.c_str() + end,
                                  "%lf bits per pixel, %lf %% of the coefficients, PSNR %lf dB",
                                  &figures.bitsPerPixel, &figures.percent, &figures.psnr);
    EXPECT_EQ(found, outcome.out.find(", exact\n") == std::string::npos ? 3 : 2) << outcome.out;
    return figures;
  }
};

double psnr(const Picture& original, const Picture& coded) {
  EXPECT_EQ(original.width(), coded.width());
  EXPECT_EQ(original.height(), coded.height());
  double squares = 0;
  for (int y = 0; y < original.height(); ++y) {
    for (int x = 0; x < original.width(); ++x) {
      const Color a = original.at(x, y), b = coded.at(x, y);
      squares += std::pow(a.red - b.red, 2) + std::pow(a.green - b.green, 2) +
                 std::pow(a.blue - b.blue, 2);
    }
  }
  return 10 * std::log10(255.0 * 255 * 3 * original.width() * original.height() / squares);
}

TEST_F(Photo, finestStepIsExact) {
  for (const char* name : {"snake.png", "snake-grayscale.png", "snake-palette.png"}) {
    SCOPED_TRACE(name);
    EXPECT_EQ(code(kImages + name, 1 / 16.0).psnr, INFINITY);
    EXPECT_EQ(psnr(readPng(kImages + name), readPng("out.png")), INFINITY);
  }
  Picture odd(13, 9, {200, 100, 50});  // not of whole blocks
  odd.set(12, 8, {0, 255, 1});
  writePng(odd, "odd.png");
  EXPECT_EQ(code("odd.png", 1 / 16.0).psnr, INFINITY);
  EXPECT_EQ(psnr(odd, readPng("out.png")), INFINITY);
}

// Rounding to multiples of s leaves s^2 / 12 where values spread over many steps, and less where
// most of them are small. In luma s, in the two differences 2 s: by the inverse of the colour
// transform, their errors count 1, 1/4 and 1/6 in the mean of red, green and blue.
TEST_F(Photo, errorOfAPhotograph) {
  const Picture original = readPng(kImages + "snake.png");
  for (const double step : {4.0, 32.0}) {
    SCOPED_TRACE(step);
    const Figures figures = code(kImages + "snake.png", step);
    const double expected = 10 * std::log10(255 * 255 / (step * step / 12 * (1 + 4 / 4. + 4 / 6.)));
    EXPECT_GT(figures.psnr, expected);
    EXPECT_NEAR(figures.psnr, psnr(original, readPng("out.png")), 0.006);
  }
}

// Grey blocks 128 + 24 w and 128 - 24 w by turns, w a Walsh function of rows times one of columns:
// two of a block's 192 coefficients are not zero, one of them with two values, one bit for 64
// pixels. 8 * 24 is a multiple of the step.
TEST_F(Photo, oneWalshFunctionIsOneCoefficient) {
  const int row = 5, column = 3;
  Picture picture(128, 64, {0, 0, 0});
  for (int y = 0; y < 64; ++y) {
    for (int x = 0; x < 128; ++x) {
      const int minus = std::popcount(row & y % 8u) + std::popcount(column & x % 8u) + x / 8;
      const auto grey = static_cast<std::uint8_t>(minus % 2 ? 128 - 24 : 128 + 24);
      picture.set(x, y, {grey, grey, grey});
    }
  }
  writePng(picture, "walsh.png");
  const Figures figures = code("walsh.png", 64);
  EXPECT_EQ(figures.psnr, INFINITY);
  EXPECT_NEAR(figures.bitsPerPixel, 1 / 64.0, 0.0005);
  EXPECT_NEAR(figures.percent, 100 * 2 / 192.0, 0.05);
}

TEST_F(Photo, comparisonShowsBothPictures) {
  const Outcome outcome = run("photo", kImages + "snake.png out.png 32 both.png");
  ASSERT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_NE(outcome.out.find("\npicture: both.png\n"), std::string::npos);
  const Picture original = readPng(kImages + "snake.png"), coded = readPng("out.png");
  const Picture both = readPng("both.png");
  ASSERT_GE(both.width(), 2 * original.width());
  for (const auto& [left, picture] : {std::pair(24, &original), std::pair(48 + 600, &coded)}) {
    for (int i = 0; i < 450; ++i) {
      const Color shown = both.at(left + i, 40 + i), expected = picture->at(i, i);
      ASSERT_EQ(shown.red * 65536 + shown.green * 256 + shown.blue,
                expected.red * 65536 + expected.green * 256 + expected.blue)
          << i;
    }
  }
}

TEST_F(Photo, badInputIsOneLineAndLeavesNoFile) {
  writePng(Picture(64, 64, {9, 9, 9}), "good.png");
  const std::string good = contents("good.png");
  std::ofstream("empty.png");
  std::ofstream("text.png") << "no picture\n";
  std::ofstream("torn.png", std::ios::binary) << good.substr(0, good.size() / 2);
  const struct {
    const char *arguments, *complaint;
  } kCases[] = {
      {"good.png", "usage: photo INPUT.png OUTPUT.png [STEP [COMPARISON.png]]"},
      {"empty.png out.png", "empty.png: not a readable PNG"},
      {"text.png out.png", "text.png: not a readable PNG"},
      {"torn.png out.png", "torn.png: not a readable PNG"},
      {"good.png out.png 0", "'0' is no number from 0.0625 to 1024"},
      {"good.png out.png nan", "'nan' is no number"},
      {"good.png out.png 4x", "'4x' is no number"},
      {"good.png missing/out.png", "missing/out.png: cannot be written"},
      {"good.png ./good.png", "./good.png: is the input itself"},
      {"good.png out.png 4 good.png", "good.png: is the input itself"},
  };
  for (const auto& [arguments, complaint] : kCases) {
    expectRefusal("photo", arguments, complaint);
  }
  EXPECT_EQ(contents("good.png"), good);
}

}  // namespace
