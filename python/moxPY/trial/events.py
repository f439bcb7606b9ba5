"""Events: instants of a trial such as foot strikes."""

from __future__ import annotations

from collections.abc import Iterator, Sequence
from dataclasses import dataclass, replace
from typing import TYPE_CHECKING, Any, SupportsIndex, overload

import _moxPY
import numpy as np
from _moxPY import trial as calls

from .asking import ask
from .display import abridged, one_line
from .samples import FloatArray, read_only

if TYPE_CHECKING:
    from .trial import Trial


@dataclass(frozen=True, kw_only=True, eq=False, slots=True)
class Event:
    """An instant of a trial. It does not change; `Events.replace` puts another one in its place.

    Files hold times in single precision, so two events are equal when their times are in single
    precision, and everything else is.

    Attributes
    ----------
    time : float
        Seconds on the trial's clock, on which frame 1 is 0.0; of a stored event the shortest
        decimal that single precision holds as the stored number.
    label : str
        What happened: ``"Foot Strike"``, ``"Foot Off"`` or any other text.
    context : str
        The side that it happened on: ``"Left"``, ``"Right"``, ``"General"`` or any other text.
    subject : str
        Who it happened to.
    description : str
        What there is to say of it.
    id : int
        Number of the kind of event: by convention 1 for a foot strike, 2 for a foot off, 0 for any
        other and where nobody said one.
    """

    time: float
    label: str
    context: str = "General"
    subject: str = ""
    description: str = ""
    id: int = 0

    def _key(self) -> tuple[Any, ...]:
        with np.errstate(over="ignore"):  # such a time is in no trial
            return np.float32(self.time), *_tuple(self)[1:]

    def __eq__(self, other: object) -> bool:
        return self._key() == other._key() if isinstance(other, Event) else NotImplemented

    def __hash__(self) -> int:
        return hash(self._key())


class Events(Sequence[Event]):
    """The events of a trial in order of time; those of one instant in the order of the file.

    A sequence that is read anew each time it is asked, so that it also shows what the ``mox…``
    functions change. A slice is a list.

    Examples
    --------
    >>> strike = trial.events.add("Foot Strike", 1.32, context="Left")
    >>> strike = trial.events.replace(strike, time=1.3)
    >>> trial.events.remove(strike)
    """

    __slots__ = ("_trial",)

    def __init__(self, trial: Trial) -> None:
        self._trial = trial

    def _read(self) -> list[Event]:
        return sorted(map(_event, calls.events(self._trial)), key=lambda event: event.time)

    @property
    def labels(self) -> list[str]:
        """The different labels, in order of time."""
        return list(dict.fromkeys(event.label for event in self._read()))

    @property
    def contexts(self) -> list[str]:
        """The different contexts, in order of time."""
        return list(dict.fromkeys(event.context for event in self._read()))

    def select(
        self,
        label: str | None = None,
        context: str | None = None,
        *,
        subject: str | None = None,
        description: str | None = None,
        id: int | None = None,
    ) -> list[Event]:
        """The events that have all that is given, in order of time."""
        wanted = _given(
            label=label, context=context, subject=subject, description=description, id=id
        )
        return [
            event
            for event in self._read()
            if all(getattr(event, name) == value for name, value in wanted.items())
        ]

    def times(self, label: str | None = None, context: str | None = None) -> FloatArray:
        """The times of the events of a label, of one context or of all: seconds in order, shape
        (events,)."""
        times = [event.time for event in self.select(label, context)]
        return read_only(np.array(times, dtype=np.float64))

    def add(
        self,
        label: str,
        time: float,
        context: str = "General",
        *,
        subject: str = "",
        description: str = "",
        id: int = 0,
    ) -> Event:
        """Add an event.

        Returns
        -------
        Event
            The event as it is stored: its time in single precision.

        Raises
        ------
        ValueError
            There is no label, the time is not finite, or a text has a NUL character.
        OverflowError
            The id has more than 32 bits.
        """
        if label == "":
            raise ValueError("an event needs a label")
        new = (time, label, context, subject, description, id)
        return _event(calls.append_event(self._trial, new))

    def remove(self, event: Event) -> None:
        """Remove an event; of several equal ones, one.

        Raises
        ------
        ValueError
            The trial has no such event.
        """
        calls.remove_event(self._trial, _tuple(event))

    def replace(
        self,
        event: Event,
        *,
        time: float | None = None,
        label: str | None = None,
        context: str | None = None,
        subject: str | None = None,
        description: str | None = None,
        id: int | None = None,
    ) -> Event:
        """Change what is given of an event; of several equal ones, of one.

        Returns
        -------
        Event
            The event that is now in its place.

        Raises
        ------
        ValueError
            The trial has no such event, or `add` would refuse the new one. Nothing has changed
            then.
        """
        if label == "":
            raise ValueError("an event needs a label")
        changes = _given(
            time=time,
            label=label,
            context=context,
            subject=subject,
            description=description,
            id=id,
        )
        new = replace(event, **changes)
        return _event(calls.replace_event(self._trial, _tuple(event), _tuple(new)))

    def clear(self) -> None:
        """Remove all events."""
        ask(_moxPY.moxClearEvents, self._trial)

    @overload
    def __getitem__(self, index: SupportsIndex) -> Event: ...
    @overload
    def __getitem__(self, index: slice) -> list[Event]: ...
    def __getitem__(self, index: SupportsIndex | slice) -> Event | list[Event]:
        return self._read()[index]

    def __len__(self) -> int:
        return len(calls.events(self._trial))

    def __iter__(self) -> Iterator[Event]:
        return iter(self._read())

    def __reversed__(self) -> Iterator[Event]:
        return reversed(self._read())

    def index(self, event: Event, *bounds: int) -> int:
        """Where the first event stands that is equal; ValueError when there is none."""
        return self._read().index(event, *bounds)

    def count(self, event: Event) -> int:
        """How many events are equal to this one."""
        return self._read().count(event)

    def __eq__(self, other: object) -> bool:
        return self._read() == list(other) if isinstance(other, Events | list) else NotImplemented

    __hash__ = None  # type: ignore[assignment]  # it changes

    def __repr__(self) -> str:
        return one_line(
            "events", lambda: f" ({len(self)}): {abridged([_brief(event) for event in self])}"
        )


def _event(stored: calls._EventTuple) -> Event:
    time, label, context, subject, description, id = stored
    return Event(
        # The shortest number that single precision holds as this one: 1.3, not 1.2999999523162842.
        time=float(str(np.float32(time))),
        label=label,
        context=context,
        subject=subject,
        description=description,
        id=id,
    )


def _tuple(event: Event) -> calls._EventTuple:
    if not isinstance(event, Event):
        raise TypeError(f"expected an Event, got {type(event).__name__}")
    return (
        event.time,
        event.label,
        event.context,
        event.subject,
        event.description,
        event.id,
    )


def _given(**values: Any) -> dict[str, Any]:
    return {name: value for name, value in values.items() if value is not None}


def _brief(event: Event) -> str:
    name = " ".join(filter(None, (event.context, event.label)))
    return f"{name!r} {event.time:.3f} s"
