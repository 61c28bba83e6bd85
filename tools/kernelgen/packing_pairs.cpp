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

}  // namespace

std::vector<Register> paired(const Program& program, const std::vector<Register>& units,
                             int width) {
  return Pairing(program, units, width).run();
}

}  // namespace kernelgen::steps
