"""The ways in which other projects use the library, from a tree that was installed and then moved.
The programs are those that README.md or a document shows, and have to print what is shown there. Run
with --help for the arguments; what follows them goes to unittest."""

import argparse
import glob
import os
import re
import sys
import tempfile
import unittest

from commands import HERE, SOURCE, run, shown_with

EXAMPLES = os.path.join(SOURCE, "examples")
LOADER = "/lib64/ld-linux-x86-64.so.2"
C, CPP = ("cc", "-std=c11"), ("c++", "-std=c++20")
# Sources of the programs that are used in all ways, and how to compile each.
PROGRAMS = {os.path.join(EXAMPLES, "first.c"): C, os.path.join(EXAMPLES, "first.cpp"): CPP}


def levels():
    """Those of x86-64 that this processor has, as the loader sees it."""
    return re.findall(r"x86-64-(v\d) \(supported", run(LOADER, "--help"))


class TestCase(unittest.TestCase):
    def expect_output(self, source, *program, **environment):
        self.assertIn(run(*program, **environment), shown_with(source))

    def expect_programs(self, directory):
        """Runs first.*.zvxg and first.*.static, of which only the former loads the library."""
        for source in PROGRAMS:
            for form in "zvxg", "static":
                program = os.path.join(directory, f"{os.path.basename(source)}.{form}")
                self.expect_output(source, program)
                needed = re.findall(r"\(NEEDED\).*\[(libzvxg.*)\]", run("readelf", "-dW", program))
                self.assertEqual(needed, ["libzvxg.so.6"] if form == "zvxg" else [])
        # These find out by themselves whether their results are right.
        for form in "many", "many_static":
            program = os.path.join(directory, f"many.c.{form}")
            run(program)
            self.assertEqual("libzvxgmany.so.6" in run("readelf", "-dW", program), form == "many")


class Tree(TestCase):
    """An installed tree that was moved."""

    @classmethod
    def setUpClass(cls):
        cls.scratch = cls.enterClassContext(tempfile.TemporaryDirectory(prefix="zvxg-consume-"))
        installed, cls.prefix = (os.path.join(cls.scratch, name) for name in ("installed", "moved"))
        run("cmake", "--install", options.build, "--prefix", installed)
        os.rename(installed, cls.prefix)
        found = glob.glob(f"{cls.prefix}/lib/**/libzvxg.so", recursive=True)
        cls.libraries = os.path.dirname(found[0])

    def compile(self, name, compiler, *arguments):
        program = os.path.join(self.scratch, name)
        run(*compiler, "-Werror", "-o", program, *arguments)
        return program

    def alone(self, source, compiler):
        """Compiled without any file of ours. The library finds zvxcore beside itself, so that a
        program has to name the first only."""
        return self.compile("alone", compiler, source, f"-I{self.prefix}/include",
                            f"-L{self.libraries}", f"-Wl,-rpath,{self.libraries}", "-lzvxg")


