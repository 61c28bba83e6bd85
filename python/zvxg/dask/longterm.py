"""Long-term spectra of many recordings: what python3 -m zvxg.dask longterm does.

A recording is divided into columns (of a minute) and these into snapshots (of a second). The density
of a snapshot is a mean over frames; a column keeps the mean of its snapshots and percentiles of them.
A task reads some columns of one file, piece by piece. Another one joins those of the file. What it
gives is kept in OUT/parts, so that a run that was interrupted goes on where it was; from the parts,
OUT/longterm.zarr and OUT/longterm.png are made at the end. All of these appear under their names when
they are complete.
"""

import dataclasses
import datetime
import hashlib
import json
import os
import re
import shutil
import sys
import tempfile
import threading

import dask
import distributed
import numpy as np
import soundfile

import zvxg

PIECE_BYTES = 2**24  # of samples in memory at a time
TASK_BYTES = 2**26  # of samples in a task, if a column has no more

UNFINISHED = ".unfinished-"  # begins the names of directories that are being written


@dataclasses.dataclass(frozen=True)
class Settings:
    window: int
    hop: int
    snapshot: float  # seconds
    column: float  # seconds
    percentiles: tuple
    channel: int

    def frames(self, rate):
        """Frames of a snapshot."""
        return max(1, round(self.snapshot * rate / self.hop))

    def snapshots(self, rate):
        """Snapshots of a column."""
        return max(1, round(self.column * rate / (self.frames(rate) * self.hop)))

    def column_samples(self, rate):
        return self.snapshots(rate) * self.frames(rate) * self.hop


