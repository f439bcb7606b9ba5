"""Points and analog channels of a file at another rate, each with values of its own."""

from __future__ import annotations

from pathlib import Path
from typing import Any

import _moxPY
import numpy as np
import pytest
from support.agreement import assert_agreement
from support.failures import failure_of
from support.memory import address_space, limited, under_a_sanitizer
from support.read_c3d import read_c3d
from support.readings import ANALOG_GROUP, POINT_GROUPS, group_node
from support.small_trials import (
    ANALOGS,
    FRAMES,
    POINTS,
    RATE,
    RATIO,
    SAMPLES,
    new_trial,
    read_trial,
    read_without_analogs,
    trajectory,
)
from support.store_tree import scalar, snapshot

ROWS = (
    "Given matrix should have row number equals to the number of frames in the acquisition , "
    "current has : "
)
FACTORS = [0.5, 2.0]


def points_of(factor: float) -> Any:
    frames = int(FRAMES * factor)
    return np.arange(frames * 3.0 * len(POINTS)).reshape(frames, -1) / 4


def analogs_of(factor: float) -> Any:
    samples = int(SAMPLES * factor)
    return np.arange(samples * float(len(ANALOGS))).reshape(samples, -1) / 4


@pytest.fixture
def trial(tmp_path: Path) -> Any:
    return read_trial(tmp_path)


@pytest.mark.parametrize("factor", FACTORS)
def test_setting_all_points_leaves_analog_samples_alone(trial: Any, factor: float) -> None:
    before = group_node(trial, ANALOG_GROUP)["sets"]
    samples = _moxPY.moxGetAnalogsValues(trial)
    _moxPY.moxSetFrequency(trial, factor * RATE)
    _moxPY.moxSetPointsValues(trial, points_of(factor))
    assert _moxPY.moxGetPointsValues(trial).tolist() == points_of(factor).tolist()
    assert _moxPY.moxGetAnalogFrameNumber(trial) == SAMPLES
    assert _moxPY.moxGetAnalogsValues(trial).tolist() == samples.tolist()
    assert list(group_node(trial, ANALOG_GROUP)["sets"]) == list(before)
    assert scalar(trial, "Format/Data/Analogs", "NumSamples") == SAMPLES


@pytest.mark.parametrize("factor", FACTORS)
@pytest.mark.parametrize("order", [1, -1], ids=["points first", "analogs first"])
def test_points_and_analogs_take_the_values_of_the_new_rate(
    trial: Any, factor: float, order: int
) -> None:
    _moxPY.moxSetFrequency(trial, factor * RATE)
    steps = [("moxSetPointsValues", points_of), ("moxSetAnalogsValues", analogs_of)]
    for setter, values in steps[::order]:
        assert getattr(_moxPY, setter)(trial, values(factor)) is None
    assert _moxPY.moxGetPointsValues(trial).tolist() == points_of(factor).tolist()
    assert _moxPY.moxGetAnalogsValues(trial).tolist() == analogs_of(factor).tolist()
    assert _moxPY.moxGetAnalogFrameNumber(trial) == SAMPLES * factor
    assert scalar(trial, "Format/Data/Analogs", "NumSamples") == SAMPLES * factor
    assert_agreement(trial)


@pytest.mark.parametrize("factor", FACTORS)
def test_a_resampled_trial_is_what_its_file_holds(
    trial: Any, factor: float, tmp_path: Path
) -> None:
    times = {name: np.ravel(each).tolist() for name, each in _moxPY.moxGetEvents(trial)[0].items()}
    _moxPY.moxSetFrequency(trial, factor * RATE)
    _moxPY.moxSetPointsValues(trial, points_of(factor))
    _moxPY.moxSetAnalogsValues(trial, analogs_of(factor))
    path = str(tmp_path / "written.c3d")
    _moxPY.moxWriteAcquisition(trial, path)
    written = _moxPY.moxReadAcquisition(path)
    assert _moxPY.moxGetPointFrequency(written) == factor * RATE
    assert _moxPY.moxGetAnalogFrequency(written) == factor * RATE * RATIO
    assert _moxPY.moxGetPointsValues(written).tolist() == points_of(factor).tolist()
    assert _moxPY.moxGetAnalogsValues(written).tolist() == analogs_of(factor).tolist()
    again = {
        name: np.ravel(each).tolist() for name, each in _moxPY.moxGetEvents(written)[0].items()
    }
    assert again == times
    assert_agreement(written)


def test_analogs_still_take_as_many_samples_as_they_have(trial: Any) -> None:
    _moxPY.moxSetFrequency(trial, 2 * RATE)
    _moxPY.moxSetAnalogsValues(trial, -analogs_of(1))
    assert _moxPY.moxGetAnalogsValues(trial).tolist() == (-analogs_of(1)).tolist()


