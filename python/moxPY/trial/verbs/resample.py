"""A trial at another rate."""

from __future__ import annotations

import math
from typing import TYPE_CHECKING, NamedTuple

import _moxPY
import numpy as np
from _moxPY import trial as calls

from ..extras import require
from ..kinds import POINT_KINDS
from ..numbers import real_number
from ..runs import at_positions, filtered_runs, places_in, seen_runs
from ..samples import FloatArray

if TYPE_CHECKING:
    from ..trial import Trial

# Of the instants: a millionth of a sample is none.
_NEGLIGIBLE = 1e-6


def resample(trial: Trial, rate: float, analog_rate: float | None = None) -> Trial:
    """A trial with other frames a second, and other samples a second of analog channels if asked.

    The new frames are the instants k / `rate` on the trial's clock, from the first one that is not
    before the old first frame to the last one that is not behind the old last frame and that has
    all of its analog samples. Instants stay, so the first frame gets another number, and events
    keep their seconds.

    Parameters
    ----------
    rate : float
        Frames a second.
    analog_rate : float, optional
        Samples a second of the analog channels, a whole multiple of `rate`. By default they keep
        their rate, and with it every sample as it is.

    Returns
    -------
    Trial

    Raises
    ------
    ValueError
        A rate is no positive number, the trial has no rate, no new frame lies in it, or the rate of
        the analog channels, old or new, is no whole multiple of `rate`.
    TypeError
        A rate is no number.
    ImportError
        SciPy is missing.

    Notes
    -----
    Points lie on cubic splines through the runs of frames between gaps; where one of the frames on
    both sides is not seen, neither is the new one. All of them count as computed (residual 0). What
    is faster than half of a lower rate should be taken out first, by `filter`.

    Analog channels at another rate lie on such splines, too. For a lower one a Butterworth filter
    of zero lag (order 4 each way, cutoff 0.4 × the new rate) comes first.

    Rotations keep their samples in each frame. They turn evenly from one sample to the next
    (slerp), and positions lie on splines; of a segment with matrices that are no rotations the
    nearest sample is taken.

    Examples
    --------
    >>> trial.resample(50.0).rate
    50.0
    """
    changed = trial.copy()
    rate = _positive(rate)
    analog_rate = None if analog_rate is None else _positive(analog_rate)
    if not trial.rate > 0.0:
        raise ValueError("a trial without a rate cannot be resampled")
    ratio = _ratio(trial, rate, analog_rate)
    if rate == trial.rate and ratio == trial.samples_per_frame:
        return changed
    clock = _Clock.of(trial, rate, ratio)
    points = {
        kind: _points(trial, kind, clock) for kind in POINT_KINDS if len(getattr(trial, kind))
    }
    analogs = _analogs(trial, clock) if len(trial.analogs) else None
    rotations = {label: _rotation(trial, label, clock) for label in trial.rotations}

    calls.set_time_base(changed, rate, ratio, clock.frames)
    _moxPY.moxSetFirstFrame(changed, clock.first, 0)
    for kind, values in points.items():
        getattr(changed, kind).values = values
    if analogs is not None:
        changed.analogs.values = analogs
    for label, matrices in rotations.items():
        # What was known of other samples goes with them.
        changed.rotations[label] = np.full(matrices.shape, np.nan)
        changed.rotations[label] = matrices
    return changed


def _positive(rate: float) -> float:
    number = real_number(rate, "a rate")
    if not (math.isfinite(number) and number > 0.0):
        raise ValueError(f"a rate is a positive number, not {number}")
    return number


