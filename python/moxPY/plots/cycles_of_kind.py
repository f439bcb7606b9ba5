"""Which gait cycles show channels of a kind."""

from __future__ import annotations

from typing import TYPE_CHECKING, NamedTuple

from ..sides import SIDES, Side
from ..trial.cycles import Cycle
from ..trial.samples import FloatArray
from .contacts import loaded

if TYPE_CHECKING:
    from ..trial import Trial

# What a model computes of the force on the foot: nothing, or as if there were none, without it.
_OF_FORCES = frozenset({"moments", "powers"})
_THRESHOLD = 20.0  # of a contact: that of `Platforms.detect_events`

# Seconds between a foot strike and the load that belongs to it. Events by markers or by eye are
# some hundredths off; the other foot comes down a quarter of a second later even in a run.
_NEAR = 0.1


class _Stance(NamedTuple):
    """A contact of a foot, in seconds."""

    start: float
    stop: float


def cycles_of_kind(trial: Trial, kind: str) -> dict[Side, list[Cycle]]:
    """The cycles of each side, from a foot strike to the next one, that a mean is taken of.

    Moments and powers come from the force on the foot. So theirs are the cycles that begin with
    that foot on a platform: a contact of it, as `Platforms.detect_events` finds them, begins within
    0.1 s of the foot strike. One in which the same foot strikes twice is of both feet, or of a
    belt, and does not count. Where no contact is of a known foot, nobody can tell, and all cycles
    count; so do those of all other kinds.

    Parameters
    ----------
    kind : str
        ``"angles"``, ``"moments"``, ``"powers"`` …
    """
    every = {side: trial.cycles(side) for side in SIDES}
    if kind not in _OF_FORCES:
        return every
    stances = _stances(trial)
    if not any(stances.values()):
        return every
    return {
        side: [cycle for cycle in own if _begins_one(cycle, stances[side])]
        for side, own in every.items()
    }


def why_none(trial: Trial, kind: str) -> str:
    """Why no cycle is one of a kind."""
    if any(trial.cycles(side) for side in SIDES):
        return (
            f"no gait cycle begins with its foot on a force platform, which {kind} need; "
            "cycles= takes others"
        )
    return (
        "neither side has a gait cycle, from one 'Foot Strike' to the next; "
        "trial.platforms.detect_events(store=True) finds some where there are force platforms"
    )


def _begins_one(cycle: Cycle, stances: list[_Stance]) -> bool:
    return any(abs(stance.start - cycle.start) <= _NEAR for stance in stances)


def _stances(trial: Trial) -> dict[Side, list[_Stance]]:
    """The contacts of each foot alone on a platform."""
    found: dict[Side, list[_Stance]] = {side: [] for side in SIDES}
    if not (len(trial.platforms) and len(trial.analogs.time) and trial.rate > 0.0):
        return found
    strikes = {side: trial.events.times("Foot Strike", side) for side in SIDES}
    for plate in loaded(trial, _THRESHOLD)[0]:
        time = plate.reaction.time
        for contact, of in plate.contacts:
            stance = _Stance(float(time[contact.first]), float(time[contact.stop - 1]))
            for side in SIDES:
                if side == of and _strikes_in(stance, strikes[side]) < 2:
                    found[side].append(stance)
    return found


def _strikes_in(stance: _Stance, strikes: FloatArray) -> int:
    """How often a foot strikes while the platform is loaded, its beginning included."""
    return int(((strikes >= stance.start - _NEAR) & (strikes < stance.stop)).sum())
