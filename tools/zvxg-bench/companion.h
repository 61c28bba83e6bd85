// Calls through the companion header, and the same calls in C: each by name, as in a program, up to
// kLongestNamed points.
#pragma once

#include "batches.h"

namespace bench {

inline constexpr int kLongestNamed = 16;

// dft() on arrays of known length, on spans whose length it has to check, and by run-time length.
template <class T>
Batch companionKnown(const Side& side, Arrays arrays);
template <class T>
Batch companionChecked(const Side& side, Arrays arrays);
template <class T>
Batch companionByLength(const Side& side, Arrays arrays);

// The peers: the kernel, and the by-length entry.
template <class T>
Batch namedCall(const Side& side, Arrays arrays);
template <class T>
Batch namedEntry(const Side& side, Arrays arrays);

// batch() over many signals, and the loop of calls that it replaces.
template <class T>
Batch companionBatch(const Side& side, Arrays arrays);
template <class T>
Batch namedLoop(const Side& side, Arrays arrays);

// A frame of the MDCT.
template <class T>
Batch mdctBatch(const Side& side, Arrays arrays);

}  // namespace bench
