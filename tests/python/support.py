"""Small LAS files, and a plain reader to hold the package against."""

import shutil
import tempfile
import unittest
import warnings
from pathlib import Path

import welvane

root = Path(__file__).resolve().parent.parent.parent
examples = root / "examples"


def las_text(rows, curves=("DEPT.M", "GR.GAPI"), null="-999.25", step="1", version="2.0", well="", unit="M"):
    """A whole file with CR LF."""
    first, last = (str(rows[0]).split()[0], str(rows[-1]).split()[0]) if rows else ("0", "0")
    lines = ["~Version", f" VERS. {version} :", " WRAP. NO :", "~Well"]
    lines += [f" STRT.{unit} {first} :", f" STOP.{unit} {last} :", f" STEP.{unit} {step} :", f" NULL. {null} :"]
    lines += [well] if well else []
    lines += ["~Curve", *(f" {curve} : text of {curve}" for curve in curves), "~A", *rows]
    return "".join(line + "\r\n" for line in lines).encode("latin-1")


def plain_columns(path):
    """Columns of a file that is not wrapped, read word by word."""
    text = Path(path).read_bytes().decode("latin-1").replace("\r\n", "\n").replace("\r", "\n")
    null = float(next(line for line in text.split("\n") if line.strip().startswith("NULL")).split(":")[0].split()[-1])
    data = text[text.index("\n~A") + 1 :].split("\n")[1:]
    rows = [[float(word) for word in line.split()] for line in data if line.strip()]
    return [[float("nan") if value == null else value for value in column] for column in zip(*rows)]


class Case(unittest.TestCase):
    """A folder of its own for each test; notes are silent where a test does not look at them."""

    def setUp(self):
        self.folder = Path(tempfile.mkdtemp())
        self.addCleanup(shutil.rmtree, self.folder)
        catcher = warnings.catch_warnings()
        catcher.__enter__()
        self.addCleanup(catcher.__exit__, None, None, None)
        warnings.simplefilter("ignore", welvane.NoteWarning)

    def file(self, name, content):
        path = self.folder / name
        path.write_bytes(content)
        return path

    def las(self, *rows, name="a.las", **what):
        return self.file(name, las_text(list(rows), **what))
