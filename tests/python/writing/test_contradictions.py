"""Points and analog channels that contradict each other are not written, and no sample is lost."""

from __future__ import annotations

from collections.abc import Callable
from pathlib import Path
from typing import Any

import _moxPY
import numpy as np
import pytest
from support.c3d_bytes import Analog, c3d_bytes
from support.failures import failure_of
from support.read_c3d import read_bytes
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
)
from support.store_tree import snapshot
from writing.written import files_in

write = _moxPY.moxWriteAcquisition


def refused(frames: int, wanted: int, samples: int, count: int) -> tuple[type[Exception], str]:
    return RuntimeError, (
        f"Export to c3d failed : the points have {frames} frames, to which {wanted} analog samples "
        f"belong, but the analog channels have {samples}. moxSetPointsValues and "
        f"moxSetAnalogsValues take the values of {count} frames; moxSetFrameNumber cuts or "
        "lengthens what is there"
    )


@pytest.fixture
def trial(tmp_path_factory: pytest.TempPathFactory) -> Any:
    return read_trial(tmp_path_factory.mktemp("source"))


def set_points(trial: Any, frames: int) -> None:
    _moxPY.moxSetPointsValues(trial, np.ones((frames, 3 * len(POINTS))))


def set_analogs(trial: Any, samples: int) -> None:
    _moxPY.moxSetAnalogsValues(trial, np.ones((samples, len(ANALOGS))))


def append_for_frames_to_come(trial: Any) -> None:
    """A channel for the frames of another rate, which the points do not have yet."""
    _moxPY.moxSetFrequency(trial, 2 * RATE)
    _moxPY.moxClearAnalogs(trial)
    _moxPY.moxSetAnalogSampleNumberPerFrame(trial, 3)
    _moxPY.moxAppendAnalog(trial, "A", np.ones((2 * FRAMES * 3, 1)))


@pytest.mark.parametrize("factor", [0.5, 2.0])
def test_points_of_another_rate_than_the_analogs(trial: Any, tmp_path: Path, factor: float) -> None:
    frames = int(factor * FRAMES)
    _moxPY.moxSetFrequency(trial, factor * RATE)
    set_points(trial, frames)
    failure = failure_of(write, trial, str(tmp_path / "a.c3d"))
    assert failure == refused(frames, frames * RATIO, SAMPLES, frames)
    assert files_in(tmp_path) == []


@pytest.mark.parametrize("factor", [0.5, 2.0])
def test_analogs_of_another_rate_than_the_points(trial: Any, tmp_path: Path, factor: float) -> None:
    frames = int(factor * FRAMES)
    _moxPY.moxSetFrequency(trial, factor * RATE)
    set_analogs(trial, frames * RATIO)
    failure = failure_of(write, trial, str(tmp_path / "a.c3d"))
    assert failure == refused(FRAMES, SAMPLES, frames * RATIO, frames)
    assert files_in(tmp_path) == []


def test_channels_that_were_appended_for_frames_to_come(trial: Any, tmp_path: Path) -> None:
    append_for_frames_to_come(trial)
    failure = failure_of(write, trial, str(tmp_path / "a.c3d"))
    assert failure == refused(FRAMES, 3 * FRAMES, 6 * FRAMES, 2 * FRAMES)
    assert files_in(tmp_path) == []


def test_a_refused_trial_and_the_old_file_stay_as_they_were(trial: Any, tmp_path: Path) -> None:
    append_for_frames_to_come(trial)
    before = snapshot(trial)
    (tmp_path / "a.c3d").write_bytes(b"old")
    failure = failure_of(write, trial, str(tmp_path / "a.c3d"))
    assert failure == refused(FRAMES, 3 * FRAMES, 6 * FRAMES, 2 * FRAMES)
    assert snapshot(trial) == before
    assert files_in(tmp_path) == ["a.c3d"]
    assert (tmp_path / "a.c3d").read_bytes() == b"old"


def test_force_platforms_of_a_refused_trial_are_not_brought_up_to_date(tmp_path: Path) -> None:
    trial = example_trial()
    points = _moxPY.moxGetPointsValues(trial)
    _moxPY.moxSetFrequency(trial, _moxPY.moxGetPointFrequency(trial) / 2)
    _moxPY.moxSetPointsValues(trial, points[::2])
    before = snapshot(trial)
    failure = failure_of(write, trial, str(tmp_path / "a.c3d"))
    assert failure == refused(180, 1800, 3600, 180)
    assert snapshot(trial) == before
    assert files_in(tmp_path) == []


