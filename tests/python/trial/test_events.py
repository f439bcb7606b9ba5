"""The events of a trial: a sequence in order of time, changed one by one."""

from __future__ import annotations

import dataclasses
from collections.abc import Callable
from pathlib import Path
from typing import Any

import _mox_probe as probe
import _moxPY
import numpy as np
import pytest
from moxPY.trial import Event, Trial
from support.c3d_bytes import Event as FileEvent
from support.c3d_bytes import HeaderEvent
from support.independent_readers import read_with_ezc3d
from support.read_c3d import read_c3d, track
from support.store_tree import Type, node, snapshot
from writing.written import source_in, written_again

FindSample = Callable[[str], Path]

EVENTS = "Format/Events"


def single(time: float) -> float:
    """As stored, in the shortest form."""
    return float(str(np.float32(time)))


def event(time: float, label: str = "Foot Strike", context: str = "Left", **rest: Any) -> Event:
    return Event(time=time, label=label, context=context, **rest)


def sets(trial: Trial) -> dict[str, list[float]]:
    """What the store has: times by set."""
    content = node(trial, EVENTS)["sets"]
    return {name: stored["values"].tolist() for name, stored in content.items()}


def flags(trial: Trial) -> dict[float, int]:
    """What no event shows: flags by time."""
    content = node(trial, EVENTS)["sets"].values()
    return {
        float(time): flag
        for stored in content
        for time, flag in zip(
            stored["values"], stored["attributes"]["OccurrenceFlags"][2], strict=True
        )
    }


@pytest.fixture
def trial() -> Trial:
    trial = Trial.new(frames=400)
    trial.events.add("Foot Strike", 1.5, "Left", subject="Ann", description="heel", id=1)
    trial.events.add("Foot Off", 1.0, "Right", subject="Ann", id=2)
    trial.events.add("Foot Strike", 0.5, "Left")
    return trial


FILE_EVENTS = [
    FileEvent("Left", "Foot_ Strike", 1.5, "Ann", "heel", 1, 4),
    FileEvent("Right", "Foot Off", 1.0, "Bob", "", 2, 5),
    FileEvent("Left", "Foot Strike", 0.5, "Eve", "toe", 7, 6),
    FileEvent("", "a/b", 2.0),
    FileEvent("Left", "Foot Strike", 2.5, "", "", 0, 7),
]  # fmt: skip


@pytest.fixture
def read_trial(tmp_path: Path) -> Trial:
    return Trial.of(read_c3d(tmp_path, {"A": track(400)}, events=FILE_EVENTS))


def as_event(stored: FileEvent) -> Event:
    return event(
        stored.time, str(stored.label), str(stored.context), subject=str(stored.subject),
        description=str(stored.description), id=stored.icon,
    )  # fmt: skip


def test_events_stand_in_order_of_time_whatever_their_names(trial: Trial) -> None:
    assert trial.events == [
        event(0.5),
        event(1.0, "Foot Off", "Right", subject="Ann", id=2),
        event(1.5, subject="Ann", description="heel", id=1),
    ]
    assert [item.time for item in trial.events] == [0.5, 1.0, 1.5]


def test_events_of_one_instant_keep_their_order() -> None:
    trial = Trial.new()
    labels = ["c", "a", "b"]
    for label in labels:
        trial.events.add(label, 1.0)
    assert trial.events.labels == labels


def test_a_sequence(trial: Trial) -> None:
    first, second, third = trial.events
    assert len(trial.events) == 3
    assert (trial.events[0], trial.events[-1]) == (first, third)
    assert trial.events[1:] == [second, third]
    assert trial.events[::-1] == list(reversed(trial.events)) == [third, second, first]
    assert second in trial.events
    assert event(9.0) not in trial.events
    assert "Foot Strike" not in trial.events
    assert trial.events.index(third) == 2
    assert trial.events.count(third) == 1
    with pytest.raises(ValueError, match="not in list"):
        trial.events.index(event(9.0))
    with pytest.raises(IndexError):
        trial.events[3]
    assert trial.events != [first]
    assert trial.events == trial.events
    assert trial.events != 3


