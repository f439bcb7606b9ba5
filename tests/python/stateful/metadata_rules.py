"""Metadata, changed at random."""

from __future__ import annotations

import contextlib
from typing import Any

import numpy as np
from hypothesis import strategies as st
from hypothesis.stateful import rule
from stateful.editing_machine import EditingMachine
from stateful.picks import Existing, entry_path, existing_entry, mostly, value_like
from support.model.state import Refused

groups = st.sampled_from(["MINE", "POINT", "ANALOG", "MINE/DEEP", "", "NOWHERE"])
entries = st.sampled_from(["NOTE", "NUMBERS", "BITS", "RATE", "LABELS", "DEEP", "", "X/NOTE"])
places = mostly(existing_entry, st.tuples(groups, entries))
formats = mostly(st.sampled_from(["Integer", "Byte", "Char", "Real"]), st.just("Float"))

VALUES: list[Any] = [
    5, -3.5, True, "text", "", "12.5 mm", 70000, 2**40, 2**70, None, (1, 2),
    [5], [1, 2, 3], [0.5, -1.5, 40000.0], ["a", "bc"], ["7", "-2x"], [True, False],
    [[1, 2], [3, 4], [5, 6]], [[0.5, 1.5]], [["a", "b", "c"], ["d", "e", "f"]],
    [], [1, 2.0], [[1, 2], [3]], [300, -70000], [2**40, 1],
    np.array([1, 2, 3], dtype=np.int16), np.array([1, 200, 70000]), np.array(2.5),
    np.array(["x", "yz"]),
    np.asfortranarray([[1.5, 2.5], [3.5, 4.5], [5.5, 6.5]]), np.array([1j, 2j]),
]  # fmt: skip
values = st.sampled_from(VALUES)

dimensions = mostly(
    st.sampled_from([[], [1], [2], [3], [2, 2], [0], (4,), np.array([2, 3])]),
    st.sampled_from([[-1], [2, -3], [2**62, 2], [1.5], ["2"], 3, None]),
)

number_infos = st.fixed_dictionaries(
    {
        "format": st.sampled_from(["Integer", "Real", "Byte"]),
        "values": st.sampled_from([[1, 2, 3], [0.5, -1.5, 99.0], [[1, 2], [3, 4], [5, 6]], [7, 8]]),
    }
)
text_infos = st.fixed_dictionaries(
    {"format": st.just("Char"), "values": st.sampled_from(["text", ["a", "bc"], [["7", "-2x"]]])}
)
infos = mostly(
    number_infos | text_infos,
    st.fixed_dictionaries({"format": formats, "values": values}),
    st.sampled_from(
        [{}, [], None, {"values": [1]}, {"format": 3, "values": [1]}, {"format": "Real"}]
    ),
)


def split_or_joined(group: str, entry: str, joined: bool) -> tuple[str, ...]:
    """Group and entry as two texts, or as one path."""
    if not joined:
        return group, entry
    return (f"{group}/{entry}" if group else entry,)


Place = Existing | tuple[str, str]


class MetadataRules(EditingMachine):
    def entry(self, pick: Place) -> tuple[str, str]:
        return entry_path(pick, self.model.metadata)

    @rule(function=st.sampled_from(["moxGetMetaData", "moxFindMetaData"]), pick=places)
    def get_group_or_entry(self, function: str, pick: Place) -> None:
        group, entry = self.entry(pick)
        self.perform(function, group)
        self.perform(function, group, entry)

    @rule(group=groups, entry=entries, info=infos)
    def append_entry(self, group: str, entry: str, info: Any) -> None:
        self.perform("moxAppendMetaData", group, entry, info)

    @rule(pick=places, info=infos)
    def set_entry(self, pick: Place, info: Any) -> None:
        self.perform("moxSetMetaData", *self.entry(pick), info)

    @rule(pick=places, joined=st.booleans(), value=values)
    def set_value(self, pick: Place, joined: bool, value: Any) -> None:
        self.perform("moxSetMetaDataValue", *split_or_joined(*self.entry(pick), joined), value)

    @rule(
        pick=existing_entry,
        number=st.integers(-100, 100),
        form=st.sampled_from(["list", "float64", "float32", "int16", "int64"]),
    )
    def set_value_that_fits(self, pick: Existing, number: int, form: str) -> None:
        group, entry = self.entry(pick)
        with contextlib.suppress(Refused):
            stored = self.model.stored_entry(group, entry)
            self.perform("moxSetMetaDataValue", group, entry, value_like(stored, number, form))

    @rule(pick=places, joined=st.booleans(), format=formats)
    def set_format(self, pick: Place, joined: bool, format: str) -> None:
        self.perform("moxSetMetaDataFormat", *split_or_joined(*self.entry(pick), joined), format)

    @rule(pick=places, joined=st.booleans(), dimensions=dimensions)
    def set_dimensions(self, pick: Place, joined: bool, dimensions: Any) -> None:
        path = split_or_joined(*self.entry(pick), joined)
        self.perform("moxSetMetaDataDimensions", *path, dimensions)

    @rule(pick=places, joined=st.booleans(), text=st.sampled_from(["", "text"]))
    def set_description(self, pick: Place, joined: bool, text: str) -> None:
        path = split_or_joined(*self.entry(pick), joined)
        self.perform("moxSetMetaDataDescription", *path, text)

    @rule(group=groups)
    def remove_group(self, group: str) -> None:
        self.perform("moxRemoveMetaData", group)

    @rule(pick=places)
    def remove_entry(self, pick: Place) -> None:
        self.perform("moxRemoveMetaData", *self.entry(pick))
