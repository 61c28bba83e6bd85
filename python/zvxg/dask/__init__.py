"""The functions of zvxg on Dask arrays, in tasks that neither start threads nor move data about.

    >>> import dask.array as da, zvxg.dask
    >>> sound = da.random.random(2**28, chunks=2**24).astype("f4")
    >>> zvxg.dask.average_spectrum(sound, 64, 16).compute()

They take what their namesakes in zvxg take but for `out`, refuse at once what those refuse, and
give the same bits, however an array is chunked and wherever it is computed. They rechunk nothing. An
xarray.DataArray comes back as one, with coordinates of time and frequency; `axis` can then be the
name of a dimension. docs/dask.md is the manual.
"""

import dataclasses
import functools
import math
import operator
import sys

import dask.array as da
import dask.base
import numpy as np
from dask.highlevelgraph import HighLevelGraph

import zvxg

from .._frames import Frames, _signals, check_average, check_spectra

__all__ = ["average_spectrum", "dct4", "fft", "hartley", "ifft", "irfft", "istft", "register", "rfft",
           "spectrogram", "stft", "wht"]


# ---- Transforms along an axis -----------------------------------------------------------------------


def fft(x, n=None, axis=-1, norm=None):
    """zvxg.fft on a Dask array, whose axis has to be in one chunk."""
    return _transform(zvxg.fft, x, axis, n=n, norm=norm)


def ifft(x, n=None, axis=-1, norm=None):
    """zvxg.ifft on a Dask array, whose axis has to be in one chunk."""
    return _transform(zvxg.ifft, x, axis, n=n, norm=norm)


def rfft(x, n=None, axis=-1, norm=None, *, layout="ccs"):
    """zvxg.rfft on a Dask array, whose axis has to be in one chunk."""
    return _transform(zvxg.rfft, x, axis, n=n, norm=norm, layout=layout)


def irfft(x, n=None, axis=-1, norm=None, *, layout="ccs"):
    """zvxg.irfft on a Dask array, whose axis has to be in one chunk."""
    return _transform(zvxg.irfft, x, axis, n=n, norm=norm, layout=layout)


def hartley(x, n=None, axis=-1, norm=None):
    """zvxg.hartley on a Dask array, whose axis has to be in one chunk."""
    return _transform(zvxg.hartley, x, axis, n=n, norm=norm)


def wht(x, n=None, axis=-1, norm=None):
    """zvxg.wht on a Dask array, whose axis has to be in one chunk."""
    return _transform(zvxg.wht, x, axis, n=n, norm=norm)


def dct4(x, n=None, axis=-1, norm=None):
    """zvxg.dct4 on a Dask array, whose axis has to be in one chunk."""
    return _transform(zvxg.dct4, x, axis, n=n, norm=norm)


def _transform(function, x, axis, **keywords):
    if _is_labelled(x):
        from . import _xarray

        return _xarray.transform(function.__name__, x, axis, keywords)
    name = function.__name__
    x = da.asarray(x)
    axis = _axis(x, axis, name)
    if x.numblocks[axis] > 1:
        raise ValueError(f"{name}: axis {axis} is in {x.numblocks[axis]} chunks and a transform needs "
                         f"it in one: write x.rechunk({{{axis}: -1}}), which moves data, or choose "
                         "chunks along another axis where the array is made")
    # No signals of this length: what the function says of them holds for any number.
    none = function(np.empty((0, x.shape[axis]), x.dtype), **keywords)
    return da.apply_gufunc(function, "(n)->(m)", x, axes=[(axis,), (axis,)],
                           output_sizes={"m": none.shape[1]},
                           meta=np.empty((0,) * x.ndim, none.dtype), **keywords)


# ---- Frames of signals in chunks ----------------------------------------------------------------------


