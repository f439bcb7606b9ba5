"""JSON of everything: what the trial has, events, metadata, platforms; samples on request."""

from __future__ import annotations

from dataclasses import asdict
from typing import TYPE_CHECKING, Any

from ..trial.kinds import KINDS
from .about import about
from .json_text import json_text
from .options import Options
from .part import require
from .reaction import reactions
from .target import Target

if TYPE_CHECKING:
    from ..trial import MetadataGroup, Trial


def write(trial: Trial, target: Target, options: Options) -> None:
    """One file, in UTF-8, indented. What is no number is null."""
    target.path().write_text(json_text(content(trial, options)) + "\n", encoding="utf-8")


def content(trial: Trial, options: Options) -> dict[str, Any]:
    """Everything; of samples those of the kinds, or the platforms, that the options name."""
    sampled = options.parts or ()
    for part in sampled:
        require(trial, part)
    return {
        **about(trial, options),
        "last_frame": trial.last_frame,
        "duration": trial.duration if trial.rate > 0.0 else None,
        **{kind: _channels(trial, kind, kind in sampled) for kind in KINDS},
        "platforms": _platforms(trial, options, "platforms" in sampled),
        "rotations": _rotations(trial, "rotations" in sampled),
        "events": [asdict(event) for event in trial.events],
        "analysis": [asdict(trial.analysis.parameter(name)) for name in trial.analysis],
        "metadata": {name: _group(group) for name, group in trial.metadata.items()},
        "warnings": trial.warnings,
    }


def _channels(trial: Trial, kind: str, with_samples: bool) -> list[dict[str, Any]]:
    channels = getattr(trial, kind)
    gaps: dict[str, list[list[int]]] = {}
    for gap in channels.gaps() if len(channels) else ():
        gaps.setdefault(gap.label, []).append([gap.first, gap.last])
    listed = []
    for key, channel in channels.items():
        told: dict[str, Any] = {
            "name": key,
            "label": channel.label,
            "unit": channel.unit,
            "description": channel.description,
        }
        if kind != "analogs":
            told["gaps"] = gaps.get(key, [])
        if with_samples:
            told["values"] = channel.values
        listed.append(told)
    return listed


def _platforms(trial: Trial, options: Options, with_samples: bool) -> list[dict[str, Any]]:
    listed: list[dict[str, Any]] = [
        {
            "number": plate.index + 1,
            "type": plate.type,
            "corners": plate.corners,
            "origin": plate.origin,
            "calibration": plate.calibration,
            "channels": [channel.label for channel in plate.channels],
            "units": plate.units._asdict(),
        }
        for plate in trial.platforms
    ]
    if with_samples:
        for told, wrench in zip(listed, reactions(trial, options), strict=True):
            told.update(force=wrench.force, point=wrench.point, free_moment=wrench.moment)
    return listed


def _rotations(trial: Trial, with_samples: bool) -> dict[str, Any]:
    rotations = trial.rotations
    told: dict[str, Any] = {
        "labels": rotations.labels,
        "samples_per_frame": rotations.samples_per_frame,
    }
    if with_samples:
        told["values"] = [rotations[label] for label in rotations]
    return told


def _group(group: MetadataGroup) -> dict[str, Any]:
    return {
        "description": group.description,
        "entries": {name: asdict(group.entry(name)) for name in group},
    }
