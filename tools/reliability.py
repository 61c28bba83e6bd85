"""Runs the tests behind the rows of docs/reliability.md and renews the numbers in their results. A row
has a claim, a result, and a pattern of the names of tests in CTest. A number in the result is that
which the tests have before the same word in their output, or which a GoogleTest test records under
that name; "tests" is how many passed. So a new claim is a new row, with 0 for its numbers. If a test
fails or none runs, the document stays as it is.

usage: reliability.py BUILD_DIRECTORY DOCUMENT [TEXT_IN_THE_PATTERN]"""

import collections
import os
import platform
import re
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ElementTree

ROW = re.compile(r"^(\| .* \| )(.*)( \| `(.*)` \|)$", re.M)
NUMBER = re.compile(r"\b(\d[\d,]*) (\w+)")


def figures_of(build, pattern):
    """Runs the tests; returns their figures summed, None if not all of them passed."""
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
        for test in [] if reports else tests:
            for number, word in NUMBER.findall(test.findtext("system-out", "")):
                figures[word] += int(number.replace(",", ""))
    figures["tests"] = len(tests)
    return figures if tests and all(test.get("status") == "run" for test in tests) else None


def machine():
    with open("/proc/cpuinfo", encoding="utf-8") as file:
        processor = re.search(r"model name\s*: (.*)", file.read()).group(1)
    compiler = subprocess.run(["g++", "--version"], check=True, capture_output=True, text=True)
    version = compiler.stdout.splitlines()[0].split()[-1]
    return f"Last run: {processor}, g++ {version}, {' '.join(platform.libc_ver())}."


def main(build, document, chosen=""):
    failed = []

    def renewed(row):
        pattern = row[4].replace("\\|", "|")
        if chosen not in pattern:
            return row[0]
        figures = figures_of(build, pattern)
        if figures is None:
            failed.append(pattern)
            return row[0]
        return row[1] + NUMBER.sub(
            lambda m: f"{figures[m[2]]:,} {m[2]}" if m[2] in figures else m[0], row[2]) + row[3]

    with open(document, encoding="utf-8") as file:
        text = ROW.sub(renewed, file.read())
    if failed:
        sys.exit(f"reliability.py: failed, or did not run: {', '.join(failed)}")
    with open(os.path.join(os.path.dirname(document), "mutation.md"), encoding="utf-8") as file:
        mutation = re.search(r"([\d,]+ of [\d,]+) faults", file.read())[1]
    text = re.sub(r"[\d,]+ of [\d,]+(?=: \[mutation)", mutation, text)
    with open(document, "w", encoding="utf-8") as file:
        file.write(re.sub(r"^Last run: .*", machine(), text, flags=re.M))


if __name__ == "__main__":
    if len(sys.argv) not in (3, 4):
        sys.exit(__doc__)
    main(*sys.argv[1:])
