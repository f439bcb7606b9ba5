"""Ground reaction forces over time."""

from __future__ import annotations

from typing import TYPE_CHECKING, Any

import numpy as np

from ..trial.extras import require
from .channel import AXES
from .colours import FAINT, NEITHER, SIDE_COLOURS, colour_of
from .contacts import Loaded, loaded
from .panels import Panels, note, on_top, plain, with_unit

if TYPE_CHECKING:
    from .plots import Plots

# Plates without a side are told apart by the way their lines are drawn.
_LINES = ("-", "--", ":", "-.")


def forces(plots: Plots, threshold: float = 20.0, *, ax: Any = None) -> Any:
    """Ground reaction forces of all platforms over time: the vertical one, then the other two.

    Forces are those on the person, as of `Platform.reaction`. A contact, from the first sample that
    reaches the threshold to the last one, is drawn in the colour of the foot (left red, right blue,
    grey where markers do not tell) and named in the vertical panel, which is shaded where the foot
    is known; outside of contacts lines are thin and grey. The dashed horizontal line is the
    threshold; a platform whose offset is above it seems to be stood on all the time.

    Parameters
    ----------
    threshold : float
        As for `Platforms.detect_events`, in the unit of the forces.
    ax : Axes or array of three Axes, optional
        One for the vertical force alone.

    Returns
    -------
    ndarray or Axes
        Three axes, the vertical force first; the one that was given.

    Raises
    ------
    ValueError
        The trial has no force platforms, no samples or no rate; the threshold is negative or NaN.
    ImportError
        matplotlib is missing.

    Examples
    --------
    >>> vertical, *_ = trial.plot.forces()
    >>> vertical.get_ylabel()
    'z, vertical (N)'
    """
    trial = plots.trial
    plates, up = loaded(trial, threshold)
    is_single = ax is not None and np.size(ax) == 1
    axes_shown = [up] if is_single else [up, *(axis for axis in range(3) if axis != up)]
    heights = [2.0, 1.0, 1.0][: len(axes_shown)]
    panels = Panels(
        ax, (len(axes_shown), 1), (8.0, 6.4), sharex=True, gridspec_kw={"height_ratios": heights}
    )
    column = panels.axes[:, 0]
    unit = " / ".join(dict.fromkeys(each.reaction.units.force or "no unit" for each in plates))
    time = trial.analogs.time
    for axes, axis in zip(column, axes_shown, strict=True):
        for each in plates:
            _draw_force(axes, each, axis)
        axes.axhline(0.0, color=NEITHER, linewidth=0.6, zorder=1)
        axes.set_ylabel(with_unit(f"{AXES[axis]}{', vertical' if axis == up else ''}", unit))
        axes.set_xlim(time[0], time[-1] if len(time) > 1 else time[0] + 1.0 / trial.analogs.rate)
    column[-1].set_xlabel("time (s)")
    _explain_vertical(column[0], plates, up, threshold, unit)
    panels.align()
    panels.title("Ground reaction forces on the person", trial)
    panels.legend(_explained(plates))
    return column[0] if is_single else column


def _draw_force(axes: Any, each: Loaded, axis: int) -> None:
    force, time = each.reaction.force[:, axis], each.reaction.time
    style = _LINES[each.plate.index % len(_LINES)]
    axes.plot(time, force, color=FAINT, linewidth=0.6, zorder=2, label=each.name)
    for contact, side in each.contacts:
        span = slice(contact.first, contact.stop)
        axes.plot(
            time[span], force[span], color=colour_of(side), linewidth=1.6, zorder=3,
            linestyle="-" if side in SIDE_COLOURS else style, label=f"{each.name}, {side}",
        )  # fmt: skip


def _explain_vertical(
    axes: Any, plates: list[Loaded], up: int, threshold: float, unit: str
) -> None:
    """The threshold, the stretches of contact, and on which plate each was."""
    axes.axhline(threshold, color=NEITHER, linewidth=0.9, linestyle=(0, (4, 3)), zorder=1)
    axes.annotate(
        plain(f"threshold {threshold:g} {unit}"), (1.0, threshold),
        xycoords=("axes fraction", "data"), xytext=(-2, 2), textcoords="offset points", ha="right",
        va="bottom", fontsize="x-small", color=NEITHER, **on_top(axes),
    )  # fmt: skip
    for each in plates:
        time, load = each.reaction.time, each.reaction.force[:, up]
        for contact, side in each.contacts:
            if side in SIDE_COLOURS:
                axes.axvspan(
                    time[contact.first], time[contact.stop - 1], color=colour_of(side), alpha=0.08,
                    linewidth=0, zorder=0,
                )  # fmt: skip
            span = load[contact.first : contact.stop]
            high = contact.first + np.flatnonzero(span >= np.nanmax(span) / 2)
            middle = (time[high[0]] + time[high[-1]]) / 2  # of a step, but not of an offset
            axes.annotate(
                each.name, (middle, np.nanmax(span)), (0, 4), textcoords="offset points",
                ha="center", va="bottom", fontsize="x-small", color=colour_of(side), **on_top(axes),
            )  # fmt: skip
    axes.margins(y=0.12)
    if not any(np.isfinite(each.reaction.force).any() for each in plates):
        note(axes, "the platforms have no force that is known")
    elif not any(each.contacts for each in plates):
        note(axes, f"nobody was on a platform with {threshold:g} {unit} or more")


def _explained(plates: list[Loaded]) -> list[Any]:
    line = require("matplotlib", "lines").Line2D
    met = {side for each in plates for _, side in each.contacts}
    sides = [side for side in (*SIDE_COLOURS, "General") if side in met]
    names = {"General": "foot not known", "Left": "Left foot", "Right": "Right foot"}
    lines = [
        line([], [], color=colour_of(side), linewidth=1.6, label=names[side]) for side in sides
    ]
    return [*lines, line([], [], color=FAINT, linewidth=0.8, label="no contact")]
