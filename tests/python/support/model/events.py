"""Events."""

from __future__ import annotations

import math
from typing import Any

import numpy as np

from .state import Event, Refused, State, single

UNAVAILABLE = (
    "This function was not implemented because of a change in backend data storage. If you are "
    "actively using this function, please contact support."
)

Reading = list[Any]


def _times(event: Event) -> Any:
    """A single time is a number."""
    if len(event.times) == 1:
        return event.times[0]
    return np.array(event.times, dtype=np.float32)


class EventModel(State):
    def moxGetEventNumber(self) -> float:
        return float(sum(len(event.times) for event in self.events.values()))

    def moxGetEvents(self) -> Reading:
        values = {name: _times(event) for name, event in self.events.items()}
        info = {
            "subject": {name: event.subject for name, event in self.events.items()},
            "units": {"ALLEVENTS": ""} if self.events else {},
        }
        return [values, info]

    def moxGetEventsValues(self) -> Reading:
        each = [
            (time, name, event.description, event.id)
            for name, event in self.events.items()
            for time in event.times
        ]
        times, names, descriptions, ids = zip(*each, strict=True) if each else ((), (), (), ())
        return [
            np.array(times, dtype=np.float64),
            list(names),
            list(descriptions),
            np.array(ids, dtype=np.int32),
        ]

    def moxAppendEvent(
        self,
        label: str,
        time: float,
        context: str,
        subject: str = "",
        description: str = "",
        id: int = -1,
    ) -> Reading:
        name = (context + label).replace("_", "")
        if not name or "/" in name or "\\" in name or not math.isfinite(single(time)):
            raise Refused()
        event = self.events.get(name)
        if event is None:
            icon = 0 if id == -1 else id
            event = self.events[name] = Event([], subject, description, icon)
        event.description = event.description or description
        event.times.append(single(time))
        return self.moxGetEvents()

    def moxSetEventDescription(self, name: str, description: str) -> Reading:
        self._event(name).description = description
        return self.moxGetEvents()

    def moxSetEventId(self, name: str, id: int) -> Reading:
        self._event(name).id = id
        return self.moxGetEvents()

    def moxClearEvents(self) -> None:
        self.events.clear()

    def moxSetEventLabel(self, index: int, label: str) -> None:
        raise Refused(UNAVAILABLE)

    def moxSetEventTime(self, index: int, time: float) -> None:
        raise Refused(UNAVAILABLE)

    def moxSetEventSubject(self, index: int, subject: str) -> None:
        raise Refused(UNAVAILABLE)

    def _event(self, name: str) -> Event:
        name = name.replace("_", "")
        if name not in self.events:
            raise Refused(f"Event label '{name}' doesn't exist")
        return self.events[name]
