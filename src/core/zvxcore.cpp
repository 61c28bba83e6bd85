// libzvxcore: the default zvxMalloc and zvxFree for libzvxg. They are ordinary dynamic symbols, so
// definitions in the program itself come first in the lookup order and replace them. In a static
// link the archive member is then not pulled in. On Windows a DLL imports from a file and not from the
// program, which replaces zvxcore.dll.

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#ifdef _WIN32
#include <malloc.h>
#endif

#include "zvxg.h"

namespace {

// A cache line, so that every block suits full-width vector accesses.
constexpr std::size_t kAlignment = 64;

#ifdef _WIN32
void* allocate(std::size_t bytes) { return _aligned_malloc(bytes, kAlignment); }
void release(void* block) { _aligned_free(block); }
#else
void* allocate(std::size_t bytes) { return std::aligned_alloc(kAlignment, bytes); }
void release(void* block) { std::free(block); }
#endif

}  // namespace

extern "C" void* zvxMalloc(int32_t bytes) noexcept {
  if (bytes < 0) return nullptr;
  // aligned_alloc needs a multiple of the alignment. For 0 bytes a line is allocated, because null
  // would mean failure.
  const std::size_t lines = (static_cast<std::size_t>(bytes) + kAlignment - 1) / kAlignment;
  return allocate(std::max<std::size_t>(lines, 1) * kAlignment);
}

extern "C" void zvxFree(void* block) noexcept { release(block); }
