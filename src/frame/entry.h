// The frame of a by-length entry: it finds the kernel of a length, which does all other checks.
#pragma once

#include <cstddef>
#include <cstdint>

#include "zvxg.h"

namespace zvxg {

// Calls kernel `selector` of a table whose first kernel is that of kFirst. The subtraction wraps
// around, so one comparison refuses whatever is below the table, negative numbers included, or
// above it.
template <int32_t kFirst, class Kernel, std::size_t kCount, class... Arguments>
inline int32_t enter(Kernel const (&kernels)[kCount], int32_t selector, Arguments... arguments) {
  const uint32_t place = static_cast<uint32_t>(selector) - kFirst;
  if (place >= kCount) return zvxErrLength;
  return kernels[place](arguments...);
}

}  // namespace zvxg