def stft(x, window, hop, *, axis=-1, pad=True, scaling="spectrum", fs=None):
    """zvxg.stft on a Dask array: (.., bins, frames), each frame in the chunk in which it begins.

    Chunks along the axis but for the last are multiples of `hop` and no shorter than the window. With
    `pad`, frames count as beginning at their centres. A last chunk that is shorter than the window
    is joined to the one before. `fs` is 1, or with xarray what the coordinate of time says.
    """
    if _is_labelled(x):
        from . import _xarray

        return _xarray.stft(x, window, hop, axis, pad, scaling, fs)
    x, frames = _prepare(x, window, hop, axis, scaling, fs, "stft")
    n = frames.window.size
    margin = n // 2 if pad else 0
    total = frames.count(x.shape[-1], pad)
    counts = [samples // hop for samples in x.chunks[-1][:-1]]
    return _overlapped(functools.partial(_spectra, frames=frames, pad=pad), x,
                       (margin, max(n - margin - hop, 0)),
                       ((frames.bins,), (*counts, total - sum(counts))), frames.complex_type)


def spectrogram(x, window, hop, *, axis=-1, fs=None, average=1):
    """zvxg.spectrogram on a Dask array: (.., bins, columns), each a mean over `average` frames.

    Chunks along the axis but for the last are multiples of `hop * average` and no shorter than the
    window. No task has more spectra in memory than fit a cache.
    """
    if _is_labelled(x):
        from . import _xarray

        return _xarray.spectrogram(x, window, hop, axis, fs, average)
    check_average(average)
    x, frames = _prepare(x, window, hop, axis, "psd", fs, "spectrogram", average)
    total = frames.count(x.shape[-1], False) // average
    counts = [samples // (hop * average) for samples in x.chunks[-1][:-1]]
    return _overlapped(functools.partial(_densities, frames=frames, average=average), x,
                       (0, frames.window.size - hop),
                       ((frames.bins,), (*counts, total - sum(counts))), frames.window.dtype)


def average_spectrum(x, window, hop, *, axis=-1, fs=None, split_every=None):
    """zvxg.average_spectrum on a Dask array: (.., bins).

    Chunks are those that stft() takes. Their sums of power are added by a tree of tasks, each with
    `split_every` of them (16; otherwise as in dask.array.sum). A chunk becomes sums in the task that
    makes it, if nothing else takes it, so that memory is bounded by the chunks being read.
    """
    if _is_labelled(x):
        from . import _xarray

        return _xarray.average_spectrum(x, window, hop, axis, fs, split_every)
    x, frames = _prepare(x, window, hop, axis, "psd", fs, "average_spectrum")
    total = frames.count(x.shape[-1], False)
    sums = _overlapped(functools.partial(_sums, frames=frames), x, (0, 0),
                       ((frames.bins,), (1,) * x.numblocks[-1]), np.dtype(object))
    return da.reduction(sums, _unchanged, functools.partial(_density, frames=frames, total=total),
                        combine=functools.partial(_joined, frames=frames), axis=x.ndim,
                        concatenate=False, split_every=split_every or 16, dtype=frames.window.dtype,
                        meta=np.empty((0,) * x.ndim, frames.window.dtype))


def istft(spectra, window, hop, *, length=None, pad=True, scaling="spectrum", fs=None, onesided=True):
    """zvxg.istft on a Dask array, the bins in one chunk: the chunks of stft() come back.

    Chunks of frames overlap by a window.
    """
    if _is_labelled(spectra):
        from . import _xarray

        return _xarray.istft(spectra, window, hop, length, pad, scaling, fs, onesided)
    spectra = da.asarray(spectra)
    frames = Frames.of(_type(spectra, "istft"), window, hop, scaling, 1.0 if fs is None else fs,
                       onesided)
    check_spectra(spectra, frames)
    if spectra.numblocks[-2] > 1:
        raise ValueError(f"istft: the bins are in {spectra.numblocks[-2]} chunks and have to be in "
                         "one: write spectra.rechunk({-2: -1})")
    n = frames.window.size
    margin = n // 2 if pad else 0
    # Frame t gives to the samples [t * hop - margin, t * hop - margin + n).
    before, after = (n - margin - 1) // hop, -(-margin // hop)
    spectra = _whole_chunks(spectra, 1, max(before, after) + 1, max(before, after) + 1, "istft",
                            "frames")
    counts = spectra.chunks[-1]
    samples = [count * hop for count in counts]
    samples[-1] += n - hop - 2 * margin
    dtype = frames.window.dtype if onesided else frames.complex_type
    x = _overlapped(functools.partial(_signal, frames=frames, pad=pad, before=before), spectra,
                    (before, after), (tuple(samples),), dtype)
    return x[..., :length]


def _prepare(x, window, hop, axis, scaling, fs, name, average=1):
    """The array with the axis at the end in chunks that will do, and the frames."""
    x = da.asarray(x)
    axis = _axis(x, axis, name)
    x = x if axis == x.ndim - 1 else da.moveaxis(x, axis, -1)
    frames = Frames.of(_type(x, name), window, hop, scaling, 1.0 if fs is None else fs)
    n = frames.window.size
    return _whole_chunks(x, hop * average, n, n + (average - 1) * hop, name, "samples"), frames


def _type(x, name):
    """The type in which an array is transformed."""
    return _signals(np.empty(0, x.dtype), name).dtype


def _axis(x, axis, name):
    axis = range(x.ndim)[axis] if -x.ndim <= axis < x.ndim else None
    if axis is None:
        raise getattr(np, "exceptions", np).AxisError(f"{name}: the array has {x.ndim} axes")
    if math.isnan(x.shape[axis]):
        raise ValueError(f"{name}: the length of axis {axis} is not known: write "
                         "x.compute_chunk_sizes()")
    return axis


def _whole_chunks(x, unit, least, last, name, what):
    """The array, with a last chunk of fewer than `last` joined to what is before it."""
    chunks = x.chunks[-1]
    while len(chunks) > 1 and chunks[-1] < last:
        chunks = (*chunks[:-2], chunks[-2] + chunks[-1])
    if chunks != x.chunks[-1]:
        x = x.rechunk({x.ndim - 1: chunks})
    wrong = [size for size in chunks[:-1] if size % unit or size < least]
    if wrong:
        size = unit * max(round(wrong[0] / unit), -(-least // unit))
        raise ValueError(f"{name}: chunks of {wrong[0]} {what} do not begin where frames begin, or are "
                         f"too short: all but the last are multiples of {unit} and at least {least}; "
                         f"make the array in chunks of {size}, or rechunk its axis to them")
    return x


# ---- Chunks that reach into their neighbours ----------------------------------------------------------
#
# One task for each chunk, and one for those of its ends that neighbours take. da.map_overlap() would
# have eight for each chunk: it cannot tell a block where it stands without tasks that do, and these
# keep the overlap and the function from being one.


@dataclasses.dataclass(frozen=True)
class _Chunk:
    begin: int  # in the whole signal
    size: int
    is_last: bool


def _overlapped(function, x, overlap, shape, dtype):
    """The array of function(parts, chunk): the parts are a chunk, and ends of those beside it.

    Of the new chunks, `shape` has those that differ: they take the place of as many axes at the end.
    """
    token = dask.base.tokenize(function, x, overlap)
    name, ends = (f"{what}-{token}" for what in (function.func.__name__.strip("_"), "ends"))
    begins = np.cumsum([0, *x.chunks[-1]]).tolist()
    count = x.numblocks[-1]
    tasks = {}

    def end_of(k, block, which):
        if overlap[which] == 0 or not 0 <= k < count:
            return []
        key = (ends, *block, k)
        tasks[key] = (_ends, (x.name, *block, k), overlap)
        return [(operator.getitem, key, which)]

    chunks = (*x.chunks[:-1], *shape) if len(shape) == 2 else (*x.chunks[:-2], *shape)
    for *block, k in np.ndindex(x.numblocks):
        parts = [*end_of(k - 1, block, 0), (x.name, *block, k), *end_of(k + 1, block, 1)]
        chunk = _Chunk(begins[k], begins[k + 1] - begins[k], k == count - 1)
        at = (*block, 0, k) if len(shape) == 2 else (*block[:-1], k)
        tasks[(name, *at)] = (function, parts, chunk)
    graph = HighLevelGraph.from_collections(name, tasks, dependencies=[x])
    return da.Array(graph, name, chunks, meta=np.empty((0,) * len(chunks), dtype))


def _ends(block, overlap):
    """What the next chunk takes, and what the one before takes. Copies, as a view would keep the block in
    memory."""
    before, after = overlap
    return block[..., block.shape[-1] - before :].copy(), block[..., :after].copy()


def _spectra(parts, chunk, frames, pad):
    """Frames in the chunk are read there, as a copy of it would be more memory beside the spectra; those
    that reach out of it, from pieces joined of its ends."""
    n, hop, margin = frames.window.size, frames.hop, frames.window.size // 2 if pad else 0
    is_first = not margin or chunk.begin == 0
    *before, x = parts[: 1 if is_first else 2]
    after = parts[len(before) + 1 :]
    x = _signals(x, "stft")
    count = frames.count(chunk.size, pad) if chunk.is_last else chunk.size // hop
    low = -(-margin // hop) if before else 0
    high = min(count, (chunk.size - n + margin) // hop + 1) if after else count
    spectra = frames.empty(x, count)
    frames.spectra(x, low * hop - margin, spectra[..., low:high])
    if before:
        head = np.concatenate((_signals(before[0], "stft"), x[..., :n]), -1)
        frames.spectra(head, 0, spectra[..., :low])
    if after:
        tail = np.concatenate((x[..., high * hop - margin :], _signals(after[0], "stft")), -1)
        frames.spectra(tail, 0, spectra[..., high:])
    return spectra


def _densities(parts, chunk, frames, average):
    """Columns in the chunk, and those that reach into the next one from a piece joined of both: joining
    whole chunks would take half as long as the transforms."""
    x = _signals(parts[0], "spectrogram")
    inside = frames.count(x.shape[-1], False) // average
    sums = [frames.power(x, 0, inside, average)]
    if len(parts) > 1:
        x = np.concatenate((x[..., inside * average * frames.hop :],
                            _signals(parts[1], "spectrogram")), -1)
        sums.append(frames.power(x, 0, frames.count(x.shape[-1], False) // average, average))
    return frames.density(np.concatenate(sums, -1), average)


def _signal(parts, chunk, frames, pad, before):
    n, hop, margin = frames.window.size, frames.hop, frames.window.size // 2 if pad else 0
    samples = n + (chunk.size - 1) * hop - 2 * margin if chunk.is_last else chunk.size * hop
    spectra = parts[0] if len(parts) == 1 else np.concatenate(parts, -1)
    spectra = _signals(spectra, "istft").astype(frames.complex_type, copy=False)
    return frames.signals(spectra, margin + (before * hop if chunk.begin else 0), samples)


# ---- Sums of power ------------------------------------------------------------------------------------
#
# Frames are added by pairs that are aligned in the whole signal, as PairwiseSum in src/frames.cpp adds
# them. A chunk gives the sums of the longest aligned runs of 2^k frames in it, and neighbours join
# runs to longer ones. So the bits do not depend on chunks. Frames that reach from a chunk into the next
# one are added when the two are joined: until then no chunk needs another.


@dataclasses.dataclass(frozen=True, eq=False)
class _Sums:
    runs: list  # (first frame, frames, sums of power)
    head: np.ndarray  # samples that frames of the chunk before reach
    tail: np.ndarray  # those from the first frame on that reaches out of the chunk


def _sums(parts, chunk, frames):
    x = _signals(parts[0], "average_spectrum")
    count = frames.count(x.shape[-1], False)
    return _Sums(_runs(x, chunk.begin // frames.hop, count, frames),
                 x[..., : frames.window.size - frames.hop].copy(), x[..., count * frames.hop :].copy())


def _runs(x, begin, count, frames):
    """Of so many frames in `x`, the first of which is the frame `begin` of the whole signal."""
    runs, origin, end = [], begin, begin + count
    while begin < end:
        size = 1 << (end - begin).bit_length() - 1
        size = min(size, begin & -begin) if begin else size
        some = x[..., (begin - origin) * frames.hop :]
        runs.append((begin, size, frames.power(some, 0, 1, size)))
        begin += size
    return runs


def _unchanged(block, axis, keepdims):
    return block


def _joined(blocks, axis, keepdims, frames):
    whole = None
    for block in _flat(blocks):
        runs = block.runs
        if whole is not None:
            begin, size, _ = whole.runs[-1]
            border = np.concatenate((whole.tail, block.head), -1)
            border = _runs(border, begin + size, whole.tail.shape[-1] // frames.hop, frames)
            runs = _longer(whole.runs + border + runs)
        whole = _Sums(runs, (whole or block).head, block.tail)
    return whole


def _longer(runs):
    """Neighbours joined to aligned runs."""
    joined = []
    for begin, size, sums in runs:
        while joined and joined[-1][1] == size and joined[-1][0] % (2 * size) == 0:
            begin, _, before = joined.pop()
            sums = before + sums
            size *= 2
        joined.append((begin, size, sums))
    return joined


def _density(blocks, axis, keepdims, frames, total):
    sums = [run[2] for run in _joined(blocks, axis, keepdims, frames).runs]
    return frames.density(functools.reduce(np.add, reversed(sums)), total)[..., 0]


def _flat(blocks):
    if isinstance(blocks, list):
        for block in blocks:
            yield from _flat(block)
    else:
        yield blocks


# ---- Workers ------------------------------------------------------------------------------------------


def register(client):
    """Makes zvxg.scipy the global backend of scipy.fft in every worker, also of those to come.

    So tasks that call scipy.fft or scipy.signal gain without a change. For workers that other
    programs start, there is `dask worker --preload zvxg.dask.preload`.
    """
    from .preload import Backend

    (getattr(client, "register_plugin", None) or client.register_worker_plugin)(Backend())


def _is_labelled(x):
    xarray = sys.modules.get("xarray")
    return xarray is not None and isinstance(x, xarray.DataArray)
