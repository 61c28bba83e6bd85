// The DCT-IV and its peers: the transforms, and making their plans.
#pragma once

#include <memory>
#include <stdexcept>
#include <string>

#include "aligned.h"
#include "batches.h"

namespace bench {

// A call of a plan in a block at a cache line, and making that plan.
template <class T>
Batch dct4Batch(const Side& side, Arrays arrays);
template <class T>
Batch dct4Planning(const Side& side, Arrays arrays);

// FFTW's own DCT-IV, and making an estimated plan.
template <class T>
Batch fftwDct4(const Side& side, Arrays arrays);
template <class T>
Batch fftwDct4Planning(const Side& side, Arrays arrays);

template <class T>
Batch halfLengthDct4(const Side& side, Arrays arrays);
template <class T>
Batch copyBatch(const Side& side, Arrays arrays);

// The block of a plan, and the function that makes the plan.
template <class T>
struct Dct4Planner {
  explicit Dct4Planner(const Side& side) : n(side.n) {
    const std::string suffix = sizeof(T) == 4 ? "_32f" : "_64f";
    const auto getSize =
        side.library->get<decltype(zvxgDCT4GetSize_32f)>("zvxgDCT4GetSize" + suffix);
    init = side.library->get<decltype(zvxgDCT4Init_32f)>("zvxgDCT4Init" + suffix);
    std::uint32_t size;
    if (getSize(n, &size) != zvxOk) {
      throw std::runtime_error("no plan of length " + std::to_string(n));
    }
    block = api::alignedMemory(64, size);
  }
  Dct4Spec* make() const {
    Dct4Spec* spec = nullptr;
    if (init(&spec, n, block.get()) != zvxOk) throw std::runtime_error("a plan was refused");
    return spec;
  }
  int n;
  decltype(&zvxgDCT4Init_32f) init;
  std::shared_ptr<void> block;
};

}  // namespace bench
