#include "arrangements.h"

#include <algorithm>
#include <stdexcept>

namespace kernelgen {

Identity identity(const Packed& v) { return {v.node}; }

Identity identity(const Parts& v) {
  Identity all;
  for (const Part& p : {v.re, v.im}) {
    all.insert(all.end(), {p.node, static_cast<int>(p.negative), p.exponent});
  }
  return all;
}

namespace {

bool isEmpty(const std::vector<int>& elements) {
  return std::all_of(elements.begin(), elements.end(), [](int e) { return e == kNoElement; });
}

}  // namespace

// ---- Interleaved

namespace {

// Where the lanes of b begin in a shuffle of a and b.
int secondFrom(const Graph& g, NodeId a, NodeId b) { return a == b ? 0 : g[a].lanes; }

// In every 128 bits of single precision: element laneA of a, then element laneB of b.
NodeId inQuads(Graph& g, NodeId a, NodeId b, int laneA, int laneB) {
  std::vector<int> select;
  for (int quad = 0; quad < g[a].lanes; quad += 4) {
    const int fromA = quad + 2 * laneA, fromB = secondFrom(g, a, b) + quad + 2 * laneB;
    select.insert(select.end(), {fromA, fromA + 1, fromB, fromB + 1});
  }
  return g.shuffle(a, b, select);
}

// Half halfA of a, then half halfB of b.
NodeId halves(Graph& g, NodeId a, NodeId b, int halfA, int halfB) {
  const int size = g[a].lanes / 2;
  std::vector<int> select;
  for (int i = 0; i < size; ++i) select.push_back(halfA * size + i);
  for (int i = 0; i < size; ++i) select.push_back(secondFrom(g, a, b) + halfB * size + i);
  return g.shuffle(a, b, select);
}

// Of four elements to a register, two side by side in one half of it.
struct Half {
  NodeId node;
  int half;
};

Half sideBySide(Graph& g, Slot<Packed> low, Slot<Packed> high) {
  NodeId second = high.value.node;
  if (low.lane / 2 != high.lane / 2) {
    second = halves(g, second, second, 1, 0);
    high.lane ^= 2;
  }
  return {inQuads(g, low.value.node, second, low.lane % 2, high.lane % 2), low.lane / 2};
}

}  // namespace

Packed Interleaved::load(const std::vector<int>& elements) {
  if (isEmpty(elements)) return zero();
  return {graph_, graph_->load(Unit::Complex, elements)};
}

Packed Interleaved::pack(std::vector<Slot<Packed>> slots) {
  Graph& g = *graph_;
  for (Slot<Packed>& s : slots) {
    if (!isZero(s.value)) continue;
    std::vector<int> elements(lanes_, kNoElement);
    elements[0] = s.lane;
    s = {load(elements), 0};
  }
  for (int lane = static_cast<int>(slots.size()); lane < lanes_; ++lane) {
    slots.push_back({slots.back().value, lane});
  }
  if (lanes_ == 1) return slots[0].value;
  if (lanes_ == 2) {
    const NodeId a = slots[0].value.node, b = slots[1].value.node;
    const int laneA = slots[0].lane, laneB = slots[1].lane;
    const bool single = graph_->precision() == Precision::Single;
    return {graph_, single ? inQuads(g, a, b, laneA, laneB) : halves(g, a, b, laneA, laneB)};
  }
  if (lanes_ != 4) throw std::logic_error("no vectors of " + std::to_string(lanes_) + " elements");
  const Half low = sideBySide(g, slots[0], slots[1]), high = sideBySide(g, slots[2], slots[3]);
  return {graph_, halves(g, low.node, high.node, low.half, high.half)};
}

void Interleaved::store(Packed v, const std::vector<int>& elements) {
  graph_->store(graph_->mul(v.node, graph_->scale(2 * lanes_)), Unit::Complex, elements);
}

// ---- Planar

namespace {

// Lanes 0 and 1 from a, 2 and 3 from b.
NodeId picked(Graph& g, NodeId a, int a0, int a1, NodeId b, int b0, int b1) {
  const int from = a == b ? 0 : 4;
  return g.shuffle(a, b, {a0, a1, from + b0, from + b1});
}

// Lanes `first` and `first + 1` of a and b, alternating.
NodeId woven(Graph& g, NodeId a, NodeId b, int first) {
  return g.shuffle(a, b, {first, first + 4, first + 1, first + 5});
}

// Lane l of four registers. All lanes together transpose them, and share what is woven.
NodeId transposed(Graph& g, const std::vector<NodeId>& x, int l) {
  const int first = l / 2 * 2;
  const NodeId low = woven(g, x[0], x[1], first), high = woven(g, x[2], x[3], first);
  const int at = l % 2 * 2;
  return picked(g, low, at, at + 1, high, at, at + 1);
}

// Lane lane[i] of x[i].
NodeId packedLanes(Graph& g, const std::vector<NodeId>& x, const std::vector<int>& lane) {
  const bool oneLane = std::all_of(lane.begin(), lane.end(), [&](int l) { return l == lane[0]; });
  if (oneLane && x[0] != x[1] && x[2] != x[3]) return transposed(g, x, lane[0]);
  if (x[0] == x[1] && x[2] == x[3]) {
    return picked(g, x[0], lane[0], lane[1], x[2], lane[2], lane[3]);
  }
  const NodeId low = picked(g, x[0], lane[0], lane[0], x[1], lane[1], lane[1]);
  const NodeId high = picked(g, x[2], lane[2], lane[2], x[3], lane[3], lane[3]);
  return picked(g, low, 0, 2, high, 0, 2);
}

Part packedPart(Graph& g, const std::vector<Slot<Parts>>& slots, Part Parts::*which) {
  const Part first = slots[0].value.*which;
  const bool alike = std::all_of(slots.begin(), slots.end(), [&](const Slot<Parts>& s) {
    const Part& p = s.value.*which;
    return p.negative == first.negative && p.exponent == first.exponent;
  });
  std::vector<NodeId> nodes;
  std::vector<int> lanes;
  for (const Slot<Parts>& s : slots) {
    const Part& p = s.value.*which;
    nodes.push_back(alike ? p.node : registerOf(g, p));
    lanes.push_back(s.lane);
  }
  for (int lane = static_cast<int>(slots.size()); lane < 4; ++lane) {
    nodes.push_back(nodes.back());
    lanes.push_back(lane);
  }
  const NodeId packed = packedLanes(g, nodes, lanes);
  return alike ? Part{packed, first.negative, first.exponent} : Part{packed};
}

}  // namespace

Parts Planar::load(const std::vector<int>& elements) {
  Graph& g = *graph_;
  if (isEmpty(elements)) return zero();
  const auto half = [&](int at) {
    const std::vector<int> two{elements[at], elements[at + 1]};
    if (!isEmpty(two)) return g.load(Unit::Complex, two);
    return g.constant(std::vector<Constant>(4, {0, "zero"}), g.precision());
  };
  const NodeId low = half(0), high = half(2);
  const Part re{picked(g, low, 0, 2, high, 0, 2)}, im{picked(g, low, 1, 3, high, 1, 3)};
  return g.direction() == Direction::Forward ? Parts{graph_, re, im} : Parts{graph_, im, re};
}

Parts Planar::pack(const std::vector<Slot<Parts>>& slots) {
  return {graph_, packedPart(*graph_, slots, &Parts::re), packedPart(*graph_, slots, &Parts::im)};
}

void Planar::store(Parts v, const std::vector<int>& elements) {
  Graph& g = *graph_;
  const NodeId scale = g.scale(4);
  NodeId re = g.mul(registerOf(g, v.re), scale), im = g.mul(registerOf(g, v.im), scale);
  if (g.direction() == Direction::Inverse) std::swap(re, im);
  for (int at : {0, 2}) {
    const std::vector<int> two{elements[at], elements[at + 1]};
    if (!isEmpty(two)) g.store(woven(g, re, im, at), Unit::Complex, two);
  }
}

}  // namespace kernelgen
