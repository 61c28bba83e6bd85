// Frames of signals: windowed and transformed, and the way back. Frames are read where they lie in
// the signal. A tile of them is multiplied by the window into the first-level cache, and one call
// of the library takes it to the spectrum, in which bin b of frame t stands at [b, t], or to a
// second tile, whose powers are added up.
#include <algorithm>
#include <bit>
#include <cstring>
#include <limits>

#include "numpy.h"
#include "transforms.h"

namespace zvxg::python {
namespace {

constexpr npy_intp kTileBytes = 16384;

// Signals by rows, and frame t begins at sample first + t * hop. What a frame has outside of the
// signal is zero. `spectra` has columns of frames, or of sums over so many frames.
struct Frames {
  PyArrayObject *signals, *window, *spectra;
  npy_intp hop, first, framesPerColumn = 1;

  npy_intp length() const { return PyArray_DIM(window, 0); }
  npy_intp samples() const { return PyArray_DIM(signals, 1); }
  npy_intp count() const { return PyArray_DIM(spectra, 2) * framesPerColumn; }
};

// What a frame has in the signal: elements [begin, end), the first of them at `data`.
struct Inside {
  npy_intp begin, end;
  char* data;
};

Inside inside(const Frames& frames, char* signal, npy_intp frame) {
  const npy_intp start = frames.first + frame * frames.hop;
  const npy_intp begin = std::clamp<npy_intp>(-start, 0, frames.length());
  const npy_intp end = std::clamp<npy_intp>(frames.samples() - start, begin, frames.length());
  return {begin, end, signal + (start + begin) * PyArray_STRIDE(frames.signals, 1)};
}

// Serves all frames tile by tile: `serve` is told the signal, the side of the tile, that of all of
// its spectra, the first frame of the tile and the count.
template <class T, int kParts, class Serve>
bool overTiles(const Frames& frames, const Serve& serve) {
  alignas(64) T tile[kTileBytes / sizeof(T)];
  const npy_intp size = kParts * npy_intp{sizeof(T)}, bytes = frames.length() * size;
  const Side inTile = {reinterpret_cast<char*>(tile), size, bytes, frames.length()};
  const npy_intp* const strides = PyArray_STRIDES(frames.spectra);
  const npy_intp count = frames.count(), share = kTileBytes / bytes;
  bool done = true;
  for (npy_intp s = 0; s < PyArray_DIM(frames.signals, 0); ++s) {
    char* const signal = PyArray_BYTES(frames.signals) + s * PyArray_STRIDE(frames.signals, 0);
    const Side spectra = {PyArray_BYTES(frames.spectra) + s * strides[0], strides[1], strides[2],
                          PyArray_DIM(frames.spectra, 1)};
    for (npy_intp from = 0; from < count && done; from += share) {
      done = serve(signal, tile, inTile, spectra, from, std::min(share, count - from));
    }
  }
  return done;
}

Side from(const Side& side, npy_intp first) {
  return {side.data + first * side.distance, side.stride, side.distance, side.elements};
}

template <class T, int kParts>
Run analysis() {
  const Transform& t = kTransforms[kParts == 1 ? kRfft : kFft];
  return sizeof(T) == sizeof(float) ? t.ofSingle : t.ofDouble;
}

// The window, each value as often as an element has parts.
template <class T, int kParts>
struct Window {
  explicit Window(const Frames& frames) {
    const T* const once = static_cast<const T*>(PyArray_DATA(frames.window));
    for (npy_intp i = 0; i < frames.length() * kParts; ++i) values[i] = once[i / kParts];
  }
  T values[64 * kParts];
};

// Fills a tile with windowed frames.
template <class T, int kParts>
void applyWindow(const Frames& frames, char* signal, T* tile, npy_intp first, npy_intp count) {
  constexpr std::size_t kSize = kParts * sizeof(T);
  const npy_intp length = frames.length(), stride = PyArray_STRIDE(frames.signals, 1);
  const Window<T, kParts> window(frames);
  for (npy_intp f = 0; f < count; ++f) {
    T* const frame = tile + f * kParts * length;
    const auto [begin, end, data] = inside(frames, signal, first + f);
    std::fill_n(frame, begin * kParts, T(0));
    if (stride == kSize) {
      std::memcpy(frame + begin * kParts, data, static_cast<std::size_t>(end - begin) * kSize);
    } else {
      for (npy_intp i = begin; i < end; ++i) {
        std::memcpy(frame + i * kParts, data + (i - begin) * stride, kSize);
      }
    }
    std::fill_n(frame + end * kParts, (length - end) * kParts, T(0));
    for (npy_intp i = begin * kParts; i < end * kParts; ++i) frame[i] *= window.values[i];
  }
}

template <class T, int kParts>
bool analyse(const Frames& frames) {
  return overTiles<T, kParts>(frames, [&](char* signal, T* tile, const Side& inTile,
                                          const Side& spectra, npy_intp first, npy_intp count) {
    applyWindow<T, kParts>(frames, signal, tile, first, count);
    return analysis<T, kParts>()(inTile, from(spectra, first), frames.length(), count,
                                 Norm::Backward);
  });
}

// The sum of |x|^2 over vectors by pairs: those at 0 and 1, at 2 and 3, then of two pairs, and so on.
// It goes like a binary counter, where row k has a sum of 2^k vectors if bit k is set. If the number
// of vectors is no power of two, the sums of its bits are added from the last. Sums of parts that are
// cut at multiples of powers of two can so be put together to the same bits.
class PairwiseSum {
 public:
  explicit PairwiseSum(npy_intp bins) : bins_(bins) {}

