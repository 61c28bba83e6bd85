// Kernels as C++ text: one statement per node in the order of the schedule.
#pragma once

#include <string>

#include "kernels.h"

namespace kernelgen {

// The exported function and its body.
std::string emitKernel(const Kernel& kernel);

// A file of kernels.
std::string emitFile(const std::vector<KernelId>& kernels);

// The file of the by-length entries, which must list the kernels of each in order of length.
std::string emitEntries(const std::vector<KernelId>& kernels);

// include/zvxg_kernels.h
std::string emitHeader(const std::vector<KernelId>& kernels);

}  // namespace kernelgen
