// Whether the library gives right results on this machine. Every transform has to be within a bound
// of its definition with each flag, to give the same bits wherever its arrays start and in place,
// to write what it should and nothing else, and to refuse what the header says that it refuses.

#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <memory>
#include <set>

#include "commands.h"
#include "functions.h"
#include "transforms.h"
#include "zvxg.h"

namespace bench {
namespace {

constexpr std::int32_t kFlags[] = {zvxDivFwdByN, zvxDivInvByN, zvxDivBySqrtN, zvxNoDiv};
constexpr std::int32_t kBadFlags[] = {0, 3, 5, 16, -1};
constexpr std::size_t kLineBytes = 64;  // the period of every alignment test

// More than twice the error of the worst of 64 trials at any length, which grows like the square
// root of the number of stages.
template <class T>
double bound(int n) {
  return 4 * (std::numeric_limits<T>::epsilon() / 2) * std::sqrt(1 + std::log2(n));
}

// The function that is being checked, should it bring the process down.
char running[64];

void tellCrash(int) {
  for (const char* text :
       {"\nzvxg-bench: the process crashed in ", static_cast<const char*>(running), "\n"}) {
    if (write(STDERR_FILENO, text, std::strlen(text)) < 0) break;
  }
  _exit(1);
}

// The checks of a family.
class Tally {
 public:
  explicit Tally(std::string family) : family_(std::move(family)) {}
  const std::string& family() const { return family_; }
  void begin(const Function& function) {
    current_ = function.symbol;
    functions_.insert(current_);
    std::snprintf(running, sizeof running, "%s", current_.c_str());
  }
  void expect(bool holds, const std::string& claim, int n = 0) {
    ++checks_;
    if (holds) return;
    if (failures_++ > 0) return;
    first_ = current_ + (n ? ", " + std::to_string(n) + " points" : "") + ": " + claim;
  }
  int failures() const { return failures_; }
  int checks() const { return checks_; }
  std::size_t functions() const { return functions_.size(); }
  Row row() const {
    return {family_, std::to_string(functions_.size()), std::to_string(checks_),
            std::to_string(failures_), first_};
  }

 private:
  std::string family_, current_, first_;
  std::set<std::string> functions_;
  int checks_ = 0, failures_ = 0;
};

// Memory that starts at a cache line.
template <class T>
class Memory {
 public:
  explicit Memory(std::size_t count)
      : count_(count),
        block_(static_cast<T*>(std::aligned_alloc(
                   kLineBytes, (count * sizeof(T) / kLineBytes + 1) * kLineBytes)),
               &std::free) {}
  T* data() { return block_.get(); }
  void fill(const std::vector<T>& numbers) {
    std::copy(numbers.begin(), numbers.end(), block_.get());
  }
  bool holds(const std::vector<T>& numbers) const {
    return std::memcmp(block_.get(), numbers.data(), count_ * sizeof(T)) == 0;
  }

 private:
  std::size_t count_;
  std::unique_ptr<T, decltype(&std::free)> block_;
};

template <class T>
class TransformCheck {
 public:
  TransformCheck(const Transform<T>& transform, const std::vector<T>& source, Tally& tally)
      : transform_(transform),
        source_(source),
        tally_(tally),
        sourceMemory_(source.size() + 2 * kLine),
        memory_(std::max(source.size(), size()) + 3 * kLine),
        result_(size()) {}

  void run() {
    checkValues();
    for (std::size_t from = 0; from < kLine; ++from) {
      for (std::size_t to = 0; to < kLine; ++to) checkPlace(from, to);
      checkInPlace(from);
    }
    checkRefusals();
  }

 private:
  static constexpr std::size_t kLine = kLineBytes / sizeof(T);
  static constexpr T kUntouched = std::numeric_limits<T>::quiet_NaN();

  std::size_t size() const { return static_cast<std::size_t>(transform_.destinationSize); }
  void expect(bool holds, const std::string& claim) { tally_.expect(holds, claim, transform_.n); }

  // `numbers` from an offset on, in memory that is not touched otherwise.
  std::vector<T> image(const std::vector<T>& numbers, std::size_t offset) const {
    std::vector<T> whole(std::max(source_.size(), size()) + 3 * kLine, kUntouched);
    std::copy(numbers.begin(), numbers.end(), whole.begin() + static_cast<std::ptrdiff_t>(offset));
    return whole;
  }

  void checkValues() {
    const Numbers expected = transform_.definition({source_.begin(), source_.end()});
    for (const std::int32_t flag : kFlags) {  // the last one leaves the result for the next checks
      std::fill(result_.begin(), result_.end(), kUntouched);
      const std::int32_t status = transform_.call(source_.data(), result_.data(), flag);
      expect(status == zvxOk, "status " + std::to_string(status));
      const long double factor = transform_.scaling == Scaling::None
                                     ? 1
                                     : scaleFactor(transform_.scaling, transform_.n, flag);
      const double error = relativeError(expected, result_, factor);
      expect(error <= bound<T>(transform_.n), "error " +
                                                  (std::isnan(error) ? "NaN" : threeDigits(error)) +
                                                  " with flag " + std::to_string(flag));
    }
  }

