"""Which sections a report has, in which order, and who makes them."""

from __future__ import annotations

from collections.abc import Callable, Collection, Iterable, Iterator
from functools import partial
from typing import NamedTuple

from ..trial.labels import nearest
from .blocks import Block, NotThere, Section, Subject
from .curves import cycles, emg, forces
from .findings import checks, gaps
from .header import header
from .motion import motion
from .walking import walking


class Part(NamedTuple):
    """A section that a report may have."""

    name: str  #: by which it is left out
    title: str
    make: Callable[[Subject], Iterator[Block]]


_PARTS = (
    Part("recording", "Recording", header),
    Part("checks", "Checks", checks),
    Part("gaps", "Gaps", gaps),
    Part("gait", "Events and gait", walking),
    Part("angles", "Angles", partial(cycles, "angles")),
    Part("moments", "Moments", partial(cycles, "moments")),
    Part("powers", "Powers", partial(cycles, "powers")),
    Part("forces", "Ground reaction", forces),
    Part("emg", "Electromyography", emg),
    Part("player", "In motion", motion),
)

#: The names of the sections, in their order.
SECTIONS = tuple(part.name for part in _PARTS)


def require_known(names: Iterable[str]) -> None:
    """Refuse names of sections that there are not, with a ValueError."""
    for name in names:
        if name not in SECTIONS:
            raise ValueError(f"there is no section '{name}'{nearest(name, SECTIONS)}")


class Content:
    """The sections of a report, one after the other, and what is not shown.

    What a trial lacks is no section; `left_out` says so, of what is drawn once it was.
    """

    def __init__(self, about: Subject, without: Collection[str]) -> None:
        self.about = about
        self.left_out: list[str] = []
        self._parts = [part for part in _PARTS if part.name not in without]

    def __iter__(self) -> Iterator[Section]:
        for part in self._parts:
            try:
                blocks = list(part.make(self.about))
            except NotThere as reason:
                self.leave_out(part.title, str(reason))
            else:
                yield Section(part.name, part.title, blocks)

    def leave_out(self, title: str, reason: str) -> None:
        """Remember that something is not shown, once."""
        text = f"{title}: {reason}."
        if text not in self.left_out:
            self.left_out.append(text)
