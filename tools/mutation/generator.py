"""Faults in the generator, one at a time: what it prints is compared with what it should, and some of
the kernels that come out otherwise are compiled and tested."""

import os
import re
import subprocess

from checks import failure, started
from copies import NotCompiled, Workshop, compiled, linked_library, sources
from kernels import DEFINED, kernels_of
from outcomes import ROOT, seeds

COMMANDS = ("counts", "header", "entries", "long 0 1", "source 0 1")
# What only tests run, and what makes kernels for newer processors and for batches.
NOT_SEEN = re.compile(r"/(interpret|print|scalar|packing\w*|variants|wide|many\w*)\.")
KERNELS_TRIED = 4
COUNT = 75


class Stopped(Exception):
    """The generator ended with an error, or not in time, or what it printed is no C++: no build."""


class Generator(Workshop):
    def __init__(self):
        parts = "zvxg_kernel_id", "zvxg_kernelgen_core", "zvxg_kernelgen"
        units = [unit for part in parts for unit in sources(part)]
        super().__init__("generator", units)
        self.own = self.program(self.originals.values(), self.tree)
        self.printed = {command: self.output(self.own, command) for command in COMMANDS}
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
        objects, same = self.objects(list(self.originals), file, tree)
        try:
            return None if same else self.told(self.program(objects, tree), tree)
        except Stopped:
            return "build"

    def told(self, program, tree):
        """A fault is none if the kernels that change pass and have the scalar form of before: then
        the order of statements is another, or the arrangement in registers."""
        printed = {}
        for command, check in zip(COMMANDS, ("ledger", "header", "", "", "")):
            printed[command] = self.output(program, command)
            if check and printed[command] != self.printed[command]:
                return check
        changed = []
        for command in "source 0 1", "long 0 1":
            now, before = kernels_of(printed[command]), kernels_of(self.printed[command])
            changed += [text for text, old in zip(now[1:], before[1:]) if text != old]
        tried = sorted(changed, key=len)[:KERNELS_TRIED]
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
        symbols = [re.match(r"// (\w+):", kernel)[1] for kernel in tried]
        if any(failure("tests", library, symbol, (DEFINED,)) for symbol in symbols):
            return "tests"
        forms = ([self.output(p, f"scalar {s}") for s in symbols] for p in (program, self.own))
        return None if tried and next(forms) == next(forms) else ""


def generator(options):
    setting = Generator()
    files = [f for f in setting.files() if "kernelgen/" in f and not NOT_SEEN.search(f)]
    return setting.outcomes(seeds(files, options.count or COUNT, options.seed))
