// What is measured: one case per function of the library, with the peers that do the same work.
// The families are the rows of a table in cases.cpp; listCases() is the entry.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "functions.h"
#include "library.h"

namespace bench {

// Runs one transform `calls` times in a row on fixed arrays.
using Batch = std::function<void(int calls)>;

// The arrays of one side. `source` holds normal numbers, whenever neither a maker nor a batch runs.
struct Arrays {
  void* source;
  void* dest;
};

struct Peer {
  std::string name;
  std::function<Batch(Arrays)> make;
};

struct Case {
  std::string family;  // such as complex-forward
  int bits;            // of a real number: 32 or 64
  int n;               // length in elements
  std::string symbol;
  bool oursCallsPeer;  // so that the difference is what ours adds, and not the ratio
  int additions;       // of numbers, in a transform that consists of them; otherwise 0
  std::function<Batch(Arrays)> ours;
  std::vector<Peer> peers;  // the fastest at this length counts; there may be none
};

struct CaseList {
  std::vector<Case> cases;
  int missing = 0;  // functions that match and are not in the library
};

// Which peers take part: of those that are FFTW's only where its library is.
enum class Peers {
  All,
  None
};

// The cases of a library that match, see Filters.
CaseList listCases(const Library& library, Filters& filters, Peers peers);

}  // namespace bench
