"""Changed copies of the code, in directories of their own, and what is compiled of them."""

import filecmp
import functools
import json
import os
import queue
import re
import shlex
import shutil
import subprocess

import faults
from outcomes import BUILD, MADE, ROOT, WORKERS, Outcome, parallel, say

# No result depends on the optimisation, and this compiles sooner. With the second option g++ clears
# the upper halves of registers before a return, which a test looks for.
OPTIONS = ["-O1", "-fexpensive-optimizations", "-w"]
COPIED = "src", "include", "tools/kernelgen"


class NotCompiled(Exception):
    """The changed text is no C++."""


@functools.cache
def commands():
    with open(f"{BUILD}/compile_commands.json", encoding="utf-8") as file:
        entries = json.load(file)
    # Files of which each level has its own object count as those of the base.
    of_a_variant = re.compile(r"/zvxg(_objects_v\d\w*|_kernels_\w*_for_v\d|many_\w*avx512|many_emulated\w*)"
                              r"\.dir/")
    return {entry["file"]: entry["command"] for entry in entries
            if not of_a_variant.search(entry["command"])}


def sources(part):
    """The files that are compiled for a part of the build; zvxg_objects are those of the library."""
    names = rf"{part}_base|zvxg_kernels_\w+|{part}" if part == "zvxg_objects" else part
    return [file for file, command in commands().items() if re.search(rf"/({names})\.dir/", command)]


def compiled(source, output, tree=ROOT, text=None):
    """Compiles `source` of the ordinary build as it is in `tree`, or `text` in its place; returns the
    files of the tree that it depends on."""
    copy = tree + source.removeprefix(ROOT)
    file = copy if os.path.exists(copy) else source
    if text is not None:
        file = output + ".cpp"
        with open(file, "w", encoding="utf-8") as changed:
            changed.write(text)
    words = shlex.split(commands()[source])
    compiler = next(i for i, word in enumerate(words) if re.search(r"[gc]\+\+", word))
    words = [
        re.sub(f"^-I{ROOT}/({'|'.join(COPIED)})$", rf"-I{tree}/\1", word)
        for word in words[compiler : words.index("-o")]
        if word != "-fstack-usage"
    ] + [*OPTIONS, "-MMD", "-MF", output + ".d", "-o", output, "-c", file]
    result = subprocess.run(words, capture_output=True, check=False)
    if result.returncode != 0:
        raise NotCompiled(result.stderr.decode()[:1000])
    with open(output + ".d", encoding="utf-8") as made:
        listed = made.read().replace("\\\n", " ").split()
    return {path.removeprefix(tree + "/") for path in listed if path.startswith(tree + "/")}


def linked(output, *words):
    """Links with the library of the ordinary build, which has all that the objects lack."""
    place = f"{BUILD}/src"
    libraries = f"-L{place}", f"-Wl,-rpath,{place}", "-Wl,--no-as-needed", "-lzvxg", "-lzvxcore"
    subprocess.run(["g++", "-o", output, *words, *libraries], check=True)
    return output


def linked_library(output, objects, rest=()):
    """From these objects, and archives that have the rest."""
    return linked(output, "-shared", "-Wl,-Bsymbolic-functions", *objects, *rest)


class Workshop:
    """Makes faults, one at a time in a tree, and compiles the units that a fault changes."""

    def __init__(self, name, units):
        self.tree = self.made(name)
        self.originals = {unit: self.object(unit, self.tree) for unit in units}
        needs = parallel(lambda unit: compiled(unit, self.originals[unit], self.tree), units)
        self.needs = dict(zip(units, needs))
        self.trees = queue.SimpleQueue()
        for worker in range(WORKERS):
            self.trees.put(self.made(f"{name}{worker}"))

    @staticmethod
    def made(name):
        """A fresh copy of what is written by hand."""
        for part in COPIED:
            shutil.copytree(f"{ROOT}/{part}", f"{MADE}/{name}/{part}", dirs_exist_ok=True)
        return f"{MADE}/{name}"

    def files(self):
        return set().union(*self.needs.values())

    @staticmethod
    def object(unit, tree):
        return f"{tree}/{os.path.basename(unit)}.o"

    def objects(self, units, file, tree):
        """The objects of the units, anew where they need the file, and whether all are as before."""
        objects, same = [], True
        for unit in units:
            objects.append(self.originals[unit])
            if file in self.needs[unit]:
                objects[-1] = self.object(unit, tree)
                compiled(unit, objects[-1], tree)
                same = same and filecmp.cmp(objects[-1], self.originals[unit], shallow=False)
        return objects, same

    def outcome(self, seeded):
        """What becomes of one fault; nothing if it is none, as found() tells by None."""
        file, fault, text = seeded
        tree = self.trees.get()
        try:
            with open(f"{tree}/{file}", "w", encoding="utf-8") as copy:
                copy.write(faults.apply(text, fault))
            found = self.found(file, tree)
        except NotCompiled:
            found = None
        finally:
            shutil.copy(f"{ROOT}/{file}", f"{tree}/{file}")
            self.trees.put(tree)
        if found is None:
            return None
        outcome = Outcome(file, *faults.described(text, fault), found)
        say(*outcome[:3], found or f"NOT FOUND\n  {outcome.before}\n  {outcome.after}")
        return outcome

    def found(self, file, tree):
        """The check that finds what is changed in a file of the tree, "" if none does."""
        raise NotImplementedError

    def outcomes(self, seeded):
        outcomes = parallel(self.outcome, seeded)
        say(f"{outcomes.count(None)} of {len(outcomes)} do not compile or change nothing")
        return [outcome for outcome in outcomes if outcome]
