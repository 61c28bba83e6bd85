// The modified discrete cosine transform (MDCT) of a signal, block by block, and its inverse.
//
//     zvxg::Mdct<float> analysis(zvxg::sineWindow<float>(1024));
//     zvxg::Imdct<float> synthesis(zvxg::sineWindow<float>(1024));
//     for (;;) {                                 // 1024 samples each time
//       analysis(samples, coefficients);
//       synthesis(coefficients, samplesBefore);  // the samples of the previous call
//     }
//
// A frame is a window over 2N samples, N of them new; its N coefficients are
//
//     X[k] = sqrt(2/N) * sum over n = 0 .. 2N-1 of w[n] x[n] cos(pi/N (n + 1/2 + N/2) (k + 1/2))
//
// Neighbouring frames share N samples. The coefficients of each frame give them back with
// time-reversed copies mixed in. These copies cancel in the sum of the two frames if the window has
// w[n] = w[2N-1-n] and w[n]^2 + w[N+n]^2 = 1: time-domain aliasing cancellation, J. P. Princen and
// A. B. Bradley, "Analysis/synthesis filter bank design based on time domain aliasing
// cancellation", IEEE Trans. ASSP-34 (1986). With the factor sqrt(2/N) the transform of a signal is
// orthogonal, so the coefficients have the same energy as the samples.
//
// lap.hpp has the algorithm.
#pragma once

#include <cmath>
#include <cstddef>
#include <limits>
#include <numbers>
#include <span>
#include <string>
#include <vector>

#include "zvxg/arrays.hpp"
#include "zvxg/lap.hpp"

namespace zvxg {

/** The rising half of the sine window of 2N samples: w[n] = sin(pi/(2N) (n + 1/2)), n = 0 .. N-1.
 *  It has the best coding gain for a smooth spectrum; its side lobes fall off slowly. `length` is
 *  N. */
template <Real T>
std::vector<T> sineWindow(std::size_t length) {
  std::vector<T> window(length);
  const long double step = std::numbers::pi_v<long double> / (4 * static_cast<long double>(length));
  for (std::size_t n = 0; n < length; ++n) {
    window[n] = static_cast<T>(std::sin(step * static_cast<long double>(2 * n + 1)));
  }
  return window;
}

/** The rising half of the Kaiser-Bessel derived window of 2N samples,
 *
 *      w[n]^2 = (sum over j = 0 .. n of k[j]) / (sum over j = 0 .. N of k[j]),  n = 0 .. N-1,
 *      k[j] = I0(pi alpha sqrt(1 - (2j/N - 1)^2)).
 *
 *  A larger `alpha` gives lower side lobes and a wider main lobe: 4 is usual for 2N = 2048 samples,
 *  5 or 6 for 256; 0 gives the square root of a ramp. L. D. Fielder and others, "AC-2 and AC-3:
 *  Low-complexity transform-based audio coding", AES (1996). `length` is N. Throws
 *  std::invalid_argument unless `alpha` is from 0 to 1000. */
template <Real T>
std::vector<T> kbdWindow(std::size_t length, double alpha) {
  if (!(alpha >= 0 && alpha <= 1000)) {
    detail::fail("kbdWindow", "alpha " + std::to_string(alpha) + " is not from 0 to 1000");
  }
  // I0(x) = sum of ((x/2)^i / i!)^2: all terms are positive, so nothing cancels.
  const auto besselI0 = [](long double squareOfHalf) {
    long double sum = 1, term = 1;
    for (long double i = 1; term > sum * std::numeric_limits<long double>::epsilon(); ++i) {
      term *= squareOfHalf / (i * i);
      sum += term;
    }
    return sum;
  };
  const long double scale = std::numbers::pi_v<long double> * static_cast<long double>(alpha) / 2;
  std::vector<long double> sums(length + 1);
  long double sum = 0;
  for (std::size_t j = 0; j <= length; ++j) {
    const long double x =
        length == 0 ? 0 : 2 * static_cast<long double>(j) / static_cast<long double>(length) - 1;
    sums[j] = sum += besselI0(scale * scale * (1 - x * x));
  }
  std::vector<T> window(length);
  for (std::size_t n = 0; n < length; ++n) window[n] = static_cast<T>(std::sqrt(sums[n] / sum));
  return window;
}

/** Analysis: samples to coefficients. Before the first block the signal is taken to be zero.
 *
 *  An object serves one signal and one thread. It can be moved; an object that was moved from can
 *  only be assigned to and destroyed. The products with the window are compiled as part of the
 *  program, so its compiler options decide whether they are fused with a sum. */
template <Real T>
class Mdct {
 public:
  /// `window` is the rising half of a symmetric window, N samples, from sineWindow(), kbdWindow()
  /// or of your own; the falling half is its mirror image. N is a power of two, as for Dct4. Throws
  /// std::invalid_argument for another length, and for a window that does not satisfy w[n]^2 +
  /// w[N-1-n]^2 = 1; std::bad_alloc if there is no memory.
  explicit Mdct(std::span<const T> window) : lap_("Mdct", window) {}

  /// Takes the next N samples and gives the N coefficients of the frame made of these and the N
  /// samples before. The arrays may overlap. For other sizes it throws std::invalid_argument and
  /// leaves the arrays and the object as they were.
  void operator()(std::span<const T> samples, std::span<T> coefficients) {
    lap_.analyse(samples, coefficients);
  }

  /// N, samples per block and coefficients per frame.
  std::size_t length() const noexcept { return lap_.length(); }

  /// Returns to the state after construction: the next block is the first of a signal.
  void reset() noexcept { lap_.reset(); }

 private:
  detail::Lap<T> lap_;
};

/** Synthesis: coefficients to samples, by adding the overlapping parts of neighbouring frames.
 *  Threads and moves are as for Mdct. */
template <Real T>
class Imdct {
 public:
  /// As for Mdct, with the window of the analysis.
  explicit Imdct(std::span<const T> window) : lap_("Imdct", window) {}

  /// Takes the N coefficients of the next frame and gives N samples. They are the first block of
  /// this frame; the second block needs the next frame too. So the output is one block late: the
  /// first call gives the block before the signal, and to get its last samples you append one block
  /// of zeros. The arrays may overlap. Throws as Mdct does.
  void operator()(std::span<const T> coefficients, std::span<T> samples) {
    lap_.synthesise(coefficients, samples);
  }

  /// N, coefficients per frame and samples per block.
  std::size_t length() const noexcept { return lap_.length(); }

  /// Returns to the state after construction: the next frame is the first of a signal.
  void reset() noexcept { lap_.reset(); }

 private:
  detail::Lap<T> lap_;
};

}  // namespace zvxg
