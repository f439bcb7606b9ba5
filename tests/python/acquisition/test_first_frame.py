"""First and last frame, and the start times that they come from."""

from __future__ import annotations

from typing import Any

import _mox_probe as probe
import _moxPY
import numpy as np
import pytest
from support.failures import failure_of
from support.read_files import read_trial
from support.store_tree import Type, node, scalar, snapshot

DEVICE_GROUPS = ("Angles", "Forces", "Markers", "Moments", "Powers", "AnalogsExport")


def new_acquisition(rate: float = 100.0, frames: int = 200) -> Any:
    acquisition = _moxPY.moxNewAcquisition(2, frames, 2, 3)
    _moxPY.moxSetFrequency(acquisition, rate)
    return acquisition


def start_times(acquisition: Any) -> set[float]:
    """Of all device groups, their channels, and the raw sets where there are any."""
    paths = []
    for group in DEVICE_GROUPS:
        path = f"Format/Data/{group}"
        paths += [path, *(f"{path}/{name}" for name in probe.list_sets(acquisition, path))]
    paths += [f"Format/Data/{name}" for name in probe.list_sets(acquisition, "Format/Data")]
    return {scalar(acquisition, path, "StartTime") for path in paths}


def single(value: float) -> float:
    return float(np.float32(value))


def test_an_acquisition_that_starts_at_zero():
    acquisition = new_acquisition()
    assert _moxPY.moxGetFirstFrame(acquisition) == 0.0
    assert _moxPY.moxGetLastFrame(acquisition) == 199.0


def test_an_acquisition_without_frames_ends_before_it_starts():
    assert _moxPY.moxGetLastFrame(_moxPY.moxNewAcquisition()) == -1.0


@pytest.mark.parametrize("first", [0, 1, 5, 1000])
def test_the_first_frame_reads_back(first: int):
    acquisition = new_acquisition()
    assert _moxPY.moxSetFirstFrame(acquisition, first) is None
    assert _moxPY.moxGetFirstFrame(acquisition) == float(first)
    assert _moxPY.moxGetLastFrame(acquisition) == float(first + 199)


def test_start_times_follow_everywhere():
    acquisition = new_acquisition()
    _moxPY.moxSetFirstFrame(acquisition, 5)
    assert start_times(acquisition) == {single(0.05)}


def test_start_times_of_a_file_follow_everywhere():
    acquisition = read_trial()
    _moxPY.moxSetFirstFrame(acquisition, 7)
    assert start_times(acquisition) == {single(0.07)}


def test_frame_zero_starts_at_zero():
    acquisition = read_trial(first_frame=21)
    _moxPY.moxSetFirstFrame(acquisition, 0)
    assert start_times(acquisition) == {0.0}


def test_first_frame_of_a_file_counts_from_zero():
    acquisition = read_trial(first_frame=21)
    assert _moxPY.moxGetFirstFrame(acquisition) == 20.0
    assert _moxPY.moxGetLastFrame(acquisition) == 119.0


@pytest.mark.parametrize(("rate", "start"), [(59.94, 1.7), (120.0, 1 / 3), (1000.0, 0.1)])
def test_frames_are_computed_in_single_precision(rate: float, start: float):
    acquisition = new_acquisition(rate)
    probe.write_attribute(acquisition, "Format/Data/Markers", "StartTime", "double", start)
    first = np.float32(rate) * np.float32(start)
    assert _moxPY.moxGetFirstFrame(acquisition) == float(first)
    last = first + np.float32(200) - np.float32(1)
    assert _moxPY.moxGetLastFrame(acquisition) == float(last)


def test_a_last_frame_beyond_single_precision_is_rounded():
    acquisition = _moxPY.moxNewAcquisition(0, 2**24 + 2)
    assert _moxPY.moxGetLastFrame(acquisition) == float(2**24)


def test_a_missing_start_time_counts_as_zero_and_is_made():
    acquisition = new_acquisition()
    probe.delete_attribute(acquisition, "Format/Data/Markers", "StartTime")
    assert _moxPY.moxGetFirstFrame(acquisition) == 0.0
    _moxPY.moxSetFirstFrame(acquisition, 10)
    assert scalar(acquisition, "Format/Data/Markers", "StartTime") == single(0.1)


