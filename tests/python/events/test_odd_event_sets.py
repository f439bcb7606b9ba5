"""Events appended to sets and attributes that a file or a plugin laid down in another way."""

from __future__ import annotations

from collections.abc import Callable
from typing import Any

import _mox_probe as probe
import _moxPY
import numpy as np
import pytest
from support.store_tree import Type, attribute, node, snapshot

EVENTS = "Format/Events"
SET = f"{EVENTS}/LeftA"

UNREADABLE_ATTRIBUTE = "[error] [strata] Invalid value to read the content of an attribute"
UNREADABLE_SET = "[error] [strata] Invalid value to read the content of a dataset"
UNWRITABLE_SET = "[error] [strata] Invalid value to write the content of a dataset"

NATIVES = {
    Type.INT16: "int16", Type.INT32: "int32", Type.FLOAT32: "float", Type.FLOAT64: "double",
    Type.STRING: "string",
}  # fmt: skip


# What each append of these tests adds.
APPENDED = {
    "OccurrenceLabels": "A", "OccurrenceSubjects": "Ann", "OccurrenceDescriptions": "heel",
    "OccurrenceContexts": "Left", "OccurrenceIcons": 2, "OccurrenceFlags": 0,
}  # fmt: skip


@pytest.fixture
def acquisition() -> Any:
    """An event with two occurrences."""
    acquisition = _moxPY.moxNewAcquisition(0, 10)
    append(acquisition, 1.0)
    append(acquisition, 2.0)
    return acquisition


def append(acquisition: Any, time: float) -> None:
    _moxPY.moxAppendEvent(acquisition, "A", time, "Left", "Ann", "heel", 2)


def replace(acquisition: Any, name: str, kind: Type, shape: list[int] | None, values: Any) -> None:
    probe.delete_attribute(acquisition, SET, name)
    probe.create_attribute(acquisition, SET, name, kind, shape)
    probe.write_attribute_vector(acquisition, SET, name, NATIVES[kind], values)


@pytest.mark.parametrize(
    ("kind", "shape", "given", "kept"),
    [
        (Type.FLOAT64, [2], [0.1, 2.0], [float(np.float32(0.1)), 2.0, 0.5]),
        (Type.INT32, [2], [16777217, 3], [16777216, 3, 0]),
        (Type.INT16, [1], [-7], [-7, 0]),
        (Type.FLOAT32, [2, 2], [1.0, 2.0, 3.0, 4.0], [1.0, 2.0, 3.0, 4.0, 0.5]),
        (Type.FLOAT32, [1, 1, 2], [1.0, 2.0], [1.0, 2.0, 0.5]),
        (Type.FLOAT32, None, [3.0], [3.0, 0.5]),
        (Type.FLOAT32, [0], [], [0.5]),
        (Type.FLOAT64, [0], [], [0.5]),
    ],
)
def test_numbers_are_narrowed_and_get_one_dimension(
    kind: Type, shape: list[int] | None, given: list[Any], kept: list[Any]
) -> None:
    acquisition = _moxPY.moxNewAcquisition(0, 10)
    probe.create_set(acquisition, SET, kind, shape)
    probe.fill_set(acquisition, SET, NATIVES[kind], given)
    append(acquisition, 0.5)
    append(acquisition, 4.0)
    stored = node(acquisition, SET)
    assert (stored["type"], stored["shape"]) == (kind, [len(kept) + 1])
    assert stored["values"].tolist() == [*kept, 4.0]
    for name in ("OccurrenceLabels", "OccurrenceSubjects", "OccurrenceIcons", "OccurrenceFlags"):
        assert attribute(acquisition, SET, name)[1] == stored["shape"]


def test_texts_are_no_times_and_the_log_says_so(new_log_lines: Callable[[], list[str]]) -> None:
    acquisition = _moxPY.moxNewAcquisition(0, 10)
    probe.create_set(acquisition, SET, Type.STRING, [2])
    probe.fill_set(acquisition, SET, "string", ["x", "y"])
    append(acquisition, 0.5)
    stored = node(acquisition, SET)
    assert (stored["type"], stored["shape"], stored["values"]) == (Type.STRING, [1], ["x"])
    assert attribute(acquisition, SET, "OccurrenceLabels")[2] == ["A"]
    assert new_log_lines() == [UNREADABLE_SET, UNWRITABLE_SET]


@pytest.mark.parametrize(
    ("name", "kind", "shape", "given", "kept"),
    [
        ("OccurrenceLabels", Type.STRING, [1], ["x"], ["x", "A"]),
        ("OccurrenceLabels", Type.STRING, [0], [], ["A", "A"]),
        ("OccurrenceLabels", Type.STRING, None, ["x"], ["x", "A"]),
        ("OccurrenceLabels", Type.STRING, [4], ["x", "y", "z", "u"], ["x", "y"]),
        ("OccurrenceLabels", Type.STRING, [2, 1], ["x", "y"], ["x", "y"]),
        ("OccurrenceSubjects", Type.STRING, [1], ["x"], ["x", "Ann"]),
        ("OccurrenceDescriptions", Type.STRING, [1], ["x"], ["x", "heel"]),
        ("OccurrenceContexts", Type.STRING, [1], ["x"], ["x", "Left"]),
        ("OccurrenceIcons", Type.INT32, [1], [7], [7, 2]),
        ("OccurrenceIcons", Type.INT32, [3], [7, 8, 9], [7, 8]),
        ("OccurrenceIcons", Type.FLOAT64, [2], [7.5, 1e12], [7, 2147483647]),
        ("OccurrenceFlags", Type.INT16, [2], [1, 5], [1, 5]),
        ("OccurrenceFlags", Type.INT32, None, [5], [5, 0]),
    ],
)
def test_an_array_of_another_form_gets_an_element_for_each_occurrence(
    acquisition: Any, name: str, kind: Type, shape: list[int] | None, given: Any, kept: list[Any]
) -> None:
    last = APPENDED[name]
    replace(acquisition, name, kind, shape, given)
    append(acquisition, 3.0)
    append(acquisition, 4.0)
    proper = Type.INT32 if name in ("OccurrenceIcons", "OccurrenceFlags") else Type.STRING
    assert attribute(acquisition, SET, name) == (proper, [4], [*kept, last, last])
    assert node(acquisition, SET)["values"].tolist() == [1.0, 2.0, 3.0, 4.0]


