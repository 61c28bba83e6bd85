"""zvxg.dask: the bits of the undivided call, whatever the chunks and wherever they are computed."""

import os
import re
import signal
import subprocess
import sys
import time

import numpy as np
import pytest
from conftest import random, same_bits

import zvxg

dask = pytest.importorskip("dask")
da = pytest.importorskip("dask.array")
distributed = pytest.importorskip("distributed")
zd = pytest.importorskip("zvxg.dask")

SAMPLES = 5003


@pytest.fixture(scope="module")
def client(tmp_path_factory):
    """Of two worker processes."""
    with dask.config.set(temporary_directory=str(tmp_path_factory.mktemp("workers"))):
        with distributed.Client(n_workers=2, threads_per_worker=1, dashboard_address=None) as client:
            yield client


def check(lazy, expected, scheduler="synchronous"):
    """What is known beforehand, and the bits."""
    assert (lazy.shape, lazy.dtype) == (expected.shape, expected.dtype)
    assert same_bits(lazy.compute(scheduler=scheduler), expected)


def test_transforms(function, precision):
    n, size = 16, function.elements(16, "source")
    x = random((40, size), function.source_type(precision))
    keywords = {"layout": function.layout} if function.layout else {}
    for length in (None, n) if function.layout else (None, 8, 32):
        for axis, array, chunks in ((-1, x, (7, size)), (0, x.T, (size, 40))):
            arguments = length, axis, "ortho"
            check(getattr(zd, function.name)(da.from_array(array, chunks), *arguments, **keywords),
                  getattr(zvxg, function.name)(array, *arguments, **keywords))


