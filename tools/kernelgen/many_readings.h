// How the kernels of libzvxgmany read the graphs of the single kernels; many.h says what each reading is.
#pragma once

#include <string>
#include <vector>

#include "kernel_id.h"
#include "kernels.h"

namespace kernelgen {

enum class Reading {
  Elements,
  Scalars,
  Beside,
  Contiguous
};

// Where a kernel finds its transforms, and where it leaves them.
enum class Way {
  Rows,
  Contiguous,
  ToRows  // from contiguous ones
};

struct ManyKernel {
  // Of both directions the forward one, where they share a body.
  KernelId id;
  Reading reading;

  bool isShared() const { return sharesConstants() || exchangesParts(); }
  // Directions differ in constants only.
  bool sharesConstants() const {
    return reading == Reading::Elements || reading == Reading::Beside;
  }
  // The inverse is the forward kernel with real and imaginary parts exchanged, before and after.
  bool exchangesParts() const;
  // Of spectra, what is contiguous has another text for each layout.
  bool hasLayouts() const { return reading == Reading::Contiguous && id.family == Family::Real; }
  // Real and imaginary parts in registers of their own.
  bool hasParts() const { return id.family == Family::Complex && reading == Reading::Scalars; }
  std::vector<Way> ways() const;
};

KernelId inverseOf(KernelId id);

// How the kernel of a length reads its graph.
Reading readingOf(const KernelId& id);

// Whether the kernel on rows of elements has this way too, by a transposition in registers.
bool isTransposed(const KernelId& id, Way way);

// Whether there is a kernel for contiguous transforms side by side.
bool goesBeside(const KernelId& id);

// On rows, and side by side.
std::vector<ManyKernel> manyKernels();
// Of real transforms up to the longest length.
std::vector<ManyKernel> contiguousKernels(int longest);

std::string printed(Reading reading);

// How many lanes of a register belong to one transform.
int groupOf(const KernelId& id, Reading reading);

inline constexpr int kAvxBytes = 32;
int groupBytesOf(const KernelId& id, Reading reading);

Graph graphOf(const KernelId& id, Reading reading);
// Has the bits of the single kernel, by its scalar form. Throws std::logic_error if not.
Graph checkedGraph(const KernelId& id, Reading reading);

}  // namespace kernelgen
