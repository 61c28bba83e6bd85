// What the tests of the companion header share.
#pragma once

#include <complex>
#include <stdexcept>
#include <string>

#include "dct4.h"
#include "harness.h"
#include "zvxg.hpp"

namespace tests {

/// What a call says of its arguments.
template <class Call>
std::string complaint(const Call& call) {
  try {
    call();
  } catch (const std::invalid_argument& error) {
    return error.what();
  }
  return "none";
}

/// The functions of the header that stand for the kernel `id`, as test(From(), To(), single, many) with
/// the elements of its sides. single(length, from, to, flag) takes spans, of the length N if that is
/// one, and many(from, to, flag) takes Signals.
template <class T, std::size_t N = zvxg::kDynamic, class Test>
void withCalls(const kernelgen::KernelId& id, const Test& test) {
  using Pair = std::complex<T>;
  using zvxg::Layout;
  const bool isForward = id.direction == kernelgen::Direction::Forward;
  const auto ofSpectra = [&]<Layout kLayout>(auto bin) {
    if (isForward) {
      test(
          T(), bin,
          [](std::size_t n, auto from, auto to, ZvxScaleFlag flag) {
            zvxg::rdft<N>(from, zvxg::SpectrumView<kLayout, T>(to, n), flag);
          },
          [](const auto&... a) { zvxg::rdft<kLayout>(a...); });
    } else {
      test(
          bin, T(),
          [](std::size_t n, auto from, auto to, ZvxScaleFlag flag) {
            zvxg::irdft<N>(zvxg::SpectrumView<kLayout, const T>(from, n), to, flag);
          },
          [](const auto&... a) { zvxg::irdft<kLayout>(a...); });
    }
  };
  if (id.family == kernelgen::Family::Hartley) {
    test(
        T(), T(), [](std::size_t, auto... a) { zvxg::hartley<N>(a...); },
        [](const auto&... a) { zvxg::hartley(a...); });
  } else if (id.layout == kernelgen::Layout::Ccs) {
    ofSpectra.template operator()<Layout::Ccs>(Pair());
  } else if (id.layout == kernelgen::Layout::Pack) {
    ofSpectra.template operator()<Layout::Pack>(T());
  } else if (id.layout == kernelgen::Layout::Perm) {
    ofSpectra.template operator()<Layout::Perm>(T());
  } else if (isForward) {
    test(
        Pair(), Pair(), [](std::size_t, auto... a) { zvxg::dft<N>(a...); },
        [](const auto&... a) { zvxg::dft(a...); });
  } else {
    test(
        Pair(), Pair(), [](std::size_t, auto... a) { zvxg::idft<N>(a...); },
        [](const auto&... a) { zvxg::idft(a...); });
  }
}

}  // namespace tests
