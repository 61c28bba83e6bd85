// Which kernels run in wider registers on newer processors.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "kernel_id.h"
#include "packing.h"

namespace kernelgen {

// What the processor has beside AVX: nothing, AVX2, or AVX-512 with VL, DQ and BW.
enum class Level {
  Base,
  V3,
  V4
};

// "base", "v3", "v4"; throws std::invalid_argument for other names.
Level levelOfName(const std::string& name);

// How the kernel is packed, if it is not the one of the base.
std::optional<Packing> packingOf(const KernelId& id, Level level);

// The levels, in their order, at which the kernel is as it is at this one.
std::vector<Level> levelsLike(const KernelId& id, Level level);

}  // namespace kernelgen
