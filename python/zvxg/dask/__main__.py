"""python3 -m zvxg.dask longterm FILES... --out DIR: spectra of recordings of days or years.

Writes DIR/longterm.zarr, with mean power densities and percentiles over time and frequency, and
DIR/longterm.png. A run that was interrupted goes on where it was. A file that cannot be used is named
and skipped; the run then ends with the status 1.
"""

import argparse
import contextlib
import os
import signal
import sys

import numpy as np


def positive(kind):
    def parse(text):
        value = kind(text)
        if not value > 0:
            raise argparse.ArgumentTypeError(f"{text} is not greater than 0")
        return value

    return parse


def parser():
    parser = argparse.ArgumentParser(prog="python3 -m zvxg.dask", description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    commands = parser.add_subparsers(dest="command", metavar="COMMAND", required=True)
    bench = commands.add_parser("bench", help="throughput of workers, of processes without Dask, and of "
                                "SciPy in workers")
    bench.add_argument("--program", dest="programs", choices=["average_spectrum", "stft"],
                       action="append", help="one of them; both")
    bench.add_argument("--gigabytes", type=positive(float), default=2, help="of sound; 2")
    bench.add_argument("--workers", metavar="N", type=positive(int), default=os.cpu_count(),
                       help="processes; one for each processor")
    bench.add_argument("--memory", metavar="SIZE", default="1GB", help="limit of each of them; 1GB")
    command = commands.add_parser("longterm", help="long-term spectra of recordings")
    add = command.add_argument
    add("files", metavar="FILE", nargs="+", help="WAV, FLAC and what else libsndfile reads; their "
        "names have the times at which they begin, such as 20240229_235900")
    add("--out", metavar="DIR", required=True)
    add("--column", metavar="SECONDS", type=positive(float), default=60, help="of a column; 60")
    add("--snapshot", metavar="SECONDS", type=positive(float), default=1,
        help="of what the percentiles of a column are of; 1")
    add("--percentiles", metavar="P", type=float, nargs="+", default=[1, 5, 25, 50, 75, 95, 99])
    add("--window", metavar="SAMPLES", type=int, default=64, help="a Hann window of 2 to 64; 64")
    add("--hop", metavar="SAMPLES", type=int, help="from frame to frame; half a window")
    add("--channel", metavar="C", type=int, default=0, help="counted from 0; 0")
    add("--start", metavar="TIME", type=lambda text: np.datetime64(text, "ns"),
        help="places files one after another from this time on, whatever their names are")
    add("--scheduler", metavar="ADDRESS", help="of a cluster whose workers see the files")
    add("--workers", metavar="N", type=positive(int), default=os.cpu_count(),
        help="processes here, if there is no --scheduler; one for each processor")
    add("--memory", metavar="SIZE", default="auto", help="limit of each of them, such as 1GB")
    return parser


def main():
    options = parser()
    given = options.parse_args()
    if given.command == "bench":
        from . import bench

        return bench.main(given)
    from .longterm import Settings, run

    hop = given.hop or given.window // 2
    if not 2 <= given.window <= 64 or not 1 <= hop <= given.window or given.channel < 0:
        options.error("--window takes 2 to 64, --hop 1 to the window, and --channel 0 or more")
    if not all(0 <= p <= 100 for p in given.percentiles):
        options.error("--percentiles takes numbers from 0 to 100")
    settings = Settings(given.window, hop, given.snapshot, given.column, tuple(given.percentiles),
                        given.channel)
    signal.signal(signal.SIGTERM, signal.default_int_handler)
    import distributed

    from ._cluster import local_cluster

    try:
        with contextlib.ExitStack() as stack:
            address = given.scheduler
            if address is None:
                address = stack.enter_context(
                    local_cluster(given.workers, given.memory, dashboard_address=":0"))
            client = stack.enter_context(distributed.Client(address))
            return 1 if run(given.files, given.out, settings, client, given.start) else 0
    except KeyboardInterrupt:
        print("\ninterrupted; the same command goes on where it was", file=sys.stderr)
        return 130


if __name__ == "__main__":
    sys.exit(main())
