// The scalar form of the kernels and the comparison of bits without running them: what has to be
// the same, what has to differ, and that the interpreter agrees in both cases.

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <map>
#include <span>

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

// That all pieces have the same bits is checked where the kernels of batches are made.
TEST(SameBits, ScalarForm) {
  forEachId([](const KernelId& id) {
    const Graph graph = makeKernel(id).graph, scalar = scalarised(graph);
    EXPECT_EQ(difference(graph, scalar), "");
    EXPECT_TRUE(sameResults(graph, scalar, id.sourceSize()));
    for (NodeId i = 0; i < scalar.size(); ++i) {
      ASSERT_TRUE(scalar[i].lanes == 1 && scalar[i].op != Op::Shuffle);
    }
  });
}

// A scalar graph, where real and imaginary parts of the source and of the results are exchanged.
Graph partsExchanged(const Graph& scalar) {
  Graph out(scalar.traits());
  std::vector<NodeId> place;
  for (NodeId id = 0; id < scalar.size(); ++id) {
    Node n = scalar[id];
    if (n.op == Op::Load || n.op == Op::Store) n.elements[0] ^= 1;
    place.push_back(out.append(std::move(n), place));
  }
  return out;
}

// Inv(x) = swap(Fwd(swap(x))), where swap exchanges real and imaginary parts.
TEST(SameBits, InverseIsForwardWithPartsSwapped) {
  forEachId([](const KernelId& id) {
    if (id.family != Family::Complex || id.direction == Direction::Forward) return;
    KernelId forward = id;
    forward.direction = Direction::Forward;
    EXPECT_EQ(
        difference(partsExchanged(scalarised(makeKernel(forward).graph)), makeKernel(id).graph),
        "");
  });
}

int sumsOf(const Graph& g) {
  int count = 0;
  for (NodeId i = 0; i < g.size(); ++i) count += g[i].op == Op::Add || g[i].op == Op::Sub;
  return count;
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

// A product by 0, which adds something to a sum where the other operand is infinite, NaN or a zero.
bool isProductByZero(const Graph& g, NodeId id) {
  const auto isZero = [&](NodeId factor) {
    return g[factor].op == Op::Const &&
           std::ranges::all_of(g[factor].constants, [](const auto& c) { return c.value == 0; });
  };
  return g[id].op == Op::Mul && (isZero(g[id].a) || isZero(g[id].b));
}

// What can be wrong at a node, and the node that it then is. The graphs have the same nodes up to the
// fault, and so the same names for them.
struct Fault {
  const char* name;
  std::function<bool(const Graph& g, const Node&)> isPossible;
  std::function<NodeId(Graph& out, const Graph& g, const Node&)> make;
};
const Fault kFaults[] = {
    {"operands exchanged", [](const Graph&, const Node& n) { return n.op == Op::Sub; },
     [](Graph& out, const Graph&, const Node& n) { return out.sub(n.b, n.a); }},
    // These two differ from the node in the sign of a zero.
    {"the negative of a sum of negatives",
     [](const Graph&, const Node& n) { return n.op == Op::Add; },
     [](Graph& out, const Graph&, const Node& n) {
       const std::vector<int> all(n.lanes, 1);
       return out.flip(out.add(out.flip(n.a, all), out.flip(n.b, all)), all);
     }},
    {"the negative of the opposite", [](const Graph&, const Node& n) { return n.op == Op::Sub; },
     [](Graph& out, const Graph&, const Node& n) {
       return out.flip(out.sub(n.b, n.a), std::vector<int>(n.lanes, 1));
     }},
    {"last bit of a constant", [](const Graph&, const Node& n) { return n.op == Op::Const; },
     [](Graph& out, const Graph&, Node n) {
       for (RoundedConstant& c : n.constants) {
         c.value = n.precision == Precision::Double ? std::nextafter(c.value, 4.0)
                                                    : double(std::nextafter(float(c.value), 4.0f));
       }
       return out.append(n);
     }},
    {"lanes reversed",
     [](const Graph&, const Node& n) {
       return n.op == Op::Shuffle &&
              !std::equal(n.select.begin(), n.select.end(), n.select.rbegin());
     },
     [](Graph& out, const Graph&, Node n) {
       std::reverse(n.select.begin(), n.select.end());
       return out.append(n);
     }},
    {"sign lost", [](const Graph&, const Node& n) { return n.op == Op::Flip; },
     [](Graph&, const Graph&, const Node& n) { return n.a; }},
    {"the number after", [](const Graph&, const Node& n) { return n.op == Op::Load; },
     [](Graph& out, const Graph&, Node n) {
       for (int& e : n.elements) ++e;
       return out.append(n);
     }},
    {"no product by 0",
     [](const Graph& g, const Node& n) {
       return n.op == Op::Add && (isProductByZero(g, n.a) || isProductByZero(g, n.b));
     },
     [](Graph&, const Graph& g, const Node& n) { return isProductByZero(g, n.a) ? n.b : n.a; }},
};

// Every fault of each kind at every node of some kernels and, if they have one, of the packed form, which
// has clearly fewer sums.
TEST(SameBits, FindsFaults) {
  std::map<std::string, int> found;
  for (const char* symbol :
       {"zvxgDFTFwd_CToC_13_32fc", "zvxgDFTFwd_CToC_24_32fc", "zvxgDFTInv_CToC_16_64fc",
        "zvxgDFTFwd_CToC_3_32fc", "zvxgDFTFwd_RToPack_15_32f", "zvxgHartley_9_64f",
        "zvxgDFTFwd_RToCCS_20_64f", "zvxgDFTInv_PackToR_21_32f"}) {
    const KernelId id = kernelOfSymbol(symbol);
    const Graph base = makeKernel(id).graph;
    std::vector<Graph> forms = {base};
    if (const auto packing = packingOf(id, Level::V3)) {
      forms.push_back(packed(base, id.sourceSize(), *packing));
      EXPECT_LT(5 * sumsOf(forms[1]), 4 * sumsOf(base)) << symbol;
    }
    for (const Graph& g : forms) {
      for (NodeId at = 0; at < g.size(); ++at) {
        for (const Fault& fault : kFaults) {
          if (!fault.isPossible(g, g[at])) continue;
          ++found[fault.name];
          const auto make = [&](Graph& out, const Node& n) { return fault.make(out, g, n); };
          EXPECT_NE(difference(base, replaced(g, at, make)), "")
              << symbol << ", " << g.size() << " nodes: " << fault.name << " at " << at;
        }
      }
    }
  }
  EXPECT_EQ(found.size(), std::size(kFaults));
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
  Graph longer = a;
  longer.store(longer.load(Unit::Real, {0}), Unit::Real, {2});
  EXPECT_EQ(difference(longer, longer), "");
  EXPECT_EQ(difference(longer, a), "output 2 is stored by the first graph only");
}

}  // namespace
}  // namespace tests
