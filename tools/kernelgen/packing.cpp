#include "packing.h"

#include <algorithm>
#include <array>
#include <map>
#include <queue>
#include <set>
#include <stdexcept>
#include <tuple>
#include <utility>

#include "scalar.h"

namespace kernelgen {
namespace {

// ---- The program: operations on atoms, which are numbers, complex elements or registers

// A use of an atom: its lanes exchanged or not, then the signs, a bit for each lane.
struct Use {
  int atom = -1;
  bool swapped = false;
  int signs = 0;

  auto operator<=>(const Use&) const = default;
};

struct Atom {
  Op op;  // Load, Const, Add, Mul, Shuffle, Widen, Round
  Precision precision;
  bool kept = false;
  bool byScale = false;                         // of products: by the scale, else by `constants`
  Use in[2] = {};                               // two for Add, and a Shuffle of two, else one
  std::vector<RoundedConstant> constants = {};  // Const and products by them
  std::vector<int> select = {};                 // Shuffle, as in a node
  std::vector<int> numbers = {};                // Load: of the source, a lane each
  int level = 0;                                // operands have a lower one

  int inputs() const { return isLeaf() ? 0 : in[1].atom >= 0 ? 2 : 1; }
  bool isLeaf() const { return op == Op::Load || op == Op::Const; }
  // The first of the numbers, if the others follow it.
  int firstNumber() const { return first(numbers); }

  static int first(const std::vector<int>& numbers) {
    for (std::size_t i = 0; i < numbers.size(); ++i) {
      if (numbers[i] != numbers[0] + static_cast<int>(i) || numbers[i] < 0) return kNoElement;
    }
    return numbers.empty() ? kNoElement : numbers[0];
  }
};

// Numbers of the destination that are not neighbours, kNoElement for what is not stored.
struct Scattered {
  Use use;
  std::vector<int> numbers;
};

struct Program {
  int lanes;  // of an atom
  std::vector<Atom> atoms;
  std::map<int, Use> outputs;  // by the first number
  std::vector<Scattered> scattered;

  int allSigns() const { return (1 << lanes) - 1; }
};

int exchanged(int signs) { return (signs & 1) << 1 | signs >> 1; }

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

// ---- Units: operations that share a register

using Uses = std::vector<Use>;

struct Register {
  std::vector<int> atoms;
  Uses in[2];
};

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

// Makes one unit of two, as often as that saves more operations than it costs shuffles. Units pair
// that are equal in everything but their operands; as these are of the same level too, no unit comes
// to depend on itself. A pair is the seed of a region: the operands of both pair, and their users, as
// long as no shuffle is needed, so that a region grows over isomorphic blocks of a transform. The
// best region is taken, again and again.
class Pairing {
 public:
  Pairing(const Program& p, const std::vector<Register>& units, int width)
      : p_(p),
        units_(units),
        width_(width),
        partner_(units.size(), kFree),
        region_(units.size(), kFree),
        kind_(units.size(), kFree),
        inputs_(units.size()),
        left_(units.size()),
        operands_(units.size()),
        users_(units.size()),
        outputs_(units.size()) {
    std::vector<std::pair<int, int>> home(p.atoms.size(), {-1, 0});
    for (int u = 0; u < size(); ++u) {
      for (int i = 0; i < std::ssize(units[u].atoms); ++i) home[units[u].atoms[i]] = {u, i};
    }
    std::map<Kind, int> kinds;
    for (int u = 0; u < size(); ++u) {
      if (std::ssize(units[u].atoms) != width) continue;
      kind_[u] = kinds.try_emplace(kind(u), static_cast<int>(kinds.size())).first->second;
      members_.resize(kinds.size());
      members_[kind_[u]].push_back(u);
      inputs_[u] = atom(u).inputs();
      for (int s = 0; s < inputs_[u]; ++s) {
        operands_[u][s] = operand(units[u].in[s], home);
        if (operands_[u][s].unit >= 0) users_[operands_[u][s].unit].push_back({u, s});
      }
    }
    for (const auto& [element, use] : p.outputs) {
      const auto [unit, lane] = home[use.atom];
      if (unit >= 0 && lane == 0) outputs_[unit].push_back(element);
    }
  }

  std::vector<Register> run() {
    constexpr int kSeeds = 1000;
    while (takeRegions(kSeeds) || takeRegions(size() * size())) {
    }
    return joined();
  }

 private:
  static constexpr int kFree = -1;
  static constexpr double kLeastGain = 0.25;
  // What it costs that a value is wanted outside its register, in operations.
  static constexpr double kEscape = 0.5;

