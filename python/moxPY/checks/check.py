"""Checking a trial: `Trial.check`."""

from __future__ import annotations

import math
from collections.abc import Collection, Iterable
from typing import TYPE_CHECKING

from ..trial.labels import nearest
from .finding import Finding
from .recording import Recording
from .rules import RULES

if TYPE_CHECKING:
    from ..trial.trial import Trial


def check(
    trial: Trial,
    *,
    without: str | Iterable[str] = (),
    only: str | Iterable[str] | None = None,
    **limits: float,
) -> list[Finding]:
    """What may be wrong with the trial, by rules that each have an id.

    Nothing is changed. Of a channel each rule gives one finding at most, which tells how often and
    where it is worst.

    Parameters
    ----------
    without : str or iterable of str
        The ids of rules that are left out.
    only : str or iterable of str, optional
        The ids of the only rules that are asked; all without it.
    **limits
        Other numbers to judge by, by the names that `moxPY.checks.RULES` has for each rule:
        ``jump_speed=5.0``.

    Returns
    -------
    list of Finding
        In the order of the rules; empty where all is well.

    Raises
    ------
    ValueError
        There is no rule of an id; a limit is negative or no number; only a part of the trial's
        file was read (`Trial.unread`).
    TypeError
        There is no limit of a name.

    Examples
    --------
    >>> for finding in trial.check(without="ends", gap_length=0.1):
    ...     print(finding.rule, finding.channel, finding.text)
    gaps LFIN 1 gap of 22 frames (0.22 s), frames 61 to 82
    gaps LASI 1 gap of 14 frames (0.14 s), frames 97 to 110
    """
    chosen = _known(without if only is None else only)
    _require_limits(limits)
    left_out = _known(without)
    if trial.unread:
        raise ValueError(f"only a part of the file was read, without its {', '.join(trial.unread)}")
    recording = Recording(trial)
    return [
        Finding(rule=rule.id, severity=rule.severity, **fault._asdict())
        for rule in RULES
        if (only is None or rule.id in chosen) and rule.id not in left_out
        for fault in rule.faults(recording, limits)
    ]


def _known(ids: str | Iterable[str]) -> Collection[str]:
    """The ids as a set, each of which a rule has."""
    wanted = {ids} if isinstance(ids, str) else set(ids)
    known = [rule.id for rule in RULES]
    for each in wanted:
        if each not in known:
            raise ValueError(f"there is no rule '{each}'{nearest(each, known)}")
    return wanted


def _require_limits(limits: dict[str, float]) -> None:
    known = [limit.name for rule in RULES for limit in rule.limits]
    for name, value in limits.items():
        if name not in known:
            raise TypeError(f"there is no limit '{name}'{nearest(name, known)}")
        if not (math.isfinite(value) and value >= 0):
            raise ValueError(f"the limit '{name}' is a number from 0 upwards, not {value}")
