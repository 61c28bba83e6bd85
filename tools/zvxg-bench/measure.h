// Times one case in this process. Short bursts of our function, of each peer and of a chain of
// additions, which shows the clock rate, take turns, and the shortest burst of each counts. A
// change of clock or another program then affects all of them alike, and with enough bursts some
// escape it.
#pragma once

#include "cases.h"

namespace bench {

struct Times {
  double oursNs;  // of a transform
  std::vector<double> peerNs;
  double clockGhz;
};

// `budgetMs` is the time for the bursts. `offsetBytes` moves our arrays, but not those of peers,
// off their alignment.
Times measure(const Case& subject, double budgetMs, int offsetBytes);

}  // namespace bench
