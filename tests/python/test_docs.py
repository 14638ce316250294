"""The example in docs/python.md runs as written."""
import doctest
import pathlib

DOC = pathlib.Path(__file__).resolve().parents[2] / "docs" / "python.md"


def test_python_doc_example():
    failures, tried = doctest.testfile(str(DOC), module_relative=False, optionflags=doctest.ELLIPSIS)
    assert tried >= 10 and failures == 0
