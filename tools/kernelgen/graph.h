// The program of one kernel as a graph of registers.
//
// A node is the value of one register, whose lanes are real numbers; one lane is a scalar. Equal nodes
// are shared and nothing else is simplified: the association of sums and products by 1 or 0 are
// part of the result. Nodes are only appended, so an operand comes before its user.
#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "angle.h"
#include "kernel_id.h"

namespace kernelgen {

using NodeId = int;
constexpr NodeId kNoNode = -1;

// A number before rounding, and what to call it. It is rounded once, to the precision of the node
// it becomes; the negative of a rounded number is the rounded negative.
struct Constant {
  Quad exact;
  std::string name;
};

Constant cosine(Turn t);
Constant sine(Turn t);
Constant operator-(const Constant& c);

struct RoundedConstant {
  double value;
  std::string name;
};
RoundedConstant operator-(const RoundedConstant& c);

enum class Op {
  Load,   // elements of the source
  Const,  // one constant per lane
  Scale,  // the factor of the flag, in all lanes
  Add,
  Sub,
  Mul,
  Flip,     // another sign in some lanes
  Shuffle,  // lanes of one or two operands in another order
  Widen,    // single to double, exact
  Round,    // double to single
  Store,    // lanes to elements of the destination
};

// What the elements of a load or a store are.
enum class Unit {
  Real,     // numbers, each in one lane
  Complex,  // pairs of numbers, real part first, each in two lanes
};

constexpr int kNoElement = -1;

struct Node {
  Op op;
  Precision precision;
  int lanes;
  NodeId a = kNoNode;
  NodeId b = kNoNode;
  // Load, Store: what the lanes hold, kNoElement for zeros or for lanes that are not stored.
  Unit unit = Unit::Real;
  std::vector<int> elements = {};
  // Const
  std::vector<RoundedConstant> constants = {};
  // Flip: 1 for the lanes that change their sign.
  std::vector<int> mask = {};
  // Shuffle: lane i is lane select[i] of a, or of b from the width of a on.
  std::vector<int> select = {};
  // Round: no constant is merged into what is rounded.
  bool kept = false;

  // The operands there are, each once.
  std::vector<NodeId> operands() const;
  // Load, Store: which number of the array a lane is, kNoElement for none.
  int number(int lane) const;
};

// What holds for all of a graph.
struct Traits {
  Precision precision;  // of the arrays
  Direction direction;
  // Products by constants are evaluated in double, together with the sums around them, and what
  // comes out is rounded once.
  bool productsInDouble = false;
};

class Graph {
 public:
  explicit Graph(const Traits& traits) : traits_(traits) {}

  const Traits& traits() const { return traits_; }
  Precision precision() const { return traits_.precision; }
  Direction direction() const { return traits_.direction; }
  int size() const { return static_cast<int>(nodes_.size()); }
  const Node& operator[](NodeId id) const { return nodes_[id]; }

  NodeId load(Unit unit, std::vector<int> elements);
  NodeId constant(const std::vector<Constant>& lanes, Precision precision);
  NodeId scale(int lanes);
  NodeId add(NodeId a, NodeId b);
  NodeId sub(NodeId a, NodeId b);
  NodeId mul(NodeId a, NodeId b);
  NodeId flip(NodeId a, std::vector<int> mask);
  NodeId shuffle(NodeId a, NodeId b, std::vector<int> select);
  NodeId widen(NodeId a);
  NodeId round(NodeId a, bool kept = false);
  NodeId store(NodeId a, Unit unit, std::vector<int> elements);

  bool holdsSub(NodeId a, NodeId b) const;

  NodeId append(Node node);
  // A node of another graph, whose operands are here at place[operand].
  NodeId append(Node node, const std::vector<NodeId>& place);

  // Without the nodes that no store depends on.
  Graph pruned() const;

 private:
  // A node of the precision and the lanes of its operand a.
  Node on(Op op, NodeId a, NodeId b = kNoNode) const;

  Traits traits_;
  std::vector<Node> nodes_;
  std::unordered_map<std::string, NodeId> shared_;
};

}  // namespace kernelgen
