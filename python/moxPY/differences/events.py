"""Events of two trials."""

from __future__ import annotations

from collections import defaultdict
from collections.abc import Iterable, Iterator

from ..trial.events import Event
from .comparison import Comparison, number
from .difference import Aspect, Difference

_Key = tuple[str, str, str]


def events(compared: Comparison) -> Iterator[Difference]:
    """Events with one label, side and subject belong together in order of time where both trials
    have as many of them; else those belong together that are no more apart than the tolerance."""
    one, other = _grouped(compared.first.events), _grouped(compared.second.events)
    for key in dict.fromkeys([*one, *other]):
        for first, second in _pairs(one[key], other[key], compared.tolerance):
            if first is not None and second is not None:
                yield from _both(compared, first, second)
            elif first is not None:
                text = f"only the first trial has it, at {first.time:.6g} s"
                yield _difference(compared, first, "only first", text)
            elif second is not None:
                text = f"only the second trial has it, at {second.time:.6g} s"
                yield _difference(compared, second, "only second", text)


def _grouped(events: Iterable[Event]) -> defaultdict[_Key, list[Event]]:
    groups: defaultdict[_Key, list[Event]] = defaultdict(list)
    for event in events:
        groups[event.label, event.context, event.subject].append(event)
    return groups


def _pairs(
    one: list[Event], other: list[Event], tolerance: float
) -> Iterator[tuple[Event | None, Event | None]]:
    if len(one) == len(other):
        yield from zip(one, other, strict=True)
        return
    i = j = 0
    while i < len(one) or j < len(other):
        first = one[i] if i < len(one) else None
        second = other[j] if j < len(other) else None
        if first is not None and second is not None and abs(first.time - second.time) > tolerance:
            # The earlier one has no counterpart: all that follow are later still.
            first, second = (first, None) if first.time < second.time else (None, second)
        yield first, second
        i += first is not None
        j += second is not None


def _both(compared: Comparison, first: Event, second: Event) -> Iterator[Difference]:
    apart = abs(first.time - second.time)
    if apart > compared.tolerance:
        text = f"at {first.time:.9g} s and {second.time:.9g} s, {number(apart)} s apart"
        yield _difference(compared, first, "time", text, apart)
    aspects: tuple[Aspect, ...] = ("description", "id")
    for aspect in aspects:
        one, other = getattr(first, aspect), getattr(second, aspect)
        if one != other:
            text = f"at {first.time:.6g} s: {one!r} and {other!r}"
            yield _difference(compared, first, aspect, text)


def _difference(
    compared: Comparison, event: Event, aspect: Aspect, text: str, largest: float | None = None
) -> Difference:
    return Difference(
        family="events",
        channel=_name(event),
        aspect=aspect,
        text=text,
        largest=largest,
        frame=round(event.time * compared.first.rate) + 1,
        time=event.time,
    )


def _name(event: Event) -> str:
    return " ".join(filter(None, (event.context, event.label)))
