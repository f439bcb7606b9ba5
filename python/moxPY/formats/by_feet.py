"""Ground reaction forces of the right and the left foot."""

from __future__ import annotations

from collections import Counter
from dataclasses import replace
from typing import TYPE_CHECKING

import numpy as np
from numpy.typing import NDArray

from ..trial.foot_contacts import SHORTEST, Contact, Feet, contacts_of
from ..trial.up_axis import up_axis
from ..trial.wrench import Wrench

if TYPE_CHECKING:
    from ..trial import Trial

_KEYS = {"Right": "r", "Left": "l"}


def by_feet(trial: Trial, wrenches: list[Wrench], threshold: float) -> dict[str, Wrench]:
    """What acts on each foot, under ``"r"`` and ``"l"``: of all platforms that it is on, together.

    A contact with a platform belongs to the foot that has a marker on heel, toe or ankle nearest to
    the point of application in most of its frames. Blows, which are shorter than any step, belong
    to none.

    Parameters
    ----------
    wrenches : list of Wrench
        Those of all platforms, on whatever side.

    Raises
    ------
    ValueError
        Nothing tells whose foot a contact is.
    """
    if len({wrench.units for wrench in wrenches}) > 1:
        raise ValueError("the force platforms have different units: ask for units")
    axis = up_axis(trial)
    if axis is None:
        raise ValueError("no force platform has corners that tell which axis points upwards")
    feet = Feet(trial)
    shortest = max(1, round(SHORTEST * trial.analogs.rate))
    owned = {side: [np.zeros(len(w), dtype=np.bool_) for w in wrenches] for side in _KEYS}
    for number, wrench in enumerate(wrenches):
        load = np.abs(wrench.force[:, axis])
        for contact in contacts_of(load, threshold, shortest):
            side = _side_of(feet, wrench, contact, trial.samples_per_frame)
            if side not in _KEYS:
                raise ValueError(
                    f"nothing tells whose foot is on force platform {number + 1} at "
                    f"{wrench.time[contact.first]:g} s: both feet need a marker on heel, toe or "
                    "ankle, such as 'LHEE' and 'RHEE'"
                )
            owned[side][number][contact.first : contact.stop] = True
    return {key: _together(wrenches, owned[side], axis) for side, key in _KEYS.items()}


def _side_of(feet: Feet, wrench: Wrench, contact: Contact, every: int) -> str:
    """The side that most frames of a contact speak for; "General" where none does."""
    samples = range(contact.first, contact.stop, every)
    told = Counter(
        feet.side_at(float(wrench.time[sample]), wrench.point[sample])
        for sample in samples
        if wrench.contact[sample]
    )
    if told["Left"] == told["Right"]:
        return "General"
    return "Left" if told["Left"] > told["Right"] else "Right"


def _together(wrenches: list[Wrench], owned: list[NDArray[np.bool_]], axis: int) -> Wrench:
    """One wrench that does what several do: the sum of their forces, at the mean of their points by
    vertical load, with the moment about that point."""
    contact = np.array([w.contact & own for w, own in zip(wrenches, owned, strict=True)])
    loaded = contact[:, :, np.newaxis]
    forces = np.where(loaded, [w.force for w in wrenches], 0.0)
    points = np.where(loaded, [w.point for w in wrenches], 0.0)
    moments = np.where(loaded, [w.moment for w in wrenches], 0.0)
    weights = np.abs(forces[:, :, axis, np.newaxis])
    whole = weights.sum(axis=0)
    point = (weights * points).sum(axis=0) / np.where(whole > 0.0, whole, 1.0)
    moment = (moments + np.cross(points - point, forces)).sum(axis=0)
    return replace(
        wrenches[0],
        force=forces.sum(axis=0),
        moment=moment,
        point=point,
        contact=contact.any(axis=0),
    )
