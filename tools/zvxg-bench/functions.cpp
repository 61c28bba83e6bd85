#include "functions.h"

#include <algorithm>
#include <map>
#include <sstream>

namespace bench {
namespace {

using kernelgen::Direction;
using kernelgen::Family;
using kernelgen::KernelId;

// The lines of tools/kernelgen/ledger.csv.
constexpr const char* kLedger[] = {
#include "ledger.inc"
};

std::string lowercase(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(), [](unsigned char c) {
    return static_cast<char>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c);
  });
  return text;
}

constexpr const char* kLayouts[] = {"", "CCS", "Pack", "Perm"};

std::string familyOf(const KernelId& id) {
  if (id.family == Family::Hartley) return "hartley";
  const std::string direction = id.direction == Direction::Forward ? "forward" : "inverse";
  if (id.family == Family::Complex) return "complex-" + direction;
  return "real-" + direction + "-" + lowercase(kLayouts[static_cast<int>(id.layout)]);
}

int bitsOf(const KernelId& id) { return id.precision == kernelgen::Precision::Single ? 32 : 64; }

bool hasWords(const std::string& label, const std::string& filter) {
  std::istringstream words(filter);
  for (std::string word; std::getline(words, word, '-');) {
    if (label.find(word) == std::string::npos) return false;
  }
  return true;
}

// Fields are bare or, where they contain commas, between quotes.
std::vector<std::string> fieldsOf(const char* line) {
  std::vector<std::string> fields(1);
  bool quoted = false;
  for (; *line; ++line) {
    if (*line == '"') {
      quoted = !quoted;
    } else if (*line == ',' && !quoted) {
      fields.emplace_back();
    } else {
      fields.back() += *line;
    }
  }
  return fields;
}

std::vector<std::string> withoutSymbol(std::vector<std::string> fields) {
  fields.erase(fields.begin());
  return fields;
}

}  // namespace

std::vector<Function> listFunctions() {
  std::vector<Function> functions = {{"zvxgenGetLibVersion", "version", Kind::Version}};
  for (const KernelId& id : kernelgen::kernelList()) {
    functions.push_back({id.symbol(), familyOf(id), Kind::Kernel, bitsOf(id), id.length, id});
    if (id.length == kMaxLength) {
      functions.push_back({id.entrySymbol(), "entries", Kind::Entry, bitsOf(id), 0, id});
    }
  }
  for (const int bits : {32, 64}) {
    const std::string type = "_" + std::to_string(bits) + "f";
    for (int order = 1; order <= kMaxOrder; ++order) {
      functions.push_back(
          {"zvxgWHT_" + std::to_string(order) + type, "wht", Kind::Wht, bits, 1 << order});
    }
    functions.push_back({"zvxgWHT" + type, "entries", Kind::WhtEntry, bits});
    functions.push_back({"zvxgWHTGetBufferSize" + type, "wht", Kind::WhtBufferSize, bits});
    functions.push_back({"zvxgDCT4" + type, "dct4", Kind::Dct4, bits});
    for (const char* name : {"GetSize", "Init", "InitAlloc", "Free"}) {
      functions.push_back({std::string("zvxgDCT4") + name + type, "dct4", Kind::Dct4Plan, bits});
    }
  }
  return functions;
}

std::string elementType(const Function& function) {
  return function.bits ? function.symbol.substr(function.symbol.rfind('_') + 1) : "";
}

std::string layoutName(const Function& function) {
  return function.kernel ? kLayouts[static_cast<int>(function.kernel->layout)] : "";
}

const std::vector<std::string>& ledgerColumns() {
  static const std::vector<std::string> kColumns = withoutSymbol(fieldsOf(kLedger[0]));
  return kColumns;
}

std::vector<std::string> ledgerFields(const std::string& symbol) {
  static const auto kRows = [] {
    std::map<std::string, std::vector<std::string>> rows;
    for (const char* line : kLedger) {
      std::vector<std::string> fields = fieldsOf(line);
      rows[fields[0]] = withoutSymbol(fields);
    }
    return rows;
  }();
  const auto at = kRows.find(symbol);
  return at != kRows.end() ? at->second : std::vector<std::string>(ledgerColumns().size());
}

Filters::Filters(const std::vector<std::string>& filters) {
  for (const std::string& text : filters) filters_.push_back({text, false});
}

bool Filters::match(const std::string& family, int bits, const std::string& symbol, int n) {
  const char* const precision = bits == 32 ? " single " : bits == 64 ? " double " : " ";
  const std::string label = family + precision + symbol + (n ? " " + std::to_string(n) : "") + " ";
  bool any = filters_.empty();
  for (Filter& filter : filters_) {
    if (!hasWords(label, filter.text)) continue;
    filter.matched = true;
    any = true;
  }
  return any;
}

void Filters::requireMatches() const {
  for (const Filter& filter : filters_) {
    if (!filter.matched) throw UsageError("nothing matches the filter '" + filter.text + "'");
  }
}

}  // namespace bench