def in_chunks(x, unit, least):
    """The array with its last axis in equal chunks, in unequal ones, and with a short one at the end."""
    step = unit * -(-max(least, 400) // unit)
    short = (SAMPLES - 1) // step * step
    for chunks in step, (step, 3 * step, SAMPLES - 4 * step), (short, SAMPLES - short), -1:
        yield da.from_array(x, (1, chunks))


def cases(window, hop, x, average):
    """Functions, arguments, keywords, and the unit of chunks."""
    for pad in (True, False):
        yield "stft", (window, hop), {"pad": pad, "scaling": "psd", "fs": 8}, hop
    yield "spectrogram", (window, hop), {"fs": 8, "average": average}, hop * average
    yield "average_spectrum", (window, hop), {}, hop


@pytest.mark.parametrize("n, hop, average", [(64, 16, 3), (63, 20, 1), (8, 8, 7), (12, 5, 20),
                                             (64, 40, 2), (2, 1, 500)])
@pytest.mark.parametrize("kind", "fdFDh")
def test_frames(n, hop, average, kind):
    x = (100 * random((2, SAMPLES), "f")).astype("i2") if kind == "h" else random((2, SAMPLES), kind)
    window = random(n, "d") ** 2 + 0.1
    for name, arguments, keywords, unit in cases(window, hop, x, average):
        expected = getattr(zvxg, name)(x, *arguments, **keywords)
        for lazy in in_chunks(x, unit, n):
            got = getattr(zd, name)(da.moveaxis(lazy, -1, 0), *arguments, axis=0, **keywords)
            check(got, expected)
            if name == "stft":
                back = {**keywords, "onesided": kind not in "FD", "length": 4500}
                frames = got.rechunk({-1: max(got.chunks[-1][0], 2 * n // hop + 1)})
                check(zd.istft(frames, *arguments, **back), zvxg.istft(expected, *arguments, **back))


MATRIX = da.ones((100, 64), chunks=(10, 64))


@pytest.mark.parametrize("exception, message, call", [
    (ValueError, r"axis 0 is in 10 chunks.*x.rechunk\(\{0: -1\}\)", lambda: zd.fft(MATRIX, axis=0)),
    (ValueError, "length 65; the lengths are 2 to 64", lambda: zd.fft(da.ones(65))),
    (IndexError, "2 axes", lambda: zd.fft(MATRIX, axis=2)),
    (ValueError, "compute_chunk_sizes", lambda: zd.fft(MATRIX[MATRIX[:, 0] > 0], axis=0)),
    (ValueError, "chunks of 100 samples.*multiples of 16.*chunks of 96",
     lambda: zd.stft(da.ones(1000, chunks=100), 64, 16)),
    (ValueError, "chunks of 32 samples.*at least 64.*chunks of 64",
     lambda: zd.stft(da.ones(1000, chunks=32), 64, 16)),
    (ValueError, "multiples of 48", lambda: zd.spectrogram(da.ones(1000, chunks=160), 64, 16, average=3)),
    (ValueError, "average is 0", lambda: zd.spectrogram(da.ones(1000), 64, 16, average=0)),
    (TypeError, "arrays of float16", lambda: zd.stft(da.ones(1000, dtype="e"), 64, 16)),
    (ValueError, "chunks of 1 frames", lambda: zd.istft(da.ones((33, 9), chunks=(33, 1)), 64, 16)),
    (ValueError, "bins are in 3 chunks", lambda: zd.istft(da.ones((33, 9), chunks=(11, 9)), 64, 16)),
])
def test_refused_without_computing(exception, message, call):
    with pytest.raises(exception, match=message):
        call()


@pytest.mark.parametrize("name, most", [("stft", 4), ("spectrogram", 4), ("average_spectrum", 2.1)])
def test_graph_is_linear(name, most):
    for chunks in 32, 128:
        sound = da.random.random(chunks * 2**12, chunks=2**12).astype("f4")
        (lazy,) = dask.optimize(getattr(zd, name)(sound, 64, 16))
        assert len(lazy.__dask_graph__()) <= most * chunks


def test_processes(client):
    x = random((3, SAMPLES), "f")
    for name, arguments, keywords, unit in cases(64, 16, x, 2):
        check(getattr(zd, name)(da.from_array(x, (1, 640)), *arguments, **keywords),
              getattr(zvxg, name)(x, *arguments, **keywords), client)
    signals = random((64, 64), "d")
    for name in ("fft", "dct4", "wht"):
        check(getattr(zd, name)(da.from_array(signals, (10, 64))), getattr(zvxg, name)(signals), client)


def test_bench():
    table = subprocess.run(
        [sys.executable, "-m", "zvxg.dask", "bench", "--program", "average_spectrum", "--gigabytes", "0.13",
         "--workers", "2"], check=True, text=True, stdout=subprocess.PIPE).stdout
    lines = re.findall(r"^  (one process|2 processes|2 workers|scipy.signal in them) +\d+ +\d+ +\d", table,
                       re.MULTILINE)
    assert len(lines) == 4, table


def slowly(block):
    time.sleep(0.05)
    return block


def test_a_worker_is_killed(client):
    x = random(SAMPLES * 8, "f")
    lazy = zd.average_spectrum(da.from_array(x, 640).map_blocks(slowly, dtype=x.dtype), 64, 16)
    future = client.compute(lazy)
    time.sleep(0.7)
    assert not future.done()
    os.kill(list(client.run(os.getpid).values())[0], signal.SIGKILL)
    assert same_bits(future.result(timeout=60), zvxg.average_spectrum(x, 64, 16))


def by_scipy(x):
    import scipy.fft

    return scipy.fft.fft(x)


def test_backend_of_workers(client):
    pytest.importorskip("scipy.fft")
    x = random((1000, 61), "d")
    assert not same_bits(client.submit(by_scipy, x).result(), zvxg.fft(x))
    preloaded = subprocess.Popen(
        [sys.executable, "-m", "distributed.cli.dask_worker", client.scheduler.address,
         "--name", "preloaded", "--no-dashboard", "--preload", "zvxg.dask.preload"],
        stderr=subprocess.DEVNULL, env={**os.environ, "PYTHONPATH": os.pathsep.join(sys.path)})
    try:
        client.wait_for_workers(3, timeout=60)
        assert same_bits(client.submit(by_scipy, x, workers="preloaded").result(), zvxg.fft(x))
        zd.register(client)
        for address in client.run(os.getpid):
            assert same_bits(client.submit(by_scipy, x, workers=address).result(), zvxg.fft(x))
    finally:
        preloaded.terminate()
        preloaded.wait()


def test_labelled():
    xarray = pytest.importorskip("xarray")
    begin, rate, samples = np.datetime64("2024-02-29T23:59:00", "ns"), 64, 64 * 80
    times = begin + np.arange(samples) * np.timedelta64(1000000000 // rate, "ns")
    sound = xarray.DataArray(
        da.from_array(random((2, samples), "f"), (1, 1280)), name="pressure", dims=("channel", "time"),
        coords={"time": times, "channel": ["a", "b"]}, attrs={"units": "Pa"})

    def same(labelled, function, *arguments, **keywords):
        assert labelled.name == "pressure" and labelled.attrs == {"units": "Pa"}
        assert list(labelled.channel.values) == ["a", "b"]
        expected = function(sound.data.compute(), *arguments, **keywords)
        assert same_bits(labelled.values, expected)

    spectra = zd.stft(sound, 64, 16, axis="time")
    same(spectra, zvxg.stft, 64, 16)
    assert spectra.dims == ("channel", "frequency", "time")
    assert np.array_equal(spectra.frequency, np.arange(33))
    assert spectra.time.values[4] == begin + np.timedelta64(1, "s")
    back = zd.istft(spectra, 64, 16)
    assert back.dims == sound.dims and np.array_equal(back.time, times)
    columns = zd.spectrogram(sound, 64, 16, average=20)
    same(columns, zvxg.spectrogram, 64, 16, average=20, fs=rate)
    # The first column has 64 + 19 * 16 samples, and the next one begins 5 seconds later.
    assert columns.time.values[0] == begin + np.timedelta64(2875, "ms")
    assert columns.time.values[1] - columns.time.values[0] == np.timedelta64(5, "s")
    same(zd.average_spectrum(sound, 64, 16), zvxg.average_spectrum, 64, 16, fs=rate)
    short = sound[:, :60]
    half = zd.rfft(short.chunk({"time": -1}), axis="time")
    assert half.dims == ("channel", "frequency")
    np.testing.assert_allclose(half.frequency, np.fft.rfftfreq(60, 1 / rate))
    again = zd.irfft(half, axis="frequency")
    np.testing.assert_allclose(again.time, np.arange(60) / rate)
    np.testing.assert_allclose(again, short, atol=1e-5)


@pytest.fixture
def recordings(tmp_path):
    """A few seconds each, and files that cannot be used, with a reason."""
    soundfile = pytest.importorskip("soundfile")
    pytest.importorskip("zarr")
    for name in ("xarray", "matplotlib"):
        pytest.importorskip(name)
    sounds = {}
    for minute in range(60):
        path = tmp_path / f"buoy_20240229_23{minute:02}00.{'flac' if minute % 2 else 'wav'}"
        sounds[path] = 0.1 * random((8100 + 50 * minute, 2), "f", minute)
        soundfile.write(path, sounds[path], 4000, "PCM_24")
    path = tmp_path / "buoy_20240301_000000.flac"
    whole = next(iter(sounds)).with_suffix("").name.replace("230000", "230100") + ".flac"
    path.write_bytes((tmp_path / whole).read_bytes()[:9000])
    (tmp_path / "buoy_20240301_000100.wav").write_bytes(b"junk")
    soundfile.write(tmp_path / "buoy.wav", sounds[next(iter(sounds))], 4000)
    soundfile.write(tmp_path / "buoy_20240301_000200.wav", sounds[next(iter(sounds))], 8000)
    bad = {path.name: "flac", "buoy_20240301_000100.wav": "not recogni[sz]ed",
           "buoy.wav": "its name has no time", "buoy_20240301_000200.wav": "its rate is 8000"}
    return sounds, bad


def test_long_term(recordings, tmp_path):
    """Interrupted, run again, and against the definition by SciPy."""
    signals = pytest.importorskip("scipy.signal")
    import xarray

    sounds, bad = recordings
    out = tmp_path / "out"
    command = [sys.executable, "-m", "zvxg.dask", "longterm", *map(str, sorted(tmp_path.iterdir())),
               "--out", str(out), "--column", "1", "--snapshot", "0.25", "--channel", "1",
               "--percentiles", "10", "50", "--workers", "2"]
    first = subprocess.Popen(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
    while first.poll() is None and not list(out.glob("parts/*.npz")):
        time.sleep(0.005)
    first.terminate()
    assert first.wait(timeout=60) == 130, first.stdout.read()
    assert [path.name for path in out.iterdir() if path.name[0] != "."] == ["parts"]
    kept = len(list(out.glob("parts/*.npz")))
    second = subprocess.run(command, text=True, stdout=subprocess.PIPE, stderr=subprocess.PIPE)
    assert second.returncode == 1 and 0 < kept < 60
    assert f" {kept} of them done before" in second.stdout
    assert "4 of 64 files were skipped" in second.stderr
    for name, reason in bad.items():
        assert re.search(f"{name}: .*{reason}", second.stderr), second.stderr
    assert (out / "longterm.png").stat().st_size > 10000

    data = xarray.open_zarr(out / "longterm.zarr")
    at = 0
    for path, sound in sounds.items():
        begin = np.datetime64("2024-02-29T23:00") + np.timedelta64(int(path.stem[-4:-2]), "m")
        frequencies, _, density = signals.spectrogram(
            sound[:, 1], 4000, 0.5 - 0.5 * np.cos(np.pi * np.arange(64) / 32), 64, 32, detrend=False)
        snapshots = density.T[: density.shape[1] // 31 * 31].reshape(-1, 31, 33).mean(1)
        for first in range(0, len(snapshots), 4):  # 0.25 s are 31 frames, and a second 4 of those
            column = data.isel(time=at)
            assert column.time == begin + np.timedelta64(first * 31 * 32 * 250, "us")
            some = snapshots[first : first + 4]
            np.testing.assert_allclose(column["mean"], some.mean(0), rtol=1e-4)
            np.testing.assert_allclose(column["percentiles"], np.percentile(some, [10, 50], 0), rtol=1e-4)
            at += 1
    assert at == data.sizes["time"] and np.array_equal(data.frequency, frequencies)


def test_long_term_divided(recordings, monkeypatch):
    """Into tasks of a column and pieces of a snapshot."""
    from zvxg.dask import longterm

    settings = longterm.Settings(64, 16, 0.25, 0.6, (5, 95), 0)
    recording = longterm.examine(str(next(iter(recordings[0]))), settings, None)
    whole = longterm.graph(recording, settings).compute(scheduler="synchronous")
    monkeypatch.setattr(longterm, "PIECE_BYTES", 1)
    monkeypatch.setattr(longterm, "TASK_BYTES", 1)
    divided = longterm.graph(recording, settings)
    assert len(divided.__dask_graph__()) == len(whole[0]) + 1
    for got, expected in zip(divided.compute(scheduler="synchronous"), whole):
        assert same_bits(got, expected)
