#include "report.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace bench {
namespace {

// Below, the call and the latency of one pass decide, and not the bound.
constexpr int kLongerLength = 12;

double best(const std::vector<double>& values) {
  return *std::min_element(values.begin(), values.end());
}

// How far the median process lies above the best one.
double spreadPercent(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return 100 * (values[values.size() / 2] / values.front() - 1);
}

// The fastest at this length.
std::size_t bestPeer(const Result& r) {
  const auto at = std::min_element(r.peerNs.begin(), r.peerNs.end(),
                                   [](const auto& a, const auto& b) { return best(a) < best(b); });
  return static_cast<std::size_t>(at - r.peerNs.begin());
}
const std::vector<double>& peerNs(const Result& r) { return r.peerNs[bestPeer(r)]; }
const std::string& peerName(const Result& r) { return r.subject.peers[bestPeer(r)].name; }

double ratio(const Result& r) { return best(peerNs(r)) / best(r.oursNs); }
// The ratio to beat is that of one program everywhere, however much another peer is ahead of it.
double firstRatio(const Result& r) { return best(r.peerNs[0]) / best(r.oursNs); }
bool isBehind(const Result& r) { return firstRatio(r) < r.ratioToBeat; }
double overBound(const Result& r) { return best(r.oursNs) * r.clockGhz / r.boundCycles; }
// What ours adds to the call that it makes.
double overhead(const Result& r) {
  return r.subject.oursCallsPeer ? best(r.oursNs) - best(peerNs(r)) : NAN;
}
double additionsPerNs(const Result& r) {
  return r.subject.additions ? r.subject.additions / best(r.oursNs) : NAN;
}
double sharePercent(const Result& r) { return r.subject.additions ? 100 / overBound(r) : NAN; }
double toBeat(const Result& r) { return r.ratioToBeat; }

// Screen and file show the same columns.
struct Column {
  const char* name;
  int decimals;
  double (*value)(const Result&);
  int width() const { return std::max(static_cast<int>(std::strlen(name)), 11) + 2; }
};

const Column kColumns[] = {
    {"n", 0, [](const Result& r) { return double(r.subject.n); }},
    {"ours_ns", 2, [](const Result& r) { return best(r.oursNs); }},
    {"ours_spread", 1, [](const Result& r) { return spreadPercent(r.oursNs); }},
    {"peer_ns", 2, [](const Result& r) { return best(peerNs(r)); }},
    {"peer_spread", 1, [](const Result& r) { return spreadPercent(peerNs(r)); }},
    {"ratio", 3, ratio},
    {"first_ratio", 3, [](const Result& r) { return r.peerNs.size() > 1 ? firstRatio(r) : NAN; }},
    {"overhead_ns", 2, overhead},
    {"clock_ghz", 3, [](const Result& r) { return r.clockGhz; }},
    {"bound_cycles", 1, [](const Result& r) { return r.boundCycles; }},
    {"bound_ns", 2, [](const Result& r) { return r.boundCycles / r.clockGhz; }},
    {"over_bound", 2, overBound},
    {"adds_per_ns", 2, additionsPerNs},
    {"share_of_adds", 1, sharePercent},
    {"to_beat", 2, toBeat},
};

std::string cell(const Column& column, const Result& result) {
  const double value = column.value(result);
  if (std::isnan(value)) return "";
  char text[32];
  std::snprintf(text, sizeof text, "%.*f", column.decimals, value);
  return text;
}

bool known(double (*value)(const Result&), const std::vector<Result>& group) {
  return std::any_of(group.begin(), group.end(),
                     [&](const Result& r) { return !std::isnan(value(r)); });
}

double geometricMean(const std::vector<Result>& group, double (*value)(const Result&)) {
  double logSum = 0;
  for (const Result& r : group) logSum += std::log(value(r));
  return std::exp(logSum / static_cast<double>(group.size()));
}

double median(const std::vector<Result>& group, double (*value)(const Result&)) {
  std::vector<double> values;
  for (const Result& r : group) values.push_back(value(r));
  std::sort(values.begin(), values.end());
  return (values[(values.size() - 1) / 2] + values[values.size() / 2]) / 2;
}

void printLengths(const char* title, const std::vector<Result>& group, auto&& condition) {
  std::printf("%s:", title);
  for (const Result& r : group) {
    if (condition(r)) std::printf(" %d", r.subject.n);
  }
  std::printf("\n");
}

void printGroup(const std::vector<Result>& group) {
  std::vector<Column> columns;
  std::copy_if(std::begin(kColumns), std::end(kColumns), std::back_inserter(columns),
               [&](const Column& column) { return known(column.value, group); });
  const Result& first = group.front();
  const std::vector<Peer>& peers = first.subject.peers;
  std::printf("\n%s, %s precision, against %s", first.subject.family.c_str(),
              first.subject.bits == 32 ? "single" : "double", peers[0].name.c_str());
  for (std::size_t i = 1; i < peers.size(); ++i) std::printf(" or %s", peers[i].name.c_str());
  std::printf("\n");
  for (const Column& column : columns) std::printf("%*s", column.width(), column.name);
  std::printf("\n");
  for (const Result& r : group) {
    for (const Column& column : columns) {
      std::printf("%*s", column.width(), cell(column, r).c_str());
    }
    if (peers.size() > 1) std::printf("  %s", peerName(r).c_str());
    std::printf("%s\n", isBehind(r) ? " behind" : "");
  }
  if (known(overhead, group)) {
    double sum = 0, most = overhead(group.front());
    for (const Result& r : group) sum += overhead(r), most = std::max(most, overhead(r));
    std::printf("overhead: mean of %zu %.2f ns, most %.2f ns\n", group.size(),
                sum / static_cast<double>(group.size()), most);
    return;
  }
  const Result& worst = *std::min_element(group.begin(), group.end(),
                                          [](auto& a, auto& b) { return ratio(a) < ratio(b); });
  std::printf("ratio: geometric mean of %zu %.3f, worst %.3f at %d\n", group.size(),
              geometricMean(group, ratio), ratio(worst), worst.subject.n);
  if (known(overBound, group)) {
    std::printf("over the bound: geometric mean %.3f", geometricMean(group, overBound));
    std::vector<Result> longer;
    std::copy_if(group.begin(), group.end(), std::back_inserter(longer),
                 [](const Result& r) { return r.subject.n >= kLongerLength; });
    if (!longer.empty()) {
      std::printf(", median from %d points %.3f", kLongerLength, median(longer, overBound));
    }
    std::printf("\n");
  }
  printLengths("ratio below 1", group, [](const Result& r) { return ratio(r) < 1; });
  if (known(toBeat, group)) {
    printLengths("behind the ratio to beat", group, isBehind);
  }
}

std::vector<std::string> fieldsOf(const std::string& line) {
  std::vector<std::string> fields;
  std::istringstream stream(line);
  for (std::string field; std::getline(stream, field, ',');) fields.push_back(field);
  return fields;
}

}  // namespace

