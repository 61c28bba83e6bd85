// How a stage writes its results. Rows lie a power of two apart, so what is written to them group
// by group falls into few sets of a cache.
#pragma once

namespace zvxg::dct4 {

enum class Writing {
  Direct,     // where they belong, at once
  Collected,  // on the stack first, then to memory in long runs
  Streamed,   // likewise, and past the caches; runs have to start at cache lines
};

}  // namespace zvxg::dct4
