// Times one case in this process: short bursts of ours, of each peer and of a chain of additions,
// which shows the clock, take turns, and the shortest burst of each counts. A change of clock or a
// busy neighbour then meets all of them alike, and enough bursts escape it.
#pragma once

#include "cases.h"

namespace bench {

struct Times {
  double oursNs;  // per call
  std::vector<double> peerNs;
  double clockGhz;
};

// `budgetMs` is the time spent on the bursts. `offsetBytes` moves the arrays of ours, and only
// those, off their alignment.
Times measure(const Case& subject, double budgetMs, int offsetBytes);

}  // namespace bench
