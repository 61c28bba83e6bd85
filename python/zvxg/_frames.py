"""Frames of signals: short-time spectra, and the MDCT.

Frames of the short-time transforms are read where they lie in the signal, windowed and transformed
by tiles, in src/frames.cpp. The MDCT follows docs/mdct.md.

What zvxg.dask does with parts of signals is here too: Frames.
"""

import dataclasses

import numpy as np

from ._core import analyse_frames, dct4, sum_power, synthesise_frames

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


def _values(window, dtype):
    """The values of a window; a number stands for the periodic Hann window of this length."""
    if np.ndim(window) == 0:
        n = np.arange(window)
        window = 0.5 - 0.5 * np.cos(2 * np.pi * n / window)
    window = np.ascontiguousarray(window, dtype)
    if window.ndim != 1 or not 2 <= window.size <= 64:
        raise ValueError(f"the window has the shape {window.shape}; it takes 2 to 64 values")
    return window


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


@dataclasses.dataclass(frozen=True, eq=False)
class Frames:
    """How signals of a type are cut into frames, and what their spectra are multiplied by."""

    window: np.ndarray
    hop: int
    scale: float
    onesided: bool

    @classmethod
    def of(cls, dtype, window, hop, scaling, fs, onesided=None):
        dtype = np.dtype(dtype)
        window = _values(window, _REAL[dtype.char])
        if not 1 <= hop <= window.size:
            raise ValueError(f"hop is {hop}; with this window it is at least 1 and at most "
                             f"{window.size}")
        return cls(window, hop, _scale(window, scaling, fs),
                   dtype.kind != "c" if onesided is None else onesided)

    @property
    def bins(self):
        return self.window.size // 2 + 1 if self.onesided else self.window.size

    @property
    def complex_type(self):
        return np.dtype(_COMPLEX[self.window.dtype.char])

    def count(self, samples, pad):
        """The frames of a signal; with `pad`, they are centred and cover all of it."""
        reach = samples - self.window.size
        if pad:
            reach += self.window.size // 2 * 2
        if reach < 0:
            raise ValueError(f"{samples} samples are shorter than the window of {self.window.size}")
        return 1 + (-(-reach // self.hop) if pad else reach // self.hop)

    def empty(self, x, count):
        """Space for the spectra of so many frames."""
        return np.empty(x.shape[:-1] + (self.bins, count), self.complex_type)

    def spectra(self, x, first, out):
        """Fills (.., bins, frames) of frames that begin at the samples first, first + hop .. of the
        last axis, with zeros around it."""
        window = (self.window * self.scale).astype(x.real.dtype)
        for index in np.ndindex(x.shape[:-2]):  # no reshape, which might copy
            signals, spectra = (x[index], out[index]) if x.ndim > 1 else (x[None], out[None])
            analyse_frames(signals, window, spectra, self.hop, first)
        return out

    def power(self, x, first, count, average):
        """(.., bins, columns), the sums of power over `average` frames each, by pairs."""
        sums = np.empty(x.shape[:-1] + (self.bins, count))
        rows = x.reshape(-1, x.shape[-1])
        sum_power(rows, (self.window * self.scale).astype(x.real.dtype),
                  sums.reshape(len(rows), self.bins, count), self.hop, first, average)
        return sums

    def density(self, sums, frames):
        """What sums of power over so many frames say of both signs of the frequency, if the signal
        is real, in its precision."""
        sums = sums / frames
        if self.onesided:
            sums[..., 1 : (self.window.size + 1) // 2, :] *= 2
        return sums.astype(self.window.dtype)

    def overlapped(self):
        """The sum of the squared windows over each sample modulo the hop, away from the ends."""
        power = np.square(self.window, dtype=float)
        return np.array([power[i :: self.hop].sum() for i in range(self.hop)])

    def signals(self, spectra, first, samples):
        """(.., samples) from the sample `first` of the first frame on, in the sense of least squares."""
        bins, count = spectra.shape[-2:]
        x = np.zeros(spectra.shape[:-2] + (samples,),
                     self.window.dtype if self.onesided else spectra.dtype)
        synthesise_frames(x.reshape(-1, samples),
                          (self.window / self.scale).astype(self.window.dtype),
                          spectra.reshape(-1, bins, count), self.hop, -first)
        weight = np.zeros(self.window.size + (count - 1) * self.hop)
        for i, value in enumerate(np.square(self.window, dtype=float)):
            weight[i : i + (count - 1) * self.hop + 1 : self.hop] += value
        weight = weight[first : first + samples]
        x /= np.where(weight > 1e-10 * self.overlapped().max(), weight, 1).astype(self.window.dtype)
        return x


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
    frames = Frames.of(x.dtype, window, hop, scaling, fs)
    count = frames.count(x.shape[-1], pad)
    return frames.spectra(x, -(frames.window.size // 2) if pad else 0, frames.empty(x, count))


def istft(spectra, window, hop, *, length=None, pad=True, scaling="spectrum", fs=1.0, onesided=True):
    """Signals whose spectra stft() gave, with the same arguments.

    The last two axes, (bins, frames), become one of samples. Where spectra were changed, the result
    is that with the nearest spectra in the sense of least squares. `length` cuts off what stft()
    added at the end. Spectra of complex signals need onesided=False.
    """
    spectra = _signals(spectra, "istft")
    frames = Frames.of(spectra.dtype, window, hop, scaling, fs, onesided)
    check_spectra(spectra, frames)
    spectra = spectra.astype(frames.complex_type, copy=False)
    margin = frames.window.size // 2 if pad else 0
    samples = frames.window.size + (spectra.shape[-1] - 1) * hop - 2 * margin
    return frames.signals(spectra, margin, samples)[..., :length]


def check_spectra(spectra, frames):
    """Refuses what istft() cannot turn into signals."""
    if spectra.ndim < 2:
        raise ValueError("istft: the last two axes are bins and frames, and there is only one")
    bins, n = spectra.shape[-2], frames.window.size
    if bins != frames.bins:
        raise ValueError(f"istft: {bins} bins do not belong to a window of {n}"
                         + ("; onesided=False is for complex signals" if bins == n else ""))
    overlapped = frames.overlapped()
    if overlapped.min() <= 1e-10 * overlapped.max():
        raise ValueError(f"istft: no frame sees the samples at {overlapped.argmin()} modulo "
                         f"{frames.hop}, where overlapped windows are 0: the hop is too wide for "
                         "this window")


def spectrogram(x, window, hop, *, axis=-1, fs=1.0, average=1):
    """The power density of the frames that lie in the signal: (.., bins, columns) of real numbers.

    Each column is the mean over `average` frames in turn; frames at the end that do not fill one are
    left out. For real signals, what belongs to negative frequencies is added to the positive ones.
    scipy.signal.spectrogram(.., detrend=False) gives the same numbers for an average of 1.
    """
    x = np.moveaxis(_signals(x, "spectrogram"), axis, -1)
    frames = Frames.of(x.dtype, window, hop, "psd", fs)
    check_average(average)
    columns = frames.count(x.shape[-1], False) // average
    return frames.density(frames.power(x, 0, columns, average), average)


def check_average(average):
    if average < 1:
        raise ValueError(f"average is {average}; it is the number of frames of a column, at least 1")


def average_spectrum(x, window, hop, *, axis=-1, fs=1.0):
    """The mean power density of the frames that lie in the signal: (.., bins), by Welch's method.

    scipy.signal.welch(.., detrend=False) gives the same numbers.
    """
    x = np.moveaxis(_signals(x, "average_spectrum"), axis, -1)
    frames = Frames.of(x.dtype, window, hop, "psd", fs)
    count = frames.count(x.shape[-1], False)
    return frames.density(frames.power(x, 0, 1, count), count)[..., 0]


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
