// A plan of the DCT-IV run on arrays whose elements are `stride` apart. Its stages have no room to
// put a whole array in line, so the first one gathers its inputs, and the last one scatters its
// results, a few columns at a time.
#pragma once

#include <cstddef>

#include "dct4/records.h"

namespace zvxg::dct4 {

// Of a plan in the general state.
template <class T>
void executeStrided(const Dct4Spec& spec, const T* src, std::ptrdiff_t srcStride, T* dst,
                    std::ptrdiff_t dstStride);

}  // namespace zvxg::dct4
