"""Types, arguments, refusals and the ufuncs behind the functions."""

import gc
import os
import re
import subprocess
import sys

import numpy as np
import pytest
from conftest import NORMS, random, same_bits

import zvxg

AxisError = getattr(np, "exceptions", np).AxisError


@pytest.mark.parametrize("norm", NORMS)
@pytest.mark.parametrize("n", [None, 5, 12, 13, 20])
@pytest.mark.parametrize("name", ["fft", "ifft", "rfft", "irfft"])
def test_as_numpy(name, n, norm):
    """Lengths cropped and padded, any axis, by the words of NumPy."""
    x = random((6, 12, 7), "d" if name == "rfft" else "D")
    for axis in (0, 1, -1):
        if name == "irfft" and n is None and axis == 0:
            continue
        expected = getattr(np.fft, name)(x, n, axis, norm)
        got = getattr(zvxg, name)(x, n, axis, norm)
        assert got.shape == expected.shape
        np.testing.assert_allclose(got, expected, rtol=0, atol=1e-14 * abs(expected).max())


@pytest.mark.parametrize("given, real, bins", [
    ("f4", "f4", "c8"), ("f8", "f8", "c16"), (">f4", "f4", "c8"), ("i1", "f8", "c16"),
    ("i2", "f8", "c16"), ("u8", "f8", "c16"), ("?", "f8", "c16")])
def test_types(given, real, bins):
    x = np.arange(8).astype(given)
    for shaped in (x, x.reshape(1, 1, 8)):
        assert zvxg.hartley(shaped).dtype == real
        for name in ("fft", "ifft", "rfft"):
            result = getattr(zvxg, name)(shaped)
            assert result.dtype == bins
            assert same_bits(result, getattr(zvxg, name)(shaped.astype(real)))
        assert zvxg.irfft(zvxg.rfft(shaped)).dtype == real
    assert zvxg.ufuncs.hartley(x).dtype == real
    assert zvxg.fft(x.tolist()).dtype == "c16"


eight, read_only = np.zeros(8), np.zeros(8)
read_only.flags.writeable = False
matrix = np.zeros((4, 8), "D")


@pytest.mark.parametrize("exception, message, call", [
    (ValueError, "length 65; the lengths are 2 to 64", lambda: zvxg.fft(np.zeros(65))),
    (ValueError, "length 1;", lambda: zvxg.rfft(eight, 1)),
    (ValueError, "length 12; the lengths are the powers of two", lambda: zvxg.wht(np.zeros(12))),
    (ValueError, "2 to 2..25", lambda: zvxg.dct4(np.zeros(12))),
    (ValueError, "length 65", lambda: zvxg.ufuncs.fft(np.zeros(65))),
    (ValueError, "8 elements do not become 8", lambda: zvxg.ufuncs.rfft(eight, out=eight + 0j)),
    (ValueError, "no other length", lambda: zvxg.irfft(eight, 6, layout="pack")),
    (TypeError, "float16.*convert to float32 or float64", lambda: zvxg.rfft(np.zeros(8, "e"))),
    (TypeError, "are not transformed", lambda: zvxg.fft(np.zeros(8, "g"))),
    (TypeError, "are not transformed", lambda: zvxg.fft(["a", "b"])),
    (TypeError, "has to be real", lambda: zvxg.rfft(np.zeros(8, "D"))),
    (TypeError, "has to be real", lambda: zvxg.mdct(np.zeros(8, "D"), [0.6, 0.8])),
    (ValueError, "'backward', 'ortho' and 'forward', not 'both'", lambda: zvxg.fft(eight, norm="both")),
    (ValueError, "layout is one of 'ccs'", lambda: zvxg.rfft(eight, layout="half")),
    (TypeError, "no argument 'layout'", lambda: zvxg.fft(eight, layout="ccs")),
    (TypeError, "two values for 'n'", lambda: zvxg.fft(eight, 8, n=8)),
    (TypeError, "at most 5", lambda: zvxg.fft(eight, 8, -1, None, None, None)),
    (TypeError, "needs an array", lambda: zvxg.fft()),
    (TypeError, "interpreted as an integer", lambda: zvxg.fft(eight, 8.0)),
    (TypeError, "either axis or axes", lambda: zvxg.fft(eight, axis=0, axes=(0, 0))),
    (ValueError, "axes is a pair", lambda: zvxg.fft(eight, axes=(0,))),
    (AxisError, "axis 2 is out of bounds", lambda: zvxg.fft(matrix, axis=2)),
    (AxisError, "out of bounds", lambda: zvxg.fft(1.0)),
    (TypeError, "out is an array", lambda: zvxg.fft(eight, out=[])),
    (ValueError, "8 elements at axis 0", lambda: zvxg.fft(eight, out=np.zeros(9, "D"))),
    (ValueError, "broadcast|mismatch", lambda: zvxg.fft(matrix, out=np.zeros((5, 8), "D"))),
    (ValueError, "read-only", lambda: zvxg.hartley(eight, out=read_only)),
    (TypeError, "Cannot cast", lambda: zvxg.fft(eight, out=np.zeros(8))),
    (ValueError, "2 to 64 values", lambda: zvxg.stft(np.zeros(100), np.ones(65), 8)),
    (ValueError, "hop is 9", lambda: zvxg.stft(np.zeros(100), np.ones(8), 9)),
    (ValueError, "shorter than the window", lambda: zvxg.stft(eight, 64, 8, pad=False)),
    (ValueError, "add up to 0", lambda: zvxg.stft(eight, [1, -1], 1)),
    (ValueError, "scaling is one of", lambda: zvxg.stft(eight, 8, 1, scaling="power")),
    (ValueError, "no frame sees the samples at 0 modulo 8",
     lambda: zvxg.istft(np.zeros((5, 9)), 8, 8)),
    (ValueError, "3 bins do not belong to a window of 8", lambda: zvxg.istft(np.zeros((3, 9)), 8, 2)),
    (ValueError, "do not add up to 1", lambda: zvxg.mdct(eight, [1, 1])),
    (ValueError, "power of two", lambda: zvxg.mdct(eight, [1, 1, 1])),
    (ValueError, "the frames have the shape", lambda: zvxg.imdct(eight, [0.6, 0.8])),
])
def test_refusals(exception, message, call):
    with pytest.raises(exception, match=message):
        call()