@dataclasses.dataclass(frozen=True)
class Recording:
    path: str
    rate: int
    channels: int
    samples: int
    begin: np.datetime64

    def snapshots(self, settings):
        """The complete ones."""
        frames = (self.samples - settings.window) // settings.hop + 1
        return max(0, frames // settings.frames(self.rate))

    def part(self, settings):
        """The name of what is kept of it: another one if the file or the settings change."""
        status = os.stat(self.path)
        identity = [self.path, status.st_size, status.st_mtime_ns, dataclasses.astuple(settings)]
        digest = hashlib.sha1(json.dumps(identity).encode()).hexdigest()[:12]
        return f"{os.path.splitext(os.path.basename(self.path))[0]}-{digest}.npz"


class Unusable(Exception):
    """A file that cannot be used, with the reason."""


# ---- Tasks --------------------------------------------------------------------------------------------


def levels(recording, settings, first, count):
    """Means and percentiles of the columns that `count` snapshots from the first one make, in which a
    column begins; or a sentence, if the file cannot be read."""
    try:
        density = _snapshots(recording, settings, first, count)
    except (OSError, RuntimeError) as error:  # soundfile's are RuntimeErrors
        return _sentence(error)
    per_column = settings.snapshots(recording.rate)
    columns = [density[:, i : i + per_column] for i in range(0, count, per_column)]
    return (np.array([column.mean(1, dtype=float) for column in columns], np.float32),
            np.array([np.percentile(column, settings.percentiles, 1) for column in columns], np.float32))


def _snapshots(recording, settings, first, count):
    """Densities, (bins, snapshots)."""
    frames, hop, rate = settings.frames(recording.rate), settings.hop, recording.rate
    size = frames * hop
    overlap = settings.window - hop
    share = max(1, min(count, PIECE_BYTES // (4 * size * recording.channels)))
    block = np.empty((share * size + overlap, recording.channels), np.float32)
    density = np.empty((settings.window // 2 + 1, count), np.float32)
    with soundfile.SoundFile(recording.path) as file:
        if first > 0:  # a seek may fail for other reasons than a read
            file.seek(first * size)
        _fill(file, block[:overlap])
        for begin in range(0, count, share):
            some = min(share, count - begin)
            samples = block[: some * size + overlap]
            _fill(file, samples[overlap:])
            density[:, begin : begin + some] = zvxg.spectrogram(
                samples[:, settings.channel], settings.window, hop, fs=rate, average=frames)
            block[:overlap] = samples[some * size :].copy()
    return density


def _fill(file, block):
    got = len(file.read(out=block)) if len(block) else 0
    if got < len(block):
        raise OSError(f"it ends {len(block) - got} samples before its header says")


def _sentence(error):
    return " ".join(str(error).split()) or type(error).__name__


def join(parts):
    """The columns of a file, or what was wrong with it."""
    wrong = [part for part in parts if isinstance(part, str)]
    return wrong[0] if wrong else tuple(np.concatenate(arrays) for arrays in zip(*parts))


def graph(recording, settings):
    """The lazy result for a file."""
    per_column = settings.snapshots(recording.rate)
    column_bytes = 4 * recording.channels * settings.column_samples(recording.rate)
    share = max(1, TASK_BYTES // column_bytes) * per_column
    total = recording.snapshots(settings)
    read = dask.delayed(levels, pure=False)
    return dask.delayed(join, pure=False)(
        [read(recording, settings, first, min(share, total - first))
         for first in range(0, total, share)])


# ---- Files --------------------------------------------------------------------------------------------

_TIMES = ((r"(?<!\d)(\d{8})[T_-]?(\d{6})(?!\d)", "%Y%m%d%H%M%S"), (r"(?<!\d)(\d{12})(?!\d)", "%y%m%d%H%M%S"))


def time_in_name(path):
    """When a recording began, by the name of its file."""
    for pattern, form in _TIMES:
        for match in re.finditer(pattern, os.path.basename(path)):
            try:
                return np.datetime64(datetime.datetime.strptime("".join(match.groups()), form), "ns")
            except ValueError:
                pass
    raise Unusable("its name has no time, such as 20240229_235900; --start places files one after "
                   "another")


def examine(path, settings, begin):
    """What the header of a file says."""
    try:
        with soundfile.SoundFile(path) as file:
            rate, channels, samples = file.samplerate, file.channels, file.frames
    except (OSError, RuntimeError) as error:
        raise Unusable(_sentence(error)) from None
    if settings.channel >= channels:
        raise Unusable(f"it has {channels} channels, and none with the number {settings.channel}")
    recording = Recording(path, rate, channels, samples,
                          time_in_name(path) if begin is None else begin)
    if recording.snapshots(settings) == 0:
        raise Unusable(f"{samples} samples are less than a snapshot")
    return recording


def survey(files, settings, start, skip):
    """The recordings among the files, which all have the rate of the first one."""
    recordings = []
    for path in files:
        try:
            recording = examine(path, settings, start)
            if recordings and recording.rate != recordings[0].rate:
                raise Unusable(f"its rate is {recording.rate}, and that of the others "
                               f"{recordings[0].rate}")
        except Unusable as error:
            skip(path, error)
            continue
        recordings.append(recording)
        if start is not None:
            start = start + np.timedelta64(round(recording.samples / recording.rate * 1e9), "ns")
    return recordings


def write_whole(path, write):
    """Has write(place) make a file or directory elsewhere, and then moves it into its place."""
    place = tempfile.mkdtemp(prefix=UNFINISHED, dir=os.path.dirname(path))
    try:
        made, old = os.path.join(place, os.path.basename(path)), os.path.join(place, "old")
        write(made)
        if os.path.isdir(path):
            os.rename(path, old)
        os.replace(made, path)
    finally:
        shutil.rmtree(place)


# ---- The run ------------------------------------------------------------------------------------------


def run(files, out, settings, client, start=None):
    """Does the files, and returns how many were skipped."""
    skipped = []

    def skip(path, reason):
        skipped.append(path)
        begin = "\r" if sys.stdout.isatty() else ""  # over the progress bar
        print(f"{begin}skipped {path}: {reason}", file=sys.stderr)

    files = list(dict.fromkeys(map(os.path.abspath, files)))
    directory = os.path.join(out, "parts")
    os.makedirs(directory, exist_ok=True)
    for place in (out, directory):  # what a killed run may have left
        for name in os.listdir(place):
            if name.startswith(UNFINISHED):
                shutil.rmtree(os.path.join(place, name))
    recordings = survey(files, settings, start, skip)
    parts = {recording: os.path.join(directory, recording.part(settings)) for recording in recordings}
    missing = [recording for recording in recordings if not os.path.exists(parts[recording])]
    print(f"{len(recordings)} recordings, {len(recordings) - len(missing)} of them done before")
    futures = client.compute([graph(recording, settings) for recording in missing])
    keeper = threading.Thread(target=keep, args=(futures, [parts[r] for r in missing],
                                                 [r.path for r in missing], skip), daemon=True)
    keeper.start()
    if missing and sys.stdout.isatty():
        distributed.progress(futures)
    keeper.join()
    done = [(r, parts[r]) for r in recordings if os.path.exists(parts[r])]
    if done:
        write(out, done, settings)
    if skipped:
        print(f"{len(skipped)} of {len(files)} files were skipped", file=sys.stderr)
    return len(skipped)


def keep(futures, names, paths, skip):
    """Writes the part of each file as soon as it is there."""
    places = {future.key: (name, path) for future, name, path in zip(futures, names, paths)}
    for future in distributed.as_completed(futures):
        name, path = places[future.key]
        if future.status != "finished":
            skip(path, _sentence(future.exception()) if future.status == "error" else future.status)
            continue
        result = future.result()
        if isinstance(result, str):
            skip(path, result)
        else:
            write_whole(name, lambda place: np.savez(place, mean=result[0], percentiles=result[1]))
        future.release()


def write(out, done, settings):
    """The store and the picture."""
    import xarray

    columns = []
    for recording, name in done:
        with np.load(name) as part:
            mean, percentiles = part["mean"], part["percentiles"]
        step = settings.column_samples(recording.rate) / recording.rate
        offsets = np.round(np.arange(len(mean)) * step * 1e9).astype("timedelta64[ns]")
        columns.append((recording.begin + offsets, mean, percentiles))
    times, mean, percentiles = (np.concatenate(arrays) for arrays in zip(*columns))
    order = np.argsort(times, kind="stable")
    rate = done[0][0].rate
    density = {"units": "1/Hz", "long_name": "power density, of full scale"}
    data = xarray.Dataset(
        {"mean": (("time", "frequency"), mean[order], density),
         "percentiles": (("time", "percentile", "frequency"), percentiles[order], density)},
        {"time": ("time", times[order], {"long_name": "beginning of the column"}),
         "frequency": ("frequency", np.fft.rfftfreq(settings.window, 1 / rate), {"units": "Hz"}),
         "percentile": ("percentile", np.array(settings.percentiles, float), {"units": "%"})},
        {"window": settings.window, "hop": settings.hop, "rate": rate, "channel": settings.channel,
         "column_seconds": settings.column_samples(rate) / rate,
         "snapshot_seconds": settings.frames(rate) * settings.hop / rate})
    chunks = {name: {"chunks": (min(4096, array.sizes["time"]), *array.shape[1:])}
              for name, array in data.data_vars.items()}
    store, picture = os.path.join(out, "longterm.zarr"), os.path.join(out, "longterm.png")
    write_whole(store, lambda place: data.to_zarr(place, encoding=chunks, consolidated=True))
    write_whole(picture, lambda place: draw(data, place))
    print(f"{store}\n{picture}")


def draw(data, file):
    """Days over frequency, and the percentiles of all columns."""
    import matplotlib

    matplotlib.use("agg")
    import matplotlib.dates
    import matplotlib.pyplot as plt

    with np.errstate(divide="ignore"):
        level = 10 * np.log10(data["mean"].values)
    times, frequencies = data["time"].values, data["frequency"].values
    width = np.timedelta64(round(data.attrs["column_seconds"] * 1e9), "ns")
    span = times[-1] + width - times[0]
    pixels = int(min(800, -(-span // width)))
    # A pixel is the mean of its columns. Many recorders sleep in turns: a pixel without columns is
    # like the one before it for as long as they usually sleep, and empty after that.
    at = ((times - times[0]) / span * pixels).astype(int)
    sums, counts = np.zeros((pixels, len(frequencies))), np.zeros(pixels)
    np.add.at(sums, at, level)
    np.add.at(counts, at, 1)
    steps = np.diff(times)
    sleeps = steps[steps > 1.5 * width]
    usual = 1.5 * (np.median(sleeps) / span) * pixels if len(sleeps) else 0
    every = np.arange(pixels)
    latest = np.maximum.accumulate(np.where(counts > 0, every, 0))
    image = (sums / np.maximum(counts, 1)[:, None])[latest]
    image[every - latest > usual] = np.nan
    finite = image[np.isfinite(image)]
    low, high = np.percentile(finite, (1, 99.5)) if finite.size else (-1, 0)

    figure, (upper, lower) = plt.subplots(2, 1, figsize=(11, 8), layout="constrained",
                                          height_ratios=(3, 2))
    half = frequencies[1] / 2
    ends = matplotlib.dates.date2num([times[0], times[-1] + width])
    shown = upper.imshow(image.T, origin="lower", aspect="auto", interpolation="nearest", vmin=low,
                         vmax=high, extent=(*ends, -half, frequencies[-1] + half))
    upper.xaxis_date()
    upper.xaxis.set_major_formatter(
        matplotlib.dates.ConciseDateFormatter(upper.xaxis.get_major_locator()))
    upper.set_ylim(0, frequencies[-1])
    upper.set_ylabel("frequency")
    figure.colorbar(shown, ax=upper, label="dB of full scale / Hz")
    for percentile in (95, 75, 50, 25, 5):
        lower.plot(frequencies, np.percentile(level, percentile, 0), label=f"{percentile} %")
    lower.set_xlim(0, frequencies[-1])
    lower.set_xlabel("frequency")
    lower.set_ylabel("dB of full scale / Hz")
    lower.legend(title=f"of {len(times)} columns of {data.attrs['column_seconds']:g} s")
    lower.grid(alpha=0.3)
    upper.yaxis.set_major_formatter(matplotlib.ticker.EngFormatter("Hz"))
    lower.xaxis.set_major_formatter(matplotlib.ticker.EngFormatter("Hz"))
    figure.savefig(file, dpi=100)
    plt.close(figure)
