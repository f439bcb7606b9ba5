"""Force vectors at the centre of pressure, from the side, and its path over the platforms."""

from __future__ import annotations

import math
from typing import TYPE_CHECKING, Any

import numpy as np

from ..trial.extras import require
from ..trial.samples import FloatArray
from ..trial.wrench import WrenchUnits
from .channel import AXES
from .colours import NEITHER, colour_of
from .contacts import Loaded, loaded
from .panels import Panels, note, plain, with_unit
from .view import walking_direction

if TYPE_CHECKING:
    from .plots import Plots

_INTERVAL = 0.01  # seconds from vector to vector
# Of a longer contact vectors are farther apart: more of them are a dark patch.
_VECTORS = 200
# How high the greatest force is drawn, as a part of what the picture is wide.
_HEIGHT = 0.42
_WIDTH = 8.0


def butterfly(plots: Plots, threshold: float = 20.0, *, ax: Any = None) -> Any:
    """The ground reaction as the field draws it: force vectors that stand on their points of
    application, seen from the side, and the path of these points over the platforms, seen from
    above.

    The horizontal axis is that of the laboratory along which the person walks. Vectors have their
    true direction and one scale: they are read at the axis of the forces. There is one each 0.01 s,
    or at most 200 of a contact, in the colour of the foot (left red, right blue, grey where markers
    do not tell).

    Parameters
    ----------
    threshold : float
        The least force that counts as contact, as for `Platform.reaction`.
    ax : Axes or array of two Axes, optional
        One for the vectors alone.

    Returns
    -------
    ndarray or Axes
        Two axes, the vectors first; the one that was given.

    Raises
    ------
    ValueError
        The trial has no force platforms, no samples or no rate, or their places are not known; the
        threshold is negative or NaN.
    ImportError
        matplotlib is missing.

    Examples
    --------
    >>> side, floor = trial.plot.butterfly()
    >>> side.get_ylabel(), floor.get_xlabel()
    ('z force (N)', 'x (mm)')
    """
    trial = plots.trial
    plates, up = loaded(trial, threshold)
    corners = np.concatenate([each.plate.corners for each in plates])
    if not np.isfinite(corners).all(axis=1).any():
        raise ValueError("the trial does not say where its force platforms are")
    floor = [axis for axis in range(3) if axis != up]
    direction = walking_direction(_markers(plots), up) if trial.markers else None
    along = _along(floor, corners, direction)
    across = next(axis for axis in floor if axis != along)
    low, high = _ends(corners[:, along])
    scale = _scale(plates, up, high - low)
    is_single = ax is not None and np.size(ax) == 1
    rows = 1 if is_single else 2
    bottom, top = _ends(corners[:, across])
    heights = [_HEIGHT * 1.25, (top - bottom) / (high - low)][:rows]
    inner = _WIDTH - 1.0
    size = (_WIDTH, min(inner * sum(heights) + 1.9, 14.0))
    panels = Panels(ax, (rows, 1), size, gridspec_kw={"height_ratios": heights})
    column = panels.axes[:, 0]
    units = plates[0].reaction.units
    _draw_side(column[0], plates, along, up, scale, units, threshold)
    if not is_single:
        # Seen from above: where the axes run the other way round, one of them points downwards.
        is_from_above = (along, across, up) in {(0, 1, 2), (1, 2, 0), (2, 0, 1)}
        _draw_floor(column[1], plates, along, across, units, is_from_above)
        column[1].set_ylim(*((bottom, top) if is_from_above else (top, bottom)))
    for axes in column:
        axes.set_xlim(low, high)
    column[-1].set_xlabel(with_unit(AXES[along], units.point))
    panels.align()
    panels.title("Ground reaction at the centre of pressure", trial)
    panels.legend(_explained(plates))
    return column[0] if is_single else column


def _markers(plots: Plots) -> FloatArray:
    return plots.trial.markers.values


def _along(floor: list[int], corners: FloatArray, direction: FloatArray | None) -> int:
    """The axis of the floor that people walk along: as the markers do, or else along which the
    platforms lie."""
    if direction is not None:
        return max(floor, key=lambda axis: abs(direction[axis]))
    extents = np.nanmax(corners, axis=0) - np.nanmin(corners, axis=0)
    return max(floor, key=lambda axis: extents[axis])


def _ends(places: FloatArray) -> tuple[float, float]:
    low, high = float(np.nanmin(places)), float(np.nanmax(places))
    margin = 0.06 * (high - low) or 1.0
    return low - margin, high + margin


