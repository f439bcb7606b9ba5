"""Angles, moments and powers over the gait cycle, left and right laid over each other."""

from __future__ import annotations

from collections.abc import Iterable, Mapping, Sequence
from typing import TYPE_CHECKING, Any

import numpy as np

from ..sides import SIDES, Side
from ..trial.cycles import Cycle
from ..trial.extras import require
from .colours import NEITHER, SIDE_COLOURS
from .cycle_axes import (
    LAYERS,
    PER_CENT,
    WIDTHS,
    begin,
    draw_reference,
    name_below,
    reference_handle,
    size_of,
    widen,
)
from .cycle_panels import Panel, from_pelvis_to_foot, panels_of
from .cycle_reference import reference_of
from .cycles_of_kind import cycles_of_kind, why_none
from .occasions import stances
from .panels import Panels, note, require_clock

if TYPE_CHECKING:
    from .plots import Plots

Cycles = Mapping[str, Sequence[Cycle]]

_SPREAD = 0.22  # how opaque a deviation is


def angles(
    plots: Plots,
    labels: Iterable[str] | None = None,
    *,
    cycles: Cycles | None = None,
    reference: Mapping[str, Any] | None = None,
    ax: Any = None,
) -> Any:
    """Angles over the gait cycle: a grid with a row a joint and a column a component.

    Left is red, right is blue: the colours in print nearly everywhere, and told apart by everybody,
    which red and green are not. Each line is the mean of the cycles of its side, the band around it
    one standard deviation to either side; a single cycle is a line alone. Upright dashed lines are
    the mean foot offs.

    Parameters
    ----------
    labels : iterable of str, optional
        Which angles, of either side, in this order; those of both are in one panel. When left
        out, all from the pelvis down to the foot, then those of other names.
    cycles : mapping of str to sequence of Cycle, optional
        The cycles of ``"Left"`` and ``"Right"``; when left out, from each foot strike of a side to
        its next one.
    reference : mapping, optional
        What is usual, as a grey band of one standard deviation around a mean: label, with its side
        or without (``"KneeAngles"``), to a `MeanCycle` or a pair of mean and deviation, each of
        shape (instants, 3) from 0 to 100 % of a cycle.
    ax : array of Axes, optional
        As many as the grid has panels.

    Returns
    -------
    ndarray
        Axes, shape (joints, components); a single component makes it (1, joints). Panels without
        any value are hidden.

    Raises
    ------
    KeyError
        There is no angle of a label.
    ValueError
        There are no angles, neither side has a cycle, or the trial has no rate; a reference has
        another shape.
    ImportError
        matplotlib is missing.

    Notes
    -----
    Panels are headed as laboratories do it, "Knee flexion", where labels are those of the
    conventional gait model (``LKneeAngles``); all others by label and component. The sign is that
    of the file.

    Examples
    --------
    >>> normal = {"KneeAngles": trial.angles["RKneeAngles"].mean_cycle(trial.cycles("Right"))}
    >>> axes = trial.plot.angles(["LKneeAngles"], reference=normal)
    >>> axes[0, 0].get_xlabel()
    'gait cycle (%)'
    """
    return _grid(plots, "angles", labels, cycles, reference, ax)


def moments(
    plots: Plots,
    labels: Iterable[str] | None = None,
    *,
    cycles: Cycles | None = None,
    reference: Mapping[str, Any] | None = None,
    ax: Any = None,
) -> Any:
    """Moments over the gait cycle; parameters, result and errors as of `angles`.

    Moments come from the force on the foot. So when `cycles` is left out, they are those that begin
    with that foot on a force platform: a contact of it, as `Platforms.detect_events` finds them
    with 20 N, begins within 0.1 s of the foot strike. A contact in which the same foot strikes
    twice is of both feet, or of a belt, and does not count. Where no contact is of a known foot,
    all cycles are taken. The legend says how many were.

    Raises
    ------
    ValueError
        Besides those of `angles`: feet were on platforms, but in no cycle from its beginning.
    """
    return _grid(plots, "moments", labels, cycles, reference, ax)


def powers(
    plots: Plots,
    labels: Iterable[str] | None = None,
    *,
    cycles: Cycles | None = None,
    reference: Mapping[str, Any] | None = None,
    ax: Any = None,
) -> Any:
    """Powers over the gait cycle; parameters, result and errors as of `angles`.

    Powers come from the force on the foot. So when `cycles` is left out, they are those that begin
    with that foot on a force platform: a contact of it, as `Platforms.detect_events` finds them
    with 20 N, begins within 0.1 s of the foot strike. A contact in which the same foot strikes
    twice is of both feet, or of a belt, and does not count. Where no contact is of a known foot,
    all cycles are taken. The legend says how many were.

    Raises
    ------
    ValueError
        Besides those of `angles`: feet were on platforms, but in no cycle from its beginning.
    """
    return _grid(plots, "powers", labels, cycles, reference, ax)


