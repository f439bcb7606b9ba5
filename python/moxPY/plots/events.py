"""The events of a trial as a time line."""

from __future__ import annotations

from typing import TYPE_CHECKING, Any

from ..sides import SIDES
from ..trial.extras import require
from .colours import NEITHER, SIDE_COLOURS
from .occasions import Kind, Occasion, occasions, stances
from .panels import Panels, plain

if TYPE_CHECKING:
    from .plots import Plots

_MARKS: dict[Kind, Any] = {
    "strike": {"marker": "v"},
    "off": {"marker": "^", "fillstyle": "none"},
    "other": {"marker": "D", "markersize": 4},
}
# How far above the line of their side other events are, which often go with a strike or an off.
_ABOVE = 0.28
_NAMES: dict[Kind, str] = {"strike": "foot strike", "off": "foot off"}


def events(plots: Plots, *, ax: Any = None) -> Any:
    """The events of a trial over time, a line a side.

    Foot strikes are full triangles that point downwards, foot offs empty ones that point upwards;
    a bar between them is the foot on the floor. All other events are diamonds above the line, with
    their names.

    Parameters
    ----------
    ax : Axes, optional

    Returns
    -------
    Axes

    Raises
    ------
    ValueError
        The trial has no events.
    ImportError
        matplotlib is missing.
    """
    trial = plots.trial
    known = occasions(trial)
    if not known:
        raise ValueError("the trial has no events")
    lanes = {name: row for row, name in enumerate(_lanes(known))}
    panels = Panels(ax, (1, 1), (8.0, 1.6 + 0.6 * len(lanes)))
    axes = panels.axes[0, 0]
    for side in SIDES:
        spans = [(start, stop - start) for start, stop in stances(trial, side)]
        if side in lanes and spans:
            axes.broken_barh(
                spans, (lanes[side] - 0.09, 0.18), color=SIDE_COLOURS[side], alpha=0.25, linewidth=0
            )
    for each in known:
        _draw(axes, each, lanes[_lane(each)])
    times = [each.event.time for each in known]
    ends = [trial.time[0], trial.time[-1]] if trial.frames and trial.rate > 0.0 else []
    first, last = min([*times, *ends]), max([*times, *ends])
    margin = 0.02 * (last - first) or 0.5
    axes.set_xlim(first - margin, last + margin)
    axes.set_ylim(len(lanes) - 0.4, -0.9 if any(e.kind == "other" for e in known) else -0.6)
    axes.set_yticks(range(len(lanes)), [plain(name) for name in lanes])
    axes.tick_params(axis="y", length=0)
    axes.set_xlabel("time (s)")
    axes.set_ylabel("side")
    axes.grid(True, axis="x", alpha=0.25, linewidth=0.6)
    panels.title(f"{len(known)} event{'' if len(known) == 1 else 's'}", trial)
    panels.legend(_explained(known, bool(axes.collections)))
    return axes


def _lane(each: Occasion) -> str:
    return each.side or each.event.context or "no side"


def _lanes(known: list[Occasion]) -> list[str]:
    """The sides first, then other contexts in order of time."""
    met = list(dict.fromkeys(map(_lane, known)))
    return [side for side in SIDES if side in met] + [lane for lane in met if lane not in SIDES]


def _draw(axes: Any, each: Occasion, row: int) -> None:
    level = row - (_ABOVE if each.kind == "other" else 0.0)
    axes.plot(
        [each.event.time], [level], linestyle="", color=each.colour, label=plain(each.name),
        **{"markersize": 8, **_MARKS[each.kind]},
    )  # fmt: skip
    if each.kind == "other":
        axes.annotate(
            plain(each.event.label or each.event.context), (each.event.time, level), (1, 4),
            textcoords="offset points", ha="left", va="bottom", rotation=35, fontsize="x-small",
            color=each.colour,
        )  # fmt: skip


def _explained(known: list[Occasion], has_stances: bool) -> list[Any]:
    """What a legend says of the marks, whatever the side."""
    line = require("matplotlib", "lines").Line2D
    patch = require("matplotlib", "patches").Patch
    kinds = {each.kind for each in known}
    marks = [
        line([], [], linestyle="", color=NEITHER, label=name, **_MARKS[kind])
        for kind, name in _NAMES.items()
        if kind in kinds
    ]
    return marks + ([patch(color=NEITHER, alpha=0.3, label="on the floor")] if has_stances else [])
