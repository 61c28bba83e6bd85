// Many transforms in one call, by libzvxgmany: dft, idft, rdft, irdft, hartley and wht of Signals,
// and dft2, idft2, transforms of blocks in two dimensions. Dct4 and Wht take Signals too.
//
//     zvxg::dft(zvxg::signals<64>(in), zvxg::signals<64>(out));
//
//     // A spectrogram: half spectra of frames of 64 samples, 16 apart, in rows of 33 bins.
//     zvxg::rdft(zvxg::signals<64>(samples, 16), zvxg::signals<33>(bins));
//
//     // All columns of an image of complex pixels, in place, in strips of 8 rows.
//     for (std::size_t y = 0; y < height; y += 8) {
//       const auto strip = zvxg::columns<8>(std::span(image).subspan(y * width), width);
//       zvxg::dft(strip, strip);
//     }
//
// A result has the bits of the call for that signal alone. zvxg_many.h tells which layouts are fast
// and promises the rest. The rules beside those of dft.hpp:
//
//  - Link zvxg::many, or what `pkg-config --libs zvxgmany` prints. Only a call needs it: a program
//    that includes this header and makes none of these calls does without that library.
//  - Source and destination have equally many signals.
//  - They may be the same signals: the same array, stride and distance. If they share elements
//    otherwise, std::invalid_argument is thrown, as for all that the compiler does not see; so no
//    call is noexcept. Two sides of one matrix that share no element are good.
//  - To use several threads, give each a part of the signals.
#pragma once

#include <cstddef>
#include <cstdint>

#include "zvxg/arrays.hpp"
#include "zvxg/batch.hpp"
#include "zvxg/dft.hpp"
#include "zvxg/functions.hpp"
#include "zvxg/wht.hpp"