  // A region is tried from one of its pairs, and what others took from it in the next round. In long
  // kernels the first units of each kind are seeds for all others of that kind.
  bool takeRegions(int count) {
    std::size_t open = 1;
    for (int u = 0; u < size(); ++u) open += kind_[u] != kFree && partner_[u] == kFree;
    const std::size_t perKind = 1 + count / open;
    std::priority_queue<Seed> seeds;
    tried_.assign(units_.size() * units_.size(), false);
    for (const std::vector<int>& members : members_) {
      std::size_t left = perKind;
      for (int u : members) {
        if (partner_[u] != kFree) continue;
        for (int v : members) {
          if (isOpen(u, v) && !tried_[u * units_.size() + v]) offer(seeds, u, v);
          if (isOpen(v, u) && !tried_[v * units_.size() + u]) offer(seeds, v, u);
        }
        if (--left == 0) break;
      }
    }
    const std::size_t before = taken_.size();
    while (!seeds.empty()) {
      const Seed best = seeds.top();
      seeds.pop();
      if (partner_[best.u] != kFree || partner_[best.v] != kFree) continue;
      grow(best.u, best.v);
      const double gain = regionGain();
      if (gain <= kLeastGain) {
        forget();
      } else if (gain < best.gain) {
        forget();
        seeds.push({gain, best.u, best.v});
      } else {
        take();
      }
    }
    return taken_.size() > before;
  }

  struct Seed {
    double gain;
    int u, v;
    bool operator<(const Seed& other) const {
      return std::tie(gain, other.u, other.v) < std::tie(other.gain, u, v);
    }
  };

  // What an input is: a unit in place, or neighbours in the source, or anything.
  struct Operand {
    int unit = -1;
    int number = -1;
    bool swapped = false;
    int signs = 0;  // of all lanes, or kMixed
  };
  static constexpr int kMixed = -1;

  struct User {
    int unit, slot;
  };

  struct Pair {
    int u, v;
    bool crossed;
  };

  int size() const { return static_cast<int>(units_.size()); }
  const Atom& atom(int u) const { return p_.atoms[units_[u].atoms[0]]; }

  Operand operand(const Uses& uses, const std::vector<std::pair<int, int>>& home) const {
    Operand o{.swapped = uses[0].swapped, .signs = uses[0].signs};
    const Atom& first = p_.atoms[uses[0].atom];
    const int unit = home[uses[0].atom].first;
    bool inPlace = unit >= 0 && units_[unit].atoms.size() == uses.size();
    bool inSource = first.firstNumber() != kNoElement;
    for (int i = 0; i < std::ssize(uses); ++i) {
      const Atom& a = p_.atoms[uses[i].atom];
      const bool alike = uses[i].swapped == o.swapped;
      inPlace = inPlace && alike && home[uses[i].atom] == std::pair(unit, i);
      inSource = inSource && alike && a.firstNumber() == first.firstNumber() + i * p_.lanes;
      if (uses[i].signs != o.signs) o.signs = kMixed;
    }
    if (inPlace) o.unit = unit;
    if (inSource) o.number = first.firstNumber();
    return o;
  }

  using Kind = std::tuple<int, Op, Precision, bool, bool, int, std::vector<int>>;
  Kind kind(int u) const {
    const Atom& a = atom(u);
    return {a.level, a.op, a.precision, a.kept, a.byScale, a.inputs(), a.select};
  }

  void offer(std::priority_queue<Seed>& seeds, int u, int v) {
    grow(u, v);
    const double gain = regionGain();
    if (gain > kLeastGain) seeds.push({gain, u, v});
    for (const Pair& pair : pairs_) tried_[pair.u * units_.size() + pair.v] = true;
    forget();
  }

  // ---- Regions

  bool isOpen(int u, int v) const {
    return u != v && partner_[u] == kFree && partner_[v] == kFree && region_[u] == kFree &&
           region_[v] == kFree && kind_[u] != kFree && kind_[u] == kind_[v];
  }

  bool arePaired(int u, int v) const { return rightOf(u) == v; }
  int rightOf(int u) const {
    const int right = region_[u] != kFree ? region_[u] : partner_[u];
    return right >= 0 && left_[u] ? right : kFree;
  }

  enum Fit {
    kNone,     // a shuffle
    kGrowing,  // none, if the operands pair
    kFits
  };

  Fit fit(const Operand& a, const Operand& b) const {
    if (a.swapped != b.swapped) return kNone;
    if (a.number >= 0 && b.number == a.number + width_ * p_.lanes) return kFits;
    if (a.unit < 0 || b.unit < 0) return kNone;
    if (arePaired(a.unit, b.unit)) return kFits;
    return isOpen(a.unit, b.unit) ? kGrowing : kNone;
  }

