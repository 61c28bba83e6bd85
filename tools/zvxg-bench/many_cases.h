// The cases of libzvxgmany: each family of transforms in the layouts that its batches take most, with
// working sets of three sizes. They take part only if a filter names them.
#pragma once

#include <vector>

#include "cases.h"

namespace bench {

void addManyCases(const Library& library, Filters& filters, Peers peers, CaseList& list);

// Limits the instruction set of libzvxgmany: "avx", "avx512", or empty for the best there is. Throws
// UsageError if this processor or this program does not have it.
void limitManyLevel(const std::string& level);

}  // namespace bench
