// The companion of zvxg.h for C++20: the same transforms on spans, with the length as a template
// argument, layouts and precisions as types, and objects for what needs memory.
#pragma once

#include "zvxg/dct4.hpp"
#include "zvxg/mdct.hpp"