  double misfit(const Operand& a, const Operand& b) const {
    const Fit f = fit(a, b);
    const double shuffle = f == kNone ? 1 : f == kGrowing ? 0.1 : 0;
    return shuffle + (a.signs != b.signs && a.signs != kMixed && b.signs != kMixed ? 0.5 : 0);
  }

  double misfit(int u, int v, bool crossed) const {
    double sum = 0;
    for (int s = 0; s < inputs_[u]; ++s) sum += misfit(operands_[u][s], operands_[v][s ^ crossed]);
    return sum;
  }

  void add(int u, int v) {
    const bool crossed = atom(u).op == Op::Add && misfit(u, v, true) < misfit(u, v, false);
    region_[u] = v;
    region_[v] = u;
    left_[u] = true;
    left_[v] = false;
    pairs_.push_back({u, v, crossed});
  }

  void grow(int u, int v) {
    pairs_.clear();
    add(u, v);
    for (std::size_t i = 0; i < pairs_.size(); ++i) {
      const Pair pair = pairs_[i];
      for (int s = 0; s < inputs_[pair.u]; ++s) {
        const Operand &a = operands_[pair.u][s], &b = operands_[pair.v][s ^ pair.crossed];
        if (fit(a, b) == kGrowing) add(a.unit, b.unit);
      }
      for (const User& x : users_[pair.u]) growOver(x, users_[pair.v]);
    }
  }

  // The user that x pairs best with.
  void growOver(const User& x, const std::vector<User>& others) {
    double best = 1;
    int partner = kFree;
    for (const User& y : others) {
      if (!isOpen(x.unit, y.unit)) continue;
      if (x.slot != y.slot && atom(x.unit).op != Op::Add) continue;
      const double m = misfit(x.unit, y.unit, x.slot != y.slot);
      if (m < best) {
        best = m;
        partner = y.unit;
      }
    }
    if (partner != kFree) add(x.unit, partner);
  }

  double regionGain() {
    double gain = 0;
    shuffled_.clear();
    for (const Pair& pair : pairs_) {
      gain += 1;
      for (int s = 0; s < inputs_[pair.u]; ++s) {
        const Operand &a = operands_[pair.u][s], &b = operands_[pair.v][s ^ pair.crossed];
        const bool mixed = a.signs != b.signs && a.signs != kMixed && b.signs != kMixed;
        if (mixed && atom(pair.u).op == Op::Add) gain -= 0.4;
        if (fit(a, b) == kFits) continue;
        const bool isKnown = a.unit >= 0 && b.unit >= 0;
        if (isKnown) {
          shuffled_.push_back({a.unit, b.unit});
        } else {
          gain -= 1;
        }
      }
      const bool leaves = std::any_of(users_[pair.v].begin(), users_[pair.v].end(),
                                      [&](const User& y) { return region_[y.unit] == kFree; });
      if (leaves) gain -= kEscape;
      for (int element : outputs_[pair.u]) {
        const auto& other = outputs_[pair.v];
        const bool beside =
            std::find(other.begin(), other.end(), element + width_ * p_.lanes) != other.end();
        gain += beside ? 0.5 : -0.25;
      }
    }
    std::sort(shuffled_.begin(), shuffled_.end());
    gain -=
        static_cast<double>(std::unique(shuffled_.begin(), shuffled_.end()) - shuffled_.begin());
    return gain;
  }

  void forget() {
    for (const Pair& pair : pairs_) {
      region_[pair.u] = region_[pair.v] = kFree;
      left_[pair.u] = false;
    }
  }

  void take() {
    for (const Pair& pair : pairs_) {
      partner_[pair.u] = pair.v;
      partner_[pair.v] = pair.u;
      region_[pair.u] = region_[pair.v] = kFree;
      taken_.push_back(pair);
    }
  }

  std::vector<Register> joined() const {
    std::vector<Register> out;
    for (int u = 0; u < size(); ++u) {
      if (partner_[u] == kFree) out.push_back(units_[u]);
    }
    for (const Pair& pair : taken_) {
      Register unit = units_[pair.u];
      const Register& right = units_[pair.v];
      unit.atoms.insert(unit.atoms.end(), right.atoms.begin(), right.atoms.end());
      for (int s = 0; s < inputs_[pair.u]; ++s) {
        const Uses& uses = right.in[s ^ pair.crossed];
        unit.in[s].insert(unit.in[s].end(), uses.begin(), uses.end());
      }
      out.push_back(std::move(unit));
    }
    return out;
  }

