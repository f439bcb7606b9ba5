"""References and memory stay level over many calls of every function."""

from __future__ import annotations

from collections.abc import Callable
from functools import partial
from pathlib import Path
from typing import Any

import _moxPY
import numpy as np
import pytest
from invariants.refused_calls import ALL
from support.c3d_bytes import Analog, Platform
from support.failures import failure_of
from support.interface import REGISTERED
from support.leaks import assert_nothing_lost
from support.read_c3d import read_c3d
from support.small_trials import new_trial

POINT, SAMPLE = np.ones((1, 3)), np.ones((1, 1))
SWAPPED, SINGLES = np.ones((3, 1), dtype=">f4").T, np.ones((1, 3), dtype=np.float32)
ROWS, INFO, TEXTS = [[1.0, 2.0, 3.0]], {"format": "Real", "values": [1.0, 2.0]}, ["a", "b"]
WATCHED = [POINT, SAMPLE, SWAPPED, SINGLES, ROWS, ROWS[0], INFO, INFO["values"], TEXTS]

Step = tuple[str, tuple[Any, ...]]


def acquisition() -> Any:
    """One frame, a point and an analog channel, an event, metadata with one group."""
    made = _moxPY.moxNewAcquisition(1, 1, 1, 1)
    _moxPY.moxSetFrequency(made, 100.0)
    _moxPY.moxAppendEvent(made, "A", 1.0, "")
    _moxPY.moxClearMetaData(made)
    for name, value in (("E", [1.0, 2.0]), ("ONE", 1.0), ("T", TEXTS)):
        kind = "Char" if name == "T" else "Real"
        _moxPY.moxAppendMetaData(made, "G", name, {"format": kind, "values": value})
    return made


def calls_of(handle: Any, steps: list[Step]) -> Callable[[], Any]:
    """The steps as one call."""
    calls = [partial(getattr(_moxPY, name), handle, *arguments) for name, arguments in steps]
    if len(calls) == 1:
        return calls[0]

    def call() -> None:
        for each in calls:
            each()

    return call


# Calls that leave the acquisition as they found it.
EVEN: list[Step] = [
    ("moxGetPoint", (0,)), ("moxGetPoint", ("unamed_0",)), ("moxGetPointsUnit", ("Markers",)),
    ("moxGetAnalog", (0,)), ("moxGetAnalog", ("unamed_0",)),
    ("moxGetMetaData", ()), ("moxGetMetaData", ("G",)), ("moxGetMetaData", ("G", "E")),
    ("moxFindMetaData", ("G",)), ("moxFindMetaData", ("G", "T")),
    ("moxSetMarkersValues", (POINT,)), ("moxSetMarkersValues", (SINGLES,)),
    ("moxSetMarkersValues", (ROWS,)), ("moxSetAnglesValues", (SWAPPED,)),
    ("moxSetForcesValues", (np.ones((1, 0)),)), ("moxSetMomentsValues", (np.ones((1, 0)),)),
    ("moxSetPowersValues", (np.ones((1, 0)),)), ("moxSetPointsValues", (POINT,)),
    ("moxSetPointValues", (0, POINT)), ("moxSetPointValues", ("unamed_0", ROWS)),
    ("moxSetPointNumber", (1,)), ("moxSetPointsUnit", ("marker", "mm")),
    ("moxSetPointType", (0, "marker")), ("moxSetPointType", ("unamed_0", "marker")),
    ("moxSetPointLabel", (0, "unamed_0")), ("moxSetPointLabel", ("unamed_0", "unamed_0")),
    ("moxSetPointDescription", (0, "text")), ("moxSetPointDescription", ("unamed_0", "text")),
    ("moxSetAnalogsValues", (SAMPLE,)), ("moxSetAnalogValues", (0, SAMPLE)),
    ("moxSetAnalogValues", ("unamed_0", [[1.0]])), ("moxSetAnalogNumber", (1,)),
    ("moxSetAnalogLabel", (0, "unamed_0")), ("moxSetAnalogLabel", ("unamed_0", "unamed_0")),
    ("moxSetAnalogDescription", (0, "text")), ("moxSetAnalogDescription", ("unamed_0", "text")),
    ("moxSetAnalogUnit", (0, "V")), ("moxSetAnalogUnit", ("unamed_0", "V")),
    ("moxSetAnalogGain", (0, 1)), ("moxSetAnalogGain", ("unamed_0", 1)),
    ("moxSetAnalogOffset", (0, 1)), ("moxSetAnalogOffset", ("unamed_0", 1)),
    ("moxSetAnalogScale", (0, 1.5)), ("moxSetAnalogScale", ("unamed_0", 1.5)),
    ("moxSetAnalogResolution", (14,)), ("moxSetMaxInterpolationGap", (3,)),
    ("moxSetFrequency", (50.0,)), ("moxSetFirstFrame", (7,)), ("moxSetFirstFrame", (7, 1)),
    ("moxSetEventDescription", ("A", "text")), ("moxSetEventId", ("A", 2)),
    ("moxSetMetaDataValue", ("G", "E", [3.0, 4.0])), ("moxSetMetaDataValue", ("G/T", TEXTS)),
    ("moxSetMetaDataValue", ("G", "E", SWAPPED[0, :2])), ("moxSetMetaDataValue", ("G/ONE", 2.0)),
    ("moxSetMetaDataFormat", ("G", "E", "Real")), ("moxSetMetaDataFormat", ("G/T", "Char")),
    ("moxSetMetaDataDimensions", ("G", "E", [2])), ("moxSetMetaDataDimensions", ("G/T", [1, 2])),
    ("moxSetMetaDataDescription", ("G", "E", "text")), ("moxSetMetaDataDescription", ("G", "text")),
    ("moxSetMetaData", ("G", "E", INFO)), ("moxAppendMetaData", ("G", "E", INFO)),
    ("moxCloseAcquisition", ()), ("moxDeleteAcquisition", ()),
]  # fmt: skip