def test_an_event_does_not_change_and_is_compared_in_single_precision() -> None:
    given = event(1.32)
    assert given.time == 1.32
    assert given == event(single(1.32))
    assert hash(given) == hash(event(single(1.32)))
    assert given != event(1.3201)
    assert given != event(1e300)
    assert given != event(1.32, "Foot Off")
    assert given != dataclasses.astuple(given)
    assert len({given, event(single(1.32)), event(1.33)}) == 2
    with pytest.raises(dataclasses.FrozenInstanceError):
        given.time = 1.0  # type: ignore[misc]
    with pytest.raises(TypeError):
        Event(1.0, "Foot Strike")  # type: ignore[misc]
    assert Event(time=1.0, label="Turn") == event(1.0, "Turn", "General", id=0)


def test_add_returns_what_is_stored(trial: Trial) -> None:
    added = trial.events.add("Turn", 1.32, "General", subject="Bob", description="left", id=7)
    assert added.time == single(1.32)
    assert added == event(1.32, "Turn", "General", subject="Bob", description="left", id=7)
    assert added == trial.events[2]
    assert added in trial.events


def test_what_is_not_given_is_empty_although_others_of_the_event_have_it(trial: Trial) -> None:
    assert trial.events.add("Foot Strike", 2.0, "Left") == event(2.0)
    assert trial.events[-1] == event(2.0)


def test_a_new_event_lies_in_the_store_as_an_appended_one() -> None:
    added, appended = Trial.new(frames=10), Trial.new(frames=10)
    for time in (0.5, 0.25):
        added.events.add("Foot_Strike", time, "Left")
        _moxPY.moxAppendEvent(appended, "Foot_Strike", time, "Left")
    assert snapshot(added) == snapshot(appended)


def test_the_functions_see_everything(trial: Trial) -> None:
    times, names, descriptions, ids = _moxPY.moxGetEventsValues(trial)
    assert times.tolist() == [1.5, 0.5, 1.0]
    assert names == ["LeftFoot Strike", "LeftFoot Strike", "RightFoot Off"]
    assert descriptions == ["heel", "heel", ""]  # of the set, which follows the first one
    assert ids.tolist() == [1, 1, 2]
    assert _moxPY.moxGetEvents(trial)[1]["subject"]["RightFoot Off"] == "Ann"


def test_events_of_the_functions_are_seen_with_all_that_is_told_of_them(trial: Trial) -> None:
    _moxPY.moxAppendEvent(trial, "Foot Strike", 3.25, "Left", "Bob", "toe", 5)
    _moxPY.moxAppendEvent(trial, "Strike", 3.5, "LeftFoot ")
    assert trial.events[-2:] == [
        event(3.25, subject="Bob", description="toe", id=5),
        event(3.5, "Strike", "LeftFoot ", subject="Ann", description="heel", id=1),
    ]
    _moxPY.moxSetEventDescription(trial, "LeftFoot Strike", "all")
    assert {item.description for item in trial.events.select("Foot Strike")} == {"all"}
    _moxPY.moxClearEvents(trial)
    assert trial.events == []


def test_remove_takes_one_of_equal_events(trial: Trial) -> None:
    twice = trial.events.add("Foot Off", 1.0, "Right", subject="Ann", id=2)
    assert trial.events.count(twice) == 2
    trial.events.remove(twice)
    assert trial.events.count(twice) == 1
    trial.events.remove(event(1.0, "Foot Off", "Right", subject="Ann", id=2))
    assert twice not in trial.events


def test_a_set_goes_with_its_last_event(trial: Trial) -> None:
    trial.events.remove(trial.events[1])
    assert sets(trial) == {"LeftFoot Strike": [1.5, 0.5]}
    assert _moxPY.moxGetEventNumber(trial) == 2.0


