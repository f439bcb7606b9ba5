"""What two stores hold differently, place by place."""

from __future__ import annotations

import fnmatch
from collections.abc import Iterator, Sequence
from typing import Any

import _mox_probe as probe
import numpy as np
from numpy.typing import NDArray

# What a file of another path, number format, storage and length says of itself.
ALWAYS_NEW = (
    "Format/Header@Processor", "Format/Header@Storage", "Format/Header@SectionHead",
    "Format/Header@Block", "Format/Metadata/POINT@DATA_START", "Format/Metadata/POINT@SCALE",
    "Format/Metadata/ROTATION@DATA_START", "@SourcePath", "@Warnings",
)  # fmt: skip


def store_differences(
    before: Any, after: Any, ignored: Sequence[str] = (), *, as_singles: bool = False
) -> list[str]:
    """`ignored` are patterns of places as they are shown; `as_singles`: points were rounded."""
    expected, found = contents(before), contents(after)
    places = [*expected, *(place for place in found if place not in expected)]
    patterns = [*ALWAYS_NEW, *ignored]
    return [
        f"{place}: {_shown(expected, place)} became {_shown(found, place)}"
        for place in places
        if not any(fnmatch.fnmatchcase(place, pattern) for pattern in patterns)
        and not _same(expected.get(place), found.get(place), as_singles and place)
    ]


def contents(acquisition: Any) -> dict[str, Any]:
    """Path or path@attribute -> (type, shape, values) of everything; groups are None."""
    return dict(_walk(probe.tree(acquisition), ""))


def _walk(node: dict[str, Any], path: str) -> Iterator[tuple[str, Any]]:
    values = (node["type"], node["shape"], node["values"]) if "values" in node else None
    yield path, values
    for name, attribute in node["attributes"].items():
        yield f"{path}@{name}", tuple(attribute)
    for kind in ("sets", "groups"):
        for name, child in node.get(kind, {}).items():
            yield from _walk(child, f"{path}/{name}".lstrip("/"))


def _same(expected: Any, found: Any, rounded: bool | str) -> bool:
    if expected is None or found is None:
        return expected is found
    if expected[0] != found[0] or list(expected[1]) != list(found[1]):
        return False
    if isinstance(expected[2], list):
        return bool(expected[2] == found[2])
    if rounded and "AnalogsExport" not in str(rounded):
        return _bits(expected[2].astype(np.float32)) == _bits(found[2].astype(np.float32))
    return _bits(expected[2]) == _bits(found[2])


def _bits(values: NDArray[Any]) -> bytes:
    if values.dtype.kind == "f":  # whatever NaN it is
        values = np.where(np.isnan(values), np.asarray(np.nan, values.dtype), values)
    return values.tobytes()


def _shown(contents: dict[str, Any], place: str) -> str:
    return str(contents[place])[:200] if place in contents else "nothing"
