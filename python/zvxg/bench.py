"""python3 -m zvxg bench: times of one call and of a batch, beside those of other libraries.

All peers are measured in turns, so that a change of the processor's clock meets all of them, and the
median of the turns counts. pyFFTW transforms by a plan made beforehand, with FFTW_MEASURE, between
arrays that are its own; its peer is our call with `out`, as neither makes an array.
"""

import csv
import os
import platform
import time

import numpy as np

import zvxg

TURNS = 15
SECONDS = 0.02  # of a turn


def peers(name, x):
    """Calls that do the same by each library that is installed."""
    ours = getattr(zvxg, name)
    result = ours(x)
    calls = {"zvxg": lambda: ours(x), "zvxg, out": lambda: ours(x, out=result),
             "numpy": lambda: getattr(np.fft, name)(x)}
    try:
        import scipy.fft

        calls["scipy"] = lambda: getattr(scipy.fft, name)(x)
    except ImportError:
        pass
    try:
        import pyfftw

        calls["pyfftw"] = planned(pyfftw, name, x)
    except ImportError:
        pass
    return calls


def planned(pyfftw, name, x):
    shape = x.shape if name == "fft" else x.shape[:-1] + (x.shape[-1] // 2 + 1,)
    source = pyfftw.empty_aligned(x.shape, x.dtype)
    result = pyfftw.empty_aligned(shape, np.result_type(x.dtype, "F"))
    plan = pyfftw.FFTW(source, result, axes=(-1,), flags=("FFTW_MEASURE",))
    source[:] = x
    return plan


def medians(calls):
    """Seconds of each call."""
    counts = {}
    for name, call in calls.items():
        call()
        begin = time.perf_counter()
        call()
        counts[name] = max(1, int(SECONDS / max(time.perf_counter() - begin, 1e-7)))
    times = {name: [] for name in calls}
    for _ in range(TURNS):
        for name, call in calls.items():
            turns = range(counts[name])
            begin = time.perf_counter()
            for _ in turns:
                call()
            times[name].append((time.perf_counter() - begin) / counts[name])
    return {name: float(np.median(values)) for name, values in times.items()}


def rows(lengths, batch):
    random = np.random.default_rng(1)
    for signals in (1, batch):
        for name, kind in (("fft", "F"), ("fft", "D"), ("rfft", "f"), ("rfft", "d")):
            for n in lengths:
                shape = (n,) if signals == 1 else (signals, n)
                x = random.normal(size=shape).astype(kind)
                for peer, seconds in medians(peers(name, x)).items():
                    yield {"function": name, "type": x.dtype.name, "n": n, "signals": signals,
                           "library": peer, "seconds": seconds}


def short_time():
    """stft of a minute at 48 kHz, window 64, hop 16."""
    try:
        import scipy.signal
    except ImportError:
        return
    x = np.random.default_rng(1).normal(size=60 * 48000).astype(np.float32)
    window = scipy.signal.get_window("hann", 64)
    calls = {"zvxg": lambda: zvxg.stft(x, window, 16),
             "scipy": lambda: scipy.signal.stft(x, window=window, nperseg=64, noverlap=48)}
    for peer, seconds in medians(calls).items():
        yield {"function": "stft", "type": "float32", "n": 64, "signals": 1, "library": peer,
               "seconds": seconds}


def processor():
    try:
        with open("/proc/cpuinfo", encoding="utf-8") as lines:
            for line in lines:
                if line.startswith("model name"):
                    return line.split(":")[1].strip()
    except OSError:
        pass
    return platform.processor()


PEERS = {"numpy": "zvxg", "scipy": "zvxg", "pyfftw": "zvxg, out"}


def table(results):
    """Prints one line for each case: our times, and those of others as multiples of them."""
    cases = {}
    for row in results:
        case = tuple(row[key] for key in ("function", "type", "signals", "n"))
        cases.setdefault(case, {})[row["library"]] = row["seconds"]
    print(f"{'us':30}{'zvxg':>10}{'with out':>10}" + "".join(f"{name:>9}" for name in PEERS))
    for (function, kind, signals, n), times in cases.items():
        print(f"{function:8}{kind:11}{n:4}{signals:6} "
              + "".join(f"{times[ours] * 1e6:10.2f}" if ours in times else f"{'-':>10}"
                        for ours in ("zvxg", "zvxg, out"))
              + "".join(f"{times[name] / times[ours]:8.1f}x" if name in times else f"{'-':>9}"
                        for name, ours in PEERS.items()))


def draw(results, batch, file):
    import matplotlib

    matplotlib.use("agg")
    import matplotlib.pyplot as plt

    figure, panels = plt.subplots(2, 2, figsize=(10, 7), sharex=True, layout="constrained")
    for column, signals in enumerate((1, batch)):
        for row, (name, kind) in enumerate((("fft", "complex64"), ("rfft", "float32"))):
            panel = panels[row][column]
            times = {}
            for result in results:
                if (result["function"], result["type"], result["signals"]) == (name, kind, signals):
                    times.setdefault(result["library"], {})[result["n"]] = result["seconds"]
            for peer, ours in PEERS.items():
                ratios = {n: seconds / times[ours][n] for n, seconds in times.get(peer, {}).items()}
                panel.plot(list(ratios), list(ratios.values()), "o-", markersize=3, label=peer)
            panel.axhline(1, color="black", linewidth=0.8)
            panel.set_yscale("log")
            panel.set_title(f"{name}, {kind}, " + ("one signal" if signals == 1
                                                   else f"{signals} signals"))
            panel.set_ylabel("time over that of zvxg")
            panel.set_xlabel("points")
            panel.legend()
    figure.suptitle(processor())
    figure.savefig(file)


def main(arguments):
    print(f"{processor()}, NumPy {np.__version__}, times of others over ours")
    results = list(rows(arguments.lengths, arguments.batch)) + list(short_time())
    table(results)
    if arguments.csv:
        with open(arguments.csv, "w", newline="", encoding="utf-8") as file:
            writer = csv.DictWriter(file, list(results[0]))
            writer.writeheader()
            writer.writerows(results)
    if arguments.plot:
        draw(results, arguments.batch, arguments.plot)
        print(os.path.abspath(arguments.plot))
    return 0
