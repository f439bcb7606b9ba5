"""Numeric work on runs of samples, so that gaps stay gaps."""

from __future__ import annotations

from collections.abc import Iterator

import numpy as np

from .extras import require
from .gaps import runs_of
from .samples import FloatArray


def seen_runs(values: FloatArray) -> Iterator[slice]:
    """The runs of samples in which each component is a finite number.

    Parameters
    ----------
    values : ndarray
        Shape (samples, ...).
    """
    components = tuple(range(1, values.ndim))
    for first, last in runs_of(np.isfinite(values).all(axis=components)):
        yield slice(int(first), int(last) + 1)


def at_positions(values: FloatArray, positions: FloatArray) -> FloatArray:
    """Values between samples: those of the cubic spline through each run.

    Parameters
    ----------
    values : ndarray
        Shape (samples, ...).
    positions : ndarray
        Where to look, counted in samples, in rising order. One that is a millionth of a sample
        beside a sample is on it.

    Returns
    -------
    ndarray
        Shape (positions, ...), NaN outside of the runs.
    """
    result = np.full((len(positions), *values.shape[1:]), np.nan)
    for run in seen_runs(values):
        inside = places_in(run, positions)
        samples = np.clip(positions[inside], run.start, run.stop - 1)
        result[inside] = _on_run(values, run, samples)
    return result


def places_in(run: slice, positions: FloatArray) -> slice:
    """Which of rising positions lie between the first and the last sample of a run."""
    margin = 1e-6
    first = np.searchsorted(positions, run.start - margin)
    last = np.searchsorted(positions, run.stop - 1 + margin, side="right")
    return slice(int(first), int(last))


def _on_run(values: FloatArray, run: slice, positions: FloatArray) -> FloatArray:
    content = values[run]
    if len(content) == 1:
        return np.broadcast_to(content, (len(positions), *values.shape[1:]))
    knots = np.arange(run.start, run.stop, dtype=np.float64)
    spline = require("scipy", "interpolate").CubicSpline(knots, content)
    on_spline: FloatArray = spline(positions)
    return on_spline


def filtered_runs(values: FloatArray, sections: FloatArray) -> FloatArray:
    """Each run filtered forwards and backwards by itself; runs that are too short for it are as
    they were.

    Parameters
    ----------
    values : ndarray
        Shape (samples, ...).
    sections : ndarray
        The filter in sections of the second order.
    """
    signal = require("scipy", "signal")
    result = values.copy()
    for run in seen_runs(values):
        # What the filter continues a signal by at both ends, as `filtfilt` does it.
        ends = 3 * (2 * len(sections) + 1 - _missing_coefficients(sections))
        if run.stop - run.start > ends:
            result[run] = signal.sosfiltfilt(sections, values[run], axis=0, padlen=ends)
    return result


def _missing_coefficients(sections: FloatArray) -> int:
    """Sections of the first order among them."""
    return int(min((sections[:, 2] == 0.0).sum(), (sections[:, 5] == 0.0).sum()))
