"""The group FORCE_PLATFORM."""

from __future__ import annotations

from support.stored_file import INTEGER, REAL
from support.structure.list_rules import required
from support.structure.written_file import Deviations, WrittenFile

REQUIRED_WITH_PLATFORMS = {
    "FORCE_PLATFORM:TYPE": INTEGER, "FORCE_PLATFORM:ZERO": INTEGER,
    "FORCE_PLATFORM:CORNERS": REAL, "FORCE_PLATFORM:ORIGIN": REAL,
    "FORCE_PLATFORM:CHANNEL": INTEGER,
}  # fmt: skip
# Dimensions before the one that counts the platforms; None: any.
SHAPES: dict[str, tuple[int | None, ...]] = {
    "TYPE": (), "CORNERS": (3, 4), "ORIGIN": (3,), "CHANNEL": (None,), "CAL_MATRIX": (None, None),
}  # fmt: skip


def parameters(file: WrittenFile) -> Deviations:
    yield from required(file, {"FORCE_PLATFORM:USED": INTEGER})
    count = file.count("FORCE_PLATFORM:USED")
    if count:
        yield from required(file, REQUIRED_WITH_PLATFORMS)
        yield from shapes(file, count)


def shapes(file: WrittenFile, count: int) -> Deviations:
    for name, leading in SHAPES.items():
        record = file.parameters.get(f"FORCE_PLATFORM:{name}")
        if record is None:
            continue
        fits = len(record.dims) == len(leading) + 1 and all(
            expected in (None, found) for expected, found in zip(leading, record.dims, strict=False)
        )
        if not fits or record.dims[-1] < count:
            yield f"FORCE_PLATFORM:{name}: dimensions {list(record.dims)} for {count} platforms"


def channel_numbers(file: WrittenFile) -> Deviations:
    for number in file.values("FORCE_PLATFORM:CHANNEL"):
        if not 0 <= number <= file.channels:
            yield f"FORCE_PLATFORM:CHANNEL: {number}, there are {file.channels} channels"
