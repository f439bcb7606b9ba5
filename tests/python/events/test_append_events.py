"""moxAppendEvent: names, types, attributes of an event and of its occurrences."""

from __future__ import annotations

from pathlib import Path
from typing import Any

import _mox_probe as probe
import _moxPY
import numpy as np
import pytest
from support.failures import failure_of
from support.readings import attributes_of, group_node, same_reading, set_names
from support.small_trials import read_trial
from support.store_tree import snapshot

EVENTS = "Format/Events"
DESCRIBED = ("Context", "Icons", "Subject", "Description", "Type")

TYPES = [
    # label, id, type word
    ("Anything", 0, "General"),
    ("Anything", 1, "Foot Strike"),
    ("Anything", 2, "Foot Off"),
    ("FO", 0, "General"),  # the id comes before the synonyms
    ("FS", 2, "Foot Off"),
    ("Foot_Strike", -1, "Foot Strike"),
    ("FS", -1, "Foot Strike"),
    ("FootStrike", -1, "Foot Strike"),
    ("Foot Strike", -1, "Foot Strike"),
    ("Foot_Off", -1, "Foot Off"),
    ("FO", 7, "Foot Off"),
    ("FootOff", 3, "Foot Off"),
    ("Foot Off", -2, "Foot Off"),
    ("fs", -1, "fs"),  # synonyms are case-sensitive
    ("foot strike", -1, "foot strike"),
    ("Heel", 7, "Heel"),
    ("Heel", -1, "Heel"),
    ("Toe_Off", -1, "Toe_Off"),  # the label as it was given
]


@pytest.fixture
def acquisition() -> Any:
    return _moxPY.moxNewAcquisition(0, 10)


def event(acquisition: Any, name: str) -> dict[str, Any]:
    return group_node(acquisition, EVENTS)["sets"][name]


def described(acquisition: Any, name: str) -> dict[str, Any]:
    """What the set says of the event, without what it says of each occurrence."""
    attributes = attributes_of(event(acquisition, name))
    return {key: attributes[key] for key in DESCRIBED}


@pytest.mark.parametrize(
    ("label", "context", "name"),
    [
        ("Foot Strike", "Left", "LeftFoot Strike"),
        ("Foot_Strike", "Right", "RightFootStrike"),
        ("_a_", "__b", "ba"),
        ("", "Left", "Left"),
        ("Heel", "", "Heel"),
        ("é-日", " ", " é-日"),
    ],
)
def test_an_event_is_named_by_context_and_label_without_underscores(
    acquisition: Any, label: str, context: str, name: str
) -> None:
    values, _ = _moxPY.moxAppendEvent(acquisition, label, 1.0, context)
    assert list(values) == set_names(acquisition, EVENTS) == [name]


@pytest.mark.parametrize(("label", "number", "word"), TYPES)
def test_the_type_follows_from_the_id_then_from_the_label(
    acquisition: Any, label: str, number: int, word: str
) -> None:
    _moxPY.moxAppendEvent(acquisition, label, 1.0, "Left", "", "", number)
    (name,) = set_names(acquisition, EVENTS)
    assert described(acquisition, name)["Type"] == word


def test_the_label_decides_the_type_and_not_the_name(acquisition: Any) -> None:
    _moxPY.moxAppendEvent(acquisition, "Strike", 1.0, "Foot")
    assert described(acquisition, "FootStrike")["Type"] == "Strike"


@pytest.mark.parametrize(
    ("number", "icon"), [(-1, 0), (0, 0), (1, 1), (7, 7), (-2, -2), (-(2**31), -(2**31))]
)
def test_the_id_is_kept_and_none_is_0(acquisition: Any, number: int, icon: int) -> None:
    _moxPY.moxAppendEvent(acquisition, "A", 1.0, "", "", "", number)
    assert described(acquisition, "A")["Icons"] == icon


def test_what_is_not_given_is_empty(acquisition: Any) -> None:
    _moxPY.moxAppendEvent(acquisition, "Foot_Strike", 0.5, "Right")
    assert described(acquisition, "RightFootStrike") == {
        "Context": "Right", "Icons": 0, "Subject": "", "Description": "", "Type": "Foot Strike",
    }  # fmt: skip


@pytest.mark.parametrize(
    ("given", "kept"),
    [(("Ann",), ("Ann", "", 0)), (("Ann", "heel"), ("Ann", "heel", 0)),
     (("Ann", "heel", 2), ("Ann", "heel", 2))],
)  # fmt: skip
def test_subject_description_and_id_in_this_order(
    acquisition: Any, given: tuple[Any, ...], kept: tuple[Any, ...]
) -> None:
    _moxPY.moxAppendEvent(acquisition, "A", 0.5, "Left", *given)
    found = described(acquisition, "LeftA")
    assert (found["Subject"], found["Description"], found["Icons"]) == kept


