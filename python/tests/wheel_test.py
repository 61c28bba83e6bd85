"""`pip install ./python` without a network: the wheel has all it needs, and so has the source
distribution that it can be made of."""

import os
import pathlib
import subprocess
import sys
import tarfile
import tempfile
import zipfile

PYTHON = pathlib.Path(__file__).resolve().parents[1]
CHECK = """
import numpy, zvxg, pathlib
library = pathlib.Path(zvxg.library()["file"]).resolve()
assert pathlib.Path(zvxg.__file__).resolve().parent in library.parents, library
assert (zvxg.fft(numpy.eye(8)[:, :, None], axis=0).shape == (8, 8, 1)) and zvxg.__version__
print(library)
"""


def pip(*arguments, **options):
    subprocess.run([sys.executable, "-m", "pip", "--disable-pip-version-check", *arguments],
                   check=True, **options)


def check(place, **environment):
    return subprocess.run([sys.executable, "-c", CHECK], check=True, text=True, cwd=place,
                          env={**os.environ, "PYTHONPATH": str(place), **environment},
                          stdout=subprocess.PIPE).stdout.strip()


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
        print(check(place))
        assert "glibc-hwcaps" not in check(place, GLIBC_TUNABLES="glibc.cpu.hwcaps=-AVX2,-AVX512F")
    return 0


if __name__ == "__main__":
    sys.exit(main())