def test_analogs_can_go_back_with_the_rate(trial: Any) -> None:
    _moxPY.moxSetFrequency(trial, 2 * RATE)
    _moxPY.moxSetAnalogsValues(trial, analogs_of(2))
    _moxPY.moxSetFrequency(trial, RATE)
    _moxPY.moxSetAnalogsValues(trial, analogs_of(1))
    assert _moxPY.moxGetAnalogsValues(trial).tolist() == analogs_of(1).tolist()
    assert_agreement(trial)


@pytest.mark.parametrize("rows", [0, 1, SAMPLES - 1, 2 * SAMPLES - 1, 3 * SAMPLES, 2 * FRAMES + 1])
def test_other_numbers_of_samples_are_refused(trial: Any, rows: int) -> None:
    _moxPY.moxSetFrequency(trial, 2 * RATE)
    before = snapshot(trial)
    matrix = np.zeros((rows, len(ANALOGS)))
    failure = failure_of(_moxPY.moxSetAnalogsValues, trial, matrix)
    assert failure == (RuntimeError, f"{ROWS}{rows}")
    assert snapshot(trial) == before


def test_columns_are_checked_before_samples_are_made(trial: Any) -> None:
    _moxPY.moxSetFrequency(trial, 2 * RATE)
    before = snapshot(trial)
    text = (
        "Given matrix should have column number equals to the number of extracted points "
        "multiplied by 1, current has : 1"
    )
    matrix = np.zeros((2 * SAMPLES, 1))
    assert failure_of(_moxPY.moxSetAnalogsValues, trial, matrix) == (RuntimeError, text)
    assert snapshot(trial) == before


def test_one_channel_keeps_the_samples_of_all(trial: Any) -> None:
    _moxPY.moxSetFrequency(trial, 2 * RATE)
    before = snapshot(trial)
    matrix = np.zeros((2 * SAMPLES, 1))
    failure = failure_of(_moxPY.moxSetAnalogValues, trial, 0, matrix)
    assert failure == (RuntimeError, f"{ROWS}{2 * SAMPLES}")
    assert snapshot(trial) == before
    _moxPY.moxSetAnalogsValues(trial, analogs_of(2))
    assert _moxPY.moxSetAnalogValues(trial, 0, matrix) is None


def test_a_new_acquisition_takes_its_own_number_of_samples_only() -> None:
    made = new_trial()
    _moxPY.moxSetFrequency(made, 2 * RATE)
    failure = failure_of(_moxPY.moxSetAnalogsValues, made, analogs_of(2))
    assert failure == (RuntimeError, f"{ROWS}{2 * SAMPLES}")


def test_channels_that_are_still_to_come_get_the_samples_of_the_frames(tmp_path: Path) -> None:
    trial = read_without_analogs(tmp_path)
    _moxPY.moxSetFrequency(trial, 2 * RATE)
    _moxPY.moxSetPointsValues(trial, np.zeros((2 * FRAMES, 6)))
    ratio = int(_moxPY.moxGetAnalogSampleNumberPerFrame(trial))
    assert _moxPY.moxGetAnalogFrameNumber(trial) == 2 * FRAMES * ratio
    assert scalar(trial, "Format/Data/Analogs", "NumSamples") == 2 * FRAMES * ratio
    assert_agreement(trial)


@pytest.mark.parametrize("factor", FACTORS)
def test_no_residual_of_the_former_frames_is_left(tmp_path: Path, factor: float) -> None:
    words = {"A": [256 + 4, 4, 8, 12]}
    trial = read_c3d(tmp_path, {"A": trajectory(0)}, residuals=words, storage="integer")
    rate = _moxPY.moxGetPointFrequency(trial)
    _moxPY.moxSetFrequency(trial, factor * rate)
    _moxPY.moxSetPointsValues(trial, np.zeros((int(FRAMES * factor), 3)))
    assert "Residuals" not in group_node(trial, POINT_GROUPS["Markers"])["sets"]["A"]["attributes"]


@limited
@pytest.mark.skipif(under_a_sanitizer(), reason="the sanitizer's memory")
def test_samples_beyond_memory_leave_everything(trial: Any) -> None:
    factor = 2**18
    _moxPY.moxSetFrequency(trial, factor * RATE)
    before = snapshot(trial)
    matrix = np.zeros((SAMPLES * factor, len(ANALOGS)))
    with address_space(16 << 20):
        raised, _ = failure_of(_moxPY.moxSetAnalogsValues, trial, matrix)
    assert raised is MemoryError
    assert snapshot(trial) == before
