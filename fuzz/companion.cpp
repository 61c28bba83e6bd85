// The companion header with lengths known at run time: parts of one array as source and
// destination, of any size and at any distance, in place or overlapping. What a call accepts has
// the bits of the C function and changes nothing else; all else throws and changes nothing.

#include <complex>

#include "fuzz.h"
#include "zvxg.hpp"

namespace fuzz {
namespace {

using zvxg::Layout;
using zvxg::detail::Functions;

// A source and a destination in an array of elements.
struct Parts {
  std::size_t from, fromSize, to, toSize;

  template <class E>
  std::span<const E> source(std::span<E> whole) const {
    return whole.subspan(from, fromSize);
  }
  template <class E>
  std::span<E> destination(std::span<E> whole) const {
    return whole.subspan(to, toSize);
  }
  bool areApartOrOne() const { return from == to || from + fromSize <= to || to + toSize <= from; }
};

constexpr std::size_t kLongest = 70;

// Sizes that are meant, but for one in eight.
Parts partsOf(Input& input, std::size_t fromSize, std::size_t toSize) {
  Parts parts{input.choice(2 * kLongest), fromSize, input.choice(2 * kLongest), toSize};
  if (input.choice(3) == 0) parts.to = parts.from;
  if (input.choice(8) == 0) parts.toSize = input.choice(kLongest);
  return parts;
}

// Runs call(source, destination) on the parts of an array and plain(source, destination) on copies.
template <class T, class E, class Call, class Plain>
void compare(Input& input, const Parts& parts, bool accepted, const Call& call,
             const Plain& plain) {
  std::vector<E> whole(3 * kLongest + 4);
  constexpr std::size_t kNumbers = sizeof(E) / sizeof(T);
  const auto numbers = [](auto& array) {
    return std::span<T>(reinterpret_cast<T*>(array.data()), array.size() * kNumbers);
  };
  input.fill(numbers(whole));
  std::vector<E> expected = whole;
  if (accepted) plain(whole.data() + parts.from, expected.data() + parts.to);
  bool threw = false;
  try {
    const std::span<E> all(whole);
    call(parts.source(all), parts.destination(all));
  } catch (const std::invalid_argument&) {
    threw = true;
  }
  require(threw != accepted, accepted ? "a good call threw" : "a bad call did not throw");
  require(sameNumbers<T>(numbers(expected), numbers(whole)), "not what the C function does");
}

bool isLength(std::size_t n) { return n >= 2 && n <= 64; }
bool isFlag(int32_t flag) { return std::ranges::count(kFlags, flag) == 1; }

// dft, idft and hartley: a family between arrays of one kind.
template <class T, class E, class Row, class Call>
void tryArrays(Input& input, Row, const Call& call) {
  const std::size_t n = input.choice(kLongest);
  const Parts parts = partsOf(input, n, n);
  const auto flag = static_cast<ZvxScaleFlag>(
      input.choice(4) == 0 ? static_cast<int32_t>(input.choice(16)) : kFlags[input.choice(4)]);
  using Element = std::conditional_t<std::is_same_v<E, T>, T, typename Functions<T>::Complex>;
  compare<T, E>(
      input, parts, isLength(n) && parts.toSize == n && parts.areApartOrOne() && isFlag(flag),
      [&](auto in, auto out) { call(in, out, flag); },
      [&](const E* src, E* dst) {
        Row::kByLength(reinterpret_cast<const Element*>(src), reinterpret_cast<Element*>(dst),
                       static_cast<int32_t>(n), flag);
      });
}

template <Layout kLayout, class T>
void tryLayout(Input& input) {
  const std::size_t n = input.choice(kLongest), size = zvxg::spectrumSize(kLayout, n);
  const ZvxScaleFlag flag = zvxDivBySqrtN;
  if (input.choice(2) == 0) {
    const Parts parts = partsOf(input, n, size);
    compare<T, T>(
        input, parts, isLength(n) && parts.toSize == size && parts.areApartOrOne(),
        [&](std::span<const T> in, std::span<T> out) {
          zvxg::rdft(in, zvxg::SpectrumView<kLayout, T>(out, n), flag);
        },
        [&](const T* src, T* dst) {
          zvxg::detail::ToLayout<T, kLayout>::kByLength(src, dst, static_cast<int32_t>(n), flag);
        });
  } else {
    const Parts parts = partsOf(input, size, n);
    compare<T, T>(
        input, parts, isLength(n) && parts.toSize == n && parts.areApartOrOne(),
        [&](std::span<const T> in, std::span<T> out) {
          zvxg::irdft(zvxg::SpectrumView<kLayout, const T>(in, n), out, flag);
        },
        [&](const T* src, T* dst) {
          zvxg::detail::FromLayout<T, kLayout>::kByLength(src, dst, static_cast<int32_t>(n), flag);
        });
  }
}

template <class T>
void tryPrecision(Input& input) {
  using F = Functions<T>;
  using Pair = std::complex<T>;
  switch (input.choice(6)) {
    case 0:
      return tryArrays<T, Pair>(input, typename F::Forward(),
                                [](auto in, auto out, auto flag) { zvxg::dft(in, out, flag); });
    case 1:
      return tryArrays<T, Pair>(input, typename F::Inverse(),
                                [](auto in, auto out, auto flag) { zvxg::idft(in, out, flag); });
    case 2:
      return tryArrays<T, T>(input, typename F::Hartley(),
                             [](auto in, auto out, auto flag) { zvxg::hartley(in, out, flag); });
    case 3: return tryLayout<Layout::Ccs, T>(input);
    case 4: return tryLayout<Layout::Pack, T>(input);
    default: return tryLayout<Layout::Perm, T>(input);
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
