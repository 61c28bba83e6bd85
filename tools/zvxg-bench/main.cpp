// zvxg-bench: lists, measures and verifies the functions of the library.

#include <cstdio>
#include <ctime>
#include <exception>
#include <fstream>

#include "commands.h"
#include "functions.h"

namespace bench {
namespace {

// The first value of a key in /proc/cpuinfo.
std::string cpuInfo(const std::string& key) {
  std::ifstream file("/proc/cpuinfo");
  for (std::string line; std::getline(file, line);) {
    if (line.rfind(key + "\t", 0) == 0) return line.substr(line.find(':') + 2);
  }
  return "unknown";
}

Report run(const Options& options, int argc, char** argv) {
  if (options.command == "list") return listCommand(options);
  if (options.command == "speed") return speedCommand(options, argc, argv);
  if (options.command == "accuracy") return accuracyCommand(options);
  return verifyCommand(options);
}

}  // namespace

About describeMachine(const std::string& library) {
  char date[32];
  const std::time_t now = std::time(nullptr);
  std::strftime(date, sizeof date, "%Y-%m-%d %H:%M UTC", std::gmtime(&now));
  return {{"date", date},
          {"cpu", cpuInfo("model name") + ", family " + cpuInfo("cpu family") + ", model " +
                      cpuInfo("model")},
          {"library", library},
          {"built with", ZVXG_COMPILER}};
}

}  // namespace bench

int main(int argc, char** argv) {
  try {
    const bench::Options options = bench::parse(argc, argv);
    if (!options.output.empty()) bench::requireWritable(options.output);
    const bench::Report report = bench::run(options, argc, argv);
    bench::writeTo(options.output, bench::print(report, options.format));
    return report.failed ? 1 : 0;
  } catch (const bench::UsageError& error) {
    std::fprintf(stderr, "zvxg-bench: %s\n", error.what());
    return 2;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "zvxg-bench: %s\n", error.what());
    return 1;
  }
}
