"""Every result has the bits of a single call of the C library, however the arrays lie."""

import numpy as np
import pytest
from conftest import NORMS, on_threads, random, same_bits

import zvxg

BATCH = 70


def misaligned(x):
    block = np.empty(x.nbytes + 1, np.uint8)
    copy = block[1:].view(x.dtype).reshape(x.shape)
    copy[...] = x
    return copy


def of_records(x):
    records = np.empty(x.shape, np.dtype([("x", x.dtype), ("y", "u1")]))
    records["x"] = x
    return records["x"]


def in_every(step, x):
    wide = np.full((x.shape[0], x.shape[1] * abs(step)), 7, x.dtype)[:, ::step]
    wide[...] = x
    return wide


PLACES = {
    "contiguous": lambda x: x,
    "transposed": lambda x: np.asfortranarray(x),
    "misaligned": misaligned,
    "records": of_records,
    "gaps": lambda x: in_every(3, x),
    "backwards": lambda x: in_every(-1, x),
    "last first": lambda x: x[::-1].copy()[::-1],
}


def singles(function, x, n, norm):
    return np.array([function.single(row, n, norm) for row in x])


def test_batches(function, precision):
    for n in function.lengths():
        rows = BATCH if n <= 64 else 3
        x = random((rows, function.elements(n, "source")), function.source_type(precision), n)
        for norm in NORMS:
            expected = singles(function, x, n, norm)
            assert same_bits(function(x, norm=norm, n=n), expected), (n, norm)
        for name, place in PLACES.items():
            placed = place(x)
            assert same_bits(function(placed, norm=norm, n=n), expected), (n, name)
            assert same_bits(function(placed.T, norm=norm, axis=0, n=n), expected.T), (n, name)
            out = place(np.empty_like(expected))
            assert function(placed, norm=norm, out=out, n=n) is out
            assert same_bits(np.array(out), expected), (n, name)
        for count in range(1, rows):
            got = function(x[:count], norm=norm, n=n)
            assert same_bits(got, expected[:count]), (n, count)
        everywhere = np.broadcast_to(x[0], (9, x.shape[1]))
        assert same_bits(function(everywhere, norm=norm, n=n),
                         np.broadcast_to(expected[0], (9, expected.shape[1]))), n
        assert same_bits(function(x[0], norm=norm, n=n), expected[0]), n


def test_in_place_and_overlapping(function, precision):
    n, size = 16, function.elements(16, "source")
    x = random((40, size), function.source_type(precision))
    expected = singles(function, x, n, "backward")
    memory = np.zeros(1 << 15, np.uint8)

    def view(elements, dtype, offset, rows=40):
        dtype = np.dtype(dtype)
        return memory[offset:][: rows * elements * dtype.itemsize].view(dtype).reshape(rows, -1)

    for offset in (0, 1, 8, 24, 200):
        source = view(size, x.dtype, 256)
        source[...] = x
        out = view(expected.shape[1], expected.dtype, 256 - offset)
        function(source, out=out, n=n)
        assert same_bits(out.copy(), expected), offset


def test_axes(function, precision):
    """Of arrays of three dimensions, against those of two."""
    n, size = 8, function.elements(8, "source")
    x = random((3, 5, size), function.source_type(precision))
    expected = function(x.reshape(15, size), n=n).reshape(3, 5, -1)
    for source in range(3):
        moved = np.moveaxis(x, -1, source)
        assert same_bits(function(moved, axis=source - 3, n=n),
                         np.moveaxis(expected, -1, source))
        for result in range(3):
            wanted = np.moveaxis(expected, -1, result)
            got = function(moved, axes=[(source,), result], n=n)
            assert same_bits(got, wanted), (source, result)
            out = np.empty_like(wanted)
            function(moved, axes=(source, result), out=out, n=n)
            assert same_bits(out, wanted), (source, result)


@pytest.mark.parametrize("name", ["fft", "rfft", "wht", "dct4"])
def test_threads(name, precision):
    """Eight at once; the longer transforms have workspaces."""
    n = 64 if "fft" in name else 8192
    x = random((16, n), precision)
    expected = getattr(zvxg, name)(x)
    same = on_threads(lambda: all(same_bits(getattr(zvxg, name)(x), expected) for _ in range(10)))
    assert same == [True] * 8
