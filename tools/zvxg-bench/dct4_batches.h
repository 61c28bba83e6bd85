// The DCT-IV and its peers: the transforms, and making their plans.
#pragma once

#include "batches.h"

namespace bench {

// A call of a plan in a block at a cache line, and making that plan.
template <class T>
Batch dct4Batch(const Side& side, Arrays arrays);
template <class T>
Batch dct4Planning(const Side& side, Arrays arrays);

// FFTW's own DCT-IV, and making an estimated plan.
template <class T>
Batch fftwDct4(const Side& side, Arrays arrays);
template <class T>
Batch fftwDct4Planning(const Side& side, Arrays arrays);

template <class T>
Batch halfLengthDct4(const Side& side, Arrays arrays);
template <class T>
Batch copyBatch(const Side& side, Arrays arrays);

}  // namespace bench
