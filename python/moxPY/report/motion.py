"""Each trial in motion, where there is a screen."""

from __future__ import annotations

from collections.abc import Iterator

from .blocks import Block, Moving, NotThere, Subject


def motion(about: Subject) -> Iterator[Block]:
    """A player a trial."""
    having = [trial for trial in about.trials if trial.frames]
    if not having:
        raise NotThere("there are no frames")
    yield from map(Moving, having)
