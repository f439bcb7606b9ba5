"""A trial with its gaps filled."""

from __future__ import annotations

from typing import TYPE_CHECKING, Any, Literal

import numpy as np
from _moxPY import trial as calls

from ..extras import require
from ..gaps import runs_of
from ..samples import FloatArray

if TYPE_CHECKING:
    from ..trial import Trial

Method = Literal["linear", "cubic", "pchip"]
_METHODS = ("linear", "cubic", "pchip")


def fill_gaps(trial: Trial, longest: int | None = None, method: Method = "pchip") -> Trial:
    """A trial in which markers have places where they were lost for a while.

    Gaps at the beginning and the end stay. What was seen keeps its samples, residuals and camera
    masks; what is filled in counts as computed: residual 0, no cameras. A frame in which one
    coordinate is missing is part of a gap.

    Parameters
    ----------
    longest : int, optional
        Gaps of more frames stay; by default none is too long.
    method : {"pchip", "cubic", "linear"}
        What runs through a gap. ``"pchip"`` and ``"cubic"`` go on smoothly from the frames on both
        sides; ``"pchip"`` never swings beyond the frame before and the one behind the gap,
        ``"cubic"`` (the spline through everything seen) follows a turn. ``"linear"`` is a straight
        line.

    Returns
    -------
    Trial

    Raises
    ------
    ValueError
        The method is none of these, or `longest` is negative.
    ImportError
        SciPy is missing.

    Examples
    --------
    >>> filled = trial.fill_gaps(longest=10)
    """
    filled = trial.copy()
    if method not in _METHODS:
        raise ValueError(f"a method is one of {', '.join(_METHODS)}, not {method!r}")
    if longest is not None and longest < 0:
        raise ValueError(f"the longest gap has 0 frames or more, not {longest}")
    for label, channel in filled.markers.items():
        original = trial.markers[label]
        values = original.values
        lost = _inner_gaps(values, longest)
        if not lost.any():
            continue
        changed = values.copy()
        changed[lost] = _between(values, np.flatnonzero(lost), method)
        channel.values = changed
        calls.carry_residuals(filled, channel._handle, trial, original._handle)
    return filled


def _inner_gaps(values: FloatArray, longest: int | None) -> Any:
    """Which frames are to be filled."""
    missing = np.isnan(values).any(axis=1)
    lost = np.zeros_like(missing)
    for first, last in runs_of(missing):
        is_inner = first > 0 and last < len(values) - 1
        if is_inner and (longest is None or last - first < longest):
            lost[first : last + 1] = True
    return lost


def _between(values: FloatArray, frames: Any, method: Method) -> FloatArray:
    """What is in the place of lost frames."""
    interpolate = require("scipy", "interpolate")
    seen = np.flatnonzero(np.isfinite(values).all(axis=1))
    curves = {
        "linear": lambda x, y: interpolate.make_interp_spline(x, y, k=1),
        "cubic": interpolate.CubicSpline,
        "pchip": interpolate.PchipInterpolator,
    }
    result: FloatArray = curves[method](seen.astype(np.float64), values[seen])(frames)
    return result
