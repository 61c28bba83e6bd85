"""The release: the same bytes twice, and what packagers do with it, without a generator.

usage: dist_test.py TREE [TEST...]
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
LIBRARY = ["-D", "ZVXG_TESTS=OFF", "-D", "ZVXG_EXAMPLES=OFF"]


def run(*command, **options):
    done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, **options)
    if done.returncode:
        raise AssertionError(f"{' '.join(map(str, command))} returned {done.returncode}:\n{done.stdout[-4000:]}")
    return done.stdout


def make():
    run(TREE / "dev", "dist")
    tarball, = DIST.glob("*.tar.xz")
    return tarball


def setUpModule():
    global scratch, place, source, tarball
    tarball = make()
    scratch = tempfile.TemporaryDirectory(prefix="zvxg-dist-")
    place = pathlib.Path(scratch.name)
    run("tar", "-C", place, "-xf", tarball)
    source, = place.iterdir()


def tearDownModule():
    scratch.cleanup()


class Dist(unittest.TestCase):
    def assertRight(self, build):
        """What zvxg-bench of this build finds, and that no generator was built for it."""
        program, = build.rglob("zvxg-bench*/zvxg-bench") if (build / "tools").exists() else [build / "zvxg-bench"]
        self.assertIn(", 0 failures", run(program, "verify"))
        self.assertEqual([path for name in ("kernelgen", "interface") for path in build.rglob(name)
                          if path.is_file()], [])

    def test_the_same_bytes_and_their_checksum(self):
        first = hashlib.sha256(tarball.read_bytes()).hexdigest()
        run("sha256sum", "--check", f"{tarball.name}.sha256", cwd=DIST)
        make()
        self.assertEqual(hashlib.sha256(tarball.read_bytes()).hexdigest(), first)

    def test_cmake(self):
        run("cmake", "--preset", "release", *LIBRARY, cwd=source)
        run("cmake", "--build", "--preset", "release", cwd=source)
        self.assertRight(source / "build/release")

    def test_meson(self):
        run("meson", "setup", place / "meson", source)
        run("meson", "compile", "-C", place / "meson")
        self.assertRight(place / "meson")
        names = run("nm", "-D", "--defined-only", place / "meson/libzvxg.so")
        self.assertEqual(names.count(" T "), 1193)

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
        run("lintian", "--fail-on", "error,warning", package)
        changes, = unpacked.parent.glob("*.changes")
        run("lintian", "--fail-on", "error,warning", "--suppress-tags", "initial-upload-closes-no-bugs", changes)


if __name__ == "__main__":
    unittest.main()
