"""Markers that are suddenly somewhere else."""

from __future__ import annotations

from collections.abc import Iterator

import numpy as np

from ..trial.samples import FloatArray
from .recording import Recording
from .rule import Fault


def jumps(recording: Recording, *, jump_speed: float, jump_outlier: float) -> Iterator[Fault]:
    """The velocity of a marker changes from one frame to the next by more than bodies do and by
    more than this marker does: by more than the first limit, and by more than the second one times
    what is usual for the marker, the median of its changes.

    The change of velocity is judged, not the speed, since a fast movement is smooth and two
    markers that swapped their labels are not far apart. 3 m/s is 30 mm from one frame to the next
    at 100 frames a second, more than thirty times the acceleration of free fall; the foot at its
    strike, the hardest blow of a walk, stays well under it. In few frames a second even a smooth
    movement changes more than that, but then it does so all the time: hence the second limit.
    Where the trial names no unit of length the second limit judges alone. Gaps are stepped over:
    frames beside them have no velocity. The frames are the two between which the change is the
    largest."""
    least = 0.0 if recording.metre is None else jump_speed * recording.metre / recording.rate
    for label, places in zip(recording.markers, recording.places, strict=True):
        steps = np.diff(places)
        changes = _lengths(np.diff(steps))
        known = changes[~np.isnan(changes)]
        if known.size == 0:
            continue
        limit = max(least, jump_outlier * float(np.median(known)))
        wild = np.flatnonzero(changes > limit)  # a change between the steps to and from frame i + 1
        if wild.size == 0 or limit == 0.0:
            continue
        lengths = _lengths(steps)
        # Each change lies between two steps, of which the longer one is the jump.
        jumped = np.unique(wild + (lengths[wild + 1] > lengths[wild]))
        worst = int(jumped[np.argmax(lengths[jumped])])
        first, last = recording.frames_at(worst, worst + 1)
        length = f"{lengths[worst]:.4g} {recording.point_unit}".rstrip()
        text = f"jumps {len(jumped)} times, farthest" if len(jumped) > 1 else "jumps"
        yield Fault(
            f"{text} by {length} from frame {first} to {last}",
            label,
            (first, last),
            recording.time_at(worst),
        )


def _lengths(vectors: FloatArray) -> FloatArray:
    """The lengths of vectors that are columns."""
    lengths: FloatArray = np.sqrt(np.einsum("ij,ij->j", vectors, vectors))
    return lengths
