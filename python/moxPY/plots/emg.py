"""Electromyography: the raw signals, their envelopes, and when the foot was on the floor."""

from __future__ import annotations

import re
from collections.abc import Iterable
from typing import TYPE_CHECKING, Any

import numpy as np

from ..sides import SIDES, Side, sided
from ..trial.channel import Channel
from ..trial.extras import require
from ..trial.runs import filtered_runs
from ..trial.samples import FloatArray
from ..trial.verbs.filter import butterworth
from .colours import NEITHER, SIDE_COLOURS, colour_of
from .occasions import stances
from .panels import Panels, plain, require_clock

if TYPE_CHECKING:
    from ..trial import Trial
    from .plots import Plots

_HIGH_PASS = 20.0  # Hz: slower is movement of cables and skin
_VOLTS = {"v", "mv", "uv", "µv"}
_FORCE = re.compile(r"[fm]\d*[xyz]\d*", re.IGNORECASE)  # of a platform that nobody described
# Behind each other in one column as long as there are so few.
_COLUMN = 6


def emg(
    plots: Plots, labels: Iterable[str] | None = None, *, cutoff: float = 6.0, ax: Any = None
) -> Any:
    """Electromyograms over time: the raw signal, without its mean, thin, and its envelope above it.

    Stretches in the colour of the side are its stance, from foot strike to foot off; a muscle of
    neither side has a bar for each of them at the bottom.

    Parameters
    ----------
    labels : iterable of str, optional
        Analog channels. When left out, those whose labels say "EMG"; or else those in volts that
        belong to no force platform.
    cutoff : float
        Of the envelope in hertz.
    ax : Axes or array of Axes, optional
        As many as there are panels.

    Returns
    -------
    ndarray
        Axes, shape (muscles, 2), left and right, where all muscles have both sides; else in one
        column, or in two if there are more than six. A panel that is left over is hidden.

    Raises
    ------
    KeyError
        There is no analog channel of a label.
    ValueError
        The trial has no such channels, no samples or no rate; a cutoff is not below half of the
        channels' rate.
    ImportError
        matplotlib or SciPy is missing.

    Notes
    -----
    The envelope is the signal without what is slower than 20 Hz, rectified and low-passed, both by
    Butterworth filters of order 4 forwards and backwards, so that nothing is delayed.
    """
    trial = plots.trial
    shown = _muscles(trial) if labels is None else list(labels)
    channels = {label: trial.analogs[label] for label in shown}
    if not channels:
        raise ValueError("the trial has no channels of electromyography")
    require_clock(trial)
    time = trial.analogs.time
    if not len(time):
        raise ValueError("the trial has no analog samples")
    envelopes = _envelopes(channels, trial.analogs.rate, cutoff)
    grid = _arranged(shown)
    rows, columns = grid.shape
    panels = Panels(ax, grid.shape, (4.2 * max(columns, 2), 1.3 + 1.15 * rows), sharex=True)
    phases = {side: stances(trial, side) for side in SIDES}
    for axes, label in zip(panels.axes.flat, grid.flat, strict=True):
        if label is None:
            axes.set_visible(False)
            continue
        parts = sided(label)
        side = parts.side if parts else None
        _draw_phases(axes, side, phases)
        colour = colour_of(side)
        raw = channels[label]
        axes.plot(
            time, _about_mean(raw.values), color=colour, alpha=0.35, linewidth=0.4, label="raw"
        )
        axes.plot(time, envelopes[label], color=colour, linewidth=1.6, label="envelope")
        axes.set_title(plain(label), loc="left", fontsize="small", pad=2)
        axes.set_ylabel(plain(raw.unit or "no unit"), fontsize="small")
        axes.tick_params(labelsize="small")
        axes.margins(y=0.12)
        axes.set_xlim(time[0], time[-1] if len(time) > 1 else time[0] + 1.0 / trial.analogs.rate)
    for column in panels.axes.T:
        filled = [axes for axes in column if axes.get_visible()]
        filled[-1].set_xlabel("time (s)")
        filled[-1].tick_params(labelbottom=True)
    panels.align()
    panels.title("Electromyography", trial)
    panels.legend(_explained(phases, cutoff))
    return panels.axes


def _muscles(trial: Trial) -> list[str]:
    """The labels of channels that are most likely electromyograms."""
    others = {channel.index for plate in trial.platforms for channel in plate.channels}
    free = [(label, each) for label, each in trial.analogs.items() if each.index not in others]
    named = [label for label, _ in free if "emg" in label.casefold()]
    return named or [
        label
        for label, each in free
        if each.unit.casefold() in _VOLTS and not _FORCE.fullmatch(label)
    ]


def _envelopes(channels: dict[str, Channel], rate: float, cutoff: float) -> dict[str, FloatArray]:
    if not rate > 2 * _HIGH_PASS:
        raise ValueError(f"analog channels at {rate:g} Hz are too slow for electromyography")
    fast, slow = butterworth(_HIGH_PASS, 4, "high", rate), butterworth(cutoff, 4, "low", rate)
    return {
        label: filtered_runs(np.abs(filtered_runs(channel.values, fast)), slow)
        for label, channel in channels.items()
    }


def _about_mean(values: FloatArray) -> FloatArray:
    """A signal without the offset of its amplifier, which would set it off from its envelope."""
    return values - np.nanmean(values) if np.isfinite(values).any() else values


def _arranged(labels: list[str]) -> Any:
    """The labels in rows and columns, None where a panel is left over."""
    places: dict[str, dict[Side, str]] = {}
    for label in labels:
        parts = sided(label)
        if parts is not None:
            places.setdefault(f"{parts.subject}{parts.place}", {})[parts.side] = label
    if places and len(places) * 2 == len(labels) and all(len(own) == 2 for own in places.values()):
        return np.array([[own[side] for side in SIDES] for own in places.values()], dtype=object)
    columns = 1 if len(labels) <= _COLUMN else 2
    rows = -(-len(labels) // columns)
    padded = [*labels, *[None] * (rows * columns - len(labels))]
    return np.array(padded, dtype=object).reshape(columns, rows).T


def _draw_phases(
    axes: Any, side: Side | None, phases: dict[Side, list[tuple[float, float]]]
) -> None:
    for row, each in enumerate(SIDES):
        if side not in (None, each):
            continue
        for start, stop in phases[each]:
            if side is None:
                low, alpha = 0.02 + 0.06 * (1 - row), 0.6
                axes.axvspan(
                    start, stop, low, low + 0.05, color=SIDE_COLOURS[each], alpha=alpha, linewidth=0
                )
            else:
                axes.axvspan(start, stop, color=SIDE_COLOURS[each], alpha=0.1, linewidth=0)


def _explained(phases: dict[Side, list[tuple[float, float]]], cutoff: float) -> list[Any]:
    line = require("matplotlib", "lines").Line2D
    patch = require("matplotlib", "patches").Patch
    return [
        line([], [], color=NEITHER, alpha=0.6, linewidth=0.6, label="raw, about its mean"),
        line([], [], color=NEITHER, linewidth=1.6, label=f"envelope ({cutoff:g} Hz)"),
        *(
            patch(color=SIDE_COLOURS[side], alpha=0.3, linewidth=0, label=f"{side.lower()} stance")
            for side in SIDES
            if phases[side]
        ),
    ]
