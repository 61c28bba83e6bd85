// The times of a run as columns, and a summary of each family.
#pragma once

#include <cmath>
#include <map>
#include <string>
#include <vector>

#include "cases.h"
#include "output.h"

namespace bench {

struct Result {
  Case subject;
  std::vector<double> oursNs;               // per process, the shortest burst
  std::vector<std::vector<double>> peerNs;  // the same of each peer
  double clockGhz = 0;                      // the highest of the processes
  double boundCycles = NAN;                 // NAN: unknown
  double ratioToBeat = NAN;                 // NAN: not given
};

// The ratio of the first peer's time to ours to be reached, by "family,bits,n". Read from a
// CSV file whose first line names at least the columns family, bits, n and ratio_to_beat; rows with
// an empty ratio are ignored.
std::map<std::string, double> readRatiosToBeat(const std::string& path);

// The columns, and a section for each family and precision.
Report reportOf(const std::vector<Result>& results);

}  // namespace bench
