"""After any edit every getter, every count and every matrix check agree."""

from __future__ import annotations

from collections.abc import Callable
from pathlib import Path
from typing import Any

import _moxPY
import numpy as np
import pytest
from support.agreement import assert_agreement
from support.failures import failure_of
from support.read_c3d import read_c3d
from support.readings import POINT_GROUPS, group_node
from support.small_trials import (
    FRAMES,
    POINTS,
    RATE,
    RATIO,
    SAMPLES,
    read_trial,
    signal,
    trajectory,
)

ROWS = (
    "Given matrix should have row number equals to the number of frames in the acquisition "
    ", current has : "
)


def frames_of(acquisition: Any) -> int:
    return int(_moxPY.moxGetPointFrameNumber(acquisition))


def append_points(acquisition: Any, *words: str) -> None:
    for number, word in enumerate(words):
        values = trajectory(number, frames_of(acquisition))
        _moxPY.moxAppendPoint(acquisition, word, f"NEW{number}", values)


def append_analogs(acquisition: Any, count: int) -> None:
    for number in range(count):
        values = signal(number, int(_moxPY.moxGetAnalogFrameNumber(acquisition)))
        _moxPY.moxAppendAnalog(acquisition, f"NEW{number}", values)


def new_ratio(acquisition: Any, ratio: int) -> None:
    _moxPY.moxClearAnalogs(acquisition)
    _moxPY.moxSetAnalogSampleNumberPerFrame(acquisition, ratio)


