// What is exported, as C++ text: kernels in their frame, by-length entries, prototypes.
#pragma once

#include <string>

#include "kernels.h"
#include "variants.h"

namespace kernelgen {

// The exported function and its body.
std::string emitKernel(const Kernel& kernel);

// As it is on a machine of that level.
std::string emitKernel(const Kernel& kernel, Level level);

// A file of kernels.
std::string emitFile(const std::vector<KernelId>& kernels, Level level);

// The file of the by-length entries.
std::string emitEntries();

// include/zvxg_kernels.h
std::string emitHeader();

}  // namespace kernelgen
