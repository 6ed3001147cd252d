"""A well in memory."""

from __future__ import annotations

import difflib
from typing import Any, Iterator, Mapping, NamedTuple, Optional

import numpy as np

from ._errors import Note


class HeaderLine(NamedTuple):
    """A line of a header."""

    mnemonic: str
    unit: str
    value: str
    description: str


class Curve:
    """A channel, or the index: what its ~Curve line says, and one value for each record, NaN for null."""

    __slots__ = ("mnemonic", "unit", "value", "description", "data")

    def __init__(self, mnemonic: str, unit: str, value: str, description: str, data: np.ndarray) -> None:
        self.mnemonic = mnemonic
        self.unit = unit
        self.value = value
        self.description = description
        self.data = data

    def __repr__(self) -> str:
        unit = f".{self.unit}" if self.unit else ""
        return f"<Curve {self.mnemonic}{unit}: {len(self.data)} values>"


class _ByMnemonic(Mapping):
    """Things by mnemonic, in their order; the case of a name that is asked for does not matter."""

    def __init__(self, kind: str) -> None:
        self._kind = kind
        self._things: dict[str, Any] = {}
        self._names: dict[str, str] = {}

    def _put(self, name: str, thing: Any) -> None:
        name = self._names.setdefault(name.upper(), name)
        self._things[name] = thing

    def __getitem__(self, name: str) -> Any:
        known = self._names.get(name.upper()) if isinstance(name, str) else None
        if known is None:
            near = difflib.get_close_matches(str(name).upper(), self._names, 3, 0.5)
            hint = f"; there are {', '.join(self._names[one] for one in near)}" if near else ""
            raise KeyError(f"there is no {self._kind} {name!r}{hint}")
        return self._things[known]

    def __contains__(self, name: object) -> bool:
        return isinstance(name, str) and name.upper() in self._names

    def __iter__(self) -> Iterator[str]:
        return iter(self._things)

    def __len__(self) -> int:
        return len(self._things)

    def __repr__(self) -> str:
        return f"<{len(self)}: {', '.join(self)}>"


class Curves(_ByMnemonic):
    """The curves of a well by mnemonic, the index first."""

    def __init__(self) -> None:
        super().__init__("curve")


class Section(_ByMnemonic):
    """Header lines of a section by mnemonic; ``text`` are the lines that are none, ``title`` is its title line."""

    def __init__(self, title: str, letter: str, lines: list[HeaderLine], text: list[str]) -> None:
        super().__init__("line")
        self.title = title
        self.letter = letter
        self.lines = lines
        self.text = text
        for line in lines:
            if line.mnemonic not in self:
                self._put(line.mnemonic, line)


class Header(_ByMnemonic):
    """The sections of a header by name: "Version", "Well", "Parameter", "Other", and any other by its title."""

    _standard = {"V": "Version", "W": "Well", "P": "Parameter", "O": "Other"}

    def __init__(self) -> None:
        super().__init__("section")
        self.sections: list[Section] = []

    def _add(self, section: Section) -> None:
        self.sections.append(section)
        name = self._standard.get(section.letter) or section.title.lstrip("~[").rstrip("]").strip()
        if name not in self:
            self._put(name, section)


class Well:
    """A well with its channels in memory, as :func:`welvane.read` gives it.

    ``well["GR"]`` is a numpy array with one value for each record, NaN for null. Names are distinct: a second GR is
    GR_1. Setting ``well["VSH"] = values`` adds a channel, or gives one other values; :func:`welvane.write` writes it.
    """

    def __init__(self, path: str, made: Mapping[str, Any], notes: list[Note]) -> None:
        self.path = path
        self.notes = notes
        #: Unit of the index, "" where none is known.
        self.index_unit: str = made["index_unit"]
        #: VERS of the file, as it stands there.
        self.version: str = made["version"]
        #: What stands for null in the file.
        self.null: float = made["null"]
        #: Whether a record has several lines in the file.
        self.wrapped: bool = made["wrapped"]
        #: The curves by mnemonic, the index first.
        self.curves = Curves()
        #: The sections of the header by name.
        self.header = Header()
        for field, data in made["channels"]:
            self.curves._put(field[0], Curve(*field, data))
        for title, letter, lines, text in made["sections"]:
            self.header._add(Section(title, letter, [HeaderLine(*line) for line in lines], text))

    @property
    def index(self) -> np.ndarray:
        """The depths, or times, of the records."""
        return next(iter(self.curves.values())).data

    @property
    def name(self) -> str:
        """The well's name, "" where the header has none."""
        lines = self.header["Well"] if "Well" in self.header else {}
        return lines["WELL"].value if "WELL" in lines else ""

    def __getitem__(self, mnemonic: str) -> np.ndarray:
        return self.curves[mnemonic].data

    def __setitem__(self, mnemonic: str, values: Any) -> None:
        known = mnemonic in self.curves
        unit = self.curves[mnemonic].unit if known else ""
        self.add(mnemonic, values, unit, self.curves[mnemonic].description if known else "")

    def add(self, mnemonic: str, values: Any, unit: str = "", description: str = "") -> None:
        """Adds a channel, or gives one of this name other values; there must be one for each record."""
        data = as_column(mnemonic, values)
        if len(data) != len(self.index):
            raise ValueError(f"{mnemonic} has {len(data)} values, the index {len(self.index)}")
        value = self.curves[mnemonic].value if mnemonic in self.curves else ""
        name = self.curves[mnemonic].mnemonic if mnemonic in self.curves else mnemonic
        self.curves._put(name, Curve(name, unit, value, description, data))

    def __contains__(self, mnemonic: object) -> bool:
        return mnemonic in self.curves

    def __iter__(self) -> Iterator[str]:
        return iter(self.curves)

    def __len__(self) -> int:
        """The number of records."""
        return len(self.index)

    def df(self) -> Any:
        """The channels as a pandas DataFrame over the index."""
        try:
            import pandas
        except ImportError:
            raise ImportError("df() needs pandas, which is not installed; well[mnemonic] needs only numpy") from None
        curves = list(self.curves.values())
        index = pandas.Index(curves[0].data, name=curves[0].mnemonic)
        return pandas.DataFrame({curve.mnemonic: curve.data for curve in curves[1:]}, index=index)

    def __repr__(self) -> str:
        index = self.index
        unit = f" {self.index_unit}" if self.index_unit else ""
        reach = f", {index[0]:g} to {index[-1]:g}{unit}" if len(index) else ""
        return f"<Well {self.name or self.path!r}: {len(self.curves) - 1} channels, {len(index)} records{reach}>"


def as_column(name: str, values: Any) -> np.ndarray:
    """One column of doubles. Single precision keeps the digits that it prints; a whole number that a double does not
    hold is refused."""
    array = np.ma.filled(values, np.nan) if isinstance(values, np.ma.MaskedArray) else np.asarray(values)
    if array.ndim != 1:
        raise ValueError(f"{name} has {array.ndim} dimensions; a channel has one")
    if array.dtype.kind in "iu" and len(array) and max(abs(int(array.min())), abs(int(array.max()))) > 2**53:
        raise ValueError(f"{name} holds whole numbers beyond 2**53, which a log cannot hold exactly")
    if array.dtype.kind not in "biufO":
        raise TypeError(f"{name} holds {array.dtype}, which are no numbers")
    if array.dtype in (np.float16, np.float32):
        array = array.astype(str)
    return np.ascontiguousarray(array, dtype=np.float64)
