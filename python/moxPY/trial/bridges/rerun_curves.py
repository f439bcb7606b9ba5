"""Channels as curves, and events, as entities of Rerun."""

from __future__ import annotations

from typing import Any

import numpy as np

from ..samples import FloatArray
from .rerun_log import Log
from .rerun_scene import Scene
from .tables import AXES

_POINTS = ("angles", "forces", "moments", "powers")


def log_curves(log: Log, scene: Scene) -> None:
    """Log a curve for each component of a channel, and of the force on the person."""
    trial = log.trial
    for kind in _POINTS:
        for label, channel in getattr(trial, kind).items():
            entity = log.entity(kind, label)
            log.by_frame(entity, _curves(log, entity, label, channel.unit, channel.values))
    for label, analog in trial.analogs.items():
        entity = log.entity("analogs", label)
        log.by_sample(entity, _curves(log, entity, label, analog.unit, analog.values))
    for number, reaction in enumerate(scene.reactions, 1):
        entity = log.entity("platforms", str(number), "force")
        name, unit = f"plate {number}", reaction.units.force
        log.by_sample(entity, _curves(log, entity, name, unit, reaction.force))


def _curves(log: Log, entity: str, name: str, unit: str, values: FloatArray) -> Any:
    """The columns of the components, of which the names hold at each time."""
    ending = f" ({unit})" if unit else ""
    names = [f"{name}{ending}"]
    if values.ndim == 2:
        names = [f"{name} {axis}{ending}" for axis in AXES]
    log.always(entity, log.package.SeriesLines(names=names))
    columns = log.package.Scalars.columns(scalars=values.reshape(-1))
    return columns.partition(np.full(len(values), len(names)))


def log_events(log: Log) -> None:
    """Log the events as texts, those that are at no time left out."""
    events = [event for event in log.trial.events if np.isfinite(event.time)]
    texts = [" ".join(filter(None, (event.context, event.label))) for event in events]
    times = np.array([event.time for event in events], dtype=np.float64)
    columns = log.package.TextLog.columns(text=texts, level=["INFO"] * len(texts))
    log.at(times, "events", columns)
