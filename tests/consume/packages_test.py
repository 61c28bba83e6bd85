"""The Debian packages: what is in them, and that they can be installed, used and purged.

packages_test.py BUILD [Content] [Installation] [Lintian]
"""

import glob
import os
import subprocess
import sys
import tempfile
import unittest

from commands import SOURCE, run, shown_with

LIBRARIES = "/usr/lib/x86_64-linux-gnu"
PARTS = {  # something of each package
    "libzvxg6": [f"{LIBRARIES}/libzvxg.so.6", f"{LIBRARIES}/libzvxcore.so.6",
                 *(f"{LIBRARIES}/glibc-hwcaps/x86-64-{level}/libzvxg.so.6" for level in ("v3", "v4"))],
    "libzvxgmany6": [f"{LIBRARIES}/libzvxgmany.so.6"],
    "libzvxg-dev": ["/usr/include/zvxg.h", f"{LIBRARIES}/libzvxg.so", f"{LIBRARIES}/libzvxg.a",
                    f"{LIBRARIES}/libzvxg_v3.a", f"{LIBRARIES}/libzvxg_v4.a",
                    f"{LIBRARIES}/cmake/zvxg/zvxg-config.cmake", f"{LIBRARIES}/pkgconfig/zvxg.pc"],
    "libzvxg-doc": ["/usr/share/doc/zvxg/README.md", "/usr/share/doc/zvxg/examples/first.c"],
    "python3-zvxg": ["/usr/lib/python3/dist-packages/zvxg/__init__.py"],
    "zvxg-tools": ["/usr/bin/zvxg-bench", "/usr/share/man/man1/zvxg-bench.1.gz"],
}
# Known, and not to be changed: a package that is no part of Debian closes no report there, and cpack
# always writes scripts that call ldconfig, which the trigger does anyway.
UNDERSTOOD = "initial-upload-closes-no-bugs,maintscript-calls-ldconfig"


def setUpModule():
    global scratch, packages
    scratch = tempfile.TemporaryDirectory(prefix="zvxg-packages-")
    run("cpack", "--config", os.path.join(build, "CPackConfig.cmake"), "-B", scratch.name)
    files = glob.glob(os.path.join(scratch.name, "*.deb"))
    packages = {os.path.basename(file).split("_")[0]: file for file in files}


def tearDownModule():
    scratch.cleanup()


def installed():
    """Those of the packages that dpkg knows of, if only by left configuration."""
    done = subprocess.run(["dpkg-query", "-W", "-f", "${Package} ${db:Status-Status}\n", *PARTS],
                          stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
    states = dict(line.split() for line in done.stdout.splitlines())
    return [name for name, state in states.items() if state != "not-installed"]


class Content(unittest.TestCase):
    def field(self, package, name):
        return run("dpkg-deb", "-f", packages[package], name).strip()

    def test_parts(self):
        self.assertLessEqual({"libzvxg6", "libzvxgmany6", "libzvxg-dev", "libzvxg-doc"},
                             packages.keys())
        self.assertLessEqual(packages.keys(), PARTS.keys())
        for package, file in packages.items():
            tree = os.path.join(scratch.name, package)
            run("dpkg-deb", "-x", file, tree)
            for part in PARTS[package] + [f"/usr/share/doc/{package}/copyright"]:
                self.assertTrue(os.path.lexists(tree + part), f"{package}: {part}")

    def test_dependencies(self):
        version = self.field("libzvxg6", "Version")
        for package in packages.keys() & {"libzvxgmany6", "libzvxg-dev", "zvxg-tools"}:
            self.assertIn(f"libzvxg6 (= {version})", self.field(package, "Depends"))
        self.assertIn(f"libzvxgmany6 (= {version})", self.field("libzvxg-dev", "Depends"))
        if "python3-zvxg" in packages:
            self.assertIn(f"libzvxgmany6 (= {version})", self.field("python3-zvxg", "Depends"))
        self.assertRegex(self.field("libzvxg6", "Depends"), r"^libc6 \(>= [\d.]+\)$")
        for name, count in ("libzvxg", 1193), ("libzvxgmany", 24):
            symbols = run("dpkg-deb", "-I", packages[f"{name}6"], "symbols").splitlines()
            self.assertIn(f"{name}.so.6 {name}6 #MINVER#", symbols)
            self.assertEqual(sum(line.startswith(" zvxg") for line in symbols), count)


class Installation(unittest.TestCase):
    def setUp(self):
        if os.geteuid() != 0:
            self.skipTest("only root can install packages")
        if known := installed():
            self.skipTest(f"already on this system, and left alone: {', '.join(known)}")

    def apt(self, *arguments):
        run("apt-get", "-qq", "-y", "-o", "DPkg::Lock::Timeout=120", *arguments)

    def test_install_use_and_purge(self):
        # Whatever happens, the system is left as it was.
        self.addCleanup(self.expect_nothing_left)
        self.addCleanup(lambda: self.apt("purge", *installed()))
        self.apt("install", "--no-install-recommends", *packages.values())
        self.assertEqual(set(installed()), packages.keys())

        first = os.path.join(SOURCE, "examples", "first.c")
        run("cc", first, "-lzvxg", "-o", "first", cwd=scratch.name)
        self.assertIn(run("./first", cwd=scratch.name), shown_with(first))
        if "zvxg-tools" in packages:
            run("zvxg-bench", "--version")
        if "python3-zvxg" in packages:
            self.assertIn("self-check passed", run("/usr/bin/python3", "-B", "-m", "zvxg", cwd="/"))

    def expect_nothing_left(self):
        self.assertEqual(installed(), [])
        for part in sum(PARTS.values(), []):
            self.assertFalse(os.path.lexists(part), part)


class Lintian(unittest.TestCase):
    def test_nothing_to_say(self):
        run("lintian", "--allow-root", "--fail-on", "error,warning",
            "--suppress-tags", UNDERSTOOD, *packages.values())


if __name__ == "__main__":
    build = os.path.abspath(sys.argv.pop(1))
    unittest.main()
