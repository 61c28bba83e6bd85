#include "schedule.h"

#include <algorithm>
#include <iterator>
#include <stdexcept>

namespace kernelgen {
namespace {

using Nodes = std::vector<NodeId>;

bool isStatement(const Node& n) { return n.op != Op::Const && n.op != Op::Scale; }

// Edges between statements.
struct Edges {
  explicit Edges(const Graph& g) : operands(g.size()), users(g.size()) {
    for (NodeId id = 0; id < g.size(); ++id) {
      for (NodeId o : g[id].operands()) {
        if (!isStatement(g[o])) continue;
        operands[id].push_back(o);
        users[o].push_back(id);
      }
    }
  }

  std::vector<Nodes> operands, users;
};

// Cuts a set of nodes into a part near the inputs and a part near the outputs by peeling levels
// from both ends in turn, and orders the parts by themselves: the cache-oblivious order of M.
// Frigo, "A fast Fourier transform compiler", PLDI 1999.
class Bisection {
 public:
  explicit Bisection(const Edges& edges) : edges_(edges), side_(edges.users.size(), kOutside) {}

  void order(const Nodes& set, Nodes& out) {
    if (set.size() <= 1) {
      out.insert(out.end(), set.begin(), set.end());
      return;
    }
    for (NodeId n : set) side_[n] = kOpen;
    const std::vector<Nodes> parts = components(set);
    if (parts.size() > 1) {
      for (NodeId n : set) side_[n] = kOutside;
      for (const Nodes& part : parts) order(part, out);
      return;
    }
    peel(set);
    Nodes early, late;
    for (NodeId n : set) (side_[n] == kEarly ? early : late).push_back(n);
    for (NodeId n : set) side_[n] = kOutside;
    order(early, out);
    order(late, out);
  }

 private:
  enum Side : char {
    kOutside,
    kOpen,
    kEarly,
    kLate,
    kSeen
  };

  template <class Peers>
  bool all(const Peers& peers, Side wanted) const {
    return std::all_of(peers.begin(), peers.end(),
                       [&](NodeId p) { return side_[p] == kOutside || side_[p] == wanted; });
  }

  // One level from the inputs, one from the outputs, until neither end moves.
  void peel(const Nodes& set) {
    bool moved = true;
    while (moved) {
      moved = peelLevel(set, edges_.operands, kEarly);
      moved = peelLevel(set, edges_.users, kLate) || moved;
    }
  }

  bool peelLevel(const Nodes& set, const std::vector<Nodes>& peers, Side side) {
    Nodes level;
    for (NodeId n : set) {
      if (side_[n] == kOpen && all(peers[n], side)) level.push_back(n);
    }
    for (NodeId n : level) side_[n] = side;
    return !level.empty();
  }

  std::vector<Nodes> components(const Nodes& set) {
    std::vector<Nodes> parts;
    for (NodeId start : set) {
      if (side_[start] != kOpen) continue;
      Nodes stack{start}, part;
      side_[start] = kSeen;
      while (!stack.empty()) {
        const NodeId n = stack.back();
        stack.pop_back();
        part.push_back(n);
        for (const auto* peers : {&edges_.operands[n], &edges_.users[n]}) {
          for (NodeId p : *peers) {
            if (side_[p] != kOpen) continue;
            side_[p] = kSeen;
            stack.push_back(p);
          }
        }
      }
      std::sort(part.begin(), part.end());
      parts.push_back(std::move(part));
    }
    for (NodeId n : set) side_[n] = kOpen;
    return parts;
  }

  const Edges& edges_;
  std::vector<Side> side_;
};

// Cycles from the operands to the result.
int latency(const Node& n) {
  switch (n.op) {
    case Op::Load: return 6;
    case Op::Shuffle:
    case Op::Flip: return 1;
    case Op::Add:
    case Op::Sub:
    case Op::Mul:
    case Op::Widen:
    case Op::Round: return 3;
    case Op::Const:
    case Op::Scale:
    case Op::Store: return 0;
  }
  throw std::logic_error("an operation without latency");
}

// Takes the statement that can start first, and of those the one with the longest way to the end,
// as a core would that starts pace.issue of them a cycle; once pace.live values are live, those
// that end others come first, and then the base order, which knows best how to come back below.
class ListScheduler {
 public:
  ListScheduler(const Graph& g, const Edges& edges, Pace pace)
      : g_(g),
        edges_(edges),
        pace_(pace),
        way_(g.size()),
        finish_(g.size()),
        usersLeft_(g.size()),
        scheduled_(g.size()) {
    for (NodeId id = g.size(); id-- > 0;) {
      for (NodeId u : edges.users[id]) way_[id] = std::max(way_[id], way_[u]);
      way_[id] += latency(g[id]);
      usersLeft_[id] = static_cast<int>(edges.users[id].size());
    }
  }

