#include "arguments.h"

#include <algorithm>
#include <limits>

namespace zvxg::python {

bool integerOf(PyObject* object, npy_intp& value) {
  value = PyNumber_AsSsize_t(object, PyExc_OverflowError);
  return value != -1 || !PyErr_Occurred();
}

namespace {

// Keywords of a call are interned almost always.
int keywordOf(const State& state, PyObject* name) {
  for (int i = 0; i < kKeywords; ++i) {
    if (state.keywords[i] == name) return i;
  }
  for (int i = 0; i < kKeywords; ++i) {
    if (PyUnicode_Compare(state.keywords[i], name) == 0) return i;
  }
  return kKeywords;
}

bool axisOf(PyObject* object, int& axis) {
  constexpr npy_intp kFar = std::numeric_limits<int>::max();
  npy_intp value;
  if (!integerOf(object, value)) return false;
  axis = static_cast<int>(std::clamp(value, -kFar, kFar));
  return true;
}

// One of `axes`: an integer or a tuple of one.
bool axisAt(PyObject* axes, Py_ssize_t i, int& axis) {
  PyObject* item = PySequence_Fast_GET_ITEM(axes, i);
  if (PyTuple_Check(item) && PyTuple_GET_SIZE(item) == 1) item = PyTuple_GET_ITEM(item, 0);
  return axisOf(item, axis);
}

}  // namespace

bool parse(const State& state, const char* function, bool hasLayout, PyObject* const* given,
           Py_ssize_t positional, PyObject* names, Arguments& arguments) {
  if (positional > kPositional) {
    PyErr_Format(PyExc_TypeError, "%s() takes at most %d positional arguments, not %zd", function,
                 kPositional, positional);
    return false;
  }
  for (Py_ssize_t i = 0; i < positional; ++i) arguments[i] = given[i];
  const Py_ssize_t named = names == nullptr ? 0 : PyTuple_GET_SIZE(names);
  for (Py_ssize_t i = 0; i < named; ++i) {
    PyObject* const name = PyTuple_GET_ITEM(names, i);
    const int keyword = keywordOf(state, name);
    if (keyword == kKeywords || (keyword == kLayout && !hasLayout)) {
      PyErr_Format(PyExc_TypeError, "%s() has no argument '%U'", function, name);
      return false;
    }
    if (arguments[keyword] != nullptr) {
      PyErr_Format(PyExc_TypeError, "%s() has two values for '%U'", function, name);
      return false;
    }
    arguments[keyword] = given[positional + i];
  }
  if (arguments[kA] == nullptr) {
    PyErr_Format(PyExc_TypeError, "%s() needs an array", function);
    return false;
  }
  for (int i = kA + 1; i < kKeywords; ++i) {
    if (arguments[i] == Py_None) arguments[i] = nullptr;
  }
  return true;
}

bool settleAxis(const State& state, int dimensions, int& axis) {
  if (axis >= -dimensions && axis < dimensions) {
    if (axis < 0) axis += dimensions;
    return true;
  }
  const Reference arguments(Py_BuildValue("(ii)", axis, dimensions));
  if (arguments) PyErr_SetObject(state.axisError, arguments.get());
  return false;
}

bool parseAxes(const char* function, const Arguments& arguments, Axes& axes) {
  if (arguments[kAxes] == nullptr) {
    if (arguments[kAxis] != nullptr && !axisOf(arguments[kAxis], axes.source)) return false;
    axes.result = axes.source;
    return true;
  }
  if (arguments[kAxis] != nullptr) {
    PyErr_Format(PyExc_TypeError, "%s: give either axis or axes", function);
    return false;
  }
  const Reference list(PySequence_Fast(arguments[kAxes], "axes is a pair of axes"));
  if (!list) return false;
  if (PySequence_Fast_GET_SIZE(list.get()) != 2) {
    PyErr_Format(PyExc_ValueError, "%s: axes is a pair, the axis of the source and of the result",
                 function);
    return false;
  }
  return axisAt(list.get(), 0, axes.source) && axisAt(list.get(), 1, axes.result);
}

}  // namespace zvxg::python
