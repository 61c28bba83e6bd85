// Every stage of a kernel as text, to be read and to be tested:
//
//   recipe     the row with its transforms filled in: GT(4,3), 128 bits, 2 bodies
//   graph      a node each, by the names that the C++ text has for them (a long kernel has others, as
//              it gives a new one to what it fetches)
//                x3_7 = load complex 3 7
//                t2 = t1 * half
//                t3 = t2[1 0 3 2]          a shuffle, lanes of t2; (t2, t4)[0 1 4 5] of two
//                t5 = t3 ^ signs0110       a flip
//   scalar     the same of the scalar form (scalar.h)
//   schedule   the statements in their order, each with the values then alive in front, and what a
//              long kernel saves and fetches
//   text       C++
#pragma once

#include <string>

#include "tables.h"

namespace kernelgen {

// A kernel in that stage, in all of them for "stages"; throws std::invalid_argument if there is none.
std::string printedStage(const std::string& stage, const KernelId& id);

// A graph as above, what it computes numbered in the order of its nodes.
std::string printed(const Graph& graph);

}  // namespace kernelgen