@pytest.mark.parametrize(
    ("name", "kind", "given", "kept"),
    [
        ("OccurrenceLabels", Type.INT32, [1, 2], ["", "", "A"]),
        ("OccurrenceIcons", Type.STRING, ["x", "y"], [0, 0, 2]),
    ],
)
def test_an_array_that_cannot_be_read_is_logged_once(
    acquisition: Any,
    new_log_lines: Callable[[], list[str]],
    name: str,
    kind: Type,
    given: list[Any],
    kept: list[Any],
) -> None:
    replace(acquisition, name, kind, [2], given)
    append(acquisition, 3.0)
    assert attribute(acquisition, SET, name)[2] == kept
    assert new_log_lines() == [UNREADABLE_ATTRIBUTE]
    append(acquisition, 4.0)
    assert new_log_lines() == [UNREADABLE_ATTRIBUTE]


def test_text_in_the_icons_is_logged_by_each_append(
    acquisition: Any, new_log_lines: Callable[[], list[str]]
) -> None:
    replace(acquisition, "Icons", Type.STRING, [2], ["x", "y"])
    append(acquisition, 3.0)
    append(acquisition, 4.0)
    assert attribute(acquisition, SET, "Icons") == (Type.STRING, [2], ["x", "y"])
    assert attribute(acquisition, SET, "OccurrenceIcons")[2] == [2, 2, 2, 2]
    assert new_log_lines() == [UNREADABLE_ATTRIBUTE] * 2


def test_a_description_that_is_a_number_is_logged_as_before(
    acquisition: Any, new_log_lines: Callable[[], list[str]]
) -> None:
    replace(acquisition, "Description", Type.INT32, None, [5])
    append(acquisition, 3.0)
    unwritable = "[error] [strata] Invalid value to write the content of an attribute"
    assert new_log_lines() == [UNREADABLE_ATTRIBUTE, unwritable, UNREADABLE_ATTRIBUTE]
    assert attribute(acquisition, SET, "Description") == (Type.INT32, [], [5])
    assert attribute(acquisition, SET, "OccurrenceDescriptions")[2] == ["heel"] * 3


@pytest.mark.parametrize("name", ["Context", "Icons", "Subject", "Description", "Type"])
def test_what_the_set_lacks_is_created_beside_what_it_has(acquisition: Any, name: str) -> None:
    before = attribute(acquisition, SET, name)
    probe.delete_attribute(acquisition, SET, name)
    append(acquisition, 3.0)
    assert attribute(acquisition, SET, name) == before
    assert node(acquisition, SET)["values"].tolist() == [1.0, 2.0, 3.0]


NOT_ONE_TEXT = [
    (Type.STRING, [2], ["heel", "toe"]),
    (Type.STRING, [0], []),
    (Type.INT32, None, [5]),
]


@pytest.mark.parametrize(("kind", "shape", "values"), NOT_ONE_TEXT)
def test_occurrences_keep_their_descriptions_where_that_of_the_set_stays(
    acquisition: Any, kind: Type, shape: list[int] | None, values: Any
) -> None:
    replace(acquisition, "Description", kind, shape, values)
    before = snapshot(acquisition)
    _moxPY.moxSetEventDescription(acquisition, "LeftA", "another")
    assert snapshot(acquisition) == before


def test_occurrences_keep_empty_descriptions_where_that_of_the_set_stays(
    acquisition: Any,
) -> None:
    replace(acquisition, "Description", Type.STRING, [2], ["", ""])
    replace(acquisition, "OccurrenceDescriptions", Type.STRING, [2], ["", "toe"])
    append(acquisition, 3.0)
    assert attribute(acquisition, SET, "OccurrenceDescriptions")[2] == ["", "toe", "heel"]


def test_a_missing_description_leaves_those_of_the_occurrences(acquisition: Any) -> None:
    probe.delete_attribute(acquisition, SET, "Description")
    before = attribute(acquisition, SET, "OccurrenceDescriptions")
    _moxPY.moxSetEventDescription(acquisition, "LeftA", "another")
    assert attribute(acquisition, SET, "OccurrenceDescriptions") == before


@pytest.mark.parametrize(
    ("kind", "shape", "values"), [(Type.STRING, [1], ["x"]), (Type.INT32, [0], [])]
)
def test_occurrences_keep_their_ids_where_the_set_takes_none(
    acquisition: Any, kind: Type, shape: list[int], values: Any
) -> None:
    replace(acquisition, "Icons", kind, shape, values)
    before = snapshot(acquisition)
    _moxPY.moxSetEventId(acquisition, "LeftA", 7)
    assert snapshot(acquisition) == before


def test_missing_icons_leave_the_ids_of_the_occurrences(acquisition: Any) -> None:
    probe.delete_attribute(acquisition, SET, "Icons")
    _moxPY.moxSetEventId(acquisition, "LeftA", 7)
    assert attribute(acquisition, SET, "OccurrenceIcons")[2] == [2, 2]