# Getters of no further argument; some only where there is what they read.
EVEN += [
    (function.name, ())
    for function in REGISTERED
    if function.name.startswith("moxGet")
    and function.prototypes[0].endswith("strata::data_store)")
    and function.name not in ("moxGetAnalysis", "moxGetAnalogResolution", "moxGetMetaData")
]

# Calls that need a file with a force plate and rotations, and do more than others.
DEVICES: list[Step] = [
    ("moxGetForcePlatforms", ()), ("moxGetForcePlatformWrenches", ()),
    ("moxGetForcePlatformWrenches", (1,)), ("moxGetGroundReactionWrenches", ()),
    ("moxGetGroundReactionWrenches", (5.0,)), ("moxGetRotations", ()), ("moxGetRotation", ("S",)),
]  # fmt: skip
EVEN = [step for step in EVEN if step not in DEVICES]

# What takes more than one call to come back to where it began.
ROUND_TRIPS: dict[str, list[Step]] = {
    "point by label": [("moxAppendPoint", ("force", "B", POINT)), ("moxRemovePoint", ("B",))],
    "point by index": [("moxAppendPoint", ("marker", "B", ROWS)), ("moxRemovePoint", (1,))],
    "points cleared": [("moxSetPointNumber", (2,)), ("moxClearPoints", ()),
                       ("moxSetPointNumber", (1,))],
    "type": [("moxSetPointType", (0, "power")), ("moxSetPointType", ("unamed_0", "marker"))],
    "analog by label": [("moxAppendAnalog", ("B", SAMPLE)), ("moxRemoveAnalog", ("B",))],
    "analog by index": [("moxAppendAnalog", ("B", SAMPLE, "text")), ("moxRemoveAnalog", (1,))],
    "analogs cleared": [("moxClearAnalogs", ()), ("moxSetAnalogSampleNumberPerFrame", (1,)),
                        ("moxSetAnalogNumber", (1,))],
    "events": [("moxAppendEvent", ("B", 1.0, "L")), ("moxAppendEvent", ("B", 1.0, "L", "Ann")),
               ("moxAppendEvent", ("B", 1.0, "L", "Ann", "text")),
               ("moxAppendEvent", ("B", 1.0, "L", "Ann", "text", 2)), ("moxClearEvents", ())],
    "entry": [("moxAppendMetaData", ("G", "NEW", INFO)), ("moxRemoveMetaData", ("G", "NEW"))],
    "group": [("moxAppendMetaData", ("NEW", "E", INFO)), ("moxRemoveMetaData", ("NEW",))],
    "metadata cleared": [("moxClearMetaData", ()), ("moxAppendMetaData", ("G", "E", INFO))],
    "analysis": [("moxAppendMetaData", ("ANALYSIS", "UNITS", INFO)), ("moxGetAnalysis", ())],
    "format": [("moxSetMetaDataFormat", ("G", "E", "Char")),
               ("moxSetMetaDataFormat", ("G/E", "Real"))],
    "dimensions": [("moxSetMetaDataDimensions", ("G", "T", [3])),
                   ("moxSetMetaDataDimensions", ("G", "T", [2]))],
    "frames": [("moxSetFrameNumber", (3,)), ("moxSetFrameNumber", (1,))],
    "resolution": [("moxAppendMetaData", ("ANALOG", "E", INFO)), ("moxSetAnalogResolution", (8,)),
                   ("moxGetAnalogResolution", ()), ("moxRemoveMetaData", ("ANALOG",))],
}  # fmt: skip

