"""What all functions of the package share: paths, keywords and notes on their way to the program and back."""

from __future__ import annotations

import os
import sys
import warnings
from pathlib import Path
from typing import Any, Iterable, Mapping, Sequence, Union

from ._errors import Note, NoteWarning

PathName = Union[str, bytes, "os.PathLike[str]", "os.PathLike[bytes]"]
Paths = Union[PathName, Iterable[PathName]]

_data = os.fsencode(Path(__file__).parent / "data")
_package = str(Path(__file__).parent)


def path_bytes(path: PathName) -> bytes:
    """A path as the system has it."""
    return os.fsencode(path)


def paths_bytes(paths: Paths) -> list[bytes]:
    """One path or several of them."""
    if isinstance(paths, (str, bytes, os.PathLike)):
        return [path_bytes(paths)]
    return [path_bytes(path) for path in paths]


def how(**choices: Any) -> dict[str, Any]:
    """The choices of a call, without those that were not made."""
    made = {name: value for name, value in choices.items() if value not in (None, False, "")}
    made["data"] = _data
    return made


def told(notes: Sequence[tuple]) -> list[Note]:
    """The notes of a call, each told as a warning of the line outside the package that made the call."""
    made = [Note(*note) for note in notes]
    level = 1
    frame = sys._getframe(0)
    while frame.f_back is not None and frame.f_code.co_filename.startswith(_package):
        frame = frame.f_back
        level += 1
    for note in made:
        warnings.warn(str(note), NoteWarning, stacklevel=level)
    return made


def _number(value: Any) -> str:
    return repr(float(value)) if not float(value).is_integer() else str(int(value))


def _text(value: Any) -> Union[str, bytes]:
    """A number, a word or a path as the program reads it."""
    if isinstance(value, bool):
        return "yes" if value else "no"
    if isinstance(value, (str, bytes)):
        return value
    if isinstance(value, os.PathLike):
        return os.fsencode(value)
    try:
        return _number(value)
    except (TypeError, ValueError):
        raise TypeError(f"{value!r} is no number, text or path") from None


def _joined(values: Iterable[Any], by: str) -> str:
    texts = [_text(value) for value in values]
    return by.join(text.decode() if isinstance(text, bytes) else text for text in texts)


def _link(value: Any) -> str:
    """(1, "GR", "NEW") or (1, "GR", "NEW", 1000, 1100) as the program reads it; a text stands as it is."""
    if isinstance(value, str):
        return value
    slot, channel, column, *depths = value
    return _joined([f"{_text(slot)}:{_text(channel)}>{_text(column)}", *depths], ":")


_flags = {"splice", "csv", "fill_empty", "keep_details", "smooth", "loose", "decimal_comma"}
_rows = {"link", "apply_depths", "shift", "clip"}
_lists = {"select", "format", "sections"}


def pass_keywords(choices: Mapping[str, Any]) -> dict[str, Any]:
    """Keywords of a run as the program takes them: texts, True, or lists of texts."""
    made: dict[str, Any] = {}
    for name, value in choices.items():
        if value is None:
            continue
        if name in _flags:
            made[name] = bool(value)
        elif name == "curve":
            made[name] = [value] if isinstance(value, str) else list(value)
        elif name in _rows:
            rows = [value] if isinstance(value, str) or not isinstance(value[0], (str, tuple, list)) else value
            made[name] = [
                _link(row) if name == "link" else row if isinstance(row, str) else _joined(row, ":") for row in rows
            ]
        elif name in _lists and not isinstance(value, str):
            made[name] = _joined(value, ",")
        else:
            made[name] = _text(value)
    return made
