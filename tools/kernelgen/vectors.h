// Packed graphs as text: vectors of any count of lanes, by the templates of src/frame/vectors.h.
#pragma once

#include "access.h"
#include "machine.h"

namespace kernelgen {

class Vectors : public Machine {
 public:
  std::string type(const Node& n) const override;
  int bytes(const Node& n) const override;
  std::string constant(const Node& n) const override;
  std::string scale(const Node& n) const override;
  std::string signs(const Node& n) const override;
  std::string flip(const Node& n, const std::string& a, const std::string& signs) const override;
  std::string shuffle(const Node& n, const std::string& a, const std::string& b) const override;
  std::string widen(const Node& n, const std::string& a, const std::string& piece) const override;
  std::string round(const Node& n, const std::vector<std::string>& pieces) const override;
};

// The arrays `src` and `dst` as numbers, of which neighbours are loaded or stored.
class Numbers : public Access {
 public:
  std::string load(const Node& n) const override;
  std::vector<std::string> store(const Node& n, const std::string& value) const override;
};

}  // namespace kernelgen
