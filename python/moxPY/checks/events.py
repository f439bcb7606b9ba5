"""Events outside the trial, or in a wrong order."""

from __future__ import annotations

from collections import defaultdict
from collections.abc import Iterator
from itertools import pairwise

from ..trial.events import Event
from ..trial.foot_events import foot_event, same_instant
from .recording import Recording
from .rule import Fault


def outside(recording: Recording) -> Iterator[Fault]:
    """An event before the first frame or after the last one, by more than a frame: what is cut
    out of a trial without its events, or numbers its frames anew, has such. One frame is allowed,
    since the last one lasts until the next would begin, and times are rounded."""
    if recording.frames == 0:
        return
    first, last = recording.time_at(0), recording.time_at(recording.frames - 1)
    frame = 1.001 / recording.rate
    for event in recording.trial.events:
        if not first - frame <= event.time <= last + frame:
            yield Fault(
                f"{_name(event)} at {event.time:.3f} s, "
                f"the trial lasts from {first:.3f} s to {last:.3f} s",
                time=event.time,
            )


def order(recording: Recording) -> Iterator[Fault]:
    """Of one foot two strikes follow each other without an off between them, or two offs without a
    strike. A foot cannot do that, so one event is missing or on the wrong side. A side that has
    events of one sort only is well: nobody looked for the others. The time is that of the second
    event."""
    for events in _by_foot(recording).values():
        if len({sort for sort, _ in events}) < 2:
            continue
        for (sort, one), (following, other) in pairwise(events):
            if sort == following and not _same_instant(recording, one, other):
                yield Fault(
                    f"{_name(other)} at {other.time:.3f} s follows another at {one.time:.3f} s",
                    frames=_frames(recording, other),
                    time=other.time,
                )


def repeated(recording: Recording) -> Iterator[Fault]:
    """An event is there twice: one label, side and subject, in the same frame or in frames beside
    each other. Whoever counts steps or cuts cycles gets one too many."""
    earlier: dict[tuple[str, str, str], Event] = {}
    for event in recording.trial.events:
        key = event.label, event.context, event.subject
        if key in earlier and _same_instant(recording, earlier[key], event):
            yield Fault(
                f"{_name(event)} twice, at {earlier[key].time:.3f} s and {event.time:.3f} s",
                frames=_frames(recording, event),
                time=event.time,
            )
        earlier[key] = event


def _by_foot(recording: Recording) -> dict[tuple[str, str], list[tuple[str, Event]]]:
    """Strikes and offs of each foot of each subject in order of time."""
    feet: dict[tuple[str, str], list[tuple[str, Event]]] = defaultdict(list)
    for event in recording.trial.events:
        if found := foot_event(event):
            feet[event.subject, found.side].append((found.sort, event))
    return feet


def _same_instant(recording: Recording, one: Event, other: Event) -> bool:
    return same_instant(one.time, other.time, recording.rate)


def _frames(recording: Recording, event: Event) -> tuple[int, int]:
    frame = round(event.time * recording.rate) + 1
    return frame, frame


def _name(event: Event) -> str:
    return " ".join(filter(None, (event.context, event.label)))
