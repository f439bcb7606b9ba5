"""Short readings of what an acquisition holds, as plain Python values."""

from __future__ import annotations

from typing import Any

import _mox_probe as probe
import _moxPY

from support.small_trials import GROUP_OF_TYPE

POINT_GROUPS = {group: f"Format/Data/{group}" for group in GROUP_OF_TYPE.values()}
ANALOG_GROUP = "Format/Data/AnalogsExport"


def group_node(acquisition: Any, path: str) -> dict[str, Any]:
    group = probe.tree(acquisition)
    for name in path.split("/"):
        group = group["groups"][name]
    return group


def value_of(attribute: tuple[int, list[int], Any]) -> Any:
    """The single element of an attribute."""
    _, _, elements = attribute
    return elements[0] if isinstance(elements, list) else elements.item()


def attributes_of(owner: dict[str, Any]) -> dict[str, Any]:
    """Name -> value of the attributes that hold one element."""
    return {
        name: value_of(attribute)
        for name, attribute in owner["attributes"].items()
        if attribute[1] in ([], [1])
    }


def set_names(acquisition: Any, path: str) -> list[str]:
    return list(group_node(acquisition, path)["sets"])


def indices_in(acquisition: Any, path: str) -> list[int]:
    """The indices of a group's channels, in list order."""
    sets = map(attributes_of, group_node(acquisition, path)["sets"].values())
    return [each["RelativeSetIndex"] for each in sets]


def types_of_points(acquisition: Any) -> dict[str, str]:
    """Label -> group, in the order of the indices."""
    return {label: group for _, label, group in sorted(_indexed_points(acquisition))}


def indices_of_points(acquisition: Any) -> dict[str, int]:
    """Label -> index, in the order of the indices."""
    return {label: index for index, label, _ in sorted(_indexed_points(acquisition))}


def _indexed_points(acquisition: Any) -> list[tuple[int, str, str]]:
    points = []
    for group, path in POINT_GROUPS.items():
        for each in group_node(acquisition, path)["sets"].values():
            attributes = attributes_of(each)
            points.append((attributes["RelativeSetIndex"], attributes["Label"], group))
    return points


def indices_of_analogs(acquisition: Any) -> dict[str, int]:
    """Label -> index, in the order of the indices."""
    sets = map(attributes_of, group_node(acquisition, ANALOG_GROUP)["sets"].values())
    found = {each["Label"]: each["RelativeSetIndex"] for each in sets}
    return dict(sorted(found.items(), key=lambda item: item[1]))


def point_info(acquisition: Any, point: int | str) -> dict[str, Any]:
    return _moxPY.moxGetPoint(acquisition, point)[1]


def analog_info(acquisition: Any, channel: int | str) -> dict[str, Any]:
    return _moxPY.moxGetAnalog(acquisition, channel)[1]


def same_reading(first: Any, second: Any) -> bool:
    """Equal keys in equal order, equal texts and numbers, arrays of equal type and bits."""
    if type(first) is not type(second):
        return False
    if isinstance(first, dict):
        return list(first) == list(second) and all(
            same_reading(first[key], second[key]) for key in first
        )
    if isinstance(first, list):
        return len(first) == len(second) and all(map(same_reading, first, second))
    if hasattr(first, "tobytes"):
        return (first.dtype, first.shape, first.tobytes()) == (
            second.dtype, second.shape, second.tobytes(),
        )  # fmt: skip
    return bool(first == second)
