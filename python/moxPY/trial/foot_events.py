"""Events of feet: which events are strikes and which are offs, and of which foot."""

from __future__ import annotations

from typing import Literal, NamedTuple

from .events import Event

Side = Literal["Left", "Right"]

_STRIKES = frozenset({"foot strike", "heel strike", "initial contact"})
_OFFS = frozenset({"foot off", "toe off"})
_SIDES: dict[str, Side] = {"left": "Left", "right": "Right"}


class FootEvent(NamedTuple):
    """What an event of a foot is."""

    side: Side  #: whose foot
    sort: Literal["strike", "off"]  #: whether it comes to the floor or leaves it


def foot_event(event: Event) -> FootEvent | None:
    """The side and the sort of an event, in whatever letters they are written; None where it has no
    side or is about something else."""
    label, side = event.label.casefold(), _SIDES.get(event.context.casefold())
    if side is None or label not in _STRIKES | _OFFS:
        return None
    return FootEvent(side, "strike" if label in _STRIKES else "off")


def same_instant(one: float, other: float, rate: float) -> bool:
    """Whether two times in seconds lie in the same frame or in frames beside each other, as those
    of an event that is there twice do."""
    return abs(one - other) <= 1.001 / rate
