"""Well logs in LAS files (CWLS Log ASCII Standard 1.2 and 2.0): read, judged, joined, computed on, drawn and written.

>>> import welvane
>>> well = welvane.read("examples/kestrel-7-run1.las")
>>> well
<Well 'KESTREL 7': 10 channels, 1313 records, 1000.05 to 1200 M>
>>> well["GR"][:3]
array([124.553, 125.992, 127.3  ])

Every figure is the figure that stands in the file, or a :class:`Note` tells: in ``notes`` of what comes back, and as a
warning of the category :class:`NoteWarning`.
"""

from __future__ import annotations

import os
import tempfile
from typing import Any, Iterable, Mapping, NamedTuple, Optional, Sequence, Union

import numpy as np

from . import _welvane
from ._calls import PathName, Paths, how, pass_keywords, path_bytes, paths_bytes, told
from ._errors import ChoiceError, Error, Note, NoteWarning
from ._well import Curve, Curves, Header, HeaderLine, Section, Well, as_column

__version__: str = _welvane.version
__all__ = [
    "BatchItem",
    "Channel",
    "Check",
    "ChoiceError",
    "Conformance",
    "Curve",
    "Curves",
    "Error",
    "Finding",
    "Header",
    "HeaderLine",
    "Note",
    "NoteWarning",
    "Picture",
    "RunReport",
    "Section",
    "Statistics",
    "Well",
    "WriteReport",
    "batch",
    "check",
    "conform",
    "plot",
    "read",
    "run",
    "stats",
    "write",
]

for _public in (ChoiceError, Curve, Curves, Error, Header, HeaderLine, Note, NoteWarning, Section, Well):
    _public.__module__ = "welvane"  # where people find it


def _name(path: PathName) -> str:
    return path_bytes(path).decode("utf-8", "surrogateescape")


def read(
    path: PathName, *, loose: bool = False, decimal_comma: bool = False, index_unit: str = "", strict: bool = False
) -> Well:
    """Reads a LAS file with all its channels.

    :param loose: places what can be placed of records of another length, in place of refusing the file
    :param decimal_comma: a comma inside a number is its point
    :param index_unit: unit of the index, whatever the header says
    :param strict: a note refuses the file
    :raises Error: for a file that cannot be read, with its name and, where one line is the reason, the line

    >>> well = read("examples/plover-state-1.las")
    >>> well.index_unit, list(well.curves)[:4]
    ('F', ['DEPT', 'GR', 'SP', 'CALI'])
    >>> well.header["Well"]["FLD"].value
    'DRY CREEK'
    >>> read("examples/nothing.las")
    Traceback (most recent call last):
    welvane.Error: examples/nothing.las: No such file or directory
    """
    made = _welvane.read(
        path_bytes(path), how(loose=loose, decimal_comma=decimal_comma, index_unit=index_unit, strict=strict)
    )
    return Well(_name(path), made, told(made["notes"]))


class WriteReport(NamedTuple):
    """What :func:`write` wrote: ``names`` are the mnemonics as they stand in the file, the index first; ``start``,
    ``stop`` and ``step`` the texts of STRT, STOP and STEP."""

    records: int
    names: list[str]
    start: str
    stop: str
    step: str
    notes: list[Note]


def _columns(data: Any, index: Any) -> list[tuple[str, Any]]:
    """Names and values, the index first."""
    if hasattr(data, "columns") and hasattr(data, "iloc"):
        columns = [(str(name), data.iloc[:, place].to_numpy()) for place, name in enumerate(data.columns)]
        own = data.index.to_numpy() if index is None else index
        return [(str(data.index.name or "DEPT"), own), *columns]
    columns = list(data.items()) if isinstance(data, Mapping) else list(data)
    return columns if index is None else [("DEPT", index), *columns]


