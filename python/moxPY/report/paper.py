"""Sheets of paper that are filled from the top, by matplotlib."""

from __future__ import annotations

from collections.abc import Callable, Sequence
from typing import Any

from ..trial.extras import require

# Inches.
WIDTH, HEIGHT = 8.27, 11.69
MARGIN = 0.6
INNER_WIDTH, INNER_HEIGHT = WIDTH - 2 * MARGIN, HEIGHT - 2 * MARGIN - 0.25
_POINT = 1.0 / 72.0
_BETWEEN = 0.16  # columns

DARK, GREY, LINE = "#1c2024", "#4a525a", "#d9dde1"


#: Where a text stands, in inches, the text, and its alignment.
Cell = tuple[float, str, str]


def line_height(size: float) -> float:
    """Of letters of a size in points, in inches."""
    return 1.45 * size * _POINT


class Paper:
    """Pages of A4, which end up in a file of PDF.

    Parameters
    ----------
    pages : PdfPages
    footer : str
        What stands at the bottom of each page, before its number.
    """

    def __init__(self, pages: Any, footer: str) -> None:
        self._pages = pages
        self._footer = footer
        self._number = 0
        self._sheet: Any = None
        self._used = 0.0
        self._measure = require("matplotlib", "textpath").TextToPath()

    @property
    def left(self) -> float:
        """Inches that are left on this page."""
        return INNER_HEIGHT - self._used if self._sheet is not None else INNER_HEIGHT

    def text(self, text: str, size: float = 9.0, *, colour: str = DARK, bold: bool = False) -> None:
        """A paragraph over the whole width."""
        for line in self.wrapped(text, size, INNER_WIDTH, bold=bold):
            self.cells([(0.0, line, "left")], size, colour=colour, bold=bold)

    def cells(
        self,
        cells: Sequence[Cell],
        size: float,
        *,
        colour: str = DARK,
        bold: bool = False,
    ) -> None:
        """A line of texts."""
        height = line_height(size)
        self.need(height)
        for x, text, alignment in cells:
            self._sheet.text(
                (MARGIN + x) / WIDTH,
                self._y(0.2 * size * _POINT),
                text,
                fontsize=size,
                color=colour,
                fontweight="bold" if bold else "normal",
                ha=alignment,
                va="top",
                parse_math=False,
            )
        self._used += height

    def rule(self, colour: str = LINE, width: float = 0.6) -> None:
        """A line over the whole width."""
        if self._sheet is None:
            return
        y = self._y(0.0)
        line = require("matplotlib", "lines").Line2D(
            [MARGIN / WIDTH, 1.0 - MARGIN / WIDTH], [y, y], color=colour, linewidth=width
        )
        self._sheet.add_artist(line)

    def space(self, height: float) -> None:
        """Some room, unless the page begins here."""
        if self._sheet is not None and self._used > 0.0:
            self._used += height

    def need(self, height: float) -> None:
        """Begin another page where less than this is left."""
        if self._sheet is not None and self._used + height > INNER_HEIGHT:
            self.end_page()
        if self._sheet is None:
            self._sheet = require("matplotlib", "figure").Figure(figsize=(WIDTH, HEIGHT))
            self._used = 0.0

    def axes(self, height: float, draw: Callable[[Any], Any]) -> None:
        """A picture of one panel between texts, with all that stands around it."""
        self.need(height)
        axes = self._sheet.add_axes((0.3, 0.3, 0.4, 0.4))
        inner_height = height - 0.95 - 0.1  # without the axis and the legend below
        self._place(axes, inner_height, 0.9, 0.6)
        draw(axes)
        _explain_below(axes)
        # Names of rows are as long as they are: what hangs out on either side is known now.
        self._sheet.draw_without_rendering()
        inches = self._sheet.dpi_scale_trans.inverted()
        inner = axes.get_window_extent().transformed(inches)
        outer = axes.get_tightbbox().transformed(inches)
        right = max(outer.x1 - inner.x1, 0.3)
        self._place(axes, inner_height, inner.x0 - outer.x0, right)
        self._used += height

    def _place(self, axes: Any, height: float, left: float, right: float) -> None:
        """Set where a panel is: so high, with room on its left and right."""
        axes.set_position(
            (
                (MARGIN + left) / WIDTH,
                self._y(height + 0.1),
                (INNER_WIDTH - left - right) / WIDTH,
                height / HEIGHT,
            )
        )

    def figure(self, figure: Any, title: str) -> None:
        """A figure on a page of its own below a title, as wide as that allows."""
        self.end_page()
        figure.suptitle(title, x=0.0, ha="left", fontsize=12.0, fontweight="bold", parse_math=False)
        box = require("matplotlib", "transforms").Bbox
        width, height = figure.get_size_inches()
        scale = INNER_WIDTH / width
        # Letters keep their size, so what is made narrower becomes less low.
        height = min(INNER_HEIGHT, height * min(1.0, 1.2 * scale))
        figure.set_size_inches(INNER_WIDTH, height)
        _fix_layout(figure)
        self._number += 1
        bottom = height + MARGIN - HEIGHT  # of the page; the figure begins at 0
        self._foot(figure, 0.0, 1.0, (bottom + 0.4) / height)
        page = box([[-MARGIN, bottom], [WIDTH - MARGIN, height + MARGIN]])
        self._pages.savefig(figure, bbox_inches=page)

    def end_page(self) -> None:
        """Put the page into the file, if one was begun."""
        if self._sheet is None:
            return
        self._number += 1
        self._foot(self._sheet, MARGIN / WIDTH, 1.0 - MARGIN / WIDTH, 0.4 / HEIGHT)
        self._pages.savefig(self._sheet)
        self._sheet = None

    def wrapped(self, text: str, size: float, width: float, *, bold: bool = False) -> list[str]:
        """A text in lines that are no wider; a word that is wider is parted."""
        lines, line = [], ""
        for word in text.split():
            longer = f"{line} {word}".strip()
            if self.width(longer, size, bold=bold) <= width:
                line = longer
                continue
            if line:
                lines.append(line)
            while len(word) > 1 and self.width(word, size, bold=bold) > width:
                fits = next(
                    count
                    for count in range(len(word) - 1, 0, -1)
                    if count == 1 or self.width(word[:count], size, bold=bold) <= width
                )
                lines.append(word[:fits])
                word = word[fits:]
            line = word
        return [*lines, line] if line or not lines else lines

    def width(self, text: str, size: float, *, bold: bool = False) -> float:
        """How wide a text is, in inches."""
        font = require("matplotlib", "font_manager").FontProperties(
            size=size, weight="bold" if bold else "normal"
        )
        width, _, _ = self._measure.get_text_width_height_descent(text, font, False)
        return float(width) * _POINT

    def _foot(self, figure: Any, left: float, right: float, y: float) -> None:
        style = {"fontsize": 7.5, "color": GREY, "va": "top", "parse_math": False}
        figure.text(left, y, self._footer, ha="left", in_layout=False, **style)
        figure.text(right, y, f"{self._number}", ha="right", in_layout=False, **style)

    def _y(self, below: float) -> float:
        """Where something stands that is so far below what is used."""
        return 1.0 - (MARGIN + self._used + below) / HEIGHT


