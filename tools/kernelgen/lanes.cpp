#include "lanes.h"

#include <algorithm>
#include <map>
#include <stdexcept>

namespace kernelgen {
namespace {

bool isZero(const Ref& r) { return r.node == kNoNode && r.lane == kNoElement; }

}  // namespace

NodeId Spread::inHalves(NodeId a, NodeId b, int laneA, int laneB) {
  const int width = graph_[a].lanes;
  std::vector<int> select;
  for (int half = 0; half < width; half += 4) {
    const int fromA = half + 2 * laneA, fromB = (a == b ? 0 : width) + half + 2 * laneB;
    select.insert(select.end(), {fromA, fromA + 1, fromB, fromB + 1});
  }
  return graph_.shuffle(a, b, select);
}

NodeId Spread::halves(NodeId a, NodeId b, int halfA, int halfB) {
  const int width = graph_[a].lanes, size = width / 2;
  std::vector<int> select;
  for (int i = 0; i < size; ++i) select.push_back(halfA * size + i);
  for (int i = 0; i < size; ++i) select.push_back((a == b ? 0 : width) + halfB * size + i);
  return graph_.shuffle(a, b, select);
}

// Two elements side by side in one half of a vector of four; which half is told.
NodeId Spread::pair(Ref low, Ref high, int& half) {
  if (low.lane / 2 != high.lane / 2) {
    high = {halves(high.node, high.node, 1, 0), high.lane ^ 2, {}};
  }
  half = low.lane / 2;
  return inHalves(low.node, high.node, low.lane % 2, high.lane % 2);
}

NodeId Spread::packUnturned(const std::vector<Ref>& refs) {
  const int reals = static_cast<int>(2 * lanes_);
  std::vector<Ref> at = refs;
  if (std::all_of(at.begin(), at.end(), isZero)) return kNoNode;
  if (std::all_of(at.begin(), at.end(), [](Ref r) { return r.node == kNoNode; })) {
    std::vector<int> elements(lanes_, kNoElement);
    for (std::size_t i = 0; i < at.size(); ++i) elements[i] = at[i].lane;
    return graph_.load(elements, reals);
  }
  for (Ref& r : at) {
    if (r.node != kNoNode) continue;
    std::vector<int> elements(lanes_, kNoElement);
    elements[0] = r.lane;
    r = {graph_.load(elements, reals), 0, {}};
  }
  // Lanes left over keep what the register of the last element has there.
  while (at.size() < lanes_) at.push_back({at.back().node, static_cast<int>(at.size()), {}});
  if (lanes_ == 1) return at[0].node;
  if (lanes_ == 2 && graph_.precision() == Precision::Single) {
    return inHalves(at[0].node, at[1].node, at[0].lane, at[1].lane);
  }
  if (lanes_ == 2) return halves(at[0].node, at[1].node, at[0].lane, at[1].lane);
  if (lanes_ != 4) throw std::logic_error("no vectors of " + std::to_string(lanes_) + " elements");
  int halfLow = 0, halfHigh = 0;
  const NodeId low = pair(at[0], at[1], halfLow);
  const NodeId high = pair(at[2], at[3], halfHigh);
  return halves(low, high, halfLow, halfHigh);
}

NodeId Spread::pack(const std::vector<Ref>& refs) {
  std::vector<Turn> angles(lanes_);
  for (std::size_t i = 0; i < refs.size(); ++i) angles[i] = refs[i].pending;
  return turned(packUnturned(refs), angles);
}

// Direct transforms of columns begin to end, side by side.
Columns<Ref> Spread::side(const Recipe& r, const Columns<Ref>& x, std::size_t begin,
                          std::size_t end) {
  Column<Packed> column;
  for (std::size_t k = 0; k < static_cast<std::size_t>(r.n()); ++k) {
    std::vector<Ref> refs;
    for (std::size_t c = begin; c < end; ++c) refs.push_back(x[c][k]);
    column.push_back({&graph_, pack(refs)});
  }
  const Column<Packed> y = Whole<Packed>().run(r, {column})[0];
  Columns<Ref> out(end - begin);
  for (std::size_t c = 0; c < out.size(); ++c) {
    for (const Packed& p : y) out[c].push_back({p.node, static_cast<int>(c)});
  }
  return out;
}

Columns<Ref> Spread::run(const Recipe& r, const Columns<Ref>& x) {
  Columns<Ref> out;
  std::size_t done = 0;
  const auto take = [&](const Columns<Ref>& y) { out.insert(out.end(), y.begin(), y.end()); };
  for (; done + lanes_ <= x.size(); done += lanes_) take(side(r, x, done, done + lanes_));
  if (done == x.size()) return out;
  const Columns<Ref> rest(x.begin() + static_cast<std::ptrdiff_t>(done), x.end());
  if (r.hasStages()) {
    take(split(*this, r, rest));
  } else if (r.n() == 4) {
    take(split(*this, CT(2, 2), rest));  // the same sums; a quarter turn is its only twiddle
  } else {
    take(side(r, rest, 0, rest.size()));
  }
  return out;
}

// An element in a certain lane, zero in the others.
NodeId Spread::isolated(const Ref& ref, int lane) {
  if (ref.node != kNoNode)
    throw std::logic_error("a Rader step opened across lanes takes its input from memory");
  std::vector<int> elements(lanes_, kNoElement);
  elements[static_cast<std::size_t>(lane)] = ref.lane;
  return graph_.load(elements, static_cast<int>(2 * lanes_));
}

Columns<Ref> Spread::weigh(Columns<Ref> x, const std::vector<Factor>& factors) {
  std::map<NodeId, std::vector<Factor>> ofNode;
  for (const Column<Ref>& column : x) {
    for (std::size_t k = 0; k < column.size(); ++k) {
      auto& lanes = ofNode.try_emplace(column[k].node, lanes_, kOne).first->second;
      lanes[static_cast<std::size_t>(column[k].lane)] = factors[k];
    }
  }
  std::map<NodeId, NodeId> weighted;
  for (const auto& [node, lanes] : ofNode) {
    weighted[node] = product(Packed{&graph_, node}, lanes).node;
  }
  for (Column<Ref>& column : x) {
    for (Ref& ref : column) ref.node = weighted.at(ref.node);
  }
  return x;
}

RaderMiddle<Ref> Spread::convolve(Columns<Ref> a, const Column<Ref>& x0,
                                  const RaderNumbers& numbers) {
  RaderMiddle<Ref> z{{}, weigh(a, numbers.factors)};
  for (std::size_t c = 0; c < a.size(); ++c) {
    const Ref a0 = a[c][0];
    const NodeId plain = product(Packed{&graph_, isolated(x0[c], a0.lane)}, kOne).node;
    z.zero.push_back({graph_.add(plain, a0.node), a0.lane, {}});
    // The other lanes of x[0] are zero, so what shares a register with a[0] goes with it.
    const NodeId without = z.rest[c][0].node, with = graph_.add(plain, without);
    for (Ref& ref : z.rest[c]) {
      if (ref.node == without) ref.node = with;
    }
  }
  return z;
}

Columns<Ref> Spread::settled(Columns<Ref> x) {
  // By row, since a transform with zero inputs may have one register for several outputs.
  for (std::size_t k = 0; k < x[0].size(); ++k) {
    std::map<NodeId, std::vector<Turn>> angles;
    for (const Column<Ref>& column : x) {
      std::vector<Turn>& lanes = angles.try_emplace(column[k].node, lanes_).first->second;
      lanes[static_cast<std::size_t>(column[k].lane)] = column[k].pending;
    }
    for (Column<Ref>& column : x) {
      column[k] = {turned(column[k].node, angles.at(column[k].node)), column[k].lane, {}};
    }
  }
  return x;
}

NodeId Spread::turned(NodeId node, const std::vector<Turn>& angles) {
  if (node == kNoNode) return node;
  const auto zero = [](Turn t) { return t.isZero(); };
  if (std::all_of(angles.begin(), angles.end(), zero)) return node;
  return rotated(Packed{&graph_, node}, angles).node;
}

}  // namespace kernelgen