def write(
    path: PathName,
    data: Any,
    *,
    index: Any = None,
    units: Optional[Mapping[str, str]] = None,
    descriptions: Optional[Mapping[str, str]] = None,
    well: Optional[Mapping[str, Any]] = None,
    null: float = -999.25,
    force: bool = False,
    strict: bool = False,
) -> WriteReport:
    """Writes channels as a LAS 2.0 file, every value with all its digits. The file takes its name when it is whole.

    :param data: a :class:`Well`, whose header is taken over; a pandas DataFrame, whose index is the index; a mapping
        from mnemonics to values, or pairs of both, of which the first is the index unless ``index`` is given
    :param units: units by mnemonic; those of a well are kept where none is given
    :param descriptions: descriptions by mnemonic, in the same way
    :param well: values of lines of ~Well by mnemonic, such as ``{"WELL": "Kestrel 7"}``
    :param null: what NaN is written as
    :param force: an existing file is replaced
    :raises Error: for columns of unlike lengths, an index that is not a number everywhere, a file that is there

    >>> import os, tempfile
    >>> path = os.path.join(tempfile.mkdtemp(), "made.las")
    >>> depths = [1000.0, 1000.5, 1001.0]
    >>> write(path, {"DEPT": depths, "GR": [80, float("nan"), 95.25]}, units={"DEPT": "M", "GR": "GAPI"}).step
    '0.5'
    >>> read(path)["GR"]
    array([80.  ,   nan, 95.25])
    """
    units = {name.upper(): unit for name, unit in (units or {}).items()}
    descriptions = {name.upper(): text for name, text in (descriptions or {}).items()}
    sections: list[tuple] = []
    columns: list[tuple[tuple[str, str, str, str], np.ndarray]] = []
    if isinstance(data, Well):
        for curve in data.curves.values():
            field = (curve.mnemonic, curve.unit, curve.value, curve.description)
            columns.append((field, as_column(curve.mnemonic, curve.data)))
        unit = data.index_unit if not columns[0][0][1] else columns[0][0][1]
        columns[0] = ((columns[0][0][0], unit, *columns[0][0][2:]), columns[0][1])
        for section in data.header.sections:
            sections.append((section.title, section.letter, [tuple(line) for line in section.lines], section.text))
    else:
        for name, values in _columns(data, index):
            columns.append(((str(name), "", "", ""), as_column(str(name), values)))
    columns = [
        ((name, units.get(name.upper(), unit), value, descriptions.get(name.upper(), text)), values)
        for (name, unit, value, text), values in columns
    ]
    lines = [(str(name), "", str(value), "") for name, value in (well or {}).items()]
    made = _welvane.write(path_bytes(path), columns, sections, lines, float(null), how(force=force, strict=strict))
    return WriteReport(
        made["records"], made["names"], made["start"], made["stop"], made["step"], told(made["notes"])
    )


class RunReport(NamedTuple):
    """What :func:`run` wrote. ``verdict`` is the checker's, None where it was not asked for."""

    output: str
    inputs: list[str]
    records: int
    channels: int
    start: float
    stop: float
    depth_unit: str
    verdict: Optional[str]
    notes: list[Note]


def _made_well(names: list[bytes], keywords: dict[str, Any], more: dict[str, Any], conditions: dict[str, Any]) -> Well:
    """What a run would write, header and all: it is written where nobody sees it, and read back."""
    for form in ("csv", "ascii"):
        if keywords.get(form):
            raise ChoiceError(f"{form}: it needs an output", choice=form)
    with tempfile.TemporaryDirectory(prefix="welvane-") as folder:
        path = os.path.join(os.fsencode(folder), b"run.las")
        notes = told(_welvane.run(names, path, keywords, more, conditions)["notes"])
        return Well("", _welvane.read(path, how()), notes)


def run(
    files: Paths,
    output: Optional[PathName] = None,
    *,
    session: Optional[PathName] = None,
    save_session: Optional[PathName] = None,
    certify: bool = False,
    force: bool = False,
    strict: bool = False,
    **choices: Any,
) -> Union[RunReport, Well]:
    """Makes one file of one to four, as ``welvane run`` does; without ``output`` a :class:`Well` of what it would hold.

    The choices are the options of ``welvane run`` with "_" for "-" (``from_`` for --from): ``splice=True``,
    ``step=0.5``, ``from_=1000``, ``select=["GR", "RHOB"]``, ``curve="DPHI.V/V : Porosity | FUN=..."``,
    ``shift=(1, "GR", 0.5)``, ``link=(2, "GR", "GR", 1000, 1100)`` and so on; inputs count from 1 in them. Several
    shifts, links, clips and curves are lists.

    :raises Error: for inputs that cannot be used and choices that they cannot follow
    :raises ChoiceError: for choices that make no sense

    >>> runs = ["examples/kestrel-7-run1.las", "examples/kestrel-7-run2.las"]
    >>> joined = run(runs, splice=True, select=["GR", "RHOB"])
    >>> joined.index[0], joined.index[-1], list(joined)
    (1000.0488, 1399.9464, ['DEPT', 'GR', 'RHOB'])
    """
    names = paths_bytes(files)
    keywords = pass_keywords(choices)
    conditions = how(force=force, strict=strict)
    more: dict[str, Any] = {"certify": certify}
    if session is not None:
        more["session"] = path_bytes(session)
    if save_session is not None:
        more["save_session"] = path_bytes(save_session)
    if output is None and save_session is None:
        return _made_well(names, keywords, more, conditions)
    made = _welvane.run(names, b"" if output is None else path_bytes(output), keywords, more, conditions)
    made["notes"] = told(made["notes"])
    return RunReport(output="" if output is None else _name(output), **made)


