// The C API of NumPy. One source defines ZVXG_IMPORTS_NUMPY, and its module imports the API.
#pragma once

#define PY_SSIZE_T_CLEAN
#include <Python.h>

#define NPY_NO_DEPRECATED_API NPY_1_22_API_VERSION
#define PY_ARRAY_UNIQUE_SYMBOL zvxg_array_api
#define PY_UFUNC_UNIQUE_SYMBOL zvxg_ufunc_api
#ifndef ZVXG_IMPORTS_NUMPY
#define NO_IMPORT_ARRAY
#define NO_IMPORT_UFUNC
#endif
#include <numpy/arrayobject.h>
#include <numpy/ufuncobject.h>

namespace zvxg::python {

// A reference that is given back at the end of its scope.
class Reference {
 public:
  Reference() = default;
  explicit Reference(PyObject* owned) : object_(owned) {}
  Reference(Reference&& other) noexcept : object_(other.release()) {}
  Reference& operator=(Reference&& other) noexcept {
    PyObject* const old = object_;
    object_ = other.release();
    Py_XDECREF(old);
    return *this;
  }
  ~Reference() { Py_XDECREF(object_); }

  PyObject* get() const { return object_; }
  PyArrayObject* array() const { return reinterpret_cast<PyArrayObject*>(object_); }
  explicit operator bool() const { return object_ != nullptr; }
  PyObject* release() {
    PyObject* const object = object_;
    object_ = nullptr;
    return object;
  }

 private:
  PyObject* object_ = nullptr;
};

// The module's functions on frames, of frames.cpp.
extern PyMethodDef kFrameMethods[];

}  // namespace zvxg::python
