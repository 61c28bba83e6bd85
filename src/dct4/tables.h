// The tables of a plan: rotations of the root and twiddle factors of the splits, in the order in
// which the vector loops read them. Every entry is a cosine or sine that `evaluate` of a value
// source would return. The builders compute both in one call, sincos(), which gives the same bits.
#pragma once

#include <math.h>

#include <algorithm>
#include <cmath>
#include <numbers>

#include "dct4/records.h"

namespace zvxg::dct4 {

// ---- Sine and cosine of pi x --------------------------------------------------------------------

// In single precision the quotient x and the product are both rounded to float before the cosine is
// taken. Plans have always had these roundings. A table computed in double and rounded at the end
// would be more accurate, but it would change results.
template <class T>
T timesPi(T x) {
  return static_cast<T>(static_cast<double>(x) * std::numbers::pi);
}

template <class T>
struct CosSin {
  T cos, sin;
};

inline CosSin<float> cosSinPi(float x) {
  CosSin<float> value;
  sincosf(timesPi(x), &value.sin, &value.cos);
  return value;
}
inline CosSin<double> cosSinPi(double x) {
  CosSin<double> value;
  sincos(timesPi(x), &value.sin, &value.cos);
  return value;
}

// ---- Rotations ----------------------------------------------------------------------------------

template <class T>
T rotationPhase(const RotationSource<T>* source, int32_t row, int32_t column) {
  const int32_t pairIndex = (row * source->rowStride + column) / 2;
  const int32_t u = pairIndex / source->columns;
  const int32_t p = pairIndex % source->columns;
  const int32_t dividend = 2 * (2 * u + 1) * (2 * p + 1);
  return static_cast<T>(dividend) / static_cast<T>(source->angleDivisor);
}

template <class T>
T evaluateRotation(const RotationSource<T>* source, int32_t row, int32_t column) {
  const T angle = timesPi(rotationPhase(source, row, column));
  return (row * source->rowStride + column) % 2 == 0 ? std::cos(angle) : std::sin(angle);
}

template <class T>
T evaluateLaneRows(const LaneRowsSource<T>* source, int32_t laneRow, int32_t lane, int32_t column) {
  return source->source->evaluate(source->source, laneRow * kTableLanes<T> + lane, column);
}

// Place i of a group of r pairs (cosine, sine) holds the pair of this column of the plan. Pairs are
// taken from both ends in turn. With r = 32 they are ordered in fours, as the transforms of length
// 4 use them.
constexpr int32_t rotationPair(int32_t r, int32_t i) {
  if (r != 32) return i % 2 == 0 ? i / 2 : r - 1 - i / 2;
  const int32_t p = i / 16 + 4 * (i / 4 % 4) + 16 * (i / 2 % 2);
  return i % 2 == 0 ? p : r - 1 - p;
}

template <class T>
void fillRotations(const RootCombineLoop<T>& loop) {
  const RotationSource<T>* const source = loop.source->source;
  const int32_t pairs = loop.radix;
  T* vectors = loop.table;
  for (int32_t i = 0; i < loop.laneRows; ++i) {
    for (int32_t pair = 0; pair < pairs; ++pair, vectors += 2 * kTableLanes<T>) {
      const int32_t column = 2 * rotationPair(loop.radix, pair);
      for (int32_t lane = 0; lane < kTableLanes<T>; ++lane) {
        const auto value = cosSinPi(rotationPhase(source, i * kTableLanes<T> + lane, column));
        vectors[lane] = value.cos;
        vectors[kTableLanes<T> + lane] = value.sin;
      }
    }
  }
}

// ---- Twiddle factors ----------------------------------------------------------------------------

template <class T>
T evaluatePhase(const PhaseSource<T>* source, int32_t i, int32_t, int32_t) {
  return (static_cast<T>(i) + T(0.5)) / static_cast<T>(source->length / source->radix);
}

// For each i, a pass of radix `radix` over `steps` columns j reads the cosine and sine of
// pi (f(i) + j) 2 t / order for t = 1 .. radix - 1, where f(i) is the phase of i.
struct TwiddleSection {
  int32_t steps, radix, order;
  constexpr int32_t vectors() const { return steps * 2 * (radix - 1); }
};

struct TwiddleLayout {
  int32_t count;
  TwiddleSection sections[2];  // in memory order, each for all i
};

// A split by 16 takes two passes by 4, a split by 32 a pass by 8 and a pass by 4. For 32, the table
// in double precision has the second pass first; plans of both precisions must stay as they are.
template <class T>
constexpr TwiddleLayout twiddleLayout(int32_t radix) {
  if (radix == 16) return {2, {{1, 4, 4}, {4, 4, 16}}};
  if (radix == 32 && sizeof(T) == 4) return {2, {{1, 8, 8}, {8, 4, 32}}};
  if (radix == 32) return {2, {{8, 4, 32}, {1, 8, 8}}};
  return {1, {{1, radix, radix}, {}}};
}

// Every layout has 2 (q - 1) vectors for each i.
constexpr int32_t twiddleVectors(int32_t radix) { return 2 * (radix - 1); }

template <class T>
void fillTwiddles(const SplitCombine<T>& combine) {
  const TwiddleLayout layout = twiddleLayout<T>(combine.radix);
  T* vectors = combine.table;
  for (int32_t number = 0; number < layout.count; ++number) {
    const TwiddleSection& section = layout.sections[number];
    for (int32_t i = 0; i < combine.count; ++i) {
      const T phase = combine.source->evaluate(combine.source, i, 0, 0);
      for (int32_t j = 0; j < section.steps; ++j) {
        const T shifted = phase + static_cast<T>(j);
        for (int32_t t = 1; t < section.radix; ++t, vectors += 2 * kTableLanes<T>) {
          const T multiplier = static_cast<T>(2 * t) / static_cast<T>(section.order);
          const auto value = cosSinPi(shifted * multiplier);
          std::fill_n(vectors, kTableLanes<T>, value.cos);
          std::fill_n(vectors + kTableLanes<T>, kTableLanes<T>, value.sin);
        }
      }
    }
  }
}

}  // namespace zvxg::dct4
