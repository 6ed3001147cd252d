"""Runs, verdicts and pictures, and calls that are disturbed."""

import os
import signal
import threading
import time
import unittest
import xml.dom.minidom
from pathlib import Path

import numpy as np

import welvane
from support import Case, examples, las_text

runs = [examples / "kestrel-7-run1.las", examples / "kestrel-7-run2.las"]


class Runs(Case):
    def test_a_file_and_its_samples_agree(self):
        path = self.folder / "j.las"
        table = [
            {"splice": True},
            {"splice": True, "select": ["GR", "RHOB"], "from_": 1010, "to": ">=1300"},
            {"step": 0.5, "fill": "linear"},
            {"curve": "GRN.GAPI : twice | FUN=MATH,GR,0,2,0,0", "splice": True},
            {"shift": (1, "GR", 1.524), "clip": [(1, "RHOB", 1050, 1100)]},
            {"link": [(2, "GRC", "GR", 1150, 1160)]},
        ]
        for choices in table:
            with self.subTest(choices):
                report = welvane.run(runs, path, force=True, **choices)
                written = welvane.read(path)
                sampled = welvane.run(runs, **choices)
                self.assertEqual((report.records, report.channels), (len(written), len(written.curves) - 1))
                self.assertEqual((report.start, report.stop), (written.index[0], written.index[-1]))
                self.assertEqual(list(sampled), list(written))
                for name in written:
                    np.testing.assert_array_equal(sampled[name], written[name], name)

    def test_shift_moves_what_it_names(self):
        path = self.las("0 1 5", "1 2 6", "2 3 7", curves=("DEPT.M", "GR.X", "SP.X"))
        moved = welvane.run(path, shift=(1, "GR", 1))
        np.testing.assert_array_equal(moved["GR"][:3], [np.nan, 1, 2])
        np.testing.assert_array_equal(moved["SP"][:3], [5, 6, 7])

    def test_choices_that_make_no_sense(self):
        for choices, error, words in (
            ({"step": "wide"}, welvane.Error, "step"),
            ({"unit": "yard"}, welvane.ChoiceError, "unit: 'yard' is not one of"),
            ({"from_": "deep"}, ValueError, "from"),
            ({"link": (7, "GR", "GR")}, welvane.ChoiceError, "link: '7' is not a slot"),
            ({"splise": True}, TypeError, "no keyword 'splise'"),
            ({"select": "NONE"}, welvane.Error, "NONE"),
            ({"step": object()}, TypeError, "no number, text or path"),
        ):
            with self.subTest(choices):
                self.assertRaisesRegex(error, words, welvane.run, runs, self.folder / "x.las", **choices)
                self.assertEqual(os.listdir(self.folder), [])

    def test_sessions(self):
        saved, one, two = self.folder / "s.session", self.folder / "1.las", self.folder / "2.las"
        welvane.run(runs, one, splice=True, save_session=saved)
        report = welvane.run([], two, session=saved)
        self.assertEqual(one.read_bytes(), two.read_bytes())
        self.assertEqual([os.path.basename(path) for path in report.inputs], [path.name for path in runs])

    def test_batch_goes_on(self):
        files = [*runs, self.folder / "none.las", self.file("bad.las", b"words\r\n")]
        items = welvane.batch(files, self.folder / "out", curve="GR.GAPI : Gamma ray | GRC", step=1)
        self.assertEqual([item.written for item in items], [True, True, False, False])
        self.assertIn("GR", welvane.read(items[1].output))
        self.assertIn("No such file", items[2].why)

    def test_batch_is_the_same_by_several_workers(self):
        files = []
        for number in range(20):
            files.append(self.folder / f"w{number}.las")
            files[-1].write_bytes(Path(runs[number % 2]).read_bytes())
        files.append(self.folder / "none.las")
        alone = welvane.batch(files, self.folder / "one", jobs=1, step=0.5)
        together = welvane.batch(files, self.folder / "many", jobs=3, step=0.5)
        self.assertEqual([item.path for item in together], [str(file) for file in files])
        self.assertEqual([item.written for item in together], [True] * 20 + [False])
        for one, other in zip(alone[:20], together):
            self.assertEqual(Path(one.output).read_bytes(), Path(other.output).read_bytes())
        self.assertRaises(welvane.ChoiceError, welvane.batch, files, self.folder / "none", jobs=-1)


