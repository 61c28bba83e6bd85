// Frames of signals: windowed and transformed, and the way back. Frames are read where they lie in
// the signal. A tile of them is multiplied by the window into the first-level cache, and one call
// of the library takes it to the spectrum, in which bin b of frame t stands at [b, t].
#include <algorithm>
#include <cstring>
#include <vector>

#include "numpy.h"
#include "transforms.h"

namespace zvxg::python {
namespace {

constexpr npy_intp kTileBytes = 16384;

// Signals by rows, and frame t begins at sample first + t * hop. What a frame has outside of the
// signal is zero.
struct Frames {
  PyArrayObject *signals, *window, *spectra;
  npy_intp hop, first;

  npy_intp length() const { return PyArray_DIM(window, 0); }
  npy_intp samples() const { return PyArray_DIM(signals, 1); }
  npy_intp count() const { return PyArray_DIM(spectra, 2); }
};

// Calls body(i, address of sample start + i) for the part of a frame that is in the signal, and
// outside(i) for the rest.
template <class Body, class Outside>
void overFrame(char* signal, npy_intp stride, npy_intp elementSize, npy_intp samples,
               npy_intp start, npy_intp length, const Body& body, const Outside& outside) {
  const npy_intp begin = std::clamp<npy_intp>(-start, 0, length);
  const npy_intp end = std::clamp<npy_intp>(samples - start, begin, length);
  for (npy_intp i = 0; i < begin; ++i) outside(i);
  char* const at = signal + start * stride;
  if (stride == elementSize) {  // vectors
    for (npy_intp i = begin; i < end; ++i) body(i, at + i * elementSize);
  } else {
    for (npy_intp i = begin; i < end; ++i) body(i, at + i * stride);
  }
  for (npy_intp i = end; i < length; ++i) outside(i);
}

template <class T>
T load(const char* at) {
  T value;
  std::memcpy(&value, at, sizeof value);
  return value;
}

// Serves all frames tile by tile: `serve` is told the signal, the side of the tile, that of the
// spectra, the first frame of the tile and the count.
template <class T, int kParts, class Serve>
bool overTiles(const Frames& frames, const Serve& serve) {
  const npy_intp length = frames.length(), count = frames.count();
  const npy_intp bytes = length * kParts * static_cast<npy_intp>(sizeof(T));
  const npy_intp share = std::max<npy_intp>(kTileBytes / bytes, 1);
  T* const tile = static_cast<T*>(PyMem_RawMalloc(static_cast<std::size_t>(share * bytes)));
  if (tile == nullptr) return false;
  const Side inTile = {reinterpret_cast<char*>(tile), kParts * npy_intp{sizeof(T)}, bytes, length};
  const npy_intp* const strides = PyArray_STRIDES(frames.spectra);
  bool done = true;
  for (npy_intp s = 0; s < PyArray_DIM(frames.signals, 0); ++s) {
    char* const signal = PyArray_BYTES(frames.signals) + s * PyArray_STRIDE(frames.signals, 0);
    for (npy_intp from = 0; from < count && done; from += share) {
      const Side spectra = {PyArray_BYTES(frames.spectra) + s * strides[0] + from * strides[2],
                            strides[1], strides[2], PyArray_DIM(frames.spectra, 1)};
      done = serve(signal, tile, inTile, spectra, from, std::min(share, count - from));
    }
  }
  PyMem_RawFree(tile);
  return done;
}

template <class T, int kParts>
bool analyse(const Frames& frames) {
  const Transform& t = kTransforms[kParts == 1 ? kRfft : kFft];
  const Run run = sizeof(T) == sizeof(float) ? t.ofSingle : t.ofDouble;
  const T* const window = static_cast<const T*>(PyArray_DATA(frames.window));
  return overTiles<T, kParts>(frames, [&](char* signal, T* tile, const Side& inTile,
                                          const Side& spectra, npy_intp from, npy_intp count) {
    for (npy_intp f = 0; f < count; ++f) {
      T* const frame = tile + f * kParts * frames.length();
      overFrame(
          signal, PyArray_STRIDE(frames.signals, 1), inTile.stride, frames.samples(),
          frames.first + (from + f) * frames.hop, frames.length(),
          [=](npy_intp i, const char* at) {
            for (int p = 0; p < kParts; ++p) {
              frame[i * kParts + p] = window[i] * load<T>(at + p * sizeof(T));
            }
          },
          [=](npy_intp i) { std::fill_n(frame + i * kParts, kParts, T(0)); });
    }
    return run(inTile, spectra, frames.length(), count, Norm::Backward);
  });
}

template <class T, int kParts>
bool synthesise(const Frames& frames) {
  const Transform& t = kTransforms[kParts == 1 ? kIrfft : kIfft];
  const Run run = sizeof(T) == sizeof(float) ? t.ofSingle : t.ofDouble;
  const T* const window = static_cast<const T*>(PyArray_DATA(frames.window));
  return overTiles<T, kParts>(frames, [&](char* signal, const T* tile, const Side& inTile,
                                          const Side& spectra, npy_intp from, npy_intp count) {
    if (!run(spectra, inTile, frames.length(), count, Norm::Backward)) return false;
    for (npy_intp f = 0; f < count; ++f) {
      const T* const frame = tile + f * kParts * frames.length();
      overFrame(
          signal, PyArray_STRIDE(frames.signals, 1), inTile.stride, frames.samples(),
          frames.first + (from + f) * frames.hop, frames.length(),
          [=](npy_intp i, char* at) {
            for (int p = 0; p < kParts; ++p) {
              const T sum = load<T>(at + p * sizeof(T)) + window[i] * frame[i * kParts + p];
              std::memcpy(at + p * sizeof(T), &sum, sizeof sum);
            }
          },
          [](npy_intp) {});
    }
    return true;
  });
}

using Way = bool (*)(const Frames&);

// Ways for float, double, complex float and complex double.
PyObject* overFrames(PyObject* arguments, const Way (&ways)[4]) {
  Frames frames;
  if (!PyArg_ParseTuple(arguments, "O!O!O!nn", &PyArray_Type, &frames.signals, &PyArray_Type,
                        &frames.window, &PyArray_Type, &frames.spectra, &frames.hop,
                        &frames.first)) {
    return nullptr;
  }
  constexpr int kSignals[4] = {NPY_FLOAT, NPY_DOUBLE, NPY_CFLOAT, NPY_CDOUBLE};
  const int type = PyArray_TYPE(frames.signals);
  const auto way = static_cast<std::size_t>(std::find(kSignals, kSignals + 4, type) - kSignals);
  const bool isComplex = way >= 2;
  if (way == 4 || PyArray_NDIM(frames.signals) != 2 || PyArray_NDIM(frames.window) != 1 ||
      PyArray_NDIM(frames.spectra) != 3 || PyArray_TYPE(frames.window) != kSignals[way % 2] ||
      PyArray_TYPE(frames.spectra) != kSignals[way % 2 + 2] ||
      !PyArray_IS_C_CONTIGUOUS(frames.window) || frames.length() < 2 || frames.length() > 64 ||
      PyArray_DIM(frames.spectra, 0) != PyArray_DIM(frames.signals, 0) ||
      PyArray_DIM(frames.spectra, 1) != (isComplex ? frames.length() : frames.length() / 2 + 1)) {
    PyErr_SetString(PyExc_ValueError, "signals, window and spectra do not belong together");
    return nullptr;
  }
  bool done;
  Py_BEGIN_ALLOW_THREADS done = ways[way](frames);
  Py_END_ALLOW_THREADS if (!done) return PyErr_NoMemory();
  Py_RETURN_NONE;
}

PyObject* analyseFrames(PyObject*, PyObject* arguments) {
  return overFrames(arguments,
                    {analyse<float, 1>, analyse<double, 1>, analyse<float, 2>, analyse<double, 2>});
}

PyObject* synthesiseFrames(PyObject*, PyObject* arguments) {
  return overFrames(arguments, {synthesise<float, 1>, synthesise<double, 1>, synthesise<float, 2>,
                                synthesise<double, 2>});
}

}  // namespace

PyMethodDef kFrameMethods[] = {
    {"analyse_frames", analyseFrames, METH_VARARGS,
     "analyse_frames(signals, window, spectra, hop, first): writes spectra[s, bin, frame]."},
    {"synthesise_frames", synthesiseFrames, METH_VARARGS,
     "synthesise_frames(signals, window, spectra, hop, first): adds windowed frames to signals."},
    {}};

}  // namespace zvxg::python