def test_what_is_said_of_the_whole_event_follows_its_first_one(trial: Trial) -> None:
    trial.events.remove(trial.events[2])
    assert _moxPY.moxGetEventsValues(trial)[2:][0] == ["", ""]
    assert _moxPY.moxGetEventsValues(trial)[3].tolist() == [0, 2]
    assert _moxPY.moxGetEvents(trial)[1]["subject"] == {
        "LeftFoot Strike": "", "RightFoot Off": "Ann",
    }  # fmt: skip


@pytest.mark.parametrize(
    "missing",
    [
        event(0.6), event(0.5, "Foot Off"), event(0.5, context="Right"), event(0.5, subject="Ann"),
        event(0.5, description="heel"), event(0.5, id=1), event(float("nan")),
    ],
)  # fmt: skip
def test_an_event_that_is_not_there_is_told(trial: Trial, missing: Event) -> None:
    before = snapshot(trial)
    with pytest.raises(ValueError, match="event"):
        trial.events.remove(missing)
    with pytest.raises(ValueError, match="event"):
        trial.events.replace(missing, label="Turn")
    assert snapshot(trial) == before


def test_the_message_names_the_event(trial: Trial) -> None:
    with pytest.raises(ValueError, match=r"^there is no event 'Foot Off' of 'Left' at 1\.5 s$"):
        trial.events.remove(event(1.5, "Foot Off"))


def test_only_an_event_is_one(trial: Trial) -> None:
    with pytest.raises(TypeError, match="expected an Event, got str"):
        trial.events.remove("Foot Strike")  # type: ignore[arg-type]


@pytest.mark.parametrize(
    ("changes", "expected"),
    [
        ({"time": 1.3}, event(1.3, subject="Ann", description="heel", id=1)),
        ({"label": "Foot Off"}, event(1.5, "Foot Off", subject="Ann", description="heel", id=1)),
        ({"context": "Right"}, event(1.5, "Foot Strike", "Right", subject="Ann",
                                     description="heel", id=1)),
        ({"subject": ""}, event(1.5, description="heel", id=1)),
        ({"description": "toe", "id": 9}, event(1.5, subject="Ann", description="toe", id=9)),
        ({}, event(1.5, subject="Ann", description="heel", id=1)),
    ],
)  # fmt: skip
def test_replace_gives_the_new_event(
    trial: Trial, changes: dict[str, Any], expected: Event
) -> None:
    old = trial.events[2]
    others = trial.events[:2]
    new = trial.events.replace(old, **changes)
    assert new == expected
    assert sorted(trial.events, key=lambda item: item.time) == sorted(
        [*others, expected], key=lambda item: item.time
    )


def test_an_event_that_joins_others_leaves_its_set(trial: Trial) -> None:
    trial.events.replace(trial.events[2], label="Foot Off", context="Right")
    assert sets(trial) == {"LeftFoot Strike": [0.5], "RightFoot Off": [1.0, 1.5]}
    trial.events.replace(trial.events[0], label="Turn")
    assert sets(trial) == {"RightFoot Off": [1.0, 1.5], "LeftTurn": [0.5]}


REFUSED: list[tuple[dict[str, Any], type[Exception]]] = [
    ({"label": ""}, ValueError), ({"label": 3}, TypeError), ({"label": "a\0b"}, ValueError),
    ({"time": float("inf")}, ValueError), ({"time": 1e300}, ValueError),
    ({"time": "now"}, TypeError), ({"context": 3}, TypeError), ({"subject": b"Ann"}, TypeError),
    ({"description": "a\0b"}, ValueError), ({"id": 2**31}, OverflowError),
    ({"id": 2**70}, OverflowError), ({"id": 1.5}, TypeError), ({"label": "\ud800"}, ValueError),
]  # fmt: skip


@pytest.mark.parametrize(("changes", "kind"), REFUSED)
def test_a_refused_event_changes_nothing(
    trial: Trial, changes: dict[str, Any], kind: type[Exception]
) -> None:
    before = snapshot(trial)
    with pytest.raises(kind):
        trial.events.add(**{"label": "Turn", "time": 1.0, **changes})
    with pytest.raises(kind):
        trial.events.replace(trial.events[0], **changes)
    with pytest.raises(TypeError):
        trial.events.replace(trial.events[0], colour="red")  # type: ignore[call-arg]
    assert snapshot(trial) == before


