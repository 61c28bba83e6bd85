"""What the kinds of faults have in common: outcomes, and which faults are taken."""

import collections
import concurrent.futures
import math
import os
import random
import re
import sys

import faults

ROOT = os.path.abspath(os.path.join(os.path.dirname(__file__), "..", ".."))
BUILD = f"{ROOT}/build/release"
MADE = f"{ROOT}/build/mutation"
DOCUMENT = f"{ROOT}/docs/mutation.md"
WORKERS = len(os.sched_getaffinity(0))

# Where the fault was, what was changed into what, and which tests found it, "" if none did.
Outcome = collections.namedtuple("Outcome", "file kind line before after found")


def document():
    with open(DOCUMENT, encoding="utf-8") as file:
        return file.read()


def table(heading):
    """The rows of a table that is kept by hand: a file, a part of a line, and why."""
    section = document().partition(f"## {heading}\n")[2].partition("\n## ")[0]
    return re.findall(r"^\| (\S+) \| `(.*)` \| (.*) \|$", section, re.M)


def say(*words, sep=" "):
    print(*words, sep=sep, file=sys.stderr, flush=True)


def parallel(function, items):
    with concurrent.futures.ThreadPoolExecutor(WORKERS) as pool:
        return list(pool.map(function, items))


def seeds(files, count, seed):
    """Faults with their files and texts, spread over the files by what can go wrong in each."""
    possible, exempt = {}, table("Where no faults are seeded")
    for file in sorted(files):
        with open(f"{ROOT}/{file}", encoding="utf-8") as opened:
            text = opened.read()
        lines = [line for name, line, _ in exempt if file.endswith(name)]
        possible[file] = text, [
            fault
            for fault in faults.code_faults(text)
            if not any(line in faults.described(text, fault)[2] for line in lines)
        ]
    total = sum(len(listed) for _, listed in possible.values())
    seeded = []
    for file, (text, listed) in possible.items():
        # The faults of a file stay while others change.
        chance = random.Random(f"{seed} {file}")
        share = math.ceil(count * len(listed) / total)
        seeded += [(file, fault, text) for fault in faults.pick(listed, chance, share)]
    return seeded
