"""What moves in the laboratory, as entities of Rerun."""

from __future__ import annotations

from collections.abc import Collection, Iterable
from typing import TYPE_CHECKING, Any, NamedTuple

import numpy as np

from ...sides import SIDES, Side, sided
from ...skeleton import Stick, sticks_of
from ..partial import measured_platforms
from ..place_unit import place_unit
from ..samples import FloatArray
from ..units import parse_unit
from ..up_axis import upwards
from ..wrench import Wrench
from .rerun_log import Log

if TYPE_CHECKING:
    from ..trial import Trial

# Brighter than those of printed pictures: the viewer may be dark or light.
_COLOURS: dict[Side | None, tuple[int, int, int]] = {
    "Left": (240, 90, 70), "Right": (70, 155, 250), None: (150, 150, 150),
}  # fmt: skip
_PLATE, _FORCE = (130, 130, 130), (235, 150, 30)

# In metres.
_MARKER, _STICK, _ARROW, _EDGE = 0.009, 0.004, 0.008, 0.003
_LONG = 1e-3  # an arrow, for each newton


class Scene(NamedTuple):
    """What of a trial is drawn."""

    labels: list[str]  #: of the markers
    places: FloatArray  #: (frames, markers, 3)
    sticks: dict[Side | None, list[Stick]]
    reactions: list[Wrench]  #: the force of each platform on the person


def scene_of(trial: Trial, sticks: Iterable[Stick] | None, threshold: float) -> Scene:
    """What is drawn, before anything is logged.

    Raises
    ------
    KeyError
        There is no marker of a label.
    ValueError
        The threshold is negative or NaN.
    """
    labels, places = trial.markers.labelled_values()
    by_side: dict[Side | None, list[Stick]] = {}
    for one, other in sticks_of(trial) if sticks is None else sticks:
        for label in (one, other):
            trial.markers[label]  # KeyError, which names the nearest ones
        ends = _side(one, labels), _side(other, labels)
        by_side.setdefault(ends[0] if ends[0] == ends[1] else None, []).append((one, other))
    return Scene(
        labels, places, by_side, [plate.reaction(threshold) for plate in measured_platforms(trial)]
    )


def log_scene(log: Log, scene: Scene) -> None:
    """Log the markers, the sticks, the platforms and the forces on the person."""
    up = upwards(log.trial)
    axes = getattr(log.package.ViewCoordinates, f"RIGHT_HAND_{'XYZ'[2 if up is None else up]}_UP")
    log.always("lab", axes)
    metre = _metre(log.trial)
    _log_markers(log, scene, metre)
    _log_sticks(log, scene, metre)
    for plate, reaction in zip(measured_platforms(log.trial), scene.reactions, strict=True):
        entity = log.entity("lab", "platforms", str(plate.index + 1))
        _log_plate(log, entity, plate.corners, metre)
        _log_force(log, f"{entity}/force", reaction, metre)


def _metre(trial: Trial) -> float:
    """How many units of places a metre is; without a unit they are taken for millimetres."""
    unit = parse_unit(place_unit(trial))
    return 1.0 / unit.size if unit is not None and unit.quantity == "length" else 1000.0


def _side(label: str, labels: Collection[str]) -> Side | None:
    """The side of a label whose counterpart is there."""
    parts = sided(label)
    return parts.side if parts and parts.other in labels else None


def _log_markers(log: Log, scene: Scene, metre: float) -> None:
    points = log.package.Points3D
    for index, label in enumerate(scene.labels):
        entity = log.entity("lab", "markers", label)
        colour = _COLOURS[_side(label, scene.labels)]
        # All names at once would hide the body; the viewer names what the pointer is on.
        looks = points.from_fields(
            labels=label, show_labels=False, colors=colour, radii=_MARKER * metre
        )
        log.always(entity, looks)
        places = scene.places[:, index]
        seen = np.isfinite(places).all(axis=1)
        columns = points.columns(positions=places[seen]).partition(seen.astype(int))
        log.by_frame(entity, columns)


def _log_sticks(log: Log, scene: Scene, metre: float) -> None:
    strips = log.package.LineStrips3D
    numbers = {label: index for index, label in enumerate(scene.labels)}
    for side in (*SIDES, None):
        ends = [[numbers[one], numbers[other]] for one, other in scene.sticks.get(side, ())]
        if ends:
            entity = log.entity("lab", "sticks", side.lower() if side else "middle")
            colour = _COLOURS[side]
            log.always(entity, strips.from_fields(colors=colour, radii=_STICK * metre))
            lines = scene.places[:, np.array(ends)]  # frames, sticks, ends, axes
            seen = np.isfinite(lines).all(axis=(2, 3))
            columns = strips.columns(strips=lines[seen]).partition(seen.sum(axis=1))
            log.by_frame(entity, columns)


def _log_plate(log: Log, entity: str, corners: FloatArray, metre: float) -> None:
    if np.isfinite(corners).all():
        outline = [np.vstack([corners, corners[:1]])]
        strips = log.package.LineStrips3D
        log.always(entity, strips(outline, colors=_PLATE, radii=_EDGE * metre))


def _log_force(log: Log, entity: str, reaction: Wrench, metre: float) -> None:
    """The force at the instant of each frame, where somebody stands on the platform."""
    unit = parse_unit(reaction.units.force)
    newtons = unit.size if unit is not None and unit.quantity == "force" else 1.0
    at_frames = slice(None, None, max(log.trial.samples_per_frame, 1))
    force, point = reaction.force[at_frames], reaction.point[at_frames]
    seen = reaction.contact[at_frames] & np.isfinite(force).all(axis=1)
    seen &= np.isfinite(point).all(axis=1)
    arrows: Any = log.package.Arrows3D
    columns = arrows.columns(
        vectors=force[seen] * (newtons * _LONG * metre), origins=point[seen]
    ).partition(_padded(seen, log.trial.frames))
    log.always(entity, arrows.from_fields(colors=_FORCE, radii=_ARROW * metre))
    log.by_frame(entity, columns)


def _padded(seen: Any, frames: int) -> Any:
    """A number for each frame, 0 for those that a file which was cut short has no samples of."""
    counts = np.zeros(frames, dtype=int)
    counts[: len(seen)] = seen[:frames]
    return counts
