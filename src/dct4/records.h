// The records of a plan. A plan is a tree with one shape: the root splits its length n by a radix r
// into a stage of column transforms of length n / r (RootSub) and a stage that rotates and combines
// their results (RootCombine). A column transform too long for one kernel is split once more in the
// same way (SplitNode with SplitSub and SplitCombine), and so on.
//
// A record is filled when its parent makes it and completed by its own `init`; execution only reads
// it. Names: n, r as above, a = n / (2r), m the length of a SplitNode, q its radix, s the product
// of all radices above it. Tables consist of vectors of W elements. All quotients truncate.
//
// The layout is the same in both precisions and must not change by a byte: it includes fields that
// repeat each other or that nothing reads.
#pragma once

#include <cstddef>
#include <cstdint>

#include "dct4/arena.h"

namespace zvxg::dct4 {

// Completes a record and builds what is below it. Returns a status.
using Init = int32_t (*)(void* record);

// ---- Value sources: they evaluate the entries of tables -----------------------------------------

// cos, or in odd columns sin, of pi (2 row + 1)(2 p + 1) / (4n) with p = column / 2.
template <class T>
struct RotationSource {
  RecordHead head;
  T (*evaluate)(const RotationSource* source, int32_t row, int32_t column);
  Arena* arena;
  int32_t rowLength;     // 2r
  int32_t angleDivisor;  // 8n
  int32_t rows;          // a
  int32_t columns;       // r
  int32_t rowStride;     // 2r
};

// The same, with a row given as a vector and a lane in it.
template <class T>
struct LaneRowsSource {
  RecordHead head;
  T (*evaluate)(const LaneRowsSource* source, int32_t laneRow, int32_t lane, int32_t column);
  Arena* arena;
  int32_t rowLength;  // 2r
  int32_t laneRows;   // a / W
  const RotationSource<T>* source;
};

// (i + 1/2) / (m / q), the same in every lane and column.
template <class T>
struct PhaseSource {
  RecordHead head;
  T (*evaluate)(const PhaseSource* source, int32_t i, int32_t lane, int32_t column);
  Arena* arena;
  int32_t length;  // m
  int32_t radix;   // q
};

// ---- Stages of the root -------------------------------------------------------------------------

template <class T>
struct RootCombineLoop {
  RecordHead head;
  Init init;
  Arena* arena;
  NodeList* allNodes;
  T* table;            // rotations, in the order in which they are read
  uint32_t state;      // by r: 1, 2, 4, ... 32 give 1 to 6
  int32_t radix;       // r
  int32_t length;      // n
  int32_t rowLength;   // 2r
  int32_t laneStride;  // 2r W
  int32_t laneRows;    // a / W
  int32_t outLength;   // n
  int32_t lastIndex;   // 2n - 1
  int32_t subLength;   // n / r
  const LaneRowsSource<T>* source;
};

template <class T>
struct RootCombine {
  RecordHead head;
  Init init;
  Arena* arena;
  NodeList* allNodes;  // LaneRowsSource, RootCombineLoop
  NodeList* loopList;  // RootCombineLoop
  T* scratch;          // null
  uint32_t state;      // 1 when it can be executed
  int32_t radix;       // r
  int32_t length;      // n
  int32_t rowLength;   // 2r
  int32_t rows;        // a
  int32_t outLength;   // n
  int32_t lastIndex;   // 2n - 1
  int32_t subLength;   // n / r
  const RotationSource<T>* source;
};

// RootSub and its inner record RootSubLoop have the same layout. `laneGroups` counts columns in the
// outer record and vectors of columns in the inner one; `state` of the inner one is as in a
// SplitSub.
template <class T>
struct RootSub {
  RecordHead head;
  Init init;
  Arena* arena;
  NodeList* allNodes;  // RootSubLoop; in that one the SplitNode, if any
  NodeList* loopList;  // the same
  T* scratch;          // null
  uint32_t state;
  int32_t subLength;   // n / r
  int32_t length;      // n
  int32_t lastIndex;   // 2n - 1
  int32_t rowLength;   // 2r
  int32_t laneGroups;  // r, or r / W
  int32_t outLength;   // n
  int32_t radix;       // r
};

template <class T>
using RootSubLoop = RootSub<T>;

// ---- Splits below the root ----------------------------------------------------------------------

template <class T>
struct SplitCombine {
  RecordHead head;
  Init init;
  Arena* arena;
  NodeList* allNodes;
  T* table;             // twiddle factors, in the order in which they are read
  uint32_t state;       // by q: 2, 4, ... 32 give 1 to 5
  int32_t radix;        // q
  int32_t rootLength;   // n
  int32_t stride;       // s
  int32_t outStride;    // 2 s q
  int32_t count;        // m / (2q)
  int32_t rootLength2;  // n
  int32_t halfLength;   // m / 2
  int32_t lastIndex;    // m - 1
  int32_t stride2;      // s
  int32_t subLength;    // m / q
  const PhaseSource<T>* source;
};

template <class T>
struct SplitSub {
  RecordHead head;
  Init init;
  Arena* arena;
  NodeList* allNodes;        // SplitNode, if any
  NodeList* nodeList;        // the same
  T* scratch;                // null
  uint32_t state;            // see SubState
  int32_t subLength;         // m / q
  int32_t rootLength;        // n
  int32_t rootLength2;       // n
  int32_t nextDoubleStride;  // 2 s q
  int32_t doubleStride;      // 2 s
  int32_t radix;             // q
  int32_t rootLength3;       // n
  int32_t nextStride;        // s q
  int32_t stride;            // s
};

template <class T>
struct SplitNode {
  RecordHead head;
  Init init;
  Arena* arena;
  NodeList* allNodes;     // PhaseSource, SplitCombine, SplitSub
  NodeList* combineList;  // SplitCombine
  NodeList* subList;      // SplitSub
  T* workspace;           // n elements, between the two stages
  uint32_t state;         // 1 once init was entered
  int32_t length;         // m
  int32_t radix;          // q
  int32_t rootLength;     // n
  int32_t rootLength2;    // n
  int32_t doubleStride;   // 2 s
  int32_t rootLength3;    // n
  int32_t stride;         // s
};

// `state` of a RootSubLoop or SplitSub: the kernel of column transforms of length 2, 4, ... 64, or
// a SplitNode.
constexpr uint32_t kLastLeafState = 6;
constexpr uint32_t kNodeState = 7;

// The number of a power of two from `first` up in 1 .. count; otherwise 0.
constexpr uint32_t stateOf(int32_t value, int32_t first, uint32_t count) {
  for (uint32_t state = 1; state <= count; ++state) {
    if (value == first << (state - 1)) return state;
  }
  return 0;
}

}  // namespace zvxg::dct4

