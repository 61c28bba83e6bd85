// codec INPUT.wav OUTPUT.wav [STEP [BLOCK [sine|kbd]]]
//
// Codes a recording by the modified discrete cosine transform (MDCT) of blocks, as audio codecs do,
// and writes what a decoder would output. The transform is orthogonal, so rounding its coefficients
// to multiples of STEP makes an error of the same size in the samples: a mean square of about
// STEP^2 / 12, or less if most coefficients are below the step. A STEP of 0 rounds nothing and
// shows that the transform and its inverse are exact up to single precision.
//
// The program prints how many bits an ideal adaptive entropy coder would need. The coder classifies
// coefficients by the size of neighbours already sent: two in the same frame and three in the frame
// before.
#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>
#include <zvxg.hpp>

#include "program.h"
#include "recording.h"

namespace {

constexpr double kDefaultStep = 0.01, kDefaultBlock = 512;
constexpr float kLargestIndex = 1 << 28;
constexpr double kAlpha = 4;  // of the Kaiser-Bessel derived window

// Counts coefficients frame by frame.
class EntropyCoder {
 public:
  explicit EntropyCoder(std::size_t length) : previous_(length + 4), current_(length + 4) {}

  void frame(const std::vector<int>& indices) {
    for (std::size_t i = 0; i < indices.size(); ++i) {
      const std::size_t k = i + 2;  // two zeros come first, and two last
      const unsigned around = 2 * current_[k - 1] + current_[k - 2] + previous_[k - 1] +
                              2 * previous_[k] + previous_[k + 1];
      ++counts_[std::bit_width(around)][indices[i]];
      current_[k] = static_cast<unsigned>(std::abs(indices[i]));
    }
    std::swap(previous_, current_);
  }

  double bits() const {
    double bits = 0;
    for (const auto& [around, values] : counts_) {
      double total = 0;
      for (const auto& [value, count] : values) total += count;
      for (const auto& [value, count] : values) bits -= count * std::log2(count / total);
    }
    return bits;
  }

 private:
  std::vector<unsigned> previous_, current_;  // magnitudes
  std::map<int, std::map<int, double>> counts_;
};

struct Coded {
  std::vector<float> samples;
  double bits = 0;
};

Coded code(const std::vector<float>& original, const std::vector<float>& window, float step) {
  const std::size_t length = window.size();
  zvxg::Mdct<float> analysis(window);
  zvxg::Imdct<float> synthesis(window);
  EntropyCoder coder(length);
  Coded coded{std::vector<float>(original.size())};
  std::vector<float> block(length), coefficients(length);
  std::vector<int> indices(length);
  // The decoder is one block behind, so a block of zeros follows the last one.
  for (std::size_t start = 0; start < original.size() + length; start += length) {
    for (std::size_t n = 0; n < length; ++n) {
      block[n] = start + n < original.size() ? original[start + n] : 0;
    }
    analysis(block, coefficients);
    if (step > 0) {
      for (std::size_t k = 0; k < length; ++k) {
        const float index = std::round(coefficients[k] / step);
        if (!(std::abs(index) < kLargestIndex)) {
          throw std::runtime_error("the step is too small for a recording as loud as this");
        }
        indices[k] = static_cast<int>(index);
        coefficients[k] = index * step;
      }
      coder.frame(indices);
    }
    synthesis(coefficients, block);
    for (std::size_t n = 0; n < length; ++n) {
      const std::size_t place = start + n - length;  // wraps around in the first round
      if (place < original.size()) coded.samples[place] = block[n];
    }
  }
  coded.bits = coder.bits();
  return coded;
}

std::vector<float> windowFor(const std::string& name, std::size_t length) {
  if (name == "sine") return zvxg::sineWindow<float>(length);
  if (name == "kbd") return zvxg::kbdWindow<float>(length, kAlpha);
  throw std::runtime_error("'" + name + "' is none of the windows sine and kbd");
}

void run(Arguments arguments) {
  const auto option = [&](std::size_t i, double least, double most, double otherwise) {
    return i < arguments.size() ? numberFrom(arguments[i], least, most) : otherwise;
  };
  const std::string input = arguments[0], output = arguments[1];
  const double step = option(2, 0, 1, kDefaultStep);
  const double block = option(3, 16, 32768, kDefaultBlock);
  const auto length = static_cast<std::size_t>(block);
  if (static_cast<double>(length) != block) throw std::runtime_error("BLOCK is no whole number");
  const std::string name = arguments.size() > 4 ? arguments[4] : "sine";
  const std::vector<float> window = windowFor(name, length);

  Recording recording(input);
  requireOther(input, output);
  const std::vector<float> original = readAll(recording, 1);
  const Coded coded = code(original, window, static_cast<float>(step));
  writeSound(output, recording.rate(), 1, coded.samples);

  double signal = 0, noise = 0;
  for (std::size_t i = 0; i < original.size(); ++i) {
    signal += static_cast<double>(original[i]) * original[i];
    noise += std::pow(static_cast<double>(coded.samples[i]) - original[i], 2);
  }
  std::printf("%zu samples, blocks of %zu, %s window, step %g: ", original.size(), length,
              name.c_str(), step);
  if (step > 0) {
    std::printf("%.3f bits per sample, ", coded.bits / static_cast<double>(original.size()));
  }
  if (noise > 0) {
    std::printf("SNR %.2f dB\n", 10 * std::log10(signal / noise));
  } else {
    std::printf("exact\n");
  }
  std::printf("sound: %s\n", output.c_str());
}

}  // namespace

int main(int argc, char** argv) {
  return runProgram({"codec", "INPUT.wav OUTPUT.wav [STEP [BLOCK [sine|kbd]]]", 2, 5, run}, argc,
                    argv);
}