  const Program& p_;
  const std::vector<Register>& units_;
  const int width_;
  std::vector<int> partner_, region_;  // for good, and of the region that is tried
  std::vector<int> kind_, inputs_;
  std::vector<char> left_, tried_;
  std::vector<std::vector<int>> members_;  // by kind
  std::vector<std::array<Operand, 2>> operands_;
  std::vector<std::vector<User>> users_;
  std::vector<std::vector<int>> outputs_;
  std::vector<Pair> pairs_, taken_;
  std::vector<std::pair<int, int>> shuffled_;
};

// ---- Signs

// Gives constants other signs where that leaves fewer sums with different signs in their lanes: the
// sign of a product is free, as its users can take it with the other one.
class Signs {
 public:
  Signs(Program& p, std::vector<Register>& units) : p_(p), users_(p.atoms.size()) {
    for (Register& unit : units) {
      const Atom& atom = p.atoms[unit.atoms[0]];
      for (int s = 0; s < atom.inputs(); ++s) {
        for (std::size_t i = 0; i < unit.in[s].size(); ++i) {
          Use& use = unit.in[s][i];
          users_[use.atom].push_back({&use, &unit.in[s], &p.atoms[unit.atoms[i]]});
        }
      }
    }
    for (auto& [number, use] : p.outputs) users_[use.atom].push_back({&use, nullptr, nullptr});
    for (auto& s : p.scattered) users_[s.use.atom].push_back({&s.use, nullptr, nullptr});
  }

  void settle() {
    for (int round = 0; round < 3; ++round) {
      for (std::size_t i = p_.atoms.size(); i-- > 0;) {
        for (int lane = 0; lane < p_.lanes; ++lane) settle(static_cast<int>(i), lane);
      }
    }
  }

 private:
  struct User {
    Use* use;
    Uses* slot;  // none for an output
    Atom* atom;
  };

  bool passesOn(const Atom& a) const {
    return a.op == Op::Widen || a.op == Op::Round || (a.op == Op::Mul && a.byScale);
  }

  // Its users, those behind what passes a sign on in place of that.
  void collect(int i, std::vector<User>& open) const {
    for (const User& u : users_[i]) {
      if (u.atom == nullptr || !passesOn(*u.atom)) {
        open.push_back(u);
      } else {
        collect(static_cast<int>(u.atom - p_.atoms.data()), open);
      }
    }
  }

  int bit(const User& u, int lane) const {
    return 1 << (u.use->swapped ? p_.lanes - 1 - lane : lane);
  }

  double mixed(const std::vector<User>& users) const {
    std::set<const Uses*> slots;
    double sum = 0;
    for (const User& u : users) {
      if (u.slot == nullptr) {
        sum += u.use->signs != 0 ? 0.5 : 0;
      } else if (u.atom->op == Op::Add && slots.insert(u.slot).second) {
        const int all = p_.allSigns(), first = (*u.slot)[0].signs;
        const bool isMixed = std::any_of(u.slot->begin(), u.slot->end(),
                                         [&](const Use& x) { return x.signs != first; });
        sum += isMixed || (first != 0 && first != all) ? 1 : first == all ? 0.01 : 0;
      }
    }
    return sum;
  }

  void turn(const std::vector<User>& users, int lane) {
    for (const User& u : users) {
      if (u.atom != nullptr && u.atom->op == Op::Mul) {
        RoundedConstant& c = u.atom->constants[bit(u, lane) >> 1];
        c = -c;
      } else {
        u.use->signs ^= bit(u, lane);
      }
    }
  }

  void settle(int i, int lane) {
    Atom& atom = p_.atoms[i];
    if (atom.op != Op::Mul || atom.byScale) return;
    std::vector<User> open;
    collect(i, open);
    for (const User& u : open) {
      if (u.atom != nullptr && u.atom->op == Op::Shuffle) return;
    }
    const double before = mixed(open);
    turn(open, lane);
    if (mixed(open) < before) {
      atom.constants[lane] = -atom.constants[lane];
    } else {
      turn(open, lane);
    }
  }

  Program& p_;
  std::vector<std::vector<User>> users_;
};

// ---- Lowering: units in order, their operands in place

class Lowering {
 public:
  Lowering(const Program& p, const Traits& traits, int sourceSize, int width)
      : p_(p),
        g_(traits),
        sourceSize_(sourceSize),
        width_(width),
        home_(p.atoms.size(), {kNoNode, 0}) {}

