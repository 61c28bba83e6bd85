// How the Walsh-Hadamard transform of each order is divided into passes, and the size of its
// buffer.
#pragma once

#include <cstdint>
#include <numbers>

#include "frame/frame.h"

namespace zvxg::wht {

inline constexpr int kOrders = 13;

// N = row * inner * outer. A row is `row` contiguous numbers, which are transformed together.
// `inner` rows make a part; if there are several, the columns of a part are transformed before the
// next part begins. Last, the columns over all parts are transformed, `outer` numbers each.
struct Blocking {
  int row, inner, outer;

  constexpr int part() const { return row * inner; }
  constexpr int points() const { return part() * outer; }
  // A single pass writes directly to the destination. Several need room for a copy of the data and,
  // if `inner` is not 1, for a part after it.
  constexpr int bufferPoints() const {
    if (outer == 1) return 0;
    return points() + (inner == 1 ? 0 : part());
  }
};

template <class Real>
inline constexpr Blocking kBlockings[kOrders] = {};

template <>
inline constexpr Blocking kBlockings<float>[kOrders] = {
    {2, 1, 1},  {4, 1, 1},  {8, 1, 1},   {16, 1, 1},  {32, 1, 1}, {64, 1, 1},  {128, 1, 1},
    {32, 1, 8}, {64, 1, 8}, {64, 1, 16}, {64, 1, 32}, {64, 8, 8}, {64, 8, 16},
};

template <>
inline constexpr Blocking kBlockings<double>[kOrders] = {
    {2, 1, 1},  {4, 1, 1},   {8, 1, 1},   {16, 1, 1}, {32, 1, 1},  {64, 1, 1},  {128, 1, 1},
    {32, 1, 8}, {32, 1, 16}, {128, 1, 8}, {32, 8, 8}, {32, 8, 16}, {128, 8, 8},
};

template <class Real, int kOrder>
inline constexpr Blocking kBlockingOf = kBlockings<Real>[kOrder - 1];

template <class Real>
constexpr int bufferBytes(int order) {
  return kBlockings<Real>[order - 1].bufferPoints() * static_cast<int>(sizeof(Real));
}

// The factors are exact, except for the root at an odd order, which is half the rounded root of 2.
template <class Real, int kOrder>
constexpr Factors<Real> factorsOf() {
  constexpr Real kByN = Real(1) / (1 << kOrder);
  constexpr Real kBySqrtN =
      (kOrder % 2 == 0 ? Real(1) : std::numbers::sqrt2_v<Real> / 2) / (1 << kOrder / 2);
  return factors<Real>(kByN, kByN, kBySqrtN);
}

}  // namespace zvxg::wht
