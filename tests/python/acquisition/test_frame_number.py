"""The number of frames of points and analog channels."""

from __future__ import annotations

from typing import Any

import _mox_probe as probe
import _moxPY
import numpy as np
import pytest
from support.failures import failure_of
from support.memory import address_space
from support.read_files import read_trial
from support.store_tree import node, scalar, snapshot

POINT_GROUPS = ("Angles", "Forces", "Markers", "Moments", "Powers")


def samples_of(acquisition: Any) -> dict[str, int]:
    """`NumSamples` of the device groups."""
    return {
        name: scalar(acquisition, f"Format/Data/{name}", "NumSamples")
        for name in (*POINT_GROUPS, "AnalogsExport")
    }


@pytest.mark.parametrize("frames", [0, 1, 60, 140])
def test_all_groups_follow(frames: int):
    acquisition = _moxPY.moxNewAcquisition(2, 100, 2, 3)
    assert _moxPY.moxSetFrameNumber(acquisition, frames) is None
    assert samples_of(acquisition) == dict.fromkeys(POINT_GROUPS, frames) | {
        "AnalogsExport": 3 * frames
    }
    assert _moxPY.moxGetPointFrameNumber(acquisition) == float(frames)
    assert _moxPY.moxGetAnalogFrameNumber(acquisition) == float(3 * frames)


def test_channels_follow_their_groups():
    acquisition = _moxPY.moxNewAcquisition(1, 100, 1, 3)
    _moxPY.moxSetFrameNumber(acquisition, 40)
    assert node(acquisition, "Format/Data/Markers/unamed_0")["shape"] == [3, 1, 40]
    assert node(acquisition, "Format/Data/AnalogsExport/unamed_0")["shape"] == [1, 1, 120]


def test_new_frames_of_points_are_missing_and_of_analogs_zero():
    acquisition = _moxPY.moxNewAcquisition(1, 2, 1, 2)
    _moxPY.moxSetFrameNumber(acquisition, 3)
    points = _moxPY.moxGetMarkersValues(acquisition)
    np.testing.assert_array_equal(points, [[0.0] * 3, [0.0] * 3, [np.nan] * 3])
    assert _moxPY.moxGetAnalogsValues(acquisition).ravel().tolist() == [0.0] * 6


def test_the_ratio_is_set_first():
    acquisition = _moxPY.moxNewAcquisition(2, 100)
    assert _moxPY.moxSetFrameNumber(acquisition, 50, 20) is None
    assert _moxPY.moxGetAnalogSampleNumberPerFrame(acquisition) == 20.0
    assert _moxPY.moxGetAnalogFrameNumber(acquisition) == 1000.0
    assert _moxPY.moxGetPointFrameNumber(acquisition) == 50.0


def test_a_file_keeps_its_first_frames():
    acquisition = read_trial()
    before = _moxPY.moxGetPointsValues(acquisition)
    analogs = _moxPY.moxGetAnalogsValues(acquisition)
    _moxPY.moxSetFrameNumber(acquisition, 40)
    np.testing.assert_array_equal(_moxPY.moxGetPointsValues(acquisition), before[:40])
    np.testing.assert_array_equal(_moxPY.moxGetAnalogsValues(acquisition), analogs[:120])


def test_the_raw_sets_of_a_file_tell_the_new_counts():
    acquisition = read_trial()
    _moxPY.moxSetFrameNumber(acquisition, 40)
    assert scalar(acquisition, "Format/Data/Points", "NumSamples") == 40
    assert scalar(acquisition, "Format/Data/Analogs", "NumSamples") == 120
    assert _moxPY.moxGetPointFrameNumber(acquisition) == 40.0
    assert samples_of(acquisition) == dict.fromkeys(POINT_GROUPS, 40) | {"AnalogsExport": 120}


def test_values_of_other_acquisitions_are_not_touched():
    acquisition = read_trial()
    before = _moxPY.moxGetPointsValues(acquisition)
    _moxPY.moxSetFrameNumber(acquisition, 150)
    assert _moxPY.moxGetPointsValues(acquisition).shape == (150, 9)
    assert before.shape == (100, 9)


@pytest.mark.parametrize(
    ("arguments", "text"),
    [
        ((-1,), "The number of frames cannot be negative, current is : -1"),
        ((-1, 5), "The number of frames cannot be negative, current is : -1"),
        ((5, 0), "Ratio cannot be lower than 1"),
        ((5, -3), "Ratio cannot be lower than 1"),
        (
            (5, 2),
            "Impossible to modify of the number of analog samples per 3D frames when the "
            "acquisition already contains analog channels.",
        ),
    ],
)
def test_a_refused_change_leaves_everything(arguments: tuple[int, ...], text: str):
    acquisition = _moxPY.moxNewAcquisition(2, 100, 1, 3)
    before = snapshot(acquisition)
    assert failure_of(_moxPY.moxSetFrameNumber, acquisition, *arguments) == (RuntimeError, text)
    assert snapshot(acquisition) == before


@pytest.mark.parametrize("arguments", [(2**31 - 1,), (2**31 - 1, 2**31 - 1)])
@pytest.mark.parametrize("analogs", [0, 500])
def test_frames_beyond_memory_leave_everything(arguments: tuple[int, ...], analogs: int):
    if analogs and len(arguments) == 2:
        return  # refused for its channels
    acquisition = _moxPY.moxNewAcquisition(100, 3, analogs)
    before = snapshot(acquisition)
    with address_space(4 << 30):
        raised, _ = failure_of(_moxPY.moxSetFrameNumber, acquisition, *arguments)
    assert raised is MemoryError
    assert snapshot(acquisition) == before


def test_growing_takes_no_more_memory_than_the_frames_need():
    acquisition = _moxPY.moxNewAcquisition(1, 10, 0, 2)
    frames = 20_000_000
    with address_space(5 * frames * 8):
        _moxPY.moxSetFrameNumber(acquisition, frames)
    assert _moxPY.moxGetPointFrameNumber(acquisition) == frames


@pytest.mark.parametrize("name", [*POINT_GROUPS, "AnalogsExport"])
def test_a_missing_group_is_named_and_nothing_changed(name: str):
    acquisition = _moxPY.moxNewAcquisition(2, 100)
    probe.delete_group(acquisition, f"Format/Data/{name}")
    before = snapshot(acquisition)
    assert failure_of(_moxPY.moxSetFrameNumber, acquisition, 10) == (
        RuntimeError,
        f"Impossible to retrieve group with path : 'Format/Data/{name}'",
    )
    assert snapshot(acquisition) == before
