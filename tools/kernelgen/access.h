// How loads and stores are written.
#pragma once

#include <string>
#include <vector>

#include "graph.h"

namespace kernelgen {

class Access {
 public:
  virtual ~Access() = default;

  virtual std::string load(const Node& n) const = 0;  // an expression
  // Statements, as an access to elements that do not follow each other may take several.
  virtual std::vector<std::string> store(const Node& n, const std::string& value) const = 0;
  // How many instructions a load or a store takes.
  virtual int count(const Node&) const { return 1; }
};

// The arrays of reals `src` and `dst` of one transform. What reads or writes complex elements is in
// src/frame/memory.h.
class Arrays : public Access {
 public:
  explicit Arrays(int length) : length_(length) {}

  std::string load(const Node& n) const override;
  std::vector<std::string> store(const Node& n, const std::string& value) const override;
  int count(const Node& n) const override;

 private:
  int length_;
};

}  // namespace kernelgen
