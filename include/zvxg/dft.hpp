// Discrete Fourier and Hartley transforms of 2 to 64 points.
//
//     std::array<std::complex<float>, 12> x, y;
//     zvxg::dft(x, y);                           // the kernel of 12 points, called by its name
//     zvxg::dft<12>(vector, y);                  // the same after a check of vector.size()
//     zvxg::dft(vector, otherVector);            // the kernel of vector.size() points
//
//     zvxg::Spectrum<zvxg::Layout::Pack, float, 12> spectrum;
//     zvxg::rdft(samples, spectrum);
//     zvxg::irdft(spectrum, samples, zvxDivInvByN);
//
// What holds for all of them:
//
//  - Arrays are whatever a std::span can be made of; an element is float, double, std::complex of
//    these, Complex32 or Complex64. Source and destination have one precision.
//  - The length is the template argument, or that of an array or spectrum whose type has it. Lengths
//    known to the compiler must agree and be from 2 to 64, or the call does not compile.
//  - Where all are known, nothing is checked at run time and nothing can fail: such a call is
//    noexcept, and no more than the call of the kernel. Otherwise std::invalid_argument is thrown
//    for lengths that differ or have no kernel, and for arrays that overlap in part, before
//    anything is written.
//  - Source and destination may be one array. They may not overlap in part; where nothing is checked
//    at run time, that is up to the caller.
//  - `scale` is the flag of zvxg.h, which has the formulas. A number that is none of the four can
//    get in only by a cast; it is an assertion where nothing is checked, else
//    std::invalid_argument.
//  - Any number of threads may call at once.
#pragma once

#include <cstddef>
#include <type_traits>

#include "zvxg/arrays.hpp"
#include "zvxg/functions.hpp"
#include "zvxg/spectrum.hpp"

namespace zvxg {
namespace detail {

template <std::size_t N, class In, class Out>
concept MatchingKernels = Matching<N, In, Out> &&
    (kKnownLength<N, In, Out> == kDynamic ||
     (kKnownLength<N, In, Out> >= kShortest && kKnownLength<N, In, Out> <= kLongest));

template <class S>
concept WithKernels = AnySpectrum<S> && std::remove_cvref_t<S>::kLayout != Layout::HalfComplex;

// `Element` is what the kernels call an element; std::complex has the same layout.
template <class Family, class Element, std::size_t N, class In, class Out>
void transform(const char* name, In& in, Out& out,
               ZvxScaleFlag scale) noexcept(kAllKnown<In, Out>) {
  [[maybe_unused]] const std::size_t length = checkedLength<N>(name, in, out);
  const auto* const src = reinterpret_cast<const Element*>(memoryOf(in).data());
  auto* const dst = reinterpret_cast<Element*>(memoryOf(out).data());
  if constexpr (constexpr std::size_t kKnown = kKnownLength<N, In, Out>; kKnown != kDynamic) {
    constexpr Kernel<Element> kKernel = Family::kKernels[kKnown - kShortest];
    checkResult<kAllKnown<In, Out>>(name, kKernel(src, dst, scale), kKnown);
  } else {
    checkStatus(name, Family::kByLength(src, dst, saturated(length), scale), length);
  }
}

template <class T, Layout kLayout>
using ToLayout =
    std::conditional_t<kLayout == Layout::Ccs, typename Functions<T>::ToCcs,
                       std::conditional_t<kLayout == Layout::Pack, typename Functions<T>::ToPack,
                                          typename Functions<T>::ToPerm>>;

template <class T, Layout kLayout>
using FromLayout =
    std::conditional_t<kLayout == Layout::Ccs, typename Functions<T>::FromCcs,
                       std::conditional_t<kLayout == Layout::Pack, typename Functions<T>::FromPack,
                                          typename Functions<T>::FromPerm>>;

}  // namespace detail

/** The forward DFT of N complex numbers into as many. */
template <std::size_t N = kDynamic, detail::ComplexArray In, detail::ComplexArray Out>
requires detail::MatchingKernels<N, In, Out>
void dft(In&& in, Out&& out, ZvxScaleFlag scale = zvxNoDiv) noexcept(detail::kAllKnown<In, Out>) {
  using Functions = detail::Functions<detail::NumberOf<In>>;
  detail::transform<typename Functions::Forward, typename Functions::Complex, N>("dft", in, out,
                                                                                 scale);
}

/** The inverse DFT, with the conjugate factors, of N complex numbers into as many. */
template <std::size_t N = kDynamic, detail::ComplexArray In, detail::ComplexArray Out>
requires detail::MatchingKernels<N, In, Out>
void idft(In&& in, Out&& out, ZvxScaleFlag scale = zvxNoDiv) noexcept(detail::kAllKnown<In, Out>) {
  using Functions = detail::Functions<detail::NumberOf<In>>;
  detail::transform<typename Functions::Inverse, typename Functions::Complex, N>("idft", in, out,
                                                                                 scale);
}

/** The half spectrum of N real samples, in the layout of `out`: Ccs, Pack or Perm. In place, the
 *  array has the size of the spectrum, and a SpectrumView of it is the destination. */
template <std::size_t N = kDynamic, detail::RealArray In, detail::WithKernels Out>
requires detail::MatchingKernels<N, In, Out>
void rdft(In&& in, Out&& out, ZvxScaleFlag scale = zvxNoDiv) noexcept(detail::kAllKnown<In, Out>) {
  using T = detail::NumberOf<In>;
  detail::transform<detail::ToLayout<T, std::remove_cvref_t<Out>::kLayout>, T, N>("rdft", in, out,
                                                                                  scale);
}

/** N real samples of a half spectrum in the layout of `in`: Ccs, Pack or Perm. */
template <std::size_t N = kDynamic, detail::WithKernels In, detail::RealArray Out>
requires detail::MatchingKernels<N, In, Out>
void irdft(In&& in, Out&& out, ZvxScaleFlag scale = zvxNoDiv) noexcept(detail::kAllKnown<In, Out>) {
  using T = detail::NumberOf<In>;
  detail::transform<detail::FromLayout<T, std::remove_cvref_t<In>::kLayout>, T, N>("irdft", in, out,
                                                                                   scale);
}

/** The Hartley transform of N real numbers into as many. It has no direction: zvxDivFwdByN and
 *  zvxDivInvByN both divide by N. */
template <std::size_t N = kDynamic, detail::RealArray In, detail::RealArray Out>
requires detail::MatchingKernels<N, In, Out>
void hartley(In&& in, Out&& out,
             ZvxScaleFlag scale = zvxNoDiv) noexcept(detail::kAllKnown<In, Out>) {
  using T = detail::NumberOf<In>;
  detail::transform<typename detail::Functions<T>::Hartley, T, N>("hartley", in, out, scale);
}

}  // namespace zvxg
