#include "scalar.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <map>
#include <stdexcept>
#include <tuple>
#include <utility>

namespace kernelgen {
namespace {

// ---- Taking apart

using Signs = std::vector<int>;  // of each lane, 1 for a minus

// Lanes of a register as a node, and signs that the node does not have yet.
struct Piece {
  NodeId node;
  Signs signs;
};

Signs combined(const Signs& a, const Signs& b) {
  Signs s;
  for (std::size_t i = 0; i < a.size(); ++i) s.push_back(a[i] ^ b[i]);
  return s;
}

bool all(const Signs& signs, int sign) {
  return std::all_of(signs.begin(), signs.end(), [sign](int s) { return s == sign; });
}

class Apart {
 public:
  Apart(const Graph& g, int lanes) : old_(g), new_(g.traits()), lanes_(lanes), pieces_(g.size()) {}

  Graph run() {
    for (NodeId id = 0; id < old_.size(); ++id) {
      const Node& n = old_[id];
      for (int lane = 0; lane < n.lanes; lane += lanes_) {
        if (n.op == Op::Store) {
          store(n, lane);
        } else {
          pieces_[id].push_back(piece(n, lane));
        }
      }
    }
    return new_.pruned();
  }

 private:
  const Piece& operand(NodeId id, int lane) const { return pieces_[id][lane / lanes_]; }

  Piece plain(NodeId node) const { return {node, Signs(lanes_, 0)}; }

  // The node with its signs.
  NodeId settled(const Piece& p) { return all(p.signs, 0) ? p.node : new_.flip(p.node, p.signs); }

  // Lanes of a list that has an entry for each.
  template <class T>
  std::vector<T> part(const std::vector<T>& list, int lane) const {
    return {list.begin() + lane, list.begin() + lane + lanes_};
  }

  Unit unit() const { return lanes_ == 1 ? Unit::Real : Unit::Complex; }

  // What a load or a store has at a lane.
  int element(const Node& n, int lane) const {
    if (lanes_ == 1) return n.number(lane);
    if (n.unit == Unit::Real) throw std::invalid_argument("a number alone is no complex element");
    return n.elements[lane / 2];
  }

  Piece piece(const Node& n, int lane) {
    switch (n.op) {
      case Op::Load: {
        const int from = element(n, lane);
        if (from != kNoElement) return plain(new_.load(unit(), {from}));
        return constant(n.precision, std::vector<RoundedConstant>(lanes_, {0, "zero"}));
      }
      case Op::Const: return constant(n.precision, part(n.constants, lane));
      case Op::Scale: return plain(new_.scale(lanes_));
      case Op::Add:
      case Op::Sub: return sum(operand(n.a, lane), operand(n.b, lane), n.op == Op::Sub);
      case Op::Mul: return product(operand(n.a, lane), operand(n.b, lane));
      case Op::Flip: {
        const Piece& a = operand(n.a, lane);
        return {a.node, combined(a.signs, part(n.mask, lane))};
      }
      case Op::Shuffle: return shuffled(n, lane);
      case Op::Widen: {
        const Piece& a = operand(n.a, lane);
        return {new_.widen(a.node), a.signs};
      }
      case Op::Round: {
        const Piece& a = operand(n.a, lane);
        return {new_.round(a.node, n.kept), a.signs};
      }
      case Op::Store: break;
    }
    throw std::logic_error("not a value");
  }

  Piece constant(Precision precision, std::vector<RoundedConstant> lanes) {
    return plain(new_.append(
        {.op = Op::Const, .precision = precision, .lanes = lanes_, .constants = std::move(lanes)}));
  }

  Piece sum(const Piece& a, const Piece& b, bool minus) {
    if (all(b.signs, 1)) return sum(a, plain(b.node), !minus);
    if (all(a.signs, 1) && !minus) return sum(b, plain(a.node), true);
    const NodeId x = settled(a), y = settled(b);
    return plain(minus ? new_.sub(x, y) : new_.add(x, y));
  }

  // The signs go into a constant, or out of the product.
  Piece product(const Piece& a, const Piece& b) {
    const Signs signs = combined(a.signs, b.signs);
    if (!all(signs, 0) && new_[b.node].op == Op::Const) return signedProduct(a.node, b.node, signs);
    if (!all(signs, 0) && new_[a.node].op == Op::Const) return signedProduct(b.node, a.node, signs);
    return {new_.mul(a.node, b.node), signs};
  }

