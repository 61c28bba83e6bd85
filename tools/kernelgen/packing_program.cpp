// From a graph to a program of operations on atoms.
#include <algorithm>
#include <map>
#include <stdexcept>
#include <tuple>
#include <utility>
#include <vector>

#include "packing_steps.h"

namespace kernelgen::steps {
namespace {

class Reader {
 public:
  Reader(const Graph& g, int lanes, bool takesRegisters)
      : g_(g), takesRegisters_(takesRegisters), uses_(g.size()) {
    p_.lanes = lanes;
  }

  Program run() {
    for (NodeId id = 0; id < g_.size(); ++id) read(id);
    return std::move(p_);
  }

 private:
  void read(NodeId id) {
    const Node& n = g_[id];
    Use& use = uses_[id];
    const auto a = [&] { return uses_[n.a]; };
    const auto leaf = [&](Atom atom) { use = {add(std::move(atom))}; };
    switch (n.op) {
      case Op::Load: return leaf({.op = n.op, .precision = n.precision, .numbers = numbersOf(n)});
      case Op::Const: return leaf({.op = n.op, .precision = n.precision, .constants = n.constants});
      case Op::Scale: return;
      case Op::Add: return leaf({.op = Op::Add, .precision = n.precision, .in = {a(), uses_[n.b]}});
      case Op::Sub: {
        Use b = uses_[n.b];
        b.signs ^= p_.allSigns();
        return leaf({.op = Op::Add, .precision = n.precision, .in = {a(), b}});
      }
      case Op::Mul: return product(n, use);
      case Op::Flip:
        use = a();
        for (int i = 0; i < n.lanes; ++i) use.signs ^= n.mask[i] << i;
        return;
      case Op::Shuffle:
        if (takesRegisters_) return shuffle(n, use);
        use = a();
        use.swapped = !use.swapped;
        use.signs = exchanged(use.signs);
        return;
      case Op::Widen:
      case Op::Round:
        if (isScale(id)) return;
        use = a();
        use.atom =
            add({.op = n.op, .precision = n.precision, .kept = n.kept, .in = {Use{a().atom}}});
        return;
      case Op::Store:
        if (const int first = Atom::first(numbersOf(n)); first != kNoElement) {
          p_.outputs[first] = a();
        } else {
          p_.scattered.push_back({a(), numbersOf(n)});
        }
    }
  }

  static std::vector<int> numbersOf(const Node& n) {
    std::vector<int> numbers;
    for (int lane = 0; lane < n.lanes; ++lane) numbers.push_back(n.number(lane));
    return numbers;
  }

  // Signs move along with the lanes.
  void shuffle(const Node& n, Use& use) {
    if (n.lanes != p_.lanes) throw std::invalid_argument("a shuffle to another width");
    const Use &a = uses_[n.a], &b = uses_[n.b];
    for (int i = 0; i < n.lanes; ++i) {
      const int from = n.select[i];
      use.signs |= (from < p_.lanes ? a.signs >> from : b.signs >> (from - p_.lanes)) << i & 1 << i;
    }
    Atom atom{.op = n.op, .precision = n.precision, .in = {{a.atom}}, .select = n.select};
    if (n.b != n.a) atom.in[1] = {b.atom};
    const auto [known, isNew] = shuffles_.try_emplace({a.atom, atom.in[1].atom, n.select}, 0);
    if (isNew) known->second = add(std::move(atom));
    use.atom = known->second;
  }

  bool isScale(NodeId id) const {
    return g_[id].op == Op::Scale || (g_[id].op == Op::Widen && g_[g_[id].a].op == Op::Scale);
  }

  void product(const Node& n, Use& use) {
    const bool second = g_[n.b].op == Op::Const || isScale(n.b);
    const NodeId factor = second ? n.b : n.a;
    const Use x = uses_[second ? n.a : n.b];
    if (isScale(factor)) {
      use = x;
      use.atom = add({.op = n.op, .precision = n.precision, .byScale = true, .in = {Use{x.atom}}});
      return;
    }
    if (g_[factor].op != Op::Const) throw std::logic_error("a product of two values");
    Atom atom{.op = n.op, .precision = n.precision, .in = {x}, .constants = g_[factor].constants};
    use = {add(std::move(atom))};
  }

  int add(Atom atom) {
    for (Use& use : atom.in) {
      if (use.atom >= 0) atom.level = std::max(atom.level, p_.atoms[use.atom].level + 1);
    }
    for (int i = 0; i < p_.lanes && atom.op == Op::Mul && !atom.byScale; ++i) {
      if (atom.in[0].signs >> i & 1) atom.constants[i] = -atom.constants[i];
    }
    if (atom.op == Op::Mul) atom.in[0].signs = 0;
    p_.atoms.push_back(std::move(atom));
    return static_cast<int>(p_.atoms.size()) - 1;
  }

  const Graph& g_;
  const bool takesRegisters_;
  Program p_;
  std::vector<Use> uses_;
  std::map<std::tuple<int, int, std::vector<int>>, int> shuffles_;
};

}  // namespace

Program read(const Graph& graph, int lanes, bool takesRegisters) {
  return Reader(graph, lanes, takesRegisters).run();
}

std::vector<Register> single(const Program& p) {
  std::vector<Register> units;
  for (int i = 0; i < static_cast<int>(p.atoms.size()); ++i) {
    if (p.atoms[i].isLeaf()) continue;
    Register unit{.atoms = {i}, .in = {}};
    for (int s = 0; s < p.atoms[i].inputs(); ++s) unit.in[s] = {p.atoms[i].in[s]};
    units.push_back(std::move(unit));
  }
  return units;
}

}  // namespace kernelgen::steps
