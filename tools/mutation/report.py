"""Writes what came out of the faults as a document."""

import json
import os

from exempt import EXEMPT, SURVIVORS
from outcomes import MADE, ROOT

HEAD = """# Mutation testing

Single faults are seeded into copies of the code, and those fast tests that can see them run on the
copies: {found:,} of {seeded:,} faults are found. `./dev mutation` does this in an hour and
writes this file. `./dev mutation dct4` does one line of the table; `--count` sets the number of faults,
and `--seed` selects others.

| faults in | seeded | found | |
|---|---|---|---|
{kinds}
- **kernels**: one fault in the text of a kernel. It is the sign of a sum, swapped operands of a
  difference, a wrong operand, a wrong element loaded or stored, a wrong lane of a shuffle, the last bit
  of a constant or of a scale factor, forward and inverse factors exchanged, or a dropped scale. Where
  results are single but computed in double, the last bit of a constant is that of single precision;
  smaller changes hardly ever reach a result. {others:,} are found without `tests/hashes.csv`.
- **generator** (`tools/kernelgen/`), and the code written by hand: **frame** (`src/frame/`), **wht**,
  **dct4**, **companion** (`include/zvxg/`). A fault is an operator, an integer, a truth value, a status,
  exchanged arguments or cells, or a dropped statement. Some of those in the generator are found by the
  ledger of operation counts; for the others the four shortest kernels that change are compiled and
  tested.

A change does not count as a fault if it does not compile, if it compiles or prints to the same, or if
the kernels compute the same in another order. A test that takes ten times as long as usual has found
the fault.

## Not found

| where | before | after | why |
|---|---|---|---|
{survivors}
## Where no faults are seeded

| file | line with | why |
|---|---|---|
{exempt}"""


def reason(outcome):
    for file, line, why in SURVIVORS:
        if outcome["file"].endswith(file) and line in outcome["before"]:
            return why
    return "**not explained**"


def code(text):
    return "`" + " ".join(text.split()).replace("|", "\\|") + "`" if text else "dropped"


def write(kinds):
    rows, every, others = "", [], 0
    for kind in kinds:
        results = f"{MADE}/{kind}.json"
        if not os.path.exists(results):
            rows += f"| {kind} | not run | | |\n"
            continue
        with open(results, encoding="utf-8") as file:
            outcomes = json.load(file)
        found = sum(outcome["found"] != "" for outcome in outcomes)
        rows += f"| {kind} | {len(outcomes):,} | {found:,} | {100 * found / len(outcomes):.1f} % |\n"
        every += outcomes
        if kind == "kernels":
            others = sum(outcome["found"] not in ("", "hashes") for outcome in outcomes)
    missed = [outcome for outcome in every if not outcome["found"]]
    survivors = "".join(
        f"| {outcome['file']}, {outcome['line']} | {code(outcome['before'])} "
        f"| {code(outcome['after'])} | {reason(outcome)} |\n"
        for outcome in missed
    )
    exempt = "".join(f"| {file} | {code(line)} | {why} |\n" for file, line, why in EXEMPT)
    with open(f"{ROOT}/docs/mutation.md", "w", encoding="utf-8") as file:
        file.write(HEAD.format(
            found=len(every) - len(missed), seeded=len(every), kinds=rows, others=others,
            survivors=survivors, exempt=exempt,
        ))  # fmt: skip
