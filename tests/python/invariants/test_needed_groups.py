"""The groups that a function needs are looked up in the order in which it uses them.

Each test starts with a store without any group. The function names the first group that it needs;
once that is there, the next one; and it changes nothing while one is missing.
"""

from __future__ import annotations

from collections.abc import Callable
from typing import Any

import _mox_probe as probe
import _moxPY
import numpy as np
import pytest
from support.failures import failure_of
from support.store_tree import snapshot

ANGLES, FORCES, MARKERS, MOMENTS, POWERS = KINDS = [
    f"Format/Data/{name}" for name in ("Angles", "Forces", "Markers", "Moments", "Powers")
]
DATA, ANALOGS, HEADER = "Format/Data", "Format/Data/AnalogsExport", "Format/Header"
EVENTS, PARAMETERS = "Format/Events", "Format/Metadata/ANALOG"

NO_POINTS, NO_POINT, NO_CHANNEL = np.zeros((0, 0)), np.zeros((0, 3)), np.zeros((0, 1))

Call = tuple[str, tuple[Any, ...], list[str]]

TIME_BASE: list[Call] = [
    ("moxGetPointFrequency", (), [ANGLES]),
    ("moxSetFrequency", (100.0,), [*KINDS, HEADER]),
    ("moxGetPointFrameNumber", (), [ANGLES]),
    ("moxSetFrameNumber", (4,), [*KINDS, HEADER, ANALOGS]),
    ("moxSetFrameNumber", (4, 2), [ANALOGS, HEADER, *KINDS]),
    ("moxGetFirstFrame", (), [MARKERS]),
    ("moxSetFirstFrame", (0,), [MARKERS, ANGLES, FORCES, MOMENTS, POWERS, ANALOGS]),
    ("moxSetFirstFrame", (0, 1), [MARKERS, EVENTS, ANGLES, FORCES, MOMENTS, POWERS, ANALOGS]),
    ("moxGetLastFrame", (), [MARKERS]),
    ("moxGetMaxInterpolationGap", (), [HEADER]),
    ("moxSetMaxInterpolationGap", (5,), [HEADER]),
    ("moxGetAnalogFrequency", (), [ANALOGS]),
    ("moxGetAnalogFrameNumber", (), [ANALOGS]),
    ("moxGetAnalogSampleNumberPerFrame", (), [HEADER]),
    ("moxSetAnalogSampleNumberPerFrame", (2,), [ANALOGS, HEADER, ANGLES]),
    ("moxGetAnalogResolution", (), [PARAMETERS]),
    ("moxSetAnalogResolution", (16,), [PARAMETERS]),
]

POINTS: list[Call] = [
    *((f"moxGet{path.rpartition('/')[2]}", (), [path]) for path in KINDS),
    *((f"moxGet{path.rpartition('/')[2]}Values", (), [path]) for path in KINDS),
    ("moxGetPoints", (), [DATA, *KINDS]),
    ("moxGetPointsValues", (), KINDS),
    ("moxGetPoint", (0,), [DATA, *KINDS]),
    ("moxGetPoint", ("LASI",), [DATA, *KINDS]),
    ("moxGetPointsUnit", ("Moments",), [MOMENTS]),
    ("moxGetPointNumber", (), KINDS),
    ("moxSetMarkersValues", (NO_POINTS,), [MARKERS]),
    ("moxSetAnglesValues", (NO_POINTS,), [MARKERS]),
    ("moxSetForcesValues", (NO_POINTS,), [FORCES]),
    ("moxSetMomentsValues", (NO_POINTS,), [MOMENTS]),
    ("moxSetPowersValues", (NO_POINTS,), [POWERS]),
    ("moxSetPointsValues", (NO_POINTS,), KINDS),
    ("moxSetPointValues", (0, NO_POINT), [DATA, *KINDS]),
    ("moxSetPointValues", ("LASI", NO_POINT), [DATA, *KINDS]),
    ("moxAppendPoint", ("marker", "LASI", NO_POINT), [MARKERS, ANGLES, FORCES, MOMENTS, POWERS]),
    ("moxAppendPoint", ("power", "LHip", NO_POINT), [POWERS, ANGLES, FORCES, MARKERS, MOMENTS]),
    ("moxRemovePoint", (0,), [DATA, *KINDS]),
    ("moxRemovePoint", ("LASI",), [DATA, *KINDS]),
    ("moxClearPoints", (), KINDS),
    ("moxSetPointLabel", (0, "RASI"), [DATA, *KINDS]),
    ("moxSetPointDescription", ("LASI", "left"), [DATA, *KINDS]),
    ("moxSetPointType", (0, "moment"), [DATA, *KINDS]),
    ("moxSetPointsUnit", ("force", "N"), [FORCES]),
    ("moxSetPointNumber", (1,), KINDS),
]

