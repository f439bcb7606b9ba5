"""Events as pictures mark them: by side, strikes and offs in ways of their own."""

from __future__ import annotations

import math
from collections.abc import Iterable
from itertools import pairwise
from typing import TYPE_CHECKING, Any, Literal, NamedTuple

from ..sides import SIDES, Side, sided
from ..trial.events import Event
from ..trial.extras import require
from .colours import colour_of
from .panels import plain

if TYPE_CHECKING:
    from matplotlib.axes import Axes

    from ..trial import Trial

Kind = Literal["strike", "off", "other"]

# How files call them, without the side and in small letters.
_STRIKES = {"foot strike", "heel strike", "initial contact", "foot contact", "fs", "hs", "ic"}
_OFFS = {"foot off", "toe off", "fo", "to"}

LINES: dict[Kind, Any] = {"strike": "-", "off": "--", "other": ":"}


class Occasion(NamedTuple):
    """An event, understood."""

    event: Event
    side: Side | None
    kind: Kind
    name: str  #: what the file calls it, side and all

    @property
    def colour(self) -> str:
        return colour_of(self.side)


def occasions(trial: Trial) -> list[Occasion]:
    """The events of a trial that have a time, in order."""
    return [_understood(event) for event in trial.events if math.isfinite(event.time)]


def stances(trial: Trial, side: Side) -> list[tuple[float, float]]:
    """From each foot strike of a side to the next foot off, as far as events tell both; the
    conventional labels are believed before all others."""
    spans = [(c.start, c.stop) for c in trial.cycles(side, "Foot Strike", "Foot Off")]
    if spans:
        return spans
    marks = [each for each in occasions(trial) if each.side == side and each.kind != "other"]
    return [
        (mark.event.time, after.event.time)
        for mark, after in pairwise(marks)
        if mark.kind == "strike" and after.kind == "off"
    ]


def mark_events(axes: Iterable[Axes], trial: Trial) -> list[Any]:
    """Draw the events of a trial as upright lines; what a legend needs to explain them."""
    line = require("matplotlib", "lines").Line2D
    panels = list(axes)
    explained: dict[tuple[str, str], Any] = {}
    known = occasions(trial)
    for each in known:
        style = LINES[each.kind]
        for panel in panels:
            panel.axvline(
                each.event.time, color=each.colour, linestyle=style, linewidth=0.9, alpha=0.75,
                zorder=1,
            )  # fmt: skip
    # Strikes and offs of the left side are explained first, then those of the right one.
    for each in sorted(known, key=_rank):
        style = LINES[each.kind]
        key = (each.colour, style) if each.kind != "other" else (each.colour, each.name)
        if key not in explained:
            explained[key] = line(
                [], [], color=each.colour, linestyle=style, linewidth=1.2, label=plain(each.name)
            )
    return list(explained.values())


def _rank(each: Occasion) -> tuple[bool, int, bool]:
    side = SIDES.index(each.side) if each.side else len(SIDES)
    return each.kind == "other", side, each.kind != "strike"


def _understood(event: Event) -> Occasion:
    side, label = _side_and_label(event)
    name = " ".join(filter(None, (event.context, event.label))) or "event without a name"
    words = " ".join(label.replace("_", " ").split()).casefold()
    kind: Kind = "strike" if words in _STRIKES else "off" if words in _OFFS else "other"
    return Occasion(event, side, kind, name)


def _side_and_label(event: Event) -> tuple[Side | None, str]:
    """The side from the context, or else from the beginning of a label such as "LHS", which some
    files have as the context."""
    context = event.context.casefold()
    if context in ("left", "right"):
        return ("Left" if context == "left" else "Right"), event.label
    parts = sided(event.label) or sided(event.context)
    return (parts.side, parts.place) if parts else (None, event.label)
