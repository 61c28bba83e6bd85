// Runs a plan of the general case: column transforms from the source into a workspace, then the
// splits from the innermost out, then the combination into the destination. Each stage works on all
// columns before the next begins.
#pragma once

#include <cstddef>

#include "dct4/records.h"
#include "dct4/writing.h"

namespace zvxg::dct4 {

// How stages write. Neither results nor where they are stored depend on it.
struct Schedule {
  Writing inner;  // column transforms and all splits but the outermost
  Writing outer;  // the outermost split and the root
  // Whether a plan with two splits or more runs in tiles. Then the outermost split writes into the
  // caches, and the workspaces of the root and of the innermost split are used for other things.
  bool tiles = false;
};

// The schedule for arrays of this many bytes, by measurement.
Schedule chooseSchedule(std::size_t bytes);

template <class T>
void execute(const Dct4Spec& spec, const T* src, T* dst, Schedule schedule);

}  // namespace zvxg::dct4
