// The commands. Each throws UsageError, or std::runtime_error whose text is one line.
#pragma once

#include "options.h"
#include "output.h"

namespace bench {

Report listCommand(const Options& options);
// Starts this program again with the same arguments, as a worker.
Report speedCommand(const Options& options, int argc, char** argv);
Report accuracyCommand(const Options& options);
Report verifyCommand(const Options& options);

// The entries that all commands have in the description of a run.
using About = std::vector<std::pair<std::string, std::string>>;
About describeMachine(const std::string& library);

}  // namespace bench
