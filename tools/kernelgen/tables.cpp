#include "tables.h"

#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace kernelgen {
namespace {

struct Row {
  Design single, dbl;
};

Row row(int n, Design single, Design dbl) {
  if (single.recipe.n() != n || dbl.recipe.n() != n) {
    throw std::invalid_argument("complex table, row " + std::to_string(n) + ": the recipes " +
                                single.recipe.print() + " and " + dbl.recipe.print() +
                                " are of another length");
  }
  return {std::move(single), std::move(dbl)};
}

// A recipe at a vector width. A row with `any` has one body for all alignments, one with `long` is
// longer than the cache of decoded instructions.
Design scalar(Recipe r) { return {.recipe = std::move(r), .width = kScalar, .bodies = 1}; }
Design w128(Recipe r) { return {.recipe = std::move(r), .width = 128, .bodies = 2}; }
Design w256(Recipe r) { return {.recipe = std::move(r), .width = 256, .bodies = 2}; }
Design w256any(Recipe r) { return {.recipe = std::move(r), .width = 256, .bodies = 1}; }
Design w128long(Recipe r) {
  return {.recipe = std::move(r), .width = 128, .bodies = 2, .isLong = true};
}

const Recipe kFiveAgain = Recipe(5).secondForm();

// The convolutions of the chirp steps: in single precision those of 47 and 59 points, as 46 and 58
// are twice a prime.
const Recipe k96 = CT(GT(3, CT(4, 2)), 4), k96Back = CT(4, GT(3, CT(4, 2)));
const Recipe k128 = CT(CT(CT(4, 2), 4), 4), k128Back = CT(4, CT(4, CT(2, 4)));

// The transforms of the Rader steps: the first meets the input in the order of the powers of the
// primitive root, the second leaves the output in that order. In double precision the second ends
// in a 2-point stage, as the elements m and m + (p-1)/2 are the sum and the difference of one pair.
struct PrimeRow {
  int p;
  std::optional<Recipe> singleFirst, singleSecond, doubleFirst, doubleSecond;
};

const PrimeRow kPrimes[] = {
    //  p  single                                  double
    {7, GT(2, 3), GT(3, 2), {}, {}},
    {11, GT(5, 2), GT(2, 5), GT(2, 5), GT(5, 2)},
    {13, GT(4, 3), GT(3, 4), CT(GT(3, 2), 2), CT(2, GT(3, 2))},
    {17, CT(4, 4), CT(4, 4), CT(CT(CT(2, 2), 2), 2), CT(2, CT(2, CT(2, 2)))},
    {19, CT(GT(3, 2), 3), CT(3, GT(3, 2)), CT(GT(2, 3), 3), CT(3, GT(3, 2))},
    {23, GT(2, 11), GT(11, 2), GT(2, 11), GT(R(11), 2)},  // the two 11 of double differ
    {29, GT(4, 7), GT(7, 4), CT(GT(2, 7), 2), CT(2, GT(7, 2))},
    {31, GT(GT(5, 2), 3), GT(3, GT(5, 2)), GT(GT(3, 5), 2), GT(3, GT(5, 2))},
    {37, CT(GT(4, 3), 3), CT(3, GT(3, 4)), CT(CT(GT(2, 3), 2), 3), CT(3, GT(3, CT(2, 2)))},
    {41, CT(GT(5, 2), 4), CT(4, GT(5, 2)), CT(CT(GT(kFiveAgain, 2), 2), 2), CT(2, CT(2, GT(5, 2)))},
    {43, GT(GT(7, 2), 3), GT(3, GT(7, 2)), GT(GT(2, 7), 3), GT(7, GT(3, 2))},
    {47, {}, {}, GT(R(23), 2), GT(R(23), 2)},
    {53, GT(4, R(13)), GT(R(13), 4), CT(GT(R(13), 2), 2), CT(2, GT(R(13), 2))},
    {59, {}, {}, GT(R(29), 2), GT(R(29), 2)},
    {61, CT(4, GT(5, 3)), CT(5, GT(3, 4)), CT(GT(GT(3, 2), 5), 2), CT(2, GT(3, GT(5, 2)))},
};

// The recipe with every Rader step's transforms filled in.
Recipe withPrimes(const Recipe& r, Precision precision) {
  if (r.step() == Step::GoodThomas || r.step() == Step::CooleyTukey) {
    const Recipe first = withPrimes(r.first(), precision);
    const Recipe second = withPrimes(r.second(), precision);
    return r.step() == Step::GoodThomas ? GT(first, second) : CT(first, second);
  }
  if (r.step() != Step::Rader) return r;
  for (const PrimeRow& row : kPrimes) {
    if (row.p != r.n()) continue;
    const bool single = precision == Precision::Single;
    const auto& first = single ? row.singleFirst : row.doubleFirst;
    const auto& second = single ? row.singleSecond : row.doubleSecond;
    if (!first || !second) break;
    return R(row.p, withPrimes(*first, precision), withPrimes(*second, precision));
  }
  throw std::invalid_argument("table of primes: no Rader step for " + r.print() +
                              " in this precision");
}

// The first argument of a two-factor form is the stage that touches the input. Paces took 1.5 to 9 %
// off the time of a kernel, in both directions, on Zen 3; nothing in the graphs foretells them, as
// the compiler has the last word on registers.
const Row kRows[] = {
    // clang-format off
    //   n   single                                double
    row( 2, scalar(2),                            w128(2)),
    row( 3, scalar(Recipe(3).widened()),          w128(3)),
    row( 4, scalar(4),                            w128(4)),
    row( 5, scalar(Recipe(5).widened()),          w128(5)),
    row( 6, w128(GT(2, 3)),                       w128(GT(2, 3))),
    row( 7, w128(R(7)),                           w128(7).paced(13, 4)),
    row( 8, w128(CT(4, 2)),                       w256(CT(4, 2))),
    row( 9, w128(CT(3, 3)),                       w128(CT(3, 3))),
    row(10, w128(GT(5, 2)).paced(11, 4),          w128(GT(kFiveAgain, 2))),
    row(11, w128(R(11)),                          w128(11).paced(10, 2)),
    row(12, w128(GT(4, 3)),                       w256(CT(2, GT(2, 3)))),
    row(13, w128(R(13)).paced(11, 3),             w128(R(13)).paced(14, 3)),
    row(14, w128(GT(2, 7)).paced(13, 3),          w128(GT(2, 7)).paced(12, 4)),
    row(15, w128(GT(5, 3)).paced(14, 3),          w128(GT(5, 3)).paced(12, 3)),
    row(16, w256(CT(4, 4)).paced(10, 2),          w256(CT(CT(4, 2), 2))),
    row(17, w128(R(17)),                          w128(R(17))),
    row(18, w128(CT(GT(3, 2), 3)).paced(13, 3),   w128(GT(CT(3, 3), 2))),
    row(19, w128(R(19)),                          w128(R(19))),
    row(20, w128(GT(4, 5)),                       w256any(CT(GT(2, 5), 2)).paced(12, 4)),
    row(21, w128(GT(7, 3)),                       w128(GT(7, 3)).paced(11, 4)),
    row(22, w128(GT(2, 11)),                      w128(GT(11, 2))),
    row(23, w128(R(23)),                          w128(R(23))),
    row(24, w128(CT(4, GT(3, 2))),                w256any(CT(GT(4, 3), 2)).paced(11, 3)),
    row(25, w128(CT(5, 5)).paced(12, 4),          w128(CT(5, 5)).paced(12, 3)),
    row(26, w128(GT(R(13), 2)),                   w128(GT(R(13), 2))),
    row(27, w128(CT(CT(3, 3), 3)).paced(12, 4),   w128(CT(CT(3, 3), 3))),
    row(28, w128(GT(4, 7)),                       w256any(CT(GT(7, 2), 2)).paced(13, 4)),
    row(29, w128(R(29)),                          w128(R(29))),
    row(30, w128(GT(GT(5, 2), 3)).paced(13, 4),   w128(GT(GT(2, 5), 3))),
    row(31, w128(R(31)),                          w128(R(31))),
    row(32, w256(CT(CT(4, 2), 4)).paced(11, 3),   w256(CT(CT(4, 4), 2)).paced(13, 4)),
    row(33, w128(GT(11, 3)),                      w128(GT(11, 3)).paced(12, 6)),
    row(34, w128(GT(2, R(17))),                   w128(GT(2, R(17)))),
    row(35, w128(GT(5, 7)),                       w128(GT(kFiveAgain, 7))),
    row(36, w128(CT(GT(4, 3), 3)).paced(13, 3),   w256any(CT(GT(2, 3), GT(2, 3))).paced(12, 4)),
    row(37, w128(R(37)),                          w128(R(37))),
    row(38, w128(GT(2, R(19))),                   w128(GT(2, R(19)))),
    row(39, w128(GT(R(13), 3)),                   w128(GT(R(13), 3))),
    row(40, w128(CT(GT(5, 2), 4)),                w256any(CT(4, GT(2, 5)))),
    row(41, w128(R(41)),                          w128(R(41))),
    row(42, w128(GT(GT(7, 2), 3)),                w128(GT(GT(2, 7), 3)).paced(12, 3)),
    row(43, w128(R(43)),                          w128(R(43))),
    row(44, w128(GT(4, 11)),                      w256any(CT(GT(2, R(11)), 2))),  // 11 by Rader
    row(45, w128(CT(GT(5, 3), 3)),                w128(GT(5, CT(3, 3)))),
    row(46, w128(CT(R(23), 2)),                   w128(GT(R(23), 2))),
    row(47, w128(B(47, k96, k96Back)),            w128long(R(47))),
    row(48, w256(CT(4, GT(4, 3))).paced(12, 4),   w256any(CT(4, GT(4, 3)))),
    row(49, w128(CT(7, 7)),                       w128(CT(7, 7))),
    row(50, w128(CT(GT(5, 2), 5)).paced(13, 4),   w128(GT(CT(kFiveAgain, 5), 2))),  // a 5 as in 10
    row(51, w128(GT(R(17), 3)),                   w128(GT(R(17), 3))),
    row(52, w128(GT(4, R(13))),                   w256any(CT(2, GT(2, R(13))))),
    row(53, w128(R(53)),                          w128(R(53))),
    row(54, w128(CT(CT(GT(2, 3), 3), 3)),         w128(CT(GT(2, 3), CT(3, 3)))),
    row(55, w128(GT(5, 11)),                      w128(GT(11, 5))),
    row(56, w128(CT(GT(7, 2), 4)),                w256any(CT(2, GT(7, 4)))),
    row(57, w128(GT(R(19), 3)),                   w128(GT(R(19), 3))),
    row(58, w128(GT(2, R(29))),                   w128(GT(R(29), 2))),
    row(59, w128(B(59, k128, k128Back)),          w128long(R(59))),
    row(60, w128(CT(4, GT(5, 3))),                w256any(CT(GT(2, 5), GT(2, 3)))),
    row(61, w128(R(61)),                          w128(R(61))),
    row(62, w128(CT(R(31), 2)),                   w128(GT(R(31), 2))),
    row(63, w128(GT(CT(3, 3), 7)),                w128(GT(7, CT(3, 3)))),
    row(64, w256(CT(CT(4, 4), 4)),                w256any(CT(CT(4, 4), 4))),
    // clang-format on
};
static_assert(std::size(kRows) == kMaxLength - kMinLength + 1, "a row for each length");

const Design& complexDesign(int n, Precision precision) {
  static const std::vector<Row> kDesigns = [] {
    std::vector<Row> rows(std::begin(kRows), std::end(kRows));
    for (Row& r : rows) {
      r.single.recipe = withPrimes(r.single.recipe, Precision::Single);
      r.dbl.recipe = withPrimes(r.dbl.recipe, Precision::Double);
    }
    return rows;
  }();
  const Row& row = kDesigns[n - kMinLength];
  return precision == Precision::Single ? row.single : row.dbl;
}

}  // namespace

std::string Design::print() const {
  return recipe.print() + (width == kScalar ? ", scalar" : ", " + std::to_string(width) + " bits");
}

const Design& designOf(const KernelId& id) {
  if (id.length < kMinLength || id.length > kMaxLength) {
    throw std::out_of_range("the tables have no row " + std::to_string(id.length));
  }
  switch (id.family) {
    case Family::Complex: return complexDesign(id.length, id.precision);
    case Family::Real:
    case Family::Hartley: return realDesign(id);
  }
  throw std::logic_error("no table has " + id.symbol());
}

}  // namespace kernelgen
