"""Force platforms of two trials."""

from __future__ import annotations

from collections.abc import Iterator

import numpy as np

from ..trial.platform import Platform
from .comparison import Comparison, number
from .difference import Aspect, Difference


def platforms(compared: Comparison) -> Iterator[Difference]:
    """Platforms by their numbers: type, channels, corners, origin, calibration. What they measure
    is compared with the analog channels."""
    one, other = compared.first.platforms, compared.second.platforms
    for index in range(max(len(one), len(other))):
        name = f"platform {index}"
        if index >= len(other):
            text = "only the first trial has it"
            yield Difference(family="platforms", channel=name, aspect="only first", text=text)
        elif index >= len(one):
            text = "only the second trial has it"
            yield Difference(family="platforms", channel=name, aspect="only second", text=text)
        else:
            yield from _both(name, one[index], other[index], compared.tolerance)


def _both(name: str, one: Platform, other: Platform, tolerance: float) -> Iterator[Difference]:
    labels = [plate.labels for plate in (one, other)]
    aspects: tuple[tuple[Aspect, object, object], ...] = (
        ("type", one.type, other.type),
        ("channels", " ".join(labels[0]) or "none", " ".join(labels[1]) or "none"),
    )
    for aspect, first, second in aspects:
        if first != second:
            text = f"{first} and {second}"
            yield Difference(family="platforms", channel=name, aspect=aspect, text=text)
    for what in ("corners", "origin", "calibration"):
        yield from _numbers(name, what, getattr(one, what), getattr(other, what), tolerance)


def _numbers(
    name: str, what: str, one: np.ndarray | None, other: np.ndarray | None, tolerance: float
) -> Iterator[Difference]:
    if one is None or other is None or one.shape != other.shape:
        if one is not other:
            shapes = ["none" if array is None else str(array.shape) for array in (one, other)]
            text = f"{what} of shape {shapes[0]} and {shapes[1]}"
            yield Difference(family="platforms", channel=name, aspect="shape", text=text)
        return
    with np.errstate(invalid="ignore"):
        apart = np.abs(one - other)
    apart[(one == other) | (np.isnan(one) & np.isnan(other))] = 0.0
    if np.isnan(apart).any():
        text = f"{what} known on one side only"
        yield Difference(family="platforms", channel=name, aspect="values", text=text)
    elif apart.max(initial=0.0) > tolerance:
        largest = float(apart.max())
        yield Difference(
            family="platforms",
            channel=name,
            aspect="values",
            text=f"{what} up to {number(largest)} apart",
            largest=largest,
        )
