// This program's own zvxMalloc() and zvxFree(), which the library calls instead of its defaults.
// Every block ends at a page that no one may touch.
#pragma once

#include <cstdint>
#include <vector>

namespace tests {

struct Allocator {
  bool fails = false;
  std::vector<std::int32_t> taken;  // bytes, by call
  int nullsFreed = 0;
  int strangersFreed = 0;  // not taken, or not any more
  int outstanding = 0;
};

extern Allocator allocator;

}  // namespace tests
