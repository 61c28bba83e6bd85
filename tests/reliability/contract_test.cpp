// Refusals: every combination of null pointers, bad flags and bad lengths, at every function. The
// arrays lie where nothing may be read or written, so a call that looks at them first is caught.

#include "../placement.h"
#include "allocator.h"
#include "zvxg.h"

namespace tests {
namespace {

enum class Kind {
  Good,
  Null,
  Bad
};

struct Value {
  Kind kind;
  std::uint64_t argument;
};
using Values = std::vector<Value>;

void add(Values& values, Kind kind, const std::vector<std::int32_t>& numbers) {
  for (const std::int32_t number : numbers) values.push_back({kind, asArgument(number)});
}

constexpr std::int32_t kAround[] = {INT32_MIN, -2, -1, 0, 65536 + 8, INT32_MAX};

// A block is only lent to plans that are refused, so there is no good length for them here.
Values selectors(const Function& function) {
  Values values;
  if (function.family == api::Family::Dct4) {
    add(values, Kind::Bad, {INT32_MIN, -4, -1, 0, 1, 3, 5, 192, 768, 1000, 65'534});
    return values;
  }
  for (int n = function.first; n <= function.last; ++n) add(values, Kind::Good, {n});
  add(values, Kind::Bad, {function.first - 1, function.last + 1, function.last + 2, 128});
  add(values, Kind::Bad, {std::begin(kAround), std::end(kAround)});
  return values;
}

Values flags() {
  Values values;
  add(values, Kind::Good, {std::begin(kFlags), std::end(kFlags)});
  add(values, Kind::Bad,
      {0, 3, 5, 6, 7, 9, 10, 12, 15, 16, -1, -8, -16, 0x80, 0x108, 0x801, 0x10000, INT32_MAX,
       INT32_MIN});
  return values;
}

// An entry looks at the length first, the making of a plan at the pointers.
std::int32_t expectedStatus(const Function& function, const Values& values) {
  const auto any = [&](Kind kind, std::initializer_list<Role> roles) {
    for (std::size_t i = 0; i < values.size(); ++i) {
      if (values[i].kind == kind && std::ranges::count(roles, function.roles[i]) > 0) return true;
    }
    return false;
  };
  const bool badLength = any(Kind::Bad, {Role::Selector});
  if (badLength && function.family != api::Family::Dct4) return zvxErrLength;
  if (any(Kind::Null, {Role::Source, Role::Destination, Role::Plan, Role::NewPlan, Role::Block})) {
    return zvxErrNullPointer;
  }
  if (badLength) return zvxErrLength;
  return any(Kind::Bad, {Role::Flag}) ? zvxErrScaleFlag : zvxOk;
}

TEST(Contract, EveryRefusalTouchesNothing) {
  constexpr std::size_t kBytes = 1 << 16;
  GuardedPages pages(kBytes), blockPages(kBytes);
  pages.allow(Access::None);
  std::int64_t calls = 0;
  int refusing = 0;
  allocator = {};
  for (const Function& function : exports().functions()) {
    SCOPED_TRACE(function.symbol);
    std::vector<Values> choices;
    for (const Role role : function.roles) {
      if (role == Role::None) continue;
      const std::byte* const forbidden = pages.place(kBytes, false) + 4096 * choices.size();
      // After a refused length the block holds anything.
      const std::byte* const place =
          role == Role::Block ? blockPages.place(kBytes, true) : forbidden;
      choices.push_back(role == Role::Selector ? selectors(function)
                        : role == Role::Flag
                            ? flags()
                            : Values{{Kind::Good, asArgument(place)}, {Kind::Null, 0}});
    }
    // All combinations, whose numbers have the choices for digits.
    std::size_t combinations = 1;
    for (const Values& values : choices) combinations *= values.size();
    const std::int64_t before = calls;
    for (std::size_t number = 0; number < combinations; ++number) {
      Values values;
      Arguments arguments = {};
      for (std::size_t i = 0, rest = number; i < choices.size(); rest /= choices[i++].size()) {
        values.push_back(choices[i][rest % choices[i].size()]);
        arguments[i] = values[i].argument;
      }
      const std::int32_t expected = expectedStatus(function, values);
      if (expected == zvxOk) continue;
      std::int32_t status = 1;
      const Fault fault = faultOf([&] { status = function.call(arguments); });
      ASSERT_TRUE(fault.signal == 0 && status == expected)
          << "status " << status << " instead of " << expected << ", signal " << fault.signal
          << ", arguments " << testing::PrintToString(arguments);
      ++calls;
    }
    refusing += calls > before;
  }
  EXPECT_TRUE(allocator.taken.empty());
  EXPECT_EQ(allocator.nullsFreed + allocator.strangersFreed, 0);
  EXPECT_EQ(refusing, exports().functions().size() - 1);  // all but the version
  RecordProperty("calls", std::to_string(calls));
  RecordProperty("functions", refusing);
}

}  // namespace
}  // namespace tests
