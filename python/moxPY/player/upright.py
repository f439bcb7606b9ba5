"""Which way is up."""

from __future__ import annotations

import re
from typing import TYPE_CHECKING

import numpy as np

from ..trial.samples import FloatArray
from ..trial.up_axis import upwards

if TYPE_CHECKING:
    from ..trial import Trial

_AXES = "xyz"
_DIRECTION = re.compile(r"(?P<sign>[+-]?)(?P<axis>[xyz])")

# How near to 0 the lowest places come, as part of the height, where 0 is the floor; and how much
# of the largest extent a height is.
_NEAR, _HIGH = 0.1, 0.25


def up_direction(trial: Trial, up: str | None, places: FloatArray) -> list[float]:
    """The direction that points upwards in the laboratory.

    It is what the caller says; else the axis that force platforms are level along; else the one
    that the file wants upright on a screen; else the one along which everything stands on 0; else
    z.

    Parameters
    ----------
    up : str, optional
        "x", "y", "z", with a minus sign where it points downwards.
    places : ndarray, shape (n, 3)
        Where things are.

    Raises
    ------
    ValueError
        `up` is none of these.
    """
    if up is not None:
        return _direction(up)
    axis = upwards(trial)
    return _direction(_AXES[_standing(places) if axis is None else axis])


def _direction(text: str) -> list[float]:
    found = _DIRECTION.fullmatch(str(text).lower())
    if found is None:
        raise ValueError(f"up is 'x', 'y' or 'z', or one of them behind a '-', not {text!r}")
    axis, sign = found["axis"], -1.0 if found["sign"] == "-" else 1.0
    return [sign if axis == each else 0.0 for each in _AXES]


def _standing(places: FloatArray) -> int:
    if not len(places):
        return 2
    low, high = np.percentile(places, [1, 99], axis=0)
    extent = high - low
    for axis in (2, 1, 0):
        if abs(low[axis]) <= _NEAR * extent[axis] and extent[axis] >= _HIGH * extent.max():
            return axis
    return 2
