"""What of a trial goes into the page."""

from __future__ import annotations

from collections.abc import Iterable
from typing import TYPE_CHECKING, Any

import numpy as np

from ..readable import readable
from ..skeleton import sticks_of
from ..trial.labels import nearest
from ..trial.partial import measured_platforms
from ..trial.samples import FloatArray
from ..trial.units import parse_unit
from .curves import curves_of, shown
from .packing import pack
from .sides import side_of, side_of_event
from .upright import up_direction

if TYPE_CHECKING:
    from ..trial import Trial
    from ..trial.platform import Platform

Stick = tuple[str, str]

# How exact places are, in metres, before they take numbers of 32 bits.
_PLACES = 1e-4
_MILLIMETRE = 0.001

_LOOKS = 1000  # frames that are enough to see which way is up


def content_of(
    trial: Trial, sticks: Iterable[Stick] | None, up: str | None, threshold: float
) -> dict[str, Any]:
    """The trial as `data.js` reads it. Places stay in the unit of the file."""
    labels, values = trial.markers.labelled_values()
    unit = _unit_of(trial)
    precision = _PLACES / _size_of(unit)
    segments, origins = _segments(trial, precision)
    some = slice(None, None, max(1, trial.frames // _LOOKS))
    places = np.concatenate([values[some].reshape(-1, 3), origins[some].reshape(-1, 3)])
    return {
        "name": readable(trial.path.name) if trial.path else "Trial",
        "rate": trial.rate,
        "firstFrame": trial.first_frame,
        "frames": trial.frames,
        "unit": shown(unit),
        "up": up_direction(trial, up, places[np.isfinite(places).all(axis=1)]),
        "markers": [
            {
                "label": label,
                "side": side_of(label, labels)[0],
                "name": side_of(label, labels)[1],
                "track": pack(values[:, index], precision),
            }
            for index, label in enumerate(labels)
        ],
        "sticks": _sticks(trial, labels, sticks),
        "segments": segments,
        "plates": [
            _plate(trial, plate, precision, threshold) for plate in measured_platforms(trial)
        ],
        "events": _events(trial),
        "curves": list(curves_of(trial)),
    }


def _unit_of(trial: Trial) -> str:
    """The unit of places: that of the markers, or, of segments alone, what the file says of it."""
    if len(trial.markers):
        return trial.markers.unit or ""
    try:
        unit = trial.metadata["POINT"]["UNITS"]
    except KeyError:
        return ""
    return unit if isinstance(unit, str) else ""


def _size_of(unit: str) -> float:
    """Metres; places without a unit are taken for millimetres."""
    parsed = parse_unit(unit)
    return parsed.size if parsed is not None and parsed.quantity == "length" else _MILLIMETRE


def _sticks(trial: Trial, labels: list[str], sticks: Iterable[Stick] | None) -> list[list[int]]:
    """The sticks as pairs of numbers of markers."""
    places = {label: index for index, label in enumerate(labels)}
    pairs = []
    for stick in sticks_of(trial) if sticks is None else sticks:
        is_pair = isinstance(stick, tuple | list) and len(stick) == 2
        ends: tuple[str, ...] = tuple(stick) if is_pair else ()
        if not is_pair:
            raise ValueError(f"a stick is between two markers, as ('LKNE', 'LANK'), not {stick!r}")
        for label in ends:
            if label not in places:
                raise KeyError(f"no channel '{label}' among the markers{nearest(label, labels)}")
        pairs.append([places[label] for label in ends])
    return pairs


def _segments(trial: Trial, precision: float) -> tuple[list[dict[str, Any]], FloatArray]:
    """The segments at each frame, and where they were."""
    rotations = trial.rotations
    labels = rotations.labels
    found, origins = [], [np.empty((trial.frames, 0, 3))]
    for label in labels:
        matrices = rotations[label][:: rotations.samples_per_frame][: trial.frames]
        matrices = _padded(matrices.reshape(-1, 16), trial.frames).reshape(-1, 4, 4)
        # Column by column, so that the page reads an axis at once.
        axes = matrices[:, :3, :3].transpose(0, 2, 1).reshape(-1, 9)
        found.append(
            {
                "label": label,
                "side": side_of(label, labels)[0],
                "axes": pack(axes),
                "origin": pack(matrices[:, :3, 3], precision),
            }
        )
        origins.append(matrices[:, np.newaxis, :3, 3])
    return found, np.concatenate(origins, axis=1)


def _plate(trial: Trial, plate: Platform, precision: float, threshold: float) -> dict[str, Any]:
    """A platform and the force on the person, at the instant of each frame."""
    reaction = plate.reaction(threshold)
    at_frames = slice(None, None, trial.samples_per_frame)
    point = np.where(reaction.contact[:, np.newaxis], reaction.point, np.nan)
    corners = plate.corners
    unit = parse_unit(reaction.units.force)
    newtons = unit.size if unit is not None and unit.quantity == "force" else None
    return {
        "label": f"Plate {plate.index + 1}",
        "corners": corners.tolist() if np.isfinite(corners).all() else None,
        "unit": "N" if newtons else shown(reaction.units.force),
        "force": pack(_padded(reaction.force[at_frames], trial.frames) * (newtons or 1.0)),
        "point": pack(_padded(point[at_frames], trial.frames), precision),
    }


def _padded(rows: FloatArray, frames: int) -> FloatArray:
    """As many rows as there are frames; what a file that was cut short lacks is missing."""
    whole = np.full((frames, rows.shape[1]), np.nan)
    whole[: len(rows)] = rows[:frames]
    return whole


def _events(trial: Trial) -> list[dict[str, Any]]:
    if not trial.rate > 0.0:
        return []
    start = (trial.first_frame - 1) / trial.rate
    found = []
    for event in trial.events:
        frame = round((event.time - start) * trial.rate)
        if 0 <= frame < trial.frames:
            found.append(
                {
                    "frame": frame,
                    "time": event.time,
                    "label": event.label,
                    "context": event.context,
                    "side": side_of_event(event.context, event.label),
                }
            )
    return found
