// Refusals: every combination of null pointers, bad flags and bad lengths, at every function. The
// arrays lie where nothing may be read or written, so a call that looks at them first is caught.

#include <algorithm>
#include <map>
#include <set>

#include "../placement.h"
#include "allocator.h"
#include "functions.h"
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

std::vector<Value> numbers(Kind kind, const std::vector<std::int32_t>& list) {
  std::vector<Value> values;
  for (const std::int32_t number : list) values.push_back({kind, asArgument(number)});
  return values;
}

std::vector<Value> operator+(std::vector<Value> a, const std::vector<Value>& b) {
  a.insert(a.end(), b.begin(), b.end());
  return a;
}

// What a function refuses, and in which order.
struct Refusals {
  std::vector<std::int32_t> good, bad;  // selectors
  bool selectorFirst;
};

std::vector<std::int32_t> range(std::int32_t from, std::int32_t to) {
  std::vector<std::int32_t> all;
  for (std::int32_t i = from; i <= to; ++i) all.push_back(i);
  return all;
}

Refusals refusalsOf(const Function& function) {
  if (function.name.starts_with("zvxgDCT4")) {
    // A block is only lent to plans that are refused.
    return {{}, {INT32_MIN, -4, -1, 0, 1, 3, 5, 192, 768, 1000, 65'534}, false};
  }
  if (function.name.starts_with("zvxgWHT")) {
    return {range(1, 13), {INT32_MIN, -13, -1, 0, 14, 15, 65536 + 8, INT32_MAX}, true};
  }
  return {range(2, 64), {INT32_MIN, -2, -1, 0, 1, 65, 66, 128, 65536 + 8, INT32_MAX}, true};
}

std::int32_t expectedStatus(const Function& function, const std::vector<Value>& values,
                            bool selectorFirst) {
  const auto any = [&](Kind kind, const std::set<Role>& roles) {
    for (std::size_t i = 0; i < values.size(); ++i) {
      if (values[i].kind == kind && roles.contains(function.roles[i])) return true;
    }
    return false;
  };
  const bool badLength = any(Kind::Bad, {Role::Selector});
  const std::set<Role> tested = {Role::Source, Role::Destination, Role::Plan, Role::NewPlan,
                                 Role::Block};
  if (selectorFirst && badLength) return zvxErrLength;
  if (any(Kind::Null, tested)) return zvxErrNullPointer;
  if (badLength) return zvxErrLength;
  return any(Kind::Bad, {Role::Flag}) ? zvxErrScaleFlag : zvxOk;
}

TEST(Contract, AllFunctionsAreKnown) {
  EXPECT_EQ(exportedFunctions().size(), 1193u);
  std::set<std::string> names;
  for (const Function& function : exportedFunctions()) names.insert(function.name);
  EXPECT_EQ(names.size(), 1193u);
}

TEST(Contract, EveryRefusalTouchesNothing) {
  GuardedPages pages, blockPages;
  pages.protect(PROT_NONE);
  std::byte* const forbidden = pages.place<std::byte>(1 << 16, false);
  const std::vector<Value> flags =
      numbers(Kind::Good, {1, 2, 4, 8}) +
      numbers(Kind::Bad, {0, 3, 5, 6, 7, 9, 10, 12, 15, 16, -1, -8, -16, 0x80, 0x108, 0x801,
                          0x10000, INT32_MAX, INT32_MIN});
  const std::vector<Value> null = {{Kind::Null, 0}};
  const auto at = [](const std::byte* address) {
    return std::vector<Value>{{Kind::Good, asArgument(address)}};
  };

  std::int64_t calls = 0;
  std::set<std::string> refusing;
  allocator = {};
  for (const Function& function : exportedFunctions()) {
    SCOPED_TRACE(function.name);
    const Refusals refusals = refusalsOf(function);
    std::vector<std::vector<Value>> choices;
    for (const Role role : function.roles) {
      switch (role) {
        case Role::Selector:
          choices.push_back(numbers(Kind::Good, refusals.good) + numbers(Kind::Bad, refusals.bad));
          break;
        case Role::Flag: choices.push_back(flags); break;
        // After a refused length the block holds anything.
        case Role::Block:
          choices.push_back(at(blockPages.place<std::byte>(1 << 16, true)) + null);
          break;
        default: choices.push_back(at(forbidden + 4096 * choices.size()) + null);
      }
    }
    // All combinations, counted like the digits of a number.
    std::vector<std::size_t> digits(choices.size());
    for (bool more = !choices.empty(); more;) {
      std::vector<Value> values;
      Arguments arguments = {};
      for (std::size_t i = 0; i < choices.size(); ++i) {
        values.push_back(choices[i][digits[i]]);
        arguments[i] = values[i].argument;
      }
      const std::int32_t expected = expectedStatus(function, values, refusals.selectorFirst);
      if (expected != zvxOk) {
        std::int32_t status = 1;
        const Fault fault = faultOf([&] { status = call(function, arguments); });
        ASSERT_TRUE(fault.signal == 0 && status == expected)
            << "status " << status << " instead of " << expected << ", signal " << fault.signal
            << ", arguments " << testing::PrintToString(arguments);
        ++calls;
        refusing.insert(function.name);
      }
      more = false;
      for (std::size_t i = 0; i < digits.size() && !more; ++i) {
        more = ++digits[i] < choices[i].size();
        if (!more) digits[i] = 0;
      }
    }
  }
  EXPECT_TRUE(allocator.taken.empty());
  EXPECT_EQ(allocator.nullsFreed + allocator.strangersFreed, 0);
  EXPECT_EQ(refusing.size(), 1192u);  // all but the version
  RecordProperty("calls", std::to_string(calls));
  RecordProperty("functions", static_cast<int>(refusing.size()));
}

}  // namespace
}  // namespace tests
