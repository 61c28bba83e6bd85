"""Frames of signals: short-time spectra, and the MDCT.

Frames of the short-time transforms are read where they lie in the signal, windowed and transformed
by tiles, in src/frames.cpp. The MDCT follows docs/mdct.md.
"""

import numpy as np

from ._core import analyse_frames, dct4, synthesise_frames

_REAL = {"f": "f", "d": "d", "F": "f", "D": "d"}
_COMPLEX = {"f": "F", "d": "D"}


def _signals(x, function):
    """The array in a type that is transformed."""
    x = np.asanyarray(x)
    if x.dtype.kind in "biu":
        return x.astype(np.float64)
    if x.dtype.char not in _REAL:
        raise TypeError(f"{function}: arrays of {x.dtype} are not transformed; convert to float32, "
                        "float64, complex64 or complex128")
    return x.astype(x.dtype.newbyteorder("="), copy=False)


def _window(window, dtype):
    """The values of a window; a number stands for the periodic Hann window of this length."""
    if np.ndim(window) == 0:
        n = np.arange(window)
        window = 0.5 - 0.5 * np.cos(2 * np.pi * n / window)
    window = np.ascontiguousarray(window, dtype)
    if window.ndim != 1 or not 2 <= window.size <= 64:
        raise ValueError(f"the window has the shape {window.shape}; it takes 2 to 64 values")
    return window


def _check_hop(hop, window):
    if not 1 <= hop <= window.size:
        raise ValueError(f"hop is {hop}; with this window it is at least 1 and at most {window.size}")


def _scale(window, scaling, fs):
    """What spectra are multiplied by."""
    if scaling is None:
        return 1.0
    if scaling == "spectrum":
        total = window.sum(dtype=float)
        if total == 0:
            raise ValueError("the values of the window add up to 0: scale by 'psd' or None")
        return 1 / total
    if scaling == "psd":
        return 1 / np.sqrt(fs * np.square(window, dtype=float).sum())
    raise ValueError(f"scaling is one of 'spectrum', 'psd' and None, not {scaling!r}")


