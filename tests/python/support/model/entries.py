"""Metadata entries: element types, conversion, what Python gets of them."""

from __future__ import annotations

import math
import re
from typing import Any

import numpy as np

from .state import Entry, Refused, single

KIND_OF_FORMAT = {"Integer": "int16", "Byte": "int8", "Char": "str", "Real": "float32"}
FORMAT_OF_KIND = {
    "int8": "Byte", "int16": "Integer", "int32": "Integer", "float32": "Real", "str": "Char",
}  # fmt: skip


def exported(entry: Entry) -> dict[str, Any]:
    return {
        "unlocked": 1.0,
        "children": 0.0,
        "description": "",
        "info": {
            "values": _values(entry),
            "format": FORMAT_OF_KIND[entry.kind],
            "dims": np.array(entry.dims, dtype=np.int64),
        },
    }


def _values(entry: Entry) -> Any:
    if entry.kind == "str":
        # Of texts in several dimensions only as many are seen as the first one counts.
        return entry.elements[: entry.dims[0]] if entry.dims else entry.elements[0]
    if len(entry.elements) == 1:
        return entry.elements[0]
    return np.array(entry.elements, dtype=entry.kind).reshape(entry.dims).T


def require_readable(kind: str, count: int) -> None:
    """Single bytes cannot be read, so they may not come to be."""
    if kind == "int8" and count == 1:
        raise Refused("Trying to read an unsupported data type for a data set", SystemError)


def kind_of(value: Any) -> str | None:
    """Element type of a value that is to be written; None where it has none."""
    if isinstance(value, np.ndarray):
        if value.dtype.kind in "SU":
            return "str"
        return value.dtype.name if value.dtype.kind in "biuf" else None
    if isinstance(value, list):
        kinds = {kind_of(item) for item in value}
        return kinds.pop() if len(kinds) == 1 else None
    for type_, kind in ((str, "str"), (bytes, "str"), (float, "float64"), (int, "int64")):
        if isinstance(value, type_):
            return kind
    return None


def shape_of(value: Any) -> tuple[int, ...]:
    """The extents of an array, or of nested lists as their first items tell."""
    if isinstance(value, np.ndarray):
        return value.shape
    if isinstance(value, list):
        return (len(value), *(shape_of(value[0]) if value else ()))
    return ()


def elements_of(value: Any) -> list[Any]:
    """The items in logical order, the last dimension fastest."""
    if isinstance(value, np.ndarray):
        return value.ravel().tolist()
    if not isinstance(value, list):
        _require_bits(value, 64)
        return [value]
    shape = shape_of(value)
    if any(shape_of(item) != shape[1:] for item in value):
        raise Refused(kind=ValueError)
    items = [element for item in value for element in elements_of(item)]
    for item in items:
        _require_bits(item, 32)
    return items


def too_large() -> Refused:
    return Refused("Python int too large to convert to C long", OverflowError)


def _require_bits(item: Any, bits: int) -> None:
    if isinstance(item, int) and not -(2 ** (bits - 1)) <= item < 2 ** (bits - 1):
        raise too_large()


def written(value: Any, kind: str) -> list[Any]:
    """The elements of a value as an entry of this type holds them."""
    return [_as_stored(element, kind) for element in elements_of(value)]


def _as_stored(element: Any, kind: str) -> Any:
    if kind == "str":
        return element
    if kind == "float32":
        return single(element)
    if isinstance(element, float):
        return _saturated(element, kind)
    limits = np.iinfo(kind)
    if not limits.min <= element <= limits.max:
        raise too_large()
    return int(element)


def assign_number(entry: Entry | None, number: float) -> None:
    """Write one number into an entry that can hold one."""
    if entry is not None and entry.kind != "str" and len(entry.elements) == 1:
        entry.elements = [_as_stored(float(number), entry.kind)]


def tell_rate(entries: dict[str, Entry], rate: float) -> None:
    """A rate is told by the entry that is there; one that cannot hold it becomes a single real."""
    entry = entries.get("RATE")
    if entry is None:
        return
    assign_number(entry, rate)
    is_single = len(entry.elements) == 1
    if is_single and entry.kind != "str" and entry.elements[0] in (rate, single(rate)):
        return
    del entries["RATE"]
    entries["RATE"] = Entry("float32", entry.dims if is_single else (), [single(rate)])


def reformatted(element: Any, kind: str, target: str) -> Any:
    """An element as one of another type."""
    if kind == target:
        return element
    if target == "str":
        return _shortest(element) if isinstance(element, float) else str(element)
    if kind == "str":
        found = re.match(r"-?\d+(\.\d+)?", element)
        element = float(found[0]) if found else 0.0
    return single(element) if target == "float32" else _saturated(element, target)


def _saturated(number: float, kind: str) -> int:
    limits = np.iinfo(kind)
    return math.trunc(min(max(number, limits.min), limits.max))


def _shortest(number: float) -> str:
    """The fewest digits that read back as the same single."""
    return next(
        text for decimals in range(30) if single(float(text := f"{number:.{decimals}f}")) == number
    )
