// The companion header by itself: all of it in both precisions, and what must not compile.

#include "zvxg.hpp"

namespace {

template <class T>
void useAll(std::span<T> x, std::span<std::complex<T>> z) {
  zvxg::dft(z, z);
  zvxg::idft<12>(z, z);
  zvxg::hartley(x, x);
  zvxg::wht<3>(x, x);
  zvxg::Spectrum<zvxg::Layout::Ccs, T, 12> ccs;
  zvxg::Spectrum<zvxg::Layout::HalfComplex, T> halfComplex(12);
  zvxg::rdft(x, ccs);
  zvxg::irdft(ccs, x, zvxDivInvByN);
  zvxg::convert(ccs, halfComplex);
  zvxg::irdft(zvxg::SpectrumView<zvxg::Layout::Ccs, T>(z, 12), x);
  zvxg::batch(zvxg::signals(x, 8), zvxg::signals<8>(x), zvxg::Wht<T>(3));
  zvxg::dft(zvxg::signals<12>(z), zvxg::columns<12>(z, 3));
  zvxg::rdft(zvxg::signals<12>(x, 4), zvxg::signals(z, 7, {.stride = 9, .distance = 1}));
  zvxg::Wht<T>(3)(zvxg::signals(x, 8), zvxg::signals<8>(x));
  zvxg::idft2<4, 3>(z, z);
  zvxg::Mdct<T> mdct(zvxg::sineWindow<T>(8));
  zvxg::Imdct<T> imdct(zvxg::kbdWindow<T>(8, 4));
  mdct(x, x);
  imdct(x, x);
}

}  // namespace

void useCompanion(std::span<float> x, std::span<std::complex<float>> z, std::span<double> y,
                  std::span<std::complex<double>> w) {
  useAll(x, z);
  useAll(y, w);
}

// ---- What fits and what does not ---------------------------------------------------------------

