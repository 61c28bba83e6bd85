"""The programs of the documents, run in their order; what they print is what the document says."""

import doctest
import pathlib

import pytest

DOCUMENTS = pathlib.Path(__file__).parents[2] / "docs"


@pytest.mark.parametrize("name, needed, least", [
    ("python.md", ["scipy.signal"], 20), ("dask.md", ["dask.array", "xarray"], 10)])
def test_document(name, needed, least, backend, tmp_path, monkeypatch):
    for module in needed:
        pytest.importorskip(module)
    monkeypatch.chdir(tmp_path)
    failed, tried = doctest.testfile(str(DOCUMENTS / name), module_relative=False)
    assert tried > least and failed == 0
