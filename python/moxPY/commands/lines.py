"""What people read: wrapped on a terminal, a line a row in a pipe."""

from __future__ import annotations

import shutil
import sys
import textwrap
from collections.abc import Iterable, Sequence
from typing import TextIO

#: A row: what it is about, and what there is to say; the same thing again has an empty name.
Row = tuple[str, str]


def printable(text: str) -> str:
    """The text with what no terminal should be sent, such as control characters of a damaged file,
    spelt as Python does it; bytes that are no text by their numbers, as tables of trials do."""
    if text.isprintable():
        return text
    return "".join(letter if letter.isprintable() else _spelt(letter) for letter in text)


def _spelt(letter: str) -> str:
    if "\udc80" <= letter <= "\udcff":  # Python's stand-in for a byte
        return f"\\x{ord(letter) - 0xDC00:x}"
    return letter.encode("unicode_escape").decode("ascii")


def write_line(text: str, stream: TextIO | None = None) -> None:
    """Print one line."""
    print(printable(text), file=stream or sys.stdout)


def write_rows(title: str, rows: Iterable[Row]) -> None:
    """Print rows below a title, in two columns."""
    write_line(title)
    listed = list(rows)
    column = max((len(name) for name, _ in listed), default=0)
    width = terminal_width()
    for name, text in listed:
        for line in _wrapped(f"  {name:{column}}  ", printable(text), width):
            print(line.rstrip())


def write_table(heads: Sequence[str] | None, rows: Sequence[Sequence[str]]) -> None:
    """Print a table; its last column is wrapped where the terminal ends."""
    cells = [[printable(cell) for cell in row] for row in ([heads] if heads else []) + [*rows]]
    widths = [max(map(len, column)) for column in zip(*cells, strict=True)]
    width = terminal_width()
    for row in cells:
        padded = [f"{cell:{room}}  " for cell, room in zip(row[:-1], widths[:-1], strict=True)]
        for line in _wrapped("".join(padded), row[-1], width):
            print(line.rstrip())


def terminal_width() -> int | None:
    """The columns of the terminal that is written to; None for a pipe or a file."""
    return shutil.get_terminal_size().columns if sys.stdout.isatty() else None


def _wrapped(head: str, text: str, width: int | None) -> list[str]:
    """A text behind a head; further lines begin below the first word."""
    if width is None or len(head) + len(text) <= width:
        return [head + text]
    return textwrap.wrap(
        text,
        max(width, len(head) + 20),
        initial_indent=head,
        subsequent_indent=" " * len(head),
        break_on_hyphens=False,
    )
