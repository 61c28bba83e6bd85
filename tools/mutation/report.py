"""Writes what came out of the faults as a document."""

import json
import os

from exempt import EXEMPT, SURVIVORS
from outcomes import MADE, ROOT

HEAD = """# Mutation testing

Single faults are seeded into copies of the code, and the tests of the fast round that can see them
run on the copies: {found:,} of {seeded:,} faults are found. `./dev mutation` does it in an hour and
writes this file; `./dev mutation dct4` does one line of it, `--count` seeds more or fewer faults and
`--seed` others.

| faults in | seeded | found | |
|---|---|---|---|
{kinds}
- **kernels**: one fault in the text of a kernel: the sign of a sum, exchanged operands of a
  difference, another operand, another element loaded or stored, another lane of a shuffle, a constant
  or a factor of a flag in its last bit, the factors of forward and inverse, a dropped scale. Where
  results are single but computed in double, the last bit of a constant is that of single precision;
  finer ones hardly ever reach a result. {others:,} are found without the hashes of `tests/hashes.csv`.
- **generator** (`tools/kernelgen/`), and what is written by hand: **frame** (`src/frame/`),
  **wht**, **dct4**, **companion** (`include/zvxg/`): operators, integers, truth values, statuses,
  exchanged arguments and cells, dropped statements. The ledger of operation counts finds
  some of those in the generator; for the others the four shortest kernels that come out changed are
  compiled and tested.

What does not compile is no fault, nor what compiles or prints to the same, or makes kernels that
compute the same in another order. A test that takes ten times its time has found one.

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
