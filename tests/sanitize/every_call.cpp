// Every exported function, with arrays, buffers and plans that end where their memory ends: for the
// sanitizers and Valgrind, which report what such a call may not do. All flags, by name and by
// length, at several places, in place and not; the bits have to be the same. With threads, each
// does all of that with arrays of its own, but with the same plans where plans may be shared, and
// has to get the bits of a first run alone. Functions of libzvxgmany do batches too, and all of them
// once more at its lowest level.
//
// usage: zvxg_every_call [THREADS]

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string_view>
#include <thread>
#include <unordered_map>
#include <vector>

#include "interface.h"
#include "sanitize/exact.h"
#include "zvxg_many.h"

// The library's memory, of exactly the bytes that it asks for.
extern "C" void* zvxMalloc(int32_t bytes) noexcept {
  return ::operator new(static_cast<std::size_t>(bytes), std::align_val_t(64));
}
extern "C" void zvxFree(void* block) noexcept { ::operator delete(block, std::align_val_t(64)); }

namespace tests {
namespace {

using api::asArgument;
using api::Function;
using api::Role;
using api::Transform;

constexpr std::int32_t kLongestPlan = 1 << 14, kLongestOfMany = 1 << 10;
constexpr int kLongestMoved = 256;      // of the plans whose blocks begin anywhere
constexpr int kHowmany = 19;            // a vector of transforms, however wide, and some left over
constexpr std::size_t kOnlyRead = 256;  // bytes of a plan that is only read when it is run

std::atomic<long> calls{0};

[[noreturn]] void stop(const char* text, const char* name) {
  std::fprintf(stderr, "every_call: %s: %s\n", name, text);
  std::exit(1);
}

// By symbol; all are entered before the calls begin. No std::map: it sets its nodes in code that
// MemorySanitizer does not see.
std::unordered_map<std::string_view, std::atomic<bool>> called;

void succeed(const Function& function, const api::Arguments& arguments) {
  ++calls;
  called.at(function.symbol) = true;
  if (function.call(arguments) != zvxOk) stop("a call was refused", function.symbol);
}

// What the first run has got, and the others have to get.
class Results {
 public:
  void add(const Exact& result, const char* name) {
    const auto* const bytes = reinterpret_cast<const char*>(result.data());
    const std::size_t hash = std::hash<std::string_view>()({bytes, result.bytes()});
    if (!replaying_) {
      all_.push_back(hash);
    } else if (all_[at_++] != hash) {
      stop("another result", name);
    }
  }
  void replay() { at_ = 0, replaying_ = true; }

 private:
  std::vector<std::size_t> all_;
  std::size_t at_ = 0;
  bool replaying_ = false;
};

// A transform, with its plan if that may be shared. Of a batch, the bytes are those of all.
struct Job {
  Transform transform;
  std::shared_ptr<Exact> block;
  const void* plan = nullptr;
  api::Batch batch = {};
  bool replaces = true;  // may be done in place
};

// From this layout to that, element-major or contiguous.
Job batchOf(Job job, bool fromRows, bool toRows) {
  Transform& t = job.transform;
  const auto side = [&](bool rows, std::size_t bytes, int parts) {
    const auto elements = static_cast<std::ptrdiff_t>(bytes / t.function->elementBytes()) / parts;
    return rows ? api::Batch::Side{kHowmany, 1} : api::Batch::Side{1, elements};
  };
  job.batch = {kHowmany, side(fromRows, t.sourceBytes, t.sourceParts()),
               side(toRows, t.destinationBytes, t.destinationParts())};
  job.replaces = fromRows == toRows && t.sourceBytes == t.destinationBytes;
  t.sourceBytes *= kHowmany;
  t.destinationBytes *= kHowmany;
  return job;
}

class Session {
 public:
  Session(const api::Exports& exports, Results& results) : exports_(exports), results_(results) {}

  void run(const Job& job) {
    const Transform& transform = job.transform;
    const Function& function = *transform.function;
    if (transform.workBytes != 0) {
      std::uint32_t bytes = 0;
      succeed(exports_.sibling(function, {Role::Selector, Role::Size}),
              {asArgument(transform.kernel->isKernel() ? transform.kernel->first
                                                       : job.transform.selector),
               asArgument(&bytes)});
    }
    if (function.takes(Role::Buffer)) {
      Exact work(transform.workBytes, 16);
      run(job, work.data());
      run(job, nullptr);
    } else if (function.isPlanned()) {
      const void* allocated = nullptr;
      if (job.plan) run(job, job.plan);
      for (const std::size_t place : {0, 1, 16, 31, 33, 63}) {
        if (place > 1 && transform.points > kLongestMoved) break;
        // The plan of a direct length may end behind its block where that is not on a boundary of 32.
        Exact block(transform.workBytes + (place % 32 != 0 ? 31 : 0), place);
        const void* plan = nullptr;
        succeed(exports_.sibling(function, {Role::NewPlan, Role::Selector, Role::Block}),
                {asArgument(&plan), asArgument(transform.selector), asArgument(block.data())});
        run(job, plan);
      }
      succeed(exports_.sibling(function, {Role::NewPlan, Role::Selector}),
              {asArgument(&allocated), asArgument(transform.selector)});
      run(job, allocated);
      succeed(exports_.sibling(function, {Role::Plan}), {asArgument(allocated)});
    } else {
      run(job, nullptr);
    }
  }

