"""Events, and the spatio-temporal parameters that follow from them."""

from __future__ import annotations

from collections.abc import Iterator
from functools import partial
from itertools import chain
from typing import TYPE_CHECKING

from ..gait import DEFINITIONS, Gait
from ..gait.display import remarks, shown
from .blocks import Block, Notes, NotThere, Picture, Subject, Table
from .drawing import figure_of

if TYPE_CHECKING:
    from ..trial.trial import Trial


def walking(about: Subject) -> Iterator[Block]:
    """The events over time, and a table with a column a side."""
    if not any(len(trial.events) for trial in about.trials):
        raise NotThere("there are no events")
    for name, trial in about.pairs():
        title = about.titled("Events", name)
        listed = Table((title, "", ""), _event_rows(trial))
        yield Picture(title, partial(figure_of, trial, "events"), single=True, instead=listed)
    for part in about.abreast():
        gaits = [trial.gait() for trial in part.trials]
        yield from _parameters(gaits, [name.partition(".")[0] for name in part.names], about)
        for name, gait in zip(part.names, gaits, strict=True):
            texts = list(remarks(gait))
            yield Notes([f"{name}. {texts[0]}", *texts[1:]] if about.several else texts)


def _event_rows(trial: Trial) -> list[tuple[str, ...]]:
    return [(f"{event.time:.3f} s", event.context, event.label) for event in trial.events]


def _parameters(gaits: list[Gait], numbers: list[str], about: Subject) -> Iterator[Block]:
    sides = list(chain.from_iterable(gait.sides for gait in gaits))
    rows = [
        (
            f"{each.title} ({each.unit})",
            *(shown(side[each.name]) if each.name in side else "–" for side in sides),
        )
        for each in DEFINITIONS
        if any(each.name in side for side in sides)
    ]
    if rows:
        heads = [
            f"{side.side} {number}" if about.several else side.side
            for number, gait in zip(numbers, gaits, strict=True)
            for side in gait.sides
        ]
        yield Table(("Mean ± standard deviation", *heads), rows, numbers=True)
