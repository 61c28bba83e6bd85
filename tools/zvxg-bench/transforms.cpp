#include "transforms.h"

#include <cmath>
#include <cstdlib>
#include <memory>
#include <numeric>

#include "zvxg.h"

namespace bench {
namespace {

using kernelgen::Direction;
using kernelgen::KernelId;

// The sums of the definition grow with the square of the length.
constexpr int kLongestSummedDct4 = 1024;

Scaling scalingOf(const KernelId& id) {
  if (!kernelgen::isDirected(id.family)) return Scaling::Undirected;
  return id.direction == Direction::Forward ? Scaling::Forward : Scaling::Inverse;
}

template <class T>
Transform<T> kernelTransform(const KernelId& id, decltype(Transform<T>::call) call) {
  return {id.length,     id.sourceSize(), id.destinationSize(),
          scalingOf(id), std::move(call), std::bind_front(reference::definition, id)};
}

template <class T>
Transform<T> whtTransform(int n, decltype(Transform<T>::call) call) {
  return {n, n, n, Scaling::Undirected, std::move(call), reference::whtDefinition};
}

std::shared_ptr<void> allocate(std::size_t bytes) {
  constexpr std::size_t kLine = 64;
  return {std::aligned_alloc(kLine, (bytes / kLine + 1) * kLine), &std::free};
}

std::string suffixed(const char* name, int bits) {
  return std::string(name) + "_" + std::to_string(bits) + "f";
}

// A plan in a block of its own, or in one that the library allocates.
std::shared_ptr<Dct4Spec> planOf(const Library& library, int bits, int n, bool inOwnBlock) {
  const auto named = [bits](const char* name) { return suffixed(name, bits); };
  Dct4Spec* spec = nullptr;
  std::uint32_t bytes = 0;
  std::int32_t status = zvxErrLength;
  std::shared_ptr<void> block;
  if (inOwnBlock) {
    status = library.get<decltype(zvxgDCT4GetSize_32f)>(named("zvxgDCT4GetSize"))(n, &bytes);
    block = allocate(bytes);
    const auto init = library.get<decltype(zvxgDCT4Init_32f)>(named("zvxgDCT4Init"));
    if (status == zvxOk) status = init(&spec, n, block.get());
  } else {
    const auto init = library.get<decltype(zvxgDCT4InitAlloc_32f)>(named("zvxgDCT4InitAlloc"));
    status = init(&spec, n);
    if (status == zvxOk) {
      block = {spec, library.get<decltype(zvxgDCT4Free_32f)>(named("zvxgDCT4Free"))};
    }
  }
  if (status != zvxOk) {
    throw std::runtime_error(named("zvxgDCT4") + ": no plan of length " + std::to_string(n));
  }
  return {block, spec};
}

template <class T>
Transform<T> dct4Transform(const Library& library, int bits, int n, bool inOwnBlock) {
  const auto run =
      library.get<std::int32_t(const T*, T*, const Dct4Spec*)>(suffixed("zvxgDCT4", bits));
  const std::shared_ptr<Dct4Spec> plan = planOf(library, bits, n, inOwnBlock);
  const auto definition = n <= kLongestSummedDct4 ? reference::dct4Definition : reference::fastDct4;
  return {n,
          n,
          n,
          Scaling::None,
          [=](const T* source, T* destination, std::int32_t) {
            return run(source, destination, plan.get());
          },
          definition};
}

}  // namespace

template <class T>
std::vector<Transform<T>> transformsOf(const Library& library, const Function& function) {
  std::vector<Transform<T>> transforms;
  switch (function.kind) {
    case Kind::Kernel: {
      const auto kernel = library.get<std::int32_t(const T*, T*, std::int32_t)>(function.symbol);
      transforms.push_back(kernelTransform<T>(*function.kernel, kernel));
      break;
    }
    case Kind::Entry: {
      const auto entry =
          library.get<std::int32_t(const T*, T*, std::int32_t, std::int32_t)>(function.symbol);
      KernelId id = *function.kernel;
      for (id.length = 2; id.length <= kMaxLength; ++id.length) {
        transforms.push_back(kernelTransform<T>(
            id, [entry, n = id.length](const T* source, T* destination, std::int32_t flag) {
              return entry(source, destination, n, flag);
            }));
      }
      break;
    }
    case Kind::Wht: {
      const auto kernel =
          library.get<std::int32_t(const T*, T*, std::int32_t, std::uint8_t*)>(function.symbol);
      // More than any order asks for; the sizes have a check of their own.
      const std::shared_ptr<void> buffer = allocate(2 * sizeof(T) * function.n);
      transforms.push_back(whtTransform<T>(
          function.n, [kernel, buffer](const T* source, T* destination, std::int32_t flag) {
            return kernel(source, destination, flag, static_cast<std::uint8_t*>(buffer.get()));
          }));
      break;
    }
    case Kind::WhtEntry: {
      const auto entry =
          library.get<std::int32_t(const T*, T*, std::int32_t, std::int32_t, std::uint8_t*)>(
              function.symbol);
      for (int order = 1; order <= kMaxOrder; ++order) {
        transforms.push_back(whtTransform<T>(
            1 << order, [entry, order](const T* source, T* destination, std::int32_t flag) {
              return entry(source, destination, order, flag, nullptr);
            }));
      }
      break;
    }
    case Kind::Dct4:
    case Kind::Dct4Plan: {
      const bool inOwnBlock = function.kind == Kind::Dct4;
      if (!inOwnBlock && function.symbol != suffixed("zvxgDCT4InitAlloc", function.bits)) break;
      for (int n = 2; n <= kLongestDct4; n *= 2) {
        transforms.push_back(dct4Transform<T>(library, function.bits, n, inOwnBlock));
      }
      break;
    }
    case Kind::WhtBufferSize:
    case Kind::Version: break;
  }
  return transforms;
}

long double scaleFactor(Scaling scaling, int n, std::int32_t flag) {
  switch (flag) {
    case zvxDivFwdByN: return scaling == Scaling::Inverse ? 1 : 1.0L / n;
    case zvxDivInvByN: return scaling == Scaling::Forward ? 1 : 1.0L / n;
    case zvxDivBySqrtN: return 1 / std::sqrt(static_cast<long double>(n));
    default: return 1;
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

template std::vector<Transform<float>> transformsOf(const Library&, const Function&);
template std::vector<Transform<double>> transformsOf(const Library&, const Function&);
template double relativeError(const Numbers&, const std::vector<float>&, long double);
template double relativeError(const Numbers&, const std::vector<double>&, long double);

}  // namespace bench
