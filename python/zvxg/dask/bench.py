"""python3 -m zvxg.dask bench: spectra of generated sound in workers, beside plain processes and SciPy.

Sound of as many bytes as one likes goes in chunks of 64 MB through average_spectrum(), or through stft()
and the mean of its magnitudes. The same is done chunk by chunk by zvxg without Dask, in one process
and in one for each worker at once, which is what workers could reach; and by Dask with
scipy.signal in the tasks.
"""

import concurrent.futures
import contextlib
import multiprocessing
import resource
import threading
import time

import dask
import dask.array as da
import distributed
import numpy as np

import zvxg

from .. import dask as zd
from ._cluster import local_cluster

SAMPLES = 2**24  # of a chunk
WINDOW, HOP = 64, 16
BINS = WINDOW // 2 + 1


def sound(k):
    """Uniform noise, as no other sound takes so little time to make."""
    x = np.random.Generator(np.random.SFC64([1, k])).random(SAMPLES, dtype=np.float32)
    x -= np.float32(0.5)
    return x


def of_magnitudes(spectra):
    """Bin by bin, as all magnitudes would take half the memory of the spectra."""
    return np.array([abs(row).mean() for row in spectra])


def welch(x):
    import scipy.signal

    return scipy.signal.welch(x, 1, "hann", WINDOW, WINDOW - HOP, detrend=False)[1]


def stft(x):
    import scipy.signal

    return of_magnitudes(scipy.signal.stft(x, 1, "hann", WINDOW, WINDOW - HOP)[2])


def by_chunks(function, x):
    """The mean over chunks along the last axis."""
    rows = x.map_blocks(lambda block: function(block)[:, None], dtype="f4",
                        new_axis=0 if x.ndim == 1 else None,
                        chunks=((BINS,), (1,) * x.numblocks[-1]))
    return rows.mean(axis=-1)


# By zvxg.dask, by zvxg on one chunk, and by SciPy on one chunk.
PROGRAMS = {
    "average_spectrum": (lambda x: zd.average_spectrum(x, WINDOW, HOP),
                         lambda x: zvxg.average_spectrum(x, WINDOW, HOP), welch),
    "stft": (lambda x: by_chunks(of_magnitudes, zd.stft(x, WINDOW, HOP)),
             lambda x: of_magnitudes(zvxg.stft(x, WINDOW, HOP)), stft),
}


def lazy_sound(chunks):
    name = "sound-" + dask.base.tokenize(chunks)
    return da.Array({(name, k): (sound, k) for k in range(chunks)}, name, ((SAMPLES,) * chunks,), "f4")


def usage():
    """Seconds of processor time, and the most bytes that were in memory."""
    return time.process_time(), resource.getrusage(resource.RUSAGE_SELF).ru_maxrss * 1024


def plainly(name, chunks, start):
    function = PROGRAMS[name][1]
    function(sound(0)[:1000])  # imports, and finds the library
    start.wait()
    begin, before = time.perf_counter(), usage()[0]
    for k in range(chunks):
        function(sound(k))
    after, peak = usage()
    return time.perf_counter() - begin, after - before, peak


def in_processes(name, chunks, processes):
    """The longest time, processor time of all, the highest peak."""
    context = multiprocessing.get_context("spawn")
    with context.Manager() as manager, concurrent.futures.ProcessPoolExecutor(processes, context) as pool:
        start = manager.Barrier(processes)
        runs = [pool.submit(plainly, name, chunks // processes, start) for _ in range(processes)]
        times, seconds, peaks = zip(*(run.result() for run in runs))
    return max(times), sum(seconds), max(peaks)


@contextlib.contextmanager
def watched(cluster):
    """Counts how often a worker was seen paused, or with chunks on the disk."""
    seen, done = {"paused": 0, "spilled": 0}, threading.Event()

    def watch():
        while not done.wait(0.1):
            for worker in list(cluster.scheduler.workers.values()):
                seen["paused"] += worker.status == distributed.Status.paused
                seen["spilled"] += worker.metrics["spilled_bytes"]["disk"] > 0

    thread = threading.Thread(target=watch)
    thread.start()
    try:
        yield seen
    finally:
        done.set()
        thread.join()


def in_workers(lazy, function, workers, memory):
    """As in_processes(), and what went wrong. `function` does for a chunk what `lazy` does for all."""
    with (local_cluster(workers, memory, dashboard_address=None) as cluster,
          distributed.Client(cluster) as client, watched(cluster) as seen):
        client.run(lambda: function(sound(0)[:1000]))
        before, begin = client.run(usage), time.perf_counter()
        lazy.compute()
        elapsed, after = time.perf_counter() - begin, client.run(usage)
        seen["ended"] = len(before.keys() - after.keys())
        return (elapsed, sum(after[w][0] - before.get(w, (0, 0))[0] for w in after),
                max(peak for _, peak in after.values()), seen)


def main(arguments):
    chunks = max(1, round(arguments.gigabytes * 1e9 / (4 * SAMPLES)))
    few = min(chunks, 8 * arguments.workers)
    for name in arguments.programs or PROGRAMS:
        lazily, ours, of_scipy = PROGRAMS[name]
        print(f"{name}: MB a second of a processor, and of processor time; GB at most in a process")
        for what, count, cores, measure in (
            ("one process", few, 1, lambda n: in_processes(name, n, 1)),
            (f"{arguments.workers} processes", few, arguments.workers,
             lambda n: in_processes(name, n, arguments.workers)),
            (f"{arguments.workers} workers", chunks, arguments.workers,
             lambda n: in_workers(lazily(lazy_sound(n)), ours, arguments.workers, arguments.memory)),
            ("scipy.signal in them", few, arguments.workers,
             lambda n: in_workers(by_chunks(of_scipy, lazy_sound(n)), of_scipy, arguments.workers, None)),
        ):
            elapsed, seconds, peak, *seen = measure(count)
            size = count * SAMPLES * 4e-6
            print(f"  {what:22}{size / elapsed / cores:6.0f}{size / seconds:6.0f}{peak * 1e-9:7.2f}"
                  f"   {count} chunks, {elapsed:.1f} s", *seen, flush=True)
    return 0
