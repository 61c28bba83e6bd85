from typing import Any, Literal, Protocol, SupportsIndex, TypedDict, TypeVar, overload

import numpy as np
from numpy.typing import ArrayLike, NDArray

from . import ufuncs as ufuncs

__all__ = ["average_spectrum", "dct4", "fft", "hartley", "ifft", "imdct", "irfft", "istft", "library",
           "mdct", "rfft", "spectrogram", "stft", "ufuncs", "wht"]

_Norm = Literal["backward", "ortho", "forward"] | None
_Layout = Literal["ccs", "pack", "perm"]
_Scaling = Literal["spectrum", "psd"] | None
_Axes = tuple[int | tuple[int], int | tuple[int]] | list[int] | list[tuple[int]] | None
_Real = NDArray[np.float32] | NDArray[np.float64]
_Complex = NDArray[np.complex64] | NDArray[np.complex128]
_Out = NDArray[Any] | None
_Result_co = TypeVar("_Result_co", covariant=True)

class _Library(TypedDict):
    major: int
    minor: int
    file: str
    version: str
    cpu: str
    many_level: int

__version__: str

class _Transform(Protocol[_Result_co]):
    def __call__(
        self, a: ArrayLike, n: SupportsIndex | None = None, axis: SupportsIndex = -1,
        norm: _Norm = None, out: _Out = None, *, axes: _Axes = None,
    ) -> _Result_co: ...

fft: _Transform[_Complex]
ifft: _Transform[_Complex]
hartley: _Transform[_Real]
wht: _Transform[_Real]
dct4: _Transform[_Real]

def library() -> _Library: ...
@overload
def rfft(
    a: ArrayLike, n: SupportsIndex | None = None, axis: SupportsIndex = -1, norm: _Norm = None,
    out: _Out = None, *, axes: _Axes = None, layout: Literal["ccs"] = "ccs",
) -> _Complex: ...
@overload
def rfft(
    a: ArrayLike, n: SupportsIndex | None = None, axis: SupportsIndex = -1, norm: _Norm = None,
    out: _Out = None, *, axes: _Axes = None, layout: Literal["pack", "perm"],
) -> _Real: ...
def irfft(
    a: ArrayLike, n: SupportsIndex | None = None, axis: SupportsIndex = -1, norm: _Norm = None,
    out: _Out = None, *, axes: _Axes = None, layout: _Layout = "ccs",
) -> _Real: ...
def stft(
    x: ArrayLike, window: ArrayLike, hop: int, *, axis: int = -1, pad: bool = True,
    scaling: _Scaling = "spectrum", fs: float = 1.0,
) -> _Complex: ...
@overload
def istft(
    spectra: ArrayLike, window: ArrayLike, hop: int, *, length: int | None = None, pad: bool = True,
    scaling: _Scaling = "spectrum", fs: float = 1.0, onesided: Literal[True] = True,
) -> _Real: ...
@overload
def istft(
    spectra: ArrayLike, window: ArrayLike, hop: int, *, length: int | None = None, pad: bool = True,
    scaling: _Scaling = "spectrum", fs: float = 1.0, onesided: Literal[False],
) -> _Complex: ...
def spectrogram(
    x: ArrayLike, window: ArrayLike, hop: int, *, axis: int = -1, fs: float = 1.0, average: int = 1,
) -> _Real: ...
def average_spectrum(
    x: ArrayLike, window: ArrayLike, hop: int, *, axis: int = -1, fs: float = 1.0,
) -> _Real: ...
def mdct(x: ArrayLike, window: ArrayLike, *, axis: int = -1) -> _Real: ...
def imdct(frames: ArrayLike, window: ArrayLike) -> _Real: ...
