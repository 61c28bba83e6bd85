// The registers of a machine, and what is done with them that C++ has no operator for, as text.
#pragma once

#include <string>
#include <vector>

#include "graph.h"

namespace kernelgen {

class Machine {
 public:
  virtual ~Machine() = default;

  // The C++ type of the register that holds the node, and its size in memory.
  virtual std::string type(const Node& n) const = 0;
  virtual int bytes(const Node& n) const = 0;

  // What is appended to the name of a node for each register that holds a piece of it.
  virtual std::vector<std::string> pieces(const Node&) const { return {""}; }

  // Expressions for a constant, and for the factor that `factor` points to. They are declared under
  // names before all statements, or stand in these as they are.
  virtual bool declaresConstants() const { return true; }
  virtual std::string constant(const Node& n) const = 0;
  virtual std::string scale(const Node& n) const = 0;
  // The register of signs that a flip of several lanes takes besides its operand.
  virtual std::string signs(const Node& n) const = 0;
  virtual std::string flip(const Node& n, const std::string& a, const std::string& signs) const = 0;
  virtual std::string shuffle(const Node& n, const std::string& a, const std::string& b) const = 0;
  // A piece of a in double precision, and all pieces of a rounded to one register.
  virtual std::string widen(const Node& n, const std::string& a,
                            const std::string& piece) const = 0;
  virtual std::string round(const Node& n, const std::vector<std::string>& pieces) const = 0;
};

// Scalars, and vectors of 128 and of 256 bits.
class Avx : public Machine {
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

// A shuffle that takes each lane from the same place of either operand; it can go to any pipe.
bool isBlend(const Node& shuffle);

}  // namespace kernelgen
