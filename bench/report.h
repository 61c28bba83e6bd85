// The results as tables on the screen, with a summary of each family, and as CSV.
#pragma once

#include <cmath>
#include <map>
#include <string>
#include <vector>

#include "cases.h"

namespace bench {

struct Result {
  Case subject;
  std::vector<double> oursNs;               // per process, the shortest burst
  std::vector<std::vector<double>> peerNs;  // the same of each peer
  double clockGhz = 0;                      // the highest of the processes
  double boundCycles = NAN;                 // NAN: not known
  double ratioToBeat = NAN;                 // NAN: not given
};

// What the first peer's time over ours must exceed, by "family,bits,n". Read from a CSV file whose
// first line names at least the columns family, bits, n and ratio_to_beat; an empty ratio says
// nothing.
std::map<std::string, double> readRatiosToBeat(const std::string& path);

void printTables(const std::vector<Result>& results);

// `head` goes before the columns as comment. The file appears when it is complete.
void writeCsv(const std::string& path, const std::vector<std::string>& head,
              const std::vector<Result>& results);

}  // namespace bench
