#include "graph.h"

#include <cstring>
#include <numeric>
#include <utility>

namespace kernelgen {
namespace {

void appendBytes(std::string& key, const void* data, std::size_t size) {
  key.append(static_cast<const char*>(data), size);
}

std::string keyOf(const Node& n) {
  std::string key;
  const int head[] = {static_cast<int>(n.op), static_cast<int>(n.precision), n.lanes, n.a, n.b};
  appendBytes(key, head, sizeof head);
  appendBytes(key, n.index.data(), n.index.size() * sizeof(int));
  for (const RoundedConstant& c : n.constants) appendBytes(key, &c.value, sizeof c.value);
  return key;
}

std::string named(char letter, Turn t) {
  const Turn r = t.reduced();
  return letter + std::to_string(r.num) + "_" + std::to_string(r.den);
}

}  // namespace

Constant cosine(Turn t) { return {cosSin(t).cosine, named('c', t)}; }
Constant sine(Turn t) { return {cosSin(t).sine, named('s', t)}; }

Constant operator-(const Constant& c) {
  return {-c.exact, c.name[0] == 'n' ? c.name.substr(1) : "n" + c.name};
}

NodeId Graph::append(Node node) {
  const auto [place, isNew] = shared_.try_emplace(keyOf(node), static_cast<NodeId>(nodes_.size()));
  if (isNew) nodes_.push_back(std::move(node));
  return place->second;
}

NodeId Graph::binary(Op op, NodeId a, NodeId b) {
  const Node& n = (*this)[a];
  return append({.op = op, .precision = n.precision, .lanes = n.lanes, .a = a, .b = b});
}

NodeId Graph::load(std::vector<int> elements, int lanes) {
  return append(
      {.op = Op::Load, .precision = precision_, .lanes = lanes, .index = std::move(elements)});
}

NodeId Graph::constant(const std::vector<Constant>& lanes, Precision precision) {
  Node node{.op = Op::Const, .precision = precision, .lanes = static_cast<int>(lanes.size())};
  for (const Constant& c : lanes) {
    const double value = precision == Precision::Double
                             ? static_cast<double>(c.exact)
                             : static_cast<double>(static_cast<float>(c.exact));
    node.constants.push_back({value, c.name});
  }
  return append(std::move(node));
}

NodeId Graph::scale(int lanes) {
  return append({.op = Op::Scale, .precision = precision_, .lanes = lanes});
}

bool Graph::holdsSub(NodeId a, NodeId b) const {
  const Node& n = (*this)[a];
  return shared_.contains(
      keyOf({.op = Op::Sub, .precision = n.precision, .lanes = n.lanes, .a = a, .b = b}));
}

// A sum and a product are the same whichever operand comes first, so one order stands for both.
NodeId Graph::add(NodeId a, NodeId b) { return binary(Op::Add, std::min(a, b), std::max(a, b)); }
NodeId Graph::sub(NodeId a, NodeId b) { return binary(Op::Sub, a, b); }
NodeId Graph::mul(NodeId a, NodeId b) { return binary(Op::Mul, std::min(a, b), std::max(a, b)); }

NodeId Graph::flip(NodeId a, std::vector<int> mask) {
  const Node& n = (*this)[a];
  return append({.op = Op::Flip,
                 .precision = n.precision,
                 .lanes = n.lanes,
                 .a = a,
                 .index = std::move(mask)});
}

NodeId Graph::shuffle(NodeId a, NodeId b, std::vector<int> select) {
  const Node& n = (*this)[a];
  bool identity = true;
  for (int i = 0; i < n.lanes; ++i) identity = identity && select[static_cast<std::size_t>(i)] == i;
  if (identity) return a;
  return append({.op = Op::Shuffle,
                 .precision = n.precision,
                 .lanes = n.lanes,
                 .a = a,
                 .b = b,
                 .index = std::move(select)});
}

NodeId Graph::widen(NodeId a) {
  return append(
      {.op = Op::Widen, .precision = Precision::Double, .lanes = (*this)[a].lanes, .a = a});
}

NodeId Graph::round(NodeId a, bool kept) {
  return append({.op = Op::Round,
                 .precision = Precision::Single,
                 .lanes = (*this)[a].lanes,
                 .a = a,
                 .index = {kept}});
}

NodeId Graph::store(NodeId a, std::vector<int> elements) {
  const Node& n = (*this)[a];
  return append({.op = Op::Store,
                 .precision = n.precision,
                 .lanes = n.lanes,
                 .a = a,
                 .index = std::move(elements)});
}

Graph Graph::pruned() const {
  std::vector<char> needed(nodes_.size());
  for (std::size_t id = nodes_.size(); id-- > 0;) {
    const Node& n = nodes_[id];
    if (n.op == Op::Store) needed[id] = true;
    if (!needed[id]) continue;
    for (NodeId o : {n.a, n.b}) {
      if (o != kNoNode) needed[static_cast<std::size_t>(o)] = true;
    }
  }
  Graph kept(precision_, direction_);
  std::vector<NodeId> moved(nodes_.size(), kNoNode);
  for (std::size_t id = 0; id < nodes_.size(); ++id) {
    if (!needed[id]) continue;
    Node n = nodes_[id];
    for (NodeId* o : {&n.a, &n.b}) {
      if (*o != kNoNode) *o = moved[static_cast<std::size_t>(*o)];
    }
    moved[id] = kept.append(std::move(n));
  }
  return kept;
}

}  // namespace kernelgen
