"""Metadata groups laid down entry by entry, and what is read of them."""

from __future__ import annotations

from collections.abc import Callable
from typing import Any

import _mox_probe as probe
import _moxPY
import numpy as np
import pytest

TYPE_NUMBERS = {
    "boolean": 1, "int8": 2, "uint8": 3, "int16": 4, "uint16": 5, "int32": 6, "uint32": 7,
    "int64": 8, "uint64": 9, "float32": 10, "float64": 11, "string": 12,
}  # fmt: skip

FORMAT_OF_TYPE = {
    "boolean": "Byte", "int8": "Byte", "uint8": "Byte", "int16": "Integer", "uint16": "integer",
    "int32": "Integer", "uint32": "Integer", "int64": "Integer", "uint64": "Integer",
    "float32": "Real", "float64": "Real", "string": "Char",
}  # fmt: skip

NATIVE_OF_TYPE = {
    "int8": "int8", "int16": "int16", "int32": "int32", "int64": "int64", "uint64": "uint64",
    "float32": "float", "float64": "double", "string": "string",
}  # fmt: skip


# Both ways to name the entry that a modifier changes.
WAYS: dict[str, Callable[..., Any]] = {
    "group and entry": lambda function, trial, group, entry, value: getattr(_moxPY, function)(
        trial, group, entry, value
    ),
    "path": lambda function, trial, group, entry, value: getattr(_moxPY, function)(
        trial, f"{group}/{entry}", value
    ),
}
ways = pytest.mark.parametrize("way", WAYS)


def add_entry(
    acquisition: Any, group: str, entry: str, element: str, shape: Any, values: Any = None
) -> None:
    """An entry of any element type and shape, `group` being made when it is missing."""
    path = f"Format/Metadata/{group}"
    probe.retrieve_or_create_group(acquisition, path)
    probe.create_attribute(acquisition, path, entry, TYPE_NUMBERS[element], shape)
    if values is not None:
        native = NATIVE_OF_TYPE[element]
        probe.write_attribute_vector(acquisition, path, entry, native, values)


def append(acquisition: Any, group: str, entry: str, kind: str, values: Any) -> dict[str, Any]:
    info = {"format": kind, "values": values}
    return _moxPY.moxAppendMetaData(acquisition, group, entry, info)


def info_of(acquisition: Any, group: str, entry: str) -> dict[str, Any]:
    """The "info" of an entry, its arrays as lists."""
    info = _moxPY.moxGetMetaData(acquisition, group, entry)["info"]
    return {key: value.tolist() if isinstance(value, np.ndarray) else value
            for key, value in info.items()}  # fmt: skip


def values_of(acquisition: Any, group: str, entry: str) -> Any:
    return info_of(acquisition, group, entry)["values"]


def names_of(acquisition: Any, group: str = "") -> list[str]:
    """The entries of a metadata group, then its groups; those of all metadata without one."""
    path = f"Format/Metadata/{group}".rstrip("/")
    return probe.list_attributes(acquisition, path) + probe.list_groups(acquisition, path)
