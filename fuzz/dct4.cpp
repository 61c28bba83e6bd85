// The DCT-IV: lengths that are accepted and refused, plans in blocks at any place, bits at any
// places of the arrays, and the definition in long double.

#include <array>
#include <bit>
#include <memory>
#include <numbers>

#include "fuzz.h"

namespace fuzz {
namespace {

constexpr int kLongest = 12;  // a power of two; beyond, only the size is asked for

template <class T>
constexpr int kLast = sizeof(T) == 4 ? 26 : 25;

// Powers of two, and what the header lists beside them.
template <class T>
bool isAccepted(int32_t length) {
  const auto exponentOf = [](int64_t n) {
    return n > 1 && std::has_single_bit(static_cast<uint64_t>(n))
               ? std::countr_zero(static_cast<uint64_t>(n))
               : -1;
  };
  const int even = exponentOf(length), odd = exponentOf(int64_t{length} - 1);
  const auto wraps = [](int k) { return k == 30 || (sizeof(T) == 8 && k == 29); };
  return (even >= 1 && even <= kLast<T>) || wraps(even) ||
         (odd >= (sizeof(T) == 4 ? 7 : 5) && odd <= kLast<T>) || wraps(odd);
}

// One output by the definition.
template <class T>
long double output(std::span<const T> x, std::size_t k) {
  static std::array<std::vector<long double>, kLongest + 1> tables;
  std::vector<long double>& cosines = tables[std::countr_zero(x.size())];
  if (cosines.empty()) {
    for (std::size_t i = 0; i < 8 * x.size(); ++i) {
      cosines.push_back(std::cos(std::numbers::pi_v<long double> * static_cast<long double>(i) /
                                 static_cast<long double>(4 * x.size())));
    }
  }
  long double sum = 0;
  for (std::size_t n = 0; n < x.size(); ++n) {
    sum += x[n] * cosines[(2 * n + 1) * (2 * k + 1) % cosines.size()];
  }
  return sum;
}

template <class T>
void tryPrecision(Input& input) {
  using F = zvxg::detail::Functions<T>;
  const int32_t anyLength = input.choice(2) == 0
                                ? input.anyNumber()
                                : (1 << input.choice(31)) + static_cast<int32_t>(input.choice(3));
  uint32_t bytes = 12345;
  require(F::kDct4Size(anyLength, &bytes) == (isAccepted<T>(anyLength) ? zvxOk : zvxErrLength),
          "status of a size");
  require(isAccepted<T>(anyLength) || bytes == 12345, "a refused size was stored");

  const int32_t length = 1 << (1 + input.choice(kLongest));
  require(F::kDct4Size(length, &bytes) == zvxOk, "size");
  // The plan of a direct length may end behind its block where that is not on a boundary of 32.
  const std::size_t place = input.choice(64), slack = bytes == 256 && place % 32 != 0 ? 31 : 0;
  tests::Exact block(bytes + slack, place);
  Dct4Spec* spec = nullptr;
  require(F::kDct4Init(nullptr, length, block.data()) == zvxErrNullPointer, "null spec");
  require(F::kDct4Init(&spec, length, nullptr) == zvxErrNullPointer, "null block");
  require(spec == nullptr, "a refusal stored a plan");
  require(F::kDct4Init(&spec, length, block.data()) == zvxOk, "plan");

  std::vector<T> source(length);
  input.fill(std::span(source));
  const auto run = [&](const T* src, T* dst) { return F::kDct4(src, dst, spec); };
  require(F::kDct4(source.data(), source.data(), nullptr) == zvxErrNullPointer, "null plan");
  const std::vector<T> result = resultOf<T, T>(input, source, source.size(), run);
  if (!areOrdinary<T>(source)) return;

  // The transform is orthogonal but for its factor, so each output has the error of all.
  long double norm = 0;
  for (const T number : source) norm += static_cast<long double>(number) * number;
  const long double bound = 4 * std::numeric_limits<T>::epsilon() * std::sqrt(norm * length / 2);
  for (int i = 0; i < 8; ++i) {
    const std::size_t k = input.choice(length);
    require(std::abs(result[k] - output<T>(source, k)) <= bound, "not the definition");
  }
  // It undoes itself up to N/2.
  std::vector<T> again(length);
  require(run(result.data(), again.data()) == zvxOk, "the way back");
  std::vector<long double> expected(source.begin(), source.end());
  for (long double& number : expected) number *= length / 2.0L;
  require(areClose<T>(expected, again), "not undone");
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
