#include "allocator.h"

#include <map>
#include <memory>

#include "../pages.h"

namespace tests {

Allocator allocator;

namespace {
std::map<const void*, std::unique_ptr<GuardedPages>> blocks;
}

}  // namespace tests

using tests::allocator;

extern "C" ZVXG_OF_CORE void* zvxMalloc(std::int32_t bytes) noexcept {
  allocator.taken.push_back(bytes);
  if (allocator.fails) return nullptr;
  auto pages = std::make_unique<tests::GuardedPages>(bytes);
  void* const block = pages->place((bytes + 15) / 16 * 16, true);
  tests::blocks[block] = std::move(pages);
  ++allocator.outstanding;
  return block;
}

extern "C" ZVXG_OF_CORE void zvxFree(void* block) noexcept {
  if (block == nullptr) {
    ++allocator.nullsFreed;
  } else if (tests::blocks.erase(block) == 1) {
    --allocator.outstanding;
  } else {
    ++allocator.strangersFreed;
  }
}
