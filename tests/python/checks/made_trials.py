"""Trials in which all is well, to put a fault into."""

from __future__ import annotations

from pathlib import Path

import numpy as np
from devices.plates import Load, Plate, loaded_plate
from moxPY.checks import Finding
from moxPY.trial import Trial
from numpy.typing import NDArray
from support.small_trials import example_trial

Array = NDArray[np.float64]

FIRST, LAST = 13, 350


def clean_trial() -> Trial:
    """A walk over two platforms in which no marker is ever lost: frames 13 to 350, at 100 Hz."""
    return Trial.of(example_trial()).fill_gaps(longest=30).crop(FIRST, LAST)


def put(trial: Trial, label: str, first: int, values: object, last: int | None = None) -> None:
    """Give a marker other places in some frames, by their numbers, both ends included."""
    places = trial.markers[label].values.copy()
    start = first - trial.first_frame
    places[start : (first if last is None else last) - trial.first_frame + 1] = values
    trial.markers[label] = places


def places(trial: Trial, label: str, first: int, last: int) -> Array:
    """Where a marker was in some frames."""
    start = trial.first_frame
    values: Array = trial.markers[label].values[first - start : last - start + 1]
    return values


def the_one(findings: list[Finding]) -> Finding:
    """The finding, where there is exactly one."""
    assert len(findings) == 1, findings
    return findings[0]


def steps(samples: int, seed: int = 3) -> Load:
    """Somebody with 800 N on a platform, in its middle, for the second half of the time; before it
    noise of 1 N."""
    random = np.random.default_rng(seed)
    force = random.normal(0.0, 1.0, (samples, 3))
    load = np.clip((np.arange(samples) - samples / 2) * 40.0, 0.0, 800.0)
    force[:, 2] += load * (1.0 + 0.05 * np.sin(np.arange(samples) / 9.0))
    return Load(force, np.zeros((samples, 3)), np.zeros(samples))


def standing(folder: Path, load: Load, plate: Plate | None = None) -> Trial:
    """A trial with one platform, at 1000 samples a second, and what stands on it."""
    trial = Trial.of(loaded_plate(folder, plate or Plate(), load))
    del trial.analogs["EMG"]
    trial.rate = 1000.0 / trial.samples_per_frame
    return trial
