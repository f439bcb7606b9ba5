"""Parameters and groups as values: everything that one record of the parameter section says."""

from __future__ import annotations

from collections.abc import Callable, Iterable, Sequence
from dataclasses import dataclass, field
from typing import Any

import numpy as np
from numpy.typing import ArrayLike, NDArray

Array = NDArray[Any]
Text = str | bytes  # str is written as UTF-8; other encodings are given as bytes

CHARACTER, BYTE, INTEGER, REAL = -1, 1, 2, 4
LONGEST_LIST = 255  # a dimension is one byte: longer lists go on in NAME2, NAME3, ...


@dataclass
class Parameter:
    """One parameter record, written as it is told: nothing is checked against anything else."""

    name: Text
    type: int
    dims: tuple[int, ...]  # as in the file: the first one varies fastest
    data: Any  # bytes are written verbatim, numbers by `type`, in the order of the file
    locked: bool = False
    description: Text = b""
    gap: int = 0  # junk bytes between this record and the next one
    next_offset: int | None = None  # replaces the true distance to the next record
    group_id: int | None = None  # replaces the id of the group that holds this parameter


@dataclass
class Group:
    """One group record with its parameters; `id` is positive, the record holds its negative."""

    name: Text
    id: int
    parameters: list[Parameter] = field(default_factory=list)
    locked: bool = False
    description: Text = b""
    gap: int = 0
    next_offset: int | None = None
    write_record: bool = True  # False: parameters of a group that is never defined


def encoded(text: Text) -> bytes:
    return text if isinstance(text, bytes) else text.encode()


def text(
    name: Text, value: Text | Iterable[Text], *, width: int | None = None, **options: Any
) -> Parameter:
    """A character parameter: one text gives dims [width], a list of texts [width, count]."""
    if isinstance(value, (str, bytes)):
        rows, counts = [encoded(value)], []
    else:
        rows = [encoded(row) for row in value]
        counts = [len(rows)]
    if width is None:
        width = max(map(len, rows), default=0)
    data = b"".join(row.ljust(width)[:width] for row in rows)
    return Parameter(name, CHARACTER, (width, *counts), data, **options)


def byte(name: Text, values: ArrayLike, **options: Any) -> Parameter:
    return _numeric(name, BYTE, values, **options)


def integer(name: Text, values: ArrayLike, **options: Any) -> Parameter:
    return _numeric(name, INTEGER, values, **options)


def real(name: Text, values: ArrayLike, **options: Any) -> Parameter:
    return _numeric(name, REAL, values, **options)


def _numeric(
    name: Text, kind: int, values: ArrayLike, *, dims: Sequence[int] | None = None, **options: Any
) -> Parameter:
    """Numbers in C order, so that the dimensions are the array's shape reversed.

    `dims` replaces them and need not agree with the number of values.
    """
    array = np.asarray(values)
    shape = array.shape[::-1] if dims is None else tuple(dims)
    return Parameter(name, kind, shape, array.ravel(), **options)


def numbered(
    make: Callable[..., Parameter], name: str, values: Sequence[Any] | Array, **options: Any
) -> list[Parameter]:
    """`values` as `name`, `name`2, `name`3, ... of at most 255 entries each."""
    starts = range(0, len(values), LONGEST_LIST) if len(values) else [0]
    return [
        make(f"{name}{part or ''}", values[start : start + LONGEST_LIST], **options)
        for part, start in zip([0, *range(2, len(starts) + 1)], starts, strict=True)
    ]


def parameters_of(name: str, value: Any) -> list[Parameter]:
    """The records for a plain value: its type follows from the value, long lists overflow.

    str and bytes: characters; int: integer; float: real; 8-bit NumPy integers: byte.
    """
    if isinstance(value, (str, bytes)):
        return [text(name, value)]
    if np.isscalar(value):
        return [_maker(np.asarray(value))(name, value)]
    if not isinstance(value, np.ndarray) and any(isinstance(row, (str, bytes)) for row in value):
        return numbered(text, name, value)
    array = np.asarray(value)
    return numbered(_maker(array), name, array)


def _maker(array: Array) -> Callable[..., Parameter]:
    if array.dtype.kind == "f":
        return real
    return byte if array.dtype.itemsize == 1 else integer
