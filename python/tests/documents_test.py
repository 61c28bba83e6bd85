"""The programs of docs/python.md, run in their order; what they print is what the document says."""

import doctest
import pathlib

import pytest

DOCUMENT = pathlib.Path(__file__).parents[2] / "docs" / "python.md"


def test_manual(backend, tmp_path, monkeypatch):
    pytest.importorskip("scipy.signal")
    monkeypatch.chdir(tmp_path)
    failed, tried = doctest.testfile(str(DOCUMENT), module_relative=False)
    assert tried > 20 and failed == 0
