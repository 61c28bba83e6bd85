"""The backend of scipy.fft: equal to SciPy in every way of setting it, served or handed on."""

import contextlib

import numpy as np
import pytest
from conftest import on_threads, random

fft = pytest.importorskip("scipy.fft")

SHORT = ("fft", "ifft", "rfft", "irfft")
DCTS = ("dct", "idct")


def calls():
    """Names, arguments, keywords, and whether the call is ours."""
    x, z = random((4, 6, 16), "d"), random((4, 6, 16), "F")
    for norm in (None, "backward", "ortho", "forward"):
        for name in SHORT:
            a = x if name == "rfft" else z
            for n, axis, ours in ((None, -1, True), (10, 1, True), (65, -1, False), (20, 0, True)):
                yield name, (a,), {"n": n, "axis": axis, "norm": norm}, ours
            for s, axes, ours in ((None, (0, 2), True), ((8, 70), None, False), ((3, 20), None, True),
                                  ((9, 5), (2, 0), True)):
                yield name + "n", (a, s, axes, norm), {}, ours
            yield name + "2", (a,), {"norm": norm}, True
        for name in DCTS:
            yield name, (x, 4), {"norm": norm}, True
            yield name, (x, 4, 5), {"norm": norm}, False
            yield name, (x, 2), {"norm": norm}, False
            yield name, (z, 4), {"norm": norm}, False
            yield name + "n", (x,), {"type": 4, "norm": norm, "axes": (0, 2)}, True
            yield name + "n", (x,), {"type": 4, "norm": norm}, False  # 6 is no power of two
    for name in ("hfft", "ihfft", "dst"):
        yield name, (x,), {}, False
    yield "fft", (x.astype("e"),), {}, False
    yield "fft", (x.astype("g"),), {}, False
    yield "fft", ([1, 2, 3],), {"workers": 2, "overwrite_x": True}, True
    yield "rfft", (np.ma.array([1, 2, 3]),), {}, True


@pytest.fixture(params=["set_backend", "only", "set_global_backend", "register_backend"])
def way(request, backend):
    """A context in which the backend is set; it can be entered on several threads."""
    if request.param == "set_backend":
        return lambda: fft.set_backend(backend)
    if request.param == "only":
        return lambda: fft.set_backend(backend, only=True)
    getattr(fft, request.param)(backend)
    return contextlib.nullcontext


@pytest.fixture
def served(backend, monkeypatch):
    """The names of functions that returned a result of ours."""
    names = []

    def watched(name, function):
        def call(*arguments, **keywords):
            result = function(*arguments, **keywords)
            names.append(name)
            return result

        return call

    for name, function in backend._FUNCTIONS.items():
        monkeypatch.setitem(backend._FUNCTIONS, name, watched(name, function))
    return names


def test_as_scipy(way, served):
    for name, arguments, keywords, ours in calls():
        with fft.set_backend("scipy", only=True):
            expected = getattr(fft, name)(*arguments, **keywords)
        served.clear()
        with way():
            got = getattr(fft, name)(*arguments, **keywords)
        assert served == [name] * ours, (name, keywords)
        assert type(got) is np.ndarray and got.dtype == expected.dtype
        assert got.shape == expected.shape
        bound = 20 * np.finfo(got.dtype).eps * abs(expected).max()
        assert abs(got - expected).max() <= bound, (name, keywords)


@pytest.mark.parametrize("call", [
    lambda: fft.fft(np.zeros(8), norm="both"),
    lambda: fft.fft(np.zeros(8), axis=1),
    lambda: fft.fft(np.zeros(8), workers=0),
    lambda: fft.fft(np.zeros(8), plan=1),
    lambda: fft.fft(np.zeros(0)),
    lambda: fft.rfft(np.zeros(8, "D")),
    lambda: fft.fftn(np.zeros((8, 8)), axes=(0, 0)),
    lambda: fft.fftn(np.zeros((8, 8)), s=(8, 8, 8)),
    lambda: fft.dct(np.zeros(8), type=5),
    lambda: fft.dct(np.zeros(8), type=4, norm="both"),
])
def test_exceptions_are_scipys(way, call):
    with pytest.raises(Exception) as expected, fft.set_backend("scipy", only=True):
        call()
    with pytest.raises(expected.type) as got, way():
        call()
    assert str(got.value) == str(expected.value)


def test_threads(way, served):
    """Each sets the backend for itself; lengths of ours and of SciPy's."""
    x = random((50, 200), "d")
    with fft.set_backend("scipy", only=True):
        expected = fft.hfft(x)

    def work():
        with way():
            for _ in range(20):
                assert np.array_equal(fft.hfft(x), expected)
                fft.fft(x[:, :64])

    on_threads(work)
    assert len(served) == 160