# Refused at every call; leaks of exceptions are looked for with the other refused calls below.
REFUSED_ALWAYS = {
    "moxSetEventLabel", "moxSetEventTime", "moxSetEventSubject", "moxAppendAnalysisParameter",
    "moxRemoveAnalysisParameter", "moxClearAnalysis",
}  # fmt: skip
ELSEWHERE = {
    "moxGetVersion", "moxMetaDataInfo", "moxNewAcquisition", "moxReadAcquisition",
    "moxWriteAcquisition",
}  # fmt: skip


def step_name(step: Any) -> str:
    name, arguments = step
    return f"{name}-{'-'.join(type(each).__name__ for each in arguments)}"


@pytest.mark.parametrize("step", EVEN, ids=step_name)
def test_a_call_leaves_nothing_behind(step: Step) -> None:
    handle = acquisition()
    if "Resolution" in step[0]:
        _moxPY.moxAppendMetaData(handle, "ANALOG", "E", INFO)
    assert_nothing_lost(calls_of(handle, [step]), handle, *WATCHED)


@pytest.mark.parametrize("step", DEVICES, ids=step_name)
def test_a_call_about_devices_leaves_nothing_behind(tmp_path: Path, step: Step) -> None:
    handle = read_c3d(
        tmp_path,
        analogs=[Analog(name, np.ones(1)) for name in "abcdef"],
        platforms=[Platform(corners=[(1, 1, 0), (0, 1, 0), (0, 0, 0), (1, 0, 0)])],
        rotations={"S": np.ones((1, 17))},
    )
    _moxPY.moxGetForcePlatforms(handle)
    assert_nothing_lost(calls_of(handle, [step]), handle, *WATCHED)


def test_writing_leaves_nothing_behind(tmp_path: Path) -> None:
    path = str(tmp_path / "trial.c3d")
    assert_nothing_lost(partial(_moxPY.moxWriteAcquisition, acquisition(), path), path)


@pytest.mark.parametrize("trip", ROUND_TRIPS)
def test_calls_that_undo_each_other_leave_nothing_behind(trip: str) -> None:
    handle = acquisition()
    assert_nothing_lost(calls_of(handle, ROUND_TRIPS[trip]), handle, *WATCHED)


@pytest.mark.parametrize("arguments", [(), (1,), (1, 1), (1, 1, 1), (1, 1, 1, 2)])
def test_acquisitions_are_gone_with_their_handles(arguments: tuple[int, ...]) -> None:
    assert_nothing_lost(partial(_moxPY.moxNewAcquisition, *arguments))


@pytest.mark.parametrize("values", [1.5, "text", b"bytes", ROWS, POINT, None])
def test_info_records_leave_nothing_behind(values: Any) -> None:
    for arguments in (("Real", values), ("Real", values, 3)):
        assert_nothing_lost(partial(_moxPY.moxMetaDataInfo, *arguments), *WATCHED)


@pytest.mark.parametrize("family", ALL)
def test_refused_calls_leave_nothing_behind(family: str) -> None:
    handle = new_trial()
    refused = ALL[family]

    def call() -> None:
        for function, arguments in refused:
            failure_of(getattr(_moxPY, function), handle, *arguments)

    objects = [each for _, arguments in refused for each in arguments if each is not None]
    counted = [each for each in objects if isinstance(each, (np.ndarray, dict, list))]
    assert_nothing_lost(call, handle, *counted)


def test_every_function_is_called_here() -> None:
    steps = EVEN + DEVICES + [step for trip in ROUND_TRIPS.values() for step in trip]
    called = {name for name, _ in steps} | REFUSED_ALWAYS | ELSEWHERE
    acquisitions_own = {f.name for f in REGISTERED if f.name.startswith("mox")}
    assert called == acquisitions_own
