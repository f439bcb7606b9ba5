"""What is told of each occurrence of an event is what its row in the written file says."""

from __future__ import annotations

from collections.abc import Callable
from pathlib import Path
from typing import Any

import _moxPY
import numpy as np
import pytest
from support.attributes import attributes_of
from support.c3d_bytes import Event
from support.read_c3d import read_c3d, track
from support.store_tree import node
from support.stored_file import StoredFile
from support.ways import Way
from writing.written import source_in, written_again

NAME = "LeftFoot Strike"
SHOWN = ("Ann", "heel", 1)  # by the event: subject, description, id


def event_of_a_file(folder: Path) -> Any:
    events = [
        Event("Left", "Foot Strike", 0.5, *SHOWN),
        Event("Right", "Foot Off", 0.625, "Ann", "", 2),
        Event("Left", "Foot Strike", 0.75, "Eve", "", 3),
    ]
    return read_c3d(folder, {"A": track(100)}, events=events)


def event_of_a_script(_: Path) -> Any:
    acquisition = _moxPY.moxNewAcquisition(1, 100)
    _moxPY.moxSetFrequency(acquisition, 100.0)
    _moxPY.moxAppendEvent(acquisition, "Foot Strike", 0.5, "Left", *SHOWN)
    _moxPY.moxAppendEvent(acquisition, "Foot Off", 0.625, "Right", "Ann", "", 2)
    _moxPY.moxAppendEvent(acquisition, "Foot Strike", 0.75, "Left", "Eve", "", 3)
    return acquisition


both_sources = pytest.mark.parametrize(
    "make", [event_of_a_file, event_of_a_script], ids=lambda make: make.__name__
)


def rows(folder: Path) -> list[tuple[Any, ...]]:
    """Time, subject, description and id of the left foot strikes of the written file."""
    file = StoredFile((folder / "written.c3d").read_bytes())
    times = file.values("EVENT:TIMES").reshape(-1, 2) @ [60.0, 1.0]
    signed = np.asarray(file.values("EVENT:ICON_IDS"), np.uint16).astype(np.int16)
    columns = [
        times.tolist(), file.texts("EVENT:SUBJECTS"), file.texts("EVENT:DESCRIPTIONS"),
        signed.tolist(),
    ]  # fmt: skip
    labels = file.texts("EVENT:LABELS")
    return [row for label, *row in zip(labels, *columns, strict=True) if label == "Foot Strike"]


def told(acquisition: Any) -> list[Any]:
    """All that getters and the set itself tell."""
    values = [np.asarray(column).tolist() for column in _moxPY.moxGetEventsValues(acquisition)]
    times, info = _moxPY.moxGetEvents(acquisition)
    attributes = attributes_of(node(acquisition, "Format/Events")["sets"][NAME])
    plain = {key: np.ravel(value[2]).tolist() for key, value in attributes.items()}
    return [values, {key: np.ravel(value).tolist() for key, value in times.items()}, info, plain]


@both_sources
@pytest.mark.parametrize(
    ("given", "expected"),
    [
        ((), SHOWN), (("Ann", "heel", 1), SHOWN), (("Bob",), ("Bob", "heel", 1)),
        (("", "toe"), ("Ann", "toe", 1)), (("", "", 0), ("Ann", "heel", 0)),
        (("Bob", "toe", 7), ("Bob", "toe", 7)),
    ],
)  # fmt: skip
def test_an_appended_occurrence_is_written_as_it_is_shown(
    tmp_path: Path,
    way: Way,
    make: Callable[[Path], Any],
    given: tuple[Any, ...],
    expected: tuple[Any, ...],
) -> None:
    acquisition = way.of(make(tmp_path))
    _moxPY.moxAppendEvent(acquisition, "Foot Strike", 0.875, "Left", *given)
    again = written_again(acquisition, tmp_path, source_in(tmp_path))
    assert rows(tmp_path) == [
        [0.5, *SHOWN], [0.75, "Eve", "heel" if make is event_of_a_script else "", 3],
        [0.875, *expected],
    ]  # fmt: skip
    assert told(again) == told(acquisition)


@both_sources
@pytest.mark.parametrize("id", [0, 2, 7, -1, -300])
def test_description_and_id_of_all_occurrences_are_written(
    tmp_path: Path, way: Way, make: Callable[[Path], Any], id: int
) -> None:
    acquisition = way.of(make(tmp_path))
    _moxPY.moxAppendEvent(acquisition, "Foot Strike", 0.875, "Left")
    _moxPY.moxSetEventDescription(acquisition, NAME, "changed")
    _moxPY.moxSetEventId(acquisition, NAME, id)
    _moxPY.moxAppendEvent(acquisition, "Foot Strike", 0.9375, "Left")
    again = written_again(acquisition, tmp_path, source_in(tmp_path))
    assert [row[2:] for row in rows(tmp_path)] == [["changed", id]] * 4
    assert told(again)[:3] == told(acquisition)[:3]  # the type follows from the id when it is read


def test_an_empty_description_that_is_filled_is_written_for_all(tmp_path: Path) -> None:
    acquisition = read_c3d(
        tmp_path,
        {"A": track(100)},
        events=[Event("Left", "Foot Strike", time) for time in (0.5, 0.75)],
    )
    for text in ("", "heel"):
        _moxPY.moxAppendEvent(acquisition, "Foot Strike", 0.875, "Left", "", text)
    again = written_again(acquisition, tmp_path, source_in(tmp_path))
    assert [row[2] for row in rows(tmp_path)] == ["heel"] * 4
    assert told(again) == told(acquisition)


@pytest.mark.parametrize(
    ("label", "context", "written"),
    [
        ("a", "Left ", ("Left", " a")),
        ("Strike", "RightFoot  ", ("RightFoot", "  Strike")),
        (" a", "Left ", ("Left", "  a")),
        ("a", " ", ("", " a")),
        ("a", " Left", (" Left", "a")),
        ("a", "Left_ ", ("Left_", " a")),
    ],
)
def test_a_name_with_blanks_in_it_stays(
    tmp_path: Path, way: Way, label: str, context: str, written: tuple[str, str]
) -> None:
    acquisition = way.of(event_of_a_script(tmp_path))
    _moxPY.moxAppendEvent(acquisition, label, 0.875, context)
    again = written_again(acquisition, tmp_path)
    assert list(_moxPY.moxGetEvents(again)[0]) == list(_moxPY.moxGetEvents(acquisition)[0])
    file = StoredFile((tmp_path / "written.c3d").read_bytes())
    assert (file.texts("EVENT:CONTEXTS")[-1], file.texts("EVENT:LABELS")[-1]) == written