  Graph run(std::vector<Register> units) {
    const auto level = [this](const Register& u) { return p_.atoms[u.atoms[0]].level; };
    std::stable_sort(units.begin(), units.end(),
                     [&](const Register& a, const Register& b) { return level(a) < level(b); });
    for (int i = 0; i < std::ssize(p_.atoms); ++i) {
      const Atom& a = p_.atoms[i];
      if (a.op == Op::Load && a.firstNumber() == kNoElement) home_[i] = {gathered(a.numbers), 0};
    }
    for (Register& unit : units) {
      const NodeId node = lower(unit);
      for (int i = 0; i < std::ssize(unit.atoms); ++i) home_[unit.atoms[i]] = {node, i};
      Uses whole;
      for (int atom : unit.atoms) whole.push_back({atom});
      placed_[whole] = node;
    }
    store();
    return g_.pruned();
  }

 private:
  NodeId lower(Register& unit) {
    const Atom& a = p_.atoms[unit.atoms[0]];
    switch (a.op) {
      case Op::Add: return sum(unit);
      case Op::Mul: {
        const NodeId x = place(unit.in[0]);
        if (a.byScale) {
          NodeId scale = g_.scale(g_[x].lanes);
          if (a.precision != g_.precision()) scale = g_.widen(scale);
          return g_.mul(x, scale);
        }
        std::vector<RoundedConstant> constants;
        for (int i : unit.atoms) {
          const auto& c = p_.atoms[i].constants;
          constants.insert(constants.end(), c.begin(), c.end());
        }
        return g_.mul(x, constant(a.precision, std::move(constants)));
      }
      case Op::Shuffle: return shuffled(unit);
      case Op::Widen: return g_.widen(place(unit.in[0]));
      case Op::Round: return g_.round(place(unit.in[0]), a.kept);
      default: throw std::logic_error("not an operation");
    }
  }

  // Of each atom by itself.
  NodeId shuffled(const Register& unit) {
    const NodeId a = place(unit.in[0]), b = unit.in[1].empty() ? a : place(unit.in[1]);
    std::vector<int> select;
    for (int i = 0; i < std::ssize(unit.atoms); ++i) {
      for (int from : p_.atoms[unit.atoms[i]].select) {
        const int ofB = from < p_.lanes ? 0 : g_[a].lanes - p_.lanes;
        select.push_back(from + ofB + i * p_.lanes);
      }
    }
    return g_.shuffle(a, b, std::move(select));
  }

  NodeId constant(Precision precision, std::vector<RoundedConstant> lanes) {
    return g_.append({.op = Op::Const,
                      .precision = precision,
                      .lanes = static_cast<int>(lanes.size()),
                      .constants = std::move(lanes)});
  }

  // The operands of a lane may change places.
  NodeId sum(Register& unit) {
    Uses &a = unit.in[0], &b = unit.in[1];
    const int n = static_cast<int>(a.size());
    int best = 0;
    double least = 1e9;
    const Uses a0 = a, b0 = b;
    for (int crossed = 0; crossed < 1 << n; crossed += 2) {
      for (int i = 0; i < n; ++i) {
        const bool cross = (crossed >> i & 1) != 0;
        a[i] = cross ? b0[i] : a0[i];
        b[i] = cross ? a0[i] : b0[i];
      }
      const double c = costOfPlacing(a) + costOfPlacing(b) + costOfSigns(a) + costOfSigns(b) +
                       (allSigned(a) ? 0.1 : 0);
      if (c < least - 1e-9) {
        least = c;
        best = crossed;
      }
    }
    for (int i = 0; i < n; ++i) {
      const bool cross = (best >> i & 1) != 0;
      a[i] = cross ? b0[i] : a0[i];
      b[i] = cross ? a0[i] : b0[i];
    }
    if (allSigned(b)) return g_.sub(withSigns(a), place(b));
    if (allSigned(a)) return g_.sub(withSigns(b), place(a));
    return g_.add(withSigns(a), withSigns(b));
  }

  bool allSigned(const Uses& uses) const {
    return std::all_of(uses.begin(), uses.end(),
                       [this](const Use& u) { return u.signs == p_.allSigns(); });
  }
  bool noneSigned(const Uses& uses) const {
    return std::all_of(uses.begin(), uses.end(), [](const Use& u) { return u.signs == 0; });
  }
  double costOfSigns(const Uses& uses) const {
    return allSigned(uses) || noneSigned(uses) ? 0 : 0.5;
  }