class Installed(Tree):
    def test_it_stands_alone(self):
        files = [os.path.join(d, f) for d, _, files in os.walk(self.prefix) for f in files]
        self.assertGreater(len(files), 5)
        for name in files:
            with open(name, "rb") as file:
                content = file.read()
            for place in options.build, SOURCE, "/installed/":
                self.assertNotIn(place.encode(), content, f"{name} refers to {place}")

    def test_find_package(self):
        build = os.path.join(self.scratch, "find_package")
        run("cmake", "-S", HERE, "-B", build, "-G", "Ninja",
            f"-DCMAKE_PREFIX_PATH={self.prefix}", f"-DEXAMPLES={EXAMPLES}")
        run("cmake", "--build", build)
        self.expect_programs(build)
        for level in {"v3", "v4"}.intersection(levels()):
            for source in PROGRAMS:
                name = os.path.basename(source)
                self.expect_output(source, os.path.join(build, f"{name}.static_{level}"))

    def flags(self, *arguments, package="zvxg"):
        return run("pkg-config", *arguments, package,
                   PKG_CONFIG_PATH=os.path.join(self.libraries, "pkgconfig")).split()

    def test_pkg_config(self):
        for source, compiler in PROGRAMS.items():
            shared = self.compile("shared", compiler, source, *self.flags("--cflags", "--libs"))
            self.expect_output(source, shared, LD_LIBRARY_PATH=self.libraries)
            static = self.compile("static", compiler, source, "-static",
                                  *self.flags("--static", "--cflags", "--libs"))
            self.expect_output(source, static)
        source = os.path.join(HERE, "many.c")
        for form in [], ["-static"]:
            flags = self.flags(*(["--static"] if form else []), "--cflags", "--libs", package="zvxgmany")
            run(self.compile("many", C, source, *form, *flags),
                LD_LIBRARY_PATH=self.libraries)

    def test_compiler_alone(self):
        for source, compiler in [*PROGRAMS.items(), (os.path.join(EXAMPLES, "mdct.cpp"), CPP)]:
            self.expect_output(source, self.alone(source, compiler))

    def test_opened_at_run_time(self):
        source = os.path.join(HERE, "opened.c")
        for memory in [], ["-DOWN_MEMORY", "-rdynamic"]:
            program = self.compile("opened", C, *memory, source,
                                   f"-I{self.prefix}/include", "-ldl")
            run(program, os.path.join(self.libraries, "libzvxg.so.6"))


class Loader(Tree):
    """The variant that the loader takes, of a program and what it opens at run time."""

    def expect_choice(self, chosen, *loader, **environment):
        source, compiler = next(iter(PROGRAMS.items()))
        program = self.alone(source, compiler)
        listed = run(*loader, program, LD_TRACE_LOADED_OBJECTS="1", **environment)
        found = dict(re.findall(r"(libzvx\w+)\.so\.6 => (\S+)", listed))
        place = "" if chosen == "base" else f"glibc-hwcaps/x86-64-{chosen}"
        self.assertEqual(os.path.normpath(found["libzvxg"]),
                         os.path.join(self.libraries, place, "libzvxg.so.6"))
        self.assertEqual(os.path.normpath(found["libzvxcore"]),
                         os.path.join(self.libraries, "libzvxcore.so.6"))
        self.expect_output(source, *loader, program, **environment)

        opened = self.compile("opened", C, os.path.join(HERE, "opened.c"),
                              f"-I{self.prefix}/include", "-ldl")
        tag = run(*loader, opened, "libzvxg.so.6", LD_LIBRARY_PATH=self.libraries, **environment)
        self.assertEqual(tag, "e9\n" if chosen == "base" else f"{chosen}\n")

    def require(self, level):
        if level not in levels():
            self.skipTest(f"this processor is below {level}")

    def test_v4(self):
        self.require("v4")
        self.expect_choice("v4")

    def test_v3(self):
        self.require("v3")
        self.expect_choice("v3", GLIBC_TUNABLES="glibc.cpu.hwcaps=-AVX512F")
        self.expect_choice("v3", LOADER, "--glibc-hwcaps-mask", "x86-64-v3")

    def test_base(self):
        self.expect_choice("base", GLIBC_TUNABLES="glibc.cpu.hwcaps=-AVX2")
        self.expect_choice("base", LOADER, "--glibc-hwcaps-mask", "x86-64-v2")


class Fetched(TestCase):
    """A project that has the library as a part of its own build, which the test is given."""

    def test_programs(self):
        self.expect_programs(options.build)

    def test_nothing_is_installed_with_it(self):
        with tempfile.TemporaryDirectory() as place:
            run("cmake", "--install", options.build, "--prefix", place)
            self.assertEqual(os.listdir(place), [])


if __name__ == "__main__":
    parser = argparse.ArgumentParser(description="Tests the ways to use the library.")
    parser.add_argument("--build", required=True, help="build to install from; or the project's own")
    options, rest = parser.parse_known_args()
    options.build = os.path.abspath(options.build)
    unittest.main(argv=sys.argv[:1] + rest)
