// Every exported function, with arrays, buffers and plans that end where their memory ends: for the
// sanitizers and Valgrind, which report what such a call may not do. All flags, by name and by
// length, at several places, in place and not; the bits have to be the same. With threads, each
// does all of that with arrays of its own, but with the same plans where plans may be shared, and
// has to get the bits of a first run alone.
//
// usage: zvxg_every_call [THREADS]

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <random>
#include <span>
#include <thread>

#include "sanitize/transforms.h"

// The library's memory, of exactly the bytes that it asks for.
extern "C" void* zvxMalloc(int32_t bytes) noexcept {
  return ::operator new(static_cast<std::size_t>(bytes), std::align_val_t(64));
}
extern "C" void zvxFree(void* block) noexcept { ::operator delete(block, std::align_val_t(64)); }

namespace tests {
namespace {

using zvxg::detail::Functions;

constexpr int32_t kLongestPlan = 1 << 14;

std::atomic<long> calls{0};

[[noreturn]] void stop(const char* text) {
  std::fprintf(stderr, "every_call: %s\n", text);
  std::exit(1);
}

void succeed(int32_t status) {
  ++calls;
  if (status != zvxOk) stop("a call was refused");
}

// What the first run has got, and the others have to get.
class Results {
 public:
  void add(std::span<const std::byte> result) {
    if (!recording_) {
      compare(result, std::span(all_).subspan(at_, result.size()));
      at_ += result.size();
    } else {
      all_.insert(all_.end(), result.begin(), result.end());
    }
  }
  // A second look at the same results by another thread.
  Results replay() const {
    Results copy(*this);
    copy.recording_ = false;
    return copy;
  }
  static void compare(std::span<const std::byte> a, std::span<const std::byte> b) {
    if (std::memcmp(a.data(), b.data(), a.size()) != 0) stop("results differ");
  }

 private:
  std::vector<std::byte> all_;
  std::size_t at_ = 0;
  bool recording_ = true;
};

template <class T>
struct More;  // what the companion header has no use for
template <>
struct More<float> {
  static constexpr auto kInitAlloc = zvxgDCT4InitAlloc_32f;
  static constexpr auto kFree = zvxgDCT4Free_32f;
};
template <>
struct More<double> {
  static constexpr auto kInitAlloc = zvxgDCT4InitAlloc_64f;
  static constexpr auto kFree = zvxgDCT4Free_64f;
};

template <class T>
uint32_t planBytes(int32_t length) {
  uint32_t bytes = 0;
  succeed(Functions<T>::kDct4Size(length, &bytes));
  return bytes;
}

template <class T>
class Plan {
 public:
  explicit Plan(int32_t length) : length_(length), block_(planBytes<T>(length)) {
    succeed(Functions<T>::kDct4Init(&spec_, length, block_.data()));
  }
  int32_t length() const { return length_; }
  const Dct4Spec* spec() const { return spec_; }

 private:
  int32_t length_;
  Exact block_;
  Dct4Spec* spec_ = nullptr;
};

// The plans that are only read when they are run.
template <class T>
std::vector<std::unique_ptr<Plan<T>>> sharedPlans() {
  std::vector<std::unique_ptr<Plan<T>>> plans;
  for (int32_t n = 2; n <= (sizeof(T) == 4 ? 64 : 32); n *= 2) {
    plans.push_back(std::make_unique<Plan<T>>(n));
  }
  return plans;
}

template <class T>
class Session {
 public:
  Session(Results& results, const std::vector<std::unique_ptr<Plan<T>>>& shared)
      : results_(results), shared_(shared) {}

  void run() {
    forEachFamily<T>([&](const auto& family) { runFamily(family); });
    for (int32_t order = 1; order <= 13; ++order) runWht(order);
    for (const auto& plan : shared_) runPlan(plan->length(), plan->spec());
    const int32_t shortest = sizeof(T) == 4 ? 128 : 32;
    for (int32_t n = shortest; n <= kLongestPlan; n *= 2) {
      for (const int32_t length : {n, n + 1}) {
        const Plan<T> plan(length);
        runPlan(length, plan.spec());
        Dct4Spec* allocated = nullptr;
        succeed(More<T>::kInitAlloc(&allocated, length));
        runPlan(length, allocated);
        succeed(More<T>::kFree(allocated));
      }
    }
  }

 private:
  using F = Functions<T>;

