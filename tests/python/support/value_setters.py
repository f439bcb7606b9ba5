"""Every function that takes a matrix of values, with what reads the values back."""

from __future__ import annotations

from collections.abc import Callable
from dataclasses import dataclass
from typing import Any

import _moxPY
import numpy as np
from numpy.typing import NDArray

from support.small_trials import ANALOGS, FRAMES, POINTS, SAMPLES, labels_of_type


@dataclass(frozen=True)
class Setter:
    """Writes a rows × columns matrix into a trial; `read` gives the same cells."""

    id: str
    rows: int
    columns: int
    multiplier: int  # as the message about columns names it
    write: Callable[[Any, Any], Any]
    read: Callable[[Any], NDArray[np.float64]]

    def __str__(self) -> str:
        return self.id

    def matrix(self) -> NDArray[np.float64]:
        """New values, in which every cell differs; exact as singles."""
        cells = np.arange(float(self.rows * self.columns))
        return -0.5 - cells.reshape(self.rows, self.columns) / 8


def _of_group(setter: str, group: str, word: str) -> Setter:
    return Setter(
        setter,
        FRAMES,
        3 * len(labels_of_type(word)),
        3,
        getattr(_moxPY, setter),
        getattr(_moxPY, f"moxGet{group}Values"),
    )


def _one_point(point: int | str) -> Setter:
    return Setter(
        f"moxSetPointValues {point}",
        FRAMES,
        3,
        3,
        lambda trial, matrix: _moxPY.moxSetPointValues(trial, point, matrix),
        lambda trial: _moxPY.moxGetPoint(trial, point)[0],
    )


def _one_analog(channel: int | str) -> Setter:
    return Setter(
        f"moxSetAnalogValues {channel}",
        SAMPLES,
        1,
        1,
        lambda trial, matrix: _moxPY.moxSetAnalogValues(trial, channel, matrix),
        lambda trial: _moxPY.moxGetAnalog(trial, channel)[0].reshape(-1, 1),
    )


SETTERS = [
    _of_group("moxSetMarkersValues", "Markers", "marker"),
    _of_group("moxSetAnglesValues", "Markers", "marker"),  # writes the markers
    _of_group("moxSetForcesValues", "Forces", "force"),
    _of_group("moxSetMomentsValues", "Moments", "moment"),
    _of_group("moxSetPowersValues", "Powers", "power"),
    Setter("moxSetPointsValues", FRAMES, 3 * len(POINTS), 3,
           _moxPY.moxSetPointsValues, _moxPY.moxGetPointsValues),
    _one_point(4),
    _one_point("LKneeAngle"),
    Setter("moxSetAnalogsValues", SAMPLES, len(ANALOGS), 1,
           _moxPY.moxSetAnalogsValues, _moxPY.moxGetAnalogsValues),
    _one_analog(1),
    _one_analog("Fz1"),
]  # fmt: skip

APPENDERS = [
    Setter("moxAppendPoint", FRAMES, 3, 3,
           lambda trial, matrix: _moxPY.moxAppendPoint(trial, "force", "NEW", matrix),
           lambda trial: _moxPY.moxGetPoint(trial, "NEW")[0]),
    Setter("moxAppendAnalog", SAMPLES, 1, 1,
           lambda trial, matrix: _moxPY.moxAppendAnalog(trial, "NEW", matrix),
           lambda trial: _moxPY.moxGetAnalog(trial, "NEW")[0].reshape(-1, 1)),
]  # fmt: skip

MATRIX_TAKERS = SETTERS + APPENDERS
