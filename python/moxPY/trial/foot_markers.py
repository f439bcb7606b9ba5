"""Markers on feet, by the labels of the usual marker sets."""

from __future__ import annotations

import re
from typing import Literal, NamedTuple

from .foot_events import Side

Place = Literal["heel", "ankle", "toe", "forefoot"]

# What sets call the heel (or the calcaneus), the ankle (or its outer malleolus), the toe and the
# heads of the metatarsals, behind a letter or a word for the side: LHEE, L_FCC, r_calc, LeftToe.
_PLACES: dict[Place, str] = {
    "heel": r"heel?|hel|heelback|fcc|ca|cal|calc|calcaneus",
    "ankle": r"ank(?:le)?|lmal?|mal|fal|lm",
    "toe": r"toe",
    "forefoot": r"mt[1-5]|fm[125]|met[1-5]?",
}
_SIDES: dict[str, Side] = {"l": "Left", "r": "Right"}
_LABEL = re.compile(
    r"(?:(?P<subject>.*):)?(?P<side>l|r)(?:eft|ight)?[_ .]?(?:"
    + "|".join(f"(?P<{place}>{names})" for place, names in _PLACES.items())
    + ")",
    re.IGNORECASE,
)


class FootMarker(NamedTuple):
    """What the label of a marker on a foot says."""

    subject: str  #: what stands before the colon; empty without one
    side: Side
    place: Place


def foot_marker(label: str) -> FootMarker | None:
    """What a label says; None for one that is not of a foot."""
    match = _LABEL.fullmatch(label)
    if match is None:
        return None
    (place,) = (place for place in _PLACES if match[place])
    return FootMarker(match["subject"] or "", _SIDES[match["side"].lower()], place)
