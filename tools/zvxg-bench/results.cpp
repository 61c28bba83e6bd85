#include "results.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace bench {
namespace {

// At shorter lengths the call and the latency of one pass decide, not the bound.
constexpr int kLongerLength = 12;

double best(const std::vector<double>& values) {
  return values.empty() ? NAN : *std::min_element(values.begin(), values.end());
}

// How far the median process is above the best one.
double spreadPercent(std::vector<double> values) {
  if (values.empty()) return NAN;
  std::sort(values.begin(), values.end());
  return 100 * (values[values.size() / 2] / values.front() - 1);
}

// The fastest peer at this length.
std::size_t bestPeer(const Result& r) {
  const auto at = std::min_element(r.peerNs.begin(), r.peerNs.end(),
                                   [](const auto& a, const auto& b) { return best(a) < best(b); });
  return static_cast<std::size_t>(at - r.peerNs.begin());
}
std::vector<double> peerNs(const Result& r) {
  return r.peerNs.empty() ? std::vector<double>() : r.peerNs[bestPeer(r)];
}
std::string peerName(const Result& r) {
  return r.peerNs.empty() ? "" : r.subject.peers[bestPeer(r)].name;
}

double ratio(const Result& r) { return best(peerNs(r)) / best(r.oursNs); }
double ratioTo(std::size_t peer, const Result& r) { return best(r.peerNs[peer]) / best(r.oursNs); }
// The ratio to beat refers to the same program at all lengths, even where another peer is faster.
double firstRatio(const Result& r) { return r.peerNs.empty() ? NAN : ratioTo(0, r); }
bool isBehind(const Result& r) { return firstRatio(r) < r.ratioToBeat; }
double overBound(const Result& r) { return best(r.oursNs) * r.clockGhz / r.boundCycles; }
// What our function adds to the call that it makes.
double overhead(const Result& r) {
  return r.subject.oursCallsPeer ? best(r.oursNs) - best(peerNs(r)) : NAN;
}
double additionsPerNs(const Result& r) {
  return r.subject.additions ? r.subject.additions / best(r.oursNs) : NAN;
}
double sharePercent(const Result& r) { return r.subject.additions ? 100 / overBound(r) : NAN; }

struct Figure {
  const char* name;
  int decimals;
  double (*value)(const Result&);
};

const Figure kFigures[] = {
    {"n", 0, [](const Result& r) { return double(r.subject.n); }},
    {"ours_ns", 2, [](const Result& r) { return best(r.oursNs); }},
    {"ours_spread", 1, [](const Result& r) { return spreadPercent(r.oursNs); }},
    {"peer_ns", 2, [](const Result& r) { return best(peerNs(r)); }},
    {"peer_spread", 1, [](const Result& r) { return spreadPercent(peerNs(r)); }},
    {"ratio", 3, ratio},
    {"first_ratio", 3, [](const Result& r) { return r.peerNs.size() > 1 ? firstRatio(r) : NAN; }},
    {"second_ratio", 3, [](const Result& r) { return r.peerNs.size() > 1 ? ratioTo(1, r) : NAN; }},
    {"overhead_ns", 2, overhead},
    {"clock_ghz", 3, [](const Result& r) { return r.clockGhz; }},
    {"bound_cycles", 1, [](const Result& r) { return r.boundCycles; }},
    {"bound_ns", 2, [](const Result& r) { return r.boundCycles / r.clockGhz; }},
    {"over_bound", 2, overBound},
    {"adds_per_ns", 2, additionsPerNs},
    {"share_of_adds", 1, sharePercent},
    {"to_beat", 2, [](const Result& r) { return r.ratioToBeat; }},
};

Row rowOf(const Result& r) {
  Row row = {r.subject.family, std::to_string(r.subject.bits), r.subject.symbol, peerName(r)};
  for (const Figure& figure : kFigures) row.push_back(number(figure.value(r), figure.decimals));
  row.push_back(isBehind(r) ? "behind" : "");
  return row;
}

using Group = std::vector<Result>;

bool known(double (*value)(const Result&), const Group& group) {
  return std::any_of(group.begin(), group.end(),
                     [&](const Result& r) { return !std::isnan(value(r)); });
}

double geometricMean(const Group& group, auto&& value) {
  double logSum = 0;
  for (const Result& r : group) logSum += std::log(value(r));
  return std::exp(logSum / static_cast<double>(group.size()));
}

double median(const Group& group, double (*value)(const Result&)) {
  std::vector<double> values;
  for (const Result& r : group) values.push_back(value(r));
  std::sort(values.begin(), values.end());
  return (values[(values.size() - 1) / 2] + values[values.size() / 2]) / 2;
}

std::string lengthsWhere(const std::string& title, const Group& group, auto&& condition) {
  std::string line = title + ":";
  for (const Result& r : group) {
    if (condition(r)) line += " " + std::to_string(r.subject.n);
  }
  return line;
}

std::string titleOf(const Case& subject) {
  std::string title =
      subject.family + ", " + (subject.bits == 32 ? "single" : "double") + " precision";
  const char* word = ", against ";
  for (const Peer& peer : subject.peers) {
    title += word + peer.name;
    word = " or ";
  }
  return title;
}

std::vector<std::string> summaryOf(const Group& group) {
  std::vector<std::string> lines;
  const std::string size = std::to_string(group.size());
  if (known(overhead, group)) {
    double sum = 0, most = overhead(group.front());
    for (const Result& r : group) sum += overhead(r), most = std::max(most, overhead(r));
    lines.push_back("overhead: mean of " + size + " " +
                    number(sum / static_cast<double>(group.size()), 2) + " ns, most " +
                    number(most, 2) + " ns");
    return lines;
  }
  if (known(ratio, group)) {
    const Result& worst = *std::min_element(group.begin(), group.end(),
                                            [](auto& a, auto& b) { return ratio(a) < ratio(b); });
    lines.push_back("ratio: geometric mean of " + size + " " +
                    number(geometricMean(group, ratio), 3) + ", worst " + number(ratio(worst), 3) +
                    " at " + std::to_string(worst.subject.n));
  }
  const std::vector<Peer>& peers = group.front().subject.peers;
  for (std::size_t i = 0; i < peers.size() && peers.size() > 1; ++i) {
    const auto of = [i](const Result& r) { return ratioTo(i, r); };
    const auto [worst, best] = std::minmax_element(group.begin(), group.end(),
                                                   [&](auto& a, auto& b) { return of(a) < of(b); });
    lines.push_back("against " + peers[i].name + ": geometric mean " +
                    number(geometricMean(group, of), 3) + ", from " + number(of(*worst), 3) +
                    " at " + std::to_string(worst->subject.n) + " to " + number(of(*best), 3) +
                    " at " + std::to_string(best->subject.n));
  }
  if (known(overBound, group)) {
    std::string line =
        "over the bound: geometric mean " + number(geometricMean(group, overBound), 3);
    Group longer;
    std::copy_if(group.begin(), group.end(), std::back_inserter(longer),
                 [](const Result& r) { return r.subject.n >= kLongerLength; });
    if (!longer.empty()) {
      line += ", median from " + std::to_string(kLongerLength) + " points " +
              number(median(longer, overBound), 3);
    }
    lines.push_back(line);
  }
  if (known(ratio, group)) {
    lines.push_back(
        lengthsWhere("ratio below 1", group, [](const Result& r) { return ratio(r) < 1; }));
  }
  if (known([](const Result& r) { return r.ratioToBeat; }, group)) {
    lines.push_back(lengthsWhere("behind the ratio to beat", group, isBehind));
  }
  return lines;
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
    row.resize(head.size());  // an empty last field is missing among the fields
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

Report reportOf(const std::vector<Result>& results) {
  Report report;
  report.columns = {
      {"family", true, true}, {"bits", false, true}, {"symbol", true, true}, {"peer", true}};
  for (const Figure& figure : kFigures) report.columns.push_back({figure.name, false});
  report.columns.push_back({"behind", true});
  for (auto from = results.begin(); from != results.end();) {
    const auto to = std::find_if(from, results.end(), [&](const Result& r) {
      return r.subject.family != from->subject.family || r.subject.bits != from->subject.bits;
    });
    const Group group(from, to);
    Section& section = report.sections.emplace_back();
    section.title = titleOf(from->subject);
    for (const Result& r : group) section.rows.push_back(rowOf(r));
    section.summary = summaryOf(group);
    from = to;
  }
  return report;
}

}  // namespace bench