MENDS: dict[str, Callable[[Any], Any]] = {
    "points": lambda trial: set_points(trial, 2 * FRAMES),
    "frames": lambda trial: _moxPY.moxSetFrameNumber(trial, 2 * FRAMES),
    "other frames": lambda trial: _moxPY.moxSetFrameNumber(trial, 3),
    "without the channels": _moxPY.moxClearAnalogs,
}


@pytest.mark.parametrize("mend", MENDS)
def test_what_mends_it(trial: Any, tmp_path: Path, mend: str) -> None:
    _moxPY.moxSetFrequency(trial, 2 * RATE)
    set_analogs(trial, 2 * SAMPLES)
    path = str(tmp_path / "a.c3d")
    assert failure_of(write, trial, path)[0] is RuntimeError
    MENDS[mend](trial)
    assert write(trial, path) is None
    written = _moxPY.moxReadAcquisition(path)
    for values in (_moxPY.moxGetPointsValues, _moxPY.moxGetAnalogsValues):
        np.testing.assert_array_equal(values(written), values(trial))


def test_points_alone_contradict_nothing(tmp_path: Path) -> None:
    trial = read_without_analogs(tmp_path)
    _moxPY.moxSetFrequency(trial, 2 * RATE)
    _moxPY.moxSetPointsValues(trial, np.ones((2 * FRAMES, 6)))
    assert write(trial, str(tmp_path / "a.c3d")) is None


def test_rotations_without_points_still_contradict_the_analogs(tmp_path: Path) -> None:
    rotations = np.arange(FRAMES * 17.0).reshape(FRAMES, 17)
    rotations[:, 16] = 0.0  # reliability
    analogs = [Analog("E1", np.arange(float(SAMPLES)))]
    content = c3d_bytes(analogs=analogs, samples_per_frame=RATIO, rotations={"S": rotations})
    trial = read_bytes(tmp_path, content, "source.c3d")
    frames, samples = 2 * FRAMES, np.ones((2 * SAMPLES, 1))
    _moxPY.moxSetFrequency(trial, 2 * _moxPY.moxGetPointFrequency(trial))
    _moxPY.moxSetAnalogsValues(trial, samples)
    _moxPY.moxClearPoints(trial)
    failure = failure_of(write, trial, str(tmp_path / "a.c3d"))
    assert failure == (
        RuntimeError,
        f"Export to c3d failed : the rotations have {FRAMES} frames, to which {SAMPLES} analog "
        f"samples belong, but the analog channels have {2 * SAMPLES}. moxSetFrameNumber cuts or "
        "lengthens both",
    )
    assert files_in(tmp_path) == ["source.c3d"]
    _moxPY.moxSetFrameNumber(trial, frames)
    assert write(trial, str(tmp_path / "a.c3d")) is None
    written = _moxPY.moxReadAcquisition(str(tmp_path / "a.c3d"))
    assert _moxPY.moxGetAnalogsValues(written).tolist() == samples.tolist()
    assert _moxPY.moxGetRotation(written, "S")[0].shape == (frames, 4, 4)


def test_what_agrees_again_is_written(trial: Any, tmp_path: Path) -> None:
    append_for_frames_to_come(trial)
    set_points(trial, 2 * FRAMES)
    path = str(tmp_path / "a.c3d")
    assert write(trial, path) is None
    analogs = _moxPY.moxGetAnalogsValues(_moxPY.moxReadAcquisition(path))
    assert analogs.tolist() == [[1.0]] * (6 * FRAMES)


def test_another_extension_and_a_missing_rate_are_reported_first(
    trial: Any, tmp_path: Path
) -> None:
    append_for_frames_to_come(trial)
    text = "The only supported export format is c3d."
    assert failure_of(write, trial, str(tmp_path / "a.txt")) == (RuntimeError, text)
    _moxPY.moxSetFrequency(trial, 0.0)
    text = "Frequency is not set, impossible to export to c3d"
    assert failure_of(write, trial, str(tmp_path / "a.c3d")) == (RuntimeError, text)
