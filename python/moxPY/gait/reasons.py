"""Why a parameter is left out."""

from __future__ import annotations

from collections.abc import Sequence
from dataclasses import dataclass, field

import numpy as np

from ..trial.foot_events import Side
from .definitions import Definition
from .stride import OTHER, Stride


@dataclass(frozen=True, kw_only=True, slots=True)
class Known:
    """What is known of a trial before any parameter is computed."""

    events: str = ""  #: why the events tell no strides
    places: str = ""  #: why the places of the feet are not known
    markers: tuple[str, ...] = ()  #: those on the feet
    unknown: dict[str, str] = field(default_factory=dict)  #: why single parameters are not known


def reason(definition: Definition, side: Side, strides: Sequence[Stride], known: Known) -> str:
    """Why no stride of a side gives a parameter."""
    if known.events:
        return known.events
    if not strides:
        return f"there are no two {side} Foot Strike events with a stride between them"
    if definition.name in known.unknown:
        return known.unknown[definition.name]
    for need in definition.needs:
        if not any(_has(stride, need) for stride in strides):
            return known.places if need in _PLACES and known.places else _lacking(need, side, known)
    return "no stride has all that it is made from"


_PLACES = ("begin", "between", "end")


def _has(stride: Stride, need: str) -> bool:
    value = getattr(stride, need)
    return value if isinstance(value, bool) else bool(np.isfinite(value).all())


def _lacking(need: str, side: Side, known: Known) -> str:
    if need in _PLACES:
        return f"the markers {' and '.join(known.markers)} are not seen at the foot strikes"
    if need == "is_walked":
        return "the feet do not leave the floor in the order of walking, or the events are wrong"
    event = {
        "off": f"{side} Foot Off",
        "other_off": f"{OTHER[side]} Foot Off",
        "other_strike": f"{OTHER[side]} Foot Strike",
    }[need]
    return f"there is no {event} event within a stride of the {side.lower()} foot"
