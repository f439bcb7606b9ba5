"""What the parameter sections of two files say differently, record by record."""

from __future__ import annotations

from collections.abc import Collection
from typing import Any

import numpy as np
from support.stored_file import CHARACTER, Record, StoredFile

# They tell where sections lie; the sign of the scale tells how samples are stored.
PLACES = ("POINT:DATA_START", "ROTATION:DATA_START")
SCALE = "POINT:SCALE"


def parameter_differences(before: bytes, after: bytes, ignored: Collection[str] = ()) -> list[str]:
    """Groups and parameters in either file, `ignored` ones apart: name, lock, description, type,
    dimensions and values."""
    old, new = StoredFile(before), StoredFile(after)
    found = []
    for old_records, new_records in (
        (old.groups, new.groups), (old.parameters, new.parameters),
    ):  # fmt: skip
        for path in {**old_records, **new_records}:
            if path in ignored:
                continue
            first, second = old_records.get(path), new_records.get(path)
            if first is None or second is None:
                found.append(f"{path}: {'added' if first is None else 'lost'}")
            else:
                found += _differences(path, (old, first), (new, second))
    return found


def _differences(
    path: str, old: tuple[StoredFile, Record], new: tuple[StoredFile, Record]
) -> list[str]:
    first, second = _facts(path, *old), _facts(path, *new)
    return [
        f"{path}: {fact} {first[fact]!r} became {second[fact]!r}"
        for fact in first
        if first[fact] != second[fact]
    ]


def _facts(path: str, file: StoredFile, record: Record) -> dict[str, Any]:
    facts = {
        "name": record.name,
        "lock": record.locked,
        "description": _text(record.description),
    }
    if record.is_group:
        return facts
    facts["type"] = record.type
    if record.type == CHARACTER:
        # The width counts bytes, of which a text has more once it is UTF-8.
        width = record.dims[:1] if record.data.isascii() else ()
        facts["dimensions"] = [*width, *record.dims[1:]]
        facts["values"] = _texts(record)
        return facts
    facts["dimensions"] = list(record.dims)
    if path not in PLACES:
        values = file.numbers_of(record)
        facts["values"] = (np.abs(values) if path == SCALE else values).tolist()
    return facts


def _texts(record: Record) -> list[str]:
    width = record.dims[0] if record.dims else 1
    if width == 0:
        return []
    rows = [record.data[at : at + width] for at in range(0, len(record.data), width)]
    return [_text(row) for row in rows]


def _text(content: bytes) -> str:
    kept = content.partition(b"\0")[0].rstrip(b" ")
    try:
        return kept.decode()
    except UnicodeDecodeError:
        return kept.decode("cp1252", errors="replace")
