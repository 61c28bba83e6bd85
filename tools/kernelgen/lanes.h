// How transforms are laid out in vector lanes; the only place that knows lanes and shuffles.
//
// Whole    an element is a whole value: each transform runs by itself, in all lanes at once.
// Spread   an element is one lane of a register, or still in memory. Transforms of a batch are put
//          side by side into the lanes while they fill them; what is left over is opened into its
//          own blocks, which fill lanes again.
#pragma once

#include <type_traits>

#include "algorithms.h"
#include "paired.h"

namespace kernelgen {

template <class E>
struct Whole {
  static constexpr bool kCentred = std::is_same_v<E, Paired>;

  Columns<E> run(const Recipe& r, const Columns<E>& x) {
    if constexpr (std::is_same_v<E, Packed>) {
      if (r.step() == Step::Rader && x[0][0].graph->precision() == Precision::Double) {
        return runPaired(r, x);
      }
    }
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

  RaderMiddle<E> convolve(const Columns<E>& a, const Column<E>& x0, const RaderNumbers& numbers) {
    RaderMiddle<E> z{{}, a};
    const std::size_t order = numbers.factors.size();
    for (std::size_t c = 0; c < a.size(); ++c) {
      const E plain = passed(x0[c]);
      z.zero.push_back(plain + a[c][0]);
      for (std::size_t k = 0; k < order; ++k) {
        const bool mirror = k == 0 || 2 * k == order;
        z.rest[c][k] = weighted(a[c][k], numbers.factors[k], mirror);
      }
      z.rest[c][0] = plain + z.rest[c][0];
    }
    return z;
  }

 private:
  // x[0] and the constants of a Rader step. Packed elements take the full product for all of them,
  // ones and zeros included. Paired values leave out what is exact, and as a[k] and a[M-k] meet
  // again as their sum and difference, their constants hold the factor two of that.
  static E passed(E x) {
    if constexpr (std::is_same_v<E, Packed>) return product(x, kOne);
    return x;
  }

  static E weighted(E a, const Factor& b, bool mirror) {
    if constexpr (std::is_same_v<E, Paired>) {
      if (!mirror) {
        const Factor twice{{2 * b.re.exact, "two" + b.re.name},
                           {2 * b.im.exact, "two" + b.im.name}};
        return shifted(product(a, twice), -1);
      }
    }
    return product(a, b);
  }

  static Columns<E> runPaired(const Recipe& r, const Columns<E>& x) {
    Columns<E> out;
    for (const Column<E>& column : x) {
      Column<Paired> signals;
      for (const E& e : column) signals.push_back(asSignals(e));
      const Columns<Paired> transformed = Whole<Paired>().run(r, {signals});
      Column<E>& results = out.emplace_back();
      for (const Paired& p : transformed[0]) results.push_back(asElement(p));
    }
    return out;
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
  static constexpr bool kCentred = false;

  // lanes: complex elements in a vector.
  Spread(Graph& graph, int lanes) : graph_(graph), lanes_(static_cast<std::size_t>(lanes)) {}

  Columns<Ref> run(const Recipe& r, const Columns<Ref>& x);

  // Rotates the registers as they are, or leaves it to the registers that the elements are put into
  // for the columns across, whichever are fewer.
  template <class Angle>
  Columns<Ref> rotate(Columns<Ref> x, Angle angle) {
    x = postpone(std::move(x), angle);
    const auto registers = [this](std::size_t count) { return (count + lanes_ - 1) / lanes_; };
    const std::size_t rows = x[0].size(), columns = x.size();
    const bool now = (rows - 1) * registers(columns) <= (columns - 1) * registers(rows);
    return now ? settled(std::move(x)) : x;
  }

  template <class Angle>
  Columns<Ref> postpone(Columns<Ref> x, Angle angle) {
    for (std::size_t c = 0; c < x.size(); ++c) {
      for (std::size_t k = 0; k < x[c].size(); ++k) x[c][k].pending = angle(c, k);
    }
    return x;
  }

  Ref zero() const { return {kNoNode, kNoElement}; }

  // Element k of every column times factor k, as full products.
  Columns<Ref> weigh(Columns<Ref> x, const std::vector<Factor>& factors);

  RaderMiddle<Ref> convolve(Columns<Ref> a, const Column<Ref>& x0, const RaderNumbers& numbers);

  // The elements side by side in one vector; fewer than the lanes leave live data or zero behind.
  NodeId pack(const std::vector<Ref>& refs);

  // Every register rotated once, with the angles pending for its elements.
  Columns<Ref> settled(Columns<Ref> x);

 private:
  NodeId isolated(const Ref& ref, int lane);
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
