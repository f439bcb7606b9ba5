"""What a trial holds, as plain values: for lists of files, for people and for other programs."""

from __future__ import annotations

import math
from typing import TYPE_CHECKING, Any

import numpy as np

from .kinds import KINDS, POINT_KINDS
from .partial import unread_of

if TYPE_CHECKING:
    from .channels import Channels
    from .events import Event
    from .platform import Platform
    from .trial import Trial

# Where files keep who was recorded and when: no entry is prescribed, these are met.
_SUBJECTS = (("SUBJECTS", "NAMES"), ("SUBJECT", "NAME"))
_DATES = (("TRIAL", "DATE"), ("TRIAL", "DATE_TIME"), ("SESSION", "DATE"), ("SUBJECT", "DATE"))


def summary(trial: Trial) -> dict[str, Any]:
    """What a trial holds, but for samples; nothing else than what JSON knows.

    Returns
    -------
    dict
        ``frames``, ``rate``, ``first_frame``, ``last_frame``, ``duration`` (None without a rate)
        and ``samples_per_frame``; ``subjects`` and ``date``, as the file spells them; ``channels``:
        of each kind that there is ``rate``, ``units`` and ``labels``, a unit a label;
        ``rotations``: labels; ``events``, ``platforms``, ``gaps`` and ``odd``, what was odd about
        the file. What is no finite number is None. Channels that were not read (`Trial.unread`) are
        among the others; where these are points, ``gaps`` is None.

    Examples
    --------
    >>> from moxPY.trial.summary import summary
    >>> about = summary(read(path))
    >>> about["frames"], about["subjects"], about["channels"]["forces"]["units"][0]
    (360, ['Walker'], 'N')
    """
    facts = {
        "frames": trial.frames,
        "rate": trial.rate,
        "first_frame": trial.first_frame,
        "last_frame": trial.last_frame,
        "duration": trial.duration if trial.rate > 0.0 else None,
        "samples_per_frame": trial.samples_per_frame,
        "subjects": subjects(trial),
        "date": date(trial),
        "channels": {kind: _channels(trial, kind) for kind in KINDS if _units(trial, kind)},
        "rotations": list(trial.rotations) or list(unread_of(trial, "rotations")),
        "events": [_event(event) for event in trial.events],
        "platforms": [_platform(plate) for plate in trial.platforms],
        "gaps": None if unread_of(trial, "points") else _gaps(trial),
        "odd": trial.warnings,
    }
    plain: dict[str, Any] = finite(facts)
    return plain


def subjects(trial: Trial) -> list[str]:
    """Who was recorded, as far as the metadata name anybody."""
    for group, entry in _SUBJECTS:
        if names := [name for name in _texts(trial, group, entry) if name]:
            return names
    return []


def date(trial: Trial) -> str | None:
    """When the trial was recorded, as the metadata spell it; None where they do not say it."""
    for group, entry in _DATES:
        if text := " ".join(_texts(trial, group, entry)).strip():
            return text
    return None


def device(trial: Trial) -> str | None:
    """What the trial was recorded with, as far as the metadata say it: maker, program, version."""
    entries = trial.metadata.get("MANUFACTURER")
    if entries is None:
        return None
    values = {name.upper(): value for name, value in entries.items()}
    version = values.get("VERSION_LABEL", values.get("VERSION"))
    if isinstance(version, np.ndarray):
        version = ".".join(f"{number:g}" for number in version.ravel())
    texts = [values.get("COMPANY"), values.get("SOFTWARE"), version]
    known = [str(text).strip() for text in texts if text is not None]
    return " ".join(filter(None, known)) or None


def _texts(trial: Trial, group: str, entry: str) -> list[str]:
    """The texts of an entry, however it has them; none without it."""
    entries = trial.metadata.get(group)
    value = None if entries is None else entries.get(entry)
    values = value if isinstance(value, list) else [value]
    return [each.strip() for each in values if isinstance(each, str)]


def _units(trial: Trial, kind: str) -> dict[str, str]:
    """The units of channels by their labels, behind those of the trial what was not read."""
    part: Channels = getattr(trial, kind)
    return part.units | unread_of(trial, kind)


def _channels(trial: Trial, kind: str) -> dict[str, Any]:
    units = _units(trial, kind)
    rate = trial.analogs.rate if kind == "analogs" else trial.rate
    return {"rate": rate, "units": list(units.values()), "labels": list(units)}


def _gaps(trial: Trial) -> list[dict[str, Any]]:
    return [
        {"kind": kind, "label": gap.label, "first": gap.first, "last": gap.last}
        for kind in POINT_KINDS
        for gap in getattr(trial, kind).gaps()
    ]


def _event(event: Event) -> dict[str, Any]:
    names = ("time", "label", "context", "subject", "description", "id")
    return {name: getattr(event, name) for name in names}


def _platform(plate: Platform) -> dict[str, Any]:
    corners = plate.corners
    edges = np.linalg.norm([corners[0] - corners[1], corners[0] - corners[3]], axis=1)
    return {
        "type": plate.type,
        "size": edges.tolist(),
        "corners": corners.tolist(),
        "unit": plate.units.point,
        "channels": plate.labels,
    }


def finite(value: Any) -> Any:
    """A value of JSON, with None for what is no finite number."""
    if isinstance(value, dict):
        return {name: finite(each) for name, each in value.items()}
    if isinstance(value, list):
        return [finite(each) for each in value]
    if isinstance(value, float) and not math.isfinite(value):
        return None
    return value
