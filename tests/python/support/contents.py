"""What a file holds beside its points: analog channels, events and force platforms."""

from __future__ import annotations

from collections.abc import Mapping, Sequence
from dataclasses import dataclass, field
from typing import Any

import numpy as np
from numpy.typing import ArrayLike, NDArray

from .parameters import Text


@dataclass(frozen=True)
class Analog:
    """One channel; `raw` are the stored values, one per sample, before offset and scale."""

    label: Text
    raw: ArrayLike
    scale: float = 1.0
    offset: int = 0
    units: Text = "V"
    description: Text = ""


@dataclass(frozen=True)
class Event:
    """One entry of the EVENT group."""

    context: Text
    label: Text
    time: float  # seconds; written as whole minutes and seconds
    subject: Text = ""
    description: Text = ""
    icon: int = 0
    flag: int = 0


@dataclass(frozen=True)
class Platform:
    """One entry of the FORCE_PLATFORM group."""

    type: int = 2
    corners: ArrayLike = field(default_factory=lambda: np.zeros((4, 3)))  # corner, coordinate
    origin: ArrayLike = (0.0, 0.0, 0.0)
    channels: Sequence[int] = (1, 2, 3, 4, 5, 6)  # analog channels, counted from 1
    cal_matrix: ArrayLike | None = None  # row, column


Point = tuple[Text, NDArray[Any]]
Rotation = tuple[Text, NDArray[Any]]

# Label -> values, or pairs of them, which may repeat a label.
Labelled = Mapping[Any, Any] | Sequence[tuple[Text, Any]]
Channels = Mapping[Any, Any] | Sequence[Analog | tuple[Text, Any]]


def pairs(named: Mapping[Any, Any] | Sequence[Any]) -> list[Any]:
    return list(named.items()) if isinstance(named, Mapping) else list(named)


def points_with_words(points: Labelled, words: Mapping[Any, ArrayLike]) -> list[Point]:
    """Every point as (label, (frames, 4)), the fourth column being the raw fourth word.

    `words` are found by index, else by label. A point without them is (frames, 4) already and
    stays as it is, or has words 0, and zeros with the word -1 where a coordinate is NaN.
    """
    result = []
    for index, (label, values) in enumerate(pairs(points)):
        table = np.asarray(values, dtype=np.float64)
        own_words = words.get(index, words.get(label))
        if own_words is not None:
            table = np.column_stack([table[:, :3], np.asarray(own_words)])
        elif table.shape[1] == 3:
            seen = ~np.isnan(table).any(axis=1, keepdims=True)
            table = np.where(seen, np.hstack([table, np.zeros_like(table[:, :1])]), [0, 0, 0, -1])
        result.append((label, table))
    return result


def analog_channels(analogs: Channels) -> list[Analog]:
    return [entry if isinstance(entry, Analog) else Analog(*entry) for entry in pairs(analogs)]


def rotation_samples(rotations: Labelled) -> list[Rotation]:
    """Every segment as (label, (samples, 17)): the matrix column by column, then reliability.

    A (samples, 4, 4) array of transforms gets the reliability 0, or -1 where it holds a NaN.
    """
    result = []
    for label, values in pairs(rotations):
        samples = np.asarray(values, dtype=np.float64)
        if samples.ndim == 3:
            columns = samples.transpose(0, 2, 1).reshape(len(samples), 16)
            lost = np.isnan(columns).any(axis=1)
            samples = np.column_stack([columns, np.where(lost, -1.0, 0.0)])
        result.append((label, samples))
    return result
