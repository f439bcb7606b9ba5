"""Reading events back, changing descriptions and ids, clearing, and what is refused."""

from __future__ import annotations

from typing import Any

import _mox_probe as probe
import _moxPY
import numpy as np
import pytest
from support.failures import failure_of
from support.readings import attributes_of, group_node, same_reading
from support.small_trials import RATE
from support.store_tree import snapshot

EVENTS = "Format/Events"

NOT_IMPLEMENTED = (
    "This function was not implemented because of a change in backend data storage. If you are "
    "actively using this function, please contact support."
)


@pytest.fixture
def acquisition() -> Any:
    """Two occurrences of a left foot strike, one of a right foot off."""
    acquisition = _moxPY.moxNewAcquisition(0, 10)
    _moxPY.moxAppendEvent(acquisition, "Foot Strike", 1.5, "Left", "Ann", "heel", 1)
    _moxPY.moxAppendEvent(acquisition, "Foot Strike", 0.5, "Left", "Bob", "toe", 5)
    _moxPY.moxAppendEvent(acquisition, "Foot Off", 1.0, "Right", "Ann")
    return acquisition


def stored(acquisition: Any, name: str) -> dict[str, Any]:
    return group_node(acquisition, EVENTS)["sets"][name]


def test_one_time_is_a_float_and_more_are_an_array_of_singles(acquisition: Any) -> None:
    values, _ = _moxPY.moxGetEvents(acquisition)
    assert list(values) == ["LeftFoot Strike", "RightFoot Off"]
    assert values["LeftFoot Strike"].dtype == np.float32
    assert values["LeftFoot Strike"].tolist() == [1.5, 0.5]
    assert type(values["RightFoot Off"]) is float
    assert values["RightFoot Off"] == 1.0


def test_the_information_holds_subjects_and_units(acquisition: Any) -> None:
    _, info = _moxPY.moxGetEvents(acquisition)
    assert info == {
        "subject": {"LeftFoot Strike": "Ann", "RightFoot Off": "Ann"}, "units": {"ALLEVENTS": ""},
    }  # fmt: skip


def test_an_event_without_times_is_an_empty_array(acquisition: Any) -> None:
    probe.create_set(acquisition, f"{EVENTS}/Empty", 10, [0])
    probe.create_text_attribute(acquisition, f"{EVENTS}/Empty", "Subject", "Ann")
    times = _moxPY.moxGetEvents(acquisition)[0]["Empty"]
    assert (times.dtype, times.shape) == (np.float32, (0,))


def test_units_that_differ_are_listed(acquisition: Any) -> None:
    for name, unit in (("LeftFoot Strike", "s"), ("RightFoot Off", "ms")):
        probe.create_text_attribute(acquisition, f"{EVENTS}/{name}", "Unit", unit)
    units = _moxPY.moxGetEvents(acquisition)[1]["units"]
    assert units == {"LeftFoot Strike": "s", "RightFoot Off": "ms"}


def test_a_set_that_alone_lacks_a_unit_is_named(acquisition: Any) -> None:
    probe.create_text_attribute(acquisition, f"{EVENTS}/LeftFoot Strike", "Unit", "s")
    text = (
        "Unexpected error when extracting attribute value : set is RightFoot Off, attribute is Unit"
    )
    assert failure_of(_moxPY.moxGetEvents, acquisition) == (SystemError, text)


def test_a_set_without_subject_is_named(acquisition: Any) -> None:
    probe.delete_attribute(acquisition, f"{EVENTS}/RightFoot Off", "Subject")
    text = (
        "Unexpected error when extracting attribute value : set is RightFoot Off, "
        "attribute is Subject"
    )
    assert failure_of(_moxPY.moxGetEvents, acquisition) == (SystemError, text)


def test_every_occurrence_counts(acquisition: Any) -> None:
    number = _moxPY.moxGetEventNumber(acquisition)
    assert (type(number), number) == (float, 3.0)


