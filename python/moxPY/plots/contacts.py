"""Who stood when on which platform, as pictures show it."""

from __future__ import annotations

from typing import TYPE_CHECKING, NamedTuple

import numpy as np

from ..trial.foot_contacts import SHORTEST, Contact, Feet, contacts_of, mean_point
from ..trial.platform import Platform
from ..trial.up_axis import up_axis
from ..trial.wrench import Wrench
from .panels import require_clock

if TYPE_CHECKING:
    from ..trial import Trial


class Loaded(NamedTuple):
    """A platform and the force on the person."""

    plate: Platform
    reaction: Wrench
    contacts: list[tuple[Contact, str]]  #: each with its side, "General" where nobody can tell

    @property
    def name(self) -> str:
        return f"plate {self.plate.index + 1}"


def loaded(trial: Trial, threshold: float) -> tuple[list[Loaded], int]:
    """The platforms of a trial, and which axis is the vertical one.

    Contacts and sides are those that `Platforms.detect_events` finds.

    Raises
    ------
    ValueError
        There are no platforms, no samples or no rate, or the threshold is negative or NaN.
    """
    if not len(trial.platforms):
        raise ValueError("the trial has no force platforms")
    require_clock(trial)
    if not len(trial.analogs.time):
        raise ValueError("the trial has no analog samples, which force platforms measure with")
    axis = up_axis(trial)
    axis = 2 if axis is None else axis
    feet = Feet(trial)
    return [_loaded(plate, axis, threshold, feet) for plate in trial.platforms], axis


def _loaded(plate: Platform, axis: int, threshold: float, feet: Feet) -> Loaded:
    reaction = plate.reaction(threshold)
    load = reaction.force[:, axis]
    shortest = max(1, round(SHORTEST * plate._trial.analogs.rate))
    contacts = []
    for contact in contacts_of(np.nan_to_num(load), threshold, shortest):
        window = slice(contact.first, contact.first + shortest)
        point = mean_point(reaction, load, window)
        contacts.append((contact, feet.side_at(float(reaction.time[contact.first]), point)))
    return Loaded(plate, reaction, contacts)
