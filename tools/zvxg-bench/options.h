// The command line.
#pragma once

#include <string>
#include <vector>

#include "output.h"

namespace bench {

struct Options {
  std::string command;
  std::vector<std::string> filters;
  std::string library, output, beat, csv, level;
  Format format = Format::Text;
  int processes = 12, budgetMs = 16, core = -1, offsetBytes = 0;  // speed
  int trials = 64, seed = 1;                                      // accuracy, verify
  bool ownOnly = false;                                           // speed: no peers
  bool isWorker = false;                                          // speed: started by itself
};

// Throws UsageError. --help and --version end the program.
Options parse(int argc, char** argv);

}  // namespace bench
