"""The stubs: they say what the modules have, and mypy finds with them what is wrong in a program."""

import os
import subprocess
import sys

import pytest

import zvxg

pytest.importorskip("mypy")
PROGRAM = """
import numpy as np
import zvxg

x = np.zeros((3, 8), np.float32)
zvxg.fft(x, norm="ortho").imag
zvxg.rfft([1, 2], layout="pack", axes=(0, 0)) + 1.0
zvxg.spectrogram(x, np.hanning(4), 2) + zvxg.ufuncs.hartley_ortho(x)
zvxg.istft(zvxg.stft(x, 8, 2), 8, 2) + zvxg.mdct(x, x[0])
"""


def mypy(directory, module, *arguments):
    (directory / "mypy.ini").write_text(
        "[mypy]\nignore_missing_imports = True\n"
        "[mypy-dask.*,distributed.*,xarray.*]\nfollow_imports = skip\n")
    packages = os.path.dirname(os.path.dirname(zvxg.__file__))
    return subprocess.run([sys.executable, "-m", module, *arguments], cwd=directory, text=True,
                          env={**os.environ, "MYPYPATH": packages, "PYTHONPATH": packages},
                          stdout=subprocess.PIPE, stderr=subprocess.STDOUT)


def test_programs(tmp_path):
    def errors(program):
        (tmp_path / "program.py").write_text(program)
        done = mypy(tmp_path, "mypy", "--strict", "program.py")
        return [line for line in done.stdout.splitlines() if "error:" in line]

    assert errors(PROGRAM) == []
    wrong = errors(PROGRAM + 'zvxg.fft(x, norm="both")\nzvxg.wht(x, layout="ccs")\nzvxg.dct(x)\n')
    assert len(wrong) == 3


def test_stubs_are_complete(tmp_path):
    done = mypy(tmp_path, "mypy.stubtest", "--mypy-config-file", "mypy.ini", "zvxg")
    assert done.returncode == 0, done.stdout