  template <class Element>
  void runFamily(const Family<T, Element>& family) {
    for (int n = 2; n <= 64; ++n) {
      Exact source(sizeof(T) * family.sourceSize(n));
      for (int i = 0; i < family.sourceSize(n); ++i) {
        // What the inverse of CCS takes as zero is never set at all.
        const bool ignored = family.kind == Kind::FromCcs && (i == 1 || i == n + 1);
        if (!ignored) source.as<T>()[i] = normal_(random_);
      }
      const std::size_t bytes = sizeof(T) * family.destinationSize(n);
      for (const int32_t flag : kFlags) {
        transform<Element>(source, bytes, [&](const Element* src, Element* dst) {
          return family.kernel(n)(src, dst, flag);
        });
        transform<Element>(source, bytes, [&](const Element* src, Element* dst) {
          return family.entry(src, dst, n, flag);
        });
      }
    }
  }

  void runWht(int32_t order) {
    const Exact source = numbers(1 << order);
    uint32_t bytes = 0;
    succeed(F::kWhtBufferSize(order, &bytes));
    Exact buffer(bytes, 16);
    for (uint8_t* const work : {buffer.as<uint8_t>(), static_cast<uint8_t*>(nullptr)}) {
      for (const int32_t flag : kFlags) {
        transform<T>(source, source.bytes(), [&](const T* src, T* dst) {
          return F::kWht[order - 1](src, dst, flag, work);
        });
        transform<T>(source, source.bytes(), [&](const T* src, T* dst) {
          return F::kWhtByOrder(src, dst, order, flag, work);
        });
      }
    }
  }

  void runPlan(int32_t length, const Dct4Spec* spec) {
    const Exact source = numbers(length);
    if (length % 2 == 0) {
      transform<T>(source, source.bytes(),
                   [&](const T* src, T* dst) { return F::kDct4(src, dst, spec); });
    } else {  // leaves some elements as they were
      Exact result(source, 0);
      succeed(F::kDct4(result.as<T>(), result.as<T>(), spec));
      results_.add({result.data(), result.bytes()});
    }
  }

  // Runs a transform at several places; the results are `bytes` long.
  template <class Element, class Call>
  void transform(const Exact& source, std::size_t bytes, const Call& call) {
    Exact first(source, 0), expected(bytes);
    succeed(call(first.as<const Element>(), expected.as<Element>()));
    results_.add({expected.data(), bytes});
    for (const auto& [from, to] : {std::pair(1u, 3u), std::pair(0u, 1u), std::pair(16u, 48u)}) {
      Exact src(source, from), dst(bytes, to);
      succeed(call(src.as<const Element>(), dst.as<Element>()));
      Results::compare({expected.data(), bytes}, {dst.data(), bytes});
    }
    for (const std::size_t offset : {0u, 1u}) {
      Exact both(std::max(source.bytes(), bytes), offset);
      std::memcpy(both.data(), source.data(), source.bytes());
      succeed(call(both.as<const Element>(), both.as<Element>()));
      Results::compare({expected.data(), bytes}, {both.data(), bytes});
    }
  }

  Exact numbers(int count) {
    Exact array(sizeof(T) * count);
    for (int i = 0; i < count; ++i) array.as<T>()[i] = normal_(random_);
    return array;
  }

  Results& results_;
  const std::vector<std::unique_ptr<Plan<T>>>& shared_;
  std::mt19937_64 random_{20090610};
  std::normal_distribution<T> normal_;
};

// How many functions that is.
template <class T>
std::size_t countFunctions() {
  using F = Functions<T>;
  std::vector<const void*> functions;
  const auto add = [&](auto* function) {
    functions.push_back(reinterpret_cast<const void*>(function));
  };
  forEachFamily<T>([&](const auto& family) {
    add(family.entry);
    for (int n = 2; n <= 64; ++n) add(family.kernel(n));
  });
  for (const auto kernel : F::kWht) add(kernel);
  add(F::kWhtByOrder);
  add(F::kWhtBufferSize);
  add(F::kDct4Size);
  add(F::kDct4Init);
  add(F::kDct4);
  add(More<T>::kInitAlloc);
  add(More<T>::kFree);
  std::sort(functions.begin(), functions.end());
  return std::unique(functions.begin(), functions.end()) - functions.begin();
}

int main(int threadCount) {
  const auto singles = sharedPlans<float>();
  const auto doubles = sharedPlans<double>();
  const auto runAll = [&](Results& results) {
    Session<float>(results, singles).run();
    Session<double>(results, doubles).run();
    if (zvxgenGetLibVersion()->major != 6) stop("another version");
  };
  Results results;
  runAll(results);
  {
    std::vector<std::jthread> threads;
    for (int i = 0; i < threadCount; ++i) {
      threads.emplace_back([&] {
        Results replayed = results.replay();
        runAll(replayed);
      });
    }
  }
  std::printf("%zu functions, %ld calls, %d threads\n",
              countFunctions<float>() + countFunctions<double>() + 1, calls.load(), threadCount);
  return 0;
}

}  // namespace
}  // namespace tests

int main(int count, char** arguments) {
  return tests::main(count > 1 ? std::atoi(arguments[1]) : 0);
}
