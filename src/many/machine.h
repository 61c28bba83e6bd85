// The registers of the machine that a file is compiled for, in the namespace of that machine.
#pragma once

namespace zvxg::many::ZVXG_MACHINE {

// One register of reals, in memory at any address.
template <class T>
struct Register {
  typedef T Vector __attribute__((vector_size(ZVXG_VECTOR_BYTES)));
  typedef T InMemory __attribute__((vector_size(ZVXG_VECTOR_BYTES), may_alias, aligned(1)));
  static constexpr int kLanes = ZVXG_VECTOR_BYTES / sizeof(T);

  [[gnu::always_inline]] static Vector load(const T* p) {
    return *reinterpret_cast<const InMemory*>(p);
  }
  [[gnu::always_inline]] static void store(T* p, Vector v) { *reinterpret_cast<InMemory*>(p) = v; }
};

}  // namespace zvxg::many::ZVXG_MACHINE
