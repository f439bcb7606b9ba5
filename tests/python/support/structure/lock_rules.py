"""Locks of the parameters that say how the samples lie."""

from __future__ import annotations

from support.structure.written_file import Deviations, WrittenFile

LOCKED = (
    "POINT:USED", "POINT:SCALE", "POINT:RATE", "POINT:DATA_START", "POINT:FRAMES", "ANALOG:USED",
    "ANALOG:RATE", "ANALOG:FORMAT", "ANALOG:BITS",
)  # fmt: skip


def locks(file: WrittenFile) -> Deviations:
    for path in LOCKED:
        record = file.parameters.get(path)
        if record is not None and not record.locked:
            yield f"{path}: not locked"
