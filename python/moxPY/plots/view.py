"""How a body is looked at: which way is up, and which way it walks."""

from __future__ import annotations

from typing import TYPE_CHECKING

import numpy as np

from ..trial.samples import FloatArray
from ..trial.up_axis import up_axis

if TYPE_CHECKING:
    from ..trial import Trial

# A shift of the body by less than this part of its height is no walk.
_WALK = 0.3


def vertical_axis(trial: Trial, values: FloatArray) -> int:
    """The axis that points upwards: as the force platforms tell it, else the one along which the
    markers of a frame are farthest apart; z where nobody can tell.

    Parameters
    ----------
    values : ndarray
        Shape (frames, markers, 3), NaN where not seen.
    """
    told = up_axis(trial)
    if told is not None:
        return told
    extents = _extents(values)
    return int(np.nanargmax(extents)) if np.isfinite(extents).any() else 2


def walking_direction(values: FloatArray, up: int) -> FloatArray:
    """The unit vector on the floor along which the body went, or else along which it is widest."""
    floor = [axis for axis in range(3) if axis != up]
    direction = np.zeros(3)
    middles = _mean(values)
    seen = middles[np.isfinite(middles).all(axis=1)]
    extents = _extents(values)
    if len(seen) > 1:
        way = seen[-1] - seen[0]
        length = float(np.linalg.norm(way[floor]))
        if length > _WALK * np.nan_to_num(extents[up]) and length > 0.0:
            direction[floor] = way[floor] / length
            return direction
    widest = max(floor, key=lambda axis: np.nan_to_num(extents[axis]))
    direction[widest] = 1.0
    return direction


def _extents(values: FloatArray) -> FloatArray:
    """How far markers of one frame are apart along each axis, in the median frame."""
    seen = values[np.isfinite(values).all(axis=2).sum(axis=1) > 1]
    if not len(seen):
        return np.full(3, np.nan)
    extents: FloatArray = np.median(np.nanmax(seen, axis=1) - np.nanmin(seen, axis=1), axis=0)
    return extents


def _mean(values: FloatArray) -> FloatArray:
    """The middle of the markers of each frame; NaN where none is seen."""
    seen = np.isfinite(values).all(axis=2)
    count = seen.sum(axis=1)[:, np.newaxis]
    total = np.where(seen[:, :, np.newaxis], values, 0.0).sum(axis=1)
    return np.where(count > 0, total / np.maximum(count, 1), np.nan)
