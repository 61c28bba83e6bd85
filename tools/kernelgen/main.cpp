// kernelgen: prints the kernels of the library.
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <fstream>
#include <iostream>
#include <sstream>
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
       kernelgen many FIRST LAST PART PARTS
                                    C++ text of one of PARTS shares of the kernels for many
                                    transforms at once, of these lengths
       kernelgen tables LONGEST     the same of the tables of these; above this length, with the
                                    kernels for AVX on every machine
       kernelgen contiguous LONGEST single|double
                                    the same of kernels on contiguous real transforms up to this
                                    length, and their table
       kernelgen counts             operation counts of all kernels as CSV
       kernelgen STAGE SYMBOL       one kernel in a stage of its making: recipe, graph, scalar,
                                    schedule, text; in all of them: stages
       --machine LEVELS             after source and long: the kernels that have one text for just
                                    these levels, such as base,v3; after text: the kernel as it
                                    is at one level, v3 or v4
)";

// Every PARTS-th kernel, so that long and short ones are spread over the files: of all, or of those
// with one text for just these levels. Long ones are only in the text of the base.
std::vector<KernelId> share(bool wantsLong, const std::vector<Level>& levels, int part, int parts) {
  if (parts < 1 || part < 0 || part >= parts) throw std::invalid_argument("no such part");
  const Level level = levels.empty() ? Level::Base : levels.front();
  std::vector<KernelId> mine;
  int count = 0;
  for (const KernelId& id : kernelList()) {
    const bool isLong = level == Level::Base && designOf(id).isLong;
    if (isLong != wantsLong || (!levels.empty() && levelsLike(id, level) != levels)) continue;
    if (count++ % parts == part) mine.push_back(id);
  }
  return mine;
}

// Takes the option from the words.
std::vector<Level> machineOf(std::vector<std::string>& words) {
  if (words.size() < 2 || words[words.size() - 2] != "--machine") return {};
  std::istringstream names(words.back());
  std::vector<Level> levels;
  for (std::string name; std::getline(names, name, ',');) levels.push_back(levelOfName(name));
  words.resize(words.size() - 2);
  return levels;
}

int run(std::vector<std::string> words) {
  const std::vector<Level> levels = machineOf(words);
  const Level level = levels.empty() ? Level::Base : levels.front();
  const std::string command = words.empty() ? "" : words[0];
  if (command == "list" && words.size() == 1) {
    for (const KernelId& id : kernelList()) std::cout << id.symbol() << '\n';
  } else if (command == "header" && words.size() == 1) {
    std::cout << emitHeader();
  } else if ((command == "source" || command == "long") && words.size() == 3) {
    const int part = std::stoi(words[1]), parts = std::stoi(words[2]);
    std::cout << emitFile(share(command == "long", levels, part, parts), level);
  } else if (command == "many" && words.size() == 5) {
    const auto number = [&](int i) { return std::stoi(words[i]); };
    std::cout << emitMany(number(1), number(2), number(3), number(4));
  } else if (command == "tables" && words.size() == 2) {
    std::cout << emitManyTables(std::stoi(words[1]));
  } else if (command == "contiguous" && words.size() == 3 &&
             (words[2] == "single" || words[2] == "double")) {
    const bool single = words[2] == "single";
    std::cout << emitContiguous(std::stoi(words[1]),
                                single ? Precision::Single : Precision::Double);
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