  Piece signedProduct(NodeId x, NodeId c, const Signs& signs) {
    std::vector<RoundedConstant> lanes = new_[c].constants;
    for (int i = 0; i < lanes_; ++i) {
      if (signs[i] != 0) lanes[i] = -lanes[i];
    }
    return plain(new_.mul(x, constant(new_[c].precision, std::move(lanes)).node));
  }

  Piece shuffled(const Node& n, int lane) {
    const auto source = [&](int i) {
      const int from = n.select[lane + i], width = old_[n.a].lanes;
      return from < width ? std::pair(operand(n.a, from), from % lanes_)
                          : std::pair(operand(n.b, from - width), (from - width) % lanes_);
    };
    const auto [piece, first] = source(0);
    const auto [other, second] = source(lanes_ - 1);
    if (piece.node != other.node || piece.signs != other.signs || first + second != lanes_ - 1) {
      throw std::invalid_argument("the parts of an element come from two");
    }
    if (first == 0) return piece;
    return {new_.shuffle(piece.node, piece.node, {1, 0}), {piece.signs[1], piece.signs[0]}};
  }

  void store(const Node& n, int lane) {
    const int to = element(n, lane);
    if (to != kNoElement) new_.store(settled(operand(n.a, lane)), unit(), {to});
  }

  const Graph& old_;
  Graph new_;
  const int lanes_;
  std::vector<std::vector<Piece>> pieces_;
};

// ---- The normal form

// A value with its sign.
struct Term {
  int value;
  bool negative;

  auto operator<=>(const Term&) const = default;
};

Term negated(Term t, bool negative = true) { return {t.value, t.negative != negative}; }

class NormalForm {
 public:
  using Outputs = std::map<int, Term>;

  // What the graph stores where.
  Outputs add(const Graph& g) {
    Outputs outputs;
    std::vector<std::vector<Term>> lanes(g.size());
    for (NodeId id = 0; id < g.size(); ++id) {
      const Node& n = g[id];
      for (int i = 0; i < n.lanes; ++i) {
        if (n.op != Op::Store) {
          lanes[id].push_back(term(n, i, lanes));
        } else if (n.number(i) != kNoElement) {
          outputs.insert_or_assign(n.number(i), lanes[n.a][i]);
        }
      }
    }
    return outputs;
  }

  // From two different values on to operands that differ, while they are the same operation
  // and it is clear which operand.
  std::pair<Term, Term> whereTheyPart(Term x, Term y) {
    const Pairs pairs = differing(x, y);
    for (const auto& [p, q] : pairs) {
      if (pairs.size() == 1 || !differing(p, q).empty()) return whereTheyPart(p, q);
    }
    return {x, y};
  }

  std::string text(Term t, int depth) const {
    const Value& v = values_[t.value];
    const std::string sign = t.negative ? "-" : "";
    const auto number = [&] { return std::bit_cast<double>(v.bits); };
    switch (v.op) {
      case Op::Load: return sign + "src[" + std::to_string(v.bits) + "]";
      case Op::Scale: return sign + "scale";
      case Op::Const: {
        char digits[40];
        std::snprintf(digits, sizeof digits, "%.17g", number());
        return sign + digits;
      }
      default: break;
    }
    if (depth == 0) return sign + "...";
    const std::string a = text(v.a, depth - 1);
    switch (v.op) {
      case Op::Widen: return sign + "double(" + a + ")";
      case Op::Round: return sign + "float(" + a + ")";
      case Op::Mul: return sign + a + "*" + text(v.b, depth - 1);
      default: break;
    }
    const std::string b = text(v.b, depth - 1);
    if (v.b.negative) return sign + "(" + a + " - " + b.substr(1) + ")";
    return sign + "(" + (v.a.negative ? b + " - " + a.substr(1) : a + " + " + b) + ")";
  }

 private:
  Term term(const Node& n, int lane, const std::vector<std::vector<Term>>& lanes) {
    const auto a = [&] { return lanes[n.a][lane]; };
    const auto b = [&] { return lanes[n.b][lane]; };
    switch (n.op) {
      case Op::Load:
        return n.number(lane) == kNoElement ? constant(n.precision, 0)
                                            : leaf(n.op, n.precision, n.number(lane));
      case Op::Const: return constant(n.precision, n.constants[lane].value);
      case Op::Scale: return leaf(n.op, n.precision, 0);
      case Op::Add: return sum(n.precision, a(), b());
      case Op::Sub: return sum(n.precision, a(), negated(b()));
      case Op::Mul: return product(n.precision, a(), b());
      case Op::Flip: return negated(a(), n.mask[lane] != 0);
      case Op::Shuffle: {
        const int from = n.select[lane], width = static_cast<int>(lanes[n.a].size());
        return from < width ? lanes[n.a][from] : lanes[n.b][from - width];
      }
      case Op::Widen:
      case Op::Round:
        return negated(value({n.op, n.precision, 0, {a().value, false}, {}}), a().negative);
      case Op::Store: break;
    }
    throw std::logic_error("not a value");
  }