class BatchItem(NamedTuple):
    """What came of one file of :func:`batch`; ``why`` it was not written, "" where it was."""

    path: str
    output: str
    written: bool
    why: str
    channels: int
    records: int
    seconds: float
    notes: list[Note]


def batch(
    files: Paths, folder: PathName, *, jobs: int = 0, force: bool = False, strict: bool = False, **choices: Any
) -> list[BatchItem]:
    """The same run once per file, each into ``folder`` under its input's name; choices as in :func:`run`.

    ``jobs`` files are worked on at once, 0 for as many as there are cores. What is wrong with one file stands in its
    item, and the others go on.

    >>> import tempfile
    >>> items = batch(["examples/kestrel-7-run1.las", "examples/nothing.las"], tempfile.mkdtemp(), step=1)
    >>> [(item.written, item.records, item.why) for item in items]
    [(True, 201, ''), (False, 0, 'examples/nothing.las: No such file or directory')]
    """
    if jobs < 0:
        raise ChoiceError(f"jobs: {jobs} is no number of files", choice="jobs")
    workers = jobs or os.cpu_count() or 1
    made = _welvane.batch(
        paths_bytes(files), path_bytes(folder), pass_keywords(choices), workers, how(force=force, strict=strict)
    )
    return [BatchItem(**{**item, "notes": told(item["notes"])}) for item in made]


class Channel(NamedTuple):
    """Statistics of one channel: of its values that are not null, and the intervals (top, bottom) that they cover."""

    mnemonic: str
    unit: str
    count: int
    minimum: float
    maximum: float
    mean: float
    standard_deviation: float
    minimum_depth: float
    maximum_depth: float
    footage: float
    intervals: list[tuple[float, float]]


class Statistics(NamedTuple):
    """Statistics of a file; ``channels`` by mnemonic, without the index."""

    path: str
    depth_unit: str
    top: float
    bottom: float
    records: int
    channels: dict[str, Channel]
    notes: list[Note]


def stats(
    path: PathName,
    *,
    top: str = "",
    loose: bool = False,
    decimal_comma: bool = False,
    index_unit: str = "",
    strict: bool = False,
) -> Statistics:
    """Statistics of each channel, of the whole file or of one formation of its [TOPS] block.

    >>> gamma = stats("examples/kestrel-7-run1.las").channels["GR"]
    >>> gamma.count, round(gamma.mean, 3)
    (1221, 86.738)
    """
    made = _welvane.stats(
        path_bytes(path),
        top,
        how(loose=loose, decimal_comma=decimal_comma, index_unit=index_unit, strict=strict),
    )
    channels: dict[str, Channel] = {}
    for row in made["channels"]:
        name, number = row[0], 0
        while name in channels:
            number += 1
            name = f"{row[0]}_{number}"
        channels[name] = Channel(name, *row[1:])
    made["channels"] = channels
    made["notes"] = told(made["notes"])
    return Statistics(path=_name(path), **made)


class Check(NamedTuple):
    """What a file is, and whether it can be read: ``why`` not, or what else is worth a word."""

    path: str
    status: str
    usable: bool
    why: str
    records: int
    version: str
    channels: int
    notes: list[Note]


def check(path: PathName, *, loose: bool = False, decimal_comma: bool = False, index_unit: str = "") -> Check:
    """Judges a file of any kind; one that is not there is judged too.

    >>> found = check("examples/tamarack-4-23-survey.txt")
    >>> found.usable, found.status
    (False, 'Not Basic LAS!')
    """
    made = _welvane.check(path_bytes(path), how(loose=loose, decimal_comma=decimal_comma, index_unit=index_unit))
    made["notes"] = told(made["notes"])
    return Check(path=_name(path), **made)


