"""python3 -m zvxg: what runs, and whether it is right. python3 -m zvxg bench: how fast it is."""

import argparse
import sys

import numpy as np

import zvxg


def self_check():
    """The largest relative error over all short lengths and types, by the definition."""
    worst = {}
    random = np.random.default_rng(1)
    for n in range(2, 65):
        turns = np.outer(np.arange(n), np.arange(n)) % n * (2 / n)
        matrix = np.exp(-1j * np.pi * turns)
        for kind, epsilon in (("f", 2**-24), ("d", 2**-53)):
            x = random.normal(size=(3, n)).astype(kind)
            spectrum = x.astype(float) @ matrix
            size = np.linalg.norm(spectrum) * epsilon
            for name, got, expected in (
                ("fft", zvxg.fft(x), spectrum),
                ("ifft", zvxg.ifft(zvxg.fft(x)), x),
                ("rfft", zvxg.rfft(x), spectrum[:, : n // 2 + 1]),
                ("irfft", zvxg.irfft(zvxg.rfft(x), n), x),
                ("hartley", zvxg.hartley(x), spectrum.real - spectrum.imag),
            ):
                error = np.linalg.norm(got - expected) / size
                worst[name] = max(worst.get(name, 0), error)
    return worst


def report():
    library = zvxg.library()
    print(f"zvxg {zvxg.__version__}, library {library['version']} in {library['file']}")
    vectors = {1: 256, 2: 512}[library["many_level"]]
    print(f"processor variant {library['cpu']}; batches in vectors of {vectors} bits")
    worst = self_check()
    right = all(error < 8 for error in worst.values())
    errors = ", ".join(f"{name} {error:.1f}" for name, error in worst.items())
    print(f"self-check {'passed' if right else 'FAILED'}; largest error in units of rounding: {errors}")
    return 0 if right else 1


def main():
    parser = argparse.ArgumentParser(prog="python3 -m zvxg", description=__doc__)
    commands = parser.add_subparsers(dest="command", metavar="bench")
    bench = commands.add_parser("bench", help="compare with NumPy, SciPy and pyFFTW")
    bench.add_argument("--plot", metavar="FILE", help="draw the ratios, as SVG, PNG or PDF")
    bench.add_argument("--csv", metavar="FILE", help="write the times")
    bench.add_argument("--lengths", metavar="N", type=int, nargs="+",
                       default=[8, 16, 20, 32, 48, 60, 61, 64])
    bench.add_argument("--batch", metavar="SIGNALS", type=int, default=10000)
    arguments = parser.parse_args()
    if arguments.command is None:
        return report()
    from . import bench as measurements

    return measurements.main(arguments)


if __name__ == "__main__":
    sys.exit(main())
