"""What tells two trials apart."""

from __future__ import annotations

from dataclasses import dataclass
from typing import Literal

#: What differs: something that only the first or only the second trial has, the order of channels,
#: numbers, frames in which a point was seen in one of them only, or what the word says.
Aspect = Literal[
    "only first",
    "only second",
    "order",
    "values",
    "gaps",
    "residuals",
    "cameras",
    "shape",
    "unit",
    "label",
    "description",
    "type",
    "lock",
    "id",
    "channels",
    "time",
]


@dataclass(frozen=True, kw_only=True, slots=True)
class Difference:
    """Something in which two trials differ.

    Attributes
    ----------
    family : str
        One of `moxPY.differences.FAMILIES`.
    channel : str or None
        What of it: the key of a channel, ``"rate"`` of the clock, ``"Left Foot Strike"`` of the
        events, ``"platform 0"``, a segment, ``"POINT:RATE"``; None for all of the family.
    aspect : str
        What differs: ``"values"``, ``"unit"``, ``"only first"`` …
    text : str
        Both sides in one line, the first trial's first.
    largest : float or None
        The largest difference of numbers, without sign.
    frame : int or None
        The frame in which it is the largest, or in which gaps begin to differ.
    time : float or None
        The same in seconds on the first trial's clock.
    """

    family: str
    channel: str | None
    aspect: Aspect
    text: str
    largest: float | None = None
    frame: int | None = None
    time: float | None = None
