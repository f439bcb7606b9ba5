"""What makes a rule."""

from __future__ import annotations

from collections.abc import Callable, Iterator
from dataclasses import dataclass
from typing import NamedTuple

from .finding import Severity
from .recording import Recording


class Limit(NamedTuple):
    """A number that a rule judges by; `check` takes another one by the name."""

    name: str
    value: float
    unit: str  #: ``"s"``, ``"mm"`` …, whatever the units of the trial; empty for plain numbers
    summary: str


class Fault(NamedTuple):
    """What a rule finds; the fields are those of `Finding`."""

    text: str
    channel: str | None = None
    frames: tuple[int, int] | None = None
    time: float | None = None


#: Looks at a recording, with the rule's limits as keywords.
RuleFunction = Callable[..., Iterator[Fault]]


@dataclass(frozen=True, slots=True)
class Rule:
    """A rule that trials are checked by.

    Attributes
    ----------
    id : str
        What it is switched off by: ``"gaps"``.
    summary : str
        What it finds, in some words.
    severity : {"error", "warning", "note"}
        Of whatever it finds.
    function : callable
        Takes a `Recording` and the limits by their names, gives a `Fault` for each thing found; its
        docstring says how it is judged.
    limits : tuple of Limit
        What it judges by.
    """

    id: str
    summary: str
    severity: Severity
    function: RuleFunction
    limits: tuple[Limit, ...] = ()

    def faults(self, recording: Recording, changed: dict[str, float]) -> Iterator[Fault]:
        """What the rule finds, with limits of the caller in the place of its own."""
        limits = {limit.name: changed.get(limit.name, limit.value) for limit in self.limits}
        return self.function(recording, **limits)
