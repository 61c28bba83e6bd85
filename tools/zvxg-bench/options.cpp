#include "options.h"

#include <cstdlib>
#include <functional>
#include <map>

#include "functions.h"
#include "library.h"

namespace bench {
namespace {

constexpr int kOffsetBytes = 8;  // one element of 32fc and 64f, half an element of 64fc

constexpr char kUsage[] =
    R"(usage: zvxg-bench COMMAND [OPTION...] [FILTER...]

  list        every function of the library: family, type, length, layout, algorithm, operations
  speed       time of a call, compared with FFTW if its libraries are installed
  accuracy    error of every transform on normally distributed numbers
  verify      whether the library gives right results on this machine; exit status 1 if not

FILTER is words joined by '-'. It selects a function if each word is part of its line
"<family> <single|double> <symbol> <length>". Examples: complex, complex-single, inverse-64fc, CToC_12_,
dct4-4096. With several filters one match suffices. What libzvxgmany does is measured only if a filter has
the word many: many-rows-L1, many-contiguous-complex-double-64, many-to-rows, many-memory.

  --format F        text, csv or json
  --output FILE     write there; the file appears when it is complete
  --library FILE    use this build of libzvxg instead of the one this program is linked with
  --help, --version

speed:
  --quick           the same as --processes 4 --ms 5, for a first look
  --processes K     number of worker processes (12)
  --ms T            milliseconds per case in each of them (16)
  --core C          core to run on (the last one allowed)
  --offset          move our arrays 8 bytes off their alignment
  --no-peers        measure the library alone
  --beat FILE       ratios to beat: CSV with the columns family, bits, n and ratio_to_beat
  --csv FILE        also write the results there as CSV
  --level L         of libzvxgmany: avx, or avx512 (the highest that the processor has)

accuracy and verify:
  --trials K        accuracy: number of arrays for each transform (64)
  --seed S          seed of the random numbers (1)
)";

struct Option {
  std::string commands;  // those that have the option
  int* number = nullptr;
  int lowest = 0;
  std::string* text = nullptr;
};

int numberFrom(const std::string& option, const std::string& text, int lowest) {
  constexpr int kHighest = 1'000'000;
  char* end;
  const long value = std::strtol(text.c_str(), &end, 10);
  if (text.empty() || *end || value < lowest || value > kHighest) {
    throw UsageError(option + " takes a number from " + std::to_string(lowest) + " to " +
                     std::to_string(kHighest) + ", not '" + text + "'");
  }
  return static_cast<int>(value);
}

Format formatFrom(const std::string& text) {
  const std::map<std::string, Format> formats = {
      {"text", Format::Text}, {"csv", Format::Csv}, {"json", Format::Json}};
  const auto at = formats.find(text);
  if (at == formats.end()) throw UsageError("--format is text, csv or json, not '" + text + "'");
  return at->second;
}

[[noreturn]] void printAndExit(const std::string& text) {
  writeTo("", text);
  std::exit(0);
}

}  // namespace

Options parse(int argc, char** argv) {
  Options options;
  std::string format = "text";
  const std::string all = "list speed accuracy verify";
  const std::map<std::string, Option> valued = {{"--format", {all, nullptr, 0, &format}},
                                                {"--output", {all, nullptr, 0, &options.output}},
                                                {"--library", {all, nullptr, 0, &options.library}},
                                                {"--processes", {"speed", &options.processes, 1}},
                                                {"--ms", {"speed", &options.budgetMs, 1}},
                                                {"--core", {"speed", &options.core, 0}},
                                                {"--beat", {"speed", nullptr, 0, &options.beat}},
                                                {"--csv", {"speed", nullptr, 0, &options.csv}},
                                                {"--level", {"speed", nullptr, 0, &options.level}},
                                                {"--trials", {"accuracy", &options.trials, 1}},
                                                {"--seed", {"accuracy verify", &options.seed, 0}}};
  const std::map<std::string, std::function<void()>> switches = {
      {"--quick", [&] { options.processes = 4, options.budgetMs = 5; }},
      {"--offset", [&] { options.offsetBytes = kOffsetBytes; }},
      {"--no-peers", [&] { options.ownOnly = true; }},
      {"--worker", [&] { options.isWorker = true; }}};
  std::vector<std::pair<std::string, std::string>> used;  // option, commands that have it
  for (int i = 1; i < argc; ++i) {
    const std::string word = argv[i];
    if (word == "--help") printAndExit(kUsage);
    if (word == "--version") {
      printAndExit("zvxg-bench " ZVXG_VERSION ", library " + versionOf(*zvxgenGetLibVersion()) +
                   "\n");
    }
    if (const auto at = valued.find(word); at != valued.end()) {
      const Option& option = at->second;
      if (++i == argc) throw UsageError(word + " needs a value");
      if (option.text) {
        *option.text = argv[i];
      } else {
        *option.number = numberFrom(word, argv[i], option.lowest);
      }
      used.emplace_back(word, option.commands);
    } else if (switches.contains(word)) {
      switches.at(word)();
      used.emplace_back(word, "speed");
    } else if (word.starts_with("-")) {
      throw UsageError("there is no option '" + word + "'; zvxg-bench --help lists them");
    } else if (options.command.empty()) {
      options.command = word;
    } else {
      options.filters.push_back(word);
    }
  }
  if (options.command.empty()) {
    throw UsageError("which command? zvxg-bench --help lists them");
  }
  if ((" " + all + " ").find(" " + options.command + " ") == std::string::npos) {
    throw UsageError("there is no command '" + options.command + "'; zvxg-bench --help lists them");
  }
  for (const auto& [word, commands] : used) {
    if (commands.find(options.command) == std::string::npos) {
      throw UsageError(options.command + " has no option " + word);
    }
  }
  options.format = formatFrom(format);
  return options;
}

}  // namespace bench
