// Where the numbers of a batch are, and what single calls make of it. There is no test framework here:
// fuzz/ has none.
#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

#include "interface.h"

namespace tests {

// One side of a transform: elements of so many numbers.
struct Shape {
  int elements, parts;
  int numbers() const { return elements * parts; }
};

inline Shape sourceShape(const api::Transform& t) {
  const auto parts = t.sourceParts();
  return {static_cast<int>(t.sourceBytes / t.function->elementBytes()) / parts, parts};
}
inline Shape destinationShape(const api::Transform& t) {
  const auto parts = t.destinationParts();
  return {static_cast<int>(t.destinationBytes / t.function->elementBytes()) / parts, parts};
}

// Where the elements of a side are: in reals, behind the lowest of them.
class Places {
 public:
  Places(Shape shape, api::Batch::Side layout, std::ptrdiff_t howmany)
      : shape_(shape), layout_(layout) {
    const std::ptrdiff_t i = (shape.elements - 1) * layout.stride;
    const std::ptrdiff_t k = (howmany - 1) * layout.dist;
    lowest_ = std::min<std::ptrdiff_t>(i, 0) + std::min<std::ptrdiff_t>(k, 0);
    highest_ = std::max<std::ptrdiff_t>(i, 0) + std::max<std::ptrdiff_t>(k, 0);
  }
  std::ptrdiff_t operator()(std::ptrdiff_t k, int number) const {
    const std::ptrdiff_t element = number / shape_.parts, part = number % shape_.parts;
    return (k * layout_.dist + element * layout_.stride - lowest_) * shape_.parts + part;
  }
  std::ptrdiff_t first() const { return -lowest_ * shape_.parts; }
  std::size_t size() const { return (highest_ - lowest_ + 1) * shape_.parts; }

 private:
  Shape shape_;
  api::Batch::Side layout_;
  std::ptrdiff_t lowest_, highest_;
};

// Does a batch by single(source, destination) for each transform.
template <class T, class Single>
void callSingly(Shape from, Shape to, const api::Batch& b, const std::vector<T>& source,
                std::vector<T>* destination, const Single& single) {
  const Places sources(from, b.source, b.howmany), results(to, b.destination, b.howmany);
  std::vector<T> x(from.numbers()), y(to.numbers());
  for (std::ptrdiff_t k = 0; k < b.howmany; ++k) {
    for (int i = 0; i < from.numbers(); ++i) x[i] = source[sources(k, i)];
    // Some elements of a plan of no use stay as they were.
    for (int i = 0; i < to.numbers(); ++i) y[i] = (*destination)[results(k, i)];
    single(x.data(), y.data());
    for (int i = 0; i < to.numbers(); ++i) (*destination)[results(k, i)] = y[i];
  }
}

}  // namespace tests
