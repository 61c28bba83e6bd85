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
std::vector<T> interpret(const Graph& g, std::span<const T> source, T scale) {
  std::vector<Lanes> value(g.size());
  std::vector<T> destination;
  for (NodeId id = 0; id < g.size(); ++id) {
    const Node& n = g[id];
    Lanes& out = value[id];
    switch (n.op) {
      case Op::Load:
        for (int i = 0; i < n.lanes; ++i) {
          const int at = n.number(i);
          out.push_back(at == kNoElement ? 0.0 : static_cast<double>(source[at]));
        }
        break;
      case Op::Const:
        for (const RoundedConstant& c : n.constants) out.push_back(c.value);
        break;
      case Op::Scale: out.assign(n.lanes, static_cast<double>(scale)); break;
      case Op::Add:
      case Op::Sub:
      case Op::Mul: out = combined(n, value[n.a], value[n.b]); break;
      case Op::Flip:
        for (int i = 0; i < n.lanes; ++i) out.push_back(n.mask[i] ? -value[n.a][i] : value[n.a][i]);
        break;
      case Op::Shuffle:
        for (int from : n.select) {
          const int width = g[n.a].lanes;
          out.push_back(from < width ? value[n.a][from] : value[n.b][from - width]);
        }
        break;
      case Op::Widen: out = value[n.a]; break;
      case Op::Round:
        for (double x : value[n.a]) out.push_back(static_cast<double>(static_cast<float>(x)));
        break;
      case Op::Store:
        for (int i = 0; i < n.lanes; ++i) {
          const int at = n.number(i);
          if (at == kNoElement) continue;
          if (at >= std::ssize(destination)) destination.resize(at + 1);
          destination[at] = static_cast<T>(value[n.a][i]);
        }
        break;
    }
  }
  return destination;
}

template std::vector<float> interpret(const Graph&, std::span<const float>, float);
template std::vector<double> interpret(const Graph&, std::span<const double>, double);

}  // namespace kernelgen
