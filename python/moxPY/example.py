"""The example trial, which comes with the package."""

from __future__ import annotations

from pathlib import Path


def example() -> Path:
    """The path of the example trial, to try things with.

    It is a walk of a person who never was, made by code: 360 frames at 100 Hz, 40 markers, angles,
    forces, moments and powers of both legs, two force platforms, EMG and foot events.

    Examples
    --------
    >>> import moxPY
    >>> moxPY.read(moxPY.example()).duration
    3.6
    """
    return Path(__file__).with_name("gait_trial.c3d")
