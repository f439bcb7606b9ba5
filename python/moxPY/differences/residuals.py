"""Residuals and camera masks of two trials."""

from __future__ import annotations

from collections.abc import Iterator

import numpy as np

from .comparison import Comparison, counted, distance, number
from .difference import Difference
from .stretch import Stretch


def residuals(compared: Comparison) -> Iterator[Difference]:
    """How well points of all kinds were measured, and by which cameras, in the frames in which both
    trials have them: a family of its own, since it changes where a place is given anew."""
    one, other = compared.first.points, compared.second.points
    stretch = Stretch.of(compared)
    for label in one.labels:
        if label not in other:
            continue
        first, second = one[label].residuals[stretch.first], other[label].residuals[stretch.second]
        # A residual of -1 says that the point was not seen, which the samples say as well.
        seen = (first >= 0.0) & (second >= 0.0)
        apart = distance(first * seen, second * seen, compared.tolerance)
        if apart.unequal:
            frame, time = stretch.place(apart.row)
            yield Difference(
                family="residuals",
                channel=label,
                aspect="residuals",
                text=f"up to {number(apart.largest)} apart in frame {frame}; "
                f"{counted(apart.unequal, 'frame')}",
                largest=apart.largest,
                frame=frame,
                time=time,
            )
        masks = one[label].cameras[stretch.first] != other[label].cameras[stretch.second]
        rows = np.flatnonzero(masks.any(axis=1) & seen)
        if len(rows):
            frame, time = stretch.place(int(rows[0]))
            yield Difference(
                family="residuals",
                channel=label,
                aspect="cameras",
                text=f"other cameras, first in frame {frame}; {counted(len(rows), 'frame')}",
                frame=frame,
                time=time,
            )
