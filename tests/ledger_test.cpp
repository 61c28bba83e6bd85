// What a real or Hartley kernel multiplies, against the counts that are settled for its length: they
// show which blocks it is made of.

#include <gtest/gtest.h>

#include <set>

#include "counts.h"  // kernelgen

namespace tests {
namespace {

using namespace kernelgen;

// The lengths at which blocks share products beyond what the table counts: those of certain Rader
// steps, or multiples of them, and on the way back those of 13 and of parts of a power of two.
bool mayTakeLess(const KernelId& id) {
  static const std::set<int> kForward = {29, 37, 41, 53, 58, 59, 61};
  static const std::set<int> kOthers = {13, 26, 29, 31, 37, 39, 41, 48,
                                        52, 53, 58, 59, 60, 61, 62, 64};
  const bool isForward = id.family == Family::Real && id.direction == Direction::Forward;
  return (isForward ? kForward : kOthers).contains(id.length);
}

TEST(Ledger, ProductsAreThoseOfTheTable) {
  for (const KernelId& id : kernelList()) {
    if (id.family == Family::Complex) continue;
    SCOPED_TRACE(id.symbol());
    const Counts c = counts(makeKernel(id));
    ASSERT_TRUE(c.stated.has_value());
    EXPECT_EQ(c.scales, id.length);
    EXPECT_LE(c.products, *c.stated);
    EXPECT_GE(c.products, mayTakeLess(id) ? *c.stated * 4 / 5 : *c.stated);
  }
}

}  // namespace
}  // namespace tests
