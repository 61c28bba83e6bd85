// The extension module zvxg._core: NumPy's generalised ufuncs over libzvxgmany, and the functions
// that users call. A function settles arguments, types and lengths, allocates the result, and then
// goes one of two ways. One signal, or one batch in a matrix, goes to the library from here, as the
// iterator of a ufunc takes longer than a transform. All else goes to the ufunc: more dimensions,
// `out`, subclasses, and foreign arrays by their __array_ufunc__.
#define ZVXG_IMPORTS_NUMPY
#include <dlfcn.h>
#include <xmmintrin.h>
#include <zvxg_many.h>

#include <algorithm>
#include <cstdio>
#include <initializer_list>
#include <utility>

#include "arguments.h"
#include "numpy.h"
#include "transforms.h"

namespace zvxg::python {
namespace {

// ---- State of the module ------------------------------------------------------------------------

State* stateOf(PyObject* module) { return static_cast<State*>(PyModule_GetState(module)); }

template <class Visit>
int forEachReference(State* state, const Visit& visit) {
  PyObject** const first = reinterpret_cast<PyObject**>(state);
  for (std::size_t i = 0; i < sizeof *state / sizeof *first; ++i) {
    if (const int stop = visit(first[i])) return stop;
  }
  return 0;
}

// ---- Ufuncs -------------------------------------------------------------------------------------

struct LoopData {
  const Transform* transform;
  Norm norm;
  bool isSingle;
};

Run runOf(const Transform& transform, bool isSingle) {
  return isSingle ? transform.ofSingle : transform.ofDouble;
}

void lengthError(const Transform& t, std::ptrdiff_t length, bool isSingle) {
  PyErr_Format(PyExc_ValueError, "%s: there is no transform of length %zd; the lengths are %s",
               t.name, length, t.acceptedLengths(isSingle));
}

void loop(char** args, const npy_intp* dimensions, const npy_intp* steps, void* data) {
  const auto& [transform, norm, isSingle] = *static_cast<const LoopData*>(data);
  const bool hasBins = transform->bins != Spectrum::None;
  const npy_intp howmany = dimensions[0], source = dimensions[1];
  const npy_intp result = hasBins ? dimensions[2] : source;
  const npy_intp length = transform->bins == Spectrum::Source ? result : source;
  if (howmany == 0) return;
  NPY_ALLOW_C_API_DEF
  if (!transform->accepts(length, isSingle) || transform->sourceElements(length) != source ||
      transform->resultElements(length) != result) {
    NPY_ALLOW_C_API
    if (transform->accepts(length, isSingle)) {
      PyErr_Format(PyExc_ValueError, "%s: %zd elements do not become %zd", transform->name, source,
                   result);
    } else {
      lengthError(*transform, length, isSingle);
    }
    NPY_DISABLE_C_API
    return;
  }
  const npy_intp* const core = steps + 2;
  const bool isOne = howmany == 1;  // NumPy sets no distance then
  const Side from = {args[0], core[0], isOne ? 0 : steps[0], source};
  const Side to = {args[1], core[1], isOne ? 0 : steps[1], result};
  // Infinity stays without a warning, as in scipy.fft: NumPy looks at the flags after this.
  const unsigned flags = _mm_getcsr();
  const bool done = runOf(*transform, isSingle)(from, to, length, howmany, norm);
  _mm_setcsr(flags);
  if (!done) {
    NPY_ALLOW_C_API
    PyErr_NoMemory();
    NPY_DISABLE_C_API
  }
}

int numberOf(bool isComplex, bool isSingle) {
  return isComplex ? (isSingle ? NPY_CFLOAT : NPY_CDOUBLE) : (isSingle ? NPY_FLOAT : NPY_DOUBLE);
}

// What NumPy keeps pointers to. Doubles come first: by the first loop to which an operand casts
// without loss, integers then become doubles, and floats find their own loop as an exact match.
struct UfuncTables {
  PyUFuncGenericFunction loops[2] = {loop, loop};
  char types[kTransformCount][4];
  LoopData loopData[kTransformCount][kNorms][2];
  void* data[kTransformCount][kNorms][2];
  char names[kTransformCount][kNorms][24];
} tables;

PyObject* makeUfunc(int transform, int norm) {
  const Transform& t = kTransforms[transform];
  for (const int single : {0, 1}) {
    char* const types = tables.types[transform] + 2 * single;
    types[0] = static_cast<char>(numberOf(t.complexSource, single));
    types[1] = static_cast<char>(numberOf(t.complexResult, single));
    LoopData& data = tables.loopData[transform][norm][single];
    data = {&t, static_cast<Norm>(norm), single != 0};
    tables.data[transform][norm][single] = &data;
  }
  auto& name = tables.names[transform][norm];
  std::snprintf(name, sizeof name, norm == 0 ? "%s" : "%s_%s", t.name, kNormNames[norm]);
  return PyUFunc_FromFuncAndDataAndSignature(tables.loops, tables.data[transform][norm],
                                             tables.types[transform], 2, 1, 1, PyUFunc_None, name,
                                             "See the function of the same name in zvxg.", 0,
                                             t.bins == Spectrum::None ? "(n)->(n)" : "(n)->(m)");
}

// ---- Types --------------------------------------------------------------------------------------

// The number type in which an array is transformed, or -1 with an exception.
int typeFor(const Transform& t, const char* function, PyArray_Descr* given) {
  const int type = given->type_num;
  if (PyTypeNum_ISBOOL(type) || PyTypeNum_ISINTEGER(type)) return numberOf(t.complexSource, false);
  const bool isSingle = type == NPY_FLOAT || type == NPY_CFLOAT;
  if (!isSingle && type != NPY_DOUBLE && type != NPY_CDOUBLE) {
    PyErr_Format(PyExc_TypeError, "%s: arrays of %R are not transformed; convert to %s", function,
                 given, t.complexSource ? "complex64 or complex128" : "float32 or float64");
    return -1;
  }
  if (PyTypeNum_ISCOMPLEX(type) && !t.complexSource) {
    PyErr_Format(PyExc_TypeError, "%s: the source has to be real, and its type is %R", function,
                 given);
    return -1;
  }
  return numberOf(t.complexSource, isSingle);
}

// The array as it is, if type and byte order are right, or else a copy.
Reference withType(const Transform& t, const char* function, PyArrayObject* array) {
  const int type = typeFor(t, function, PyArray_DESCR(array));
  if (type < 0) return Reference();
  if (PyArray_TYPE(array) == type && PyArray_ISNOTSWAPPED(array)) {
    Py_INCREF(array);
    return Reference(reinterpret_cast<PyObject*>(array));
  }
  return Reference(PyArray_FromArray(array, PyArray_DescrFromType(type), NPY_ARRAY_FORCECAST));
}

// ---- Shapes -------------------------------------------------------------------------------------

using Shape = npy_intp[NPY_MAXDIMS];

// The first `elements` along an axis, with zeros behind what there is.
Reference resized(PyArrayObject* array, int axis, npy_intp elements) {
  const int dimensions = PyArray_NDIM(array);
  Shape shape;
  std::copy_n(PyArray_DIMS(array), dimensions, shape);
  const npy_intp present = shape[axis];
  const auto view = [&](PyArrayObject* of) {
    PyArray_Descr* const type = PyArray_DESCR(of);
    Py_INCREF(type);
    Py_INCREF(of);
    Reference made(PyArray_NewFromDescr(&PyArray_Type, type, dimensions, shape, PyArray_STRIDES(of),
                                        PyArray_DATA(of), PyArray_FLAGS(of), nullptr));
    if (!made || PyArray_SetBaseObject(made.array(), reinterpret_cast<PyObject*>(of)) < 0) {
      if (!made) Py_DECREF(of);
      return Reference();
    }
    return made;
  };
  if (elements <= present) {
    shape[axis] = elements;
    return view(array);
  }
  shape[axis] = elements;
  Reference padded(PyArray_ZEROS(dimensions, shape, PyArray_TYPE(array), 0));
  if (!padded) return padded;
  shape[axis] = present;
  const Reference front = view(padded.array());
  if (!front || PyArray_CopyInto(front.array(), array) < 0) return Reference();
  return padded;
}

// What the source has in common with the result, and the elements of the latter at its axis.
void shapeOfResult(PyArrayObject* source, const Axes& axes, npy_intp elements, Shape& shape) {
  const int dimensions = PyArray_NDIM(source);
  for (int from = 0, to = 0; to < dimensions; ++to) {
    if (to == axes.result) {
      shape[to] = elements;
      continue;
    }
    if (from == axes.source) ++from;
    shape[to] = PyArray_DIM(source, from++);
  }
}

// Of the type of the source if that is a subclass, and in Fortran's order after such a source.
Reference makeResult(PyArrayObject* source, int type, const Shape& shape) {
  const bool isFortran = PyArray_IS_F_CONTIGUOUS(source) && !PyArray_IS_C_CONTIGUOUS(source);
  if (PyArray_CheckExact(source)) {
    return Reference(PyArray_EMPTY(PyArray_NDIM(source), shape, type, isFortran));
  }
  return Reference(PyArray_NewFromDescr(Py_TYPE(source), PyArray_DescrFromType(type),
                                        PyArray_NDIM(source), shape, nullptr, nullptr, isFortran,
                                        reinterpret_cast<PyObject*>(source)));
}

// `out`, whose other dimensions the ufunc compares.
Reference givenResult(const char* function, PyObject* out, int dimensions, int axis,
                      npy_intp elements) {
  if (!PyArray_Check(out)) {
    PyErr_Format(PyExc_TypeError, "%s: out is an array, not a %s", function, Py_TYPE(out)->tp_name);
    return Reference();
  }
  const auto array = reinterpret_cast<PyArrayObject*>(out);
  if (PyArray_NDIM(array) != dimensions || PyArray_DIM(array, axis) != elements) {
    PyErr_Format(PyExc_ValueError, "%s: out has to have %d dimensions, and %zd elements at axis %d",
                 function, dimensions, elements, axis);
    return Reference();
  }
  Py_INCREF(out);
  return Reference(out);
}

// ---- The two ways -------------------------------------------------------------------------------

// What an array covers: the bytes from first to second.
std::pair<char*, char*> extent(PyArrayObject* array) {
  char *first = PyArray_BYTES(array), *last = first;
  for (int i = 0; i < PyArray_NDIM(array); ++i) {
    const npy_intp reach = (PyArray_DIM(array, i) - 1) * PyArray_STRIDE(array, i);
    (reach < 0 ? first : last) += reach;
  }
  return {first, last + PyArray_ITEMSIZE(array)};
}

// Whether the library may write one while it reads the other: they are apart, or the same.
bool mayRunTogether(PyArrayObject* source, PyArrayObject* result) {
  const auto [sourceFirst, sourceEnd] = extent(source);
  const auto [resultFirst, resultEnd] = extent(result);
  if (sourceEnd <= resultFirst || resultEnd <= sourceFirst) return true;
  return PyArray_BYTES(source) == PyArray_BYTES(result) &&
         PyArray_TYPE(source) == PyArray_TYPE(result) &&
         std::equal(PyArray_STRIDES(source), PyArray_STRIDES(source) + PyArray_NDIM(source),
                    PyArray_STRIDES(result));
}

// Whether runHere() can take arrays as they are. The core elements fit already.
bool canRunHere(PyArrayObject* source, PyArrayObject* result, int type, const Axes& axes) {
  const int dimensions = PyArray_NDIM(source);
  return dimensions <= 2 && PyArray_CheckExact(source) && PyArray_CheckExact(result) &&
         PyArray_TYPE(result) == type && PyArray_ISNOTSWAPPED(result) &&
         PyArray_ISWRITEABLE(result) &&
         (dimensions == 1 ||
          PyArray_DIM(source, !axes.source) == PyArray_DIM(result, !axes.result)) &&
         mayRunTogether(source, result);
}

// A matrix or a signal.
bool runHere(const LoopData& call, PyArrayObject* source, PyArrayObject* result, const Axes& axes,
             npy_intp length) {
  const auto side = [](PyArrayObject* array, int axis, npy_intp howmany) {
    return Side{PyArray_BYTES(array), PyArray_STRIDE(array, axis),
                howmany == 1 ? 0 : PyArray_STRIDE(array, !axis), PyArray_DIM(array, axis)};
  };
  const npy_intp howmany = PyArray_NDIM(source) == 2 ? PyArray_DIM(source, !axes.source) : 1;
  const Side from = side(source, axes.source, howmany), to = side(result, axes.result, howmany);
  bool done;
  NPY_BEGIN_THREADS_DEF
  NPY_BEGIN_THREADS_THRESHOLDED(length * howmany)  // as a ufunc does
  done = runOf(*call.transform, call.isSingle)(from, to, length, howmany, call.norm);
  NPY_END_THREADS
  return done;
}

PyObject* callUfunc(const State& state, PyObject* ufunc, PyObject* source, PyObject* result,
                    const Axes& axes) {
  const Reference pair(Py_BuildValue("[(i)(i)]", axes.source, axes.result));
  if (!pair) return nullptr;
  PyObject* arguments[3] = {source};
  std::size_t count = 1;
  if (result != nullptr) arguments[count++] = result;
  arguments[count] = pair.get();
  return PyObject_Vectorcall(ufunc, arguments, count, state.axesKeyword);
}

// ---- The functions ------------------------------------------------------------------------------

// An array of another library, which takes ufuncs. Integers are made doubles by its own means.
PyObject* callForeign(const State& state, const Transform& t, const char* function, PyObject* ufunc,
                      const Arguments& arguments, const Axes& axes) {
  if (arguments[kN] != nullptr) {
    PyErr_Format(PyExc_TypeError, "%s: n is for arrays of NumPy, and this is a %s", function,
                 Py_TYPE(arguments[kA])->tp_name);
    return nullptr;
  }
  const Reference type(PyObject_GetAttrString(arguments[kA], "dtype"));
  if (!type) return nullptr;
  if (!PyArray_DescrCheck(type.get())) {
    return callUfunc(state, ufunc, arguments[kA], arguments[kOut], axes);
  }
  const int wanted = typeFor(t, function, reinterpret_cast<PyArray_Descr*>(type.get()));
  if (wanted < 0) return nullptr;
  const Reference target(reinterpret_cast<PyObject*>(PyArray_DescrFromType(wanted)));
  const Reference cast(PyObject_CallMethod(arguments[kA], "astype", "O", target.get()));
  if (!cast) return nullptr;
  return callUfunc(state, ufunc, cast.get(), arguments[kOut], axes);
}

PyObject* transformArray(const State& state, int name, Norm norm, const char* function,
                         const Arguments& arguments, Axes axes) {
  const Transform& t = kTransforms[name];
  PyObject* const ufunc = state.ufuncs[name][static_cast<int>(norm)];
  Reference source;
  if (PyArray_Check(arguments[kA])) {
    source = withType(t, function, reinterpret_cast<PyArrayObject*>(arguments[kA]));
  } else if (PyObject_HasAttr(arguments[kA], state.overridden) &&
             !PyArray_IsAnyScalar(arguments[kA])) {
    return callForeign(state, t, function, ufunc, arguments, axes);
  } else {
    const Reference converted(
        PyArray_FromAny(arguments[kA], nullptr, 0, 0, NPY_ARRAY_ENSUREARRAY, nullptr));
    if (!converted) return nullptr;
    source = withType(t, function, converted.array());
  }
  if (!source) return nullptr;

  const int dimensions = PyArray_NDIM(source.array());
  if (!settleAxis(state, dimensions, axes.source) || !settleAxis(state, dimensions, axes.result)) {
    return nullptr;
  }
  const npy_intp given = PyArray_DIM(source.array(), axes.source);
  npy_intp length = t.bins == Spectrum::Source ? 2 * (given - 1) : given;
  if (arguments[kN] != nullptr && !integerOf(arguments[kN], length)) return nullptr;
  const int type = PyArray_TYPE(source.array());
  const bool isSingle = type == NPY_FLOAT || type == NPY_CFLOAT;
  if (!t.accepts(length, isSingle)) {
    lengthError(t, length, isSingle);
    return nullptr;
  }
  if (t.sourceElements(length) != given) {
    if (name == kIrfftPack || name == kIrfftPerm) {
      PyErr_Format(PyExc_ValueError, "%s: a spectrum of %zd numbers has no other length (n=%zd)",
                   t.name, given, length);
      return nullptr;
    }
    source = resized(source.array(), axes.source, t.sourceElements(length));
    if (!source) return nullptr;
  }

  const npy_intp elements = t.resultElements(length);
  const int resultType = numberOf(t.complexResult, isSingle);
  Reference result;
  if (arguments[kOut] != nullptr) {
    result = givenResult(function, arguments[kOut], dimensions, axes.result, elements);
  } else {
    Shape shape;
    shapeOfResult(source.array(), axes, elements, shape);
    result = makeResult(source.array(), resultType, shape);
  }
  if (!result) return nullptr;
  if (canRunHere(source.array(), result.array(), resultType, axes)) {
    return runHere({&t, norm, isSingle}, source.array(), result.array(), axes, length)
               ? result.release()
               : PyErr_NoMemory();
  }
  return callUfunc(state, ufunc, source.get(), result.get(), axes);
}

// The layouts of a half spectrum stand behind each other in kTransforms.
template <int kFirst, int kLayouts>
PyObject* function(PyObject* module, PyObject* const* given, Py_ssize_t positional,
                   PyObject* names) {
  constexpr const char* kWords[] = {"ccs", "pack", "perm"};
  const State& state = *stateOf(module);
  const char* const name = kTransforms[kFirst].name;
  Arguments arguments = {};
  if (!parse(state, name, kLayouts > 1, given, positional, names, arguments)) return nullptr;
  const int norm = wordOf(name, "norm", arguments[kNorm], kNormNames);
  if (norm < 0) return nullptr;
  const int layout = wordOf(name, "layout", arguments[kLayout], kWords);
  if (layout < 0) return nullptr;
  Axes axes;
  if (!parseAxes(name, arguments, axes)) return nullptr;
  return transformArray(state, kFirst + layout, static_cast<Norm>(norm), name, arguments, axes);
}

// Which library answers: its record and file, and what libzvxgmany uses of the processor.
PyObject* library(PyObject*, PyObject*) {
  const VersionRecord& version = *zvxgenGetLibVersion();
  Dl_info place = {};
  dladdr(reinterpret_cast<const void*>(&version), &place);
  return Py_BuildValue("{sisiszsssssi}", "major", version.major, "minor", version.minor, "file",
                       place.dli_fname, "version", version.versionText, "cpu", version.cpuTag,
                       "many_level", zvxgManyLevel());
}

// ---- The module ---------------------------------------------------------------------------------

#define ZVXG_FUNCTION(name, first, layouts, parameters, text)                                     \
  {                                                                                               \
    name, reinterpret_cast<PyCFunction>(reinterpret_cast<void (*)()>(function<first, layouts>)),  \
        METH_FASTCALL | METH_KEYWORDS,                                                            \
        name "(a, n=None, axis=-1, norm=None, out=None, *, axes=None" parameters ")\n--\n\n" text \
  }

PyMethodDef kMethods[] = {
    ZVXG_FUNCTION("fft", kFft, 1, "",
                  "Discrete Fourier transform along an axis of 2 to 64 points."),
    ZVXG_FUNCTION("ifft", kIfft, 1, "", "Inverse of fft()."),
    ZVXG_FUNCTION(
        "rfft", kRfft, 3, ", layout='ccs'",
        "The non-negative half of the spectrum of real signals of 2 to 64 points.\n\n"
        "'ccs' gives complex bins as numpy.fft.rfft does; 'pack' and 'perm' give as many\n"
        "real numbers as there are samples, without the parts that are zero."),
    ZVXG_FUNCTION("irfft", kIrfft, 3, ", layout='ccs'",
                  "Inverse of rfft(). The length is 2 * (bins - 1) unless n is given."),
    ZVXG_FUNCTION("hartley", kHartley, 1, "",
                  "Hartley transform of 2 to 64 points: the sum of x * (cos + sin)."),
    ZVXG_FUNCTION("wht", kWht, 1, "",
                  "Walsh-Hadamard transform in natural order, of 2, 4 .. 8192 points."),
    ZVXG_FUNCTION("dct4", kDct4, 1, "",
                  "DCT-IV of a power of two of points, with the factors of scipy.fft.dct(type=4)."),
    {"library", library, METH_NOARGS, "What is known of the library that answers, as a dict."},
    {}};

int fill(PyObject* module) {
  import_array1(-1);
  import_umath1(-1);
  State& state = *stateOf(module);
  const Reference ufuncs(PyDict_New());
  if (!ufuncs) return -1;
  for (int transform = 0; transform < kTransformCount; ++transform) {
    for (int norm = 0; norm < kNorms; ++norm) {
      PyObject*& ufunc = state.ufuncs[transform][norm];
      ufunc = makeUfunc(transform, norm);
      if (ufunc == nullptr ||
          PyDict_SetItemString(ufuncs.get(), tables.names[transform][norm], ufunc) < 0) {
        return -1;
      }
    }
  }
  for (int i = 0; i < kKeywords; ++i) {
    state.keywords[i] = PyUnicode_InternFromString(kKeywordNames[i]);
    if (state.keywords[i] == nullptr) return -1;
  }
  state.axesKeyword = Py_BuildValue("(O)", state.keywords[kAxes]);
  state.overridden = PyUnicode_InternFromString("__array_ufunc__");
  // NumPy 1.25 has moved it.
  Reference errors(PyImport_ImportModule("numpy.exceptions"));
  if (!errors) {
    PyErr_Clear();
    errors = Reference(PyImport_ImportModule("numpy"));
  }
  if (!errors) return -1;
  state.axisError = PyObject_GetAttrString(errors.get(), "AxisError");
  if (!state.axesKeyword || !state.overridden || !state.axisError) return -1;
  return PyModule_AddStringConstant(module, "__version__", ZVXG_VERSION) < 0 ||
                 PyModule_AddObjectRef(module, "ufuncs", ufuncs.get()) < 0 ||
                 PyModule_AddFunctions(module, kFrameMethods) < 0
             ? -1
             : 0;
}

PyModuleDef_Slot kSlots[] = {{Py_mod_exec, reinterpret_cast<void*>(fill)},
#ifdef Py_mod_gil
                             {Py_mod_gil, Py_MOD_GIL_NOT_USED},
#endif
                             {}};

PyModuleDef kModule = {
    .m_base = PyModuleDef_HEAD_INIT,
    .m_name = "zvxg._core",
    .m_doc = "Transforms of libzvxg and libzvxgmany on arrays.",
    .m_size = sizeof(State),
    .m_methods = kMethods,
    .m_slots = kSlots,
    .m_traverse =
        [](PyObject* module, visitproc visit, void* arg) {
          return forEachReference(stateOf(module), [&](PyObject* object) {
            return object == nullptr ? 0 : visit(object, arg);
          });
        },
    .m_clear =
        [](PyObject* module) {
          return forEachReference(stateOf(module), [](PyObject*& object) {
            Py_CLEAR(object);
            return 0;
          });
        },
    .m_free = nullptr,
};

}  // namespace
}  // namespace zvxg::python

PyMODINIT_FUNC PyInit__core() { return PyModuleDef_Init(&zvxg::python::kModule); }
