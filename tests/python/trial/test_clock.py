"""Rate, frames and instants of trials."""

from __future__ import annotations

from collections.abc import Callable
from pathlib import Path

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
    with pytest.raises(ValueError, match="numbered from 1"):
        trial.first_frame = 0
    assert trial.first_frame == 1
