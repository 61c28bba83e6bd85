// What the program says of the exported functions: their families and, of kernels, the ledger of
// operation counts, which is compiled in; and the filters of its commands.
#pragma once

#include <stdexcept>
#include <string>
#include <vector>

#include "interface.h"

namespace bench {

using api::Function;

std::string familyOf(const Function& function);  // such as complex-forward
int pointsOf(const Function& function);          // 0 where the length is an argument

std::string elementType(const Function& function);  // the end of the name: 32fc, 32f, 64fc, 64f
std::string layoutName(const Function& function);   // of a half spectrum

const std::vector<std::string>& ledgerColumns();
// The fields of a kernel, by column; of another function as many empty ones.
std::vector<std::string> ledgerFields(const std::string& symbol);

// What the user did wrong, in a line.
struct UsageError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// What of the commands' cases is asked for. A filter is words joined by '-', each of them a part of
// "<family> <single|double> <symbol> <length>"; without a filter everything matches.
class Filters {
 public:
  explicit Filters(const std::vector<std::string>& filters);
  bool match(const std::string& family, int bits, const std::string& symbol, int n);
  bool match(const Function& function, int n) {
    return match(familyOf(function), function.bits, function.symbol, n);
  }
  // Whether a filter has the word.
  bool mention(const std::string& word) const;
  // Throws UsageError if there is a filter that nothing has matched.
  void requireMatches() const;

 private:
  struct Filter {
    std::string text;
    bool matched;
  };
  std::vector<Filter> filters_;
};

}  // namespace bench
