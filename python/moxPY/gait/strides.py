"""The strides that the events of a trial tell."""

from __future__ import annotations

from collections import defaultdict
from itertools import pairwise
from typing import TYPE_CHECKING

import numpy as np

from ..trial.foot_events import Side, foot_event, same_instant
from .stride import OTHER, Stride

if TYPE_CHECKING:
    from ..trial.trial import Trial

_Times = dict[tuple[Side, str], list[float]]

# More than one of these in a stride means that an event of the foot itself is missing.
_EVENTS = {"strike": "Foot Strike", "off": "Foot Off"}


class EventsUnclear(Exception):
    """Nobody can say which events belong together; the text says why."""


def foot_times(trial: Trial, subject: str | None) -> _Times:
    """When each foot struck and left the floor: times in order, by side and sort. What is there
    twice counts once.

    Raises
    ------
    EventsUnclear
        The events are of several subjects, and none was named.
    """
    found = [(foot_event(event), event) for event in trial.events]
    subjects = {event.subject for foot, event in found if foot and event.subject}
    if subject is None and len(subjects) > 1:
        names = ", ".join(sorted(subjects))
        raise EventsUnclear(f"the events are of several subjects: {names}; name one of them")
    rate = trial.rate or 1.0  # a trial that does not say it
    times: _Times = defaultdict(list)
    for foot, event in found:
        if foot is None or subject not in (None, event.subject):
            continue
        earlier = times[foot]
        if not (earlier and same_instant(earlier[-1], event.time, rate)):
            earlier.append(event.time)
    return times


def strides_of(side: Side, times: _Times) -> tuple[list[Stride], list[str]]:
    """The strides of a foot in order of time, and which ones are left out, with the reason.

    Between two strikes a foot leaves the floor once, and so does the other one, which strikes once.
    Where one of these is there more often, the foot struck in between without an event: what lies
    between the two strikes is no stride.
    """
    strides, left_out = [], []
    for start, stop in pairwise(times[side, "strike"]):
        inside = {
            (foot, sort): [time for time in times[foot, sort] if start <= time < stop]
            for foot, sort in ((side, "off"), (OTHER[side], "off"), (OTHER[side], "strike"))
        }
        several = [
            f"{foot} {_EVENTS[sort]}" for (foot, sort), found in inside.items() if len(found) > 1
        ]
        if several:
            left_out.append(
                f"{side} stride from {start:.3f} s to {stop:.3f} s: several {' and '.join(several)}"
                " events in it, so a strike is missing"
            )
            continue
        off, other_off, other_strike = (found[0] if found else np.nan for found in inside.values())
        strides.append(
            Stride(
                side=side,
                start=start,
                stop=stop,
                off=off,
                other_off=other_off,
                other_strike=other_strike,
            )
        )
    return strides, left_out
