"""zvxg as a backend of scipy.fft.

    import scipy.fft, zvxg.scipy
    scipy.fft.set_global_backend(zvxg.scipy)

Ours are fft, ifft, rfft, irfft and their forms in two and more dimensions where every length is 2
to 64, and dct, idct, dctn and idctn of type 4 where every length is a power of two. All other calls
run as without this backend, with SciPy's results and SciPy's exceptions.

set_backend() holds for one thread. set_global_backend() and register_backend() hold for all of them.
"""

import copy
import threading

import numpy as np
import scipy.fft

from . import _core

__ua_domain__ = "numpy.scipy.fft"


class _Contexts(threading.local):
    """What set_backend() and skip_backend() keep with a backend, for each thread by itself.

    A context belongs to the thread that made it: entered by another, it would set the backend of the
    first (SciPy 1.10 keeps one context for all threads).
    """

    def __init__(self):
        self.kept = {}

    def __getitem__(self, key):
        return self.kept[key]

    def __setitem__(self, key, context):
        self.kept[key] = context


__ua_cache__ = _Contexts()

# What a function of _FUNCTIONS raises before it has done anything, and so do those of _core: for
# lengths and types that are not ours, and for arguments that are wrong. SciPy then serves the call,
# or says what is wrong.
_NOT_OURS = (TypeError, ValueError, IndexError)


def __ua_function__(method, arguments, keywords):
    function = _FUNCTIONS.get(method.__name__)
    if function is not None:
        try:
            return function(*arguments, **keywords)
        except _NOT_OURS:
            pass
    # A global backend takes SciPy's place, so that NotImplemented would be the end of the call.
    try:
        context = __ua_cache__["scipy"]
    except KeyError:
        context = __ua_cache__["scipy"] = copy.copy(scipy.fft.set_backend("scipy"))
    with context:
        return method(*arguments, **keywords)


def _check(workers, plan=None):
    if plan is not None or not (workers is None or workers > 0):
        raise ValueError


def _transform(core):
    def transform(x, n=None, axis=-1, norm=None, overwrite_x=False, workers=None, *, plan=None):
        if workers is not None or plan is not None:
            _check(workers, plan)
        return core(x if type(x) is np.ndarray else np.asarray(x), n, axis, norm)

    return transform


def _several(x, s, axes, bins=False):
    """The array, and pairs of an axis and the length along it; with `bins`, the last axis has bins."""
    x = np.asarray(x)
    if x.dtype.char not in "fdFD" and x.dtype.kind not in "biu":
        raise TypeError
    if axes is None:
        axes = range(-(x.ndim if s is None else len(s)), 0)
    axes = [axes] if np.ndim(axes) == 0 else list(axes)
    if not axes or len({range(x.ndim)[axis] for axis in axes}) != len(axes):
        raise ValueError
    if s is None:
        s = [x.shape[axis] for axis in axes]
        if bins:
            s[-1] = 2 * (s[-1] - 1)
    s = [s] if np.ndim(s) == 0 else list(s)
    if len(s) != len(axes):
        raise ValueError
    return x, list(zip(axes, s))


def _check_short(steps):
    if not all(2 <= n <= 64 for _, n in steps):
        raise ValueError


def _along(core, x, steps, norm):
    for axis, n in steps:
        x = core(x, n, axis, norm)
    return x


def _complex_several(core, default):
    def transform(x, s=None, axes=default, norm=None, overwrite_x=False, workers=None, *, plan=None):
        _check(workers, plan)
        x, steps = _several(x, s, axes)
        _check_short(steps)
        return _along(core, x, reversed(steps), norm)

    return transform


def _rfft_several(default):
    def transform(x, s=None, axes=default, norm=None, overwrite_x=False, workers=None, *, plan=None):
        _check(workers, plan)
        x, steps = _several(x, s, axes)
        _check_short(steps)
        return _along(_core.fft, _along(_core.rfft, x, steps[-1:], norm), steps[:-1], norm)

    return transform


def _irfft_several(default):
    def transform(x, s=None, axes=default, norm=None, overwrite_x=False, workers=None, *, plan=None):
        _check(workers, plan)
        x, steps = _several(x, s, axes, bins=True)
        _check_short(steps)
        return _along(_core.irfft, _along(_core.ifft, x, steps[:-1], norm), steps[-1:], norm)

    return transform


_INVERSE = {None: "forward", "backward": "forward", "ortho": "ortho", "forward": "backward"}
_FORWARD = {norm: norm for norm in _INVERSE}


# The last argument of SciPy's has no meaning for type 4.
def _cosine(norms):
    def transform(x, type=2, n=None, axis=-1, norm=None, overwrite_x=False, workers=None,
                  orthogonalize=None):
        if type != 4 or norm not in norms:
            raise ValueError
        _check(workers)
        return _core.dct4(np.asarray(x), n, axis, norms[norm])

    return transform


def _cosine_several(norms):
    def transform(x, type=2, s=None, axes=None, norm=None, overwrite_x=False, workers=None,
                  *, orthogonalize=None):
        if type != 4 or norm not in norms:
            raise ValueError
        _check(workers)
        x, steps = _several(x, s, axes)
        if any(n < 2 or n > 2**25 or n & (n - 1) for _, n in steps):
            raise ValueError
        return _along(_core.dct4, x, steps, norms[norm])

    return transform


_FUNCTIONS = {
    "fft": _transform(_core.fft),
    "ifft": _transform(_core.ifft),
    "rfft": _transform(_core.rfft),
    "irfft": _transform(_core.irfft),
    "fft2": _complex_several(_core.fft, (-2, -1)),
    "fftn": _complex_several(_core.fft, None),
    "ifft2": _complex_several(_core.ifft, (-2, -1)),
    "ifftn": _complex_several(_core.ifft, None),
    "rfft2": _rfft_several((-2, -1)),
    "rfftn": _rfft_several(None),
    "irfft2": _irfft_several((-2, -1)),
    "irfftn": _irfft_several(None),
    "dct": _cosine(_FORWARD),
    "idct": _cosine(_INVERSE),
    "dctn": _cosine_several(_FORWARD),
    "idctn": _cosine_several(_INVERSE),
}
