// Real signals to their spectra and back, by the complex algorithms over Parts.
//
// A sample is an element without imaginary part; in a spectrum, the elements k and n - k are
// conjugates. As zero parts are never computed and conjugates share their registers (parts.h), the
// complex algorithms do no more here than a real transform has to: a column of real elements gives
// half a spectrum, a symmetric column gives real elements.
#pragma once

#include "algorithms.h"
#include "parts.h"
#include "tables.h"

namespace kernelgen {

// exp(-2 pi i t) x. By an odd eighth of a turn, both parts are multiplied by one constant, then
// added and subtracted.
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

  // On the side of the samples the numbers are plain, on that of the spectrum centred.
  Numbering blockNumbering() const { return flow_ == Flow::ToSamples ? kCentred : kPlain; }
  Numbering columnNumbering() const { return flow_ == Flow::ToSpectrum ? kCentred : kPlain; }

  Convolved<Parts> convolve(const Recipe& r, const Columns<Parts>& x, const Column<Parts>& x0,
                            const std::vector<Factor>& factors);

 private:
  Flow flow_;
};

}  // namespace kernelgen
