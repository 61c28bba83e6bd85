from typing import Any

from numpy.typing import ArrayLike

from .. import _Layout, _Norm, _Scaling

__all__ = ["average_spectrum", "dct4", "fft", "hartley", "ifft", "irfft", "istft", "register", "rfft",
           "spectrogram", "stft", "wht"]

# Arrays of Dask and DataArrays of xarray: neither has to be installed for the stubs of the other.
_Array = Any

def fft(x: _Array, n: int | None = None, axis: int | str = -1, norm: _Norm = None) -> _Array: ...
def ifft(x: _Array, n: int | None = None, axis: int | str = -1, norm: _Norm = None) -> _Array: ...
def rfft(
    x: _Array, n: int | None = None, axis: int | str = -1, norm: _Norm = None, *,
    layout: _Layout = "ccs",
) -> _Array: ...
def irfft(
    x: _Array, n: int | None = None, axis: int | str = -1, norm: _Norm = None, *,
    layout: _Layout = "ccs",
) -> _Array: ...
def hartley(x: _Array, n: int | None = None, axis: int | str = -1, norm: _Norm = None) -> _Array: ...
def wht(x: _Array, n: int | None = None, axis: int | str = -1, norm: _Norm = None) -> _Array: ...
def dct4(x: _Array, n: int | None = None, axis: int | str = -1, norm: _Norm = None) -> _Array: ...
def stft(
    x: _Array, window: ArrayLike, hop: int, *, axis: int | str = -1, pad: bool = True,
    scaling: _Scaling = "spectrum", fs: float | None = None,
) -> _Array: ...
def spectrogram(
    x: _Array, window: ArrayLike, hop: int, *, axis: int | str = -1, fs: float | None = None,
    average: int = 1,
) -> _Array: ...
def average_spectrum(
    x: _Array, window: ArrayLike, hop: int, *, axis: int | str = -1, fs: float | None = None,
    split_every: int | None = None,
) -> _Array: ...
def istft(
    spectra: _Array, window: ArrayLike, hop: int, *, length: int | None = None, pad: bool = True,
    scaling: _Scaling = "spectrum", fs: float | None = None, onesided: bool = True,
) -> _Array: ...
def register(client: Any) -> None: ...
