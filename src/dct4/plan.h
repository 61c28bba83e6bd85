// Sizes, construction and dismantling of plans. T is float or double.
#pragma once

#include <cstdint>

#include "dct4/records.h"

namespace zvxg::dct4 {

// The bytes of block that a plan of this length needs, or zvxErrLength and nothing stored.
template <class T>
int32_t planSize(int32_t length, uint32_t* size);

// Builds a plan in a block that is large enough. `*spec` is written on success only.
template <class T>
int32_t planInit(Dct4Spec** spec, int32_t length, void* block);

// Gives everything back to the arena, the root as the last. Its record stays readable.
template <class T>
void planDismantle(Dct4Spec* spec);

}  // namespace zvxg::dct4
