// The state of the processor: what a call must leave as it was, and what of it must show in the
// results, the rounding and the flushing that the caller has chosen.

#include <dlfcn.h>
#include <xmmintrin.h>

#include <filesystem>

#include "../placement.h"
#include "observe.h"
#include "reference.h"

namespace tests {
namespace {

constexpr std::uint32_t kMasked = 0x1f80;    // no exception traps
constexpr std::uint32_t kTrapping = 0x1000;  // all but the inexact one do
constexpr std::uint32_t kInexact = 0x20;
constexpr std::uint32_t kOtherModes = kMasked | 0xe040;     // to zero, FTZ and DAZ
constexpr std::uint16_t kX87[] = {0x037f, 0x027f, 0x0c7f};  // extended, double, cut to single

// Of both signs, magnitudes from 0.5 to 2: no sum of a transform comes near the ends of the range.
// Small ones are around the smallest normal number: sums and products of them are flushed, or not.
Bytes midRange(const Transform& transform, Random& random, bool small = false) {
  return withElement(transform, [&]<class T>(T) {
    std::vector<T> numbers(transform.sourceBytes / sizeof(T));
    std::uniform_real_distribution<T> magnitude(T(0.5), T(2));
    for (T& number : numbers) {
      number = random() % 2 == 0 ? magnitude(random) : -magnitude(random);
      if (small) number *= std::numeric_limits<T>::min() * static_cast<T>(1 << random() % 3) / 2;
    }
    return bytesOf(numbers);
  });
}

// A call under these control words, after which all is as it was. Exceptions that are not masked
// trap, so that one is a fault of this call, and not only a bit that is set.
void expectKept(const void* function, const Arguments& arguments, std::uint32_t mxcsr,
                std::uint16_t x87) {
  Observation seen = {};
  std::int32_t status = 1;
  const Fault fault =
      faultOf([&] { status = callObserved(function, arguments.data(), mxcsr, x87, &seen); });
  _mm_setcsr(kMasked);
  ASSERT_EQ(fault.signal, 0);
  ASSERT_EQ(seen.mxcsr & ~kInexact, mxcsr) << "control word, or an exception beside inexact";
  ASSERT_EQ(seen.x87Control, x87);
  ASSERT_EQ(seen.x87Tags, 0xffff) << "registers of the x87 in use";
  ASSERT_TRUE(std::ranges::equal(seen.kept, kKeptRegisters))
      << "one of rbx, rbp, r12 to r15: " << testing::PrintToString(seen.kept);
  ASSERT_EQ(seen.flags & kDirectionFlag, 0u);
  ASSERT_EQ(std::ranges::count(seen.upperHalves, 0u), std::size(seen.upperHalves))
      << "upper halves of the vector registers in use";
}

TEST(State, ACallKeepsAllThatIsTheCallers) {
  Random random = makeRandom();
  std::int64_t calls = 0;
  forEachTransform([&](const Transform& transform) {
    const Runner runner(transform);
    const Bytes source = midRange(transform, random);
    Bytes destination(transform.destinationBytes);
    for (const std::int32_t flag : flagsOf(transform)) {
      const Arguments arguments =
          transform.arguments(source.data(), destination.data(), flag, runner.work());
      for (const std::uint32_t mxcsr : {kTrapping, kOtherModes}) {
        for (const std::uint16_t x87 : kX87) {
          expectKept(transform.function->address, arguments, mxcsr, x87);
          ++calls;
        }
      }
    }
  });
  RecordProperty("calls", std::to_string(calls));
}

// Those that are no transforms: sizes, plans, and the version. A plan is freed after it was made.
TEST(State, SoDoTheCallsAroundThem) {
  alignas(64) static std::byte block[1 << 16];
  std::uint32_t size = 0;
  const void* plan = nullptr;
  int calls = 0;
  for (const Function& function : exports().functions()) {
    if (function.takes(Role::Source) || function.takes(Role::Plan)) continue;
    SCOPED_TRACE(function.symbol);
    for (const std::int32_t selector : {2, 8, 1024}) {
      Arguments arguments = {};
      for (std::size_t i = 0; i < arguments.size(); ++i) {
        const Role role = function.roles[i];
        arguments[i] = role == Role::Selector  ? asArgument(selector)
                       : role == Role::NewPlan ? asArgument(&plan)
                       : role == Role::Block   ? asArgument(block)
                                               : asArgument(&size);
      }
      expectKept(function.address, arguments, kMasked | 0x4000, kX87[0]);
      ++calls;
      if (function.takes(Role::NewPlan) && !function.takes(Role::Block)) {
        const Function& free = exports().sibling(function, {Role::Plan});
        expectKept(free.address, {asArgument(plan)}, kMasked | 0x4000, kX87[0]);
        ++calls;
      }
    }
  }
  RecordProperty("calls", calls);
}

std::int32_t load(const char* path, void** handle) {
  *handle = dlopen(path, RTLD_NOW | RTLD_LOCAL);
  return *handle != nullptr ? 0 : 1;
}

// A second copy, because the loader runs the start of a file only once; beside it what it looks for
// there, which is the same for all builds.
TEST(State, LoadingChangesNoControlWord) {
  namespace files = std::filesystem;
  const char* const other = std::getenv("ZVXG_LIBRARY");
  const files::path library = other != nullptr ? other : ZVXG_LIBRARY_FILE;
  const files::path place = testing::TempDir() + "zvxg_reliability_copy";
  files::create_directory(place);
  const files::path core = files::path(ZVXG_LIBRARY_FILE).parent_path() / "libzvxcore.so.6";
  for (const files::path& file : {library, core}) {
    files::copy_file(file, place / file.filename(), files::copy_options::overwrite_existing);
  }
  for (const std::uint32_t mxcsr : {kMasked, kOtherModes}) {
    for (const std::uint16_t x87 : kX87) {
      Observation seen = {};
      void* handle = nullptr;
      const files::path copy = place / library.filename();
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

// Compilers move signs across products and sums, which only rounding to nearest hides. g++ leaves
// those of the kernels where they are; in the DCT-IV they are where its pieces have them.
bool keepsSigns(const Transform& transform) {
  const bool isOrdinaryBuild = std::getenv("ZVXG_LIBRARY") == nullptr;
  return ZVXG_BUILT_BY_GXX && isOrdinaryBuild && !transform.function->isPlanned();
}

TEST(State, RoundingAndFlushingAreTheCallers) {
  constexpr std::uint32_t kRoundings[] = {0, 0x2000, 0x4000, 0x6000};  // nearest, down, up, to zero
  constexpr std::uint32_t kFlushes[] = {0, 0x8040};  // keep subnormal numbers, or FTZ and DAZ
  Random random = makeRandom();
  std::int64_t calls = 0;
  forEachTransform([&](const Transform& transform) {
    if (transform.function->isEntry()) return;  // the kernels again
    const Runner runner(transform);
    const Reference reference = referenceOf(transform);
    bool roundingShows = false, flushingShows = false;
    // The few sums of a short one can all be exact, but not for every signal.
    const int sources = transform.sourceBytes <= 256 ? 8 : 2;
    for (int number = 0; number < sources; ++number) {
      const Bytes source = midRange(transform, random, number % 2 == 1);
      const std::int32_t flag = kFlags[random() % std::size(kFlags)];
      const Bytes nearest = runner.run(source, flag);
      for (const std::uint32_t rounding : kRoundings) {
        for (const std::uint32_t flush : kFlushes) {
          _mm_setcsr(kMasked | rounding | flush);
          const Bytes actual = runner.run(source, flag);
          const std::uint32_t control = _mm_getcsr() & ~_MM_EXCEPT_MASK;
          const Bytes expected = reference ? reference(source, flag) : Bytes();
          _mm_setcsr(kMasked);
          ++calls;
          ASSERT_EQ(control, kMasked | rounding | flush);
          if (flush == 0) roundingShows |= actual != nearest;
          if (rounding == 0) flushingShows |= actual != nearest;
          if (!reference || (rounding != 0 && !keepsSigns(transform))) continue;
          ASSERT_TRUE(actual == expected)
              << "rounding " << rounding << ", flushing " << flush << ", flag " << flag;
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