namespace {

using enum zvxg::Layout;
using zvxg::kDynamic;

template <std::size_t N>
using Complexes = std::array<std::complex<float>, N>;
template <std::size_t N>
using Floats = std::array<float, N>;
template <zvxg::Layout kLayout, class T = float, std::size_t N = 12>
using Half = zvxg::Spectrum<kLayout, T, N>;
using Vector = std::vector<std::complex<float>>;

template <class In, class Out, std::size_t N = kDynamic>
concept Dft = requires(In in, Out out) {
  zvxg::dft<N>(in, out);
};
static_assert(Dft<Complexes<12>, Complex32 (&)[12]> && Dft<Complexes<12>, Vector, 12>);
static_assert(!Dft<Complexes<12>, Complexes<13>> && !Dft<Complexes<12>, Vector, 13>);
static_assert(!Dft<Complexes<1>, Complexes<1>> && !Dft<Vector, Vector, 65>);
static_assert(!Dft<Complexes<12>, const Complexes<12>> && !Dft<Vector, std::vector<Complex64>>);
static_assert(!Dft<Floats<12>, Floats<12>> && !Dft<std::array<int, 12>, Complexes<12>>);

template <class In, class Out>
concept Forward = requires(In in, Out out) {
  zvxg::rdft(in, out);
};
template <class In, class Out>
concept Inverse = requires(In in, Out out) {
  zvxg::irdft(in, out);
};
static_assert(Forward<Floats<12>, Half<Perm>&> && Inverse<const Half<Perm>&, Floats<12>>);
static_assert(!Forward<Floats<12>, Half<Perm, double>&> && !Forward<Floats<14>, Half<Ccs>&>);
static_assert(!Forward<Floats<12>, Half<HalfComplex>&> && !Inverse<Half<HalfComplex>, Floats<12>>);
static_assert(!Forward<Floats<12>, const Half<Perm>&> && !Forward<Floats<12>, Floats<12>>);
static_assert(!Forward<Floats<12>, zvxg::SpectrumView<Perm, const float, 12>>);
static_assert(!std::is_assignable_v<Half<Pack>&, Half<Perm>>);
static_assert(!std::is_constructible_v<zvxg::SpectrumView<Ccs, float, 12>, Floats<12>&>);
static_assert(!std::is_constructible_v<zvxg::SpectrumView<Pack, float, 12>, Complexes<7>&>);
static_assert(std::is_constructible_v<zvxg::SpectrumView<Ccs, float, 12>, Complexes<7>&>);
static_assert(sizeof(Half<Ccs>) == 14 * sizeof(float));

template <class From, class To>
concept Conversion = requires(From from, To to) {
  zvxg::convert(from, to);
};
static_assert(Conversion<Half<Pack>, Half<Ccs>&> && !Conversion<Half<Pack>, const Half<Ccs>&>);
static_assert(!Conversion<Half<Pack>, Half<Ccs, double>&>);
static_assert(!Conversion<Half<Pack>, Half<Ccs, float, 14>&>);

template <class Array, int kOrder>
concept WalshHadamard = requires(Array x) {
  zvxg::wht<kOrder>(x, x);
};
static_assert(WalshHadamard<Floats<128>, 7> && !WalshHadamard<Floats<64>, 7>);
static_assert(!WalshHadamard<Floats<256>, 8> && !WalshHadamard<Floats<1>, 0>);

// Signals have one length, and are looked at one by one only where each is a span.
template <class In, class Out>
concept ManyDft = requires(zvxg::Signals<In, 12> in, Out out) {
  zvxg::dft(in, out);
};
using Pair = std::complex<float>;
static_assert(ManyDft<const Pair, zvxg::Signals<Complex32, 12, kDynamic>>);
static_assert(ManyDft<Pair, zvxg::Signals<Pair>> && !ManyDft<Pair, zvxg::Signals<Pair, 13>>);
static_assert(!ManyDft<Pair, zvxg::Signals<const Pair>> && !ManyDft<Pair, Vector>);
static_assert(!ManyDft<Pair, zvxg::Signals<Complex64>> && !ManyDft<float, zvxg::Signals<float>>);
template <class Spectra, zvxg::Layout kLayout>
concept ManyForward = requires(zvxg::Signals<float, 12> in, Spectra out) {
  zvxg::rdft<kLayout>(in, out);
};
static_assert(ManyForward<zvxg::Signals<Pair, 7>, Ccs> &&
              !ManyForward<zvxg::Signals<Pair, 6>, Ccs>);
static_assert(ManyForward<zvxg::Signals<float, 12>, Perm>);
static_assert(!ManyForward<zvxg::Signals<float>, Ccs> && !ManyForward<zvxg::Signals<Pair>, Pack>);
static_assert(!ManyForward<zvxg::Signals<float>, HalfComplex>);
template <class S>
concept HasSpans = requires(S signals) {
  signals[0];
};
static_assert(HasSpans<zvxg::Signals<float>> && !HasSpans<zvxg::Signals<float, 12, kDynamic>>);

template <class Flag>
concept Scale = requires(Floats<4> x, Flag flag) {
  zvxg::hartley(x, x, flag);
};
static_assert(Scale<ZvxScaleFlag> && !Scale<int>);

// A plan has one precision, is run by one thread at a time, and is no value.
template <class Object, class T>
concept Runs = requires(Object object, std::vector<T> x) {
  object(x, x);
};
static_assert(Runs<zvxg::Dct4<float>&, float> && !Runs<zvxg::Dct4<float>&, double>);
static_assert(!Runs<const zvxg::Dct4<float>&, float> && !Runs<const zvxg::Wht<float>&, float>);
static_assert(!std::is_copy_constructible_v<zvxg::Dct4<float>>);
static_assert(std::is_nothrow_move_assignable_v<zvxg::Dct4<float>>);

// A call can throw where something is left to be checked, and only there.
static_assert(noexcept(zvxg::dft(std::declval<Complexes<12>&>(), std::declval<Complexes<12>&>())));
static_assert(!noexcept(zvxg::dft<12>(std::declval<Complexes<12>&>(), std::declval<Vector&>())));

}  // namespace
