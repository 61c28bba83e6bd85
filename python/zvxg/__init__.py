"""Short signal transforms on NumPy arrays.

    >>> import numpy as np, zvxg
    >>> zvxg.rfft(np.ones((1000, 64), np.float32)).shape
    (1000, 33)

fft, ifft, rfft, irfft and hartley take 2 to 64 points along an axis, wht and dct4 powers of two.
stft, istft, spectrogram, average_spectrum, mdct and imdct cut signals into frames. zvxg.scipy is a
backend of scipy.fft, zvxg.dask has functions on Dask arrays, and zvxg.ufuncs the generalised ufuncs
behind the functions. docs/python.md is the manual.
"""

from . import ufuncs
from ._core import __version__, dct4, fft, hartley, ifft, irfft, library, rfft, wht
from ._frames import average_spectrum, imdct, istft, mdct, spectrogram, stft

__all__ = ["average_spectrum", "dct4", "fft", "hartley", "ifft", "imdct", "irfft", "istft", "library",
           "mdct", "rfft", "spectrogram", "stft", "ufuncs", "wht"]