  NodeId withSigns(const Uses& uses) {
    const NodeId x = place(uses);
    if (noneSigned(uses)) return x;
    std::vector<int> mask;
    for (const Use& u : uses) {
      for (int i = 0; i < p_.lanes; ++i) mask.push_back(u.signs >> i & 1);
    }
    return g_.flip(x, std::move(mask));
  }

  // ---- Placing: a register whose lanes are these values, signs apart

  // Where values come from: the number of the lane there, for each lane of the atoms that are wanted.
  struct Source {
    NodeId node = kNoNode;
    int loadAt = kNoElement;  // first number, instead of a node that there is already
    int loadLanes = 0;
    std::vector<int> lanes;  // kNowhere for what comes from elsewhere
  };
  static constexpr int kNowhere = -1;

  static Uses unsignedUses(Uses uses) {
    for (Use& u : uses) u.signs = 0;
    return uses;
  }

  bool isLoad(const Use& u) const { return p_.atoms[u.atom].firstNumber() != kNoElement; }
  bool isConst(const Use& u) const { return p_.atoms[u.atom].op == Op::Const; }

  int laneWithin(const Use& u, int lane) const { return u.swapped ? p_.lanes - 1 - lane : lane; }

  std::vector<Source> sources(const Uses& uses) {
    std::vector<Source> list;
    const int n = static_cast<int>(uses.size());
    const auto put = [&](Source& s, int i, int first) {
      s.lanes.resize(n * p_.lanes, kNowhere);
      for (int l = 0; l < p_.lanes; ++l) {
        s.lanes[i * p_.lanes + l] = first + laneWithin(uses[i], l);
      }
    };
    for (int i = 0; i < n; ++i) {
      if (isLoad(uses[i]) || isConst(uses[i])) continue;
      const auto [node, lane] = home_[uses[i].atom];
      auto s = std::find_if(list.begin(), list.end(),
                            [node = node](const Source& x) { return x.node == node; });
      if (s == list.end()) s = list.insert(list.end(), {.node = node, .lanes = {}});
      put(*s, i, lane * p_.lanes);
    }
    addConstants(uses, list, put);
    addLoads(uses, list, put);
    return list;
  }

  template <class Put>
  void addConstants(const Uses& uses, std::vector<Source>& list, const Put& put) {
    const auto first =
        std::find_if(uses.begin(), uses.end(), [&](const Use& u) { return isConst(u); });
    if (first == uses.end()) return;
    std::vector<RoundedConstant> lanes(uses.size() * p_.lanes, {0, "zero"});
    Source source;
    for (int i = 0; i < std::ssize(uses); ++i) {
      if (!isConst(uses[i])) continue;
      for (int l = 0; l < p_.lanes; ++l) {
        lanes[i * p_.lanes + l] = p_.atoms[uses[i].atom].constants[l];
      }
      put(source, i, i * p_.lanes);
    }
    source.node = constant(p_.atoms[first->atom].precision, std::move(lanes));
    list.push_back(std::move(source));
  }

  // Runs of the source in which elements are in place, or are any. None begins before the source or
  // goes past its end.
  template <class Put>
  void addLoads(const Uses& uses, std::vector<Source>& list, const Put& put) {
    const int n = static_cast<int>(uses.size());
    std::vector<int> at(n, kNoElement);
    for (int i = 0; i < n; ++i) at[i] = p_.atoms[uses[i].atom].firstNumber();
    const std::vector<int> inPlace = windows(at, true), any = windows(at, false);
    const bool takesAny =
        std::set(any.begin(), any.end()).size() < std::set(inPlace.begin(), inPlace.end()).size();
    const std::vector<int>& starts = takesAny ? any : inPlace;
    std::map<int, Source> runs;
    for (int i = 0; i < n; ++i) {
      if (at[i] != kNoElement) put(runs[starts[i]], i, at[i] - starts[i]);
    }
    for (auto& [start, source] : runs) {
      int highest = 0;
      for (int lane : source.lanes) highest = std::max(highest, lane);
      source.loadAt = start;
      source.loadLanes = highest < p_.lanes ? p_.lanes : n * p_.lanes;
      if (start + source.loadLanes > sourceSize_) {
        throw std::logic_error("a load goes past the source");
      }
      list.push_back(std::move(source));
    }
  }

