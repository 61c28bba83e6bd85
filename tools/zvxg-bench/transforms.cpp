#include "transforms.h"

#include <cmath>

#include "aligned.h"

namespace bench {

using api::asArgument;
using api::Role;

std::vector<Transform> transformsOf(const api::Exports& library, const Function& function) {
  std::vector<std::int32_t> powers;
  for (std::int32_t n = 2; n <= 1 << 16; n *= 2) powers.push_back(n);
  return library.transformsOf(function, powers);
}

Call::Call(const api::Exports& library, const Transform& transform, bool allocates)
    : transform_(transform) {
  const Function& function = *transform.function;
  if (allocates) {
    const Function& make = library.sibling(function, {Role::NewPlan, Role::Selector});
    const Function& free = library.sibling(function, {Role::Plan});
    const void* plan = nullptr;
    make.call({asArgument(&plan), asArgument(transform.selector)});
    if (plan) work_ = {plan, [free](const void* p) { free.call({asArgument(p)}); }};
  } else if (transform.workBytes > 0 && !function.isEntry()) {
    const std::shared_ptr<void> memory = api::alignedMemory(64, transform.workBytes);
    work_ = {memory, library.prepare(transform, memory.get())};
  }
  if (function.isPlanned() && !work_) {
    throw std::runtime_error("no plan of length " + std::to_string(transform.points));
  }
}

NormalNumbers::NormalNumbers(int seed, const std::string& symbol, int n) {
  std::vector<int> words = {seed, n};
  words.insert(words.end(), symbol.begin(), symbol.end());
  std::seed_seq sequence(words.begin(), words.end());
  random_.seed(sequence);
}

template <class T>
double relativeError(const Numbers& expected, const std::vector<T>& actual, long double factor) {
  long double error = 0, norm = 0;
  for (std::size_t i = 0; i < expected.size(); ++i) {
    const long double number = expected[i] * factor, difference = actual[i] - number;
    error += difference * difference;
    norm += number * number;
  }
  return static_cast<double>(std::sqrt(error / norm));
}

template double relativeError(const Numbers&, const std::vector<float>&, long double);
template double relativeError(const Numbers&, const std::vector<double>&, long double);

}  // namespace bench
