"""A trial with its channels filtered."""

from __future__ import annotations

from collections.abc import Iterable, Sequence
from typing import TYPE_CHECKING, Literal

import numpy as np
from _moxPY import trial as calls

from ..extras import require
from ..kinds import KINDS
from ..runs import filtered_runs
from ..samples import FloatArray

if TYPE_CHECKING:
    from ..trial import Trial

Kind = Literal["low", "high", "band", "stop"]
# What SciPy calls them, and how many frequencies they have.
_KINDS = {
    "low": ("lowpass", 1),
    "high": ("highpass", 1),
    "band": ("bandpass", 2),
    "stop": ("bandstop", 2),
}


def filter(
    trial: Trial,
    cutoff: float | Sequence[float],
    order: int = 4,
    kind: Kind = "low",
    *,
    channels: str | Iterable[str] = "points",
) -> Trial:
    """A trial whose channels went through a Butterworth filter forwards and backwards.

    So nothing is delayed. Gaps are respected: each run of frames in which a point was seen is
    filtered by itself, and runs that are too short for it (up to three times the filter's length:
    15 samples at order 4) are left as they are. Residuals and camera masks stay.

    Parameters
    ----------
    cutoff : float or (float, float)
        Hertz; two frequencies for ``"band"`` and ``"stop"``.
    order : int
        Order of the filter, which signals pass twice: at the cutoff half of the amplitude is left
        (−6 dB, each pass −3 dB).
    kind : {"low", "high", "band", "stop"}
        What passes: what is slower, faster, between two frequencies, or all but that.
    channels : str or iterable of str
        Which channels: ``"points"`` of all kinds, ``"markers"``, ``"angles"``, ``"forces"``,
        ``"moments"``, ``"powers"``, ``"analogs"``, or labels of points and analog channels.

    Returns
    -------
    Trial

    Raises
    ------
    ValueError
        A cutoff is not between 0 and half of the channels' rate, the frequencies are not as many
        as the kind has or not in rising order, the order is below 1, or there is no such kind.
    KeyError
        There is no channel of a label.
    ImportError
        SciPy is missing.

    Notes
    -----
    It is `scipy.signal.sosfiltfilt` with the sections of `scipy.signal.butter`.

    Examples
    --------
    >>> smooth = trial.filter(6.0)
    >>> muscles = trial.filter((20.0, 400.0), kind="band", channels="analogs")
    """
    filtered = trial.copy()
    for name, labels in _chosen(trial, channels).items():
        sections = butterworth(
            cutoff, order, kind, trial.analogs.rate if name == "analogs" else trial.rate
        )
        for label in labels:
            original, channel = getattr(trial, name)[label], getattr(filtered, name)[label]
            channel.values = filtered_runs(original.values, sections)
            if name != "analogs":
                calls.carry_residuals(filtered, channel._handle, trial, original._handle)
    return filtered


def _chosen(trial: Trial, channels: str | Iterable[str]) -> dict[str, list[str]]:
    """The labels that are meant, by the mapping of the trial that has them."""
    if isinstance(channels, str):
        if channels in ("points", *KINDS):
            return {channels: getattr(trial, channels).labels}
        channels = [channels]
    labels = list(dict.fromkeys(channels))
    analogs = [label for label in labels if label in trial.analogs]
    points = [label for label in labels if label not in analogs or label in trial.points]
    for label in points:
        trial.points[label]  # or KeyError
    return {name: meant for name, meant in (("points", points), ("analogs", analogs)) if meant}


def butterworth(cutoff: float | Sequence[float], order: int, kind: Kind, rate: float) -> FloatArray:
    """The filter in sections of the second order, as `filtered_runs` takes it."""
    if kind not in _KINDS:
        raise ValueError(f"a kind of filter is one of {', '.join(_KINDS)}, not {kind!r}")
    if order < 1:
        raise ValueError(f"the order of a filter is 1 or more, not {order}")
    name, count = _KINDS[kind]
    frequencies = np.atleast_1d(np.asarray(cutoff, dtype=np.float64))
    if frequencies.shape != (count,) or (np.diff(frequencies) <= 0.0).any():
        wanted = "one cutoff" if count == 1 else "two cutoffs in rising order"
        raise ValueError(f"a filter of the kind {kind!r} has {wanted}, not {cutoff}")
    if not ((frequencies > 0.0) & (frequencies < rate / 2)).all():
        raise ValueError(
            f"a cutoff lies between 0 and {rate / 2:g} Hz, half of the rate of the channels; "
            f"{cutoff} does not"
        )
    bounds = frequencies[0] if count == 1 else frequencies
    sections: FloatArray = require("scipy", "signal").butter(
        order, bounds, name, output="sos", fs=rate
    )
    return sections
