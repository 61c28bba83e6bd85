// The state of the processor: what a call must leave as it was, and the place of its frame on the stack,
// which must not matter.

#include "observe.h"

namespace tests {
namespace {

constexpr std::uint32_t kTrapping = 0x1000;                 // all exceptions but the inexact one
constexpr std::uint32_t kOtherModes = kMasked | 0xe040;     // to zero, FTZ and DAZ
constexpr std::uint16_t kX87[] = {0x037f, 0x027f, 0x0c7f};  // extended, double, cut to single

// A caller aligns the stack to 16 bytes, and saved vectors have 32: each function is called with the
// stack at every distance from a cache line, which must not matter.
TEST(State, ACallKeepsAllThatIsTheCallers) {
  Random random = makeRandom();
  std::int64_t calls = 0;
  forEachTransform([&](const Transform& transform) {
    const Runner runner(transform);
    const Bytes source = midRangeBytes(transform, random);
    for (const std::int32_t flag : flagsOf(transform)) {
      const Bytes ordinary = runner.run(source, flag);
      for (const std::uint32_t mxcsr : {kTrapping, kOtherModes}) {
        for (std::uint64_t shift = 0; shift < 64; shift += 16) {
          Bytes destination(transform.destinationBytes, kUntouched);
          const Arguments arguments =
              transform.arguments(source.data(), destination.data(), flag, runner.work());
          const std::uint16_t x87 = kX87[calls++ % std::size(kX87)];
          expectKept(transform.function->address, arguments, mxcsr, x87, shift);
          if (testing::Test::HasFatalFailure()) return;
          ASSERT_TRUE(mxcsr == kOtherModes || destination == ordinary)
              << "shift " << shift << ", flag " << flag;
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
    for (int turn = 0; turn < 12; ++turn) {
      constexpr std::int32_t kSelectors[] = {2, 8, 1024};
      const std::int32_t selector = kSelectors[turn / 4];
      const std::uint64_t shift = turn % 4 * 16;
      Arguments arguments = {};
      for (std::size_t i = 0; i < arguments.size(); ++i) {
        const Role role = function.roles[i];
        arguments[i] = role == Role::Selector  ? asArgument(selector)
                       : role == Role::NewPlan ? asArgument(&plan)
                       : role == Role::Block   ? asArgument(block)
                                               : asArgument(&size);
      }
      expectKept(function.address, arguments, kMasked | 0x4000, kX87[0], shift);
      ++calls;
      if (function.takes(Role::NewPlan) && !function.takes(Role::Block)) {
        const Function& free = exports().sibling(function, {Role::Plan});
        expectKept(free.address, {asArgument(plan)}, kMasked | 0x4000, kX87[0], shift);
        ++calls;
      }
    }
  }
  RecordProperty("calls", calls);
}

}  // namespace
}  // namespace tests
