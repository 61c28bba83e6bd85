// The C++20 companion of zvxg.h, header-only, in namespace zvxg. Lengths, precisions and layouts
// are part of types, and what needs memory is an object.
//
//     zvxg/dft.hpp        dft, idft, rdft, irdft, hartley; what all calls have in common
//     zvxg/spectrum.hpp   Spectrum, SpectrumView, convert: layouts of half spectra
//     zvxg/wht.hpp        wht, Wht
//     zvxg/dct4.hpp       Dct4
//     zvxg/mdct.hpp       Mdct, Imdct and their windows
//     zvxg/batch.hpp      signals, columns, batch: many signals in one array
//     zvxg/many.hpp       all of these transforms of many signals in one call, and dft2, idft2; who
//                         calls them links libzvxgmany, and nobody else needs it
//     zvxg/arrays.hpp, zvxg/functions.hpp   what these share
//
// Errors are exceptions: std::invalid_argument, whose text says what the caller got wrong, and
// std::bad_alloc. With exceptions a failed constructor leaves no object whose state would need to
// be checked, and no result needs to be unpacked although only mistakes in the program can be
// errors. What the compiler can see to be wrong does not compile, and a call in which it sees
// everything is noexcept. A call that throws leaves objects and arrays as they were.
#pragma once

#include "zvxg/batch.hpp"
#include "zvxg/dct4.hpp"
#include "zvxg/dft.hpp"
#include "zvxg/many.hpp"
#include "zvxg/mdct.hpp"
#include "zvxg/spectrum.hpp"
#include "zvxg/wht.hpp"
