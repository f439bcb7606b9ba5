"""Points and analog channels to come get the samples that belong to what is there."""

from __future__ import annotations

from collections.abc import Callable
from pathlib import Path
from typing import Any

import _moxPY
import numpy as np
import pytest
from support.agreement import assert_agreement
from support.small_trials import (
    ANALOGS,
    FRAMES,
    POINTS,
    RATE,
    RATIO,
    SAMPLES,
    example_trial,
    read_trial,
    read_without_analogs,
    read_without_points,
)
from support.store_tree import scalar

Change = Callable[[Any], Any]

COUNTS = (
    _moxPY.moxGetPointFrameNumber, _moxPY.moxGetAnalogFrameNumber,
    _moxPY.moxGetAnalogSampleNumberPerFrame,
)  # fmt: skip


def written_again(trial: Any, folder: Path) -> Any:
    path = str(folder / "written.c3d")
    _moxPY.moxWriteAcquisition(trial, path)
    return _moxPY.moxReadAcquisition(path)


def assert_what_the_file_gives(trial: Any, folder: Path) -> None:
    """Getters, checks and groups agree, and the written file has the same counts and values."""
    assert_agreement(trial)
    written = written_again(trial, folder)
    assert [count(written) for count in COUNTS] == [count(trial) for count in COUNTS]
    for values in (_moxPY.moxGetPointsValues, _moxPY.moxGetAnalogsValues):
        np.testing.assert_array_equal(values(written), values(trial))


def remove_all(kind: str, count: int) -> Change:
    def remove(trial: Any) -> None:
        for _ in range(count):
            getattr(_moxPY, f"moxRemove{kind}")(trial, 0)

    return remove


WITHOUT_ANALOGS: dict[str, Change] = {
    "cleared": _moxPY.moxClearAnalogs,
    "removed": remove_all("Analog", len(ANALOGS)),
}
WITHOUT_POINTS: dict[str, Change] = {
    "cleared": _moxPY.moxClearPoints,
    "removed": remove_all("Point", len(POINTS)),
}


def set_points(trial: Any, factor: float) -> None:
    _moxPY.moxSetPointsValues(trial, np.ones((int(factor * FRAMES), 3 * len(POINTS))))


def set_analogs(trial: Any, factor: float) -> None:
    channels = int(_moxPY.moxGetAnalogNumber(trial))
    _moxPY.moxSetAnalogsValues(trial, np.ones((int(factor * SAMPLES), channels)))


@pytest.fixture
def trial(tmp_path: Path) -> Any:
    return read_trial(tmp_path)


@pytest.mark.parametrize("factor", [0.5, 2.0])
@pytest.mark.parametrize("without", WITHOUT_ANALOGS.values(), ids=WITHOUT_ANALOGS)
def test_without_analogs_those_to_come_have_the_samples_of_the_frames(
    trial: Any, tmp_path: Path, without: Change, factor: float
) -> None:
    _moxPY.moxSetFrequency(trial, factor * RATE)
    set_points(trial, factor)
    without(trial)
    assert _moxPY.moxGetAnalogFrameNumber(trial) == factor * SAMPLES
    assert scalar(trial, "Format/Data/Analogs", "NumSamples") == factor * SAMPLES
    assert_what_the_file_gives(trial, tmp_path)
    _moxPY.moxAppendAnalog(trial, "new", np.ones((int(factor * SAMPLES), 1)))
    assert_what_the_file_gives(trial, tmp_path)


def test_one_of_several_channels_that_is_removed_changes_no_samples(trial: Any) -> None:
    _moxPY.moxSetFrequency(trial, 2 * RATE)
    set_points(trial, 2)
    _moxPY.moxRemoveAnalog(trial, 0)
    assert _moxPY.moxGetAnalogFrameNumber(trial) == SAMPLES


def test_the_example_takes_new_channels_at_half_its_rate(tmp_path: Path) -> None:
    trial = example_trial()
    points = _moxPY.moxGetPointsValues(trial)
    _moxPY.moxSetFrequency(trial, 50.0)
    _moxPY.moxSetPointsValues(trial, points[::2])
    _moxPY.moxClearAnalogs(trial)
    assert _moxPY.moxGetAnalogFrameNumber(trial) == 1800
    _moxPY.moxAppendAnalog(trial, "EMG", np.ones((1800, 1)))
    assert _moxPY.moxGetAnalogFrameNumber(written_again(trial, tmp_path)) == 1800


