"""SciPy's own tests of fft and of spectra: the same outcomes without our backend and with it as the
global one; and most files have calls that it served. backend_test.py has the other ways to set it.

The file is the program and, in the processes that it starts, a plugin of pytest. ZVXG_BACKEND is then
none or global, and ZVXG_REPORT the file that gets the outcome of each test, and for each file of tests
the number of calls that the backend served itself.
"""

import collections
import json
import os
import subprocess
import sys
import tempfile

import scipy.fft

import zvxg.scipy

SUITES = ["scipy.fft.tests", "scipy.signal.tests.test_spectral"]
SERVED = ["test_numpy.py", "test_real_transforms.py", "test_spectral.py"]
way = os.environ.get("ZVXG_BACKEND")
outcomes, served = {}, collections.Counter()
file = None


def counted(function):
    def call(*arguments, **keywords):
        result = function(*arguments, **keywords)
        served[file] += 1
        return result

    return call


def pytest_configure():
    functions = zvxg.scipy._FUNCTIONS
    functions.update({name: counted(function) for name, function in functions.items()})


def pytest_runtest_setup(item):
    global file
    file = os.path.basename(item.fspath)
    if way == "global":  # tests of backends set one of their own and go back to SciPy's
        scipy.fft.set_global_backend(zvxg.scipy)


def pytest_runtest_logreport(report):
    if report.when == "call" or report.outcome != "passed":
        outcomes[report.nodeid] = report.outcome


def pytest_sessionfinish():
    with open(os.environ["ZVXG_REPORT"], "w") as report:
        json.dump({"outcomes": outcomes, "served": served}, report)


def run(way, directory):
    report = os.path.join(directory, way)
    here = os.path.dirname(os.path.abspath(__file__))
    path = os.pathsep.join([here, os.environ["PYTHONPATH"]])
    subprocess.run(
        [sys.executable, "-m", "pytest", "-q", "-p", "no:cacheprovider", "-p", "scipy_suites",
         "--pyargs", *SUITES],
        env={**os.environ, "PYTHONPATH": path, "ZVXG_BACKEND": way, "ZVXG_REPORT": report},
        stdout=subprocess.DEVNULL)
    with open(report, encoding="utf-8") as results:
        return json.load(results)


def main():
    with tempfile.TemporaryDirectory() as directory:
        plain = run("none", directory)["outcomes"]
        results = run("global", directory)
    served = results["served"]
    different = [name for name in plain.keys() | results["outcomes"].keys()
                 if plain.get(name) != results["outcomes"].get(name)]
    print(f"{len(plain)} tests, {len(different)} with another outcome, calls served: {served}")
    for name in different[:20]:
        print(f"  {name}: {plain.get(name)}, here {results['outcomes'].get(name)}")
    complete = list(plain.values()).count("passed") >= 1000 and all(map(served.get, SERVED))
    return int(bool(different) or not complete)


if __name__ == "__main__":
    sys.exit(main())