  Nodes order(Nodes base) {
    std::erase_if(base, [this](NodeId n) { return isSource(n); });
    Nodes out;
    while (!base.empty()) {
      const std::size_t pick = choose(base);
      const NodeId n = base[pick];
      base.erase(base.begin() + static_cast<std::ptrdiff_t>(pick));
      for (NodeId o : edges_.operands[n]) place(o, out);
      issue(n);
      out.push_back(n);
    }
    return out;
  }

 private:
  // A load, or the double of one.
  bool isSource(NodeId n) const {
    if (g_[n].op == Op::Load) return true;
    const Nodes& operands = edges_.operands[n];
    return g_[n].op == Op::Mul && operands.size() == 1 && isSource(operands[0]);
  }

  // A source comes right before its first user: the core starts it ahead of time by itself, and a
  // register is not held for it.
  void place(NodeId n, Nodes& out) {
    if (!isSource(n) || scheduled_[n]) return;
    for (NodeId o : edges_.operands[n]) place(o, out);
    scheduled_[n] = true;
    ++live_;
    out.push_back(n);
  }

  bool ready(NodeId n) const {
    const Nodes& operands = edges_.operands[n];
    return std::all_of(operands.begin(), operands.end(),
                       [&](NodeId o) { return scheduled_[o] || isSource(o); });
  }

  // By how much the live values grow.
  int growth(NodeId n) const {
    int g = g_[n].op == Op::Store ? 0 : 1;
    for (NodeId o : edges_.operands[n]) {
      g += isSource(o) && !scheduled_[o];
      g -= usersLeft_[o] == 1;
    }
    return g;
  }

  int start(NodeId n) const {
    int t = clock_ / pace_.issue;
    for (NodeId o : edges_.operands[n]) t = std::max(t, finish_[o]);
    return t;
  }

  std::size_t choose(const Nodes& base) const {
    std::size_t best = base.size();
    for (std::size_t i = 0; i < base.size(); ++i) {
      if (!ready(base[i])) continue;
      if (best == base.size() || better(base[i], base[best])) best = i;
    }
    return best;
  }

  bool better(NodeId a, NodeId b) const {
    if (live_ >= pace_.live) {
      const int ga = growth(a), gb = growth(b);
      if ((ga > 0) != (gb > 0)) return ga < gb;
      if (ga > 0) return false;
    }
    const int sa = start(a), sb = start(b);
    if (sa != sb) return sa < sb;
    return way_[a] > way_[b];
  }

  void issue(NodeId n) {
    live_ += growth(n);
    finish_[n] = start(n) + latency(g_[n]);
    clock_ = std::max(clock_, start(n) * pace_.issue) + 1;
    for (NodeId o : edges_.operands[n]) --usersLeft_[o];
    scheduled_[n] = true;
  }

  const Graph& g_;
  const Edges& edges_;
  const Pace pace_;
  int live_ = 0;
  int clock_ = 0;
  std::vector<int> way_, finish_, usersLeft_;
  std::vector<char> scheduled_;
};

// Source and destination may be one array: no store comes before the last load.
Nodes withLateStores(const Graph& g, const Nodes& order) {
  const auto is = [&](Op op) { return [&g, op](NodeId n) { return g[n].op == op; }; };
  const auto lastLoad = std::find_if(order.rbegin(), order.rend(), is(Op::Load)).base();
  Nodes out, early;
  std::copy_if(order.begin(), lastLoad, std::back_inserter(early), is(Op::Store));
  std::remove_copy_if(order.begin(), lastLoad, std::back_inserter(out), is(Op::Store));
  out.insert(out.end(), early.begin(), early.end());
  out.insert(out.end(), lastLoad, order.end());
  return out;
}

}  // namespace

std::vector<NodeId> schedule(const Graph& graph, Pace pace) {
  const Edges edges(graph);
  Nodes statements, order;
  for (NodeId id = 0; id < graph.size(); ++id) {
    if (isStatement(graph[id])) statements.push_back(id);
  }
  Bisection(edges).order(statements, order);
  return withLateStores(graph, ListScheduler(graph, edges, pace).order(order));
}

}  // namespace kernelgen
