// How a plan splits a length, at the root and below it alike.
#pragma once

#include <cstdint>

namespace zvxg::dct4 {

// Stores the radix by which half a length is split, or returns zvxErrLength and stores nothing.
int32_t chooseRadix(int32_t* result, int32_t value);

}  // namespace zvxg::dct4
