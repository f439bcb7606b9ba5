"""The channels that are offered as curves."""

from __future__ import annotations

from collections.abc import Iterator
from typing import TYPE_CHECKING, Any

import numpy as np

from ..trial.samples import FloatArray
from .packing import pack
from .sides import side_of

if TYPE_CHECKING:
    from ..trial import Trial
    from ..trial.channels import Channels

_KINDS = ("angles", "forces", "moments", "powers")

# Analog samples that a page takes whole; of more it takes what each frame lies between.
WHOLE = 200_000

_NO_UNITS = {"unknown"}


def curves_of(trial: Trial) -> Iterator[dict[str, Any]]:
    """All channels but the markers, which the page has anyway."""
    for kind in _KINDS:
        channels: Channels = getattr(trial, kind)
        if not channels:  # also those that were not read, whose samples nobody knows
            continue
        labels, values = channels.labelled_values()
        for index, label in enumerate(labels):
            yield _curve(kind, label, labels, channels[label].unit, "xyz", 1, values[:, index])
    if trial.analogs:
        yield from _analogs(trial)


def _analogs(trial: Trial) -> Iterator[dict[str, Any]]:
    labels, values = trial.analogs.labelled_values()
    ratio = trial.samples_per_frame
    is_whole = values.size <= WHOLE
    for index, label in enumerate(labels):
        unit, samples = trial.analogs[label].unit, values[:, index]
        if is_whole:
            yield _curve("analogs", label, labels, unit, [""], ratio, samples[:, np.newaxis])
        else:
            between = _between(samples, ratio)
            yield _curve("analogs", label, labels, unit, ["least", "most"], 1, between)


def _between(samples: FloatArray, ratio: int) -> FloatArray:
    """The least and the largest sample of each frame, so that no peak gets lost."""
    frames = samples[: len(samples) // ratio * ratio].reshape(-1, ratio)
    return np.column_stack([frames.min(axis=1), frames.max(axis=1)])


def _curve(
    kind: str,
    label: str,
    labels: list[str],
    unit: str,
    components: str | list[str],
    ratio: int,
    values: FloatArray,
) -> dict[str, Any]:
    side, name = side_of(label, labels)
    return {
        "kind": kind,
        "label": label,
        "name": name,
        "side": side,
        "unit": shown(unit),
        "components": list(components),
        "ratio": ratio,
        "track": pack(values),
    }


def shown(unit: str) -> str:
    """A unit as people write it: nothing where a file says that it is unknown."""
    return "" if unit.strip().lower() in _NO_UNITS else unit.strip()
