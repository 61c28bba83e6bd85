// How several complex elements are arranged in registers; the only place that knows shuffles.
//
// Interleaved   one register, real and imaginary parts side by side as in memory. One addition adds
//               both parts of an element; a product by a complex constant costs a shuffle.
// Planar        a register of real and one of imaginary parts, so twice as many elements. Products
//               need no shuffle, but loads, stores and transpositions do: for steps that are mostly
//               products. The inverse exchanges the two registers after loading and before storing.
#pragma once

#include "parts.h"

namespace kernelgen {

// An element of a value.
template <class Value>
struct Slot {
  Value value;
  int lane;
};

// What a value is known by: equal for equal values.
using Identity = std::vector<int>;
Identity identity(const Packed& v);
Identity identity(const Parts& v);

class Interleaved {
 public:
  using Value = Packed;

  Interleaved(Graph& graph, int elements) : graph_(&graph), lanes_(elements) {}

  std::size_t lanes() const { return lanes_; }
  Value zero() const { return {graph_, kNoNode}; }

  // Elements of the source, kNoElement for zero.
  Value load(const std::vector<int>& elements);
  // Elements from the lanes of values. Lanes that are left over keep live data.
  Value pack(std::vector<Slot<Value>> slots);
  // Lanes to elements of the destination, times the scale.
  void store(Value v, const std::vector<int>& elements);

 private:
  Graph* graph_;
  int lanes_;
};

// Four elements, single precision.
class Planar {
 public:
  using Value = Parts;

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
