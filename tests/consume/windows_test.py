"""The zip for Windows: what is in it, and programs built against it by MinGW's compilers, by clang and
lld, and for Microsoft's linker, which run under Wine and have to print what a document shows. Run with
--help for the arguments; what follows them goes to unittest."""

import argparse
import os
import re
import subprocess
import sys
import tempfile
import unittest
import zipfile

HERE = os.path.dirname(os.path.abspath(__file__))
SOURCE = os.path.dirname(os.path.dirname(HERE))
MINGW = {".c": ["x86_64-w64-mingw32-gcc-posix"], ".cpp": ["x86_64-w64-mingw32-g++-posix"]}
CLANG = {".c": "clang", ".cpp": "clang++"}
STANDARD = {".c": "-std=c11", ".cpp": "-std=c++20"}
MICROSOFT = "--target=x86_64-pc-windows-msvc"


def run(*command, **environment):
    done = subprocess.run(command, env=os.environ | environment, stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, text=True)
    if done.returncode:
        raise AssertionError(f"{' '.join(command)} returned {done.returncode}:\n{done.stdout}")
    return done.stdout.replace("\r\n", "\n")


def shown_beside(source):
    """The blocks of README.md, which shows this program."""
    with open(os.path.join(SOURCE, "README.md"), encoding="utf-8") as file:
        blocks = re.findall(r"^```\w*\n(.*?)^```$", file.read(), re.MULTILINE | re.DOTALL)
    with open(source, encoding="utf-8") as file:
        assert file.read() in blocks, source
    return blocks


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

    def test_programs_print_what_is_shown(self):
        libraries = ["-lzvxg", "-lzvxcore"]
        # With the C++ library in the program, -l would find the archives.
        dlls = {".c": libraries, ".cpp": ["-static", "-lpthread"] + [
            self.path(f"lib/lib{name[2:]}.dll.a") for name in libraries]}
        for form in "first.c", "first.cpp":
            source = os.path.join(SOURCE, "examples", form)
            kind = os.path.splitext(form)[1]
            for compiler in MINGW[kind], [CLANG[kind], *options.clang.split(";")]:
                for linking in dlls[kind], ["-DZVXG_STATIC", "-static", *libraries, "-lpthread"]:
                    with self.subTest(f"{form} {compiler[0]} {linking}"):
                        program = os.path.join(self.scratch, f"{form}.exe")
                        run(*compiler, STANDARD[kind], source, "-o", program,
                            f"-I{self.path('include')}", f"-L{self.path('lib')}", *linking)
                        self.assertIn(self.start(program), shown_beside(source))
                        imports = run("x86_64-w64-mingw32-objdump", "-p", program)
                        self.assertEqual("zvxgene9-6.1.dll" in imports, linking == dlls[kind])

    def test_many_at_once(self):
        # The program finds out by itself whether its results are right.
        libraries = ["-lzvxgmany", "-lzvxg", "-lzvxcore"]
        source = os.path.join(HERE, "many.c")
        for compiler in MINGW[".c"], [CLANG[".c"], *options.clang.split(";")]:
            for linking in libraries, ["-DZVXG_STATIC", "-static", *libraries]:
                with self.subTest(f"{compiler[0]} {linking}"):
                    program = os.path.join(self.scratch, "many.exe")
                    run(*compiler, STANDARD[".c"], source, "-o", program,
                        f"-I{self.path('include')}", f"-L{self.path('lib')}", *linking)
                    self.start(program)
                    imports = run("x86_64-w64-mingw32-objdump", "-p", program)
                    self.assertEqual("zvxgmany-6.1.dll" in imports, linking == libraries)

    def test_find_package(self):
        build = os.path.join(self.scratch, "find_package")
        examples = os.path.join(SOURCE, "examples")
        run("cmake", "-S", HERE, "-B", build, "-G", "Ninja", f"-DEXAMPLES={examples}",
            f"-DCMAKE_TOOLCHAIN_FILE={SOURCE}/cmake/toolchains/windows-gcc.cmake",
            f"-Dzvxg_DIR={self.path('lib/cmake/zvxg')}", "-DCMAKE_EXE_LINKER_FLAGS=-static")
        run("cmake", "--build", build)
        for name in "first.c", "first.cpp":
            for form in "zvxg", "static":
                printed = self.start(os.path.join(build, f"{name}.{form}.exe"))
                self.assertIn(printed, shown_beside(os.path.join(examples, name)))
        for form in "many", "many_static":
            self.start(os.path.join(build, f"many.c.{form}.exe"))

    def test_microsofts_linker_takes_the_import_library(self):
        program, bare = (os.path.join(self.scratch, name) for name in ("bare.exe", "bare.obj"))
        run("clang", MICROSOFT, "-O2", "-c", os.path.join(HERE, "bare.c"), "-o", bare,
            f"-I{self.path('include')}")
        run("lld-link", "/subsystem:console", "/nodefaultlib", f"/out:{program}", bare,
            self.path("lib/zvxg.lib"), self.path("lib/zvxgmany.lib"))
        self.start(program)

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
