// photo INPUT.png OUTPUT.png [STEP [COMPARISON.png]]
//
// Codes a picture by the Walsh-Hadamard transform of blocks of 8 x 8 pixels, and writes what a
// decoder would output. In natural order the transform of 64 points in a row is the two-dimensional
// transform of 8 x 8 points, because (-1)^popcount(i & k) is the product of the signs for the upper
// and the lower three bits. So each block is one transform, and one call transforms a row of blocks.
//
// The colours are first converted to luma and two differences, which leaves most of the picture in
// one channel (Malvar and Sullivan, "YCoCg-R", 2003). Coefficients are rounded to multiples of STEP
// (of twice STEP in the differences). They are scaled so that the transform is orthonormal, so the
// error of the picture is that of the coefficients. They are multiples of 1/8, so a STEP of 1/16
// gives back exactly the picture. The program prints how many bits an ideal entropy coder would
// need that knows how often each value of each of the 64 coefficients occurs.
#include <zvxg_many.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <map>
#include <string>
#include <vector>

#include "picture.h"
#include "program.h"

namespace {

constexpr int kSide = 8;
constexpr int kPoints = kSide * kSide;
constexpr double kDefaultStep = 32;

constexpr int kChannels = 3;  // luma, orange minus blue, green minus purple

using Counts = std::map<int, std::int64_t>;  // how often each value occurs

// A row of blocks. A point of all blocks and channels is behind the one before, which is how many
// transforms in one call are fastest.
class Strip {
 public:
  explicit Strip(int blocks) : blocks_(blocks), numbers_(kPoints * kChannels * blocks) {}

  int blocks() const { return blocks_; }
  float& at(int point, int channel, int block) {
    return numbers_[(point * kChannels + channel) * blocks_ + block];
  }
  void transform() {
    const int count = kChannels * blocks_;
    require(zvxgWHT_Many_32f(numbers_.data(), count, 1, numbers_.data(), count, 1, 6, count,
                             zvxDivBySqrtN, nullptr));
  }

