"""DataArrays of xarray in and out: dimensions by name, coordinates of time and frequency.

A time is that of the middle of a frame. It is in the unit of the coordinate that the signal has,
which is evenly spaced; a coordinate of datetime64 counts in seconds. Coordinates and attributes that
do not belong to the transformed dimension stay.
"""

import numpy as np
import xarray

from .. import dask

# The coordinate of what a transform gives, by the number of its elements and their distance before.
_FREQUENCIES = {
    "fft": np.fft.fftfreq,
    "hartley": np.fft.fftfreq,
    "dct4": lambda n, step: (np.arange(n) + 0.5) / (2 * n * step),
}


def _dimension(x, axis):
    return axis if isinstance(axis, str) else x.dims[axis]


def _steps(x, dimension):
    """Where the coordinate of a dimension begins, and the distance of its values in seconds, or in
    its own unit."""
    if dimension not in x.coords or x.sizes[dimension] < 2:
        return None, None
    values = x.coords[dimension].values
    step = (values[-1] - values[0]) / (len(values) - 1)
    return values[0], step / np.timedelta64(1, "s") if values.dtype.kind == "M" else float(step)


def _after(begin, offsets):
    """The instants so many seconds or units after the first one."""
    if isinstance(begin, np.datetime64):
        return begin + np.round(offsets * 1e9).astype("timedelta64[ns]")
    return begin + offsets


def _labelled(x, result, dropped, dimensions, coordinates):
    """`result` in dimensions that take the place of dropped ones at the end."""
    kept = {name: value for name, value in x.coords.items() if not set(dropped) & set(value.dims)}
    dims = [name for name in x.dims if name not in dropped] + dimensions
    return xarray.DataArray(result, {**kept, **coordinates}, dims, x.name, x.attrs)


def transform(name, x, axis, keywords):
    dimension = _dimension(x, axis)
    result = getattr(dask, name)(x.data, axis=x.get_axis_num(dimension), **keywords)
    _, step = _steps(x, dimension)
    n = result.shape[x.get_axis_num(dimension)]
    renamed, coordinate = dimension, None
    if name == "rfft" and keywords["layout"] == "ccs":
        n = keywords["n"] or x.sizes[dimension]
        renamed, coordinate = "frequency", np.fft.rfftfreq(n, step or 1.0)
    elif name in _FREQUENCIES:
        renamed, coordinate = "frequency", _FREQUENCIES[name](n, step or 1.0)
    elif name in ("ifft", "irfft"):
        # The distance of the first two frequencies: those of fft() go on with negative ones.
        values = x.coords[dimension].values[:2] if dimension in x.coords else (0.0, 1 / n)
        renamed, coordinate = "time", np.arange(n) / (n * (values[1] - values[0]))
    dims = [renamed if d == dimension else d for d in x.dims]
    coords = {k: v for k, v in x.coords.items() if dimension not in v.dims}
    if coordinate is not None:
        coords[renamed] = coordinate
    return xarray.DataArray(result, coords, dims, x.name, x.attrs)


def _framed(function, x, window, hop, axis, fs, middle, keywords):
    """A function that makes frames of a dimension; `middle(column)` is the middle in samples."""
    dimension = _dimension(x, axis)
    begin, step = _steps(x, dimension)
    fs = fs or 1 / (step or 1.0)
    result = function(x.data, window, hop, axis=x.get_axis_num(dimension), fs=fs, **keywords)
    n = np.size(window) if np.ndim(window) else int(window)
    frequencies = np.fft.fftfreq(n, 1 / fs) if x.dtype.kind == "c" else np.fft.rfftfreq(n, 1 / fs)
    dims, coordinates = ["frequency"], {"frequency": frequencies}
    if middle is not None:
        dims.append(dimension)
        times = middle(np.arange(result.shape[-1]), n) / fs
        coordinates[dimension] = _after(0.0 if begin is None else begin, times)
    return _labelled(x, result, [dimension], dims, coordinates)


def stft(x, window, hop, axis, pad, scaling, fs):
    return _framed(dask.stft, x, window, hop, axis, fs,
                   lambda frame, n: frame * hop + (0 if pad else n / 2),
                   {"pad": pad, "scaling": scaling})


def spectrogram(x, window, hop, axis, fs, average):
    return _framed(dask.spectrogram, x, window, hop, axis, fs,
                   lambda column, n: (column * average + (average - 1) / 2) * hop + n / 2,
                   {"average": average})


def average_spectrum(x, window, hop, axis, fs, split_every):
    return _framed(dask.average_spectrum, x, window, hop, axis, fs, None,
                   {"split_every": split_every})


def istft(spectra, window, hop, length, pad, scaling, fs, onesided):
    bins, dimension = spectra.dims[-2:]
    begin, step = _steps(spectra, dimension)
    fs = fs or (hop / step if step else 1.0)
    result = dask.istft(spectra.data, window, hop, length=length, pad=pad, scaling=scaling, fs=fs,
                        onesided=onesided)
    coordinates = {}
    if begin is not None:
        n = np.size(window) if np.ndim(window) else int(window)
        samples = np.arange(result.shape[-1]) - (0 if pad else n / 2)
        coordinates[dimension] = _after(begin, samples / fs)
    return _labelled(spectra, result, [bins, dimension], [dimension], coordinates)
