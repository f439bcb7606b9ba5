"""Lists that go on in NAME2, NAME3, ..., and parameters that have to be there."""

from __future__ import annotations

from collections.abc import Iterable, Mapping

from support.structure.written_file import LONGEST_LIST, Deviations, WrittenFile, entries_of


def required(file: WrittenFile, types: Mapping[str, int | None]) -> Deviations:
    """Paths with the type they must have; None: any type."""
    for path, kind in types.items():
        record = file.parameters.get(path)
        if record is None:
            yield f"{path}: missing"
        elif kind is not None and record.type != kind:
            yield f"{path}: type {record.type}, not {kind}"


def list_lengths(file: WrittenFile, path: str, count: int | None) -> Deviations:
    """All parts but the last are full, none is empty but the first, together they have `count`."""
    parts = file.numbered(path)
    for name, record in parts[:-1]:
        if entries_of(record) != LONGEST_LIST:
            yield f"{name}: {entries_of(record)} entries although more follow, not {LONGEST_LIST}"
    if len(parts) > 1 and entries_of(parts[-1][1]) == 0:
        yield f"{parts[-1][0]}: empty"
    total = sum(entries_of(record) for _, record in parts)
    if parts and count is not None and total != count:
        yield f"{path}: {total} entries, not {count}"
    yield from _lost_parts(file, path, len(parts))


def _lost_parts(file: WrittenFile, path: str, found: int) -> Deviations:
    for number in range(max(found, 1) + 1, 260):
        if f"{path}{number}" in file.parameters:
            yield f"{path}{number}: the part before it is missing"
            return


def lists_in_step(file: WrittenFile, paths: Iterable[str], count: int) -> Deviations:
    for path in paths:
        yield from list_lengths(file, path, count)
