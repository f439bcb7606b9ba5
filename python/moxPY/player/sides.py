"""Which labels and events are of the left side, and which of the right, as the page says it."""

from __future__ import annotations

import re
from collections.abc import Collection
from typing import Literal

from ..sides import sided

Side = Literal["left", "right", ""]

_SIDES: dict[str, Side] = {"l": "left", "r": "right"}

# Events that have their side in front: LHS, RTO, "Left Foot Strike".
_EVENT = re.compile(r"[LR]([A-Z]{2})?|(?i:left|right)\b.*")


def side_of(label: str, labels: Collection[str]) -> tuple[Side, str]:
    """The side of a label and what it is called without: ``"LKNE"`` is ``"left"`` and ``"KNE"``.

    A label has a side only if its counterpart is among the others, so that "LUMB" has none.
    """
    parts = sided(label)
    if parts is None or parts.other not in labels:
        return "", label
    return _SIDES[parts.side[0].lower()], parts.subject + parts.place.lstrip(" _.")


def side_of_event(context: str, label: str) -> Side:
    """The side that an event happened on, as its context says it, else its label."""
    for text in (context.strip(), label.strip()):
        if _EVENT.fullmatch(text):
            return _SIDES[text[0].lower()]
    return ""
