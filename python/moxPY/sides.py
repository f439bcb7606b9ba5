"""The side of the body that a label names, by how it begins; a guess (``LUMB`` is on no side)."""

from __future__ import annotations

import re
from typing import Literal, NamedTuple

Side = Literal["Left", "Right"]

#: In the order in which pictures and tables have them.
SIDES: tuple[Side, Side] = ("Left", "Right")

# Behind a subject's name a side and what is on it: "LASI", "Anna:RKNE", "L.TO", "Left_Heel".
_SIDED = re.compile(r"(?P<subject>.*:)?(?P<side>L|R|Left|Right|LEFT|RIGHT)(?P<place>[A-Z0-9_. ].*)")
_OPPOSITE = {
    "L": "R", "R": "L", "Left": "Right", "Right": "Left", "LEFT": "RIGHT", "RIGHT": "LEFT",
}  # fmt: skip


class Sided(NamedTuple):
    """A label taken apart."""

    subject: str  #: with its colon; empty without one
    side: Side
    place: str  #: what is behind the side
    other: str  #: the label of the other side


def sided(label: str) -> Sided | None:
    """The parts of a label that names a side; None for one that names none."""
    match = _SIDED.fullmatch(label)
    if match is None:
        return None
    subject, side, place = match["subject"] or "", match["side"], match["place"]
    other = f"{subject}{_OPPOSITE[side]}{place}"
    return Sided(subject, "Left" if side.startswith("L") else "Right", place, other)
