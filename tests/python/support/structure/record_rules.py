"""The chain of records in the parameter section."""

from __future__ import annotations

from collections import Counter

from support.stored_file import BLOCK, CHARACTER, Record
from support.structure.written_file import Deviations, WrittenFile

TYPES = (-1, 1, 2, 4)
LARGEST_ID = 127
MOST_DIMENSIONS = 7
ZEROS_BEHIND = 4  # they end the section for readers that look for a name without characters
FIRST_GROUPS = ["POINT", "ANALOG", "FORCE_PLATFORM"]


def section_head(file: WrittenFile) -> Deviations:
    if file.processor != file.wanted_processor:
        yield f"parameter section: processor {file.processor}, not {file.wanted_processor}"


def head_marks(file: WrittenFile) -> Deviations:
    marks = file.content[file.parameter_offset : file.parameter_offset + 2]
    if marks != b"\x01\x50":
        yield f"parameter section: begins with {marks.hex(' ')}, not 01 50"


def record_chain(file: WrittenFile) -> Deviations:
    if not file.records:
        yield "parameter section: no record"
        return
    for record in file.records[:-1]:
        if record.next_offset != record.expected_offset:
            yield (
                f"{_place(record)}: the next record is {record.expected_offset} bytes on, not"
                f" {record.next_offset}"
            )
    last = file.records[-1]
    if last.next_offset != 0:
        yield f"{_place(last)}: the last record points {last.next_offset} bytes on, not 0"


def section_end(file: WrittenFile) -> Deviations:
    if not file.records:
        return
    end = file.records[-1].end
    blocks = -(-(end + ZEROS_BEHIND - file.parameter_offset) // BLOCK)
    shown = file.content[file.parameter_offset + 2]
    if shown != blocks:
        yield f"parameter section: counts {shown} blocks, its records need {blocks}"
    padding = file.content[end : file.parameter_offset + blocks * BLOCK]
    if any(padding):
        yield "parameter section: the bytes behind the last record are not 0"


def ids_and_order(file: WrittenFile) -> Deviations:
    defined: set[int] = set()
    for record in file.records:
        number = abs(record.id)
        if number == 0 or number > LARGEST_ID:
            yield f"{_place(record)}: id {record.id}"
        elif not record.is_group and number not in defined:
            yield f"{_place(record)}: stands before the record of its group {number}"
        elif record.is_group and number in defined:
            yield f"{_place(record)}: id {number} is taken by another group"
        defined |= {number} if record.is_group else set()


def ids_without_gaps(file: WrittenFile) -> Deviations:
    ids = [-record.id for record in file.records if record.is_group]
    if ids != list(range(1, len(ids) + 1)):
        yield f"parameter section: group ids {ids}, not 1 to {len(ids)}"
    first = [record.name for record in file.records if record.is_group][:3]
    if first != FIRST_GROUPS:
        yield f"parameter section: begins with the groups {first}"


def names(file: WrittenFile) -> Deviations:
    owners = Counter((max(record.id, -1), record.name.upper()) for record in file.records)
    for (owner, name), count in owners.items():
        if count > 1:
            what = "group" if owner < 0 else f"parameter of group {owner}"
            yield f"{name}: {count} times the name of a {what}"


def types_and_dimensions(file: WrittenFile) -> Deviations:
    for path, record in file.parameters.items():
        if record.type not in TYPES:
            yield f"{path}: type {record.type}"
        if len(record.dims) > MOST_DIMENSIONS:
            yield f"{path}: {len(record.dims)} dimensions"
        if record.type != CHARACTER:
            continue
        if record.dims and record.dims[0] == 0 and all(record.dims[1:]) and len(record.dims) > 1:
            yield f"{path}: texts of 0 characters"
        if b"\0" in record.data:
            yield f"{path}: padded with NUL"
        for row in file.rows(path):
            if not _is_utf8(row):
                yield f"{path}: no UTF-8: {row!r}"


def _is_utf8(text: bytes) -> bool:
    try:
        text.decode()
    except UnicodeDecodeError:
        return False
    return True


def _place(record: Record) -> str:
    return f"record {record.name} at 0x{record.position:X}"