class _Clock(NamedTuple):
    """The new frames beside the old ones."""

    first: int  #: index of the first new frame: its instant is first / rate
    frames: int
    rate: float
    ratio: int  #: analog samples in each frame
    step: float  #: old frames from a new one to the next
    former_first: int  #: index of the first old frame

    @classmethod
    def of(cls, trial: Trial, rate: float, ratio: int) -> _Clock:
        step = trial.rate / rate
        begin, frames = trial.first_frame - 1, trial.frames
        first = math.ceil(begin / step - _NEGLIGIBLE)
        stop = math.floor((begin + frames - 1) / step + _NEGLIGIBLE) + 1 if frames else first
        if trial.analogs:
            # The first sample behind the old ones, at the new rate.
            speed = ratio / step / trial.samples_per_frame
            last = (begin * trial.samples_per_frame + len(trial.analogs.time) - 1) * speed
            stop = min(stop, (math.floor(last + _NEGLIGIBLE) + 1) // ratio)
        if stop <= first and frames:
            raise ValueError(f"no frame of a rate of {rate:g} lies in the trial")
        return cls(first, stop - first, rate, ratio, step, begin)

    def positions(self, ratio: int = 1, former_ratio: int = 1) -> FloatArray:
        """The new instants counted in old samples, with so many samples in each frame."""
        indices = np.arange(self.frames * ratio, dtype=np.float64) + self.first * ratio
        instants: FloatArray = indices * (self.step * former_ratio / ratio)
        return instants - self.former_first * former_ratio


def _ratio(trial: Trial, rate: float, analog_rate: float | None) -> int:
    """Analog samples in each new frame."""
    wanted = trial.analogs.rate if analog_rate is None else analog_rate
    ratio = round(wanted / rate)
    if ratio >= 1 and abs(wanted - ratio * rate) <= _NEGLIGIBLE * wanted:
        return ratio
    if analog_rate is not None:
        raise ValueError(f"an analog rate of {analog_rate:g} is no whole multiple of {rate:g}")
    if not trial.analogs:
        return max(ratio, 1)
    raise ValueError(
        f"the rate of the analog channels, {wanted:g}, is no whole multiple of {rate:g}; "
        "give an analog_rate that is one"
    )


def _points(trial: Trial, kind: str, clock: _Clock) -> FloatArray:
    values = getattr(trial, kind).values
    positions = clock.positions()
    result = np.empty((clock.frames, *values.shape[1:]))
    for i in range(values.shape[1]):
        result[:, i] = at_positions(values[:, i], positions)
    return result


def _analogs(trial: Trial, clock: _Clock) -> FloatArray:
    values = trial.analogs.values
    former = trial.samples_per_frame
    positions = clock.positions(clock.ratio, former)
    if abs(clock.step * former / clock.ratio - 1.0) <= _NEGLIGIBLE:
        start = round(positions[0]) if positions.size else 0
        return values[start : start + len(positions)]
    result = np.empty((len(positions), values.shape[1]))
    speed = clock.ratio / (clock.step * former)
    for i in range(values.shape[1]):
        channel = values[:, i]
        if speed < 1.0:
            sections = require("scipy", "signal").butter(4, 0.8 * speed, output="sos")
            channel = filtered_runs(channel, sections)
        result[:, i] = at_positions(channel, positions)
    return result


def _rotation(trial: Trial, label: str, clock: _Clock) -> FloatArray:
    matrices = trial.rotations[label]
    ratio = trial.rotations.samples_per_frame
    positions = clock.positions(ratio, ratio)
    result = np.full((len(positions), 4, 4), np.nan)
    turn = _evenly if _are_rotations(matrices) else _nearest
    for run in seen_runs(matrices):
        inside = places_in(run, positions)
        if inside.start < inside.stop:
            samples = np.clip(positions[inside], run.start, run.stop - 1) - run.start
            result[inside] = turn(matrices[run], samples)
    return result


def _are_rotations(matrices: FloatArray) -> bool:
    turns = matrices[np.isfinite(matrices).all(axis=(1, 2)), :3, :3]
    squares = turns @ turns.transpose(0, 2, 1)
    return bool(np.allclose(squares, np.eye(3), atol=1e-3) and (np.linalg.det(turns) > 0.0).all())


def _evenly(matrices: FloatArray, positions: FloatArray) -> FloatArray:
    spatial = require("scipy", "spatial.transform")
    if len(matrices) == 1:
        return _nearest(matrices, positions)
    turns = spatial.Rotation.from_matrix(matrices[:, :3, :3])
    result = np.zeros((len(positions), 4, 4))
    result[:, :3, :3] = spatial.Slerp(np.arange(len(matrices)), turns)(positions).as_matrix()
    result[:, :, 3] = at_positions(matrices[:, :, 3], positions)
    return result


def _nearest(matrices: FloatArray, positions: FloatArray) -> FloatArray:
    return matrices[np.rint(positions).astype(np.intp)]
