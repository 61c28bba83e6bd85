// Every function that the library exports: the kernels, by the list of their generator, and the few
// families beside them. What is known of each follows from its row here and from the ledger of
// operation counts, which is compiled in.
#pragma once

#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "kernel_id.h"  // kernelgen

namespace bench {

enum class Kind {
  Kernel,
  Wht,
  Entry,
  WhtEntry,
  WhtBufferSize,
  Dct4,
  Dct4Plan,  // what makes plans, and drops them
  Version
};

struct Function {
  std::string symbol;
  std::string family;  // such as complex-forward
  Kind kind;
  int bits = 0;  // of a real number: 32 or 64; 0 of a function that takes none
  int n = 0;     // points; 0 where the length is an argument
  std::optional<kernelgen::KernelId> kernel = {};  // an entry has that of its longest kernel
};

constexpr int kMaxLength = 64;
constexpr int kMaxOrder = 13;

// In the order of the header.
std::vector<Function> listFunctions();

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
