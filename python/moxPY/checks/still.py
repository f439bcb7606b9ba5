"""Markers that do not move."""

from __future__ import annotations

from collections.abc import Iterator

import numpy as np

from ..trial.gaps import runs_of
from ..trial.samples import FloatArray
from .recording import Recording
from .rule import Fault

# A marker is compared with what the others do: those of a trial in which all are still, such as
# that of a calibration object, are well.
_OTHERS_MOVE = 20.0
# A stretch of fewer frames at one place is a coincidence of rounded numbers, whatever it lasts.
_FEWEST_FRAMES = 5


def still(recording: Recording, *, still_range: float) -> Iterator[Fault]:
    """A marker stays at its place in all frames in which it was seen, a second at least: within the
    limit along each axis, while half of the markers move at least twenty times as far. It is a
    reflection, or a marker that lies on the floor; nobody keeps a part of the body within 1 mm, not
    even when standing. The origin and the axes of a segment, such as the laboratory's, may stay."""
    if recording.metre is None:
        return
    limit = still_range / 1000.0 * recording.metre
    ranges = {
        label: _range(places)
        for label, places, seen in zip(
            recording.markers, recording.places, recording.seen, strict=True
        )
        if np.count_nonzero(seen) > recording.rate
    }
    if not ranges or np.median(list(ranges.values())) <= _OTHERS_MOVE * limit:
        return
    for label, extent in ranges.items():
        if extent <= limit and label not in recording.segment_points:
            yield Fault(f"does not move: stays within {extent:.2g} {recording.point_unit}", label)


def _range(places: FloatArray) -> float:
    """How far a marker gets along the axis along which it gets farthest."""
    highest, lowest = np.fmax.reduce(places, axis=1), np.fmin.reduce(places, axis=1)
    return float((highest - lowest).max())


def frozen(recording: Recording, *, frozen_time: float) -> Iterator[Fault]:
    """A marker that moves otherwise has exactly the same place in all frames of a stretch that is
    at least as long as the limit: somebody filled a gap with the last place, or the cameras hung.
    What is measured has noise; only in a file with integers may a foot on the floor have one place
    for some frames, so a quarter of a second is asked for, and that the marker has another place
    in most frames. The frames are those of the longest stretch."""
    least = max(_FEWEST_FRAMES, frozen_time * recording.rate)
    for label, places, seen in zip(
        recording.markers, recording.places, recording.seen, strict=True
    ):
        same = (places[:, 1:] == places[:, :-1]).all(axis=0)
        if np.count_nonzero(same) < _FEWEST_FRAMES - 1:
            continue
        if np.count_nonzero(same) > np.count_nonzero(seen) / 2:
            continue
        first, last = max(runs_of(same), key=lambda run: run[1] - run[0])
        length = int(last - first) + 2
        if length >= least:
            frames = recording.frames_at(first, last + 1)
            yield Fault(
                f"at exactly one place for {length / recording.rate:.3g} s, "
                f"frames {frames[0]} to {frames[1]}",
                label,
                frames,
                recording.time_at(first),
            )
