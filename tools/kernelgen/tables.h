// Which algorithm each kernel runs: one row per length, both precisions side by side.
#pragma once

#include "kernel_id.h"
#include "recipe.h"
#include "schedule.h"

namespace kernelgen {

// Vector width of a body in bits; kScalar works on one real lane at a time.
constexpr int kScalar = 0;

struct Body {
  Recipe recipe;
  int width;
  // Two bodies, one for arrays on a boundary of the vector width; else one for any alignment.
  bool split;
};

const Body& complexBody(int n, Precision precision);
Pace complexPace(int n, Precision precision);

// Which way a real transform goes: samples come in, or samples go out.
enum class Flow {
  ToSpectrum,
  ToSamples
};

struct RealRow {
  int n;
  Recipe forward;
  int forwardProducts;
  Recipe inverse;
  int inverseProducts;
  Flow hartley;
  int hartleyProducts;
};

const RealRow& realRow(int n);
const Body& realBody(int n, Flow flow);

}  // namespace kernelgen
