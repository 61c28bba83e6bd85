// The frame of a by-length entry: from the length to the kernel, which does all further checks.
#pragma once

#include <cstddef>
#include <cstdint>

#include "zvxg.h"

namespace zvxg {

// Kernel `selector` of a table that starts with that of kFirst. The subtraction wraps, so that one
// comparison refuses what is below the table, negative numbers included, and what is above.
template <int32_t kFirst, class Kernel, std::size_t kCount, class... Arguments>
inline int32_t enter(Kernel const (&kernels)[kCount], int32_t selector, Arguments... arguments) {
  const uint32_t place = static_cast<uint32_t>(selector) - kFirst;
  if (place >= kCount) return zvxErrLength;
  return kernels[place](arguments...);
}

}  // namespace zvxg
