"""The release: the same bytes twice, and what packagers do with it, without a generator.

usage: dist_test.py TREE [TEST...]

`./dev dist` has made the release.
"""

import hashlib
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

TREE = pathlib.Path(sys.argv.pop(1)).resolve()
DIST = TREE / "build/dist"
WINE = shutil.which("wine64", path=os.environ["PATH"] + ":/usr/lib/wine")
HASHES = TREE / "build/release/tests/zvxg_hashes"
LIBRARY = ["-D", "ZVXG_TESTS=OFF", "-D", "ZVXG_EXAMPLES=OFF"]


def run(*command, **options):
    done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, **options)
    if done.returncode:
        raise AssertionError(f"{' '.join(map(str, command))} returned {done.returncode}:\n{done.stdout[-4000:]}")
    return done.stdout


def setUpModule():
    global scratch, place, source, tarball
    tarball, = DIST.glob("*.tar.xz")
    scratch = tempfile.TemporaryDirectory(prefix="zvxg-dist-")
    place = pathlib.Path(scratch.name)
    run("tar", "-C", place, "-xf", tarball)
    source, = place.iterdir()


def tearDownModule():
    scratch.cleanup()


class Dist(unittest.TestCase):
    def assertRight(self, build):
        """What zvxg-bench of this build finds, the bits of all its libraries, and that no generator was
        built for it."""
        program, = (path for path in build.rglob("zvxg-bench") if path.is_file())
        self.assertIn(", 0 failures", run(program, "verify"))
        many, = build.rglob("libzvxgmany.so")
        libraries = list(build.rglob("libzvxg.so.6"))
        self.assertEqual(len(libraries), 3)
        for library in libraries:
            try:
                run(HASHES, "check", TREE / "tests/hashes.csv",
                    env=os.environ | {"ZVXG_LIBRARY": str(library), "ZVXG_MANY_LIBRARY": str(many)})
            except AssertionError as error:  # of a processor that is below the level of a variant
                if "CPU ISA level is lower than required" not in str(error):
                    raise
        self.assertEqual([path for name in ("kernelgen", "interface") for path in build.rglob(name)
                          if path.is_file()], [])

    def test_the_same_bytes_and_their_checksum(self):
        first = hashlib.sha256(tarball.read_bytes()).hexdigest()
        run("sha256sum", "--check", f"{tarball.name}.sha256", cwd=DIST)
        run(TREE / "dev", "dist")
        self.assertEqual(hashlib.sha256(tarball.read_bytes()).hexdigest(), first)

    def test_cmake(self):
        run("cmake", "--preset", "release", *LIBRARY, cwd=source)
        run("cmake", "--build", "--preset", "release", cwd=source)
        self.assertRight(source / "build/release")

    def test_meson(self):
        run("meson", "setup", "--prefix", place / "prefix", place / "meson", source)
        run("meson", "compile", "-C", place / "meson")
        self.assertRight(place / "meson")
        run("meson", "install", "-C", place / "meson")
        # What programs are linked with is the library of all processors.
        self.assertEqual(len(list((place / "prefix").rglob("libzvxg.so.6"))), 3)
        self.assertEqual(len(list((place / "prefix").rglob("libzvxg.so"))), 1)
        self.assertIn(", 0 failures", run(place / "prefix/bin/zvxg-bench", "verify"))

    @unittest.skipUnless(shutil.which("x86_64-w64-mingw32-g++-posix") and WINE,
                         "there is no compiler for Windows, or no Wine")
    def test_windows(self):
        run("cmake", "--preset", "windows", *LIBRARY, cwd=source)
        run("cmake", "--build", "--preset", "windows", cwd=source)
        self.assertFalse((source / "build/windows/host").exists())
        run("cmake", "--install", source / "build/windows", "--prefix", place / "windows")
        wine = {"WINEPREFIX": str(place / "wine"), "WINEDEBUG": "-all", "DISPLAY": "",
                "WINEDLLOVERRIDES": "mscoree,mshtml="}
        self.assertIn(", 0 failures", run(WINE, place / "windows/bin/zvxg-bench.exe", "verify",
                                          env=os.environ | wine))

    def test_debian(self):
        package, = (DIST / "debian").glob("*.dsc")
        unpacked = place / "debian" / source.name
        unpacked.parent.mkdir()
        run("dpkg-source", "-x", package, unpacked)
        run("dpkg-buildpackage", "-us", "-uc", "-b", cwd=unpacked,
            env=os.environ | {"DEB_BUILD_OPTIONS": "noautodbgsym"})
        build, = unpacked.glob("obj-*")
        self.assertRight(build)
        run("lintian", "--fail-on", "error,warning", package)
        changes, = unpacked.parent.glob("*.changes")
        run("lintian", "--fail-on", "error,warning", "--suppress-tags", "initial-upload-closes-no-bugs", changes)


if __name__ == "__main__":
    unittest.main()
