"""Assigning a rate changes what a frame lasts, and nothing else."""

from __future__ import annotations

from typing import Any

import numpy as np
import pytest
from moxPY.trial import Trial


@pytest.mark.parametrize("rate", [50.0, 120.0, 200.0])
def test_another_rate_keeps_frames_and_samples(any_trial: Any, rate: float) -> None:
    trial = Trial.of(any_trial)
    trial.rate = 100.0
    trial.first_frame = 11
    frames, ratio = trial.frames, trial.samples_per_frame
    points, analogs = trial.points.values, trial.analogs.values
    events = list(trial.events)
    trial.rate = rate
    assert (trial.rate, trial.frames, trial.samples_per_frame) == (rate, frames, ratio)
    assert (trial.first_frame, trial.last_frame) == (11, 10 + frames)
    assert trial.analogs.rate == rate * ratio
    np.testing.assert_array_equal(trial.points.values, points, strict=True)
    np.testing.assert_array_equal(trial.analogs.values, analogs, strict=True)
    np.testing.assert_allclose(trial.time, (10 + np.arange(frames)) / rate)
    assert trial.duration == frames / rate
    assert trial.events == events


def test_a_rate_that_is_refused_changes_nothing(any_trial: Any) -> None:
    trial = Trial.of(any_trial)
    before = trial.rate, trial.frames, trial.first_frame
    for rate in (-1.0, np.nan, np.inf):
        with pytest.raises(ValueError, match="frames a second"):
            trial.rate = rate
    assert (trial.rate, trial.frames, trial.first_frame) == before
