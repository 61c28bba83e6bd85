// zvxg-bench: lists, measures and verifies the functions of the library.

#include <cpuid.h>

#include <cstdio>
#include <cstring>
#include <ctime>
#include <exception>

#include "commands.h"
#include "functions.h"

namespace bench {
namespace {

// As the processor tells it by itself. Numbers that do not fit their first place have another.
std::string describeProcessor() {
  constexpr unsigned kNames = 0x80000002;
  unsigned words[12] = {}, signature = 0, other;
  for (unsigned i = 0; i < 3; ++i) {
    unsigned* const at = words + 4 * i;
    __get_cpuid(kNames + i, at, at + 1, at + 2, at + 3);
  }
  char name[sizeof words + 1] = {};
  std::memcpy(name, words, sizeof words);
  __get_cpuid(1, &signature, &other, &other, &other);
  unsigned family = signature >> 8 & 15, model = signature >> 4 & 15;
  if (family >= 6) model += (signature >> 16 & 15) << 4;
  if (family == 15) family += signature >> 20 & 255;
  std::string text = name;
  text.erase(0, text.find_first_not_of(' '));
  text.erase(text.find_last_not_of(' ') + 1);
  return text + ", family " + std::to_string(family) + ", model " + std::to_string(model);
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
          {"cpu", describeProcessor()},
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
