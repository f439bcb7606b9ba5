"""A report as pages of matplotlib."""

from __future__ import annotations

import io
from collections.abc import Sequence

from ..functions.plugins import moxGetVersion
from ..trial.extras import require
from .blocks import Block, Moving, Notes, NotThere, Picture, Table
from .drawing import drawn, house_style
from .paper import (
    DARK,
    GREY,
    INNER_WIDTH,
    Cell,
    Paper,
    column_starts,
    column_widths,
    line_height,
)
from .sections import Content

_SIZE = 8.5
_LINE = line_height(_SIZE)
_LONG = 5.0  # inches; so high a table goes on on the next page

_Lines = list[list[Cell]]


def pdf(title: str, content: Content) -> bytes:
    """The pages.

    Raises
    ------
    ImportError
        There is no matplotlib.
    """
    pages = require("matplotlib", "backends.backend_pdf").PdfPages
    file = io.BytesIO()
    about = {"Title": title, "Creator": f"moxPY {moxGetVersion()}", "CreationDate": None}
    names = ", ".join(content.about.names)
    with house_style(), pages(file, metadata=about) as sheets:
        paper = Paper(sheets, " · ".join(dict.fromkeys([title, names])))
        paper.text(title, 17.0, bold=True)
        if names != title:
            paper.text(names, 9.0, colour=GREY)
        paper.space(0.05)
        paper.rule(DARK, 1.2)
        for section in content:
            heading = _Heading(paper, section.title)
            for block in section.blocks:
                _block(block, paper, heading, content)
        if content.left_out:
            _Heading(paper, "Not shown").write()
            for text in content.left_out:
                paper.text(text, _SIZE, colour=GREY)
        paper.end_page()
    return file.getvalue()


class _Heading:
    """The heading of a section, which is written with the first that stands below it."""

    def __init__(self, paper: Paper, title: str) -> None:
        self._paper = paper
        self.title = title
        self._is_written = False

    def write(self, room: float = 0.6) -> None:
        """Write it, unless that was done, where there is as much room below."""
        if not self._is_written:
            self._paper.need(room + 0.45)
            self._paper.space(0.2)
            self._paper.text(self.title, 12.0, bold=True)
            self._paper.space(0.04)
            self._is_written = True


def _block(block: Block, paper: Paper, heading: _Heading, content: Content) -> None:
    match block:
        case Table():
            _table(block, paper, heading)
        case Notes():
            heading.write()
            for text in block.texts:
                paper.text(text, _SIZE, colour=GREY)
        case Picture():
            try:
                _picture(block, paper, heading)
            except NotThere as reason:
                if block.instead is not None:
                    _table(block.instead, paper, heading)
                else:
                    content.leave_out(block.title, str(reason))
        case Moving():
            pass  # nothing moves on paper


def _picture(picture: Picture, paper: Paper, heading: _Heading) -> None:
    with drawn(picture) as figure:
        if not picture.single:
            paper.figure(figure, picture.title)
            return
        height = min(float(figure.get_figheight()), 7.0)
    heading.write(height + 0.3)
    paper.need(height + 0.3)
    if picture.title != heading.title:
        paper.text(picture.title, _SIZE, colour=GREY, bold=True)
    paper.axes(height, lambda axes: picture.draw(ax=axes))


def _table(table: Table, paper: Paper, heading: _Heading) -> None:
    """The table, on one page if it is no long one; heads are repeated on each."""
    columns = _Columns(table, paper)
    heads = columns.lines(table.heads, bold=True) if any(table.heads) else []
    rows = [columns.lines(row) for row in table.rows]
    height = _LINE * sum(map(len, [heads, *rows]))
    room = height if height < _LONG else 4 * _LINE
    heading.write(room)
    paper.need(room)
    if heads:
        _row(heads, paper, colour=GREY, bold=True)
    for row in rows:
        if heads and paper.left < _LINE * len(row):
            paper.end_page()
            _row(heads, paper, colour=GREY, bold=True)
        _row(row, paper)
    paper.space(0.1)


def _row(lines: _Lines, paper: Paper, *, colour: str = DARK, bold: bool = False) -> None:
    paper.need(_LINE * len(lines))
    for line in lines:
        paper.cells(line, _SIZE, colour=colour, bold=bold)
    paper.rule()


class _Columns:
    """Where the columns of a table stand."""

    def __init__(self, table: Table, paper: Paper) -> None:
        self._paper = paper
        self._numbers = table.numbers
        rows = [*([table.heads] if any(table.heads) else []), *table.rows]
        natural = [
            max(paper.width(text, _SIZE, bold=True) for text in column) + 0.02
            for column in zip(*rows, strict=True)
        ]
        self._widths = column_widths(natural)
        if self._numbers:  # numbers stand at the right
            widths = self._widths
            widths[0] += INNER_WIDTH - column_starts(widths)[-1] - widths[-1]
        self._starts = column_starts(self._widths)

    def lines(self, texts: Sequence[str], *, bold: bool = False) -> _Lines:
        """The lines that a row takes."""
        wrapped = [
            self._paper.wrapped(text, _SIZE, width, bold=bold)
            for text, width in zip(texts, self._widths, strict=True)
        ]
        return [
            [
                self._cell(column, parts[line])
                for column, parts in enumerate(wrapped)
                if line < len(parts)
            ]
            for line in range(max(map(len, wrapped)))
        ]

    def _cell(self, column: int, text: str) -> Cell:
        if self._numbers and column:
            return self._starts[column] + self._widths[column], text, "right"
        return self._starts[column], text, "left"
