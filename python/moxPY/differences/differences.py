"""Comparing two trials: `Trial.differences`."""

from __future__ import annotations

import math
from collections.abc import Callable, Iterable, Iterator, Mapping
from typing import TYPE_CHECKING

from ..trial.kinds import KINDS
from ..trial.labels import nearest
from .channels import channels
from .clock import clock
from .comparison import Comparison
from .difference import Difference
from .events import events
from .metadata import metadata
from .platforms import platforms
from .residuals import residuals
from .rotations import rotations

if TYPE_CHECKING:
    from ..trial.trial import Trial

# Family -> what compares it.
_COMPARED: dict[str, Callable[[Comparison], Iterator[Difference]]] = {
    "clock": clock,
    **{kind: channels(kind) for kind in KINDS},
    "residuals": residuals,
    "events": events,
    "platforms": platforms,
    "rotations": rotations,
    "metadata": metadata,
}

#: What trials are compared by, in the order in which differences are told.
FAMILIES = tuple(_COMPARED)


def differences(
    trial: Trial,
    other: Trial,
    *,
    tolerance: float | Mapping[str, float] = 0.0,
    without: str | Iterable[str] = (),
    only: str | Iterable[str] | None = None,
) -> list[Difference]:
    """What tells two trials apart, by family and channel.

    Channels are found by their keys, frames by their numbers: where one trial has more frames, that
    is told of the clock, and the frames that both have are compared. NaN is as NaN. Nothing is
    converted: a trial in metres differs from the same in millimetres.

    Parameters
    ----------
    other : Trial
        The trial to compare with.
    tolerance : float or mapping of str to float
        How far numbers may be apart, in their units (of events seconds): one for all families, or
        by the names of families. 0, exactly equal, where none is given.
    without : str or iterable of str
        Families that are left out.
    only : str or iterable of str, optional
        The only families that are compared; all without it.

    Returns
    -------
    list of Difference
        Empty where there are none.

    Raises
    ------
    ValueError
        There is no such family; a tolerance is negative or NaN; channels of a kind that one of the
        trials has were not read for the other (`Trial.unread`).

    Examples
    --------
    >>> shorter = trial.crop(1, 300)
    >>> for found in trial.differences(shorter, tolerance={"markers": 0.1}, without="events"):
    ...     print(found.family, found.channel, found.text)
    clock frames 360 and 300
    """
    left_out, chosen = _known(without), FAMILIES if only is None else _known(only)
    tolerances = _tolerances(tolerance)
    _require_read("first", trial, other, chosen, left_out)
    _require_read("second", other, trial, chosen, left_out)
    return [
        difference
        for family, compared in _COMPARED.items()
        if family in chosen and family not in left_out
        for difference in compared(Comparison(trial, other, tolerances[family]))
    ]


def _require_read(
    which: str, trial: Trial, other: Trial, chosen: Iterable[str], left_out: Iterable[str]
) -> None:
    """What was not read is no difference: nobody knows whether it is one."""
    for kind in trial.unread:
        if kind in chosen and kind not in left_out and len(getattr(other, kind)):
            raise ValueError(f"the {kind} of the {which} trial were not read")


def _known(families: str | Iterable[str]) -> tuple[str, ...]:
    wanted = (families,) if isinstance(families, str) else tuple(families)
    for family in wanted:
        if family not in FAMILIES:
            raise ValueError(f"there is no family '{family}'{nearest(family, FAMILIES)}")
    return wanted


def _tolerances(given: float | Mapping[str, float]) -> dict[str, float]:
    if not isinstance(given, Mapping):
        given = dict.fromkeys(FAMILIES, given)
    _known(given)
    for value in given.values():
        if math.isnan(value) or value < 0:
            raise ValueError(f"a tolerance is a number from 0 upwards, not {value}")
    return {family: float(given.get(family, 0.0)) for family in FAMILIES}
