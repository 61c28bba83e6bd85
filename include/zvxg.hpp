// The companion of zvxg.h for C++20: header only, in namespace zvxg, outside the C boundary. It
// adds lengths, precisions and layouts as types, and objects for what needs memory.
//
//     zvxg/dft.hpp        dft, idft, rdft, irdft, hartley; what all calls have in common
//     zvxg/spectrum.hpp   Spectrum, SpectrumView, convert: layouts of half spectra
//     zvxg/wht.hpp        wht, Wht
//     zvxg/dct4.hpp       Dct4
//     zvxg/mdct.hpp       Mdct, Imdct and their windows
//     zvxg/batch.hpp      signals, batch: many signals in one array
//     zvxg/arrays.hpp, zvxg/functions.hpp   what these share
//
// Errors are exceptions: std::invalid_argument with a sentence for what a caller got wrong at run
// time, std::bad_alloc for memory. A constructor that fails leaves no object behind to be asked for
// its state, and no result has to be unpacked where the only errors are mistakes in the program;
// what the compiler can see to be wrong does not compile, and a call in which it sees everything is
// noexcept. An object or an array is as it was before a call that threw.
#pragma once

#include "zvxg/batch.hpp"
#include "zvxg/dct4.hpp"
#include "zvxg/dft.hpp"
#include "zvxg/mdct.hpp"
#include "zvxg/spectrum.hpp"
#include "zvxg/wht.hpp"
