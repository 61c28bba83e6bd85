// Refusals: every combination of bad arguments, at every function.

#include "refusals.h"

namespace tests {
namespace {

TEST(Contract, EveryRefusalTouchesNothing) {
  Refusals refusals;
  std::int64_t calls = 0;
  int refusing = 0;
  for (const Function& function : exports().functions()) {
    const std::int64_t refused = refusals.expectOf(function);
    calls += refused;
    refusing += refused > 0;
  }
  EXPECT_EQ(refusing, exports().functions().size() - 1);  // all but the version
  RecordProperty("calls", std::to_string(calls));
  RecordProperty("functions", refusing);
}

}  // namespace
}  // namespace tests
