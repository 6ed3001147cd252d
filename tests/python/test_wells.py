"""Reading, the object that comes of it, and writing."""

import math
import pickle
import random
import struct
import sys
import unittest
import warnings
from unittest import mock

import numpy as np

import welvane
from support import Case, examples, plain_columns

try:
    import pandas
except ImportError:
    pandas = None


def bits(values):
    return [struct.pack("<d", value) if not math.isnan(value) else b"nan" for value in values]


class Reading(Case):
    def test_columns_are_those_of_a_plain_reader(self):
        for name in ("kestrel-7-run1.las", "kestrel-7-run2.las", "tamarack-4-23.las"):
            with self.subTest(name):
                well = welvane.read(examples / name)
                plain = plain_columns(examples / name)
                self.assertEqual(len(plain), len(well.curves))
                for curve, column in zip(well.curves.values(), plain):
                    self.assertEqual(bits(curve.data), bits(column), curve.mnemonic)

    def test_columns_are_not_copied(self):
        well = welvane.read(examples / "kestrel-7-run1.las")
        self.assertIs(well["GR"], well["GR"])
        self.assertFalse(well["GR"].flags.owndata)
        values = well["GR"]
        del well
        self.assertEqual(values[0], 124.553)  # the values outlive the well

    def test_names(self):
        path = self.las("0 1 2 3 4", "1 5 6 7 8", curves=("DEPT.M", "GR.API", "GR.API", "gr.", ".V"))
        well = welvane.read(path)
        self.assertEqual(list(well), ["DEPT", "GR", "GR_1", "gr_2", "CH5"])
        self.assertEqual(well["gr_1"].tolist(), [2, 6])
        self.assertEqual(well.curves["GR_1"].unit, "API")
        self.assertIn("Gr", well)
        with self.assertRaisesRegex(KeyError, "there is no curve 'GRR'; there are GR"):
            well["GRR"]

    def test_header(self):
        path = self.las("0 1", "1 2", version="1.2", well=" COMP. COMPANY: North: Oil")
        well = welvane.read(path)
        self.assertEqual(well.header["well"]["comp"], ("COMP", "", "North: Oil", "COMPANY"))
        self.assertEqual(well.header["Well"]["STRT"].value, "0")
        self.assertEqual((well.version, well.wrapped, well.null), ("1.2", False, -999.25))
        latin = self.las("0 1", "1 2", well=" WELL. Fj\xf6rd : W", name="b.las")
        self.assertEqual(welvane.read(latin).name, "Fj\u00f6rd")

    def test_notes_are_told(self):
        path = self.las("0 1", "1 ERR", "2 3", "3 -9999")
        with warnings.catch_warnings(record=True) as told:
            warnings.simplefilter("always")
            well = welvane.read(path)
        self.assertEqual([note.kind for note in well.notes], ["no number", "nulls"])
        self.assertEqual((well.notes[0].channel, well.notes[0].line, well.notes[0].count), ("GR", 14, 1))
        self.assertEqual([str(one.message) for one in told], [str(note) for note in well.notes])
        self.assertEqual({one.filename for one in told}, {__file__})  # the caller's line, not the package's
        self.assertTrue(math.isnan(well["GR"][1]) and well["GR"][3] == -9999)
        with self.assertRaisesRegex(welvane.Error, "strict"):
            welvane.read(path, strict=True)

    def test_refusals_tell_file_and_line(self):
        ragged = self.las("0 1", "1 2 3 4", "2 5")
        comma = self.las("0 1", "1 2,5", name="c.las")
        for path, line, words in ((ragged, 14, "loose=True"), (comma, 14, "decimal_comma=True")):
            with self.subTest(path.name), self.assertRaises(welvane.Error) as raised:
                welvane.read(path)
            self.assertEqual((raised.exception.file, raised.exception.line), (str(path), line))
            self.assertIn(words, str(raised.exception))
            again = pickle.loads(pickle.dumps(raised.exception))
            self.assertEqual((str(again), again.line), (str(raised.exception), line))
        self.assertEqual(welvane.read(comma, decimal_comma=True)["GR"].tolist(), [1, 2.5])
        self.assertEqual(len(welvane.read(ragged, loose=True)), 3)
        for name, content in (("empty.las", b""), ("binary.las", b"\0" * 100), ("words.las", b"no log\r\n")):
            with self.subTest(name), self.assertRaises(welvane.Error):
                welvane.read(self.file(name, content))

    def test_paths_of_any_bytes(self):
        path = self.las("0 1", "1 2")
        odd = bytes(self.folder) + b"/w\xff.las"
        path.rename(odd.decode("utf-8", "surrogateescape"))
        well = welvane.read(odd)
        self.assertEqual(welvane.read(well.path)["GR"].tolist(), [1, 2])

    def test_frames(self):
        well = welvane.read(examples / "kestrel-7-run1.las")
        with mock.patch.dict(sys.modules, {"pandas": None}), self.assertRaisesRegex(ImportError, "needs pandas"):
            well.df()
        if pandas is None:
            self.skipTest("no pandas here")
        frame = well.df()
        self.assertEqual(frame.index.name, "DEPT")
        self.assertEqual(list(frame.columns), list(well)[1:])
        self.assertEqual(bits(frame["RHOB"]), bits(well["RHOB"]))


