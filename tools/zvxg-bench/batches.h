// What the makers of batches share.
#pragma once

#include <cstdint>
#include <stdexcept>

#include "cases.h"
#include "library.h"
#include "zvxg.h"

namespace bench {

// One side of a case: a function of the library, if it is one, and what it is to do.
struct Side {
  void* function;
  int selector;  // what the name of the kernel counts
  int n;
  const Library* library;
};

// A function of the library on fixed arguments; it has to take them.
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
