"""The trials that the tests of this folder export."""

from __future__ import annotations

from collections.abc import Callable
from pathlib import Path
from typing import Any

import numpy as np
import pytest
from moxPY.trial import Trial
from support.small_trials import example_trial, new_trial, read_trial


def odd_trial() -> Trial:
    """Labels and numbers that not every format likes, from frame 31 on."""
    trial = Trial.new(frames=3, rate=30.0, samples_per_frame=2)
    trial.first_frame = 31
    values = np.array([[0.1, np.nan, 1e-7], [np.nan] * 3, [1 / 3, 1e22, -0.0]])
    for label in ('a,"b"', "Gürtel", "L/R Ζ µ", "=1+1", "time"):
        trial.markers[label] = values
    trial.markers["one"] = values + 1.0
    trial.markers["one"].label = "time"  # a label that two channels have
    trial.analogs["time"] = np.arange(6) / 3
    trial.events.add("Foot, é", 1.1)
    return trial


def one_frame() -> Trial:
    trial = Trial.new(frames=1)
    trial.markers["A"] = [[1.0, np.nan, 3.0]]
    return trial


def no_frames() -> Trial:
    trial = Trial.new(frames=0)
    trial.markers["A"] = np.empty((0, 3))
    return trial


MADE: dict[str, Callable[[Path], Any]] = {
    "new": lambda _: new_trial(),
    "read": read_trial,
    "example": lambda _: example_trial(),
    "odd": lambda _: odd_trial(),
    "one frame": lambda _: one_frame(),
    "no frames": lambda _: no_frames(),
}


@pytest.fixture(params=MADE)
def any_trial(request: pytest.FixtureRequest, tmp_path: Path) -> Trial:
    """Rich and poor trials."""
    return Trial.of(MADE[request.param](tmp_path))


@pytest.fixture
def walk() -> Trial:
    """The gait trial that comes with the project."""
    return Trial.of(example_trial())


@pytest.fixture
def odd() -> Trial:
    """The trial with odd labels."""
    return odd_trial()
