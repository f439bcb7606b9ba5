"""Angles, moments and powers over the gait cycle; forces and EMG over time."""

from __future__ import annotations

from collections.abc import Iterator, Sequence
from functools import partial
from typing import TYPE_CHECKING, Any

import numpy as np

from ..plots.cycle_panels import from_pelvis_to_foot
from ..plots.cycles_of_kind import cycles_of_kind
from ..plots.laid_over import laid_over
from ..trial.channels import Channels
from .blocks import Block, NotThere, Picture, Subject
from .drawing import figure_of
from .joints import pages

if TYPE_CHECKING:
    from ..trial.trial import Trial

_FORCES = (
    ("Force on the person over time", "forces"),
    ("Force vectors on the person at the centre of pressure", "butterfly"),
)


def cycles(kind: str, about: Subject) -> Iterator[Block]:
    """Channels of a kind over the gait cycle, a few joints a page. What several trials have is laid
    over each other, the rest drawn by itself."""
    having = [(name, trial) for name, trial in about.pairs() if len(getattr(trial, kind))]
    if not having:
        raise NotThere(f"there are no {kind}")
    walked = {name: trial for name, trial in having if _has_cycles(kind, trial)}
    common = _common([getattr(trial, kind) for trial in walked.values()])
    for labels in pages(common):
        draw = partial(_laid_over, kind, list(walked.items()), labels, about.reference)
        yield Picture(f"{kind.capitalize()}, trials laid over each other", draw)
    for name, trial in having:
        drawn = common if name in walked else []
        rest = [label for label in from_pelvis_to_foot(getattr(trial, kind)) if label not in drawn]
        for labels in pages(rest):
            draw = partial(figure_of, trial, kind, labels, reference=about.reference)
            yield Picture(about.titled(kind.capitalize(), name), draw)


def _has_cycles(kind: str, trial: Trial) -> bool:
    return trial.rate > 0.0 and any(cycles_of_kind(trial, kind).values())


def _common(channels: Sequence[Channels]) -> list[str]:
    """What all of several trials have in the same unit."""
    if len(channels) < 2:
        return []
    first, *others = channels
    return [
        label
        for label in from_pelvis_to_foot(first)
        if all(label in each and each[label].unit == first[label].unit for each in others)
    ]


def _laid_over(kind: str, *arguments: Any) -> Any:
    return np.ravel(laid_over(kind, *arguments))[0].figure


def forces(about: Subject) -> Iterator[Block]:
    """The reactions on force platforms over time, and their vectors."""
    having = [(name, trial) for name, trial in about.pairs() if len(trial.platforms)]
    if not having:
        raise NotThere("there are no force platforms")
    for name, trial in having:
        for title, picture in _FORCES:
            yield Picture(about.titled(title, name), partial(figure_of, trial, picture))


def emg(about: Subject) -> Iterator[Block]:
    """Electromyograms with their envelopes."""
    if not any(len(trial.analogs) for trial in about.trials):
        raise NotThere("there are no analog channels")
    for name, trial in about.pairs():
        yield Picture(about.titled("Electromyography", name), partial(figure_of, trial, "emg"))
