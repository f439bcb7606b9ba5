"""Which files are as their rows say, and which are to be read."""

from __future__ import annotations

from collections.abc import Iterable
from pathlib import Path
from typing import NamedTuple

from .row import Row, content_hash, name_of, state


class Plan(NamedTuple):
    """What becomes of the rows that there were."""

    kept: dict[Path, Row]  #: files whose rows stay, with the name and time that they have now
    to_read: list[Path]
    gone: list[str]  #: names of files of which no row stays


def plan(files: Iterable[Path], former: Iterable[Row]) -> Plan:
    """Compare files with the rows that there were.

    A file of the same name, size and time is taken for the same; else one of the same content,
    which may have been moved. Such files are not read as trials again.
    """
    rows = {row["file"]: row for row in former}
    sizes = {row["size"] for row in rows.values()}
    contents = {row["sha256"]: row for row in rows.values()}
    result = Plan({}, [], [])
    for file in files:
        try:
            now = state(file)
            row = rows.get(now["file"])
            if row is None or any(row[name] != value for name, value in now.items()):
                # Only what is as large as something known is worth the look at its bytes.
                row = contents.get(content_hash(file)) if now["size"] in sizes else None
        except OSError:  # reading it will say why
            row = None
        if row is None:
            result.to_read.append(file)
        else:
            result.kept[file] = {**row, **now}
    there = {name_of(file) for file in [*result.kept, *result.to_read]}
    result.gone.extend(name for name in rows if name not in there)
    return result
