// Which algorithm each kernel runs: one row per length, in tables.cpp for the complex kernels, both
// precisions side by side, in real_tables.cpp for those of real signals.
#pragma once

#include <optional>
#include <string>

#include "graph.h"
#include "kernel_id.h"
#include "recipe.h"
#include "schedule.h"

namespace kernelgen {

// Vector width in bits; kScalar works on one real lane at a time.
constexpr int kScalar = 0;

// Which way a transform of real signals goes: samples come in, or samples go out.
enum class Flow {
  ToSpectrum,
  ToSamples
};

// How a kernel is made.
struct Design {
  Recipe recipe;
  int width;
  // 2: one for arrays on a boundary of the vector width, and one for all others.
  int bodies;
  Pace pace = {};
  // Longer than the cache of decoded instructions, which holds some 4,000 on Zen 3.
  bool isLong = false;
  // Of real signals: which way the transform goes, and the stated count of products by constants.
  Flow flow = Flow::ToSpectrum;
  std::optional<int> products = {};

  // "GT(4,3), 128 bits"
  std::string print() const;

  Design paced(int live, int issue) && {
    pace = {live, issue};
    return std::move(*this);
  }
};

const Design& designOf(const KernelId& id);

const Design& realDesign(const KernelId& id);

// Where a factor of a Rader step over real signals is not the number nearest to its real part.
std::optional<Constant> statedFactor(long p, long k);

}  // namespace kernelgen
