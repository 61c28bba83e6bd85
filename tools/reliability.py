"""Runs the tests behind each claim about the library's reliability and writes docs/reliability.md from
the figures that the tests record themselves. A new claim is a row of SECTIONS, with any tests of CTest
as its evidence. A figure is a property that a GoogleTest test records, or a number before a word in the
output of another program.

usage: reliability.py BUILD_DIRECTORY OUTPUT.md"""

import collections
import os
import platform
import re
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ElementTree

# A claim, a pattern of the names of the tests behind it, and the text of its result, with names of
# figures in braces. {tests} is the number of tests that passed.
Row = collections.namedtuple("Row", "claim tests figures")

SECTIONS = {
    "Memory": [
        Row(
            "No access outside the arrays, the buffer and the block of a plan. Each in turn begins "
            "or ends at an inaccessible page, and sources are in read-only pages; all flags, "
            "separate arrays and in place",
            r"^Memory\.NothingOutside",
            "{calls} calls, 0 faults",
        ),
        Row(
            "The same bits at all 64 x 64 byte offsets of source and destination from a cache "
            "line; nothing is written around the destination",
            r"^Memory\.SameBitsAtEvery",
            "{calls} calls",
        ),
        Row(
            "The same bits in place, at all 64 byte offsets and with all flags",
            r"^Memory\.SameBitsInPlace",
            "{calls} calls",
        ),
    ],
    "Bits": [
        Row(
            "All results have the hashes in `tests/hashes.csv`; results of a by-length entry have "
            "those of its kernels. So have batches of libzvxgmany, with AVX and with AVX-512",
            r"^Bits\.AsRecorded$",
            "{functions} functions and lengths, {results} results, {batches} batches",
        ),
        Row(
            "The same hashes on an emulated Sandy Bridge, which has AVX and traps all later "
            "instructions; plans of the DCT-IV are left out where the math library chooses other "
            "sines for that processor",
            r"^Bits\.OnSandyBridge$",
            "{functions} functions and lengths, {results} results, {batches} batches, "
            "{left} left out",
        ),
        Row(
            "The same hashes under Valgrind, which finds no use of uninitialised memory",
            r"^Bits\.UnderValgrind$",
            "{functions} functions and lengths, {results} results, {batches} batches",
        ),
        Row(
            "The same hashes from the other compiler and at other levels of optimisation",
            r"^Build\.",
            "{tests} builds",
        ),
    ],
    "Sanitizers": [
        Row(
            "No access outside arrays, buffers and plans, whose memory ends where they end, and no "
            "undefined behaviour; all flags, in place and not, odd addresses too "
            "(AddressSanitizer, UndefinedBehaviorSanitizer)",
            r"^EveryCall\.asan$",
            "{functions} functions, {calls} calls, 0 reports",
        ),
        Row(
            "No use of uninitialised memory, and every result is initialised (MemorySanitizer, "
            "Valgrind)",
            r"^EveryCall\.(msan|Valgrind)$",
            "{functions} functions in two runs, {calls} calls, 0 reports",
        ),
        Row(
            "No data race, and the same bits as on one thread, on 16 threads that have their own "
            "arrays and share plans of direct lengths (ThreadSanitizer)",
            r"^EveryCall\.tsan$",
            "{functions} functions, {calls} calls, 0 reports",
        ),
        Row(
            "Random calls, including those of the companion header, for ten seconds in each of six "
            "programs, checked against the definition, for the same bits at every address, and for "
            "refusals (libFuzzer, AddressSanitizer, UndefinedBehaviorSanitizer)",
            r"^Fuzz$",
            "{runs} runs, 0 findings",
        ),
    ],
    "Reach of the fast tests": [
        Row(
            "Lines and branches of hand-written code: library, generator, companion header. Not "
            "reached are the errors that stop the generator at a wrong table or command, and its "
            "cases for shuffles and for vectors in parts that no row of the tables needs",
            r"^Coverage$",
            "{reached} of {lines} lines, {taken} of {branches} branches",
        ),
    ],
    "State of the processor": [
        Row(
            "A call changes no control bit of MXCSR or the x87, preserves rbx, rbp, r12 to r15 and "
            "a clear direction flag, and leaves the x87 and the upper halves of the vector "
            "registers unused. On numbers of ordinary size it raises no floating-point exception "
            "but inexact: the others trap",
            r"^State\.(ACallKeeps|SoDo)",
            "{calls} calls",
        ),
        Row("Loading the library changes no control word", r"^State\.Loading", "unchanged"),
        Row(
            "The caller's four rounding modes, and FTZ with DAZ, apply to every operation: the "
            "bits are those of the interpreted graph, or of the operations in their order, in the "
            "same mode. (When rounding to nearest, this holds for every compiler. In other modes "
            "it holds for g++ and not for the DCT-IV, because compilers move signs across "
            "products)",
            r"^State\.Rounding",
            "{calls} calls",
        ),
    ],
    "Special values": [
        Row(
            "NaN, infinities, zeros of both signs, subnormal and the largest numbers give the bits "
            "of the operations in their order; infinities are tried in every place",
            r"^Values\.Special",
            "{calls} calls",
        ),
        Row(
            "In a DCT-IV a NaN or an infinity in any place reaches every result, and an impulse, "
            "however large or small, gives its cosines",
            r"^Values\.Plans",
            "{calls} calls",
        ),
    ],
    "Refusals": [
        Row(
            "All combinations of null pointers, bad flags and bad lengths return the right status, "
            "and nothing is read or written: the arrays are in inaccessible pages",
            r"^Contract\.EveryRefusal",
            "{calls} calls of {functions} functions",
        ),
    ],
    "Allocation": [
        Row(
            "None if work memory is passed. If a buffer is left out or a plan requested: one block "
            "of the stated size, freed once, with nothing written behind it",
            r"^Allocation\.(None|NullBuffer|PlansTake)",
            "{calls} calls",
        ),
        Row(
            "Each allocation fails in turn: creating a plan reports a null pointer, a "
            "Walsh-Hadamard transform crashes on it before it writes its destination; nothing "
            "leaks or is freed twice",
            r"^Allocation\.Refused",
            "{calls} calls",
        ),
    ],
}

