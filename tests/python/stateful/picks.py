"""Channels, events and metadata entries that are there when a rule runs."""

from __future__ import annotations

from collections.abc import Iterator, Sequence
from dataclasses import dataclass
from typing import Any

import numpy as np
from hypothesis import strategies as st
from support.model.state import Channel, Entry, MetadataGroup


@dataclass(frozen=True)
class Existing:
    """One of those that are there, counted round and round."""

    place: int
    by_label: bool = False


def mostly(often: st.SearchStrategy[Any], *seldom: st.SearchStrategy[Any]) -> Any:
    """Four times as often the first as each other one."""
    # Mapped, because equal alternatives would count as one.
    return st.one_of(*[often.map(lambda value: value) for _ in range(4)], *seldom)


existing = st.builds(Existing, st.integers(0, 8), st.booleans())
existing_entry = st.builds(Existing, st.integers(0, 50))


def channel_key(pick: Existing | int | str, channels: Sequence[Channel]) -> int | str:
    """Index or label of the picked channel; what is given literally stays."""
    if not isinstance(pick, Existing):
        return pick
    if not channels:
        return 0
    channel = channels[pick.place % len(channels)]
    return channel.label if pick.by_label else channel.index


def event_name(pick: Existing | str, names: Sequence[str]) -> str:
    if not isinstance(pick, Existing):
        return pick
    return names[pick.place % len(names)] if names else "Nobody"


def entry_path(pick: Existing | tuple[str, str], metadata: MetadataGroup) -> tuple[str, str]:
    """Group and name of the picked entry."""
    if not isinstance(pick, Existing):
        return pick
    paths = list(_paths(metadata, ""))
    return paths[pick.place % len(paths)] if paths else ("NOWHERE", "NOTE")


def _paths(group: MetadataGroup, path: str) -> Iterator[tuple[str, str]]:
    for name in group.entries:
        yield path, name
    for name, inner in group.groups.items():
        yield from _paths(inner, f"{path}/{name}" if path else name)


def value_like(entry: Entry, number: int, form: str) -> Any:
    """A value that fits an entry: a list, an array of texts or of the type `form`."""
    numbers = range(number, number + len(entry.elements))
    flat: list[Any] = [f"{each}x" for each in numbers] if entry.kind == "str" else list(numbers)
    if not entry.dims:
        return flat[0]
    array = np.array(flat).reshape(entry.dims)
    if form == "list":
        return array.tolist()
    if entry.kind != "str":
        array = (array / 4 if form.startswith("float") else array).astype(form)
    return np.asfortranarray(array)
