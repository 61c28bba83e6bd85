// What the values of a graph are called, in text and in prints.
#pragma once

#include <set>
#include <string>

#include "graph.h"

namespace kernelgen {

class Names {
 public:
  // A name that was not used before: x3_7 for a load of the elements 3 and 7; for a constant c1_5 or
  // s1_5, the cosine or sine of 1/5 of a turn, with n in front where it is negative and the signs of
  // the lanes behind where they differ; t and a number for what is computed.
  std::string next(const Node& n);

  // The mask of a flip; the same for the same mask.
  static std::string ofSigns(const Node& n);

 private:
  std::set<std::string> taken_;
  int temporaries_ = 0;
};

}  // namespace kernelgen