  // Where the run starts that each atom is read from; a lone one starts its own.
  std::vector<int> windows(const std::vector<int>& at, bool inPlace) const {
    const int n = static_cast<int>(at.size()), size = n * p_.lanes;
    std::vector<int> starts(n, kNoElement);
    for (int i = 0; i < n; ++i) {
      if (at[i] == kNoElement || starts[i] != kNoElement) continue;
      int start = inPlace ? at[i] - i * p_.lanes : at[i];
      if (!inPlace) {
        for (int j = 0; j < n; ++j) {
          const bool near =
              at[j] != kNoElement && starts[j] == kNoElement && at[i] - at[j] <= size - p_.lanes;
          if (near && at[j] < start) start = at[j];
        }
        start = std::min(start, sourceSize_ - size);
      }
      const bool isInside = start >= 0 && start + size <= sourceSize_;
      if (!isInside) {
        starts[i] = at[i];
        continue;
      }
      for (int j = i; j < n; ++j) {
        const int lane = at[j] - start;
        const bool here = inPlace ? lane == j * p_.lanes : lane >= 0 && lane <= size - p_.lanes;
        if (at[j] != kNoElement && starts[j] == kNoElement && here) starts[j] = start;
      }
    }
    // A run that starts at another's single atom is another run.
    for (int i = 0; i < n; ++i) {
      const bool isRun = starts[i] != kNoElement && starts[i] + size <= sourceSize_;
      if (!isRun) continue;
      if (std::count(starts.begin(), starts.end(), starts[i]) == 1 && !inPlace) starts[i] = at[i];
    }
    return starts;
  }

  bool isWhole(const Source& s, std::size_t lanes) const {
    const std::size_t own = s.loadAt != kNoElement ? s.loadLanes : g_[s.node].lanes;
    if (own != lanes) return false;
    for (std::size_t i = 0; i < lanes; ++i) {
      if (s.lanes[i] != static_cast<int>(i)) return false;
    }
    return true;
  }

  double costOfPlacing(const Uses& signedUses) {
    const Uses uses = unsignedUses(signedUses);
    if (placed_.contains(uses)) return 0;
    const std::vector<Source> list = sources(uses);
    double loads = 0;
    for (const Source& s : list) loads += s.loadAt != kNoElement ? 0.3 : 0;
    if (list.size() == 1) return loads + (isWhole(list[0], uses.size() * p_.lanes) ? 0 : 1);
    return loads + static_cast<double>(std::min(list.size(), uses.size()) - 1);
  }

  NodeId nodeOf(const Source& s) {
    if (s.loadAt == kNoElement) return s.node;
    std::vector<int> numbers;
    for (int i = 0; i < s.loadLanes; ++i) numbers.push_back(s.loadAt + i);
    return g_.load(Unit::Real, std::move(numbers));
  }

  NodeId place(const Uses& signedUses) {
    const Uses uses = unsignedUses(signedUses);
    if (const auto known = placed_.find(uses); known != placed_.end()) return known->second;
    const NodeId node = placeNew(uses);
    placed_[uses] = node;
    return node;
  }

  NodeId placeNew(const Uses& uses) {
    const std::vector<Source> list = sources(uses);
    const std::size_t lanes = uses.size() * p_.lanes;
    if (list.size() == 1) {
      const NodeId x = nodeOf(list[0]);
      return isWhole(list[0], lanes) ? x : g_.shuffle(x, x, list[0].lanes);
    }
    if (list.size() == 2) {
      const NodeId a = nodeOf(list[0]), b = nodeOf(list[1]);
      std::vector<int> select;
      for (std::size_t i = 0; i < lanes; ++i) {
        const bool first = list[0].lanes[i] != kNowhere;
        select.push_back(first ? list[0].lanes[i] : list[1].lanes[i] + g_[a].lanes);
      }
      return g_.shuffle(a, b, std::move(select));
    }
    const auto middle = uses.begin() + static_cast<std::ptrdiff_t>(uses.size() / 2);
    const Uses low(uses.begin(), middle), high(middle, uses.end());
    if (costOfPlacing(low) + costOfPlacing(high) + 1 <= static_cast<double>(list.size()) - 0.9) {
      return halves(place(low), place(high));
    }
    return merged(list, lanes);
  }

  NodeId halves(NodeId low, NodeId high) {
    std::vector<int> select;
    for (int i = 0; i < g_[low].lanes + g_[high].lanes; ++i) select.push_back(i);
    return g_.shuffle(low, high, std::move(select));
  }