class Writing(Case):
    def test_every_double_comes_back(self):
        maker = random.Random(3)
        values = [struct.unpack("<d", maker.randbytes(8))[0] for _ in range(400)]
        values = [value for value in values if math.isfinite(value) and abs(value) < 1e300]
        values += [0.1, -0.0, 5e-324, 1e22, 123456789.125, float("nan"), 1 / 3]
        path = self.folder / "w.las"
        depths = [0.1524 * number for number in range(len(values))]
        welvane.write(path, {"DEPT": depths, "X": values, "Y": [1.5] * len(values)})
        well = welvane.read(path)
        self.assertEqual(bits(well.index), bits(depths))
        self.assertEqual(bits(well["X"]), bits(values))
        self.assertEqual(bits(plain_columns(path)[2]), bits([1.5] * len(values)))
        self.assertTrue(welvane.check(path).usable)

    def test_a_well_keeps_its_header(self):
        well = welvane.read(examples / "kestrel-7-run1.las")
        well["VSH"] = np.clip(well["GR"] / 150, 0, 1)
        well["GR"] = well["GR"] * 2
        path = self.folder / "w.las"
        report = welvane.write(path, well, units={"VSH": "V/V"}, well={"WELL": "Other", "NEWL": 7})
        again = welvane.read(path)
        self.assertEqual(report.names, list(again))
        self.assertEqual(again.header["Well"]["WELL"].value, "Other")
        self.assertEqual(again.header["Well"]["NEWL"].value, "7")
        self.assertEqual(again.header["Parameter"].lines, well.header["Parameter"].lines)
        for line in well.header["Well"].lines:
            if line.mnemonic not in ("WELL", "STRT", "STOP", "STEP", "NULL"):
                self.assertEqual(again.header["Well"][line.mnemonic].value, line.value)
        for name in well:
            self.assertEqual(bits(again[name]), bits(well[name]), name)
        self.assertEqual(again.curves["VSH"].unit, "V/V")
        self.assertEqual(again.curves["GR"].unit, "GAPI")

    def test_what_cannot_be_written(self):
        depths = [0.0, 1.0, 2.0]
        nan, infinite = float("nan"), float("inf")
        table = [
            ("lengths", {"DEPT": depths, "GR": [1, 2]}, welvane.Error, "GR has 2 values, the index 3"),
            ("index with a gap", {"DEPT": [0, nan, 2], "GR": depths}, welvane.Error, "record 1 .counted from 0"),
            ("endless index", {"DEPT": [0, 1, infinite], "GR": depths}, welvane.Error, "record 2"),
            ("null index", {"DEPT": [-999.25, 1, 2], "GR": depths}, welvane.Error, "choose another null"),
            ("no channel", {"DEPT": depths}, welvane.Error, "an index and a channel"),
            ("no values", {"DEPT": [], "GR": []}, welvane.Error, "no values"),
            ("two dimensions", {"DEPT": depths, "GR": np.zeros((3, 2))}, ValueError, "2 dimensions"),
            ("words", {"DEPT": depths, "GR": ["a", "b", "c"]}, TypeError, "no numbers"),
            ("large integers", {"DEPT": depths, "GR": np.array([2**53 + 1, 0, 0])}, ValueError, "2..53"),
        ]
        path = self.folder / "w.las"
        for name, data, error, words in table:
            with self.subTest(name):
                self.assertRaisesRegex(error, words, welvane.write, path, data)
                self.assertFalse(path.exists())

    def test_an_existing_file_stays(self):
        path = self.file("w.las", b"mine")
        data = {"DEPT": [0, 1], "GR": [1, 2]}
        with self.assertRaisesRegex(welvane.Error, "force=True replaces it"):
            welvane.write(path, data)
        self.assertEqual(path.read_bytes(), b"mine")
        welvane.write(path, data, force=True)
        self.assertEqual(welvane.read(path)["GR"].tolist(), [1, 2])

    def test_names_and_values_that_had_to_change_are_told(self):
        path = self.folder / "w.las"
        columns = [("DEPT", [0, 1]), ("GR", [1, float("inf")]), ("gr", [-999.25, 2]), ("", [5, 6]), ("A B.C", [7, 8])]
        report = welvane.write(path, columns)
        self.assertEqual(report.names, ["DEPT", "GR", "gr_1", "CH4", "A_B_C"])
        self.assertEqual(list(welvane.read(path)), report.names)
        self.assertEqual(
            [(note.channel, note.kind) for note in report.notes],
            [("gr_1", "columns"), ("CH4", "columns"), ("A_B_C", "columns"), ("GR", "no number"), ("gr_1", "nulls")],
        )
        with self.assertRaisesRegex(welvane.Error, "strict"):
            welvane.write(self.folder / "x.las", columns, strict=True)
        self.assertFalse((self.folder / "x.las").exists())

    def test_kinds_of_columns(self):
        path = self.folder / "w.las"
        masked = np.ma.masked_array([1.0, 2.0], [False, True])
        single = np.array([0.1, 2.5], np.float32)
        welvane.write(path, {"M": masked, "S": single, "B": [True, False], "N": [None, 1]}, index=[0, 1])
        well = welvane.read(path)
        self.assertEqual(bits(well["M"]), bits([1, float("nan")]))
        self.assertEqual(well["S"].tolist(), [0.1, 2.5])  # the digits that a single prints
        self.assertEqual(well["B"].tolist(), [1, 0])
        self.assertEqual(bits(well["N"]), bits([float("nan"), 1]))
        if pandas is not None:
            welvane.write(path, well.df(), force=True)
            self.assertEqual(bits(welvane.read(path)["S"]), bits(well["S"]))

    def test_step(self):
        path = self.folder / "w.las"
        for depths, step in (([0, 0.1524, 0.3048], "0.1524"), ([3, 2, 1], "-1"), ([0, 1, 5], "0"), ([7], "0")):
            with self.subTest(step):
                report = welvane.write(path, {"DEPT": depths, "GR": depths}, force=True)
                self.assertEqual(float(report.step), float(step))
                self.assertEqual([note.kind for note in report.notes], ["step varies"] if depths == [0, 1, 5] else [])
                self.assertEqual(welvane.read(path).index.tolist(), depths)


if __name__ == "__main__":
    unittest.main()
