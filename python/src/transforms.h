// What Python can call of the library: one entry per transform, for arrays of any strides in bytes.
#pragma once

#include <cstddef>
#include <cstdint>

namespace zvxg::python {

// One side of a batch. Element i of transform k begins at data + k * distance + i * stride.
struct Side {
  char* data;
  std::ptrdiff_t stride, distance;
  std::ptrdiff_t elements;  // of one transform
};

enum class Norm {  // where the factor stands, by NumPy's words; the values index tables
  Backward,
  Ortho,
  Forward
};
constexpr int kNorms = 3;
constexpr const char* kNormNames[kNorms] = {"backward", "ortho", "forward"};

// Does `howmany` transforms of `length` points, which the transform has to accept. False if there
// is no memory, which the Walsh-Hadamard transform and the DCT-IV may need, and any transform whose
// elements lie at strides that are no multiple of their size.
using Run = bool (*)(const Side& src, const Side& dst, std::ptrdiff_t length,
                     std::ptrdiff_t howmany, Norm norm);

enum class Lengths {
  Short,     // 2 to 64
  Hadamard,  // 2, 4 .. 8192
  Cosine     // 2, 4 .. 2^26 in single, 2^25 in double precision
};

enum class Spectrum {  // the side that has bins
  None,
  Result,
  Source
};

struct Transform {
  const char* name;
  bool complexSource, complexResult;
  Spectrum bins;
  Lengths lengths;
  Run ofDouble, ofSingle;

  // The elements on either side of a transform of `length` points.
  std::ptrdiff_t sourceElements(std::ptrdiff_t length) const {
    return bins == Spectrum::Source ? length / 2 + 1 : length;
  }
  std::ptrdiff_t resultElements(std::ptrdiff_t length) const {
    return bins == Spectrum::Result ? length / 2 + 1 : length;
  }
  bool accepts(std::ptrdiff_t length, bool isSingle) const;
  const char* acceptedLengths(bool isSingle) const;
};

// In the order of kTransforms.
enum Name {
  kFft,
  kIfft,
  kRfft,
  kRfftPack,
  kRfftPerm,
  kIrfft,
  kIrfftPack,
  kIrfftPerm,
  kHartley,
  kWht,
  kDct4,
  kTransformCount
};
extern const Transform kTransforms[kTransformCount];

}  // namespace zvxg::python
