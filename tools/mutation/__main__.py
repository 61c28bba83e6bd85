"""Seeds single faults into the generated kernels, the generator and the code written by hand, and
counts how many of them the tests of the fast round find. The tree is not changed: all that is made
goes to build/mutation. What came out goes to docs/mutation.md."""

import argparse
import functools
import json

import report
from generator import generator
from kernels import kernels
from library import PARTS, library
from outcomes import MADE, say

KINDS = {"kernels": kernels, "generator": generator}
KINDS |= {name: functools.partial(library, name) for name in PARTS}


def main():
    parser = argparse.ArgumentParser(prog="./dev mutation", description=__doc__)
    parser.add_argument("--count", type=int, help="of each kind, instead of its own number")
    parser.add_argument("--seed", type=int, default=20090610)
    parser.add_argument("kinds", nargs="*", metavar="KIND", help=", ".join(KINDS))
    options = parser.parse_args()
    for kind in options.kinds or KINDS:
        outcomes = KINDS[kind](options)
        with open(f"{MADE}/{kind}.json", "w", encoding="utf-8") as file:
            json.dump([outcome._asdict() for outcome in outcomes], file, indent=1)
        missed = [outcome for outcome in outcomes if not outcome.found]
        say(f"{kind}: {len(outcomes)} faults, {len(missed)} not found", *missed, sep="\n")
    report.write(KINDS)


if __name__ == "__main__":
    main()
