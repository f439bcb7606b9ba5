"""Where the feet are: which markers tell it, in the level plane, in metres."""

from __future__ import annotations

from typing import TYPE_CHECKING

import numpy as np

from ..trial.foot_events import Side
from ..trial.foot_markers import FootMarker, Place, foot_marker
from ..trial.normalize import at
from ..trial.samples import FloatArray
from ..trial.units import parse_unit
from ..trial.up_axis import upwards

if TYPE_CHECKING:
    from ..trial.trial import Trial

AXES = ("x", "y", "z")
SIDES: tuple[Side, Side] = ("Left", "Right")

# Which place on the foot is taken, one on both feet: where several are there, the first of these.
_PREFERRED: tuple[Place, ...] = ("heel", "ankle", "toe")


class PlacesUnknown(Exception):
    """Where the feet are is not known; the text says why."""


class Feet:
    """Where a point of each foot is, seen from above.

    Attributes
    ----------
    markers : dict
        The marker of each side.
    place : str
        Where on the foot they are: ``"heel"``, ``"ankle"`` or ``"toe"``.
    up : str
        The axis of the laboratory that points upwards.

    Raises
    ------
    PlacesUnknown
        There are no markers at one place on both feet, their unit is no length, or nothing tells
        which axis points upwards.
    """

    def __init__(self, trial: Trial, subject: str | None, up: str | None) -> None:
        self.markers, self.place = _markers(trial, subject)
        axis = upwards(trial) if up is None else AXES.index(up)
        if axis is None:
            raise PlacesUnknown("nothing tells which axis points upwards; say it, as in up='z'")
        self.up = AXES[axis]
        channels = {side: trial.markers[label] for side, label in self.markers.items()}
        self._metres = {side: _metres(channel.unit) for side, channel in channels.items()}
        self._channels = channels
        self._level = [(axis + 1) % 3, (axis + 2) % 3]

    def at(self, side: Side, times: FloatArray) -> FloatArray:
        """Places at instants, shape (instants, 2); NaN where the marker is not seen, and at NaN."""
        known = np.isfinite(times)
        places = np.full((len(times), 3), np.nan)
        places[known] = at(self._channels[side], times[known])
        return self._of_level(side, places)

    def during(self, side: Side, start: float, stop: float) -> FloatArray:
        """Places in the frames of a stretch, shape (frames, 2)."""
        channel = self._channels[side]
        inside = (channel.time >= start) & (channel.time <= stop)
        return self._of_level(side, channel.values[inside])

    def _of_level(self, side: Side, places: FloatArray) -> FloatArray:
        level: FloatArray = places[..., self._level] * self._metres[side]
        return level


def _metres(unit: str) -> float:
    parsed = parse_unit(unit)
    if parsed is None or parsed.quantity != "length":
        raise PlacesUnknown(f"the unit of the markers on the feet is no length: '{unit}'")
    return parsed.size


def _markers(trial: Trial, subject: str | None) -> tuple[dict[Side, str], Place]:
    """The markers of both feet, and where on the foot they are: of the subject that is named, or
    of the first one that has both."""
    known: dict[FootMarker, str] = {}
    for label in trial.markers:
        if found := foot_marker(label):
            known.setdefault(found, label)
    names = dict.fromkeys(found.subject for found in known)
    if subject is not None and subject in names:
        names = {subject: None}
    for place in _PREFERRED:
        for name in names:
            left, right = (known.get(FootMarker(name, side, place)) for side in SIDES)
            if left is not None and right is not None:
                return {"Left": left, "Right": right}, place
    raise PlacesUnknown("there are no markers on the heels, ankles or toes of both feet")
