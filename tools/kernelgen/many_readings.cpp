#include "many_readings.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "complex_kernels.h"
#include "scalar.h"

namespace kernelgen {
namespace {

// Pack has places for all that is not always zero.
bool standsForLayouts(const KernelId& id) {
  return id.layout != Layout::Ccs && id.layout != Layout::Perm;
}

constexpr int kMostTransposed = 16;

// Shorter complex ones of scalars are so short that exchanging parts would take a tenth of their time.
bool isChirp(const KernelId& id) {
  return id.family == Family::Complex && designOf(id).recipe.step() == Step::Chirp;
}

Graph withPartsExchanged(const Graph& scalar) {
  Graph out(scalar.traits());
  std::vector<NodeId> place;
  for (NodeId id = 0; id < scalar.size(); ++id) {
    Node n = scalar[id];
    if (n.op == Op::Load || n.op == Op::Store) n.elements = {n.elements[0] ^ 1};
    place.push_back(out.append(std::move(n), place));
  }
  return out;
}

// By the design of the kernel, or one of vectors of a width where that has scalars.
Graph graphAtWidth(const KernelId& id, int widthOfScalars) {
  Design design = designOf(id);
  if (design.width == kScalar) design.width = widthOfScalars;
  return complexGraph(id, design);
}

// Loads of elements that are not neighbours as shuffles of loads of those that are: what takes an
// instruction for each part of a register would take it for each transform.
Graph withWholeLoads(const Graph& g, int length) {
  Graph out(g.traits());
  std::vector<NodeId> place;
  for (NodeId id = 0; id < g.size(); ++id) {
    const Node& n = g[id];
    std::vector<int> low, high, select;
    const auto whole = [&](int element, int lane, std::vector<int>& elements) {
      const int first = std::min(element / 2 * 2, length - 2), at = lane + 2 * (element - first);
      elements.insert(elements.end(), {first, first + 1});
      select.insert(select.end(), {at, at + 1});
    };
    const bool isLoad = n.op == Op::Load && n.precision == Precision::Single;
    bool isWhole = !isLoad || std::ranges::count(n.elements, kNoElement) > 0;
    for (int lane = 0; !isWhole && lane < n.lanes; lane += 4) {
      whole(n.elements[lane / 2], lane, low);
      whole(n.elements[lane / 2 + 1], n.lanes + lane, high);
    }
    isWhole = isWhole || low == n.elements;
    place.push_back(
        isWhole ? out.append(n, place)
                : out.shuffle(out.load(Unit::Complex, low), out.load(Unit::Complex, high), select));
  }
  return out.pruned();
}

}  // namespace

bool ManyKernel::exchangesParts() const { return reading == Reading::Scalars && isChirp(id); }

std::vector<Way> ManyKernel::ways() const {
  switch (reading) {
    case Reading::Elements:
    case Reading::Scalars: {
      std::vector<Way> ways = {Way::Rows};
      for (const Way way : {Way::Contiguous, Way::ToRows}) {
        if (isTransposed(id, way)) ways.push_back(way);
      }
      return ways;
    }
    case Reading::Beside:
    case Reading::Contiguous: return {Way::Contiguous};
  }
  throw std::logic_error("no way of a reading");
}

KernelId inverseOf(KernelId id) {
  id.direction = Direction::Inverse;
  return id;
}

Reading readingOf(const KernelId& id) {
  const bool isScalar = id.family != Family::Complex || designOf(id).recipe.isWidened();
  return isScalar || isChirp(id) ? Reading::Scalars : Reading::Elements;
}

bool isTransposed(const KernelId& id, Way way) {
  if (readingOf(id) != Reading::Elements) return false;
  const bool isShort = id.length <= kMostTransposed, fills = designOf(id).width == 256;
  if (way == Way::ToRows) return isShort || (id.precision == Precision::Double && fills);
  return way == Way::Contiguous && !fills && (isShort || id.precision == Precision::Double);
}

bool goesBeside(const KernelId& id) {
  return readingOf(id) == Reading::Elements && !isTransposed(id, Way::Contiguous);
}

std::vector<ManyKernel> manyKernels() {
  std::vector<ManyKernel> list;
  for (const KernelId& id : kernelList()) {
    if (!standsForLayouts(id)) continue;
    const ManyKernel kernel{id, readingOf(id)};
    if (kernel.isShared() && id.direction == Direction::Inverse) continue;
    list.push_back(kernel);
    if (goesBeside(id)) list.push_back({id, Reading::Beside});
  }
  return list;
}

std::vector<ManyKernel> contiguousKernels(int longest) {
  std::vector<ManyKernel> list;
  for (const KernelId& id : kernelList()) {
    const bool isReal = id.family != Family::Complex;
    if (isReal && standsForLayouts(id) && id.length <= longest)
      list.push_back({id, Reading::Contiguous});
  }
  return list;
}

std::string printed(Reading reading) {
  switch (reading) {
    case Reading::Elements: return "elements";
    case Reading::Scalars: return "scalars";
    case Reading::Beside: return "beside";
    case Reading::Contiguous: return "contiguous";
  }
  throw std::logic_error("no name of a reading");
}

int groupOf(const KernelId& id, Reading reading) {
  switch (reading) {
    case Reading::Elements: return 2;
    case Reading::Scalars:
    case Reading::Contiguous: return 1;
    case Reading::Beside:
      return std::max(designOf(id).width, 128) / (id.precision == Precision::Single ? 32 : 64);
  }
  throw std::logic_error("no group of a reading");
}

int groupBytesOf(const KernelId& id, Reading reading) {
  return groupOf(id, reading) * (id.precision == Precision::Single ? 4 : 8);
}

Graph graphOf(const KernelId& id, Reading reading) {
  switch (reading) {
    case Reading::Elements:
      return apart(graphAtWidth(id, id.precision == Precision::Single ? 64 : 128), 2);
    case Reading::Scalars:
      if (isChirp(id) && id.direction == Direction::Inverse) {
        KernelId forward = id;
        forward.direction = Direction::Forward;
        return withPartsExchanged(scalarised(makeKernel(forward).graph));
      }
      [[fallthrough]];
    case Reading::Contiguous: return scalarised(makeKernel(id).graph);
    case Reading::Beside: return withWholeLoads(graphAtWidth(id, 128), id.length);
  }
  throw std::logic_error("no graph of a reading");
}

Graph checkedGraph(const KernelId& id, Reading reading) {
  const Graph graph = graphOf(id, reading);
  const std::string found = difference(makeKernel(id).graph, graph);
  if (found.empty()) return graph;
  throw std::logic_error(id.symbol() + ", many by " + printed(reading) + ": " + found);
}

}  // namespace kernelgen
