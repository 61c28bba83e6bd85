#include "registers.h"

#include <algorithm>
#include <limits>
#include <map>

namespace kernelgen {
namespace {

constexpr std::size_t kRegisters = 15;  // of 16, as the scale has one

// The value whose next use is farthest leaves its register: L. A. Belady, "A study of replacement
// algorithms for a virtual-storage computer", IBM Systems Journal 5 (1966). One that need not be
// saved, because its slot or the source still holds it, counts as farther.
class Allocation {
 public:
  Allocation(const Graph& g, const std::vector<NodeId>& order) : g_(g), order_(order) {
    for (std::size_t i = 0; i < order.size(); ++i) {
      for (NodeId o : operands(order[i])) uses_[o].push_back(i);
      if (g[order[i]].op == Op::Store) firstStore_ = std::min(firstStore_, i);
    }
  }

  std::vector<Instruction> list() {
    for (now_ = 0; now_ < order_.size(); ++now_) run(order_[now_]);
    return std::move(list_);
  }

 private:
  static constexpr std::size_t kNever = std::numeric_limits<std::size_t>::max();

  std::vector<NodeId> operands(NodeId id) const {
    std::vector<NodeId> list = g_[id].operands();
    std::erase_if(list,
                  [this](NodeId o) { return g_[o].op == Op::Const || g_[o].op == Op::Scale; });
    return list;
  }

  std::size_t nextUse(NodeId id) const {
    const std::vector<std::size_t>& uses = uses_.at(id);
    const auto next = std::upper_bound(uses.begin(), uses.end(), now_);
    return next == uses.end() ? kNever : *next;
  }

  bool inRegister(NodeId id) const {
    return std::find(registers_.begin(), registers_.end(), id) != registers_.end();
  }

  // Until the first store the source holds what was loaded, also where it is the destination.
  bool inSource(NodeId id, std::size_t use) const {
    return g_[id].op == Op::Load && use <= firstStore_;
  }

  void run(NodeId id) {
    const std::vector<NodeId> needed = operands(id);
    NodeId inMemory = kNoNode;
    for (NodeId o : needed) {
      if (inRegister(o)) continue;
      if (inMemory == kNoNode && slots_.count(o) && mayStayInMemory(id, o)) {
        inMemory = o;
      } else {
        place(o, needed);
        list_.push_back({Instruction::Fetch, o, kNoNode, slots_.count(o) ? slots_[o] : kNoSlot});
      }
    }
    for (NodeId o : needed) {
      if (nextUse(o) == kNever) std::erase(registers_, o);
    }
    if (g_[id].op != Op::Store) place(id, {});
    list_.push_back(
        {Instruction::Run, id, inMemory, inMemory == kNoNode ? kNoSlot : slots_[inMemory]});
    for (NodeId o : needed) {
      if (nextUse(o) == kNever) release(o);
    }
  }

  // Instructions take their second operand from memory, where it is used only there.
  bool mayStayInMemory(NodeId user, NodeId operand) const {
    const Node& n = g_[user];
    if (n.a == n.b || nextUse(operand) != kNever) return false;
    if (n.op == Op::Sub) return n.b == operand;
    if (n.op != Op::Add && n.op != Op::Mul) return false;
    return g_[n.a == operand ? n.b : n.a].op != Op::Const;  // that one is in memory itself
  }

  void place(NodeId id, const std::vector<NodeId>& kept) {
    if (registers_.size() == kRegisters) evict(kept);
    registers_.push_back(id);
  }

  void evict(const std::vector<NodeId>& kept) {
    auto farthest = registers_.end();
    std::size_t distance = 0;
    for (auto r = registers_.begin(); r != registers_.end(); ++r) {
      if (std::find(kept.begin(), kept.end(), *r) != kept.end()) continue;
      const std::size_t use = nextUse(*r), ahead = use - now_;
      const std::size_t weight = 2 * ahead + (inMemory(*r, use) ? ahead : 0);
      if (weight > distance) {
        distance = weight;
        farthest = r;
      }
    }
    const NodeId id = *farthest;
    registers_.erase(farthest);
    if (!inMemory(id, nextUse(id))) {
      slots_[id] = takeSlot(g_[id].precision);
      list_.push_back({Instruction::Save, id, kNoNode, slots_[id]});
    }
  }

  bool inMemory(NodeId id, std::size_t use) const { return slots_.count(id) || inSource(id, use); }

  void release(NodeId id) {
    const auto slot = slots_.find(id);
    if (slot == slots_.end()) return;
    free_[g_[id].precision].push_back(slot->second);
    slots_.erase(slot);
  }

  int takeSlot(Precision precision) {
    std::vector<int>& free = free_[precision];
    if (free.empty()) return count_[precision]++;
    const int slot = free.back();
    free.pop_back();
    return slot;
  }

  const Graph& g_;
  const std::vector<NodeId>& order_;
  std::map<NodeId, std::vector<std::size_t>> uses_;
  std::size_t firstStore_ = kNever, now_ = 0;
  std::vector<NodeId> registers_;
  std::map<NodeId, int> slots_;
  std::map<Precision, std::vector<int>> free_;
  std::map<Precision, int> count_;
  std::vector<Instruction> list_;
};

}  // namespace

std::vector<Instruction> allocate(const Graph& graph, const std::vector<NodeId>& order) {
  return Allocation(graph, order).list();
}

}  // namespace kernelgen
