// Transforms of real signals and of conjugate-symmetric spectra, both over Parts.
//
// A sample is an element without imaginary part; of a spectrum, the elements k and n - k are
// conjugates. Parts that vanish are never computed and mirror values are the same nodes, so the
// complex algorithms do here what a real transform has to do and no more: a column of real elements
// gives a half spectrum, a symmetric one real elements.
#pragma once

#include "algorithms.h"
#include "parts.h"
#include "tables.h"

namespace kernelgen {

// exp(-2 pi i t) x. An odd eighth of a turn takes one product of each part and a plain sum of two.
Parts twiddled(Parts x, Turn t);

class Real {
 public:
  explicit Real(Flow flow) : flow_(flow) {}

  // Sums over x[n] exp(-2 pi i k n / N), of each column.
  Columns<Parts> run(const Recipe& r, const Columns<Parts>& x);
  Column<Parts> run(const Recipe& r, const Column<Parts>& x);

  template <class Angle>
  Columns<Parts> rotate(const Columns<Parts>& x, Angle angle) {
    return columns(std::ssize(x), std::ssize(x[0]),
                   [&](long c, long k) { return twiddled(x[c][k], angle(c, k)); });
  }

  // Samples are numbered as they come, what belongs to the spectrum is centred.
  Numbering blockNumbering() const { return flow_ == Flow::ToSamples ? kCentred : kPlain; }
  Numbering columnNumbering() const { return flow_ == Flow::ToSpectrum ? kCentred : kPlain; }

  Convolved<Parts> convolve(const Recipe& r, const Columns<Parts>& x, const Column<Parts>& x0,
                            const std::vector<Factor>& factors);

 private:
  Flow flow_;
};

}  // namespace kernelgen
