"""Writes what came out of the faults into docs/mutation.md."""

import json
import os
import re

from outcomes import DOCUMENT, MADE, document, table

def reason(outcome):
    for file, line, why in table("Survivors"):
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
    text = document()
    for old, new in (
        (r"[\d,]+ of [\d,]+(?= faults are found)", f"{len(every) - len(missed):,} of {len(every):,}"),
        (r"[\d,]+(?= are found without `tests/hashes)", f"{others:,}"),
        (r"(?<=\| faults in \| seeded \| found \| \|\n\|---\|---\|---\|---\|\n)(\|.*\n)*", rows),
        (r"(?<=\| where \| before \| after \| why \|\n\|---\|---\|---\|---\|\n)(\|.*\n)*", survivors),
    ):
        text = re.sub(old, lambda _, new=new: new, text)
    with open(DOCUMENT, "w", encoding="utf-8") as file:
        file.write(text)
