// Which values of a kernel are in registers and which in memory, statement by statement.
//
// A compiler finds places for values and constants itself, and reaches them by instructions of
// eight and nine bytes. That is nothing to a kernel that stays in the cache of decoded
// instructions. A longer one is decoded anew in every call, at 16 to 18 bytes a cycle, and so
// depends on the length of its code: its places are chosen here and named by pointers with short
// offsets (statements.cpp).
#pragma once

#include <vector>

#include "graph.h"

namespace kernelgen {

constexpr int kNoSlot = -1;

struct Instruction {
  enum Kind {
    Run,   // the statement of `node`, with the operand `inMemory` read straight from its slot
    Save,  // `node` to `slot`
    Fetch  // `node` from `slot`, or from the source
  };
  Kind kind;
  NodeId node;
  NodeId inMemory = kNoNode;
  int slot = kNoSlot;
};

// The instructions of these statements on the registers of the machine. Slots are counted apart for
// values of single and of double precision.
std::vector<Instruction> allocate(const Graph& graph, const std::vector<NodeId>& order);

}  // namespace kernelgen
