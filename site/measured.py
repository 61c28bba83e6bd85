"""What the figures page draws, from the CSV files that `./dev figures` leaves in docs/figures.

A series is what was measured of one family, direction, layout, precision, variant and batch:

    n, ours, spread            lengths, nanoseconds of a call, percent from there to the median process,
                               if there were several
    bound                      the least nanoseconds that the ports allow, at the clock of the run
    peers                      by name, nanoseconds of the peer at each length
    rms, worst                 errors, which no variant and no batch changes; series of their own

Batches are of no variant: libzvxgmany takes the widest vectors of the processor by itself.
"""

import csv
import re

FAMILIES = {
    "complex-forward": ("complex", "forward", ""),
    "complex-inverse": ("complex", "inverse", ""),
    **{f"real-{direction}-{layout}": ("real", direction, layout)
       for direction in ("forward", "inverse") for layout in ("ccs", "pack", "perm")},
    "hartley": ("hartley", "", ""),
    "wht": ("wht", "", ""),
    "dct4": ("dct4", "", ""),
    "dct4-half": ("dct4", "", ""),
    "dct4-copy": ("dct4", "", ""),
}
PEERS = {"plain-loop": "plain loop", "half-length-complex-FFTW": "FFTW of half length",
         "single-calls": "single calls", "FFTW-many": "FFTW"}


def of_directory(directory):
    runs, series = [], {}
    for path in sorted(directory.glob("*.csv")):
        lines = path.read_text(encoding="utf-8").splitlines()
        about = dict(line[2:].split(": ", 1) for line in lines if line.startswith("# "))
        run = len(runs)
        runs.append({"file": path.name, **{key: about[key] for key in ("date", "cpu", "library", "built with")},
                     "run": about.get("run") or about["numbers"]})
        for row in csv.DictReader(line for line in lines if not line.startswith("#")):
            if runs[run]["run"].startswith("best of 1 "):
                row.pop("ours_spread")
            add(series, run, re.search("variant (\\w+)", about["library"])[1], row)
    return {"runs": runs, "series": list(series.values())}


def add(series, run, variant, row):
    many = re.fullmatch("many-(rows|contiguous|to-rows)-(L1|L2|memory)-(.*)", row["family"])
    batch, family = (f"{many[1]}-{many[2]}", many[3]) if many else ("single", row["family"])
    variant = "" if many else variant
    if family not in FAMILIES:
        return
    is_error = "rms" in row
    key = (*FAMILIES[family], row["bits"], *(("", "") if is_error else (variant, batch)))
    of = series.setdefault((is_error, *key), {
        **dict(zip(("family", "direction", "layout", "bits", "variant", "batch"), key)), "run": run, "n": [],
        "symbol": re.sub(r"_\d+_", "_<N>_", row["symbol"])})
    n = int(row["n"])
    if n not in of["n"]:
        of["n"].append(n)
        for name, column in (("rms", "rms"), ("worst", "worst"), ("ours", "ours_ns"),
                             ("spread", "ours_spread"), ("bound", "bound_ns")):
            if column in row:
                of.setdefault(name, []).append(number(row[column]))
    if not is_error:
        peers = of.setdefault("peers", {})
        for peer, ns in times_of_peers(row):
            peers.setdefault(peer, {})[n] = ns


def times_of_peers(row):
    """Of several peers the file has the time of the fastest, and for batches the ratio to each."""
    if row["family"].startswith("many-") and row["second_ratio"]:
        return [(name, round(float(row["ours_ns"]) * float(row[column]), 3))
                for name, column in (("single calls", "first_ratio"), ("FFTW", "second_ratio"))]
    name = PEERS.get(row["peer"], "FFTW" if row["peer"].startswith("FFTW") else row["peer"])
    return [(name, number(row["peer_ns"]))] if row["peer_ns"] else []


def number(text):
    if not text:
        return None
    value = float(text)
    return int(value) if value.is_integer() else value
