// Walks the records of a plan, from the innermost stage out. A record that is not ready to be run
// is skipped, together with everything below it.
//
// `Ends` has the stages that access the arrays of the caller: runLeaves(state, stage), the first
// one, reads the source, and runRoot(state, stage), the last one, writes the destination.
#pragma once

#include "dct4/execute.h"
#include "dct4/root.h"

namespace zvxg::dct4 {

inline Writing writingTo(const void* memory, Writing wanted) {
  const bool startsLine = reinterpret_cast<std::uintptr_t>(memory) % 64 == 0;
  return wanted == Writing::Streamed && !startsLine ? Writing::Collected : wanted;
}

template <class Record>
const Record& onlyItem(const NodeList* list) {
  return *static_cast<const Record*>(list->item);
}

template <class T, class Ends>
class Walk {
 public:
  Walk(const Ends& ends, Schedule schedule) : ends_(ends), schedule_(schedule) {}

  void run(const Dct4Spec& spec) {
    T* const workspace = static_cast<T*>(spec.workspace);
    runRootSub(onlyItem<RootSub<T>>(spec.subList), workspace);
    runRootCombine(onlyItem<RootCombine<T>>(spec.combineList), workspace);
  }

 private:
  void runRootSub(const RootSub<T>& sub, T* workspace) {
    if (sub.state != 1) return;
    const auto& loop = onlyItem<RootSubLoop<T>>(sub.loopList);
    length_ = loop.length;
    radix_ = loop.radix;
    if (loop.state >= 1 && loop.state <= kLastLeafState) {
      runLeaves(loop.state, workspace, 1);
    } else if (loop.state == kNodeState) {
      runSplitNode(onlyItem<SplitNode<T>>(loop.loopList), workspace);
    }
  }

  // All column transforms below splits whose radices have the product `splits`.
  void runLeaves(uint32_t state, T* out, int32_t splits) {
    ends_.runLeaves(state, LeafStage<T>{ends_.src, out, length_, radix_, splits,
                                        writingTo(out, schedule_.inner)});
  }

  void runSplitNode(const SplitNode<T>& node, T* out) {
    if (node.state != 1) return;
    runSplitSub(onlyItem<SplitSub<T>>(node.subList), node.workspace);
    runSplitCombine(onlyItem<SplitCombine<T>>(node.combineList), node.workspace, out);
  }

  void runSplitSub(const SplitSub<T>& sub, T* out) {
    if (sub.state >= 1 && sub.state <= kLastLeafState) {
      runLeaves(sub.state, out, sub.nextStride / radix_);
    } else if (sub.state == kNodeState) {
      runSplitNode(onlyItem<SplitNode<T>>(sub.nodeList), out);
    }
  }

  void runSplitCombine(const SplitCombine<T>& combine, const T* in, T* out) {
    if (combine.state == 0 || combine.state > kSplits<Wide<T>>.size()) return;
    const bool outermost = combine.stride == radix_;
    const Writing writing = outermost ? schedule_.outer : schedule_.inner;
    kSplits<Wide<T>>[combine.state - 1]({in, combine.table, combine.stride, combine.count,
                                         outputsIn(out, combine.stride, combine.count),
                                         writingTo(out, writing)});
  }

  void runRootCombine(const RootCombine<T>& combine, const T* workspace) {
    if (combine.state != 1) return;
    const auto& loop = onlyItem<RootCombineLoop<T>>(combine.loopList);
    if (loop.state == 0 || loop.state > kRoots<Wide<T>>.size()) return;
    // At a length 2^k + 1 runs do not start at cache lines, and one of them has to be cut.
    const Writing writing =
        loop.length % 2 != 0 ? Writing::Collected : writingTo(ends_.dst, schedule_.outer);
    ends_.runRoot(loop.state, RootStage<T>{workspace, ends_.dst, loop.table, loop.length,
                                           loop.lastIndex, loop.subLength, loop.laneRows, writing});
  }

  const Ends& ends_;
  const Schedule schedule_;
  int32_t length_ = 0, radix_ = 0;  // n, r
};

}  // namespace zvxg::dct4
