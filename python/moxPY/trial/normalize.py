"""Samples over the course of cycles, in per cent of each instead of seconds."""

from __future__ import annotations

from collections.abc import Iterable, Sequence
from typing import TYPE_CHECKING, Any, NamedTuple

import numpy as np
from numpy.typing import NDArray

from .samples import FloatArray, read_only

if TYPE_CHECKING:
    from .channel import Channel


class MeanCycle(NamedTuple):
    """A channel over the course of its mean cycle, instant by instant."""

    mean: FloatArray  #: over the cycles that have a value there; NaN where none has
    deviation: FloatArray  #: sample standard deviation; NaN with fewer than two values
    count: NDArray[np.intp]  # type: ignore[assignment]  #: how many cycles have a value there

    def __repr__(self) -> str:
        cycles = int(self.count.max(initial=0))
        return f"<mean cycle: {self.mean.shape}, of up to {cycles} cycles>"


def normalize(
    channel: Channel, cycles: Iterable[Sequence[object]], points: int = 101
) -> FloatArray:
    """The channel at equally spaced instants of each cycle, its start and its end included.

    Between two samples the value lies on the straight line that joins them. It is NaN where one of
    the two is, be it that the point was not seen or that the instant lies outside of the trial. An
    instant that is a sample's but for the single precision that events have needs that sample
    alone.

    Parameters
    ----------
    cycles : iterable of Cycle or of pairs
        Where each cycle starts and stops, in seconds on the trial's clock.
    points : int
        Number of instants, at least 2: 101 gives a value for each per cent.

    Returns
    -------
    ndarray
        Shape (cycles, points, 3), of an analog channel (cycles, points).

    Raises
    ------
    ValueError
        A cycle does not end after it starts, there are fewer than two instants, or the trial has
        no rate.

    Examples
    --------
    >>> trial.angles["LKneeAngles"].normalize(trial.cycles("Left")).shape
    (2, 101, 3)
    """
    return read_only(at(channel, _instants(cycles, points)))


def at(channel: Channel, instants: FloatArray) -> FloatArray:
    """The channel at instants, which lie in an array of any shape; as `normalize` has it."""
    values = channel.values
    if instants.size == 0 or len(values) == 0:
        return np.full(instants.shape + values.shape[1:], np.nan)
    if not channel.rate > 0.0:
        raise ValueError("a trial without a rate has no seconds, which cycles are told in")
    positions = (instants - channel.time[0]) * channel.rate
    precision = np.spacing(np.abs(instants).astype(np.float32)).astype(np.float64) * channel.rate
    return _on_lines(values, positions, precision)


def mean_cycle(
    channel: Channel, cycles: Iterable[Sequence[object]], points: int = 101
) -> MeanCycle:
    """Mean and sample standard deviation of the channel over the course of cycles.

    Each instant, and each component of a point, takes the cycles that have a value there.

    Parameters
    ----------
    cycles, points
        As of `normalize`.

    Returns
    -------
    MeanCycle
        Three arrays of shape (points, 3), of an analog channel (points,).

    Notes
    -----
    All cycles that are given count. Moments and powers of strides in which the foot was on no
    platform are often near 0 instead of NaN, and lower the mean: give the cycles whose start is
    near a foot strike that `Platforms.detect_events` finds, as ``trial.plot.moments()`` does.
    """
    courses = channel.normalize(cycles, points)
    seen = ~np.isnan(courses)
    count = seen.sum(axis=0)
    mean = np.where(seen, courses, 0.0).sum(axis=0) / np.where(count > 0, count, np.nan)
    squares = np.where(seen, courses - mean, 0.0) ** 2
    variance = squares.sum(axis=0) / np.where(count > 1, count - 1, np.nan)
    count.flags.writeable = False
    return MeanCycle(read_only(mean), read_only(np.sqrt(variance)), count)


def _instants(cycles: Iterable[Sequence[object]], points: int) -> FloatArray:
    """Seconds, shape (cycles, points)."""
    if points < 2:
        raise ValueError(f"a cycle has at least its start and its end, not {points} points")
    ends = np.array([cycle[:2] for cycle in cycles], dtype=np.float64).reshape(-1, 2)
    for start, stop in ends[~(ends[:, 1] > ends[:, 0])]:
        raise ValueError(f"a cycle must stop after it starts, not from {start} s to {stop} s")
    return np.linspace(ends[:, 0], ends[:, 1], points, axis=-1)


def _on_lines(values: FloatArray, positions: FloatArray, precision: FloatArray) -> FloatArray:
    """`values` at `positions`, counted in samples; those nearer to a sample than `precision` need
    no other one."""
    last = len(values) - 1
    left = np.clip(np.floor(positions), 0, max(last - 1, 0)).astype(np.intp)
    right = np.minimum(left + 1, last)
    nearest = np.clip(np.rint(positions), 0, last).astype(np.intp)

    def per_component(array: NDArray[Any]) -> NDArray[Any]:
        return array.reshape(array.shape + (1,) * (values.ndim - 1))

    weight = per_component(positions - left)
    line = values[left] + weight * (values[right] - values[left])
    is_inside = (positions >= 0) & (positions <= last)
    line = np.where(per_component(is_inside), line, np.nan)
    is_sample = per_component(np.abs(positions - nearest) <= precision)
    return np.where(np.isnan(line) & is_sample, values[nearest], line)