class Finding(NamedTuple):
    """A breach of a rule of the standard: where (line and column from 1), what stands there, and what is wrong."""

    rule: str
    severity: str
    line: int
    column: int
    text: str
    what: str
    count: int
    mendable: bool


class Conformance(NamedTuple):
    """How a file stands against the standard; ``ok`` where no error was found.

    After a mend the findings are those that are left, ``mended`` are the rules with the findings that are gone, and
    ``kept`` is the copy of the file as it was, "" without one.
    """

    path: str
    version: Optional[str]
    findings: list[Finding]
    errors: int
    warnings: int
    hints: int
    remark: str
    mended: list[tuple[str, int]]
    kept: str
    notes: list[Note]

    @property
    def ok(self) -> bool:
        return self.errors == 0


def conform(
    path: PathName, *, fix: bool = False, output: Optional[PathName] = None, most: int = 10, force: bool = False
) -> Conformance:
    """Holds a file against LAS 1.2 and 2.0, rule by rule.

    :param fix: writes what can be mended without a choice: to ``output``, or over the file itself, of which a copy
        stays beside it
    :param most: findings kept for each rule; others are counted

    >>> found = conform("examples/kestrel-7-run1.las")
    >>> found.version, found.ok, sorted({finding.rule for finding in found.findings})
    ('2.0', False, ['W004', 'W005', 'W019'])
    """
    if output is not None and not fix:
        raise ValueError("output goes with fix=True")
    made = _welvane.conform(
        path_bytes(path), fix, b"" if output is None else path_bytes(output), most, how(force=force)
    )
    made["findings"] = [Finding(*finding) for finding in made["findings"]]
    made["notes"] = told(made["notes"])
    return Conformance(path=_name(path), **made)


class Picture:
    """A picture that a notebook shows; ``svg`` is its text, :meth:`save` writes it."""

    def __init__(self, svg: str, curves: int, notes: list[Note]) -> None:
        self.svg = svg
        self.curves = curves
        self.notes = notes

    def _repr_svg_(self) -> str:
        return self.svg

    def save(self, path: PathName) -> None:
        """Writes the picture as SVG."""
        with open(path, "w", encoding="utf-8", errors="surrogateescape") as file:
            file.write(self.svg)

    def __repr__(self) -> str:
        return f"<Picture of {self.curves} curves>"


def plot(
    files: Paths,
    output: Optional[PathName] = None,
    *,
    tracks: Union[str, Sequence[Union[str, Iterable[str]]], None] = None,
    curves: Optional[Iterable[str]] = None,
    over: bool = False,
    dark: bool = False,
    width: float = 0,
    height: float = 0,
    session: Optional[PathName] = None,
    force: bool = False,
    strict: bool = False,
    **choices: Any,
) -> Picture:
    """Draws the logs of one to four files in tracks over depth, or what a run would make of them.

    :param tracks: curves of each track: ``"GR,CALI;ILD:log,ILM:log"`` or ``[["GR", "CALI"], ["ILD:log"]]``
    :param curves: only these, in tracks by custom
    :param over: several files over each other in their colours, not side by side
    :param choices: ``from_`` and ``to`` bound what is drawn; with any other of :func:`run`'s the output of such a run
        is drawn

    >>> plot("examples/kestrel-7-run1.las", curves=["GR", "RHOB"])
    <Picture of 2 curves>
    """
    picture: dict[str, Any] = {"over": over, "dark": dark, "width": float(width), "height": float(height)}
    if tracks is not None:
        rows = [track if isinstance(track, str) else ",".join(track) for track in ([tracks] if isinstance(tracks, str) else tracks)]
        picture["tracks"] = ";".join(rows)
    if curves is not None:
        picture["curves"] = [curves] if isinstance(curves, str) else list(curves)
    if session is not None:
        picture["session"] = path_bytes(session)
    made = _welvane.plot(
        paths_bytes(files),
        b"" if output is None else path_bytes(output),
        picture,
        pass_keywords(choices),
        how(force=force, strict=strict),
    )
    return Picture(made["svg"], made["curves"], told(made["notes"]))