  // One source after the other. What no lane wants yet keeps any value.
  NodeId merged(const std::vector<Source>& list, std::size_t lanes) {
    NodeId sum = nodeOf(list[0]);
    std::vector<int> where = list[0].lanes;
    for (std::size_t s = 1; s < list.size(); ++s) {
      const NodeId next = nodeOf(list[s]);
      std::vector<int> select;
      for (std::size_t i = 0; i < lanes; ++i) {
        const int from = list[s].lanes[i];
        if (from != kNowhere) {
          select.push_back(from + g_[sum].lanes);
          where[i] = static_cast<int>(i);
        } else {
          select.push_back(where[i] != kNowhere ? where[i] : static_cast<int>(i) % g_[sum].lanes);
          if (where[i] != kNowhere) where[i] = static_cast<int>(i);
        }
      }
      sum = g_.shuffle(sum, next, std::move(select));
    }
    return sum;
  }

  // ---- Loads of numbers that are not neighbours, in pairs; kNoElement is zero

  NodeId gathered(const std::vector<int>& numbers) {
    const std::size_t count = numbers.size();
    if (count > 2) {
      const auto middle = numbers.begin() + static_cast<std::ptrdiff_t>(count / 2);
      return halves(gathered({numbers.begin(), middle}), gathered({middle, numbers.end()}));
    }
    if (numbers == std::vector(count, kNoElement)) {
      return constant(g_.precision(), std::vector<RoundedConstant>(count, {0, "zero"}));
    }
    if (Atom::first(numbers) == kNoElement)
      throw std::invalid_argument("a load of half an element");
    return g_.load(Unit::Real, numbers);
  }

  // ---- Stores: runs of the destination, in the cheapest cut

  void store() {
    for (const Scattered& s : p_.scattered) {
      const NodeId x = withSigns({s.use});
      for (int lane = 0; lane < p_.lanes; lane += 2) {
        if (s.numbers[lane] == kNoElement) continue;
        g_.store(g_.shuffle(x, x, {lane, lane + 1}), Unit::Real,
                 {s.numbers[lane], s.numbers[lane + 1]});
      }
    }
    if (p_.outputs.empty()) return;
    const int count = p_.outputs.rbegin()->first + p_.lanes;
    std::vector<double> rest(count + 1, 0);
    std::vector<int> length(count, 0);
    for (int i = count; i-- > 0;) {
      rest[i] = rest[i + 1];
      if (!p_.outputs.contains(i)) continue;
      rest[i] = 1e9;
      for (int n = 1; n <= width_; n *= 2) {
        const Uses uses = run(i, n);
        if (uses.empty()) break;
        const double c = kStore + costOfPlacing(uses) + costOfSigns(uses) + rest[i + n * p_.lanes];
        if (c < rest[i] + 1e-9) {
          rest[i] = c;
          length[i] = n;
        }
      }
    }
    for (int i = 0; i < count; i += std::max(1, length[i] * p_.lanes)) {
      if (length[i] == 0) continue;
      std::vector<int> numbers;
      for (int k = 0; k < length[i] * p_.lanes; ++k) numbers.push_back(i + k);
      g_.store(withSigns(run(i, length[i])), Unit::Real, std::move(numbers));
    }
  }

  static constexpr double kStore = 0.8;

  Uses run(int first, int n) const {
    Uses uses;
    for (int i = 0; i < n; ++i) {
      const auto output = p_.outputs.find(first + i * p_.lanes);
      if (output == p_.outputs.end()) return {};
      uses.push_back(output->second);
    }
    return uses;
  }

  const Program& p_;
  Graph g_;
  const int sourceSize_, width_;
  std::vector<std::pair<NodeId, int>> home_;  // of an atom: the register and the place in it
  std::map<Uses, NodeId> placed_;
};

// The lanes of a graph whose registers all have as many.
int lanesOf(const Graph& graph) {
  int lanes = 0;
  for (NodeId id = 0; id < graph.size(); ++id) {
    if (lanes != 0 && graph[id].lanes != lanes) {
      throw std::invalid_argument("registers of different widths");
    }
    lanes = graph[id].lanes;
  }
  return lanes;
}

}  // namespace

Graph packed(const Graph& graph, int sourceSize, const Packing& packing) {
  const bool takesRegisters = packing.together == Packing::kRegister;
  const int together = takesRegisters ? lanesOf(graph) : packing.together;
  const Graph atoms = takesRegisters ? graph : apart(graph, together);
  Program program = Reader(atoms, together, takesRegisters).run();
  const int width = packing.lanes / together;
  std::vector<Register> units = single(program);
  for (int w = 1; w < width; w *= 2) units = Pairing(program, units, w).run();
  Signs(program, units).settle();
  Graph out = Lowering(program, graph.traits(), sourceSize, width).run(std::move(units));
  if (const std::string d = difference(graph, out); !d.empty()) {
    throw std::logic_error("packing changes bits: " + d);
  }
  return out;
}

}  // namespace kernelgen
