#include "kernels.h"

#include <numeric>
#include <stdexcept>

#include "lanes.h"

namespace kernelgen {
namespace {

constexpr int kElementBits[] = {64, 128};  // of a complex element, single and double

void makeScalar(Graph& g, const Recipe& recipe) {
  Column<Pair> x;
  for (int n = 0; n < recipe.n(); ++n)
    x.push_back({&g, g.load({2 * n}, 1), g.load({2 * n + 1}, 1)});
  const Column<Pair> y = recipe.isWidened()
                             ? (recipe.n() == 3 ? direct3<true>(x) : direct5<true>(x))
                             : direct(recipe, x);
  const NodeId scale = g.scale(1);
  for (int k = 0; k < recipe.n(); ++k) {
    const Pair& value = y[static_cast<std::size_t>(k)];
    g.store(g.mul(value.re, scale), {2 * k});
    g.store(g.mul(value.im, scale), {2 * k + 1});
  }
}

template <class Layout>
void makeVector(Layout layout, const Recipe& recipe) {
  using Element = typename Spread<Layout>::Element;
  Spread<Layout> spread(layout);
  Column<Element> x;
  for (int n = 0; n < recipe.n(); ++n) x.push_back(spread.source(n));
  const Column<Element> y = spread.run(recipe, {x})[0];
  // Elements that lie side by side already go out as they are. The others are put side by side
  // first: a store is dearer than the shuffle that saves one.
  const std::size_t lanes = layout.lanes();
  const auto inPlace = [&](std::size_t k) {
    for (std::size_t i = 0; i < lanes; ++i) {
      if (k + i >= y.size() || identity(y[k + i].value) != identity(y[k].value)) return false;
      if (y[k + i].lane != static_cast<int>(i)) return false;
    }
    return true;
  };
  for (std::size_t k = 0; k < y.size();) {
    std::size_t count = lanes;
    if (!inPlace(k)) {
      count = 1;
      while (count < lanes && k + count < y.size() && !inPlace(k + count)) ++count;
    }
    std::vector<int> elements(lanes, kNoElement);
    if (count == 1) {
      elements[static_cast<std::size_t>(y[k].lane)] = static_cast<int>(k);
      layout.store(spread.settled({{y[k]}})[0][0].value, elements);
    } else {
      const auto at = y.begin() + static_cast<std::ptrdiff_t>(k);
      const auto end = elements.begin() + static_cast<std::ptrdiff_t>(count);
      std::iota(elements.begin(), end, static_cast<int>(k));
      layout.store(spread.pack({at, at + static_cast<std::ptrdiff_t>(count)}), elements);
    }
    k += count;
  }
}

}  // namespace

std::string KernelId::symbol() const {
  return std::string("zvxgDFT") + (direction == Direction::Forward ? "Fwd" : "Inv") + "_CToC_" +
         std::to_string(length) + (precision == Precision::Single ? "_32fc" : "_64fc");
}

const Body& KernelId::body() const { return complexBody(length, precision); }

std::vector<KernelId> kernelList() {
  std::vector<KernelId> list;
  for (Precision precision : {Precision::Single, Precision::Double}) {
    for (Direction direction : {Direction::Forward, Direction::Inverse}) {
      for (int n = kMinLength; n <= kMaxLength; ++n) {
        const KernelId id{Family::Complex, direction, n, precision};
        list.push_back(id);
      }
    }
  }
  return list;
}

Kernel makeKernel(const KernelId& id) {
  const Body& body = id.body();
  Kernel kernel{id, Graph(id.precision, id.direction)};
  if (body.width == kScalar) {
    makeScalar(kernel.graph, body.recipe);
  } else if (body.recipe.step() == Step::Chirp) {
    makeVector(Planar(kernel.graph), body.recipe);
  } else {
    const int elements = body.width / kElementBits[static_cast<int>(id.precision)];
    makeVector(Interleaved(kernel.graph, elements), body.recipe);
  }
  kernel.graph = kernel.graph.pruned();
  return kernel;
}

KernelId kernelOfSymbol(const std::string& symbol) {
  for (const KernelId& id : kernelList()) {
    if (id.symbol() == symbol) return id;
  }
  throw std::invalid_argument("no kernel is named " + symbol);
}

}  // namespace kernelgen
