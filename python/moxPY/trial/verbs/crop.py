"""A stretch of the frames of a trial."""

from __future__ import annotations

from operator import index
from typing import TYPE_CHECKING

import _moxPY
import numpy as np
from _moxPY import trial as calls

if TYPE_CHECKING:
    from ..trial import Trial


def crop(
    trial: Trial,
    first: int | None = None,
    last: int | None = None,
    *,
    start: float | None = None,
    stop: float | None = None,
) -> Trial:
    """A trial of some of the frames: those from `first` to `last`, or those of a stretch of time.

    Points with their residuals and camera masks, analog channels and rotations are cut alike;
    what is kept is kept bit for bit. Frames keep their numbers and instants, so the first frame
    changes. Events outside of the stretch are dropped: those before the instant of the first frame
    or after that of the last one, or outside of `start` and `stop` where they are given. Instants
    are compared in single precision, in which files hold events.

    Parameters
    ----------
    first, last : int, optional
        Frames as the trial numbers them, both ends included; without one, the trial's own.
    start, stop : float, optional
        Seconds on the trial's clock: the frames with start ≤ t ≤ stop. A stretch may reach beyond
        the trial.

    Returns
    -------
    Trial

    Raises
    ------
    ValueError
        There is no frame in the range, the trial lacks a frame in it, or seconds are given
        and the trial has no rate.
    TypeError
        Frames and seconds are given.

    Examples
    --------
    >>> trial.crop(101, 200).frames
    100
    >>> part = trial.crop(start=1.0, stop=2.0)
    """
    cropped = trial.copy()
    if first is None and last is None:
        first, last = _frames_between(trial, start, stop)
    elif start is not None or stop is not None:
        raise TypeError("a stretch is given in frames or in seconds, not in both")
    first = trial.first_frame if first is None else index(first)
    last = trial.last_frame if last is None else index(last)
    if not trial.first_frame <= first <= last <= trial.last_frame:
        raise ValueError(f"there are no frames {first} to {last}; {_extent(trial)}")
    calls.crop(cropped, first - trial.first_frame, last - first + 1)
    if first != trial.first_frame:
        _moxPY.moxSetFirstFrame(cropped, first - 1, 0)
    _drop_events(cropped, start, stop)
    return cropped


def _frames_between(trial: Trial, start: float | None, stop: float | None) -> tuple[int, int]:
    """The first and last frame of a stretch of time."""
    if start is None and stop is None:
        return trial.first_frame, trial.last_frame
    if not trial.rate > 0.0:
        raise ValueError("a trial without a rate has no seconds; give frames")
    inside = np.ones(trial.frames, dtype=np.bool_)
    time = trial.time.astype(np.float32)
    if start is not None:
        inside &= time >= np.float32(start)
    if stop is not None:
        inside &= time <= np.float32(stop)
    frames = np.flatnonzero(inside)
    if frames.size == 0:
        ends = f"from {'its start' if start is None else f'{start:g} s'}"
        ends += f" to {'its end' if stop is None else f'{stop:g} s'}"
        raise ValueError(f"there is no frame {ends}; {_extent(trial)}")
    return trial.first_frame + int(frames[0]), trial.first_frame + int(frames[-1])


def _drop_events(trial: Trial, start: float | None, stop: float | None) -> None:
    """Remove the events outside of a stretch of time, by default of the frames."""
    if not trial.rate > 0.0:
        return  # no frame has an instant
    time = trial.time
    earliest = np.float32(time[0] if start is None else start)
    latest = np.float32(time[-1] if stop is None else stop)
    for event in list(trial.events):
        if not earliest <= np.float32(event.time) <= latest:
            trial.events.remove(event)


def _extent(trial: Trial) -> str:
    """The range that there is, for messages."""
    if trial.frames == 0:
        return "the trial has none"
    frames = f"the trial has the frames {trial.first_frame} to {trial.last_frame}"
    if not trial.rate > 0.0:
        return frames
    return f"{frames}, {trial.time[0]:g} s to {trial.time[-1]:g} s"