  // A load has its place in `bits`, a constant its number. The sign of a product or of what is
  // converted belongs to the result.
  struct Value {
    Op op;
    Precision precision;
    std::uint64_t bits;
    Term a, b;

    auto operator<=>(const Value&) const = default;
  };

  using Pairs = std::vector<std::pair<Term, Term>>;

  // The operands of two equal operations in the pairing with the fewest differences.
  Pairs differing(Term x, Term y) {
    const Value a = values_[x.value], b = values_[y.value];
    const bool isLeaf = a.op == Op::Load || a.op == Op::Const || a.op == Op::Scale;
    if (x.negative != y.negative || a.op != b.op || a.precision != b.precision || isLeaf) return {};
    const auto unequal = [](Pairs pairs) {
      std::erase_if(pairs, [](const auto& p) { return p.first == p.second; });
      return pairs;
    };
    const auto count = [this](const Pairs& pairs) {
      int sum = 0;
      for (const auto& [p, q] : pairs) sum += differences(p, q);
      return sum;
    };
    const Pairs straight = unequal({{a.a, b.a}, {a.b, b.b}});
    const Pairs across = unequal({{a.a, b.b}, {a.b, b.a}});
    if (straight.size() != across.size())
      return straight.size() < across.size() ? straight : across;
    return count(straight) <= count(across) ? straight : across;
  }

  int differences(Term x, Term y) {
    const auto key = std::pair(x, y);
    if (const auto known = differences_.find(key); known != differences_.end())
      return known->second;
    constexpr int kMany = 1000;
    int sum = 0;
    const Pairs pairs = differing(x, y);
    for (const auto& [p, q] : pairs) sum = std::min(kMany, sum + differences(p, q));
    return differences_[key] = pairs.empty() ? 1 : sum;
  }

  Term value(const Value& v) {
    const auto [at, isNew] = found_.try_emplace(v, static_cast<int>(values_.size()));
    if (isNew) values_.push_back(v);
    return {at->second, false};
  }

  Term leaf(Op op, Precision p, int place) {
    return value({op, p, static_cast<std::uint64_t>(place), {}, {}});
  }

  Term constant(Precision p, double number) {
    const auto bits = std::bit_cast<std::uint64_t>(std::abs(number));
    return negated(value({Op::Const, p, bits, {}, {}}), std::signbit(number));
  }

  Term sum(Precision p, Term a, Term b) {
    return value({Op::Add, p, 0, std::min(a, b), std::max(a, b)});
  }

  Term product(Precision p, Term a, Term b) {
    const bool negative = a.negative != b.negative;
    a.negative = b.negative = false;
    const Term one = constant(p, 1);
    if (a == one) return negated(b, negative);
    if (b == one) return negated(a, negative);
    return negated(value({Op::Mul, p, 0, std::min(a, b), std::max(a, b)}), negative);
  }

  std::vector<Value> values_;
  std::map<Value, int> found_;
  std::map<std::pair<Term, Term>, int> differences_;  // of unequal values
};

}  // namespace

Graph apart(const Graph& graph, int lanes) { return Apart(graph, lanes).run(); }

std::string difference(const Graph& a, const Graph& b) {
  NormalForm form;
  const NormalForm::Outputs first = form.add(a), second = form.add(b);
  const auto only = [](int place, const char* which) {
    return "output " + std::to_string(place) + " is stored by the " + which + " graph only";
  };
  for (const auto& [place, term] : first) {
    const auto other = second.find(place);
    if (other == second.end()) return only(place, "first");
    if (term == other->second) continue;
    constexpr int kDepth = 3;
    const auto [x, y] = form.whereTheyPart(term, other->second);
    return "output " + std::to_string(place) + " has " + form.text(x, kDepth) +
           " in the first graph and " + form.text(y, kDepth) + " in the second";
  }
  for (const auto& [place, term] : second) {
    if (!first.contains(place)) return only(place, "second");
  }
  return "";
}

}  // namespace kernelgen