std::map<std::string, double> readRatiosToBeat(const std::string& path) {
  std::ifstream file(path);
  std::string line;
  if (!std::getline(file, line)) throw std::runtime_error("cannot read " + path);
  const std::vector<std::string> head = fieldsOf(line);
  std::map<std::string, double> ratios;
  for (int lineNumber = 2; std::getline(file, line); ++lineNumber) {
    std::vector<std::string> row = fieldsOf(line);
    row.resize(head.size());  // a last empty field is not among the fields
    const auto field = [&](const char* name) {
      const auto at = std::find(head.begin(), head.end(), name);
      if (at == head.end()) throw std::runtime_error(path + " has no column " + name);
      return row[at - head.begin()];
    };
    const std::string ratio = field("ratio_to_beat");
    if (ratio.empty()) continue;
    char* end;
    const double value = std::strtod(ratio.c_str(), &end);
    if (*end) {
      throw std::runtime_error(path + ":" + std::to_string(lineNumber) + ": bad ratio " + ratio);
    }
    ratios[field("family") + "," + field("bits") + "," + field("n")] = value;
  }
  return ratios;
}

void printTables(const std::vector<Result>& results) {
  for (auto from = results.begin(); from != results.end();) {
    const auto to = std::find_if(from, results.end(), [&](const Result& r) {
      return r.subject.family != from->subject.family || r.subject.bits != from->subject.bits;
    });
    printGroup({from, to});
    from = to;
  }
}

void writeCsv(const std::string& path, const std::vector<std::string>& head,
              const std::vector<Result>& results) {
  const std::string unfinished = path + ".part";
  std::ofstream file(unfinished);
  for (const std::string& line : head) file << "# " << line << '\n';
  file << "family,bits,symbol,peer";
  for (const Column& column : kColumns) file << ',' << column.name;
  for (const Result& r : results) {
    file << '\n'
         << r.subject.family << ',' << r.subject.bits << ',' << r.subject.symbol << ','
         << peerName(r);
    for (const Column& column : kColumns) file << ',' << cell(column, r);
  }
  file << '\n';
  file.close();
  if (!file) {
    std::filesystem::remove(unfinished);
    throw std::runtime_error("cannot write " + path);
  }
  std::filesystem::rename(unfinished, path);
}

}  // namespace bench