@pytest.mark.parametrize("factor", [0.5, 2.0])
@pytest.mark.parametrize("without", WITHOUT_POINTS.values(), ids=WITHOUT_POINTS)
@pytest.mark.parametrize("order", [1, -1], ids=["analogs first", "analogs last"])
def test_without_points_those_to_come_have_the_frames_of_the_analogs(
    trial: Any, tmp_path: Path, without: Change, factor: float, order: int
) -> None:
    _moxPY.moxSetFrequency(trial, factor * RATE)
    for change in [lambda trial: set_analogs(trial, factor), without][::order]:
        change(trial)
    assert _moxPY.moxGetPointFrameNumber(trial) == factor * FRAMES
    assert_what_the_file_gives(trial, tmp_path)
    _moxPY.moxAppendPoint(trial, "marker", "new", np.ones((int(factor * FRAMES), 3)))
    assert_what_the_file_gives(trial, tmp_path)


@pytest.mark.parametrize("factor", [0.5, 2.0])
def test_a_recording_of_analogs_alone_takes_another_rate(tmp_path: Path, factor: float) -> None:
    trial = read_without_points(tmp_path)
    _moxPY.moxSetFrequency(trial, factor * RATE)
    set_analogs(trial, factor)
    assert_what_the_file_gives(trial, tmp_path)
    assert _moxPY.moxGetAnalogFrameNumber(trial) == factor * SAMPLES


def test_values_of_no_points_leave_the_frames_of_the_analogs(tmp_path: Path) -> None:
    trial = read_without_points(tmp_path)
    _moxPY.moxSetFrequency(trial, 2 * RATE)
    _moxPY.moxSetPointsValues(trial, np.zeros((2 * FRAMES, 0)))
    values = _moxPY.moxGetAnalogsValues(trial)
    written = written_again(trial, tmp_path)
    np.testing.assert_array_equal(_moxPY.moxGetAnalogsValues(written), values)
    set_analogs(trial, 2)
    assert_what_the_file_gives(trial, tmp_path)


def test_points_that_go_leave_the_analogs_what_they_have(trial: Any, tmp_path: Path) -> None:
    values = _moxPY.moxGetAnalogsValues(trial)
    _moxPY.moxSetFrequency(trial, 0.5 * RATE)
    set_points(trial, 0.5)
    _moxPY.moxClearPoints(trial)
    written = written_again(trial, tmp_path)
    np.testing.assert_array_equal(_moxPY.moxGetAnalogsValues(written), values)


@pytest.mark.parametrize(
    "changes",
    [
        pytest.param(changes, id=", ".join(changes))
        for changes in [
            ("rate", "ratio", "points"), ("rate", "points", "ratio"), ("ratio", "rate", "points"),
            ("points", "rate", "ratio"), ("points", "ratio", "rate", "ratio"),
        ]
    ],
)  # fmt: skip
def test_without_any_channel_the_counts_are_those_of_the_file(
    tmp_path: Path, changes: tuple[str, ...]
) -> None:
    trial = read_without_analogs(tmp_path)
    steps: dict[str, Change] = {
        "rate": lambda trial: _moxPY.moxSetFrequency(trial, 1.25 * RATE),
        "ratio": lambda trial: _moxPY.moxSetAnalogSampleNumberPerFrame(trial, 3),
        "points": _moxPY.moxClearPoints,
    }
    for change in changes:
        steps[change](trial)
    assert _moxPY.moxGetPointFrameNumber(trial) == 5
    assert _moxPY.moxGetAnalogFrameNumber(trial) == 15
    assert_what_the_file_gives(trial, tmp_path)


def test_points_and_analogs_both_gone_leave_the_frames_of_the_rate(
    trial: Any, tmp_path: Path
) -> None:
    _moxPY.moxSetFrequency(trial, 2 * RATE)
    _moxPY.moxClearPoints(trial)
    _moxPY.moxClearAnalogs(trial)
    assert_what_the_file_gives(trial, tmp_path)
    assert _moxPY.moxGetAnalogFrameNumber(trial) == 2 * FRAMES * RATIO


def test_a_new_acquisition_keeps_its_counts_without_channels(tmp_path: Path) -> None:
    made = _moxPY.moxNewAcquisition(2, FRAMES, 2, RATIO)
    _moxPY.moxSetFrequency(made, RATE)
    _moxPY.moxClearPoints(made)
    _moxPY.moxSetFrequency(made, 2 * RATE)
    _moxPY.moxClearAnalogs(made)
    assert _moxPY.moxGetPointFrameNumber(made) == FRAMES
    assert _moxPY.moxGetAnalogFrameNumber(made) == SAMPLES
    assert_what_the_file_gives(made, tmp_path)
