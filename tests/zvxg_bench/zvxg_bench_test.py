"""The program zvxg-bench from outside: its command line, its three formats, and that verify and
accuracy notice a kernel that is wrong. Run with --help for the arguments; what follows them goes to
unittest."""

import argparse
import csv
import json
import os
import re
import subprocess
import sys
import tempfile
import unittest

KERNEL = "zvxgDFTFwd_CToC_12_32fc"
FAST = ("--processes", "1", "--ms", "1")

# Arguments, exit status, and what standard output or, of a failure, standard error holds.
COMMAND_LINES = [
    (["--help"], 0, r"usage: zvxg-bench COMMAND"),
    (["list", "--help"], 0, r"usage: zvxg-bench COMMAND"),
    (["--version"], 0, r"^zvxg-bench \d+\.\d+\.\d+, library \d+\.\d+ build [\d.]+, variant e9$"),
    ([], 2, r"which command\? zvxg-bench --help lists them"),
    (["bogus"], 2, r"there is no command 'bogus'"),
    (["s"], 2, r"there is no command 's'"),
    (["list", "--bogus"], 2, r"there is no option '--bogus'"),
    (["list", "complex", "bogus-12"], 2, r"nothing matches the filter 'bogus-12'"),
    (["speed", "bogus"], 2, r"nothing matches the filter 'bogus'"),
    (["accuracy", "bogus"], 2, r"nothing matches the filter 'bogus'"),
    (["verify", "bogus"], 2, r"nothing matches the filter 'bogus'"),
    (["list", "--quick"], 2, r"list has no option --quick"),
    (["verify", "--trials", "2"], 2, r"verify has no option --trials"),
    (["list", "--format", "xml"], 2, r"--format is text, csv or json, not 'xml'"),
    (["list", "--output"], 2, r"--output needs a value"),
    (["speed", "--ms", "0"], 2, r"--ms takes a number from 1 to \d+, not '0'"),
    (["speed", "--ms", "1x"], 2, r"--ms takes a number from 1 to \d+, not '1x'"),
    (["speed", "--core", "1000", "CToC_12_"], 2, r"cannot run on core 1000"),
    (["speed", "--level", "sse"], 2, r"--level is avx or avx512, not 'sse'"),
    (["speed", *FAST, "--level", "avx", "many-rows-L1-CToC-32fc-12"], 0,
     r"FFTW-many|single-calls +12"),
    (["list", "--output", "/nowhere/list"], 1, r"cannot write /nowhere/list"),
    (["list", "--output", "/"], 1, r"cannot write /"),
    (["verify", "--library", "/nowhere/lib.so"], 1, r"/nowhere/lib.so: cannot open"),
    (["speed", "--beat", "/nowhere/f.csv", "CToC_12_"], 1, r"cannot read /nowhere/f.csv"),
    (["list", "CToC_12_"], 0, rf"^{KERNEL}  complex-forward  32fc +12  GT\(4,3\) "),
    (["list", "--output", "/dev/stdout", "CToC_12_"], 0, rf"^{KERNEL}  complex-forward"),
    (["accuracy", "--trials", "2", "WHT_3_32f"], 0, r"^rms of 1 transforms [\d.e-]+, worst trial "),
    (["verify", "Hartley_32f", "CToC_12_"], 0, r"^total: 5 functions, \d+ checks, 0 failures$"),
]


def run(*arguments, **environment):
    return subprocess.run([options.program, *arguments], capture_output=True, text=True,
                          check=False, env=os.environ | environment)


def csv_rows(text):
    return list(csv.DictReader(line for line in text.splitlines() if not line.startswith("#")))


class CommandLine(unittest.TestCase):
    def test_every_line_of_the_table(self):
        for arguments, status, pattern in COMMAND_LINES:
            with self.subTest(arguments=arguments):
                result = run(*arguments)
                self.assertEqual(result.returncode, status, result.stderr)
                text, other = result.stdout, result.stderr
                if status != 0:
                    text, other = other, text
                    self.assertRegex(text, r"\Azvxg-bench: .+\n\Z")
                self.assertRegex(text, re.compile(pattern, re.MULTILINE))
                self.assertEqual(other, "")

    def test_output_is_complete_or_not_there(self):
        with tempfile.TemporaryDirectory() as directory:
            path = os.path.join(directory, "list.csv")
            self.assertEqual(run("list", "bogus", "--output", path).returncode, 2)
            self.assertEqual(os.listdir(directory), [])
            result = run("list", "--format", "csv", "--output", path)
            self.assertEqual((result.returncode, result.stdout), (0, ""))
            self.assertEqual(os.listdir(directory), ["list.csv"])
            with open(path, encoding="utf-8") as file:
                self.assertEqual(file.read(), run("list", "--format", "csv").stdout)
        with open("/dev/full", "w", encoding="utf-8") as full:
            result = subprocess.run([options.program, "list"], stdout=full, stderr=subprocess.PIPE,
                                    check=False)
        self.assertEqual(result.returncode, 1)


