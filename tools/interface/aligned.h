// Memory that starts at a multiple of a power of two.
#pragma once

#include <cstddef>
#include <memory>
#include <new>
#include <type_traits>

namespace api {

template <class T = void>
std::shared_ptr<T> alignedMemory(std::size_t boundary, std::size_t bytes) {
  const std::align_val_t alignment{boundary};
  return {static_cast<std::remove_extent_t<T>*>(::operator new(bytes, alignment)),
          [alignment](void* memory) { ::operator delete(memory, alignment); }};
}

}  // namespace api
