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
  const int head[] = {static_cast<int>(n.op),
                      static_cast<int>(n.precision),
                      n.lanes,
                      n.a,
                      n.b,
                      static_cast<int>(n.unit),
                      n.kept};
  appendBytes(key, head, sizeof head);
  for (const std::vector<int>* lanes : {&n.elements, &n.mask, &n.select}) {
    appendBytes(key, lanes->data(), lanes->size() * sizeof(int));
  }
  for (const RoundedConstant& c : n.constants) appendBytes(key, &c.value, sizeof c.value);
  return key;
}

std::string named(char letter, Turn t) {
  const Turn r = t.reduced();
  return letter + std::to_string(r.num) + "_" + std::to_string(r.den);
}

std::string negated(const std::string& name) {
  return name[0] == 'n' ? name.substr(1) : "n" + name;
}

}  // namespace

Constant cosine(Turn t) { return {cosSin(t).cosine, named('c', t)}; }
Constant sine(Turn t) { return {cosSin(t).sine, named('s', t)}; }

Constant operator-(const Constant& c) { return {-c.exact, negated(c.name)}; }
RoundedConstant operator-(const RoundedConstant& c) { return {-c.value, negated(c.name)}; }

std::vector<NodeId> Node::operands() const {
  if (a == kNoNode) return {};
  return b == kNoNode || b == a ? std::vector{a} : std::vector{a, b};
}

int Node::number(int lane) const {
  if (unit == Unit::Real) return elements[lane];
  const int element = elements[lane / 2];
  return element == kNoElement ? kNoElement : 2 * element + lane % 2;
}

NodeId Graph::append(Node node) {
  const auto [place, isNew] = shared_.try_emplace(keyOf(node), size());
  if (isNew) nodes_.push_back(std::move(node));
  return place->second;
}

NodeId Graph::append(Node node, const std::vector<NodeId>& place) {
  for (NodeId* o : {&node.a, &node.b}) {
    if (*o != kNoNode) *o = place[*o];
  }
  return append(std::move(node));
}

Node Graph::on(Op op, NodeId a, NodeId b) const {
  return {.op = op, .precision = nodes_[a].precision, .lanes = nodes_[a].lanes, .a = a, .b = b};
}

NodeId Graph::load(Unit unit, std::vector<int> elements) {
  const int count = static_cast<int>(elements.size());
  return append({.op = Op::Load,
                 .precision = precision(),
                 .lanes = unit == Unit::Complex ? 2 * count : count,
                 .unit = unit,
                 .elements = std::move(elements)});
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
  return append({.op = Op::Scale, .precision = precision(), .lanes = lanes});
}

// A sum and a product are the same whichever operand comes first, so one order stands for both.
NodeId Graph::add(NodeId a, NodeId b) {
  return append(on(Op::Add, std::min(a, b), std::max(a, b)));
}
NodeId Graph::sub(NodeId a, NodeId b) { return append(on(Op::Sub, a, b)); }
NodeId Graph::mul(NodeId a, NodeId b) {
  return append(on(Op::Mul, std::min(a, b), std::max(a, b)));
}

bool Graph::holdsSub(NodeId a, NodeId b) const {
  return shared_.contains(keyOf(on(Op::Sub, a, b)));
}

NodeId Graph::flip(NodeId a, std::vector<int> mask) {
  Node n = on(Op::Flip, a);
  n.mask = std::move(mask);
  return append(std::move(n));
}

NodeId Graph::shuffle(NodeId a, NodeId b, std::vector<int> select) {
  Node n = on(Op::Shuffle, a, b);
  bool identity = std::ssize(select) == n.lanes;
  for (int i = 0; i < n.lanes && identity; ++i) identity = select[i] == i;
  if (identity) return a;
  n.lanes = static_cast<int>(select.size());
  n.select = std::move(select);
  return append(std::move(n));
}

NodeId Graph::widen(NodeId a) {
  Node n = on(Op::Widen, a);
  n.precision = Precision::Double;
  return append(std::move(n));
}

NodeId Graph::round(NodeId a, bool kept) {
  Node n = on(Op::Round, a);
  n.precision = Precision::Single;
  n.kept = kept;
  return append(std::move(n));
}

NodeId Graph::store(NodeId a, Unit unit, std::vector<int> elements) {
  Node n = on(Op::Store, a);
  n.unit = unit;
  n.elements = std::move(elements);
  return append(std::move(n));
}

Graph Graph::pruned() const {
  std::vector<char> needed(nodes_.size());
  for (NodeId id = size(); id-- > 0;) {
    if (nodes_[id].op == Op::Store) needed[id] = true;
    if (!needed[id]) continue;
    for (NodeId o : nodes_[id].operands()) needed[o] = true;
  }
  Graph kept(traits_);
  std::vector<NodeId> place(nodes_.size(), kNoNode);
  for (NodeId id = 0; id < size(); ++id) {
    if (needed[id]) place[id] = kept.append(nodes_[id], place);
  }
  return kept;
}

}  // namespace kernelgen
