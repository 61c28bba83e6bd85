// What is measured: one case for each function of the library, with the peers that do the same
// work. The families are the rows of a table in cases.cpp; listCases() is the entry.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "functions.h"
#include "library.h"

namespace bench {

// Runs one transform `calls` times in a row on fixed arrays.
using Batch = std::function<void(int calls)>;

// The arrays of one side. Whenever neither a maker nor a batch runs, `source` holds normal numbers.
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
  int bits;            // bits of a real number: 32 or 64
  int n;               // length in elements
  std::string symbol;
  std::int64_t howmany = 1;    // transforms in a call; times are those of one
  bool oursCallsPeer = false;  // then the difference counts, not the ratio
  int additions = 0;           // of numbers, in a transform that consists of additions; otherwise 0
  std::function<Batch(Arrays)> ours;
  std::vector<Peer> peers;  // the fastest one at this length counts; may be empty
};

struct CaseList {
  std::vector<Case> cases;
  int missing = 0;  // functions that match and are not in the library
};

// Which peers take part: those of FFTW only if its library is installed.
enum class Peers {
  All,
  None
};

// The cases of a library that match, see Filters.
CaseList listCases(const Library& library, Filters& filters, Peers peers);

}  // namespace bench
