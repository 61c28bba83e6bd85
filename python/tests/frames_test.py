"""Short-time spectra against SciPy's, the MDCT against its definition, and the ways back."""

import numpy as np
import pytest
from conftest import random

import zvxg

WINDOWS = [(64, 16), (63, 20), (8, 8), (12, 5), (2, 1)]


def close(got, expected):
    """Within rounding of the precision of `got`."""
    assert got.shape == expected.shape
    bound = 20 * np.finfo(got.dtype).eps * abs(expected).max()
    assert abs(got - expected).max() <= bound


@pytest.mark.parametrize("n, hop", WINDOWS)
@pytest.mark.parametrize("kind", "fdFD")
def test_short_time(n, hop, kind):
    signal = pytest.importorskip("scipy.signal")
    real = kind in "fd"
    plain = random((2, 3, 501), kind)
    x = np.moveaxis(plain, -1, 1)
    window = signal.get_window("hann", n) + 0.1
    for pad in (True, False):
        for scaling in ("spectrum", "psd"):
            spectra = zvxg.stft(x, window, hop, axis=1, pad=pad, scaling=scaling, fs=8)
            close(spectra, signal.stft(
                plain, 8, window, n, n - hop, scaling=scaling, return_onesided=real,
                boundary="zeros" if pad else None, padded=pad)[2])
            again = zvxg.istft(spectra, window, hop, pad=pad, scaling=scaling, fs=8, onesided=real,
                               length=501)
            close(again, plain[..., : again.shape[-1]])
            assert again.shape[-1] == 501 or not pad
    power = zvxg.spectrogram(x, window, hop, axis=1, fs=8)
    assert power.dtype == kind.lower()
    close(power, signal.spectrogram(plain, 8, window, n, n - hop, detrend=False,
                                    return_onesided=real)[2])
    columns = zvxg.spectrogram(x, window, hop, axis=1, fs=8, average=6)
    whole = power[..., : columns.shape[-1] * 6]
    close(columns, whole.reshape(*whole.shape[:-1], -1, 6).mean(-1))
    close(zvxg.average_spectrum(x, window, hop, axis=1, fs=8), signal.welch(
        plain, 8, window, n, n - hop, detrend=False, return_onesided=real)[1])


def test_hann_by_length():
    x = random(1000, "d")
    window = 0.5 - 0.5 * np.cos(np.pi * np.arange(48) / 24)
    close(zvxg.stft(x, 48, 12), zvxg.stft(x, window, 12))


@pytest.mark.parametrize("n", [2, 4, 16, 256])
def test_mdct(n, precision):
    window = np.sin(np.pi / (2 * n) * (np.arange(n) + 0.5))
    x = random((2, 3 * n), precision)
    frames = zvxg.mdct(x, window)
    close(zvxg.imdct(frames, window), x)
    padded = np.pad(x.astype(float), ((0, 0), (n, n)))
    blocks = np.stack([padded[:, t * n : (t + 2) * n] for t in range(4)], 1)
    eighths = (2 * np.arange(n)[:, None] + 1) * (2 * np.arange(2 * n) + 1 + n) % (8 * n)
    cosines = np.sqrt(2 / n) * np.cos(np.pi / (4 * n) * eighths)
    close(frames, (blocks * np.concatenate([window, window[::-1]])) @ cosines.T)
    uneven = zvxg.mdct(np.moveaxis(x[:, :-1], 1, 0), window, axis=0)
    close(zvxg.imdct(uneven, window)[:, :-1], x[:, :-1])
