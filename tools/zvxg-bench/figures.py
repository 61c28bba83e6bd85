"""Prints docs/figures.md from the CSV files of `./dev figures`: speed.csv of `zvxg-bench speed`, many.csv
of the same for batches, accuracy.csv of `zvxg-bench accuracy`, and speed_v3.csv and speed_v4.csv of the
variants, where there is a processor that runs them.

usage: figures.py DIRECTORY >docs/figures.md
"""

import csv
import math
import pathlib
import sys

NAMES = {
    "complex-forward": "complex DFT, forward",
    "complex-inverse": "complex DFT, inverse",
    "real-forward-ccs": "real to CCS",
    "real-forward-pack": "real to Pack",
    "real-forward-perm": "real to Perm",
    "real-inverse-ccs": "CCS to real",
    "real-inverse-pack": "Pack to real",
    "real-inverse-perm": "Perm to real",
    "hartley": "Hartley",
    "wht": "Walsh-Hadamard",
    "dct4": "DCT-IV",
    "dct4-half": "DCT-IV",
}
LAYOUTS = {"rows": "element-major", "contiguous": "contiguous",
           "to-rows": "contiguous to element-major"}
PRECISIONS = {"32": "single", "64": "double"}
BY_LENGTH = ("complex-forward", "complex-inverse", "real-forward-ccs", "real-inverse-ccs",
             "hartley")
VARIANTS = {"v3": "v3 (AVX2)", "v4": "v4 (AVX-512)"}


class Measurements:
    """The rows of a CSV file by family and bits, and the account of the run in its comments."""

    def __init__(self, path):
        with open(path, encoding="utf-8") as file:
            lines = file.read().splitlines()
        comments = [line[2:].split(": ", 1) for line in lines if line.startswith("# ")]
        self.about = dict(comments)
        self.groups = {}
        for row in csv.DictReader(line for line in lines if not line.startswith("#")):
            self.groups.setdefault((row["family"], row["bits"]), []).append(row)

    def of(self, family, bits):
        return self.groups.get((family, bits), [])

    def at(self, family, bits, n):
        return next((row for row in self.of(family, bits) if row["n"] == str(n)), None)


def table(head, rows):
    print("| " + " | ".join(head) + " |")
    print("|" + "---|" * len(head))
    for row in rows:
        print("| " + " | ".join(row) + " |")
    print()


def time(ns):
    for unit, size in ("ms", 1e6), ("us", 1e3):
        if ns >= size:
            return f"{ns / size:.3g} {unit}"
    return f"{ns:.3g} ns"


def summary(rows, column):
    """The geometric mean of a ratio, the least one, and the lengths below 1."""
    ratios = {row["n"]: float(row[column]) for row in rows if row[column]}
    if not ratios:
        return "", "", ""
    least = min(ratios, key=ratios.get)
    mean = math.exp(sum(map(math.log, ratios.values())) / len(ratios))
    below = [n for n, ratio in ratios.items() if ratio < 1]
    return f"{mean:.2f}", f"{ratios[least]:.2f} ({least})", ", ".join(below) or "none"


def ratios_of_batches(many):
    for family, name in NAMES.items():
        for layout, in_words in LAYOUTS.items():
            for bits, precision in PRECISIONS.items():
                rows = many.of(f"many-{layout}-L1-{family}", bits)
                if rows:
                    # Where FFTW has no such transform, single calls are the only peer.
                    single = "first_ratio" if rows[0]["first_ratio"] else "ratio"
                    yield (name, precision, in_words, *summary(rows, single),
                           *summary(rows, "second_ratio"))


def ratios_by_family(speed):
    for family, name in NAMES.items():
        for bits, precision in PRECISIONS.items():
            rows = [row for row in speed.of(family, bits) if row["ratio"]]
            if not rows:
                continue
            most = max(rows, key=lambda row: float(row["ratio"]))
            mean, least, below = summary(rows, "ratio")
            yield (name, precision, peers(rows), mean, least,
                   f"{float(most['ratio']):.2f} ({most['n']})", below)


def ratios_of_variants(speed, variants):
    for family, name in NAMES.items():
        for bits, precision in PRECISIONS.items():
            if rows := speed.of(family, bits):
                base, *others = (summary(run.of(family, bits), "ratio") for run in (speed, *variants))
                yield (name, precision, peers(rows), base[0],
                       *(cell for other in others for cell in other))


def peers(rows):
    return ", ".join(sorted({row["peer"] for row in rows if row["ratio"]}))


def times_by_length(speed, bits):
    lengths = [row["n"] for row in speed.of(BY_LENGTH[0], bits)]
    for n in lengths:
        cells = [n]
        for family in BY_LENGTH:
            row = speed.at(family, bits, n)
            ratio = float(row["ratio"])
            text = f"{float(row['ours_ns']):.1f} ({ratio:.2f})"
            cells.append(f"**{text}**" if ratio < 1 else text)
        yield cells


def wht_rows(speed):
    for single in speed.of("wht", "32"):
        cells = [single["n"]]
        for row in single, speed.at("wht", "64", single["n"]):
            cells += [time(float(row["ours_ns"])), row["adds_per_ns"],
                      f"{float(row['share_of_adds']):.0f} %", f"{float(row['ratio']):.1f}"]
        yield cells


