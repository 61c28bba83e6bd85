// The bits that a transform has to give, by the order of operations of its algorithm and in the
// rounding mode of the moment: the generator's evaluation of the graph for kernels, the plain loop
// of radix-2 stages for Walsh-Hadamard, the operations written out for the shortest DCT-IV.
#pragma once

#include <functional>

#include "../harness.h"

namespace tests {

using Reference = std::function<Bytes(const Bytes& source, std::int32_t flag)>;

/// Empty for a DCT-IV of more than eight points.
Reference referenceOf(const Transform& transform);

}  // namespace tests