def test_an_event_is_laid_down_as_times_and_attributes(acquisition: Any) -> None:
    _moxPY.moxAppendEvent(acquisition, "A", 0.1, "Left", "Ann", "heel", 1)
    created = event(acquisition, "LeftA")
    kinds = {name: created["attributes"][name][:2] for name in DESCRIBED}
    assert (created["type"], created["shape"]) == (10, [1])
    assert created["values"].tolist() == [float(np.float32(0.1))]
    assert kinds == {
        "Context": (12, []), "Icons": (6, [1]), "Subject": (12, []), "Description": (12, []),
        "Type": (12, []),
    }  # fmt: skip


def test_a_second_occurrence_keeps_the_attributes_of_the_first(acquisition: Any) -> None:
    _moxPY.moxAppendEvent(acquisition, "FS", 2.0, "Left", "Ann", "heel", 1)
    before = described(acquisition, "LeftFS")
    values, info = _moxPY.moxAppendEvent(acquisition, "FS", 1.0, "Left", "Bob", "toe", 2)
    assert described(acquisition, "LeftFS") == before
    assert event(acquisition, "LeftFS")["attributes"]["Icons"][1] == [1]
    assert values["LeftFS"].tolist() == [2.0, 1.0]  # in append order
    assert info["subject"] == {"LeftFS": "Ann"}


def test_an_empty_description_is_filled_by_a_later_occurrence(acquisition: Any) -> None:
    for text in ("", "heel", "toe"):
        _moxPY.moxAppendEvent(acquisition, "FS", 1.0, "Left", "", text)
    assert described(acquisition, "LeftFS")["Description"] == "heel"


def test_spellings_that_differ_by_underscores_share_a_set(acquisition: Any) -> None:
    _moxPY.moxAppendEvent(acquisition, "Foot_Off", 1.0, "Left")
    values, _ = _moxPY.moxAppendEvent(acquisition, "FootOff", 2.0, "Left_")
    assert {name: times.tolist() for name, times in values.items()} == {"LeftFootOff": [1.0, 2.0]}


def test_contexts_and_labels_that_join_to_one_name_share_a_set(acquisition: Any) -> None:
    _moxPY.moxAppendEvent(acquisition, "B", 1.0, "A")
    _moxPY.moxAppendEvent(acquisition, "AB", 2.0, "")
    assert described(acquisition, "AB")["Context"] == "A"
    assert _moxPY.moxGetEventNumber(acquisition) == 2.0


def test_each_occurrence_keeps_what_the_set_cannot_hold(acquisition: Any) -> None:
    _moxPY.moxAppendEvent(acquisition, "Foot_Off", 1.0, "Left", "Ann", "first", 2)
    _moxPY.moxAppendEvent(acquisition, "FootOff", 2.0, "Left", "Bob", "second")
    attributes = event(acquisition, "LeftFootOff")["attributes"]
    kept = {name.removeprefix("Occurrence"): list(attributes[name][2])
            for name in attributes if name.startswith("Occurrence")}  # fmt: skip
    assert kept == {
        "Contexts": ["Left", "Left"],
        "Labels": ["Foot_Off", "FootOff"], "Subjects": ["Ann", "Bob"],
        "Descriptions": ["first", "second"], "Icons": [2, 2], "Flags": [0, 0],
    }  # fmt: skip


@pytest.mark.parametrize(
    ("given", "kept"),
    [
        ((), ("Ann", "heel", 1)), (("Bob",), ("Bob", "heel", 1)), (("", "toe"), ("Ann", "toe", 1)),
        (("", "", 0), ("Ann", "heel", 0)), (("", "", -1), ("Ann", "heel", 1)),
        (("Bob", "toe", 7), ("Bob", "toe", 7)),
    ],
)  # fmt: skip
def test_an_occurrence_has_what_the_event_shows_unless_others_are_given(
    acquisition: Any, given: tuple[Any, ...], kept: tuple[Any, ...]
) -> None:
    _moxPY.moxAppendEvent(acquisition, "FS", 1.0, "Left", "Ann", "heel", 1)
    _moxPY.moxAppendEvent(acquisition, "FS", 2.0, "Left", *given)
    assert of_occurrences(acquisition, "LeftFS") == [("Ann", "heel", 1), kept]


def test_a_description_that_fills_an_empty_one_is_that_of_all_without(acquisition: Any) -> None:
    for text in ("", "", "heel", ""):
        _moxPY.moxAppendEvent(acquisition, "FS", 1.0, "Left", "", text)
    assert of_occurrences(acquisition, "LeftFS") == [("", "heel", 0)] * 4


