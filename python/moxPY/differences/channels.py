"""Channels of two trials: markers, angles, forces, moments, powers, analog channels."""

from __future__ import annotations

from collections.abc import Callable, Iterator

import numpy as np

from ..trial.channel import Channel
from ..trial.channels import Channels
from ..trial.samples import FloatArray
from .comparison import Comparison, counted, distance, number
from .difference import Aspect, Difference
from .keys import keys
from .stretch import Stretch


def channels(family: str) -> Callable[[Comparison], Iterator[Difference]]:
    """What compares the channels of a family."""

    def compared(comparison: Comparison) -> Iterator[Difference]:
        return _channels(comparison, family)

    return compared


def _channels(compared: Comparison, family: str) -> Iterator[Difference]:
    one: Channels = getattr(compared.first, family)
    other: Channels = getattr(compared.second, family)
    yield from keys(family, one.labels, other.labels)
    ratios = [1, 1]
    if family == "analogs":
        ratios = [compared.first.samples_per_frame, compared.second.samples_per_frame]
    both = [label for label in one.labels if label in other]
    if both and ratios[0] != ratios[1]:
        text = f"{ratios[0]} and {ratios[1]} samples in each frame, which are not compared"
        yield Difference(family=family, channel=None, aspect="shape", text=text)
    stretch = Stretch.of(compared, ratios[0])
    for label in both:
        first, second = one[label], other[label]
        yield from _texts(family, label, first, second)
        if ratios[0] == ratios[1]:
            values = first.values[stretch.first], second.values[stretch.second]
            yield from _values(compared, family, label, stretch, values, first.unit)


def _texts(family: str, label: str, one: Channel, other: Channel) -> Iterator[Difference]:
    aspects: tuple[Aspect, ...] = ("label", "unit", "description")
    for aspect in aspects:
        first, second = getattr(one, aspect), getattr(other, aspect)
        if first != second:
            text = f"{first!r} and {second!r}"
            yield Difference(family=family, channel=label, aspect=aspect, text=text)


def _values(
    compared: Comparison,
    family: str,
    label: str,
    stretch: Stretch,
    values: tuple[FloatArray, FloatArray],
    unit: str,
) -> Iterator[Difference]:
    apart = distance(*values, compared.tolerance)
    what = "sample" if family == "analogs" else "frame"
    if apart.unequal:
        frame, time = stretch.place(apart.row)
        largest = f"{number(apart.largest)} {unit}".rstrip()
        yield Difference(
            family=family,
            channel=label,
            aspect="values",
            text=f"up to {largest} apart in frame {frame}; {counted(apart.unequal, what)}",
            largest=apart.largest,
            frame=frame,
            time=time,
        )
    if len(apart.one_sided):
        missing = [int(_missing(array)[apart.one_sided].sum()) for array in values]
        frame, time = stretch.place(int(apart.one_sided[0]))
        yield Difference(
            family=family,
            channel=label,
            aspect="gaps",
            text=f"first in frame {frame}; {counted(len(apart.one_sided), what)}: "
            f"{missing[0]} are missing in the first trial, {missing[1]} in the second",
            frame=frame,
            time=time,
        )


def _missing(values: FloatArray) -> np.ndarray:
    return np.isnan(values.reshape(len(values), -1)).any(axis=1)
