// zvxg_bench: every function of the library against its peers, in one run on one core.
//
// The program starts itself as a worker several times over and keeps, per case and side, the
// smallest time of all workers: a worker has one placement of code and data in memory and one
// choice of FFTW plans, and neither side should be judged by an unlucky one.

#include <fftw3.h>
#include <sched.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <stdexcept>

#include "counts.h"
#include "kernels.h"
#include "measure.h"
#include "report.h"

namespace {

using namespace bench;

constexpr int kOffsetBytes = 8;  // one element of 32fc and 64f; takes 64fc off its 16 bytes

constexpr char kUsage[] =
    R"(usage: zvxg_bench [OPTION...] [FILTER...]
FILTER is words joined by '-', each of them a part of "<family> <single|double> <symbol> <length>",
such as complex, complex-single, inverse-64fc, CToC_12_, dct4-4096. One match suffices.
  --quick          the same as --processes 4 --ms 5, for a first look
  --processes K    number of worker processes (12)
  --ms T           milliseconds per case in each of them (16)
  --core C         core to run on (the last one allowed)
  --offset         our arrays 8 bytes off their alignment
  --library FILE   measure this shared library instead of the one of this build
  --beat FILE      CSV with the columns family, bits, n and ratio_to_beat, to compare with
  --csv FILE       write the results there
)";

struct Options {
  std::vector<std::string> filters;
  std::string library = ZVXG_LIBRARY, beat, csv;
  int processes = 12, budgetMs = 16, core = -1, offsetBytes = 0;
  bool worker = false;
};

int numberFrom(const std::string& text, int lowest) {
  char* end;
  const long value = std::strtol(text.c_str(), &end, 10);
  if (text.empty() || *end || value < lowest || value > 100000) {
    throw std::runtime_error("not a number from " + std::to_string(lowest) + " up: " + text);
  }
  return static_cast<int>(value);
}

int lastAllowedCore() {
  cpu_set_t set;
  if (sched_getaffinity(0, sizeof set, &set) != 0) throw std::runtime_error("no affinity mask");
  int core = CPU_SETSIZE - 1;
  while (core > 0 && !CPU_ISSET(core, &set)) --core;
  return core;
}

Options parse(int argc, char** argv) {
  Options options;
  const std::map<std::string, int*> numbers = {
      {"--processes", &options.processes}, {"--ms", &options.budgetMs}, {"--core", &options.core}};
  const std::map<std::string, std::string*> texts = {
      {"--library", &options.library}, {"--beat", &options.beat}, {"--csv", &options.csv}};
  for (int i = 1; i < argc; ++i) {
    const std::string word = argv[i];
    if (word == "--help") {
      std::fputs(kUsage, stdout);
      std::exit(0);
    } else if (word == "--quick") {
      options.processes = 4;
      options.budgetMs = 5;
    } else if (word == "--offset") {
      options.offsetBytes = kOffsetBytes;
    } else if (word == "--worker") {
      options.worker = true;
    } else if (numbers.contains(word) || texts.contains(word)) {
      if (++i == argc) throw std::runtime_error(word + " needs a value");
      if (texts.contains(word)) {
        *texts.at(word) = argv[i];
      } else {
        *numbers.at(word) = numberFrom(argv[i], word == "--core" ? 0 : 1);
      }
    } else if (word.starts_with("-")) {
      throw std::runtime_error("unknown option " + word + ", see --help");
    } else {
      options.filters.push_back(word);
    }
  }
  if (options.core < 0) options.core = lastAllowedCore();
  return options;
}