class Verdicts(Case):
    def test_statistics_are_those_of_numpy(self):
        well = welvane.read(runs[0])
        found = welvane.stats(runs[0])
        self.assertEqual(list(found.channels), list(well)[1:])
        for name, channel in found.channels.items():
            values = well[name][~np.isnan(well[name])]
            self.assertEqual((channel.count, channel.minimum, channel.maximum), (len(values), values.min(), values.max()))
            self.assertAlmostEqual(channel.mean, values.mean(), places=9)
            self.assertAlmostEqual(channel.standard_deviation, values.std(ddof=1), places=9)

    def test_check_and_conform(self):
        good, gone = welvane.check(runs[0]), welvane.check(self.folder / "none.las")
        self.assertTrue(good.usable and good.records == 1313 and good.channels == 10)
        self.assertFalse(gone.usable)
        path = self.file("u.las", las_text(["0 1", "1 2"]).replace(b"\r\n", b"\n"))
        before = welvane.conform(path)
        self.assertIn("F006", [finding.rule for finding in before.findings])
        after = welvane.conform(path, fix=True)
        self.assertIn("F006", dict(after.mended))
        self.assertIn(b"\r\n", path.read_bytes())
        with open(after.kept, "rb") as kept:
            self.assertNotIn(b"\r\n", kept.read())

    def test_pictures(self):
        picture = welvane.plot(runs, tracks=[["GR", "CALI"], ["RHOB", "NPHI"]], over=True, dark=True)
        titles = [node.firstChild.data for node in xml.dom.minidom.parseString(picture.svg).getElementsByTagName("title")]
        self.assertTrue({"GR", "CALI", "RHOB", "NPHI"} <= {title.split()[0] for title in titles}, titles)
        picture.save(self.folder / "p.svg")
        self.assertEqual((self.folder / "p.svg").read_text(), picture._repr_svg_())
        with self.assertRaises(welvane.Error):
            welvane.plot(runs, curves=["NONE"])


class Disturbed(Case):
    """Other threads, children and signals while a call works."""

    def setUp(self):
        super().setUp()
        row = " ".join(["123.456"] * 20)
        rows = [f"{depth} {row}" for depth in range(100000)]
        self.large = self.las(*rows, name="large.las", curves=("DEPT.M", *(f"C{number}.X" for number in range(20))))

    def test_threads_read_one_file(self):
        made = []
        threads = [threading.Thread(target=lambda: made.append(welvane.read(self.large))) for _ in range(4)]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()
        self.assertEqual([len(well) for well in made], [100000] * 4)
        self.assertTrue(all((well["C7"] == 123.456).all() for well in made))

    def test_other_threads_go_on(self):
        ticks, done = [0], threading.Event()

        def tick():
            while not done.is_set():
                ticks[0] += 1
                time.sleep(0)

        thread = threading.Thread(target=tick)
        thread.start()
        before = ticks[0]
        welvane.read(self.large)
        after = ticks[0]
        done.set()
        thread.join()
        self.assertGreater(after - before, 10)

    def test_a_signal_ends_a_call(self):
        class Enough(Exception):
            pass

        def enough(number, frame):
            raise Enough

        old = signal.signal(signal.SIGALRM, enough)
        self.addCleanup(signal.signal, signal.SIGALRM, old)
        folder = self.folder / "out"
        files = []
        for number in range(400):
            link = self.folder / f"l{number}.las"
            os.link(self.large, link)
            files.append(link)
        signal.setitimer(signal.ITIMER_REAL, 0.5)
        with self.assertRaises(Enough):
            welvane.batch(files, folder, jobs=2)
        written = sorted(os.listdir(folder))
        self.assertLess(len(written), len(files))
        for name in written:  # what is there is whole
            self.assertEqual(len(welvane.read(folder / name)), 100000)

    def test_a_child_in_the_middle(self):
        stop = threading.Event()
        seen = []

        def read():
            while not stop.is_set():
                seen.append(len(welvane.read(self.large)))

        thread = threading.Thread(target=read)
        thread.start()
        child = os.fork()
        if child == 0:
            os._exit(0 if len(welvane.read(runs[0])) == 1313 else 1)
        status = os.waitstatus_to_exitcode(os.waitpid(child, 0)[1])
        stop.set()
        thread.join()
        self.assertEqual(status, 0)
        self.assertEqual(set(seen), {100000})


if __name__ == "__main__":
    unittest.main()
