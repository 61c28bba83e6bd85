// The Walsh-Hadamard transform: the bits of the plain loop of radix-2 stages, at any places, with a
// buffer and without; refusals.

#include "fuzz.h"

namespace fuzz {
namespace {

template <class T>
std::vector<T> plain(std::vector<T> x, T factor) {
  for (std::size_t h = 1; h < x.size(); h *= 2) {
    for (std::size_t i = 0; i < x.size(); ++i) {
      if ((i & h) != 0) continue;
      const T a = x[i], b = x[i + h];
      x[i] = a + b;
      x[i + h] = a - b;
    }
  }
  for (T& number : x) number *= factor;
  return x;
}

template <class T>
void tryPrecision(Input& input) {
  using F = zvxg::detail::Functions<T>;
  const auto order = static_cast<int32_t>(1 + input.choice(13));
  const int32_t flag = tests::kFlags[input.choice(4)];
  const auto accepted = [](int32_t number) { return number >= 1 && number <= 13; };
  const int32_t badOrder = input.badNumber(accepted, 14), anyFlag = input.anyNumber();
  uint32_t bytes = 12345;
  T number = 0;
  require(F::kWhtByOrder(&number, &number, badOrder, anyFlag, nullptr) == zvxErrLength, "order");
  require(F::kWhtByOrder(nullptr, nullptr, badOrder, anyFlag, nullptr) == zvxErrLength, "order");
  require(F::kWhtBufferSize(badOrder, &bytes) == zvxErrLength && bytes == 12345, "order of size");
  require(F::kWhtBufferSize(order, &bytes) == zvxOk, "size");

  tests::Exact buffer(bytes, 16 * input.choice(4));
  uint8_t* const work = input.choice(2) == 0 ? buffer.as<uint8_t>() : nullptr;
  std::vector<T> source(std::size_t{1} << order);
  input.fill(std::span(source));
  const auto byName = [&](const T* src, T* dst) {
    return F::kWht[order - 1](src, dst, flag, work);
  };
  const auto byOrder = [&](const T* src, T* dst) {
    return F::kWhtByOrder(src, dst, order, flag, work);
  };
  requireFlagRefused<T>(input, [&](const T* src, T* dst, int32_t badFlag) {
    return F::kWht[order - 1](src, dst, badFlag, work);
  });
  const std::vector<T> expected =
      plain(source, scaleFactor<T>(flag, true, false, static_cast<int>(source.size())));
  for (const std::vector<T>& result : {resultOf<T, T>(input, source, source.size(), byName),
                                       resultOf<T, T>(input, source, source.size(), byOrder)}) {
    require(sameNumbers<T>(expected, result), "not the bits of the plain loop");
  }
}

}  // namespace
}  // namespace fuzz

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  fuzz::Input input(data, size);
  if (input.choice(2) == 0) {
    fuzz::tryPrecision<float>(input);
  } else {
    fuzz::tryPrecision<double>(input);
  }
  return 0;
}
