// The state of the processor: what a call must leave as it was, and what of it must show in the
// results, the rounding and the flushing that the caller has chosen.

#include <dlfcn.h>
#include <xmmintrin.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>

#include "../placement.h"
#include "functions.h"
#include "observe.h"
#include "reference.h"

namespace tests {
namespace {

constexpr std::uint32_t kMasked = 0x1f80;    // no exception traps
constexpr std::uint32_t kTrapping = 0x1000;  // all but the inexact one do
constexpr std::uint32_t kInexact = 0x20;
constexpr std::uint32_t kRoundings[] = {0, 0x2000, 0x4000, 0x6000};  // nearest, down, up, to zero
constexpr std::uint32_t kFlushes[] = {0, 0x8040};  // keep subnormal numbers, or FTZ and DAZ
constexpr std::uint16_t kX87[] = {0x037f, 0x027f, 0x0c7f};  // extended, double, cut to single

std::uint32_t libraryControl() { return _mm_getcsr() & ~_MM_EXCEPT_MASK; }

// Of both signs, magnitudes from 0.5 to 2: no sum of a transform comes near the ends of the range.
template <class T>
std::vector<T> midRange(Random& random, std::size_t count) {
  std::vector<T> numbers(count);
  std::uniform_real_distribution<T> magnitude(T(0.5), T(2));
  for (T& number : numbers) number = random() % 2 == 0 ? magnitude(random) : -magnitude(random);
  return numbers;
}

Bytes midRange(const Transform& transform, Random& random) {
  return withElement(transform, [&]<class T>(T) {
    return bytesOf(midRange<T>(random, transform.sourceBytes / sizeof(T)));
  });
}

// The state that a call was given and what it left.
void expectKept(const Observation& seen, std::uint32_t mxcsr, std::uint16_t x87) {
  ASSERT_EQ(seen.mxcsr & ~kInexact, mxcsr) << "control word, or an exception beside inexact";
  ASSERT_EQ(seen.x87Control, x87);
  ASSERT_EQ(seen.x87Tags, 0xffff) << "registers of the x87 in use";
  ASSERT_TRUE(std::equal(std::begin(seen.kept), std::end(seen.kept), std::begin(kKeptRegisters)))
      << "one of rbx, rbp, r12 to r15: " << testing::PrintToString(seen.kept);
  ASSERT_EQ(seen.flags & kDirectionFlag, 0u);
  ASSERT_TRUE(std::all_of(std::begin(seen.upperHalves), std::end(seen.upperHalves),
                          [](std::uint64_t half) { return half == 0; }))
      << "upper halves of the vector registers in use";
}

// Exceptions trap, so that one is a fault of this call, and not only a bit that is set.
TEST(State, ACallKeepsAllThatIsTheCallers) {
  Random random = makeRandom();
  std::int64_t calls = 0;
  forEachTransform([&](const Transform& transform) {
    const Runner runner(transform);
    const Bytes source = midRange(transform, random);
    Bytes destination(transform.destinationBytes);
    for (const std::int32_t flag : transform.flags()) {
      for (const std::uint32_t mxcsr : {kTrapping, kMasked | 0xe040}) {
        for (const std::uint16_t x87 : kX87) {
          const Arguments arguments =
              transform.arguments(source.data(), destination.data(), flag, runner.work());
          Observation seen = {};
          std::int32_t status = 1;
          const Fault fault = faultOf([&] {
            status = callObserved(transform.function->address, arguments.data(), mxcsr, x87, &seen);
          });
          _mm_setcsr(kMasked);
          ASSERT_TRUE(fault.signal == 0 && status == 0)
              << "signal " << fault.signal << ", status " << status << ", flag " << flag;
          expectKept(seen, mxcsr, x87);
          ++calls;
        }
      }
    }
  });
  RecordProperty("calls", std::to_string(calls));
}

// Those that are no transforms: sizes, plans, and the version.
TEST(State, SoDoTheCallsAroundThem) {
  alignas(64) static std::byte block[1 << 16];
  std::uint32_t size = 0;
  const void* plan = nullptr;
  int calls = 0;
  for (const Function& function : exportedFunctions()) {
    if (function.takes(Role::Source)) continue;
    SCOPED_TRACE(function.name);
    for (const std::int32_t selector : {2, 8, 1024}) {
      Arguments arguments = {};
      for (std::size_t i = 0; i < function.roles.size(); ++i) {
        switch (function.roles[i]) {
          case Role::Selector: arguments[i] = asArgument(selector); break;
          case Role::Size: arguments[i] = asArgument(&size); break;
          case Role::NewPlan: arguments[i] = asArgument(&plan); break;
          case Role::Block: arguments[i] = asArgument(block); break;
          default: arguments[i] = asArgument(plan); break;
        }
      }
      if (function.takes(Role::Plan)) {  // to be freed, so it has to be taken first
        const std::string suffix = function.elementBytes == 4 ? "_32f" : "_64f";
        ASSERT_EQ(call(functionNamed("zvxgDCT4InitAlloc" + suffix),
                       {asArgument(&plan), asArgument(selector)}),
                  0);
        arguments[0] = asArgument(plan);
      }
      Observation seen = {};
      callObserved(function.address, arguments.data(), kMasked | 0x4000, kX87[0], &seen);
      expectKept(seen, kMasked | 0x4000, kX87[0]);
      ++calls;
      if (function.name.starts_with("zvxgDCT4InitAlloc")) {
        const std::string suffix = function.elementBytes == 4 ? "_32f" : "_64f";
        ASSERT_EQ(call(functionNamed("zvxgDCT4Free" + suffix), {asArgument(plan)}), 0);
      }
    }
  }
  RecordProperty("calls", calls);
}

std::int32_t load(const char* path, void** handle) {
  *handle = dlopen(path, RTLD_NOW | RTLD_LOCAL);
  return *handle != nullptr ? 0 : 1;
}

// A second copy, as the loader runs the start of a file only once; beside it what it looks for
// there.
TEST(State, LoadingChangesNoControlWord) {
  namespace files = std::filesystem;
  const char* const other = std::getenv("ZVXG_LIBRARY");
  const files::path library = other != nullptr ? other : ZVXG_LIBRARY_FILE;
  const files::path place = testing::TempDir() + "zvxg_reliability_copy";
  files::remove_all(place);
  files::create_directory(place);
  const files::path copy = place / library.filename();
  files::copy_file(library, copy);
  files::copy_file(library.parent_path() / "libzvxcore.so.6", place / "libzvxcore.so.6");
  for (const std::uint32_t mxcsr : {kMasked, kMasked | 0xe040}) {
    for (const std::uint16_t x87 : kX87) {
      Observation seen = {};
      void* handle = nullptr;
      const Arguments arguments = {asArgument(copy.c_str()), asArgument(&handle)};
      callObserved(reinterpret_cast<const void*>(&load), arguments.data(), mxcsr, x87, &seen);
      ASSERT_NE(handle, nullptr) << dlerror();
      EXPECT_EQ(seen.mxcsr & ~_MM_EXCEPT_MASK, mxcsr);
      EXPECT_EQ(seen.x87Control, x87);
      dlclose(handle);
    }
  }
  files::remove_all(place);
}

// ---- Rounding and flushing ---------------------------------------------------------------------

class Mode {
 public:
  explicit Mode(std::uint32_t control) { _mm_setcsr(kMasked | control); }
  ~Mode() { _mm_setcsr(kMasked); }
  Mode(const Mode&) = delete;
  Mode& operator=(const Mode&) = delete;
};

// Numbers around the smallest normal one: sums and products of them are flushed, or not.
Bytes nearUnderflow(const Transform& transform, Random& random) {
  return withElement(transform, [&]<class T>(T) {
    std::vector<T> numbers = midRange<T>(random, transform.sourceBytes / sizeof(T));
    for (T& number : numbers) {
      number *= std::numeric_limits<T>::min() * static_cast<T>(1 << random() % 3) / 2;
    }
    return bytesOf(numbers);
  });
}

// Compilers move signs across products and sums, which only rounding to nearest hides. g++ leaves
// those of the kernels where they are; in the DCT-IV they are where its pieces have them.
bool keepsSigns(const Transform& transform) {
  const bool isOrdinaryBuild = std::getenv("ZVXG_LIBRARY") == nullptr;
  return ZVXG_BUILT_BY_GXX && isOrdinaryBuild && !transform.isPlanned();
}

TEST(State, RoundingAndFlushingAreTheCallers) {
  Random random = makeRandom();
  std::int64_t calls = 0;
  forEachTransform([&](const Transform& transform) {
    if (transform.function->takes(Role::Selector)) return;  // the kernels again
    const Runner runner(transform);
    const Reference reference = referenceOf(transform);
    bool roundingShows = false, flushingShows = false;
    // The few sums of a short one can all be exact, but not for every signal.
    const int trials = transform.sourceBytes <= 256 ? 4 : 1;
    for (int trial = 0; trial < trials; ++trial) {
      for (const bool small : {false, true}) {
        const Bytes source = small ? nearUnderflow(transform, random) : midRange(transform, random);
        const std::int32_t flag = kFlags[random() % std::size(kFlags)];
        const Bytes nearest = runner.run(source, flag);
        for (const std::uint32_t rounding : kRoundings) {
          for (const std::uint32_t flush : kFlushes) {
            Bytes actual, expected;
            {
              const Mode mode(rounding | flush);
              actual = runner.run(source, flag);
              ASSERT_EQ(libraryControl(), kMasked | rounding | flush);
              if (reference) expected = reference(source, flag);
            }
            ++calls;
            if (flush == 0) roundingShows |= actual != nearest;
            if (rounding == 0) flushingShows |= actual != nearest;
            if (!reference || (rounding != 0 && !keepsSigns(transform))) continue;
            ASSERT_TRUE(actual == expected)
                << "rounding " << rounding << ", flushing " << flush << ", flag " << flag;
          }
        }
      }
    }
    EXPECT_TRUE(flushingShows);
    EXPECT_TRUE(roundingShows);
  });
  RecordProperty("calls", std::to_string(calls));
}

}  // namespace
}  // namespace tests