 private:
  int blocks_;
  std::vector<float> numbers_;
};

// Lifting steps: each is undone by the same step with the sign reversed, although halves are
// rounded.
std::array<int, 3> fromColor(Color color) {
  const int orange = color.red - color.blue;
  const int middle = color.blue + (orange >> 1);
  const int green = color.green - middle;
  return {middle + (green >> 1), orange, green};
}

Color toColor(int luma, int orange, int green) {
  const auto byte = [](int value) { return static_cast<std::uint8_t>(std::clamp(value, 0, 255)); };
  const int middle = luma - (green >> 1);
  const int blue = middle - (orange >> 1);
  return {byte(blue + orange), byte(green + middle), byte(blue)};
}

// The blocks from the row `top` down. Beyond the picture its last row and column are repeated.
void load(const Picture& picture, int top, Strip& strip) {
  for (int block = 0; block < strip.blocks(); ++block) {
    for (int i = 0; i < kPoints; ++i) {
      const int x = std::min(block * kSide + i % kSide, picture.width() - 1);
      const int y = std::min(top + i / kSide, picture.height() - 1);
      const auto values = fromColor(picture.at(x, y));
      for (int c = 0; c < kChannels; ++c) strip.at(i, c, block) = static_cast<float>(values[c]);
    }
  }
}

void store(Strip& strip, Picture& picture, int top) {
  for (int block = 0; block < strip.blocks(); ++block) {
    for (int i = 0; i < kPoints; ++i) {
      const auto value = [&](int c) {
        return static_cast<int>(std::lround(strip.at(i, c, block)));
      };
      picture.set(block * kSide + i % kSide, top + i / kSide,
                  toColor(value(0), value(1), value(2)));
    }
  }
}

using AllCounts = std::array<std::array<Counts, kPoints>, kChannels>;

// Rounds coefficients to multiples of the step.
void quantise(Strip& strip, double step, AllCounts& counts) {
  for (int k = 0; k < kPoints; ++k) {
    for (int c = 0; c < kChannels; ++c) {
      const auto unit = static_cast<float>(c == 0 ? step : 2 * step);
      for (int block = 0; block < strip.blocks(); ++block) {
        float& coefficient = strip.at(k, c, block);
        const auto index = std::lround(coefficient / unit);
        ++counts[c][k][static_cast<int>(index)];
        coefficient = static_cast<float>(index) * unit;
      }
    }
  }
}

double entropyBits(const Counts& counts) {
  double total = 0, bits = 0;
  for (const auto& [value, count] : counts) total += static_cast<double>(count);
  for (const auto& [value, count] : counts) {
    bits -= static_cast<double>(count) * std::log2(static_cast<double>(count) / total);
  }
  return bits;
}

double squaredError(const Picture& one, const Picture& other, const Area& area) {
  double sum = 0;
  for (int y = area.top; y < area.top + area.height; ++y) {
    for (int x = area.left; x < area.left + area.width; ++x) {
      const Color a = one.at(x, y), b = other.at(x, y);
      for (const int d : {a.red - b.red, a.green - b.green, a.blue - b.blue}) sum += d * d;
    }
  }
  return sum;
}

struct Coded {
  Picture picture;
  double bitsPerPixel, nonZero, psnr;  // nonZero: share of coefficients that are not zero
};

Coded code(const Picture& original, double step) {
  Coded coded{original, 0, 0, 0};
  AllCounts counts;
  Strip strip((original.width() + kSide - 1) / kSide);
  for (int top = 0; top < original.height(); top += kSide) {
    load(original, top, strip);
    strip.transform();
    quantise(strip, step, counts);
    strip.transform();
    store(strip, coded.picture, top);
  }

  const double pixels = static_cast<double>(original.width()) * original.height();
  double all = 0, zeros = 0;
  for (const auto& channel : counts) {
    for (const Counts& coefficient : channel) {
      coded.bitsPerPixel += entropyBits(coefficient) / pixels;
      for (const auto& [value, count] : coefficient) {
        all += static_cast<double>(count);
        if (value == 0) zeros += static_cast<double>(count);
      }
    }
  }
  coded.nonZero = 1 - zeros / all;
  const double error =
      squaredError(original, coded.picture, {0, 0, original.width(), original.height()});
  coded.psnr = 10 * std::log10(255 * 255 * 3 * pixels / error);
  return coded;
}

// The area of this size in which the pictures differ most.
Area mostChanged(const Picture& one, const Picture& other, int width, int height) {
  Area most{};
  double largest = -1;
  for (int top = 0; top + height <= one.height(); top += kSide) {
    for (int left = 0; left + width <= one.width(); left += kSide) {
      const Area area{left, top, width, height};
      const double error = squaredError(one, other, area);
      if (error > largest) largest = error, most = area;
    }
  }
  return most;
}

void copy(const Picture& from, const Area& area, int zoom, Picture& to, int left, int top) {
  for (int y = 0; y < area.height; ++y) {
    for (int x = 0; x < area.width; ++x) {
      to.fill(left + x * zoom, top + y * zoom, zoom, zoom, from.at(area.left + x, area.top + y));
    }
  }
}

// Both pictures side by side, and below them where they differ most, magnified.
Picture compare(const Picture& original, const Coded& coded) {
  constexpr int kMargin = 24, kCaption = 40, kZoom = 4;
  constexpr Color kPaper = {255, 255, 255}, kInk = {30, 30, 36};
  const Area whole{0, 0, original.width(), original.height()};
  const Area detail =
      mostChanged(original, coded.picture, whole.width / kZoom, whole.height * 2 / 3 / kZoom);
  const int below = kCaption + whole.height + kCaption;
  char figures[80];
  std::snprintf(figures, sizeof figures, "coded: %.2f bits per pixel, PSNR %.1f dB",
                coded.bitsPerPixel, coded.psnr);
  Font font(std::clamp(whole.width / 30, 10, 20));
  const int column = std::max(whole.width, font.width(figures));
  Picture sheet(2 * column + 3 * kMargin, below + detail.height * kZoom + kMargin, kPaper);
  const struct {
    const Picture& picture;
    const char *caption, *detailCaption;
  } kSides[] = {{original, "original: 24 bits per pixel", "where they differ most"},
                {coded.picture, figures, "the same, coded"}};
  int left = kMargin;
  for (const auto& side : kSides) {
    font.draw(sheet, left, kCaption - 12, side.caption, Anchor::Left, kInk);
    copy(side.picture, whole, 1, sheet, left, kCaption);
    font.draw(sheet, left, below - 12, side.detailCaption, Anchor::Left, kInk);
    copy(side.picture, detail, kZoom, sheet, left, below);
    left += column + kMargin;
  }
  return sheet;
}

void run(Arguments arguments) {
  const std::string input = arguments[0], output = arguments[1];
  const double step =
      arguments.size() > 2 ? numberFrom(arguments[2], 1.0 / 16, 1024) : kDefaultStep;
  const Picture original = readPng(input);
  for (const char* file : arguments.subspan(1)) requireOther(input, file);
  const Coded coded = code(original, step);
  writePng(coded.picture, output);
  std::printf("%d x %d pixels, step %g: %.3f bits per pixel, %.1f %% of the coefficients, ",
              original.width(), original.height(), step, coded.bitsPerPixel, 100 * coded.nonZero);
  if (std::isinf(coded.psnr)) {
    std::printf("exact\n");
  } else {
    std::printf("PSNR %.2f dB\n", coded.psnr);
  }
  std::printf("picture: %s\n", output.c_str());
  if (arguments.size() > 3) {
    writePng(compare(original, coded), arguments[3]);
    std::printf("picture: %s\n", arguments[3]);
  }
}

}  // namespace

int main(int argc, char** argv) {
  return runProgram({"photo", "INPUT.png OUTPUT.png [STEP [COMPARISON.png]]", 2, 4, run}, argc,
                    argv);
}
