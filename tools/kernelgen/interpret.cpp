#include "interpret.h"

#include <stdexcept>

namespace kernelgen {
namespace {

using Lanes = std::vector<double>;  // a float is held exactly

template <class T>
double arithmetic(Op op, double a, double b) {
  const T x = static_cast<T>(a), y = static_cast<T>(b);
  volatile T result = op == Op::Add ? x + y : op == Op::Sub ? x - y : x * y;
  return static_cast<double>(result);
}

Lanes combined(const Node& n, const Lanes& a, const Lanes& b) {
  Lanes out;
  for (std::size_t i = 0; i < a.size(); ++i) {
    out.push_back(n.precision == Precision::Single ? arithmetic<float>(n.op, a[i], b[i])
                                                   : arithmetic<double>(n.op, a[i], b[i]));
  }
  return out;
}

}  // namespace

template <class T>
std::vector<T> interpret(const Kernel& kernel, std::span<const T> source, T scale) {
  const Graph& g = kernel.graph;
  std::vector<Lanes> value(g.size());
  std::vector<T> destination(static_cast<std::size_t>(kernel.id.destinationSize()));
  for (std::size_t id = 0; id < g.size(); ++id) {
    const Node& n = g[static_cast<NodeId>(id)];
    Lanes& out = value[id];
    const auto operand = [&](NodeId o) -> const Lanes& {
      return value[static_cast<std::size_t>(o)];
    };
    // Reals of an element: a vector holds complex elements, a scalar is a real number itself.
    const std::size_t parts = n.lanes == 1 ? 1 : 2;
    switch (n.op) {
      case Op::Load:
        for (int element : n.index) {
          for (std::size_t p = 0; p < parts; ++p) {
            const std::size_t at = static_cast<std::size_t>(element) * parts + p;
            out.push_back(element == kNoElement ? 0.0 : static_cast<double>(source[at]));
          }
        }
        break;
      case Op::Const:
        for (const RoundedConstant& c : n.constants) out.push_back(c.value);
        break;
      case Op::Scale:
        out.assign(static_cast<std::size_t>(n.lanes), static_cast<double>(scale));
        break;
      case Op::Add:
      case Op::Sub:
      case Op::Mul: out = combined(n, operand(n.a), operand(n.b)); break;
      case Op::Flip:
        out = operand(n.a);
        for (std::size_t i = 0; i < out.size(); ++i) out[i] = n.index[i] ? -out[i] : out[i];
        break;
      case Op::Shuffle: {
        Lanes both = operand(n.a);
        both.insert(both.end(), operand(n.b).begin(), operand(n.b).end());
        for (int from : n.index) out.push_back(both[static_cast<std::size_t>(from)]);
        break;
      }
      case Op::Widen: out = operand(n.a); break;
      case Op::Round:
        for (double x : operand(n.a)) out.push_back(static_cast<double>(static_cast<float>(x)));
        break;
      case Op::Store:
        for (std::size_t i = 0; i < n.index.size(); ++i) {
          if (n.index[i] == kNoElement) continue;
          for (std::size_t p = 0; p < parts; ++p) {
            destination[static_cast<std::size_t>(n.index[i]) * parts + p] =
                static_cast<T>(operand(n.a)[i * parts + p]);
          }
        }
        break;
    }
  }
  return destination;
}

template std::vector<float> interpret(const Kernel&, std::span<const float>, float);
template std::vector<double> interpret(const Kernel&, std::span<const double>, double);

}  // namespace kernelgen
