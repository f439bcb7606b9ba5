"""The header words and the parameter records of any C3D file, as they are stored.

Written for judging other code: nothing is repaired, and nothing of the module is used.
"""

from __future__ import annotations

import struct
from dataclasses import dataclass
from functools import cached_property
from typing import Any

import numpy as np
from numpy.typing import NDArray

BLOCK = 512
CHARACTER, BYTE, INTEGER, REAL = -1, 1, 2, 4


@dataclass(frozen=True)
class Record:
    """One record of the parameter section; a group has the type 0."""

    position: int  # of its first byte in the file
    name: str
    id: int  # as stored: negative for groups
    locked: bool
    next_offset: int
    expected_offset: int  # the distance that leads right behind this record
    end: int  # position behind its last byte
    description: bytes
    type: int = 0
    dims: tuple[int, ...] = ()
    data: bytes = b""

    @property
    def is_group(self) -> bool:
        return self.id < 0


@dataclass
class StoredFile:
    content: bytes

    @property
    def parameter_offset(self) -> int:
        return (self.content[0] - 1) * BLOCK

    @property
    def processor(self) -> int:
        return self.content[self.parameter_offset + 3]

    @property
    def byte_order(self) -> str:
        return ">" if self.processor == 86 else "<"

    def word(self, number: int) -> int:
        """A 16-bit word of the header, which the format counts from 1."""
        return int(self.integers(self.content[2 * number - 2 : 2 * number])[0])

    def header_real(self, number: int) -> float:
        return float(self.reals(self.content[2 * number - 2 : 2 * number + 2])[0])

    def integers(self, data: bytes) -> NDArray[np.int64]:
        return np.frombuffer(data, f"{self.byte_order}u2").astype(np.int64)

    def reals(self, data: bytes) -> NDArray[np.float64]:
        if self.processor != 85:
            return np.frombuffer(data, f"{self.byte_order}f4").astype(np.float64)
        words = np.frombuffer(data, "<u2").astype(np.int64).reshape(-1, 2)
        bits = words[:, 0] << 16 | words[:, 1]
        mantissa = (bits & 0x7FFFFF | 0x800000).astype(np.float64)
        exponent = (bits >> 23 & 0xFF) - 152
        magnitudes = np.where(bits >> 23 & 0xFF, np.ldexp(mantissa, exponent), 0.0)
        return np.where(bits >> 31, -magnitudes, magnitudes)

    @cached_property
    def records(self) -> list[Record]:
        """In the order of the file, up to either mark of the end."""
        found: list[Record] = []
        position = self.parameter_offset + 4
        while position < len(self.content) and self.content[position] != 0:
            try:
                record = self._record_at(position)
            except (IndexError, struct.error):  # it reaches beyond the file
                break
            found.append(record)
            target = position + 2 + len(record.name) + record.next_offset
            if record.next_offset == 0 or target <= position:
                break
            position = target
        return found

    def _record_at(self, position: int) -> Record:
        length, group_id = struct.unpack_from("bb", self.content, position)
        place = position + 2 + abs(length)
        # One character a byte, so that positions can be told from lengths.
        name = self.content[position + 2 : place].decode("latin-1")
        next_offset = int(self.integers(self.content[place : place + 2])[0])
        start, kind, dims, data = place + 2, 0, (), b""
        if group_id > 0:
            kind, count = struct.unpack_from("bB", self.content, start)
            dims = tuple(self.content[start + 2 : start + 2 + count])
            start += 2 + count
            data = self.content[start : start + abs(kind) * int(np.prod(dims, dtype=np.int64))]
            start += len(data)
        described = self.content[start + 1 : start + 1 + self.content[start]]
        end = start + 1 + len(described)
        return Record(position, name, group_id, length < 0, next_offset, end - place, end,
                      described, kind, dims, data)  # fmt: skip

    @cached_property
    def groups(self) -> dict[str, Record]:
        return {record.name.upper(): record for record in self.records if record.is_group}

    @cached_property
    def parameters(self) -> dict[str, Record]:
        """By GROUP:NAME in capitals; of several with one name the last.

        A group without a record is called GROUP_ and its number.
        """
        names = {-record.id: record.name for record in self.records if record.is_group}
        return {
            f"{names.get(record.id, f'GROUP_{record.id}')}:{record.name}".upper(): record
            for record in self.records
            if not record.is_group
        }

    def rows(self, path: str) -> list[bytes]:
        """The texts of a parameter with their padding; [] where it is missing."""
        record = self.parameters.get(path)
        if record is None or not record.dims or record.dims[0] == 0:
            return [b""] * int(np.prod(record.dims[1:])) if record and record.dims else []
        width = record.dims[0]
        return [record.data[at : at + width] for at in range(0, len(record.data), width)]

    def texts(self, path: str) -> list[str]:
        return [plain_text(row) for row in self.rows(path)]

    def values(self, path: str) -> NDArray[Any]:
        """The numbers of a parameter in the order of the file; empty where it is missing."""
        record = self.parameters.get(path)
        return np.zeros(0) if record is None else self.numbers_of(record)

    def numbers_of(self, record: Record) -> NDArray[Any]:
        if record.type == REAL:
            return self.reals(record.data)
        if record.type == INTEGER:
            return self.integers(record.data)
        return np.frombuffer(record.data, np.uint8).astype(np.int64)

    def scalar(self, path: str, default: float = 0) -> float:
        values = self.values(path)
        return float(values[0]) if len(values) else default

    def count(self, path: str) -> int:
        return int(self.scalar(path))


def plain_text(row: bytes) -> str:
    """Without padding; what is no UTF-8 is Windows-1252."""
    content = row.partition(b"\0")[0].rstrip(b" ")
    try:
        return content.decode()
    except UnicodeDecodeError:
        return content.decode("cp1252", errors="replace")
