"""Runs the test programs of the fast round on a changed copy of the library."""

import os
import re
import resource
import subprocess

from outcomes import BUILD, ROOT

# With the most seconds that a program may take, some ten times what it does.
PROGRAMS = {
    "hashes": (20, ["zvxg_hashes", "check", "tests/hashes.csv"]),
    "tests": (300, ["zvxg_tests"]),
    "sizes": (60, ["zvxg_tests", "--gtest_filter=Sizes.*"]),
    "dct4": (60, ["zvxg_dct4_tests", "--gtest_filter=-Dct4Large*"]),
    "reliability": (300, ["zvxg_reliability_tests"]),
    "many": (300, ["zvxg_many_tests", "--gtest_filter=*/Avx"]),
}

MEMORY = 4 << 30


def started(words, seconds, **options):
    """Runs a program with a limit of its processor time, as others may have the processor for long,
    and of its memory, which a fault in a loop would take all of."""

    def limit():
        resource.setrlimit(resource.RLIMIT_CPU, (seconds, seconds))
        resource.setrlimit(resource.RLIMIT_AS, (MEMORY, MEMORY))

    return subprocess.run(
        words, capture_output=True, check=False, cwd=ROOT, preexec_fn=limit, **options
    )


def failure(program, library, kernel="", arguments=()):
    """What a program says that fails on a library, "" if it passes. A crash is a failure, and so is
    an end by the limit."""
    seconds, words = PROGRAMS[program]
    under_test = "ZVXG_MANY_LIBRARY" if "many" in os.path.basename(library) else "ZVXG_LIBRARY"
    environment = os.environ | {under_test: library, "ZVXG_KERNEL": kernel, "GTEST_BRIEF": "1"}
    words = [f"{BUILD}/tests/{words[0]}", *words[1:], *arguments]
    result = started(words, seconds, env=environment)
    output = (result.stdout + result.stderr).decode(errors="replace")
    # Of one kernel, the other lines of the file of hashes are missed in any case.
    missed = program == "hashes" and kernel and "other bits: " not in output
    failed = result.returncode < 0 if missed else result.returncode != 0
    return (output or "no output") if failed else ""


def symbols(output):
    """The kernels that are named in failures."""
    return set(re.findall(r"\b(?:other bits: |\d+: )(zvxg\w+_\d+_\d+fc?)\b", output))