def test_no_events_are_0_events() -> None:
    acquisition = _moxPY.moxNewAcquisition()
    assert _moxPY.moxGetEventNumber(acquisition) == 0.0
    assert _moxPY.moxGetEvents(acquisition) == [{}, {"subject": {}, "units": {}}]


def test_all_occurrences_set_by_set(acquisition: Any) -> None:
    times, names, descriptions, ids = _moxPY.moxGetEventsValues(acquisition)
    assert (times.dtype, ids.dtype) == (np.float64, np.intc)
    assert times.tolist() == [1.5, 0.5, 1.0]
    assert names == ["LeftFoot Strike", "LeftFoot Strike", "RightFoot Off"]
    assert descriptions == ["heel", "heel", ""]
    assert ids.tolist() == [1, 1, 0]


def test_times_are_widened_singles() -> None:
    acquisition = _moxPY.moxNewAcquisition()
    _moxPY.moxAppendEvent(acquisition, "A", 0.1, "")
    assert _moxPY.moxGetEventsValues(acquisition)[0].tolist() == [float(np.float32(0.1))]


@pytest.mark.parametrize("with_group", [True, False])
def test_without_events_or_their_group_all_four_results_are_empty(with_group: bool) -> None:
    acquisition = _moxPY.moxNewAcquisition()
    if not with_group:
        probe.delete_group(acquisition, EVENTS)
    times, names, descriptions, ids = _moxPY.moxGetEventsValues(acquisition)
    assert (times.dtype, times.shape) == (np.float64, (0,))
    assert (ids.dtype, ids.shape) == (np.intc, (0,))
    assert (names, descriptions) == ([], [])


@pytest.mark.parametrize("name", ["LeftFoot Strike", "Left_Foot Strike", "_LeftFoot Strike__"])
def test_a_description_is_overwritten_and_found_without_underscores(
    acquisition: Any, name: str
) -> None:
    returned = _moxPY.moxSetEventDescription(acquisition, name, "ünder")
    assert attributes_of(stored(acquisition, "LeftFoot Strike"))["Description"] == "ünder"
    assert _moxPY.moxGetEventsValues(acquisition)[2] == ["ünder", "ünder", ""]
    assert same_reading(returned, _moxPY.moxGetEvents(acquisition))


def test_a_description_goes_to_every_occurrence(acquisition: Any) -> None:
    _moxPY.moxSetEventDescription(acquisition, "LeftFoot Strike", "new")
    attributes = stored(acquisition, "LeftFoot Strike")["attributes"]
    assert attributes["OccurrenceDescriptions"][2] == ["new", "new"]


@pytest.mark.parametrize("number", [0, 2, -1, 2**31 - 1, -(2**31)])
def test_an_id_is_overwritten_as_given_and_leaves_the_type(acquisition: Any, number: int) -> None:
    returned = _moxPY.moxSetEventId(acquisition, "Left_Foot Strike", number)
    attributes = attributes_of(stored(acquisition, "LeftFoot Strike"))
    assert (attributes["Icons"], attributes["Type"]) == (number, "Foot Strike")
    assert _moxPY.moxGetEventsValues(acquisition)[3].tolist() == [number, number, 0]
    assert same_reading(returned, _moxPY.moxGetEvents(acquisition))


def test_an_id_goes_to_every_element_of_the_icons(acquisition: Any) -> None:
    probe.delete_attribute(acquisition, f"{EVENTS}/RightFoot Off", "Icons")
    probe.create_attribute(acquisition, f"{EVENTS}/RightFoot Off", "Icons", 6, [3])
    _moxPY.moxSetEventId(acquisition, "RightFoot Off", 4)
    assert stored(acquisition, "RightFoot Off")["attributes"]["Icons"][2].tolist() == [4, 4, 4]


