// The scalar form of the kernels and the comparison of bits without running them: what has to be
// the same, what has to differ, and that the interpreter agrees in both cases.

#include <cmath>
#include <functional>
#include <limits>
#include <optional>
#include <span>

#include "complex_kernels.h"  // kernelgen
#include "harness.h"
#include "interpret.h"  // kernelgen
#include "kernels.h"    // kernelgen
#include "packing.h"    // kernelgen
#include "scalar.h"     // kernelgen
#include "variants.h"   // kernelgen

namespace tests {
namespace {

using namespace kernelgen;

// Of the interpreter, with normal numbers, zeros of both signs, and an infinity among these.
template <class T>
bool sameResults(const Graph& a, const Graph& b, int sourceSize) {
  Random random = makeRandom();
  for (int trial = 0; trial < 12; ++trial) {
    std::vector<T> source =
        trial < 2 ? normalNumbers<T>(random, sourceSize) : numbersWithZeros<T>(random, sourceSize);
    if (trial > 3) source[random() % sourceSize] = std::numeric_limits<T>::infinity();
    const std::span<const T> numbers(source);
    if (!sameNumbers(interpret<T>(a, numbers, T(0.3)), interpret<T>(b, numbers, T(0.3)))) {
      return false;
    }
  }
  return true;
}

bool sameResults(const Graph& a, const Graph& b, int sourceSize) {
  return a.precision() == Precision::Single ? sameResults<float>(a, b, sourceSize)
                                            : sameResults<double>(a, b, sourceSize);
}

template <class Body>
void forEachId(const Body& body) {
  for (const KernelId& id : selectedKernels()) {
    SCOPED_TRACE(id.symbol());
    body(id);
  }
}

// Whether its registers hold complex elements as they are in memory.
bool hasElements(const KernelId& id) {
  return id.family == Family::Complex && designOf(id).width != kScalar &&
         designOf(id).recipe.step() != Step::Chirp;
}

TEST(SameBits, KernelAndItsPieces) {
  forEachId([](const KernelId& id) {
    const Graph graph = makeKernel(id).graph, scalar = scalarised(graph);
    EXPECT_EQ(difference(graph, scalar), "");
    EXPECT_TRUE(sameResults(graph, scalar, id.sourceSize()));
    for (NodeId i = 0; i < scalar.size(); ++i) {
      ASSERT_TRUE(scalar[i].lanes == 1 && scalar[i].op != Op::Shuffle);
    }
    if (hasElements(id)) {
      EXPECT_EQ(difference(graph, apart(graph, 2)), "");
    } else {
      EXPECT_THROW(apart(graph, 2), std::invalid_argument);
    }
  });
}

// Inv(x) = swap(Fwd(swap(x))), where swap exchanges real and imaginary parts.
TEST(SameBits, InverseIsForwardWithPartsSwapped) {
  forEachId([](const KernelId& id) {
    if (id.family != Family::Complex || id.direction == Direction::Forward) return;
    std::vector<int> exchanged;
    for (int i = 0; i < 2 * id.length; ++i) exchanged.push_back(i ^ 1);
    KernelId forward = id;
    forward.direction = Direction::Forward;
    EXPECT_EQ(difference(moved(scalarised(makeKernel(forward).graph), exchanged, exchanged),
                         makeKernel(id).graph),
              "");
  });
}

// Pack and Perm hold what CCS holds but for the imaginary parts that are always zero.
TEST(SameBits, LayoutsOfASpectrum) {
  forEachId([](const KernelId& id) {
    if (id.family != Family::Real || id.layout == Layout::Ccs) return;
    KernelId ccs = id;
    ccs.layout = Layout::Ccs;
    std::vector<int> places(2 * (id.length / 2 + 1), kNoElement);
    for (int k = 0; 2 * k <= id.length; ++k) {
      const BinPlace from = binPlace(Layout::Ccs, id.length, k);
      const BinPlace to = binPlace(id.layout, id.length, k);
      places[from.re] = to.re;
      if (!isOwnMirror(id.length, k)) places[from.im] = to.im;
    }
    const Graph graph = scalarised(makeKernel(ccs).graph);
    const bool forward = id.direction == Direction::Forward;
    EXPECT_EQ(difference(forward ? moved(graph, {}, places) : moved(graph, places, {}),
                         makeKernel(id).graph),
              "");
  });
}

int sumsOf(const Graph& g) {
  int count = 0;
  for (NodeId i = 0; i < g.size(); ++i) count += g[i].op == Op::Add || g[i].op == Op::Sub;
  return count;
}

// Packing compares with the base itself; the interpreter runs what came out. It reads and writes what
// there is, and has clearly fewer sums than the base.
TEST(SameBits, Packed) {
  int count = 0;
  forEachId([&](const KernelId& id) {
    if (id.length % 3 != 0) return;
    const Graph graph = makeKernel(id).graph;
    for (const Level level : {Level::V3, Level::V4}) {
      const std::optional<Packing> packing = packingOf(id, level);
      if (!packing || (level == Level::V4 && packing == packingOf(id, Level::V3))) continue;
      ++count;
      const Graph wide = packed(graph, id.sourceSize(), *packing);
      EXPECT_TRUE(sameResults(graph, wide, id.sourceSize()));
      EXPECT_LT(5 * sumsOf(wide), 4 * sumsOf(graph));
      for (NodeId i = 0; i < wide.size(); ++i) {
        const Node& n = wide[i];
        ASSERT_LE(n.lanes, packing->lanes);
        for (int lane = 0; lane < n.lanes && (n.op == Op::Load || n.op == Op::Store); ++lane) {
          const int size = n.op == Op::Load ? id.sourceSize() : id.destinationSize();
          ASSERT_TRUE(n.number(lane) >= 0 && n.number(lane) < size);
        }
      }
    }
  });
  EXPECT_GT(count, 0);
}

bool hasRotations(const Recipe& r) {
  if (r.step() == Step::GoodThomas) return hasRotations(r.first()) || hasRotations(r.second());
  return r.hasStages();
}

// A complex kernel made anew in vectors of the other width. What a rotation by (1, 0) does to an
// element, or a sum with zero, depends on what its neighbours need. So some kernels differ, a few
// of them only if certain inputs are zeros of certain signs, which chance does not find.
TEST(SameBits, OtherWidths) {
  int same = 0, different = 0, seen = 0;
  forEachId([&](const KernelId& id) {
    Design design = designOf(id);
    const bool isTied = design.width == kScalar || design.recipe.step() == Step::Chirp;
    if (id.family != Family::Complex || isTied) return;
    design.width = design.width == 128 ? 256 : 128;
    const Graph graph = makeKernel(id).graph;
    std::optional<Graph> other;
    try {
      other = complexGraph(id, design);
    } catch (const std::logic_error&) {  // a Rader step that does not open at this width
      return;
    }
    const bool areSame = sameBits(graph, *other);
    const bool seemSame = sameResults(graph, *other, 2 * id.length);
    ++(areSame ? same : different);
    seen += !seemSame;
    EXPECT_TRUE(seemSame || !areSame);
    EXPECT_TRUE(areSame || hasRotations(design.recipe)) << difference(graph, *other);
  });
  EXPECT_GT(same, 100);
  EXPECT_GT(seen, different / 2);
}

// ---- Faults

// The graph with another node in the place of one.
using Replacement = std::function<NodeId(Graph&, const Node&)>;
Graph replaced(const Graph& g, NodeId at, const Replacement& by) {
  Graph out(g.traits());
  std::vector<NodeId> place;
  for (NodeId id = 0; id < g.size(); ++id) {
    place.push_back(id == at ? by(out, g[id]) : out.append(g[id], place));
  }
  return out.pruned();
}

// The operands x of a sum of products x c + x' s, where x' has the parts of x exchanged, and c.
struct Rotation {
  NodeId x;
  const Node* cosines;
};
std::optional<Rotation> rotationAt(const Graph& g, const Node& n) {
  if (n.op != Op::Add || g[n.a].op != Op::Mul || g[n.b].op != Op::Mul) return {};
  for (const auto& [straight, across] : {std::pair(n.a, n.b), std::pair(n.b, n.a)}) {
    const Node &p = g[straight], &q = g[across];
    if (g[p.b].op == Op::Const && g[q.a].op == Op::Shuffle && g[q.a].a == p.a)
      return {{p.a, &g[p.b]}};
    if (g[p.a].op == Op::Const && g[q.b].op == Op::Shuffle && g[q.b].a == p.b)
      return {{p.b, &g[p.a]}};
  }
  return {};
}

std::vector<int> lanesOfOne(const Node& cosines) {
  std::vector<int> lanes;
  for (int i = 0; i < cosines.lanes; ++i) {
    if (cosines.constants[i].value == 1) lanes.push_back(i);
  }
  return lanes;
}

// Every fault of each kind that a kernel can have.
TEST(SameBits, FindsFaults) {
  int subtractions = 0, constants = 0, products = 0, lanes = 0, ones = 0;
  for (const char* symbol :
       {"zvxgDFTFwd_CToC_13_32fc", "zvxgDFTFwd_CToC_24_32fc", "zvxgDFTInv_CToC_16_64fc",
        "zvxgDFTFwd_CToC_3_32fc", "zvxgDFTFwd_RToPack_15_32f", "zvxgHartley_9_64f"}) {
    SCOPED_TRACE(symbol);
    const Graph g = makeKernel(kernelOfSymbol(symbol)).graph;
    const auto expectFound = [&](NodeId at, const Replacement& by) {
      EXPECT_NE(difference(g, replaced(g, at, by)), "") << "node " << at;
    };
    for (NodeId at = 0; at < g.size(); ++at) {
      const Node& n = g[at];
      if (n.op == Op::Sub) {
        ++subtractions;
        expectFound(at, [](Graph& out, const Node& m) { return out.sub(m.b, m.a); });
      }
      if (n.op == Op::Const) {
        ++constants;
        expectFound(at, [](Graph& out, Node m) {
          for (RoundedConstant& c : m.constants) {
            c.value = m.precision == Precision::Double
                          ? std::nextafter(c.value, 2.0)
                          : double(std::nextafter(float(c.value), 2.0f));
          }
          return out.append(m);
        });
      }
      const std::optional<Rotation> rotation = rotationAt(g, n);
      if (!rotation) continue;
      // The graphs have the same nodes up to the fault, and so the same names for them.
      const std::vector<int> exact = lanesOfOne(*rotation->cosines);
      if (static_cast<int>(exact.size()) == n.lanes) {
        ++products;
        expectFound(at, [&](Graph&, const Node&) { return rotation->x; });
      } else if (!exact.empty()) {
        ++lanes;
        expectFound(at, [&](Graph& out, const Node& m) {
          std::vector<int> select(n.lanes);
          for (int i = 0; i < n.lanes; ++i) select[i] = i;
          for (int i : exact) select[i] += n.lanes;
          return out.shuffle(out.append(m), rotation->x, select);
        });
      }
      // The single product by 1 in such a sum is no fault.
      for (const NodeId p : {n.a, n.b}) {
        if (g[p].b == kNoNode || lanesOfOne(*rotation->cosines).empty()) continue;
        const bool isOne = &g[g[p].a] == rotation->cosines || &g[g[p].b] == rotation->cosines;
        if (!isOne || static_cast<int>(exact.size()) != n.lanes) continue;
        ++ones;
        EXPECT_EQ(difference(g, replaced(g, p, [&](Graph&, const Node&) { return rotation->x; })),
                  "");
      }
    }
  }
  for (const int count : {subtractions, constants, products, lanes, ones}) EXPECT_GT(count, 0);
}

// The same of a packed graph: lanes exchanged, a sign lost, a load of the number after.
TEST(SameBits, FindsFaultsOfPacking) {
  int lanes = 0, signs = 0, loads = 0;
  for (const char* symbol : {"zvxgDFTFwd_RToCCS_20_64f", "zvxgDFTInv_PackToR_21_32f",
                             "zvxgDFTFwd_CToC_12_32fc", "zvxgDFTInv_CToC_14_64fc"}) {
    SCOPED_TRACE(symbol);
    const KernelId id = kernelOfSymbol(symbol);
    const Graph base = makeKernel(id).graph;
    const Graph g = packed(base, id.sourceSize(), *packingOf(id, Level::V3));
    const auto expectFound = [&](NodeId at, const Replacement& by) {
      EXPECT_NE(difference(base, replaced(g, at, by)), "") << "node " << at;
    };
    for (NodeId at = 0; at < g.size(); ++at) {
      const Node& n = g[at];
      if (n.op == Op::Shuffle && n.lanes == 4 && n.select[0] != n.select[1]) {
        ++lanes;
        expectFound(at, [](Graph& out, Node m) {
          std::swap(m.select[0], m.select[1]);
          return out.append(m);
        });
      }
      if (n.op == Op::Flip) {
        ++signs;
        expectFound(at, [](Graph&, const Node& m) { return m.a; });
      }
      if (n.op == Op::Load) {
        ++loads;
        expectFound(at, [](Graph& out, Node m) {
          for (int& e : m.elements) ++e;
          return out.append(m);
        });
      }
    }
  }
  for (const int count : {lanes, signs, loads}) EXPECT_GT(count, 0);
}

TEST(SameBits, SaysWhatDiffers) {
  Graph a({Precision::Single, Direction::Forward}), b(a.traits());
  const auto build = [](Graph& g, bool swapped) {
    const NodeId x = g.load(Unit::Real, {0}), y = g.load(Unit::Real, {1});
    const NodeId half = g.constant({{Quad(0.5), "half"}}, Precision::Single);
    g.store(x, Unit::Real, {0});
    g.store(g.mul(g.add(g.mul(swapped ? g.sub(y, x) : g.sub(x, y), half), x), g.scale(1)),
            Unit::Real, {1});
  };
  build(a, false);
  build(b, true);
  EXPECT_EQ(
      difference(a, b),
      "output 1 has (src[0] - src[1]) in the first graph and (src[1] - src[0]) in the second");
  a.store(a.load(Unit::Real, {0}), Unit::Real, {2});
  EXPECT_EQ(difference(a, a), "");
  EXPECT_EQ(difference(moved(a, {}, {0, kNoElement, 2}), moved(b, {}, {0, kNoElement})),
            "output 2 is stored by the first graph only");
}

}  // namespace
}  // namespace tests
