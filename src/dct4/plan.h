// The sizes of plans, their construction and dismantling. T is float or double.
#pragma once

#include <cstdint>

#include "dct4/records.h"

namespace zvxg::dct4 {

// Stores the size of the block for a plan of this length, or returns zvxErrLength and stores
// nothing.
template <class T>
int32_t planSize(int32_t length, uint32_t* size);

// Builds a plan in a block that is large enough. `*spec` is written on success only.
template <class T>
int32_t planInit(Dct4Spec** spec, int32_t length, void* block);

// Returns everything to the arena, the root last. The root's record can still be read.
template <class T>
void planDismantle(Dct4Spec* spec);

}  // namespace zvxg::dct4
