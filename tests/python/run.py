"""Runs the tests of the Python package, the examples of its help, and those of the guide, from the project's folder."""

import doctest
import os
import sys
import unittest
import warnings
from pathlib import Path

import welvane

root = Path(__file__).resolve().parent.parent.parent


def load_tests() -> unittest.TestSuite:
    loader = unittest.TestLoader()
    suite = unittest.TestSuite()
    suite.addTests(loader.discover(str(root / "tests" / "python"), pattern="test_*.py"))
    suite.addTests(doctest.DocTestSuite(welvane))
    suite.addTests(doctest.DocFileSuite(str(root / "docs" / "python.md"), module_relative=False))
    return suite


if __name__ == "__main__":
    os.chdir(root)
    # The package that was installed is tested, not the sources beside it.
    assert "build" in Path(welvane.__file__).parts, welvane.__file__
    warnings.simplefilter("always", welvane.NoteWarning)
    result = unittest.TextTestRunner(verbosity=1).run(load_tests())
    print(f"python: {result.testsRun} tests, {len(result.skipped)} left out")
    sys.exit(not result.wasSuccessful())