// Holds this process and the workers it starts.
void pinToCore(int core) {
  cpu_set_t set;
  CPU_ZERO(&set);
  CPU_SET(core, &set);
  if (sched_setaffinity(0, sizeof set, &set) != 0) {
    throw std::runtime_error("cannot run on core " + std::to_string(core));
  }
}

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
void collectFromWorker(int argc, char** argv, std::vector<Result>& results) {
  std::vector<char*> arguments(argv, argv + argc);
  char workerOption[] = "--worker";
  arguments.push_back(workerOption);
  arguments.push_back(nullptr);
  int ends[2];
  const pid_t child = pipe(ends) == 0 ? fork() : -1;
  if (child < 0) throw std::runtime_error("cannot start a worker process");
  if (child == 0) {
    dup2(ends[1], STDOUT_FILENO);
    close(ends[0]);
    close(ends[1]);
    execv("/proc/self/exe", arguments.data());
    _exit(127);
  }
  close(ends[1]);
  FILE* const lines = fdopen(ends[0], "r");
  std::size_t index, received = 0;
  double oursNs, clockGhz;
  while (received < results.size() &&
         std::fscanf(lines, "%zu %lf %lf", &index, &oursNs, &clockGhz) == 3 && index == received) {
    Result& result = results[received];
    const bool complete =
        std::all_of(result.peerNs.begin(), result.peerNs.end(), [&](std::vector<double>& ofPeer) {
          return std::fscanf(lines, "%lf", &ofPeer.emplace_back()) == 1;
        });
    if (!complete) break;
    result.oursNs.push_back(oursNs);
    result.clockGhz = std::max(result.clockGhz, clockGhz);
    ++received;
  }
  std::fclose(lines);
  int status;
  waitpid(child, &status, 0);
  if (status != 0 || received != results.size()) {
    throw std::runtime_error("a worker failed" + (received < results.size()
                                                      ? " at " + results[received].subject.symbol
                                                      : std::string()));
  }
}

void addBounds(std::vector<Result>& results) {
  for (Result& r : results) {  // two additions per cycle, of 128 bits
    if (r.subject.additions) r.boundCycles = r.subject.additions / (128.0 / r.subject.bits) / 2;
  }
  for (const kernelgen::KernelId& id : kernelgen::kernelList()) {
    const std::string symbol = id.symbol();
    const auto at = std::find_if(results.begin(), results.end(),
                                 [&](const Result& r) { return r.subject.symbol == symbol; });
    if (at != results.end()) at->boundCycles = counts(kernelgen::makeKernel(id)).bound;
  }
}

// The first value of a key in /proc/cpuinfo.
std::string cpuInfo(const std::string& key) {
  std::ifstream file("/proc/cpuinfo");
  for (std::string line; std::getline(file, line);) {
    if (line.rfind(key + "\t", 0) == 0) return line.substr(line.find(':') + 2);
  }
  return "unknown";
}

std::vector<std::string> describeRun(const Options& options) {
  char date[32];
  const std::time_t now = std::time(nullptr);
  std::strftime(date, sizeof date, "%Y-%m-%d %H:%M UTC", std::gmtime(&now));
  return {std::string("date: ") + date,
          "cpu: " + cpuInfo("model name") + ", family " + cpuInfo("cpu family") + ", model " +
              cpuInfo("model") + "; clock_ghz by a chain of additions in the same run",
          "library: " + options.library,
          "bench built with: " ZVXG_COMPILER,
          std::string("FFTW: ") + fftwf_version + ", " + fftw_version +
              ", FFTW_MEASURE, and may destroy a spectrum",
          "best of " + std::to_string(options.processes) + " processes on core " +
              std::to_string(options.core) + ", our arrays " +
              (options.offsetBytes ? "off their alignment" : "aligned"),
          "ns: shortest of all; spread: percent from there to the median process",
          "ratio: peer / ours, of several peers the fastest at that length; first_ratio, to_beat: "
          "of the one named first"};
}

int run(int argc, char** argv) {
  const Options options = parse(argc, argv);
  const CaseList list = listCases(options.library, options.filters);
  if (options.worker) {
    work(list.cases, options);
    return 0;
  }
  if (list.cases.empty()) throw std::runtime_error("no case matches a filter");
  std::map<std::string, double> toBeat;
  if (!options.beat.empty()) toBeat = readRatiosToBeat(options.beat);
  std::vector<Result> results;
  for (const Case& subject : list.cases) {
    Result& result = results.emplace_back();
    result.subject = subject;
    result.peerNs.resize(subject.peers.size());
    const auto at = toBeat.find(subject.family + "," + std::to_string(subject.bits) + "," +
                                std::to_string(subject.n));
    if (at != toBeat.end()) result.ratioToBeat = at->second;
  }
  addBounds(results);
  pinToCore(options.core);
  for (int process = 1; process <= options.processes; ++process) {
    std::fprintf(stderr, "process %d of %d\n", process, options.processes);
    collectFromWorker(argc, argv, results);
  }
  const std::vector<std::string> head = describeRun(options);
  for (const std::string& line : head) std::printf("%s\n", line.c_str());
  printTables(results);
  if (list.missing) std::printf("\nnot in the library, so left out: %d functions\n", list.missing);
  if (!options.csv.empty()) writeCsv(options.csv, head, results);
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return run(argc, argv);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "zvxg_bench: %s\n", error.what());
    return 1;
  }
}
