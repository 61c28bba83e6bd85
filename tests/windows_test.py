"""A build for Windows as files: what the DLLs export and import, that no vector is saved where a frame
may not be aligned for it, and which compilers take the headers. Run with --help for the arguments; what
follows them goes to unittest."""

import argparse
import glob
import json
import os
import re
import subprocess
import sys
import unittest

HERE = os.path.dirname(os.path.abspath(__file__))
OBJDUMP = "x86_64-w64-mingw32-objdump"
WARNINGS = "-Wall -Wextra -Wpedantic -Werror".split()
# DLLs that are on every Windows: the C runtime and the kernel.
SYSTEM = {"msvcrt.dll", "KERNEL32.dll"}
CORE = {"zvxMalloc", "zvxFree"}
# What Microsoft's compiler does not know, or ignores although it matters.
FOREIGN = re.compile(r"__(attribute|builtin|asm|declspec)|vector_size|no_unique_address")


def output_of(*command):
    return subprocess.run(command, check=True, stdout=subprocess.PIPE, text=True).stdout


class Headers(unittest.TestCase):
    def expect_taken(self, *command, then):
        for static in [], ["-DZVXG_STATIC"]:
            with self.subTest(" ".join([*command, *static, *then])):
                output_of(*command, *static, "-I", options.include, *then)

    def test_in_the_words_of_microsofts_compiler(self):
        # Without a C++ library for it, that is the C header by itself and what it needs.
        cl = ("clang", "--driver-mode=cl", "--target=x86_64-pc-windows-msvc", "/Zs", "/W4", "/WX")
        for standard in "c11", "c17":
            header = os.path.join(HERE, "header.c")
            self.expect_taken(*cl, "/TC", f"/std:{standard}", then=("--", header))
        for standard in "c++17", "c++20":
            self.expect_taken(*cl, "/TP", f"/std:{standard}", "/FIzvxg_many.h",
                              then=("--", os.devnull))

    def test_in_the_words_of_the_standard(self):
        names = glob.glob(os.path.join(options.include, "**", "*.hpp"), recursive=True)
        self.assertGreater(len(names), 5)
        for name in names:
            with open(name, encoding="utf-8") as file:
                self.assertNotRegex(file.read(), FOREIGN, name)

    def test_for_mingw(self):
        for compiler in options.clang.split(";"), ["x86_64-w64-mingw32-g++-posix"]:
            for name in "header.cpp", "companion_header.cpp":
                self.expect_taken(*compiler, "-std=c++20", "-fsyntax-only", *WARNINGS, "-include",
                                  os.path.join(HERE, name), then=("-x", "c++", os.devnull))


class Symbols(unittest.TestCase):
    def expect(self, library, exported, imported):
        """What it exports, and the DLLs of ours that it imports from, each with the functions. And
        the name that its properties show is its own."""
        with open(library, "rb") as file:
            self.assertIn(f"OriginalFilename\0{os.path.basename(library)}\0".encode("utf-16-le"),
                          file.read())
        tables = output_of(OBJDUMP, "-p", library)
        names = re.findall(r"^\t\[ *\d+\] (?:\+base\[ *\d+\] +\S+ )?(\w+)$", tables, re.MULTILINE)
        self.assertEqual(set(names), exported)
        found = {}
        for dll, block in re.findall(r"DLL Name: (\S+)\n(.*?)\n\n", tables, re.DOTALL):
            found[dll] = set(re.findall(r"^\t[0-9a-f]+\s+\d+\s+(\w+)", block, re.MULTILINE))
        ours = {dll: names for dll, names in found.items() if dll not in SYSTEM}
        self.assertEqual(ours.keys(), imported.keys())
        for dll, names in ours.items():
            self.assertLessEqual(names, imported[dll])

    def functions(self, library):
        return {f["symbol"] for f in options.interface if f["library"] == library}

    def test_zvxg(self):
        functions = self.functions("zvxg")
        self.assertEqual(len(functions), 1193)
        self.expect(options.library, functions, {"zvxcore.dll": CORE})

    def test_zvxgmany(self):
        functions = self.functions("zvxgmany")
        self.assertGreater(len(functions), 20)
        self.expect(options.many_library, functions, {
            "zvxcore.dll": CORE, os.path.basename(options.library): self.functions("zvxg")})

    def test_zvxcore(self):
        self.expect(options.core, CORE, {})


# Moves that fault off their boundary, of vectors wider than what a caller aligns the stack to.
ALIGNED = re.compile(r"v?mov(ap[sd]|dqa(32|64)?|nt\w+)\s.*(%[yz]mm.*\(|\(.*%[yz]mm)")
HAS_FRAME_POINTER = re.compile(r"(mov\s+%rsp|lea\s+\S*\(%rsp\)),%rbp")
ALIGNS_FRAME = re.compile(r"and\s+\$0xf{14}[ec08]0,%rsp")
# Makes a frame of a page or more, although only the page below the stack tells that it has to grow.
UNPROBED = re.compile(r"sub\s+\$0x[1-9a-f][0-9a-f]{3,7},%rsp")


class Stack(unittest.TestCase):
    def test_frames(self):
        """The pages of a large one are touched in order. A function that relies on a boundary of its
        frame makes it; g++ never does, so what it has compiled moves no vector in that way but for
        streaming stores, whose target is an array. The archives have the objects of the DLLs."""
        functions = 0
        for library in options.archive, options.many_archive:
            text = output_of(OBJDUMP, "-d", "--no-show-raw-insn", library)
            for name, body in re.findall(r"<(\S+)>:\n(.*?)\n\n", text + "\n\n", re.DOTALL):
                functions += 1
                aligned = [line for line in body.splitlines() if ALIGNED.search(line)]
                if options.by_gxx:
                    relying = [line for line in aligned if "movnt" not in line]
                elif ALIGNS_FRAME.search(body):
                    relying = []
                else:
                    frame = "(%rsp", "(%rbp" if HAS_FRAME_POINTER.search(body) else "(%rsp"
                    relying = [line for line in aligned if any(base in line for base in frame)]
                self.assertEqual(relying, [], f"{name} relies on its frame")
                self.assertNotRegex(body, UNPROBED, name)
        self.assertGreater(functions, 1193)

    def test_faults_are_recognised(self):
        for line in ("vmovaps %ymm0,0x20(%rsp)", "vmovdqa 0x40(%rsp),%ymm7", "vmovapd (%rsp),%zmm1"):
            self.assertRegex(line, ALIGNED)
        for line in "vmovups %ymm0,0x20(%rsp)", "vmovaps %xmm6,(%rsp)", "vmovaps %ymm1,%ymm2":
            self.assertNotRegex(line, ALIGNED)
        self.assertRegex("sub    $0x1000,%rsp", UNPROBED)
        self.assertNotRegex("sub    $0xffffffffffffff80,%rsp", UNPROBED)  # by 128, in the short form


if __name__ == "__main__":
    parser = argparse.ArgumentParser(description=__doc__)
    for name in ("library", "archive", "many-library", "many-archive", "core", "include",
                 "interface", "clang"):
        parser.add_argument(f"--{name}", required=True)
    parser.add_argument("--by-gxx", action="store_true")
    options, arguments = parser.parse_known_args()
    with open(options.interface, encoding="utf-8") as file:
        options.interface = json.load(file)
    unittest.main(argv=[sys.argv[0], *arguments])