 private:
  void run(const Job& job, const void* work) {
    const Transform& transform = job.transform;
    const Exact source =
        transform.function->bits == 32 ? numbers<float>(job) : numbers<double>(job);
    for (const std::int32_t flag : api::kFlags) {
      if (flag == zvxDivFwdByN || transform.function->takes(Role::Flag)) {
        run(job, work, source, flag);
      }
    }
  }

  void run(const Job& job, const void* work, const Exact& source, std::int32_t flag) {
    const Transform& transform = job.transform;
    const auto call = [&](const Exact& from, Exact& to) {
      succeed(*transform.function,
              transform.arguments(from.data(), to.data(), flag, work, job.batch));
    };
    const std::size_t bytes = transform.destinationBytes;
    Exact first(source, 0), expected(source, 0, bytes);
    if (!transform.fills) {  // leaves some elements as they were
      if (!job.replaces) return;
      call(expected, expected);
      return results_.add(expected, transform.function->symbol);
    }
    Exact result(bytes);
    call(first, result);
    results_.add(result, transform.function->symbol);
    const auto compare = [&](const Exact& other) {
      if (std::memcmp(result.data(), other.data(), bytes) != 0) {
        stop("other bits at another place", transform.function->symbol);
      }
    };
    for (const auto& [from, to] : {std::pair(1u, 3u), std::pair(0u, 1u), std::pair(16u, 48u)}) {
      Exact src(source, from), dst(bytes, to);
      call(src, dst);
      compare(dst);
    }
    if (!job.replaces) return;
    for (const std::size_t offset : {0u, 1u}) {
      Exact both(source, offset, bytes);
      call(both, both);
      compare(both);
    }
  }

  template <class T>
  Exact numbers(const Job& job) {
    const Transform& transform = job.transform;
    const Function& kernel = *transform.kernel;
    const bool ofCcs = job.batch.howmany == 1 && kernel.layout == api::Layout::Ccs &&
                       kernel.direction == api::Direction::Inverse;
    const int count = static_cast<int>(transform.sourceBytes / sizeof(T));
    Exact array(transform.sourceBytes);
    for (int i = 0; i < count; ++i) {
      // What the inverse of CCS takes as zero is never set at all.
      if (ofCcs && (i == 1 || i == transform.points + 1)) continue;
      array.as<T>()[i] = static_cast<T>(normal_(random_));
    }
    return array;
  }

  const api::Exports& exports_;
  Results& results_;
  std::mt19937_64 random_{20090610};
  std::normal_distribution<double> normal_;
};

int main(int threadCount) {
  const api::Exports exports(api::linkedFunctions());
  std::vector<Job> jobs;
  const auto add = [&](const Function& function, std::int32_t longestPlan) {
    called[function.symbol] = false;
    for (const Transform& transform :
         exports.transformsOf(function, api::planLengths(function.bits, longestPlan))) {
      Job job = {transform, std::make_shared<Exact>(transform.workBytes)};
      const bool shares = function.isPlanned() && transform.workBytes == kOnlyRead;
      if (shares) job.plan = exports.prepare(transform, job.block->data());
      jobs.push_back(job);
      if (!function.isMany()) continue;
      for (const auto& [from, to] : {std::pair(false, false), {true, true}, {false, true}}) {
        jobs.push_back(batchOf(job, from, to));
      }
    }
  };
  for (const Function& function : exports.functions()) add(function, kLongestPlan);
  for (const Function& function : api::linkedManyFunctions()) add(function, kLongestOfMany);
  const auto runAll = [&](Results& results) {
    Session session(exports, results);
    for (const Job& job : jobs) session.run(job);
    if (zvxgenGetLibVersion()->major != 6) stop("another version", "zvxgenGetLibVersion");
    called.at("zvxgenGetLibVersion") = true;
  };
  Results results;
  runAll(results);
  {
    Results lowest = results;
    lowest.replay();
    if (zvxgManyLimitLevel(zvxManyAvx) != zvxManyAvx) stop("another level", "zvxgManyLimitLevel");
    runAll(lowest);
    if (zvxgManyLimitLevel(INT32_MAX) != zvxgManyLevel()) stop("another level", "zvxgManyLevel");
    called.at("zvxgManyLimitLevel") = called.at("zvxgManyLevel") = true;
  }
  {
    std::vector<std::jthread> threads;
    for (int i = 0; i < threadCount; ++i) {
      threads.emplace_back([&, copy = results]() mutable {
        copy.replay();
        runAll(copy);
      });
    }
  }
  const auto count = std::count_if(called.begin(), called.end(),
                                   [](const auto& entry) { return entry.second.load(); });
  std::printf("%td functions, %ld calls, %d threads\n", count, calls.load(), threadCount);
  return count == std::ssize(called) ? 0 : 1;
}

}  // namespace
}  // namespace tests

int main(int count, char** arguments) {
  return tests::main(count > 1 ? std::atoi(arguments[1]) : 0);
}
