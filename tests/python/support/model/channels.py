"""What points and analog channels have in common: names, lookups, units, matrices."""

from __future__ import annotations

from collections.abc import Iterable
from typing import Any

import numpy as np

from .state import Array, Channel, ChannelGroup, Refused

ELEMENT_TYPE = (
    "Given matrix should have type as float or double, maybe try casting your array "
    "matrix.astype(np.float64) or matrix.astype(np.float32)"
)


def set_name(label: str) -> str:
    """The name under which a channel is kept: a label is no path."""
    return label.replace("/", "_").replace("\\", "_")


def unused_name(group: ChannelGroup, index: int) -> str:
    """The name of a channel without label: the next number, from the channel's index on."""
    while f"unamed_{index}" in group.channels:
        index += 1
    return f"unamed_{index}"


def refuse_existing(group: ChannelGroup, label: str) -> None:
    if set_name(label) in group.channels:
        raise Refused(
            f"You are trying to add a channel that already exists : '{label}' already exists at "
            "given location"
        )


def find(groups: Iterable[ChannelGroup], key: int | str) -> tuple[ChannelGroup, Channel]:
    """The first channel with this index or label, and its group."""
    for group in groups:
        for channel in group.channels.values():
            if key == (channel.index if isinstance(key, int) else channel.label):
                return group, channel
    kind = "index" if isinstance(key, int) else "label"
    raise Refused(f"Unable to find channel with given {kind} :  '{key}'")


def keyed(channels: Iterable[Channel]) -> dict[str, Channel]:
    """The channels by name; a name that was there already gets a number."""
    result: dict[str, Channel] = {}
    for channel in channels:
        key, number = channel.name, 2
        while key in result:
            key, number = f"{channel.name}_{number}", number + 1
        result[key] = channel
    return result


def units(channels: dict[str, Channel], tag: str) -> dict[str, str]:
    """One unit for all, or one for each."""
    each = {key: channel.unit for key, channel in channels.items()}
    if len(set(each.values())) == 1:
        return {f"ALL{tag}": next(iter(each.values()))}
    return each


def by_index(channels: Iterable[Channel]) -> list[Channel]:
    return sorted(channels, key=lambda channel: channel.index)


def joined(channels: Iterable[Channel]) -> Array:
    """The channels side by side, in the order of their indices."""
    ordered = by_index(channels)
    return np.hstack([channel.values for channel in ordered]) if ordered else np.array(0.0)


def checked(matrix: Any, rows: int, channels: int, components: int) -> Array:
    """The given matrix as float64, if it has this many rows and columns."""
    if isinstance(matrix, (list, tuple)):
        matrix = np.array(matrix)
    if not isinstance(matrix, np.ndarray):
        raise Refused(ELEMENT_TYPE)
    if matrix.ndim != 2:
        raise Refused(f"Given matrix should have 2 dimensions, current has : {matrix.ndim}")
    if matrix.shape[0] != rows:
        raise Refused(
            "Given matrix should have row number equals to the number of frames in the "
            f"acquisition , current has : {matrix.shape[0]}"
        )
    if matrix.shape[1] != channels * components:
        raise Refused(
            "Given matrix should have column number equals to the number of extracted points "
            f"multiplied by {components}, current has : {matrix.shape[1]}"
        )
    if matrix.dtype.newbyteorder("=") not in (np.float32, np.float64):
        raise Refused(ELEMENT_TYPE)
    return np.array(matrix, dtype=np.float64, subok=False)


def spread(matrix: Array, channels: list[Channel], components: int) -> None:
    """Give each channel its columns."""
    for place, channel in enumerate(channels):
        channel.values = matrix[:, place * components : (place + 1) * components].copy()


def resize(group: ChannelGroup, samples: int, filler: float) -> None:
    """Cut the channels of a group, or go on with `filler`."""
    group.samples = samples
    for channel in group.channels.values():
        kept = channel.values[:samples]
        added = np.full((samples - len(kept), kept.shape[1]), filler)
        channel.values = np.concatenate([kept, added])


def close_gap(channels: Iterable[Channel], removed: int) -> None:
    """Renumber the channels behind one that was removed."""
    for channel in channels:
        if channel.index > removed:
            channel.index -= 1


def keep_below(group: ChannelGroup, first_deleted: int) -> None:
    """Delete the channels from an index on."""
    group.channels = {
        name: channel for name, channel in group.channels.items() if channel.index < first_deleted
    }
