"""Events appended by the thousand: values stay exact, and what is there is not moved each time."""

from __future__ import annotations

import itertools
import random
from pathlib import Path
from typing import Any

import _mox_probe as probe
import _moxPY
import numpy as np
import pytest
from support.readings import group_node
from support.small_trials import read_trial

EVENTS = "Format/Events"


def single(time: float) -> float:
    return float(np.float32(time))


def occurrences(acquisition: Any, name: str) -> dict[str, list[Any]]:
    """What the set of an event holds of each occurrence."""
    stored = group_node(acquisition, EVENTS)["sets"][name]
    kept = {
        key.removeprefix("Occurrence"): list(value[2])
        for key, value in stored["attributes"].items()
        if key.startswith("Occurrence")
    }
    return {"Times": stored["values"].tolist(), **kept}


def new_event() -> dict[str, list[Any]]:
    return {key: [] for key in (
        "Times", "Contexts", "Labels", "Subjects", "Descriptions", "Icons", "Flags",
    )}  # fmt: skip


def test_thousands_of_appended_events_are_all_there_among_other_edits() -> None:
    pick = random.Random(7)
    acquisition = _moxPY.moxNewAcquisition(0, 10)
    expected: dict[str, dict[str, list[Any]]] = {}
    for number in range(3000):
        context, label = pick.choice(["Left", "Right"]), pick.choice(["Foot Strike", "Foot_Strike"])
        time, subject = pick.uniform(0, 100), pick.choice(["Ann", "A subject of a longer name"])
        text, icon = f"step {number}" * pick.randint(1, 3), pick.randint(0, 9)
        name = (context + label).replace("_", "")
        _moxPY.moxAppendEvent(acquisition, label, time, context, subject, text, icon)
        added = (single(time), context, label, subject, text, icon, 0)
        event = expected.setdefault(name, new_event())
        for values, value in zip(event.values(), added, strict=True):
            values.append(value)
        if number % 100 == 50:
            _moxPY.moxSetEventId(acquisition, name, number)
            event["Icons"] = [number] * len(event["Times"])
        if number % 250 == 70:
            _moxPY.moxSetEventDescription(acquisition, name, f"all {number}")
            event["Descriptions"] = [f"all {number}"] * len(event["Times"])
        if number == 600:
            _moxPY.moxClearEvents(acquisition)
            expected.clear()
    assert {name: occurrences(acquisition, name) for name in expected} == expected
    values, _ = _moxPY.moxGetEvents(acquisition)
    assert {name: times.tolist() for name, times in values.items()} == {
        name: event["Times"] for name, event in expected.items()
    }


def test_events_of_a_file_are_kept_when_many_are_appended(tmp_path: Path) -> None:
    acquisition = read_trial(tmp_path)
    name = "LeftFoot Strike"
    before = occurrences(acquisition, name)
    for number in range(500):
        _moxPY.moxAppendEvent(acquisition, "Foot Strike", number, "Left", "Bob", "new", number)
    after = occurrences(acquisition, name)
    assert before["Times"] == [0.5, 1.5]
    assert after == {
        "Times": [*before["Times"], *map(float, range(500))],
        "Contexts": before["Contexts"] + ["Left"] * 500,
        "Labels": before["Labels"] + ["Foot Strike"] * 500,
        "Subjects": before["Subjects"] + ["Bob"] * 500,
        "Descriptions": before["Descriptions"] + ["new"] * 500,
        "Icons": [*before["Icons"], *range(500)],
        "Flags": before["Flags"] + [0] * 500,
    }


def test_what_a_call_returned_never_changes_again() -> None:
    acquisition = _moxPY.moxNewAcquisition(0, 10)
    returned = [_moxPY.moxAppendEvent(acquisition, "A", number, "") for number in range(200)]
    for number, (values, _) in enumerate(returned):
        assert np.atleast_1d(values["A"]).tolist() == list(range(number + 1))
        values["A"] *= 0.0  # the caller's own
    assert _moxPY.moxGetEvents(acquisition)[0]["A"].tolist() == list(range(200))


@pytest.mark.parametrize("attribute", ["OccurrenceIcons", "OccurrenceFlags"])
def test_what_is_stored_of_an_event_is_moved_rarely(attribute: str) -> None:
    acquisition = _moxPY.moxNewAcquisition(0, 10)
    places = []
    for number in range(2000):
        _moxPY.moxAppendEvent(acquisition, "A", number, "Left", "Ann", "text", 1)
        places.append(probe.element_address(acquisition, f"{EVENTS}/LeftA", attribute))
    moves = sum(one != other for one, other in itertools.pairwise(places))
    assert moves <= 20
