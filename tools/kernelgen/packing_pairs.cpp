// Which operations share a register.
#include <algorithm>
#include <array>
#include <map>
#include <queue>
#include <tuple>
#include <utility>
#include <vector>

#include "packing_steps.h"

namespace kernelgen::steps {
namespace {

// Makes one unit of two, as often as that saves more operations than it costs shuffles. Units pair
// that are equal in everything but their operands; as these are of the same level too, no unit comes
// to depend on itself. A pair is the seed of a region: the operands of both pair, and their users, as
// long as no shuffle is needed, so that a region grows over isomorphic blocks of a transform. The
// best region is taken, again and again.
class Pairing {
 public:
  Pairing(const Program& p, const std::vector<Register>& units, int width, const Growth& growth)
      : p_(p),
        units_(units),
        width_(width),
        growth_(growth),
        states_(units.size()),
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
      State& state = states_[u];
      state.kind = kinds.try_emplace(kind(u), static_cast<int>(kinds.size())).first->second;
      members_.resize(kinds.size());
      members_[state.kind].push_back(u);
      state.inputs = atom(u).inputs();
      state.isSum = atom(u).op == Op::Add;
      const int inputs = state.inputs;  // operand() may add states
      for (int s = 0; s < inputs; ++s) {
        const Operand o = operand(units[u].in[s], home);
        operands_[u][s] = o;
        if (o.unit >= 0) users_[o.unit].push_back({u, s});
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
  static constexpr int kFree = -1, kLoads = -2;  // what a unit is, or has, instead
  static constexpr double kLeastGain = 0.25;
  // Of two loads that become one, and of two that a shuffle joins.
  static constexpr double kRun = 0.3, kGather = -0.7;

  // A region is tried from one of its pairs, and what others took from it in the next round. In long
  // kernels the first units of each kind are seeds for all others of that kind.
  bool takeRegions(int count) {
    std::size_t open = 1;
    for (int u = 0; u < size(); ++u)
      open += states_[u].kind != kFree && states_[u].partner == kFree;
    const std::size_t perKind = 1 + count / open;
    std::priority_queue<Seed> seeds;
    tried_.assign(units_.size() * units_.size(), false);
    for (const std::vector<int>& members : members_) {
      std::size_t left = perKind;
      for (int u : members) {
        if (states_[u].partner != kFree) continue;
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
      if (states_[best.u].partner != kFree || states_[best.v].partner != kFree) continue;
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

  // What an input is: a unit in place, or neighbours in the source, or anything. Registers of loads are
  // units as well if these pair: behind the others, without operands, and seeds of no region.
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

  // What regions ask of a unit again and again, side by side.
  struct State {
    int partner = kFree, region = kFree;  // for good, and of the region that is tried
    int kind = kFree;
    int inputs = 0;
    bool isLeft = false;
    bool isSum = false;
  };

  struct Pair {
    int u, v;
    bool crossed;
  };

  int size() const { return static_cast<int>(units_.size()); }
  bool isLoad(int u) const { return u >= size(); }
  const Atom& atom(int u) const {
    return p_.atoms[isLoad(u) ? loads_[u - size()][0] : units_[u].atoms[0]];
  }

  // The unit of these loads, or kFree if there are others among them.
  int unitOfLoads(const Uses& uses) {
    std::vector<int> atoms;
    for (const Use& use : uses) {
      if (p_.atoms[use.atom].firstNumber() == kNoElement) return kFree;
      atoms.push_back(use.atom);
    }
    const int next = size() + static_cast<int>(loads_.size());
    const auto [known, isNew] = unitOfLoads_.try_emplace(atoms, next);
    if (isNew) {
      loads_.push_back(std::move(atoms));
      states_.push_back({.kind = kLoads});
      operands_.emplace_back();
      users_.emplace_back();
      outputs_.emplace_back();
    }
    return known->second;
  }

  Operand operand(const Uses& uses, const std::vector<std::pair<int, int>>& home) {
    Operand o{.swapped = uses[0].swapped, .signs = uses[0].signs};
    const Atom& first = p_.atoms[uses[0].atom];
    const int unit = home[uses[0].atom].first;
    bool inPlace = unit >= 0 && units_[unit].atoms.size() == uses.size();
    bool inSource = first.firstNumber() != kNoElement, allAlike = true;
    for (int i = 0; i < std::ssize(uses); ++i) {
      const Atom& a = p_.atoms[uses[i].atom];
      const bool alike = uses[i].swapped == o.swapped;
      allAlike = allAlike && alike;
      inPlace = inPlace && alike && home[uses[i].atom] == std::pair(unit, i);
      inSource = inSource && alike && a.firstNumber() == first.firstNumber() + i * p_.lanes;
      if (uses[i].signs != o.signs) o.signs = kMixed;
    }
    if (inPlace) o.unit = unit;
    if (growth_.overLoads && unit < 0 && allAlike) o.unit = unitOfLoads(uses);
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
    for (const Pair& pair : pairs_) {
      if (!isLoad(pair.u)) tried_[pair.u * units_.size() + pair.v] = true;
    }
    forget();
  }

  // ---- Regions

  bool isOpen(int u, int v) const {
    const State &a = states_[u], &b = states_[v];
    return u != v && a.partner == kFree && b.partner == kFree && a.region == kFree &&
           b.region == kFree && a.kind != kFree && a.kind == b.kind;
  }

  bool arePaired(int u, int v) const { return rightOf(u) == v; }
  int rightOf(int u) const {
    const State& state = states_[u];
    const int right = state.region != kFree ? state.region : state.partner;
    return right >= 0 && state.isLeft ? right : kFree;
  }

  enum Fit {
    kNone,     // a shuffle
    kGrowing,  // none, if the operands pair
    kFits
  };

  // Whether b follows a in the source.
  bool isRun(const Operand& a, const Operand& b) const {
    return a.number >= 0 && b.number == a.number + width_ * p_.lanes;
  }

  Fit fit(const Operand& a, const Operand& b) const {
    if (a.swapped != b.swapped) return kNone;
    const Fit inSource = isRun(a, b) ? kFits : kNone;
    if (a.unit < 0 || b.unit < 0) return inSource;
    if (arePaired(a.unit, b.unit)) return kFits;
    return isOpen(a.unit, b.unit) ? kGrowing : inSource;
  }

  double misfit(const Operand& a, const Operand& b) const {
    const Fit f = fit(a, b);
    const bool gathers = f == kGrowing && isLoad(a.unit) && !isRun(a, b);
    const double shuffle = f == kNone ? 1 : gathers ? 0.5 : f == kGrowing ? 0.1 : 0;
    return shuffle + (a.signs != b.signs && a.signs != kMixed && b.signs != kMixed ? 0.5 : 0);
  }

  double misfit(int u, int v, bool crossed) const {
    double sum = 0;
    for (int s = 0; s < states_[u].inputs; ++s)
      sum += misfit(operands_[u][s], operands_[v][s ^ crossed]);
    return sum;
  }

  void add(int u, int v) {
    State &left = states_[u], &right = states_[v];
    const bool crossed = left.isSum && misfit(u, v, true) < misfit(u, v, false);
    left.region = v;
    right.region = u;
    left.isLeft = true;
    right.isLeft = false;
    pairs_.push_back({u, v, crossed});
  }

  void grow(int u, int v) {
    pairs_.clear();
    add(u, v);
    for (std::size_t i = 0; i < pairs_.size(); ++i) {
      const Pair pair = pairs_[i];
      for (int s = 0; s < states_[pair.u].inputs; ++s) {
        const Operand &a = operands_[pair.u][s], &b = operands_[pair.v][s ^ pair.crossed];
        if (fit(a, b) == kGrowing) add(a.unit, b.unit);
      }
      for (const User& x : users_[pair.u]) growOver(x, users_[pair.v]);
    }
  }

  // The user that x pairs best with.
  void growOver(const User& x, const std::vector<User>& others) {
    double best = growth_.misfit;
    int partner = kFree;
    for (const User& y : others) {
      if (!isOpen(x.unit, y.unit)) continue;
      if (x.slot != y.slot && !states_[x.unit].isSum) continue;
      const double m = misfit(x.unit, y.unit, x.slot != y.slot);
      if (m < best) {
        best = m;
        partner = y.unit;
      }
    }
    if (partner != kFree) add(x.unit, partner);
  }

  // Whether all these loads follow each other.
  bool areRun(int u, int v) const {
    int next = atom(u).firstNumber();
    for (const int x : {u, v}) {
      for (const int load : loads_[x - size()]) {
        if (p_.atoms[load].firstNumber() != next) return false;
        next += p_.lanes;
      }
    }
    return true;
  }

  double regionGain() {
    double gain = 0;
    shuffled_.clear();
    for (const Pair& pair : pairs_) {
      if (isLoad(pair.u)) {
        gain += areRun(pair.u, pair.v) ? kRun : kGather;
        continue;
      }
      gain += 1;
      for (int s = 0; s < states_[pair.u].inputs; ++s) {
        const Operand &a = operands_[pair.u][s], &b = operands_[pair.v][s ^ pair.crossed];
        const bool mixed = a.signs != b.signs && a.signs != kMixed && b.signs != kMixed;
        if (mixed && states_[pair.u].isSum) gain -= 0.4;
        if (fit(a, b) == kFits) continue;
        const bool isKnown = a.unit >= 0 && b.unit >= 0;
        if (isKnown) {
          shuffled_.push_back({a.unit, b.unit});
        } else {
          gain -= 1;
        }
      }
      const bool leaves =
          std::any_of(users_[pair.v].begin(), users_[pair.v].end(),
                      [&](const User& y) { return states_[y.unit].region == kFree; });
      if (leaves) gain -= growth_.escape;
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
      states_[pair.u].region = states_[pair.v].region = kFree;
      states_[pair.u].isLeft = false;
    }
  }

  void take() {
    for (const Pair& pair : pairs_) {
      states_[pair.u].partner = pair.v;
      states_[pair.v].partner = pair.u;
      states_[pair.u].region = states_[pair.v].region = kFree;
      taken_.push_back(pair);
    }
  }

  std::vector<Register> joined() const {
    std::vector<Register> out;
    for (int u = 0; u < size(); ++u) {
      if (states_[u].partner == kFree) out.push_back(units_[u]);
    }
    for (const Pair& pair : taken_) {
      if (isLoad(pair.u)) continue;
      Register unit = units_[pair.u];
      const Register& right = units_[pair.v];
      unit.atoms.insert(unit.atoms.end(), right.atoms.begin(), right.atoms.end());
      for (int s = 0; s < states_[pair.u].inputs; ++s) {
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
  const Growth growth_;
  std::vector<std::vector<int>> loads_;  // the atoms of each unit of loads
  std::map<std::vector<int>, int> unitOfLoads_;
  std::vector<State> states_;
  std::vector<char> tried_;
  std::vector<std::vector<int>> members_;  // by kind
  std::vector<std::array<Operand, 2>> operands_;
  std::vector<std::vector<User>> users_;
  std::vector<std::vector<int>> outputs_;
  std::vector<Pair> pairs_, taken_;
  std::vector<std::pair<int, int>> shuffled_;
};

}  // namespace

std::vector<Register> paired(const Program& program, const std::vector<Register>& units, int width,
                             const Growth& growth) {
  return Pairing(program, units, width, growth).run();
}

}  // namespace kernelgen::steps
