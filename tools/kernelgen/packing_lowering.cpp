// From registers of atoms to a graph: operands brought to their places, loads and stores.
#include <algorithm>
#include <map>
#include <set>
#include <stdexcept>
#include <utility>
#include <vector>

#include "packing_steps.h"

namespace kernelgen::steps {
namespace {

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
    if (std::ranges::count(numbers, kNoElement) == std::ssize(numbers)) {
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

}  // namespace

Graph lowered(const Program& program, const Traits& traits, int sourceSize, int width,
              std::vector<Register> units) {
  return Lowering(program, traits, sourceSize, width).run(std::move(units));
}

}  // namespace kernelgen::steps
