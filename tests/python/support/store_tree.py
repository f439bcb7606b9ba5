"""A whole store as plain Python values, to be compared."""

from __future__ import annotations

from enum import IntEnum
from typing import Any

import _mox_probe as probe
import numpy as np


class Type(IntEnum):
    """Element types of the store."""

    INVALID = 0
    BOOLEAN = 1
    INT8 = 2
    UINT8 = 3
    INT16 = 4
    UINT16 = 5
    INT32 = 6
    UINT32 = 7
    INT64 = 8
    UINT64 = 9
    FLOAT32 = 10
    FLOAT64 = 11
    STRING = 12


def snapshot(handle: Any) -> Any:
    """Everything that the store of `handle` holds, NaN by its bytes and lists in order."""
    return _comparable(probe.tree(handle))


def _comparable(value: Any) -> Any:
    if isinstance(value, dict):
        return [(key, _comparable(item)) for key, item in value.items()]
    if isinstance(value, tuple):
        return tuple(map(_comparable, value))
    if isinstance(value, np.ndarray):
        return value.dtype.str, value.shape, value.tobytes()
    return value


def node(handle: Any, path: str) -> dict[str, Any]:
    """The description of the group or set at `path`."""
    found = probe.tree(handle)
    for name in filter(None, path.split("/")):
        found = found["groups"].get(name) or found["sets"][name]
    return found


def attribute(handle: Any, path: str, name: str) -> tuple[Type, list[int], Any]:
    """Type, shape and elements (a list) of an attribute of a group or set."""
    type_number, shape, values = node(handle, path)["attributes"][name]
    return Type(type_number), shape, np.ravel(values).tolist()


def scalar(handle: Any, path: str, name: str) -> Any:
    """The single value of an attribute of a group or set."""
    _, _, values = attribute(handle, path, name)
    (value,) = values
    return value
