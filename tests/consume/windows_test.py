"""The zip for Windows: what is in it, and programs built against it by MinGW's compilers, by clang and
lld, and for Microsoft's linker, which run under Wine and have to print what a document shows. Run with
--help for the arguments; what follows them goes to unittest."""

import argparse
import itertools
import os
import re
import sys
import tempfile
import unittest
import zipfile

from commands import HERE, SOURCE, run, shown_with

MINGW = {".c": ["x86_64-w64-mingw32-gcc-posix"], ".cpp": ["x86_64-w64-mingw32-g++-posix"]}
CLANG = {".c": "clang", ".cpp": "clang++"}
STANDARD = {".c": "-std=c11", ".cpp": "-std=c++20"}


class Zip(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.scratch = cls.enterClassContext(tempfile.TemporaryDirectory(prefix="zvxg-windows-"))
        run("cpack", "--config", f"{options.build}/CPackConfig.cmake", "-B", cls.scratch)
        (name,) = (name for name in os.listdir(cls.scratch) if name.endswith(".zip"))
        with zipfile.ZipFile(os.path.join(cls.scratch, name)) as archive:
            cls.names = [name.partition("/")[2] for name in archive.namelist()]
            archive.extractall(cls.scratch)
        cls.tree = os.path.join(cls.scratch, name[:-4])

    def path(self, *parts):
        return os.path.join(self.tree, *parts)

    def start(self, program, *arguments):
        return run(*options.wine.split(";"), program, *arguments, WINEPATH=self.path("bin"))

    def test_it_has_what_the_document_lists(self):
        with open(os.path.join(SOURCE, "docs", "windows.md"), encoding="utf-8") as file:
            table = re.search(r"^\| File .*?\n\n", file.read(), re.MULTILINE | re.DOTALL)[0]
        listed = [name for line in table.splitlines() if line
                  for name in re.findall(r"`(.+?)`", line.split("|")[1])]
        self.assertGreater(len(listed), 15)
        directories = tuple(name for name in listed if name.endswith("/"))
        files = {name for name in self.names if name and not name.endswith("/")}
        self.assertEqual({name for name in files if not name.startswith(directories)},
                         set(listed) - set(directories))
        for directory in directories:
            self.assertTrue(any(name.startswith(directory) for name in files), directory)

    def test_it_knows_no_place_of_the_build(self):
        for name in filter(os.path.isfile, map(self.path, self.names)):
            with open(name, "rb") as file:
                content = file.read()
            for place in options.build, SOURCE:
                self.assertNotIn(place.encode(), content, name)

    def test_programs_use_it(self):
        """Those that a document shows print what it shows; many.c judges its results itself."""
        for name, package, dll in (("examples/first.c", "zvxg", "zvxgene9-6.1.dll"),
                                   ("examples/first.cpp", "zvxg", "zvxgene9-6.1.dll"),
                                   ("tests/consume/many.c", "zvxgmany", "zvxgmany-6.1.dll")):
            source = os.path.join(SOURCE, name)
            kind = os.path.splitext(name)[1]
            for compiler, form in itertools.product(
                    (MINGW[kind], [CLANG[kind], *options.clang.split(";")]), ([], ["--static"])):
                flags = run("pkg-config", *form, "--cflags", "--libs", package,
                            PKG_CONFIG_PATH=self.path("lib/pkgconfig")).split()
                if form:
                    flags.append("-static")
                elif kind == ".cpp":  # with the C++ library in the program, -l means an archive
                    flags = [re.sub(r"^-l(\w+)$", r"-l:lib\1.dll.a", flag) for flag in flags]
                    flags.append("-static")
                with self.subTest(f"{name} {compiler[0]} {flags}"):
                    program = os.path.join(self.scratch, "program.exe")
                    run(*compiler, STANDARD[kind], source, "-o", program, *flags, "-lpthread")
                    printed = self.start(program)
                    if name.startswith("examples"):
                        self.assertIn(printed, shown_with(source))
                    imports = run("x86_64-w64-mingw32-objdump", "-p", program)
                    self.assertEqual(dll in imports, not form)

    def find_package(self, *arguments):
        """A project that finds the package, built: its directory."""
        build = tempfile.mkdtemp(dir=self.scratch)
        run("cmake", "-S", HERE, "-B", build, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Release",
            f"-Dzvxg_DIR={self.path('lib/cmake/zvxg')}", *arguments)
        run("cmake", "--build", build)
        return build

    def test_find_package(self):
        examples = os.path.join(SOURCE, "examples")
        build = self.find_package(
            f"-DEXAMPLES={examples}", "-DCMAKE_EXE_LINKER_FLAGS=-static",
            f"-DCMAKE_TOOLCHAIN_FILE={SOURCE}/cmake/toolchains/windows-gcc.cmake")
        for name in "first.c", "first.cpp":
            for form in "zvxg", "static":
                printed = self.start(os.path.join(build, f"{name}.{form}.exe"))
                self.assertIn(printed, shown_with(os.path.join(examples, name)))
        for form in "many", "many_static":
            self.start(os.path.join(build, f"many.c.{form}.exe"))

    def test_find_package_for_microsofts_linker(self):
        build = self.find_package(
            "-DCMAKE_SYSTEM_NAME=Windows", "-DCMAKE_C_COMPILER=clang",
            "-DCMAKE_C_COMPILER_TARGET=x86_64-pc-windows-msvc", "-DCMAKE_RC_COMPILER=llvm-rc",
            "-DCMAKE_EXE_LINKER_FLAGS=-fuse-ld=lld", "-DCMAKE_MSVC_RUNTIME_LIBRARY=",
            "-DCMAKE_C_STANDARD_LIBRARIES=", "-DCMAKE_TRY_COMPILE_TARGET_TYPE=STATIC_LIBRARY")
        self.start(os.path.join(build, "bare.exe"))
        with open(os.path.join(build, "build.ninja"), encoding="utf-8") as file:
            rules = file.read()
        self.assertIn(self.path("lib/zvxgmany.lib"), rules)
        self.assertNotIn(".dll.a", rules)

    def test_loading_at_run_time(self):
        program = os.path.join(self.scratch, "opened.exe")
        run(*MINGW[".c"], os.path.join(HERE, "opened.c"), "-o", program,
            f"-I{self.path('include')}")
        library = "Z:" + self.path("bin/zvxgene9-6.1.dll").replace("/", "\\")
        self.assertEqual(run(*options.wine.split(";"), program, library), "e9\n")

    def bench(self, *arguments):
        return self.start(self.path("bin/zvxg-bench.exe"), *arguments)

    def test_the_program_verifies_the_libraries(self):
        self.assertRegex(self.bench("verify"), r"total: 1193 functions and 24 of libzvxgmany, "
                                               r"\d+ checks, 0 failures\n\Z")

    def test_the_program_measures_in_other_processes(self):
        printed = os.path.join(self.scratch, "speed file.csv")
        self.bench("speed", "--processes", "2", "--ms", "1", "--csv",
                   "Z:" + printed.replace("/", "\\"), "complex-CToC_12_")
        with open(printed, encoding="utf-8") as file:
            text = file.read()
        self.assertIn("no libfftw3f-3.dll", text)
        self.assertEqual(len(re.findall(r"^complex", text, re.MULTILINE)), 4)


if __name__ == "__main__":
    parser = argparse.ArgumentParser(description=__doc__)
    for name in "build", "wine", "clang":
        parser.add_argument(f"--{name}", required=True)
    options, arguments = parser.parse_known_args()
    unittest.main(argv=[sys.argv[0], *arguments])