def test_numbers_of_numpy_are_numbers(trial: Trial) -> None:
    added = trial.events.add("Turn", np.float32(1.25), id=np.int16(3))  # type: ignore[arg-type]
    assert added == event(1.25, "Turn", "General", id=3)
    assert type(trial.events[2].time) is float


def test_selections(trial: Trial) -> None:
    events = trial.events
    assert events.labels == ["Foot Strike", "Foot Off"]
    assert events.contexts == ["Left", "Right"]
    assert events.select() == list(events)
    assert events.select("Foot Strike") == [events[0], events[2]]
    assert events.select(context="Right") == [events[1]]
    assert events.select("Foot Strike", "Right") == []
    assert events.select(subject="Ann", id=1) == [events[2]]
    assert events.select(description="") == events[:2]


def test_times_are_an_array_that_is_not_writable(trial: Trial) -> None:
    times = trial.events.times("Foot Strike", "Left")
    assert (times.dtype, times.tolist()) == (np.float64, [0.5, 1.5])
    assert trial.events.times("Foot Strike").tolist() == [0.5, 1.5]
    assert trial.events.times().tolist() == [0.5, 1.0, 1.5]
    assert trial.events.times("Nothing").shape == (0,)
    with pytest.raises(ValueError, match="read-only"):
        times[0] = 1.0


def test_clear(trial: Trial) -> None:
    trial.events.clear()
    assert len(trial.events) == 0
    assert trial.events == []
    assert sets(trial) == {}


def test_repr_is_one_line(trial: Trial) -> None:
    assert repr(trial.events) == (
        "<events (3): 'Left Foot Strike' 0.500 s, 'Right Foot Off' 1.000 s, "
        "'Left Foot Strike' 1.500 s>"
    )
    trial.events.add("Two\nlines", 3.0, "")
    trial.events.add("Turn", 4.0)
    assert "…" in repr(trial.events)
    assert "\n" not in repr(trial.events)
    assert repr(Trial.new().events) == "<events (0): none>"


def test_events_of_a_file_come_with_their_own_labels(read_trial: Trial) -> None:
    expected = sorted(map(as_event, FILE_EVENTS), key=lambda item: item.time)
    assert read_trial.events == expected


def test_events_of_the_header_have_no_context(tmp_path: Path) -> None:
    acquisition = read_c3d(tmp_path, {"A": track(9)}, header_events=[HeaderEvent("RHS ", 0.5)])
    assert Trial.of(acquisition).events == [event(0.5, "RHS", "")]


@pytest.mark.parametrize("index", range(len(FILE_EVENTS)))
def test_the_others_keep_everything_when_one_goes(
    read_trial: Trial, tmp_path: Path, index: int
) -> None:
    gone = as_event(FILE_EVENTS[index])
    read_trial.events.remove(gone)
    expected = [other for other in map(as_event, FILE_EVENTS) if other != gone]
    expected.sort(key=lambda item: item.time)
    assert read_trial.events == expected
    again = Trial.of(written_again(read_trial.this, tmp_path, source_in(tmp_path)))
    assert again.events == expected
    kept = {item.time: item.flag for item in FILE_EVENTS if item.time != gone.time}
    assert flags(read_trial) == flags(again) == kept


def test_a_replaced_event_keeps_its_flags_in_the_file(read_trial: Trial, tmp_path: Path) -> None:
    old = as_event(FILE_EVENTS[0])
    new = read_trial.events.replace(old, time=1.75)
    moved = read_trial.events.replace(new, context="Right")
    again = Trial.of(written_again(read_trial.this, tmp_path, source_in(tmp_path)))
    assert moved in again.events
    assert flags(read_trial) == flags(again) == {0.5: 6, 1.0: 5, 1.75: 4, 2.0: 0, 2.5: 7}


