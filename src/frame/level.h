// The level of processors that a file is compiled for. Every level has the same functions with the
// same bits; a higher one may use wider vectors and more registers. None fuses a product with a sum.
#pragma once

// What the build compiles once for all levels, and anything outside of it, is of the base.
#ifndef ZVXG_LEVEL
#define ZVXG_LEVEL base
#endif

namespace zvxg {

// AVX, and the levels x86-64-v3 and -v4 of the psABI: AVX2, and AVX-512 with VL, DQ and BW.
enum class Level {
  base,
  v3,
  v4
};

inline constexpr Level kLevel = Level::ZVXG_LEVEL;

}  // namespace zvxg
