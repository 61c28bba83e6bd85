// Calls that have nothing to do: every combination of null pointers, bad flags, bad lengths and numbers
// of transforms. The arrays lie where nothing may be read or written, so a call that looks at them first
// is caught.
#pragma once

#include "../placement.h"
#include "allocator.h"
#include "zvxg.h"

namespace tests {

class Refusals {
 public:
  /// Calls the function with all combinations that it refuses, or that ask for no transform. Returns
  /// their number.
  std::int64_t expectOf(const Function& function) {
    SCOPED_TRACE(function.symbol);
    std::vector<Values> choices;
    for (const Role role : function.roles) {
      if (role != Role::None) choices.push_back(valuesOf(function, role, 4096 * choices.size()));
    }
    // All combinations, whose numbers have the choices for digits.
    std::size_t combinations = 1;
    for (const Values& values : choices) combinations *= values.size();
    std::int64_t calls = 0;
    allocator = {};
    for (std::size_t number = 0; number < combinations; ++number) {
      Values values;
      Arguments arguments = {};
      for (std::size_t i = 0, rest = number; i < choices.size(); rest /= choices[i++].size()) {
        values.push_back(choices[i][rest % choices[i].size()]);
        arguments[i] = values[i].argument;
      }
      const std::int32_t expected = expectedStatus(function, values);
      if (expected == zvxOk && !any(function, values, Kind::None, {Role::Howmany})) continue;
      std::int32_t status = 1;
      const Fault fault = faultOf([&] { status = function.call(arguments); });
      const bool isRight = fault.signal == 0 && status == expected;
      EXPECT_TRUE(isRight) << "status " << status << " instead of " << expected << ", signal "
                           << fault.signal << ", arguments " << testing::PrintToString(arguments);
      if (!isRight) break;
      ++calls;
    }
    EXPECT_TRUE(allocator.taken.empty());
    EXPECT_EQ(allocator.nullsFreed + allocator.strangersFreed, 0);
    return calls;
  }

 private:
  enum class Kind {
    Good,
    Null,
    None,  // no transform
    Bad
  };
  struct Value {
    Kind kind;
    std::uint64_t argument;
  };
  using Values = std::vector<Value>;

  static void add(Values& values, Kind kind, std::initializer_list<std::int32_t> numbers) {
    for (const std::int32_t number : numbers) values.push_back({kind, asArgument(number)});
  }

  Values valuesOf(const Function& function, Role role, std::size_t offset) {
    constexpr std::uint64_t kLowest = 1ull << 63, kHighest = kLowest - 1, kMinusOne = ~0ull;
    Values values;
    switch (role) {
      case Role::Selector:
        // A block is only lent to plans that are refused, so there is no good length for them here.
        if (function.family == api::Family::Dct4) {
          add(values, Kind::Bad, {INT32_MIN, -4, -1, 0, 1, 3, 5, 192, 768, 1000, 65'534});
          break;
        }
        for (int n = function.first; n <= function.last; ++n) add(values, Kind::Good, {n});
        add(values, Kind::Bad,
            {function.first - 1, function.last + 1, function.last + 2, 128, INT32_MIN, -2, -1, 0,
             65'536 + 8, INT32_MAX});
        break;
      case Role::Flag:
        add(values, Kind::Good, {1, 2, 4, 8});
        add(values, Kind::Bad,
            {0, 3, 5, 6, 7, 9, 10, 12, 15, 16, -1, -8, -16, 0x80, 0x108, 0x801, 0x10000, INT32_MAX,
             INT32_MIN});
        break;
      case Role::Howmany:
        values = {{Kind::Good, 1},
                  {Kind::Good, kHighest},
                  {Kind::None, 0},
                  {Kind::Bad, kMinusOne},
                  {Kind::Bad, kLowest}};
        break;
      case Role::SourceStride:
      case Role::DestinationDist: values = {{Kind::Good, kHighest}}; break;
      case Role::SourceDist:
      case Role::DestinationStride: values = {{Kind::Good, kLowest}}; break;
      default: {
        // After a refused length the block holds anything.
        std::byte* const place = role == Role::Block ? block_.place(kBytes, true)
                                                     : forbidden_.place(kBytes, false) + offset;
        values = {{Kind::Good, asArgument(place)}, {Kind::Null, 0}};
      }
    }
    return values;
  }

  static bool any(const Function& function, const Values& values, Kind kind,
                  std::initializer_list<Role> roles) {
    for (std::size_t i = 0; i < values.size(); ++i) {
      if (values[i].kind == kind && std::ranges::count(roles, function.roles[i]) > 0) return true;
    }
    return false;
  }

  // Lengths and numbers of transforms come first, but in the making of a plan. No transform needs no
  // arrays.
  static std::int32_t expectedStatus(const Function& function, const Values& values) {
    const auto has = [&](Kind kind, std::initializer_list<Role> roles) {
      return any(function, values, kind, roles);
    };
    const bool badLength = has(Kind::Bad, {Role::Selector, Role::Howmany});
    if (badLength && function.takes(Role::Source)) return zvxErrLength;
    const bool isNull =
        has(Kind::Null, {Role::Source, Role::Destination, Role::Plan, Role::NewPlan, Role::Block});
    if (isNull && !has(Kind::None, {Role::Howmany})) return zvxErrNullPointer;
    if (badLength) return zvxErrLength;
    return has(Kind::Bad, {Role::Flag}) ? zvxErrScaleFlag : zvxOk;
  }

  static constexpr std::size_t kBytes = 1 << 16;
  struct Forbidden : GuardedPages {
    Forbidden() : GuardedPages(kBytes) { allow(Access::None); }
  };
  Forbidden forbidden_;
  GuardedPages block_{kBytes};
};

}  // namespace tests