def _scale(plates: list[Loaded], up: int, width: float) -> float:
    """How long a unit of force is drawn, in the unit of places."""
    peaks = [
        float(np.nanmax(each.reaction.force[contact.first : contact.stop, up]))
        for each in plates
        for contact, _ in each.contacts
    ]
    greatest = max((peak for peak in peaks if math.isfinite(peak)), default=0.0)
    return _HEIGHT * width / greatest if greatest > 0.0 else 1.0


def _draw_side(
    axes: Any,
    plates: list[Loaded],
    along: int,
    up: int,
    scale: float,
    units: WrenchUnits,
    threshold: float,
) -> None:
    collection = require("matplotlib", "collections").LineCollection
    has_vectors = False
    for each in plates:
        reaction = each.reaction
        usual = max(1, round(_INTERVAL * each.plate._trial.analogs.rate))
        for contact, side in each.contacts:
            step = max(usual, -(-(contact.stop - contact.first) // _VECTORS))
            span = slice(contact.first, contact.stop, step)
            foot, force = reaction.point[span, along], reaction.force[span]
            seen = np.isfinite(foot) & np.isfinite(force).all(axis=1)
            tips = np.column_stack((foot + force[:, along] * scale, force[:, up]))
            feet = np.column_stack((foot, np.zeros_like(foot)))
            vectors = np.stack((feet, tips), axis=1)[seen]
            axes.add_collection(
                collection(
                    vectors, colors=colour_of(side), linewidths=0.7, alpha=0.75,
                    label=f"{each.name}, {side}",
                ),
                autolim=False,
            )  # fmt: skip
            has_vectors = has_vectors or len(vectors) > 0
        surface = each.plate.corners[:, along]
        axes.plot(
            [np.nanmin(surface), np.nanmax(surface)], [0.0, 0.0], color=NEITHER, linewidth=3.0,
            solid_capstyle="butt", zorder=3,
        )  # fmt: skip
    # A unit of force is as high as `scale` units of length are wide, so directions are true.
    axes.set_aspect(scale, adjustable="box")
    low, high = _force_limits(plates, up)
    axes.set_ylim(low, high)
    axes.set_ylabel(with_unit(f"{AXES[up]} force", units.force))
    axes.tick_params(labelbottom=True)
    if not has_vectors:
        note(axes, f"nobody was on a platform with {threshold:g} {units.force} or more")


def _force_limits(plates: list[Loaded], up: int) -> tuple[float, float]:
    tops = [
        float(np.nanmax(each.reaction.force[contact.first : contact.stop, up]))
        for each in plates
        for contact, _ in each.contacts
    ]
    greatest = max((top for top in tops if math.isfinite(top)), default=0.0)
    return (-0.03 * greatest, 1.12 * greatest) if greatest > 0.0 else (-0.05, 1.0)


def _draw_floor(
    axes: Any, plates: list[Loaded], along: int, across: int, units: WrenchUnits, upwards: bool
) -> None:
    polygon = require("matplotlib", "patches").Polygon
    for each in plates:
        outline = each.plate.corners[:, [along, across]]
        if np.isfinite(outline).all():
            axes.add_patch(
                polygon(outline, closed=True, facecolor=NEITHER, edgecolor=NEITHER, alpha=0.18)
            )
            # The corner at the lower left, of platforms that lie askew, too.
            corner = outline[np.argmin(outline.sum(axis=1))]
            axes.annotate(
                each.name, corner, (5, 5 if upwards else -5), textcoords="offset points",
                fontsize="x-small", va="bottom" if upwards else "top", color=NEITHER,
            )  # fmt: skip
        point = each.reaction.point
        for contact, side in each.contacts:
            span = slice(contact.first, contact.stop)
            path = point[span][:, [along, across]]
            colour = colour_of(side)
            axes.plot(*path.T, color=colour, linewidth=1.4, label=f"{each.name}, {side}")
            seen = path[np.isfinite(path).all(axis=1)]
            if len(seen):
                axes.plot(*seen[0], "o", color=colour, markersize=5, fillstyle="none")
    axes.set_aspect("equal", adjustable="box")
    axes.set_ylabel(with_unit(AXES[across], units.point))
    axes.grid(True, alpha=0.25, linewidth=0.6)


def _explained(plates: list[Loaded]) -> list[Any]:
    line = require("matplotlib", "lines").Line2D
    met = {side for each in plates for _, side in each.contacts}
    names = {"Left": "Left foot", "Right": "Right foot", "General": "foot not known"}
    shown = [
        line([], [], color=colour_of(side), linewidth=1.4, label=name)
        for side, name in names.items()
        if side in met
    ]
    start = line(
        [], [], linestyle="", marker="o", fillstyle="none", color=NEITHER, label="begin of contact"
    )
    plate = line([], [], color=NEITHER, linewidth=3.0, label=plain("platform"))
    return [*shown, *([start] if met else []), plate]