def of_occurrences(acquisition: Any, name: str) -> list[tuple[str, str, int]]:
    """Subject, description and id of each."""
    attributes = event(acquisition, name)["attributes"]
    columns = [attributes[f"Occurrence{key}"][2] for key in ("Subjects", "Descriptions", "Icons")]
    return [(subject, text, int(icon)) for subject, text, icon in zip(*columns, strict=True)]


def test_an_occurrence_joins_the_event_of_a_file(tmp_path: Path) -> None:
    acquisition = read_trial(tmp_path)
    _moxPY.moxAppendEvent(acquisition, "Foot Strike", 0.25, "Left", "Bob", "new", 7)
    values, info = _moxPY.moxGetEvents(acquisition)
    assert values["LeftFoot Strike"].tolist() == [0.5, 1.5, 0.25]
    assert info["subject"]["LeftFoot Strike"] == "Ann"
    attributes = event(acquisition, "LeftFoot Strike")["attributes"]
    assert attributes["OccurrenceSubjects"][2] == ["Ann", "Ann", "Bob"]
    assert attributes["OccurrenceIcons"][2].tolist() == [1, 1, 7]


@pytest.mark.parametrize("time", [0.0, -1.5, 0.1, 1e-45, 3.4e38, 12345678.9, 7, True])
def test_times_are_narrowed_to_single_precision(acquisition: Any, time: float) -> None:
    values, _ = _moxPY.moxAppendEvent(acquisition, "A", time, "")
    assert values["A"] == float(np.float32(time))


@pytest.mark.parametrize("first_frame", [0, 500])
def test_times_are_kept_as_given_whatever_the_first_frame(first_frame: int) -> None:
    acquisition = _moxPY.moxNewAcquisition(0, 10)
    _moxPY.moxSetFrequency(acquisition, 100.0)
    _moxPY.moxSetFirstFrame(acquisition, first_frame)
    assert _moxPY.moxAppendEvent(acquisition, "A", 0.25, "")[0] == {"A": 0.25}


def test_the_fresh_reading_of_all_events_is_returned(any_trial: Any) -> None:
    returned = _moxPY.moxAppendEvent(any_trial, "New", 1.0, "Right", "Ann")
    assert type(returned) is list
    assert returned[0]["RightNew"] == 1.0
    assert same_reading(returned, _moxPY.moxGetEvents(any_trial))


def test_events_are_listed_in_the_order_of_their_creation(acquisition: Any) -> None:
    for label in ("C", "A", "B", "A"):
        values, _ = _moxPY.moxAppendEvent(acquisition, label, 1.0, "")
    assert list(values) == ["C", "A", "B"]


@pytest.mark.parametrize(("label", "context"), [("", ""), ("_", "__"), ("", "_")])
def test_an_event_without_name_is_refused(any_trial: Any, label: str, context: str) -> None:
    before = snapshot(any_trial)
    text = "Context and label of an event cannot both be empty"
    failure = failure_of(_moxPY.moxAppendEvent, any_trial, label, 1.0, context)
    assert failure == (RuntimeError, text)
    assert snapshot(any_trial) == before


@pytest.mark.parametrize(
    ("label", "context", "name"),
    [("a/b", "", "a/b"), ("b", "L\\", "L\\b"), ("/", "", "/"), ("x_", "/", "/x_")],
)
def test_separators_in_a_name_are_refused(
    any_trial: Any, label: str, context: str, name: str
) -> None:
    before = snapshot(any_trial)
    text = f"Context and label of an event cannot contain '/' or '\\', current are : '{name}'"
    failure = failure_of(_moxPY.moxAppendEvent, any_trial, label, 1.0, context)
    assert failure == (RuntimeError, text)
    assert snapshot(any_trial) == before


@pytest.mark.parametrize("time", [float("nan"), float("inf"), float("-inf"), 1e39])
def test_a_time_that_is_no_finite_single_is_refused(any_trial: Any, time: float) -> None:
    before = snapshot(any_trial)
    text = f"The time of an event must be a finite number in single precision, current is : {time}"
    failure = failure_of(_moxPY.moxAppendEvent, any_trial, "A", time, "Left")
    assert failure == (RuntimeError, text)
    assert snapshot(any_trial) == before


def test_without_the_group_of_events_nothing_is_appended(any_trial: Any) -> None:
    probe.delete_group(any_trial, EVENTS)
    before = snapshot(any_trial)
    text = "Impossible to retrieve group with path : 'Format/Events'"
    failure = failure_of(_moxPY.moxAppendEvent, any_trial, "A", 1.0, "Left")
    assert failure == (RuntimeError, text)
    assert snapshot(any_trial) == before