def test_ufuncs():
    """They are what NumPy and others take for generalised ufuncs."""
    assert sum(isinstance(value, np.ufunc) for value in vars(zvxg.ufuncs).values()) == 33
    ufunc = zvxg.ufuncs.rfft_perm_ortho
    assert isinstance(ufunc, np.ufunc) and ufunc.signature == "(n)->(n)"
    assert zvxg.ufuncs.rfft.signature == "(n)->(m)"
    x = random((2, 3, 10), "f")
    assert same_bits(ufunc(x), zvxg.rfft(x, layout="perm", norm="ortho"))
    assert same_bits(zvxg.ufuncs.irfft(zvxg.rfft(x), out=np.empty_like(x)), zvxg.irfft(zvxg.rfft(x)))
    with np.errstate(all="raise"):  # infinity comes without a warning
        assert not np.isfinite(zvxg.fft(np.full((2, 2, 8), 1e308))).all()
        assert not np.isfinite(zvxg.fft([np.inf, 1, 1])).all()


def test_other_arrays():
    class Signal(np.ndarray):
        pass

    x = random((3, 8), "f")
    for function in (zvxg.fft, zvxg.rfft, zvxg.hartley):
        assert type(function(x.view(Signal))) is Signal
        assert same_bits(np.asarray(function(x.view(Signal))), function(x))

    class Foreign:
        dtype = np.dtype("i2")

        def astype(self, dtype):
            self.cast = dtype
            return self

        def __array_ufunc__(self, *arguments, **keywords):
            return arguments, keywords

    foreign = Foreign()
    got = zvxg.hartley(foreign, axis=0, norm="ortho")
    assert got == ((zvxg.ufuncs.hartley_ortho, "__call__", foreign), {"axes": [(0,), (0,)]})
    assert foreign.cast == "f8"


def resident():
    with open("/proc/self/statm", encoding="ascii") as pages:
        return int(pages.read().split()[1]) * os.sysconf("SC_PAGE_SIZE")


def test_no_growth():
    """A million calls, refused ones too."""
    x, wide, y = random(8, "f"), random((2, 3, 8), "f"), np.empty(8, "F")

    def calls(turns):
        for _ in range(turns):
            zvxg.fft(x)
            zvxg.rfft(x, layout="pack", norm="ortho")
            zvxg.rfft(x, 6)
            zvxg.rfft(wide, 12, 0)
            zvxg.fft(x, out=y)
            zvxg.wht(x)
            zvxg.dct4(x)
            for bad in ((x, 65), (x, None, 3), (y, "8")):
                try:
                    zvxg.rfft(*bad)
                except (TypeError, ValueError):
                    pass

    calls(1000)
    gc.collect()
    before = resident(), sys.getallocatedblocks()
    calls(100000)
    gc.collect()
    assert resident() - before[0] < 2**20
    assert sys.getallocatedblocks() - before[1] < 100


def test_first_steps(tmp_path):
    def run(*arguments):
        return subprocess.run([sys.executable, "-m", "zvxg", *arguments], check=True, text=True,
                              stdout=subprocess.PIPE).stdout

    assert re.search(r"^self-check passed", run(), re.MULTILINE)
    pytest.importorskip("matplotlib")
    plot = tmp_path / "plot.svg"
    table = run("bench", "--lengths", "8", "--batch", "10", "--plot", str(plot))
    assert re.search(r"^fft +complex64 +8 +10 +[\d.]+ +[\d.]+ +[\d.]+x", table, re.MULTILINE)
    assert "<svg" in plot.read_text(encoding="utf-8")
