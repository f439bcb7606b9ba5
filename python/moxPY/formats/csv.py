"""CSV: a file a part, which needs no package beyond NumPy."""

from __future__ import annotations

import csv
from collections.abc import Iterable, Iterator
from io import StringIO
from itertools import chain
from pathlib import Path
from typing import TYPE_CHECKING, Any

from .about import about
from .options import Options
from .part import TABLES, Part, chosen, events_of, headings, part_of
from .rows import rows, with_time
from .target import Target

if TYPE_CHECKING:
    from ..trial import Trial


def write(trial: Trial, target: Target, options: Options) -> None:
    """In UTF-8, the names of the columns in the first line, commas between, NaN as empty cells."""
    for name in chosen(trial, options, TABLES, "CSV"):
        place = target.path(name)
        if name == "trial":
            facts = about(trial, options)
            _save(place, _cells([("name", "value"), *facts.items()]))
        elif name == "events":
            events = events_of(trial)
            head = ["time [s]" if column == "time" else column for column in events]
            _save(place, _cells([head, *zip(*events.values(), strict=True)]))
        else:
            part = part_of(trial, name, options)
            _save(place, _long(part) if options.long else _wide(part))


def _wide(part: Part) -> Iterator[str]:
    """A row an instant."""
    head = _cells([headings(part)])
    return chain(head, rows(with_time(part.time, part.values), ",", ""))


def _long(part: Part) -> Iterator[str]:
    """A row a number."""
    yield from _cells([("time", *part.levels, "value", "unit")])
    times = list(rows(part.time.reshape(-1, 1), "", ""))
    for position, (column, unit) in enumerate(zip(part.columns, part.units, strict=True)):
        (name,), (ending,) = _cells([column]), _cells([("", unit)])
        values = rows(part.values[:, position : position + 1], "", "")
        yield from (f"{t},{name},{value}{ending}" for t, value in zip(times, values, strict=True))


def _cells(table: Iterable[Iterable[Any]]) -> list[str]:
    """Lines of any cells, quoted where they have to be."""
    lines = []
    for cells in table:
        line = StringIO()
        csv.writer(line).writerow(cells)
        lines.append(line.getvalue().removesuffix("\r\n"))
    return lines


def _save(place: Path, lines: Iterable[str]) -> None:
    with place.open("w", encoding="utf-8", newline="") as file:
        file.writelines(f"{line}\n" for line in lines)
