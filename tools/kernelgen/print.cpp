#include "print.h"

#include <numeric>
#include <stdexcept>

#include "exports.h"
#include "names.h"
#include "registers.h"
#include "scalar.h"
#include "text.h"

namespace kernelgen {
namespace {

using Order = std::vector<NodeId>;

bool isDeclared(const Node& n) { return n.op == Op::Const || n.op == Op::Scale; }

// The names that the C++ text has with the statements in that order.
std::vector<std::string> namesOf(const Graph& g, const Order& order) {
  Names naming;
  std::vector<std::string> names(g.size());
  for (NodeId id : order) {
    for (NodeId o : g[id].operands()) {
      if (isDeclared(g[o]) && names[o].empty()) names[o] = naming.next(g[o]);
    }
  }
  for (NodeId id : order) {
    if (g[id].op != Op::Store && !isDeclared(g[id])) names[id] = naming.next(g[id]);
  }
  return names;
}

std::string spaced(const std::vector<int>& numbers) {
  std::string s;
  for (int i : numbers) s += (s.empty() ? "" : " ") + (i < 0 ? "-" : std::to_string(i));
  return s;
}

std::string elements(const Node& n) {
  return (n.unit == Unit::Complex ? "complex " : "real ") + spaced(n.elements);
}

// Once, if it is the same in all lanes.
std::string constants(const Node& n) {
  std::string s;
  bool same = true;
  for (const RoundedConstant& c : n.constants) {
    s += " " + literal(c.value, n.precision);
    same = same && literal(c.value, n.precision) == literal(n.constants[0].value, n.precision);
  }
  return same ? " " + literal(n.constants[0].value, n.precision) : s;
}

std::string printed(const Graph& g, NodeId id, const std::vector<std::string>& names) {
  const Node& n = g[id];
  const std::string a = n.a == kNoNode ? "" : names[n.a], b = n.b == kNoNode ? "" : names[n.b];
  switch (n.op) {
    case Op::Load: return names[id] + " = load " + elements(n);
    case Op::Const: return names[id] + " = constant" + constants(n);
    case Op::Scale: return names[id] + " = factor";
    case Op::Add: return names[id] + " = " + a + " + " + b;
    case Op::Sub: return names[id] + " = " + a + " - " + b;
    case Op::Mul: return names[id] + " = " + a + " * " + b;
    case Op::Flip:
      return names[id] + " = " + (n.lanes == 1 ? "-" + a : a + " ^ " + Names::ofSigns(n));
    case Op::Shuffle:
      return names[id] + " = " + (a == b ? a : "(" + a + ", " + b + ")") + "[" + spaced(n.select) +
             "]";
    case Op::Widen: return names[id] + " = double " + a;
    case Op::Round: return names[id] + " = float " + a + (n.kept ? ", kept" : "");
    case Op::Store: return "store " + elements(n) + " = " + a;
  }
  throw std::logic_error("no such operation");
}

std::string printed(const Graph& g, const Order& order) {
  const std::vector<std::string> names = namesOf(g, order);
  std::string s;
  for (NodeId id = 0; id < g.size(); ++id) s += printed(g, id, names) + "\n";
  return s;
}

std::string printed(const Design& d) {
  std::string s = d.print() + (d.bodies == 1 ? ", 1 body" : ", 2 bodies");
  if (d.isLong) s += ", long";
  if (d.pace != Pace()) {
    s += ", paced(" + std::to_string(d.pace.live) + ", " + std::to_string(d.pace.issue) + ")";
  }
  return s + "\n";
}

std::string printedSchedule(const Graph& g, const Design& design) {
  const Order order = schedule(g, design.pace);
  const std::vector<std::string> names = namesOf(g, order);
  std::vector<int> usesLeft(g.size());
  std::vector<Instruction> list;
  for (NodeId id : order) {
    for (NodeId o : g[id].operands()) ++usesLeft[o];
    list.push_back({Instruction::Run, id});
  }
  if (design.isLong) list = allocate(g, order);
  int alive = 0;
  std::string s;
  for (const Instruction& i : list) {
    if (i.kind != Instruction::Run) {
      s += std::string("      ") + (i.kind == Instruction::Save ? "save " : "fetch ") +
           names[i.node] + "\n";
      continue;
    }
    alive += g[i.node].op != Op::Store;
    for (NodeId o : g[i.node].operands()) alive -= !isDeclared(g[o]) && --usesLeft[o] == 0;
    const std::string count = std::to_string(alive);
    s += std::string(4 - count.size(), ' ') + count + "  " + printed(g, i.node, names) + "\n";
  }
  return s;
}

// All of them.
std::string printedStages(const KernelId& id) {
  std::string s;
  for (const char* stage : {"recipe", "graph", "scalar", "schedule", "text"}) {
    s += (s.empty() ? "---- " : "\n---- ") + std::string(stage) + "\n";
    s += printedStage(stage, id);
  }
  return s;
}

}  // namespace

std::string printedStage(const std::string& stage, const KernelId& id) {
  if (stage == "stages") return printedStages(id);
  const Design& design = designOf(id);
  if (stage == "recipe") return printed(design);
  const Kernel kernel = makeKernel(id);
  if (stage == "graph") return printed(kernel.graph, schedule(kernel.graph, design.pace));
  if (stage == "scalar") return printed(scalarised(kernel.graph));
  if (stage == "schedule") return printedSchedule(kernel.graph, design);
  if (stage == "text") return emitKernel(kernel);
  throw std::invalid_argument("no stage is named " + stage);
}

std::string printed(const Graph& graph) {
  Order all(graph.size());
  std::iota(all.begin(), all.end(), 0);
  return printed(graph, all);
}

}  // namespace kernelgen
