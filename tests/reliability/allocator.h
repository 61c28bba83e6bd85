// This program's own zvxMalloc() and zvxFree(), which the library calls instead of its defaults.
// Every block ends at a page that no one may touch. On Windows they are in a zvxcore.dll of the tests.
#pragma once

#include <cstdint>
#include <vector>

#if !defined _WIN32
#define ZVXG_OF_CORE
#elif defined zvxg_own_core_EXPORTS
#define ZVXG_OF_CORE __declspec(dllexport)
#else
#define ZVXG_OF_CORE __declspec(dllimport)
#endif

namespace tests {

struct Allocator {
  bool fails = false;
  std::vector<std::int32_t> taken;  // bytes, by call
  int nullsFreed = 0;
  int strangersFreed = 0;  // not taken, or not any more
  int outstanding = 0;
};

extern ZVXG_OF_CORE Allocator allocator;

}  // namespace tests
