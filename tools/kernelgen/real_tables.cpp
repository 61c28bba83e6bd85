// The rows of the real and Hartley kernels; they serve both precisions.
#include <stdexcept>
#include <string>
#include <vector>

#include "tables.h"

namespace kernelgen {
namespace {

constexpr Flow kForward = Flow::ToSpectrum;
constexpr Flow kInverse = Flow::ToSamples;
constexpr bool kLong = true;

struct RealRow {
  int n;
  Recipe forward;
  int forwardProducts;
  Recipe inverse;
  int inverseProducts;
  Flow hartley;
  int hartleyProducts;
  bool isLong = false;
};

// The first argument of a two-factor form is the stage that touches the input: the samples forward,
// the spectrum on the way back. Behind a recipe is its count of products by constants, with the
// doublings of bins on the way back; a Hartley kernel takes one of the two and does not double.
const RealRow kRows[] = {
    // clang-format off
    { 2, 2,                         0,   2,                         0,   kForward,    0},
    { 3, 3,                         2,   3,                         3,   kForward,    2},
    { 4, 4,                         0,   4,                         2,   kForward,    0},
    { 5, 5,                         8,   5,                        12,   kForward,    8},
    { 6, GT(3, 2),                  4,   GT(2, 3),                  8,   kForward,    4},
    { 7, 7,                        18,   7,                        24,   kForward,   18},
    { 8, 8,                         2,   8,                         8,   kForward,    2},
    { 9, CT(3, 3),                 20,   CT(3, 3),                 25,   kForward,   20},
    {10, GT(5, 2),                 16,   GT(2, 5),                 24,   kInverse,   16},
    {11, 11,                       50,   R(11),                    60,   kForward,   50},
    {12, GT(4, 3),                  8,   GT(3, 4),                 16,   kInverse,    8},
    {13, R(13),                    41,   R(13),                    56,   kInverse,   44},
    {14, GT(2, 7),                 36,   GT(2, 7),                 48,   kInverse,   36},
    {15, GT(3, 5),                 34,   GT(3, 5),                 47,   kInverse,   34},
    {16, 16,                       12,   16,                       26,   kForward,   12},
    {17, R(17),                    54,   R(17),                    68,   kInverse,   54},
    {18, GT(2, CT(3, 3)),          40,   GT(2, CT(3, 3)),          52,   kInverse,   36},
    {19, R(19),                   108,   R(19),                   128,   kForward,  108},
    {20, GT(5, 4),                 32,   GT(5, 4),                 50,   kInverse,   32},
    {21, GT(7, 3),                 68,   GT(3, 7),                 87,   kForward,   68},
    {22, GT(2, 11),               100,   GT(R(11), 2),            120,   kForward,  100},
    {23, R(23),                   242,   R(23),                   264,   kInverse,  242},
    {24, GT(3, 8),                 22,   GT(8, 3),                 44,   kForward,   22},
    {25, CT(5, 5),                112,   CT(5, 5),                136,   kInverse,  112},
    {26, GT(R(13), 2),             82,   GT(2, R(13)),            112,   kForward,   82},
    {27, CT(3, CT(3, 3)),         110,   CT(CT(3, 3), 3),         125,   kInverse,  100},
    {28, GT(4, 7),                 72,   GT(4, 7),                 98,   kInverse,   72},
    {29, R(29),                   210,   R(29),                   238,   kForward,  210},
    {30, GT(5, GT(3, 2)),          68,   GT(GT(3, 5), 2),          94,   kInverse,   68},
    {31, R(31),                   192,   R(31),                   224,   kInverse,  194},
    {32, 32,                       44,   32,                       72,   kInverse,   42},
    {33, GT(11, 3),               172,   GT(3, R(11)),            203,   kInverse,  172},
    {34, GT(2, R(17)),            108,   GT(R(17), 2),            136,   kInverse,  108},
    {35, GT(7, 5),                146,   GT(5, 7),                180,   kInverse,  146},
    {36, GT(CT(3, 3), 4),          80,   GT(4, CT(3, 3)),         106,   kInverse,   72},
    {37, R(37),                   228,   R(37),                   272,   kInverse,  236},
    {38, GT(R(19), 2),            216,   GT(2, R(19)),            256,   kForward,  216},
    {39, GT(R(13), 3),            149,   GT(R(13), 3),            180,   kForward,  149},
    {40, GT(8, 5),                 74,   GT(5, 8),                112,   kInverse,   74},
    {41, R(41),                   242,   R(41),                   282,   kForward,  242},
    {42, GT(7, GT(3, 2)),         136,   GT(GT(2, 3), 7),         176,   kInverse,  136},
    {43, R(43),                   352,   R(43),                   394,   kInverse,  352},
    {44, GT(11, 4),               200,   GT(4, R(11)),            242,   kInverse,  200},
    {45, GT(5, CT(3, 3)),         172,   GT(5, CT(3, 3)),         206,   kInverse,  162},
    {46, GT(2, R(23)),            484,   GT(R(23), 2),            528,   kInverse,  484},
    {47, R(47),                  1058,   R(47),                  1104,   kForward, 1058, kLong},
    {48, GT(16, 3),                68,   GT(16, 3),               118,   kInverse,   72},
    {49, CT(7, 7),                324,   CT(7, 7),                372,   kForward,  324},
    {50, GT(CT(5, 5), 2),         224,   GT(CT(5, 5), 2),         272,   kForward,  224},
    {51, GT(R(17), 3),            196,   GT(3, R(17)),            245,   kInverse,  196},
    {52, GT(R(13), 4),            164,   GT(R(13), 4),            210,   kForward,  164},
    {53, R(53),                   456,   R(53),                   502,   kInverse,  450},
    {54, GT(2, CT(3, CT(3, 3))),  220,   GT(CT(CT(3, 3), 3), 2),  250,   kInverse,  200},
    {55, GT(11, 5),               338,   GT(5, R(11)),            392,   kInverse,  338},
    {56, GT(7, 8),                158,   GT(8, 7),                212,   kInverse,  158},
    {57, GT(R(19), 3),            362,   GT(3, R(19)),            423,   kForward,  362},
    {58, GT(2, R(29)),            420,   GT(R(29), 2),            476,   kForward,  420},
    {59, R(59),                   954,   R(59),                  1012,   kForward,  954, kLong},
    {60, GT(3, GT(5, 4)),         136,   GT(GT(3, 4), 5),         194,   kInverse,  136},
    {61, R(61),                   415,   R(61),                   478,   kForward,  415},
    {62, GT(R(31), 2),            384,   GT(R(31), 2),            448,   kInverse,  388},
    {63, GT(7, CT(3, 3)),         302,   GT(CT(3, 3), 7),         361,   kForward,  302},
    {64, 64,                      132,   64,                      196,   kInverse,  134},
    // clang-format on
};
static_assert(std::size(kRows) == kMaxLength - kMinLength + 1, "a row for each length");

// The transforms of a Rader step are the rows of length p - 1, there and back. Exceptions to the
// transform back, and for the odd bins of samples another one.
struct Exception {
  int p;
  Flow flow;
  Recipe second;
  std::optional<Recipe> oddSecond;
};

const Exception kExceptions[] = {
    {13, kForward, GT(3, 4), CT(2, GT(2, 3))},
    {43, kInverse, GT(GT(3, 2), 7), {}},
};

Recipe withTransforms(const Recipe& r, Flow flow);

Recipe raderStep(int p, Flow flow) {
  const RealRow& row = kRows[p - 1 - kMinLength];
  const Recipe first = withTransforms(row.forward, kForward);
  for (const Exception& e : kExceptions) {
    if (e.p != p || e.flow != flow) continue;
    return e.oddSecond ? R(p, first, e.second, *e.oddSecond) : R(p, first, e.second);
  }
  return R(p, first, withTransforms(row.inverse, kInverse));
}

// The recipe with every Rader step's transforms filled in.
Recipe withTransforms(const Recipe& r, Flow flow) {
  if (r.step() == Step::Rader) return raderStep(r.n(), flow);
  if (!r.hasStages()) return r;
  const Recipe first = withTransforms(r.first(), flow), second = withTransforms(r.second(), flow);
  return r.step() == Step::GoodThomas ? GT(first, second) : CT(first, second);
}

struct Designs {
  Design forward, inverse, hartley;
};

Designs designs(const RealRow& r) {
  if (r.forward.n() != r.n || r.inverse.n() != r.n) {
    throw std::invalid_argument("real table, row " + std::to_string(r.n) + ": the recipes " +
                                r.forward.print() + " and " + r.inverse.print() +
                                " are of another length");
  }
  const auto design = [&](Flow flow, int products) {
    return Design{.recipe = withTransforms(flow == kForward ? r.forward : r.inverse, flow),
                  .width = kScalar,
                  .bodies = 1,
                  .isLong = r.isLong,
                  .flow = flow,
                  .products = products};
  };
  return {design(kForward, r.forwardProducts), design(kInverse, r.inverseProducts),
          design(r.hartley, r.hartleyProducts)};
}

}  // namespace

const Design& realDesign(const KernelId& id) {
  static const std::vector<Designs> kDesigns = [] {
    std::vector<Designs> all;
    for (const RealRow& r : kRows) all.push_back(designs(r));
    return all;
  }();
  const Designs& row = kDesigns[id.length - kMinLength];
  if (!isDirected(id.family)) return row.hartley;
  return id.direction == Direction::Forward ? row.forward : row.inverse;
}

// The one constant that is not the nearest number to its value, but the one below it.
std::optional<Constant> statedFactor(long p, long k) {
  if (p != 13 || k != 6) return {};
  return Constant{static_cast<Quad>(0.3004626062886657), "re6of13"};
}

}  // namespace kernelgen
