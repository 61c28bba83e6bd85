#include "complex_kernels.h"

#include <numeric>

#include "lanes.h"

namespace kernelgen {
namespace {

constexpr int kElementBits[] = {64, 128};  // of a complex element, single and double

void makeScalar(Graph& g, const Recipe& recipe) {
  Column<Scalars> x;
  for (int n = 0; n < recipe.n(); ++n)
    x.push_back({&g, g.load(Unit::Real, {2 * n}), g.load(Unit::Real, {2 * n + 1})});
  const Column<Scalars> y = recipe.isWidened()
                                ? (recipe.n() == 3 ? direct3<true>(x) : direct5<true>(x))
                                : direct(recipe, x);
  const NodeId scale = g.scale(1);
  for (int k = 0; k < recipe.n(); ++k) {
    const Scalars& value = y[k];
    g.store(g.mul(value.re, scale), Unit::Real, {2 * k});
    g.store(g.mul(value.im, scale), Unit::Real, {2 * k + 1});
  }
}

template <class Arrangement>
void makeVector(Arrangement arrangement, const Recipe& recipe) {
  using Element = typename Spread<Arrangement>::Element;
  Spread<Arrangement> spread(arrangement);
  Column<Element> x;
  for (int n = 0; n < recipe.n(); ++n) x.push_back(spread.source(n));
  const Column<Element> y = spread.run(recipe, {x})[0];
  // Elements that lie side by side already go out as they are. The others are put side by side
  // first: a store is dearer than the shuffle that saves one.
  const std::size_t lanes = arrangement.lanes();
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
      elements[y[k].lane] = static_cast<int>(k);
      arrangement.store(spread.applyRotations({{y[k]}})[0][0].value, elements);
    } else {
      const auto at = y.begin() + static_cast<std::ptrdiff_t>(k);
      const auto end = elements.begin() + static_cast<std::ptrdiff_t>(count);
      std::iota(elements.begin(), end, static_cast<int>(k));
      arrangement.store(spread.pack({at, at + static_cast<std::ptrdiff_t>(count)}), elements);
    }
    k += count;
  }
}

}  // namespace

Graph complexGraph(const KernelId& id, const Design& design) {
  Graph g({id.precision, id.direction});
  if (design.width == kScalar) {
    makeScalar(g, design.recipe);
  } else if (design.recipe.step() == Step::Chirp) {
    makeVector(Planar(g), design.recipe);
  } else {
    makeVector(Interleaved(g, design.width / kElementBits[static_cast<int>(id.precision)]),
               design.recipe);
  }
  return g.pruned();
}

}  // namespace kernelgen
