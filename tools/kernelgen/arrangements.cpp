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

// ---- Interleaved

NodeId Interleaved::inHalves(NodeId a, NodeId b, int laneA, int laneB) {
  Graph& g = *graph_;
  const int width = g[a].lanes;
  std::vector<int> select;
  for (int half = 0; half < width; half += 4) {
    const int fromA = half + 2 * laneA, fromB = (a == b ? 0 : width) + half + 2 * laneB;
    select.insert(select.end(), {fromA, fromA + 1, fromB, fromB + 1});
  }
  return g.shuffle(a, b, select);
}

NodeId Interleaved::halves(NodeId a, NodeId b, int halfA, int halfB) {
  Graph& g = *graph_;
  const int width = g[a].lanes, size = width / 2;
  std::vector<int> select;
  for (int i = 0; i < size; ++i) select.push_back(halfA * size + i);
  for (int i = 0; i < size; ++i) select.push_back((a == b ? 0 : width) + halfB * size + i);
  return g.shuffle(a, b, select);
}

// Two elements side by side in one half of a vector of four; which half is told.
NodeId Interleaved::pair(Slot<Packed> low, Slot<Packed> high, int& half) {
  NodeId second = high.value.node;
  if (low.lane / 2 != high.lane / 2) {
    second = halves(second, second, 1, 0);
    high.lane ^= 2;
  }
  half = low.lane / 2;
  return inHalves(low.value.node, second, low.lane % 2, high.lane % 2);
}

Packed Interleaved::load(const std::vector<int>& elements) {
  const auto missing = [](int e) { return e == kNoElement; };
  if (std::all_of(elements.begin(), elements.end(), missing)) return zero();
  return {graph_, graph_->load(Unit::Complex, elements)};
}

Packed Interleaved::pack(std::vector<Slot<Packed>> slots) {
  for (Slot<Packed>& s : slots) {
    if (!isZero(s.value)) continue;
    std::vector<int> elements(lanes(), kNoElement);
    elements[0] = s.lane;
    s = {load(elements), 0};
  }
  while (slots.size() < lanes()) {
    slots.push_back({slots.back().value, static_cast<int>(slots.size())});
  }
  const auto node = [&](std::size_t i) { return slots[i].value.node; };
  if (lanes_ == 1) return slots[0].value;
  if (lanes_ == 2) {
    const bool single = graph_->precision() == Precision::Single;
    const int a = slots[0].lane, b = slots[1].lane;
    return {graph_, single ? inHalves(node(0), node(1), a, b) : halves(node(0), node(1), a, b)};
  }
  if (lanes_ != 4) throw std::logic_error("no vectors of " + std::to_string(lanes_) + " elements");
  int halfLow = 0, halfHigh = 0;
  const NodeId low = pair(slots[0], slots[1], halfLow);
  const NodeId high = pair(slots[2], slots[3], halfHigh);
  return {graph_, halves(low, high, halfLow, halfHigh)};
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

// Lane l of four registers, as a part of their transposition: neighbours are woven, then joined.
NodeId column(Graph& g, const std::vector<NodeId>& x, int l) {
  const int first = l / 2 * 2;
  const NodeId low = g.shuffle(x[0], x[1], {first, first + 4, first + 1, first + 5});
  const NodeId high = g.shuffle(x[2], x[3], {first, first + 4, first + 1, first + 5});
  const int at = l % 2 * 2;
  return picked(g, low, at, at + 1, high, at, at + 1);
}

NodeId packedLanes(Graph& g, const std::vector<NodeId>& x, const std::vector<int>& lane) {
  const bool oneLane = std::all_of(lane.begin(), lane.end(), [&](int l) { return l == lane[0]; });
  if (oneLane && x[0] != x[1] && x[2] != x[3]) return column(g, x, lane[0]);
  if (x[0] == x[1] && x[2] == x[3]) {
    return picked(g, x[0], lane[0], lane[1], x[2], lane[2], lane[3]);
  }
  const NodeId low = picked(g, x[0], lane[0], lane[0], x[1], lane[1], lane[1]);
  const NodeId high = picked(g, x[2], lane[2], lane[2], x[3], lane[3], lane[3]);
  return picked(g, low, 0, 2, high, 0, 2);
}

}  // namespace

Parts Planar::load(const std::vector<int>& elements) {
  Graph& g = *graph_;
  const auto missing = [](int e) { return e == kNoElement; };
  if (std::all_of(elements.begin(), elements.end(), missing)) return zero();
  const auto half = [&](std::size_t at) {
    const std::vector<int> two{elements[at], elements[at + 1]};
    if (!std::all_of(two.begin(), two.end(), missing)) return g.load(Unit::Complex, two);
    return g.constant(std::vector<Constant>(4, {0, "zero"}), g.precision());
  };
  const NodeId low = half(0), high = half(2);
  const Part re{picked(g, low, 0, 2, high, 0, 2)}, im{picked(g, low, 1, 3, high, 1, 3)};
  return g.direction() == Direction::Forward ? Parts{graph_, re, im} : Parts{graph_, im, re};
}

Parts Planar::pack(const std::vector<Slot<Parts>>& slots) {
  const auto parts = [&](Part Parts::*which) {
    const Part first = slots[0].value.*which;
    const bool alike = std::all_of(slots.begin(), slots.end(), [&](const Slot<Parts>& s) {
      const Part& p = s.value.*which;
      return p.negative == first.negative && p.exponent == first.exponent;
    });
    std::vector<NodeId> nodes;
    std::vector<int> lanes;
    for (const Slot<Parts>& s : slots) {
      const Part& p = s.value.*which;
      nodes.push_back(alike ? p.node : registerOf(*graph_, p));
      lanes.push_back(s.lane);
    }
    while (nodes.size() < 4) {
      lanes.push_back(static_cast<int>(nodes.size()));
      nodes.push_back(nodes.back());
    }
    const NodeId packed = packedLanes(*graph_, nodes, lanes);
    return alike ? Part{packed, first.negative, first.exponent} : Part{packed};
  };
  return {graph_, parts(&Parts::re), parts(&Parts::im)};
}

void Planar::store(Parts v, const std::vector<int>& elements) {
  Graph& g = *graph_;
  const NodeId scale = g.scale(4);
  NodeId re = g.mul(registerOf(g, v.re), scale), im = g.mul(registerOf(g, v.im), scale);
  if (g.direction() == Direction::Inverse) std::swap(re, im);
  const auto half = [&](std::size_t at) {
    const std::vector<int> two{elements[at], elements[at + 1]};
    if (two[0] == kNoElement && two[1] == kNoElement) return;
    const int first = static_cast<int>(at);
    g.store(g.shuffle(re, im, {first, first + 4, first + 1, first + 5}), Unit::Complex, two);
  };
  half(0);
  half(2);
}

}  // namespace kernelgen
