// Signs of constants that spare operations.
#include <algorithm>
#include <set>
#include <vector>

#include "packing_steps.h"

namespace kernelgen::steps {
namespace {

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

}  // namespace

void settleSigns(Program& program, std::vector<Register>& units) { Signs(program, units).settle(); }

}  // namespace kernelgen::steps
