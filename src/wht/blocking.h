// How the orders of the Walsh-Hadamard transform are cut into passes, and what follows from it.
#pragma once

#include <cstdint>
#include <numbers>

#include "frame/frame.h"

namespace zvxg::wht {

inline constexpr int kOrders = 13;

// N = row * inner * outer. Rows are `row` contiguous numbers, which are transformed at once. Where
// there is an inner factor, as many rows make a part, and the columns of a part are transformed
// before the next part is begun. The columns of the whole have `outer` numbers.
struct Blocking {
  int row, inner, outer;

  constexpr int part() const { return row * inner; }
  constexpr int points() const { return part() * outer; }
  // One pass goes straight to the destination. Several need a copy of the data and, if there are
  // parts, a scratch area for one of them behind it.
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

// Exact but for the root of an odd order, where one half times the rounded root of 2 is it.
template <class Real, int kOrder>
constexpr Factors<Real> factorsOf() {
  constexpr Real kByN = Real(1) / (1 << kOrder);
  constexpr Real kBySqrtN =
      (kOrder % 2 == 0 ? Real(1) : std::numbers::sqrt2_v<Real> / 2) / (1 << kOrder / 2);
  return factors<Real>(kByN, kByN, kBySqrtN);
}

}  // namespace zvxg::wht
