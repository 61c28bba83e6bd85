// The functions of the library, and what the ledger knows of them.
#include <algorithm>

#include "commands.h"
#include "functions.h"
#include "library.h"

namespace bench {

Report listCommand(const Options& options) {
  Filters filters(options.filters);
  Report report;
  report.about = {{"library", Library(options.library).describe()}};
  report.columns = {
      {"symbol", true}, {"family", true}, {"type", true}, {"length", false}, {"layout", true}};
  for (const std::string& name : ledgerColumns()) {
    report.columns.push_back({name, name == "row" || name == "rows"});
  }
  Section& section = report.sections.emplace_back();
  for (const Function& f : api::functions()) {
    const int n = pointsOf(f);
    if (!filters.match(f, n)) continue;
    Row row = {f.symbol, familyOf(f), elementType(f), n ? std::to_string(n) : "", layoutName(f)};
    const std::vector<std::string> ledger = ledgerFields(f.symbol);
    row.insert(row.end(), ledger.begin(), ledger.end());
    section.rows.push_back(row);
  }
  filters.requireMatches();
  return report;
}

}  // namespace bench
