// Whether the library gives right results on this machine. Every transform has to be within a bound
// of its definition with each flag, to give the same bits wherever its arrays start and in place,
// to write what it should and nothing else, and to refuse what the header says that it refuses. A
// function of libzvxgmany does so with one transform, and with many has the bits of single calls in
// all layouts, at each level of the processor.

#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <memory>
#include <set>

#include "aligned.h"
#include "commands.h"
#include "functions.h"
#include "system.h"
#include "transforms.h"
#include "zvxg_many.h"

namespace bench {
namespace {

using api::asArgument;
using api::Role;

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
    if (write(STDERR_FILENO, text, static_cast<unsigned>(std::strlen(text))) < 0) break;
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
      : count_(count), block_(api::alignedMemory<T>(kLineBytes, count * sizeof(T) + 1)) {}
  T* data() { return block_.get(); }
  void fill(const std::vector<T>& numbers) {
    std::copy(numbers.begin(), numbers.end(), block_.get());
  }
  bool holds(const std::vector<T>& numbers) const {
    return std::memcmp(block_.get(), numbers.data(), count_ * sizeof(T)) == 0;
  }

 private:
  std::size_t count_;
  std::shared_ptr<T> block_;
};

template <class T>
class TransformCheck {
 public:
  TransformCheck(const Transform& transform, const Call& call, const std::vector<T>& source,
                 Tally& tally)
      : transform_(transform),
        call_(call),
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

  std::size_t size() const { return transform_.destinationBytes / sizeof(T); }
  void expect(bool holds, const std::string& claim) {
    tally_.expect(holds, claim, transform_.points);
  }

  // `numbers` from an offset on, in memory that is not touched otherwise.
  std::vector<T> image(const std::vector<T>& numbers, std::size_t offset) const {
    std::vector<T> whole(std::max(source_.size(), size()) + 3 * kLine, kUntouched);
    std::copy(numbers.begin(), numbers.end(), whole.begin() + static_cast<std::ptrdiff_t>(offset));
    return whole;
  }

  void checkValues() {
    const Numbers expected = reference::definition(transform_, {source_.begin(), source_.end()});
    // The last one leaves the result for the next checks.
    for (const std::int32_t flag : api::kFlags) {
      std::fill(result_.begin(), result_.end(), kUntouched);
      const std::int32_t status = call_(source_.data(), result_.data(), flag);
      expect(status == zvxOk, "status " + std::to_string(status));
      const double error = relativeError(expected, result_, reference::factor(transform_, flag));
      expect(error <= bound<T>(transform_.points),
             "error " + (std::isnan(error) ? "NaN" : threeDigits(error)) + " with flag " +
                 std::to_string(flag));
    }
  }

  void checkPlace(std::size_t from, std::size_t to) {
    T* const source = sourceMemory_.data() + from;
    std::copy(source_.begin(), source_.end(), source);
    memory_.fill(image({}, 0));
    call_(source, memory_.data() + kLine + to, zvxNoDiv);
    expect(memory_.holds(image(result_, kLine + to)) &&
               std::memcmp(source, source_.data(), source_.size() * sizeof(T)) == 0,
           "other bits or other memory at offsets " + std::to_string(from) + " and " +
               std::to_string(to));
  }

  // What is behind a shorter result stays.
  void checkInPlace(std::size_t offset) {
    memory_.fill(image(source_, kLine + offset));
    T* const array = memory_.data() + kLine + offset;
    call_(array, array, zvxNoDiv);
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
      const std::int32_t status = call_(source, destination, flag);
      expect(status == expected, "status " + std::to_string(status) + " instead of " +
                                     std::to_string(expected) + ", flag " + std::to_string(flag));
    };
    for (const std::int32_t flag : {std::int32_t{zvxNoDiv}, kBadFlags[0], kBadFlags[1]}) {
      refuses(nullptr, memory_.data(), flag, zvxErrNullPointer);
      refuses(source_.data(), nullptr, flag, zvxErrNullPointer);
      refuses(nullptr, nullptr, flag, zvxErrNullPointer);
    }
    if (transform_.function->takes(Role::Flag)) {
      for (const std::int32_t flag : kBadFlags) {
        refuses(source_.data(), memory_.data(), flag, zvxErrScaleFlag);
      }
    }
    expect(memory_.holds(untouched), "a refused call wrote to its destination");
  }

  const Transform& transform_;
  const Call& call_;
  const std::vector<T>& source_;
  Tally& tally_;
  Memory<T> sourceMemory_, memory_;
  std::vector<T> result_;
};

// ---- Many transforms in one call ----------------------------------------------------------------

template <class T>
class BatchCheck {
 public:
  BatchCheck(const Transform& transform, const Transform& single, const void* work, Tally& tally)
      : transform_(transform), single_(single), work_(work), tally_(tally) {}

