"""Events of the EVENT group and of the header, as sets below Format/Events."""

from __future__ import annotations

from pathlib import Path
from typing import Any

import pytest
from support.attributes import attributes_of
from support.c3d_bytes import Event, HeaderEvent, integer, real
from support.read_c3d import read_c3d, track
from support.store_tree import Type, node


def read_events(folder: Path, *events: Event, **options: Any) -> dict[str, Any]:
    acquisition = read_c3d(folder, {"A": track(300)}, events=events or None, **options)
    return node(acquisition, "Format/Events")["sets"]


def times(sets: dict[str, Any]) -> dict[str, list[float]]:
    return {name: content["values"].tolist() for name, content in sets.items()}


def test_a_set_for_each_context_and_label(tmp_path: Path) -> None:
    sets = read_events(
        tmp_path, Event("Left", "Foot Strike", 0.5), Event("Right", "Foot Strike", 1.0),
        Event("Left", "Foot Off", 1.5), Event("Left", "Foot Strike", 2.0),
    )  # fmt: skip
    assert times(sets) == {
        "LeftFoot Strike": [0.5, 2.0], "RightFoot Strike": [1.0], "LeftFoot Off": [1.5],
    }  # fmt: skip


def test_times_are_singles_of_one_dimension(tmp_path: Path) -> None:
    content = read_events(tmp_path, Event("Left", "FS", 0.5), Event("Left", "FS", 1.0))["LeftFS"]
    assert (content["type"], content["shape"]) == (Type.FLOAT32, [2])


def test_the_attributes_of_an_event(tmp_path: Path) -> None:
    event = Event("Left", "Foot Strike", 0.5, "Bob", "heel first", icon=1)
    attributes = attributes_of(read_events(tmp_path, event)["LeftFoot Strike"])
    assert {name: attributes[name] for name in list(attributes)[:5]} == {
        "Context": (Type.STRING, [], "Left"),
        "Icons": (Type.INT32, [1], [1]),
        "Subject": (Type.STRING, [], "Bob"),
        "Description": (Type.STRING, [], "heel first"),
        "Type": (Type.STRING, [], "Foot Strike"),
    }


def test_the_first_occurrence_gives_the_attributes(tmp_path: Path) -> None:
    content = read_events(
        tmp_path,
        Event("Left", "FS", 2.0, "Bob", "one", 1),
        Event("Left", "FS", 1.0, "Ann", "two", 2),
    )["LeftFS"]
    attributes = attributes_of(content)
    assert content["values"].tolist() == [2.0, 1.0]
    assert attributes["Subject"][2] == "Bob"
    assert attributes["Description"][2] == "one"
    assert attributes["Icons"] == (Type.INT32, [1], [1])


@pytest.mark.parametrize(
    ("icon", "label", "type_"),
    [
        (0, "Foot Strike", "General"),
        (1, "anything", "Foot Strike"),
        (2, "anything", "Foot Off"),
        (3, "Foot_Strike", "Foot Strike"),
        (3, "FS", "Foot Strike"),
        (3, "FootStrike", "Foot Strike"),
        (3, "Foot Strike", "Foot Strike"),
        (3, "Foot_Off", "Foot Off"),
        (3, "FO", "Foot Off"),
        (3, "FootOff", "Foot Off"),
        (3, "Foot Off", "Foot Off"),
        (3, "foot off", "foot off"),
        (-1, "Heel", "Heel"),
    ],
)
def test_the_type_follows_from_the_id_or_from_the_label(
    tmp_path: Path, icon: int, label: str, type_: str
) -> None:
    [content] = read_events(tmp_path, Event("Left", label, 0.5, icon=icon)).values()
    assert attributes_of(content)["Type"] == (Type.STRING, [], type_)


