#include "kernels.h"

#include <numeric>
#include <stdexcept>

#include "lanes.h"
#include "real_kernels.h"

namespace kernelgen {
namespace {

constexpr int kElementBits[] = {64, 128};  // of a complex element, single and double

void makeScalar(Graph& g, const Recipe& recipe) {
  Column<Scalars> x;
  for (int n = 0; n < recipe.n(); ++n)
    x.push_back({&g, g.load({2 * n}, 1), g.load({2 * n + 1}, 1)});
  const Column<Scalars> y = recipe.isWidened()
                                ? (recipe.n() == 3 ? direct3<true>(x) : direct5<true>(x))
                                : direct(recipe, x);
  const NodeId scale = g.scale(1);
  for (int k = 0; k < recipe.n(); ++k) {
    const Scalars& value = y[static_cast<std::size_t>(k)];
    g.store(g.mul(value.re, scale), {2 * k});
    g.store(g.mul(value.im, scale), {2 * k + 1});
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
      elements[static_cast<std::size_t>(y[k].lane)] = static_cast<int>(k);
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

std::string KernelId::symbol() const {
  const bool forward = direction == Direction::Forward;
  const std::string n = std::to_string(length);
  const std::string real = precision == Precision::Single ? "_32f" : "_64f";
  if (family == Family::Hartley) return "zvxgHartley_" + n + real;
  const std::string dft = std::string("zvxgDFT") + (forward ? "Fwd_" : "Inv_");
  if (family == Family::Complex) return dft + "CToC_" + n + real + "c";
  constexpr const char* kNames[] = {"", "CCS", "Pack", "Perm"};
  const std::string spectrum = kNames[static_cast<int>(layout)];
  return dft + (forward ? "RTo" + spectrum : spectrum + "ToR") + "_" + n + real;
}

const Body& KernelId::body() const {
  if (family == Family::Complex) return complexBody(length, precision);
  if (family == Family::Hartley) return realBody(length, realRow(length).hartley);
  return realBody(length, direction == Direction::Forward ? Flow::ToSpectrum : Flow::ToSamples);
}

Pace KernelId::pace() const {
  return family == Family::Complex ? complexPace(length, precision) : Pace();
}

int KernelId::destinationSize() const {
  if (family == Family::Complex) return 2 * length;
  return direction == Direction::Forward ? SpectrumMap(*this).size() : length;
}

// 47 is 2 * 23 + 1 and 59 is 2 * 29 + 1, with a second Rader step inside the first.
bool KernelId::isLong() const {
  return (length == 47 || length == 59) &&
         (family != Family::Complex || precision == Precision::Double);
}

std::vector<KernelId> kernelList() {
  std::vector<KernelId> list;
  const auto addLengths = [&](Family family, Precision precision, Direction direction,
                              Layout layout) {
    for (int n = kMinLength; n <= kMaxLength; ++n) {
      list.push_back({family, direction, n, precision, layout});
    }
  };
  constexpr Precision kPrecisions[] = {Precision::Single, Precision::Double};
  constexpr Direction kDirections[] = {Direction::Forward, Direction::Inverse};
  for (Precision p : kPrecisions) {
    for (Direction d : kDirections) addLengths(Family::Complex, p, d, Layout::None);
  }
  for (Precision p : kPrecisions) {
    for (Direction d : kDirections) {
      for (Layout l : {Layout::Ccs, Layout::Pack, Layout::Perm}) addLengths(Family::Real, p, d, l);
    }
  }
  for (Precision p : kPrecisions) addLengths(Family::Hartley, p, Direction::Forward, Layout::None);
  return list;
}

Kernel makeKernel(const KernelId& id) {
  if (id.family != Family::Complex) return makeRealKernel(id);
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
