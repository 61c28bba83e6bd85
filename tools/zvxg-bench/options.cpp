#include "options.h"

#include <cstdlib>
#include <functional>
#include <map>

#include "functions.h"
#include "zvxg.h"

namespace bench {
namespace {

constexpr int kOffsetBytes = 8;  // one element of 32fc and 64f; takes 64fc off its 16 bytes

constexpr char kUsage[] =
    R"(usage: zvxg-bench COMMAND [OPTION...] [FILTER...]

  list        every function of the library: family, type, length, layout, algorithm, operations
  speed       time of a call, beside that of FFTW where its libraries are installed
  accuracy    error of every transform on normally distributed numbers
  verify      whether the library gives right results on this machine; exit status 1 if not

FILTER is words joined by '-', each of them a part of "<family> <single|double> <symbol> <length>",
such as complex, complex-single, inverse-64fc, CToC_12_, dct4-4096. One match suffices.

  --format F        text, csv or json
  --output FILE     write there; the file appears when it is complete
  --library FILE    another build of libzvxg instead of the one this program runs with
  --help, --version

speed:
  --quick           the same as --processes 4 --ms 5, for a first look
  --processes K     number of worker processes (12)
  --ms T            milliseconds per case in each of them (16)
  --core C          core to run on (the last one allowed)
  --offset          our arrays 8 bytes off their alignment
  --no-peers        measure the library alone
  --beat FILE       CSV with the columns family, bits, n and ratio_to_beat, to compare with
  --csv FILE        write the results there as CSV as well

accuracy and verify:
  --trials K        arrays of numbers for each transform, of accuracy (64)
  --seed S          of the numbers (1)
)";

struct Option {
  std::string commands;  // that have it
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
      printAndExit("zvxg-bench " ZVXG_VERSION ", library " +
                   std::string(zvxgenGetLibVersion()->versionText) + "\n");
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
