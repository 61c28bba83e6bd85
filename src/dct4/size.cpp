// The size of a plan's block. All sums are in 32-bit two's complement, and this bounds the accepted
// lengths: a sum that turns negative refuses the length. At 2^30, and in double precision at 2^29
// too, a multiplication wraps around to a small size. No plan of such a length fits into that size;
// it is reported all the same, because callers rely on it.

#include "dct4/plan.h"
#include "dct4/radix.h"
#include "dct4/tables.h"
#include "zvxg.h"

namespace zvxg::dct4 {
namespace {

constexpr uint32_t kArenaHead = 64;  // the cursor, and what aligns the first record
constexpr uint32_t kDirect = alignUp32(sizeof(Dct4Spec)) + nodeListBytes(3) + kArenaHead;

// A budget for records and lists. It is a little more than they take: 224 bytes at the root and 160
// in each split stay unused.
constexpr uint32_t kNode = 96 + nodeListBytes(10);
constexpr uint32_t kSub = 160 + nodeListBytes(2);
constexpr uint32_t kLeaf = 96 + nodeListBytes(2);
constexpr uint32_t kRoot = 320 + nodeListBytes(4) + kSub + kNode + kArenaHead;
constexpr uint32_t kSplit = 128 + nodeListBytes(1) + kSub + kNode;
static_assert(kDirect == 256 && kLeaf == 160 && kRoot == 1152 && kSplit == 800);

// A sum that has been refused stays refused.
class Sum {
 public:
  Sum& operator+=(uint32_t bytes) {
    if (ok_) total_ += bytes;
    ok_ = ok_ && static_cast<int32_t>(total_) >= 0;
    return *this;
  }
  void refuse() { ok_ = false; }
  bool ok() const { return ok_; }
  uint32_t total() const { return total_; }

 private:
  uint32_t total_ = 0;
  bool ok_ = true;
};

// Adds what a column transform of length m needs, the innermost one first.
template <class T>
void addSub(Sum& sum, int32_t m, uint32_t workspace) {
  if (stateOf(m, 2, kLastLeafState) != 0) {
    sum += kLeaf;
    return;
  }
  int32_t q;
  if (chooseRadix(&q, m / 2) != zvxOk) {
    sum.refuse();
    return;
  }
  addSub<T>(sum, m / q, workspace);
  const uint32_t count = m / (2 * q);
  sum += alignUp32(count * twiddleVectors(q) * kTableVectorBytes);
  sum += workspace;
  sum += kSplit;
}

}  // namespace

template <class T>
int32_t planSize(int32_t length, uint32_t* size) {
  if (stateOf(length, 2, kDirectStates<T>) != 0) {
    *size = kDirect;
    return zvxOk;
  }
  int32_t r;
  if (chooseRadix(&r, length / 2) != zvxOk) return zvxErrLength;
  const int32_t rows = length / (2 * r);
  if (rows % kTableLanes<T> != 0 || r % kTableLanes<T> != 0) return zvxErrLength;

  const uint32_t workspace = alignUp32(sizeof(T) * static_cast<uint32_t>(length));
  Sum sum;
  addSub<T>(sum, length / r, workspace);
  sum += static_cast<uint32_t>(rows / kTableLanes<T>) * (2 * r) * kTableVectorBytes;
  sum += workspace;
  sum += kRoot;
  if (!sum.ok()) return zvxErrLength;
  *size = sum.total();
  return zvxOk;
}

template int32_t planSize<float>(int32_t, uint32_t*);
template int32_t planSize<double>(int32_t, uint32_t*);

}  // namespace zvxg::dct4
