"""What can go wrong, and what a person should know."""

from __future__ import annotations

from typing import NamedTuple


class Error(Exception):
    """Why something was not done. Nothing of its output is there.

    ``file`` is the file that it is about ("" for none), ``line`` the line of it, from 1 (0 where no one line is the
    reason), ``choice`` the keyword that cannot be followed ("" for none).
    """

    def __init__(self, text: str, file: str = "", line: int = 0, choice: str = "") -> None:
        super().__init__(text)
        self.file = file
        self.line = line
        self.choice = choice

    def __reduce__(self):  # so that it comes whole out of another process
        return (type(self), (str(self), self.file, self.line, self.choice))


class ChoiceError(Error, ValueError):
    """A keyword that makes no sense, whatever the files are."""


class NoteWarning(UserWarning):
    """The warning in which each :class:`Note` of a call is told; it can be silenced, or made an error, as any other."""


class Note(NamedTuple):
    """One thing to know of what became of the figures.

    ``kind`` groups notes ("nulls", "columns", "no number" ...), ``line`` counts from 1 (0 for no line), ``count`` is
    how often (0 where nothing was counted), and ``str()`` of a note is the whole of it in words.
    """

    kind: str
    file: str
    channel: str
    line: int
    count: int
    text: str
    words: str

    def __str__(self) -> str:
        return f"{self.file}: {self.words}" if self.file else self.words
