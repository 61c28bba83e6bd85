"""SciPy's own tests of fft and of spectra: the same outcomes without our backend, with it as the
global one, and with it registered; and most files have calls that it served.

The file is the program and, in the processes that it starts, a plugin of pytest. ZVXG_BACKEND is then
none, global or registered, and ZVXG_REPORT the file that gets the outcome of each test, and for each
file of tests the number of calls that the backend served itself.
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
    if way == "registered":
        scipy.fft.register_backend(zvxg.scipy)


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
    failed = False
    with tempfile.TemporaryDirectory() as directory:
        plain = run("none", directory)["outcomes"]
        for way in "global", "registered":
            results = run(way, directory)
            served = results["served"]
            different = [name for name in plain.keys() | results["outcomes"].keys()
                         if plain.get(name) != results["outcomes"].get(name)]
            print(f"{way}: {len(plain)} tests, {len(different)} with another outcome, "
                  f"calls served: {served}")
            for name in different[:20]:
                print(f"  {name}: {plain.get(name)}, here {results['outcomes'].get(name)}")
            failed |= bool(different) or not all(served.get(file) for file in SERVED)
        failed |= list(plain.values()).count("passed") < 1000
    return int(failed)


if __name__ == "__main__":
    sys.exit(main())
