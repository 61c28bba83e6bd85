"""The binary interfaces against their records in abi/: functions, parameters, types.

The types are those of the public headers, read from the debug information of a library of empty
functions with the same prototypes; the real one need not carry any. That the real one has these
functions is tested by library_test.py, and that they have these types by the compiler, since the
sources define what the header declares.

abi_test.py          compares
abi_test.py --write  makes the records anew, after a change that was meant
"""

import os
import re
import subprocess
import sys
import tempfile
import unittest

SOURCE = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
# By library: its header, and what is declared there and belongs to another one.
LIBRARIES = {"zvxg": ("zvxg.h", r"$^"), "zvxgmany": ("zvxg_many.h", r"zvx(?!g\w*Many)\w+\(")}


def output_of(*command, text=None):
    return subprocess.run(command, check=True, input=text, stdout=subprocess.PIPE, text=True).stdout


def record_file(library):
    return os.path.join(SOURCE, "abi", f"{library}.abi")


def declarations_of(library):
    return output_of("cc", "-E", "-P", os.path.join(SOURCE, "include", LIBRARIES[library][0]))


def record_of(library, declarations):
    """The interface in the form of the record; places in files and of the machine stay out."""
    def defined(prototype):
        if re.search(LIBRARIES[library][1], prototype[0]):
            return prototype[0]
        return f"{prototype[1]} {{ __builtin_trap(); }}"
    prototype = r'(__attribute__\(\(visibility\("default"\)\)\)[^;{]*?)\s*;'
    functions, count = re.subn(prototype, defined, declarations)
    assert count > 1000, f"{count} prototypes in the header"
    with tempfile.TemporaryDirectory() as directory:
        file = os.path.join(directory, f"lib{library}.so.6")
        output_of("cc", "-xc", "-g", "-fPIC", "-shared", "-nostdlib",
                  f"-Wl,-soname,lib{library}.so.6", "-o", file, "-", text=functions)
        record = output_of("abidw", "--no-corpus-path", "--no-comp-dir-path", "--no-show-locs",
                           "--no-parameter-names", "--type-id-style", "hash", file)
    # A third less: abidiff needs no indentation, and of a function the symbol and the types.
    record = re.sub(r"^ +", "", record, flags=re.MULTILINE)
    surplus = r" (?:mangled-name|visibility|size-in-bits)='[^']*'"
    function = r"<(?:elf-symbol|function-decl) .*"
    return re.sub(function, lambda line: re.sub(surplus, "", line[0]), record)


def difference(library, declarations):
    """What abidiff has to say about an interface; nothing if it is that of the record."""
    with tempfile.NamedTemporaryFile("w", suffix=".abi") as now:
        now.write(record_of(library, declarations))
        now.flush()
        done = subprocess.run(["abidiff", record_file(library), now.name], stdout=subprocess.PIPE,
                              text=True)
        # Bits 0 and 1 are errors, 2 and 3 are changes.
        assert done.returncode & 3 == 0, done.stdout
        return done.stdout if done.returncode else ""


class Interface(unittest.TestCase):
    def test_it_is_the_recorded_one(self):
        for library in LIBRARIES:
            with self.subTest(library):
                found = difference(library, declarations_of(library))
                self.assertFalse(found, f"\n{found}If this is meant, run: ./dev abi")

    def test_changes_are_seen(self):
        for library, what, before, after, report in (
            ("zvxg", "a function less", r"[^;]*\bzvxgHartley_9_32f\([^;]*;", "", "1 Removed"),
            ("zvxg", "another parameter", r"(\bzvxgWHT_3_64f\([^;]*)int32_t", r"\1int64_t",
             "1 Changed"),
            ("zvxg", "another order of fields", r"(int32_t major;)\s*(int32_t minor;)", r"\2\1",
             "1 Changed"),
            ("zvxgmany", "another parameter", r"(\bzvxgHartley_Many_32f\([^;]*)int64_t",
             r"\1int32_t", "1 Changed"),
        ):
            with self.subTest(what):
                changed, count = re.subn(before, after, declarations_of(library))
                self.assertEqual(count, 1)
                self.assertIn(report, difference(library, changed))


if __name__ == "__main__":
    if sys.argv[1:] == ["--write"]:
        for name in LIBRARIES:
            with open(record_file(name), "w", encoding="utf-8") as file:
                file.write(record_of(name, declarations_of(name)))
    else:
        unittest.main()
