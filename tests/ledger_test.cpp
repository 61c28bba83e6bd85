// What a real or Hartley kernel multiplies, against the counts and constants that are settled for
// its length: they show which blocks it is made of.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <set>

#include "counts.h"  // kernelgen

namespace tests {
namespace {

using namespace kernelgen;

template <class Body>
void forEachReal(const Body& body) {
  int count = 0;
  for (const KernelId& id : kernelList()) {
    if (id.family == Family::Complex) continue;
    SCOPED_TRACE(id.symbol());
    body(makeKernel(id));
    ++count;
  }
  ASSERT_EQ(count, 882);
}

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
  forEachReal([](const Kernel& kernel) {
    const Counts c = counts(kernel);
    ASSERT_TRUE(c.stated.has_value());
    if (mayTakeLess(kernel.id)) {
      EXPECT_LE(c.products, *c.stated);
      EXPECT_GE(c.products, *c.stated * 4 / 5);
    } else {
      EXPECT_EQ(c.products, *c.stated);
    }
    EXPECT_EQ(c.scales, kernel.id.length);
  });
}

int singleScaleProducts(const Graph& g) {
  int count = 0;
  for (NodeId id = 0; id < g.size(); ++id) {
    const Node& n = g[id];
    const bool isScaled = n.op == Op::Mul && (g[n.a].op == Op::Scale || g[n.b].op == Op::Scale);
    count += isScaled && n.precision == Precision::Single;
  }
  return count;
}

// Outputs that are plain sums are multiplied by the factor in single precision, the others within
// the double expression that they are.
TEST(Ledger, FactorsInSinglePrecision) {
  const std::map<int, int> kSome = {{2, 2},   {3, 1},   {4, 4},   {5, 1},   {6, 6},   {7, 1},
                                    {8, 8},   {9, 7},   {11, 1},  {12, 8},  {13, 13}, {14, 2},
                                    {16, 16}, {20, 20}, {24, 24}, {32, 32}, {64, 64}};
  forEachReal([&](const Kernel& kernel) {
    const KernelId& id = kernel.id;
    if (id.precision != Precision::Single) return;
    const bool isForward = id.family == Family::Real && id.direction == Direction::Forward;
    const int count = singleScaleProducts(kernel.graph);
    if (!isForward) {
      EXPECT_EQ(count, id.length);
    } else if (const auto known = kSome.find(id.length); known != kSome.end()) {
      EXPECT_EQ(count, known->second);
    }
  });
}

std::set<double> constantsOf(const Graph& g) {
  std::set<double> constants;
  for (NodeId id = 0; id < g.size(); ++id) {
    const Node& n = g[id];
    if (n.op == Op::Const) constants.insert(std::abs(n.constants[0].value));
  }
  return constants;
}

// Constants that tell one order of the operations from another: products of two rounded ones, the
// factor two of a pair of bins merged or left as it is, and 1/(p-1) of the Rader steps.
TEST(Ledger, TellingConstants) {
  const std::map<int, std::set<double>> kForward = {
      {13, {0.4330127018922193, 0.7499999999999999, 0.3004626062886657, 0.08333333333333333}},
      {47, {1.0 / 22, 1.0 / 10}},
  };
  const std::map<int, std::set<double>> kInverse = {
      {3, {1.7320508075688772, 2, 0.5}},
      {9, {0.5566703992264194, 0.1503837331804353}},
  };
  forEachReal([&](const Kernel& kernel) {
    if (kernel.id.family != Family::Real) return;
    const auto& wanted = kernel.id.direction == Direction::Forward ? kForward : kInverse;
    const auto row = wanted.find(kernel.id.length);
    if (row == wanted.end()) return;
    const std::set<double> held = constantsOf(kernel.graph);
    for (const double constant : row->second) {
      EXPECT_TRUE(held.contains(constant)) << std::hexfloat << constant;
    }
  });
}

}  // namespace
}  // namespace tests