  void checkPlace(std::size_t from, std::size_t to) {
    T* const source = sourceMemory_.data() + from;
    std::copy(source_.begin(), source_.end(), source);
    memory_.fill(image({}, 0));
    transform_.call(source, memory_.data() + kLine + to, zvxNoDiv);
    expect(memory_.holds(image(result_, kLine + to)) &&
               std::memcmp(source, source_.data(), source_.size() * sizeof(T)) == 0,
           "other bits or other memory at offsets " + std::to_string(from) + " and " +
               std::to_string(to));
  }

  // What is behind a shorter result stays.
  void checkInPlace(std::size_t offset) {
    memory_.fill(image(source_, kLine + offset));
    T* const array = memory_.data() + kLine + offset;
    transform_.call(array, array, zvxNoDiv);
    std::vector<T> expected = source_;
    expected.resize(std::max(expected.size(), size()));
    std::copy(result_.begin(), result_.end(), expected.begin());
    expect(memory_.holds(image(expected, kLine + offset)),
           "other bits or other memory in place, at offset " + std::to_string(offset));
  }

  void checkRefusals() {
    const std::vector<T> untouched = image({}, 0);
    memory_.fill(untouched);
    const auto refuses = [&](const T* source, T* destination, std::int32_t flag,
                             std::int32_t expected) {
      const std::int32_t status = transform_.call(source, destination, flag);
      expect(status == expected, "status " + std::to_string(status) + " instead of " +
                                     std::to_string(expected) + ", flag " + std::to_string(flag));
    };
    for (const std::int32_t flag : {std::int32_t{zvxNoDiv}, kBadFlags[0], kBadFlags[1]}) {
      refuses(nullptr, memory_.data(), flag, zvxErrNullPointer);
      refuses(source_.data(), nullptr, flag, zvxErrNullPointer);
      refuses(nullptr, nullptr, flag, zvxErrNullPointer);
    }
    if (transform_.scaling != Scaling::None) {
      for (const std::int32_t flag : kBadFlags) {
        refuses(source_.data(), memory_.data(), flag, zvxErrScaleFlag);
      }
    }
    expect(memory_.holds(untouched), "a refused call wrote to its destination");
  }

