// The arguments of the functions that users call. Where one is wrong, an exception is set.
#pragma once

#include <cstddef>

#include "numpy.h"
#include "transforms.h"

namespace zvxg::python {

enum Keyword {
  kA,
  kN,
  kAxis,
  kNorm,
  kOut,
  kAxes,
  kLayout,
  kKeywords
};
constexpr int kPositional = kAxes;  // those before
constexpr const char* kKeywordNames[kKeywords] = {"a",   "n",    "axis",  "norm",
                                                  "out", "axes", "layout"};

struct State {
  PyObject* ufuncs[kTransformCount][kNorms];
  PyObject* keywords[kKeywords];  // interned
  PyObject* axesKeyword;          // ("axes",)
  PyObject* overridden;           // "__array_ufunc__"
  PyObject* axisError;
};

using Arguments = PyObject* [kKeywords];  // null where none was given, or None

bool parse(const State& state, const char* function, bool hasLayout, PyObject* const* given,
           Py_ssize_t positional, PyObject* names, Arguments& arguments);

// The axis of the source and that of the result.
struct Axes {
  int source = -1, result = -1;
};

bool parseAxes(const char* function, const Arguments& arguments, Axes& axes);
// Counts an axis from the first of so many.
bool settleAxis(const State& state, int dimensions, int& axis);

bool integerOf(PyObject* object, npy_intp& value);

// The place of a word in a list, which is the default where none was given.
template <std::size_t kCount>
int wordOf(const char* function, const char* what, PyObject* word,
           const char* const (&words)[kCount]) {
  if (word == nullptr) return 0;
  if (PyUnicode_Check(word)) {
    for (std::size_t i = 0; i < kCount; ++i) {
      if (PyUnicode_CompareWithASCIIString(word, words[i]) == 0) return static_cast<int>(i);
    }
  }
  PyErr_Format(PyExc_ValueError, "%s: %s is one of '%s', '%s' and '%s', not %R", function, what,
               words[0], words[1], words[2], word);
  return -1;
}

}  // namespace zvxg::python