def test_events_without_ids_take_their_type_from_the_label(tmp_path: Path) -> None:
    sets = read_events(
        tmp_path, Event("Left", "Foot Strike", 0.5), parameters={"EVENT:ICON_IDS": None}
    )  # fmt: skip
    attributes = attributes_of(sets["LeftFoot Strike"])
    assert attributes["Type"] == (Type.STRING, [], "Foot Strike")
    assert attributes["Icons"] == (Type.INT32, [1], [0])


@pytest.mark.parametrize(
    ("context", "label", "name"),
    [
        ("Left", "Foot_Strike", "LeftFootStrike"),
        ("My_Side", "A_B_C", "MySideABC"),
        ("Left", "a/b\\c", "Leftabc"),
        ("", "Jump", "Jump"),
        ("General", "", "General"),
    ],
)
def test_names_drop_what_separates(tmp_path: Path, context: str, label: str, name: str) -> None:
    assert list(read_events(tmp_path, Event(context, label, 0.5))) == [name]


def test_an_event_without_context_and_label_is_not_lost(tmp_path: Path) -> None:
    [content] = read_events(tmp_path, Event("", "", 0.5)).values()
    assert content["values"].tolist() == [0.5]


@pytest.mark.parametrize("seconds", [0.0, 59.5, 60.0, 61.25, 600.5, 3599.75])
def test_minutes_and_seconds(tmp_path: Path, seconds: float) -> None:
    assert times(read_events(tmp_path, Event("Left", "FS", seconds))) == {"LeftFS": [seconds]}


def test_two_events_are_pairs_too(tmp_path: Path) -> None:
    # Two by two values, which could be read in both directions.
    sets = read_events(tmp_path, Event("Left", "FS", 61.5), Event("Left", "FS", 122.5))
    assert times(sets) == {"LeftFS": [61.5, 122.5]}


def test_times_in_a_single_row_are_seconds(tmp_path: Path) -> None:
    events = [Event("Left", "FS", 0.0)] * 3
    row = {"EVENT:TIMES": real("TIMES", [0.5, 1.0, 1.5])}
    assert times(read_events(tmp_path, *events, parameters=row)) == {"LeftFS": [0.5, 1.0, 1.5]}


def test_times_are_kept_whatever_the_first_frame(tmp_path: Path) -> None:
    sets = read_events(tmp_path, Event("Left", "FS", 2.5), first_frame=201)
    assert times(sets) == {"LeftFS": [2.5]}


def test_times_need_not_be_in_order(tmp_path: Path) -> None:
    sets = read_events(tmp_path, Event("Left", "FS", 2.5), Event("Left", "FS", 0.5))
    assert times(sets) == {"LeftFS": [2.5, 0.5]}


def test_more_than_255_events(tmp_path: Path) -> None:
    events = [Event(("Left", "Right")[n % 2], "FS", n / 4) for n in range(600)]
    sets = times(read_events(tmp_path, *events))
    assert sets["LeftFS"] == [n / 4 for n in range(0, 600, 2)]
    assert sets["RightFS"] == [n / 4 for n in range(1, 600, 2)]


@pytest.mark.parametrize("used", [0, 1, 2])
def test_as_many_events_as_are_used(tmp_path: Path, used: int) -> None:
    events = [Event("Left", "FS", n / 2) for n in range(3)]
    sets = times(read_events(tmp_path, *events, parameters={"EVENT:USED": used}))
    assert sets == ({"LeftFS": [0.0, 0.5][:used]} if used else {})


@pytest.mark.parametrize("used", [4, 65535, None])
def test_no_more_events_than_there_are_times(tmp_path: Path, used: int | None) -> None:
    events = [Event("Left", "FS", n / 2) for n in range(3)]
    sets = times(read_events(tmp_path, *events, parameters={"EVENT:USED": used}))
    assert sets == {"LeftFS": [0.0, 0.5, 1.0]}


