// Every function of the library against its peers, in one run on one core.
//
// The program starts itself several times as a worker and keeps, for each case and side, the
// smallest time of all workers. In a worker the placement of code and data in memory and the choice
// of FFTW plans are fixed, and neither side should be judged by unlucky ones.

#include <algorithm>
#include <cstdio>
#include <stdexcept>

#include "commands.h"
#include "fftw.h"
#include "functions.h"
#include "many_cases.h"
#include "measure.h"
#include "results.h"
#include "system.h"

namespace bench {
namespace {

// Prints "<index> <ours> <clock> <peer>..." per case for the driver.
void work(const std::vector<Case>& cases, const Options& options) {
  for (std::size_t i = 0; i < cases.size(); ++i) {
    const Times times = measure(cases[i], options.budgetMs, options.offsetBytes);
    std::printf("%zu %.6g %.6g", i, times.oursNs, times.clockGhz);
    for (double ns : times.peerNs) std::printf(" %.6g", ns);
    std::printf("\n");
    std::fflush(stdout);
  }
}

// Runs this program with the same arguments as a worker and adds what it measured.
void collectFromWorker(int argc, char** argv, std::vector<Result>& results,
                       const std::string& title, Progress& progress) {
  std::vector<std::string> arguments(argv, argv + argc);
  arguments.push_back("--worker");
  const Worker worker = startWorker(std::move(arguments));
  std::size_t index, received = 0;
  double oursNs, clockGhz;
  while (received < results.size() &&
         std::fscanf(worker.output, "%zu %lf %lf", &index, &oursNs, &clockGhz) == 3 &&
         index == received) {
    Result& result = results[received];
    const bool complete =
        std::all_of(result.peerNs.begin(), result.peerNs.end(), [&](std::vector<double>& ofPeer) {
          return std::fscanf(worker.output, "%lf", &ofPeer.emplace_back()) == 1;
        });
    if (!complete) break;
    result.oursNs.push_back(oursNs);
    result.clockGhz = std::max(result.clockGhz, clockGhz);
    ++received;
    progress.show(title + ", case " + std::to_string(received) + " of " +
                  std::to_string(results.size()));
  }
  if (!endWorker(worker) || received != results.size()) {
    throw std::runtime_error("a worker failed" + (received < results.size()
                                                      ? " at " + results[received].subject.symbol
                                                      : std::string()));
  }
}

// The bound from the ledger. For a transform that consists of additions, two 128-bit additions per
// cycle.
double boundOf(const Case& subject) {
  if (subject.additions) return subject.additions / (128.0 / subject.bits) / 2;
  const auto& columns = ledgerColumns();
  const auto at = std::find(columns.begin(), columns.end(), "bound") - columns.begin();
  const std::string bound = ledgerFields(subject.symbol).at(at);
  return bound.empty() ? NAN : std::stod(bound);
}

template <class T>
std::string describeFftw() {
  return Fftw<T>::isPresent() ? Fftw<T>::get().version : "no " + Fftw<T>::file() + ", so no peers";
}

About describeRun(const Options& options, const std::string& library, int core) {
  About about = describeMachine(library);
  about.emplace_back("clock", "clock_ghz is measured by a chain of additions in the same run");
  about.emplace_back("FFTW, single", describeFftw<float>());
  about.emplace_back("FFTW, double", describeFftw<double>());
  about.emplace_back("plans", "FFTW_MEASURE; those from spectra may destroy their source");
  about.emplace_back("run", "best of " + std::to_string(options.processes) + " processes on core " +
                                std::to_string(core) + ", our arrays " +
                                (options.offsetBytes ? "off their alignment" : "aligned"));
  about.emplace_back("ns", "shortest of all; spread: percent from there to the median process");
  about.emplace_back(
      "ratio",
      "peer / ours, for the fastest peer at each length; first_ratio and to_beat: for "
      "the peer named first");
  return about;
}

}  // namespace

Report speedCommand(const Options& options, int argc, char** argv) {
  const Library library(options.library);
  limitManyLevel(options.level);
  Filters filters(options.filters);
  const CaseList list = listCases(library, filters, options.ownOnly ? Peers::None : Peers::All);
  if (options.isWorker) {
    work(list.cases, options);
    std::exit(0);
  }
  filters.requireMatches();
  std::map<std::string, double> toBeat;
  if (!options.beat.empty()) toBeat = readRatiosToBeat(options.beat);
  if (!options.csv.empty()) requireWritable(options.csv);
  std::vector<Result> results;
  for (const Case& subject : list.cases) {
    Result& result = results.emplace_back();
    result.subject = subject;
    result.peerNs.resize(subject.peers.size());
    result.boundCycles = boundOf(subject);
    const auto at = toBeat.find(subject.family + "," + std::to_string(subject.bits) + "," +
                                std::to_string(subject.n));
    if (at != toBeat.end()) result.ratioToBeat = at->second;
  }
  const int core = options.core < 0 ? lastAllowedCore() : options.core;
  if (!pinToCore(core)) throw UsageError("cannot run on core " + std::to_string(core));
  {
    Progress progress;
    for (int process = 1; process <= options.processes; ++process) {
      const std::string title =
          "process " + std::to_string(process) + " of " + std::to_string(options.processes);
      collectFromWorker(argc, argv, results, title, progress);
    }
  }
  Report report = reportOf(results);
  report.about = describeRun(options, library.describe(), core);
  if (list.missing) {
    report.closing.push_back("not in the library, so left out: " + std::to_string(list.missing) +
                             " functions");
  }
  if (!options.csv.empty()) writeTo(options.csv, print(report, Format::Csv));
  return report;
}

}  // namespace bench
