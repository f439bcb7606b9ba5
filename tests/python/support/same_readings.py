"""What the getters say of two acquisitions, compared value by value."""

from __future__ import annotations

from collections.abc import Iterator
from typing import Any

import _moxPY
import numpy as np

from support.interface import FUNCTIONS

# Getters whose only argument is an acquisition. Those that give all points or channels by name are
# left out: the names are those of the creation, where a file has the labels of today. So are
# rotations: a new acquisition has not even the group of them.
BY_NAME = {f"moxGet{kind}" for kind in (
    "Angles", "Forces", "Markers", "Moments", "Powers", "Points", "Analogs", "Rotations",
)}  # fmt: skip
GETTERS = [
    function
    for function in FUNCTIONS
    if function.name.startswith("moxGet")
    and function.argument_counts == [1]
    and function.name not in BY_NAME
]
GROUPS = ("Angles", "Forces", "Markers", "Moments", "Powers")


def reading_differences(before: dict[str, Any], acquisition: Any) -> list[str]:
    """`before` is what `readings` gave of the other acquisition."""
    return list(_differences("", before, readings(acquisition)))


def readings(acquisition: Any) -> dict[str, Any]:
    """Results of all getters; those that raise give type and text of the exception."""
    results = {str(getter): _outcome(getter, acquisition) for getter in GETTERS}
    for kind in ("Point", "Analog"):
        count = int(results[f"moxGet{kind}Number"])
        get = getattr(_moxPY, f"moxGet{kind}")
        results[kind] = [_outcome(get, acquisition, index) for index in range(count)]
    for group in GROUPS:
        values = _outcome(getattr(_moxPY, f"moxGet{group}"), acquisition)[0]
        results[group] = len(values)
    for get in (_moxPY.moxGetForcePlatformWrenches, _moxPY.moxGetGroundReactionWrenches):
        results[get.__name__] = _outcome(get, acquisition)
    return results


def _outcome(getter: Any, *arguments: Any) -> Any:
    try:
        return getter(*arguments)
    except Exception as error:
        return type(error), str(error)


def _differences(place: str, first: Any, second: Any) -> Iterator[str]:
    if isinstance(first, dict) and isinstance(second, dict):
        for key in {**first, **second}:
            if key in first and key in second:
                yield from _differences(f"{place}/{key}", first[key], second[key])
            else:
                yield f"{place}/{key}: only {'before' if key in first else 'after'}"
    elif isinstance(first, (list, tuple)) and type(first) is type(second):
        if len(first) != len(second):
            yield f"{place}: {len(first)} entries became {len(second)}"
        for index, (one, other) in enumerate(zip(first, second, strict=False)):
            yield from _differences(f"{place}/{index}", one, other)
    elif not same_values(first, second):
        yield f"{place}: {first!r} became {second!r}"


def same_values(first: Any, second: Any) -> bool:
    if isinstance(first, np.ndarray) or isinstance(second, np.ndarray):
        return _same_arrays(np.asarray(first), np.asarray(second))
    if isinstance(first, dict) and isinstance(second, dict):
        return first.keys() == second.keys() and all(
            same_values(value, second[key]) for key, value in first.items()
        )
    if isinstance(first, str) and first == "Unknown":
        return isinstance(second, str)  # a file has units of kinds, and a default for each
    return bool(type(first) is type(second) and first == second)


def _same_arrays(first: Any, second: Any) -> bool:
    if first.shape != second.shape:
        return False
    if first.dtype.kind not in "fiu":
        return bool((first == second).all())
    return np.array_equal(first, second, equal_nan=first.dtype.kind == "f")
