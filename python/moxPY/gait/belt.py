"""Walking on a treadmill, where feet come back to where they were."""

from __future__ import annotations

from collections.abc import Iterable

import numpy as np

from ..trial.samples import FloatArray
from .feet import Feet, PlacesUnknown
from .stride import Stride

# How much of the way that a foot was away from its place it is away at the end of a stride: all of
# it on the ground, where a foot stands until it goes on, and next to nothing on a belt.
_PROGRESS = 0.5


def is_on_belt(strides: Iterable[Stride], feet: Feet) -> bool:
    """Whether the feet come back to where they were, in half of the strides at least."""
    parts = []
    for stride in strides:
        begin, end = feet.at(stride.side, np.array([stride.start, stride.stop]))
        distances = np.hypot(*(feet.during(stride.side, stride.start, stride.stop) - begin).T)
        farthest = np.fmax.reduce(distances, initial=0.0)
        if farthest > 0.0 and not np.isnan(end).any():
            parts.append(np.hypot(*(end - begin)) / farthest)
    return bool(parts) and float(np.median(parts)) < _PROGRESS


def velocity_against_belt(strides: Iterable[Stride], feet: Feet) -> FloatArray:
    """Which way and about how fast the feet walk on the belt, m/s, shape (2,): while it is on the
    belt, the belt carries a foot the other way. The heel rises before the foot is off, so that the
    direction is good and the speed somewhat low.

    Raises
    ------
    PlacesUnknown
        No foot is seen at a strike and at the off that follows.
    """
    carried = []
    for stride in strides:
        begin, end = feet.at(stride.side, np.array([stride.start, stride.off]))
        carried.append((end - begin) / (stride.off - stride.start))
    seen = [velocity for velocity in carried if np.isfinite(velocity).all()]
    if not seen:
        raise PlacesUnknown(
            "the feet come back to where they were, as on a treadmill, and without Foot Off events "
            "nothing tells which way they walk"
        )
    return np.asarray(-np.mean(seen, axis=0))