  // Of whole vectors of transforms, however wide, and some left over; two of the longest.
  int howmany() const { return transform_.points <= 1024 ? 37 : 2; }

  // With the sources one behind the other.
  void run(const std::vector<T>& source, const char* level) const {
    const std::size_t from = source.size() / howmany();
    const std::size_t to = transform_.destinationBytes / sizeof(T);
    std::vector<T> results(to * howmany());
    for (int k = 0; k < howmany(); ++k) {
      single_.call(&source[k * from], &results[k * to], zvxNoDiv, work_);
    }
    for (const Layout a : kLayouts) {
      for (const Layout b : kLayouts) check(source, a, results, b, level);
    }
  }

 private:
  enum Layout {
    Contiguous,
    ElementMajor,
    BackwardsWithGaps
  };
  static constexpr Layout kLayouts[] = {Contiguous, ElementMajor, BackwardsWithGaps};
  static constexpr T kUntouched = std::numeric_limits<T>::quiet_NaN();

  // The numbers of a side in a layout.
  struct Array {
    api::Batch::Side side;
    std::vector<T> numbers;
    std::ptrdiff_t first = 0;  // place of the first element of the first transform
    T* start() { return &numbers[first]; }
    bool holds(const Array& other) const {
      return std::memcmp(numbers.data(), other.numbers.data(), numbers.size() * sizeof(T)) == 0;
    }
  };
  Array arrange(const std::vector<T>& numbers, int parts, Layout layout) const {
    const std::ptrdiff_t n = std::ssize(numbers) / howmany() / parts, gap = 3 * n + 2;
    Array array;
    array.side = layout == Contiguous     ? api::Batch::Side{1, n}
                 : layout == ElementMajor ? api::Batch::Side{howmany(), 1}
                                          : api::Batch::Side{-3, gap};
    if (layout == BackwardsWithGaps) array.first = 3 * (n - 1) * parts;
    array.numbers.assign(layout == BackwardsWithGaps ? gap * howmany() * parts : numbers.size(),
                         kUntouched);
    for (std::ptrdiff_t i = 0; i < std::ssize(numbers); ++i) {
      const std::ptrdiff_t element = i / parts, k = element / n;
      array.start()[(k * array.side.dist + element % n * array.side.stride) * parts + i % parts] =
          numbers[i];
    }
    return array;
  }

  void check(const std::vector<T>& source, Layout a, const std::vector<T>& results, Layout b,
             const char* level) const {
    Array from = arrange(source, transform_.sourceParts(), a);
    const Array wanted = arrange(results, transform_.destinationParts(), b), before = from;
    Array to = wanted;
    std::fill(to.numbers.begin(), to.numbers.end(), kUntouched);
    const auto run = [&](Array& dst) {
      const api::Batch batch = {howmany(), from.side, wanted.side};
      const std::int32_t status =
          transform_.call(from.start(), dst.start(), zvxNoDiv, work_, batch);
      tally_.expect(status == zvxOk && dst.holds(wanted),
                    std::string("a batch has other bits or writes other memory, with ") + level,
                    transform_.points);
    };
    run(to);
    tally_.expect(from.holds(before), "a batch writes its source", transform_.points);
    if (a == b && transform_.sourceParts() == transform_.destinationParts()) run(from);
  }

  const Transform& transform_;
  const Transform& single_;
  const void* work_;
  Tally& tally_;
};

// At every level that there is, from the highest down; then at the highest again.
template <class Body>
void forEachLevel(const Library& library, const Body& body) {
  const auto limit = library.get<decltype(zvxgManyLimitLevel)>("zvxgManyLimitLevel");
  for (const std::int32_t level : {zvxManyAvx512, zvxManyAvx}) {
    if (limit(level) == level) body(level);
  }
  limit(INT32_MAX);
}

void checkLevels(const Library& library, Tally& tally) {
  const auto inUse = library.get<decltype(zvxgManyLevel)>("zvxgManyLevel");
  forEachLevel(library, [&](std::int32_t level) {
    tally.expect(inUse() == level, "does not tell the level that was set");
  });
}

// ---- What belongs to no one transform -----------------------------------------------------------

