// kernelgen: prints the kernels of the library.
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <fstream>
#include <iostream>
#include <stdexcept>

#include "counts.h"
#include "exports.h"
#include "many.h"
#include "print.h"
#include "tables.h"

namespace {

using namespace kernelgen;

constexpr const char* kUsage =
    R"(usage: kernelgen list               the kernels, one symbol a line
       kernelgen header             include/zvxg_kernels.h
       kernelgen source PART PARTS  C++ text of one of PARTS shares of the kernels
       kernelgen long PART PARTS    the same of the long kernels, which are apart
       kernelgen entries            C++ text of the by-length entries
       kernelgen many PART PARTS    C++ text of one of PARTS shares of the kernels for many
                                    transforms at once; of the tables of these: tables
       kernelgen counts             operation counts of all kernels as CSV
       kernelgen STAGE SYMBOL       one kernel in a stage of its making: recipe, graph, scalar,
                                    schedule, text; in all of them: stages
       --machine v3 | v4            after source: those kernels that are packed there, as they are;
                                    after text: that kernel as it is there
)";

// Every PARTS-th kernel, so that long and short ones are spread over the files.
std::vector<KernelId> share(bool wantsLong, int part, int parts) {
  if (parts < 1 || part < 0 || part >= parts) throw std::invalid_argument("no such part");
  std::vector<KernelId> all = kernelList(), mine;
  std::erase_if(all, [&](const KernelId& id) { return designOf(id).isLong != wantsLong; });
  for (std::size_t i = 0; i < all.size(); ++i) {
    if (static_cast<int>(i) % parts == part) mine.push_back(all[i]);
  }
  return mine;
}

// Every PARTS-th of those that are not as in the base.
std::vector<KernelId> share(Level level, int part, int parts) {
  if (parts < 1 || part < 0 || part >= parts) throw std::invalid_argument("no such part");
  std::vector<KernelId> mine;
  int count = 0;
  for (const KernelId& id : kernelList()) {
    if (packingOf(id, level) && count++ % parts == part) mine.push_back(id);
  }
  return mine;
}

// Takes the option from the words.
Level machineOf(std::vector<std::string>& words) {
  if (words.size() < 2 || words[words.size() - 2] != "--machine") return Level::Base;
  const Level level = levelOfName(words.back());
  words.resize(words.size() - 2);
  return level;
}

int run(std::vector<std::string> words) {
  const Level level = machineOf(words);
  const std::string command = words.empty() ? "" : words[0];
  if (command == "list" && words.size() == 1) {
    for (const KernelId& id : kernelList()) std::cout << id.symbol() << '\n';
  } else if (command == "header" && words.size() == 1) {
    std::cout << emitHeader();
  } else if ((command == "source" || (command == "long" && level == Level::Base)) &&
             words.size() == 3) {
    const int part = std::stoi(words[1]), parts = std::stoi(words[2]);
    std::cout << emitFile(
        level == Level::Base ? share(command == "long", part, parts) : share(level, part, parts),
        level);
  } else if (command == "many" && words.size() == 2 && words[1] == "tables") {
    std::cout << emitManyTables();
  } else if (command == "many" && words.size() == 3) {
    std::cout << emitMany(std::stoi(words[1]), std::stoi(words[2]));
  } else if (command == "entries" && words.size() == 1) {
    std::cout << emitEntries();
  } else if (command == "counts" && words.size() == 1) {
    std::cout << ledgerHead() << '\n';
    for (const KernelId& id : kernelList()) std::cout << ledgerLine(makeKernel(id)) << '\n';
  } else if (command == "text" && words.size() == 2) {
    std::cout << emitKernel(makeKernel(kernelOfSymbol(words[1])), level);
  } else if (words.size() == 2) {
    std::cout << printedStage(command, kernelOfSymbol(words[1]));
  } else {
    std::cerr << kUsage;
    return EXIT_FAILURE;
  }
  std::cout.flush();
  if (!std::cout) throw std::runtime_error("the output could not be written");
  return EXIT_SUCCESS;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return run({argv + 1, argv + argc});
  } catch (const std::exception& error) {
    std::cerr << "kernelgen: " << error.what() << '\n';
    return EXIT_FAILURE;
  }
}
