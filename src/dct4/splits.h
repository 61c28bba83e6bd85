// The output step of a split below the root, on all columns of a workspace: for each k, products
// with twiddle factors from the table, then a complex transform as long as the radix q. Radix 16
// and 32 take two levels, with t = 4 t1 + t0 and l = l0 + (q/4) l1:
//
//     F = (2k+1) / m
//     B_t0[l0]       = sum over t1 of P_(4 t1 + t0) e(4 pi t1 F) e(2 pi t1 l0 / (q/4))
//     V[l0 + q/4 l1] = sum over t0 of B_t0[l0] e(pi t0 F) e(2 pi t0 l0 / q) e(2 pi t0 l1 / 4)
#pragma once

#include "dct4/leaves.h"
#include "dct4/tables.h"

namespace zvxg::dct4 {

// The places for the outputs of one k: V[l], l < q/2, at up + l step, the conjugate of V[q-1-l] at
// down + l step, each imaginary part `toImaginary` after its real part.
template <class T>
struct SplitOutputs {
  T *up, *down;
  std::ptrdiff_t step, toImaginary;

  // Those of k further on, as in a workspace. There, `toImaginary` is the width of a row.
  SplitOutputs after(std::ptrdiff_t k) const {
    return {up + 2 * k * toImaginary, down - 2 * k * toImaginary, step, toImaginary};
  }
};

template <class T>
struct SplitStage {
  const T* in;  // rows of width `width` * q
  const T* table;
  std::ptrdiff_t width;
  std::ptrdiff_t count;     // p, the values of k
  SplitOutputs<T> outputs;  // of k = 0
  Writing writing;
  std::ptrdiff_t first = 0, last = count;  // the values of k to work on
};

// The places of k = 0 in a workspace with rows of this width, where the first columns are `out`.
template <class T>
SplitOutputs<T> outputsIn(T* out, std::ptrdiff_t width, std::ptrdiff_t count) {
  return {out, out + 2 * (2 * count - 1) * width, 4 * count * width, width};
}

template <class S>
ZVXG_INLINE inline Complex<Vector<S>> loadPair(const Number<S>* re, const Number<S>* im) {
  return {S::load(re), S::load(im)};
}

// Multiplies a[t] by the pair for t in the table, t = 1 .. kCount - 1.
template <class S, int kCount>
ZVXG_INLINE inline void twiddle(std::array<Complex<Vector<S>>, kCount>& a, const Number<S>* pairs) {
  using T = Number<S>;
  unroll<kCount - 1>([&](auto i) ZVXG_INLINE {
    const T* const pair = pairs + 2 * i * kTableLanes<T>;
    a[i + 1] = rotated(a[i + 1], S::loadRepeated(pair), S::loadRepeated(pair + kTableLanes<T>));
  });
}

template <class V>
ZVXG_INLINE inline std::array<Complex<V>, 4> dft(const std::array<Complex<V>, 4>& a) {
  return dft4(a);
}
template <class V>
ZVXG_INLINE inline std::array<Complex<V>, 8> dft(const std::array<Complex<V>, 8>& a) {
  return dft8(a);
}

// One group of columns for one k; `in` is P_0[k]. Not inlined into the loop over groups, because
// radix 8 would then run out of registers: 2048 points took 2 % longer on Zen 4.
template <class S, int kRadix>
[[gnu::noinline]] void splitGroup(const SplitStage<Number<S>>& stage, const Number<S>* in,
                                  SplitOutputs<Number<S>> out, std::ptrdiff_t k, int vectors) {
  using T = Number<S>;
  using V = Vector<S>;
  const std::ptrdiff_t width = stage.width, toImaginary = kRadix * width;
  const auto input = [&](int t, int g) ZVXG_INLINE {
    const T* const re = in + t * width + g * kLanes<S>;
    return loadPair<S>(re, re + toImaginary);
  };
  // The second half of the kCount results belongs to `down`, in reverse order.
  const auto store = [&]<std::size_t kCount>(T* up, T* down, std::ptrdiff_t step,
                                             const std::array<Complex<V>, kCount>& v) ZVXG_INLINE {
    unroll<kCount / 2>([&](auto l) ZVXG_INLINE {
      storePair<S>(up + l * step, out.toImaginary, v[l]);
      storePair<S>(down + l * step, out.toImaginary, v[kCount - 1 - l]);
    });
  };
  if constexpr (kRadix <= 8) {
    const T* const pairs = stage.table + k * twiddleVectors(kRadix) * kTableLanes<T>;
    for (int g = 0; g < vectors; ++g) {
      std::array<Complex<V>, kRadix> a;
      unroll<kRadix>([&](auto t) ZVXG_INLINE { a[t] = input(t, g); });
      twiddle<S, kRadix>(a, pairs);
      store(out.up + g * kLanes<S>, out.down + g * kLanes<S>, out.step, dftFolded(a));
    }
  } else {
    constexpr int kFirst = kRadix / 4;  // radix of the first level
    constexpr TwiddleLayout layout = twiddleLayout<T>(kRadix);
    constexpr bool kFirstLeads = layout.sections[0].steps == 1;
    constexpr std::ptrdiff_t kVectorsBefore = layout.sections[0].vectors();
    const T* const other = stage.table + stage.count * kVectorsBefore * kTableLanes<T>;
    const T* const pairs1 =
        (kFirstLeads ? stage.table : other) + k * 2 * (kFirst - 1) * kTableLanes<T>;
    const T* const pairs2 = (kFirstLeads ? other : stage.table) + k * 6 * kFirst * kTableLanes<T>;

    Tile<S, kRadix> tile;
    for (int t0 = 0; t0 < 4; ++t0) {
      for (int g = 0; g < vectors; ++g) {
        std::array<Complex<V>, kFirst> a;
        unroll<kFirst>([&](auto t1) ZVXG_INLINE { a[t1] = input(4 * t1 + t0, g); });
        twiddle<S, kFirst>(a, pairs1);
        const auto b = dft(a);
        unroll<kFirst>([&](auto l0) ZVXG_INLINE { tile.set(4 * l0 + t0, g, b[l0]); });
      }
    }
    for (int l0 = 0; l0 < kFirst; ++l0) {
      // V[l0 + kFirst l1]: the two upper ones mirror V[kFirst - 1 - l0 + kFirst l1].
      T* const up = out.up + l0 * out.step;
      T* const down = out.down + (kFirst - 1 - l0) * out.step;
      for (int g = 0; g < vectors; ++g) {
        std::array<Complex<V>, 4> a;
        unroll<4>([&](auto t0) ZVXG_INLINE { a[t0] = tile.get(4 * l0 + t0, g); });
        twiddle<S, 4>(a, pairs2 + 6 * l0 * kTableLanes<T>);
        store(up + g * kLanes<S>, down + g * kLanes<S>, kFirst * out.step, dftFolded(a));
      }
    }
  }
}

// Columns first .. first + count - 1 for one k, group by group, to `out` and what follows there.
template <class S, int kRadix>
void splitColumns(const SplitStage<Number<S>>& stage, std::ptrdiff_t k, std::ptrdiff_t first,
                  std::ptrdiff_t count, const SplitOutputs<Number<S>>& out) {
  using T = Number<S>;
  constexpr std::ptrdiff_t kStep = kGroup<S> * kLanes<S>;
  const T* const in = stage.in + 2 * k * kRadix * stage.width + first;
  for (std::ptrdiff_t col = 0; col < count; col += kStep) {
    const auto vectors = static_cast<int>(std::min(kStep, count - col) / kLanes<S>);
    splitGroup<S, kRadix>(stage, in + col,
                          {out.up + col, out.down + col, out.step, out.toImaginary}, k, vectors);
  }
}

template <class S, int kRadix>
void splitDirectly(const SplitStage<Number<S>>& stage) {
  for (std::ptrdiff_t k = stage.first; k < stage.last; ++k) {
    splitColumns<S, kRadix>(stage, k, 0, stage.width, stage.outputs.after(k));
  }
}

// Collects runs along a row.
template <class S, int kRadix>
void splitLongRows(const SplitStage<Number<S>>& stage) {
  using T = Number<S>;
  constexpr std::ptrdiff_t kRun = Staging<S>::kRun;
  Staging<S> staging;
  for (std::ptrdiff_t k = stage.first; k < stage.last; ++k) {
    const SplitOutputs<T> out = stage.outputs.after(k);
    for (std::ptrdiff_t start = 0; start < stage.width; start += kRun) {
      const std::ptrdiff_t count = std::min(kRun, stage.width - start);
      splitColumns<S, kRadix>(stage, k, start, count,
                              {staging.run(0), staging.run(kRadix), 2 * kRun, kRun});
      for (int l = 0; l < kRadix / 2; ++l) {
        for (int part = 0; part < 2; ++part) {
          const std::ptrdiff_t to = l * out.step + part * out.toImaginary + start;
          staging.copyOut(out.up + to, staging.run(2 * l + part), count, stage.writing);
          staging.copyOut(out.down + to, staging.run(kRadix + 2 * l + part), count, stage.writing);
        }
      }
    }
  }
}

// Collects the rows of several k in one run, real and imaginary ones in turn. The outputs have no
// other columns than those of the stage.
template <class S, int kRadix>
void splitShortRows(const SplitStage<Number<S>>& stage) {
  using T = Number<S>;
  constexpr std::ptrdiff_t kRun = Staging<S>::kRun;
  const std::ptrdiff_t width = stage.width, most = kRun / width;
  Staging<S> staging;
  for (std::ptrdiff_t first = stage.first; first < stage.last; first += most) {
    const std::ptrdiff_t many = std::min(most, stage.last - first);
    for (std::ptrdiff_t i = 0; i < many; ++i) {
      T* const up = staging.run(0) + 2 * i * width;
      T* const down = staging.run(kRadix) + 2 * (many - 1 - i) * width;
      splitColumns<S, kRadix>(stage, first + i, 0, width, {up, down, 2 * kRun, width});
    }
    const std::ptrdiff_t count = 2 * many * width;
    const SplitOutputs<T> out = stage.outputs.after(first);
    const SplitOutputs<T> last = out.after(many - 1);
    for (int l = 0; l < kRadix / 2; ++l) {
      staging.copyOut(out.up + l * out.step, staging.run(2 * l), count, stage.writing);
      staging.copyOut(last.down + l * out.step, staging.run(kRadix + 2 * l), count, stage.writing);
    }
  }
}

template <class S, int kRadix>
void runSplit(const SplitStage<Number<S>>& stage) {
  if (stage.writing == Writing::Direct) {
    splitDirectly<S, kRadix>(stage);
  } else if (stage.width >= Staging<S>::kRun || stage.width < stage.outputs.toImaginary) {
    splitLongRows<S, kRadix>(stage);
  } else {
    splitShortRows<S, kRadix>(stage);
  }
}

// By `state` - 1 of the record.
template <class S>
constexpr auto kSplits = []<int... i>(std::integer_sequence<int, i...>) {
  return std::array{runSplit<S, 2 << i>...};
}
(std::make_integer_sequence<int, 5>());

}  // namespace zvxg::dct4
