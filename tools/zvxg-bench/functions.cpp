#include "functions.h"

#include <algorithm>
#include <map>
#include <sstream>

namespace bench {
namespace {

// The lines of tools/kernelgen/ledger.csv.
constexpr const char* kLedger[] = {
#include "ledger.inc"
};

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

std::string familyOf(const Function& function) {
  if (function.isEntry() && !function.isMany()) return "entries";
  const std::string many = function.isMany() ? "many-" : "";
  const std::string direction =
      function.direction == api::Direction::Forward ? "forward" : "inverse";
  switch (function.family) {
    case api::Family::Version: return "version";
    case api::Family::Complex: return many + "complex-" + direction;
    case api::Family::Hartley: return many + "hartley";
    case api::Family::Wht: return many + "wht";
    case api::Family::Dct4: return many + "dct4";
    case api::Family::Level: return "many-level";
    case api::Family::Real: break;
  }
  std::string layout = layoutName(function);
  for (char& c : layout) c = static_cast<char>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c);
  return many + "real-" + direction + "-" + layout;
}

int pointsOf(const Function& function) {
  if (!function.isKernel()) return 0;
  return function.family == api::Family::Wht ? 1 << function.first : function.first;
}

std::string elementType(const Function& function) {
  const std::string symbol = function.symbol;
  return function.bits ? symbol.substr(symbol.rfind('_') + 1) : "";
}

std::string layoutName(const Function& function) {
  switch (function.layout) {
    case api::Layout::None: return "";
    case api::Layout::Ccs: return "CCS";
    case api::Layout::Pack: return "Pack";
    case api::Layout::Perm: return "Perm";
  }
  return "";
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

bool Filters::mention(const std::string& word) const {
  return std::any_of(filters_.begin(), filters_.end(), [&](const Filter& filter) {
    return ("-" + filter.text + "-").find("-" + word + "-") != std::string::npos;
  });
}

void Filters::requireMatches() const {
  for (const Filter& filter : filters_) {
    if (!filter.matched) throw UsageError("nothing matches the filter '" + filter.text + "'");
  }
}

}  // namespace bench
