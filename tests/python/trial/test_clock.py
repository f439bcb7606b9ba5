"""Rate, frames and instants of trials."""

from __future__ import annotations

from collections.abc import Callable
from pathlib import Path
from typing import Any

import moxPY as mox
import numpy as np
import pytest

SAMPLES = ["2198928.c3d", "Eb015pi.c3d", "gait-pig.c3d"]


@pytest.mark.parametrize("name", SAMPLES)
def test_another_rate_changes_what_a_frame_lasts_and_nothing_else(
    name: str, sample: Callable[[str], Path], tmp_path: Path
) -> None:
    trial = mox.read(sample(name), odd="ignore")
    before = trial.copy()
    trial.rate = before.rate * 1.25
    assert trial.frames == before.frames
    assert trial.first_frame == before.first_frame
    assert trial.time == pytest.approx(before.time / 1.25)
    assert trial.analogs.rate == pytest.approx(before.analogs.rate * 1.25)
    assert list(trial.events) == list(before.events)
    trial.write(tmp_path / "written.c3d")
    for each in trial, mox.read(tmp_path / "written.c3d", odd="ignore"):
        assert each.frames == before.frames
        np.testing.assert_allclose(each.points.values, before.points.values, rtol=1e-6)
        np.testing.assert_allclose(each.analogs.values, before.analogs.values, rtol=1e-6, atol=1e-6)


@pytest.mark.parametrize("rate", [0.0, -1.0, np.nan, np.inf])
def test_a_rate_that_is_none_is_refused(rate: float) -> None:
    trial = mox.Trial.new(frames=3, rate=50.0)
    with pytest.raises(ValueError, match="frames a second"):
        trial.rate = rate
    assert trial.rate == 50.0


def test_frame_one_is_instant_zero() -> None:
    trial = mox.Trial.new(frames=4, rate=50.0, samples_per_frame=2)
    trial.events.add("Turn", 0.04)
    assert trial.time.tolist() == [0.0, 0.02, 0.04, 0.06]
    trial.first_frame = 11
    assert (trial.first_frame, trial.last_frame) == (11, 14)
    assert trial.time == pytest.approx([0.2, 0.22, 0.24, 0.26])
    assert trial.analogs.time[:3] == pytest.approx([0.2, 0.21, 0.22])
    assert trial.events.times() == pytest.approx([0.24])
    assert trial.duration == pytest.approx(0.08)


def test_frames_begin_with_one() -> None:
    trial = mox.Trial.new(frames=4, rate=50.0)
    with pytest.raises(ValueError, match="the number of the first frame is 1 or more, not 0"):
        trial.first_frame = 0
    assert trial.first_frame == 1


def test_numbers_of_numpy_are_numbers() -> None:
    trial = mox.Trial.new(np.int64(6), np.float32(50.0), np.uint8(2))
    assert (trial.frames, trial.rate, trial.samples_per_frame) == (6, 50.0, 2)
    trial.rate = np.float32(25.0)
    trial.first_frame = np.int16(3)
    assert (trial.rate, trial.first_frame, trial.frames) == (25.0, 3, 6)


@pytest.mark.parametrize(
    ("arguments", "error", "message"),
    [
        ({"frames": -1}, ValueError, "the number of frames is 0 or more, not -1"),
        ({"frames": 2**31}, ValueError, "the number of frames is at most 2147483647, not 214748"),
        ({"frames": 1.5}, TypeError, "the number of frames is an int, not float"),
        ({"frames": "many"}, TypeError, "the number of frames is an int, not str"),
        ({"rate": -5.0}, ValueError, "a rate is 0 or a positive number, not -5.0"),
        ({"rate": np.nan}, ValueError, "a rate is 0 or a positive number, not nan"),
        ({"rate": "fast"}, TypeError, "a rate is a number, not str"),
        ({"samples_per_frame": 0}, ValueError, "the number of samples in a frame is 1 or more"),
        ({"samples_per_frame": None}, TypeError, "the number of samples in a frame is an int"),
    ],
)
def test_a_new_trial_says_what_it_cannot_have(
    arguments: dict[str, Any], error: type[Exception], message: str
) -> None:
    with pytest.raises(error, match=f"^{message}"):
        mox.Trial.new(**arguments)


@pytest.mark.parametrize(
    ("name", "value", "message"),
    [
        ("rate", "fast", "a rate is a number, not str"),
        ("rate", None, "a rate is a number, not NoneType"),
        ("first_frame", 1.5, "the number of the first frame is an int, not float"),
        ("first_frame", "one", "the number of the first frame is an int, not str"),
    ],
)
def test_a_clock_takes_numbers(name: str, value: Any, message: str) -> None:
    trial = mox.Trial.new(frames=3, rate=50.0)
    with pytest.raises(TypeError, match=f"^{message}$"):
        setattr(trial, name, value)
    assert (trial.rate, trial.first_frame) == (50.0, 1)


def test_without_a_rate_nobody_knows_when(recwarn: pytest.WarningsRecorder) -> None:
    trial = mox.Trial.new(frames=3, rate=0.0, samples_per_frame=2)
    trial.analogs["EMG1"] = np.zeros(6)
    for time, count in (
        (trial.time, 3),
        (trial.analogs.time, 6),
        (trial.analogs["EMG1"].time, 6),
        (trial.rotations.time, 0),
    ):
        np.testing.assert_array_equal(time, np.full(count, np.nan), strict=True)
        assert not time.flags.writeable
    assert np.isnan(trial.duration)
    assert not recwarn.list


def test_without_a_rate_there_are_no_cycles() -> None:
    trial = mox.Trial.new(frames=3, rate=0.0)
    trial.markers["A"] = np.zeros((3, 3))
    with pytest.raises(ValueError, match=r"^a trial without a rate has no seconds"):
        trial.markers["A"].normalize([(0.0, 1.0)])
