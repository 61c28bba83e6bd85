// Which machine's kernels are used: the only state of the library, and no result depends on it.
#pragma once

#include <cstdint>

namespace zvxg::many {

// The level in use, a ZvxManyLevel.
int32_t level();

// Lowers it, or lifts the limit again; the level that is then in use.
int32_t limitLevel(int32_t limit);

}  // namespace zvxg::many
