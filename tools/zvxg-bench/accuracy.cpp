// The error of every transform on normally distributed numbers, against its definition in long
// double: the L2 norm of the error over that of the result, as root mean square over the trials and
// at its worst.

#include <cmath>
#include <stdexcept>

#include "commands.h"
#include "functions.h"
#include "transforms.h"
#include "zvxg.h"

namespace bench {
namespace {

struct Error {
  double rms, worst;
};

template <class T>
Error errorOf(const Transform& transform, const Call& call, NormalNumbers& random, int trials) {
  double squares = 0, worst = 0;
  for (int trial = 0; trial < trials; ++trial) {
    const std::vector<T> source = random.draw<T>(transform.sourceBytes / sizeof(T));
    std::vector<T> result(transform.destinationBytes / sizeof(T));
    if (call(source.data(), result.data(), zvxNoDiv) != zvxOk) {
      throw std::runtime_error("a transform of " + std::to_string(transform.points) +
                               " points refused its arguments");
    }
    const double error =
        relativeError(reference::definition(transform, {source.begin(), source.end()}), result);
    squares += error * error;
    if (!(error <= worst)) worst = error;  // also if it is no number
  }
  return {std::sqrt(squares / trials), worst};
}

// Takes the rows of a family and precision, in turn.
class FamilySection {
 public:
  explicit FamilySection(const Function& function) {
    section_.title =
        familyOf(function) + ", " + (function.bits == 32 ? "single" : "double") + " precision";
  }
  bool isOf(const Function& function) const {
    return FamilySection(function).section_.title == section_.title;
  }
  void add(const Function& function, int n, const Error& error) {
    section_.rows.push_back({familyOf(function), std::to_string(function.bits), function.symbol,
                             std::to_string(n), threeDigits(error.rms), threeDigits(error.worst)});
    squares_ += error.rms * error.rms;
    if (!(error.worst <= worst_)) worst_ = error.worst, worstLength_ = n;
  }
  Section finish() {
    const auto count = static_cast<double>(section_.rows.size());
    section_.summary = {"rms of " + std::to_string(section_.rows.size()) + " transforms " +
                        threeDigits(std::sqrt(squares_ / count)) + ", worst trial " +
                        threeDigits(worst_) + " at " + std::to_string(worstLength_)};
    return section_;
  }

 private:
  Section section_;
  double squares_ = 0, worst_ = 0;
  int worstLength_ = 0;
};

}  // namespace

Report accuracyCommand(const Options& options) {
  const Library library(options.library);
  Filters filters(options.filters);
  Report report;
  report.about = describeMachine(library.describe());
  report.about.emplace_back("numbers", "normally distributed, seed " +
                                           std::to_string(options.seed) +
                                           ", trials of each: " + std::to_string(options.trials));
  report.about.emplace_back("error", "L2 norm of the error over that of the result");
  report.columns = {{"family", true, true}, {"bits", false, true}, {"symbol", true},
                    {"n", false},           {"rms", false},        {"worst", false}};
  std::vector<FamilySection> sections;
  Progress progress;
  const std::vector<Function> functions = library.functions();
  const api::Exports exports(functions);
  for (const Function& function : functions) {
    if (function.isEntry()) continue;
    for (const Transform& transform : transformsOf(exports, function)) {
      const int n = transform.points;
      if (!filters.match(function, n)) continue;
      library.get<void>(function.symbol);
      progress.show(std::string(function.symbol) + ", " + std::to_string(n) + " points");
      NormalNumbers random(options.seed, function.symbol, n);
      if (sections.empty() || !sections.back().isOf(function)) sections.emplace_back(function);
      const Call call(exports, transform);
      sections.back().add(function, n,
                          function.bits == 32
                              ? errorOf<float>(transform, call, random, options.trials)
                              : errorOf<double>(transform, call, random, options.trials));
    }
  }
  filters.requireMatches();
  for (FamilySection& section : sections) report.sections.push_back(section.finish());
  return report;
}

}  // namespace bench
