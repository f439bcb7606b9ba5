"""NPZ: arrays for NumPy, none of which needs pickle."""

from __future__ import annotations

import json
from typing import TYPE_CHECKING, Any

import numpy as np

from ..trial.kinds import KINDS
from .about import about
from .options import Options
from .part import chosen, events_of, require_clock
from .reaction import reactions
from .target import Target
from .text import plain

if TYPE_CHECKING:
    from ..trial import Trial


def write(trial: Trial, target: Target, options: Options) -> None:
    """``markers`` (frames, channels, 3), ``analogs`` (samples, channels) …, ``time`` and
    ``analog_time``, ``platform_force`` (samples, platforms, 3) …, ``event_time`` …; behind each
    kind its ``markers_labels`` and ``markers_units``. ``about`` is JSON."""
    require_clock(trial)
    arrays: dict[str, Any] = {
        "about": json.dumps(about(trial, options), ensure_ascii=False),
        "time": trial.time,
        "analog_time": trial.analogs.time,
    }
    offered = (*KINDS, "platforms", "rotations", "events")
    for name in chosen(trial, options, offered, "NPZ"):
        if name == "platforms":
            arrays.update(_platforms(trial, options))
        elif name == "rotations":
            arrays.update(_rotations(trial))
        elif name == "events":
            arrays.update(_events(trial))
        else:
            arrays.update(_channels(trial, name))
    np.savez(target.path(), allow_pickle=False, **arrays)


def _texts(texts: list[str]) -> Any:
    return np.array([plain(text) for text in texts], dtype=np.str_)


def _channels(trial: Trial, kind: str) -> dict[str, Any]:
    channels = getattr(trial, kind)
    return {
        kind: channels.values,
        f"{kind}_labels": _texts(channels.labels),
        f"{kind}_units": _texts(list(channels.units.values())),
    }


def _platforms(trial: Trial, options: Options) -> dict[str, Any]:
    wrenches = reactions(trial, options)
    arrays = {
        "force": [wrench.force for wrench in wrenches],
        "point": [wrench.point for wrench in wrenches],
        "free_moment": [wrench.moment for wrench in wrenches],
    }
    stacked = {f"platform_{name}": np.stack(each, axis=1) for name, each in arrays.items()}
    # In the order of force, point and free moment.
    units = [(w.units.force, w.units.point, w.units.moment) for w in wrenches]
    return {
        **stacked,
        "platform_units": np.array(units, dtype=np.str_),
        "platform_corners": np.array([plate.corners for plate in trial.platforms]),
        "platform_origin": np.array([plate.origin for plate in trial.platforms]),
    }


def _events(trial: Trial) -> dict[str, Any]:
    types = {"time": np.float64, "id": np.int64}
    return {
        f"event_{name}": np.array(cells, dtype=types.get(name, np.str_))
        for name, cells in events_of(trial).items()
    }


def _rotations(trial: Trial) -> dict[str, Any]:
    rotations = trial.rotations
    return {
        "rotations": np.stack([rotations[label] for label in rotations], axis=1),
        "rotations_labels": _texts(rotations.labels),
        "rotations_time": rotations.time,
    }
