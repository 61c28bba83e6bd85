// What the library asks of zvxMalloc and zvxFree: how much, where not, and what a refusal does.

#include "../placement.h"
#include "allocator.h"
#include "functions.h"
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
  }

  // body(transform, taken) for each transform called with null in place of a buffer: the bytes that
  // it should ask for.
  template <class Body>
  static void forEachWithoutBuffer(const Body& body) {
    forEachTransform([&](const Transform& transform) {
      if (!transform.function->takes(Role::Buffer)) return;
      const auto bytes = static_cast<std::int32_t>(transform.workBytes);
      body(transform, bytes == 0 ? std::vector<std::int32_t>() : std::vector{bytes});
    });
  }

  // body(init, free, transform) for each transform with a plan.
  template <class Body>
  static void forEachPlan(const Body& body) {
    forEachTransform([&](const Transform& transform) {
      if (!transform.isPlanned()) return;
      const std::string suffix = transform.isSingle() ? "_32f" : "_64f";
      body(functionNamed("zvxgDCT4InitAlloc" + suffix), functionNamed("zvxgDCT4Free" + suffix),
           transform);
    });
  }

  Random random = makeRandom();
};

TEST_F(Allocation, NoneWhereWorkMemoryIsGiven) {
  int calls = 0;
  forEachTransform([&](const Transform& transform) {
    const Runner runner(transform);
    const Bytes data = normalBytes(transform, random);
    for (const std::int32_t flag : transform.flags()) {
      runner.run(data, flag);
      ++calls;
    }
  });
  EXPECT_TRUE(allocator.taken.empty());
  EXPECT_EQ(allocator.nullsFreed, 0);
  RecordProperty("calls", calls);
}

TEST_F(Allocation, NullBufferIsTakenInItsSizeAndGivenBack) {
  int calls = 0;
  forEachWithoutBuffer([&](const Transform& transform, const std::vector<std::int32_t>& expected) {
    const Bytes data = normalBytes(transform, random);
    for (const std::int32_t flag : kFlags) {
      const Bytes result = Runner(transform).run(data, flag);
      Bytes destination(result.size());
      allocator.taken.clear();
      const Arguments arguments =
          transform.arguments(data.data(), destination.data(), flag, nullptr);
      ASSERT_TRUE(runsWithoutFault([&] { call(*transform.function, arguments); }));
      ASSERT_EQ(allocator.taken, expected);
      ASSERT_EQ(allocator.outstanding, 0);
      ASSERT_TRUE(result == destination) << "other bits than with a buffer";
      ++calls;
    }
  });
  EXPECT_EQ(allocator.nullsFreed, 0);
  RecordProperty("calls", calls);
}

TEST_F(Allocation, PlansTakeOneBlockOfTheirSize) {
  int plans = 0;
  forEachPlan([&](const Function& init, const Function& free, const Transform& transform) {
    allocator.taken.clear();
    const void* plan = nullptr;
    ASSERT_EQ(call(init, {asArgument(&plan), asArgument(transform.selector)}), zvxOk);
    const std::vector expected = {static_cast<std::int32_t>(transform.workBytes)};
    EXPECT_EQ(allocator.taken, expected);
    EXPECT_EQ(allocator.outstanding, 1);
    const Bytes data = normalBytes(transform, random);
    Bytes destination(data.size(), kUntouched);
    const Arguments arguments =
        transform.arguments(data.data(), destination.data(), kUnscaled, plan);
    EXPECT_EQ(call(*transform.function, arguments), zvxOk);
    EXPECT_TRUE(destination == Runner(transform).run(data, kUnscaled));
    EXPECT_EQ(call(free, {asArgument(plan)}), zvxOk);
    EXPECT_EQ(allocator.outstanding, 0);
    EXPECT_EQ(allocator.taken, expected);
    ++plans;
  });
  EXPECT_EQ(allocator.nullsFreed, 0);
  RecordProperty("calls", plans);
}

// ---- Failure -----------------------------------------------------------------------------------

// Told in the header: the result of zvxMalloc is not tested. The call meets the null pointer when
// it fills the buffer, before it writes the destination.
TEST_F(Allocation, RefusedBufferStopsTheCall) {
  int calls = 0;
  forEachWithoutBuffer([&](const Transform& transform, const std::vector<std::int32_t>& expected) {
    const Bytes data = normalBytes(transform, random);
    for (const std::int32_t flag : kFlags) {
      Bytes destination(transform.destinationBytes, kUntouched);
      allocator = {};
      allocator.fails = true;
      const Arguments arguments =
          transform.arguments(data.data(), destination.data(), flag, nullptr);
      const Fault fault = faultOf([&] { call(*transform.function, arguments); });
      ASSERT_EQ(allocator.taken, expected);
      ++calls;
      if (expected.empty()) {
        ASSERT_EQ(fault.signal, 0);
        continue;
      }
      ASSERT_EQ(fault.signal, SIGSEGV);
      ASSERT_LT(reinterpret_cast<std::uintptr_t>(fault.address), transform.workBytes);
      ASSERT_TRUE(destination == Bytes(destination.size(), kUntouched)) << "destination written";
    }
  });
  RecordProperty("calls", calls);
}

TEST_F(Allocation, RefusedBlockIsANullPointer) {
  int calls = 0;
  forEachPlan([&](const Function& init, const Function&, const Transform& transform) {
    allocator = {};
    allocator.fails = true;
    const void* const before = this;
    const void* plan = before;
    ASSERT_EQ(call(init, {asArgument(&plan), asArgument(transform.selector)}), zvxErrNullPointer);
    EXPECT_EQ(allocator.taken, std::vector{static_cast<std::int32_t>(transform.workBytes)});
    EXPECT_EQ(allocator.nullsFreed, 1);
    EXPECT_EQ(plan, before) << "written";
    ++calls;
  });
  RecordProperty("calls", calls);
}

}  // namespace
}  // namespace tests
