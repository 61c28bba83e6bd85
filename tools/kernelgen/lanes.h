// How transforms are laid out in vector lanes; the only place that knows lanes and shuffles.
//
// Whole    an element is a whole value: each transform runs by itself, in all lanes at once.
// Spread   an element is one lane of a register, or still in memory. Transforms of a batch are put
//          side by side into the lanes while they fill them; what is left over is opened into its
//          own blocks, which fill lanes again.
#pragma once

#include "algorithms.h"

namespace kernelgen {

template <class E>
struct Whole {
  Columns<E> run(const Recipe& r, const Columns<E>& x) {
    if (r.hasStages()) return split(*this, r, x);
    Columns<E> out;
    for (const Column<E>& column : x) out.push_back(direct(r, column));
    return out;
  }

  template <class Angle>
  Columns<E> rotate(Columns<E> x, Angle angle) {
    for (std::size_t c = 0; c < x.size(); ++c) {
      for (std::size_t k = 0; k < x[c].size(); ++k) {
        const Turn t = angle(c, k);
        if (!t.isZero()) x[c][k] = rotated(x[c][k], t);
      }
    }
    return x;
  }
};

// One complex element: a lane of a node, or element `lane` of the source if node is kNoNode; still
// to be multiplied by exp(-2 pi i pending).
struct Ref {
  NodeId node;
  int lane;
  Turn pending = {};

  bool operator==(const Ref&) const = default;
};

class Spread {
 public:
  // lanes: complex elements in a vector.
  Spread(Graph& graph, int lanes) : graph_(graph), lanes_(static_cast<std::size_t>(lanes)) {}

  Columns<Ref> run(const Recipe& r, const Columns<Ref>& x);

  // Rotates the registers as they are, or leaves it to the registers that the elements are put into
  // for the columns across, whichever are fewer.
  template <class Angle>
  Columns<Ref> rotate(Columns<Ref> x, Angle angle) {
    for (std::size_t c = 0; c < x.size(); ++c) {
      for (std::size_t k = 0; k < x[c].size(); ++k) x[c][k].pending = angle(c, k);
    }
    const auto registers = [this](std::size_t count) { return (count + lanes_ - 1) / lanes_; };
    const std::size_t rows = x[0].size(), columns = x.size();
    const bool now = (rows - 1) * registers(columns) <= (columns - 1) * registers(rows);
    return now ? settled(std::move(x)) : x;
  }

  // The elements side by side in one vector; fewer than the lanes leave live data or zero behind.
  NodeId pack(const std::vector<Ref>& refs);

 private:
  Columns<Ref> settled(Columns<Ref> x);
  NodeId turned(NodeId node, const std::vector<Turn>& angles);
  NodeId packUnturned(const std::vector<Ref>& refs);
  Columns<Ref> side(const Recipe& r, const Columns<Ref>& x, std::size_t begin, std::size_t end);
  NodeId pair(Ref low, Ref high, int& half);
  NodeId inHalves(NodeId a, NodeId b, int laneA, int laneB);
  NodeId halves(NodeId a, NodeId b, int halfA, int halfB);

  Graph& graph_;
  std::size_t lanes_;
};

}  // namespace kernelgen
