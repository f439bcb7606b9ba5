"""Bytes of the parameter section."""

from __future__ import annotations

import struct
from collections.abc import Callable, Iterable

from .number_formats import NumberFormat
from .parameters import BYTE, CHARACTER, REAL, Group, Parameter, encoded

BLOCK = 512

Record = tuple[Group | Parameter, int]  # with the group id as the record holds it
RecordOrder = Callable[[list[Record]], list[Record]]

END_MARKS = ("zero_offset", "zero_name")


def in_blocks(content: bytes) -> bytes:
    return content + bytes(-len(content) % BLOCK)


def parameters_first(records: list[Record]) -> list[Record]:
    """Every parameter of the file before the first group."""
    return sorted(records, key=lambda record: isinstance(record[0], Group))


def reversed_records(records: list[Record]) -> list[Record]:
    """The whole section backwards: each group comes after its parameters."""
    return records[::-1]


def group_records(groups: Iterable[Group]) -> list[Record]:
    """Each group, followed by its parameters."""
    records: list[Record] = []
    for group in groups:
        if group.write_record:
            records.append((group, -group.id))
        for parameter in group.parameters:
            own = parameter.group_id
            records.append((parameter, group.id if own is None else own))
    return records


def record_bytes(
    record: Group | Parameter, group_id: int, numbers: NumberFormat, *, last: bool = False
) -> bytes:
    """One record; `last` writes the next-offset 0 that ends the section."""
    name = encoded(record.name)
    description = encoded(record.description)
    content = b"" if isinstance(record, Group) else _value_bytes(record, numbers)
    content += bytes([len(description)]) + description + b"\xee" * record.gap
    # The distance counts from the offset field itself, which takes two bytes.
    offset = 0 if last else 2 + len(content)
    if record.next_offset is not None:
        offset = record.next_offset
    head = struct.pack("bb", -len(name) if record.locked else len(name), group_id)
    return head + name + numbers.words(offset) + content


def _value_bytes(parameter: Parameter, numbers: NumberFormat) -> bytes:
    head = struct.pack("bB", parameter.type, len(parameter.dims)) + bytes(parameter.dims)
    if isinstance(parameter.data, (str, bytes)):
        return head + encoded(parameter.data)
    if parameter.type == REAL:
        return head + numbers.reals(parameter.data)
    words = numbers.word_bits(parameter.data)
    if parameter.type in (CHARACTER, BYTE):
        words = (words & 0xFF).astype("u1")
    return head + words.tobytes()


def section_bytes(
    groups: Iterable[Group],
    numbers: NumberFormat,
    *,
    order: RecordOrder | None = None,
    end_mark: str = "zero_offset",
    head: tuple[int, int] = (1, 0x50),
    block_count: int | None = None,
    processor: int | None = None,
) -> bytes:
    """The whole section, padded to blocks.

    `end_mark` "zero_offset": the last record says that nothing follows; "zero_name": it points
    at the zeros behind it. `block_count` and `processor` replace the true bytes.
    """
    if end_mark not in END_MARKS:
        raise ValueError(f"end_mark is one of {END_MARKS}, not {end_mark!r}")
    records = group_records(groups)
    if order is not None:
        records = order(records)
    content = bytearray(4)
    for position, (record, group_id) in enumerate(records, start=1):
        last = position == len(records) and end_mark == "zero_offset"
        content += record_bytes(record, group_id, numbers, last=last)
    # Zeros after the last record end the section for readers that look for no name.
    section = bytearray(in_blocks(bytes(content) + bytes(4)))
    blocks = len(section) // BLOCK if block_count is None else block_count
    shown = numbers.processor if processor is None else processor
    section[:4] = bytes([*head, blocks & 0xFF, shown])
    return bytes(section)
