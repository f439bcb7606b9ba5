"""Cycles: stretches of a trial from an event to the next one of its side."""

from __future__ import annotations

from typing import TYPE_CHECKING, NamedTuple

import numpy as np

from .events import Event

if TYPE_CHECKING:
    from .trial import Trial


class Cycle(NamedTuple):
    """A stretch of a trial between two events of a side."""

    start: float  #: seconds on the trial's clock
    stop: float  #: seconds on the trial's clock
    events: tuple[Event, ...]  #: those inside, of every side, the ends included, in order of time

    @property
    def duration(self) -> float:
        """Seconds from start to stop."""
        return self.stop - self.start

    def __repr__(self) -> str:
        return f"<cycle: {self.start:.3f} s to {self.stop:.3f} s, {len(self.events)} events>"


def cycles(
    trial: Trial, context: str, start: str = "Foot Strike", end: str = "Foot Strike"
) -> list[Cycle]:
    """The cycles of a side.

    Each start pairs with the first end after it. So where start and end are one label, each event
    but the last one begins a cycle that the next one ends; where another start comes before the
    next end, two cycles have that end; a start without an end after it begins none. Events of one
    instant count once.

    Parameters
    ----------
    context : str
        The side, as the events name it: ``"Left"``, ``"Right"``.
    start, end : str
        Labels of the events that a cycle begins and ends with.

    Returns
    -------
    list of Cycle
        In order of time; an empty list where the side has no such events.

    Examples
    --------
    >>> stance = trial.cycles("Left", "Foot Strike", "Foot Off")
    """
    events = list(trial.events)
    starts = np.unique(trial.events.times(start, context))
    stops = np.unique(trial.events.times(end, context))
    after = np.searchsorted(stops, starts, side="right")
    pairs = [(starts[i], stops[j]) for i, j in enumerate(after) if j < len(stops)]
    return [
        Cycle(float(first), float(last), tuple(e for e in events if first <= e.time <= last))
        for first, last in pairs
    ]
