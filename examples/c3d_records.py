"""The bytes of C3D parameters, as little of the format as one well-behaved file needs."""

from __future__ import annotations

from collections.abc import Sequence
from typing import Any

import numpy as np

BLOCK = 512
INTEL = 84

Parameters = list[tuple[str, bytes]]


def parameter(name: str, value: Any, locked: bool = False) -> tuple[str, bytes]:
    """A record without its head: name with lock sign, then type, dimensions and data.

    Text and lists of text are characters, float is real, int is integer. An array's last index
    runs fastest, so that the dimensions of the file are its shape reversed.
    """
    shape: Sequence[int]
    if isinstance(value, str):
        kind, shape, data = -1, [len(value)], value.encode("ascii")
    elif isinstance(value, list) and all(isinstance(entry, str) for entry in value):
        width = max((len(entry) for entry in value), default=0)
        kind, shape = -1, [len(value), width]
        data = "".join(entry.ljust(width) for entry in value).encode("ascii")
    else:
        array = np.asarray(value)
        kind, shape = (4 if array.dtype.kind == "f" else 2), array.shape
        data = array.astype("<f4" if kind == 4 else "<i2").tobytes()
    content = kind.to_bytes(1, "little", signed=True) + bytes([len(shape), *reversed(shape)])
    return ("-" if locked else "") + name, content + data + b"\0"


def record(name: str, group_id: int, content: bytes) -> bytes:
    """One record: signed length of the name, id, name, distance to the next record, content."""
    bare = name.removeprefix("-").encode("ascii")
    length = -len(bare) if name.startswith("-") else len(bare)
    head = length.to_bytes(1, "little", signed=True) + group_id.to_bytes(1, "little", signed=True)
    return head + bare + (2 + len(content)).to_bytes(2, "little") + content


def in_blocks(content: bytes) -> bytes:
    return content + bytes(-len(content) % BLOCK)


def parameter_section(groups: dict[str, Parameters]) -> bytes:
    records = b""
    for group_id, (name, parameters) in enumerate(groups.items(), start=1):
        records += record(name, -group_id, b"\0")
        records += b"".join(record(label, group_id, content) for label, content in parameters)
    # Zeros where the name of a next record would stand end the section.
    section = in_blocks(bytes(4) + records + bytes(4))
    return bytes([1, 0x50, len(section) // BLOCK, INTEL]) + section[4:]
