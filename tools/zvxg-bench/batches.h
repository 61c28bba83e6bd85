// Shared by the functions that make batches.
#pragma once

#include <cstdint>
#include <stdexcept>

#include "cases.h"
#include "library.h"
#include "zvxg.h"

namespace bench {

// One side of a case: a function, if it is one of the library, and what it has to do.
struct Side {
  void* function;
  int selector;  // the length or order in the name of the kernel
  int n;
  const Library* library;
};

// A call of a library function on fixed arguments, which it must accept.
template <class... Arguments>
Batch callBatch(void* address, Arguments... arguments) {
  const auto function = reinterpret_cast<std::int32_t (*)(Arguments...)>(address);
  if (function(arguments...) != zvxOk) {
    throw std::runtime_error("a function refused its arguments");
  }
  return [=](int calls) {
    for (int i = 0; i < calls; ++i) function(arguments...);
  };
}

}  // namespace bench