// The root. `workspace` holds the results of the first stage, and is null for a direct length.
// `radix` is written in the general case only.
struct Dct4Spec {
  zvxg::dct4::RecordHead head;
  zvxg::dct4::Init init;
  zvxg::dct4::Arena* arena;           // the block
  zvxg::dct4::NodeList* allNodes;     // RotationSource, RootCombine, RootSub
  zvxg::dct4::NodeList* combineList;  // RootCombine
  zvxg::dct4::NodeList* subList;      // RootSub
  void* workspace;                    // n elements
  uint32_t state;                     // see kDirectStates
  int32_t radix;                      // r
  int32_t length;                     // n
};

namespace zvxg::dct4 {

// `state` of a Dct4Spec: 0 until the plan is built, then 1 to kDirectStates for the direct lengths
// 2, 4, ..., and kGeneralState for any other length. At the root only single precision has a direct
// kernel of length 64; below the root both precisions have one.
template <class T>
constexpr uint32_t kDirectStates = sizeof(T) == 4 ? 6 : 5;
template <class T>
constexpr uint32_t kGeneralState = kDirectStates<T> + 1;

// W. A plan is the same for every width of the vectors that run it.
constexpr uint32_t kTableVectorBytes = 32;
template <class T>
constexpr int32_t kTableLanes = kTableVectorBytes / sizeof(T);

#define ZVXG_AT(record, field, offset) static_assert(offsetof(record, field) == (offset))
static_assert(sizeof(RecordHead) == 16 && sizeof(NodeList) == 24 && sizeof(Arena) == 8);
ZVXG_AT(RecordHead, size, 8);

template <class T>
struct RecordLayouts {
  static_assert(sizeof(RotationSource<T>) == 56 && sizeof(LaneRowsSource<T>) == 48 &&
                sizeof(PhaseSource<T>) == 40);
  ZVXG_AT(RotationSource<T>, evaluate, 16);
  ZVXG_AT(RotationSource<T>, arena, 24);
  ZVXG_AT(RotationSource<T>, rowLength, 32);
  ZVXG_AT(RotationSource<T>, rowStride, 48);
  ZVXG_AT(LaneRowsSource<T>, source, 40);
  ZVXG_AT(PhaseSource<T>, radix, 36);

  static_assert(sizeof(RootCombine<T>) == 96 && sizeof(RootCombineLoop<T>) == 96);
  ZVXG_AT(RootCombine<T>, scratch, 48);
  ZVXG_AT(RootCombine<T>, state, 56);
  ZVXG_AT(RootCombine<T>, subLength, 84);
  ZVXG_AT(RootCombine<T>, source, 88);
  ZVXG_AT(RootCombineLoop<T>, table, 40);
  ZVXG_AT(RootCombineLoop<T>, state, 48);
  ZVXG_AT(RootCombineLoop<T>, subLength, 80);
  ZVXG_AT(RootCombineLoop<T>, source, 88);

  static_assert(sizeof(RootSub<T>) == 88);
  ZVXG_AT(RootSub<T>, scratch, 48);
  ZVXG_AT(RootSub<T>, state, 56);
  ZVXG_AT(RootSub<T>, radix, 84);

  static_assert(sizeof(SplitNode<T>) == 96 && sizeof(SplitSub<T>) == 96);
  ZVXG_AT(SplitNode<T>, workspace, 56);
  ZVXG_AT(SplitNode<T>, state, 64);
  ZVXG_AT(SplitNode<T>, stride, 92);
  ZVXG_AT(SplitSub<T>, scratch, 48);
  ZVXG_AT(SplitSub<T>, state, 56);
  ZVXG_AT(SplitSub<T>, stride, 92);

  static_assert(sizeof(SplitCombine<T>) == 104);
  ZVXG_AT(SplitCombine<T>, table, 40);
  ZVXG_AT(SplitCombine<T>, state, 48);
  ZVXG_AT(SplitCombine<T>, subLength, 88);
  ZVXG_AT(SplitCombine<T>, source, 96);
};
template struct RecordLayouts<float>;
template struct RecordLayouts<double>;

static_assert(sizeof(Dct4Spec) == 80);
ZVXG_AT(Dct4Spec, init, 16);
ZVXG_AT(Dct4Spec, arena, 24);
ZVXG_AT(Dct4Spec, allNodes, 32);
ZVXG_AT(Dct4Spec, workspace, 56);
ZVXG_AT(Dct4Spec, state, 64);
ZVXG_AT(Dct4Spec, length, 72);
#undef ZVXG_AT

}  // namespace zvxg::dct4
