// The two precisions of a scalar program whose products by constants are double.
//
// It is written for single precision: temporaries are single, an expression with a constant factor
// is evaluated in double and rounded once. The double kernel is the same program without
// conversions.
#pragma once

#include "graph.h"

namespace kernelgen {

// An expression that is one product c Q, where Q is a sum of products without a plain term and is
// used nowhere else, becomes that sum with c multiplied into its constants, as rounded numbers.
Graph withMergedConstants(const Graph& g);

Graph inDouble(const Graph& g);

}  // namespace kernelgen
