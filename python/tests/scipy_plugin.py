"""Has pytest run tests of SciPy with the backend zvxg.scipy set in one of the ways of scipy.fft.

ZVXG_BACKEND is none, global or registered. ZVXG_REPORT is the file that gets the outcome of each
test, and for each file of tests the number of calls that the backend served itself.
"""

import collections
import json
import os

import scipy.fft

import zvxg.scipy

_way = os.environ["ZVXG_BACKEND"]
_outcomes, _served = {}, collections.Counter()
_file = None


def _counted(function):
    def call(*arguments, **keywords):
        result = function(*arguments, **keywords)
        _served[_file] += 1
        return result

    return call


for _name, _function in zvxg.scipy._FUNCTIONS.items():
    zvxg.scipy._FUNCTIONS[_name] = _counted(_function)
if _way == "registered":
    scipy.fft.register_backend(zvxg.scipy)


def pytest_runtest_setup(item):
    global _file
    _file = os.path.basename(item.fspath)
    if _way == "global":  # tests of backends set one of their own and go back to SciPy's
        scipy.fft.set_global_backend(zvxg.scipy)


def pytest_runtest_logreport(report):
    if report.when == "call" or report.outcome != "passed":
        _outcomes[report.nodeid] = report.outcome


def pytest_sessionfinish():
    with open(os.environ["ZVXG_REPORT"], "w") as report:
        json.dump({"outcomes": _outcomes, "served": _served}, report)
