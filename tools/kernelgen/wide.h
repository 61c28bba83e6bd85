// Registers as wide as a machine has them, whose groups of lanes are each a register of the graph for
// a transform of its own; and ways to load and store them. The text is the same for every machine: it
// is written in src/many/vectors.h.
#pragma once

#include <map>
#include <set>

#include "access.h"
#include "machine.h"

namespace kernelgen {

// Groups of constants, in the order of their first use.
class ConstantTable {
 public:
  explicit ConstantTable(std::string suffix) : suffix_(std::move(suffix)) {}

  // How a statement names the constants, or the signs, of a node.
  std::string at(const Node& n);

  bool empty() const { return rows_.empty(); }
  // "s1_3, half"
  std::string names() const { return names_; }
  // "{0.5f, 0.5f}, ..."
  std::string rows() const { return rows_; }

 private:
  std::string suffix_;
  std::map<std::string, std::string> known_;
  std::set<std::string> taken_;
  std::string names_, rows_;
};

// What numbers of single and of double precision that belong to the same lanes stand in.
enum class Widths {
  OneRegister,    // there is only one precision
  TwoOfDoubles,   // one register of singles, two of doubles
  HalfOfSingles,  // half a register of singles, one of doubles
};

class Wide : public Machine {
 public:
  Wide(Widths widths, ConstantTable& singles, ConstantTable& doubles)
      : widths_(widths), singles_(&singles), doubles_(&doubles) {}

  std::string type(const Node& n) const override;
  int bytes(const Node& n) const override;
  std::vector<std::string> pieces(const Node& n) const override;
  bool declaresConstants() const override { return false; }
  std::string constant(const Node& n) const override;
  std::string scale(const Node& n) const override;
  std::string signs(const Node& n) const override;
  std::string flip(const Node& n, const std::string& a, const std::string& signs) const override;
  std::string shuffle(const Node& n, const std::string& a, const std::string& b) const override;
  std::string widen(const Node& n, const std::string& a, const std::string& piece) const override;
  std::string round(const Node& n, const std::vector<std::string>& pieces) const override;

 private:
  Widths widths_;
  ConstantTable *singles_, *doubles_;
};

// Loads from x and stores to y, objects of vectors.h that have rows of an element each.
class RowAccess : public Access {
 public:
  std::string load(const Node& n) const override;
  std::vector<std::string> store(const Node& n, const std::string& value) const override;
};

// Rows of complex elements whose parts are scalars of the graph.
class PartAccess : public Access {
 public:
  std::string load(const Node& n) const override;
  // Nothing until there are both parts.
  std::vector<std::string> store(const Node& n, const std::string& value) const override;

 private:
  mutable std::map<int, std::string> waiting_;
};

// Contiguous transforms, side by side; counts are those of one of them.
class BesideAccess : public Access {
 public:
  std::string load(const Node& n) const override;
  std::vector<std::string> store(const Node& n, const std::string& value) const override;
  int count(const Node& n) const override;
};

}  // namespace kernelgen