def stft(x, window, hop, *, axis=-1, pad=True, scaling="spectrum", fs=1.0):
    """Short-time Fourier transform: spectra of windowed frames that begin `hop` samples apart.

    window: its 2 to 64 values, or a number for the periodic Hann window of this length.
    pad: frames are centred at the samples 0, hop, 2 * hop .., with zeros around the signal; without,
        frame t begins at t * hop, and all of them lie in the signal.
    scaling: 'spectrum' divides by the sum of the window, 'psd' by the root of its power times `fs`.

    The axis becomes two, at the end: (.., bins, frames). Real signals have len(window) // 2 + 1
    bins, complex ones len(window). scipy.signal.stft gives the same numbers.
    """
    x = np.moveaxis(_signals(x, "stft"), axis, -1)
    real = _REAL[x.dtype.char]
    window = _window(window, real)
    _check_hop(hop, window)
    n, samples = window.size, x.shape[-1]
    margin = n // 2 if pad else 0
    reach = samples + 2 * margin - n
    if reach < 0:
        raise ValueError(f"{samples} samples are shorter than the window of {n}")
    frames = 1 + (-(-reach // hop) if pad else reach // hop)
    bins = n if x.dtype.kind == "c" else n // 2 + 1
    spectra = np.empty(x.shape[:-1] + (bins, frames), _COMPLEX[real])
    analyse_frames(x.reshape(-1, samples), (window * _scale(window, scaling, fs)).astype(real),
                   spectra.reshape(-1, bins, frames), hop, -margin)
    return spectra


def istft(spectra, window, hop, *, length=None, pad=True, scaling="spectrum", fs=1.0, onesided=True):
    """Signals whose spectra stft() gave, with the same arguments.

    The last two axes, (bins, frames), become one of samples. Where spectra were changed, the result
    is that with the nearest spectra in the sense of least squares. `length` cuts off what stft()
    added at the end. Spectra of complex signals need onesided=False.
    """
    spectra = _signals(spectra, "istft")
    real = _REAL[spectra.dtype.char]
    spectra = spectra.astype(_COMPLEX[real], copy=False)
    window = _window(window, real)
    _check_hop(hop, window)
    n = window.size
    if spectra.ndim < 2:
        raise ValueError("istft: the last two axes are bins and frames, and there is only one")
    bins, frames = spectra.shape[-2:]
    if bins != (n // 2 + 1 if onesided else n):
        raise ValueError(f"istft: {bins} bins do not belong to a window of {n}"
                         + ("; onesided=False is for complex signals" if bins == n else ""))
    power = np.square(window, dtype=float)
    overlapped = np.array([power[i::hop].sum() for i in range(hop)])
    if overlapped.min() <= 1e-10 * overlapped.max():
        raise ValueError(f"istft: no frame sees the samples at {overlapped.argmin()} modulo {hop}, "
                         "where overlapped windows are 0: the hop is too wide for this window")

    x = np.zeros(spectra.shape[:-2] + (n + (frames - 1) * hop,), real if onesided else spectra.dtype)
    synthesise_frames(x.reshape(-1, x.shape[-1]),
                      (window / _scale(window, scaling, fs)).astype(real),
                      spectra.reshape(-1, bins, frames), hop, 0)
    weight = np.zeros(x.shape[-1])
    for i in range(n):
        weight[i : i + (frames - 1) * hop + 1 : hop] += power[i]
    x /= np.where(weight > 1e-10 * weight.max(), weight, 1).astype(real)
    if pad:
        x = x[..., n // 2 : x.shape[-1] - n // 2]
    return x if length is None else x[..., :length]


def spectrogram(x, window, hop, *, axis=-1, fs=1.0):
    """The power density of stft(.., pad=False): (.., bins, frames) of real numbers.

    For real signals, what belongs to negative frequencies is added to the positive ones.
    scipy.signal.spectrogram(.., detrend=False) gives the same numbers.
    """
    spectra = stft(x, window, hop, axis=axis, pad=False, scaling="psd", fs=fs)
    power = spectra.real**2
    power += spectra.imag**2
    if not np.iscomplexobj(x):
        n = np.size(window) if np.ndim(window) else window
        power[..., 1 : (n + 1) // 2, :] *= 2
    return power


def _halves(window, dtype):
    """The first half of the rising window, and its second half backwards."""
    window = np.asarray(window, dtype)
    n = window.size
    if window.ndim != 1 or n < 2 or n & (n - 1):
        raise ValueError(f"the window has the shape {window.shape}; its rising half takes a power of "
                         "two of values")
    squares = np.square(window, dtype=float)
    if not np.allclose(squares + squares[::-1], 1, rtol=0, atol=16 * np.finfo(dtype).eps):
        raise ValueError("the squares of values of the window and of their mirrors do not add up to 1")
    return window[: n // 2], window[: n // 2 - 1 : -1]


def _reals(x, function):
    x = _signals(x, function)
    if x.dtype.kind == "c":
        raise TypeError(f"{function}: the source has to be real, and its type is {x.dtype}")
    return x


def mdct(x, window, *, axis=-1):
    """Modified discrete cosine transform of signals, by blocks of len(window) samples.

    window: the rising half of a window, a power of two of values; the squares of each and its mirror
    add up to 1. Zeros complete the last block. The axis becomes two, at the end: (.., frames, N),
    with one frame more than blocks. The transform is orthogonal.
    """
    x = np.moveaxis(_reals(x, "mdct"), axis, -1)
    rising, falling = _halves(window, x.dtype)
    half = rising.size
    n = 2 * half
    blocks = -(-x.shape[-1] // n)
    if blocks * n != x.shape[-1]:
        x = np.concatenate([x, np.zeros(x.shape[:-1] + (blocks * n - x.shape[-1],), x.dtype)], -1)
    x = x.reshape(x.shape[:-1] + (blocks, n))
    head, tail = x[..., :half], x[..., : half - 1 : -1]
    frames = np.zeros(x.shape[:-2] + (blocks + 1, n), x.dtype)
    frames[..., :-1, half - 1 :: -1] = -(falling * head + rising * tail)
    frames[..., 1:, half:] = rising * head - falling * tail
    return dct4(frames, norm="ortho", out=frames)


def imdct(frames, window):
    """Signals whose frames mdct() gave with the same window; the last two axes become one."""
    frames = _reals(frames, "imdct")
    rising, falling = _halves(window, frames.dtype)
    half = rising.size
    if frames.ndim < 2 or frames.shape[-1] != 2 * half or frames.shape[-2] < 2:
        raise ValueError(f"imdct: the frames have the shape {frames.shape}; the last two axes are "
                         f"frames, two at least, and {2 * half} coefficients")
    folded = dct4(frames, norm="ortho")
    p, q = -folded[..., :-1, half - 1 :: -1], folded[..., 1:, half:]
    x = np.empty(p.shape[:-1] + (2 * half,), frames.dtype)
    x[..., :half] = falling * p + rising * q
    x[..., : half - 1 : -1] = rising * p - falling * q
    return x.reshape(x.shape[:-2] + (-1,))
