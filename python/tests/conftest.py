"""What the tests have in common: the functions of zvxg, and single calls of the C library."""

import concurrent.futures
import ctypes
import dataclasses

import numpy as np
import pytest

import zvxg

NORMS = ("backward", "ortho", "forward")
_LIBRARY = ctypes.CDLL(zvxg.library()["file"])
_FLAGS = {"backward": (8, 2), "ortho": (4, 4), "forward": (1, 8)}  # forward, inverse


@dataclasses.dataclass(frozen=True)
class Function:
    """A function of zvxg, a layout, and the C function of one length that does the same."""

    name: str
    kernel: str
    layout: str = None
    inverse: bool = False
    complex_source: bool = False
    complex_result: bool = False
    half: str = None  # the side that has bins

    def __str__(self):
        return self.name + (f"-{self.layout}" if self.layout else "")

    def __call__(self, x, **keywords):
        if self.layout:
            keywords["layout"] = self.layout
        return getattr(zvxg, self.name)(x, **keywords)

    def elements(self, n, side):
        return n // 2 + 1 if side == self.half else n

    def lengths(self):
        if self.name == "wht":
            return [2**order for order in range(1, 14)]
        if self.name == "dct4":
            return [2**order for order in range(1, 13)]
        return range(2, 65)

    def source_type(self, precision):
        return np.dtype(precision.upper() if self.complex_source else precision)

    def single(self, row, n, norm):
        """The result for one contiguous signal, by the C function."""
        real = row.dtype.char.lower()
        element = {"f": "32f", "d": "64f"}[real] + ("c" if "CToC" in self.kernel else "")
        row = np.ascontiguousarray(row)
        result = np.full(self.elements(n, "result"), np.nan, real.upper() if self.complex_result
                         else real)
        arrays = row.ctypes.data_as(ctypes.c_void_p), result.ctypes.data_as(ctypes.c_void_p)
        if self.name == "dct4":
            plan = ctypes.c_void_p()
            assert _LIBRARY[f"zvxgDCT4InitAlloc_{element}"](ctypes.byref(plan), n) == 0
            assert _LIBRARY[f"zvxgDCT4_{element}"](*arrays, plan) == 0
            _LIBRARY[f"zvxgDCT4Free_{element}"](plan)
            factor = {"backward": 2, "ortho": np.sqrt(2 / n), "forward": 1 / n}[norm]
            return result * result.dtype.type(factor)
        flag = _FLAGS[norm][self.inverse]
        size = n.bit_length() - 1 if self.name == "wht" else n
        more = (None,) if self.name == "wht" else ()
        assert _LIBRARY[f"{self.kernel.format(size)}_{element}"](*arrays, flag, *more) == 0
        return result


FUNCTIONS = [
    Function("fft", "zvxgDFTFwd_CToC_{}", None, False, True, True),
    Function("ifft", "zvxgDFTInv_CToC_{}", None, True, True, True),
    Function("rfft", "zvxgDFTFwd_RToCCS_{}", "ccs", False, False, True, "result"),
    Function("rfft", "zvxgDFTFwd_RToPack_{}", "pack"),
    Function("rfft", "zvxgDFTFwd_RToPerm_{}", "perm"),
    Function("irfft", "zvxgDFTInv_CCSToR_{}", "ccs", True, True, False, "source"),
    Function("irfft", "zvxgDFTInv_PackToR_{}", "pack", True),
    Function("irfft", "zvxgDFTInv_PermToR_{}", "perm", True),
    Function("hartley", "zvxgHartley_{}"),
    Function("wht", "zvxgWHT_{}"),
    Function("dct4", ""),
]


def random(shape, dtype, seed=1):
    numbers = np.random.default_rng(seed).normal(size=(*np.atleast_1d(shape), 2))
    dtype = np.dtype(dtype)
    return (numbers[..., 0] + 1j * numbers[..., 1] if dtype.kind == "c"
            else numbers[..., 0]).astype(dtype)


def same_bits(a, b):
    return a.dtype == b.dtype and a.shape == b.shape and a.tobytes() == b.tobytes()


def on_threads(work):
    """Eight at once."""
    with concurrent.futures.ThreadPoolExecutor(8) as threads:
        return [done.result() for done in [threads.submit(work) for _ in range(8)]]


def pytest_generate_tests(metafunc):
    if "function" in metafunc.fixturenames:
        metafunc.parametrize("function", FUNCTIONS, ids=str)
    if "precision" in metafunc.fixturenames:
        metafunc.parametrize("precision", "fd")


@pytest.fixture
def backend():
    """zvxg.scipy. Afterwards SciPy's own is back in its place, for which SciPy has nothing public."""
    fft = pytest.importorskip("scipy.fft")
    from scipy._lib import uarray

    import zvxg.scipy

    yield zvxg.scipy
    uarray.clear_backends("numpy.scipy.fft", True, True)
    fft.set_global_backend("scipy", try_last=True)
