"""`pip install ./python` without a network: the wheel has all it needs, and so has the source
distribution that it can be made of."""

import os
import pathlib
import re
import subprocess
import sys
import tarfile
import tempfile
import zipfile

PYTHON = pathlib.Path(__file__).resolve().parents[1]


def pip(*arguments, **options):
    subprocess.run([sys.executable, "-m", "pip", "--disable-pip-version-check", *arguments],
                   check=True, **options)


def library(place, **environment):
    """The file that answers, which lies in the package, after a self-check."""
    text = subprocess.run([sys.executable, "-m", "zvxg"], check=True, text=True, cwd=place,
                          env={**os.environ, "PYTHONPATH": str(place), **environment},
                          stdout=subprocess.PIPE).stdout
    file = pathlib.Path(re.search(r"^zvxg .* in (.*)$", text, re.MULTILINE)[1]).resolve()
    assert place.resolve() in file.parents, text
    return str(file)


def main():
    with tempfile.TemporaryDirectory(prefix="zvxg-wheel-") as scratch:
        scratch = pathlib.Path(scratch)
        subprocess.run([sys.executable, "setup.py", "-q", "egg_info", "--egg-base", scratch,
                        "sdist", "-d", scratch], cwd=PYTHON, check=True)
        (archive,) = scratch.glob("*.tar.gz")
        with tarfile.open(archive) as sources:
            sources.extractall(scratch)
        pip("wheel", "--no-build-isolation", "--no-deps", "--no-index", "-w", scratch,
            archive.with_suffix("").with_suffix(""))
        (wheel,) = scratch.glob("*.whl")
        with zipfile.ZipFile(wheel) as content:
            names = content.namelist()
        for name in ("py.typed", "__init__.pyi", "scipy.py", "lib/libzvxg.so.6",
                     "lib/libzvxgmany.so.6", "lib/libzvxcore.so.6"):
            assert f"zvxg/{name}" in names, name
        place = scratch / "place"
        pip("install", "--no-deps", "--no-index", "--target", place, wheel)
        # Below the directory of the libraries, the loader finds the variant for the processor.
        assert any("x86-64-v3/libzvxg.so.6" in name for name in names)
        print(library(place))
        assert "glibc-hwcaps" not in library(place, GLIBC_TUNABLES="glibc.cpu.hwcaps=-AVX2,-AVX512F")
    return 0


if __name__ == "__main__":
    sys.exit(main())