def _grid(
    plots: Plots,
    kind: str,
    labels: Iterable[str] | None,
    cycles: Cycles | None,
    reference: Mapping[str, Any] | None,
    ax: Any,
) -> Any:
    trial = plots.trial
    channels = getattr(trial, kind)
    shown = list(from_pelvis_to_foot(channels) if labels is None else labels)
    content = panels_of(channels, shown)
    if not shown:
        raise ValueError(f"the trial has no {kind}")
    require_clock(trial)
    if cycles is None:
        of_sides = cycles_of_kind(trial, kind)
        if not any(of_sides.values()):
            raise ValueError(why_none(trial, kind))
    else:
        of_sides = {side: list(cycles.get(side, ())) for side in SIDES}
        if not any(of_sides.values()):
            raise ValueError("cycles has no gait cycle of 'Left' nor of 'Right'")
    bands = reference_of(reference)
    panels = Panels(ax, content.shape, size_of(content))
    offs = {side: _mean_off(stances(trial, side), of_sides[side]) for side in SIDES}
    for axes, panel in zip(panels.axes.flat, content.flat, strict=True):
        if panel is None:
            axes.set_visible(False)
            continue
        draw_reference(axes, panel, bands)
        _draw_panel(axes, panel, of_sides, offs)
    name_below(panels.axes)
    panels.align()
    panels.title(kind.capitalize(), trial)
    panels.legend(_explained(of_sides, offs, bool(bands)))
    return panels.axes


def _draw_panel(
    axes: Any, panel: Panel, cycles: dict[Side, list[Cycle]], offs: dict[Side, float]
) -> None:
    begin(axes, panel)
    has_curve = False
    for side, channel in panel.channels:
        if not cycles[side]:
            continue
        mean, deviation, count = channel.mean_cycle(cycles[side], len(PER_CENT))
        course, spread = mean[:, panel.component], deviation[:, panel.component]
        colour = SIDE_COLOURS[side]
        axes.plot(
            PER_CENT, course, color=colour, linewidth=WIDTHS[side], label=side, zorder=LAYERS[side]
        )
        if np.isfinite(spread).any():
            axes.fill_between(
                PER_CENT,
                course - spread,
                course + spread,
                color=colour,
                alpha=_SPREAD,
                linewidth=0,
            )
        if np.isfinite(offs[side]):
            axes.axvline(offs[side], color=colour, linestyle="--", linewidth=0.9, zorder=2)
        has_curve = has_curve or bool(count[:, panel.component].any())
    if not has_curve:
        note(axes, "not seen in any cycle")
    widen(axes, panel.unit)


def _mean_off(spans: list[tuple[float, float]], cycles: list[Cycle]) -> float:
    """When in per cent of a cycle the foot leaves the floor, on average; NaN where nobody tells."""
    offs = [
        100.0 * (off - start) / (stop - start)
        for start, stop, *_ in cycles
        for strike, off in spans
        if abs(strike - start) < 1e-6 and off < stop
    ]
    return float(np.mean(offs)) if offs else np.nan


def _explained(cycles: dict[Side, list[Cycle]], offs: dict[Side, float], banded: bool) -> list[Any]:
    line = require("matplotlib", "lines").Line2D
    patch = require("matplotlib", "patches").Patch
    lines = [
        line(
            [],
            [],
            color=SIDE_COLOURS[side],
            linewidth=WIDTHS[side],
            label=_counted(side, len(own)),
        )
        for side, own in cycles.items()
    ]
    spread = [side for side, own in cycles.items() if len(own) > 1]
    if spread:
        # In the colours of its sides, as grey is the reference.
        lines.append(
            tuple(
                patch(color=SIDE_COLOURS[side], alpha=_SPREAD, linewidth=0,
                      label="± 1 standard deviation")
                for side in spread
            )
        )  # fmt: skip
    if any(np.isfinite(off) for off in offs.values()):
        lines.append(line([], [], color=NEITHER, linestyle="--", linewidth=0.9, label="foot off"))
    return lines + ([reference_handle()] if banded else [])


def _counted(side: Side, count: int) -> str:
    return f"{side} ({count or 'no'} cycle{'' if count == 1 else 's'})"