def acquisition_with_events() -> Any:
    acquisition = new_acquisition()
    _moxPY.moxSetFirstFrame(acquisition, 100)
    for name, times in {"LeftFoot Strike": [1.5, 2.5], "RightFoot Off": [2.0], "Gone": []}.items():
        path = f"Format/Events/{name}"
        probe.create_set(acquisition, path, Type.FLOAT32, [len(times)])
        probe.fill_set(acquisition, path, "float", times)
    return acquisition


def times_of(acquisition: Any) -> dict[str, list[float]]:
    names = probe.list_sets(acquisition, "Format/Events")
    return {n: node(acquisition, f"Format/Events/{n}")["values"].tolist() for n in names}


BEFORE = {"LeftFoot Strike": [1.5, 2.5], "RightFoot Off": [2.0], "Gone": []}


@pytest.mark.parametrize("arguments", [(50,), (50, 0), (50, False)])
def test_events_stay_where_they_are(arguments: tuple[int, ...]):
    acquisition = acquisition_with_events()
    _moxPY.moxSetFirstFrame(acquisition, *arguments)
    assert times_of(acquisition) == BEFORE


@pytest.mark.parametrize("shift", [1, -1, 7, True])
def test_events_move_along(shift: int):
    acquisition = acquisition_with_events()
    _moxPY.moxSetFirstFrame(acquisition, 50, shift)
    assert times_of(acquisition) == {
        "LeftFoot Strike": [1.0, 2.0],
        "RightFoot Off": [1.5],
        "Gone": [],
    }
    _moxPY.moxSetFirstFrame(acquisition, 100, shift)
    assert times_of(acquisition) == BEFORE


def test_events_keep_their_element_type():
    acquisition = acquisition_with_events()
    _moxPY.moxSetFirstFrame(acquisition, 50, 1)
    assert node(acquisition, "Format/Events/RightFoot Off")["type"] == Type.FLOAT32


def test_without_a_rate_only_frame_zero_can_be_first():
    acquisition = _moxPY.moxNewAcquisition(1, 10)
    _moxPY.moxSetFirstFrame(acquisition, 0)
    assert _moxPY.moxGetFirstFrame(acquisition) == 0.0
    before = snapshot(acquisition)
    assert failure_of(_moxPY.moxSetFirstFrame, acquisition, 3) == (
        RuntimeError,
        "Frequency is not set, impossible to set another first frame than 0",
    )
    assert snapshot(acquisition) == before


@pytest.mark.parametrize("arguments", [(-1,), (-1, 1)])
def test_a_negative_first_frame_leaves_everything(arguments: tuple[int, ...]):
    acquisition = acquisition_with_events()
    before = snapshot(acquisition)
    assert failure_of(_moxPY.moxSetFirstFrame, acquisition, *arguments) == (
        RuntimeError,
        "The first frame cannot be negative, current is : -1",
    )
    assert snapshot(acquisition) == before


def test_a_rate_too_low_for_a_start_time_leaves_everything():
    acquisition = new_acquisition(1e-39)
    before = snapshot(acquisition)
    assert failure_of(_moxPY.moxSetFirstFrame, acquisition, 5) == (
        RuntimeError,
        "The frequency is too low to set the first frame 5",
    )
    assert snapshot(acquisition) == before


@pytest.mark.parametrize("name", DEVICE_GROUPS)
def test_a_missing_group_is_named_and_nothing_changed(name: str):
    acquisition = new_acquisition()
    probe.delete_group(acquisition, f"Format/Data/{name}")
    before = snapshot(acquisition)
    assert failure_of(_moxPY.moxSetFirstFrame, acquisition, 10) == (
        RuntimeError,
        f"Impossible to retrieve group with path : 'Format/Data/{name}'",
    )
    assert snapshot(acquisition) == before


def test_missing_events_are_named_when_they_are_to_move():
    acquisition = new_acquisition()
    probe.delete_group(acquisition, "Format/Events")
    before = snapshot(acquisition)
    assert failure_of(_moxPY.moxSetFirstFrame, acquisition, 10, 1) == (
        RuntimeError,
        "Impossible to retrieve group with path : 'Format/Events'",
    )
    assert snapshot(acquisition) == before
    _moxPY.moxSetFirstFrame(acquisition, 10)