// Bad lengths and null pointers, of which neither stores anything but in the block of a plan. A null
// buffer is a good one, a place for a size is not looked at, and a plan that is made in a block
// trusts it to be large enough.
void checkRefusals(const Function& function, Tally& tally) {
  alignas(kLineBytes) static std::byte memory[2 * sizeof(double) * kernelgen::kMaxLength];
  alignas(kLineBytes) static std::byte block[1024];
  const std::vector<std::byte> untouched(std::begin(memory), std::end(memory));
  const auto expectStatus = [&](const api::Arguments& arguments, std::int32_t expected,
                                const std::string& claim) {
    tally.expect(function.call(arguments) == expected &&
                     std::equal(untouched.begin(), untouched.end(), memory),
                 claim);
  };
  api::Arguments good = {};
  for (std::size_t i = 0; i < api::kMostArguments; ++i) {
    const Role role = function.roles[i];
    good[i] = role == Role::Selector ? asArgument(function.first)
              : role == Role::Flag   ? asArgument(std::int32_t{zvxNoDiv})
              : role == Role::Block  ? asArgument(block)
                                     : asArgument(memory);
  }
  for (std::size_t i = 0; i < api::kMostArguments; ++i) {
    api::Arguments bad = good;
    switch (function.roles[i]) {
      case Role::Selector:
        for (const std::int32_t length :
             {INT32_MIN, -1, function.first - 1, 2 * function.last, INT32_MAX}) {
          if (length > function.last && function.takes(Role::Block)) continue;
          bad[i] = asArgument(length);
          expectStatus(bad, zvxErrLength, "takes the length " + std::to_string(length));
        }
        break;
      case Role::Plan:
      case Role::NewPlan:
      case Role::Block:
        bad[i] = 0;
        expectStatus(bad, zvxErrNullPointer, "takes a null pointer");
        break;
      default: break;
    }
  }
}

void checkSizes(const Function& function, Tally& tally) {
  for (const std::int32_t selector : {function.first, function.last}) {
    std::uint32_t size = 1;
    tally.expect(function.call({asArgument(selector), asArgument(&size)}) == zvxOk && size != 1,
                 "no size for " + std::to_string(selector));
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

void checkFunction(const Library& library, const api::Exports& exports, const Function& function,
                   int seed, Tally& tally) {
  library.get<void>(function.symbol);
  // Plans that the library allocates are tried where it makes them.
  const bool allocates = function.takes(Role::NewPlan) && !function.takes(Role::Block);
  const Function& does =
      allocates ? exports.sibling(function, {Role::Source, Role::Destination, Role::Plan})
                : function;
  const std::vector<Transform> transforms = transformsOf(exports, does);
  if (does.takes(Role::Source)) tally.expect(!transforms.empty(), "is not checked");
  for (const Transform& transform : transforms) {
    NormalNumbers random(seed, function.symbol, transform.points);
    const Call call(exports, transform, allocates);
    const auto check = [&]<class T>(T) {
      const std::vector<T> source = random.draw<T>(transform.sourceBytes / sizeof(T));
      TransformCheck<T>(transform, call, source, tally).run();
      if (!function.isMany()) return;
      Transform single = transform;
      single.function = &exports.single(function);
      const BatchCheck<T> batch(transform, single, call.work(), tally);
      const std::vector<T> sources = random.draw<T>(source.size() * batch.howmany());
      forEachLevel(library, [&](std::int32_t level) {
        batch.run(sources, level == zvxManyAvx ? "AVX" : "AVX-512");
      });
    };
    function.bits == 32 ? check(float{}) : check(double{});
  }
  if (function.takes(Role::Size)) checkSizes(function, tally);
  if (function.family == api::Family::Version) {
    checkVersion(library, function, tally);
  } else if (function.family == api::Family::Level) {
    checkLevels(library, tally);
  } else if (!function.takes(Role::Source) || function.isEntry()) {
    checkRefusals(function, tally);
  }
}

}  // namespace

Report verifyCommand(const Options& options) {
  const Library library(options.library);
  Filters filters(options.filters);
  const std::vector<Function> functions = library.functions(), many = library.manyFunctions();
  const api::Exports exports(functions);
  std::vector<const Function*> all;  // where `exports` knows them
  for (const std::vector<Function>* list : {&functions, &many}) {
    for (const Function& function : *list) all.push_back(&function);
  }
  std::vector<Tally> tallies;
  onCrash(tellCrash);
  {
    Progress progress;
    for (const Function* const address : all) {
      const Function& function = *address;
      if (!filters.match(function, pointsOf(function))) continue;
      const std::string family = familyOf(function);
      auto tally = std::find_if(tallies.begin(), tallies.end(),
                                [&](const Tally& t) { return t.family() == family; });
      if (tally == tallies.end()) tally = tallies.emplace(tally, family);
      progress.show(function.symbol);
      tally->begin(function);
      try {
        checkFunction(library, exports, function, options.seed, *tally);
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
  std::size_t count = 0, ofMany = 0;
  int checks = 0, failures = 0;
  for (const Tally& tally : tallies) {
    section.rows.push_back(tally.row());
    (tally.family().starts_with("many-") ? ofMany : count) += tally.functions();
    checks += tally.checks();
    failures += tally.failures();
  }
  report.failed = failures > 0;
  report.closing = {"total: " + std::to_string(count) + " functions" +
                    (ofMany ? " and " + std::to_string(ofMany) + " of libzvxgmany" : "") + ", " +
                    std::to_string(checks) + " checks, " + std::to_string(failures) +
                    (failures == 1 ? " failure" : " failures")};
  return report;
}

}  // namespace bench
