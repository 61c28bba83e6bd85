#include "interpret.h"

#include <stdexcept>

namespace kernelgen {
namespace {

template <class T>
double arithmetic(Op op, double a, double b) {
  const T x = static_cast<T>(a), y = static_cast<T>(b);
  volatile T result = op == Op::Add ? x + y : op == Op::Sub ? x - y : x * y;
  return static_cast<double>(result);
}

double arithmetic(const Node& n, double a, double b) {
  return n.precision == Precision::Single ? arithmetic<float>(n.op, a, b)
                                          : arithmetic<double>(n.op, a, b);
}

}  // namespace

template <class T>
std::vector<T> interpret(const Graph& g, std::span<const T> source, T scale) {
  std::vector<double> lanes;  // of all nodes, one behind the other; a float is held exactly
  std::vector<std::size_t> first(g.size());
  std::vector<T> destination;
  for (NodeId id = 0; id < g.size(); ++id) {
    const Node& n = g[id];
    const auto a = [&](int lane) { return lanes[first[n.a] + lane]; };
    const auto b = [&](int lane) { return lanes[first[n.b] + lane]; };
    first[id] = lanes.size();
    for (int i = 0; i < n.lanes; ++i) {
      switch (n.op) {
        case Op::Load: {
          const int at = n.number(i);
          lanes.push_back(at == kNoElement ? 0.0 : static_cast<double>(source[at]));
          break;
        }
        case Op::Const: lanes.push_back(n.constants[i].value); break;
        case Op::Scale: lanes.push_back(static_cast<double>(scale)); break;
        case Op::Add:
        case Op::Sub:
        case Op::Mul: lanes.push_back(arithmetic(n, a(i), b(i))); break;
        case Op::Flip: lanes.push_back(n.mask[i] ? -a(i) : a(i)); break;
        case Op::Shuffle: {
          const int from = n.select[i], width = g[n.a].lanes;
          lanes.push_back(from < width ? a(from) : b(from - width));
          break;
        }
        case Op::Widen: lanes.push_back(a(i)); break;
        case Op::Round: lanes.push_back(static_cast<double>(static_cast<float>(a(i)))); break;
        case Op::Store: {
          const int at = n.number(i);
          if (at == kNoElement) break;
          if (at >= std::ssize(destination)) destination.resize(at + 1);
          destination[at] = static_cast<T>(a(i));
          break;
        }
      }
    }
  }
  return destination;
}

template std::vector<float> interpret(const Graph&, std::span<const float>, float);
template std::vector<double> interpret(const Graph&, std::span<const double>, double);

}  // namespace kernelgen
