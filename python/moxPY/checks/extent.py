"""How far the markers lie apart."""

from __future__ import annotations

from collections.abc import Iterator

import numpy as np

from .recording import Recording
from .rule import Fault

_FEWEST_MARKERS = 4


def extent(recording: Recording, *, least_extent: float, largest_extent: float) -> Iterator[Fault]:
    """All markers of all frames lie within a space that is too small or too large for what they
    are on: the unit that the file names is another one than that of its numbers. A hand is 150 mm
    long, and no cameras see 100 m; metres that are called millimetres, or the other way round, are
    wrong by a thousand. A trial with fewer than four markers may be anything."""
    if recording.metre is None or np.count_nonzero(recording.seen.any(axis=1)) < _FEWEST_MARKERS:
        return
    size = recording.size
    metres = size / recording.metre
    if not least_extent / 1000.0 <= metres <= largest_extent:
        yield Fault(
            f"all markers lie within {size:.3g} {recording.point_unit}: "
            f"the unit is hardly {recording.point_unit}"
        )