def test_neighbours_keep_their_empty_texts(tmp_path: Path) -> None:
    trial = Trial.new(frames=400)
    trial.markers["A"] = track(400)
    trial.events.add("Foot Strike", 0.5, "Left")
    trial.events.add("Foot Strike", 1.0, "Left", subject="Ann", description="heel", id=3)
    expected = [event(0.5), event(1.0, subject="Ann", description="heel", id=3)]
    assert trial.events == expected
    assert Trial.of(written_again(trial.this, tmp_path)).events == expected


def test_contexts_that_read_alike_are_told_apart(tmp_path: Path) -> None:
    trial = Trial.new(frames=400)
    trial.markers["A"] = track(400)
    given = [("Foot Strike", "Left"), ("Strike", "LeftFoot "), ("Foot_ Strike", "Left"),
             ("a/b", "Left"), ("ab", "Left")]  # fmt: skip
    for number, (label, context) in enumerate(given):
        trial.events.add(label, number / 4, context)
    assert [(item.label, item.context) for item in trial.events] == given
    assert sets(trial) == {
        "LeftFoot Strike": [0.0, 0.5], "LeftFoot Strike 2": [0.25], "Leftab": [0.75, 1.0],
    }  # fmt: skip
    again = Trial.of(written_again(trial.this, tmp_path))
    # A file drops the blanks that a context ends in: they become the label's.
    assert [item.label for item in again.events] == [
        "Foot Strike", " Strike", "Foot_ Strike", "a/b", "ab",
    ]  # fmt: skip
    for item in again.events:
        again.events.remove(item)
    assert sets(again) == {}


def test_an_event_without_name_can_be_moved(tmp_path: Path) -> None:
    trial = Trial.of(read_c3d(tmp_path, {"A": track(9)}, events=[FileEvent("", "", 0.5)]))
    assert trial.events.replace(trial.events[0], time=0.75) == event(0.75, "", "")
    assert sets(trial) == {"Event": [0.75]}


def test_texts_that_are_not_utf_8_come_back_as_they_are(tmp_path: Path) -> None:
    events = [FileEvent("Left", b"F\xfc\xdfe", 0.5, b"J\xf6rg"), FileEvent("Left", "A", 1.0)]
    trial = Trial.of(read_c3d(tmp_path, {"A": track(9)}, events=events))
    label = trial.events[0].label
    moved = trial.events.replace(trial.events[0], time=0.75)
    assert (moved.label, moved.time) == (label, 0.75)
    assert moved.subject == trial.events[0].subject
    trial.events.remove(moved)
    assert trial.events.labels == ["A"]


def test_an_event_without_attributes_of_occurrences(trial: Trial) -> None:
    for name in ("Contexts", "Labels", "Subjects", "Descriptions", "Icons", "Flags"):
        probe.delete_attribute(trial, f"{EVENTS}/LeftFoot Strike", f"Occurrence{name}")
    shown = {"subject": "Ann", "description": "heel", "id": 1}
    assert trial.events.select("Foot Strike") == [event(0.5, **shown), event(1.5, **shown)]
    trial.events.remove(event(1.5, **shown))
    assert trial.events.select("Foot Strike") == [event(0.5, **shown)]


ADDED = [
    (0.5, "Foot Strike", "Left", {}),
    (0.25, "Foot Strike", "Left", {"subject": "Bob", "description": "toe", "id": 1}),
    (2.0, "Foot Off", "Left", {}),
    (2.5, "FootOff", "Left", {"id": 2}),
    (0.5, "Foot Strike", "Left", {}),
    (1.0, "t Foot Strike", "Lef", {"subject": "ü"}),
    (1.5, "t Foot Strike", "Lef", {}),
]


def describe(trial: Trial, name: str, description: str) -> None:
    """What a set says of all its events, whatever the single ones say."""
    probe.delete_attribute(trial, f"{EVENTS}/{name}", "Description")
    probe.create_text_attribute(trial, f"{EVENTS}/{name}", "Description", description)


