"""Runs of frames in which a point was not seen."""

from __future__ import annotations

from typing import NamedTuple

import numpy as np
from numpy.typing import NDArray


class Gap(NamedTuple):
    """A run of frames in which a point was not seen."""

    label: str  #: the point
    first: int  #: the first frame of the run, as the trial numbers its frames
    last: int  #: the last frame of the run

    @property
    def frames(self) -> int:
        """Number of frames."""
        return self.last - self.first + 1


def runs_of(flags: NDArray[np.bool_]) -> NDArray[np.intp]:
    """Where `flags` are true: an array of (runs, 2), first and last index of each run."""
    edges = np.diff(np.concatenate(([False], flags, [False])).astype(np.int8))
    firsts = np.flatnonzero(edges == 1)
    lasts = np.flatnonzero(edges == -1) - 1
    return np.column_stack((firsts, lasts))
