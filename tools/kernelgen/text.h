// Pieces of C++ text.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "kernel_id.h"

namespace kernelgen {

// The shortest digits that read back as the same number.
std::string literal(double value, Precision precision);

// "a, b, c"
std::string listed(const std::vector<std::string>& items);

// "function(a, b, c)"
std::string call(const std::string& function, const std::vector<std::string>& arguments);

// The pattern with each $name replaced by its value.
std::string filled(const std::string& pattern, const std::map<std::string, std::string>& values);

}  // namespace kernelgen