@pytest.mark.parametrize(
    ("setter", "value"), [("moxSetEventDescription", "new"), ("moxSetEventId", 2)]
)
@pytest.mark.parametrize(
    ("name", "looked_for"),
    [("Foot_Strike", "FootStrike"), ("leftFoot Strike", "leftFoot Strike"), ("", ""), ("_", ""),
     ("../Header", "../Header"), ("Left/Foot", "Left/Foot"), ("DeviceType", "DeviceType")],
)  # fmt: skip
def test_an_unknown_event_is_named_without_underscores(
    any_trial: Any, setter: str, value: Any, name: str, looked_for: str
) -> None:
    before = snapshot(any_trial)
    text = f"Event label '{looked_for}' doesn't exist"
    assert failure_of(getattr(_moxPY, setter), any_trial, name, value) == (RuntimeError, text)
    assert snapshot(any_trial) == before


UNAVAILABLE: dict[str, tuple[Any, ...]] = {
    "moxSetEventLabel": (0, "Foot Off"), "moxSetEventTime": (0, 1.0),
    "moxSetEventSubject": (0, "Ann"),
}  # fmt: skip


@pytest.mark.parametrize(("function", "arguments"), list(UNAVAILABLE.items()))
def test_what_is_no_longer_possible_is_refused_even_with_a_valid_index(
    any_trial: Any, function: str, arguments: tuple[Any, ...]
) -> None:
    before = snapshot(any_trial)
    failure = failure_of(getattr(_moxPY, function), any_trial, *arguments)
    assert failure == (RuntimeError, NOT_IMPLEMENTED)
    assert snapshot(any_trial) == before


@pytest.mark.parametrize(
    ("function", "arguments", "position", "kind"),
    [
        ("moxSetEventTime", ("0", 1.0), 4, "int"),
        ("moxSetEventTime", (0, "1.0"), 5, "float"),
        ("moxSetEventLabel", (0.0, "A"), 4, "int"),
        ("moxSetEventLabel", (0, b"A"), 5, "std::string const &"),
        ("moxSetEventSubject", (0, 1), 5, "std::string const &"),
    ],
)
def test_arguments_are_checked_before_the_refusal(
    acquisition: Any, function: str, arguments: tuple[Any, ...], position: int, kind: str
) -> None:
    text = f"in method '{function}', argument {position} of type '{kind}'"
    failure = failure_of(getattr(_moxPY, function), acquisition, *arguments)
    assert failure == (TypeError, text)


def test_clearing_deletes_every_event_and_keeps_the_group(any_trial: Any) -> None:
    before = probe.tree(any_trial)
    assert _moxPY.moxClearEvents(any_trial) is None
    before["groups"]["Format"]["groups"]["Events"]["sets"] = {}
    assert repr(probe.tree(any_trial)) == repr(before)
    assert _moxPY.moxGetEventNumber(any_trial) == 0.0


def test_events_can_be_appended_after_clearing(any_trial: Any) -> None:
    _moxPY.moxClearEvents(any_trial)
    values, _ = _moxPY.moxAppendEvent(any_trial, "Foot Strike", 2.0, "Left")
    assert values == {"LeftFoot Strike": 2.0}


def test_events_move_with_the_first_frame_when_asked(acquisition: Any) -> None:
    _moxPY.moxSetFrequency(acquisition, RATE)
    _moxPY.moxSetFirstFrame(acquisition, 50, 1)
    assert _moxPY.moxGetEventsValues(acquisition)[0].tolist() == [2.0, 1.0, 1.5]


@pytest.mark.parametrize(
    ("function", "arguments"),
    [("moxGetEvents", ()), ("moxGetEventNumber", ()), ("moxClearEvents", ()),
     ("moxSetEventDescription", ("LeftFoot Strike", "x")), ("moxSetEventId", ("A", 1))],
)  # fmt: skip
def test_a_missing_group_is_named(
    acquisition: Any, function: str, arguments: tuple[Any, ...]
) -> None:
    probe.delete_group(acquisition, EVENTS)
    text = "Impossible to retrieve group with path : 'Format/Events'"
    failure = failure_of(getattr(_moxPY, function), acquisition, *arguments)
    assert failure == (RuntimeError, text)
