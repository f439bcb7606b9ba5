"""What sections of a report consist of."""

from __future__ import annotations

from collections.abc import Callable, Iterator, Sequence
from dataclasses import dataclass, replace
from typing import TYPE_CHECKING, Any

if TYPE_CHECKING:
    from ..trial.trial import Trial


# Trials beside each other in a table, which has to fit on paper.
_ABREAST = 3


class NotThere(Exception):
    """A trial lacks what a section shows; the text says what."""


@dataclass(frozen=True, slots=True)
class Table:
    """Rows of texts below heads. The first column is what a row is about."""

    heads: Sequence[str]
    rows: Sequence[Sequence[str]]
    numbers: bool = False  #: whether the columns behind the first one are numbers


@dataclass(frozen=True, slots=True)
class Notes:
    """Sentences."""

    texts: Sequence[str]


@dataclass(frozen=True, slots=True)
class Picture:
    """A figure of matplotlib, drawn when it is needed.

    `draw` gives the figure, or raises ValueError or KeyError with what the trial lacks for it. With
    `single`, it takes axes to draw into, as ``ax=``.
    """

    title: str
    draw: Callable[..., Any]
    single: bool = False
    instead: Table | None = None  #: what is shown where there are no pictures


@dataclass(frozen=True, slots=True)
class Moving:
    """A trial in motion, where there is a screen."""

    trial: Trial


Block = Table | Notes | Picture | Moving


@dataclass(frozen=True, slots=True)
class Subject:
    """What a report is about."""

    trials: Sequence[Trial]  #: one at least
    names: Sequence[str]  #: what each is called, all different
    reference: Any = None  #: what is usual over the gait cycle, as pictures take it

    @property
    def several(self) -> bool:
        return len(self.trials) > 1

    def pairs(self) -> Iterator[tuple[str, Trial]]:
        return zip(self.names, self.trials, strict=True)

    def abreast(self) -> Iterator[Subject]:
        """The same in parts of so many trials as a table has columns for."""
        for first in range(0, len(self.trials), _ABREAST):
            part = slice(first, first + _ABREAST)
            yield replace(self, trials=self.trials[part], names=self.names[part])

    def titled(self, text: str, name: str) -> str:
        """A text about one trial, with its name where there are several."""
        return f"{text}: {name}" if self.several else text


@dataclass(frozen=True, slots=True)
class Section:
    """A part of a report with a heading."""

    name: str  #: by which it is left out
    title: str
    blocks: Sequence[Block]
