"""Faults in the generator, one at a time: what it prints is compared with what it should, and some of
the kernels that come out otherwise are compiled and tested."""

import itertools
import os
import re
import subprocess

from checks import failure, started
from copies import NotCompiled, Workshop, compiled, linked_library, sources
from kernels import kernels_of
from outcomes import ROOT, seeds

COMMANDS = ("counts", "header", "entries", "long 0 1", "source 0 1")
IN_TESTS_ONLY = re.compile(r"/(interpret|print|scalar)\.")
KERNELS_TRIED = 4
COUNT = 75
# Tests that do not ask the generator, which is the unchanged one in the test programs.
DEFINED = "--gtest_filter=ByHand.*:Definition.*"
TABLE = re.compile(r"^  static constexpr \w+ (\w+)\[\d+\] = \{\n(.*?)^  \};\n", re.M | re.S)


class Stopped(Exception):
    """The generator ended with an error, or not in time, or what it printed is no C++: no build."""


def arithmetic(kernel):
    """What a kernel computes, whatever the order of its statements and the names and places of its
    values: each expression with the names in it replaced by their expressions."""
    tables = {name: rows.splitlines() for name, rows in TABLE.findall(kernel)}
    values, bases, rest = {}, {}, []

    def place(text):
        array, offset = re.fullmatch(r"at\((\w+), (-?\d+)\)", text).groups()
        return bases[array][0], bases[array][1] + int(offset)

    def value(m):
        if not m[0].startswith("at("):
            return values.get(m[0], m[0])
        array, number = place(m[0])
        if array in tables:
            return tables[array][number].split("//")[0].strip()
        return values.get((array, number), "unset")

    for line in TABLE.sub("", kernel).splitlines():
        line = line.split("//")[0].strip()
        base = re.match(r"(?:const )?\w+\* (\w+) = (\w+) \+ (\d+);", line)
        assigned = re.match(r"(?:const \w+ )?(\w+|at\(.*?\)) = (.*);", line)
        expression = re.sub(r"at\(.*?\)|[A-Za-z_]\w*", value, assigned[2] if assigned else line)
        if base:
            bases[base[1]] = base[2], int(base[3])
        elif assigned:
            operands = re.fullmatch(r"(\S+) ([+*]) (\S+)", expression)
            if operands:
                expression = operands[2].join(sorted((operands[1], operands[3])))
            target = place(assigned[1]) if assigned[1].startswith("at(") else assigned[1]
            values[target] = f"v{hash(expression)}"
        elif not re.match(r"\w+ saved", line):
            rest.append(expression)
    return sorted(rest)


class Generator(Workshop):
    def __init__(self):
        parts = "zvxg_kernel_id", "zvxg_kernelgen_core", "zvxg_kernelgen"
        units = [unit for part in parts for unit in sources(part)]
        super().__init__("generator", units)
        program = self.program(self.originals.values(), self.tree)
        self.printed = {command: self.output(program, command) for command in COMMANDS}
        with open(f"{ROOT}/include/zvxg_kernels.h", encoding="utf-8") as header:
            assert header.read() == self.printed["header"]

    @staticmethod
    def program(objects, tree):
        words = ["g++", *objects, "-o", f"{tree}/kernelgen"]
        if subprocess.run(words, capture_output=True, check=False).returncode != 0:
            raise NotCompiled
        return words[-1]

    @staticmethod
    def output(program, command):
        result = started([program, *command.split()], seconds=40)
        if result.returncode != 0:
            raise Stopped
        return result.stdout.decode()

    def found(self, file, tree):
        """A fault that changes nothing but the order of statements is none."""
        objects, same = self.objects(list(self.originals), file, tree)
        try:
            return None if same else self.told(self.program(objects, tree), tree)
        except Stopped:
            return "build"

    def told(self, program, tree):
        printed = {}
        for command, check in zip(COMMANDS, ("ledger", "header", "", "", "")):
            printed[command] = self.output(program, command)
            if check and printed[command] != self.printed[command]:
                return check
        changed = []
        for command in "source 0 1", "long 0 1":
            now, before = kernels_of(printed[command]), kernels_of(self.printed[command])
            changed += [pair for pair in zip(now[1:], before[1:]) if pair[0] != pair[1]]
        changed.sort(key=lambda pair: len(pair[0]))
        others = (now for now, before in changed if arithmetic(now) != arithmetic(before))
        tried = list(itertools.islice(others, KERNELS_TRIED))
        if not tried and printed["entries"] == self.printed["entries"]:
            return None
        head = kernels_of(printed["source 0 1"])[0]
        texts = {"source_base_v3_v4_0.cpp": head + "".join(tried), "entries.cpp": printed["entries"]}
        units = {os.path.basename(unit): unit for unit in sources("zvxg_objects")}
        try:
            for name, text in texts.items():
                compiled(units[name], f"{tree}/{name}.o", text=text)
        except NotCompiled as error:
            raise Stopped from error
        library = linked_library(f"{tree}/libzvxg.so", [f"{tree}/{name}.o" for name in texts])
        if failure("hashes", library):
            return "hashes"
        for symbol in (re.match(r"// (\w+):", kernel)[1] for kernel in tried):
            if failure("tests", library, symbol, (DEFINED,)):
                return "tests"
        return ""


def generator(options):
    setting = Generator()
    files = [f for f in setting.files() if "kernelgen/" in f and not IN_TESTS_ONLY.search(f)]
    return setting.outcomes(seeds(files, options.count or COUNT, options.seed))
