// The program of one kernel as a graph of registers.
//
// A node is the value of one register, scalar or vector; its lanes are real numbers. Equal nodes
// are shared and nothing else is simplified: the association of sums and products by 1 or 0 are
// part of the result. Nodes are only appended, so an operand stands before its user.
#pragma once

#include <cstddef>
#include <cstdint>
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

enum class Op {
  Load,   // elements of the source; lanes without an element are zero
  Const,  // one constant per lane
  Scale,  // the factor of the flag, in all lanes
  Add,
  Sub,
  Mul,
  Flip,     // the sign of the lanes where the mask is 1
  Shuffle,  // lane i is lane select[i] of a, or of b from the width on
  Widen,    // single to double, exact
  Round,    // double to single
  Store,    // lanes to elements of the destination
};

struct Node {
  Op op;
  Precision precision;
  int lanes;  // real lanes: 1 is a scalar
  NodeId a = kNoNode;
  NodeId b = kNoNode;
  // Load, Store: the array element of each element lane, kNoElement for none (scalars: the index of
  // a real number). Shuffle: select. Flip: mask. Round: whether it is kept.
  std::vector<int> index = {};
  std::vector<RoundedConstant> constants = {};
};

constexpr int kNoElement = -1;

class Graph {
 public:
  Graph(Precision precision, Direction direction) : precision_(precision), direction_(direction) {}

  Precision precision() const { return precision_; }
  Direction direction() const { return direction_; }
  std::size_t size() const { return nodes_.size(); }
  const Node& operator[](NodeId id) const { return nodes_[static_cast<std::size_t>(id)]; }

  NodeId load(std::vector<int> elements, int lanes);
  NodeId constant(const std::vector<Constant>& lanes, Precision precision);
  NodeId scale(int lanes);
  NodeId add(NodeId a, NodeId b);
  NodeId sub(NodeId a, NodeId b);
  NodeId mul(NodeId a, NodeId b);
  NodeId flip(NodeId a, std::vector<int> mask);
  NodeId shuffle(NodeId a, NodeId b, std::vector<int> select);
  NodeId widen(NodeId a);
  // A kept one stays a temporary: no constant is merged into what it rounds.
  NodeId round(NodeId a, bool kept = false);
  NodeId store(NodeId a, std::vector<int> elements);

  bool holdsSub(NodeId a, NodeId b) const;

  // A node with operands of this graph.
  NodeId append(Node node);

  // Without the nodes that no store depends on.
  Graph pruned() const;

 private:
  NodeId binary(Op op, NodeId a, NodeId b);

  Precision precision_;
  Direction direction_;
  std::vector<Node> nodes_;
  std::unordered_map<std::string, NodeId> shared_;
};

}  // namespace kernelgen
