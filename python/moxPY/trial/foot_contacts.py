"""When feet came down on a force platform and left it."""

from __future__ import annotations

from collections.abc import Iterator
from typing import TYPE_CHECKING, NamedTuple

import numpy as np

from .events import Event
from .foot_markers import foot_marker
from .gaps import runs_of
from .platform import Platform
from .samples import FloatArray
from .up_axis import up_axis
from .wrench import Wrench

if TYPE_CHECKING:
    from .trial import Trial

SHORTEST = 0.05  #: seconds: shorter contacts are blows, shorter breaks are no steps
STRIKE, OFF = ("Foot Strike", 1), ("Foot Off", 2)  # labels and ids that are in use


class Contact(NamedTuple):
    """A stretch in which somebody was on a platform, in samples."""

    first: int  #: the first one at or over the threshold
    stop: int  #: the first one behind it that is under the threshold


def detect_events(trial: Trial, threshold: float) -> list[Event]:
    """Foot strikes and foot offs of all platforms in order of time; see `Platforms`."""
    axis = up_axis(trial)
    if axis is None:
        return []
    feet = Feet(trial)
    found = [
        event for plate in trial.platforms for event in _events_of(plate, axis, threshold, feet)
    ]
    return sorted(found, key=lambda event: event.time)


def _events_of(plate: Platform, axis: int, threshold: float, feet: Feet) -> Iterator[Event]:
    reaction = plate.reaction(threshold)
    load = reaction.force[:, axis]
    shortest = max(1, round(SHORTEST * plate._trial.analogs.rate))
    for contact in contacts_of(load, threshold, shortest):
        near_ends = (
            (STRIKE, contact.first, slice(contact.first, contact.first + shortest)),
            (OFF, contact.stop, slice(contact.stop - shortest, contact.stop)),
        )
        for (label, number), sample, window in near_ends:
            if 0 < sample < len(load):  # else the recording began or ended meanwhile
                time = float(reaction.time[sample])
                side = feet.side_at(time, mean_point(reaction, load, window))
                yield Event(time=time, label=label, context=side, id=number)


def contacts_of(load: FloatArray, threshold: float, shortest: int) -> list[Contact]:
    """When a platform was loaded.

    A contact lasts from the first sample that reaches the threshold to the first one under it. It
    goes on over a break that is shorter than `shortest` samples or in which the load never falls
    under half the threshold; what is then shorter than `shortest` samples is none.
    """
    contacts: list[Contact] = []
    for first, last in runs_of(load >= threshold):
        start = int(first)
        if contacts and _goes_on(load[contacts[-1].stop : start], threshold, shortest):
            start = contacts.pop().first
        contacts.append(Contact(start, int(last) + 1))
    return [contact for contact in contacts if contact.stop - contact.first >= shortest]


def _goes_on(between: FloatArray, threshold: float, shortest: int) -> bool:
    return len(between) < shortest or bool((between >= threshold / 2.0).all())


def mean_point(reaction: Wrench, load: FloatArray, window: slice) -> FloatArray:
    """Where the load was: points of application count as much as the load that they bear, since
    that of a light load is mostly noise."""
    point, weight = reaction.point[window], load[window]
    seen = reaction.contact[window] & (weight > 0.0)
    if not seen.any():
        return np.full(3, np.nan)
    return np.average(point[seen], axis=0, weights=weight[seen])


class Feet:
    """Where the feet are, by the markers on them."""

    def __init__(self, trial: Trial) -> None:
        self._trial = trial
        self._markers: dict[str, list[FloatArray]] = {"Left": [], "Right": []}
        for label, marker in trial.markers.items():
            if found := foot_marker(label):
                self._markers[found.side].append(marker.values)

    def side_at(self, time: float, point: FloatArray) -> str:
        """The side of the foot with the marker that is nearest to a place; "General" unless both
        feet are seen at that instant."""
        frames = self._trial.frames
        if frames == 0:
            return "General"
        frame = round(time * self._trial.rate) - (self._trial.first_frame - 1)
        frame = min(max(frame, 0), frames - 1)
        distances = {
            side: _least([float(np.linalg.norm(marker[frame] - point)) for marker in markers])
            for side, markers in self._markers.items()
        }
        left, right = distances["Left"], distances["Right"]
        if not np.isfinite([left, right]).all() or left == right:
            return "General"
        return "Left" if left < right else "Right"


def _least(distances: list[float]) -> float:
    """The least of those that are numbers."""
    return min((distance for distance in distances if distance == distance), default=np.nan)
