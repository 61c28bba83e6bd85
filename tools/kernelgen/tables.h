// Which algorithm each complex kernel runs: one row per length, both precisions side by side.
#pragma once

#include "recipe.h"

namespace kernelgen {

enum class Precision {
  Single,
  Double
};

// Vector width of a body in bits; kScalar works on one real lane at a time.
constexpr int kScalar = 0;

struct Body {
  Recipe recipe;
  int width;
  // Two bodies, one for arrays on a boundary of the vector width; else one for any alignment.
  bool split;
};

constexpr int kMinLength = 2;
constexpr int kMaxLength = 64;

const Body& complexBody(int n, Precision precision);

}  // namespace kernelgen
