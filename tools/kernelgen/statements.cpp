#include "statements.h"

#include <algorithm>
#include <functional>
#include <stdexcept>

#include "names.h"
#include "registers.h"
#include "text.h"

namespace kernelgen {
namespace {

std::string line(const std::string& statement) { return "  " + statement + ";\n"; }

// An array of values of one type, reached through pointers to middles of it whose offsets fit a byte
// (`at` in src/frame/memory.h).
class Places {
 public:
  Places(std::string array, std::string pointer, std::string type, int bytes)
      : array_(std::move(array)),
        pointer_(std::move(pointer)),
        type_(std::move(type)),
        perPointer_(256 / bytes) {}

  std::string operator[](int place) {
    count_ = std::max(count_, place + 1);
    return call("at", {pointer_ + std::to_string(place / perPointer_),
                       std::to_string(place % perPointer_ - perPointer_ / 2)});
  }

  std::string add(const std::string& row) {
    rows_ += "      " + row + "\n";
    return (*this)[count_];
  }

  // Saved values, and a table of constants.
  std::string variables() const { return line(array()) + pointers(type_); }
  std::string table() const {
    return "  static constexpr " + array() + " = {\n" + rows_ + "  };\n" +
           pointers("const " + type_);
  }

 private:
  // As long as all pointers lie in it.
  std::string array() const {
    const int size = (count_ + perPointer_ - 1) / perPointer_ * perPointer_;
    return type_ + " " + array_ + "[" + std::to_string(size) + "]";
  }

  std::string pointers(const std::string& type) const {
    std::string s;
    for (int first = 0; first < count_; first += perPointer_) {
      s += line(type + "* " + pointer_ + std::to_string(first / perPointer_) + " = " + array_ +
                " + " + std::to_string(first + perPointer_ / 2));
    }
    return s;
  }

  std::string array_, pointer_, type_, rows_;
  int perPointer_, count_ = 0;
};

class Writer {
 public:
  Writer(const Graph& graph, const Design& design, const Machine& machine, const Access& access)
      : g_(graph), machine_(machine), access_(access), namesPlaces_(design.isLong) {
    names_.resize(g_.size());
    const std::vector<NodeId> order = schedule(g_, design.pace);
    for (NodeId id : order) {
      for (NodeId o : g_[id].operands()) {
        if (names_[o].empty()) declare(o);
      }
    }
    if (namesPlaces_) {
      for (const Instruction& i : allocate(g_, order)) run(i);
    } else {
      for (NodeId id : order) run(id);
    }
  }

  std::string text() const {
    std::string s;
    for (const auto& [precision, places] : tables_) s += places.table();
    for (const auto& [precision, places] : saved_) s += places.variables();
    return s + constants_ + lines_;
  }

 private:
  // ---- Statements

  void run(const Instruction& i) {
    switch (i.kind) {
      case Instruction::Run:
        if (i.inMemory != kNoNode) names_[i.inMemory] = slot(i.inMemory, i.slot);
        run(i.node);
        break;
      case Instruction::Save: lines_ += line(slot(i.node, i.slot) + " = " + names_[i.node]); break;
      case Instruction::Fetch:
        if (i.slot == kNoSlot) return define(i.node);
        names_[i.node] = naming_.next(g_[i.node]);
        lines_ += definition(g_[i.node], names_[i.node], slot(i.node, i.slot));
    }
  }

  void run(NodeId id) {
    const Node& n = g_[id];
    if (n.op != Op::Store) return define(id);
    for (const std::string& s : access_.store(n, names_[n.a])) lines_ += line(s);
  }

  void define(NodeId id) {
    names_[id] = naming_.next(g_[id]);
    for (const std::string& piece : machine_.pieces(g_[id])) {
      lines_ += definition(g_[id], names_[id] + piece, value(g_[id], piece));
    }
  }

  std::string definition(const Node& n, const std::string& name, const std::string& value) const {
    return line("const " + machine_.type(n) + " " + name + " = " + value);
  }

  std::string value(const Node& n, const std::string& piece) {
    const auto name = [&](NodeId id) {
      return isDeclared(g_[id]) || g_[id].precision != n.precision ? names_[id]
                                                                   : names_[id] + piece;
    };
    switch (n.op) {
      case Op::Load: return access_.load(n);
      case Op::Add: return name(n.a) + " + " + name(n.b);
      case Op::Sub: return name(n.a) + " - " + name(n.b);
      case Op::Mul: return name(n.a) + " * " + name(n.b);
      case Op::Flip: return n.lanes == 1 ? "-" + name(n.a) : machine_.flip(n, name(n.a), signs(n));
      case Op::Shuffle: return machine_.shuffle(n, name(n.a), name(n.b));
      case Op::Widen: return machine_.widen(n, name(n.a), piece);
      case Op::Round: {
        std::vector<std::string> pieces;
        for (const std::string& p : machine_.pieces(g_[n.a])) pieces.push_back(name(n.a) + p);
        return machine_.round(n, pieces);
      }
      case Op::Const:
      case Op::Scale:
      case Op::Store: break;
    }
    throw std::logic_error("a statement without a value");
  }

  // ---- Constants

  static bool isDeclared(const Node& n) { return n.op == Op::Const || n.op == Op::Scale; }

  // A constant or the scale, ahead of all statements.
  void declare(NodeId id) {
    const Node& n = g_[id];
    if (!isDeclared(n)) return;
    const std::string name = naming_.next(n);
    if (n.op == Op::Const && namesPlaces_) {
      names_[id] = placesOf(tables_, n, "constants").add(row(n) + ",  // " + name);
      return;
    }
    const std::string value = n.op == Op::Scale ? machine_.scale(n) : machine_.constant(n);
    names_[id] = machine_.declaresConstants() ? name : value;
    if (machine_.declaresConstants()) constants_ += definition(n, name, value);
  }

  static std::string row(const Node& n) {
    std::vector<std::string> lanes;
    for (const RoundedConstant& c : n.constants) lanes.push_back(literal(c.value, n.precision));
    return n.lanes == 1 ? lanes[0] : "{" + listed(lanes) + "}";
  }

  std::string signs(const Node& n) {
    if (!machine_.declaresConstants()) return machine_.signs(n);
    const std::string name = Names::ofSigns(n) + (n.precision == g_.precision() ? "" : "InDouble");
    if (masks_.insert(name).second) constants_ += definition(n, name, machine_.signs(n));
    return name;
  }

  // ---- Values in memory

  // A scalar kernel in single precision has values of both.
  using PlacesOfPrecision = std::map<Precision, Places, std::greater<>>;

  Places& placesOf(PlacesOfPrecision& all, const Node& n, const std::string& array) {
    const std::string single = n.precision == Precision::Single ? "Single" : "";
    const std::string pointer = array.substr(0, 1) + (single.empty() ? "" : "s");
    const Places places(array + single, pointer, machine_.type(n), machine_.bytes(n));
    return all.try_emplace(n.precision, places).first->second;
  }

  std::string slot(NodeId id, int slot) { return placesOf(saved_, g_[id], "saved")[slot]; }

  const Graph& g_;
  const Machine& machine_;
  const Access& access_;
  const bool namesPlaces_;  // of constants and of what registers cannot hold
  std::vector<std::string> names_;
  Names naming_;
  std::set<std::string> masks_;
  PlacesOfPrecision tables_, saved_;
  std::string constants_, lines_;
};

}  // namespace

std::string statements(const Graph& graph, const Design& design, const Machine& machine,
                       const Access& access) {
  return Writer(graph, design, machine, access).text();
}

}  // namespace kernelgen
