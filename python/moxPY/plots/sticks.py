"""A strip of stick figures."""

from __future__ import annotations

from collections.abc import Iterable, Sequence
from typing import TYPE_CHECKING, Any, NamedTuple

import numpy as np

from ..sides import SIDES, Side, sided
from ..skeleton import Stick, sticks_of
from ..trial.extras import require
from ..trial.numbers import whole_number
from ..trial.samples import FloatArray
from .channel import AXES
from .colours import colour_of
from .panels import Panels, note, with_unit
from .view import vertical_axis, walking_direction

if TYPE_CHECKING:
    from ..trial import Trial
    from .plots import Plots

_ORDER: tuple[Side | None, ...] = ("Left", None, "Right")  # the side that is nearer comes last


class _Body(NamedTuple):
    labels: list[str]
    values: FloatArray  #: (frames, markers, 3)
    sticks: list[Stick]


def sticks(
    plots: Plots,
    count: int = 8,
    *,
    frames: Iterable[int] | None = None,
    sticks: Sequence[Stick] | None = None,
    ax: Any = None,
) -> Any:
    """Stick figures of several instants side by side, seen from the side, walking to the right.

    Left limbs are red, right ones blue, all else grey. Figures stand at equal distances, each above
    its time, or its frame in a trial without a rate; within a figure lengths and heights have one
    scale.

    Parameters
    ----------
    count : int
        How many figures, at equal intervals from the first frame in which markers are seen to the
        last one.
    frames : iterable of int, optional
        The frames instead, as the trial numbers them.
    sticks : sequence of (str, str), optional
        Labels of the markers that are joined, an empty one for dots alone; when left out, the usual
        ones (`moxPY.skeleton.sticks_of`).
    ax : Axes, optional

    Returns
    -------
    Axes

    Raises
    ------
    KeyError
        There is no marker of a label.
    ValueError
        The trial has no markers or no frames, or not the frame that is asked for.
    ImportError
        matplotlib is missing.

    Examples
    --------
    >>> axes = trial.plot.sticks(frames=[100, 150, 200])
    >>> axes.get_xlabel(), axes.get_ylabel()
    ('time (s)', 'z (mm)')
    """
    trial = plots.trial
    body = _body(trial, sticks)
    up = vertical_axis(trial, body.values)
    chosen = _chosen(trial, body, count, frames)
    forward = body.values @ walking_direction(body.values, up)
    heights = body.values[:, :, up]
    poses = forward[chosen], heights[chosen]
    centred, pitch = _centred(poses[0])
    tall = _span(poses[1])
    width = 10.0
    room = (width - 0.9) / max(pitch * len(chosen), 1e-9) * tall
    panels = Panels(ax, (1, 1), (width, min(max(room + 1.4, 2.2), 9.0)))
    axes = panels.axes[0, 0]
    for number, (places, levels) in enumerate(zip(centred, poses[1], strict=True)):
        _draw(axes, body, places + number * pitch, levels)
    has_clock = trial.rate > 0.0
    names = [f"{trial.time[i]:.2f}" if has_clock else str(trial.first_frame + i) for i in chosen]
    axes.set_xticks(np.arange(len(chosen)) * pitch, names)
    axes.set_xlim(-0.55 * pitch, (len(chosen) - 0.45) * pitch)
    axes.set_aspect("equal", adjustable="datalim" if ax is not None else "box")
    axes.set_xlabel("time (s)" if has_clock else "frame")
    axes.set_ylabel(with_unit(AXES[up], trial.markers.unit))
    if not np.isfinite(poses[1]).any():
        note(axes, "no marker is seen in these frames")
    panels.title("Stick figures", trial)
    panels.legend(_explained(body))
    return axes


def _body(trial: Trial, sticks: Sequence[Stick] | None) -> _Body:
    """The markers that are joined, or all where none is."""
    labels, values = trial.markers.labelled_values()
    if 0 in values.shape:
        raise ValueError(f"the trial has no {'markers' if trial.frames else 'frames'}")
    joined = sticks_of(trial) if sticks is None else [(one, other) for one, other in sticks]
    ends = {label for stick in joined for label in stick}
    for label in ends - set(labels):
        trial.markers[label]  # KeyError, which names the nearest ones
    kept = [i for i, label in enumerate(labels) if not joined or label in ends]
    return _Body([labels[i] for i in kept], values[:, kept], joined)


def _chosen(trial: Trial, body: _Body, count: int, frames: Iterable[int] | None) -> list[int]:
    """Indices of the frames that are drawn."""
    if frames is not None:
        numbers = [whole_number(frame, "the number of a frame", 1) for frame in frames]
        for number in numbers:
            if not trial.first_frame <= number <= trial.last_frame:
                raise ValueError(
                    f"there is no frame {number}: the trial has frames {trial.first_frame} to "
                    f"{trial.last_frame}"
                )
        if not numbers:
            raise ValueError("there are no frames to draw")
        return [number - trial.first_frame for number in numbers]
    count = whole_number(count, "the number of figures", 1)
    share = np.isfinite(body.values).all(axis=2).mean(axis=1)
    seen = np.flatnonzero(share >= 0.5 * share.max()) if share.any() else np.arange(trial.frames)
    return [int(i) for i in np.unique(np.linspace(seen[0], seen[-1], count).round().astype(int))]


def _centred(forward: FloatArray) -> tuple[FloatArray, float]:
    """Places of each figure about its middle, and how far figures stand from each other."""
    seen = np.isfinite(forward)
    middles = np.array(
        [
            (np.nanmin(row) + np.nanmax(row)) / 2 if known.any() else 0.0
            for row, known in zip(forward, seen, strict=True)
        ]
    )
    centred = forward - middles[:, np.newaxis]
    widest = 2 * float(np.nanmax(centred)) if seen.any() else 0.0
    return centred, 1.12 * widest or 1.0


def _span(levels: FloatArray) -> float:
    return float(np.nanmax(levels) - np.nanmin(levels)) if np.isfinite(levels).any() else 1.0


def _draw(axes: Any, body: _Body, places: FloatArray, levels: FloatArray) -> None:
    index = {label: i for i, label in enumerate(body.labels)}
    collection = require("matplotlib", "collections").LineCollection
    for side in _ORDER:
        own = [stick for stick in body.sticks if _side(stick) == side]
        ends = [[(places[index[label]], levels[index[label]]) for label in stick] for stick in own]
        if ends:
            lines = np.array(ends, dtype=np.float64)
            lines = lines[np.isfinite(lines).all(axis=(1, 2))]
            axes.add_collection(
                collection(lines, colors=colour_of(side), linewidths=1.4, capstyle="round")
            )
    axes.plot(places, levels, linestyle="", marker="o", markersize=1.8, color="#444444", zorder=3)


def _side(stick: Stick) -> Side | None:
    """The side that both ends are on."""
    one, other = (sided(label) for label in stick)
    return one.side if one and other and one.side == other.side else None


def _explained(body: _Body) -> list[Any]:
    line = require("matplotlib", "lines").Line2D
    met = {_side(stick) for stick in body.sticks}
    return [
        line([], [], color=colour_of(side), linewidth=1.4, label=f"{side.lower()} side")
        for side in SIDES
        if side in met
    ]
