"""Builds the wheel: CMake compiles the libraries and the extension, setuptools packs them.

The sources of the library are those of the tree around this directory, or in a source distribution
the copy in library/.
"""

import os
import re
import shutil
import subprocess
import sys

import numpy
from setuptools import Extension, setup
from setuptools.command.build_ext import build_ext
from setuptools.command.sdist import sdist

HERE = os.path.dirname(os.path.abspath(__file__))
COPIED = os.path.join(HERE, "library")
TREE = COPIED if os.path.isdir(COPIED) else os.path.dirname(HERE)


def version():
    with open(os.path.join(TREE, "CMakeLists.txt"), encoding="utf-8") as project:
        return re.search(r"project\(zvxg VERSION (\S+)", project.read()).group(1)


def numpy_requirement():
    """A module that NumPy 1 compiled runs with no NumPy 2; the other way round it does, since 1.23."""
    major, minor = numpy.__version__.split(".")[:2]
    return f"numpy>={major}.{minor},<2" if major == "1" else "numpy>=1.23"


class BuildByCMake(build_ext):
    def run(self):
        build = os.path.abspath(self.build_temp)
        options = {"CMAKE_BUILD_TYPE": "Release", "ZVXG_TESTS": "OFF", "ZVXG_BENCH": "OFF",
                   "ZVXG_EXAMPLES": "OFF", "ZVXG_PYTHON": "ON", "ZVXG_WHEEL": "ON",
                   "Python_EXECUTABLE": sys.executable}
        subprocess.run(["cmake", "-S", TREE, "-B", build,
                        *(f"-D{name}={value}" for name, value in options.items())], check=True)
        subprocess.run(["cmake", "--build", build, "--parallel", str(os.cpu_count())], check=True)
        subprocess.run(["cmake", "--install", build, "--strip", "--component", "wheel",
                        "--prefix", os.path.abspath(self.build_lib)], check=True)


class CopyLibrary(sdist):
    def make_release_tree(self, base_dir, files):
        super().make_release_tree(base_dir, files)
        library = os.path.join(base_dir, "library")
        for part in ("CMakeLists.txt", "LICENSE", "cmake", "include", "packaging", "src",
                     "tools/interface", "tools/kernelgen", "python/CMakeLists.txt", "python/src"):
            source, copy = os.path.join(TREE, part), os.path.join(library, part)
            if os.path.isdir(source):
                shutil.copytree(source, copy)
            else:
                os.makedirs(os.path.dirname(copy), exist_ok=True)
                shutil.copy2(source, copy)


setup(version=version(), install_requires=[numpy_requirement()],
      ext_modules=[Extension("zvxg._core", sources=[])],
      cmdclass={"build_ext": BuildByCMake, "sdist": CopyLibrary})