  const Transform<T>& transform_;
  const std::vector<T>& source_;
  Tally& tally_;
  Memory<T> sourceMemory_, memory_;
  std::vector<T> result_;
};

// ---- What belongs to no one transform -----------------------------------------------------------

void checkEntry(const Library& library, const Function& function, Tally& tally) {
  const bool isWht = function.kind == Kind::WhtEntry;
  const auto entry =
      library.get<std::int32_t(const void*, void*, std::int32_t, std::int32_t, std::uint8_t*)>(
          function.symbol);
  double source[2 * kMaxLength] = {}, destination[2 * kMaxLength] = {};
  const int above = isWht ? kMaxOrder + 1 : kMaxLength + 1, below = isWht ? 0 : 1;
  for (const std::int32_t length : {above, below, -1, INT32_MAX, INT32_MIN}) {
    for (const std::int32_t flag : {std::int32_t{zvxNoDiv}, kBadFlags[1]}) {
      const std::string claim = "takes the length " + std::to_string(length);
      tally.expect(entry(source, destination, length, flag, nullptr) == zvxErrLength, claim);
      tally.expect(entry(nullptr, nullptr, length, flag, nullptr) == zvxErrLength, claim);
    }
  }
}

void checkBufferSize(const Library& library, const Function& function, Tally& tally) {
  constexpr std::uint32_t kBytes[] = {1024, 2048, 4096, 8192, 18432, 34816, 73728};
  constexpr int kFirstOrder = 8;
  const auto query = library.get<decltype(zvxgWHTGetBufferSize_32f)>(function.symbol);
  for (int order = 1; order <= kMaxOrder; ++order) {
    const int i = order - kFirstOrder + (function.bits == 64);
    const std::uint32_t expected = order < kFirstOrder ? 0 : kBytes[i];
    std::uint32_t size = 1;
    tally.expect(query(order, &size) == zvxOk && size == expected,
                 "size " + std::to_string(size) + " of order " + std::to_string(order));
  }
  for (const std::int32_t order : {0, kMaxOrder + 1, -1}) {
    std::uint32_t size = 1;
    tally.expect(query(order, &size) == zvxErrLength && size == 1,
                 "takes the order " + std::to_string(order));
  }
}

// Plans that can be made are run by transformsOf(); here are those that cannot.
void checkPlans(const Library& library, const Function& function, Tally& tally) {
  const std::string name = function.symbol.substr(0, function.symbol.rfind('_'));
  void* const address = library.get<void>(function.symbol);
  const std::int32_t tooLong = 1 << (function.bits == 32 ? 27 : 26);
  const std::int32_t badLengths[] = {0, 1, 3, 96, -1, tooLong};
  if (name == "zvxgDCT4GetSize") {
    const auto getSize = reinterpret_cast<decltype(&zvxgDCT4GetSize_32f)>(address);
    for (const std::int32_t length : badLengths) {
      std::uint32_t size = 1;
      tally.expect(getSize(length, &size) == zvxErrLength && size == 1,
                   "takes the length " + std::to_string(length));
    }
    for (const std::int32_t length : {2, 4096, tooLong / 2}) {
      std::uint32_t size = 0;
      tally.expect(getSize(length, &size) == zvxOk && size >= 256,
                   "no size for the length " + std::to_string(length));
    }
  } else if (name == "zvxgDCT4Init") {
    const auto init = reinterpret_cast<decltype(&zvxgDCT4Init_32f)>(address);
    alignas(kLineBytes) std::byte block[256];
    Dct4Spec* spec = nullptr;
    tally.expect(init(nullptr, 8, block) == zvxErrNullPointer, "takes no place for the plan");
    tally.expect(init(&spec, 8, nullptr) == zvxErrNullPointer && !spec, "takes no block");
    tally.expect(init(&spec, 3, block) == zvxErrLength && !spec, "takes the length 3");
  } else if (name == "zvxgDCT4InitAlloc") {
    const auto init = reinterpret_cast<decltype(&zvxgDCT4InitAlloc_32f)>(address);
    Dct4Spec* spec = nullptr;
    tally.expect(init(nullptr, 8) == zvxErrNullPointer, "takes no place for the plan");
    tally.expect(init(&spec, 3) == zvxErrLength && !spec, "takes the length 3");
  } else {
    const auto release = reinterpret_cast<decltype(&zvxgDCT4Free_32f)>(address);
    tally.expect(release(nullptr) == zvxErrNullPointer, "takes no plan");
  }
}

void checkVersion(const Library& library, const Function& function, Tally& tally) {
  const auto getVersion = library.get<decltype(zvxgenGetLibVersion)>(function.symbol);
  const VersionRecord* const version = getVersion();
  tally.expect(version && version == getVersion(), "no record, or not always the same");
  if (!version) return;
  for (const char* text : {version->fileName, version->versionText, version->buildDate}) {
    tally.expect(text && *text, "a text is missing");
  }
}

void checkFunction(const Library& library, const Function& function, int seed, Tally& tally) {
  const auto checkTransforms = [&]<class T>(T) {
    for (const Transform<T>& transform : transformsOf<T>(library, function)) {
      NormalNumbers random(seed, function.symbol, transform.n);
      TransformCheck<T>(transform, random.draw<T>(transform.sourceSize), tally).run();
    }
  };
  function.bits == 32 ? checkTransforms(float{}) : checkTransforms(double{});
  switch (function.kind) {
    case Kind::Entry:
    case Kind::WhtEntry: checkEntry(library, function, tally); break;
    case Kind::WhtBufferSize: checkBufferSize(library, function, tally); break;
    case Kind::Dct4Plan: checkPlans(library, function, tally); break;
    case Kind::Version: checkVersion(library, function, tally); break;
    case Kind::Kernel:
    case Kind::Wht:
    case Kind::Dct4: break;
  }
}

}  // namespace

Report verifyCommand(const Options& options) {
  const Library library(options.library);
  Filters filters(options.filters);
  std::vector<Tally> tallies;
  for (const int crash : {SIGSEGV, SIGBUS, SIGILL, SIGFPE}) std::signal(crash, tellCrash);
  {
    Progress progress;
    for (const Function& function : listFunctions()) {
      if (!filters.match(function.family, function.bits, function.symbol, function.n)) continue;
      auto tally = std::find_if(tallies.begin(), tallies.end(),
                                [&](const Tally& t) { return t.family() == function.family; });
      if (tally == tallies.end()) tally = tallies.emplace(tally, function.family);
      progress.show(function.symbol);
      tally->begin(function);
      try {
        checkFunction(library, function, options.seed, *tally);
      } catch (const std::runtime_error& error) {  // of a function that is missing, or no plan
        tally->expect(false, error.what());
      }
    }
  }
  filters.requireMatches();
  Report report;
  report.about = describeMachine(library.describe());
  report.columns = {{"family", true},
                    {"functions", false},
                    {"checks", false},
                    {"failures", false},
                    {"first failure", true}};
  Section& section = report.sections.emplace_back();
  std::size_t functions = 0;
  int checks = 0, failures = 0;
  for (const Tally& tally : tallies) {
    section.rows.push_back(tally.row());
    functions += tally.functions();
    checks += tally.checks();
    failures += tally.failures();
  }
  report.failed = failures > 0;
  report.closing = {"total: " + std::to_string(functions) + " functions, " +
                    std::to_string(checks) + " checks, " + std::to_string(failures) +
                    (failures == 1 ? " failure" : " failures")};
  return report;
}

}  // namespace bench
