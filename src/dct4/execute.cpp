#include "dct4/execute.h"

#include "dct4/root.h"
#include "zvxg.h"

namespace zvxg::dct4 {
namespace {

// Bytes of an array from which on the writing of a stage changes. A plan touches six arrays and
// more; rows of inner splits conflict early, and past the caches is only worth it where they are
// passed anyway. Measured on Zen 3 with 512 KB and 32 MB of cache.
constexpr std::size_t kCollectFrom = std::size_t{512} << 10;
constexpr std::size_t kStreamFrom = std::size_t{4} << 20;

template <class Record>
const Record& onlyItem(const NodeList* list) {
  return *static_cast<const Record*>(nodeListAt(list, 0));
}

Writing writingTo(const void* memory, Writing wanted) {
  const bool startsLine = reinterpret_cast<std::uintptr_t>(memory) % 64 == 0;
  return wanted == Writing::Streamed && !startsLine ? Writing::Collected : wanted;
}

// What all records below the root need to know.
template <class T>
struct Input {
  const T* src;
  int32_t length;  // n
  int32_t radix;   // r
  Schedule schedule;
};

// All column transforms behind splits whose radices multiply to `splits`.
template <class T>
void runLeaves(uint32_t state, const Input<T>& input, T* out, int32_t splits) {
  kLeaves<T>[state - 1](
      {input.src, out, input.length, input.radix, splits, writingTo(out, input.schedule.inner)});
}

template <class T>
void runSplitNode(const SplitNode<T>& node, const Input<T>& input, T* out);

template <class T>
void runSplitSub(const SplitSub<T>& sub, const Input<T>& input, T* out) {
  if (sub.state >= 1 && sub.state <= kLastLeafState) {
    runLeaves(sub.state, input, out, sub.nextStride / input.radix);
  } else if (sub.state == kNodeState) {
    runSplitNode(onlyItem<SplitNode<T>>(sub.nodeList), input, out);
  }
}

template <class T>
void runSplitCombine(const SplitCombine<T>& combine, const Input<T>& input, const T* in, T* out) {
  if (combine.state == 0 || combine.state > kSplits<T>.size()) return;
  const bool outermost = combine.stride == input.radix;
  const Writing writing = outermost ? input.schedule.outer : input.schedule.inner;
  kSplits<T>[combine.state - 1](
      {in, out, combine.table, combine.stride, combine.count, writingTo(out, writing)});
}

template <class T>
void runSplitNode(const SplitNode<T>& node, const Input<T>& input, T* out) {
  if (node.state != 1) return;
  runSplitSub(onlyItem<SplitSub<T>>(node.subList), input, node.workspace);
  runSplitCombine(onlyItem<SplitCombine<T>>(node.combineList), input, node.workspace, out);
}

template <class T>
void runRootSub(const RootSub<T>& sub, const T* src, T* workspace, Schedule schedule) {
  if (sub.state != 1) return;
  const auto& loop = onlyItem<RootSubLoop<T>>(sub.loopList);
  const Input<T> input = {src, loop.length, loop.radix, schedule};
  if (loop.state >= 1 && loop.state <= kLastLeafState) {
    runLeaves(loop.state, input, workspace, 1);
  } else if (loop.state == kNodeState) {
    runSplitNode(onlyItem<SplitNode<T>>(loop.loopList), input, workspace);
  }
}

template <class T>
void runRootCombine(const RootCombine<T>& combine, const T* workspace, T* dst, Writing writing) {
  if (combine.state != 1) return;
  const auto& loop = onlyItem<RootCombineLoop<T>>(combine.loopList);
  if (loop.state == 0 || loop.state > kRoots<T>.size()) return;
  // With a length 2^k + 1 runs do not start at lines, and one has to be cut.
  writing = loop.length % 2 != 0 ? Writing::Collected : writingTo(dst, writing);
  kRoots<T>[loop.state - 1]({workspace, dst, loop.table, loop.length, loop.lastIndex,
                             loop.subLength, loop.laneRows, writing});
}

}  // namespace

Schedule chooseSchedule(std::size_t bytes) {
  if (bytes >= kStreamFrom) return {Writing::Streamed, Writing::Streamed};
  return {bytes >= kCollectFrom ? Writing::Collected : Writing::Direct, Writing::Direct};
}

template <class T>
void execute(const Dct4Spec& spec, const T* src, T* dst, Schedule schedule) {
  T* const workspace = static_cast<T*>(spec.workspace);
  runRootSub(onlyItem<RootSub<T>>(spec.subList), src, workspace, schedule);
  runRootCombine(onlyItem<RootCombine<T>>(spec.combineList), workspace, dst, schedule.outer);
  // Streamed lines become visible to other threads before what the caller stores next.
  if (schedule.inner == Writing::Streamed || schedule.outer == Writing::Streamed) _mm_sfence();
}

template void execute<float>(const Dct4Spec&, const float*, float*, Schedule);
template void execute<double>(const Dct4Spec&, const double*, double*, Schedule);

}  // namespace zvxg::dct4
