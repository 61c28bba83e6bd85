// How a value of several complex elements stands in registers; the only place that knows shuffles.
//
// Interleaved   one register, real and imaginary parts side by side, as in memory. Additions treat
// a
//               complex element at once, products by complex constants cost a shuffle.
// Planar        a register of real and one of imaginary parts, twice the elements. Products cost no
//               shuffle, but loads, stores and each transposition do: for steps that are mostly
//               products. Parts have their signs settled late (paired.h), and the inverse is made
//               by exchanging the registers on both ends.
#pragma once

#include "paired.h"

namespace kernelgen {

// An element of a value.
template <class Value>
struct Slot {
  Value value;
  int lane;
};

// Equal for equal values.
using Identity = std::vector<int>;
Identity identity(const Packed& v);
Identity identity(const Paired& v);

class Interleaved {
 public:
  using Value = Packed;

  Interleaved(Graph& graph, int elements) : graph_(&graph), lanes_(elements) {}

  std::size_t lanes() const { return static_cast<std::size_t>(lanes_); }
  Value zero() const { return {graph_, kNoNode}; }

  // Elements of the source, kNoElement for zero.
  Value load(const std::vector<int>& elements);
  // Elements from the lanes of values; the lanes left over keep live data.
  Value pack(std::vector<Slot<Value>> slots);
  // Lanes to elements of the destination, times the scale.
  void store(Value v, const std::vector<int>& elements);

 private:
  NodeId pair(Slot<Value> low, Slot<Value> high, int& half);
  NodeId inHalves(NodeId a, NodeId b, int laneA, int laneB);
  NodeId halves(NodeId a, NodeId b, int halfA, int halfB);

  Graph* graph_;
  int lanes_;
};

// Four elements, single precision.
class Planar {
 public:
  using Value = Paired;

  explicit Planar(Graph& graph) : graph_(&graph) {}

  std::size_t lanes() const { return 4; }
  Value zero() const { return {graph_, {}, {}}; }

  Value load(const std::vector<int>& elements);
  Value pack(const std::vector<Slot<Value>>& slots);
  void store(Value v, const std::vector<int>& elements);

 private:
  Graph* graph_;
};

}  // namespace kernelgen
