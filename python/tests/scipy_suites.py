"""SciPy's own tests of fft and of spectra: the same outcomes without our backend, with it as the
global one, and with it registered; and most files have calls that it served."""

import json
import os
import subprocess
import sys
import tempfile

SUITES = ["scipy.fft.tests", "scipy.signal.tests.test_spectral"]
SERVED = ["test_numpy.py", "test_real_transforms.py", "test_spectral.py"]


def run(way, directory):
    report = os.path.join(directory, way)
    here = os.path.dirname(os.path.abspath(__file__))
    path = os.pathsep.join([here, os.environ["PYTHONPATH"]])
    subprocess.run(
        [sys.executable, "-m", "pytest", "-q", "-p", "no:cacheprovider", "-p", "scipy_plugin",
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