def test_lists_shorter_than_the_times_leave_texts_empty(tmp_path: Path) -> None:
    events = [Event("Left", "FS", 0.5), Event("Left", "FS", 1.0)]
    short = {"EVENT:CONTEXTS": ["Left"], "EVENT:SUBJECTS": None, "EVENT:DESCRIPTIONS": None}
    sets = read_events(tmp_path, *events, parameters=short)
    assert times(sets) == {"LeftFS": [0.5], "FS": [1.0]}
    assert attributes_of(sets["FS"])["Subject"] == (Type.STRING, [], "")


def test_a_file_without_events_has_the_group(tmp_path: Path) -> None:
    acquisition = read_c3d(tmp_path, {"A": track(3)})
    events = node(acquisition, "Format/Events")
    assert events["sets"] == {}
    assert attributes_of(events) == {"DeviceType": (Type.STRING, [], "EventToExport")}


@pytest.mark.parametrize("processor", ["intel", "dec", "mips"])
def test_events_of_the_header(tmp_path: Path, processor: str) -> None:
    sets = read_events(
        tmp_path, header_events=[HeaderEvent("RHS", 0.5), HeaderEvent("LTO", 1.5, flag=0)],
        processor=processor,
    )  # fmt: skip
    assert times(sets) == {"RHS": [0.5], "LTO": [1.5]}
    assert attributes_of(sets["RHS"])["Context"] == (Type.STRING, [], "")
    assert attributes_of(sets["RHS"])["Type"] == (Type.STRING, [], "RHS")


def test_all_18_events_of_the_header(tmp_path: Path) -> None:
    events = [HeaderEvent(f"E{n:02}", n / 8) for n in range(18)]
    sets = times(read_events(tmp_path, header_events=events))
    assert sets == {f"E{n:02}": [n / 8] for n in range(18)}


def test_an_event_that_both_have_is_there_once(tmp_path: Path) -> None:
    sets = read_events(
        tmp_path, Event("", "RHS", 0.5), Event("Right", "FS", 1.0),
        header_events=[HeaderEvent("RHS", 0.5), HeaderEvent("RHS", 0.75)],
    )  # fmt: skip
    assert times(sets) == {"RHS": [0.5, 0.75], "RightFS": [1.0]}


def test_what_a_set_cannot_hold_is_kept_for_each_occurrence(tmp_path: Path) -> None:
    content = read_events(
        tmp_path, Event("Left", "Foot_Strike", 0.5, "Bob", "one", 1, 3),
        Event("Left", "Foot Strike", 1.0), Event("Left", "Foot_Strike", 2.0, "Ann", "two", 2, 4),
    )["LeftFootStrike"]  # fmt: skip
    attributes = attributes_of(content)
    assert attributes["OccurrenceContexts"] == (Type.STRING, [2], ["Left", "Left"])
    assert attributes["OccurrenceLabels"] == (Type.STRING, [2], ["Foot_Strike", "Foot_Strike"])
    assert attributes["OccurrenceSubjects"] == (Type.STRING, [2], ["Bob", "Ann"])
    assert attributes["OccurrenceDescriptions"] == (Type.STRING, [2], ["one", "two"])
    assert attributes["OccurrenceIcons"] == (Type.INT32, [2], [1, 2])
    assert attributes["OccurrenceFlags"] == (Type.INT32, [2], [3, 4])


def test_times_that_are_no_numbers_make_no_events(tmp_path: Path) -> None:
    events = [Event("Left", "FS", 0.5), Event("Left", "FS", 1.0)]
    lost = {"EVENT:TIMES": real("TIMES", [[0.0, float("nan")], [0.0, 1.0]])}
    assert times(read_events(tmp_path, *events, parameters=lost)) == {"LeftFS": [1.0]}


def test_integer_times_are_converted(tmp_path: Path) -> None:
    whole = {"EVENT:TIMES": integer("TIMES", [[1, 5]])}
    sets = read_events(tmp_path, Event("Left", "FS", 0.5), parameters=whole)
    assert times(sets) == {"LeftFS": [65.0]}
