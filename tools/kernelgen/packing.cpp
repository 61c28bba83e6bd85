#include "packing.h"

#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "packing_steps.h"
#include "scalar.h"

namespace kernelgen {
namespace {

// The lanes of a graph whose registers all have as many.
int lanesOf(const Graph& graph) {
  int lanes = 0;
  for (NodeId id = 0; id < graph.size(); ++id) {
    if (lanes != 0 && graph[id].lanes != lanes) {
      throw std::invalid_argument("registers of different widths");
    }
    lanes = graph[id].lanes;
  }
  return lanes;
}

}  // namespace

Graph packed(const Graph& graph, int sourceSize, const Packing& packing) {
  const bool takesRegisters = packing.together == Packing::kRegister;
  const int together = takesRegisters ? lanesOf(graph) : packing.together;
  const Graph atoms = takesRegisters ? graph : apart(graph, together);
  steps::Program program = steps::read(atoms, together, takesRegisters);
  const int width = packing.lanes / together;
  std::vector<steps::Register> units = steps::single(program);
  for (int w = 1; w < width; w *= 2) units = steps::paired(program, units, w);
  steps::settleSigns(program, units);
  Graph out = steps::lowered(program, graph.traits(), sourceSize, width, std::move(units));
  if (const std::string d = difference(graph, out); !d.empty()) {
    throw std::logic_error("packing changes bits: " + d);
  }
  return out;
}

}  // namespace kernelgen
