// What the tests of the companion header share.
#pragma once

#include <stdexcept>
#include <string>

#include "dct4.h"
#include "harness.h"
#include "zvxg.hpp"

namespace tests {

/// What a call says of its arguments.
template <class Call>
std::string complaint(const Call& call) {
  try {
    call();
  } catch (const std::invalid_argument& error) {
    return error.what();
  }
  return "none";
}

}  // namespace tests