@pytest.mark.parametrize("description", ["", "of the set"])
def test_what_is_added_lies_as_if_all_were_written_anew(description: str) -> None:
    trials = Trial.new(frames=400), Trial.new(frames=400)
    for time, label, context, rest in ADDED:
        for trial in trials:
            trial.events.add(label, time, context, **rest)
    for trial in trials if description else ():
        for name in sets(trial):
            describe(trial, name, description)
    for later in (10.0, 20.0):
        # Without flags, which are 0 then, a set is read and written as a whole.
        for name in sets(trials[1]):
            probe.delete_attribute(trials[1], f"{EVENTS}/{name}", "OccurrenceFlags")
        for time, label, context, rest in ADDED:
            for trial in trials:
                trial.events.add(label, time + later, context, **rest)
    assert snapshot(trials[0]) == snapshot(trials[1])
    assert list(trials[0].events) == list(trials[1].events)


def test_a_set_that_nothing_is_said_of(trial: Trial) -> None:
    probe.create_set(trial, f"{EVENTS}/Heel", Type.FLOAT32, [2])
    probe.fill_set(trial, f"{EVENTS}/Heel", "float", [3.0, 2.5])
    assert trial.events[-2:] == [event(2.5, "Heel", ""), event(3.0, "Heel", "")]
    trial.events.add("Heel", 4.0, "", subject="Ann")
    assert trial.events[-3:] == [
        event(2.5, "Heel", ""), event(3.0, "Heel", ""), event(4.0, "Heel", "", subject="Ann"),
    ]  # fmt: skip


def test_a_set_of_texts_has_no_events_and_is_left_alone(trial: Trial) -> None:
    probe.create_set(trial, f"{EVENTS}/LeftTurn", Type.STRING, [1])
    probe.fill_set(trial, f"{EVENTS}/LeftTurn", "string", ["x"])
    added = trial.events.add("Turn", 4.0, "Left")
    assert trial.events[-1] == added
    assert node(trial, f"{EVENTS}/LeftTurn")["values"] == ["x"]
    trial.events.remove(added)
    assert added not in trial.events


def test_a_trial_without_the_group_has_no_events(trial: Trial) -> None:
    probe.delete_group(trial, EVENTS)
    assert trial.events == []


def test_a_closed_trial_says_so(trial: Trial) -> None:
    events = trial.events
    trial.close()
    with pytest.raises(ValueError, match="the trial was closed"):
        len(events)


WITH_EVENTS = [
    "2198928.c3d", "Eb015pi.c3d", "Eb015pr.c3d", "Eb015vi.c3d", "Eb015vr.c3d", "gait-pig.c3d",
    "short.c3d",
]  # fmt: skip


def opened(path: Path) -> Trial:
    return Trial.of(_moxPY.moxReadAcquisition(str(path)))


@pytest.mark.parametrize("name", WITH_EVENTS)
def test_events_of_recordings_as_others_read_them(sample: FindSample, name: str) -> None:
    recording = read_with_ezc3d(sample(name))
    contexts, labels = (recording.texts("EVENT", part) for part in ("CONTEXTS", "LABELS"))
    found = {(event.context, event.label, event.time) for event in opened(sample(name)).events}
    expected = {
        (context, label, single(time))
        for context, label, time in zip(contexts, labels, recording.event_times, strict=False)
    }
    assert expected <= found
    # What else there is comes from the header, which knows no contexts.
    assert {context for context, _, _ in found - expected} <= {""}


@pytest.mark.parametrize("name", [*WITH_EVENTS, "Eb015si.c3d", "Eb015sr.c3d"])
def test_recordings_keep_the_events_that_nobody_touched(
    sample: FindSample, tmp_path: Path, name: str
) -> None:
    trial = opened(sample(name))
    expected = list(trial.events)
    trial.events.remove(expected.pop(1))
    expected[1] = trial.events.replace(expected[1], time=expected[1].time + 0.5)
    expected.append(trial.events.add("Turn", 0.25, subject="Ann", description="fast", id=9))
    assert set(trial.events) == set(expected)
    again = Trial.of(written_again(trial.this, tmp_path, sample(name).read_bytes()))
    assert set(again.events) == set(expected)
    assert len(again.events) == len(expected)
