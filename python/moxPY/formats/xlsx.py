"""Excel: one workbook with a sheet a part."""

from __future__ import annotations

import math
from collections.abc import Iterable, Iterator
from typing import TYPE_CHECKING, Any

from ..trial.extras import require
from .about import about
from .options import Options
from .part import TABLES, Part, chosen, events_of, headings, part_of
from .rows import with_time
from .target import Target

if TYPE_CHECKING:
    from ..trial import Trial

_MOST_ROWS, _MOST_COLUMNS = 1_048_576, 16_384  # of a sheet


def write(trial: Trial, target: Target, options: Options) -> None:
    """Sheets with the names of the parts, names of columns in the first row, gaps as empty cells.

    Raises
    ------
    ValueError
        A part has more rows or columns than a sheet.
    """
    place = target.path()
    book = require("openpyxl").Workbook(write_only=True)
    # All tables first: a sheet that is begun is a file of its own until the book is saved.
    tables = {
        name: _table(trial, name, options) for name in chosen(trial, options, TABLES, "Excel")
    }
    for name, rows in tables.items():
        sheet = book.create_sheet(name)
        cell = _Cells(sheet)
        for row in rows:
            sheet.append([cell.of(value) for value in row])
    book.save(place)


def _table(trial: Trial, name: str, options: Options) -> Iterable[Iterable[Any]]:
    if name == "trial":
        return [("name", "value"), *about(trial, options).items()]
    if name == "events":
        events = events_of(trial)
        head = ["time [s]" if column == "time" else column for column in events]
        _require_fits(name, len(trial.events), len(head))
        return [head, *zip(*events.values(), strict=True)]
    part = part_of(trial, name, options)
    if options.long:
        _require_fits(name, part.values.size, 3 + len(part.levels))
        return _long(part)
    _require_fits(name, len(part.time), 1 + len(part.columns))
    return _wide(part)


def _wide(part: Part) -> Iterator[Iterable[Any]]:
    yield headings(part)
    for row in with_time(part.time, part.values):
        yield row.tolist()


def _long(part: Part) -> Iterator[Iterable[Any]]:
    yield ("time", *part.levels, "value", "unit")
    for position, (column, unit) in enumerate(zip(part.columns, part.units, strict=True)):
        values = part.values[:, position].tolist()
        for time, value in zip(part.time.tolist(), values, strict=True):
            yield (time, *column, value, unit)


def _require_fits(name: str, rows: int, columns: int) -> None:
    for what, count, most in (("rows", rows + 1, _MOST_ROWS), ("columns", columns, _MOST_COLUMNS)):
        if count > most:
            raise ValueError(
                f"the sheet '{name}' would have {count:,} {what}, and Excel has {most:,} at most; "
                "CSV and Parquet have no such limit"
            )


class _Cells:
    """What a sheet gets for a value: a text that is no formula, a number that Excel has."""

    def __init__(self, sheet: Any) -> None:
        self._sheet = sheet
        self._cell = require("openpyxl", "cell").WriteOnlyCell
        self._forbidden = require("openpyxl", "cell.cell").ILLEGAL_CHARACTERS_RE

    def of(self, value: Any) -> Any:
        if isinstance(value, float):
            if math.isnan(value):
                return None
            return value if math.isfinite(value) else str(value)
        if not isinstance(value, str):
            return value
        text = self._forbidden.sub(" ", value)
        if not text.startswith("="):
            return text
        cell = self._cell(self._sheet, text)
        cell.data_type = "s"
        return cell