def dct4_rows(speed, bits):
    def cell(family, n, form):
        row = speed.at(family, bits, n)
        return form(row) if row and row["ratio"] else ""

    for row in speed.of("dct4", bits):
        n = row["n"]
        yield (n, time(float(row["ours_ns"])),
               cell("dct4", n, lambda r: f"{float(r['ratio']):.1f}"),
               cell("dct4-half", n, lambda r: f"{float(r['ratio']):.1f}"),
               cell("dct4-copy", n, lambda r: f"{1 / float(r['ratio']):.0f}"),
               cell("dct4-plan", n, lambda r: time(float(r["ours_ns"]))))


def errors_by_family(accuracy):
    for family, name in NAMES.items():
        for bits, precision in PRECISIONS.items():
            rows = accuracy.of(family, bits)
            if not rows:
                continue
            rms = math.sqrt(sum(float(row["rms"]) ** 2 for row in rows) / len(rows))
            length = max(rows, key=lambda row: float(row["rms"]))
            trial = max(rows, key=lambda row: float(row["worst"]))
            yield (name, precision, f"{rms:.2g}", f"{float(length['rms']):.2g} ({length['n']})",
                   f"{float(trial['worst']):.2g} ({trial['n']})")


def overheads(speed, family):
    """Mean and greatest, of both precisions."""
    values = [[float(row["overhead_ns"]) for row in speed.of(family, bits)]
              for bits in PRECISIONS]
    return [f"{sum(v) / len(v):.1f} ns on average and {max(v):.1f} ns at most" for v in values]


def main(directory):
    directory = pathlib.Path(directory)
    speed, many, accuracy = (Measurements(directory / f"{name}.csv")
                             for name in ("speed", "many", "accuracy"))
    variants = {name: Measurements(path) for level, name in VARIANTS.items()
                if (path := directory / f"speed_{level}.csv").exists()}
    about = speed.about
    print(f"""# Figures

Speed and accuracy of every kernel. `./dev figures` measures everything again and writes this page and
the CSV files in `figures/` that it is made of; the site draws them as one asks.
[`performance.md`](performance.md) explains how it is measured, and why some lengths are slower than FFTW.

- Measured {about["date"]} on {about["cpu"]}, library {about["library"].split(",")[0]} built with
  {about["built with"]}, {about["run"]}.
- FFTW: {about["FFTW, single"]} and {about["FFTW, double"]}. Plans: {about["plans"]}.
  Where FFTW has several ways, the fastest at each length counts.

## Speed

The ratio is the peer's time divided by ours. The table has its geometric mean over all lengths, the
least and the greatest ratio with their lengths, and the lengths at which the peer is faster.

![ratio to FFTW by length](figures/speed.svg)
""")
    table(("transform", "precision", "peer", "mean", "least", "greatest", "below 1"),
          ratios_by_family(speed))
    if variants:
        print("""The same of the [variants](performance.md#variants), of which each was measured with the peers in a run
of its own; beside them the mean of the base.
""")
        heads = [head for name in variants for head in (name, "least", "below 1")]
        table(("transform", "precision", "peer", "base", *heads), ratios_of_variants(speed, variants.values()))
    single, double = overheads(speed, "entries")
    print(f"A by-length entry adds {single} in single precision,\nand {double} in double precision.\n")
    for bits, precision in PRECISIONS.items():
        print(f"### By length, {precision} precision\n\nNanoseconds per call, and in parentheses the ratio.\n")
        table(("N", *(NAMES[family] for family in BY_LENGTH)), times_by_length(speed, bits))
    print("""### Walsh-Hadamard and DCT-IV

![ratio to the peers by length](figures/speed_powers.svg)

Walsh-Hadamard, with a buffer from the caller. **share** is the rate of additions in percent of two
128-bit additions per cycle; the peer is the plain loop of radix-2 stages in 256-bit code.
""")
    table(("N", "single", "adds/ns", "share", "ratio", "double", "adds/ns", "share", "ratio"),
          wht_rows(speed))
    single, double = overheads(speed, "wht-null-buffer")
    print(f"Passing no buffer adds {single} in single precision,\nand {double} in double "
          "precision.\n")
    print("""DCT-IV. **FFTW** is the time of FFTW's `REDFT11` divided by ours, **half length** that of a DCT-IV made
of FFTW's complex transform of N/2 points divided by ours (both planned with `FFTW_ESTIMATE` above
65,536 points). **copies** is our time divided by that of `memcpy` of the same array, and **planning**
is the time of the init function.
""")
    for bits, precision in PRECISIONS.items():
        print(f"{precision.capitalize()} precision:\n")
        table(("N", "time", "FFTW", "half length", "copies", "planning"), dct4_rows(speed, bits))
    about = many.about
    print(f"""## Many transforms in one call

Of libzvxgmany, with the widest vectors that the processor has, in half of a first-level cache. The
ratios are the time of the loop of single calls over contiguous transforms, and that of FFTW's
`plan_many` for the same layout, divided by ours: geometric mean, least ratio with its length, and the
lengths at which the peer is faster.

- Measured {about["date"]} on {about["cpu"]}, library {about["library"].split(",")[0]} built with
  {about["built with"]}, {about["run"]}.

![ratio to single calls and to FFTW, by length](figures/many.svg)
""")
    table(("transform", "precision", "layout", "single calls", "least", "below 1", "FFTW", "least",
           "below 1"), ratios_of_batches(many))
    print(f"""## Accuracy

The L2 norm of the error divided by that of the result, against the definition in long double. The
table has the root mean square over all lengths, the root mean square over the trials of the worst
length, and the worst trial. Numbers: {accuracy.about["numbers"]}.

![error by length](figures/accuracy.svg)
""")
    table(("transform", "precision", "all lengths", "worst length", "worst trial"),
          errors_by_family(accuracy))


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    main(sys.argv[1])
