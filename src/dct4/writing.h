// How a stage writes its results. Rows are a power of two apart, so writes to them, group by group,
// fall into few sets of a cache.
#pragma once

namespace zvxg::dct4 {

enum class Writing {
  Direct,     // each result to its place at once
  Collected,  // first to the stack, then to memory in long runs
  Streamed,   // the same, but past the caches; runs must start at cache lines
};

}  // namespace zvxg::dct4
