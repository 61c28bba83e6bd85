// Discrete Fourier and Hartley transforms of 2 to 64 points.
//
//     std::array<std::complex<float>, 12> x, y;
//     zvxg::dft(x, y);                           // calls the kernel of 12 points by its name
//     zvxg::dft<12>(vector, y);                  // the same after a check of vector.size()
//     zvxg::dft(vector, otherVector);            // the kernel of vector.size() points
//
//     zvxg::Spectrum<zvxg::Layout::Pack, float, 12> spectrum;
//     zvxg::rdft(samples, spectrum);
//     zvxg::irdft(spectrum, samples, zvxDivInvByN);
//
// The same rules apply to all of them:
//
//  - An array is anything that converts to a std::span. Its elements are float, double,
//    std::complex of these, Complex32 or Complex64. Source and destination have the same precision.
//  - The length is the template argument, or that of an array or spectrum whose type has a length.
//    Lengths known to the compiler must agree and be from 2 to 64, or the call does not compile.
//  - If all lengths are known to the compiler, nothing is checked at run time and nothing can fail:
//    the call is noexcept and costs as much as that of the kernel. Otherwise std::invalid_argument
//    is thrown, before anything is written, for lengths that differ or have no kernel, and for
//    arrays that overlap in part.
//  - Source and destination may be the same array. They must not overlap in part, even where that
//    is not checked.
//  - `scale` is the flag of zvxg.h, which has the formulas. A value that is none of the four is
//    only possible by a cast. It fails an assertion where nothing is checked, and throws
//    std::invalid_argument elsewhere.
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

// `Element` is the element type of the kernels; std::complex has the same layout.
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

/** The forward DFT of N complex numbers. */
template <std::size_t N = kDynamic, detail::ComplexArray In, detail::ComplexArray Out>
requires detail::MatchingKernels<N, In, Out>
void dft(In&& in, Out&& out, ZvxScaleFlag scale = zvxNoDiv) noexcept(detail::kAllKnown<In, Out>) {
  using Functions = detail::Functions<detail::NumberOf<In>>;
  detail::transform<typename Functions::Forward, typename Functions::Complex, N>("dft", in, out,
                                                                                 scale);
}

/** The inverse DFT of N complex numbers. */
template <std::size_t N = kDynamic, detail::ComplexArray In, detail::ComplexArray Out>
requires detail::MatchingKernels<N, In, Out>
void idft(In&& in, Out&& out, ZvxScaleFlag scale = zvxNoDiv) noexcept(detail::kAllKnown<In, Out>) {
  using Functions = detail::Functions<detail::NumberOf<In>>;
  detail::transform<typename Functions::Inverse, typename Functions::Complex, N>("idft", in, out,
                                                                                 scale);
}

/** The half spectrum of N real samples, in the layout of `out`: Ccs, Pack or Perm. For a call in
 *  place the array needs the size of the spectrum, and the destination is a SpectrumView of it. */
template <std::size_t N = kDynamic, detail::RealArray In, detail::WithKernels Out>
requires detail::MatchingKernels<N, In, Out>
void rdft(In&& in, Out&& out, ZvxScaleFlag scale = zvxNoDiv) noexcept(detail::kAllKnown<In, Out>) {
  using T = detail::NumberOf<In>;
  detail::transform<detail::ToLayout<T, std::remove_cvref_t<Out>::kLayout>, T, N>("rdft", in, out,
                                                                                  scale);
}

/** The N real samples whose half spectrum is `in`, in the layout Ccs, Pack or Perm. */
template <std::size_t N = kDynamic, detail::WithKernels In, detail::RealArray Out>
requires detail::MatchingKernels<N, In, Out>
void irdft(In&& in, Out&& out, ZvxScaleFlag scale = zvxNoDiv) noexcept(detail::kAllKnown<In, Out>) {
  using T = detail::NumberOf<In>;
  detail::transform<detail::FromLayout<T, std::remove_cvref_t<In>::kLayout>, T, N>("irdft", in, out,
                                                                                   scale);
}

/** The Hartley transform of N real numbers. It has no direction: zvxDivFwdByN and zvxDivInvByN both
 *  divide by N. */
template <std::size_t N = kDynamic, detail::RealArray In, detail::RealArray Out>
requires detail::MatchingKernels<N, In, Out>
void hartley(In&& in, Out&& out,
             ZvxScaleFlag scale = zvxNoDiv) noexcept(detail::kAllKnown<In, Out>) {
  using T = detail::NumberOf<In>;
  detail::transform<typename detail::Functions<T>::Hartley, T, N>("hartley", in, out, scale);
}

}  // namespace zvxg
