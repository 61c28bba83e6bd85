// What the library asks of zvxMalloc and zvxFree: how much, where not, and what a refusal does.

#include <csignal>

#include "../placement.h"
#include "allocator.h"
#include "zvxg.h"

namespace tests {
namespace {

// After each test all is given back, and nothing that was not taken.
class Allocation : public testing::Test {
 protected:
  void SetUp() override { allocator = {}; }
  void TearDown() override {
    EXPECT_EQ(allocator.outstanding, 0) << "blocks not given back";
    EXPECT_EQ(allocator.strangersFreed, 0) << "blocks freed twice, or not taken";
    RecordProperty("calls", calls);
  }

  // A call that takes blocks of just these bytes.
  Fault expectTaken(const Function& function, const Arguments& arguments,
                    const std::vector<std::int32_t>& bytes, std::int32_t expectedStatus) {
    ++calls;
    allocator.taken.clear();
    std::int32_t status = expectedStatus;
    const Fault fault = faultOf([&] { status = function.call(arguments); });
    EXPECT_EQ(status, expectedStatus);
    EXPECT_EQ(allocator.taken, bytes);
    return fault;
  }

  Random random = makeRandom();
  int calls = 0;
};

std::vector<std::int32_t> blockOf(const Transform& transform) {
  if (transform.workBytes == 0) return {};
  return {static_cast<std::int32_t>(transform.workBytes)};
}

TEST_F(Allocation, NoneWhereWorkMemoryIsGiven) {
  forEachTransform([&](const Transform& transform) {
    const Runner runner(transform);
    for (const std::int32_t flag : flagsOf(transform)) {
      runner.run(normalBytes(transform, random), flag);
      ++calls;
    }
  });
  EXPECT_TRUE(allocator.taken.empty());
  EXPECT_EQ(allocator.nullsFreed, 0);
}

// Refused, the call meets the null pointer when it fills the buffer, before it writes the
// destination: the header tells that the result of zvxMalloc is not tested.
TEST_F(Allocation, NullBufferIsTakenInItsSizeAndGivenBack) {
  forEachTransform([&](const Transform& transform) {
    if (!transform.function->takes(Role::Buffer)) return;
    const Bytes data = normalBytes(transform, random);
    const Bytes untouched(data.size(), kUntouched);
    for (const std::int32_t flag : kFlags) {
      for (const bool fails : {false, true}) {
        Bytes destination = untouched;
        allocator.fails = fails;
        const Arguments arguments =
            transform.arguments(data.data(), destination.data(), flag, nullptr);
        const Fault fault = expectTaken(*transform.function, arguments, blockOf(transform), zvxOk);
        allocator.fails = false;
        const bool stops = fails && transform.workBytes > 0;
        ASSERT_EQ(fault.signal, stops ? SIGSEGV : 0);
        ASSERT_LE(reinterpret_cast<std::uintptr_t>(fault.address), transform.workBytes);
        ASSERT_TRUE(destination == (stops ? untouched : Runner(transform).run(data, flag)));
        ASSERT_EQ(allocator.outstanding, 0);
      }
    }
  });
  EXPECT_EQ(allocator.nullsFreed, 0);
}

TEST_F(Allocation, PlansTakeOneBlockOfTheirSize) {
  forEachTransform([&](const Transform& transform) {
    if (!transform.function->isPlanned()) return;
    const Function& init = exports().sibling(*transform.function, {Role::NewPlan, Role::Selector});
    const void* const before = this;
    const void* plan = before;
    const Arguments arguments = {asArgument(&plan), asArgument(transform.selector)};
    allocator.fails = true;
    expectTaken(init, arguments, blockOf(transform), zvxErrNullPointer);
    EXPECT_EQ(plan, before) << "written";
    EXPECT_EQ(std::exchange(allocator.nullsFreed, 0), 1);

    allocator.fails = false;
    expectTaken(init, arguments, blockOf(transform), zvxOk);
    const Bytes data = normalBytes(transform, random);
    Bytes destination(data.size(), kUntouched);
    expectTaken(*transform.function,
                transform.arguments(data.data(), destination.data(), kUnscaled, plan), {}, zvxOk);
    EXPECT_TRUE(destination == Runner(transform).run(data, kUnscaled));
    EXPECT_EQ(allocator.outstanding, 1);
    expectTaken(exports().sibling(init, {Role::Plan}), {asArgument(plan)}, {}, zvxOk);
    EXPECT_EQ(allocator.outstanding, 0);
  });
  EXPECT_EQ(allocator.nullsFreed, 0);
}

}  // namespace
}  // namespace tests