def remove_all_points(acquisition: Any) -> None:
    while count := int(_moxPY.moxGetPointNumber(acquisition)):
        _moxPY.moxRemovePoint(acquisition, count // 2)


def rate_then_frames(acquisition: Any, rate: float, frames: int) -> None:
    _moxPY.moxSetFrequency(acquisition, rate)
    _moxPY.moxSetFrameNumber(acquisition, frames)


EDITS: dict[str, Callable[[Any], Any]] = {
    "nothing": lambda acquisition: None,
    "append": lambda acquisition: append_points(acquisition, "marker"),
    "append of all types": lambda acquisition: append_points(
        acquisition, "power", "angle", "moment", "marker", "force"
    ),
    "append analogs": lambda acquisition: append_analogs(acquisition, 2),
    "clear points": _moxPY.moxClearPoints,
    "clear analogs": _moxPY.moxClearAnalogs,
    "remove all points": remove_all_points,
    "more points": lambda acquisition: _moxPY.moxSetPointNumber(acquisition, 80),
    "fewer points": lambda acquisition: _moxPY.moxSetPointNumber(acquisition, 1),
    "more analogs": lambda acquisition: _moxPY.moxSetAnalogNumber(acquisition, 30),
    "fewer analogs": lambda acquisition: _moxPY.moxSetAnalogNumber(acquisition, 1),
    "fewer frames": lambda acquisition: _moxPY.moxSetFrameNumber(acquisition, 2),
    "more frames": lambda acquisition: _moxPY.moxSetFrameNumber(acquisition, 400),
    "one frame": lambda acquisition: _moxPY.moxSetFrameNumber(acquisition, 1),
    "no frames": lambda acquisition: _moxPY.moxSetFrameNumber(acquisition, 0),
    "rate and frames": lambda acquisition: rate_then_frames(acquisition, 250.0, 7),
    "rate 0 and frames": lambda acquisition: rate_then_frames(acquisition, 0.0, 3),
    "ratio": lambda acquisition: new_ratio(acquisition, 5),
}


@pytest.mark.parametrize("edit", EDITS)
def test_everything_agrees_after_an_edit(any_trial: Any, edit: str) -> None:
    EDITS[edit](any_trial)
    assert_agreement(any_trial)


@pytest.mark.parametrize("first", ["fewer frames", "more frames", "no frames", "rate and frames",
                                   "ratio", "clear points", "fewer points"])  # fmt: skip
@pytest.mark.parametrize("second", EDITS)
def test_everything_agrees_after_two_edits(small_trial: Any, first: str, second: str) -> None:
    EDITS[first](small_trial)
    EDITS[second](small_trial)
    assert_agreement(small_trial)


@pytest.mark.parametrize("order", [1, -1])
def test_everything_agrees_after_all_edits_in_a_row(any_trial: Any, order: int) -> None:
    for edit in list(EDITS)[::order]:
        if edit.startswith("append"):
            _moxPY.moxClearPoints(any_trial)
            _moxPY.moxClearAnalogs(any_trial)
        EDITS[edit](any_trial)
    assert_agreement(any_trial)


@pytest.mark.parametrize("first_frame", [0, 1, 50, 12345])
def test_everything_agrees_after_a_new_first_frame(any_trial: Any, first_frame: int) -> None:
    _moxPY.moxSetFrequency(any_trial, _moxPY.moxGetPointFrequency(any_trial) or RATE)
    _moxPY.moxSetFirstFrame(any_trial, first_frame)
    append_points(any_trial, "force")
    append_analogs(any_trial, 1)
    assert _moxPY.moxGetFirstFrame(any_trial) == first_frame
    assert_agreement(any_trial)


def test_frames_that_are_added_are_missing_points_and_silent_analogs(rich_trial: Any) -> None:
    points, analogs = (
        _moxPY.moxGetPointsValues(rich_trial), _moxPY.moxGetAnalogsValues(rich_trial),
    )  # fmt: skip
    _moxPY.moxSetFrameNumber(rich_trial, FRAMES + 2)
    grown = _moxPY.moxGetPointsValues(rich_trial)
    assert np.array_equal(grown[:FRAMES], points)
    assert np.isnan(grown[FRAMES:]).all()
    grown = _moxPY.moxGetAnalogsValues(rich_trial)
    assert np.array_equal(grown[:SAMPLES], analogs)
    assert grown[SAMPLES:].tolist() == np.zeros((2 * RATIO, 3)).tolist()


def test_frames_that_went_do_not_come_back(rich_trial: Any) -> None:
    points = _moxPY.moxGetPointsValues(rich_trial)
    _moxPY.moxSetFrameNumber(rich_trial, 1)
    _moxPY.moxSetFrameNumber(rich_trial, FRAMES)
    grown = _moxPY.moxGetPointsValues(rich_trial)
    assert np.array_equal(grown[:1], points[:1])
    assert np.isnan(grown[1:]).all()


def residuals_of(acquisition: Any, group: str, label: str) -> list[float] | None:
    attributes = group_node(acquisition, POINT_GROUPS[group])["sets"][label]["attributes"]
    return attributes["Residuals"][2].tolist() if "Residuals" in attributes else None


def test_residuals_follow_the_frames(tmp_path: Path) -> None:
    words = {"A": [256 + 4, 4, 8, 12]}
    acquisition = read_c3d(tmp_path, {"A": trajectory(0)}, residuals=words, storage="integer")
    former = residuals_of(acquisition, "Markers", "A")
    _moxPY.moxSetFrameNumber(acquisition, 2)
    assert residuals_of(acquisition, "Markers", "A") == former[:2]
    _moxPY.moxSetFrameNumber(acquisition, 3)
    assert residuals_of(acquisition, "Markers", "A") == [*former[:2], -1.0]


@pytest.mark.parametrize(
    ("call", "written"),
    [
        (lambda trial: _moxPY.moxSetPointValues(trial, "LASI", trajectory(9)), {"LASI"}),
        (lambda trial: _moxPY.moxSetMarkersValues(trial, np.zeros((FRAMES, 6))), {"LASI", "RASI"}),
        (lambda trial: _moxPY.moxSetPointsValues(trial, np.zeros((FRAMES, 24))), set(POINTS)),
    ],
    ids=["one point", "one type", "all"],
)
def test_residuals_are_reset_where_values_are_set(
    tmp_path: Path, call: Callable[[Any], Any], written: set[str]
) -> None:
    acquisition = read_trial(tmp_path)
    call(acquisition)
    left = {
        label
        for group in POINT_GROUPS
        for label in group_node(acquisition, POINT_GROUPS[group])["sets"]
        if residuals_of(acquisition, group, label) is not None
    }
    assert left == set(POINTS) - written


def test_a_file_at_twice_its_rate_has_twice_the_frames_until_its_points_are_set(
    tmp_path: Path,
) -> None:
    acquisition = read_trial(tmp_path)
    _moxPY.moxSetFrequency(acquisition, 2 * RATE)
    assert frames_of(acquisition) == 2 * FRAMES
    assert _moxPY.moxGetPointsValues(acquisition).shape == (FRAMES, 3 * len(POINTS))
    former = np.zeros((FRAMES, 3 * len(POINTS)))
    assert failure_of(_moxPY.moxSetPointsValues, acquisition, former) == (
        RuntimeError, f"{ROWS}{FRAMES}",
    )  # fmt: skip
    matrix = np.arange(2.0 * FRAMES * 3 * len(POINTS)).reshape(2 * FRAMES, -1)
    _moxPY.moxSetPointsValues(acquisition, matrix)
    assert _moxPY.moxGetPointsValues(acquisition).tolist() == matrix.tolist()
    assert _moxPY.moxGetLastFrame(acquisition) == 2 * FRAMES - 1
    for group in POINT_GROUPS:
        read = getattr(_moxPY, f"moxGet{group}Values")(acquisition)
        assert len(read) == 2 * FRAMES
    _moxPY.moxSetAnalogsValues(acquisition, np.zeros((2 * SAMPLES, 3)))
    assert_agreement(acquisition)


def test_a_new_ratio_after_a_new_rate_fits_the_frames_that_the_rate_made(tmp_path: Path) -> None:
    acquisition = read_trial(tmp_path)
    _moxPY.moxSetFrequency(acquisition, 2 * RATE)
    new_ratio(acquisition, 3)
    append_analogs(acquisition, 1)
    _moxPY.moxSetPointsValues(acquisition, np.zeros((2 * FRAMES, 3 * len(POINTS))))
    path = str(tmp_path / "written.c3d")
    _moxPY.moxWriteAcquisition(acquisition, path)
    written = _moxPY.moxReadAcquisition(path)
    assert frames_of(written) == 2 * FRAMES
    assert _moxPY.moxGetAnalogFrameNumber(written) == 2 * FRAMES * 3
    assert_agreement(written)


def test_samples_of_channels_to_come_follow_also_where_no_point_has_to(tmp_path: Path) -> None:
    acquisition = read_trial(tmp_path)
    _moxPY.moxSetFrequency(acquisition, 2 * RATE)
    new_ratio(acquisition, 3)
    _moxPY.moxSetFrequency(acquisition, RATE)
    _moxPY.moxSetPointsValues(acquisition, np.zeros((FRAMES, 3 * len(POINTS))))
    assert _moxPY.moxGetAnalogFrameNumber(acquisition) == 3 * FRAMES
    assert_agreement(acquisition)


def test_a_new_acquisition_at_another_rate_keeps_its_frames(trial: Any) -> None:
    _moxPY.moxSetFrequency(trial, 2 * RATE)
    assert frames_of(trial) == FRAMES
    assert _moxPY.moxGetAnalogFrequency(trial) == 2 * RATE * RATIO
    assert_agreement(trial)


def test_without_channels_the_ratio_also_sets_the_rate_of_the_analogs(any_trial: Any) -> None:
    new_ratio(any_trial, 3)
    rate = _moxPY.moxGetPointFrequency(any_trial)
    assert _moxPY.moxGetAnalogFrequency(any_trial) == 3 * rate
    append_analogs(any_trial, 1)
    assert _moxPY.moxGetAnalog(any_trial, 0)[1]["frequency"] == 3 * rate


def test_parameters_of_the_file_follow_the_rate(tmp_path: Path) -> None:
    acquisition = read_trial(tmp_path)
    _moxPY.moxSetFrequency(acquisition, 50.0)
    for group, rate in (("POINT", 50.0), ("ANALOG", 50.0 * RATIO)):
        entry = _moxPY.moxGetMetaData(acquisition, group, "RATE")
        assert entry["info"]["values"] == rate
