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
  // In the Cooley-Tukey step the samples keep their places, and blocks or columns of the spectrum
  // are numbered symmetrically.
  explicit Real(Flow flow) : flow_(flow) {}

  // Sums over x[n] exp(-2 pi i k n / N), of each column.
  Columns<Parts> run(const Recipe& r, const Columns<Parts>& x);
  Column<Parts> run(const Recipe& r, const Column<Parts>& x);

  template <class Angle>
  Columns<Parts> rotate(Columns<Parts> x, Angle angle) {
    for (std::size_t c = 0; c < x.size(); ++c) {
      for (std::size_t k = 0; k < x[c].size(); ++k) x[c][k] = twiddled(x[c][k], angle(c, k));
    }
    return x;
  }

  bool centresBlocks() const { return flow_ == Flow::ToSamples; }
  bool centresColumns() const { return flow_ == Flow::ToSpectrum; }

 private:
  Column<Parts> runRader(const Recipe& r, const Column<Parts>& x);

  Flow flow_;
};

}  // namespace kernelgen