namespace zvxg {
namespace detail {

template <std::size_t... kLengths>
inline constexpr bool kHaveKernels =
    ((kLengths == kDynamic || (kLengths >= kShortest && kLengths <= kLongest)) && ...);

// Transforms with as many elements on one side as on the other.
template <class In, class Out>
concept MatchingMany = MatchingSignals<In, Out> && kAgree<In::kLength, Out::kLength> &&
    kHaveKernels<In::kLength, Out::kLength>;

// Half spectra: complex bins in CCS, real numbers in Pack and Perm.
template <class S, Layout kLayout>
concept SpectrumSignals = AnySignals<S> &&
                          kLayout != Layout::HalfComplex&& SignalTraits<S>::kIsComplex ==
                          (kLayout == Layout::Ccs);

// Elements of the half spectrum of so many samples.
constexpr std::size_t elementsOf(Layout layout, std::size_t length) {
  return layout == Layout::Ccs ? binsOf(length) : length;
}

template <Layout kLayout, class Samples, class Spectra>
concept MatchingSpectra = kHaveKernels<Samples::kLength> &&
    kAgree<elementsOf(kLayout, Samples::kLength), Spectra::kLength>;

template <class Family, class In, class Out>
void transformMany(const char* name, const In& in, std::size_t inLength, const Out& out,
                   std::size_t outLength, std::size_t length, ZvxScaleFlag scale) {
  checkSignals(name, in, inLength, out, outLength);
  callMany(name, length, Family::kMany, in, out, saturated(length),
           static_cast<int64_t>(in.count()), scale);
}

template <class Family, class In, class Out>
void transformMany(const char* name, const In& in, const Out& out, ZvxScaleFlag scale) {
  const std::size_t length = in.length();
  transformMany<Family>(name, in, length, out, length, length, scale);
}

// All rows of a block, and then the columns of the result.
template <class Family, std::size_t kRows, std::size_t kColumns, class In, class Out>
void transformBlocks(const char* name, const In& in, const Out& out, ZvxScaleFlag scale) {
  checkSignals(name, in, kRows * kColumns, out, kRows * kColumns);
  for (std::size_t i = 0; i < in.count(); ++i) {
    transformMany<Family>(name, signals<kColumns>(in[i]), signals<kColumns>(out[i]), scale);
    const auto down = columns<kRows>(out[i], kColumns);
    transformMany<Family>(name, down, down, scale);
  }
}

template <std::size_t kRows, std::size_t kColumns, class In, class Out>
concept MatchingBlocks = kHaveKernels<kRows, kColumns> && MatchingSignals<In, Out> &&
    kAgree<kRows * kColumns, In::kLength> && kAgree<kRows * kColumns, Out::kLength> &&
    In::kIsContiguous && Out::kIsContiguous;

}  // namespace detail

/** The forward DFT of each signal. */
template <detail::ComplexSignals In, detail::ComplexSignals Out>
requires detail::MatchingMany<In, Out>
void dft(const In& in, const Out& out, ZvxScaleFlag scale = zvxNoDiv) {
  using Functions = detail::Functions<typename detail::SignalTraits<In>::Number>;
  detail::transformMany<typename Functions::Forward>("dft", in, out, scale);
}

/** The inverse DFT of each signal. */
template <detail::ComplexSignals In, detail::ComplexSignals Out>
requires detail::MatchingMany<In, Out>
void idft(const In& in, const Out& out, ZvxScaleFlag scale = zvxNoDiv) {
  using Functions = detail::Functions<typename detail::SignalTraits<In>::Number>;
  detail::transformMany<typename Functions::Inverse>("idft", in, out, scale);
}

/** The half spectra of real signals of N samples. In the layout Ccs, those of `out` have N/2 + 1
 *  complex bins each; in Pack and Perm, N real numbers. For a call in place in Ccs, both strides are
 *  1, and the distance of the samples is twice that of the bins. */
template <Layout kLayout = Layout::Ccs, detail::RealSignals In,
          detail::SpectrumSignals<kLayout> Out>
requires detail::MatchingSignals<In, Out> && detail::MatchingSpectra<kLayout, In, Out>
void rdft(const In& in, const Out& out, ZvxScaleFlag scale = zvxNoDiv) {
  const std::size_t length = in.length();
  detail::transformMany<detail::ToLayout<typename detail::SignalTraits<In>::Number, kLayout>>(
      "rdft", in, length, out, detail::elementsOf(kLayout, length), length, scale);
}

/** The real signals whose half spectra are `in`, the other way of rdft. */
template <Layout kLayout = Layout::Ccs, detail::SpectrumSignals<kLayout> In,
          detail::RealSignals Out>
requires detail::MatchingSignals<In, Out> && detail::MatchingSpectra<kLayout, Out, In>
void irdft(const In& in, const Out& out, ZvxScaleFlag scale = zvxNoDiv) {
  const std::size_t length = out.length();
  detail::transformMany<detail::FromLayout<typename detail::SignalTraits<In>::Number, kLayout>>(
      "irdft", in, detail::elementsOf(kLayout, length), out, length, length, scale);
}

/** The Hartley transform of each signal. */
template <detail::RealSignals In, detail::RealSignals Out>
requires detail::MatchingMany<In, Out>
void hartley(const In& in, const Out& out, ZvxScaleFlag scale = zvxNoDiv) {
  using Functions = detail::Functions<typename detail::SignalTraits<In>::Number>;
  detail::transformMany<typename Functions::Hartley>("hartley", in, out, scale);
}

/** The Walsh-Hadamard transform of each signal, of 2^kOrder elements, for the orders 1 to 7. */
template <int kOrder, detail::RealSignals In, detail::RealSignals Out>
requires(kOrder >= 1 && kOrder <= 7 && detail::MatchingSignals<In, Out> &&
         detail::kAgree<std::size_t{1} << kOrder, In::kLength> &&
         detail::kAgree<std::size_t{1} << kOrder, Out::kLength>) void wht(const In& in,
                                                                          const Out& out,
                                                                          ZvxScaleFlag scale =
                                                                              zvxNoDiv) {
  detail::whtMany("wht", kOrder, in, out, scale, nullptr);
}

/** The forward DFT in two dimensions of blocks of kRows rows of kColumns complex numbers, one row
 *  behind the other: all rows of a block, and then all columns, by a call each. Each of the signals
 *  is a block. `scale` counts in both dimensions: zvxDivFwdByN divides by the product. */
template <std::size_t kRows, std::size_t kColumns, detail::ComplexSignals In,
          detail::ComplexSignals Out>
requires detail::MatchingBlocks<kRows, kColumns, In, Out>
void dft2(const In& in, const Out& out, ZvxScaleFlag scale = zvxNoDiv) {
  using Functions = detail::Functions<typename detail::SignalTraits<In>::Number>;
  detail::transformBlocks<typename Functions::Forward, kRows, kColumns>("dft2", in, out, scale);
}
/** The same for one block. */
template <std::size_t kRows, std::size_t kColumns, detail::ComplexArray In,
          detail::ComplexArray Out>
requires detail::Matching<kRows * kColumns, In, Out>
void dft2(In&& in, Out&& out, ZvxScaleFlag scale = zvxNoDiv) {
  detail::checkedLength<kRows * kColumns>("dft2", in, out);
  dft2<kRows, kColumns>(signals<kRows * kColumns>(in), signals<kRows * kColumns>(out), scale);
}

/** The inverse DFT in two dimensions, likewise. */
template <std::size_t kRows, std::size_t kColumns, detail::ComplexSignals In,
          detail::ComplexSignals Out>
requires detail::MatchingBlocks<kRows, kColumns, In, Out>
void idft2(const In& in, const Out& out, ZvxScaleFlag scale = zvxNoDiv) {
  using Functions = detail::Functions<typename detail::SignalTraits<In>::Number>;
  detail::transformBlocks<typename Functions::Inverse, kRows, kColumns>("idft2", in, out, scale);
}
/** The same for one block. */
template <std::size_t kRows, std::size_t kColumns, detail::ComplexArray In,
          detail::ComplexArray Out>
requires detail::Matching<kRows * kColumns, In, Out>
void idft2(In&& in, Out&& out, ZvxScaleFlag scale = zvxNoDiv) {
  detail::checkedLength<kRows * kColumns>("idft2", in, out);
  idft2<kRows, kColumns>(signals<kRows * kColumns>(in), signals<kRows * kColumns>(out), scale);
}

}  // namespace zvxg
