"""Analog channels that are dead or at the end of their range."""

from __future__ import annotations

from collections.abc import Iterator
from typing import NamedTuple

import numpy as np
from numpy.typing import NDArray

from ..trial.gaps import runs_of
from ..trial.samples import FloatArray
from .recording import Recording
from .rule import Fault

# What a plateau must stand out by to be a rail: in steps of the converter, on each of its sides and
# within as many samples as it is long. The peak of a parabola falls by 8 of them.
_STEEP = 24.0
# A signal that is at its ends nearly all the time is a switch.
_SWITCH = 0.9
_NEAR_END = 0.05
# Fewer different values tell nothing of steps.
_FEWEST_VALUES = 16


def dead(recording: Recording) -> Iterator[Fault]:
    """An analog channel has the same value in every sample: nothing is plugged in, or the amplifier
    is off. What measures has noise. A force platform of which all channels are dead is one
    finding: files that set everything under a threshold to 0 have such where nobody stepped on
    it."""
    constant = [
        bool(signal.size > 1 and (signal == signal[0]).all()) for signal in recording.signals
    ]
    for number, plate in enumerate(recording.trial.platforms):
        channels = [channel.index for channel in plate.channels]
        if channels and all(constant[index] for index in channels):
            yield Fault(f"platform {number}: all {len(channels)} channels are dead")
            for index in channels:
                constant[index] = False
    for label, signal, is_dead in zip(recording.analogs, recording.signals, constant, strict=True):
        if is_dead:
            yield Fault(f"{signal[0] + 0.0:g} in every sample", label)


class _Plateau(NamedTuple):
    """Samples at one end of a signal's range, all equal."""

    first: int
    last: int


def saturated(recording: Recording, *, saturated_samples: float) -> Iterator[Fault]:
    """An analog channel runs into an end of its range and stays there: several samples in a row
    have exactly its highest or its lowest value, and it gets there and leaves steeply. What was
    beyond is lost.

    The top of a smooth wave is flat, too, for as long as one step of the converter lasts: but to
    its sides it falls by eight steps within as many samples again, and at a rail much more; so 24
    are asked for. A resting signal is at an end as well where all it does goes the other way, as
    the load of a platform does: an end that is nearer to 0 than half of the other one is none.
    Signals that are at their ends nine tenths of the time are switches. The frames are those of
    the longest plateau."""
    fewest = max(2, round(saturated_samples))
    for label, signal in zip(recording.analogs, recording.signals, strict=True):
        plateaus = _plateaus(signal, fewest)
        if not plateaus:
            continue
        first, last = max(plateaus, key=lambda plateau: plateau.last - plateau.first)
        count = sum(plateau.last - plateau.first + 1 for plateau in plateaus)
        unit = recording.trial.analogs[label].unit
        at = f"{signal[first]:.4g} {unit}".rstrip()
        frames = recording.frames_of_samples(first, last)
        times = f"{len(plateaus)} times, " if len(plateaus) > 1 else ""
        yield Fault(
            f"at the end of its range, {at}, {times}{count} samples; "
            f"longest in frames {frames[0]} to {frames[1]}",
            label,
            frames,
            recording.time_of_sample(first),
        )


def _plateaus(signal: FloatArray, fewest: int) -> list[_Plateau]:
    if signal.size < fewest or not np.isfinite(signal).all():
        return []
    low, high = float(signal.min()), float(signal.max())
    ends = [
        end
        for end, other in ((low, high), (high, low))
        if abs(end) > 0.5 * abs(other) and np.count_nonzero(signal == end) >= fewest
    ]
    if not ends or _is_switch(signal, low, high):
        return []
    step = _step(signal)
    if step == 0.0:
        return []
    return [
        plateau
        for end in ends
        for plateau in _runs(signal == end, fewest)
        if _is_steep(signal, plateau, step)
    ]


def _runs(flags: NDArray[np.bool_], fewest: int) -> list[_Plateau]:
    return [
        _Plateau(int(first), int(last))
        for first, last in runs_of(flags)
        if last - first + 1 >= fewest
    ]


def _is_switch(signal: FloatArray, low: float, high: float) -> bool:
    margin = _NEAR_END * (high - low)
    at_ends = np.count_nonzero((signal <= low + margin) | (signal >= high - margin))
    return bool(at_ends > _SWITCH * signal.size)


def _step(signal: FloatArray) -> float:
    """The step of the converter: the least difference of two values; 0 for too few values."""
    values = np.unique(signal)
    if values.size < _FEWEST_VALUES:
        return 0.0
    # Stored numbers are rounded: differences much below the others are none.
    differences = np.diff(values)
    steps = differences[differences > 1e-6 * (values[-1] - values[0])]
    return float(steps.min() if steps.size else differences.max())


def _is_steep(signal: FloatArray, plateau: _Plateau, step: float) -> bool:
    """Whether the signal falls from the plateau on both sides, as far as it was recorded."""
    length = plateau.last - plateau.first + 1
    level = signal[plateau.first]
    before = signal[max(0, plateau.first - length) : plateau.first]
    after = signal[plateau.last + 1 : plateau.last + 1 + length]
    sides = [np.abs(side - level).max() for side in (before, after) if side.size]
    return bool(sides and min(sides) > _STEEP * step)
