"""What the tests have in common: the functions of zvxg, and single calls of the C library."""

import concurrent.futures
import ctypes
import re

import numpy as np
import pytest

import zvxg

NORMS = ("backward", "ortho", "forward")
_LIBRARY = ctypes.CDLL(zvxg.library()["file"])
_FLAGS = {"backward": (8, 2), "ortho": (4, 4), "forward": (1, 8)}  # forward, inverse


class Function:
    """A function of zvxg with a layout, and the C function of one length that does the same, whose name
    says the rest."""

    def __init__(self, name, kernel, layout=None):
        self.name, self.kernel, self.layout = name, kernel, layout
        ends = re.fullmatch(r".*_(\w+)To(\w+)|.*", kernel).groups()
        self.complex_source, self.complex_result = (end in ("C", "CCS") for end in ends)
        self.bins = [side for side, end in zip(("source", "result"), ends) if end == "CCS"]

    def __str__(self):
        return self.name + (f"-{self.layout}" if self.layout else "")

    def __call__(self, x, **keywords):
        if self.layout:
            keywords["layout"] = self.layout
        return getattr(zvxg, self.name)(x, **keywords)

    def elements(self, n, side):
        return n // 2 + 1 if side in self.bins else n

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
        flag = _FLAGS[norm]["Inv" in self.kernel]
        size, *more = (n.bit_length() - 1, None) if self.name == "wht" else (n,)
        assert _LIBRARY[f"zvxg{self.kernel}_{size}_{element}"](*arrays, flag, *more) == 0
        return result


FUNCTIONS = [
    Function("fft", "DFTFwd_CToC"),
    Function("ifft", "DFTInv_CToC"),
    Function("rfft", "DFTFwd_RToCCS", "ccs"),
    Function("rfft", "DFTFwd_RToPack", "pack"),
    Function("rfft", "DFTFwd_RToPerm", "perm"),
    Function("irfft", "DFTInv_CCSToR", "ccs"),
    Function("irfft", "DFTInv_PackToR", "pack"),
    Function("irfft", "DFTInv_PermToR", "perm"),
    Function("hartley", "Hartley"),
    Function("wht", "WHT"),
    Function("dct4", "DCT4"),
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