  template <class T>
  void add(const T* x) {
    const int carries = std::countr_one(count_++);
    double* to = rows_[carries < 2 ? carries : 0];
    for (npy_intp i = 0; i < bins_; ++i) {
      const double re = x[2 * i], im = x[2 * i + 1], power = re * re + im * im;
      to[i] = carries == 0 ? power : rows_[0][i] + power;
    }
    for (int k = 1; k < carries; ++k) {
      const double* const from = to;
      to = rows_[k + 1 < carries ? k : carries];
      for (npy_intp i = 0; i < bins_; ++i) to[i] = rows_[k][i] + from[i];
    }
  }

  // Writes the sum and begins another one.
  void take(char* to, npy_intp stride) {
    double* sum = nullptr;
    for (; count_ != 0; count_ &= count_ - 1) {
      double* const row = rows_[std::countr_zero(count_)];
      for (npy_intp i = 0; sum != nullptr && i < bins_; ++i) row[i] += sum[i];
      sum = row;
    }
    for (npy_intp i = 0; i < bins_; ++i) std::memcpy(to + i * stride, sum + i, sizeof *sum);
  }

 private:
  npy_intp bins_;
  std::size_t count_ = 0;
  double rows_[std::numeric_limits<npy_intp>::digits][64];
};

template <class T, int kParts>
bool sumPower(const Frames& frames) {
  const npy_intp bins = PyArray_DIM(frames.spectra, 1), size = 2 * npy_intp{sizeof(T)};
  alignas(64) T block[2 * kTileBytes / sizeof(T)];  // of 2 points, real frames have 2 bins
  const Side inBlock = {reinterpret_cast<char*>(block), size, size * bins, bins};
  PairwiseSum sum(bins);
  npy_intp added = 0;
  return overTiles<T, kParts>(frames, [&](char* signal, T* tile, const Side& inTile,
                                          const Side& columns, npy_intp first, npy_intp count) {
    applyWindow<T, kParts>(frames, signal, tile, first, count);
    if (!analysis<T, kParts>()(inTile, inBlock, frames.length(), count, Norm::Backward)) {
      return false;
    }
    for (npy_intp f = 0; f < count; ++f) {
      sum.add(block + 2 * bins * f);
      if (++added < frames.framesPerColumn) continue;
      added = 0;
      sum.take(columns.data + (first + f) / frames.framesPerColumn * columns.distance,
               columns.stride);
    }
    return true;
  });
}

// The signals are contiguous.
template <class T, int kParts>
bool synthesise(const Frames& frames) {
  const Transform& t = kTransforms[kParts == 1 ? kIrfft : kIfft];
  const Run run = sizeof(T) == sizeof(float) ? t.ofSingle : t.ofDouble;
  const Window<T, kParts> window(frames);
  return overTiles<T, kParts>(frames, [&](char* signal, const T* tile, const Side& inTile,
                                          const Side& spectra, npy_intp first, npy_intp count) {
    if (!run(from(spectra, first), inTile, frames.length(), count, Norm::Backward)) return false;
    for (npy_intp f = 0; f < count; ++f) {
      const T* const frame = tile + f * kParts * frames.length();
      const auto [begin, end, data] = inside(frames, signal, first + f);
      T* const sums = reinterpret_cast<T*>(data) - begin * kParts;
      for (npy_intp i = begin * kParts; i < end * kParts; ++i) {
        sums[i] += window.values[i] * frame[i];
      }
    }
    return true;
  });
}

using Way = bool (*)(const Frames&);

// Ways for float, double, complex float and complex double, to spectra or to sums of doubles.
PyObject* overFrames(PyObject* arguments, const Way (&ways)[4], bool toSums = false) {
  Frames frames;
  if (!PyArg_ParseTuple(arguments, toSums ? "O!O!O!nnn" : "O!O!O!nn", &PyArray_Type,
                        &frames.signals, &PyArray_Type, &frames.window, &PyArray_Type,
                        &frames.spectra, &frames.hop, &frames.first, &frames.framesPerColumn)) {
    return nullptr;
  }
  constexpr int kSignals[4] = {NPY_FLOAT, NPY_DOUBLE, NPY_CFLOAT, NPY_CDOUBLE};
  const int type = PyArray_TYPE(frames.signals);
  const auto way = static_cast<std::size_t>(std::find(kSignals, kSignals + 4, type) - kSignals);
  const bool isComplex = way >= 2;
  if (way == 4 || PyArray_NDIM(frames.signals) != 2 || PyArray_NDIM(frames.window) != 1 ||
      PyArray_NDIM(frames.spectra) != 3 || PyArray_TYPE(frames.window) != kSignals[way % 2] ||
      PyArray_TYPE(frames.spectra) != (toSums ? NPY_DOUBLE : kSignals[way % 2 + 2]) ||
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

PyObject* sumPower(PyObject*, PyObject* arguments) {
  return overFrames(
      arguments, {sumPower<float, 1>, sumPower<double, 1>, sumPower<float, 2>, sumPower<double, 2>},
      true);
}

PyObject* synthesiseFrames(PyObject*, PyObject* arguments) {
  return overFrames(arguments, {synthesise<float, 1>, synthesise<double, 1>, synthesise<float, 2>,
                                synthesise<double, 2>});
}

}  // namespace

PyMethodDef kFrameMethods[] = {
    {"analyse_frames", analyseFrames, METH_VARARGS,
     "analyse_frames(signals, window, spectra, hop, first): writes spectra[s, bin, frame]."},
    {"sum_power", sumPower, METH_VARARGS,
     "sum_power(signals, window, sums, hop, first, frames): writes sums[s, bin, column], each the "
     "pairwise sum over `frames` frames."},
    {"synthesise_frames", synthesiseFrames, METH_VARARGS,
     "synthesise_frames(signals, window, spectra, hop, first): adds windowed frames to signals."},
    {}};

}  // namespace zvxg::python