class Formats(unittest.TestCase):
    def test_list_has_every_function_that_is_exported(self):
        lines = subprocess.run(["nm", "-D", "--defined-only", options.library], check=True,
                               capture_output=True, text=True).stdout.splitlines()
        exported = sorted(line.split()[-1] for line in lines)
        rows = csv_rows(run("list", "--format", "csv").stdout)
        self.assertEqual(sorted(row["symbol"] for row in rows), exported)

    def test_list_tells_the_ledger(self):
        with open(options.ledger, encoding="utf-8") as file:
            ledger = list(csv.DictReader(file))
        listed = {row["symbol"]: row for row in csv_rows(run("list", "--format", "csv").stdout)}
        for row in ledger:
            self.assertEqual(row, {key: listed[row["symbol"]][key] for key in row})

    def test_json_tells_what_csv_tells(self):
        for arguments in (["list"], ["accuracy", "--trials", "2", "CToC_12_", "dct4-64"],
                          ["verify", "hartley"]):
            with self.subTest(arguments=arguments):
                rows = json.loads(run(*arguments, "--format", "json").stdout)["rows"]
                as_text = csv_rows(run(*arguments, "--format", "csv").stdout)
                self.assertEqual(len(rows), len(as_text))
                for row, texts in zip(rows, as_text):
                    self.assertEqual(list(row), list(texts))
                    for name, text in texts.items():
                        value = row[name]
                        same = (text == "" if value is None else text == value
                                if isinstance(value, str) else float(text) == value)
                        self.assertTrue(same, f"{name}: {value!r} and {text!r}")

    def test_speed_beside_a_peer_and_to_a_file_as_well(self):
        with tempfile.TemporaryDirectory() as directory:
            path = os.path.join(directory, "speed.csv")
            result = run("speed", *FAST, "--format", "json", "--csv", path,
                         "complex-12_32fc")
            self.assertEqual(result.returncode, 0, result.stderr)
            with open(path, encoding="utf-8") as file:
                rows = csv_rows(file.read())
        json_rows = json.loads(result.stdout)["rows"]
        for row in rows + json_rows:
            ours, peer, ratio = (float(row[key]) for key in ("ours_ns", "peer_ns", "ratio"))
            self.assertAlmostEqual(ratio, peer / ours, delta=0.01 * ratio)
        self.assertEqual([row["symbol"] for row in rows], [row["symbol"] for row in json_rows])
        self.assertEqual(len(rows), 2)

    def test_speed_without_fftw(self):
        with tempfile.TemporaryDirectory() as directory:
            for name in "libfftw3f.so.3", "libfftw3.so.3":  # are found first, and cannot be loaded
                with open(os.path.join(directory, name), "w", encoding="utf-8"):
                    pass
            result = run("speed", *FAST, "--format", "json", "complex-CToC_12_", "dct4-half-128",
                         LD_LIBRARY_PATH=directory)
        self.assertEqual(result.returncode, 0, result.stderr)
        report = json.loads(result.stdout)
        self.assertIn("no libfftw3f.so.3", report["about"]["FFTW, single"])
        self.assertEqual(len(report["rows"]), 6)
        for row in report["rows"]:
            self.assertGreater(row["ours_ns"], 0)
            self.assertEqual((row["peer"], row["peer_ns"], row["ratio"]), (None, None, None))


class WrongKernel(unittest.TestCase):
    def with_fault(self, fault, *arguments):
        return run(*arguments, LD_PRELOAD=options.shim, ZVXG_FAULT=fault)

    def test_verify_passes_without_a_fault(self):
        result = self.with_fault("none", "verify")
        self.assertEqual(result.returncode, 0)
        self.assertRegex(result.stdout, r"total: 1193 functions and 24 of libzvxgmany, "
                                        r"\d+ checks, 0 failures\n\Z")

    def test_verify_notices_each_fault(self):
        for fault, claim in (("value", "error 0.000977 with flag 1"),
                             ("flag", "with flag 1"),
                             ("place", "at offsets 0 and 1"),
                             ("in place", "in place, at offset 0"),
                             ("beyond", "other memory at offsets 0 and 0"),
                             ("status", "status -6 instead of -8"),
                             ("refusal", "a refused call wrote to its destination")):
            with self.subTest(fault=fault):
                result = self.with_fault(fault, "verify", "complex-single")
                self.assertEqual(result.returncode, 1)
                line = next(line for line in result.stdout.splitlines() if KERNEL in line)
                self.assertIn("complex-forward", line)
                self.assertIn(claim, line)
                self.assertRegex(result.stdout, r"total: 126 functions and 2 of libzvxgmany, "
                                                r"\d+ checks, [1-9]")

    def test_verify_notices_a_fault_in_a_batch(self):
        result = self.with_fault("batch", "verify", "many-hartley-single")
        self.assertEqual(result.returncode, 1)
        self.assertIn("zvxgHartley_Many_32f, 2 points: a batch has other bits", result.stdout)

    def test_verify_tells_where_it_crashed(self):
        result = self.with_fault("crash", "verify")
        self.assertEqual((result.returncode, result.stdout), (1, ""))
        self.assertIn(f"the process crashed in {KERNEL}\n", result.stderr)

    def test_accuracy_tells_the_error(self):
        result = self.with_fault("value", "accuracy", "--format", "csv", "CToC_12_32fc")
        errors = [float(row["rms"]) for row in csv_rows(result.stdout)]
        self.assertAlmostEqual(errors[0], 2.0**-10, delta=1e-6)  # forward
        self.assertLess(errors[1], 2.0**-22)

    def test_a_missing_function_is_a_failure(self):
        result = run("verify", "--library", options.core, "CToC_12_32fc")
        self.assertEqual(result.returncode, 1)
        self.assertIn(f"{KERNEL} is not in the library", result.stdout)


if __name__ == "__main__":
    parser = argparse.ArgumentParser(description=__doc__)
    for name in "program", "library", "core", "shim", "ledger":
        parser.add_argument(f"--{name}", required=True)
    options, rest = parser.parse_known_args()
    unittest.main(argv=sys.argv[:1] + rest)