CHANNELS: list[Call] = [
    ("moxGetAnalogs", (), [ANALOGS]),
    ("moxGetAnalog", (0,), [ANALOGS]),
    ("moxGetAnalog", ("Fz1",), [ANALOGS]),
    ("moxGetAnalogsValues", (), [ANALOGS]),
    ("moxGetAnalogNumber", (), [ANALOGS]),
    ("moxAppendAnalog", ("Fz1", NO_CHANNEL), [ANALOGS, ANGLES, HEADER]),
    ("moxAppendAnalog", ("Fz1", NO_CHANNEL, "up"), [ANALOGS, ANGLES, HEADER]),
    ("moxRemoveAnalog", (0,), [ANALOGS]),
    ("moxRemoveAnalog", ("Fz1",), [ANALOGS]),
    ("moxClearAnalogs", (), [ANALOGS]),
    ("moxSetAnalogsValues", (NO_POINTS,), [ANALOGS]),
    ("moxSetAnalogValues", (0, NO_CHANNEL), [ANALOGS]),
    ("moxSetAnalogValues", ("Fz1", NO_CHANNEL), [ANALOGS]),
    ("moxSetAnalogNumber", (0,), [ANALOGS]),
    ("moxSetAnalogNumber", (1,), [ANALOGS, ANGLES, HEADER]),
    ("moxSetAnalogLabel", (0, "EMG"), [ANALOGS]),
    ("moxSetAnalogDescription", ("Fz1", "up"), [ANALOGS]),
    ("moxSetAnalogUnit", (0, "N"), [ANALOGS]),
    ("moxSetAnalogGain", (0, 1), [ANALOGS]),
    ("moxSetAnalogOffset", (0, 1), [ANALOGS]),
    ("moxSetAnalogScale", ("Fz1", 0.5), [ANALOGS]),
]

NO_SUCH_CHANNEL = "Unable to find channel with given "


def missing(path: str) -> tuple[type[Exception], str]:
    return RuntimeError, f"Impossible to retrieve group with path : '{path}'"


def answer_of(call: Callable[..., Any], *arguments: Any) -> str | None:
    """The text of the error, if the call is refused."""
    try:
        call(*arguments)
    except RuntimeError as failure:
        return str(failure)
    return None


@pytest.mark.parametrize(("name", "arguments", "needed"), [*TIME_BASE, *POINTS, *CHANNELS])
def test_groups_are_needed_in_this_order(
    name: str, arguments: tuple[Any, ...], needed: list[str]
) -> None:
    call, store = getattr(_moxPY, name), _moxPY.new_data_store()
    for path in needed:
        before = snapshot(store)
        assert failure_of(call, store, *arguments) == missing(path)
        assert snapshot(store) == before
        probe.create_group(store, path)
    answer = answer_of(call, store, *arguments)
    assert answer is None or answer.startswith(NO_SUCH_CHANNEL)


@pytest.mark.parametrize(
    ("name", "arguments"),
    [
        ("moxSetPointLabel", (0, "RASI")),
        ("moxSetPointDescription", (0, "left")),
        ("moxSetPointType", (0, "force")),
        ("moxRemovePoint", (0,)),
        ("moxAppendPoint", ("marker", "RASI", np.zeros((4, 3)))),
    ],
)
def test_a_group_that_only_the_result_needs_is_missed_before_the_change(
    name: str, arguments: tuple[Any, ...]
) -> None:
    acquisition = _moxPY.moxNewAcquisition(1, 4)
    probe.delete_group(acquisition, POWERS)
    before = snapshot(acquisition)
    assert failure_of(getattr(_moxPY, name), acquisition, *arguments) == missing(POWERS)
    assert snapshot(acquisition) == before


def test_a_type_and_a_matrix_are_checked_before_all_points_are_counted() -> None:
    store = _moxPY.new_data_store()
    text = 'Unsupported point type : "Marker"'
    assert failure_of(_moxPY.moxAppendPoint, store, "Marker", "A", NO_POINT) == (RuntimeError, text)
    probe.create_group(store, MARKERS)
    text = "Given matrix should have 2 dimensions, current has : 1"
    failure = failure_of(_moxPY.moxAppendPoint, store, "marker", "A", np.zeros(3))
    assert failure == (RuntimeError, text)


def test_a_channel_that_exists_is_named_before_a_missing_header() -> None:
    acquisition = _moxPY.moxNewAcquisition(0, 4, 1)
    probe.delete_group(acquisition, HEADER)
    text = (
        "You are trying to add a channel that already exists : 'unamed_0' already exists at given "
        "location"
    )
    failure = failure_of(_moxPY.moxAppendAnalog, acquisition, "unamed_0", np.zeros((4, 1)))
    assert failure == (RuntimeError, text)


@pytest.mark.parametrize("setter", ["moxSetMarkersValues", "moxSetAnalogsValues"])
def test_a_matrix_is_checked_before_the_indices_of_the_channels(setter: str) -> None:
    acquisition = _moxPY.moxNewAcquisition(1, 4, 1)
    for group in (MARKERS, ANALOGS):
        probe.delete_attribute(acquisition, f"{group}/unamed_0", "RelativeSetIndex")
    text = "Given matrix should have 2 dimensions, current has : 1"
    failure = failure_of(getattr(_moxPY, setter), acquisition, np.zeros(4))
    assert failure == (RuntimeError, text)