def _fix_layout(figure: Any) -> None:
    """Let nothing move any more, so that a page around the figure is but paper."""
    figure.draw_without_rendering()
    figure.set_layout_engine("none")
    for legend in figure.legends:
        legend.set_bbox_to_anchor((0.0, 0.0, 1.0, 1.0), transform=figure.transFigure)


def _explain_below(axes: Any) -> None:
    """Move the legend of a panel below it, in one line."""
    legend = axes.get_legend()
    if legend is not None:
        texts = [text.get_text() for text in legend.get_texts()]
        axes.legend(
            legend.legend_handles, texts, loc="upper center", ncols=len(texts), frameon=False,
            bbox_to_anchor=(0.5, 0.0), borderaxespad=4.2, fontsize="small",
        )  # fmt: skip


def column_starts(widths: Sequence[float]) -> list[float]:
    """Where columns of these widths begin."""
    starts = [0.0]
    for width in widths[:-1]:
        starts.append(starts[-1] + width + _BETWEEN)
    return starts


def column_widths(natural: Sequence[float]) -> list[float]:
    """Widths that fit on the page: the widest columns give way until all do."""
    widths = list(natural)
    room = INNER_WIDTH - _BETWEEN * (len(widths) - 1)
    while sum(widths) > room + 1e-6:
        widest = max(widths)
        others = [width for width in widths if width < widest - 1e-9]
        wide = len(widths) - len(others)
        target = max((room - sum(others)) / wide, max(others, default=0.0))
        if target >= widest - 1e-9:
            target = room / len(widths)
        widths = [min(width, target) for width in widths]
    return widths
