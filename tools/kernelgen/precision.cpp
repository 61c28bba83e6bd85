#include "precision.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace kernelgen {
namespace {

// The constant and the other operand of a product by a constant.
std::optional<std::pair<NodeId, NodeId>> productByConstant(const Graph& g, NodeId id) {
  const Node& n = g[id];
  if (n.op != Op::Mul) return {};
  if (g[n.a].op == Op::Const) return {{n.a, n.b}};
  if (g[n.b].op == Op::Const) return {{n.b, n.a}};
  return {};
}

class Merging {
 public:
  explicit Merging(const Graph& g) : old_(g), new_(g.traits()), place_(g.size()), users_(g.size()) {
    for (NodeId id = 0; id < g.size(); ++id) {
      for (NodeId o : g[id].operands()) users_[o].push_back(id);
    }
  }

  Graph run() {
    for (NodeId id = 0; id < old_.size(); ++id) {
      const auto merged = mergedProduct(id);
      place_[id] = merged ? *merged : new_.append(old_[id], place_);
    }
    return new_.pruned();
  }

 private:
  bool usedOnce(NodeId id) const { return users_[id].size() == 1; }

  // Whether the product is an expression by itself: it goes to a temporary or to an output.
  bool isWhole(NodeId product) const {
    return std::ranges::all_of(users_[product], [&](NodeId u) {
      const Node& n = old_[u];
      return n.op == Op::Round || (n.op == Op::Mul && !productByConstant(old_, u));
    });
  }

  std::optional<NodeId> mergedProduct(NodeId id) {
    const auto product = productByConstant(old_, id);
    if (!product || old_[product->second].op != Op::Widen || !isWhole(id)) return {};
    const NodeId widened = product->second, temporary = old_[widened].a;
    if (!usedOnce(widened) || !usedOnce(temporary)) return {};
    const RoundedConstant c = old_[product->first].constants[0];
    if (productByConstant(old_, temporary)) return times(c, place_[temporary]);  // a doubling
    if (old_[temporary].op != Op::Round || old_[temporary].kept) return {};
    const NodeId sum = place_[old_[temporary].a];
    if (!isSumOfProducts(sum)) return {};
    return times(c, sum);
  }

  bool isSumOfProducts(NodeId id) const {
    if (productByConstant(new_, id)) return true;
    const Node& n = new_[id];
    return (n.op == Op::Add || n.op == Op::Sub) && n.precision == Precision::Double &&
           isSumOfProducts(n.a) && isSumOfProducts(n.b);
  }

  // c times a sum of products of the new graph, in double.
  NodeId times(const RoundedConstant& c, NodeId id) {
    if (const auto product = productByConstant(new_, id)) {
      const RoundedConstant inner = new_[product->first].constants[0];
      const NodeId constant =
          new_.append({.op = Op::Const,
                       .precision = Precision::Double,
                       .lanes = 1,
                       .constants = {{c.value * inner.value, c.name + "x" + inner.name}}});
      const bool isSingle = new_[product->second].precision != Precision::Double;
      const NodeId factor = isSingle ? new_.widen(product->second) : product->second;
      return new_.mul(constant, factor);
    }
    const Node n = new_[id];
    const NodeId a = times(c, n.a), b = times(c, n.b);
    return n.op == Op::Add ? new_.add(a, b) : new_.sub(a, b);
  }

  const Graph& old_;
  Graph new_;
  std::vector<NodeId> place_;
  std::vector<std::vector<NodeId>> users_;
};

}  // namespace

Graph withMergedConstants(const Graph& g) { return Merging(g).run(); }

Graph inDouble(const Graph& g) {
  Graph out({Precision::Double, g.direction()});
  std::vector<NodeId> place(g.size());
  for (NodeId id = 0; id < g.size(); ++id) {
    Node n = g[id];
    const bool isConversion = n.op == Op::Widen || n.op == Op::Round;
    n.precision = Precision::Double;
    place[id] = isConversion ? place[n.a] : out.append(std::move(n), place);
  }
  return out;
}

}  // namespace kernelgen