HEAD = """# Reliability

What is checked for all 1,193 exported functions, and the results. `./dev reliability` writes this file
from the figures that the tests record; `./dev test PATTERN` runs the tests of one row. The seed of
random data is fixed; `ZVXG_SEED` sets another. Of the faults seeded into the code the tests find
{mutation}: [mutation.md](mutation.md).

{machine}
"""


def figures_of(build, pattern):
    """Runs the tests; returns whether all passed, and their figures summed."""
    figures = collections.Counter()
    with tempfile.TemporaryDirectory() as results:
        junit = os.path.join(results, "ctest.xml")
        subprocess.run(
            ["ctest", "--test-dir", build, "--tests-regex", pattern, "--output-junit", junit]
            + ["--test-output-size-passed", "1000000"],
            env=os.environ | {"GTEST_OUTPUT": f"xml:{results}/gtest/"},
            stdout=sys.stderr,
            check=False,
        )
        tests = ElementTree.parse(junit).getroot().findall("testcase")
        gtest = os.path.join(results, "gtest")
        reports = os.listdir(gtest) if os.path.isdir(gtest) else []
        for report in reports:
            for recorded in ElementTree.parse(os.path.join(gtest, report)).iter("property"):
                figures[recorded.get("name")] += int(recorded.get("value"))
        if not reports:
            for test in tests:
                for number, name in re.findall(r"\b(\d+) (\w+)", test.findtext("system-out", "")):
                    figures[name] += int(number)
    passed = [test for test in tests if test.get("status") == "run"]
    figures["tests"] = len(passed)
    return bool(tests) and len(passed) == len(tests), figures


def mutation(output):
    with open(os.path.join(os.path.dirname(output), "mutation.md"), encoding="utf-8") as file:
        return re.search(r"([\d,]+ of [\d,]+) faults", file.read()).group(1)


def machine():
    with open("/proc/cpuinfo", encoding="utf-8") as file:
        processor = re.search(r"model name\s*: (.*)", file.read()).group(1)
    compiler = subprocess.run(["g++", "--version"], check=True, capture_output=True, text=True)
    version = compiler.stdout.splitlines()[0].split()[-1]
    return f"Last run: {processor}, g++ {version}, {' '.join(platform.libc_ver())}."


def main():
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    build, output = sys.argv[1:]
    text, failed = HEAD.format(mutation=mutation(output), machine=machine()), []
    for section, rows in SECTIONS.items():
        text += f"\n## {section}\n\n| checked | result | tests |\n|---|---|---|\n"
        for row in rows:
            passed, figures = figures_of(build, row.tests)
            grouped = {name: f"{number:,}" for name, number in figures.items()}
            result = row.figures.format_map(grouped) if passed else "**failed, or did not run**"
            if not passed:
                failed.append(row.tests)
            tests = row.tests.replace("|", "\\|")
            text += f"| {row.claim} | {result} | `{tests}` |\n"
    with open(output, "w", encoding="utf-8") as file:
        file.write(text)
    if failed:
        sys.exit(f"reliability.py: failed, or did not run: {', '.join(failed)}")


if __name__ == "__main__":
    main()
