"""The binary interface against its record in abi/zvxg.abi: functions, parameters, records.

The types are those of the public header, read from the debug information of a library of empty
functions with the same prototypes; the real one need not carry any. That the real one has these
functions is tested by library_test.py, and that they have these types by the compiler, since the
sources define what the header declares.

abi_test.py          compares
abi_test.py --write  makes the record anew, after a change that was meant
"""

import os
import re
import subprocess
import sys
import tempfile
import unittest

SOURCE = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
RECORD = os.path.join(SOURCE, "abi", "zvxg.abi")


def output_of(*command, text=None):
    return subprocess.run(command, check=True, input=text, stdout=subprocess.PIPE, text=True).stdout


def header():
    return output_of("cc", "-E", "-P", os.path.join(SOURCE, "include", "zvxg.h"))


def record_of(declarations):
    """The interface in the form of the record; places in files and of the machine stay out."""
    prototype = r'(__attribute__\(\(visibility\("default"\)\)\)[^;{]*?)\s*;'
    functions, count = re.subn(prototype, r"\1 { __builtin_trap(); }", declarations)
    assert count > 1000, f"{count} prototypes in the header"
    with tempfile.TemporaryDirectory() as directory:
        library = os.path.join(directory, "libzvxg.so.6")
        output_of("cc", "-xc", "-g", "-fPIC", "-shared", "-nostdlib", "-Wl,-soname,libzvxg.so.6",
                  "-o", library, "-", text=functions)
        record = output_of("abidw", "--no-corpus-path", "--no-comp-dir-path", "--no-show-locs",
                           "--no-parameter-names", "--type-id-style", "hash", library)
    # A third less: abidiff needs no indentation, and of a function the symbol and the types.
    record = re.sub(r"^ +", "", record, flags=re.MULTILINE)
    surplus = r" (?:mangled-name|visibility|size-in-bits)='[^']*'"
    function = r"<(?:elf-symbol|function-decl) .*"
    return re.sub(function, lambda line: re.sub(surplus, "", line[0]), record)


def difference(declarations):
    """What abidiff has to say about an interface; nothing if it is that of the record."""
    with tempfile.NamedTemporaryFile("w", suffix=".abi") as now:
        now.write(record_of(declarations))
        now.flush()
        done = subprocess.run(["abidiff", RECORD, now.name], stdout=subprocess.PIPE, text=True)
        # Bits 0 and 1 are errors, 2 and 3 are changes.
        assert done.returncode & 3 == 0, done.stdout
        return done.stdout if done.returncode else ""


class Interface(unittest.TestCase):
    def test_it_is_the_recorded_one(self):
        found = difference(header())
        self.assertFalse(found, f"\n{found}If this is meant, run: ./dev abi")

    def test_changes_are_seen(self):
        declarations = header()
        for what, before, after, report in (
            ("a function less", r"[^;]*\bzvxgHartley_9_32f\([^;]*;", "", "1 Removed"),
            ("another parameter", r"(\bzvxgWHT_3_64f\([^;]*)int32_t", r"\1int64_t", "1 Changed"),
            ("another order of fields", r"(int32_t major;)\s*(int32_t minor;)", r"\2\1", "1 Changed"),
        ):
            with self.subTest(what):
                changed, count = re.subn(before, after, declarations)
                self.assertEqual(count, 1)
                self.assertIn(report, difference(changed))


if __name__ == "__main__":
    if sys.argv[1:] == ["--write"]:
        with open(RECORD, "w", encoding="utf-8") as file:
            file.write(record_of(header()))
    else:
        unittest.main()
